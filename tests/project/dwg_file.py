"""A reader of DWG drawings (R2000, R2004, R2010, R2013, R2018) for tests, which shares no code with
the library: what the library has written is looked at by other eyes.

It takes a file apart down to the records of the objects, verifies every checksum on the way, and
decodes what settings consist of: dictionaries and XRECORDs. Of other records it knows the type and
the name. Faults are gathered, not raised; what cannot be read at all raises DwgError.
"""

from __future__ import annotations

import re
import struct
import zlib
from collections.abc import Iterator
from dataclasses import dataclass, field
from functools import lru_cache
from pathlib import Path

FLAT = "AC1015"
VERSIONS = (FLAT, "AC1018", "AC1024", "AC1027", "AC1032")
R2004, R2007, R2010, R2013, R2018 = "AC1018", "AC1021", "AC1024", "AC1027", "AC1032"

DICTIONARY, BLOCK_RECORD, LAYER, XRECORD = 42, 49, 51, 79
TYPES = {1: "TEXT", 2: "ATTRIB", 3: "ATTDEF", 4: "BLOCK", 5: "ENDBLK", 6: "SEQEND", 7: "INSERT",
         8: "MINSERT", 42: "DICTIONARY", 48: "BLOCK_CONTROL", 49: "BLOCK_RECORD",
         50: "LAYER_CONTROL", 51: "LAYER", 52: "STYLE_CONTROL", 53: "STYLE", 56: "LTYPE_CONTROL",
         57: "LTYPE", 60: "VIEW_CONTROL", 62: "UCS_CONTROL", 64: "VPORT_CONTROL",
         66: "APPID_CONTROL", 67: "APPID", 68: "DIMSTYLE_CONTROL", 69: "DIMSTYLE", 70: "VX_CONTROL",
         79: "XRECORD", 82: "LAYOUT"}

RECORD_SEED = 0xC0C1
PAGE_MAP, SECTION_MAP, DATA_PAGE = 0x41630E3B, 0x4163003B, 0x4163043B
PAGE_MASK = 0x4164536B
FIRST_PAGE = 0x100
HEADER_AT, HEADER_SIZE = 0x80, 0x6C
PARTS_OF_FLAT = {0: "AcDb:Header", 1: "AcDb:Classes", 2: "AcDb:Handles", 3: "AcDb:ObjFreeSpace",
                 4: "AcDb:Template", 5: "AcDb:AuxHeader"}
SEEDS_OF_FLAT = {3: 0xA598, 4: 0x8101, 5: 0x3CC4, 6: 0x8461}
OBJECTS, HANDLES, HEADER, CLASSES = \
    "AcDb:AcDbObjects", "AcDb:Handles", "AcDb:Header", "AcDb:Classes"
PREVIEW = "AcDb:Preview"

BEHIND_LOCATORS = bytes.fromhex("95A04E2899821AE55E41E05F9D3A4D00")
SECOND_HEADER = bytes.fromhex("D47B21CE28939FBF53244009123CAA01")
SENTINELS = {HEADER: "CF7B1F23FDDE38A95F7C68B84E6D335F",
             CLASSES: "8DA1C4B8C4A9F8C5C0DCF45FE7CFB68A"}


class DwgError(Exception):
    """The file cannot be read."""


def _crc_table() -> list[int]:
    table = []
    for byte in range(256):
        for _ in range(8):
            byte = (byte >> 1) ^ 0xA001 if byte & 1 else byte >> 1
        table.append(byte)
    return table


_CRC = _crc_table()


@lru_cache(maxsize=20000)  # of a changed drawing most records are those of the first one
def crc16(data: bytes, seed: int) -> int:
    for byte in data:
        seed = (seed >> 8) ^ _CRC[(byte ^ seed) & 0xFF]
    return seed


class Bits:
    """Reads fields at any bit."""

    def __init__(self, data: bytes, at: int = 0, end: int | None = None) -> None:
        self.data, self.at = data, at
        self.end = len(data) * 8 if end is None else end

    def bits(self, count: int) -> int:
        first, last = self.at >> 3, (self.at + count + 7) >> 3
        if count < 0 or self.at + count > self.end or last > len(self.data):
            raise DwgError("a record ends too early")
        whole = int.from_bytes(self.data[first:last], "big")
        self.at += count
        return (whole >> (last * 8 - self.at)) & ((1 << count) - 1)

    def raw(self, count: int) -> bytes:
        return self.bits(8 * count).to_bytes(count, "big") if count else b""

    def little(self, count: int) -> int:
        return int.from_bytes(self.raw(count), "little")

    def short(self) -> int:
        form = self.bits(2)
        return (self.little(2) if form == 0 else self.bits(8) if form == 1 else
                0 if form == 2 else 256)

    def long(self) -> int:
        form = self.bits(2)
        if form == 3:
            raise DwgError("a number has no legal form")
        return self.little(4) if form == 0 else self.bits(8) if form == 1 else 0

    def handle(self) -> tuple[int, int]:
        code, count = self.bits(4), self.bits(4)
        return code, self.bits(8 * count)


def absolute(reference: tuple[int, int], of: int) -> int:
    """The handle that a reference in the record of an object means."""
    code, value = reference
    return {6: of + 1, 8: of - 1, 10: of + value, 12: of - value}.get(code, value)


def decompressed(source: bytes, size: int) -> bytes:
    """What a page of R2004 and later holds."""
    out, at = bytearray(), 0

    def literals(run: int) -> int:
        nonlocal at
        out.extend(source[at:at + run])
        at += run
        return at

    def more(start: int) -> int:
        nonlocal at
        total = start
        while source[at] == 0:
            total += 0xFF
            at += 1
        at += 1
        return total + source[at - 1]

    def literal_run() -> int:
        """The length of the literals that begin here; 0 where an instruction stands."""
        nonlocal at
        if source[at] & 0xF0:
            return 0
        at += 1
        return more(0x0F) + 3 if source[at - 1] == 0 else source[at - 1] + 3

    literals(literal_run())
    while True:
        code = source[at]
        at += 1
        if code == 0x11:
            break
        if code >= 0x40:
            length, distance, run = (code >> 4) - 1, source[at] << 2 | (code >> 2 & 3), code & 3
            at += 1
        elif code >= 0x10:
            is_near = code >= 0x20
            mask, base = (0x1F, 0x21) if is_near else (0x07, 0x09)
            far = 0 if is_near else (0x3FFF if not code & 8 else 0x7FFF)
            length = (code & mask) + 2 if code & mask else more(base)
            distance, run = (source[at] >> 2 | source[at + 1] << 6) + far, source[at] & 3
            at += 2
        else:
            raise DwgError(f"a page has the instruction {code:02X}")
        if distance >= len(out) or len(out) + length > size:
            raise DwgError("a page copies what it does not have")
        pattern = out[len(out) - distance - 1:][:length]
        out.extend((pattern * (length // len(pattern) + 1))[:length])
        literals(run or literal_run())
    if len(out) > size:
        raise DwgError("a page holds too much")
    return bytes(out)


@dataclass
class Record:
    """The record of an object: its bytes with length and checksum, and the head of its fields."""

    handle: int
    type: int
    raw: bytes
    body: bytes  # what is between length and checksum
    fields: Bits  # stands behind the extended data
    fields_end: int  # the bit at which the references begin
    extended: list[tuple[int, bytes]] = field(default_factory=list)


class DwgFile:
    """A drawing. `faults` tells every checksum and every number that is wrong."""

    def __init__(self, file: Path | str) -> None:
        self.data = Path(file).read_bytes()
        self.version = self.data[:6].decode("ascii", "replace")
        if self.version not in VERSIONS:
            raise DwgError(f"{self.version} is not read here")
        self.code_page = struct.unpack_from("<H", self.data, 0x13)[0]
        self.faults: list[str] = []
        self.sections: dict[str, bytes] = {}
        self._object_data = self.data
        try:
            if self.version == FLAT:
                self._read_flat()
            else:
                self._read_paged()
            self._verify_framed_sections()
            self.places = self._object_map(self.sections[HANDLES])
            self.classes = self._read_classes()
        except (IndexError, struct.error, KeyError) as error:
            raise DwgError(f"{type(error).__name__}: {error}") from error
        self.objects: dict[int, Record] = {}
        for handle, place in self.places.items():
            self.objects[handle] = self._record(handle, place)

    def _demand(self, holds: bool, fault: str) -> None:
        if not holds:
            self.faults.append(fault)

    # --- the parts of a file that is no archive of pages -----------------------------------------

    def _read_flat(self) -> None:
        data = self.data
        count = struct.unpack_from("<I", data, 0x15)[0]
        self.locators = [struct.unpack_from("<BII", data, 0x19 + 9 * n) for n in range(count)]
        end = 0x19 + 9 * count
        seed = SEEDS_OF_FLAT.get(count, 0)
        self._demand(crc16(data[:end], 0) ^ seed == struct.unpack_from("<H", data, end)[0],
                     "checksum of the locators")
        self._demand(data[end + 2:end + 18] == BEHIND_LOCATORS, "no mark behind the locators")
        for number, at, size in self.locators:
            self._demand(at + size <= len(data), f"section {number} is not in the file")
            self.sections[PARTS_OF_FLAT[number]] = data[at:at + size]
        preview = struct.unpack_from("<I", data, 0x0D)[0]
        if preview:
            size = struct.unpack_from("<I", data, preview + 16)[0]
            self.sections[PREVIEW] = data[preview:preview + 36 + size]
        self._verify_second_header()

    def _verify_second_header(self) -> None:
        """R2000 has the locators again at its end."""
        at = self.data.rfind(SECOND_HEADER)
        if at < 0:
            return
        start = at + len(SECOND_HEADER)
        size = struct.unpack_from("<I", self.data, start)[0]
        reader = Bits(self.data, (start + 4) * 8)
        self._demand(reader.long() == at, "the second header does not tell its own place")
        self._demand(reader.raw(13) == self.data[:13], "the second header has another version")
        reader.short()  # of the program that saved
        self._demand(reader.little(2) == self.code_page, "the second header has another code page")
        again = [(reader.bits(8), reader.long(), reader.long()) for _ in range(reader.short())]
        # It may be silent about the template.
        self._demand(all(there == here or there == (here[0], 0, 0)
                         for there, here in zip(again, self.locators, strict=True)),
                     "the second header has other locators")
        self.second_handles = []
        for _ in range(reader.short()):
            width, number = reader.bits(8), reader.bits(8)
            self.second_handles.append((number, reader.raw(width)))
        # The checksum is the last that its size counts, but for 8 bytes that say nothing.
        ends = [end for end in range((reader.at + 7) // 8, start + size + 1)
                if crc16(self.data[start:end], RECORD_SEED)
                == struct.unpack_from("<H", self.data, end)[0]]
        self._demand(bool(ends), "checksum of the second header")

    # --- the parts of an archive of pages --------------------------------------------------------

    def _read_paged(self) -> None:
        header = self._paged_header(HEADER_AT)
        map_at = struct.unpack_from("<Q", header, 0x54)[0] + FIRST_PAGE
        copy_at = struct.unpack_from("<Q", header, 0x34)[0]
        self._demand(self._paged_header(copy_at) == header, "the second header differs")
        pages = self._pages(self._system_page(map_at, PAGE_MAP), map_at)
        last = struct.unpack_from("<Q", header, 0x2C)[0] + FIRST_PAGE
        self._demand(max(at + size for at, size in pages.values()) == last,
                     "the last page ends elsewhere")
        section_map = struct.unpack_from("<I", header, 0x5C)[0]
        self._demand(struct.unpack_from("<I", header, 0x50)[0] in pages, "the page map has no page")
        self._read_sections(self._system_page(pages[section_map][0], SECTION_MAP), pages)
        self._object_data = self.sections[OBJECTS]

    def _paged_header(self, at: int) -> bytes:
        header, noise = bytearray(self.data[at:at + HEADER_SIZE]), 1
        if len(header) < HEADER_SIZE:
            self.faults.append("the second header is not in the file")
            return b""
        for place in range(HEADER_SIZE):
            noise = (noise * 0x343FD + 0x269EC3) & 0xFFFFFFFF
            header[place] ^= noise >> 16 & 0xFF
        self._demand(header[:12] == b"AcFssFcAJMB\0", f"no header of pages at {at:X}")
        stored = struct.unpack_from("<I", header, 0x68)[0]
        self._demand(zlib.crc32(header[:0x68] + bytes(4)) == stored,
                     f"checksum of the header at {at:X}")
        return bytes(header)

    def _system_page(self, at: int, kind: int) -> bytes:
        found, size, packed, packing, stored = struct.unpack_from("<5I", self.data, at)
        if found != kind or packing != 2:
            raise DwgError(f"the page at {at:X} is of the kind {found:X}, not {kind:X}")
        data = self.data[at + 20:at + 20 + packed]
        seed = zlib.adler32(self.data[at:at + 16] + bytes(4), 0)
        self._demand(zlib.adler32(data, seed) == stored, f"checksum of the page at {at:X}")
        unpacked = decompressed(data, size)
        self._demand(len(unpacked) == size, f"size of the page at {at:X}")
        return unpacked

    def _pages(self, page_map: bytes, map_at: int) -> dict[int, tuple[int, int]]:
        pages: dict[int, tuple[int, int]] = {}
        at, address = 0, FIRST_PAGE
        while at + 8 <= len(page_map):
            number, size = struct.unpack_from("<iI", page_map, at)
            at += 8
            if number > 0:
                self._demand(number not in pages, f"page {number} is there twice")
                pages[number] = (address, size)
            else:
                at += 16  # a gap tells its neighbours
            address += size
        self._demand(any(place == map_at for place, _ in pages.values()),
                     "the page map does not list itself")
        return pages

    def _read_sections(self, section_map: bytes, pages: dict[int, tuple[int, int]]) -> None:
        count = struct.unpack_from("<I", section_map, 0)[0]
        self.section_heads: dict[str, tuple[int, int, int]] = {}
        self.page_sizes: dict[str, list[int]] = {}
        used: set[int] = set()
        at = 20
        for _ in range(count):
            size, parts, limit, _one, packing, number, scrambled = struct.unpack_from(
                "<QIIIIII", section_map, at)
            name = section_map[at + 32:at + 96].split(b"\0")[0].decode("ascii")
            at += 96
            content = bytearray(size)
            for _part in range(parts):
                page, packed, start = struct.unpack_from("<IIQ", section_map, at)
                at += 16
                self._demand(page not in used, f"page {page} is in two sections")
                used.add(page)
                unpacked = self._data_page(name, pages[page], number, packed, start,
                                           limit if packing == 2 else 0)
                room = min(len(unpacked), size - start)
                content[start:start + room] = unpacked[:room]
            if name:
                self.sections[name] = bytes(content)
                self.section_heads[name] = (limit, packing, scrambled)

    def _data_page(self, name: str, place: tuple[int, int], section: int, packed: int, start: int,
                   limit: int) -> bytes:
        at, room = place
        mask = PAGE_MASK ^ at
        words = [word ^ mask for word in struct.unpack_from("<8I", self.data, at)]
        kind, number, size, _room, offset, offset_high, head_sum, data_sum = words
        where = f"of a page of {name} at {at:X}"
        if kind != DATA_PAGE:
            raise DwgError(f"kind {where}")
        self._demand(number == section, f"section {where}")
        self._demand(size == packed and size + 32 <= room, f"size {where}")
        self._demand(offset | offset_high << 32 == start, f"offset {where}")
        data = self.data[at + 32:at + 32 + size]
        self._demand(zlib.adler32(data, 0) == data_sum, f"checksum of the data {where}")
        words[6] = 0
        self._demand(zlib.adler32(struct.pack("<8I", *words), data_sum) == head_sum,
                     f"checksum of the head {where}")
        return decompressed(data, limit) if limit else data

    # --- what is the same in both ----------------------------------------------------------------

    def _verify_framed_sections(self) -> None:
        for name in (HEADER, CLASSES):
            data = self.sections[name]
            mark = bytes.fromhex(SENTINELS[name])
            self._demand(data[:16] == mark, f"no mark before {name}")
            end = self._end_of_framed(data)
            self._demand(data[end + 2:end + 18] == bytes(byte ^ 0xFF for byte in mark),
                         f"no mark behind {name}")
            self._demand(crc16(data[16:end], RECORD_SEED) == struct.unpack_from("<H", data, end)[0],
                         f"checksum of {name}")

    def _end_of_framed(self, data: bytes) -> int:
        """Where the checksum of the header variables or the classes is."""
        head = 20
        maintenance = self.data[0x0B]
        if self.version == R2018 or (self.version >= R2010 and maintenance > 3):
            head = 24
        return head + struct.unpack_from("<I", data, 16)[0]

    def framed(self, name: str) -> bytes:
        data = self.sections[name]
        return data[20:self._end_of_framed(data)]

    def _object_map(self, data: bytes) -> dict[int, int]:
        places: dict[int, int] = {}
        at = 0
        while True:
            size, = struct.unpack_from(">H", data, at)
            stored, = struct.unpack_from(">H", data, at + size)
            self._demand(crc16(data[at:at + size], RECORD_SEED) == stored,
                         f"checksum of the object map at {at:X}")
            if size <= 2:
                return places
            self._demand(size <= 2040, f"a part of the object map at {at:X} is too long")
            handle = place = 0
            read, end = at + 2, at + size
            while read < end:
                step, read = self._unsigned(data, read)
                handle += step
                move, read = self._signed(data, read)
                place += move
                self._demand(step > 0 and handle not in places, f"handle {handle:X} comes twice")
                places[handle] = place
            self._demand(read == end, f"a part of the object map at {at:X} ends in a number")
            at = end + 2

    @staticmethod
    def _unsigned(data: bytes, at: int) -> tuple[int, int]:
        value = shift = 0
        while True:
            byte = data[at]
            at += 1
            value |= (byte & 0x7F) << shift
            shift += 7
            if not byte & 0x80:
                return value, at

    @staticmethod
    def _signed(data: bytes, at: int) -> tuple[int, int]:
        value = shift = 0
        while True:
            byte = data[at]
            at += 1
            if byte & 0x80:
                value |= (byte & 0x7F) << shift
                shift += 7
                continue
            value |= (byte & 0x3F) << shift
            return (-value if byte & 0x40 else value), at

    def _record(self, handle: int, place: int) -> Record:
        data = self._object_data
        at, size, shift = place, 0, 0
        while True:
            word, = struct.unpack_from("<H", data, at)
            at += 2
            size |= (word & 0x7FFF) << shift
            shift += 15
            if not word & 0x8000:
                break
        references = 0
        start = at
        if self.version >= R2010:
            references, start = self._unsigned(data, at)
        end = start + size
        stored, = struct.unpack_from("<H", data, end)
        self._demand(crc16(data[place:end], RECORD_SEED) == stored, f"checksum of {handle:X}")
        body = data[start:end]
        fields = Bits(body)
        if self.version >= R2010:
            form = fields.bits(2)
            kind = (fields.bits(8) if form == 0 else 0x1F0 + fields.bits(8) if form == 1
                    else fields.little(2))
            fields_end = size * 8 - references
        else:
            kind = fields.short()
            fields_end = fields.little(4)
        _, own = fields.handle()
        self._demand(own == handle, f"{handle:X} in the map is {own:X} in its record")
        self._demand(0 < fields_end <= size * 8, f"the references of {handle:X} are outside")
        record = Record(handle, kind, data[place:end + 2], body, fields, fields_end)
        while length := fields.short():
            application = fields.handle()[1]
            record.extended.append((application, fields.raw(length)))
        return record

    def _read_classes(self) -> dict[int, str]:
        """The numbers of types from 500, by the order of the classes of the file."""
        data = self.sections[CLASSES]
        head = self._end_of_framed(data) - struct.unpack_from("<I", data, 16)[0]
        names: dict[int, str] = {}
        if self.version >= R2007:
            return self._classes_with_texts(data, head)
        reader = Bits(data, head * 8, self._end_of_framed(data) * 8)
        if self.version >= R2004:
            reader.short()
            reader.raw(2)
            reader.bits(1)
        while reader.at < reader.end - 16:
            number = reader.short()
            reader.short()
            reader.raw(reader.short())
            reader.raw(reader.short())
            names[number] = reader.raw(reader.short()).rstrip(b"\0").decode("ascii", "replace")
            reader.bits(1)
            reader.short()
            if self.version >= R2004:
                for _ in range(5):
                    reader.long()
        return names

    def _classes_with_texts(self, data: bytes, head: int) -> dict[int, str]:
        size = struct.unpack_from("<I", data, head)[0]
        reader = Bits(data, head * 8 + 32, head * 8 + size)
        texts = self._texts(data, head * 8 + size)
        last = reader.short()
        reader.raw(2)
        reader.bits(1)
        names: dict[int, str] = {}
        while texts is not None and last not in names:
            number = reader.short()
            reader.short()
            self._wide(texts)  # the program and the class
            self._wide(texts)
            names[number] = self._wide(texts)
            reader.bits(1)
            reader.short()
            for _ in range(5):
                reader.long()
        return names

    # --- records ---------------------------------------------------------------------------------

    def type_name(self, handle: int) -> str:
        kind = self.objects[handle].type
        return TYPES.get(kind) or self.classes.get(kind) or str(kind)

    def of_type(self, name: str) -> Iterator[int]:
        return (handle for handle in self.objects if self.type_name(handle) == name)

    @staticmethod
    def _texts(data: bytes, end: int) -> Bits | None:
        """The stream of texts that ends at a bit, none when there is none."""
        at = end - 1
        if not Bits(data, at).bits(1):
            return None
        at -= 16
        size = Bits(data, at).little(2)
        if size & 0x8000:
            at -= 16
            size = (size & 0x7FFF) | Bits(data, at).little(2) << 15
        return Bits(data, at - size, at)

    @staticmethod
    def _wide(texts: Bits) -> str:
        return texts.raw(2 * texts.short()).decode("utf-16-le", "replace").rstrip("\0")

    def decoded(self, data: bytes, page: int | None = None) -> str:
        """A text of a file before R2007."""
        known = {28: "cp1250", 29: "cp1251", 30: "cp1252", 31: "gb2312", 38: "cp932", 39: "cp936"}
        text = data.rstrip(b"\0").decode(known.get(page or self.code_page, "cp1252"), "replace")
        return re.sub(r"\\U\+([0-9A-Fa-f]{4})", lambda found: chr(int(found[1], 16)), text)

    def _common(self, record: Record) -> tuple[Bits, Bits, Bits | None, int, bool]:
        """Readers of the fields, the references and the texts of an object that is no entity;
        the number of reactors, and whether there is an extension dictionary."""
        fields = Bits(record.body, record.fields.at, record.fields_end)
        reactors = fields.long()
        has_dictionary = self.version < R2004 or not fields.bits(1)
        if self.version >= R2013:
            fields.bits(1)
        texts = self._texts(record.body, record.fields_end) if self.version >= R2007 else None
        return fields, Bits(record.body, record.fields_end), texts, reactors, has_dictionary

    def _text(self, fields: Bits, texts: Bits | None) -> str:
        if self.version >= R2007:
            return self._wide(texts) if texts is not None else ""
        return self.decoded(fields.raw(fields.short()))

    def _head_references(self, record: Record, references: Bits, reactors: int,
                         has_dictionary: bool) -> tuple[int, list[int], int]:
        def one() -> int:
            return absolute(references.handle(), record.handle)
        owner = one()
        return owner, [one() for _ in range(reactors)], one() if has_dictionary else 0

    def references(self, handle: int) -> list[int]:
        """All handles behind the fields of a record, in order, whatever its type."""
        record = self.objects[handle]
        reader = Bits(record.body, record.fields_end)
        found = []
        while reader.end - reader.at >= 8:
            found.append(absolute(reader.handle(), handle))
        return found

    def owner(self, handle: int) -> int:
        """Of an object that is no entity."""
        record = self.objects[handle]
        _fields, references, _texts, reactors, has_dictionary = self._common(record)
        return self._head_references(record, references, reactors, has_dictionary)[0]

    def dictionary(self, handle: int) -> dict[str, int]:
        record = self.objects[handle]
        if record.type != DICTIONARY:
            raise DwgError(f"{handle:X} is no dictionary")
        fields, references, texts, reactors, has_dictionary = self._common(record)
        count = fields.long()
        fields.short()  # what becomes of twins when it is cloned
        fields.bits(8)  # whether it owns its entries
        keys = [self._text(fields, texts) for _ in range(count)]
        self._head_references(record, references, reactors, has_dictionary)
        return {key: absolute(references.handle(), handle) for key in keys}

    def xrecord(self, handle: int) -> list[tuple[int, object]]:
        record = self.objects[handle]
        if record.type != XRECORD:
            raise DwgError(f"{handle:X} is no XRECORD")
        fields, *_ = self._common(record)
        data = fields.raw(fields.long())
        pairs: list[tuple[int, object]] = []
        at = 0
        while at < len(data):
            code, = struct.unpack_from("<h", data, at)
            value, at = self._value(code, data, at + 2)
            pairs.append((code, value))
        return pairs

    def _value(self, code: int, data: bytes, at: int) -> tuple[object, int]:
        kind = _kind_of_value(code)
        if kind == "text":
            length, = struct.unpack_from("<H", data, at)
            if self.version >= R2007:
                end = at + 2 + 2 * length
                return data[at + 2:end].decode("utf-16-le", "replace"), end
            end = at + 3 + length
            return self.decoded(data[at + 3:end], data[at + 2]), end
        if kind == "chunk":
            end = at + 1 + data[at]
            return data[at + 1:end], end
        form, size = {"point": ("<3d", 24), "real": ("<d", 8), "short": ("<h", 2),
                      "long": ("<i", 4), "byte": ("<B", 1), "handle": ("<Q", 8),
                      "wide": ("<q", 8)}[kind]
        values = struct.unpack_from(form, data, at)
        return (values if kind == "point" else values[0]), at + size

    def name(self, handle: int) -> str:
        """Of an entry of a table."""
        fields, _references, texts, _reactors, _dictionary = self._common(self.objects[handle])
        return self._text(fields, texts)

    def names(self, type_name: str) -> list[str]:
        return [self.name(handle) for handle in self.of_type(type_name)]

    def _double(self, fields: Bits) -> None:
        if fields.bits(2) == 0:
            fields.raw(8)

    def block_ends(self, handle: int) -> tuple[int, list[int], int]:
        """Of a block record: its BLOCK, the entities that it lists and its ENDBLK. In R2000 only
        the first and the last entity are listed."""
        record = self.objects[handle]
        fields, references, texts, reactors, has_dictionary = self._common(record)
        self._text(fields, texts)
        if self.version < R2007:
            fields.bits(1)
        fields.short()
        if self.version < R2007:
            fields.bits(1)
        _anonymous, _attributes, is_reference, is_overlay, _loaded = (fields.bits(1)
                                                                      for _ in range(5))
        has_list = not is_reference and not is_overlay
        count = 2 if self.version < R2004 else fields.long() if has_list else 0
        self._head_references(record, references, reactors, has_dictionary)

        def one() -> int:
            return absolute(references.handle(), handle)
        one()
        begin = one()
        listed = [one() for _ in range(count if has_list else 0)]
        return begin, listed, one()

    def neighbours(self, handle: int) -> tuple[int, int]:
        """The entities before and behind one of R2000; 0 for none."""
        record = self.objects[handle]
        fields = Bits(record.body, record.fields.at, record.fields_end)
        if fields.bits(1):
            fields.raw(fields.little(4))
        mode, reactors, has_no_links = fields.bits(2), fields.long(), fields.bits(1)
        if has_no_links:
            return handle - 1, handle + 1
        references = Bits(record.body, record.fields_end)
        for _ in range((mode == 0) + reactors + 1):
            references.handle()
        before, behind = (absolute(references.handle(), handle) for _ in range(2))
        return before, behind

    def entities(self, block: int) -> list[int]:
        """The entities of a block record, in order."""
        _begin, listed, _end = self.block_ends(block)
        if self.version >= R2004 or not listed or not listed[0]:
            return [handle for handle in listed if handle]
        first, last = listed
        chain = [first]
        before = 0
        while True:
            previous, following = self.neighbours(chain[-1])
            if previous != before and not (before == 0 and previous == first - 1):
                raise DwgError(f"{chain[-1]:X} stands behind {previous:X}, not {before:X}")
            if chain[-1] == last:
                return chain
            before = chain[-1]
            if following not in self.objects or following in chain:
                raise DwgError(f"{before:X} stands before {following:X}")
            chain.append(following)

    @property
    def next_handle(self) -> int:
        """What the auxiliary header tells of the next object."""
        return int(struct.unpack("<I", self.sections["AcDb:AuxHeader"][-44:-40])[0])

    @property
    def root(self) -> int:
        """The dictionary of named objects: the one that nothing owns and that lists others."""
        for handle in self.of_type("DICTIONARY"):
            if self.owner(handle) == 0 and "ACAD_GROUP" in self.dictionary(handle):
                return handle
        raise DwgError("there is no dictionary of named objects")

    def tree(self, handle: int) -> dict[str, object]:
        """What hangs in a dictionary; an XRECORD is its pairs, another object its type."""
        found: dict[str, object] = {}
        for key, entry in self.dictionary(handle).items():
            kind = self.type_name(entry) if entry in self.objects else "nothing"
            found[key] = (self.tree(entry) if kind == "DICTIONARY" else
                          self.xrecord(entry) if kind == "XRECORD" else kind)
        return found


def _kind_of_value(code: int) -> str:
    ranges = (((0, 9), "text"), ((10, 17), "point"), ((18, 59), "real"), ((60, 79), "short"),
              ((90, 99), "long"), ((100, 105), "text"), ((110, 112), "point"), ((113, 149), "real"),
              ((160, 169), "wide"), ((170, 179), "short"), ((210, 219), "point"),
              ((270, 279), "short"), ((280, 299), "byte"), ((300, 309), "text"),
              ((310, 319), "chunk"), ((320, 369), "handle"), ((370, 389), "short"),
              ((390, 399), "handle"), ((400, 409), "short"), ((410, 419), "text"),
              ((420, 429), "long"), ((430, 439), "text"), ((440, 459), "long"),
              ((460, 469), "real"),
              ((470, 479), "text"), ((480, 481), "handle"), ((1000, 1003), "text"),
              ((1004, 1004), "chunk"), ((1005, 1005), "handle"), ((1010, 1019), "point"),
              ((1040, 1042), "real"), ((1070, 1070), "short"), ((1071, 1071), "long"))
    for (first, last), kind in ranges:
        if first <= code <= last:
            return kind
    raise DwgError(f"an XRECORD has the code {code}")
