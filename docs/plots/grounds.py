"""Grounds to drive on, as (vertices, triangles): height fields over x and z, +Y up, metres."""

import math


def height_field(height, x_range, z_range, columns, rows):
    """The surface y = height(x, z) on a grid of columns x rows cells."""
    x0, x1 = x_range
    z0, z1 = z_range
    vertices = []
    for row in range(rows + 1):
        z = z0 + (z1 - z0) * row / rows
        for column in range(columns + 1):
            x = x0 + (x1 - x0) * column / columns
            vertices.append((x, height(x, z), z))
    triangles = []
    for row in range(rows):
        for column in range(columns):
            a = row * (columns + 1) + column
            b, c, d = a + 1, a + columns + 1, a + columns + 2
            triangles += [(a, c, b), (b, c, d)]
    return vertices, triangles


def profile(points, half_width=8.0):
    """A road along -Z whose height over the distance driven is the polyline through (distance, height)."""
    vertices = []
    for distance, height in points:
        vertices += [(-half_width, height, -distance), (half_width, height, -distance)]
    triangles = []
    for i in range(len(points) - 1):
        a = 2 * i
        triangles += [(a, a + 1, a + 2), (a + 1, a + 3, a + 2)]
    return vertices, triangles


def kerb(height=0.1, at=15.0):
    return profile([(-30, 0), (at, 0), (at + 0.001, height), (200, height)])


def jump(length=12.0, height=1.2, at=40.0):
    return profile([(-30, 0), (at, 0), (at + length, height), (at + length + 0.001, 0), (300, 0)])


def hill(degrees=20.0, at=12.0, length=60.0):
    """A slope that begins and ends in a curve of 8 m, as roads do."""
    slope = math.tan(math.radians(degrees))
    curve = 8.0
    points = [(-30.0, 0.0), (at, 0.0)]
    height = 0.0
    steps = 32
    for i in range(1, steps + 1):
        height += slope * (i - 0.5) / steps * curve / steps
        points.append((at + curve * i / steps, height))
    height += slope * length
    points.append((at + curve + length, height))
    for i in range(1, steps + 1):
        height += slope * (1 - (i - 0.5) / steps) * curve / steps
        points.append((at + curve + length + curve * i / steps, height))
    points.append((400.0, height))
    return profile(points)


def rough(amplitude=0.12):
    """Waves of several lengths in both directions, flat for the first metres."""

    def height(x, z):
        start = min(1.0, max(0.0, (-z - 6.0) / 8.0))
        return start * amplitude * (math.sin(0.9 * z + 0.3 * x) + 0.6 * math.sin(1.7 * x - 0.8 * z) +
                                    0.3 * math.sin(3.1 * z + 2.3 * x))

    return height_field(height, (-30, 30), (-170, 20), 120, 380)
