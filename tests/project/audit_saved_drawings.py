#!/usr/bin/env python3
"""Asks ezdxf what it thinks of drawings in which cfgctl stored a value.

audit_saved_drawings.py CFGCTL FOLDER

Of each DXF drawing in the folder that has a place for settings (R13 or later): a copy in which a
value is set has the findings that the drawing itself has, no more and no less, and ezdxf sees the
value, and all other settings as they were. A drawing that ezdxf cannot read is told; a copy must
then fail in the same way. The exit status is 1 when one does not hold or there is no such drawing,
77 when there is no ezdxf or the folder is empty text.
"""

from __future__ import annotations

import json
import logging
import re
import subprocess
import sys
import tempfile
from pathlib import Path
from typing import Any

from audit_drawing import ROOT, findings, settings

import ezdxf

CHAPTER = "Wand: 1"
VALUE = "3.5 \N{GREEK SMALL LETTER MU}m"
CODED = "XX_HEX_0x" + CHAPTER.encode("utf-16-le").hex()


def nameless(found: dict[str, list[dict[str, Any]]]) -> list[tuple[str, int, str]]:
    """Findings without handles: records that have none get them from ezdxf, behind all others."""
    return sorted((kind, row["code"], re.sub(r"#[0-9A-F]+", "#", row["message"]))
                  for kind, rows in found.items() for row in rows)


def asked(file: Path) -> tuple[Any, dict[str, Any]]:
    """The findings, or why ezdxf cannot read the drawing; and its settings."""
    try:
        held = settings(ezdxf.readfile(str(file)).rootdict.get(ROOT)) or {}
        return nameless(findings(ezdxf.readfile(str(file)))), held
    except Exception as error:  # it refuses in many ways, KeyError and struct.error among them
        return f"{type(error).__name__}: {' '.join(str(error).split())}", {}


def run(cfgctl: Path, folder: Path, *words: str) -> subprocess.CompletedProcess[str]:
    return subprocess.run([cfgctl, *words], cwd=folder, capture_output=True, text=True, check=False)


def wrong(cfgctl: Path, folder: Path, file: Path) -> str | None:
    """What is wrong with a drawing in which a value was set; None for nothing."""
    copy = folder / "copy.dxf"
    copy.unlink(missing_ok=True)
    stored = run(cfgctl, folder, "set", "tool.ini", f"[{CHAPTER}]Dikte", VALUE,
                 "--drawing", str(file), "--save-as", str(copy))
    if stored.returncode != 0:
        return stored.stderr
    (found, held), (found_now, held_now) = asked(file), asked(copy)
    if found_now != found:
        return f"ezdxf found {found}, and finds {found_now} in the copy"
    if isinstance(found, str):
        print(f"{file.name}: ezdxf cannot read it, before and after: {found}")
        return None
    held.setdefault("TOOL.INI", {}).setdefault(CODED, {})["Dikte"] = VALUE
    return None if held == held_now else f"it held {held}, and the copy {held_now}"


def main() -> int:
    if not sys.argv[2]:
        print("audit_saved_drawings: no folder of drawings; configure with "
              "-DCORMA_SAMPLE_DRAWINGS=FOLDER", file=sys.stderr)
        return 77
    cfgctl, source = (Path(argument).resolve() for argument in sys.argv[1:3])
    logging.disable(logging.CRITICAL)
    checked = failed = 0
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        (folder / "tool.ini").touch()
        for file in sorted(source.glob("*.dxf")):
            held = run(cfgctl, folder, "drawing", "--drawing", str(file), "--json")
            if held.returncode == 0 and json.loads(held.stdout)["version"] < "AC1012":
                continue
            checked += 1
            fault = held.stderr if held.returncode != 0 else wrong(cfgctl, folder, file)
            if fault is not None:
                failed += 1
                print(f"{file.name}: {fault}", file=sys.stderr)
    print(f"{checked} drawings with a value more, {failed} of them wrong")
    return 1 if failed or checked == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
