#!/usr/bin/env python3
"""Makes a drawing of block references to measure with: make_references.py COUNT FILE [--blocks N].

It is R2018 text with COUNT references in model space, spread over N blocks (1 unless told). A block
has 20 entities, three attribute definitions and a constant one. Every other reference is out of
date: an attribute that the definition no longer has is there, and one that it has now is not. The
same arguments give the same file.
"""

from __future__ import annotations

import argparse
import sys
from pathlib import Path
from typing import Iterable

sys.path.insert(0, str(Path(__file__).resolve().parents[1] / "tools"))

from dxf_writer import (AttributeDefinition, Drawing, Placing, Record,  # noqa: E402
                        Space, Version)
from make_drawing import FORM, NUMBER, Repeater  # noqa: E402

CONSTANT = 2
MARK = "KVR_REFERENCES"


def add_block(drawing: Drawing, name: str, tags: Iterable[str]) -> Space:
    """No coordinate of a reference is 0, which tells those that move from those that do not."""
    block = drawing.block(name, (10.0, 20.0, 0.0))
    for step in range(14):
        drawing.line(block, (50.0 * step, 0.0), (50.0 * step, 930.0 - 20.0 * step))
    for step in range(4):
        drawing.arc(block, (0.0, 100.0 * step), 930.0, (0.0, 90.0))
    drawing.circle(block, (465.0, 465.0), 80.0)
    drawing.outline(block, [(0, 0), (930, 0), (930, 930), (0, 930)], closed=True)
    for row, tag in enumerate(tags):
        drawing.attribute_definition(
            block, AttributeDefinition(tag, "0", (100, 100 + 150 * row), 90.0, f"{tag}:"))
    drawing.attribute_definition(
        block, AttributeDefinition("SOORT", "binnen", (100, 700), 90.0, "", CONSTANT))
    return block


def add_references(drawing: Drawing, number: int, now: Space, former: Space) -> None:
    place = (100.0 + 1500.0 * number, 100.0)
    texts = {"NUMMER": f"D{NUMBER}.{number}", "BREEDTE": "930", "HOOGTE": "2315"}
    drawing.insert(drawing.model, now, place, texts, how=Placing(angle=90.0 * (number % 4)))
    old = drawing.insert(drawing.model, former, (place[0], 2100.0), texts,
                         how=Placing(scale=(2.0, 2.0, 2.0)))
    old.body = [(2, now.name) if tag[0] == 2 else tag for tag in old.body]


def drawing_of_references(count: int, blocks: int) -> Iterable[bytes]:
    """The pieces of the file."""
    drawing = Drawing(Version.R2018)
    former = add_block(drawing, "VROEGER", ("NUMMER", "BREEDTE", "KLEUR"))
    present = [add_block(drawing, f"DEUR-{number:03d}", ("NUMMER", "BREEDTE", "HOOGTE"))
               for number in range(blocks)]
    first = int(drawing.seed, 16)
    for number, block in enumerate(present):
        add_references(drawing, number, block, former)
    last = int(drawing.seed, 16) - 1

    references = Repeater([record.tags() for record in drawing.model.entities], first, last)
    times = count // (2 * blocks)
    drawing.skip_handles((times - 1) * (last - first + 1))
    drawing.model.entities = [Record(MARK)]
    head, tail = drawing.packed(FORM).split(FORM.pack([(0, MARK)], drawing.version, "utf-8"))
    yield head
    yield from map(references.text, range(times))
    yield tail


def main() -> int:
    parser = argparse.ArgumentParser(usage=__doc__)
    parser.add_argument("count", type=int, metavar="COUNT")
    parser.add_argument("file", type=Path, metavar="FILE")
    parser.add_argument("--blocks", type=int, default=1, metavar="N")
    options = parser.parse_args()
    if options.count % (2 * options.blocks) != 0:
        parser.error("COUNT must be a multiple of twice the number of blocks")
    with options.file.open("wb") as file:
        file.writelines(drawing_of_references(options.count, options.blocks))
    return 0


if __name__ == "__main__":
    sys.exit(main())
