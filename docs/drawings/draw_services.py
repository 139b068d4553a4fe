#!/usr/bin/env python3
"""Draws what the services of the geometry library compute, in the plane, as SVG files beside this script.

Triangles, Voronoi cells, walks and shares are computed from a few points, so that the drawings show what the
services would say of them.
"""
import math

from draw import FILL, INK, MARK, NOTE, PALE, Drawing, between

POINTS = [(55, 60), (190, 30), (330, 70), (420, 165), (385, 290), (250, 330), (95, 300), (25, 185),
          (150, 140), (265, 135), (330, 200), (225, 235), (120, 225)]
GREEN = "#bbf7d0"
SIZE = (450, 360)


def cross(a, b, c):
    return (b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0])


def middle_of(points):
    return tuple(sum(c) / len(points) for c in zip(*points))


def circle_through(a, b, c):
    bx, by, cx, cy = b[0] - a[0], b[1] - a[1], c[0] - a[0], c[1] - a[1]
    d = 2 * (bx * cy - by * cx)
    x = (cy * (bx * bx + by * by) - by * (cx * cx + cy * cy)) / d
    y = (bx * (cx * cx + cy * cy) - cx * (bx * bx + by * by)) / d
    return (a[0] + x, a[1] + y), math.hypot(x, y)


def triangulate(points):
    """All triangles whose circles have no point inside."""
    triangles = []
    for i in range(len(points)):
        for j in range(i):
            for k in range(j):
                corners = [points[n] for n in (i, j, k)]
                center, radius = circle_through(*corners)
                if all(math.dist(center, p) > radius - 1e-9 for p in points):
                    triangles.append(corners)
    return triangles


def cut(polygon, inside):
    """The part of a convex polygon where the linear function is not negative."""
    result = []
    for p, q in zip(polygon, polygon[1:] + polygon[:1]):
        a, b = inside(p), inside(q)
        if a >= 0:
            result.append(p)
        if a * b < 0:
            result.append(between(p, q, a / (a - b)))
    return result


def nearer_to(p, q):
    """Positive where p is nearer than q."""
    return lambda x: math.dist(x, q) ** 2 - math.dist(x, p) ** 2


def cell_of(p, others, polygon=((0, 0), (450, 0), (450, 360), (0, 360))):
    polygon = list(polygon)
    for q in others:
        if q != p:
            polygon = cut(polygon, nearer_to(p, q))
    return polygon


def area_of(polygon):
    return abs(sum(p[0] * q[1] - p[1] * q[0] for p, q in zip(polygon, polygon[1:] + polygon[:1]))) / 2


def outline(drawing, polygon, color=INK, width=1.6, dashed=False):
    for p, q in zip(polygon, polygon[1:] + polygon[:1]):
        drawing.line(p, q, color, width, dashed)


def start_mesh(color=INK, size=SIZE):
    drawing = Drawing(*size)
    for triangle in triangulate(POINTS):
        outline(drawing, triangle, color)
    return drawing


def draw_points(drawing, color=INK):
    for p in POINTS:
        drawing.dot(p, color)


def contains(triangle, p):
    signs = [cross(a, b, p) for a, b in zip(triangle, triangle[1:] + triangle[:1])]
    return min(signs) >= 0 or max(signs) <= 0


def draw_locate():
    drawing = start_mesh()
    draw_points(drawing)
    beyond = (425, 45)
    queries = [("VERTEX", POINTS[9], (-5, 17)), ("EDGE", between(POINTS[8], POINTS[12], 0.5), (-30, 0)),
               ("CELL", middle_of(triangulate(POINTS)[4]), (0, 16)), ("OUTSIDE", beyond, (-12, -16))]
    drawing.line(POINTS[2], POINTS[3], NOTE, 4)
    for name, p, offset in queries:
        drawing.dot(p, NOTE, 5)
        drawing.text((p[0] + offset[0], p[1] + offset[1]), name, NOTE, 14, bold=True)
    drawing.text((410, 100), "sees it", NOTE, 13)
    drawing.save("locate.svg")


def draw_nearest():
    drawing = start_mesh(PALE)
    query = (253, 193)
    order = sorted(POINTS, key=lambda p: math.dist(p, query))
    drawing.polygon(cell_of(order[0], POINTS))
    for p in POINTS:
        outline(drawing, cell_of(p, POINTS), MARK, 1, dashed=True)
    start = next(t for t in triangulate(POINTS) if contains(t, query))
    outline(drawing, start, INK, 2)
    draw_points(drawing)
    drawing.dot(query, NOTE, 5)
    for number, p in enumerate(order[:4]):
        drawing.text((p[0] + 12, p[1] - 12), str(number + 1), NOTE, 15, bold=True)
    drawing.save("nearest.svg")


def draw_voronoi():
    drawing = start_mesh(PALE)
    inner, outer = POINTS[9], POINTS[5]
    drawing.polygon(cell_of(inner, POINTS))
    drawing.polygon(cell_of(outer, POINTS), GREEN)
    for p in POINTS:
        outline(drawing, cell_of(p, POINTS), MARK, 2)
    draw_points(drawing)
    for a, b, c in triangulate(POINTS):
        if inner in (a, b, c):
            drawing.dot(circle_through(a, b, c)[0], NOTE, 4)
    drawing.text((inner[0], inner[1] + 18), "whole", NOTE, 14, bold=True)
    drawing.text((outer[0] - 6, outer[1] - 18), "clipped", NOTE, 14, bold=True)
    drawing.save("voronoi.svg")


def draw_segment():
    drawing = Drawing(*SIZE)
    p, q = (8, 108), (430, 262)
    triangles = triangulate(POINTS)
    crossed = []
    for triangle in triangles:
        piece = [0.0, 1.0]
        for a, b, c in zip(triangle, triangle[1:] + triangle[:1], triangle[2:] + triangle[:2]):
            sign = math.copysign(1, cross(a, b, c))
            start, end = sign * cross(a, b, p), sign * cross(a, b, q)
            if start < 0 and end < 0:
                piece = [1.0, 0.0]
            elif start * end < 0:
                piece[0 if start < 0 else 1] = (max if start < 0 else min)(piece[0 if start < 0 else 1],
                                                                          start / (start - end))
        if piece[0] < piece[1]:
            crossed.append((piece, triangle))
    for number, (piece, triangle) in enumerate(sorted(crossed)):
        drawing.polygon(triangle, FILL if number % 2 == 0 else GREEN)
    for triangle in triangles:
        outline(drawing, triangle)
    draw_points(drawing)
    drawing.line(p, q, NOTE, 2.5, arrow=True)
    for number, (piece, _) in enumerate(sorted(crossed)):
        for end in piece:
            drawing.dot(between(p, q, end), NOTE, 3.5)
        x, y = between(p, q, sum(piece) / 2)
        drawing.text((x, y - 13), str(number), NOTE, 13, bold=True)
    drawing.text((p[0] + 6, p[1] - 14), "p", NOTE, bold=True)
    drawing.text((q[0] + 12, q[1]), "q", NOTE, bold=True)
    drawing.save("segment.svg")


def draw_interpolation():
    query = (215, 180)
    drawing = Drawing(2 * SIZE[0], SIZE[1])
    triangles = triangulate(POINTS)
    for triangle in triangles:
        outline(drawing, triangle, PALE)
    around = next(t for t in triangles if contains(t, query))
    shades = (FILL, GREEN, "#fde68a")
    for k in range(3):
        opposite = [around[(k + 1) % 3], around[(k + 2) % 3], query]
        drawing.polygon(opposite, shades[k])
        share = area_of(opposite) / area_of(around)
        x, y = between(around[k], middle_of(around), -0.35)
        drawing.text((x, y), f"{100 * share:.0f} %", NOTE, 14, bold=True)
        drawing.line(around[k], query)
    outline(drawing, around, INK, 2)
    draw_points(drawing)
    drawing.dot(query, NOTE, 5)
    drawing.text((225, 350), "linear: shares of the opposite parts", size=14)

    def moved(p):
        return (p[0] + SIZE[0], p[1])

    for p in POINTS:
        outline(drawing, [moved(x) for x in cell_of(p, POINTS, ((2, 2), (448, 2), (448, 335), (2, 335)))], PALE)
    taken = cell_of(query, POINTS)
    total = area_of(taken)
    for number, p in enumerate(POINTS):
        stolen = cell_of(p, POINTS, taken)
        if len(stolen) < 3:
            continue
        drawing.polygon([moved(x) for x in stolen], shades[number % 3])
        outline(drawing, [moved(x) for x in stolen], INK, 1)
        x, y = moved(between(p, query, -0.22))
        drawing.text((x, y), f"{100 * area_of(stolen) / total:.0f} %", NOTE, 14, bold=True)
    outline(drawing, [moved(x) for x in taken], MARK, 2.5)
    for p in POINTS:
        drawing.dot(moved(p))
    drawing.dot(moved(query), NOTE, 5)
    drawing.text(moved((225, 350)), "natural: shares of what the cell of the query takes", size=14)
    drawing.save("interpolation.svg")


def draw_quality():
    drawing = Drawing(760, 210)
    shapes = [("good", [(20, 150), (180, 150), (100, 11)]), ("pointed", [(20, 150), (180, 150), (34, 118)]),
              ("flat", [(20, 150), (180, 150), (100, 120)]), ("needle", [(90, 150), (112, 150), (98, 11)])]
    for number, (name, corners) in enumerate(shapes):
        corners = [(x + 190 * number, y) for x, y in corners]
        sides = [math.dist(a, b) for a, b in zip(corners, corners[1:] + corners[:1])]
        center, radius = circle_through(*corners)
        inner = 2 * area_of(corners) / sum(sides)
        incenter = tuple(sum(s * c[k] for s, c in zip(sides[1:] + sides[:1], corners)) / sum(sides) for k in (0, 1))
        drawing.polygon(corners)
        outline(drawing, corners)
        drawing.parts.append(f'<circle cx="{incenter[0]:.1f}" cy="{incenter[1]:.1f}" r="{inner:.1f}" fill="none" '
                             f'stroke="{MARK}" stroke-width="1.6"/>')
        drawing.text((100 + 190 * number, 180), name, bold=True)
        drawing.text((100 + 190 * number, 200), f"2 r / R = {2 * inner / radius:.2f}", NOTE, 14)
    drawing.save("quality.svg")


def draw_density():
    drawing = start_mesh(PALE)
    for p, shade in ((POINTS[9], FILL), (POINTS[12], GREEN)):
        for triangle in triangulate(POINTS):
            if p in triangle:
                drawing.polygon(triangle, shade)
                outline(drawing, triangle)
    draw_points(drawing)
    for p in (POINTS[9], POINTS[12]):
        star = sum(area_of(t) for t in triangulate(POINTS) if p in t)
        drawing.dot(p, NOTE, 5)
        drawing.text((p[0] + 4, p[1] - 18), f"3 / {star / 1000:.1f}", NOTE, 15, bold=True)
    drawing.save("density.svg")


def draw_hull():
    drawing = start_mesh(PALE)
    hull = sorted(POINTS[:8], key=lambda p: math.atan2(180 - p[1], p[0] - 225))
    flat = between(POINTS[3], POINTS[4], 0.45)
    drawing.polygon(hull, FILL, 0.4)
    for p, q in zip(hull, hull[1:] + hull[:1]):
        drawing.line(p, flat if p == POINTS[4] else q, MARK, 2.5, arrow=True)
    drawing.line(flat, POINTS[3], MARK, 2.5, arrow=True)
    draw_points(drawing, PALE)
    for p in hull:
        drawing.dot(p, MARK, 5)
    drawing.dot(flat, NOTE, 5)
    drawing.text((355, 225), "ON_EDGE", NOTE, 14, bold=True)
    drawing.text((115, 25), "CORNER", MARK, 14, bold=True)
    drawing.save("hull.svg")


def draw_alpha():
    """Points on a closed curve, and the complex at three radii."""
    curve = []
    for i in range(26):
        angle = 2 * math.pi * i / 26 + 0.05 * math.sin(7 * i)
        radius = 105 + 38 * math.cos(2 * angle)
        curve.append((155 + radius * math.cos(angle), 105 - radius * math.sin(angle)))
    triangles = triangulate(curve)
    radii = {tuple(sorted(t)): circle_through(*t)[1] for t in triangles}
    edges = {}
    for corners, radius in radii.items():
        for k in range(3):
            edges.setdefault(tuple(sorted((corners[k], corners[k - 1]))), []).append(radius)
    for (p, q), around in edges.items():
        middle, half = between(p, q, 0.5), math.dist(p, q) / 2
        empty = all(math.dist(middle, r) > half - 1e-9 for r in curve)
        edges[p, q] = half if empty else min(around)
    drawing = Drawing(930, 230)
    for number, (name, ball) in enumerate((("open", 14), ("closed around a void", 21), ("without voids", 80))):
        def moved(p, x=310 * number):
            return (p[0] + x, p[1])
        inside = [t for t, radius in radii.items() if radius <= ball]
        if number == 1:
            drawing.polygon([moved(p) for p in curve], GREEN, 0.5)
        for triangle in inside:
            drawing.polygon([moved(p) for p in triangle])
        for (p, q), radius in edges.items():
            drawing.line(moved(p), moved(q), MARK if radius <= ball else PALE, 2.5 if radius <= ball else 0.6)
        for p in curve:
            drawing.dot(moved(p), INK, 3.5)
        x, y = moved((155, 105))
        drawing.parts.append(f'<circle cx="{x}" cy="{y}" r="{ball}" fill="none" stroke="{NOTE}" stroke-width="2"/>')
        drawing.text((x, 215), name, bold=True)
    drawing.save("alpha.svg")


if __name__ == "__main__":
    draw_locate()
    draw_nearest()
    draw_voronoi()
    draw_segment()
    draw_interpolation()
    draw_quality()
    draw_density()
    draw_hull()
    draw_alpha()
