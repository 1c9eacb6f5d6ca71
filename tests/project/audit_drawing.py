#!/usr/bin/env python3
"""Asks ezdxf, which shares no code with us, what it thinks of drawings.

audit_drawing.py FILE             its findings as JSON: {"errors": [...], "fixes": [...]}
audit_drawing.py --settings FILE  the settings below KVR_INI_ROOT as JSON: a chapter is an object
                                  within that of its file, a setting a text; null is no setting,
                                  or a chapter that holds itself
audit_drawing.py --clean PATH...  the exit status is 1 when ezdxf finds anything in one of these
                                  drawings, or those of a folder

The exit status is 1, with a line that tells why, when ezdxf refuses a file; 77 when there is no
ezdxf.
"""

from __future__ import annotations

import argparse
import json
import logging
import sys
from pathlib import Path
from typing import Any

try:
    import ezdxf
    from ezdxf.document import Drawing
    from ezdxf.entities import Dictionary, XRecord
    from ezdxf.lldxf.encoding import decode_dxf_unicode
    from ezdxf.tools.text import caret_decode
except ImportError:
    print("audit_drawing: the package python3-ezdxf is not installed", file=sys.stderr)
    sys.exit(77)

ROOT = "KVR_INI_ROOT"


def findings(drawing: Drawing) -> dict[str, list[dict[str, Any]]]:
    auditor = drawing.audit()

    def listed(entries: list[Any]) -> list[dict[str, Any]]:
        rows = [{"code": int(entry.code), "message": entry.message} for entry in entries]
        return sorted(rows, key=lambda row: (row["code"], row["message"]))

    return {"errors": listed(auditor.errors), "fixes": listed(auditor.fixes)}


def plain(text: str) -> str:
    """ezdxf leaves the escapes of a file in its texts."""
    return caret_decode(decode_dxf_unicode(text))


def settings(entry: Any, above: tuple[Any, ...] = ()) -> Any:
    if isinstance(entry, Dictionary):
        if entry in above:
            return None
        return {plain(name): settings(value, (*above, entry)) for name, value in entry.items()}
    if not isinstance(entry, XRecord):  # a handle that leads nowhere is a text
        return None
    return next((plain(tag.value) for tag in entry.tags if tag.code == 1), None)


def shown(found: Any) -> None:
    json.dump(found, sys.stdout, indent=2, ensure_ascii=False, sort_keys=True)
    print()


def main() -> int:
    parser = argparse.ArgumentParser(usage=__doc__)
    what = parser.add_mutually_exclusive_group()
    what.add_argument("--settings", action="store_true")
    what.add_argument("--clean", action="store_true")
    parser.add_argument("files", nargs="+", metavar="FILE")
    options = parser.parse_args()
    if len(options.files) > 1 and not options.clean:
        parser.error("one file at a time")
    logging.disable(logging.CRITICAL)
    files = [file for path in map(Path, options.files)
             for file in (sorted(path.glob("*.dxf")) if path.is_dir() else [path])]
    if not files:
        parser.error("no drawings there")
    return max([asked(file, options) for file in files])


def asked(file: Path, options: argparse.Namespace) -> int:
    """The exit status for a file."""
    try:
        drawing = ezdxf.readfile(str(file))
        if options.settings:
            shown(settings(drawing.rootdict.get(ROOT)) or {})
            return 0
        found = findings(drawing)
    except Exception as error:  # it refuses in many ways, KeyError and struct.error among them
        print(f"{file}: {type(error).__name__}: {' '.join(str(error).split())}", file=sys.stderr)
        return 1
    if not options.clean:
        shown(found)
        return 0
    if found["errors"] or found["fixes"]:
        print(f"{file}: {json.dumps(found)}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
