#!/usr/bin/env python3
"""tools/make_translations.py: what it makes, what it refuses, and what stays when it fails."""

from __future__ import annotations

import re
import sqlite3
import subprocess
import sys
import tempfile
import unittest
from contextlib import closing
from pathlib import Path
from unittest import mock

TOOLS = Path(__file__).resolve().parents[2] / "tools"
sys.path.insert(0, str(TOOLS))

import made_files  # noqa: E402

WORDS = "Key,E,N\nWOOD,Wood,Hout\nSTEEL,Steel,Staal\n"


class InAFolder(unittest.TestCase):
    def setUp(self) -> None:
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.database = self.folder / "w.db3"

    def write(self, words: str | bytes) -> None:
        (self.folder / "w.csv").write_bytes(words.encode() if isinstance(words, str) else words)

    def run_tool(self, *arguments: str) -> subprocess.CompletedProcess[str]:
        command = [sys.executable, "-B", str(TOOLS / "make_translations.py"), *arguments]
        return subprocess.run(command, cwd=self.folder, capture_output=True, text=True, check=False)

    def make(self, words: str | bytes) -> subprocess.CompletedProcess[str]:
        self.write(words)
        return self.run_tool("w.csv", "w.db3")

    def rows(self) -> list[tuple[str, ...]]:
        with closing(sqlite3.connect(self.database)) as connection:
            return connection.execute("SELECT * FROM Keys ORDER BY Key").fetchall()

    def names(self) -> list[str]:
        with closing(sqlite3.connect(self.database)) as connection:
            return [row[0] for row in connection.execute("SELECT * FROM Keys").description]


class Makes(InAFolder):
    def assertMakes(self, words: str | bytes, rows: list[tuple[str, ...]]) -> None:
        result = self.make(words)
        self.assertEqual((result.returncode, result.stdout, result.stderr), (0, "", ""))
        self.assertEqual(self.rows(), rows)

    def test_a_row_for_each_key(self) -> None:
        self.assertMakes(WORDS, [("STEEL", "Steel", "Staal"), ("WOOD", "Wood", "Hout")])
        self.assertEqual(self.names(), ["Key", "E", "N"])

    def test_all_languages_in_any_order_of_columns(self) -> None:
        self.assertMakes("N,Key,S,G,F,E\nHout,WOOD,Madera,Holz,Bois,Wood\n",
                         [("WOOD", "Hout", "Madera", "Holz", "Bois", "Wood")])
        self.assertEqual(self.names(), ["Key", "N", "S", "G", "F", "E"])

    def test_the_same_from_files_of_other_programs(self) -> None:
        rows = [("STEEL", "Steel", "Staal"), ("WOOD", "Wood", "Hout")]
        for name, words in (("mark", "\ufeff" + WORDS),
                            ("line ends", WORDS.replace("\n", "\r\n")),
                            ("no last line end", WORDS.rstrip()),
                            ("quotes", re.sub(r"(\w+)", r'"\1"', WORDS)),
                            ("empty lines", WORDS.replace("\n", "\n\n"))):
            with self.subTest(name):
                self.assertMakes(words, rows)

    def test_words_with_commas_quotes_line_ends_and_letters_of_all_kinds(self) -> None:
        self.assertMakes('Key,E\nA,"x, ""y"""\nB,d\'appel\nC,"one\ntwo"\nD,Дуб 木\n',
                         [("A", 'x, "y"'), ("B", "d'appel"), ("C", "one\ntwo"),
                          ("D", "Дуб 木")])

    def test_keys_that_differ_in_case_only(self) -> None:
        self.assertMakes("Key,E\nwood,a\nWOOD,b\n", [("WOOD", "b"), ("wood", "a")])

    def test_a_table_without_words(self) -> None:
        self.assertMakes("Key,E\n", [])

    def test_the_same_bytes_twice(self) -> None:
        self.make(WORDS)
        first = self.database.read_bytes()
        self.database.unlink()
        self.make(WORDS)
        self.assertEqual(self.database.read_bytes(), first)

    def test_a_database_that_sqlite_finds_whole(self) -> None:
        self.make("Key,E\n" + "".join(f"K{i},word {i}\n" for i in range(2000)))
        with closing(sqlite3.connect(self.database)) as connection:
            self.assertEqual(connection.execute("PRAGMA integrity_check").fetchall(), [("ok",)])
        self.assertEqual(len(self.rows()), 2000)

    def test_anew_what_was_there(self) -> None:
        self.make(WORDS)
        self.assertMakes("Key,E\nX,y\n", [("X", "y")])
        self.assertEqual(sorted(path.name for path in self.folder.iterdir()), ["w.csv", "w.db3"])


COLUMNS = "the columns are Key, E, F, G, S, N"
NO_KEY = "w.csv:1: there is no column Key"


class Refuses(InAFolder):
    def assertRefuses(self, words: str | bytes, message: str) -> None:
        self.database.write_bytes(b"former")
        result = self.make(words)
        self.assertEqual((result.returncode, result.stdout, result.stderr), (1, "", message + "\n"))
        self.assertEqual(self.database.read_bytes(), b"former")
        self.assertEqual(sorted(path.name for path in self.folder.iterdir()), ["w.csv", "w.db3"])

    def test_columns_that_cannot_be_used(self) -> None:
        for words, message in (
                ("E,N\nWood,Hout\n", NO_KEY),
                ("", NO_KEY),
                ("Key\nWOOD\n",
                 "w.csv:1: there is no language; add one of the columns E, F, G, S, N"),
                ("Key,E,R\nA,b,c\n", f'w.csv:1: unknown column "R"; {COLUMNS}'),
                ("key,E\nA,b\n", f'w.csv:1: unknown column "key"; {COLUMNS}\n{NO_KEY}'),
                ("Key;E\nA;b\n", f'w.csv:1: unknown column "Key;E"; {COLUMNS}\n{NO_KEY}'),
                ("Key,E,N,E\nA,b,c,d\n", "w.csv:1: the column E stands 2 times"),
                ("Key,E,Key\nA,b,c\n", "w.csv:1: the column Key stands 2 times")):
            with self.subTest(words):
                self.assertRefuses(words, message)

    def test_lines_that_cannot_be_used(self) -> None:
        for words, message in (
                (WORDS + "OAK,Oak\n", "w.csv:4: fields: 2; the first line has 3"),
                (WORDS + "OAK,Oak,Eik,x\n", "w.csv:4: fields: 4; the first line has 3"),
                (WORDS + "\nWOOD,Timber,Hout\n",
                 'w.csv:5: the key "WOOD" stands in line 2 already'),
                (WORDS + ",Oak,Eik\n", "w.csv:4: the key is empty"),
                (WORDS + "OAK ,Oak,Eik\n", 'w.csv:4: the key "OAK " begins or ends with a blank'),
                (WORDS + "O'K,Oak,Eik\n", 'w.csv:4: the key "O\'K" has an apostrophe: '
                                          "such a key is never found"),
                (WORDS + "OAK,,Eik\n", 'w.csv:4: "OAK" has no word in column E: '
                                       "nothing would show"),
                (WORDS + "OAK,Oak, \n", 'w.csv:4: "OAK" has no word in column N: '
                                        "nothing would show"),
                ('Key,E\nA,"x\ny"\nB,b,c\n', "w.csv:4: fields: 3; the first line has 2")):
            with self.subTest(words):
                self.assertRefuses(words, message)

    def test_all_defects_at_once(self) -> None:
        self.assertRefuses("Key,E,N\nA,b\nB,,c\nA,b,c\n,b,c\n",
                           "w.csv:2: fields: 2; the first line has 3\n"
                           'w.csv:3: "B" has no word in column E: nothing would show\n'
                           "w.csv:5: the key is empty")

    def test_a_quote_that_does_not_end(self) -> None:
        result = self.make('Key,E\nA,b\nB,"c\nD,e\n')
        self.assertEqual(result.returncode, 1)
        self.assertRegex(result.stderr, r"^w\.csv:3: .*; a quote within a word stands twice, "
                                        r"the word in quotes\n$")
        self.assertFalse(self.database.exists())

    def test_an_encoding_that_is_not_utf8(self) -> None:
        self.assertRefuses("Key,F\nWOOD,Bois\nCONCRETE,Béton\n".encode("cp1252"),
                           'w.csv:3: no UTF-8; save the table as "CSV UTF-8"')

    def test_words_that_are_not_there(self) -> None:
        result = self.run_tool("weg.csv", "w.db3")
        self.assertEqual((result.returncode, result.stderr),
                         (1, "weg.csv cannot be read: No such file or directory\n"))
        self.assertFalse(self.database.exists())

    def test_a_place_that_cannot_be_written(self) -> None:
        self.write(WORDS)
        (self.folder / "map").mkdir()
        for target, reason in (("weg/w.db3", "No such file or directory"),
                               ("map", "Is a directory")):
            with self.subTest(target):
                result = self.run_tool("w.csv", target)
                self.assertEqual((result.returncode, result.stderr),
                                 (1, f"{target} cannot be written: {reason}\n"))
        self.assertEqual(sorted(path.name for path in self.folder.iterdir()), ["map", "w.csv"])

    def test_wrong_usage(self) -> None:
        for arguments in ((), ("w.csv",), ("w.csv", "w.db3", "x"), ("--force", "w.csv", "w.db3")):
            with self.subTest(arguments):
                self.assertEqual(self.run_tool(*arguments).returncode, 2)


class Check(InAFolder):
    def check(self) -> tuple[int, str]:
        result = self.run_tool("--check", "w.csv", "w.db3")
        return result.returncode, result.stderr

    def test_accepts_what_was_made(self) -> None:
        self.make(WORDS)
        self.assertEqual(self.check(), (0, ""))

    def test_tells_of_other_words_and_makes_nothing(self) -> None:
        self.make(WORDS)
        made = self.database.read_bytes()
        self.write(WORDS.replace("Hout", "Houtwerk"))
        self.assertEqual(self.check(), (1, "w.db3 is not what make_translations.py makes\n"))
        self.assertEqual(self.database.read_bytes(), made)

    def test_tells_of_a_database_that_is_not_there(self) -> None:
        self.write(WORDS)
        self.assertEqual(self.check(), (1, "w.db3 is not what make_translations.py makes\n"))
        self.assertFalse(self.database.exists())


class Replacing(InAFolder):
    def test_keeps_the_mode_of_the_file(self) -> None:
        self.database.write_bytes(b"former")
        self.database.chmod(0o640)
        made_files.replace(self.database, b"new")
        self.assertEqual(self.database.read_bytes(), b"new")
        self.assertEqual(self.database.stat().st_mode & 0o777, 0o640)

    def test_that_fails_at_any_call_leaves_the_former_file_alone(self) -> None:
        for call in ("os.fsync", "os.chmod", "os.replace"):
            with self.subTest(call):
                self.database.write_bytes(b"former")
                with mock.patch(call, side_effect=OSError(28, "full")), self.assertRaises(OSError):
                    made_files.replace(self.database, b"new")
                self.assertEqual(self.database.read_bytes(), b"former")
                self.assertEqual([path.name for path in self.folder.iterdir()], ["w.db3"])


if __name__ == "__main__":
    unittest.main()
