#include "editor/hatch_swatch.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <optional>

namespace corma {

namespace {

using host::HatchLines;

constexpr double kFinest = 1.0 / 200; // of the side: what is closer cannot be told apart

struct Point
{
    double x = 0.0;
    double y = 0.0;

    friend Point operator+(Point a, Point b) { return {a.x + b.x, a.y + b.y}; }

    friend Point operator-(Point a, Point b) { return {a.x - b.x, a.y - b.y}; }

    friend Point operator*(double factor, Point a) { return {factor * a.x, factor * a.y}; }

    friend double dot(Point a, Point b) { return a.x * b.x + a.y * b.y; }
};

// A piece of a line, as distances from a point of it.
struct Range
{
    double begin;
    double end;
};

// The part of a line in the unit square, where it is in the band 0 to 1 of both coordinates.
std::optional<Range> inSquare(Point start, Point direction)
{
    Range range {-HUGE_VAL, HUGE_VAL};
    for (const auto [from, step] : {std::array {start.x, direction.x}, {start.y, direction.y}}) {
        if (step == 0.0) {
            if (from < 0.0 || from > 1.0) {
                return std::nullopt;
            }
            continue;
        }
        const double first = (0.0 - from) / step;
        const double second = (1.0 - from) / step;
        range.begin = std::max(range.begin, std::min(first, second));
        range.end = std::min(range.end, std::max(first, second));
    }
    return range.begin < range.end ? std::optional(range) : std::nullopt;
}

// Right angles have no rounding, so that level and upright lines are exactly that.
Point directionOf(double degrees)
{
    const double turned = std::fmod(degrees, 360.0);
    constexpr std::array kRight = {Point {1, 0}, Point {0, 1}, Point {-1, 0}, Point {0, -1}};
    const double quarter = turned / 90.0;
    if (quarter == std::floor(quarter)) {
        return kRight.at(static_cast<std::size_t>(quarter + 4.0) % kRight.size());
    }
    const double radians = turned * std::numbers::pi / 180.0;
    return {std::cos(radians), std::sin(radians)};
}

/// The lines of one family in the unit square.
class FamilyDrawing
{
public:
    FamilyDrawing(const HatchLines& family, double side, std::vector<SwatchLine>& lines)
        : m_lines(lines)
        , m_direction(directionOf(family.angle))
        , m_normal {-m_direction.y, m_direction.x}
        , m_origin {family.x / side, family.y / side}
        , m_along(family.along / side)
        , m_across(family.across / side)
    {
        if (std::abs(m_across) < kFinest) {
            m_across = kFinest;
            m_along = 0.0;
        }
        for (const double dash : family.dashes) {
            m_dashes.push_back(dash / side);
            m_period += std::abs(dash) / side;
        }
        if (m_period < kFinest) {
            m_dashes.clear();
        }
    }

    void draw()
    {
        double least = HUGE_VAL;
        double most = -HUGE_VAL;
        for (const Point corner : {Point {0, 0}, Point {1, 0}, Point {0, 1}, Point {1, 1}}) {
            const double number = dot(corner - m_origin, m_normal) / m_across;
            least = std::min(least, number);
            most = std::max(most, number);
        }
        // Counted, since far from the origin a number and the next one can be the same.
        constexpr double kMost = 2 / kFinest;
        const double first = std::ceil(least);
        const double count = std::min(std::floor(most - first), kMost);
        for (int i = 0; i <= count; ++i) {
            drawLine(first + i);
        }
    }

private:
    // Distances along the line are from its point nearest to the corner of the square, however far
    // away its own beginning is.
    void drawLine(double number)
    {
        const Point start = (dot(m_origin, m_normal) + number * m_across) * m_normal;
        const auto visible = inSquare(start, m_direction);
        if (!visible) {
            return;
        }
        if (m_dashes.empty()) {
            add(start, *visible);
            return;
        }
        const double begin = dot(m_origin, m_direction) + number * m_along;
        const double phase = std::fmod(begin, m_period);
        double position = phase + std::floor((visible->begin - phase) / m_period) * m_period;
        while (position < visible->end && m_lines.size() < kMostSwatchLines) {
            for (const double dash : m_dashes) {
                drawDash(start, {position, position + dash}, *visible);
                position += std::abs(dash);
            }
        }
    }

    // A gap ends before it begins.
    void drawDash(Point start, Range dash, Range visible)
    {
        const bool isDot = dash.begin == dash.end;
        const Range part {std::max(dash.begin, visible.begin), std::min(dash.end, visible.end)};
        if (dash.begin <= dash.end
            && (part.begin < part.end || (isDot && part.begin == part.end))) {
            add(start, part);
        }
    }

    void add(Point start, Range range)
    {
        if (m_lines.size() < kMostSwatchLines) {
            const Point a = start + range.begin * m_direction;
            const Point b = start + range.end * m_direction;
            m_lines.push_back({a.x, a.y, b.x, b.y});
        }
    }

    std::vector<SwatchLine>& m_lines;
    Point m_direction;
    Point m_normal; // to its left
    Point m_origin;
    double m_along;
    double m_across;
    std::vector<double> m_dashes;
    double m_period = 0.0;
};

} // namespace

double swatchSide(const host::HatchPattern& pattern)
{
    constexpr double kWidest = 6; // repetitions of the widest family
    constexpr double kNarrowest = 10; // and, where families differ much, of the narrowest
    double least = HUGE_VAL;
    double most = 0.0;
    for (const HatchLines& family : pattern.families) {
        least = std::min(least, std::abs(family.across));
        most = std::max(most, std::abs(family.across));
    }
    return pattern.families.empty() ? 1.0 : std::min(kWidest * most, kNarrowest * least);
}

host::HatchPattern turnedAndScaled(host::HatchPattern pattern, double degrees, double scale)
{
    const Point xAxis = directionOf(degrees);
    const Point yAxis {-xAxis.y, xAxis.x};
    for (HatchLines& family : pattern.families) {
        const Point origin = scale * (family.x * xAxis + family.y * yAxis);
        family.angle += degrees;
        family.x = origin.x;
        family.y = origin.y;
        family.along *= scale;
        family.across *= scale;
        for (double& dash : family.dashes) {
            dash *= scale;
        }
    }
    return pattern;
}

std::vector<SwatchLine> swatchLines(const host::HatchPattern& pattern, double side)
{
    std::vector<SwatchLine> lines;
    for (const HatchLines& family : pattern.families) {
        FamilyDrawing(family, side, lines).draw();
    }
    return lines;
}

} // namespace corma
