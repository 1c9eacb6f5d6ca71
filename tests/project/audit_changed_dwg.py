#!/usr/bin/env python3
"""Looks with other eyes at DWG drawings that cfgctl changed.

audit_changed_dwg.py CFGCTL EXAMPLES DATA FOLDER

Of each DWG drawing in FOLDER that can be written: settings are stored, stored again, frozen and
removed; a block is loaded out of EXAMPLES/bron/blokken and one out of DATA; references are brought
up to date; entities are copied and erased. Of each changed drawing every checksum holds, the dictionaries
and values that a reader of its own (dwg_file.py) finds are those that were asked for, each object
that the command has no business with is bit for bit what it was, and so is every other section. Of
the header variables nothing but the next handle differs. A drawing that a command refuses must stay
as it is, and the reason must be told.

The exit status is 1 when something does not hold, or when a command never succeeded; 77 when FOLDER
is empty text.
"""

from __future__ import annotations

import json
import os
import shutil
import subprocess
import sys
import tempfile
from collections import Counter
from collections.abc import Callable
from concurrent.futures import ProcessPoolExecutor
from dataclasses import dataclass, field
from functools import partial
from pathlib import Path

from dwg_file import FLAT, HANDLES, HEADER, OBJECTS, VERSIONS, DwgError, DwgFile

ROOT = "KVR_INI_ROOT"
TOOL = "TOOL.INI"
CHAPTER = "Wand: 1"
CODED = "XX_HEX_0x" + CHAPTER.encode("utf-16-le").hex()
VALUES = ("2650", "3.5 \N{GREEK SMALL LETTER MU}m", "", "x" * 1500)
PLAIN_ENTITIES = {1: "TEXT", 17: "ARC", 18: "CIRCLE", 19: "LINE", 27: "POINT", 77: "LWPOLYLINE"}
FREE_SPACE, AUXILIARY = "AcDb:ObjFreeSpace", "AcDb:AuxHeader"
CHANGING = {OBJECTS, HANDLES, HEADER, AUXILIARY, FREE_SPACE}
REFUSAL = 1

Allowed = Callable[[DwgFile, int], bool]


@dataclass
class Result:
    """What came of one command on one drawing."""

    command: str
    faults: list[str] = field(default_factory=list)
    refusal: str = ""
    idle: bool = False  # there was nothing to change


@dataclass
class Case:
    """A drawing, and the place to work on it."""

    cfgctl: Path
    folder: Path
    file: Path
    results: list[Result] = field(default_factory=list)
    read: dict[Path, DwgFile] = field(default_factory=dict)

    def run(self, *words: str, drawing: Path | None = None) -> subprocess.CompletedProcess[str]:
        return subprocess.run([self.cfgctl, *words, "--drawing", drawing or self.file,
                               "--module-dir", self.folder], cwd=self.folder, capture_output=True,
                              text=True, check=False)

    def drawing(self, file: Path) -> DwgFile:
        """Of a file that stays as it is."""
        if file not in self.read:
            self.read[file] = DwgFile(file)
        return self.read[file]

    def changed(self, number: int = 0) -> Path:
        return self.folder / f"changed{number}.dwg"


# --- what may differ -----------------------------------------------------------------------------


def differing_bits(before: bytes, after: bytes) -> tuple[int, int]:
    """The first bit that differs, and the one behind the last, of bytes that are equally many."""
    width = 8 * len(before)
    difference = int.from_bytes(before, "big") ^ int.from_bytes(after, "big")
    lowest = (difference & -difference).bit_length() - 1
    return width - difference.bit_length(), width - lowest


def holds_handle(data: bytes, first: int, end: int, handle: int) -> bool:
    """True when a handle is written in bits that enclose some others."""
    digits = handle.to_bytes((handle.bit_length() + 7) // 8, "big")
    written = f"{len(digits):08b}" + f"{handle:0{8 * len(digits)}b}"
    text = f"{int.from_bytes(data, 'big'):0{8 * len(data)}b}"
    return any(text.startswith(written, at)
               for at in range(max(0, end - len(written)), first + 1))


def faults_of_sections(before: DwgFile, after: DwgFile) -> list[str]:
    faults = [f"section {name} differs"
              for name in sorted((before.sections.keys() | after.sections.keys()) - CHANGING)
              if before.sections.get(name) != after.sections.get(name)]
    if before.version != after.version:
        faults.append(f"it was {before.version} and is {after.version}")
    if before.version == FLAT and before.data[:0x15] != after.data[:0x15]:
        faults.append("the first bytes differ")
    one, two = before.framed(HEADER), after.framed(HEADER)
    if before.next_handle.bit_length() <= 8 < after.next_handle.bit_length():
        pass  # the variables behind a longer number stand elsewhere
    elif len(one) != len(two):
        faults.append("the header variables take another room")
    elif one != two and not holds_handle(two, *differing_bits(one, two), after.next_handle):
        faults.append("header variables differ")
    one, two = before.sections.get(AUXILIARY, b""), after.sections.get(AUXILIARY, b"")
    if one[:-44] + one[-40:] != two[:-44] + two[-40:]:
        faults.append("the auxiliary header differs")
    if after.next_handle <= max(after.objects):
        faults.append(f"the next handle is {after.next_handle:X}, and there is "
                      f"{max(after.objects):X}")
    return faults + faults_of_free_space(before, after)


def faults_of_free_space(before: DwgFile, after: DwgFile) -> list[str]:
    """It tells the number of objects and, in R2000, the place of the first."""
    one, two = (bytearray(each.sections.get(FREE_SPACE, b"")) for each in (before, after))
    at, size = (4, 4) if before.version <= "AC1018" else (8, 8)
    del one[at:at + size], two[at:at + size]
    if before.version == FLAT and one[12:16] == min(before.places.values()).to_bytes(4, "little") \
            and two[12:16] == min(after.places.values()).to_bytes(4, "little"):
        one[12:16] = two[12:16]
    return ["the section of free space differs"] if one != two else []


def faults_of_objects(before: DwgFile, after: DwgFile, may_change: Allowed,
                      may_vanish: Allowed) -> list[str]:
    faults = []
    for handle, record in before.objects.items():
        now = after.objects.get(handle)
        if now is None and not may_vanish(before, handle):
            faults.append(f"the {before.type_name(handle)} {handle:X} is gone")
        elif now is not None and now.raw != record.raw and not may_change(before, handle):
            faults.append(f"the {before.type_name(handle)} {handle:X} differs")
    order = [handle for handle in after.objects if handle in before.objects]
    if order != sorted(order):
        faults.append("the object map is out of order")
    return faults


def faults_of_blocks(before: DwgFile, after: DwgFile) -> list[str]:
    """Entities keep their order, and what is new stands behind them."""
    faults = []
    for block in after.of_type("BLOCK_RECORD"):
        begin, _listed, end = after.block_ends(block)
        if after.type_name(begin) != "BLOCK" or after.type_name(end) != "ENDBLK":
            faults.append(f"the block {block:X} has no begin or no end")
        now = after.entities(block)
        kept = [entity for entity in before.entities(block) if entity in after.objects] \
            if block in before.objects else []
        if now[:len(kept)] != kept or any(entity in before.objects for entity in now[len(kept):]):
            faults.append(f"the entities of {block:X} are {now}, and {kept} of them are old")
        if any(entity not in after.objects for entity in now):
            faults.append(f"the block {block:X} has entities that are not there")
    return faults


def faults_of_references(before: DwgFile, after: DwgFile) -> list[str]:
    """No record names what is not there, unless it did so before."""
    faults = []
    for handle, record in after.objects.items():
        old = before.objects.get(handle)
        is_old = old is not None and old.raw == record.raw
        if is_old and before.objects.keys() <= after.objects.keys():
            continue
        loose = {target for target in after.references(handle)
                 if target and target not in after.objects}
        if old is not None:
            loose -= {target for target in before.references(handle)
                      if target not in before.objects}
        if loose:
            faults.append(f"the {after.type_name(handle)} {handle:X} names "
                          f"{', '.join(f'{target:X}' for target in sorted(loose))}")
    return faults


def never(_drawing: DwgFile, _handle: int) -> bool:
    return False


def of_types(*types: str) -> Allowed:
    def check(drawing: DwgFile, handle: int) -> bool:
        name = drawing.type_name(handle)
        return name in types or ("_CONTROL" in types and name.endswith("_CONTROL"))
    return check


def is_settings(drawing: DwgFile, handle: int) -> bool:
    """What the settings of a drawing consist of, and the dictionary in which they hang."""
    return handle == drawing.root or handle in settings_objects(drawing)


def is_setting(drawing: DwgFile, handle: int) -> bool:
    return handle in settings_objects(drawing)


def settings_objects(drawing: DwgFile) -> set[int]:
    found: set[int] = set()
    open_ones = [drawing.dictionary(drawing.root).get(ROOT, 0)]
    while open_ones:
        handle = open_ones.pop()
        if handle in drawing.objects:
            found.add(handle)
            if drawing.type_name(handle) == "DICTIONARY":
                open_ones.extend(drawing.dictionary(handle).values())
    return found


# --- what must be found --------------------------------------------------------------------------


def settings(drawing: DwgFile) -> dict[str, object]:
    """Values by file, chapter and ident; parts of a long value as one."""
    def plain(held: object) -> object:
        if isinstance(held, dict):
            return {key: plain(entry) for key, entry in held.items()}
        assert isinstance(held, list)
        return "".join(str(value) for code, value in held if code == 1)
    handle = drawing.dictionary(drawing.root).get(ROOT)
    held = plain(drawing.tree(handle)) if handle else {}
    assert isinstance(held, dict)
    return held


def strays(drawing: DwgFile) -> list[str]:
    """Settings that name another owner than the dictionary in which they hang."""
    found = []
    for handle in settings_objects(drawing) | {drawing.root}:
        if drawing.type_name(handle) == "DICTIONARY":
            found += [f"{entry:X}" for entry in drawing.dictionary(handle).values()
                      if entry in settings_objects(drawing) and drawing.owner(entry) != handle]
    return found


def without_settings(drawing: DwgFile) -> dict[str, object]:
    held = drawing.tree(drawing.root)
    held.pop(ROOT, None)
    return held


def told_settings(case: Case, drawing: Path) -> object:
    return json.loads(case.run("drawing", "--json", drawing=drawing).stdout)["settings"]


Wanted = Callable[[DwgFile, DwgFile], "str | None"]


def holds(wanted: dict[str, object]) -> Wanted:
    def check(before: DwgFile, after: DwgFile) -> str | None:
        if settings(after) != wanted:
            return f"it holds {settings(after)}, not {wanted}"
        if strays(after):
            return f"{strays(after)} name another owner"
        if without_settings(after) != without_settings(before):
            return "other dictionaries hold something else"
        return None
    return check


def has_block(name: str) -> Wanted:
    """All blocks and layers are there that were, no layer twice, and a block more."""
    def check(before: DwgFile, after: DwgFile) -> str | None:
        blocks = after.names("BLOCK_RECORD")
        if blocks.count(name) != 1 or Counter(before.names("BLOCK_RECORD")) - Counter(blocks):
            return f"there is no block {name} among {blocks}, or one is missing"
        layers = Counter(layer.upper() for layer in after.names("LAYER"))
        missing = {layer.upper() for layer in before.names("LAYER")} - layers.keys()
        if missing:
            return f"the layers {missing} are missing"
        double = [layer for layer, count in layers.items() if count > 1]
        return f"the layers {double} are there twice" if double else None
    return check


def has_more(kind: int, count: int) -> Wanted:
    """So many more objects of a type, fewer when negative."""
    def check(before: DwgFile, after: DwgFile) -> str | None:
        was, now = (sum(record.type == kind for record in each.objects.values())
                    for each in (before, after))
        return None if now == was + count else f"{was} objects of type {kind} became {now}"
    return check


def anything(_before: DwgFile, _after: DwgFile) -> str | None:
    return None


# --- the commands --------------------------------------------------------------------------------


@dataclass
class Command:
    """A command, what it may touch, and what has to be in the changed drawing."""

    name: str
    words: list[str]
    wanted: Wanted = anything
    may_change: Allowed = never
    may_vanish: Allowed = never


def judged(case: Case, command: Command, number: int, source: Path | None = None) -> Path | None:
    """Runs a command and looks at what came of it: the changed drawing, where there is one."""
    result = Result(command.name)
    case.results.append(result)
    source = source or case.file
    changed = case.changed(number)
    changed.unlink(missing_ok=True)
    before = source.read_bytes()
    ran = case.run(*command.words, "--save-as", str(changed), drawing=source)
    if source.read_bytes() != before:
        result.faults.append("the drawing itself is not what it was")
    if not changed.exists():
        result.idle = ran.returncode == 0
        result.refusal = " ".join(ran.stderr.split())
        if ran.returncode not in (0, REFUSAL):
            result.faults.append(f"exit status {ran.returncode}: {result.refusal}")
        elif ran.returncode == REFUSAL and not result.refusal:
            result.faults.append("it failed and tells no reason")
        return None
    if ran.returncode != 0:
        result.faults.append(f"it failed and saved a drawing: {ran.stderr}")
    try:
        result.faults += compared(case.drawing(source), DwgFile(changed), command)
    except DwgError as error:
        result.faults.append(f"the changed drawing cannot be read: {error}")
    again = case.run("drawing", "--json", drawing=changed)
    if again.returncode != 0:
        result.faults.append(f"the changed drawing does not open: {again.stderr}")
    return changed


def compared(before: DwgFile, after: DwgFile, command: Command) -> list[str]:
    # What a program has left wrong in a drawing is no fault of ours.
    faults = [fault for fault in after.faults if fault not in before.faults]
    faults += faults_of_sections(before, after)
    faults += faults_of_objects(before, after, command.may_change, command.may_vanish)
    faults += faults_of_blocks(before, after)
    faults += faults_of_references(before, after)
    fault = command.wanted(before, after)
    return faults + ([fault] if fault else [])


def try_settings(case: Case) -> None:
    """Values are stored one after the other, a frozen one joins them, and all are removed."""
    held = settings(case.drawing(case.file))
    own: dict[str, object] = {}
    source: Path = case.file
    for number, value in enumerate(VALUES):
        ident = f"Dikte{number}"
        own = {**own, ident: value}
        made = judged(case, Command("set", ["set", "tool.ini", f"[{CHAPTER}]{ident}", value],
                                    holds({**held, TOOL: {CODED: own}}), is_settings, is_setting),
                      number, source)
        if made is None:
            case.results[-1].faults.append(f"refused: {case.results[-1].refusal}")
            return
        source = made
        told = told_settings(case, source)
        if not isinstance(told, dict) or told.get(TOOL) != {CHAPTER: own}:
            case.results[-1].faults.append(f"told is {told}")
    own = {**own, "Dikte0": "2700"}
    steps = [Command("set again", ["set", "tool.ini", f"[{CHAPTER}]Dikte0", "2700"],
                     holds({**held, TOOL: {CODED: own}}), is_settings, is_setting),
             Command("freeze", ["freeze", "tool.ini", "[Plot]Schaal"],
                     holds({**held, TOOL: {CODED: own, "Plot": {"Schaal": "50"}}}),
                     is_settings, is_setting),
             Command("remove", ["remove", "tool.ini", "Plot", "Schaal"],
                     holds({**held, TOOL: {CODED: own, "Plot": {}}}), is_settings, is_setting)]
    for number, step in enumerate(steps, len(VALUES)):
        made = judged(case, step, number, source)
        if made is None:
            case.results[-1].faults.append(f"refused: {case.results[-1].refusal}")
            return
        source = made


def try_blocks(case: Case, examples: Path, data: Path) -> None:
    may_change = of_types("_CONTROL", "DICTIONARY")
    judged(case, Command("block of a DXF drawing",
                         ["block", f"{examples / 'bron' / 'blokken' / 'deur.dxf'}!$PG-DEUR-ENKEL"],
                         has_block("PG-DEUR-ENKEL"), may_change), 0)
    judged(case, Command("block of a binary DXF drawing",
                         ["block", f"{data / 'r2018_binary.dxf'}!$DEUR"],
                         has_block("DEUR"), may_change), 0)
    library = case.folder / "CORMA-LIB.dwg"
    shutil.copy(case.file, library)
    judged(case, Command("a drawing as a block", ["block", "CORMA-LIB"],
                         has_block("CORMA-LIB"),
                         # A block tells its references, and the new block has some.
                         of_types("_CONTROL", "DICTIONARY", "BLOCK_RECORD")), 0)


def try_references(case: Case) -> None:
    told = json.loads(case.run("drawing", "--json").stdout)
    may_change = of_types("INSERT", "ATTRIB", "SEQEND", "BLOCK_RECORD", "_CONTROL")
    may_vanish = of_types("ATTRIB", "SEQEND", "DICTIONARY", "XRECORD")
    for name in sorted({reference["block"] for reference in told["references"]}):
        judged(case, Command("synchronise", ["attsync", name], anything, may_change, may_vanish), 0)
    judged(case, Command("update references", ["attupdate", "--apply"], anything, may_change,
                         may_vanish), 0)


def chained(drawing: DwgFile, at_most: int) -> Allowed:
    """In R2000 an entity names its neighbours, so that of a change next to it they take part."""
    touched: list[int] = []

    def check(before: DwgFile, handle: int) -> bool:
        if before.type_name(handle) == "BLOCK_RECORD":
            return True
        touched.append(handle)
        return drawing.version == FLAT and len(touched) <= at_most
    return check


def try_entities(case: Case) -> None:
    drawing = case.drawing(case.file)
    first: dict[int, int] = {}
    for handle, record in drawing.objects.items():
        if record.type in PLAIN_ENTITIES:
            first.setdefault(record.type, handle)
    for kind, handle in first.items():
        name = PLAIN_ENTITIES[kind]
        judged(case, Command(f"copy {name}", ["copy", f"{handle:X}"], has_more(kind, 1),
                             chained(drawing, 1)), 0)
        judged(case, Command(f"erase {name}", ["erase", f"{handle:X}"], has_more(kind, -1),
                             chained(drawing, 2), owned_by(drawing, handle)), 0)


def owned_by(drawing: DwgFile, erased: int) -> Allowed:
    """An erased entity takes along what hangs in its dictionary."""
    objects = of_types("DICTIONARY", "XRECORD", "FIELD")

    def check(before: DwgFile, handle: int) -> bool:
        owner = handle
        while objects(before, owner):
            owner = drawing.owner(owner)
        return owner == erased
    return check


def tried(cfgctl: Path, examples: Path, data: Path, file: Path) -> tuple[str, list[Result]]:
    with tempfile.TemporaryDirectory() as name:
        case = Case(cfgctl, Path(name), file)
        (case.folder / "tool.ini").write_text("[Plot]\nSchaal=50\n", encoding="ascii")
        faults = case.drawing(file).faults
        if faults:
            print(f"{file.name}: as it was saved: {'; '.join(faults)}")
        try_settings(case)
        try_blocks(case, examples, data)
        try_references(case)
        try_entities(case)
        return file.name, case.results


def told(drawings: list[tuple[str, list[Result]]]) -> int:
    """Prints what came of all; the exit status."""
    succeeded: Counter[str] = Counter()
    every: Counter[str] = Counter()
    faults = idle = refused = 0
    for file, results in drawings:
        for result in results:
            every[result.command] += 1
            if result.faults:
                faults += 1
                print(f"WRONG {file}: {result.command}: {'; '.join(result.faults[:5])}",
                      file=sys.stderr)
            elif result.idle:
                idle += 1
            elif result.refusal:
                refused += 1
                print(f"{file}: {result.command}: {result.refusal}")
            else:
                succeeded[result.command] += 1
    for command, count in every.items():
        print(f"{succeeded[command]} of {count}: {command}")
    print(f"{len(drawings)} drawings; {sum(every.values())} commands: {sum(succeeded.values())} "
          f"succeeded, {idle} had nothing to change, {refused} refused, {faults} wrong")
    return 1 if faults or not every or any(not succeeded[command] for command in every) else 0


def main() -> int:
    if not sys.argv[4]:
        print("audit_changed_dwg: no folder of drawings; configure with "
              "-DCORMA_SAMPLE_DRAWINGS=FOLDER", file=sys.stderr)
        return 77
    cfgctl, examples, data, folder = (Path(argument).resolve() for argument in sys.argv[1:5])
    files = [file for file in sorted(folder.glob("*.dwg"))
             if file.read_bytes()[:6].decode("ascii", "replace") in VERSIONS]
    with ProcessPoolExecutor(min(4, os.cpu_count() or 1)) as pool:
        return told(list(pool.map(partial(tried, cfgctl, examples, data), files)))


if __name__ == "__main__":
    sys.exit(main())
