#pragma once

// The lines of the files that the model is made of. All of this works on UTF-8.

#include <optional>
#include <string>
#include <string_view>

namespace corma {

/// A chapter name of more characters is cut.
inline constexpr std::size_t kLongestChapter = 256;

/// A line that normalisedLine() shortens is cut at so many characters.
inline constexpr std::size_t kLongestNormalisedLine = 255;

/// A longer line of a project file is taken in pieces, each a line of its own. The line feed
/// counts.
inline constexpr std::size_t kLongestProjectPiece = 254;

/// Takes the lines of a text, which end in LF or CR LF.
class ModelLines
{
public:
    explicit ModelLines(std::string_view text)
        : m_rest(text)
    {
    }

    /// The next line without its end, or the next piece of a line of more than mostCharacters
    /// characters; false behind the last one.
    bool next(std::string_view& line);
    bool nextPiece(std::string_view& piece, std::size_t mostCharacters);

    /// The number of the line or piece that came last, 0 for the first.
    [[nodiscard]] int number() const { return m_number; }

private:
    std::string_view m_rest;
    int m_number = -1;
};

/// True for an empty line and for one that begins with ";", a blank or a tab.
bool isIgnored(std::string_view line);

/// What stands between the "[" that a header begins with and the first "]"; nothing without one.
/// At most kLongestChapter characters of it.
std::optional<std::string_view> chapterOf(std::string_view header);

/// What stands before and behind the first "=".
struct ModelEntry
{
    std::string_view ident;
    std::string_view value;
};

std::optional<ModelEntry> splitEntry(std::string_view line);

/// A line without line feeds and, up to and with the first character behind its first "=", without
/// blanks: "a b = c d" becomes "ab=c d". One that begins with a blank or a tab keeps its blanks.
/// At most kLongestNormalisedLine characters of the result.
std::string normaliseLine(std::string_view line);

/// The lines of one file that are none. The first is told in a message box, the others are not.
class SkippedLines
{
public:
    /// The kind is "ini", "inr", "ind" or "ipr".
    explicit SkippedLines(const wchar_t* kind)
        : m_kind(kind)
    {
    }

    /// A line lacks a character, "]" or "=".
    void add(wchar_t missing, std::string_view line, int number);

    /// At the end of the file.
    void tell() const;

private:
    const wchar_t* m_kind;
    std::wstring m_message;
};

/// The text that tells of a skipped line.
std::wstring skippedLineMessage(wchar_t missing, const wchar_t* kind, int number,
                                std::string_view line);

} // namespace corma
