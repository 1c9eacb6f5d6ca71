#!/usr/bin/env python3
"""Makes the pictures that Plattegrond shows beside its settings: make_pictures.py [--check].

Each has a small form of half its size, S_ before its name, for the list of settings.
With --check nothing is written; the exit status is 1 when a file differs from what is made here.
"""

from __future__ import annotations

import sys
from pathlib import Path

HERE = Path(__file__).resolve().parent
sys.path[:0] = [str(HERE.parent / "tools"), str(HERE)]

from made_files import write_or_check  # noqa: E402
from picture import (BLUE, BROWN, GREY, INK, LIGHT, RED, SAND, SMALL, WHITE,  # noqa: E402
                     Picture, arc, bmp, circle, png)

FOLDER = HERE / "plattegrond"


def door_width() -> Picture:
    """A door in plan, standing open, with its swing and the width of its leaf."""
    picture = Picture()
    for left, right in ((6, 38), (113, 154)):
        picture.box((left, 34), (right, 50), SAND)
        picture.hatch((left, 34), (right, 50), 6, BROWN)
        picture.line([(left, 34), (right, 34)], INK, 2.0)
        picture.line([(left, 50), (right, 50)], INK, 2.0)
    for left in (36, 110):
        picture.box((left, 32), (left + 5, 52), INK)
    hinge, width = (42, 46), 67
    picture.line(arc(hinge, width, 0, 78), GREY, 1.0)
    picture.line([hinge, arc(hinge, width, 78, 78, 1)[0]], BLUE, 5.0)
    picture.dashes((42, 8), (42, 34))
    picture.dashes((109, 8), (109, 34))
    picture.dimension((42, 12), (109, 12), "b")
    return picture


def stair_rise() -> Picture:
    """Three steps from the side: rise h, going a, and the nosing."""
    picture = Picture()
    rise, going, nosing = 28.0, 42.0, 7.0
    for step in range(3):
        left, low = 12 + step * going, 8 + step * rise
        picture.box((left, low), (left + 4, low + rise - 6), LIGHT)
        picture.line([(left, low), (left, low + rise - 6)], INK, 1.2)
        picture.box((left - nosing, low + rise - 6), (left + going + 4, low + rise), SAND)
        picture.line([(left + going, low + rise - 6), (left - nosing, low + rise - 6),
                      (left - nosing, low + rise), (left + going, low + rise)], INK, 1.5)
    picture.dashes((96, 36), (150, 36))
    picture.dimension((132, 64), (132, 36), "h")
    picture.dashes((5, 36), (5, 114))
    picture.dashes((47, 64), (47, 114))
    picture.dimension((5, 104), (47, 104), "g")
    return picture


def text_height() -> Picture:
    """Lettering between two lines: only capitals reach the height, tails go below."""
    picture = Picture()
    picture.letters("Abg", (12, 40), 44, INK, 4.5)
    picture.dashes((4, 40), (150, 40))
    picture.dashes((4, 84), (150, 84))
    picture.dimension((136, 84), (136, 40), "h")
    return picture


def dimension_rows() -> Picture:
    """Three rows of dimensions above a wall: from openings to the whole."""
    picture = Picture()
    picture.box((14, 6), (146, 18), SAND)
    picture.line([(14, 6), (146, 6), (146, 18), (14, 18), (14, 6)], INK, 1.5)
    picture.box((60, 5), (96, 19), WHITE)
    picture.line([(60, 5), (60, 19)], INK, 1.5)
    picture.line([(96, 5), (96, 19)], INK, 1.5)
    picture.line([(60, 12), (96, 12)], BLUE, 1.5)
    rows = ((46, (14, 60, 96, 146)), (72, (14, 78, 146)), (98, (14, 146)))
    for number, (height, ends) in enumerate(rows, 1):
        picture.line([(9, height), (151, height)], INK, 1.2)
        for end in ends:
            picture.line([(end, height - 20 if number == 1 else height - 6), (end, height + 5)],
                         GREY, 1.0)
            picture.line([(end - 4, height - 4), (end + 4, height + 4)], INK, 2.0)
        picture.letters(str(number), (26, height + 4), 10, BLUE)
    picture.dimension((120, 18), (120, 46))
    picture.dimension((120, 46), (120, 72))
    picture.dimension((120, 72), (120, 98))
    return picture


def wall_thickness() -> Picture:
    """A cavity wall in plan, cut off at both sides: its leaves and the thickness of all."""
    picture = Picture()
    leaves = ((92, 112, SAND), (84, 92, WHITE), (60, 84, LIGHT), (34, 60, SAND))
    for low, high, color in leaves:
        picture.box((8, low), (118, high), color)
        picture.line([(8, low), (118, low)], INK, 1.2)
    picture.line([(8, 112), (118, 112)], INK, 2.0)
    picture.line([(8, 34), (118, 34)], INK, 2.0)
    picture.hatch((8, 92), (118, 112), 8, BROWN)
    picture.hatch((8, 34), (118, 60), 14, BROWN)
    wave = [(8 + 5.5 * i, 82.0 if i % 2 else 62.0) for i in range(21)]
    picture.line(wave, GREY, 1.2)
    picture.dashes((118, 34), (146, 34))
    picture.dashes((118, 112), (146, 112))
    picture.dimension((140, 112), (140, 34), "d")
    picture.line([(20, 112), (20, 20), (28, 20)], BLUE, 1.0)
    picture.letters("1", (32, 14), 12, BLUE)
    picture.line([(60, 72), (60, 20), (68, 20)], BLUE, 1.0)
    picture.letters("2", (72, 14), 12, BLUE)
    picture.line([(96, 48), (96, 20), (104, 20)], BLUE, 1.0)
    picture.letters("3", (108, 14), 12, BLUE)
    return picture


def hatches() -> Picture:
    """Two patterns at different angle and scale."""
    picture = Picture()
    picture.box((10, 24), (74, 108), SAND)
    picture.hatch((10, 24), (74, 108), 9, INK)
    picture.line([(10, 24), (74, 24), (74, 108), (10, 108), (10, 24)], INK, 2.0)
    picture.box((86, 24), (150, 108), LIGHT)
    picture.hatch((86, 24), (150, 108), 22, INK)
    picture.line([(86, 24), (150, 24), (150, 108), (86, 108), (86, 24)], INK, 2.0)
    picture.line([(10, 12), (52, 12)], RED, 1.2)
    picture.line(arc((10, 12), 30, 0, 45), RED, 1.2)
    picture.line([(10, 12), (38, 40)], RED, 1.2)
    picture.letters("a", (44, 15), 12, RED)
    picture.dimension((97, 12), (119, 12))
    picture.letters("d", (126, 6), 12, RED)
    return picture


def north() -> Picture:
    """A north arrow, turned from the upright of the sheet."""
    picture = Picture()
    picture.line([*circle((80, 52), 40), (120, 52)], INK, 1.5)
    picture.dashes((80, 52), (80, 116))
    tip = arc((80, 52), 54, 62, 62, 1)[0]
    left, right = arc((80, 52), 40, 212, 212, 1)[0], arc((80, 52), 40, 272, 272, 1)[0]
    picture.area([tip, left, (80, 52)], INK)
    picture.area([tip, right, (80, 52)], WHITE)
    picture.line([tip, left, (80, 52), right, tip, (80, 52)], INK, 1.2)
    picture.letters("N", (tip[0] + 6, tip[1] - 2), 14, INK, 2.0)
    picture.line(arc((80, 52), 52, 62, 90), RED, 1.5)
    return picture


def sill_height() -> Picture:
    """A window in a wall seen from inside, and the height of its sill above the floor."""
    picture = Picture()
    picture.box((6, 14), (154, 114), SAND)
    picture.box((6, 6), (154, 14), GREY)
    picture.line([(6, 14), (154, 14)], INK, 2.0)
    picture.box((34, 54), (118, 106), WHITE)
    for left, right in ((34, 76), (76, 118)):
        picture.line([(left, 54), (right, 54), (right, 106), (left, 106), (left, 54)], INK, 2.0)
        picture.line([(left + 5, 59), (right - 5, 59), (right - 5, 101), (left + 5, 101),
                      (left + 5, 59)], BLUE, 1.2)
    picture.dashes((39, 59), (71, 80), BLUE)
    picture.dashes((39, 101), (71, 80), BLUE)
    picture.box((28, 48), (124, 54), LIGHT)
    picture.line([(28, 48), (124, 48), (124, 54), (28, 54), (28, 48)], INK, 1.2)
    picture.dashes((124, 54), (148, 54))
    picture.dimension((138, 54), (138, 14), "h")
    return picture


# Those of the folder plaatjes are named with it, the others lie beside the configuration file.
PICTURES = {
    "deurbreedte.bmp": door_width(),
    "optrede.png": stair_rise(),
    "teksthoogte.png": text_height(),
    "maatrijen.png": dimension_rows(),
    "wanddikte.png": wall_thickness(),
    "arcering.bmp": hatches(),
    "plaatjes/noordhoek.png": north(),
    "plaatjes/borstwering.png": sill_height(),
}


def all_files() -> dict[Path, bytes]:
    files = {}
    for name, picture in PICTURES.items():
        path = FOLDER / name
        pack = bmp if path.suffix == ".bmp" else png
        files[path] = pack(picture.pixels())
        files[path.with_name("S_" + path.name)] = pack(picture.pixels(SMALL))
    return files


if __name__ == "__main__":
    sys.exit(write_or_check(all_files()))
