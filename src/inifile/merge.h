#pragma once

// The two ways in which a new file of an add-on comes into the file of a user. All of it works on
// UTF-8, and on whole texts; names compare exactly.

#include "inifile/EntryTable.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace corma {

/// Adds to the lines of a file what a file of defaults has beyond them. The texts must outlive the
/// object. Lines are cut at their first character below 32; a line of more than 3000 characters is
/// taken in pieces, each a line of its own.
class DefaultsMerge
{
public:
    explicit DefaultsMerge(std::string_view own);

    /// Adds the entries that are new, and chapters for them, in the order of the defaults: each
    /// behind the known or new entry before it, else at the end of its chapter; but one that the
    /// defaults begin with at the very front. Comments of the defaults are not taken over. Once.
    void add(std::string_view defaults);

    /// Lines that were added, the headers of new chapters among them.
    [[nodiscard]] int added() const { return m_added; }

    /// The new text. A header has an empty line before it, unless it is the first line.
    [[nodiscard]] std::string text(std::string_view lineEnd) const;

private:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    struct Node
    {
        std::string_view line;
        std::size_t next;
    };

    struct Chapter
    {
        std::size_t last = kNone; // its last line, or its header
    };

    void take(std::string_view line);
    void addEntry(std::string_view line, std::string_view ident);
    std::size_t insert(std::string_view line, std::size_t behind);
    [[nodiscard]] std::size_t placeInChapter(std::size_t chapter) const;
    std::size_t chapterOfDefaults();

    std::vector<Node> m_nodes;
    std::size_t m_first = kNone;
    std::size_t m_last = kNone;
    std::vector<Chapter> m_chapters; // 0: the head of the file
    NumberedNames m_chapterNumbers;
    EntryTable<std::size_t> m_entries; // the node of each
    int m_added = 0;

    // Where add() has come to:
    std::string_view m_currentHeader; // empty in the head
    std::size_t m_insertionPoint = kNone;
    bool m_isAtFirstLine = true;
};

/// The text of a file in which each entry has the value that the new file gives it, if it does, in
/// pieces that are views of the two texts. Lines that begin with a blank are no entries. All else
/// stays as it is, with two exceptions: where a chapter has an ident twice, each gets the value of
/// the first; and a header that repeats the one before it is left out.
std::vector<std::string_view> withNewValues(std::string_view own, std::string_view newer);

} // namespace corma
