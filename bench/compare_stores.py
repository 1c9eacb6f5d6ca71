#!/usr/bin/env python3
"""Compares what becomes of settings in a few stores when much goes wrong at once.

Usage: compare_stores.py CFGCTL [FOLDER]

Measured are, each if it is installed: cfgctl, git config, KConfig (kwriteconfig5) and QSettings
(PyQt5). FOLDER is where the files are made, usually that for temporary files. The full disk is a
file system of 64 kB in memory, for which the right to mount is needed.
"""
import os
import shutil
import subprocess
import sys
import tempfile
import time
from pathlib import Path

WRITERS = 8
WRITES_EACH = 100
PATIENCE = 60  # s
START = "; a comment\n[A]\nColour=red\n"

QSETTINGS = """
import sys
from PyQt5.QtCore import QSettings
path, pairs = sys.argv[1], sys.argv[2:]
for pair in pairs:
    key, value = pair.split("=")
    settings = QSettings(path, QSettings.IniFormat)
    settings.setValue("A/" + key, value)
    settings.sync()
    if settings.status() != QSettings.NoError:
        sys.exit(1)
"""


def each(command):
    """A writer that starts a process for each value."""
    def run(path, pairs):
        results = [subprocess.run(command(path, *pair.split("=")), timeout=PATIENCE,
                                  capture_output=True).returncode for pair in pairs]
        return max(results)
    return run


def qsettings(path, pairs):
    return subprocess.run([sys.executable, "-c", QSETTINGS, path, *pairs], timeout=PATIENCE * 5,
                          capture_output=True).returncode


def stores(cfgctl):
    yield "cfgctl", each(lambda path, key, value: [cfgctl, "set", path, "[A]" + key, value])
    if shutil.which("git"):
        yield "git config", each(
            lambda path, key, value: ["git", "config", "-f", path, "A." + key, value])
    if shutil.which("kwriteconfig5"):
        yield "KConfig", each(lambda path, key, value: [
            "kwriteconfig5", "--file", path, "--group", "A", "--key", key, value])
    if subprocess.run([sys.executable, "-c", "import PyQt5.QtCore"],
                      capture_output=True).returncode == 0:
        yield "QSettings", qsettings


def at_once(path, write):
    """Values kept of those that many processes write at the same time, and how long that takes."""
    begin = time.monotonic()
    children = []
    for writer in range(WRITERS):
        child = os.fork()
        if child == 0:
            write(path, [f"W{writer}x{i}=1" for i in range(WRITES_EACH)])
            os._exit(0)
        children.append(child)
    for child in children:
        os.waitpid(child, 0)
    took = time.monotonic() - begin
    text = Path(path).read_text().lower().replace(" ", "")
    kept = sum(f"w{writer}x{i}=1\n" in text for writer in range(WRITERS)
               for i in range(WRITES_EACH))
    return f"{kept} of {WRITERS * WRITES_EACH} in {took:.1f} s"


def timed(path, write, value):
    begin = time.monotonic()
    try:
        told = "done" if write(path, [f"Colour={value}"]) == 0 else "failed"
    except subprocess.TimeoutExpired:
        told = f"hangs, ended after {PATIENCE} s"
    return told, time.monotonic() - begin


def left_over(path, write):
    """The next write beside what a dead writer left: a lock file, or for cfgctl a temporary one."""
    Path(path + ".lock").touch()
    Path(path).with_name("dummy.tmp").write_text("[A]")
    told, took = timed(path, write, "blue")
    return f"{told}, {took:.1f} s"


def comments(path, write):
    write(path, ["Colour=blue"])
    return "kept" if "a comment" in Path(path).read_text() else "lost"


def full_disk(path, write):
    """In a process whose folder has a small file system mounted over it."""
    folder = os.path.dirname(path)
    if subprocess.run(["mount", "-t", "tmpfs", "-o", "size=64k", "none", folder],
                      capture_output=True).returncode != 0:
        return "cannot be tried here"
    try:
        Path(path).write_text(START)
        try:
            with open(os.path.join(folder, "filler"), "wb", buffering=0) as filler:
                while filler.write(b"x" * 4096):
                    pass
        except OSError:
            pass  # that is what was wanted
        told, took = timed(path, write, "blue")
        kept = "file kept" if "red" in Path(path).read_text() else "file lost"
        return f"{told}, {took:.1f} s, {kept}"
    finally:
        subprocess.run(["umount", folder], check=True)


def main():
    cfgctl = os.path.abspath(sys.argv[1])
    parent = sys.argv[2] if len(sys.argv) > 2 else None
    for name, write in stores(cfgctl):
        for what in (at_once, left_over, full_disk, comments):
            with tempfile.TemporaryDirectory(dir=parent) as folder:
                path = os.path.join(folder, "store.ini")
                Path(path).write_text(START)
                print(f"{name:12} {what.__name__:10} {what(path, write)}", flush=True)


if __name__ == "__main__":
    main()
