"""What the scripts that make files have in common: write the files, or check them."""

from __future__ import annotations

import sys
from pathlib import Path


def write_or_check(files: dict[Path, bytes]) -> int:
    """Writes the files; with --check as the only argument it only compares them.

    Returns the exit status: 1 when a file is missing or differs, 2 for other arguments.
    """
    arguments = sys.argv[1:]
    if arguments not in ([], ["--check"]):
        print(f"usage: {Path(sys.argv[0]).name} [--check]", file=sys.stderr)
        return 2
    if arguments:
        return _check(files)
    for path, data in files.items():
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(data)
    return 0


def _check(files: dict[Path, bytes]) -> int:
    wrong = [path for path, data in files.items()
             if not path.is_file() or path.read_bytes() != data]
    for path in wrong:
        print(f"{path} is not what {Path(sys.argv[0]).name} makes", file=sys.stderr)
    return int(bool(wrong))
