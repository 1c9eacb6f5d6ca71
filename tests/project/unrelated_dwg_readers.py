#!/usr/bin/env python3
"""Shows DWG drawings that cfgctl changed to readers that know nothing of it.

unrelated_dwg_readers.py CFGCTL EXAMPLES FOLDER

Of each DWG drawing in FOLDER that can be written: a setting is stored, a block loaded, a line
copied and erased. Each reader that is found here reads the drawing before and after. What it finds
afterwards is what it found before, and what the command has brought: keys of dictionaries, layers,
blocks, the number of records of each type, and of features of each layer.

Readers are ogrinfo, for R2000, and the package dwgdxf in the folder of node modules that the
environment variable CORMA_NODE_MODULES tells. The exit status is 1 when something does not hold, 77
when there is no reader or FOLDER is empty text.
"""

from __future__ import annotations

import json
import os
import re
import shutil
import subprocess
import sys
import tempfile
from collections import Counter
from collections.abc import Callable, Iterator
from dataclasses import dataclass, field
from pathlib import Path

from dwg_file import FLAT, VERSIONS, DwgFile

KEYS = Counter(["KVR_INI_ROOT", "TOOL.INI", "Plot", "Schaal"])
BLOCK = "PG-DEUR-ENKEL"
LINE = 19


@dataclass
class Found:
    """What a reader tells of a drawing."""

    keys: Counter[str] = field(default_factory=Counter)
    layers: Counter[str] = field(default_factory=Counter)
    blocks: Counter[str] = field(default_factory=Counter)
    records: Counter[str] = field(default_factory=Counter)
    next_handle: int = 0

    def __str__(self) -> str:
        return (f"{self.records.total()} records, {self.keys.total()} keys, "
                f"{self.layers.total()} layers, {self.blocks.total()} blocks")


Reader = Callable[[Path, Path], "Found | None"]


# --- the readers ---------------------------------------------------------------------------------


def tags(file: Path) -> Iterator[tuple[int, str]]:
    lines = iter(file.read_text(encoding="utf-8", errors="replace").splitlines())
    for code in lines:
        yield int(code), next(lines, "")


def found_in_dxf(file: Path) -> Found:
    found = Found()
    kind = ""
    named = False
    for code, value in tags(file):
        if code == 0:
            kind, named = value, False
            if kind not in ("SECTION", "ENDSEC", "TABLE", "ENDTAB", "EOF"):
                found.records[kind] += 1
        elif kind == "DICTIONARY" and code == 3:
            found.keys[value] += 1
        elif kind in ("LAYER", "BLOCK_RECORD") and code == 2 and not named:
            named = True
            (found.layers if kind == "LAYER" else found.blocks)[value.upper()] += 1
    return found


def converted(modules: Path, file: Path, folder: Path) -> Found | None:
    made = folder / "converted.dxf"
    made.unlink(missing_ok=True)
    ran = subprocess.run(["node", modules / "dwgdxf" / "dist" / "cli.js", file, made],
                         capture_output=True, text=True, check=False)
    if ran.returncode != 0 or not made.exists():
        return None
    return found_in_dxf(made)


def listed(file: Path) -> Found | None:
    """Of R2000 only, and not of all; the entities by layer."""
    if file.read_bytes()[:6] != FLAT.encode():
        return None
    ran = subprocess.run(["ogrinfo", "-al", "-so", file], capture_output=True, text=True,
                         check=False)
    if ran.returncode != 0 or "successful" not in ran.stdout:
        return None
    found = Found()
    counted = re.compile(r"^Layer name: (.*)(?:\n.*)*?\nFeature Count: (\d+)$", re.MULTILINE)
    for layer, count in counted.findall(ran.stdout):
        found.layers[layer.upper()] += 1
        found.records[layer.upper()] += int(count)
    seed = re.search(r"\$HANDSEED=(\d+)", ran.stdout)
    found.next_handle = int(seed[1]) if seed else 0
    return found


def readers() -> dict[str, Reader]:
    there: dict[str, Reader] = {}
    modules = Path(os.environ.get("CORMA_NODE_MODULES", "node_modules"))
    if shutil.which("node") and (modules / "dwgdxf").is_dir():
        there["dwgdxf"] = lambda file, folder: converted(modules.resolve(), file, folder)
    if shutil.which("ogrinfo"):
        there["ogrinfo"] = lambda file, _folder: listed(file)
    return there


# --- what they have to find ----------------------------------------------------------------------


@dataclass
class Command:
    """A command, and what comes with it."""

    name: str
    words: list[str]
    keys: Counter[str] = field(default_factory=Counter)
    records: dict[str, int] | None = None  # none: what the block brings
    lines: int = 0
    block: str = ""


def commands(examples: Path, drawing: DwgFile) -> Iterator[Command]:
    yield Command("set", ["set", "tool.ini", "[Plot]Schaal", "20"], KEYS,
                  {"DICTIONARY": 3, "XRECORD": 1})
    source = examples / "bron" / "blokken" / "deur.dxf"
    yield Command("block", ["block", f"{source}!{BLOCK}"], block=BLOCK)
    line = next((handle for handle, record in drawing.objects.items() if record.type == LINE), None)
    if line is not None:
        yield Command("copy", ["copy", f"{line:X}"], records={"LINE": 1}, lines=1)
        yield Command("erase", ["erase", f"{line:X}"], records={"LINE": -1}, lines=-1)


def grown(before: Counter[str], more: dict[str, int]) -> Counter[str]:
    now = Counter(before)
    for name, count in more.items():
        now[name] += count
    return +now


def fault_of(before: Found, after: Found, command: Command, counts_entities_only: bool) -> str:
    if after.next_handle < before.next_handle:
        return f"the next handle was {before.next_handle}, and is {after.next_handle}"
    if counts_entities_only:
        # Layers without entities are left out, and an entity may be of a kind that is not read.
        grew = after.records.total() - before.records.total()
        return "" if grew in {0, command.lines} else f"{before.records} became {after.records}"
    if after.keys != before.keys + command.keys:
        return f"keys: {after.keys - before.keys} came, {before.keys - after.keys} went"
    if before.blocks - after.blocks or (command.block and command.block not in after.blocks):
        return f"blocks: {before.blocks - after.blocks} went, {after.blocks - before.blocks} came"
    if before.layers - after.layers or (not command.block and after.layers != before.layers):
        return f"layers: {before.layers - after.layers} went, {after.layers - before.layers} came"
    if command.records is None:
        lost = before.records - after.records
        return f"records: {lost} went" if lost else ""
    if after.records != grown(before.records, command.records):
        return (f"records: {after.records - before.records} came, "
                f"{before.records - after.records} went")
    return ""


def tried(cfgctl: Path, examples: Path, folder: Path, file: Path) -> Counter[str]:
    """How often each reader agreed, by its name; "wrong" and "refused" among the names."""
    told: Counter[str] = Counter()
    before = {name: reader(file, folder) for name, reader in readers().items()}
    for command in commands(examples, DwgFile(file)):
        changed = folder / "changed.dwg"
        changed.unlink(missing_ok=True)
        ran = subprocess.run([cfgctl, *command.words, "--drawing", file, "--save-as", changed,
                              "--module-dir", folder, "--json"], cwd=folder, capture_output=True,
                             text=True, check=False)
        if not changed.exists():
            told["refused"] += 1
            print(f"{file.name}: {command.name}: {' '.join(ran.stderr.split())}")
            continue
        if command.name == "copy" and len(json.loads(ran.stdout)["handles"]) != 1:
            told["refused"] += 1
            continue
        for name, reader in readers().items():
            was = before[name]
            if was is None:
                continue
            now = reader(changed, folder)
            fault = (fault_of(was, now, command, name == "ogrinfo") if now is not None
                     else "it does not read the changed drawing")
            print(f"{'WRONG ' if fault else ''}{file.name}: {command.name}: {name}: {was} before, "
                  f"{now} after{': ' + fault if fault else ''}")
            told["wrong" if fault else f"{name}, {command.name}"] += 1
    return told


def main() -> int:
    if not sys.argv[3]:
        print("unrelated_dwg_readers: no folder of drawings; configure with "
              "-DCORMA_SAMPLE_DRAWINGS=FOLDER", file=sys.stderr)
        return 77
    if not readers():
        print("unrelated_dwg_readers: neither ogrinfo nor dwgdxf is here; CORMA_NODE_MODULES tells "
              "the folder of node modules", file=sys.stderr)
        return 77
    cfgctl, examples, samples = (Path(argument).resolve() for argument in sys.argv[1:4])
    told: Counter[str] = Counter()
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        (folder / "tool.ini").write_text("[Plot]\nSchaal=50\n", encoding="ascii")
        for file in sorted(samples.glob("*.dwg")):
            if file.read_bytes()[:6].decode("ascii", "replace") in VERSIONS:
                told += tried(cfgctl, examples, folder, file)
    print("; ".join(f"{count} {name}" for name, count in sorted(told.items())))
    return 1 if told["wrong"] or not any(", set" in name for name in told) else 0


if __name__ == "__main__":
    sys.exit(main())
