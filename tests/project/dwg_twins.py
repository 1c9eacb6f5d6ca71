#!/usr/bin/env python3
"""Asks cfgctl for the same of drawings that were saved as DWG and as DXF.

dwg_twins.py CFGCTL FOLDER

The twin of x.dwg is x.dxf, x_ascii.dxf or x_binary.dxf. What a drawing holds, what its blocks
prescribe, what its references have, what is out of date and where its user works must be the same
in both, and the same again after references were synchronised. The two were saved one after the
other, so there are differences that say nothing, and those only are passed over: the last digits
of numbers, the numbers in names of blocks without a name, and handles of what such a save makes
anew.

The exit status is 1 when something else differs, or when there are no twins; 77 when FOLDER is
empty text.
"""

from __future__ import annotations

import json
import math
import re
import subprocess
import sys
import tempfile
from collections import Counter
from pathlib import Path
from typing import Any

ENDINGS = (".dxf", "_ascii.dxf", "_binary.dxf")
UNWRITABLE = ("AC1012", "AC1014", "AC1021")


def ran(cfgctl: Path, drawing: Path, *words: str) -> Any:
    """The document that a command gives, or why it gives none."""
    done = subprocess.run([cfgctl, *words, "--json", "--drawing", drawing], capture_output=True,
                          text=True, check=False)
    try:
        return json.loads(done.stdout)
    except ValueError:
        return f"exit status {done.returncode}: {done.stderr}"


def anonymous(name: str) -> str:
    """The name of a block, without the number that opening gives it."""
    return re.sub(r"^(\*[A-Z])\d+$", r"\1", name, flags=re.IGNORECASE)


def alike(one: Any, two: Any) -> bool:
    if isinstance(one, float) and isinstance(two, float):
        return math.isclose(one, two, rel_tol=1e-12, abs_tol=1e-12)
    if isinstance(one, list) and isinstance(two, list):
        return len(one) == len(two) and all(map(alike, one, two))
    if isinstance(one, dict) and isinstance(two, dict):
        return one.keys() == two.keys() and all(alike(one[key], two[key]) for key in one)
    return bool(one == two)


def content(drawing: dict[str, Any]) -> dict[str, Any]:
    """What `drawing` tells, as far as two saves have it in common."""
    return {**drawing, "blocks": Counter(map(anonymous, drawing["blocks"])),
            "references": Counter((anonymous(each["block"]), anonymous(each["space"]))
                                  for each in drawing["references"])}


def same_references(one: dict[str, Any], two: dict[str, Any]) -> list[str]:
    there = {each["handle"]: anonymous(each["block"]) for each in two["references"]}
    return [each["handle"] for each in one["references"]
            if there.get(each["handle"]) == anonymous(each["block"])]


def differences(cfgctl: Path, pair: tuple[Path, Path]) -> list[str]:
    asked = 0

    def compare(*words: str) -> None:
        nonlocal asked
        asked += 1
        one, two = (ran(cfgctl, drawing, *words) for drawing in pair)
        if words == ("view",):
            # The active viewport is made anew by some programs.
            one, two = ({**each, "viewport": each["viewport"] is None} for each in (one, two))
        if not alike(one, two):
            found.append(f"{' '.join(words)}: {one}, and of the DXF file {two}")

    found: list[str] = []
    one, two = (ran(cfgctl, drawing, "drawing") for drawing in pair)
    for key in one:
        held, twin = content(one)[key], content(two)[key]
        if held != twin:
            found.append(f"{key}: {held}, and in the DXF file {twin}")
    for block in sorted(set(one["blocks"]) & set(two["blocks"])):
        if anonymous(block) == block:
            compare("attdefs", block)
            compare("attdefs", block, "--constant")
    handles = same_references(one, two)
    for handle in handles:
        compare("attributes", handle)
    compare("attupdate")
    compare("view")
    print(f"{pair[0].name}: {asked} questions, "
          f"{len(handles)} of {len(one['references'])} references")
    return found


def synchronised(cfgctl: Path, pair: tuple[Path, Path], folder: Path) -> list[str]:
    """What differs after the references of each block were synchronised in both."""
    one, two = (ran(cfgctl, drawing, "drawing") for drawing in pair)
    handles = same_references(one, two)
    blocks = {each["handle"]: each["block"] for each in one["references"]}
    found = []
    for block in sorted(set(blocks.values())):
        if anonymous(block) != block:
            continue
        made = []
        for drawing in pair:
            changed = folder / f"changed{drawing.suffix}"
            changed.unlink(missing_ok=True)
            told = ran(cfgctl, drawing, "attsync", block, "--save-as", str(changed))
            asked = changed if changed.exists() else drawing
            made.append([told] + [ran(cfgctl, asked, "attributes", handle) for handle in handles
                                  if blocks[handle] == block])
        if not alike(*made):
            found.append(f"attsync {block}: {made[0]}, and of the DXF file {made[1]}")
    return found


def main() -> int:
    if not sys.argv[2]:
        print("dwg_twins: no folder of drawings; configure with -DCORMA_SAMPLE_DRAWINGS=FOLDER",
              file=sys.stderr)
        return 77
    cfgctl, samples = (Path(argument).resolve() for argument in sys.argv[1:3])
    faults = pairs = 0
    with tempfile.TemporaryDirectory() as name:
        for file in sorted(samples.glob("*.dwg")):
            named = [file.with_name(file.stem + ending) for ending in ENDINGS]
            twins = [twin for twin in named if twin.exists()]
            if not twins:
                continue
            pairs += 1
            found = differences(cfgctl, (file, twins[0]))
            if file.read_bytes()[:6].decode("ascii") not in UNWRITABLE:
                found += synchronised(cfgctl, (file, twins[0]), Path(name))
            faults += len(found)
            for each in found:
                print(f"WRONG {file.name}: {each}", file=sys.stderr)
    print(f"{pairs} pairs, {faults} differences")
    return 1 if faults or not pairs else 0


if __name__ == "__main__":
    sys.exit(main())
