#include "host/dwg/R2007File.h"

#include "host/dwg/little_endian.h"
#include "host/dwg/lz77.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace corma::host::dwg {

namespace {

constexpr std::size_t kHeaderAt = 0x80;
constexpr std::size_t kFirstPageAt = 0x480; // what addresses count from
constexpr std::size_t kMapRowSize = 239;
constexpr std::size_t kPageRowSize = 251;
constexpr std::size_t kHeaderRows = 3;
constexpr std::size_t kWideSize = sizeof(std::uint64_t);

// Numbers of the header that are used, by their places in it.
constexpr std::size_t kHeaderSize = 0x110;
constexpr std::size_t kPageMapRepeatsAt = 0x18;
constexpr std::size_t kPageMapAddressAt = 0x38;
constexpr std::size_t kPageMapDataSizeAt = 0x50;
constexpr std::size_t kPageMapSizeAt = 0x58;
constexpr std::size_t kSectionMapDataSizeAt = 0xB0;
constexpr std::size_t kSectionMapIdAt = 0xC0;
constexpr std::size_t kSectionMapSizeAt = 0xC8;
constexpr std::size_t kSectionMapRepeatsAt = 0xD8;

constexpr std::uint64_t kMostNumber = std::uint64_t {1} << 40U; // of a size in any real file

std::uint64_t longAt(std::string_view bytes, std::size_t at)
{
    return numberAt<std::uint64_t>(bytes, at);
}

// Data is stored in words.
std::uint64_t inWords(std::uint64_t size)
{
    return (size + kWideSize - 1) / kWideSize * kWideSize;
}

std::uint64_t rowsOf(std::uint64_t size, std::size_t rowSize)
{
    return (size + rowSize - 1) / rowSize;
}

std::string asciiName(std::string_view bytes)
{
    std::string name;
    for (std::size_t at = 0; at + 1 < bytes.size() && bytes[at] != '\0'; at += 2) {
        name += bytes[at + 1] == '\0' ? bytes[at] : '?';
    }
    return name;
}

class Sums
{
public:
    explicit Sums(std::uint32_t start)
        : m_plain(start & kHalfMask)
        , m_weighted(start >> kHalfBits)
    {
    }

    template<std::size_t count>
    void add(const unsigned char* at, const std::array<std::size_t, count>& order)
    {
        for (const std::size_t index : order) {
            m_plain += at[index];
            m_weighted += m_plain;
        }
    }

    void add(unsigned char byte)
    {
        m_plain += byte;
        m_weighted += m_plain;
    }

    void reduce()
    {
        constexpr std::uint32_t kModulus = 0xFFF1;
        m_plain %= kModulus;
        m_weighted %= kModulus;
    }

    [[nodiscard]] std::uint32_t value() const { return m_weighted << kHalfBits | m_plain; }

private:
    static constexpr unsigned kHalfBits = 16;
    static constexpr std::uint32_t kHalfMask = 0xFFFF;

    std::uint32_t m_plain;
    std::uint32_t m_weighted;
};

} // namespace

std::string unmixedRows(std::string_view coded, std::size_t rows, std::size_t rowSize)
{
    std::string bytes(rows * rowSize, '\0');
    char* to = bytes.data();
    for (std::size_t row = 0; row < rows; ++row) {
        const char* from = coded.data() + row;
        for (std::size_t i = 0; i < rowSize; ++i, from += rows) {
            *to++ = *from;
        }
    }
    return bytes;
}

std::uint32_t r2007Checksum(std::string_view bytes)
{
    constexpr std::uint32_t kFactor = 0x343FD;
    constexpr std::uint32_t kIncrement = 0x269EC3;
    constexpr std::size_t kMostUnreduced = 5552;
    constexpr std::array<std::size_t, 8> kWord = {6, 7, 4, 5, 2, 3, 0, 1};
    constexpr std::array<std::size_t, 4> kHalf = {2, 3, 0, 1};
    Sums sums(static_cast<std::uint32_t>(bytes.size()) * kFactor + kIncrement);
    while (!bytes.empty()) {
        std::string_view piece = bytes.substr(0, kMostUnreduced);
        bytes.remove_prefix(piece.size());
        const auto* at = reinterpret_cast<const unsigned char*>(piece.data());
        const auto* const end = at + piece.size();
        for (; end - at >= static_cast<std::ptrdiff_t>(kWord.size()); at += kWord.size()) {
            sums.add(at, kWord);
        }
        if (end - at >= static_cast<std::ptrdiff_t>(kHalf.size())) {
            sums.add(at, kHalf);
            at += kHalf.size();
        }
        for (; at != end; ++at) {
            sums.add(*at);
        }
        sums.reduce();
    }
    return sums.value();
}

std::optional<std::vector<PlacedPage>> decodeR2007PageMap(std::string_view bytes)
{
    constexpr std::size_t kEntrySize = 2 * kWideSize;
    constexpr std::uint64_t kSign = std::uint64_t {1} << 63U;
    std::vector<PlacedPage> places;
    places.reserve(bytes.size() / kEntrySize);
    std::uint64_t address = kFirstPageAt;
    for (; !bytes.empty(); bytes.remove_prefix(kEntrySize)) {
        if (bytes.size() < kEntrySize) {
            return std::nullopt;
        }
        const std::uint64_t size = longAt(bytes, 0);
        const std::uint64_t number = longAt(bytes, kWideSize);
        const std::uint64_t id = (number & kSign) != 0 ? 0 - number : number;
        if (size > kMostNumber || address > kMostNumber) {
            return std::nullopt;
        }
        places.push_back({.id = static_cast<std::uint32_t>(id),
                          .address = static_cast<std::size_t>(address),
                          .size = static_cast<std::size_t>(size)});
        address += size;
    }
    return places;
}

std::optional<std::vector<R2007Section>> decodeR2007SectionMap(std::string_view bytes)
{
    constexpr std::size_t kSectionSize = 8 * kWideSize;
    constexpr std::size_t kNameSizeAt = 0x20;
    constexpr std::size_t kCodingAt = 0x30;
    constexpr std::size_t kPageCountAt = 0x38;
    constexpr std::size_t kPageSize = 7 * kWideSize;
    std::vector<R2007Section> sections;
    while (!bytes.empty()) {
        if (bytes.size() < kSectionSize) {
            return std::nullopt;
        }
        const std::uint64_t nameSize = longAt(bytes, kNameSizeAt);
        const std::uint64_t pages = longAt(bytes, kPageCountAt);
        R2007Section section;
        section.size = longAt(bytes, 0);
        section.coding = longAt(bytes, kCodingAt);
        bytes.remove_prefix(kSectionSize);
        if (nameSize > bytes.size()) {
            return std::nullopt;
        }
        section.name = asciiName(bytes.substr(0, static_cast<std::size_t>(nameSize)));
        bytes.remove_prefix(static_cast<std::size_t>(nameSize));
        if (bytes.size() / kPageSize < pages) {
            return std::nullopt;
        }
        section.pages.reserve(static_cast<std::size_t>(pages));
        for (std::uint64_t page = 0; page < pages; ++page) {
            section.pages.push_back({.start = longAt(bytes, 0),
                                     .id = longAt(bytes, 2 * kWideSize),
                                     .size = longAt(bytes, 3 * kWideSize),
                                     .dataSize = longAt(bytes, 4 * kWideSize),
                                     .checksum = longAt(bytes, 5 * kWideSize)});
            bytes.remove_prefix(kPageSize);
        }
        sections.push_back(std::move(section));
    }
    return sections;
}

R2007File::R2007File(std::string_view bytes)
    : m_bytes(bytes)
    , m_allowance(bytes.size())
{
}

bool R2007File::fail(std::size_t at, const wchar_t* what)
{
    if (m_trouble.what == nullptr) {
        m_trouble = {.at = at, .what = what};
    }
    return false;
}

std::optional<std::string> R2007File::readHeader()
{
    constexpr std::size_t kDataSizeAt = 24;
    constexpr std::size_t kDataAt = 32;
    if (m_bytes.size() < kFirstPageAt) {
        fail(m_bytes.size(), L"the file ends within its header");
        return std::nullopt;
    }
    const std::string rows = unmixedRows(m_bytes.substr(kHeaderAt), kHeaderRows, kMapRowSize);
    const auto told = numberAt<std::int32_t>(rows, kDataSizeAt);
    const auto isPlain = told < 0; // then the size is negative
    const std::size_t size
        = isPlain ? 0 - static_cast<std::size_t>(told) : static_cast<std::size_t>(told);
    const std::string_view data = std::string_view(rows).substr(kDataAt);
    std::string header(kHeaderSize, '\0');
    if (size <= data.size()) {
        if (isPlain && size == kHeaderSize) {
            header = data.substr(0, size);
            return header;
        }
        const auto made = decompressR2007Page(data.substr(0, size), {header.data(), header.size()});
        if (!isPlain && made == kHeaderSize) {
            return header;
        }
    }
    fail(kHeaderAt, L"the file header cannot be decompressed");
    return std::nullopt;
}

std::optional<std::string> R2007File::readMap(const CodedMap& map)
{
    const auto nothing = [&](const wchar_t* what) {
        fail(static_cast<std::size_t>(std::min<std::uint64_t>(map.address, m_bytes.size())), what);
        return std::nullopt;
    };
    const std::uint64_t size = m_bytes.size();
    if (map.address > size || map.dataSize > size || map.repeats > size) {
        return nothing(L"a map of pages or sections lies outside the file");
    }
    const std::uint64_t rows = rowsOf(inWords(map.dataSize) * map.repeats, kMapRowSize);
    if (rows > (size - map.address) / kCodedRowSize || rows * kMapRowSize < map.dataSize) {
        return nothing(L"a map of pages or sections lies outside the file");
    }
    if (!m_allowance.take(map.size)) {
        return nothing(L"a map of pages or sections cannot be as long as it says");
    }
    const std::string data = unmixedRows(m_bytes.substr(static_cast<std::size_t>(map.address)),
                                         static_cast<std::size_t>(rows), kMapRowSize);
    std::string out(static_cast<std::size_t>(map.size), '\0');
    const auto made = decompressR2007Page(
        std::string_view(data).substr(0, static_cast<std::size_t>(map.dataSize)),
        {out.data(), out.size()});
    if (made != out.size()) {
        return nothing(L"a map of pages or sections cannot be decompressed");
    }
    return out;
}

bool R2007File::open()
{
    const auto header = readHeader();
    if (!header) {
        return false;
    }
    const std::uint64_t address = longAt(*header, kPageMapAddressAt);
    const auto pageMap = readMap({.address = std::min(address, kMostNumber) + kFirstPageAt,
                                  .size = longAt(*header, kPageMapSizeAt),
                                  .dataSize = longAt(*header, kPageMapDataSizeAt),
                                  .repeats = longAt(*header, kPageMapRepeatsAt)});
    if (!pageMap) {
        return false;
    }
    auto places = decodeR2007PageMap(*pageMap);
    if (!places) {
        return fail(kHeaderAt, L"the page map is damaged");
    }
    m_places = std::move(*places);
    std::stable_sort(m_places.begin(), m_places.end(),
                     [](const PlacedPage& a, const PlacedPage& b) { return a.id < b.id; });
    const PlacedPage* const place = placeOf(longAt(*header, kSectionMapIdAt));
    if (place == nullptr) {
        return fail(kHeaderAt, L"the section map lies outside the file");
    }
    const auto sectionMap = readMap({.address = place->address,
                                     .size = longAt(*header, kSectionMapSizeAt),
                                     .dataSize = longAt(*header, kSectionMapDataSizeAt),
                                     .repeats = longAt(*header, kSectionMapRepeatsAt)});
    if (!sectionMap) {
        return false;
    }
    auto sections = decodeR2007SectionMap(*sectionMap);
    if (!sections) {
        return fail(place->address, L"the section map is cut off");
    }
    m_sections = std::move(*sections);
    return true;
}

const R2007Section* R2007File::find(std::string_view name) const
{
    const auto found = std::find_if(m_sections.begin(), m_sections.end(),
                                    [&](const R2007Section& row) { return row.name == name; });
    return found == m_sections.end() ? nullptr : &*found;
}

const PlacedPage* R2007File::placeOf(std::uint64_t id) const
{
    const auto found = std::lower_bound(
        m_places.begin(), m_places.end(), id,
        [](const PlacedPage& page, std::uint64_t wanted) { return page.id < wanted; });
    const bool isThere
        = found != m_places.end() && found->id == id && found->address < m_bytes.size();
    return isThere ? &*found : nullptr;
}

std::optional<std::string> R2007File::read(const R2007Section& section)
{
    if (!m_allowance.take(section.size)) {
        fail(kHeaderAt, L"a section cannot be as long as it says");
        return std::nullopt;
    }
    std::string out(static_cast<std::size_t>(section.size), '\0');
    for (const R2007Page& page : section.pages) {
        if (!readPage(section, page, out)) {
            return std::nullopt;
        }
    }
    return out;
}

bool R2007File::readPage(const R2007Section& section, const R2007Page& page, std::string& out)
{
    constexpr std::uint64_t kMixed = 4; // coding of pages in rows; others are as they are
    const PlacedPage* const place = placeOf(page.id);
    if (place == nullptr) {
        return fail(m_bytes.size(), L"a page lies outside the file");
    }
    const std::size_t at = place->address;
    const std::string_view stored = m_bytes.substr(at, place->size);
    if (page.dataSize > stored.size() || page.start > out.size()
        || page.size > out.size() - page.start) {
        return fail(at, L"a page is longer than the file or its section");
    }
    if (!m_allowance.takeWork(stored.size() + page.size)) {
        return fail(at, L"a section has more pages than the file");
    }
    std::string rows;
    std::string_view data = stored;
    if (section.coding == kMixed) {
        const std::uint64_t count = rowsOf(inWords(page.dataSize), kPageRowSize);
        if (count > stored.size() / kCodedRowSize) {
            return fail(at, L"a page is longer than the file or its section");
        }
        rows = unmixedRows(stored, static_cast<std::size_t>(count), kPageRowSize);
        data = rows;
    }
    data = data.substr(0, static_cast<std::size_t>(page.dataSize));
    const std::span<char> to(out.data() + page.start, static_cast<std::size_t>(page.size));
    if (page.dataSize == page.size) {
        std::memcpy(to.data(), data.data(), data.size());
    } else if (decompressR2007Page(data, to) != to.size()) {
        return fail(at, L"a page cannot be decompressed");
    }
    if (r2007Checksum({to.data(), to.size()}) != page.checksum) {
        return fail(at, L"a page has a wrong checksum");
    }
    return true;
}

} // namespace corma::host::dwg
