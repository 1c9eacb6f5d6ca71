"""How the groups of a drawing stand in its file: text or binary DXF."""

from __future__ import annotations

import struct
from dataclasses import dataclass
from enum import IntEnum
from typing import Iterable

Value = str | int | float | bytes
Tag = tuple[int, Value]


class Version(IntEnum):
    """The number behind "AC" in $ACADVER."""

    R12 = 1009
    R13 = 1012
    R14 = 1014
    R2000 = 1015
    R2004 = 1018
    R2007 = 1021
    R2010 = 1024
    R2013 = 1027
    R2018 = 1032


class Kind(IntEnum):
    """What the value of a group is."""

    TEXT = 0
    REAL = 1
    INT16 = 2
    INT32 = 3
    INT64 = 4
    BOOLEAN = 5
    HANDLE = 6
    BINARY = 7
    COMMENT = 8


# First and last code of each kind; what is in none of these is text.
_KINDS = (
    (10, 59, Kind.REAL), (60, 79, Kind.INT16), (90, 99, Kind.INT32), (105, 105, Kind.HANDLE),
    (110, 149, Kind.REAL), (160, 169, Kind.INT64), (170, 179, Kind.INT16), (210, 239, Kind.REAL),
    (270, 289, Kind.INT16), (290, 299, Kind.BOOLEAN), (310, 319, Kind.BINARY),
    (320, 369, Kind.HANDLE), (370, 389, Kind.INT16), (390, 399, Kind.HANDLE),
    (400, 409, Kind.INT16), (420, 429, Kind.INT32), (440, 459, Kind.INT32), (460, 469, Kind.REAL),
    (480, 481, Kind.HANDLE), (999, 999, Kind.COMMENT), (1004, 1004, Kind.BINARY),
    (1005, 1005, Kind.HANDLE), (1010, 1059, Kind.REAL), (1060, 1070, Kind.INT16),
    (1071, 1071, Kind.INT32),
)
_KIND_OF = {code: kind for first, last, kind in _KINDS for code in range(first, last + 1)}

CODE_PAGES = {"ANSI_1251": "cp1251", "ANSI_1252": "cp1252", "dos932": "cp932"}


def kind_of(code: int) -> Kind:
    return _KIND_OF.get(code, Kind.TEXT)


def escaped(text: str) -> str:
    """Control characters as ^J and the like, and the caret itself as "^ "."""
    signs = (f"^{chr(ord(c) + 64)}" if c < " " else "^ " if c == "^" else c for c in text)
    return "".join(signs)


def encoded(text: str, encoding: str) -> bytes:
    """What the code page lacks stands as \\U+XXXX, one for each half of a surrogate pair."""

    def one(sign: str) -> bytes:
        try:
            return sign.encode(encoding)
        except UnicodeEncodeError:
            units = sign.encode("utf-16-be").hex().upper()
            return b"".join(b"\\U+" + units[i : i + 4].encode() for i in range(0, len(units), 4))

    return b"".join(map(one, text))


@dataclass(frozen=True)
class TextForm:
    """Text DXF. Aligned means codes in three columns, whole numbers in six or nine."""

    line_end: str = "\n"
    aligned: bool = True

    _WIDTHS = {Kind.INT16: 6, Kind.BOOLEAN: 6, Kind.INT32: 9}

    def pack(self, tags: Iterable[Tag], version: Version, encoding: str) -> bytes:
        end = self.line_end.encode()
        lines: list[bytes] = []
        for code, value in tags:
            lines.append((f"{code:3d}" if self.aligned else str(code)).encode())
            lines.append(self._value(code, value, encoding))
        return end.join(lines) + end

    def _value(self, code: int, value: Value, encoding: str) -> bytes:
        kind = kind_of(code)
        if kind == Kind.BINARY and isinstance(value, bytes):
            return value.hex().upper().encode()
        if isinstance(value, bytes):
            return value
        if kind in self._WIDTHS and self.aligned:
            return str(value).rjust(self._WIDTHS[kind]).encode()
        if kind == Kind.REAL:
            return repr(float(value)).encode()
        return encoded(escaped(str(value)), encoding)


@dataclass(frozen=True)
class BinaryForm:
    """Binary DXF. It has no comments, and control characters and carets stand as they are."""

    SENTINEL = b"AutoCAD Binary DXF\r\n\x1a\x00"

    def pack(self, tags: Iterable[Tag], version: Version, encoding: str) -> bytes:
        pieces = [self.SENTINEL]
        for code, value in tags:
            if kind_of(code) != Kind.COMMENT:
                pieces.append(self.code(code, version) + self.value(code, value, encoding))
        return b"".join(pieces)

    @staticmethod
    def code(code: int, version: Version) -> bytes:
        if version > Version.R12:
            return struct.pack("<h", code)
        return struct.pack("<B", code) if code < 255 else struct.pack("<Bh", 255, code)

    @staticmethod
    def value(code: int, value: Value, encoding: str) -> bytes:
        kind = kind_of(code)
        if kind == Kind.BINARY and isinstance(value, bytes):
            return struct.pack("<B", len(value)) + value
        if kind in _STRUCTS and not isinstance(value, bytes):
            return struct.pack(_STRUCTS[kind], value)
        text = value if isinstance(value, bytes) else encoded(str(value), encoding)
        return text + b"\0"


_STRUCTS = {
    Kind.REAL: "<d",
    Kind.INT16: "<h",
    Kind.INT32: "<i",
    Kind.INT64: "<q",
    Kind.BOOLEAN: "<B",
}

Form = TextForm | BinaryForm
