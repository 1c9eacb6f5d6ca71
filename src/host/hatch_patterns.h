#pragma once

#include "host/definition_text.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corma::host {

/// A family of parallel lines, in drawing units.
struct HatchLines
{
    double angle = 0.0; // degrees, from the x axis to the left
    double x = 0.0; // where a dash of the first line begins
    double y = 0.0;
    double along = 0.0; // from one line to the next, in the direction of the lines
    double across = 0.0; // the same to their left, at least kSmallest
    std::vector<double> dashes = {}; // gaps negative, dots 0, not all 0; empty: unbroken
};

struct HatchPattern
{
    std::wstring name;
    std::wstring description;
    std::vector<HatchLines> families; // at least one

    /// A pattern of that name fills areas whole, whatever its lines.
    [[nodiscard]] bool isSolid() const;
};

/// A line of a pattern file that was skipped.
struct PatternDefect
{
    std::size_t line = 0; // from 1
    std::wstring expected;

    bool operator==(const PatternDefect&) const = default;
};

struct PatternFile
{
    std::vector<HatchPattern> patterns; // in the order of the file
    std::vector<PatternDefect> defects; // the same; no more than kMostDefects

    static constexpr std::size_t kMostDefects = 100;
    static constexpr std::size_t kLongestLine = 1000; // characters
    static constexpr std::size_t kLongestName = 255; // characters
    static constexpr std::size_t kMostDashes = 12; // of a family
    static constexpr std::size_t kMostFamilies = 1000; // of a pattern
    static constexpr double kLargest = 1e9; // of a number, without its sign
    static constexpr double kSmallest = 1e-9; // of a distance between lines, without its sign
};

/// Reads a pattern file: `*NAME,description` and below it a line for each family, its angle, x, y,
/// along, across and dashes with "," between. What stands behind ";" is a comment. A line that is
/// none of this is skipped, and so is a pattern that has no family then.
PatternFile parseHatchPatterns(std::wstring_view text);

/// The names of a pattern file for a list: of each line that begins with "*", whether a pattern
/// follows or not, the text up to the first ",", cut to 19 characters.
std::vector<std::wstring> hatchPatternNames(std::wstring_view text);

inline constexpr std::size_t kLongestListedName = 19; // characters

/// acadiso.pat where the variable MEASUREMENT is not 0, else acad.pat.
const wchar_t* standardPatternFile();

/// A pattern file of a path, or one that the host finds under a name, or the host's own one of that
/// name; nothing when it cannot be read.
std::optional<DefinitionFile> patternFile(const std::wstring& name);

enum class CustomPatterns
{
    hidden,
    shown
};

/// The patterns to choose from: those of the standard file, be it the one that the host finds or
/// else the host's own; shown custom ones are those of the other *.pat files in the support
/// folders, each with the one pattern that bears the name of its file, in the order of their names.
/// A name that comes again is left out. For each file with defects one message is printed.
std::vector<HatchPattern> loadHatchPatterns(CustomPatterns custom);

} // namespace corma::host
