#!/usr/bin/env python3
"""Draws the control panel's icon and writes it as a multi-size Windows .ico file.

The picture: a rounded square in the product's blue, a white ring open to the right (the "C" of
Corvanite) and an amber seal at its centre, the mark of a signature. Every size is drawn from the
same shapes, anti-aliased by supersampling, so small sizes stay crisp without a bitmap editor.
Only the standard library is used: the 256 px image is stored as PNG, the others as 32-bit DIBs.

    python3 scripts/make-icon.py OUTPUT.ico [--png OUTPUT.png]
"""
import math
import struct
import sys
import zlib

SIZES = (16, 20, 24, 32, 40, 48, 64, 128, 256)

TOP_BLUE = (0x1D, 0x8F, 0xD1)
BOTTOM_BLUE = (0x0B, 0x4F, 0x8A)
WHITE = (0xFF, 0xFF, 0xFF)
AMBER = (0xF5, 0xB0, 0x2E)


def rounded_square_distance(x, y, half, radius):
    """Signed distance to a square of half-width `half` with corners of `radius`, centre 0."""
    qx = abs(x) - (half - radius)
    qy = abs(y) - (half - radius)
    outside = math.hypot(max(qx, 0.0), max(qy, 0.0))
    return outside + min(max(qx, qy), 0.0) - radius


def ring_distance(x, y, inner, outer, gap):
    """Signed distance to a ring between two radii with an opening of `gap` radians to the right."""
    r = math.hypot(x, y)
    band = max(inner - r, r - outer)
    angle = abs(math.atan2(y, x))
    if angle >= gap:
        return band
    # In the opening: the distance to the nearer rounded end of the ring.
    middle = (inner + outer) / 2
    half_width = (outer - inner) / 2
    ex, ey = middle * math.cos(gap), middle * math.sin(gap)
    return math.hypot(x - ex, abs(y) - ey) - half_width


def colour_at(x, y):
    """Colour and coverage of one sample, in units where the icon spans -1..1."""
    if rounded_square_distance(x, y, 0.94, 0.30) > 0:
        return None
    if math.hypot(x - 0.02, y) <= 0.20:
        return AMBER
    if ring_distance(x, y, 0.38, 0.64, math.radians(42)) <= 0:
        return WHITE
    t = (y + 1) / 2
    return tuple(round(a + (b - a) * t) for a, b in zip(TOP_BLUE, BOTTOM_BLUE))


def render(size):
    """Rows of (r, g, b, a) pixels, top row first."""
    samples = 4 if size <= 64 else 3
    rows = []
    for py in range(size):
        row = []
        for px in range(size):
            r = g = b = a = 0
            for sy in range(samples):
                for sx in range(samples):
                    x = ((px + (sx + 0.5) / samples) / size) * 2 - 1
                    y = ((py + (sy + 0.5) / samples) / size) * 2 - 1
                    colour = colour_at(x, y)
                    if colour:
                        r += colour[0]
                        g += colour[1]
                        b += colour[2]
                        a += 1
            if a:
                row.append((r // a, g // a, b // a, 255 * a // (samples * samples)))
            else:
                row.append((0, 0, 0, 0))
        rows.append(row)
    return rows


def png_bytes(rows):
    def chunk(kind, data):
        body = kind + data
        return struct.pack(">I", len(data)) + body + struct.pack(">I", zlib.crc32(body))

    size = len(rows)
    raw = b"".join(b"\0" + bytes(c for pixel in row for c in pixel) for row in rows)
    header = struct.pack(">IIBBBBB", size, size, 8, 6, 0, 0, 0)
    return (b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(raw, 9))
            + chunk(b"IEND", b""))


def dib_bytes(rows):
    """A 32-bit BGRA DIB as an .ico holds it: double height, bottom-up, then the AND mask."""
    size = len(rows)
    header = struct.pack("<IiiHHIIiiII", 40, size, size * 2, 1, 32, 0, 0, 0, 0, 0, 0)
    pixels = b"".join(bytes((b, g, r, a)) for row in reversed(rows) for (r, g, b, a) in row)
    mask_stride = ((size + 31) // 32) * 4
    mask = bytearray()
    for row in reversed(rows):
        bits = bytearray(mask_stride)
        for x, pixel in enumerate(row):
            if pixel[3] == 0:
                bits[x // 8] |= 0x80 >> (x % 8)
        mask += bits
    return header + pixels + bytes(mask)


def ico_bytes(images):
    count = len(images)
    offset = 6 + 16 * count
    directory = struct.pack("<HHH", 0, 1, count)
    data = b""
    for size, blob in images:
        side = 0 if size >= 256 else size
        directory += struct.pack("<BBBBHHII", side, side, 0, 0, 1, 32, len(blob), offset)
        offset += len(blob)
        data += blob
    return directory + data


def main(argv):
    if len(argv) not in (2, 4) or (len(argv) == 4 and argv[2] != "--png"):
        print(__doc__, file=sys.stderr)
        return 2
    images = []
    for size in SIZES:
        rows = render(size)
        images.append((size, png_bytes(rows) if size >= 256 else dib_bytes(rows)))
        if size == 256 and len(argv) == 4:
            with open(argv[3], "wb") as out:
                out.write(png_bytes(rows))
    with open(argv[1], "wb") as out:
        out.write(ico_bytes(images))
    return 0


if __name__ == "__main__":
    sys.exit(main(sys.argv))
