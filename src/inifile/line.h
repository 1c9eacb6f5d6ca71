#pragma once

// The lines of a configuration file: what a line is, which lines count, and what stands in them.
// Every reader of such a file goes through these.

#include "foundation/text_file.h"
#include "inifile/Ident.h"

#include <cstring>
#include <optional>
#include <string_view>

namespace corma {

/// A longer line is taken in pieces, each a line of its own.
inline constexpr std::size_t kLongestLine = 3000; // characters

/// A line without its line feed. A carriage return before that is still there: like every character
/// below 32 it ends what a reader sees of the line.
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
    const char* end = line.begin;
    while (end != line.end && !isControl(*end)) {
        ++end;
    }
    return {line.begin, end};
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

/// Calls visit(Line) for each line until one call gives false.
template<class Visit> void forEachLine(const TextFile& file, std::size_t longest, Visit visit)
{
    const std::string_view text = file.bytes();
    const char* at = text.data();
    const char* const end = at + text.size();
    while (at < end) {
        const auto* feed
            = static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)));
        const char* const lineEnd = feed == nullptr ? end : feed;
        while (static_cast<std::size_t>(lineEnd - at) > longest) {
            const char* const next = pieceEnd(at, lineEnd, longest, file);
            if (next == lineEnd) {
                break;
            }
            if (!visit(Line {at, next})) {
                return;
            }
            at = next;
        }
        if (!visit(Line {at, lineEnd})) {
            return;
        }
        at = lineEnd + 1;
    }
}

/// The scan that all lookups rest on: from the top of the file, header(text, line) for each header
/// and entry(line) for each other line that counts, until one of them gives false. An entry line
/// need not hold a "=".
template<class Sink> void scan(const TextFile& file, std::size_t longest, Sink& sink)
{
    forEachLine(file, longest, [&](Line line) {
        if (isSkipped(line)) {
            return true;
        }
        if (*line.begin == '[') {
            if (const auto header = headerOf(line)) {
                return sink.header(*header, line);
            }
        }
        return sink.entry(line);
    });
}

/// True when a text of the file and a key are equal without regard to case.
bool equalsFolded(std::string_view text, const FoldedText& key, const TextFile& file);

/// The folded UTF-8 form of a text of the file.
std::string foldedForm(std::string_view text, const TextFile& file);

inline bool equalsFoldedAscii(const char* text, std::string_view folded)
{
    for (const char c : folded) {
        const auto byte = static_cast<unsigned char>(*text++);
        const bool isUpper = static_cast<unsigned char>(byte - 'A') < 26;
        if (static_cast<char>(isUpper ? byte | 0x20U : byte) != c) {
            return false;
        }
    }
    return true;
}

/// The value of a line when it is an entry of that name, which holds no "=" and no control
/// character. Looks at no more of another line than it must.
inline std::optional<std::string_view> valueIn(Line line, const FoldedText& name,
                                               const TextFile& file)
{
    std::size_t size = name.bytes().size();
    if (name.isAscii()) {
        if (static_cast<std::size_t>(line.end - line.begin) <= size || line.begin[size] != '='
            || !equalsFoldedAscii(line.begin, name.bytes())) {
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
