"""What a board file says, read without the editor: counts, sizes, lengths, and which copper of a net touches.

Lengths are millimetres, y goes down, as in the file.
"""
import math
import re
from collections import Counter, defaultdict

TOKEN = re.compile(r'\s*(?:([()])|"((?:[^"\\]|\\.)*)"|([^\s()"][^\s()]*))')


def parse(text):
    stack = [[]]
    for paren, quoted, bare in TOKEN.findall(text):
        if paren == '(':
            stack.append([])
        elif paren == ')':
            done = stack.pop()
            stack[-1].append(done)
        else:
            stack[-1].append(bare or re.sub(r'\\(.)', r'\1', quoted))
    return stack[0][0]


def lists(node, *names):
    return [child for child in node if isinstance(child, list) and child and child[0] in names]


def value(node, name, default=None):
    found = lists(node, name)
    return found[0][1:] if found else default


def numbers(words):
    return [float(word) for word in words if not isinstance(word, list) and re.match(r'^[-+.\d]', word)]


def turned(x, y, degrees):
    c, s = math.cos(math.radians(degrees)), math.sin(math.radians(degrees))
    return x * c + y * s, -x * s + y * c


class Shape:
    """Points joined by lines, thick by a radius; a polygon is filled."""

    def __init__(self, layers, points, radius, filled=False):
        self.layers, self.points, self.radius, self.filled = set(layers), points, radius, filled
        xs, ys = [p[0] for p in points], [p[1] for p in points]
        self.box = (min(xs) - radius, min(ys) - radius, max(xs) + radius, max(ys) + radius)
        ends = points[1:] + points[:1] if filled else points[1:]
        self.rows = defaultdict(list)  # its lines, by the millimetres that they go through from top to bottom
        for line in list(zip(points, ends)) or [(points[0], points[0])]:
            low, high = sorted((line[0][1], line[1][1]))
            for row in range(math.floor(low), math.floor(high) + 1):
                self.rows[row].append(line)

    def lines_near(self, box, reach):
        rows = range(math.floor(box[1] - reach), math.floor(box[3] + reach) + 1)
        return {line for row in rows for line in self.rows.get(row, ()) if boxes_near(line, box, reach)}

    def holds(self, x, y):
        inside = False
        for (ax, ay), (bx, by) in self.rows.get(math.floor(y), ()) if self.filled else ():
            if (ay > y) != (by > y) and x < (bx - ax) * (y - ay) / (by - ay) + ax:
                inside = not inside
        return inside

    def touches(self, other):
        a, b = self.box, other.box
        if a[0] > b[2] or b[0] > a[2] or a[1] > b[3] or b[1] > a[3] or not self.layers & other.layers:
            return False
        if self.holds(*other.points[0]) or other.holds(*self.points[0]):
            return True
        reach = self.radius + other.radius + 1e-4
        return any(line_distance(l, m) <= reach for m in other.lines_near(a, reach)
                   for l in self.lines_near((*map(min, *m), *map(max, *m)), reach))


def boxes_near(line, box, reach):
    (ax, ay), (bx, by) = line
    return (min(ax, bx) - reach <= box[2] and max(ax, bx) + reach >= box[0] and
            min(ay, by) - reach <= box[3] and max(ay, by) + reach >= box[1])


def point_distance(p, line):
    (ax, ay), (bx, by) = line
    dx, dy = bx - ax, by - ay
    t = ((p[0] - ax) * dx + (p[1] - ay) * dy) / (dx * dx + dy * dy) if dx or dy else 0
    t = min(1, max(0, t))
    return math.hypot(p[0] - ax - t * dx, p[1] - ay - t * dy)


def line_distance(l, m):
    def side(p, line):
        (ax, ay), (bx, by) = line
        return (bx - ax) * (p[1] - ay) - (by - ay) * (p[0] - ax)
    if side(l[0], m) * side(l[1], m) < 0 and side(m[0], l) * side(m[1], l) < 0:
        return 0
    return min(point_distance(l[0], m), point_distance(l[1], m), point_distance(m[0], l), point_distance(m[1], l))


def arc_points(start, mid, end, steps=32):
    """The circle through three points; and its length between the outer ones."""
    (ax, ay), (bx, by), (cx, cy) = start, mid, end
    d = 2 * (ax * (by - cy) + bx * (cy - ay) + cx * (ay - by))
    if abs(d) < 1e-9:
        return [start, mid, end], math.dist(start, mid) + math.dist(mid, end)
    a2, b2, c2 = ax * ax + ay * ay, bx * bx + by * by, cx * cx + cy * cy
    ux = (a2 * (by - cy) + b2 * (cy - ay) + c2 * (ay - by)) / d
    uy = (a2 * (cx - bx) + b2 * (ax - cx) + c2 * (bx - ax)) / d
    r = math.dist((ux, uy), start)
    angles = [math.atan2(y - uy, x - ux) for x, y in (start, mid, end)]
    first = (angles[1] - angles[0]) % math.tau
    sweep = (angles[2] - angles[0]) % math.tau
    if first > sweep:
        sweep -= math.tau
    points = [(ux + r * math.cos(angles[0] + sweep * i / steps), uy + r * math.sin(angles[0] + sweep * i / steps))
              for i in range(steps + 1)]
    return points, r * abs(sweep)


class BoardFile:
    def __init__(self, path):
        self.root = parse(path.read_text(encoding='utf-8'))
        self.nets = {int(net[1]): net[2] for net in lists(self.root, 'net') if int(net[1])}
        self.copper = [line[1] for line in value(self.root, 'layers')
                       if isinstance(line, list) and int(line[0]) < 64 and line[2] != 'user']
        self.footprints = lists(self.root, 'module', 'footprint')
        self.components = [f for f in self.footprints if f[1] != 'Ketril:FreePad']
        self.vias = lists(self.root, 'via')
        self.segments = lists(self.root, 'segment')
        self.arcs = lists(self.root, 'arc')
        self.pads = [(pad, f) for f in self.footprints for pad in lists(f, 'pad')]
        self.widths = Counter(round(float(value(s, 'width')[0]), 4) for s in self.segments)

    def net_of(self, node):
        net = value(node, 'net')
        return int(net[0]) if net and net[0].isdigit() else 0

    def holes(self, kind, oval):
        """How many pads have round, or oval, holes of each size."""
        sizes = Counter()
        for pad, _ in self.pads:
            drill = numbers(value(pad, 'drill', []))
            if pad[2] == kind and drill:
                is_oval = len(drill) > 1 and drill[0] != drill[1]
                if is_oval == oval:
                    sizes[tuple(sorted(round(d, 4) for d in drill[:2])) if oval else round(drill[0], 4)] += 1
        return sizes

    def via_holes(self):
        """Without those that have that of their net class."""
        return Counter(round(float(value(via, 'drill')[0]), 4) for via in self.vias if value(via, 'drill'))

    def layers_of(self, words):
        found = []
        for word in words:
            found += self.copper if word == '*.Cu' else ['F.Cu', 'B.Cu'] if word == 'F&B.Cu' else [word]
        return set(found) & set(self.copper)

    def pad_shape(self, pad, footprint):
        fx, fy, *turn = numbers(value(footprint, 'at'))
        px, py, *angle = numbers(value(pad, 'at'))
        dx, dy = turned(px, py, turn[0] if turn else 0)
        angle = angle[0] if angle else 0
        w, h = (side / 2 for side in numbers(value(pad, 'size')))
        ox, oy = numbers((lists(value(pad, 'drill', []), 'offset') or [['', '0', '0']])[0][1:])

        def on_board(x, y):
            tx, ty = turned(x + ox, y + oy, angle)
            return fx + dx + tx, fy + dy + ty
        layers = self.layers_of(value(pad, 'layers'))
        if pad[3] in ('circle', 'oval'):
            r = min(w, h)
            ends = [on_board(-(w - r), -(h - r)), on_board(w - r, h - r)]
            yield Shape(layers, ends, r)
        elif pad[3] == 'custom':
            for polygon in (p for prims in lists(pad, 'primitives') for p in lists(prims, 'gr_poly')):
                yield Shape(layers, [on_board(*numbers(xy[1:3])) for xy in value(polygon, 'pts')], 0, True)
            yield Shape(layers, [on_board(0, 0)], min(w, h))
        else:
            yield Shape(layers, [on_board(*c) for c in ((-w, -h), (w, -h), (w, h), (-w, h))], 0, True)

    def copper_of_nets(self):
        """By net, lists of (shapes, is it a pad)."""
        nets = defaultdict(list)
        for pad, footprint in self.pads:
            nets[self.net_of(pad)].append((list(self.pad_shape(pad, footprint)), True))
        for via in self.vias:
            span = sorted(self.copper.index(layer) for layer in value(via, 'layers'))
            layers = self.copper[span[0]:span[-1] + 1]
            shape = Shape(layers, [tuple(numbers(value(via, 'at')))], float(value(via, 'size')[0]) / 2)
            nets[self.net_of(via)].append(([shape], False))
        for line in self.segments + self.arcs:
            points = [tuple(numbers(value(line, key))) for key in ('start', 'mid', 'end') if value(line, key)]
            if len(points) == 3:
                points = arc_points(*points)[0]
            shape = Shape(value(line, 'layer') or value(line, 'layers'), points, float(value(line, 'width')[0]) / 2)
            nets[self.net_of(line)].append(([shape], False))
        for zone in lists(self.root, 'zone'):
            stroked = value(zone, 'filled_areas_thickness', ['yes'])[0] != 'no'
            radius = float(value(zone, 'min_thickness', [0])[0]) / 2 if stroked else 0
            for fill in lists(zone, 'filled_polygon'):
                layer = value(fill, 'layer') or value(zone, 'layer')
                points = [tuple(numbers(xy[1:3])) for xy in value(fill, 'pts')]
                nets[self.net_of(zone)].append(([Shape(layer, points, radius, True)], False))
        return {number: nets[number] for number in self.nets}

    def open_connections(self):
        """How many connections are missing: of each net, the parts that hold a pad, less one."""
        missing = 0
        for objects in self.copper_of_nets().values():
            part = list(range(len(objects)))

            def root(i):
                while part[i] != i:
                    i = part[i]
                return i
            for i, (shapes, _) in enumerate(objects):
                for j in range(i):
                    if root(i) != root(j) and any(a.touches(b) for a in shapes for b in objects[j][0]):
                        part[root(i)] = root(j)
            with_pad = {root(i) for i, (_, is_pad) in enumerate(objects) if is_pad}
            missing += max(0, len(with_pad) - 1)
        return missing

    def routed_lengths(self):
        lengths = defaultdict(float)
        for line in self.segments + self.arcs:
            points = [tuple(numbers(value(line, key))) for key in ('start', 'mid', 'end') if value(line, key)]
            lengths[self.nets.get(self.net_of(line))] += (
                arc_points(*points)[1] if len(points) == 3 else math.dist(*points))
        return lengths
