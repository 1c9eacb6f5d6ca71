"""Drawings with one defect each.

All come from three small ones that are whole: R12 with entities alone, R2000 with what a reader
needs to find a setting, and the same in binary form. The defect is made in their groups or in
their bytes.
"""

from __future__ import annotations

from typing import Callable, Sequence

from dxf_form import BinaryForm, Tag, TextForm, Version

LINE: list[Tag] = [(0, "LINE"), (8, "0"), (10, 0.0), (20, 0.0), (11, 100.0), (21, 50.0)]
BARE = TextForm("\n", aligned=False)


# --- whole ones ---------------------------------------------------------------------------------


def section(name: str, *parts: Sequence[Tag]) -> list[Tag]:
    return [(0, "SECTION"), (2, name), *(tag for part in parts for tag in part), (0, "ENDSEC")]


def r12_entities() -> list[Tag]:
    return [*section("ENTITIES", LINE, LINE), (0, "EOF")]


def header(seed: str | None = "40") -> list[Tag]:
    seeds: list[Tag] = [] if seed is None else [(9, "$HANDSEED"), (5, seed)]
    return section("HEADER", [(9, "$ACADVER"), (1, "AC1015"), (9, "$DWGCODEPAGE"),
                              (3, "ANSI_1252"), *seeds, (9, "$TILEMODE"), (70, 1)])


def table(name: str, handle: str, entries: list[list[Tag]], count: int | None = None) -> list[Tag]:
    head: list[Tag] = [(0, "TABLE"), (2, name), (5, handle), (330, "0"), (100, "AcDbSymbolTable"),
                       (70, len(entries) if count is None else count)]
    return head + [tag for entry in entries for tag in entry] + [(0, "ENDTAB")]


def layer(handle: str, name: str) -> list[Tag]:
    return [(0, "LAYER"), (5, handle), (330, "2"), (100, "AcDbSymbolTableRecord"),
            (100, "AcDbLayerTableRecord"), (2, name), (70, 0), (62, 7), (6, "Continuous")]


def block_record(handle: str, name: str) -> list[Tag]:
    return [(0, "BLOCK_RECORD"), (5, handle), (330, "1"), (100, "AcDbSymbolTableRecord"),
            (100, "AcDbBlockTableRecord"), (2, name), (340, "0")]


LAYERS = [layer("10", "0"), layer("11", "WAND")]
SPACES = [block_record("1F", "*Model_Space"), block_record("1B", "*Paper_Space")]


def tables(layers: list[list[Tag]] | None = None, spaces: list[list[Tag]] | None = None,
           count: int | None = None) -> list[Tag]:
    return section("TABLES", table("LAYER", "2", layers or LAYERS, count),
                   table("BLOCK_RECORD", "1", spaces or SPACES, count))


def block_begin(handle: str, record: str, name: str | None) -> list[Tag]:
    named: list[Tag] = [] if name is None else [(2, name)]
    return [(0, "BLOCK"), (5, handle), (330, record), (100, "AcDbEntity"), (8, "0"),
            (100, "AcDbBlockBegin"), *named, (70, 0), (10, 0.0), (20, 0.0), (30, 0.0)]


def block_end(handle: str, record: str) -> list[Tag]:
    return [(0, "ENDBLK"), (5, handle), (330, record), (100, "AcDbEntity"), (8, "0"),
            (100, "AcDbBlockEnd")]


SPACE_BLOCKS = [*block_begin("20", "1F", "*Model_Space"), *block_end("21", "1F"),
                *block_begin("1C", "1B", "*Paper_Space"), *block_end("1D", "1B")]


def line(handle: str | None = "30", owner: str = "1F") -> list[Tag]:
    handles: list[Tag] = [] if handle is None else [(5, handle)]
    return [(0, "LINE"), *handles, (330, owner), (100, "AcDbEntity"), (8, "WAND"),
            (100, "AcDbLine"), (10, 0.0), (20, 0.0), (30, 0.0), (11, 9.0), (21, 5.0), (31, 0.0)]


def insert(handle: str, owner: str, block: str, attributes: bool = False) -> list[Tag]:
    follow: list[Tag] = [(66, 1)] if attributes else []
    return [(0, "INSERT"), (5, handle), (330, owner), (100, "AcDbEntity"), (8, "0"),
            (100, "AcDbBlockReference"), *follow, (2, block), (10, 1.0), (20, 2.0), (30, 0.0)]


def attribute(handle: str, owner: str) -> list[Tag]:
    return [(0, "ATTRIB"), (5, handle), (330, owner), (100, "AcDbEntity"), (8, "0"),
            (100, "AcDbText"), (10, 1.0), (20, 2.0), (30, 0.0), (40, 2.5), (1, "waarde"),
            (100, "AcDbAttribute"), (2, "NUMMER"), (70, 0)]


def dictionary(handle: str, owner: str, **entries: str) -> list[Tag]:
    pairs: list[Tag] = [tag for name, entry in entries.items() for tag in ((3, name), (350, entry))]
    return [(0, "DICTIONARY"), (5, handle), (330, owner), (100, "AcDbDictionary"), (281, 1), *pairs]


def setting(handle: str, owner: str, value: str) -> list[Tag]:
    return [(0, "XRECORD"), (5, handle), (330, owner), (100, "AcDbXrecord"), (280, 1), (1, value)]


ROOT = dictionary("C", "0", ACAD_GROUP="D", KVR_INI_ROOT="E")
SETTINGS = [*dictionary("D", "C"), *dictionary("E", "C", **{"TOOL.INI": "F"}),
            *dictionary("F", "E", Taal="12", Tekst="13"), *setting("12", "F", "NL"),
            *dictionary("13", "F", Hoogte="14"), *setting("14", "13", "2.5")]


def r2000(*, head: list[Tag] | None = None, tabs: list[Tag] | None = None,
          blocks: list[Tag] | None = None, entities: list[Tag] | None = None,
          objects: list[Tag] | None = None) -> list[Tag]:
    """A whole drawing, with other parts where they are given."""
    return [
        *(header() if head is None else head),
        *(tables() if tabs is None else tabs),
        *section("BLOCKS", SPACE_BLOCKS, blocks or []),
        *section("ENTITIES", line() if entities is None else entities),
        *(section("OBJECTS", ROOT, SETTINGS) if objects is None else objects),
        (0, "EOF"),
    ]


# --- defects ------------------------------------------------------------------------------------


def text(tags: list[Tag]) -> bytes:
    return BARE.pack(tags, Version.R2000, "cp1252")


def binary(tags: list[Tag]) -> bytes:
    return BinaryForm().pack(tags, Version.R2000, "cp1252")


def with_named_block(name: str | None, *, end: bool = True) -> list[Tag]:
    """A block of that name with a line in it, behind those of the spaces."""
    begin = block_begin("33", "32", name)
    body = [*begin, *line("34", "32"), *(block_end("35", "32") if end else [])]
    return r2000(tabs=tables(spaces=[*SPACES, block_record("32", name or "DEUR")]), blocks=body)


def self_inserting() -> list[Tag]:
    """A inserts B, and B inserts A and itself."""
    records = [*SPACES, block_record("32", "A"), block_record("36", "B")]
    blocks = [*block_begin("33", "32", "A"), *insert("34", "32", "B"), *block_end("35", "32"),
              *block_begin("37", "36", "B"), *insert("38", "36", "A"), *insert("39", "36", "b"),
              *block_end("3A", "36")]
    return r2000(tabs=tables(spaces=records), blocks=blocks, entities=insert("30", "1F", "A"))


def cyclic_dictionaries() -> list[Tag]:
    """KVR_INI_ROOT holds TOOL.INI, which holds KVR_INI_ROOT and itself."""
    return r2000(objects=section(
        "OBJECTS", ROOT, dictionary("D", "C"), dictionary("E", "C", **{"TOOL.INI": "F"}),
        dictionary("F", "E", Taal="12", Tekst="E", Zelf="F"), setting("12", "F", "NL")))


def layout_without_record() -> list[Tag]:
    layout: list[Tag] = [(0, "LAYOUT"), (5, "16"), (330, "15"), (100, "AcDbPlotSettings"),
                         (100, "AcDbLayout"), (1, "Layout1"), (70, 1), (71, 1)]
    return r2000(objects=section(
        "OBJECTS", dictionary("C", "0", ACAD_LAYOUT="15", KVR_INI_ROOT="E"), SETTINGS,
        dictionary("15", "C", Layout1="16", Layout2="17"), layout,
        [(0, "LAYOUT"), (5, "17"), *layout[2:5], (1, "Layout2"), (70, 1), (71, 2), (330, "FF")]))


def text_defects() -> dict[str, bytes]:
    whole = text(r2000())
    middle = whole.index(b"AcDbLine")
    return {
        "truncated_value.dxf": whole[: middle + 4],
        "truncated_between_lines.dxf": whole[:middle],
        "no_eof.dxf": whole.removesuffix(b"0\nEOF\n"),
        "code_is_no_number.dxf": whole.replace(b"100\nAcDbLine\n", b"1oo\nAcDbLine\n"),
        "code_is_huge.dxf": whole.replace(b"100\nAcDbLine\n", b"99999999999\nAcDbLine\n"),
        "code_is_negative.dxf": whole.replace(b"100\nAcDbLine\n", b"-7\nAcDbLine\n"),
        "line_missing.dxf": whole.replace(b"100\nAcDbLine\n", b"AcDbLine\n"),
        "number_is_text.dxf": whole.replace(b"11\n9.0\n", b"11\nnegen\n")
                                   .replace(b"62\n7\n", b"62\n\n"),
        "text_behind_eof.dxf": whole + b"Dit staat achter het einde.\n0\nSECTION\n",
        "mixed_line_ends.dxf": whole.replace(b"AcDbLine\n", b"AcDbLine\r\n")
                                    .replace(b"ENTITIES\n", b"ENTITIES\r"),
        "null_bytes.dxf": whole.replace(b"WAND", b"WA\0D"),
        "endsec_missing.dxf": whole.replace(b"0\nENDSEC\n0\nSECTION\n2\nENTITIES",
                                            b"0\nSECTION\n2\nENTITIES"),
        "section_without_name.dxf": whole.replace(b"2\nENTITIES\n", b""),
        "section_twice.dxf": text([*r2000()[:-1], *section("ENTITIES", line("3B")), (0, "EOF")]),
        "future_version.dxf": whole.replace(b"AC1015", b"AC1099"),
        "version_is_text.dxf": whole.replace(b"AC1015", b"nieuwste"),
        "unknown_code_page.dxf": whole.replace(b"ANSI_1252", b"ANSI_9999"),
        "empty.dxf": b"",
        "only_zero.dxf": b"0",
        "only_line_end.dxf": b"\n",
        "plain_text.dxf": b"Dit is een brief.\nGeen tekening.\n",
        "looks_like_dwg.dxf": b"AC1032" + bytes(range(250)),
        "xml.dxf": b"<?xml version=\"1.0\"?>\n<tekening/>\n",
    }


def handle_defects() -> dict[str, bytes]:
    return {
        "duplicate_handles.dxf": text(r2000(entities=line("30") + line("30") + line("10"))),
        "empty_handles.dxf": text(r2000(entities=line("") + line("0") + line(None))),
        "handle_is_no_number.dxf": text(r2000(entities=line("XYZ") + line("1" * 17))),
        "handle_of_16_digits.dxf": text(r2000(entities=line("FFFFFFFFFFFFFFFF"))),
        "dangling_handles.dxf": text(r2000(objects=section(
            "OBJECTS", dictionary("C", "0", ACAD_GROUP="D1", KVR_INI_ROOT="E"), SETTINGS[5:],
            dictionary("F1", "E1")))),
        "owner_missing.dxf": text(r2000(entities=line("30", owner="EE") + line("31", owner="14"))),
        "handseed_too_low.dxf": text(r2000(head=header("11"))),
        "handseed_missing.dxf": text(r2000(head=header(None))),
        "handseed_is_text.dxf": text(r2000(head=header("laatste"))),
    }


def structure_defects() -> dict[str, bytes]:
    makers: dict[str, Callable[[], list[Tag]]] = {
        "r12_entities_alone.dxf": r12_entities,
        "no_header.dxf": lambda: r2000(head=[]),
        "no_tables.dxf": lambda: r2000(tabs=[]),
        "no_objects.dxf": lambda: r2000(objects=[]),
        "empty_objects.dxf": lambda: r2000(objects=section("OBJECTS")),
        "two_roots.dxf": lambda: r2000(objects=section(
            "OBJECTS", ROOT, SETTINGS, dictionary("1E", "0", KVR_INI_ROOT="D"))),
        "root_is_not_first.dxf": lambda: r2000(objects=section("OBJECTS", SETTINGS, ROOT)),
        "cyclic_dictionaries.dxf": cyclic_dictionaries,
        "name_without_handle.dxf": lambda: r2000(objects=section(
            "OBJECTS", [*ROOT, (3, "LOS"), (3, "NOG_EEN"), (350, "D"), (350, "E")], SETTINGS)),
        "name_twice.dxf": lambda: r2000(objects=section(
            "OBJECTS", [*ROOT, (3, "kvr_ini_root"), (350, "D")], SETTINGS)),
        "setting_is_no_record.dxf": lambda: r2000(
            objects=section("OBJECTS", dictionary("C", "0", KVR_INI_ROOT="30"))),
        "blocks_insert_themselves.dxf": self_inserting,
        "block_without_name.dxf": lambda: with_named_block(None),
        "block_name_empty.dxf": lambda: with_named_block(""),
        "block_without_endblk.dxf": lambda: with_named_block("DEUR", end=False),
        "endblk_without_block.dxf": lambda: r2000(blocks=block_end("33", "1F")),
        "block_without_record.dxf": lambda: r2000(
            blocks=[*block_begin("33", "32", "DEUR"), *block_end("35", "32")]),
        "block_twice.dxf": lambda: r2000(blocks=[*block_begin("33", "1F", "*Model_Space"),
                                                 *line("34"), *block_end("35", "1F")]),
        "insert_of_nothing.dxf": lambda: r2000(entities=insert("30", "1F", "NERGENS")),
        "attrib_without_insert.dxf": lambda: r2000(entities=line() + attribute("31", "30")),
        "attribs_without_seqend.dxf": lambda: r2000(
            entities=[*insert("30", "1F", "A", attributes=True), *attribute("31", "30"),
                      *line("32")]),
        "seqend_alone.dxf": lambda: r2000(
            entities=[(0, "SEQEND"), (5, "30"), (8, "0"), *line("31")]),
        "layout_without_record.dxf": layout_without_record,
        "counts_lie.dxf": lambda: r2000(tabs=tables(count=32767)),
        "counts_are_negative.dxf": lambda: r2000(tabs=tables(count=-1)),
        "braces_left_open.dxf": lambda: r2000(
            entities=[*line()[:2], (102, "{ACAD_REACTORS"), (330, "C"), *line()[2:]]),
        "extension_of_nothing.dxf": lambda: r2000(
            entities=[*line()[:2], (102, "{ACAD_XDICTIONARY"), (360, "EE"), (102, "}"),
                      *line()[2:]]),
    }
    return {name: text(make()) for name, make in makers.items()}


def binary_defects() -> dict[str, bytes]:
    whole = binary(r2000())
    sentinel = BinaryForm.SENTINEL
    real = whole.index(b"\x0b\x00\x00\x00\x00\x00\x00\x00\x22\x40")  # group 11, 9.0
    chunk = binary(r2000(objects=section("OBJECTS", ROOT, SETTINGS, [(310, bytes(100))])))
    length = chunk.index(b"\x36\x01\x64")  # group 310, 100 bytes
    return {
        "binary_cut_in_a_real.dxf": whole[: real + 5],
        "binary_cut_in_a_code.dxf": whole[: real + 1],
        "binary_cut_in_a_text.dxf": whole[: whole.index(b"AcDbLine") + 3],
        "binary_cut_before_a_length.dxf": chunk[: length + 2],
        "binary_cut_in_a_chunk.dxf": chunk[: length + 20],
        "binary_unknown_code.dxf": whole[:real] + b"\x10\x27" + whole[real + 2 :],
        "binary_negative_code.dxf": whole[:real] + b"\xff\xff" + whole[real + 2 :],
        "binary_without_eof.dxf": whole[: -len(b"\0\0EOF\0")],
        "binary_sentinel_cut.dxf": sentinel[:-4],
        "binary_sentinel_alone.dxf": sentinel,
        "binary_sentinel_and_text.dxf": sentinel + text(r12_entities()),
    }


def damaged_drawings() -> dict[str, bytes]:
    """By file name."""
    return text_defects() | handle_defects() | structure_defects() | binary_defects()
