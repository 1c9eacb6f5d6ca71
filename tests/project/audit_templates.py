#!/usr/bin/env python3
"""Audits the drawings that the host makes new ones from, in every version that they serve for.

The exit status is 1 when ezdxf finds anything in one, 77 when there is no ezdxf.
"""

from __future__ import annotations

import io
import re
import sys
from pathlib import Path

from audit_drawing import findings

import ezdxf

SOURCE = Path(__file__).resolve().parents[2] / "src/host/templates/default_drawing.cpp"
VERSIONS = ("AC1015", "AC1018", "AC1021", "AC1024", "AC1027", "AC1032")


def main() -> int:
    default, r12 = re.findall(r'R"dxf\((.*?)\)dxf"', SOURCE.read_text(), re.DOTALL)
    texts = {version: default.replace("AC1032", version) for version in VERSIONS}
    status = 0
    for version, text in (texts | {"AC1009": r12}).items():
        drawing = ezdxf.read(io.StringIO(text))
        found = findings(drawing)
        if drawing.dxfversion != version or found["errors"] or found["fixes"]:
            print(f"{version}: {drawing.dxfversion} {found}", file=sys.stderr)
            status = 1
    return status


if __name__ == "__main__":
    sys.exit(main())
