"""The pages of the reports in a browser: PageTest.py KETRIL BOARD WORK. Ends with 1 and says what is wrong."""
import functools
import http.server
import json
import pathlib
import re
import shutil
import subprocess
import sys
import threading

sys.path.insert(0, str(pathlib.Path(__file__).parents[1] / 'Boards'))
from boardfile import BoardFile  # noqa: E402

# Opens PAGE in a frame, uses it as a reader would, and leaves what it saw as JSON.
CHECK = r'''<!DOCTYPE html><link rel="icon" href="data:,"><pre id="result"></pre><script>
const frame = (url, width) => new Promise(done => {
  const f = document.createElement('iframe');
  f.style.cssText = `width:${width}px;height:600px;border:0`;
  f.onload = () => done(f);
  f.src = url;
  document.body.append(f);
});
const all = (from, what) => [...from.querySelectorAll(what)];
const text = e => e.textContent.replace(/\u00a0/g, ' ').trim();
const under = (th, row) => {  // the cell that stands below the header
  const r = th.getBoundingClientRect(), middle = (r.left + r.right) / 2;
  return [...row.cells].find(c => {
    const b = c.getBoundingClientRect();
    return b.left <= middle && middle <= b.right;
  });
};
const key = cell => cell.dataset.sort !== undefined ? Number(cell.dataset.sort)
    : /^-?[\d.]+%?$/.test(text(cell)) ? parseFloat(text(cell)) : text(cell);
const order = (a, b) => typeof a === 'number' && typeof b === 'number' ? a - b
    : String(a).localeCompare(String(b), undefined, {numeric: true, sensitivity: 'base'});
const rises = keys => keys.every((k, i) => i === 0 || order(keys[i - 1], k) <= 0);

window.onload = async () => {
  const seen = {unsorted: [], sorted: 0, views: []};
  const page = await frame('PAGE', 1000), d = page.contentDocument;
  const lengths = all(d, '.length');
  seen.first = lengths.map(text);
  for (const unit of ['mil', 'mm']) {
    d.querySelector(`[data-set-unit=${unit}]`).click();
    seen[unit] = lengths.map(e => [Number(e.dataset.length), text(e)]);
  }
  for (const table of all(d, 'table')) {
    const rows = () => [...table.tBodies[0].rows];
    if (rows().length < 2) continue;
    for (const th of all(table, 'th.sorts')) {
      const before = rows().map(r => r.textContent).sort().join();
      const keys = () => rows().map(r => key(under(th, r)));
      th.click();
      const up = keys();
      th.click();
      const down = keys();
      ++seen.sorted;
      if (!rises(up) || !rises(down.reverse()) || before !== rows().map(r => r.textContent).sort().join())
        seen.unsorted.push(text(th));
    }
  }
  seen.words = all(d, 'table').flatMap(t => all(t, 'th,td').map(text));
  seen.zooms = all(d, 'a.zoom').map(a => [text(a), a.getAttribute('href')]);
  seen.dangling = all(d, 'a[href^="#"]').filter(a => !d.getElementById(a.hash.slice(1))).map(text);
  for (const theme of ['dark', 'light']) {
    d.querySelector(`[data-set-theme=${theme}]`).click();
    seen[theme] = getComputedStyle(d.body).backgroundColor;
  }
  for (const [, href] of seen.zooms.slice(0, 3)) {  // what is in the middle of the picture
    const picture = (await frame(href, 800)).contentDocument.documentElement;
    const p = new DOMPoint(400, 300).matrixTransform(picture.getScreenCTM().inverse());
    seen.views.push([href, p.x, p.y]);
  }
  const paper = (await frame('PAGE', 717)).contentDocument;  // the width of A4 between its margins
  for (const sheet of paper.styleSheets)
    for (const rule of sheet.cssRules) if (rule.media?.mediaText === 'print') rule.media.mediaText = 'all';
  seen.cut = all(paper, 'table').filter(t => t.getBoundingClientRect().right > 717).map(text);
  console.log('the check ran');
  document.getElementById('result').textContent = JSON.stringify(seen);
};
</script>'''


def browser():
    for name in ('chromium', 'chromium-browser', 'google-chrome'):
        if shutil.which(name):
            return name
    sys.exit('PageTest: no chromium here: scripts/install-dependencies installs it')


def run_browser(work, *arguments):
    command = [browser(), '--headless=new', '--no-sandbox', '--disable-gpu', f'--user-data-dir={work}/profile',
               '--enable-logging=stderr', '--virtual-time-budget=30000', *arguments]
    return subprocess.run(command, capture_output=True, text=True, timeout=300)


def shown(length, unit):
    return length / 1e4 if unit == 'mil' else length * 2.54e-6


def view_of(href):
    name, box = re.fullmatch(r'(.*)#svgView\(viewBox\((.*)\)\)', href).groups()
    return name, [float(n) for n in box.split(',')]


def check_page(work, page, board):
    wrong = []
    (work / 'check.html').write_text(CHECK.replace('PAGE', page), encoding='utf-8')
    handler = functools.partial(http.server.SimpleHTTPRequestHandler, directory=work)
    handler.log_message = lambda *_: None
    http.server.SimpleHTTPRequestHandler.log_message = lambda *_: None
    with http.server.ThreadingHTTPServer(('127.0.0.1', 0), handler) as server:
        threading.Thread(target=server.serve_forever, daemon=True).start()
        root = f'http://127.0.0.1:{server.server_port}'
        ran = run_browser(work, '--dump-dom', f'{root}/check.html')
        run_browser(work, f'--print-to-pdf={work}/page.pdf', '--no-pdf-header-footer', f'{root}/{page}')
        server.shutdown()
    result = re.search(r'<pre id="result">(.*?)</pre>', ran.stdout, re.S)
    if not result or not result[1]:
        return [f'the check did not run:\n{ran.stdout[-2000:]}\n{ran.stderr[-2000:]}']
    seen = json.loads(result[1].replace('&lt;', '<').replace('&gt;', '>').replace('&amp;', '&'))

    said = [line for line in ran.stderr.splitlines() if 'CONSOLE' in line]
    if len(said) != 1:
        wrong.append('the console says ' + '\n'.join(said))
    for unit, digits in (('mil', 3), ('mm', 4)):
        for length, text in seen[unit]:
            if not text.endswith(' ' + unit) or abs(float(text.split()[0]) - shown(length, unit)) > 0.6 * 10**-digits:
                wrong.append(f'{length} is shown as {text}')
    if not seen['mil'] or [text for _, text in seen['mm']] != seen['first']:
        wrong.append('the switch to mil and back leaves other lengths')
    if seen['unsorted'] or not seen['sorted']:
        wrong.append(f'columns that do not sort: {seen["unsorted"]}')
    if seen['dangling'] or seen['cut'] or seen['dark'] == seen['light']:
        wrong.append(f'links to nowhere {seen["dangling"]}, tables too wide for paper {seen["cut"]}, '
                     f'dark {seen["dark"]}, light {seen["light"]}')
    for href, x, y in seen['views']:
        _, (left, top, width, height) = view_of(href)
        if abs(x - left - width / 2) > 0.01 * width or abs(y - top - height / 2) > 0.01 * height:
            wrong.append(f'{href} shows {x},{y} in the middle')

    copper = board.copper_of_nets()
    boxes = {name: [s.box for shapes, _ in copper[number] for s in shapes] for number, name in board.nets.items()}
    for name, href in seen['zooms']:
        picture, (left, top, width, height) = view_of(href)
        if not (work / picture).is_file() or not boxes[name] or any(
                x1 < left or y1 < top or x2 > left + width or y2 > top + height for x1, y1, x2, y2 in boxes[name]):
            wrong.append(f'{href} does not show {name}')
    if len(seen['zooms']) != ('-nets' in page) * len(board.nets):
        wrong.append(f'{len(seen["zooms"])} links into the picture')

    printed = subprocess.run(['pdftotext', '-layout', work / 'page.pdf', '-'], capture_output=True, text=True,
                             check=True).stdout
    lost = {word for cell in seen['words'] for word in cell.split() if word not in printed}
    if lost:
        wrong.append(f'not on paper: {sorted(lost)}')
    return [f'{page}: {line}' for line in wrong]


def main(ketril, sample, work):
    shutil.rmtree(work, ignore_errors=True)
    work.mkdir(parents=True)
    wrong = []
    for kind in ('board', 'nets'):
        subprocess.run([ketril, 'report', kind, sample, '--report-dir', work], check=True)
        wrong += check_page(work, f'{sample.stem}-{kind}.html', BoardFile(sample))
    print('\n'.join(wrong) or 'the pages work')
    sys.exit(bool(wrong))


main(sys.argv[1], pathlib.Path(sys.argv[2]), pathlib.Path(sys.argv[3]))
