"""Writes drawings as DXF: R12 to R2018, text or binary, group by group.

It serves the scripts that make our own drawings, and knows what those need. Coordinates are tuples
of 2 or 3 numbers, angles are degrees. A text that is given as bytes is written as those bytes,
which serves to put into a file what is not right there.
"""

from __future__ import annotations

import math
from dataclasses import dataclass, field, replace
from pathlib import Path
from typing import Iterable, Iterator, Mapping, Sequence

from dxf_form import CODE_PAGES, BinaryForm, Form, Tag, TextForm, Version

__all__ = ["AttributeDefinition", "BinaryForm", "Dictionary", "Drawing", "Form", "Layout",
           "Placing", "Point", "Record", "Sheet", "Space", "Tag", "TextForm", "Version", "at",
           "at3", "chapter_key"]

Point = tuple[float, ...]


def at(code: int, point: Point) -> list[Tag]:
    """A point; the code counts on by ten with each coordinate."""
    return [(code + 10 * axis, float(value)) for axis, value in enumerate(point)]


def at3(code: int, point: Point) -> list[Tag]:
    return at(code, (*point, 0.0)[:3])


@dataclass(eq=False)
class Record:
    """A record: its frame, and its own groups in the body."""

    type: str
    handle: str | None = None
    owner: str | None = None
    body: list[Tag] = field(default_factory=list)
    extension: str | None = None  # handle of its extension dictionary
    reactors: list[str] = field(default_factory=list)
    extended: list[Tag] = field(default_factory=list)
    parts: list[Record] = field(default_factory=list)  # vertices, attributes and their SEQEND
    handle_code: int = 5

    def tags(self) -> Iterator[Tag]:
        yield 0, self.type
        if self.handle is not None:
            yield self.handle_code, self.handle
        if self.extension is not None:
            yield from ((102, "{ACAD_XDICTIONARY"), (360, self.extension), (102, "}"))
        if self.reactors:
            yield 102, "{ACAD_REACTORS"
            yield from ((330, reactor) for reactor in self.reactors)
            yield 102, "}"
        if self.owner is not None:
            yield 330, self.owner
        yield from self.body
        yield from self.extended
        for part in self.parts:
            yield from part.tags()


@dataclass(eq=False)
class Dictionary:
    record: Record
    entries: list[tuple[str, str]] = field(default_factory=list)  # name and handle
    hard: bool = False
    tail: list[Tag] = field(default_factory=list)

    def tags(self, version: Version) -> Iterator[Tag]:
        body: list[Tag] = [(100, "AcDbDictionary")]
        if self.hard and version >= Version.R14:
            body.append((280, 1))
        if version >= Version.R2000:
            body.append((281, 1))
        for name, handle in self.entries:
            body += [(3, name), (360 if self.hard else 350, handle)]
        self.record.body = body + self.tail
        return self.record.tags()


@dataclass
class AttributeDefinition:
    """What a block prescribes for an attribute of its references."""

    tag: str
    text: str
    at: Point
    height: float = 2.5
    prompt: str = ""
    flags: int = 0  # 1 invisible, 2 constant, 4 verify, 8 preset
    angle: float = 0.0
    layer: str = "0"
    style: str | None = None


@dataclass(frozen=True)
class Placing:
    """How a reference stands in its plane. Grid: columns, rows and their distances."""

    scale: Point = (1.0, 1.0, 1.0)
    angle: float = 0.0
    normal: Point | None = None
    grid: tuple[int, int, float, float] | None = None


@dataclass(eq=False)
class Space:
    """A block definition: model space, a paper space or a block with a name."""

    name: str
    record: Record
    begin: Record
    end: Record
    base: Point = (0.0, 0.0, 0.0)
    paper: bool = False
    entities: list[Record] = field(default_factory=list)
    definitions: list[AttributeDefinition] = field(default_factory=list)


@dataclass
class Table:
    name: str
    handle: str | None
    entries: list[Record] = field(default_factory=list)


@dataclass(frozen=True)
class Sheet:
    """The paper of a layout, in millimetres."""

    layout: str = "Layout1"
    paper: str = "ISO_A3_(420.00_x_297.00_MM)"
    size: tuple[float, float] = (420.0, 297.0)


@dataclass
class Layout:
    name: str
    record: Record
    space: Space


_TABLE_NAMES = ("VPORT", "LTYPE", "LAYER", "STYLE", "VIEW", "UCS", "APPID", "DIMSTYLE",
                "BLOCK_RECORD")
_ENTRY_CLASSES = {"VPORT": "Viewport", "LTYPE": "Linetype", "LAYER": "Layer", "STYLE": "TextStyle",
                  "UCS": "UCS", "APPID": "RegApp", "DIMSTYLE": "DimStyle",
                  "BLOCK_RECORD": "Block"}

# Groups that R12 does not have.
_NEWER_THAN_R12 = {*range(90, 104), *range(160, 170), *range(270, 482)} - {999}


def _as_r12(tags: Iterable[Tag]) -> Iterator[Tag]:
    in_braces = False
    for code, value in tags:
        if code == 102:
            in_braces = str(value).startswith("{")
        elif not in_braces and code not in _NEWER_THAN_R12:
            yield code, value


class Drawing:
    """A drawing with what every one has; add the rest, then save it."""

    def __init__(self, version: Version, code_page: str = "ANSI_1252", *,
                 handles: bool = True, sheet: Sheet = Sheet()) -> None:
        self.version = version
        self.code_page = code_page
        self.comments: list[str] = []
        self.classes: list[list[Tag]] = []
        self.sections: list[tuple[str, list[Tag]]] = []  # behind all others
        self.objects: list[Record | Dictionary] = []
        self.blocks: list[Space] = []
        self.layouts: dict[str, Layout] = {}
        self._has_handles = handles
        self._sheet = sheet
        self._last_handle = 0
        self.tables = {name: Table(name, self._table_handle(name)) for name in _TABLE_NAMES}
        self.header = self._standard_header()
        self.root = Dictionary(self._record("DICTIONARY", "0"))
        self._add_standard_entries()
        self.model = self._add_space(self.standard("*Model_Space"))
        self.paper = self._add_space(self.standard("*Paper_Space"), paper=True)
        if version >= Version.R13:
            self._add_standard_objects()

    # --- names and handles ---

    @property
    def encoding(self) -> str:
        return "utf-8" if self.version >= Version.R2007 else CODE_PAGES[self.code_page]

    def standard(self, name: str) -> str:
        """A name that every drawing has, as this version writes it."""
        return name if self.version >= Version.R2000 else name.upper()

    def new_handle(self) -> str:
        self._last_handle += 1
        return f"{self._last_handle:X}"

    def skip_handles(self, count: int) -> None:
        self._last_handle += count

    @property
    def seed(self) -> str:
        return f"{self._last_handle + 1:X}"

    def _table_handle(self, name: str) -> str | None:
        return None if self.version < Version.R13 else self.new_handle()

    def _record(self, kind: str, owner: str | None, body: Sequence[Tag] = ()) -> Record:
        handle = self.new_handle() if self._has_handles else None
        return Record(kind, handle, owner, list(body))

    # --- header ---

    def _standard_header(self) -> dict[str, list[Tag]]:
        origin, x_axis, y_axis = (0.0, 0.0, 0.0), (1.0, 0.0, 0.0), (0.0, 1.0, 0.0)
        header: dict[str, list[Tag]] = {
            "$ACADVER": [(1, f"AC{self.version.value}")],
            "$DWGCODEPAGE": [(3, self.code_page)],
            "$INSBASE": at(10, origin),
            "$EXTMIN": at(10, origin),
            "$EXTMAX": at(10, (420.0, 297.0, 0.0)),
            "$LIMMIN": at(10, (0.0, 0.0)),
            "$LIMMAX": at(10, (420.0, 297.0)),
            "$LTSCALE": [(40, 1.0)],
            "$ATTMODE": [(70, 1)],
            "$TEXTSIZE": [(40, 2.5)],
            "$TEXTSTYLE": [(7, self.standard("Standard"))],
            "$CLAYER": [(8, "0")],
            "$CELTYPE": [(6, self.standard("ByLayer"))],
            "$CECOLOR": [(62, 256)],
            "$DIMSTYLE": [(2, self.standard("Standard"))],
            "$HANDLING": [(70, int(self._has_handles))],
            "$HANDSEED": [(5, "0")],
            "$TILEMODE": [(70, 1)],
            "$UCSNAME": [(2, "")],
            "$UCSORG": at(10, origin),
            "$UCSXDIR": at(10, x_axis),
            "$UCSYDIR": at(10, y_axis),
            "$PUCSNAME": [(2, "")],
            "$PUCSORG": at(10, origin),
            "$PUCSXDIR": at(10, x_axis),
            "$PUCSYDIR": at(10, y_axis),
            "$MEASUREMENT": [(70, 1)],
            "$INSUNITS": [(70, 4)],
        }
        unknown = {"$HANDLING"} if self.version > Version.R12 else {"$MEASUREMENT"}
        unknown |= set() if self.version >= Version.R2000 else {"$INSUNITS"}
        unknown |= set() if self._has_handles else {"$HANDSEED"}
        return {name: tags for name, tags in header.items() if name not in unknown}

    # --- tables ---

    def entry(self, table: str, name: str, flags: int, body: Sequence[Tag] = ()) -> Record:
        owner = self.tables[table]
        record = self._record(table, owner.handle)
        record.handle_code = 105 if table == "DIMSTYLE" else 5
        record.body = [(100, "AcDbSymbolTableRecord"),
                       (100, f"AcDb{_ENTRY_CLASSES[table]}TableRecord"), (2, name)]
        if table != "BLOCK_RECORD":
            record.body.append((70, flags))
        record.body += body
        if self.version < Version.R13:
            record.handle = None
        owner.entries.append(record)
        return record

    def layer(self, name: str, color: int = 7, linetype: str = "Continuous", *, flags: int = 0,
              weight: int = -3) -> Record:
        """A negative colour is that of a layer that is off; flags: 1 frozen, 4 locked."""
        body: list[Tag] = [(62, color), (6, self.standard(linetype))]
        if self.version >= Version.R2000:
            body.append((370, weight))
        return self.entry("LAYER", name, flags, body)

    def linetype(self, name: str, description: str, dashes: Sequence[float] = ()) -> Record:
        body: list[Tag] = [(3, description), (72, 65), (73, len(dashes)),
                           (40, sum(abs(dash) for dash in dashes))]
        for dash in dashes:
            body.append((49, dash))
            if self.version >= Version.R13:
                body.append((74, 0))
        return self.entry("LTYPE", name, 0, body)

    def text_style(self, name: str, font: str, *, width: float = 1.0, slope: float = 0.0) -> Record:
        return self.entry("STYLE", name, 0, [
            (40, 0.0), (41, width), (50, slope), (71, 0), (42, 2.5), (3, font), (4, "")])

    def application(self, name: str) -> None:
        names = (str(tag[1]).lower() for entry in self.tables["APPID"].entries
                 for tag in entry.body if tag[0] == 2)
        if name.lower() not in names:
            self.entry("APPID", name, 0)

    def attach(self, record: Record, application: str, *tags: Tag) -> None:
        """Extended data."""
        self.application(application)
        record.extended += [(1001, application), *tags]

    def _add_standard_entries(self) -> None:
        self.entry("VPORT", self.standard("*Active"), 0, [
            *at(10, (0, 0)), *at(11, (1, 1)), *at(12, (210, 148.5)), *at(13, (0, 0)),
            *at(14, (10, 10)), *at(15, (10, 10)), *at(16, (0, 0, 1)), *at(17, (0, 0, 0)),
            (40, 297.0), (41, 1.5), (42, 50.0), (43, 0.0), (44, 0.0), (50, 0.0), (51, 0.0),
            (71, 0), (72, 1000), (73, 1), (74, 3), (75, 0), (76, 0), (77, 0), (78, 0)])
        if self.version >= Version.R13:
            self.linetype(self.standard("ByBlock"), "")
            self.linetype(self.standard("ByLayer"), "")
        self.linetype(self.standard("Continuous"), "Solid line")
        self.layer("0")
        self.text_style(self.standard("Standard"), "txt")
        self.application("ACAD")
        self.dimension_style(self.standard("Standard"))

    def look_at(self, centre: Point, height: float) -> None:
        """What the window shows when the drawing is opened."""
        record = self.tables["VPORT"].entries[0]
        new = dict([*at(12, centre[:2]), (40, height)])
        record.body = [(code, new.get(code, value)) for code, value in record.body]

    def dimension_style(self, name: str, scale: float = 1.0, decimals: int = 2) -> None:
        """One in millimetres on paper; dimensions that come behind have it."""
        # Up to R14 groups 5 to 7 are names of arrow blocks; the handle stands in 105.
        arrows: list[Tag] = [(code, "") for code in (3, 4, 5, 6, 7)]
        body = [] if self.version >= Version.R2000 else arrows
        body += [(40, scale)] if scale != 1.0 else []
        body += [(41, 2.5), (42, 0.625), (43, 3.75), (44, 1.25), (73, 0), (74, 0), (77, 1),
                 (78, 8), (140, 2.5), (141, 2.5), (147, 0.625), (171, 3), (172, 1)]
        if self.version >= Version.R2000:
            body += [(271, decimals), (272, decimals), (278, 44)]
        self.entry("DIMSTYLE", name, 0, body)
        self._dimension_style = name

    # --- blocks ---

    def _add_space(self, name: str, base: Point = (0.0, 0.0, 0.0), paper: bool = False) -> Space:
        record = self.entry("BLOCK_RECORD", name, 0)
        owner = record.handle
        frame: list[Tag] = [(100, "AcDbEntity"), *([(67, 1)] if paper else []), (8, "0")]
        begin = self._record("BLOCK", owner)
        begin.body = [*frame, (100, "AcDbBlockBegin"), (2, name), (70, 0), *at3(10, base),
                      (3, name), (1, "")]
        end = self._record("ENDBLK", owner, [*frame, (100, "AcDbBlockEnd")])
        if self.version < Version.R13:
            begin.handle = None
        space = Space(name, record, begin, end, base, paper)
        self.blocks.append(space)
        return space

    def block(self, name: str, base: Point = (0.0, 0.0, 0.0)) -> Space:
        """A name with a star at its beginning is that of an anonymous block."""
        space = self._add_space(name, base)
        if self.version >= Version.R2000:
            space.record.body.append((340, "0"))
        self._set_block_flag(space, int(name.startswith("*")))
        return space

    @staticmethod
    def _set_block_flag(space: Space, flag: int) -> None:
        body = space.begin.body
        place = next(i for i, tag in enumerate(body) if tag[0] == 70)
        body[place] = (70, int(body[place][1]) | flag)

    # --- entities ---

    def add(self, space: Space, kind: str, body: Sequence[Tag], layer: str = "0") -> Record:
        """An entity; the body begins with the subclass of its type."""
        record = self._record(kind, space.record.handle, self._entity_frame(space, layer))
        record.body += body
        space.entities.append(record)
        return record

    @staticmethod
    def _entity_frame(space: Space, layer: str) -> list[Tag]:
        return [(100, "AcDbEntity"), *([(67, 1)] if space.paper else []), (8, layer)]

    def _part(self, owner: Record, kind: str, space: Space, body: Sequence[Tag],
              layer: str) -> None:
        record = self._record(kind, owner.handle, [*self._entity_frame(space, layer), *body])
        owner.parts.append(record)

    def line(self, space: Space, start: Point, end: Point, layer: str = "0") -> Record:
        return self.add(space, "LINE", [(100, "AcDbLine"), *at3(10, start), *at3(11, end)], layer)

    def circle(self, space: Space, centre: Point, radius: float, layer: str = "0") -> Record:
        return self.add(space, "CIRCLE", [(100, "AcDbCircle"), *at3(10, centre), (40, radius)],
                        layer)

    def arc(self, space: Space, centre: Point, radius: float, angles: tuple[float, float],
            layer: str = "0") -> Record:
        return self.add(space, "ARC", [
            (100, "AcDbCircle"), *at3(10, centre), (40, radius),
            (100, "AcDbArc"), (50, angles[0]), (51, angles[1])], layer)

    def text(self, space: Space, place: Point, height: float, text: str | bytes, *,
             layer: str = "0", angle: float = 0.0, style: str | None = None) -> Record:
        body = self._text_body(place, height, text, angle, style)
        return self.add(space, "TEXT", [*body, (100, "AcDbText")], layer)

    def _text_body(self, place: Point, height: float, text: str | bytes, angle: float,
                   style: str | None) -> list[Tag]:
        body: list[Tag] = [(100, "AcDbText"), *at3(10, place), (40, height), (1, text)]
        if angle != 0.0:
            body.append((50, angle))
        if style is not None:
            body.append((7, style))
        return body

    def mtext(self, space: Space, place: Point, height: float, text: str, *, width: float = 0.0,
              layer: str = "0") -> Record:
        """From R13 on. The text has the codes of such texts, as "\\P" for a new line."""
        pieces = [text[i : i + 250] for i in range(0, len(text), 250)] or [""]
        body: list[Tag] = [(100, "AcDbMText"), *at3(10, place), (40, height), (41, width), (71, 1),
                           (72, 1), *((3, piece) for piece in pieces[:-1]), (1, pieces[-1])]
        return self.add(space, "MTEXT", body, layer)

    def outline(self, space: Space, points: Sequence[Point], layer: str = "0", *,
                closed: bool = False) -> Record:
        """The lightweight polyline, from R14 on; a third coordinate is a vertex' bulge."""
        body: list[Tag] = [(100, "AcDbPolyline"), (90, len(points)), (70, int(closed)), (43, 0.0)]
        for point in points:
            body += [*at(10, point[:2]), *((42, bulge) for bulge in point[2:])]
        return self.add(space, "LWPOLYLINE", body, layer)

    def polyline(self, space: Space, points: Sequence[Point], layer: str = "0", *,
                 closed: bool = False, spatial: bool = False) -> Record:
        """The polyline whose vertices are records of their own."""
        name = "AcDb3dPolyline" if spatial else "AcDb2dPolyline"
        vertex = "AcDb3dPolylineVertex" if spatial else "AcDb2dVertex"
        flags = int(closed) | (8 if spatial else 0)
        record = self.add(space, "POLYLINE", [(100, name), (66, 1), *at3(10, (0.0, 0.0)),
                                              (70, flags)], layer)
        for point in points:
            body = [(100, "AcDbVertex"), (100, vertex), *at3(10, point), (70, 32 if spatial else 0)]
            self._part(record, "VERTEX", space, body, layer)
        self._part(record, "SEQEND", space, [], layer)
        return record

    def hatch(self, space: Space, points: Sequence[Point], layer: str = "0") -> Record:
        """The area within a line around it, filled; from R14 on."""
        boundary = [tag for point in points for tag in at(10, point)]
        return self.add(space, "HATCH", [
            (100, "AcDbHatch"), *at(10, (0, 0, 0)), *at(210, (0, 0, 1)), (2, "SOLID"), (70, 1),
            (71, 0), (91, 1), (92, 3), (72, 0), (73, 1), (93, len(points)), *boundary, (97, 0),
            (75, 1), (76, 1), (98, 1), *at(10, points[0])], layer)

    def dimension(self, space: Space, ends: tuple[Point, Point], text_at: Point, picture: Space, *,
                  upright: bool = False, layer: str = "0") -> Record:
        """Of the horizontal or vertical distance. The text is on the dimension line, which an
        anonymous block draws with all the rest."""
        axis = int(upright)
        on_line = (text_at[0], ends[1][1]) if upright else (ends[1][0], text_at[1])
        body: list[Tag] = [(100, "AcDbDimension")]
        if self.version >= Version.R2010:
            body.append((280, 0))
        body += [(2, picture.name), *at3(10, on_line), *at3(11, text_at),
                 (70, 32 if self.version >= Version.R13 else 0)]
        if self.version >= Version.R2000:
            body += [(71, 5), (42, abs(ends[1][axis] - ends[0][axis]))]
        body += [(3, self._dimension_style), (100, "AcDbAlignedDimension"), *at3(13, ends[0]),
                 *at3(14, ends[1]), (50, 90.0 if upright else 0.0), (100, "AcDbRotatedDimension")]
        return self.add(space, "DIMENSION", body, layer)

    def attribute_definition(self, block: Space, definition: AttributeDefinition) -> Record:
        d = definition
        body = self._text_body(d.at, d.height, d.text, d.angle, d.style)
        own: list[Tag] = [(3, d.prompt), (2, d.tag), (70, d.flags)]
        body += self._attribute_body("AcDbAttributeDefinition", own)
        block.definitions.append(d)
        self._set_block_flag(block, 2)
        return self.add(block, "ATTDEF", body, d.layer)

    def _attribute_body(self, subclass: str, own: list[Tag]) -> list[Tag]:
        if self.version < Version.R2010:
            return [(100, subclass), *own]
        return [(100, subclass), (280, 0), *own, (280, 1)]

    def insert(self, space: Space, block: Space, place: Point,
               values: Mapping[str, str] | None = None, *, how: Placing | None = None,
               layer: str = "0") -> Record:
        """A block reference with the attributes that its block prescribes, but no constant ones."""
        how = how or Placing()
        definitions = [d for d in block.definitions if not d.flags & 2]
        body: list[Tag] = [(100, "AcDbMInsertBlock" if how.grid else "AcDbBlockReference")]
        body += [(66, 1)] if definitions else []
        body += [(2, block.name), *at3(10, place)]
        body += [(41 + axis, s) for axis, s in enumerate(how.scale) if how.scale != (1, 1, 1)]
        body += [(50, how.angle)] if how.angle else []
        if how.grid:
            body += [(70, how.grid[0]), (71, how.grid[1]), (44, how.grid[2]), (45, how.grid[3])]
        body += at(210, how.normal) if how.normal else []
        record = self.add(space, "INSERT", body, layer)
        for definition in definitions:
            text = (values or {}).get(definition.tag, definition.text)
            placed = _placed(replace(definition, text=text), block.base, place, how)
            self._attribute(record, space, replace(placed, layer=layer), how)
        if definitions:
            self._part(record, "SEQEND", space, [], layer)
        return record

    def _attribute(self, owner: Record, space: Space, placed: AttributeDefinition,
                   how: Placing) -> None:
        body = self._text_body(placed.at, placed.height, placed.text, placed.angle, placed.style)
        body += at(210, how.normal) if how.normal else []
        body += self._attribute_body("AcDbAttribute", [(2, placed.tag), (70, placed.flags)])
        self._part(owner, "ATTRIB", space, body, placed.layer)

    # --- objects ---

    def dictionary(self, parent: Dictionary, name: str, *, hard: bool = False,
                   kind: str = "DICTIONARY") -> Dictionary:
        record = self._record(kind, parent.record.handle)
        record.reactors = [str(parent.record.handle)]
        made = Dictionary(record, hard=hard)
        parent.entries.append((name, str(record.handle)))
        self.objects.append(made)
        return made

    def extension(self, record: Record) -> Dictionary:
        """The extension dictionary of a record, which it must not have yet."""
        made = Dictionary(self._record("DICTIONARY", record.handle), hard=True)
        record.extension = made.record.handle
        self.objects.append(made)
        return made

    def object(self, parent: Dictionary, name: str, kind: str, body: Sequence[Tag]) -> Record:
        record = self._record(kind, parent.record.handle, body)
        record.reactors = [str(parent.record.handle)]
        parent.entries.append((name, str(record.handle)))
        self.objects.append(record)
        return record

    def xrecord(self, parent: Dictionary, name: str, *tags: Tag) -> Record:
        cloning: list[Tag] = [(280, 1)] if self.version >= Version.R2000 else []
        return self.object(parent, name, "XRECORD", [(100, "AcDbXrecord"), *cloning, *tags])

    def settings(self, file: str, tree: Mapping[str, str | Mapping[str, str]]) -> None:
        """Settings of an add-on: a text stands above the first chapter, a mapping is a chapter."""
        root = next((o for o in self.objects if isinstance(o, Dictionary)
                     and ("KVR_INI_ROOT", o.record.handle) in self.root.entries), None)
        root = root or self.dictionary(self.root, "KVR_INI_ROOT")
        files = self.dictionary(root, file.upper())
        for name, value in tree.items():
            if isinstance(value, str):
                self.xrecord(files, name, (1, value))
                continue
            chapter = self.dictionary(files, chapter_key(name))
            for ident, text in value.items():
                self.xrecord(chapter, ident, (1, text))

    def _add_standard_objects(self) -> None:
        self.objects.append(self.root)
        self.dictionary(self.root, "ACAD_GROUP")
        if self.version >= Version.R2000:
            self._layouts = self.dictionary(self.root, "ACAD_LAYOUT")
        styles = self.dictionary(self.root, "ACAD_MLINESTYLE")
        by_layer: list[Tag] = [(62, 256), (6, "BYLAYER")]
        self.object(styles, self.standard("Standard"), "MLINESTYLE", [
            (100, "AcDbMlineStyle"), (2, "STANDARD"), (70, 0), (3, ""), (62, 256), (51, 90.0),
            (52, 90.0), (71, 2), (49, 0.5), *by_layer, (49, -0.5), *by_layer])
        if self.version < Version.R2000:
            return
        plots = self.dictionary(self.root, "ACAD_PLOTSTYLENAME", kind="ACDBDICTIONARYWDFLT")
        normal = self.object(plots, "Normal", "ACDBPLACEHOLDER", [])
        plots.tail = [(100, "AcDbDictionaryWithDefault"), (340, str(normal.handle))]
        for layer in self.tables["LAYER"].entries:
            layer.body.append((390, str(normal.handle)))
        self._add_layout("Model", self.model)
        self._add_layout(self._sheet.layout, self.paper)

    def _add_layout(self, name: str, space: Space) -> Layout:
        paper, size = space.paper, self._sheet.size
        record = self.object(self._layouts, name, "LAYOUT", [
            (100, "AcDbPlotSettings"), (1, ""), (2, "none_device"),
            (4, self._sheet.paper), (6, ""), (40, 7.5), (41, 20.0), (42, 7.5),
            (43, 20.0), (44, size[0]), (45, size[1]), (46, 0.0), (47, 0.0), (48, 0.0), (49, 0.0),
            (140, 0.0), (141, 0.0), (142, 1.0), (143, 1.0), (70, 688 if paper else 1712), (72, 1),
            (73, 0), (74, 5 if paper else 0), (7, ""), (75, 16), (147, 1.0), (148, 0.0),
            (149, 0.0), (100, "AcDbLayout"), (1, name), (70, 1), (71, len(self.layouts)),
            *at(10, (0, 0)), *at(11, size), *at(12, (0, 0, 0)), *at(14, (0, 0, 0)),
            *at3(15, size), (146, 0.0), *at(13, (0, 0, 0)), *at(16, (1, 0, 0)),
            *at(17, (0, 1, 0)), (76, 0), (330, str(space.record.handle))])
        space.record.body.append((340, str(record.handle)))
        self.layouts[name] = Layout(name, record, space)
        return self.layouts[name]

    def layout(self, name: str) -> Layout:
        """One more layout, from R2000 on; the first, with self.paper, is there already."""
        number = len(self.layouts) - 2
        return self._add_layout(name, self._add_space(f"*Paper_Space{number}", paper=True))

    def viewport(self, space: Space, number: int, centre: Point, size: tuple[float, float], *,
                 view: Point = (0.0, 0.0), view_height: float = 297.0,
                 direction: Point = (0.0, 0.0, 1.0), layer: str = "0") -> Record:
        """Number 1 is the paper itself, others are windows on the model."""
        body = [(100, "AcDbViewport"), *at3(10, centre), (40, size[0]), (41, size[1]),
                (68, number), (69, number)]
        if self.version < Version.R2000:
            record = self.add(space, "VIEWPORT", body, layer)
            self.attach(record, "ACAD", *_old_view(view, view_height, direction))
            return record
        body += [*at(12, view[:2]), *at(13, (0, 0)), *at(14, (10, 10)), *at(15, (10, 10)),
                 *at(16, direction), *at(17, (0, 0, 0)), (42, 50.0), (43, 0.0), (44, 0.0),
                 (45, view_height), (50, 0.0), (51, 0.0), (72, 1000), (90, 819232), (1, ""),
                 (281, 0), (71, 1), (74, 0), *at(110, (0, 0, 0)), *at(111, (1, 0, 0)),
                 *at(112, (0, 1, 0)), (79, 0), (146, 0.0)]
        return self.add(space, "VIEWPORT", body, layer)

    # --- the whole ---

    def tags(self) -> Iterator[Tag]:
        tags = self._all_tags()
        return _as_r12(tags) if self.version < Version.R13 else tags

    def _all_tags(self) -> Iterator[Tag]:
        yield from ((999, comment) for comment in self.comments)
        yield from _section("HEADER", self._header_tags())
        if self.version >= Version.R13:
            yield from _section("CLASSES", (tag for tags in self.classes for tag in tags))
        yield from _section("TABLES", self._table_tags())
        yield from _section("BLOCKS", self._block_tags())
        entities = [*self.model.entities, *self.paper.entities]
        yield from _section("ENTITIES", (tag for entity in entities for tag in entity.tags()))
        if self.version >= Version.R13:
            yield from _section("OBJECTS", self._object_tags())
        for name, tags in self.sections:
            yield from _section(name, tags)
        yield 0, "EOF"

    def _header_tags(self) -> Iterator[Tag]:
        for name, tags in self.header.items():
            yield 9, name
            if name == "$HANDSEED" and tags == [(5, "0")]:
                yield 5, self.seed
            else:
                yield from tags

    def _table_tags(self) -> Iterator[Tag]:
        for table in self.tables.values():
            if table.name == "BLOCK_RECORD" and self.version < Version.R13:
                continue
            yield from ((0, "TABLE"), (2, table.name))
            if table.handle is not None:
                yield 5, table.handle
                yield 330, "0"
                yield 100, "AcDbSymbolTable"
            yield 70, len(table.entries)
            if table.name == "DIMSTYLE" and self.version >= Version.R2000:
                yield 100, "AcDbDimStyleTable"
                yield 71, 0
            for entry in table.entries:
                yield from entry.tags()
            yield 0, "ENDTAB"

    def _block_tags(self) -> Iterator[Tag]:
        listed = (self.model, self.paper)
        for block in self.blocks:
            if block in listed and self.version < Version.R13:
                continue
            yield from block.begin.tags()
            if block not in listed:
                yield from (tag for entity in block.entities for tag in entity.tags())
            yield from block.end.tags()

    def _object_tags(self) -> Iterator[Tag]:
        for thing in self.objects:
            if isinstance(thing, Dictionary):
                yield from thing.tags(self.version)
            else:
                yield from thing.tags()

    def add_class(self, kind: str, name: str, application: str, *, entity: bool) -> None:
        """A class that the program which reads the drawing need not know."""
        count: list[Tag] = [(91, 1)] if self.version >= Version.R2004 else []
        self.classes.append([(0, "CLASS"), (1, kind), (2, name), (3, application), (90, 0), *count,
                             (280, 0), (281, int(entity))])

    def packed(self, form: Form = TextForm()) -> bytes:
        return form.pack(self.tags(), self.version, self.encoding)

    def save(self, path: Path, form: Form = TextForm()) -> None:
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(self.packed(form))


def _section(name: str, tags: Iterable[Tag]) -> Iterator[Tag]:
    yield from ((0, "SECTION"), (2, name))
    yield from tags
    yield 0, "ENDSEC"


def chapter_key(chapter: str) -> str:
    """The name of a chapter as a key: coded when it has a sign that no key may have."""
    if not set(chapter) & set("<>/\\\"\u00b4`:;?*|,='"):
        return chapter
    return "XX_HEX_0x" + chapter.encode("utf-16-le").hex()


def _placed(definition: AttributeDefinition, base: Point, place: Point,
            how: Placing) -> AttributeDefinition:
    """An attribute where the reference puts it, in the plane of the reference."""
    turn = math.radians(how.angle)

    def moved(x: float, y: float) -> tuple[float, float]:
        x, y = x * how.scale[0], y * how.scale[1]
        return (x * math.cos(turn) - y * math.sin(turn), x * math.sin(turn) + y * math.cos(turn))

    slope = math.radians(definition.angle)
    along = moved(math.cos(slope), math.sin(slope))
    x, y = moved(definition.at[0] - base[0], definition.at[1] - base[1])
    return replace(definition,
                   at=(round(place[0] + x, 9), round(place[1] + y, 9), (*place, 0.0)[2]),
                   height=definition.height * abs(how.scale[1]),
                   angle=round(math.degrees(math.atan2(along[1], along[0])) % 360.0, 9))


def _old_view(view: Point, height: float, direction: Point) -> list[Tag]:
    """What a viewport shows, as versions before R2000 keep it."""
    view3 = [(1010, 0.0), (1020, 0.0), (1030, 0.0), *at(1010, direction)]
    return [(1000, "MVIEW"), (1002, "{"), (1070, 16), *view3, (1040, 0.0), (1040, height),
            (1040, view[0]), (1040, view[1]), (1040, 50.0), (1040, 0.0), (1040, 0.0), (1070, 0),
            (1070, 1000), (1070, 1), (1070, 3), (1070, 0), (1070, 0), (1070, 0), (1070, 0),
            (1040, 0.0), (1040, 0.0), (1040, 0.0), (1040, 10.0), (1040, 10.0), (1040, 10.0),
            (1040, 10.0), (1070, 0), (1002, "{"), (1002, "}"), (1002, "}")]
