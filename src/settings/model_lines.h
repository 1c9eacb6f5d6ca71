#pragma once

// The lines of the files that the model is made of. All of this works on UTF-8.

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace corma {

/// A chapter name of more characters is cut.
inline constexpr std::size_t kLongestChapter = 256;

/// A line that normaliseLine() makes of more characters is cut.
inline constexpr std::size_t kLongestNormalisedLine = 255;

/// A line of a project file with more characters, its line feed among them, is taken in pieces,
/// each a line of its own.
inline constexpr std::size_t kLongestProjectLine = 254;

/// Takes the lines of a text, which end in LF or CR LF.
class ModelLines
{
public:
    explicit ModelLines(std::string_view text)
        : m_rest(text)
    {
    }

    /// The next line without its end; false behind the last one.
    bool next(std::string_view& line)
    {
        if (m_rest.empty()) {
            return false;
        }
        ++m_number;
        const std::size_t feed = m_rest.find('\n');
        const bool hasEnd = feed != std::string_view::npos;
        line = m_rest.substr(0, feed);
        m_rest.remove_prefix(hasEnd ? feed + 1 : m_rest.size());
        if (hasEnd && !line.empty() && line.back() == '\r') {
            line.remove_suffix(1);
        }
        return true;
    }

    /// The same, but of a line of more characters than that, the line feed among them, only so
    /// many; the rest of the line comes next.
    bool nextPiece(std::string_view& piece, std::size_t mostCharacters);

    /// The number of the line or piece that came last, 0 for the first.
    [[nodiscard]] int number() const { return m_number; }

private:
    std::string_view m_rest;
    int m_number = -1;
};

/// True for an empty line and for one that begins with ";", a blank or a tab.
inline bool isIgnored(std::string_view line)
{
    return line.empty() || line.front() == ';' || line.front() == ' ' || line.front() == '\t';
}

/// The text up to so many characters.
std::string_view cutAt(std::string_view text, std::size_t mostCharacters);

/// A line without line feeds and, up to and with the first character behind its first "=", without
/// blanks: "a b = c d" becomes "ab=c d". One that begins with a blank or a tab keeps its blanks.
/// At most kLongestNormalisedLine characters of the result; wasCut, unless null, tells whether
/// there were more.
std::string normaliseLine(std::string_view line, bool* wasCut = nullptr);

/// What stands before and behind the first "=".
struct ModelEntry
{
    std::string_view ident;
    std::string_view value;
};

std::optional<ModelEntry> splitEntry(std::string_view line);

/// The text that tells of a skipped line.
std::wstring skippedLineMessage(wchar_t missing, const wchar_t* kind, int number,
                                std::string_view line);

/// What is wrong with the lines of one file.
class Defects
{
public:
    /// The kind is "ini", "inr", "ind" or "ipr".
    explicit Defects(const wchar_t* kind)
        : m_kind(kind)
    {
    }

    /// A line lacks the character, "]" or "=", and is skipped.
    void addSkipped(wchar_t missing, std::string_view line, int number);

    /// A line, or the chapter name in it, is longer than what is kept of it.
    void addCut(int number);

    /// Tells the user of the first skipped line in a message box, and of the first line that was
    /// cut on the command line.
    void tell() const;

private:
    const wchar_t* m_kind;
    std::wstring m_skipped;
    std::wstring m_cut;
};

/// What stands between the "[" that a header begins with and the first "]", cut at kLongestChapter;
/// nothing, and a defect, without a "]".
std::optional<std::string_view> chapterOf(std::string_view header, int number, Defects& defects);

} // namespace corma
