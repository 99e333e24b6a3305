#!/usr/bin/env python3
"""Draws blobs.png, the image that examples/measure_regions.cpp measures where there is no other: python3 draw_blobs.py"""
import math
import struct
import zlib

WIDTH, HEIGHT = 240, 160


def turned(x, y, cx, cy, degrees):
    c, s = math.cos(math.radians(degrees)), math.sin(math.radians(degrees))
    return c * (x - cx) + s * (y - cy), -s * (x - cx) + c * (y - cy)


def inside(x, y):
    """Whether a point lies in a disc, a ring, an ellipse, a square or an L."""
    if math.hypot(x - 40, y - 40) < 28 or 14 < math.hypot(x - 120, y - 44) < 30:
        return True
    u, v = turned(x, y, 195, 50, 25)
    if (u / 36) ** 2 + (v / 15) ** 2 < 1:
        return True
    u, v = turned(x, y, 60, 115, 30)
    if max(abs(u), abs(v)) < 24:
        return True
    return 130 < x < 200 and 100 < y < 145 and (x < 150 or y > 125)


def gray(column, row):
    """The share of the pixel that lies inside, of 4 x 4 points, on a background that brightens to the right."""
    hits = sum(inside(column + (i + 0.5) / 4, row + (j + 0.5) / 4) for i in range(4) for j in range(4))
    return 30 + 40 * column // WIDTH + 140 * hits // 16


def chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


rows = b"".join(b"\0" + bytes(gray(x, y) for x in range(WIDTH)) for y in range(HEIGHT))
with open("blobs.png", "wb") as file:
    file.write(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", WIDTH, HEIGHT, 8, 0, 0, 0, 0)) +
               chunk(b"IDAT", zlib.compress(rows, 9)) + chunk(b"IEND", b""))
