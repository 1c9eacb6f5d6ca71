#include "host/dwg/PagedFile.h"

#include "host/dwg/little_endian.h"
#include "host/dwg/lz77.h"
#include "host/dwg/page_checksum.h"

#include <algorithm>
#include <cstring>

namespace corma::host::dwg {

namespace {

constexpr std::size_t kDescriptorSize = 96;
constexpr std::size_t kDescriptorPageSize = 16;
constexpr std::size_t kSectionMapHeadSize = 20;
constexpr std::size_t kGapSize = 16; // more for an entry of a gap

// Fields of a page header, one behind the other.
constexpr std::size_t kFieldSize = sizeof(std::uint32_t);
constexpr std::size_t kHeaderChecksumAt = 24;
constexpr std::size_t kDataChecksumAt = 28;
constexpr std::size_t kSystemChecksumAt = 16;

bool comesBefore(const PlacedPage& page, std::uint32_t id)
{
    return page.id < id;
}

std::uint32_t pageHeaderChecksum(std::string header, std::uint32_t dataChecksum)
{
    putNumber<std::uint32_t>(0, kHeaderChecksumAt, header);
    return pageChecksum(dataChecksum, header);
}

std::uint32_t systemPageChecksum(std::string header, std::string_view data)
{
    putNumber<std::uint32_t>(0, kSystemChecksumAt, header);
    return pageChecksum(pageChecksum(0, header), data);
}

Section decodeDescriptor(std::string_view bytes)
{
    constexpr std::size_t kPageSizeAt = 12;
    constexpr std::size_t kNameAt = 32;
    const auto number = [&](std::size_t index) {
        return numberAt<std::uint32_t>(bytes, kPageSizeAt + index * kFieldSize);
    };
    Section section;
    section.size = numberAt<std::uint64_t>(bytes, 0);
    section.pageSize = number(0);
    section.unknown = number(1);
    section.form = static_cast<Section::Form>(number(2));
    section.id = number(3);
    section.encrypted = number(4);
    section.nameBytes = bytes.substr(kNameAt, Section::kNameSize);
    return section;
}

} // namespace

std::string_view Section::name() const
{
    const std::string_view bytes = nameBytes;
    return bytes.substr(0, bytes.find('\0'));
}

std::optional<std::vector<PlacedPage>> decodePageMap(std::string_view bytes)
{
    constexpr std::uint32_t kGap = 0x80000000; // a negative number
    std::vector<PlacedPage> places;
    places.reserve(bytes.size() / kPlaceSize);
    std::size_t address = kPagedHeadSize;
    while (!bytes.empty()) {
        if (bytes.size() < kPlaceSize) {
            return std::nullopt;
        }
        const auto id = numberAt<std::uint32_t>(bytes, 0);
        const auto size = numberAt<std::uint32_t>(bytes, kFieldSize);
        bytes.remove_prefix(kPlaceSize);
        if ((id & kGap) == 0) {
            places.push_back({.id = id, .address = address, .size = size});
        } else if (bytes.size() < kGapSize) {
            return std::nullopt;
        } else {
            bytes.remove_prefix(kGapSize);
        }
        address += size;
    }
    return places;
}

std::optional<std::vector<Section>> decodeSectionMap(std::string_view bytes)
{
    constexpr std::size_t kPageCountAt = 8;
    if (bytes.size() < kSectionMapHeadSize) {
        return std::nullopt;
    }
    const auto count = numberAt<std::uint32_t>(bytes, 0);
    bytes.remove_prefix(kSectionMapHeadSize);
    std::vector<Section> sections;
    for (std::uint32_t i = 0; i < count; ++i) {
        if (bytes.size() < kDescriptorSize) {
            return std::nullopt;
        }
        Section section = decodeDescriptor(bytes);
        const auto pages = numberAt<std::uint32_t>(bytes, kPageCountAt);
        bytes.remove_prefix(kDescriptorSize);
        if (bytes.size() / kDescriptorPageSize < pages) {
            return std::nullopt;
        }
        section.pages.reserve(pages);
        for (std::uint32_t page = 0; page < pages; ++page) {
            section.pages.push_back({.id = numberAt<std::uint32_t>(bytes, 0),
                                     .dataSize = numberAt<std::uint32_t>(bytes, kFieldSize),
                                     .start = numberAt<std::uint64_t>(bytes, 2 * kFieldSize)});
            bytes.remove_prefix(kDescriptorPageSize);
        }
        sections.push_back(std::move(section));
    }
    return sections;
}

std::string maskedPageHeader(std::string_view bytes, std::size_t address)
{
    constexpr std::uint32_t kMixed = 0x4164536B;
    const std::uint32_t mask = kMixed ^ static_cast<std::uint32_t>(address);
    std::string masked;
    for (std::size_t at = 0; at < PageHeader::kSize; at += kFieldSize) {
        addNumber(numberAt<std::uint32_t>(bytes, at) ^ mask, masked);
    }
    return masked;
}

PageHeader decodePageHeader(std::string_view bytes)
{
    constexpr std::size_t kStartAt = 16;
    return {.type = numberAt<std::uint32_t>(bytes, 0),
            .sectionId = numberAt<std::uint32_t>(bytes, kFieldSize),
            .dataSize = numberAt<std::uint32_t>(bytes, 2 * kFieldSize),
            .pageSize = numberAt<std::uint32_t>(bytes, 3 * kFieldSize),
            .start = numberAt<std::uint64_t>(bytes, kStartAt),
            .headerChecksum = numberAt<std::uint32_t>(bytes, kHeaderChecksumAt),
            .dataChecksum = numberAt<std::uint32_t>(bytes, kDataChecksumAt)};
}

std::string encodePageHeader(const PageHeader& header, std::string_view data)
{
    const std::uint32_t dataChecksum = pageChecksum(0, data);
    std::string bytes;
    addNumber(header.type, bytes);
    addNumber(header.sectionId, bytes);
    addNumber(header.dataSize, bytes);
    addNumber(header.pageSize, bytes);
    addNumber(header.start, bytes);
    addNumber<std::uint32_t>(0, bytes);
    addNumber(dataChecksum, bytes);
    putNumber(pageHeaderChecksum(bytes, dataChecksum), kHeaderChecksumAt, bytes);
    return bytes;
}

SystemPageHeader decodeSystemPageHeader(std::string_view bytes)
{
    return {.type = numberAt<std::uint32_t>(bytes, 0),
            .size = numberAt<std::uint32_t>(bytes, kFieldSize),
            .dataSize = numberAt<std::uint32_t>(bytes, 2 * kFieldSize),
            .compression = numberAt<std::uint32_t>(bytes, 3 * kFieldSize),
            .checksum = numberAt<std::uint32_t>(bytes, kSystemChecksumAt)};
}

std::string encodeSystemPageHeader(const SystemPageHeader& header, std::string_view data)
{
    std::string bytes;
    addNumber(header.type, bytes);
    addNumber(header.size, bytes);
    addNumber(header.dataSize, bytes);
    addNumber(header.compression, bytes);
    addNumber<std::uint32_t>(0, bytes);
    putNumber(systemPageChecksum(bytes, data), kSystemChecksumAt, bytes);
    return bytes;
}

PagedFile::PagedFile(std::string_view bytes)
    : m_bytes(bytes)
    , m_allowance(bytes.size())
{
}

bool PagedFile::fail(std::size_t at, const wchar_t* what)
{
    if (m_trouble.what == nullptr) {
        m_trouble = {.at = at, .what = what};
    }
    return false;
}

bool PagedFile::take(std::uint64_t size, std::size_t at)
{
    if (!m_allowance.take(size)) {
        return fail(at, L"a section cannot be as long as it says");
    }
    return true;
}

bool PagedFile::openHeader(PagedHeader& header)
{
    constexpr std::string_view kBegin = "AcFssFcAJMB";
    constexpr std::size_t kPageMapAddressAt = 0x54;
    constexpr std::size_t kSectionMapIdAt = 0x5C;
    constexpr std::size_t kChecksumAt = 0x68;
    if (m_bytes.size() < kPagedHeadSize) {
        return fail(m_bytes.size(), L"the file ends within its header");
    }
    std::string bytes(m_bytes.substr(PagedHeader::kAt, PagedHeader::kSize));
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        bytes[i] = static_cast<char>(static_cast<unsigned char>(bytes[i]) ^ kMask[i]);
    }
    const auto expected = numberAt<std::uint32_t>(bytes, kChecksumAt);
    header.pageMapAddress = numberAt<std::uint64_t>(bytes, kPageMapAddressAt);
    header.sectionMapId = numberAt<std::uint32_t>(bytes, kSectionMapIdAt);
    putNumber<std::uint32_t>(0, kChecksumAt, bytes);
    if (!bytes.starts_with(kBegin) || headerChecksum(bytes) != expected) {
        return fail(PagedHeader::kAt, L"the file header has a wrong checksum");
    }
    return true;
}

bool PagedFile::open()
{
    PagedHeader header;
    if (!openHeader(header)) {
        return false;
    }
    const std::uint64_t mapAt = header.pageMapAddress;
    if (mapAt > m_bytes.size() || mapAt + kPagedHeadSize > m_bytes.size()) {
        return fail(PagedHeader::kAt, L"the page map lies outside the file");
    }
    const auto pageMap = systemPage(static_cast<std::size_t>(mapAt) + kPagedHeadSize, kPageMapType);
    if (!pageMap) {
        return false;
    }
    auto places = decodePageMap(*pageMap);
    if (!places) {
        return fail(static_cast<std::size_t>(mapAt) + kPagedHeadSize, L"the page map is cut off");
    }
    m_places = std::move(*places);
    std::stable_sort(m_places.begin(), m_places.end(),
                     [](const PlacedPage& a, const PlacedPage& b) { return a.id < b.id; });
    const PlacedPage* const place = placeOf(header.sectionMapId);
    if (place == nullptr) {
        return fail(PagedHeader::kAt, L"the section map lies outside the file");
    }
    const auto sectionMap = systemPage(place->address, kSectionMapType);
    if (!sectionMap) {
        return false;
    }
    auto sections = decodeSectionMap(*sectionMap);
    if (!sections) {
        return fail(place->address, L"the section map is cut off");
    }
    m_sections = std::move(*sections);
    return true;
}

std::optional<std::string> PagedFile::systemPage(std::size_t address, std::uint32_t type)
{
    const auto nothing = [&](const wchar_t* what) {
        fail(address, what);
        return std::nullopt;
    };
    if (m_bytes.size() - address < SystemPageHeader::kSize) {
        return nothing(L"the file ends within a map of its pages");
    }
    const std::string_view page = m_bytes.substr(address);
    const SystemPageHeader header = decodeSystemPageHeader(page);
    if (header.type != type || header.dataSize > page.size() - SystemPageHeader::kSize) {
        return nothing(L"no map of pages or sections is where it should be");
    }
    const std::string_view data = page.substr(SystemPageHeader::kSize, header.dataSize);
    if (systemPageChecksum(std::string(page.substr(0, SystemPageHeader::kSize)), data)
        != header.checksum) {
        return nothing(L"a map of pages or sections has a wrong checksum");
    }
    if (!take(header.size, address)) {
        return std::nullopt;
    }
    std::string out(header.size, '\0');
    const auto size = decompressPage(data, {out.data(), out.size()});
    if (!size || *size != out.size()) {
        return nothing(L"a map of pages or sections cannot be decompressed");
    }
    return out;
}

const Section* PagedFile::find(std::string_view name) const
{
    const auto found = std::find_if(m_sections.begin(), m_sections.end(),
                                    [&](const Section& row) { return row.name() == name; });
    return found == m_sections.end() ? nullptr : &*found;
}

const PlacedPage* PagedFile::placeOf(std::uint32_t id) const
{
    const auto found = std::lower_bound(m_places.begin(), m_places.end(), id, comesBefore);
    const bool isThere
        = found != m_places.end() && found->id == id && found->address < m_bytes.size();
    return isThere ? &*found : nullptr;
}

const PlacedPage* PagedFile::pageAt(std::size_t address) const
{
    const auto found = std::find_if(m_places.begin(), m_places.end(), [&](const PlacedPage& page) {
        return page.address <= address && address - page.address < page.size;
    });
    return found == m_places.end() ? nullptr : &*found;
}

std::optional<std::string> PagedFile::read(const Section& section)
{
    const bool isKnown
        = section.form == Section::Form::plain || section.form == Section::Form::compressed;
    std::uint64_t size = section.size;
    for (const SectionPage& page : section.pages) {
        // Only up to what may be taken: a page that is too far off is told by readPage.
        size = page.start < m_allowance.memory() ? std::max(size, page.start + section.pageSize)
                                                 : size;
    }
    if (!isKnown) {
        fail(0, L"a section is stored in a way that is not known");
        return std::nullopt;
    }
    if (!take(size, 0)) {
        return std::nullopt;
    }
    std::string out; // grows page by page, so that its memory is touched when it is needed
    out.reserve(static_cast<std::size_t>(size));
    for (const SectionPage& page : section.pages) {
        if (!readPage(section, page, static_cast<std::size_t>(size), out)) {
            return std::nullopt;
        }
    }
    out.resize(static_cast<std::size_t>(section.size));
    return out;
}

bool PagedFile::readPage(const Section& section, const SectionPage& page, std::size_t size,
                         std::string& out)
{
    const PlacedPage* const place = placeOf(page.id);
    if (place == nullptr) {
        return fail(m_bytes.size(), L"a page lies outside the file");
    }
    const std::size_t at = place->address;
    const std::string_view stored = m_bytes.substr(at, place->size);
    if (stored.size() < PageHeader::kSize) {
        return fail(at, L"a page is cut off");
    }
    const std::string bytes = maskedPageHeader(stored.substr(0, PageHeader::kSize), at);
    const PageHeader header = decodePageHeader(bytes);
    const std::string_view behind = stored.substr(PageHeader::kSize);
    if (header.type != kSectionPageType || header.sectionId != section.id) {
        return fail(at, L"another page is where one of a section should be");
    }
    if (header.dataSize > behind.size() || page.start > size) {
        return fail(at, L"a page is longer than its place");
    }
    const auto start = static_cast<std::size_t>(page.start);
    const std::size_t room = std::min<std::size_t>(section.pageSize, size - start);
    if (!m_allowance.takeWork(PageHeader::kSize + room + header.dataSize)) {
        return fail(at, L"a section has more pages than the file");
    }
    const std::string_view data = behind.substr(0, header.dataSize);
    if (pageHeaderChecksum(bytes, header.dataChecksum) != header.headerChecksum
        || pageChecksum(0, data) != header.dataChecksum) {
        return fail(at, L"a page has a wrong checksum");
    }
    if (out.size() < start + room) {
        out.resize(start + room);
    }
    char* const to = out.data() + start;
    if (section.form == Section::Form::plain) {
        std::memcpy(to, data.data(), std::min(room, data.size()));
        return true;
    }
    const auto made = decompressPage(data, {to, room});
    if (!made) {
        return fail(at, L"a page cannot be decompressed");
    }
    std::memset(to + *made, 0, room - *made);
    return true;
}

} // namespace corma::host::dwg
