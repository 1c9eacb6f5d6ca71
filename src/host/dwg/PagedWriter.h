#pragma once

#include "host/dwg/Container.h"
#include "host/dwg/PagedFile.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corma::host::dwg {

/// Puts a file together of sections: those with a new content, and the stored pages of others,
/// which stay as they are. What stored pages are made of must outlive the writing.
class PagedWriter
{
public:
    /// `head` is the first kPagedHeadSize bytes; the mixed part of them is made anew. The sections
    /// are in the order of the section map; they get the pages that are added, in the order of the
    /// file.
    PagedWriter(std::string_view head, std::vector<Section> sections);

    /// A page as it stands in another file, which is not looked into.
    struct Stored
    {
        SectionPage page;
        std::size_t address = 0; // in the other file
        std::string_view bytes; // with its header
    };

    void add(std::size_t section, std::string_view content);

    /// The number of the page in this file.
    std::uint32_t add(std::size_t section, const Stored& page);

    /// A page that was added already is one of this section, too.
    void addAgain(std::size_t section, SectionPage page, std::uint32_t id);

    /// The place of a page by its number.
    [[nodiscard]] std::size_t addressOf(std::uint32_t id) const { return m_pages[id - 1].address; }

    /// Sets an address in the head.
    void setAddress(std::size_t at, std::size_t address);

    /// Sets an address in the head to the data of the section's first page; 0 when it has none.
    void pointTo(std::size_t at, std::string_view section);

    bool write(const TakeBytes& take);

private:
    struct Page
    {
        std::size_t address = 0;
        std::size_t size = 0; // in the file
        std::string header; // with its mask
        std::string own; // the data of a new page
        std::string_view stored; // the data of another
    };

    std::uint32_t place(std::size_t section, const SectionPage& page, Page made);
    [[nodiscard]] std::string sectionMap() const;
    [[nodiscard]] std::string pageMap(std::size_t ownSize) const;
    [[nodiscard]] std::string mixedHeader() const;
    static bool writePage(const Page& page, const TakeBytes& take);

    std::string m_head;
    std::vector<Section> m_sections;
    std::vector<Page> m_pages; // their numbers are their places, from 1 on
    std::size_t m_end = kPagedHeadSize;
};

} // namespace corma::host::dwg
