"""The plan of the house of the example: ground floor, lengths in millimetres on the building."""

from __future__ import annotations

from dataclasses import dataclass
from typing import Sequence

from dxf_writer import AttributeDefinition, Drawing, Placing, Point, Space, Version

WIDTH, DEPTH, WALL, PARTITION = 9600.0, 7800.0, 415.0, 100.0
PAPER_SCALE = 50.0

# Name, colour, linetype and weight as the office has them: norm/lagen.ini, then plattegrond.ini.
LAYERS = (
    ("00-STRAMIEN", 1, "CENTER", 18), ("00-MAAT", 3, "CONTINUOUS", 18),
    ("00-TEKST", 7, "CONTINUOUS", 25), ("00-RUIMTE", 8, "CONTINUOUS", 13),
    ("00-ARCERING", 8, "CONTINUOUS", 13), ("00-SYMBOOL", 7, "CONTINUOUS", 18),
    ("00-KADER", 7, "CONTINUOUS", 70), ("21-BUITENWAND", 2, "CONTINUOUS", 70),
    ("22-BINNENWAND", 3, "CONTINUOUS", 35), ("31-KOZIJN", 4, "CONTINUOUS", 25),
    ("73-KEUKEN", 252, "CONTINUOUS", 13), ("74-SANITAIR", 252, "CONTINUOUS", 13),
)


def add_layers(drawing: Drawing) -> None:
    drawing.linetype("CENTER", "Center ____ _ ____ _ ____", [31.75, -6.35, 6.35, -6.35])
    for name, color, linetype, weight in LAYERS:
        linetype = "Continuous" if linetype == "CONTINUOUS" else linetype
        drawing.layer(name, color, linetype, weight=weight)
    drawing.text_style("NK_NORMAAL", "romans.shx", width=0.85)
    drawing.text_style("NK_TITEL", "romans.shx", width=0.85)
    drawing.dimension_style("NK-MAAT", PAPER_SCALE, decimals=0)


def shape(drawing: Drawing, space: Space, points: Sequence[Point], layer: str) -> None:
    if drawing.version >= Version.R14:
        drawing.outline(space, points, layer, closed=True)
        return
    for begin, end in zip(points, [*points[1:], points[0]]):
        drawing.line(space, begin, end, layer)


def box(drawing: Drawing, space: Space, corner: Point, opposite: Point, layer: str) -> None:
    (left, low), (right, high) = corner, opposite
    shape(drawing, space, [(left, low), (right, low), (right, high), (left, high)], layer)


# --- blocks -------------------------------------------------------------------------------------


def single_door(drawing: Drawing, *, fire_rated: bool = False) -> Space:
    """Its origin is the hinge; the leaf stands open along y, the opening lies along x.

    A fire rated one has one more attribute.
    """
    door = drawing.block("PG-DEUR-ENKEL")
    box(drawing, door, (0, 0), (40, 930), "0")
    drawing.arc(door, (0, 0), 930.0, (0.0, 90.0))
    _door_attributes(drawing, door, "enkel", (120, 420))
    if fire_rated:
        drawing.attribute_definition(
            door, AttributeDefinition("WERING", "geen", (120, 540), 90.0, "Brandwering:"))
    return door


def double_door(drawing: Drawing) -> Space:
    door = drawing.block("PG-DEUR-DUBBEL")
    box(drawing, door, (0, 0), (40, 930), "0")
    drawing.arc(door, (0, 0), 930.0, (0.0, 90.0))
    box(drawing, door, (1820, 0), (1860, 930), "0")
    drawing.arc(door, (1860, 0), 930.0, (90.0, 180.0))
    _door_attributes(drawing, door, "dubbel", (120, 420))
    return door


def sliding_door(drawing: Drawing) -> Space:
    door = drawing.block("PG-DEUR-SCHUIF")
    box(drawing, door, (0, -20), (980, 20), "0")
    box(drawing, door, (930, 20), (1910, 60), "0")
    drawing.line(door, (1000, 160), (1500, 160))
    drawing.line(door, (1500, 160), (1400, 200))
    drawing.line(door, (1500, 160), (1400, 120))
    _door_attributes(drawing, door, "schuif", (120, 220))
    return door


def _door_attributes(drawing: Drawing, door: Space, kind: str, place: Point) -> None:
    x, y = place
    for definition in (
        AttributeDefinition("NUMMER", "D000", place, 125.0, "Nummer:"),
        AttributeDefinition("BREEDTE", "930", (x, y - 200), 90.0, "Breedte:", flags=1),
        AttributeDefinition("HOOGTE", "2315", (x, y - 320), 90.0, "Hoogte:", flags=9),
        AttributeDefinition("SOORT", kind, (x, y - 440), 90.0, "", flags=3),
    ):
        drawing.attribute_definition(door, definition)


def window(drawing: Drawing) -> Space:
    """1200 wide, in an outer wall; its origin is a corner of the opening, outside."""
    block = drawing.block("PG-RAAM")
    box(drawing, block, (0, 0), (1200, WALL), "0")
    box(drawing, block, (0, 150), (1200, 264), "0")
    drawing.line(block, (0, 207), (1200, 207))
    drawing.attribute_definition(
        block, AttributeDefinition("NUMMER", "K000", (80, WALL + 100), 125.0, "Nummer:"))
    return block


def toilet(drawing: Drawing) -> Space:
    block = drawing.block("PG-SAN-TOILET")
    box(drawing, block, (-180, 0), (180, 180), "0")
    drawing.line(block, (-180, 180), (-180, 380))
    drawing.arc(block, (0, 380), 180.0, (0.0, 180.0))
    drawing.line(block, (180, 380), (180, 180))
    return block


def north_arrow(drawing: Drawing) -> Space:
    block = drawing.block("PG-NOORDPIJL")
    drawing.circle(block, (0, 0), 400.0)
    shape(drawing, block, [(-200, -346), (0, 400), (200, -346), (0, -200)], "0")
    drawing.text(block, (-70, 480), 175.0, "N")
    return block


# Tag, text, prompt, height, x, y from the lower left corner of the title block.
TITLE_FIELDS = (
    ("PROJECT", "(naamloos)", "Project:", 5.0, 4.0, 38.0),
    ("TITEL", "Tekening", "Titel:", 3.5, 4.0, 28.0),
    ("NUMMER", "0000", "Projectnummer:", 2.5, 4.0, 17.0),
    ("SCHAAL", "1:100", "Schaal:", 2.5, 54.0, 17.0),
    ("DATUM", "", "Datum:", 2.5, 94.0, 17.0),
    ("GETEKEND", "", "Getekend door:", 2.5, 4.0, 4.0),
    ("BLAD", "1", "Blad:", 2.5, 134.0, 4.0),
)
TITLE_SIZE = (180.0, 50.0)


def draw_frame(drawing: Drawing, space: Space, size: tuple[float, float]) -> None:
    """A frame within the edges of a sheet, with a title block in its lower right corner."""
    left, low, right, high = 20.0, 10.0, size[0] - 10.0, size[1] - 10.0
    box(drawing, space, (left, low), (right, high), "00-KADER")
    x, width, height = right - TITLE_SIZE[0], *TITLE_SIZE
    box(drawing, space, (x, low), (right, low + height), "00-KADER")
    for y in (low + 12.0, low + 25.0):
        drawing.line(space, (x, y), (right, y), "00-KADER")
    for offset, y in ((50.0, 12.0), (90.0, 12.0), (130.0, 0.0)):
        top = low + (25.0 if y else 12.0)
        drawing.line(space, (x + offset, low + y), (x + offset, top), "00-KADER")
    for tag, text, prompt, size_of_text, dx, dy in TITLE_FIELDS:
        drawing.attribute_definition(space, AttributeDefinition(
            tag, text, (x + dx, low + dy), size_of_text, prompt, layer="00-TEKST"))
    drawing.attribute_definition(space, AttributeDefinition(
        "BUREAU", "Tekenbureau Noordkade", (x + 54.0, low + 4.0), 2.5, "", flags=2,
        layer="00-TEKST"))


# --- the plan -----------------------------------------------------------------------------------


@dataclass(frozen=True)
class Opening:
    """In the outer wall, by its distances along the wall from the lower left corner, against the
    clock; a door or, with a number, a window."""

    begin: float
    end: float
    window: str = ""


OPENINGS = (
    Opening(1200, 2130),
    Opening(4200, 5700, "K001"),
    Opening(6700, 8200, "K002"),
    Opening(WIDTH + 1500, WIDTH + 3300, "K003"),
    Opening(WIDTH + 5400, WIDTH + 6600, "K004"),
    Opening(WIDTH + DEPTH + 2200, WIDTH + DEPTH + 4000, "K005"),
    Opening(2 * WIDTH + DEPTH + 3000, 2 * WIDTH + DEPTH + 3800, "K006"),
)
CORNERS = ((0.0, (0.0, 0.0), (WALL, WALL)), (WIDTH, (WIDTH, 0.0), (WIDTH - WALL, WALL)),
           (WIDTH + DEPTH, (WIDTH, DEPTH), (WIDTH - WALL, DEPTH - WALL)),
           (2 * WIDTH + DEPTH, (0.0, DEPTH), (WALL, DEPTH - WALL)))
PERIMETER = 2 * (WIDTH + DEPTH)

# Lower left and upper right corner of each piece of an inner wall.
PARTITIONS = (
    ((3000, WALL), (3100, 1500)), ((3000, 2430), (3100, 5700)),
    ((3000, 6530), (3100, DEPTH - WALL)), ((WALL, 3400), (1000, 3500)),
    ((1830, 3400), (3000, 3500)), ((WALL, 5300), (3000, 5400)), ((3100, 4600), (6000, 4700)),
)


@dataclass(frozen=True)
class Room:
    name: str
    number: str
    corner: Point
    opposite: Point
    label: Point

    @property
    def area(self) -> float:
        (left, low), (right, high) = self.corner, self.opposite
        return (right - left) * (high - low) / 1e6


INNER_RIGHT, INNER_TOP = WIDTH - WALL, DEPTH - WALL
ROOMS = (
    Room("Hal", "0.01", (WALL, WALL), (3000, 3400), (700, 2700)),
    Room("Badkamer", "0.02", (WALL, 3500), (3000, 5300), (1060, 5000)),
    Room("Berging", "0.03", (WALL, 5400), (3000, INNER_TOP), (700, 6700)),
    Room("Woonkamer", "0.04", (3100, WALL), (INNER_RIGHT, 4600), (4900, 2700)),
    Room("Keuken", "0.05", (3100, 4700), (INNER_RIGHT, INNER_TOP), (4900, 6000)),
)


def on_ring(distance: float) -> tuple[Point, Point, float]:
    """The point outside and inside the outer wall at that distance, and the wall's direction."""
    side = max(i for i, corner in enumerate(CORNERS) if corner[0] <= distance)
    along, (x, y) = distance - CORNERS[side][0], CORNERS[side][1]
    dx, dy = ((1, 0), (0, 1), (-1, 0), (0, -1))[side]
    outside = (x + dx * along, y + dy * along)
    return outside, (outside[0] - dy * WALL, outside[1] + dx * WALL), 90.0 * side


def draw_outer_wall(drawing: Drawing) -> None:
    for opening, following in zip(OPENINGS, (*OPENINGS[1:], OPENINGS[0])):
        begin = opening.end
        end = following.begin + (PERIMETER if following.begin < begin else 0.0)
        turns = [corner for lap in (0.0, PERIMETER) for corner in CORNERS
                 if begin < corner[0] + lap < end]
        (first, first_inside, _), (last, last_inside, _) = on_ring(begin), on_ring(end % PERIMETER)
        outer = [first, *(corner[1] for corner in turns), last]
        inner = [first_inside, *(corner[2] for corner in turns), last_inside]
        piece = [*outer, *reversed(inner)]
        if drawing.version >= Version.R14:
            drawing.hatch(drawing.model, piece, "00-ARCERING")
        shape(drawing, drawing.model, piece, "21-BUITENWAND")


def draw_walls(drawing: Drawing) -> None:
    draw_outer_wall(drawing)
    for corner, opposite in PARTITIONS:
        box(drawing, drawing.model, corner, opposite, "22-BINNENWAND")


def draw_doors_and_windows(drawing: Drawing, door: Space, pane: Space) -> None:
    for number, place, angle, width in (
        ("D001", (1200, WALL), 0.0, 930), ("D002", (3100, 2430), 270.0, 930),
        ("D003", (1000, 3500), 0.0, 830), ("D004", (3000, 5700), 90.0, 830),
    ):
        factor = width / 930.0
        drawing.insert(drawing.model, door, place, {"NUMMER": number, "BREEDTE": str(width)},
                       how=Placing((factor, factor, 1.0), angle), layer="31-KOZIJN")
    for opening in OPENINGS:
        (begin, _, angle), (end, end_inside, _) = on_ring(opening.begin), on_ring(opening.end)
        if not opening.window:
            drawing.line(drawing.model, begin, end, "31-KOZIJN")
            continue
        # Turned by a half where its number would stand upside down.
        corner, angle = (begin, angle) if angle < 180.0 else (end_inside, angle - 180.0)
        how = Placing(((opening.end - opening.begin) / 1200.0, 1.0, 1.0), angle)
        drawing.insert(drawing.model, pane, corner, {"NUMMER": opening.window}, how=how,
                       layer="31-KOZIJN")


def draw_fittings(drawing: Drawing, seat: Space) -> None:
    model = drawing.model
    drawing.insert(model, seat, (WALL, 5000), how=Placing(angle=270.0), layer="74-SANITAIR")
    box(drawing, model, (2200, 4500), (3000, 5300), "74-SANITAIR")
    drawing.line(model, (2200, 4500), (3000, 5300), "74-SANITAIR")
    drawing.circle(model, (2600, 4900), 60.0, "74-SANITAIR")
    box(drawing, model, (2200, 3500), (2800, 3950), "74-SANITAIR")
    drawing.circle(model, (2500, 3730), 150.0, "74-SANITAIR")
    left, low = 5200.0, INNER_TOP - 600.0
    box(drawing, model, (left, low), (INNER_RIGHT, INNER_TOP), "73-KEUKEN")
    box(drawing, model, (6000, low + 100), (6800, low + 500), "73-KEUKEN")
    for x, y in ((7900, 170), (8300, 170), (7900, 430), (8300, 430)):
        drawing.circle(model, (x, low + y), 105.0, "73-KEUKEN")


def draw_room_names(drawing: Drawing) -> None:
    for room in ROOMS:
        x, y = room.label
        for text, height, style, step in ((room.name, 175.0, "NK_TITEL", 230.0),
                                          (room.number, 125.0, "NK_NORMAAL", 290.0),
                                          (f"{room.area:.2f} m²", 125.0, "NK_NORMAAL", 0.0)):
            drawing.text(drawing.model, (x, y), height, text, layer="00-RUIMTE", style=style)
            y -= step


def draw_grid(drawing: Drawing) -> None:
    for mark, x in (("1", 3050.0),):
        drawing.line(drawing.model, (x, -900), (x, DEPTH + 900), "00-STRAMIEN")
        _grid_mark(drawing, (x, DEPTH + 1150), mark)
    for mark, y in (("A", 4650.0),):
        drawing.line(drawing.model, (-900, y), (WIDTH + 900, y), "00-STRAMIEN")
        _grid_mark(drawing, (WIDTH + 1150, y), mark)


def _grid_mark(drawing: Drawing, centre: Point, mark: str) -> None:
    drawing.circle(drawing.model, centre, 250.0, "00-STRAMIEN")
    drawing.text(drawing.model, (centre[0] - 60, centre[1] - 85), 175.0, mark, layer="00-STRAMIEN")


def draw_dimensions(drawing: Drawing) -> None:
    chain = [0.0, 1200.0, 2130.0, 4200.0, 5700.0, 6700.0, 8200.0, WIDTH]
    for begin, end in zip(chain, chain[1:]):
        draw_dimension(drawing, (begin, end), -600.0, upright=False)
    draw_dimension(drawing, (0.0, WIDTH), -1000.0, upright=False)
    sides = [0.0, 4000.0, 4800.0, DEPTH]
    for begin, end in zip(sides, sides[1:]):
        draw_dimension(drawing, (begin, end), -600.0, upright=True)
    draw_dimension(drawing, (0.0, DEPTH), -1000.0, upright=True)


def draw_dimension(drawing: Drawing, span: tuple[float, float], offset: float, *,
                   upright: bool) -> None:
    """Along the lower or the left side of the house, at that distance from it."""

    def turned(along: float, across: float) -> Point:
        return (across, along) if upright else (along, across)

    number = sum(block.name.startswith("*D") for block in drawing.blocks) + 1
    picture = drawing.block(f"*D{number}")
    middle, text = sum(span) / 2, f"{span[1] - span[0]:.0f}"
    drawing.line(picture, turned(span[0], offset), turned(span[1], offset), "00-MAAT")
    for edge in span:
        drawing.line(picture, turned(edge, -100.0), turned(edge, offset - 75.0), "00-MAAT")
        drawing.line(picture, turned(edge - 50, offset - 50), turned(edge + 50, offset + 50),
                     "00-MAAT")
    half = 50.0 * len(text)
    place = (offset - 60.0, middle - half) if upright else (middle - half, offset + 60.0)
    drawing.text(picture, place, 125.0, text, layer="00-MAAT", angle=90.0 if upright else 0.0,
                 style="NK_NORMAAL")
    drawing.dimension(drawing.model, (turned(span[0], 0.0), turned(span[1], 0.0)),
                      turned(middle, offset), picture, upright=upright, layer="00-MAAT")


def draw_house(drawing: Drawing) -> None:
    door, pane, seat, arrow = (single_door(drawing), window(drawing), toilet(drawing),
                               north_arrow(drawing))
    draw_walls(drawing)
    draw_doors_and_windows(drawing, door, pane)
    draw_fittings(drawing, seat)
    draw_room_names(drawing)
    draw_grid(drawing)
    draw_dimensions(drawing)
    drawing.insert(drawing.model, arrow, (WIDTH + 1150, 700), how=Placing(angle=-27.5),
                   layer="00-SYMBOOL")
    if drawing.version >= Version.R13:
        drawing.mtext(drawing.model, (WIDTH + 500, 3300), 125.0,
                      "Renvooi\\PMaten in mm\\PPeil = bovenkant\\Pafgewerkte vloer",
                      width=2000.0, layer="00-TEKST")
