#!/usr/bin/env python3
"""Writes samples/sample.sld: a flanged valve symbol as the CAD host would
save it, using every record kind the renderer reads (absolute, offset and
common-endpoint vectors, colour changes, solid fills with their markers).

    python3 samples/make_sample.py            # rewrites samples/sample.sld
"""
import math
import os
import struct

HIGH_X, HIGH_Y = 639, 479


class Slide:
    def __init__(self):
        self.data = bytearray(b"AutoCAD Slide\r\n\x1a\x00\x56\x02")
        self.data += struct.pack("<HHIHH", HIGH_X, HIGH_Y, int(HIGH_X / HIGH_Y * 1e7), 0, 0x1234)
        self.last = (0, 0)

    def colour(self, index):
        self.data += bytes([index, 0xFF])

    def vector(self, x1, y1, x2, y2):
        self.data += struct.pack("<HHHH", x1, y1, x2, y2)
        self.last = (x1, y1)

    def to(self, x, y):
        """Common-endpoint vectors from the last point, split into steps
        that fit the signed-byte offsets."""
        while self.last != (x, y):
            dx = max(-127, min(127, x - self.last[0]))
            dy = max(-127, min(127, y - self.last[1]))
            self.data += struct.pack("<bBb", dx, 0xFE, dy)
            self.last = (self.last[0] + dx, self.last[1] + dy)

    def offset(self, dx1, dy1, dx2, dy2):
        self.data += struct.pack("<bBbbb", dx1, 0xFB, dy1, dx2, dy2)
        self.last = (self.last[0] + dx1, self.last[1] + dy1)

    def fill(self, points):
        self.data += struct.pack("<BBHH", 0, 0xFD, len(points), 0xFFFF)
        for x, y in points:
            self.data += struct.pack("<BBHH", 0, 0xFD, x, y)
        self.data += struct.pack("<BBHH", 0, 0xFD, 0, 0xFFFF)

    def end(self):
        self.data += b"\x00\xFC"


def polyline(slide, points):
    # An absolute vector leaves the last point at its from-point, so a
    # zero-length one places the pen and endpoint vectors do the rest.
    slide.vector(points[0][0], points[0][1], points[0][0], points[0][1])
    for x, y in points[1:]:
        slide.to(x, y)


def main():
    s = Slide()
    cx, cy = 320, 240
    # Pipe runs in cyan, flanges in white.
    s.colour(4)
    polyline(s, [(40, 220), (200, 220), (200, 260), (40, 260), (40, 220)])
    polyline(s, [(440, 220), (600, 220), (600, 260), (440, 260), (440, 220)])
    s.colour(7)
    for x in (200, 440):
        polyline(s, [(x - 8, 180), (x + 8, 180), (x + 8, 300), (x - 8, 300), (x - 8, 180)])
    # The valve body: two filled triangles meeting at the centre.
    s.colour(1)
    s.fill([(208, 180), (cx, cy), (208, 300)])
    s.fill([(432, 180), (cx, cy), (432, 300)])
    # The hand wheel: a circle of common-endpoint vectors on a stem.
    s.colour(3)
    s.vector(cx, cy, cx, 380)
    r = 50
    pts = [(cx + round(r * math.cos(a * math.pi / 18)), 380 + round(r * math.sin(a * math.pi / 18))) for a in range(37)]
    polyline(s, pts)
    # Spokes as offset vectors from the wheel's centre.
    s.colour(2)
    s.vector(cx, 380, cx, 380)
    for dx, dy in ((45, 0), (-45, 0), (0, 45), (0, -45), (32, 32), (-32, -32)):
        s.offset(0, 0, dx, dy)
    # A border round the whole slide in dark grey.
    s.colour(252)
    polyline(s, [(0, 0), (HIGH_X, 0), (HIGH_X, HIGH_Y), (0, HIGH_Y), (0, 0)])
    s.end()
    out = os.path.join(os.path.dirname(os.path.abspath(__file__)), "sample.sld")
    with open(out, "wb") as f:
        f.write(s.data)


if __name__ == "__main__":
    main()
