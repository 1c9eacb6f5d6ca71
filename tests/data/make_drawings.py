#!/usr/bin/env python3
"""Makes the drawings of this folder: make_drawings.py [--check].

With --check nothing is written; the exit status is 1 when a file differs from what is made here.
"""

from __future__ import annotations

import sys
from dataclasses import dataclass
from pathlib import Path
from typing import Callable

HERE = Path(__file__).resolve().parent
sys.path[:0] = [str(HERE.parents[1] / "tools"), str(HERE)]

from damaged_drawings import damaged_drawings  # noqa: E402
from dxf_writer import (AttributeDefinition, BinaryForm, Dictionary, Drawing, Form,  # noqa: E402
                        Placing, Record, Space, Tag, TextForm, Version, at)
from made_files import write_or_check  # noqa: E402


@dataclass(frozen=True)
class Words:
    """What is written in the language of a drawing."""

    layer: str = "Balken"
    note: str = "Maß 5°, coördinaten ±0,5 €"
    chapter: str = "Maßlinien"


DUTCH = Words()
RUSSIAN = Words("СТЕНЫ", "Размер по осям, мм", "Размеры")
# The second bytes of some of these signs in dos932 are those of the back-slash and the caret.
JAPANESE = Words("表題", "ソフトの寸法十タ", "予定表")
ALL_PLANES = Words("Wände", "日本 Ω 😀 ±", "Größe")

CR_LF = "\r\n"


# --- content ------------------------------------------------------------------------------------


def add_tables(drawing: Drawing, words: Words) -> None:
    drawing.linetype("STREEP", "Streep __ __ __", [12.0, -6.0])
    drawing.linetype("STREEPPUNT", "Streeppunt __ . __ .", [12.0, -3.0, 0.0, -3.0])
    drawing.layer(words.layer, 1, "STREEP", weight=50)
    drawing.layer("BEVROREN", 3, flags=1)
    drawing.layer("UIT", -5)
    drawing.layer("VERGRENDELD", 4, "STREEPPUNT", flags=4)
    drawing.text_style("NOTITIE", "romans.shx", width=0.85, slope=15.0)


@dataclass
class Blocks:
    bolt: Space
    plate: Space
    door: Space
    anonymous: Space
    picture: Space


def add_blocks(drawing: Drawing, words: Words) -> Blocks:
    bolt = drawing.block("BOUT")
    drawing.circle(bolt, (0, 0), 2.0)
    plate = drawing.block("Plaat", base=(5, 5))
    drawing.line(plate, (0, 0), (40, 0), words.layer)
    drawing.insert(plate, bolt, (10, 0))
    drawing.insert(plate, bolt, (30, 0), how=Placing(scale=(1.5, 1.5, 1.0)))
    door = drawing.block("DEUR")
    drawing.line(door, (0, 0), (9, 0))
    drawing.arc(door, (0, 0), 9.0, (0.0, 90.0))
    for definition in (
        AttributeDefinition("NUMMER", "D000", (2, 3), prompt="Nummer:"),
        AttributeDefinition("CODE", "geheim", (2, 6), 1.8, "Code:", flags=1),
        AttributeDefinition("SOORT", "binnendeur", (2, 9), 1.8, "", flags=2),
        AttributeDefinition("BREEDTE", "930", (2, 12), 1.8, "Breedte:", flags=4, angle=90.0),
        AttributeDefinition("MERK", "", (2, 15), 1.8, "Merk:", flags=8, style="NOTITIE"),
        AttributeDefinition("PRIJS", "0", (2, 18), 1.8, "Prijs:", flags=9, layer=words.layer),
    ):
        drawing.attribute_definition(door, definition)
    anonymous = drawing.block("*U1")
    drawing.line(anonymous, (0, 0), (3, 3))
    picture = drawing.block("*D1")
    drawing.line(picture, (10, 30), (60, 30))
    drawing.text(picture, (32, 31), 2.5, "50")
    return Blocks(bolt, plate, door, anonymous, picture)


def add_entities(drawing: Drawing, blocks: Blocks, words: Words) -> Record:
    """Returns the first line."""
    model = drawing.model
    first = drawing.line(model, (0, 0), (100, 0), words.layer)
    drawing.attach(first, "KVR_TEST", (1000, "eerste"), (1070, 7), (1071, 70000), (1040, 0.25))
    drawing.attach(first, "KVR_ANDER", (1002, "{"), (1005, str(first.handle or "0")),
                   *at(1010, (1, 2, 3)), (1004, b"\x00\x01\xfe\xff"), (1003, "0"), (1002, "}"))
    drawing.circle(model, (50, 50), 10.0, "UIT")
    drawing.text(model, (0, 60), 5.0, words.note, layer=words.layer, style="NOTITIE")
    drawing.text(model, (0, 70), 5.0, "twee\tkolommen, x^2, regel 1\nregel 2", angle=30.0)
    drawing.polyline(model, [(0, 80), (20, 80), (20, 90)], closed=True)
    drawing.polyline(model, [(0, 100, 0), (20, 100, 5), (20, 110, 10)], spatial=True)
    if drawing.version >= Version.R13:
        drawing.mtext(model, (120, 60), 2.5, f"{words.note}\\P" + "Lange tekst. " * 25, width=80.0)
    if drawing.version >= Version.R14:
        drawing.outline(model, [(60, 80), (80, 80, 0.5), (80, 100)], words.layer, closed=True)
        drawing.hatch(model, [(60, 110), (80, 110), (70, 125)])
    drawing.dimension(model, ((10, 10), (60, 10)), (35, 30), blocks.picture)
    add_references(drawing, blocks)
    return first


def add_references(drawing: Drawing, blocks: Blocks) -> None:
    model, door = drawing.model, blocks.door
    drawing.insert(model, blocks.plate, (150, 10), layer="BEVROREN")
    drawing.insert(model, blocks.anonymous, (150, 20))
    drawing.insert(model, door, (200, 10), {"NUMMER": "D001", "CODE": "a1"})
    turned = Placing(scale=(2.0, 2.0, 1.0), angle=30.0)
    drawing.insert(model, door, (230, 10), {"NUMMER": "D002"}, how=turned)
    mirrored = Placing(scale=(-1.0, 1.0, 1.0), angle=90.0)
    drawing.insert(model, door, (260, 10), {"NUMMER": "D003"}, how=mirrored)
    tilted = Placing(normal=(0.0, -0.6, 0.8), angle=45.0)
    drawing.insert(model, door, (290, 10, 5), {"NUMMER": "D004"}, how=tilted)
    upside_down = Placing(normal=(0.0, 0.0, -1.0))
    drawing.insert(model, blocks.bolt, (-320, 10), how=upside_down)
    drawing.insert(model, blocks.bolt, (200, 100), how=Placing(grid=(3, 2, 10.0, 15.0)))
    drawing.insert(model, door, (200, 150), {"NUMMER": "D005"},
                   how=Placing(grid=(2, 2, 20.0, 25.0)))


def add_paper(drawing: Drawing, blocks: Blocks) -> Record:
    """Returns the floating viewport of the first layout."""
    paper = drawing.paper
    drawing.viewport(paper, 1, (210, 148.5), (462.0, 326.7), view=(210, 148.5), view_height=326.7)
    floating = drawing.viewport(paper, 2, (150, 150), (200.0, 150.0), view=(120, 75),
                                view_height=150.0, layer="VERGRENDELD")
    drawing.text(paper, (300, 20), 5.0, "Blad 1")
    drawing.insert(paper, blocks.door, (350, 50), {"NUMMER": "P001"})
    if drawing.version >= Version.R2000:
        second = drawing.layout("Blad 2").space
        drawing.viewport(second, 1, (210, 148.5), (462.0, 326.7), view=(210, 148.5),
                         view_height=326.7)
        drawing.viewport(second, 2, (100, 100), (80.0, 60.0), direction=(1.0, -1.0, 1.0))
        drawing.line(second, (0, 0), (420, 0))
    return floating


def values_of_every_kind(drawing: Drawing) -> list[Tag]:
    zero = str(drawing.tables["LAYER"].entries[0].handle)
    tags: list[Tag] = [
        (1, "een tekst"), (1, "nog een tekst"), (2, "naam"), (6, "ByLayer"), (7, "NOTITIE"),
        (8, "0"), *at(10, (1.5, -2.25, 1e-9)), *at(11, (3.0, 4.0)), (40, 1.0 / 3.0), (48, -1e20),
        (50, 90.0), (62, 256), (70, -32768), (71, 32767), (90, -2147483648), (91, 2147483647),
        (102, "geen accolade"), (300, ""), (310, bytes(range(127))), (310, b""), (320, zero),
        (330, zero), (340, zero), (1000, "tekst"), (1070, 5), (1040, 0.5), (1071, 65536),
    ]
    if drawing.version >= Version.R2000:
        tags += [(290, 1), (290, 0), (370, 25), (390, zero), (430, "BOEK$Kleur")]
    if drawing.version >= Version.R2004:
        tags += [(420, 0x00FF8040), (440, 0x0200007F)]
    if drawing.version >= Version.R2010:
        tags += [(160, -(2**63)), (160, 2**63 - 1)]
    return tags


def add_objects(drawing: Drawing, first: Record) -> None:
    data = drawing.dictionary(drawing.root, "KVR_TEST_DATA")
    drawing.xrecord(data, "Alles", *values_of_every_kind(drawing))
    drawing.xrecord(data, "Leeg")
    extension = drawing.extension(first)
    drawing.xrecord(extension, "KVR_EIGEN", (1, "bij deze lijn"), (70, 1))
    inner = drawing.dictionary(extension, "KVR_DIEPER")
    drawing.xrecord(inner, "Nog dieper", (40, 2.5))
    first.reactors.append(str(inner.record.handle))
    drawing.extension(drawing.tables["LAYER"].entries[0])


def add_settings(drawing: Drawing, words: Words) -> None:
    drawing.settings("tool.ini", {
        "Taal": "NL",
        "Tekst": {"Hoogte": "2.5", "Stijl": "NOTITIE", "Opschrift": words.note},
        "A=B": {"Gelijk": "ja"},
        words.chapter: {"Kleur": "3"},
    })


def add_unknown(drawing: Drawing) -> None:
    """What no reader of drawings knows; it must survive."""
    drawing.add_class("KVRTESTBORD", "KvrTestBord", "KvrTest", entity=True)
    drawing.add_class("KVRTESTDING", "KvrTestDing", "KvrTest", entity=False)
    drawing.add(drawing.model, "KVRTESTBORD", [
        (100, "KvrTestBord"), (90, 3), *at(10, (5, 6, 7)), (310, b"bord"), (290, 1)])
    thing = drawing.object(drawing.root, "KVR_TEST_DING", "KVRTESTDING", [
        (100, "KvrTestDing"), (160, 1 << 40), (1, "een ding"), (70, 2), (70, 3)])
    drawing.sections.append(("KVRTESTDEEL", [
        (0, "KVRREGEL"), (1, "een"), (0, "KVRREGEL"), (5, "niet echt een handle"), (1, "twee")]))
    drawing.sections.append(("ACDSDATA", [
        (70, 2), (71, 2), (0, "ACDSSCHEMA"), (90, 0), (1, "KvrTest_Schema"), (2, "AcDbDs::ID"),
        (280, 10), (91, 8), (0, "ACDSRECORD"), (90, 0), (2, "AcDbDs::ID"), (280, 10),
        (320, str(thing.handle)), (2, "KvrTest_Data"), (280, 15), (94, 4),
        (310, b"\x01\x02\x03\x04")]))
    drawing.sections.append(("THUMBNAILIMAGE", [(90, 6), (310, b"BM"), (310, b"\x00\x01\x02\x03")]))


@dataclass
class Furnished:
    drawing: Drawing
    floating: Record


def furnished(version: Version, words: Words = DUTCH, code_page: str = "ANSI_1252", *,
              handles: bool = True) -> Furnished:
    """A drawing with all that its version can hold."""
    drawing = Drawing(version, code_page, handles=handles)
    add_tables(drawing, words)
    blocks = add_blocks(drawing, words)
    first = add_entities(drawing, blocks, words)
    floating = add_paper(drawing, blocks)
    if version >= Version.R13:
        add_objects(drawing, first)
        add_settings(drawing, words)
    return Furnished(drawing, floating)


# --- the drawings -------------------------------------------------------------------------------


def r12() -> Drawing:
    drawing = furnished(Version.R12).drawing
    drawing.comments = ["R12 met handles", ""]
    drawing.model.entities[0].body.insert(2, (999, "een opmerking in een lijn"))
    return drawing


def r12_no_handles() -> Drawing:
    return furnished(Version.R12, handles=False).drawing


def r13() -> Drawing:
    """Only objects tell their owners here, tables and entities do not."""
    drawing = furnished(Version.R13, JAPANESE, "dos932").drawing
    entries = [entry for table in drawing.tables.values() for entry in table.entries]
    framed = [record for block in drawing.blocks for record in (block.begin, block.end)]
    entities = [entity for block in drawing.blocks for entity in block.entities]
    parts = [part for entity in entities for part in entity.parts]
    for record in entries + framed + entities + parts:
        record.owner = None
    return drawing


def r2000() -> Drawing:
    drawing = furnished(Version.R2000).drawing
    add_unknown(drawing)
    drawing.comments = ["R2000, ANSI_1252"]
    coded = "\\U+03A9 en Ω, \\M+182A0, \\U+12, \\U+D83D\\U+DE00"
    drawing.text(drawing.model, (0, 130), 5.0, coded)
    drawing.text(drawing.model, (0, 140), 5.0, b"^I^J^M^ ^^A^")
    return drawing


def r2018() -> Drawing:
    drawing = furnished(Version.R2018, ALL_PLANES).drawing
    add_unknown(drawing)
    drawing.text(drawing.model, (0, 130), 5.0, "\\U+03A9 en Ω, 😀")
    return drawing


def settings() -> Drawing:
    """Settings that are harder to read than those of the others."""
    drawing = Drawing(Version.R2018)
    drawing.settings("tool.ini", {
        "Taal": "NL",
        "Leeg": "",
        "Blanco": "  m² ",
        "Tekst": {"Hoogte": "2.5", "hoogte2": "3.5", "Lang": "0123456789" * 30},
        "A=B": {"x=y": "1", "Regels": "een\ntwee"},
        "c:\\map\\*.ini": {"Pad": "c:\\map"},
        "Maßlinien 😀": {"Kleur": "3"},
        "XX_HEX_0x": {"Naam": "als een code"},
        "Geen": {},
    })
    drawing.settings("Ander.ini", {"Tekst": {"Hoogte": "5"}})
    chapter = chapter_of(drawing, "Tekst")
    drawing.xrecord(chapter, "Getal", (40, 2.5))
    drawing.xrecord(chapter, "Twee", (1, "eerste"), (1, "tweede"))
    drawing.xrecord(chapter, "Niets")
    drawing.object(chapter, "Plaats", "ACDBPLACEHOLDER", [])
    return drawing


def chapter_of(drawing: Drawing, name: str) -> Dictionary:
    handle = next(h for thing in drawing.objects if isinstance(thing, Dictionary)
                  for entry, h in thing.entries if entry == name)
    return next(thing for thing in drawing.objects
                if isinstance(thing, Dictionary) and thing.record.handle == handle)


def turn_ucs(drawing: Drawing, prefix: str) -> None:
    drawing.header[f"{prefix}NAME"] = [(2, "GEDRAAID")]
    drawing.header[f"{prefix}ORG"] = at(10, (100.0, 50.0, 0.0))
    drawing.header[f"{prefix}XDIR"] = at(10, (0.6, 0.8, 0.0))
    drawing.header[f"{prefix}YDIR"] = at(10, (-0.8, 0.6, 0.0))


def ucs() -> Drawing:
    drawing = furnished(Version.R2007).drawing
    drawing.entry("UCS", "GEDRAAID", 0, [
        *at(10, (100, 50, 0)), *at(11, (0.6, 0.8, 0)), *at(12, (-0.8, 0.6, 0))])
    turn_ucs(drawing, "$UCS")
    return drawing


def layout_current() -> Drawing:
    """Work goes on in the floating viewport of the first layout."""
    made = furnished(Version.R2010)
    made.drawing.header["$TILEMODE"] = [(70, 0)]
    layout = made.drawing.layouts["Layout1"].record
    layout.body.append((331, str(made.floating.handle)))
    return made.drawing


def plain(version: Version, words: Words = DUTCH, code_page: str = "ANSI_1252",
          ) -> Callable[[], Drawing]:
    return lambda: furnished(version, words, code_page).drawing


ALIGNED, BARE, BINARY = TextForm(CR_LF), TextForm("\n", aligned=False), BinaryForm()

DRAWINGS: dict[str, tuple[Callable[[], Drawing], Form]] = {
    "r12": (r12, ALIGNED),
    "r12_no_handles": (r12_no_handles, BARE),
    "r12_binary": (r12, BINARY),
    "r13": (r13, TextForm("\n")),
    "r13_binary": (plain(Version.R13), BINARY),
    "r14": (plain(Version.R14, RUSSIAN, "ANSI_1251"), ALIGNED),
    "r2000": (r2000, ALIGNED),
    "r2000_binary": (r2000, BINARY),
    "r2004": (plain(Version.R2004), BARE),
    "r2007": (plain(Version.R2007, ALL_PLANES), ALIGNED),
    "r2010": (plain(Version.R2010, RUSSIAN), TextForm(CR_LF, aligned=False)),
    "r2013": (plain(Version.R2013, JAPANESE), TextForm("\n")),
    "r2018": (r2018, TextForm("\n")),
    "r2018_binary": (r2018, BINARY),
    "settings": (settings, ALIGNED),
    "ucs": (ucs, BARE),
    "layout_current": (layout_current, ALIGNED),
}


def all_files() -> dict[Path, bytes]:
    files = {HERE / f"{name}.dxf": make().packed(form) for name, (make, form) in DRAWINGS.items()}
    files |= {HERE / "damaged" / name: data for name, data in damaged_drawings().items()}
    return files


if __name__ == "__main__":
    sys.exit(write_or_check(all_files()))
