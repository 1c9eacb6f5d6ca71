"""Small pictures of lines, areas and letters, as PNG or BMP of 16 colours.

The bytes are the same on every machine: nothing is packed, so no compressor has a say in them.
"""

from __future__ import annotations

import math
import struct
import zlib
from typing import Iterable, Sequence

Point = tuple[float, float]
Rgb = tuple[int, int, int]

WHITE, PAPER, INK, GREY, LIGHT, RED, BLUE, SAND, BROWN = range(9)
BASE: tuple[Rgb, ...] = (
    (255, 255, 255), (247, 248, 250), (32, 40, 52), (128, 138, 150),
    (206, 212, 220), (200, 36, 40), (40, 100, 176), (238, 222, 196), (140, 126, 104),
)
# The others are the mixtures that edges need.
PALETTE: tuple[Rgb, ...] = BASE + (
    (78, 86, 98), (168, 176, 186), (228, 232, 236), (226, 140, 142),
    (240, 200, 200), (146, 178, 216), (200, 216, 236),
)

FINE = 4  # samples per pixel, each way
SMALL = 2  # the small form is so many times smaller

# Strokes of letters in a box of 4 by 6, from its lower left corner.
LETTERS: dict[str, list[list[Point]]] = {
    "A": [[(0, 0), (2, 6), (4, 0)], [(0.8, 2), (3.2, 2)]],
    "N": [[(0, 0), (0, 6), (4, 0), (4, 6)]],
    "b": [[(0.4, 6), (0.4, 0)], [(0.4, 3), (1, 3.8), (2.8, 3.8), (3.6, 3), (3.6, 0.8), (2.8, 0),
                                 (1, 0), (0.4, 0.8)]],
    "h": [[(0.4, 6), (0.4, 0)], [(0.4, 3), (1.2, 3.8), (2.8, 3.8), (3.6, 3), (3.6, 0)]],
    "d": [[(3.6, 6), (3.6, 0)], [(3.6, 3), (3, 3.8), (1.2, 3.8), (0.4, 3), (0.4, 0.8), (1.2, 0),
                                 (3, 0), (3.6, 0.8)]],
    "g": [[(3.6, 3.8), (3.6, -1.2), (2.8, -2), (1, -2)],
          [(3.6, 3), (3, 3.8), (1.2, 3.8), (0.4, 3), (0.4, 0.8), (1.2, 0), (3, 0), (3.6, 0.8)]],
    "a": [[(0.6, 3.8), (2.8, 3.8), (3.6, 3), (3.6, 0)],
          [(3.6, 2.2), (1.2, 2.2), (0.4, 1.5), (0.4, 0.7), (1.2, 0), (2.8, 0), (3.6, 0.8)]],
    "1": [[(0.8, 4.8), (2, 6), (2, 0)], [(0.8, 0), (3.2, 0)]],
    "2": [[(0.2, 4.8), (1.2, 6), (2.8, 6), (3.8, 5), (3.8, 4), (0.2, 0), (3.8, 0)]],
    "3": [[(0.2, 6), (3.8, 6), (1.8, 3.6), (3, 3.6), (3.8, 2.6), (3.8, 1), (2.8, 0), (1.2, 0),
           (0.2, 1)]],
}


class Picture:
    """Drawn on samples; the origin is the lower left corner, lengths are pixels."""

    def __init__(self, width: int = 160, height: int = 120) -> None:
        self.width, self.height = width, height
        self._rows = [bytearray([PAPER]) * (width * FINE) for _ in range(height * FINE)]

    def area(self, points: Sequence[Point], color: int) -> None:
        """Fills a closed shape; where it covers itself twice it is open."""
        self._fill([(x * FINE, (self.height - y) * FINE) for x, y in points], color)

    def box(self, corner: Point, opposite: Point, color: int) -> None:
        (left, low), (right, high) = corner, opposite
        self.area([(left, low), (right, low), (right, high), (left, high)], color)

    def line(self, points: Sequence[Point], color: int = INK, thick: float = 1.5) -> None:
        """Each point gets a round joint, so that corners have no notch."""
        for begin, end in zip(points, points[1:]):
            length = math.dist(begin, end)
            if length == 0.0:
                continue
            across = (thick / 2 * (begin[1] - end[1]) / length,
                      thick / 2 * (end[0] - begin[0]) / length)
            self.area([_plus(begin, across), _plus(end, across),
                       _minus(end, across), _minus(begin, across)], color)
        if thick > 1.0:
            for point in points:
                self.area(circle(point, thick / 2, 12), color)

    def dashes(self, begin: Point, end: Point, color: int = GREY, dash: float = 5.0) -> None:
        length = math.dist(begin, end)
        for index in range(int(length / (2 * dash)) + 1):
            first, last = index * 2 * dash, min((index * 2 + 1) * dash, length)
            self.line([_between(begin, end, first / length), _between(begin, end, last / length)],
                      color, 1.0)

    def hatch(self, corner: Point, opposite: Point, step: float, color: int) -> None:
        """Lines rising to the right, within a box."""
        (left, low), (right, high) = corner, opposite
        start = left - (high - low)
        while start < right:
            begin, end = max(left, start), min(right, start + high - low)
            self.line([(begin, low + begin - start), (end, low + end - start)], color, 1.0)
            start += step

    def letters(self, text: str, origin: Point, height: float, color: int = INK,
                thick: float = 1.5) -> None:
        unit = height / 6
        for index, letter in enumerate(text):
            left = origin[0] + index * 5.6 * unit
            for stroke in LETTERS[letter]:
                self.line([(left + x * unit, origin[1] + y * unit) for x, y in stroke],
                          color, thick)

    def dimension(self, begin: Point, end: Point, text: str = "", color: int = RED) -> None:
        """An arrow at both ends, and the text beside its middle, left of the way from begin."""
        self.line([begin, end], color, 1.2)
        length = math.dist(begin, end)
        along = ((end[0] - begin[0]) / length, (end[1] - begin[1]) / length)
        for point, sign in ((begin, 1), (end, -1)):
            back = (point[0] + sign * 7 * along[0], point[1] + sign * 7 * along[1])
            side = (-along[1] * 2.4, along[0] * 2.4)
            self.area([point, _plus(back, side), _minus(back, side)], color)
        middle = _between(begin, end, 0.5)
        self.letters(text, (middle[0] - along[1] * 10 - 4, middle[1] + along[0] * 10 - 6), 12, color)

    def pixels(self, times_smaller: int = 1) -> list[bytes]:
        """The rows from the top, a byte for each pixel: its place in the palette."""
        step = FINE * times_smaller
        known: dict[bytes, int] = {}
        rows = []
        for top in range(0, len(self._rows), step):
            band = self._rows[top:top + step]
            row = bytearray()
            for left in range(0, self.width * FINE, step):
                samples = b"".join(line[left:left + step] for line in band)
                if samples not in known:
                    known[samples] = _mixture(samples)
                row.append(known[samples])
            rows.append(bytes(row))
        return rows

    def _fill(self, points: Sequence[Point], color: int) -> None:
        first = max(0, math.floor(min(y for _, y in points)))
        last = min(len(self._rows) - 1, math.ceil(max(y for _, y in points)))
        for number in range(first, last + 1):
            crossings = sorted(_crossings(points, number + 0.5))
            for begin, end in zip(crossings[::2], crossings[1::2]):
                left = max(0, math.ceil(begin - 0.5))
                right = min(self.width * FINE, math.ceil(end - 0.5))
                if left < right:
                    self._rows[number][left:right] = bytes([color]) * (right - left)


def circle(center: Point, radius: float, count: int = 60) -> list[Point]:
    return arc(center, radius, 0.0, 360.0, count)[:-1]


def arc(center: Point, radius: float, begin: float, end: float, count: int = 40) -> list[Point]:
    """Points on an arc, angles in degrees from the x axis against the clock."""
    return [(center[0] + radius * math.cos(math.radians(begin + (end - begin) * i / count)),
             center[1] + radius * math.sin(math.radians(begin + (end - begin) * i / count)))
            for i in range(count + 1)]


def png(rows: Sequence[bytes]) -> bytes:
    size = struct.pack(">II", len(rows[0]), len(rows))
    palette = b"".join(bytes(color) for color in PALETTE)
    return (b"\x89PNG\r\n\x1a\n" + _chunk(b"IHDR", size + bytes([4, 3, 0, 0, 0]))
            + _chunk(b"PLTE", palette)
            + _chunk(b"IDAT", _stored(b"".join(b"\0" + _halves(row) for row in rows)))
            + _chunk(b"IEND", b""))


def bmp(rows: Sequence[bytes]) -> bytes:
    """Its rows go from the bottom to the top, each filled up to four bytes."""
    packed = [_halves(row) for row in reversed(rows)]
    data = b"".join(row + bytes(-len(row) % 4) for row in packed)
    palette = b"".join(bytes((blue, green, red, 0)) for red, green, blue in PALETTE)
    offset = 14 + 40 + len(palette)
    return (struct.pack("<2sIHHI", b"BM", offset + len(data), 0, 0, offset)
            + struct.pack("<IiiHHIIiiII", 40, len(rows[0]), len(rows), 1, 4, 0, len(data),
                          3780, 3780, len(PALETTE), 0)
            + palette + data)


def _halves(row: bytes) -> bytes:
    return bytes(left << 4 | right for left, right in zip(row[::2], row[1::2]))


def _chunk(kind: bytes, data: bytes) -> bytes:
    return (struct.pack(">I", len(data)) + kind + data
            + struct.pack(">I", zlib.crc32(kind + data)))


def _stored(data: bytes) -> bytes:
    """A zlib stream of one block that is not packed."""
    assert len(data) < 1 << 16
    return (b"\x78\x01\x01" + struct.pack("<HH", len(data), len(data) ^ 0xFFFF) + data
            + struct.pack(">I", zlib.adler32(data)))


def _mixture(samples: bytes) -> int:
    """The color of the palette that is nearest to the mean of the samples."""
    mean = [sum(PALETTE[sample][part] for sample in samples) / len(samples) for part in range(3)]
    return min(range(len(PALETTE)),
               key=lambda i: sum((PALETTE[i][part] - mean[part]) ** 2 for part in range(3)))


def _crossings(points: Sequence[Point], y: float) -> Iterable[float]:
    for (x1, y1), (x2, y2) in zip(points, [*points[1:], points[0]]):
        if (y1 <= y) != (y2 <= y):
            yield x1 + (y - y1) * (x2 - x1) / (y2 - y1)


def _plus(one: Point, other: Point) -> Point:
    return one[0] + other[0], one[1] + other[1]


def _minus(one: Point, other: Point) -> Point:
    return one[0] - other[0], one[1] - other[1]


def _between(begin: Point, end: Point, part: float) -> Point:
    return begin[0] + (end[0] - begin[0]) * part, begin[1] + (end[1] - begin[1]) * part
