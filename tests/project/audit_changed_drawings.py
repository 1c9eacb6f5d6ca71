#!/usr/bin/env python3
"""Asks ezdxf what it thinks of drawings that the drawing commands of cfgctl changed.

audit_changed_drawings.py CFGCTL EXAMPLES DATA FOLDER...

On each DXF drawing in the folders: a drawing is inserted as a block; blocks are cloned out of
drawings of three versions; a block is replaced; blocks and references are brought up to date;
entities are copied, once with a matrix, and erased. What is inserted comes from the folders
EXAMPLES/blokken and DATA. Each changed drawing has the findings that it had before, no more and no
less, opens again, and holds what the command told. One that ezdxf cannot read only has to open.

A drawing that cannot take a command must stay as it is, and the reason must be told; all such cases
are listed. The exit status is 1 when something does not hold, or when a command never succeeded; 77
when there is no ezdxf or the only folder is empty text.
"""

from __future__ import annotations

import json
import logging
import math
import os
import re
import shutil
import subprocess
import sys
import tempfile
from collections import Counter
from collections.abc import Callable, Iterator
from concurrent.futures import ProcessPoolExecutor
from dataclasses import dataclass, field
from functools import partial
from pathlib import Path
from typing import Any

from audit_drawing import findings, plain
from audit_saved_drawings import nameless

import ezdxf
from ezdxf.audit import AuditError
from ezdxf.document import Drawing
from ezdxf.entities import DXFEntity, Insert
from ezdxf.layouts import BlockLayout, BaseLayout
from ezdxf.math import Matrix44, OCS, Vec3

ANGLE = math.radians(30)
MOVED = [math.cos(ANGLE), -math.sin(ANGLE), 0, 100, math.sin(ANGLE), math.cos(ANGLE), 0, -50,
         0, 0, 1, 7, 0, 0, 0, 1]
MODEL = "*Model_Space"
NO_OBJECT = "ec = 16)"  # of a report: a handle that names nothing
TAGS = ["CORMA_NR", "CORMA_SOORT"]


@dataclass
class Result:
    """What came of one command on one drawing."""

    command: str
    fault: str = ""
    refusal: str = ""
    idle: bool = False  # there was nothing to change


@dataclass
class Case:
    """A drawing, and the place to work on it."""

    cfgctl: Path
    folder: Path
    file: Path
    drawing: Drawing | None = None  # none where ezdxf cannot read it
    before: Any = None  # the findings, or why ezdxf cannot read the drawing
    has_handles: bool = True  # else ezdxf gives its own to each entity
    results: list[Result] = field(default_factory=list)

    @property
    def changed(self) -> Path:
        return self.folder / "changed.dxf"

    def run(self, *words: str, drawing: Path | None = None) -> subprocess.CompletedProcess[str]:
        return subprocess.run([self.cfgctl, *words, "--drawing", drawing or self.file, "--json",
                               "--module-dir", self.folder], cwd=self.folder, capture_output=True,
                              text=True, check=False)

    def saved(self, *words: str, drawing: Path | None = None) -> subprocess.CompletedProcess[str]:
        self.changed.unlink(missing_ok=True)
        return self.run(*words, "--save-as", str(self.changed), drawing=drawing)


Check = Callable[[Case, Any, Drawing], "str | None"]


def is_ours(row: tuple[str, int, str]) -> bool:
    """False for what ezdxf finds fault with although it is none."""
    _kind, code, message = row
    # A letter that the code page of an old drawing does not have is an escape in its names.
    is_escape = code == AuditError.INVALID_LAYER_NAME and "\\U+" in message
    # Before R2000 it forgets whose end it read where a reference with attributes is in a block.
    is_forgotten = code == AuditError.INVALID_OWNER_HANDLE and "SEQEND" in message \
        and message.endswith("#None.")
    return not is_escape and not is_forgotten


def read(file: Path) -> tuple[Any, Drawing | None]:
    """The findings, or why ezdxf cannot read the drawing; and the drawing."""
    try:
        # The audit mends what it finds, so it gets a drawing of its own.
        found = filter(is_ours, nameless(findings(ezdxf.readfile(str(file)))))
        return list(found), ezdxf.readfile(str(file))
    except Exception as error:  # it refuses in many ways, KeyError and struct.error among them
        return f"{type(error).__name__}: {' '.join(str(error).split())}", None


def handles_with_findings(file: Path) -> set[str]:
    found = findings(ezdxf.readfile(str(file)))
    return {handle for rows in found.values() for row in rows
            for handle in re.findall(r"#([0-9A-F]+)", row["message"])}


# --- what is in a drawing ------------------------------------------------------------------------


def block_of(drawing: Drawing, name: str) -> BaseLayout | None:
    return next((block for block in drawing.blocks if block.name.upper() == name.upper()), None)


def model_of(drawing: Drawing) -> BaseLayout:
    found = block_of(drawing, MODEL)
    assert found is not None
    return found


def types_in(layout: BaseLayout) -> Counter[str]:
    return Counter(entity.dxftype() for entity in layout)


def definitions_of(block: BaseLayout, *, constant: bool | None = None) -> list[str]:
    return [plain(entity.dxf.tag).upper() for entity in block if entity.dxftype() == "ATTDEF"
            and constant in (None, bool(entity.is_const))]


def references_to(drawing: Drawing, name: str) -> Iterator[Insert]:
    for block in drawing.blocks:
        for entity in block:
            if isinstance(entity, Insert) and entity.dxf.name.upper() == name.upper():
                yield entity


def tags_of(reference: Insert) -> list[str]:
    return [plain(attribute.dxf.tag).upper() for attribute in reference.attribs]


def named_blocks(drawing: Drawing | None) -> list[BlockLayout]:
    """Blocks whose name a file can have, those that stand in the model first."""
    def can_be_file(name: str) -> bool:
        return (not name.startswith(("*", "$")) and not set(name) & set('/\\!<>":;?|,=`')
                and ".DWG" not in name.upper() and ".DWT" not in name.upper()
                and len(name.encode()) < 200 and plain(name) == name)

    if drawing is None:
        return []
    used = {entity.dxf.name.upper() for entity in model_of(drawing) if isinstance(entity, Insert)}
    blocks = [block for block in drawing.blocks if can_be_file(block.name)]
    return sorted(blocks, key=lambda block: block.name.upper() not in used)


def content(file: Path) -> Counter[str]:
    return types_in(ezdxf.readfile(str(file)).modelspace())


def make_old_drawing(file: Path) -> None:
    """A drawing that one of any version can take in."""
    drawing = ezdxf.new("R12")
    drawing.modelspace().add_line((0, 0), (100, 50))
    drawing.modelspace().add_circle((10, 20), 5)
    for at, tag in enumerate(TAGS):
        drawing.modelspace().add_attdef(tag, (0, 10 * at), tag.lower(), height=2.5)
    drawing.saveas(str(file))


# --- what has to be in the changed drawing -------------------------------------------------------


def has_block(name: str, wanted: Counter[str]) -> Check:
    def check(case: Case, told: Any, drawing: Drawing) -> str | None:
        block = block_of(drawing, name)
        if block is None or not told["handle"]:
            return f"there is no block {name}; told was {told}"
        if types_in(block) != wanted:
            return f"block {name} holds {types_in(block)}, not {wanted}"
        assert case.drawing is not None
        for former in case.drawing.blocks:
            now = block_of(drawing, former.name)
            if now is None or (now is not block and len(now) != len(former)):
                return f"block {former.name} is not what it was"
        return None
    return check


def has_attributes(name: str) -> Check:
    """All references of a block have the attributes of its definition, in its order."""
    def check(_case: Case, _told: Any, drawing: Drawing) -> str | None:
        block = block_of(drawing, name)
        if block is None:
            return f"there is no block {name}"
        wanted = definitions_of(block, constant=False)
        for reference in references_to(drawing, name):
            if tags_of(reference) != wanted:
                return (f"reference {reference.dxf.handle} of {name} has {tags_of(reference)}, "
                        f"not {wanted}")
        return None
    return check


def is_up_to_date(case: Case, _told: Any, _drawing: Drawing) -> str | None:
    asked = case.run("attupdate", drawing=case.changed)
    if asked.returncode != 0 or json.loads(asked.stdout)["outOfDateRefs"]:
        return f"there is still something to update: {asked.stdout}{asked.stderr}"
    return None


def fewer(handles: list[str]) -> Check:
    def check(case: Case, _told: Any, drawing: Drawing) -> str | None:
        assert case.drawing is not None
        before = sum(map(len, case.drawing.blocks))
        now = sum(map(len, drawing.blocks))
        return None if now == before - len(handles) else f"{before} entities became {now}"
    return check


def point_of(entity: DXFEntity) -> Vec3 | None:
    """A point of an entity in world coordinates."""
    kind = entity.dxftype()
    if kind == "LINE":
        return Vec3(entity.dxf.start)
    if kind == "POINT":
        return Vec3(entity.dxf.location)
    if kind in ("CIRCLE", "ARC"):
        return Vec3(entity.ocs().to_wcs(entity.dxf.center))
    return Vec3(entity.ocs().to_wcs(entity.dxf.insert)) if kind in ("INSERT", "TEXT") else None


def user_system(drawing: Drawing) -> Matrix44:
    """From the coordinate system of the user to that of the world, in the model."""
    header = drawing.header
    origin, x, y = (Vec3(header.get(name, Vec3(default))) for name, default in
                    (("$UCSORG", (0, 0, 0)), ("$UCSXDIR", (1, 0, 0)), ("$UCSYDIR", (0, 1, 0))))
    return Matrix44.ucs(x, y, x.cross(y), origin) if x.cross(y) else Matrix44()


def is_copy(original: DXFEntity, made: DXFEntity | None, place: Matrix44 | None) -> bool:
    """True when they are alike, and the copy is where the matrix tells; none: wherever it is."""
    if made is None or made.dxftype() != original.dxftype():
        return False
    point, at = point_of(original), point_of(made)
    if point is None or place is None:
        return True
    return at is not None and at.isclose(place.transform(point), abs_tol=1e-6 * far(point))


def has_copies(entities: list[str], matrix: list[float] | None) -> Check:
    def check(case: Case, told: Any, drawing: Drawing) -> str | None:
        assert case.drawing is not None
        before, now = (sum(map(len, each.blocks)) for each in (case.drawing, drawing))
        if len(told["handles"]) < len(entities) or now < before + len(told["handles"]):
            return f"{before} entities became {now}; told was {told} for {entities}"
        if not case.has_handles:
            return None
        rows = matrix or [1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1]
        given = Matrix44([rows[4 * column + row] for row in range(4) for column in range(4)])
        place = None if is_paper(case.drawing) else user_system(case.drawing) * given
        # They are in the order asked for; a leader brings its text, which nobody asked for.
        copies = iter([drawing.entitydb.get(copy) for copy in reversed(told["handles"])])
        for handle in entities:
            original = case.drawing.entitydb[handle]
            if not any(is_copy(original, copy, place) for copy in copies):
                return f"there is no copy of {original} at its place among {told}"
        return None
    return check


def far(point: Vec3) -> float:
    return max(1.0, point.magnitude)


def is_paper(drawing: Drawing) -> bool:
    return not drawing.header.get("$TILEMODE", 1)


# --- the commands --------------------------------------------------------------------------------


def escaped(name: str) -> str:
    return "".join("`" + c if c in "#@.?*~[]-,`" else c for c in name)


def judged(case: Case, name: str, words: list[str], check: Check,
           drawing: Path | None = None) -> None:
    """Runs a command that changes the drawing, and looks at what came of it."""
    result = Result(name)
    case.results.append(result)
    ran = case.saved(*words, drawing=drawing)
    if not case.changed.exists():
        result.idle = ran.returncode == 0
        result.refusal = " ".join(ran.stderr.split())
        if ran.returncode not in (0, 1):
            result.fault = f"exit status {ran.returncode}: {result.refusal}"
        elif ran.returncode == 1 and not result.refusal:
            result.fault = "it failed and tells no reason"
        return
    if ran.returncode != 0:
        result.fault = f"it failed and saved a drawing: {ran.stderr}"
        return
    again = case.run("drawing", drawing=case.changed)
    now, changed = read(case.changed)
    if again.returncode != 0:
        result.fault = f"the changed drawing does not open: {again.stderr}"
    elif now != case.before and case.drawing is not None:
        result.fault = f"ezdxf found {case.before}, and finds {now}"
    elif changed is not None and case.drawing is not None:
        result.fault = check(case, json.loads(ran.stdout), changed) or ""


def try_blocks(case: Case, data: Path, frame: Path, old: Path) -> None:
    for version, library in (("R2010", frame), ("R12", old)):
        name = f"CORMA-{version}"
        shutil.copy(library, case.folder / f"{name}.dwg")
        judged(case, f"insert a drawing of {version}", ["block", name.lower()],
               has_block(name, content(library)))
    for version in ("r12", "r2000", "r2018_binary"):
        source = data / f"{version}.dxf"
        block = block_of(ezdxf.readfile(str(source)), "DEUR")
        assert block is not None
        judged(case, f"clone a block from {version}", ["block", f"{source}!$DEUR"],
               has_block("DEUR", types_in(block)))


def try_replaced(case: Case, old: Path) -> None:
    """A block that becomes another, and then the references that it has."""
    for block in named_blocks(case.drawing)[:1]:
        file = case.folder / f"{block.name}.dwg"
        shutil.copy(old, file)
        judged(case, "replace a block", ["block", "$" + block.name],
               has_block(block.name, content(old)))
        if case.changed.exists():
            replaced = case.changed.rename(case.folder / "replaced.dxf")
            judged(case, "update references", ["attupdate", "--apply"], is_up_to_date, replaced)
        file.unlink()


def try_attributes(case: Case, old: Path) -> None:
    for block in [block for block in named_blocks(case.drawing) if definitions_of(block)][:1]:
        judged(case, "synchronise", ["attsync", block.name], has_attributes(block.name))
        file = case.folder / f"{block.name}.dwg"
        shutil.copy(old, file)
        judged(case, "update records",
               ["attupdate", "--records", "--apply", "--pattern", escaped(block.name)],
               has_attributes(block.name))
        file.unlink()


def entities_by_type(case: Case) -> list[str]:
    """A handle of each type of entity in the model space, of one that ezdxf finds no fault with.
    Where ezdxf has given handles of its own: that of the first reference."""
    known = {reference["handle"]: reference["block"].upper()
             for reference in json.loads(case.run("drawing").stdout)["references"]
             if reference["space"].upper() == MODEL.upper()}
    by_type: dict[str, str] = {}
    inserted: dict[str, str] = {}
    if case.drawing is not None:
        faulty = handles_with_findings(case.file)
        for entity in model_of(case.drawing):
            if entity.dxf.handle not in faulty:
                by_type.setdefault(entity.dxftype(), entity.dxf.handle)
            if isinstance(entity, Insert):
                inserted[entity.dxf.handle] = plain(entity.dxf.name).upper()
    first = next(iter(by_type.values()), "0")
    case.has_handles = inserted == known and NO_OBJECT not in case.run("attributes", first).stderr
    return list(by_type.values()) if case.has_handles else list(known)[:1]


def try_entities(case: Case) -> None:
    handles = entities_by_type(case)
    for name, matrix in (("copy", None), ("copy and move", MOVED)):
        option = ["--matrix", ",".join(map(repr, map(float, matrix)))] if matrix else []
        copied = []
        for handle in handles:
            ran = case.saved("copy", handle, *option)
            if ran.returncode == 0:
                copied.append(handle)
            else:
                judged(case, name, ["copy", handle, *option], has_copies([handle], matrix))
        if copied:
            judged(case, name, ["copy", *copied, *option], has_copies(copied, matrix))
    if handles:
        judged(case, "erase", ["erase", *handles], fewer(handles))


def tried(cfgctl: Path, examples: Path, data: Path, file: Path) -> tuple[str, list[Result]]:
    logging.disable(logging.CRITICAL)
    with tempfile.TemporaryDirectory() as name:
        case = Case(cfgctl, Path(name), file)
        if case.run("drawing").returncode != 0:
            return file.name, []
        case.before, case.drawing = read(file)
        old = case.folder / "old.dxf"
        make_old_drawing(old)
        try_blocks(case, data, examples / "bron" / "blokken" / "kader.dxf", old)
        try_replaced(case, old)
        try_attributes(case, old)
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
            if result.fault:
                faults += 1
                print(f"WRONG {file}: {result.command}: {result.fault}", file=sys.stderr)
            elif result.idle:
                idle += 1
            elif result.refusal:
                refused += 1
                print(f"{file}: {result.command}: {result.refusal}")
            else:
                succeeded[result.command] += 1
    for command, count in every.items():
        print(f"{succeeded[command]} of {count}: {command}")
    unopened = [file for file, results in drawings if not results]
    print(f"{len(drawings)} drawings, {len(unopened)} of them not opened; {sum(every.values())} "
          f"commands: {sum(succeeded.values())} succeeded, {idle} had nothing to change, {refused} "
          f"refused, {faults} wrong")
    return 1 if faults or not every or any(not succeeded[command] for command in every) else 0


def main() -> int:
    if not any(sys.argv[4:]):
        print("audit_changed_drawings: no folder of drawings; configure with "
              "-DCORMA_SAMPLE_DRAWINGS=FOLDER", file=sys.stderr)
        return 77
    cfgctl, examples, data = (Path(argument).resolve() for argument in sys.argv[1:4])
    files = [file for folder in sys.argv[4:] for file in sorted(Path(folder).resolve().glob("*.dxf"))]
    with ProcessPoolExecutor(min(4, os.cpu_count() or 1)) as pool:
        return told(list(pool.map(partial(tried, cfgctl, examples, data), files)))


if __name__ == "__main__":
    sys.exit(main())
