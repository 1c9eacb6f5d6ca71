#!/usr/bin/env python3
"""Makes the database of translated words that TranslateDB of a configuration file names.

make_translations.py WORDS.csv DATABASE.db3          makes DATABASE.db3, in one step
make_translations.py --check WORDS.csv DATABASE.db3  makes nothing, tells whether it is up to date

WORDS.csv is a table as spreadsheets save it: UTF-8, commas, a word with a comma or a quote in
double quotes. Its first line names the columns: Key, the word as it is stored, and for each
language the word that is shown: E English, F French, G German, S Spanish, N Dutch. A language may
be left out.

The exit status is 1 when the words cannot be used, each reason being told with its file and line,
when the database cannot be written, or for --check when it differs; 2 for wrong usage.
"""

from __future__ import annotations

import argparse
import csv
import io
import sqlite3
import sys
import tempfile
from contextlib import closing
from pathlib import Path

import made_files

KEY = "Key"
LANGUAGES = ("E", "F", "G", "S", "N")

# The place in the file of the number of the SQLite version that wrote it.
VERSION_BYTES = slice(96, 100)


class WrongWords(Exception):
    """Tells what is wrong with the table of words; a line for each reason."""


class Words:
    """A table of words: languages in the order of their columns, and rows with the key first."""

    def __init__(self, path: Path) -> None:
        self._path = path
        self._defects: list[str] = []
        self._lines_of_keys: dict[str, int] = {}
        lines = csv.reader(io.StringIO(self._text(), newline=""), strict=True)
        self.languages: tuple[str, ...] = ()
        self.rows: list[list[str]] = []
        first = 1  # line of a row that may have several, when a word has a line end
        try:
            self._read_header(next(lines, []))
            first = lines.line_num + 1
            for row in lines:
                if row:
                    self._read_row(first, row)
                first = lines.line_num + 1
        except csv.Error as error:
            self._tell(first, f"{error}; a quote within a word stands twice, the word in quotes")
        if self._defects:
            raise WrongWords("\n".join(self._defects))

    def _text(self) -> str:
        data = self._path.read_bytes()
        try:
            return data.decode("utf-8-sig")
        except UnicodeDecodeError as error:
            line = data.count(b"\n", 0, error.start) + 1
            reason = 'no UTF-8; save the table as "CSV UTF-8"'
            raise WrongWords(f"{self._path}:{line}: {reason}") from None

    def _tell(self, line: int, reason: str) -> None:
        self._defects.append(f"{self._path}:{line}: {reason}")

    def _read_header(self, names: list[str]) -> None:
        allowed = (KEY, *LANGUAGES)
        for name in dict.fromkeys(names):
            if name not in allowed:
                self._tell(1, f'unknown column "{name}"; the columns are {", ".join(allowed)}')
            elif names.count(name) > 1:
                self._tell(1, f"the column {name} stands {names.count(name)} times")
        if KEY not in names:
            self._tell(1, f"there is no column {KEY}")
        elif len(names) == 1:
            self._tell(1, f"there is no language; add one of the columns {', '.join(LANGUAGES)}")
        if self._defects:
            raise WrongWords("\n".join(self._defects))
        self._key_place = names.index(KEY)
        self.languages = tuple(name for name in names if name != KEY)

    def _read_row(self, line: int, row: list[str]) -> None:
        count = len(self.languages) + 1
        if len(row) != count:
            self._tell(line, f"fields: {len(row)}; the first line has {count}")
            return
        key = row.pop(self._key_place)
        if key in self._lines_of_keys:
            self._tell(line, f'the key "{key}" stands in line {self._lines_of_keys[key]} already')
            return
        self._lines_of_keys[key] = line
        self._check_key(line, key)
        for language, word in zip(self.languages, row):
            if not word.strip():
                self._tell(line, f'"{key}" has no word in column {language}: nothing would show')
        self.rows.append([key, *row])

    def _check_key(self, line: int, key: str) -> None:
        if not key:
            self._tell(line, "the key is empty")
        elif key != key.strip():
            self._tell(line, f'the key "{key}" begins or ends with a blank')
        elif "'" in key:
            self._tell(line, f'the key "{key}" has an apostrophe: such a key is never found')


def database(words: Words) -> bytes:
    """The database as bytes, the same for the same words."""
    columns = ", ".join(f"{name} TEXT NOT NULL" for name in words.languages)
    marks = ", ".join("?" * (len(words.languages) + 1))
    with tempfile.TemporaryDirectory() as folder:
        path = Path(folder) / "words.db3"
        with closing(sqlite3.connect(path)) as connection, connection:
            connection.execute("PRAGMA page_size = 4096")
            connection.execute(f"CREATE TABLE Keys ({KEY} TEXT PRIMARY KEY NOT NULL, {columns})")
            connection.executemany(f"INSERT INTO Keys VALUES ({marks})", words.rows)
        data = bytearray(path.read_bytes())
    # Nobody needs to know which SQLite it was, and the next one makes the same database.
    data[VERSION_BYTES] = bytes(4)
    return bytes(data)


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--check", action="store_true", help="compare only")
    parser.add_argument("words", metavar="WORDS.csv", type=Path)
    parser.add_argument("database", metavar="DATABASE.db3", type=Path)
    arguments = parser.parse_args()
    try:
        made = database(Words(arguments.words))
        if arguments.check:
            return made_files.check({arguments.database: made})
    except (WrongWords, OSError) as error:
        print(error if isinstance(error, WrongWords)
              else f"{arguments.words} cannot be read: {error.strerror}", file=sys.stderr)
        return 1
    try:
        made_files.replace(arguments.database, made)
    except OSError as error:
        print(f"{arguments.database} cannot be written: {error.strerror}", file=sys.stderr)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
