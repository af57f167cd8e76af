"""Reports on a board against what its file says: ReportCounts.py KETRIL BOARD... ; ends with 1 on a difference."""
import csv
import json
import math
import pathlib
import subprocess
import sys
import tempfile
from collections import Counter

from boardfile import BoardFile, numbers, value

PARTS = ('BoardSpecs', 'RoutingInfo', 'LayerInfo', 'LayerPair', 'NonPlatedHoles', 'PlatedHoles', 'PlatedSlots',
         'NonPlatedSlots', 'TrackWidth')


def tables(ketril, kind, board, folder, *options):
    subprocess.run([ketril, 'report', kind, board, '--format', 'json', '--report-dir', folder, *options],
                   check=True, stdout=subprocess.DEVNULL)
    report = json.loads((pathlib.Path(folder) / f'{board.stem}-{kind}.json').read_text(encoding='utf-8'))
    return {table['title']: table['rows'] for table in report['tables']}


def by_size(rows, column=1):
    """{millimetres: count} without surface pads, or by pairs of them for slots, whose sizes are texts of mils."""
    def key(cell):
        if isinstance(cell, dict):
            return round(cell['mm'], 4)
        return tuple(sorted(round(float(part.removesuffix('mil')) * 0.0254, 4) for part in cell.split(' / ')))
    return +Counter({key(row[0]): row[column] for row in rows if key(row[0])})


def compare(ketril, path):
    board = BoardFile(path)
    failures = []

    def expect(what, reported, counted):
        if reported != counted:
            failures.append(f'{path.name}: {what}: the report says {reported}, the file {counted}')

    with tempfile.TemporaryDirectory() as folder:
        report = tables(ketril, 'board', path, folder, *(f'-D{part}=True' for part in PARTS))
        nets = tables(ketril, 'nets', path, folder)['Net Status']
        subprocess.run([ketril, 'report', 'placement', path, '--report-dir', folder], check=True,
                       stdout=subprocess.DEVNULL)
        placed = (pathlib.Path(folder) / f'{path.stem}-placement.csv').read_text(encoding='utf-8')

    expect('components', report['General'][1][1], str(len(board.components)))
    routing = {row[0]: row[1] for row in report['Routing Information']}
    pads = sum(1 for pad, _ in board.pads if board.net_of(pad))
    missing = board.open_connections()
    expect('connections', routing['Connections'], str(pads - len(board.nets)))
    expect('connections remaining', routing['Connections remaining'], str(missing))
    done = 100 * (pads - len(board.nets) - missing) / (pads - len(board.nets))
    expect('completion', routing['Routing completion'], f'{done:.2f}%')

    expect('vias by drill pair', sum(row[1] for row in report['Drill Pairs']), len(board.vias))
    holes = by_size(report['Plated Hole Size'], 2)
    expect('vias', sum(holes.values()), len(board.vias))
    expect('vias by hole', {size: holes[size] for size in board.via_holes()}, board.via_holes())
    expect('plated holes', by_size(report['Plated Hole Size']), board.holes('thru_hole', False))
    expect('other holes', by_size(report['Non-Plated Hole Size']), board.holes('np_thru_hole', False))
    expect('plated slots', by_size(report['Plated Slot Size']), board.holes('thru_hole', True))
    expect('other slots', by_size(report['Non-Plated Slot Size']), board.holes('np_thru_hole', True))
    widths = by_size(report['Track Width'])
    expect('tracks', {w: widths[w] >= n for w, n in board.widths.items()}, {w: True for w in board.widths})

    expect('nets', [row[0] for row in nets], sorted(board.nets.values(), key=lambda n: n.encode('utf-16-be')))
    lengths = board.routed_lengths()
    expect('routed lengths', [(row[0], row[2]['mm']) for row in nets
                              if abs(row[2]['mm'] - lengths[row[0]]) > 1e-3 * (1 + lengths[row[0]])], [])

    origin = numbers(value(value(board.root, 'setup', []), 'aux_axis_origin', ['0', '0']))
    places = [(x - origin[0], origin[1] - y) for x, y, *_ in (numbers(value(f, 'at')) for f in board.components)]
    rows = [(float(row[4][:-2]), float(row[5][:-2])) for row in list(csv.reader(placed.splitlines()))[2:-1]]
    expect('places', [row for row in rows if min(math.dist(row, place) for place in places) > 0.01], [])
    expect('lines', len(rows), len(places))
    return failures


if __name__ == '__main__':
    found = [failure for board in sys.argv[2:] for failure in compare(sys.argv[1], pathlib.Path(board))]
    print('\n'.join(found) or f'{len(sys.argv) - 2} boards agree')
    sys.exit(bool(found))
