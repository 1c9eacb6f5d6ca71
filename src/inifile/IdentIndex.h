#pragma once

#include "foundation/text_file.h"
#include "inifile/Ident.h"
#include "inifile/line.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace corma {

/// An entry that a lookup found.
struct FoundEntry
{
    std::string_view value; // in the file's bytes
    std::size_t at = 0; // offset of its line
};

/// Looks an ident up by a scan from the top of the file.
std::optional<FoundEntry> findByScan(const TextFile& file, const IdentKey& key);

/// A flat index over the text of a file: it finds what findByScan() finds, without the scan. It
/// holds offsets only, so it is good for as long as the text is. Texts of 4 GiB or more have none.
class IdentIndex
{
public:
    static bool isPossibleFor(const TextFile& file);

    explicit IdentIndex(const TextFile& file);

    [[nodiscard]] std::optional<FoundEntry> find(const TextFile& file, const IdentKey& key) const;

private:
    friend class IndexBuilder;

    // An open-addressing table of offsets, whose size is fixed when it is made. The tag is a part
    // of the hash; it saves most looks into the text.
    class Table
    {
    public:
        explicit Table(std::size_t mostEntries);

        template<class IsWanted>
        std::optional<std::uint32_t> find(std::uint32_t tag, IsWanted isWanted) const;

        // Enters a value unless one is there that isWanted() takes for the same.
        template<class IsWanted>
        void insert(std::uint32_t tag, std::uint32_t value, IsWanted isWanted);

    private:
        struct Slot
        {
            std::uint32_t tag = 0;
            std::uint32_t valuePlus1 = 0; // 0: free
        };

        [[nodiscard]] std::size_t slotFor(std::uint32_t tag) const;

        std::vector<Slot> m_slots;
    };

    // The part of a file in which the entries of a chapter stand; number 0 is the head of the file.
    struct Chapter
    {
        std::uint32_t header = 0; // offset of its header line
        std::uint32_t end = 0; // offset behind its last line
    };

    [[nodiscard]] std::optional<std::uint32_t> findChapter(const TextFile& file,
                                                           const FoldedText& prefix) const;

    std::vector<Chapter> m_chapters;
    Table m_chapterTable; // prefix -> number of the chapter
    Table m_entryTable; // chapter and name -> offset of the line
};

} // namespace corma
