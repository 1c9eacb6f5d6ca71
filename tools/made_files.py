"""What the scripts that make files have in common: write the files, or check them."""

from __future__ import annotations

import os
import sys
import tempfile
from pathlib import Path


def write_or_check(files: dict[Path, bytes], arguments: list[str] | None = None,
                   usage: str = "[--check]") -> int:
    """Writes the files; with --check as the only argument it only compares them.

    Returns the exit status: 1 when a file is missing or differs, 2 for other arguments, which are
    those of the script unless others are told.
    """
    if arguments is None:
        arguments = sys.argv[1:]
    if arguments not in ([], ["--check"]):
        print(f"usage: {Path(sys.argv[0]).name} {usage}", file=sys.stderr)
        return 2
    if arguments:
        return check(files)
    for path, data in files.items():
        path.parent.mkdir(parents=True, exist_ok=True)
        replace(path, data)
    return 0


def check(files: dict[Path, bytes]) -> int:
    """Returns 1, and names the files, when one is missing or differs."""
    wrong = [path for path, data in files.items()
             if not path.is_file() or path.read_bytes() != data]
    for path in wrong:
        print(f"{path} is not what {Path(sys.argv[0]).name} makes", file=sys.stderr)
    return int(bool(wrong))


def replace(path: Path, data: bytes) -> None:
    """Gives a file its content in one step: whoever reads it finds the old one or the new one.

    The mode of a file that is there stays. After a failure the file is as it was.
    """
    mode = path.stat().st_mode & 0o777 if path.exists() else 0o666 & ~_umask()
    handle, beside = tempfile.mkstemp(prefix=path.name + ".", dir=path.parent)
    try:
        with os.fdopen(handle, "wb") as stream:
            stream.write(data)
            stream.flush()
            os.fsync(stream.fileno())
        os.chmod(beside, mode)
        os.replace(beside, path)
    except BaseException:
        os.unlink(beside)
        raise


def _umask() -> int:
    mask = os.umask(0)
    os.umask(mask)
    return mask
