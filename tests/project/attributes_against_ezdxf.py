#!/usr/bin/env python3
"""Checks with ezdxf where cfgctl puts the attributes of synchronised block references.

attributes_against_ezdxf.py CFGCTL

Drawings of several versions are made with ezdxf: a block with definitions of all alignments, and
references of it, scaled, turned and tilted at random but always in the same way, in model space, in
paper space and in another block, with all, some or none of the attributes. After `cfgctl attsync`
each reference has the attributes of the definition; each of them is where ezdxf's own matrix of the
reference puts the definition, with letters of the form that the matrix gives them, and with its own
text where it had one; ezdxf finds nothing wrong; and a second run finds nothing to do.

The exit status is 1 when one does not hold, 77 when there is no ezdxf.
"""

from __future__ import annotations

import logging
import math
import random
import subprocess
import sys
import tempfile
from pathlib import Path
from typing import Any, Iterator

from audit_drawing import findings

import ezdxf
from ezdxf.document import Drawing
from ezdxf.math import Matrix44, Vec3

VERSIONS = ("R12", "R2000", "R2007", "R2013", "R2018")
BLOCK = "DEUR"
CONSTANT = "MERK"
LINES = "REGELS"
REFERENCES = 40

# Tag, horizontal and vertical alignment, and what else is told.
DEFINITIONS: tuple[tuple[str, int, int, dict[str, Any]], ...] = (
    ("LINKS", 0, 0, {}),
    ("MIDDEN", 1, 0, {"rotation": 30}),
    ("RECHTS", 2, 3, {"width": 0.8, "layer": "TEKST"}),
    ("PASSEND", 3, 0, {"color": 3}),
    ("KERN", 4, 0, {"oblique": 15}),
    ("TUSSEN", 5, 0, {"flags": 1}),
    ("ONDER", 1, 1, {"text_generation_flag": 2}),
    ("SCHUIN", 0, 2, {"rotation": 200, "text_generation_flag": 4, "oblique": -10}),
)


def made(version: str, seed: int) -> Drawing:
    drawing = ezdxf.new(version, setup=True)
    drawing.layers.add("TEKST")
    chance = random.Random(seed)
    block = drawing.blocks.new(BLOCK, base_point=Vec3(point(chance, 5)))
    block.add_line((0, 0), (10, 0))
    for tag, across, up, told in DEFINITIONS:
        place = Vec3(point(chance, 20))
        second = place + Vec3(chance.uniform(5, 9), 0, 0)
        block.add_attdef(tag, place, f"standaard {tag}", dxfattribs={
            "prompt": "?", "height": chance.uniform(1, 5), "halign": across, "valign": up,
            "align_point": second, **told})
    block.add_attdef(CONSTANT, (0, 0), "vast", dxfattribs={"flags": 2})
    if version == "R2018":
        lines = block.add_mtext("een\\Ptwee", dxfattribs={
            "insert": (3, 4, 0), "char_height": 2, "width": 20})
        block.add_attdef(LINES, (3, 4), "").embed_mtext(lines)
    nest = drawing.blocks.new("HUIS")
    drawing.modelspace().add_blockref("HUIS", (100, 100))
    for number in range(REFERENCES):
        space = (drawing.modelspace(), drawing.layout("Layout1"), nest)[number % 3]
        refer(space, number, chance)
    return drawing


def point(chance: random.Random, reach: float) -> tuple[float, float, float]:
    return tuple(chance.uniform(-reach, reach) for _ in range(3))  # type: ignore[return-value]


def refer(space: Any, number: int, chance: random.Random) -> None:
    size = chance.uniform(0.2, 5) * chance.choice((-1, 1))
    scales = ((size, size, size), (size, size, -size), (-size, size, size),
              tuple(chance.uniform(0.2, 4) * chance.choice((-1, 1)) for _ in range(3)))[number % 4]
    normal = ((0, 0, 1), (0, 0, -1), point(chance, 1))[number // 4 % 3]
    reference = space.add_blockref(BLOCK, point(chance, 1000), dxfattribs={
        "xscale": scales[0], "yscale": scales[1], "zscale": scales[2],
        "rotation": chance.choice((0, 90, chance.uniform(0, 360))),
        "extrusion": Vec3(normal).normalize()})
    if number % 8 == 3:
        reference.dxf.column_count, reference.dxf.column_spacing = 2, 50
    for tag, *_ in DEFINITIONS:
        if chance.random() < 0.4 and number % 5 != 0:
            reference.add_attrib(tag, f"waarde {number}", point(chance, 9), {"height": 77})
    if number % 7 == 1:
        reference.add_attrib("WEG", "verdwijnt", (0, 0))


def references(drawing: Drawing) -> Iterator[Any]:
    for space in (drawing.modelspace(), drawing.layout("Layout1"), drawing.blocks.get("HUIS")):
        yield from (entity for entity in space if entity.dxftype() == "INSERT"
                    and entity.dxf.name == BLOCK)


def frame(text: Any) -> list[Vec3]:
    """Where a text begins, where it is aligned, and what its letters have along and across."""
    dxf = text.dxf
    ocs = text.ocs()
    angle = math.radians(dxf.get("rotation", 0))
    generation = dxf.get("text_generation_flag", 0)
    sides = (-1 if generation & 2 else 1, -1 if generation & 4 else 1)
    slant = math.tan(math.radians(dxf.get("oblique", 0)))
    along = Vec3(sides[0] * dxf.height * dxf.get("width", 1), 0).rotate(angle)
    across = Vec3(sides[0] * slant * dxf.height, sides[1] * dxf.height).rotate(angle)
    # Of a text that is aligned left on its base line the second point has no meaning.
    aligned = dxf.align_point if dxf.get("halign", 0) or dxf.get("valign", 0) else dxf.insert
    return [ocs.to_wcs(Vec3(vector)) for vector in (dxf.insert, aligned, along, across)]


def expected(definition: Any, matrix: Matrix44) -> list[Vec3]:
    begin, aligned, along, across = frame(definition)
    return [matrix.transform(begin), matrix.transform(aligned),
            matrix.transform_direction(along), matrix.transform_direction(across)]


def differs(found: list[Vec3], wanted: list[Vec3]) -> bool:
    return any(not left.isclose(right, rel_tol=1e-9, abs_tol=1e-8)
               for left, right in zip(found, wanted))


def wrong_lines(attribute: Any, definition: Any, matrix: Matrix44) -> str | None:
    lines, prescribed = attribute.virtual_mtext_entity(), definition.virtual_mtext_entity()
    if lines.text != prescribed.text:
        return f"it reads {lines.text!r}"
    place = matrix.transform(prescribed.dxf.insert)
    if not place.isclose(lines.dxf.insert, abs_tol=1e-8):
        return f"its lines are at {lines.dxf.insert}, not at {place}"
    return None


def wrong_attribute(attribute: Any, definition: Any, matrix: Matrix44,
                    text: str | None) -> str | None:
    if definition.has_embedded_mtext_entity:
        return wrong_lines(attribute, definition, matrix)
    wanted = definition.dxf.text if text is None else text
    if attribute.dxf.text != wanted:
        return f"it reads {attribute.dxf.text!r}, not {wanted!r}"
    for name in ("layer", "color", "flags", "halign", "valign", "style"):
        if attribute.dxf.get(name) != definition.dxf.get(name):
            return f"{name} is {attribute.dxf.get(name)}, not {definition.dxf.get(name)}"
    found, place = frame(attribute), expected(definition, matrix)
    return f"it is {found}, not {place}" if differs(found, place) else None


def wrong_reference(reference: Any, definitions: list[Any], texts: dict[str, str]) -> str | None:
    tags = [definition.dxf.tag for definition in definitions]
    if [attribute.dxf.tag for attribute in reference.attribs] != tags:
        return f"it has {[attribute.dxf.tag for attribute in reference.attribs]}, not {tags}"
    matrix = reference.matrix44()
    for attribute, definition in zip(reference.attribs, definitions):
        tag = definition.dxf.tag
        fault = wrong_attribute(attribute, definition, matrix, texts.get(tag))
        if fault is not None:
            return f"{tag}: {fault}"
    return None


def synced(cfgctl: Path, source: Path, target: Path) -> str | None:
    run = subprocess.run([cfgctl, "attsync", BLOCK, "--drawing", source, "--save-as", target],
                         capture_output=True, text=True, check=False)
    return None if run.returncode == 0 else f"cfgctl ends with {run.returncode}: {run.stderr}"


def found_wrong(file: Path, version: str) -> list[str]:
    """What ezdxf finds, but for the ends of attribute lists in R12, its own as well as ours: they
    have no owner there, and it misses one."""
    found = findings(ezdxf.readfile(str(file)))
    return [row["message"] for row in found["errors"] + found["fixes"]
            if version != "R12" or not row["message"].startswith("Deleted SEQEND(")]


def faults(cfgctl: Path, folder: Path, version: str, seed: int) -> Iterator[str]:
    source, target, again = (folder / f"{version}-{name}.dxf" for name in ("in", "out", "again"))
    made(version, seed).saveas(source)
    before = ezdxf.readfile(str(source))
    fault = synced(cfgctl, source, target)
    if fault is not None:
        yield fault
        return
    after = ezdxf.readfile(str(target))
    definitions = [entity for entity in after.blocks.get(BLOCK) if entity.dxftype() == "ATTDEF"
                   and entity.dxf.tag != CONSTANT]
    pairs = list(zip(references(before), references(after)))
    if len(pairs) != REFERENCES:
        yield f"there are {len(pairs)} references"
    for former, reference in pairs:
        texts = {attribute.dxf.tag: attribute.dxf.text for attribute in former.attribs}
        fault = wrong_reference(reference, definitions, texts)
        if fault is not None:
            yield f"reference {reference.dxf.handle}: {fault}"
    for found in found_wrong(target, version):
        yield f"ezdxf finds {found}"
    fault = synced(cfgctl, target, again)
    if fault is not None or again.exists():
        yield f"the second run changes something, or {fault}"


def main() -> int:
    logging.disable(logging.CRITICAL)
    cfgctl = Path(sys.argv[1]).resolve()
    failed = 0
    with tempfile.TemporaryDirectory() as name:
        for seed, version in enumerate(VERSIONS):
            for fault in faults(cfgctl, Path(name), version, seed):
                failed += 1
                print(f"{version}: {fault}", file=sys.stderr)
    print(f"{len(VERSIONS)} drawings with {REFERENCES} references each, {failed} faults")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
