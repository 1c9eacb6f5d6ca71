#!/usr/bin/env python3
"""Runs clang-tidy over the sources of src/, apps/ and tools/, several of a target at once.

Most of the time goes into headers that they share. What a unity build includes is copied together,
since the static analyser passes over functions of included files; findings are told where they are.

Usage: tools/tidy_units.py BUILD_FOLDER (configured as a unity build)
"""

import concurrent.futures
import json
import os
import re
import subprocess
import sys

# The static analyser gives up a function after fewer steps than it would: the rest takes most of the
# time and has found nothing yet. The build's own warnings may be those of another compiler.
CLANG_TIDY = ["clang-tidy", "--quiet", "--extra-arg=-Wno-unknown-warning-option"] + [
    f"--extra-arg={word}" for word in ("-Xclang", "-analyzer-config", "-Xclang", "max-nodes=40000")]


def included(unit):
    """The sources that a file of a unity build includes."""
    with open(unit, encoding="utf-8") as text:
        return re.findall(r'^#include "(.*)"$', text.read(), re.MULTILINE)


class Unit:
    """One run of clang-tidy."""

    def __init__(self, path, sources):
        self.path = path
        self.sources = sources
        self.begins = []  # (line of the copy, source)

    def copy(self):
        """Replaces what a unity build includes by its text; twice is once."""
        listing = self.path + ".list"
        if self.sources:
            with open(listing, "w", encoding="utf-8") as out:
                out.write("\n".join(self.sources))
        else:
            with open(listing, encoding="utf-8") as text:
                self.sources = text.read().split("\n")
        lines = []
        for source in self.sources:
            self.begins.append((len(lines), source))
            with open(source, encoding="utf-8") as text:
                lines += text.read().split("\n")
        with open(self.path, "w", encoding="utf-8") as out:
            out.write("\n".join(lines))

    def original(self, found):
        """`path:line:` of the copy as that of the source."""
        line = int(found.group(1)) - 1
        begin, source = max(pair for pair in self.begins if pair[0] <= line)
        return f"{source}:{line - begin + 1}:"

    def check(self, build):
        """The findings, and what clang-tidy said when it failed."""
        run = subprocess.run([*CLANG_TIDY, "-p", build, self.path],
                             capture_output=True, text=True, check=False)
        output = run.stdout
        if self.begins:
            output = re.sub(re.escape(self.path) + r":(\d+):", self.original, output)
        return output + run.stderr if run.returncode != 0 else ""


def units_of(root, build):
    """What is compiled, and by itself each source that is not, as what stands in for a library."""
    with open(os.path.join(build, "compile_commands.json"), encoding="utf-8") as text:
        files = [command["file"] for command in json.load(text)]
    ours = re.compile(f"^({re.escape(root)}|{re.escape(build)})/(src|apps|tools)/")
    units = []
    for path in sorted(set(files)):
        if ours.match(path) and "_autogen/" not in path and "cmake_pch" not in path:
            units.append(Unit(path, included(path) if "/Unity/" in path else []))
    return units


def main():
    root = os.getcwd()
    build = os.path.abspath(sys.argv[1])
    units = units_of(root, build)
    known = set()
    for unit in units:
        if "/Unity/" in unit.path:
            unit.copy()
        known.update(unit.sources, [unit.path])
    listed = subprocess.run(["git", "ls-files", "src/*.cpp", "apps/*.cpp", "tools/*.cpp"],
                            capture_output=True, text=True, check=True).stdout.split()
    units += [Unit(os.path.join(root, source), []) for source in listed
              if os.path.join(root, source) not in known]
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as workers:
        findings = [found for found in workers.map(lambda unit: unit.check(build), units) if found]
    print("\n".join(findings), end="")
    return 1 if findings else 0


if __name__ == "__main__":
    sys.exit(main())
