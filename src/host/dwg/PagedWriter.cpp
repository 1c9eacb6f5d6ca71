#include "host/dwg/PagedWriter.h"

#include "host/dwg/little_endian.h"
#include "host/dwg/lz77.h"
#include "host/dwg/page_checksum.h"

#include <algorithm>

namespace corma::host::dwg {

namespace {

std::size_t filledUp(std::size_t size, std::size_t step)
{
    return (size + step - 1) / step * step;
}

std::string_view filling(std::size_t size)
{
    return {reinterpret_cast<const char*>(kMask.data()), std::min(size, kMask.size())};
}

// A page of the system, ready to stand in the file.
std::string systemPage(std::uint32_t type, std::string_view content)
{
    const std::string data = compressPage(content);
    const SystemPageHeader header {.type = type,
                                   .size = static_cast<std::uint32_t>(content.size()),
                                   .dataSize = static_cast<std::uint32_t>(data.size())};
    std::string page = encodeSystemPageHeader(header, data) + data;
    page += filling(filledUp(page.size(), kPageStep) - page.size());
    return page;
}

void addDescriptor(const Section& section, std::string& map)
{
    addNumber(section.size, map);
    addNumber(static_cast<std::uint32_t>(section.pages.size()), map);
    addNumber(section.pageSize, map);
    addNumber(section.unknown, map);
    addNumber(static_cast<std::uint32_t>(section.form), map);
    addNumber(section.id, map);
    addNumber(section.encrypted, map);
    map += section.nameBytes;
    for (const SectionPage& page : section.pages) {
        addNumber(page.id, map);
        addNumber(page.dataSize, map);
        addNumber(page.start, map);
    }
}

} // namespace

PagedWriter::PagedWriter(std::string_view head, std::vector<Section> sections)
    : m_head(head)
    , m_sections(std::move(sections))
{
    for (Section& section : m_sections) {
        section.pages.clear();
    }
}

std::uint32_t PagedWriter::place(std::size_t section, const SectionPage& page, Page made)
{
    made.address = m_end;
    m_end += made.size;
    m_pages.push_back(std::move(made));
    const auto id = static_cast<std::uint32_t>(m_pages.size());
    addAgain(section, page, id);
    return id;
}

void PagedWriter::addAgain(std::size_t section, SectionPage page, std::uint32_t id)
{
    page.id = id;
    m_sections[section].pages.push_back(page);
}

void PagedWriter::add(std::size_t section, std::string_view content)
{
    constexpr std::uint32_t kLeastPageSize = 0x80;
    constexpr std::uint32_t kMostPageSize = 0x8000;
    Section& target = m_sections[section];
    target.size = content.size();
    if (target.pageSize < kLeastPageSize || target.pageSize > kMostPageSize) {
        target.pageSize = Section::kUsualPageSize;
    }
    for (std::size_t start = 0; start < content.size(); start += target.pageSize) {
        // Each page is full; behind the end of the content it holds zeros.
        std::string bytes(content.substr(start, target.pageSize));
        bytes.resize(target.pageSize, '\0');
        Page page;
        page.own
            = target.form == Section::Form::compressed ? compressPage(bytes) : std::move(bytes);
        page.size = filledUp(PageHeader::kSize + page.own.size(), kPageStep);
        const PageHeader header {.type = kSectionPageType,
                                 .sectionId = target.id,
                                 .dataSize = static_cast<std::uint32_t>(page.own.size()),
                                 .pageSize = static_cast<std::uint32_t>(page.size),
                                 .start = start};
        page.header = maskedPageHeader(encodePageHeader(header, page.own), m_end);
        place(section, {.dataSize = header.dataSize, .start = start}, std::move(page));
    }
}

std::uint32_t PagedWriter::add(std::size_t section, const Stored& page)
{
    Page made;
    // The mask of the place that it had comes off, that of the new one comes on.
    const std::string plain
        = maskedPageHeader(page.bytes.substr(0, PageHeader::kSize), page.address);
    made.header = maskedPageHeader(plain, m_end);
    made.stored = page.bytes.substr(PageHeader::kSize);
    made.size = filledUp(page.bytes.size(), kPageStep);
    return place(section, page.page, std::move(made));
}

void PagedWriter::setAddress(std::size_t at, std::size_t address)
{
    putNumber(static_cast<std::uint32_t>(address), at, m_head);
}

void PagedWriter::pointTo(std::size_t at, std::string_view section)
{
    const auto found = std::find_if(m_sections.begin(), m_sections.end(),
                                    [&](const Section& row) { return row.name() == section; });
    const bool isThere = found != m_sections.end() && !found->pages.empty();
    setAddress(at, isThere ? addressOf(found->pages.front().id) + PageHeader::kSize : 0);
}

std::string PagedWriter::sectionMap() const
{
    constexpr std::uint32_t kCompressed = 2;
    const auto count = static_cast<std::uint32_t>(m_sections.size());
    std::string map;
    addNumber(count, map);
    addNumber(kCompressed, map);
    addNumber(Section::kUsualPageSize, map);
    addNumber<std::uint32_t>(0, map);
    addNumber(count, map);
    for (const Section& section : m_sections) {
        addDescriptor(section, map);
    }
    return map;
}

std::string PagedWriter::pageMap(std::size_t ownSize) const
{
    std::string map;
    std::uint32_t id = 0;
    for (const Page& page : m_pages) {
        addNumber(++id, map);
        addNumber(static_cast<std::uint32_t>(page.size), map);
    }
    addNumber(++id, map);
    addNumber(static_cast<std::uint32_t>(ownSize), map);
    return map;
}

// The pages of both maps are the last ones, in the order section map, page map.
std::string PagedWriter::mixedHeader() const
{
    constexpr std::string_view kBegin("AcFssFcAJMB\0", 12);
    const auto pages = static_cast<std::uint32_t>(m_pages.size());
    const Page& map = m_pages.back();
    const std::uint64_t end = map.address + map.size;
    std::string bytes(kBegin);
    const auto add = [&](std::uint32_t number) { addNumber(number, bytes); };
    add(0);
    add(PagedHeader::kSize);
    add(4);
    add(0); // the tree of gaps, of which there are none
    add(0);
    add(0);
    add(1);
    add(pages);
    addNumber<std::uint64_t>(end - kPagedHeadSize, bytes);
    addNumber<std::uint64_t>(end, bytes); // where the second copy of this stands
    add(0); // gaps
    add(pages);
    add(0x20);
    add(0x80);
    add(0x40);
    add(pages); // the page map
    addNumber<std::uint64_t>(map.address - kPagedHeadSize, bytes);
    add(pages - 1); // the section map
    add(pages);
    add(0); // gaps
    const std::size_t checksumAt = bytes.size();
    add(0);
    putNumber(headerChecksum(bytes), checksumAt, bytes);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<char>(static_cast<unsigned char>(bytes[i]) ^ kMask[i]);
    }
    return bytes;
}

bool PagedWriter::write(const TakeBytes& take)
{
    const auto addSystemPage = [&](std::string bytes) {
        Page page;
        page.address = m_end;
        page.size = bytes.size();
        page.own = std::move(bytes);
        m_end += page.size;
        m_pages.push_back(std::move(page));
    };
    addSystemPage(systemPage(kSectionMapType, sectionMap()));
    // The page map tells its own size, which is not known before it is compressed.
    const std::size_t most = filledUp(
        SystemPageHeader::kSize + 2 * (m_pages.size() + 1) * kPlaceSize + kPageStep, kPageStep);
    std::string map = systemPage(kPageMapType, pageMap(most));
    map.resize(most, '\0');
    addSystemPage(std::move(map));
    const std::string header = mixedHeader();
    m_head.replace(PagedHeader::kAt, PagedHeader::kSize, header);
    if (!take(m_head)) {
        return false;
    }
    const bool isTaken = std::all_of(m_pages.begin(), m_pages.end(),
                                     [&](const Page& page) { return writePage(page, take); });
    return isTaken && take(header);
}

bool PagedWriter::writePage(const Page& page, const TakeBytes& take)
{
    const std::string_view data = page.own.empty() ? page.stored : page.own;
    const std::size_t rest = page.size - page.header.size() - data.size();
    return (page.header.empty() || take(page.header)) && take(data)
        && (rest == 0 || take(filling(rest)));
}

} // namespace corma::host::dwg
