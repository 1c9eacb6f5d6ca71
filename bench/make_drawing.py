#!/usr/bin/env python3
"""Makes a big drawing to measure with: make_drawing.py SIZE_MB FILE [--settings N].

It is R2018 text with the mix of a real plan: a floor with rooms, which stands in it as often as the
size asks for, each time elsewhere and with handles of its own. With --settings, N settings come on
top, below KVR_INI_ROOT and TOOL.INI in chapters of 20. The same arguments give the same file.
"""

from __future__ import annotations

import argparse
import sys
from pathlib import Path
from typing import Callable, Iterable

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "tools"))

from dxf_writer import (AttributeDefinition, Dictionary, Drawing, Placing,  # noqa: E402
                        Record, Space, Tag, TextForm, Version, at)

FORM = TextForm("\r\n")
FLOOR_SPACING = 30000.0
FLOORS_PER_ROW = 50
SETTINGS_PER_CHAPTER = 20
NUMBER = "#"  # in a text of the floor: the number of the repetition

# Codes of coordinates, and of handles, in the records of a floor.
X_CODES, Y_CODES = frozenset(range(10, 19)), frozenset(range(20, 29))
HANDLE_CODES = frozenset((5, 330, 340, 350, 360, 1005))


# --- one floor ----------------------------------------------------------------------------------


def add_blocks(drawing: Drawing) -> tuple[Space, Space]:
    """A door with attributes, and what draws a dimension."""
    for number in range(20):
        drawing.layer(f"LAAG-{number:02d}", number % 7 + 1)
    door = drawing.block("DEUR")
    drawing.line(door, (0, 0), (0, 930))
    drawing.arc(door, (0, 0), 930.0, (0.0, 90.0))
    for row, tag in enumerate(("NUMMER", "BREEDTE", "HOOGTE")):
        drawing.attribute_definition(
            door, AttributeDefinition(tag, "0", (100, 100 + 150 * row), 90.0, f"{tag}:"))
    picture = drawing.block("*D1")
    drawing.line(picture, (0, 0), (3600, 0))
    drawing.text(picture, (1700, 50), 125.0, "3600")
    return door, picture


def add_floor(drawing: Drawing, rooms: Dictionary, door: Space, picture: Space) -> None:
    """No coordinate is 0, which tells those that move from those that do not."""
    for number in range(6):
        x, y = 100.0 + number % 3 * 3700.0, 100.0 + number // 3 * 4700.0
        add_room(drawing, number, (x, y), door)
    for step in range(40):
        x = 11500.0 + 25.37 * step
        drawing.line(drawing.model, (x, 100.0), (x, 9400.0), f"LAAG-{step % 20:02d}")
    drawing.dimension(drawing.model, ((100, 100), (3700, 100)), (1900, 50), picture)
    drawing.mtext(drawing.model, (100, 9800), 125.0,
                  f"Verdieping {NUMBER}\\P" + "Maten in millimeters. " * 14, width=8000.0)
    drawing.xrecord(rooms, f"Verdieping {NUMBER}", (1, f"Verdieping {NUMBER}"), (40, 9.6),
                    *at(11, (1.5, 2.5, 0)), (90, 6), (290, 1))


def add_room(drawing: Drawing, number: int, corner: tuple[float, float], door: Space) -> None:
    model, (x, y), layer = drawing.model, corner, f"LAAG-{number:02d}"
    outline = [(x, y), (x + 3600, y), (x + 3600, y + 4600), (x, y + 4600)]
    drawing.outline(model, outline, layer, closed=True)
    drawing.hatch(model, [(px + 5.25, py + 5.25) for px, py in outline], layer)
    for step in range(8):
        drawing.line(model, (x + 133.3 * step, y + 10.1), (x + 133.3 * step, y + 987.65), layer)
    drawing.text(model, (x + 400, y + 2300), 175.0, f"Ruimte {NUMBER}.{number:02d}", layer=layer)
    inserted = drawing.insert(model, door, (x + 900, y), {"NUMMER": f"D{NUMBER}.{number}",
                                                          "BREEDTE": "930", "HOOGTE": "2315"},
                              how=Placing(angle=90.0 * (number % 4)), layer=layer)
    drawing.attach(inserted, "KVR_TEST", (1000, f"deur {NUMBER}"), (1070, number), (1040, 0.93))
    drawing.xrecord(drawing.extension(inserted), "KVR_DEUR", (1, "enkel"), (40, 930.0), (70, 1))


# --- many floors --------------------------------------------------------------------------------


class Repeater:
    """The text of some records, again and again with other handles and another place."""

    def __init__(self, records: Iterable[Iterable[Tag]], first: int, last: int) -> None:
        self._handles = range(first, last + 1)
        self._slots: list[Callable[[int, float, float], str]] = []
        pieces = []
        for code, value in (tag for record in records for tag in record):
            slot = self._slot(code, value)
            if slot is None:
                pieces.append(FORM.pack([(code, value)], Version.R2018, "utf-8")
                              .decode().replace("%", "%%"))
            else:
                self._slots.append(slot)
                pieces.append(f"{code:3d}{FORM.line_end}%s{FORM.line_end}")
        self._text = "".join(pieces)

    def _slot(self, code: int, value: object) -> Callable[[int, float, float], str] | None:
        """What makes the value of a group that is not the same each time."""
        if code in HANDLE_CODES and int(str(value), 16) in self._handles:
            number, count = int(str(value), 16), len(self._handles)
            return lambda time, x, y: f"{number + time * count:X}"
        if isinstance(value, float) and value != 0.0 and code in X_CODES | Y_CODES:
            start, is_x = value, code in X_CODES
            return lambda time, x, y: repr(round(start + (x if is_x else y), 6))
        if isinstance(value, str) and NUMBER in value:
            before, after = value.split(NUMBER)
            return lambda time, x, y: f"{before}{time}{after}"
        return None

    def text(self, time: int) -> bytes:
        x = time % FLOORS_PER_ROW * FLOOR_SPACING
        y = time // FLOORS_PER_ROW * FLOOR_SPACING
        return (self._text % tuple(slot(time, x, y) for slot in self._slots)).encode()


def settings_tree(count: int) -> dict[str, str | dict[str, str]]:
    chapters = range(0, count, SETTINGS_PER_CHAPTER)
    return {
        f"Hoofdstuk{first // SETTINGS_PER_CHAPTER:05d}": {
            f"Instelling{number:07d}": f"waarde {number}"
            for number in range(first, min(first + SETTINGS_PER_CHAPTER, count))
        }
        for first in chapters
    }


def big_drawing(size: int, settings: int) -> Iterable[bytes]:
    """The pieces of the file."""
    drawing = Drawing(Version.R2018)
    door, picture = add_blocks(drawing)
    rooms = drawing.dictionary(drawing.root, "KVR_RUIMTEN", hard=True)
    drawing.application("KVR_TEST")
    known_objects, first = len(drawing.objects), int(drawing.seed, 16)
    add_floor(drawing, rooms, door, picture)
    last = int(drawing.seed, 16) - 1

    floor_objects = drawing.objects[known_objects:]
    entities = Repeater([record.tags() for record in drawing.model.entities], first, last)
    objects = Repeater([thing.tags(drawing.version) if isinstance(thing, Dictionary)
                        else thing.tags() for thing in floor_objects], first, last)
    times = max(1, (size - len(drawing.packed(FORM)))
                // (len(entities.text(0)) + len(objects.text(0))))

    record = int(rooms.entries[0][1], 16)
    rooms.entries = [(f"Verdieping {time}", f"{record + time * (last - first + 1):X}")
                     for time in range(times)]
    drawing.skip_handles((times - 1) * (last - first + 1))
    drawing.model.entities = [Record("KVR_FLOORS")]
    drawing.objects[known_objects:] = [Record("KVR_FLOORS")]
    if settings:
        drawing.settings("tool.ini", settings_tree(settings))
    head, middle, tail = drawing.packed(FORM).split(FORM.pack([(0, "KVR_FLOORS")],
                                                              drawing.version, "utf-8"))
    yield head
    yield from map(entities.text, range(times))
    yield middle
    yield from map(objects.text, range(times))
    yield tail


def main() -> int:
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("size", type=float, metavar="SIZE_MB")
    parser.add_argument("file", type=Path, metavar="FILE")
    parser.add_argument("--settings", type=int, default=0, metavar="N")
    options = parser.parse_args()
    with options.file.open("wb") as file:
        file.writelines(big_drawing(int(options.size * 1e6), options.settings))
    return 0


if __name__ == "__main__":
    sys.exit(main())
