#!/usr/bin/env python3
"""Draws the index conventions of a tetrahedron as SVG files, beside this script.

The senses of facets and edges are computed from the positions of the corners, not looked up, so that the drawings
show what the conventions say.
"""
import math
import pathlib

INK, PALE, FILL, MARK, NOTE = "#1f2937", "#9ca3af", "#bfdbfe", "#1d4ed8", "#b45309"

# Corners 0, 1, 2 appear counter-clockwise from corner 3. x to the right, y away from the viewer, z up.
CORNERS = [(-1.0, 0.25, -0.55), (0.12, -1.0, -0.55), (1.0, 0.45, -0.55), (-0.05, 0.0, 1.0)]
OUTLINE = [(0, 1), (1, 2), (0, 3), (1, 3), (2, 3)]
HIDDEN = [(0, 2)]


def signed_volume(a, b, c, d):
    (ux, uy, uz), (vx, vy, vz), (wx, wy, wz) = ([q - p for p, q in zip(a, x)] for x in (b, c, d))
    return (uy * vz - uz * vy) * wx + (uz * vx - ux * vz) * wy + (ux * vy - uy * vx) * wz


def outward_facet(opp3):
    """The corners of a facet, counter-clockwise from outside, the lowest first."""
    i, j, k = (c for c in range(4) if c != opp3)
    inward = signed_volume(*(CORNERS[c] for c in (i, j, k, opp3))) > 0
    return (i, k, j) if inward else (i, j, k)


def edge_of(opp3, opp2):
    """Source and target: (target, source, opp2, opp3) is positively oriented."""
    a, b = (c for c in range(4) if c not in (opp3, opp2))
    positive = signed_volume(*(CORNERS[c] for c in (b, a, opp2, opp3))) > 0
    return (a, b) if positive else (b, a)


class Drawing:
    def __init__(self, width, height):
        self.width, self.height = width, height
        self.parts = []

    def line(self, p, q, color=INK, width=1.6, dashed=False, arrow=False):
        extra = ' stroke-dasharray="5 4"' if dashed else ""
        extra += f' marker-end="url(#tip-{color[1:]})"' if arrow else ""
        self.parts.append(f'<line x1="{p[0]:.1f}" y1="{p[1]:.1f}" x2="{q[0]:.1f}" y2="{q[1]:.1f}" '
                          f'stroke="{color}" stroke-width="{width}"{extra}/>')

    def polygon(self, points, fill=FILL, opacity=0.75):
        text = " ".join(f"{x:.1f},{y:.1f}" for x, y in points)
        self.parts.append(f'<polygon points="{text}" fill="{fill}" fill-opacity="{opacity}"/>')

    def dot(self, p, color=INK, radius=4.0):
        self.parts.append(f'<circle cx="{p[0]:.1f}" cy="{p[1]:.1f}" r="{radius}" fill="{color}"/>')

    def arc(self, center, radius, start, end, color):
        """An arrow around `center`; angles in degrees, counter-clockwise from the right."""
        p, q = (at_angle(center, radius, angle) for angle in (start, end))
        large, sweep = int(abs(end - start) > 180), int(end < start)
        self.parts.append(f'<path d="M {p[0]:.1f} {p[1]:.1f} A {radius} {radius} 0 {large} {sweep} {q[0]:.1f} '
                          f'{q[1]:.1f}" fill="none" stroke="{color}" stroke-width="2" '
                          f'marker-end="url(#tip-{color[1:]})"/>')

    def text(self, p, words, color=INK, size=15, bold=False):
        weight = ' font-weight="bold"' if bold else ""
        self.parts.append(f'<text x="{p[0]:.1f}" y="{p[1] + 0.35 * size:.1f}" fill="{color}" font-size="{size}" '
                          f'text-anchor="middle"{weight}>{words}</text>')

    def save(self, name):
        tips = "".join(f'<marker id="tip-{c[1:]}" viewBox="0 0 10 10" refX="9" refY="5" markerWidth="6.5" '
                       f'markerHeight="6.5" orient="auto"><path d="M0 0L10 5L0 10z" fill="{c}"/></marker>'
                       for c in (INK, MARK, NOTE))
        body = "\n".join(self.parts)
        path = pathlib.Path(__file__).parent / name
        path.write_text(f'<svg xmlns="http://www.w3.org/2000/svg" width="{self.width}" height="{self.height}" '
                        f'viewBox="0 0 {self.width} {self.height}" font-family="sans-serif">\n'
                        f'<rect width="100%" height="100%" fill="white"/>\n<defs>{tips}</defs>\n{body}\n</svg>\n')


def at_angle(center, radius, degrees):
    angle = math.radians(degrees)
    return center[0] + radius * math.cos(angle), center[1] - radius * math.sin(angle)


def between(p, q, share):
    return tuple(a + share * (b - a) for a, b in zip(p, q))


class Tetrahedron:
    """The tetrahedron in parallel projection, from the front and a little above."""

    def __init__(self, drawing, center, scale):
        self.drawing = drawing
        self.corners = [(center[0] + scale * (x + 0.1 * y), center[1] - scale * (z + 0.38 * y))
                        for x, y, z in CORNERS]
        self.middle = tuple(sum(c) / 4 for c in zip(*self.corners))

    def draw_wires(self, color=INK):
        for i, j in OUTLINE:
            self.drawing.line(self.corners[i], self.corners[j], color)
        for i, j in HIDDEN:
            self.drawing.line(self.corners[i], self.corners[j], PALE, dashed=True)

    def label_corner(self, i, words, color=INK):
        self.drawing.dot(self.corners[i], color)
        away = math.dist(self.corners[i], self.middle)
        self.drawing.text(between(self.middle, self.corners[i], (away + 17) / away), words, color, bold=True)


def draw_corners():
    drawing = Drawing(360, 300)
    tet = Tetrahedron(drawing, (180, 165), 120)
    tet.draw_wires()
    for i in range(4):
        tet.label_corner(i, str(i))
    # The sense of 0, 1, 2 on the bottom, as it is seen from corner 3.
    bottom = [tet.corners[i] for i in range(3)]
    centroid = tuple(sum(c) / 3 for c in zip(*bottom))
    inset = [between(p, centroid, 0.35) for p in bottom]
    for p, q in ((inset[0], inset[1]), (inset[1], inset[2])):
        drawing.line(p, q, MARK, 2, arrow=True)
    drawing.save("corners.svg")


def draw_facets():
    drawing = Drawing(800, 250)
    for opp3 in range(4):
        tet = Tetrahedron(drawing, (100 + 200 * opp3, 100), 70)
        order = outward_facet(opp3)
        facet = [tet.corners[i] for i in order]
        drawing.polygon(facet)
        tet.draw_wires()
        centroid = tuple(sum(c) / 3 for c in zip(*facet))
        inset = [between(p, centroid, 0.4) for p in facet]
        for k in range(3):
            drawing.line(inset[k], inset[(k + 1) % 3], MARK, 2, arrow=True)
        for i in range(4):
            tet.label_corner(i, str(i), NOTE if i == opp3 else INK)
        drawing.text((100 + 200 * opp3, 205), f"facet {opp3}", NOTE, bold=True)
        drawing.text((100 + 200 * opp3, 230), "from outside: " + " ".join(map(str, order)), size=14)
    drawing.save("facets.svg")


def draw_edge():
    drawing = Drawing(620, 310)
    for x, (opp3, opp2) in ((155, (0, 2)), (465, (2, 0))):
        tet = Tetrahedron(drawing, (x, 125), 98)
        source, target = edge_of(opp3, opp2)
        drawing.polygon([tet.corners[i] for i in range(4) if i != opp3])
        tet.draw_wires(PALE)
        start, end = (tet.corners[i] for i in (source, target))
        drawing.line(between(start, end, 0.04), between(start, end, 0.96), MARK, 3, arrow=True)
        for i in range(4):
            tet.label_corner(i, str(i), MARK if i in (source, target) else NOTE)
        drawing.text((x, 260), f"opp3 = {opp3}, opp2 = {opp2}", NOTE, bold=True)
        drawing.text((x, 286), f"from {source} (source) to {target} (target)", MARK)
    drawing.save("edge.svg")


def draw_fan(drawing, center, spokes, names, start):
    """The tetrahedra around an edge, seen along it: between spokes k and k + 1 that of the k-th name. Spokes are
    angles in ascending order; around an edge inside the last one is the first one again."""
    ring = [at_angle(center, 130, angle) for angle in spokes]
    drawing.polygon([center, ring[start], ring[start + 1]])
    for p, q in zip(ring, ring[1:]):
        drawing.line(p, q)
    for p in ring:
        drawing.line(center, p)
        drawing.dot(p)
    drawing.dot(center, MARK, 6)
    for k, name in enumerate(names):
        drawing.text(at_angle(center, 82, (spokes[k] + spokes[k + 1]) / 2), name, bold=k == start)
    drawing.text(at_angle(center, 155, spokes[start]), "opp2", NOTE, bold=True)
    drawing.text(at_angle(center, 150, spokes[start + 1]), "opp3", NOTE, bold=True)


def draw_step(drawing, center, spoke, color=MARK, way=1):
    drawing.arc(center, 58, spoke - 22 * way, spoke + 22 * way, color)


def draw_turn():
    drawing = Drawing(760, 370)

    center, spokes = (190, 155), [-25, 42, 118, 190, 262, 335]
    draw_fan(drawing, center, spokes, ["T0", "T1", "T2", "T3", "T4"], 0)
    for spoke in spokes[1:]:
        draw_step(drawing, center, spoke)
    drawing.text((190, 315), "an edge inside: T0 comes again after T4", size=14)

    center, spokes = (570, 210), [-18, 35, 90, 145, 198]
    for spoke in (spokes[0], spokes[-1]):
        drawing.line(center, at_angle(center, 130, spoke), width=4)
        drawing.text(at_angle(center, 155, spoke), "hull")
    draw_fan(drawing, center, spokes, ["T3", "T0", "T1", "T2"], 1)
    for spoke in spokes[2:4]:
        draw_step(drawing, center, spoke)
    draw_step(drawing, center, spokes[1], NOTE, -1)
    drawing.text((570, 295), "an edge on the hull: the turn ends at T2;", size=14)
    drawing.text((570, 315), "opp2 and opp3 exchanged, it leads to T3", NOTE, size=14)

    drawing.text((380, 350), "Seen along the edge, whose source is nearest to the eye.", MARK, size=14)
    drawing.save("turn.svg")


if __name__ == "__main__":
    draw_corners()
    draw_facets()
    draw_edge()
    draw_turn()
