#pragma once

// The rules of the two merges, step by step and without a thought for speed, to hold the merges of
// the library against.

#include <forward_list>
#include <string>
#include <string_view>

namespace corma::testing {

/// Defaults that come into a file: over a singly linked list of its lines, which is searched from
/// its beginning for each entry. Texts are UTF-8.
class PlainUpdate
{
public:
    PlainUpdate(const std::string& own, const std::string& defaults);

    [[nodiscard]] int added() const { return m_added; }

    /// The lines, each with a line feed, and the empty lines before headers.
    [[nodiscard]] std::string text() const;

private:
    using Lines = std::forward_list<std::string>;
    using Place = Lines::iterator;

    void take(const std::string& line);
    void takeEntry(const std::string& line);
    void takeEntryOfChapter(const std::string& line, Place before);
    [[nodiscard]] Place lastLine();

    Lines m_lines;
    int m_added = 0;
    std::string m_chapter; // of the defaults; empty above their first header
    Place m_insertionPoint; // before the beginning: none
    bool m_isAtFirstLine = true;
};

/// The text as lines that all end in a line feed.
std::string plainLines(const std::string& text);

/// A file with the values of another one: by a map from chapter and ident in one name to value, and
/// a list of such names. Files with a line that can be taken for such a name are not for it.
std::string plainReplacement(const std::string& own, const std::string& newer);

} // namespace corma::testing
