#!/usr/bin/env python3
"""Makes the drawings of Plattegrond: make_drawings.py [--dwg PROGRAM] [--check].

All are DXF. With --dwg those in bron/ are also saved as the DWG files of their names outside it;
PROGRAM is save_as_dwg, which lies in build/dev/bin after `make test`. With --check nothing is
written; the exit status is 1 when a file differs from what is made here.
"""

from __future__ import annotations

import subprocess
import sys
import tempfile
from pathlib import Path

HERE = Path(__file__).resolve().parent
sys.path[:0] = [str(HERE.parent / "tools"), str(HERE)]

from dxf_writer import BinaryForm, Drawing, Placing, Sheet, TextForm, Version, at  # noqa: E402
from house import (DEPTH, PAPER_SCALE, WIDTH, add_layers, double_door, draw_frame,  # noqa: E402
                   draw_house, single_door, sliding_door)
from made_files import write_or_check  # noqa: E402

FOLDER = HERE / "plattegrond"
SOURCES = FOLDER / "bron"
CR_LF = TextForm("\r\n")
A2 = Sheet("Begane grond", "ISO_A2_(594.00_x_420.00_MM)", (594.0, 420.0))

# Held by the drawing of the house itself. Tekst has no effect: the office standard is asked first.
SETTINGS: dict[str, str | dict[str, str]] = {
    "Noordhoek": "27.5",
    "ProjectNaam": "Woonhuis Lindelaan 14, begane grond",
    "TekeningNummer": "B-101",
    "Ruimten": {"Hoogte": "2700", "NummerVorm": "0.%02d"},
    "Tekst": {"TekstStijl": "PG_GROOT"},
    "Bouwlaag: begane grond": {"Vloerpeil": "0", "Plafond": "2700"},
}


def house(version: Version) -> Drawing:
    drawing = Drawing(version, sheet=A2)
    add_layers(drawing)
    draw_house(drawing)
    add_sheet(drawing)
    drawing.look_at((WIDTH / 2, DEPTH / 2), DEPTH + 4000.0)
    drawing.header["$EXTMIN"] = at(10, (-1150.0, -1150.0, 0.0))
    drawing.header["$EXTMAX"] = at(10, (WIDTH + 2500.0, DEPTH + 1400.0, 0.0))
    drawing.header["$LIMMAX"] = at(10, (WIDTH, DEPTH))
    drawing.header["$LTSCALE"] = [(40, 20.0)]
    drawing.header["$DIMSCALE"] = [(40, PAPER_SCALE)]
    drawing.header["$DIMSTYLE"] = [(2, "NK-MAAT")]
    if version >= Version.R13:
        drawing.settings("plattegrond.ini", SETTINGS)
    return drawing


def add_sheet(drawing: Drawing) -> None:
    """The plan on paper: a frame with its title block, and a window on the model."""
    frame = drawing.block("PG-KADER-A2")
    draw_frame(drawing, frame, A2.size)
    width, height = A2.size
    paper = drawing.paper
    drawing.viewport(paper, 1, (width / 2, height / 2), (width * 1.1, height * 1.1),
                     view=(width / 2, height / 2), view_height=height * 1.1)
    window = (300.0, 240.0)
    drawing.viewport(paper, 2, (220.0, 245.0), window,
                     view=(WIDTH / 2 + 600.0, DEPTH / 2), view_height=window[1] * PAPER_SCALE,
                     layer="00-KADER")
    drawing.insert(paper, frame, (0, 0), {
        "PROJECT": "Woonhuis Lindelaan 14", "TITEL": "Plattegrond begane grond",
        "NUMMER": "2417", "SCHAAL": "1:50", "DATUM": "12-03-2024", "GETEKEND": "NK",
        "BLAD": "B-101"}, layer="00-KADER")


def doors() -> Drawing:
    """The doors, one of each beside the other."""
    drawing = Drawing(Version.R2000)
    drawing.layer("31-KOZIJN", 4, weight=25)
    blocks = [single_door(drawing), double_door(drawing), sliding_door(drawing)]
    for column, block in enumerate(blocks):
        drawing.insert(drawing.model, block, (column * 2400.0, 0.0),
                       {"NUMMER": f"D{column + 1:03d}"}, layer="31-KOZIJN")
    drawing.look_at((3300.0, 400.0), 3000.0)
    drawing.header["$EXTMIN"] = at(10, (0.0, -220.0, 0.0))
    drawing.header["$EXTMAX"] = at(10, (6710.0, 930.0, 0.0))
    return drawing


def new_doors() -> Drawing:
    """The doors of the next version."""
    drawing = Drawing(Version.R2018)
    drawing.layer("31-KOZIJN", 4, weight=25)
    door = single_door(drawing, fire_rated=True)
    drawing.insert(drawing.model, door, (0.0, 0.0), {"NUMMER": "D001", "WERING": "30 minuten"},
                   layer="31-KOZIJN")
    drawing.look_at((500.0, 500.0), 1500.0)
    drawing.header["$EXTMAX"] = at(10, (930.0, 930.0, 0.0))
    return drawing


def frame() -> Drawing:
    """To be inserted as a whole: its attribute definitions stand in the model."""
    drawing = Drawing(Version.R2010, sheet=A2)
    drawing.layer("00-KADER", 7, weight=70)
    drawing.layer("00-TEKST", 7, weight=25)
    draw_frame(drawing, drawing.model, A2.size)
    drawing.look_at((297.0, 210.0), 420.0)
    drawing.header["$EXTMAX"] = at(10, (*A2.size, 0.0))
    return drawing


def all_files() -> dict[Path, bytes]:
    return {
        FOLDER / "project" / "woonhuis.dxf": house(Version.R2018).packed(CR_LF),
        FOLDER / "project" / "woonhuis-2004.dxf": house(Version.R2004).packed(CR_LF),
        FOLDER / "project" / "woonhuis-r12.dxf": house(Version.R12).packed(CR_LF),
        SOURCES / "blokken" / "deur.dxf": doors().packed(CR_LF),
        SOURCES / "blokken" / "kader.dxf": frame().packed(BinaryForm()),
        SOURCES / "nieuw" / "deur.dxf": new_doors().packed(CR_LF),
    }


def saved_as_dwg(program: str, files: dict[Path, bytes]) -> dict[Path, bytes]:
    """What the program makes of the drawings that are sources."""
    saved: dict[Path, bytes] = {}
    with tempfile.TemporaryDirectory() as name:
        source, target = Path(name, "drawing.dxf"), Path(name, "drawing.dwg")
        for path, data in files.items():
            if path.is_relative_to(SOURCES):
                source.write_bytes(data)
                subprocess.run([program, source, target], check=True)
                place = FOLDER / path.relative_to(SOURCES).with_suffix(".dwg")
                saved[place] = target.read_bytes()
    return saved


def main(arguments: list[str]) -> int:
    files = all_files()
    if arguments[:1] == ["--dwg"] and len(arguments) > 1:
        files |= saved_as_dwg(arguments[1], files)
        arguments = arguments[2:]
    return write_or_check(files, arguments, "[--dwg PROGRAM] [--check]")


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
