#!/usr/bin/env python3
"""Draws the KestUi welcome-page logo and writes WelcomePageLogo.png beside this script.

The logo is a hovering kestrel built from swept wing blades above the wordmark "KestUi", on a
transparent background: 1,280 x 1,280 pixels, 8-bit RGBA. The driver embeds the file in its image
package, whose size fields are fixed, so the file must be exactly FILE_SIZE bytes: the image is
compressed and then padded with a private ancillary chunk. The script stops with an error when the
compressed image does not leave room for that chunk.

Everything is drawn from geometry (no fonts, no input files) with the standard library only, so
the same zlib gives the same bytes on every machine.

Usage: MakeWelcomePageLogo.py [OUTPUT]   (default: WelcomePageLogo.png beside this script)
"""

import array
import math
import struct
import sys
import zlib
from pathlib import Path

WIDTH = 1280
HEIGHT = 1280
FILE_SIZE = 63655
SUBSAMPLES = 16  # sample rows per pixel row; columns are covered exactly

RUST = (0xD9, 0x5B, 0x2B)
AMBER = (0xF0, 0x8A, 0x32)
GOLD = (0xF7, 0xB5, 0x4A)
IVORY = (0xF4, 0xF1, 0xEA)


# ----------------------------------------------------------------------------------------------
# Geometry: every shape is a list of closed contours (lists of points, y down). Filled contours have
# a positive signed area, holes a negative one; the rasteriser fills by the non-zero rule, so
# overlapping pieces of one shape simply merge.
# ----------------------------------------------------------------------------------------------


def signed_area(contour):
    area = 0.0
    for index, (x0, y0) in enumerate(contour):
        x1, y1 = contour[(index + 1) % len(contour)]
        area += x0 * y1 - x1 * y0
    return area / 2.0


def oriented(contour, hole=False):
    """The contour turned so that it fills (or, for a hole, cuts)."""
    if (signed_area(contour) < 0) != hole:
        return contour[::-1]
    return contour


def cubic(p0, p1, p2, p3, steps=48):
    """Points of a cubic Bezier curve, without its first point."""
    points = []
    for step in range(1, steps + 1):
        t = step / steps
        u = 1.0 - t
        a, b, c, d = u * u * u, 3 * u * u * t, 3 * u * t * t, t * t * t
        points.append((a * p0[0] + b * p1[0] + c * p2[0] + d * p3[0], a * p0[1] + b * p1[1] + c * p2[1] + d * p3[1]))
    return points


def path(start, *curves):
    """A closed contour from a start point and cubic segments given as (control, control, end)."""
    points = [start]
    for control1, control2, end in curves:
        points.extend(cubic(points[-1], control1, control2, end))
    if points[-1] == points[0]:
        points.pop()
    return points


def circle(cx, cy, radius, hole=False):
    steps = max(32, int(radius * 0.8))
    contour = [(cx + radius * math.cos(2 * math.pi * k / steps), cy + radius * math.sin(2 * math.pi * k / steps))
               for k in range(steps)]
    return oriented(contour, hole)


def capsule(x0, y0, x1, y1, width):
    """A straight stroke with round ends."""
    radius = width / 2.0
    angle = math.atan2(y1 - y0, x1 - x0)
    steps = 24
    contour = []
    for k in range(steps + 1):
        a = angle + math.pi / 2 + math.pi * k / steps
        contour.append((x0 + radius * math.cos(a), y0 + radius * math.sin(a)))
    for k in range(steps + 1):
        a = angle - math.pi / 2 + math.pi * k / steps
        contour.append((x1 + radius * math.cos(a), y1 + radius * math.sin(a)))
    return oriented(contour)


def outline(contour, width):
    """A stroke along a closed contour: one round-ended piece per edge."""
    return [capsule(x0, y0, x1, y1, width) for (x0, y0), (x1, y1) in zip(contour, contour[1:] + contour[:1])]


def arc(cx, cy, rx, ry, start, end, width, caps=True):
    """A stroke along an elliptical arc, angles in degrees, counted clockwise on screen from 3 o'clock."""
    half = width / 2.0
    steps = max(24, int(abs(end - start) / 3))
    outer, inner = [], []
    for k in range(steps + 1):
        a = math.radians(start + (end - start) * k / steps)
        x, y = cx + rx * math.cos(a), cy + ry * math.sin(a)
        nx, ny = ry * math.cos(a), rx * math.sin(a)  # outward normal of the ellipse
        length = math.hypot(nx, ny)
        nx, ny = nx / length, ny / length
        outer.append((x + half * nx, y + half * ny))
        inner.append((x - half * nx, y - half * ny))
    contour = outer + inner[::-1]
    pieces = [oriented(contour)]
    if caps:
        for a in (start, end):
            r = math.radians(a)
            pieces.append(circle(cx + rx * math.cos(r), cy + ry * math.sin(r), half))
    return pieces


# ----------------------------------------------------------------------------------------------
# Rasteriser: exact coverage across each sample row, SUBSAMPLES sample rows per pixel row.
# ----------------------------------------------------------------------------------------------


class Coverage:
    """Coverage (0..1) of a shape over its bounding box."""

    def __init__(self, contours):
        xs = [x for contour in contours for x, _ in contour]
        ys = [y for contour in contours for _, y in contour]
        self.x0 = max(0, int(math.floor(min(xs))))
        self.x1 = min(WIDTH, int(math.ceil(max(xs))) + 1)
        self.y0 = max(0, int(math.floor(min(ys))))
        self.y1 = min(HEIGHT, int(math.ceil(max(ys))) + 1)
        self.rows = self._rasterise(contours)

    def _rasterise(self, contours):
        width = self.x1 - self.x0
        first_sample = self.y0 * SUBSAMPLES
        crossings = [[] for _ in range((self.y1 - self.y0) * SUBSAMPLES)]
        for contour in contours:
            for index, (xa, ya) in enumerate(contour):
                xb, yb = contour[(index + 1) % len(contour)]
                if ya == yb:
                    continue
                winding = 1 if yb > ya else -1
                top, bottom = min(ya, yb), max(ya, yb)
                slope = (xb - xa) / (yb - ya)
                # Sample row s lies at y = (s + 0.5) / SUBSAMPLES.
                first = max(first_sample, math.ceil(top * SUBSAMPLES - 0.5))
                last = min(self.y1 * SUBSAMPLES, math.ceil(bottom * SUBSAMPLES - 0.5))
                for sample in range(first, last):
                    y = (sample + 0.5) / SUBSAMPLES
                    crossings[sample - first_sample].append((xa + (y - ya) * slope, winding))

        weight = 1.0 / SUBSAMPLES
        rows = []
        for row in range(self.y1 - self.y0):
            direct = [0.0] * (width + 1)
            steps = [0.0] * (width + 1)
            for sample in range(row * SUBSAMPLES, (row + 1) * SUBSAMPLES):
                winding = 0
                span_start = 0.0
                for x, direction in sorted(crossings[sample]):
                    if winding == 0:
                        span_start = x
                    winding += direction
                    if winding == 0:
                        self._add_span(direct, steps, span_start - self.x0, x - self.x0, width, weight)
            coverage = []
            running = 0.0
            for column in range(width):
                running += steps[column]
                coverage.append(min(1.0, running + direct[column]))
            rows.append(coverage)
        return rows

    @staticmethod
    def _add_span(direct, steps, start, end, width, weight):
        start = max(0.0, start)
        end = min(float(width), end)
        if end <= start:
            return
        first, last = int(start), int(end)
        if first == last:
            direct[first] += (end - start) * weight
            return
        direct[first] += (first + 1 - start) * weight
        if last < width:
            direct[last] += (end - last) * weight
        steps[first + 1] += weight
        steps[last] -= weight


class Canvas:
    """Premultiplied RGBA in floating point; shapes are laid over what is already there."""

    def __init__(self):
        size = WIDTH * HEIGHT
        self.red = array.array("d", bytes(8 * size))
        self.green = array.array("d", bytes(8 * size))
        self.blue = array.array("d", bytes(8 * size))
        self.alpha = array.array("d", bytes(8 * size))

    def paint(self, contours, colour):
        coverage = Coverage(contours)
        red, green, blue = (channel / 255.0 for channel in colour)
        for row, values in enumerate(coverage.rows):
            base = (coverage.y0 + row) * WIDTH + coverage.x0
            for column, amount in enumerate(values):
                if amount <= 0.0:
                    continue
                index = base + column
                keep = 1.0 - amount
                self.red[index] = red * amount + self.red[index] * keep
                self.green[index] = green * amount + self.green[index] * keep
                self.blue[index] = blue * amount + self.blue[index] * keep
                self.alpha[index] = amount + self.alpha[index] * keep

    def erase(self, contours):
        """Cuts the shape out of what is already there."""
        coverage = Coverage(contours)
        for row, values in enumerate(coverage.rows):
            base = (coverage.y0 + row) * WIDTH + coverage.x0
            for column, amount in enumerate(values):
                if amount <= 0.0:
                    continue
                index = base + column
                keep = 1.0 - amount
                self.red[index] *= keep
                self.green[index] *= keep
                self.blue[index] *= keep
                self.alpha[index] *= keep

    def rgba_rows(self):
        """Straight (not premultiplied) 8-bit RGBA rows."""
        for y in range(HEIGHT):
            row = bytearray(WIDTH * 4)
            base = y * WIDTH
            for x in range(WIDTH):
                alpha = self.alpha[base + x]
                byte_alpha = int(alpha * 255.0 + 0.5)
                if byte_alpha == 0:
                    continue
                offset = 4 * x
                row[offset] = min(255, int(self.red[base + x] / alpha * 255.0 + 0.5))
                row[offset + 1] = min(255, int(self.green[base + x] / alpha * 255.0 + 0.5))
                row[offset + 2] = min(255, int(self.blue[base + x] / alpha * 255.0 + 0.5))
                row[offset + 3] = byte_alpha
            yield bytes(row)


# ----------------------------------------------------------------------------------------------
# The drawing.
# ----------------------------------------------------------------------------------------------


def mirrored(contours, axis):
    """The contours reflected about the vertical line x = axis."""
    return [oriented([(2 * axis - x, y) for x, y in contour]) for contour in contours]


def wing_blade(root_top, root_bottom, tip, lift, sweep):
    """One swept feather: a convex leading edge out to the tip and a concave trailing edge back."""
    (tx, ty), (ax, ay), (bx, by) = tip, root_top, root_bottom
    leading = ((ax + (tx - ax) * 0.35, ay - lift), (tx + (ax - tx) * 0.25, ty - lift * 0.35), tip)
    trailing = ((tx + (bx - tx) * 0.30, ty + sweep), (bx + (tx - bx) * 0.30, by + sweep * 0.2), root_bottom)
    return [oriented(path(root_top, leading, trailing))]


def draw_mark(canvas):
    """The kestrel: three blades a wing, the body over them, the head above."""
    centre = WIDTH / 2
    blades = [
        # (root top, root bottom, tip, lift of the leading edge, sweep of the trailing edge, colour):
        # three primaries, the longest on top, each shorter and lighter than the one above.
        ((600, 350), (612, 420), (150, 170), 120, 70, RUST),
        ((604, 420), (616, 480), (215, 330), 90, 55, AMBER),
        ((608, 480), (620, 535), (300, 470), 60, 40, GOLD),
    ]
    for root_top, root_bottom, tip, lift, sweep, colour in blades:
        blade = wing_blade(root_top, root_bottom, tip, lift, sweep)
        canvas.paint(blade + mirrored(blade, centre), colour)

    body = path((centre, 318),
                ((centre + 34, 318), (centre + 58, 340), (centre + 58, 392)),
                ((centre + 58, 460), (centre + 30, 520), (centre + 26, 560)),
                ((centre + 58, 650), (centre + 78, 710), (centre + 78, 764)),
                ((centre + 40, 776), (centre - 40, 776), (centre - 78, 764)),
                ((centre - 78, 710), (centre - 58, 650), (centre - 26, 560)),
                ((centre - 30, 520), (centre - 58, 460), (centre - 58, 392)),
                ((centre - 58, 340), (centre - 34, 318), (centre, 318)))
    # A narrow gap parts the body from the wings that it crosses.
    canvas.erase(outline(body, 20))
    canvas.paint([oriented(body)], RUST)
    # The head is turned in profile, hooked beak to the left, as on a crest.
    head_x, head_y, head_radius = centre + 6, 262, 44
    beak = path((head_x - 30, head_y - 22),
                ((head_x - 62, head_y - 20), (head_x - 76, head_y + 6), (head_x - 70, head_y + 34)),
                ((head_x - 62, head_y + 22), (head_x - 48, head_y + 14), (head_x - 30, head_y + 18)))
    canvas.paint([circle(head_x, head_y, head_radius), oriented(beak)], RUST)
    canvas.erase([circle(head_x - 12, head_y - 8, 8)])


def moved(contours, dx, dy=0.0):
    """The contours shifted by (dx, dy)."""
    return [[(x + dx, y + dy) for x, y in contour] for contour in contours]


# The wordmark: monoline geometric letters with round ends. Each glyph is drawn with its left edge at
# x = 0 and its baseline at y = 0 and returns its contours and its advance.
STROKE = 42
HALF = STROKE / 2
CAP = 230
XHEIGHT = 170


def glyph_k():
    return [capsule(HALF, -CAP + HALF, HALF, -HALF, STROKE),
            capsule(150, -CAP + HALF, HALF + 10, -CAP * 0.40, STROKE),
            capsule(HALF + 62, -CAP * 0.56, 156, -HALF, STROKE)], 156 + HALF


def glyph_e():
    radius = (XHEIGHT - STROKE) / 2
    cx, cy = HALF + radius, -XHEIGHT / 2
    contours = arc(cx, cy, radius, radius, 0, -318, STROKE) + [capsule(cx - radius, cy, cx + radius, cy, STROKE * 0.85)]
    return contours, 2 * radius + STROKE


def glyph_s():
    radius = (XHEIGHT - STROKE) / 4
    stretch = 1.3
    cx = HALF + radius * stretch
    top, bottom = -XHEIGHT + HALF + radius, -HALF - radius
    contours = arc(cx, top, radius * stretch, radius, -25, -270, STROKE) + arc(cx, bottom, radius * stretch, radius,
                                                                               -90, 155, STROKE)
    return contours, 2 * radius * stretch + STROKE


def glyph_t():
    hook = 38
    stem = HALF + 12
    contours = [capsule(stem, -CAP * 0.90, stem, -hook - HALF, STROKE),
                capsule(HALF - 8, -XHEIGHT + HALF, stem + 62, -XHEIGHT + HALF, STROKE)]
    contours += arc(stem + hook, -hook - HALF, hook, hook, 180, 90, STROKE)
    return contours, stem + 62 + HALF


def glyph_u():
    bowl = 82
    contours = [capsule(HALF, -CAP + HALF, HALF, -bowl - HALF, STROKE),
                capsule(HALF + 2 * bowl, -CAP + HALF, HALF + 2 * bowl, -bowl - HALF, STROKE)]
    contours += arc(HALF + bowl, -bowl - HALF, bowl, bowl, 0, 180, STROKE, caps=False)
    return contours, 2 * bowl + STROKE


def glyph_i():
    return [capsule(HALF, -XHEIGHT + HALF, HALF, -HALF, STROKE), circle(HALF, -CAP + 27, 27)], STROKE


def draw_wordmark(canvas, baseline):
    """"KestUi" centred on the canvas, "Kest" in ivory and "Ui" in amber."""
    letters = [(glyph_k, IVORY), (glyph_e, IVORY), (glyph_s, IVORY), (glyph_t, IVORY), (glyph_u, AMBER),
               (glyph_i, AMBER)]
    gaps = [34, 40, 38, 48, 44]  # spacing after each letter but the last, set by eye
    placed = []
    x = 0.0
    for index, (glyph, colour) in enumerate(letters):
        contours, advance = glyph()
        placed.append((contours, x, colour))
        x += advance + (gaps[index] if index < len(gaps) else 0)
    left = (WIDTH - x) / 2
    for colour in (IVORY, AMBER):
        pieces = [c for contours, at, col in placed if col == colour for c in moved(contours, left + at, baseline)]
        canvas.paint(pieces, colour)


# ----------------------------------------------------------------------------------------------
# PNG writing.
# ----------------------------------------------------------------------------------------------


def paeth(a, b, c):
    p = a + b - c
    pa, pb, pc = abs(p - a), abs(p - b), abs(p - c)
    if pa <= pb and pa <= pc:
        return a
    return b if pb <= pc else c


def filtered(rows):
    """Each row with the filter of the smallest sum of absolute differences (the usual heuristic)."""
    previous = bytes(WIDTH * 4)
    out = bytearray()
    for row in rows:
        if not any(row):
            out.append(0)
            out += row
            previous = row
            continue
        left = bytes(4) + row[:-4]
        upper_left = bytes(4) + previous[:-4]
        candidates = [
            (0, row),
            (1, bytes((r - a) & 0xFF for r, a in zip(row, left))),
            (2, bytes((r - b) & 0xFF for r, b in zip(row, previous))),
            (3, bytes((r - ((a + b) >> 1)) & 0xFF for r, a, b in zip(row, left, previous))),
            (4, bytes((r - paeth(a, b, c)) & 0xFF for r, a, b, c in zip(row, left, previous, upper_left))),
        ]
        kind, data = min(candidates, key=lambda item: sum(v if v < 128 else 256 - v for v in item[1]))
        out.append(kind)
        out += data
        previous = row
    return bytes(out)


def chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data) & 0xFFFFFFFF)


def encode(rows):
    header = struct.pack(">IIBBBBB", WIDTH, HEIGHT, 8, 6, 0, 0, 0)
    compressed = zlib.compress(filtered(rows), 9)
    head = b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"tEXt", b"Title\x00KestUi")
    tail = chunk(b"IDAT", compressed) + chunk(b"IEND", b"")
    room = FILE_SIZE - len(head) - len(tail)
    if room < 12:
        raise SystemExit(f"the compressed logo takes {len(head) + len(tail)} bytes; "
                         f"at most {FILE_SIZE - 12} leave room for the padding chunk")
    # "paDd": ancillary, private, safe to copy; decoders skip it.
    return head + chunk(b"paDd", bytes(room - 12)) + tail


def main():
    output = Path(sys.argv[1]) if len(sys.argv) > 1 else Path(__file__).with_name("WelcomePageLogo.png")
    canvas = Canvas()
    draw_mark(canvas)
    draw_wordmark(canvas, 1120)
    png = encode(list(canvas.rgba_rows()))
    if len(png) != FILE_SIZE:
        raise SystemExit(f"internal error: the logo came to {len(png)} bytes, not {FILE_SIZE}")
    output.write_bytes(png)
    print(f"{output}: {len(png)} bytes")


if __name__ == "__main__":
    main()
