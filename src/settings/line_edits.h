#pragma once

// Which bytes of a configuration file change when a setting is written or removed. All of it works
// on UTF-8, and on whole files without their marks.

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace corma {

/// The text with other bytes in the place of some. Its last line gets an end, unless the edit says
/// otherwise: every line of a file that was written has one.
struct TextEdit
{
    std::size_t begin = 0; // offsets of what goes
    std::size_t end = 0;
    std::string inserted {}; // what comes in its place
    std::string_view lastLineEnd {}; // behind all

    /// The new text in pieces, which are views of the edit and of the former text.
    [[nodiscard]] std::array<std::string_view, 4> appliedTo(std::string_view text) const
    {
        return {text.substr(0, begin), inserted, text.substr(end), lastLineEnd};
    }
};

/// A setting as it stands in a file. Names compare exactly.
struct SettingLine
{
    std::string_view category; // "Algemeen" for the head of the file
    std::string_view ident;
    std::string_view value; // a line feed in it makes a line
};

enum class Adding
{
    no,
    yes
};

/// The edit that gives a setting its value: in the line "ident=..." of its chapter, which must
/// begin so; else, when that may be added, in a line before the next header; behind the header, or
/// in the head of the file behind the first line, when the chapter ends with the file; or in a
/// chapter of its own at the end, the last line of which has no end.
TextEdit editToWrite(std::string_view text, std::string_view lineEnd, const SettingLine& setting,
                     Adding adding);

/// The edit that takes out the first line of a chapter that begins with a name, be it of a longer
/// ident (test: RemovingTakesTheFirstLineThatBeginsWithTheName). Nothing when there is none.
std::optional<TextEdit> editToRemove(std::string_view text, std::string_view lineEnd,
                                     std::string_view category, std::string_view name);

/// The edit that takes out the first header that begins with a name, be it a longer one. Nothing
/// when there is none.
std::optional<TextEdit> editToRemoveHeader(std::string_view text, std::string_view lineEnd,
                                           std::string_view category);

/// The edit that leaves all lines as they are.
TextEdit editOfNothing(std::string_view text, std::string_view lineEnd);

} // namespace corma
