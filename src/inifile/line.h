#pragma once

// The lines of a configuration file: what a line is, which lines count, and what stands in them.
// Every reader of such a file goes through these.

#include "foundation/text_file.h"
#include "inifile/Ident.h"
#include "inifile/words.h"

#include <cstring>
#include <optional>
#include <string_view>

namespace corma {

/// A longer line is taken in pieces, each a line of its own.
inline constexpr std::size_t kLongestLine = 3000; // characters

/// A line without its line feed. A carriage return before that is still there: like every character
/// below 32 it ends what a reader sees of the line. It stands in the bytes of a TextFile, whose
/// padding allows to read it by words.
struct Line
{
    const char* begin;
    const char* end;
};

inline bool isControl(char c)
{
    return static_cast<unsigned char>(c) < 32;
}

/// Empty lines and lines with a leading blank do not count; the blank is the way to disable a line.
inline bool isSkipped(Line line)
{
    return line.begin == line.end || *line.begin == ' ' || *line.begin == '\0';
}

/// What a reader sees of the line: up to its first control character.
inline std::string_view visible(Line line)
{
    return {line.begin, firstControl(line.begin, line.end)};
}

/// The header "[chapter]" that a line is, if it is one.
inline std::optional<std::string_view> headerOf(Line line)
{
    const std::string_view text = visible(line);
    if (text.size() < 2 || text.front() != '[' || text.back() != ']') {
        return std::nullopt;
    }
    return text;
}

/// The part of a header that idents name: up to its first closing bracket.
inline std::string_view prefixOf(std::string_view header)
{
    return header.substr(0, header.find(']') + 1);
}

/// What stands before and behind the first "=" of a line.
struct Entry
{
    std::string_view name;
    std::string_view value;
};

inline std::optional<Entry> entryOf(Line line)
{
    const std::string_view text = visible(line);
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos) {
        return std::nullopt;
    }
    return Entry {text.substr(0, equals), text.substr(equals + 1)};
}

/// Where the line that begins at `begin` ends at the latest because it is too long: behind its
/// first `longest` characters, or at `end`.
const char* pieceEnd(const char* begin, const char* end, std::size_t longest, const TextFile& file);

/// Takes the lines of a file from its top.
class LineReader
{
public:
    LineReader(const TextFile& file, std::size_t longest)
        : m_file(file)
        , m_longest(longest)
        , m_at(file.bytes().data())
        , m_end(m_at + file.bytes().size())
    {
    }

    /// The next line; false behind the last one.
    bool next(Line& line)
    {
        if (m_at >= m_end) {
            return false;
        }
        const char* const feed = m_rest == nullptr ? find('\n') : m_rest;
        const char* const lineEnd = feed == nullptr ? m_end : feed;
        const bool isLong = static_cast<std::size_t>(lineEnd - m_at) > m_longest;
        const char* const end = isLong ? pieceEnd(m_at, lineEnd, m_longest, m_file) : lineEnd;
        line = {m_at, end};
        m_rest = end == lineEnd ? nullptr : lineEnd;
        m_at = end == lineEnd ? lineEnd + 1 : end;
        return true;
    }

    /// The next line that begins with "[", found without a look at each line before it.
    bool nextBracketed(Line& line)
    {
        while (const char* const bracket = find('[')) {
            skipLinesBefore(bracket);
            do { // more than once only in a line that is taken in pieces
                next(line);
            } while (m_at <= bracket);
            if (line.begin == bracket) {
                return true;
            }
        }
        return false;
    }

private:
    [[nodiscard]] const char* find(char wanted) const
    {
        const auto left = static_cast<std::size_t>(m_end - m_at);
        return m_at < m_end ? static_cast<const char*>(std::memchr(m_at, wanted, left)) : nullptr;
    }

    void skipLinesBefore(const char* place)
    {
        const std::size_t feed = std::string_view(m_at, place).rfind('\n');
        if (feed != std::string_view::npos) {
            m_at += feed + 1;
            m_rest = nullptr;
        }
    }

    const TextFile& m_file;
    std::size_t m_longest;
    const char* m_at;
    const char* m_end;
    const char* m_rest = nullptr; // within a line that is taken in pieces: where that line ends
};

/// False when nothing but the next header counts for a sink; without wantsEntries() it takes all.
template<class Sink> bool wantsEntries(const Sink& sink)
{
    if constexpr (requires { sink.wantsEntries(); }) {
        return sink.wantsEntries();
    }
    return true;
}

/// The scan that all lookups rest on: from the top of the file, header(text, line) for each header
/// and entry(line) for each other line that counts, until one of them gives false. An entry line
/// need not hold a "=". While wantsEntries() is false, entries may be left out.
template<class Sink> void scan(const TextFile& file, std::size_t longest, Sink& sink)
{
    LineReader lines(file, longest);
    Line line {};
    for (bool goesOn = true; goesOn;) {
        if (!(wantsEntries(sink) ? lines.next(line) : lines.nextBracketed(line))) {
            return;
        }
        if (isSkipped(line)) {
            continue;
        }
        const auto header = *line.begin == '[' ? headerOf(line) : std::nullopt;
        goesOn = header ? sink.header(*header, line) : sink.entry(line);
    }
}

/// True when a text of the file and a key are equal without regard to case.
bool equalsFolded(std::string_view text, const FoldedText& key, const TextFile& file);

/// The folded UTF-8 form of a text of the file.
std::string foldedForm(std::string_view text, const TextFile& file);

/// True when as many bytes as the folded ASCII text has are equal to it without regard to case.
/// Both are read by words.
inline bool equalsFoldedAscii(const char* text, std::string_view folded)
{
    const char* key = folded.data();
    std::size_t left = folded.size();
    for (; left >= 8; left -= 8, text += 8, key += 8) {
        if (lowerWord(loadWord(text)) != loadWord(key)) {
            return false;
        }
    }
    return left == 0 || firstBytes(lowerWord(loadWord(text)) ^ loadWord(key), left) == 0;
}

/// The text before a "=" holds neither "=" nor a control character, so no entry bears another name.
inline bool canBeAName(std::string_view name)
{
    for (std::size_t at = 0; at < name.size(); at += 8) {
        const std::uint64_t word = loadWord(name.data() + at);
        const std::uint64_t marks = bytesBelow(word, 32) | bytesBelow(word ^ (kOnes * '='), 1);
        if (marks != 0 && std::countr_zero(marks) / 8 < static_cast<int>(name.size() - at)) {
            return false;
        }
    }
    return true;
}

/// The value of a line when it is an entry of that name. Looks at no more of another line than it
/// must.
inline std::optional<std::string_view> valueIn(Line line, const FoldedText& name,
                                               const TextFile& file)
{
    std::size_t size = name.bytes().size();
    if (name.isAscii()) {
        if (static_cast<std::size_t>(line.end - line.begin) <= size || line.begin[size] != '='
            || !equalsFoldedAscii(line.begin, name.bytes()) || !canBeAName(name.bytes())) {
            return std::nullopt;
        }
    } else {
        const auto entry = entryOf(line);
        if (!entry || !equalsFolded(entry->name, name, file)) {
            return std::nullopt;
        }
        size = entry->name.size();
    }
    return visible({line.begin + size + 1, line.end});
}

} // namespace corma
