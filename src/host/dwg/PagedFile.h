#pragma once

// The pages of a file from R2004 on (other than R2007). A file is a head, then pages of sections,
// and behind them two pages of the system: the section map tells which pages hold a section, the
// page map tells where each page stands. The mixed part of the head leads to both.

#include "host/dwg/Allowance.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corma::host::dwg {

inline constexpr std::size_t kPagedHeadSize = 0x100; // where the first page begins

/// The part of the head that is mixed with kMask, as it is without.
struct PagedHeader
{
    static constexpr std::size_t kAt = 0x80;
    static constexpr std::size_t kSize = 0x6C;

    std::uint64_t pageMapAddress = 0; // in the file
    std::uint32_t sectionMapId = 0;
};

inline constexpr std::size_t kPlaceSize = 8; // of an entry of the page map

struct PlacedPage
{
    std::uint32_t id = 0;
    std::size_t address = 0; // in the file
    std::size_t size = 0;
};

struct SectionPage
{
    std::uint32_t id = 0;
    std::uint32_t dataSize = 0; // as it is stored
    std::uint64_t start = 0; // in the section
};

/// A section, as its descriptor tells it.
struct Section
{
    static constexpr std::size_t kNameSize = 64;
    static constexpr std::uint32_t kUsualPageSize = 0x7400;

    enum class Form : std::uint32_t
    {
        plain = 1,
        compressed = 2
    };

    std::uint64_t size = 0;
    std::uint32_t pageSize = kUsualPageSize; // of what a page holds, not of what is stored
    std::uint32_t unknown = 1;
    Form form = Form::compressed;
    std::uint32_t id = 0;
    std::uint32_t encrypted = 0;
    std::string nameBytes; // kNameSize; what stands behind the name is kept, too
    std::vector<SectionPage> pages;

    [[nodiscard]] std::string_view name() const;
};

/// The header of a page of a section, which is mixed with the page's address.
struct PageHeader
{
    static constexpr std::size_t kSize = 0x20;

    std::uint32_t type = 0;
    std::uint32_t sectionId = 0;
    std::uint32_t dataSize = 0; // as it is stored
    std::uint32_t pageSize = 0; // in the file, with this header
    std::uint64_t start = 0; // in the section
    std::uint32_t headerChecksum = 0;
    std::uint32_t dataChecksum = 0;
};

inline constexpr std::uint32_t kSectionPageType = 0x4163043B;
inline constexpr std::uint32_t kPageMapType = 0x41630E3B;
inline constexpr std::uint32_t kSectionMapType = 0x4163003B;

inline constexpr std::size_t kPageStep = 0x20; // each page begins at a multiple of it

/// The places of the pages; those of gaps are left out. Nothing when an entry is cut off.
std::optional<std::vector<PlacedPage>> decodePageMap(std::string_view bytes);

/// Nothing when a descriptor is cut off.
std::optional<std::vector<Section>> decodeSectionMap(std::string_view bytes);

/// Takes the mask from the header of a page, or puts it on. Of kSize bytes.
std::string maskedPageHeader(std::string_view bytes, std::size_t address);

/// A page header's fields; of kSize bytes without the mask.
PageHeader decodePageHeader(std::string_view bytes);

/// Without the mask, and with both checksums. `data` is what is stored behind it.
std::string encodePageHeader(const PageHeader& header, std::string_view data);

/// What a page of the system begins with.
struct SystemPageHeader
{
    static constexpr std::size_t kSize = 0x14;

    std::uint32_t type = 0;
    std::uint32_t size = 0; // of what comes out
    std::uint32_t dataSize = 0; // as it is stored
    std::uint32_t compression = 2; // there is no other
    std::uint32_t checksum = 0;
};

SystemPageHeader decodeSystemPageHeader(std::string_view bytes);

/// With its checksum. `data` is what is stored behind it.
std::string encodeSystemPageHeader(const SystemPageHeader& header, std::string_view data);

/// What is wrong with a file, and at which byte.
struct PageTrouble
{
    std::size_t at = 0;
    const wchar_t* what = nullptr; // null: nothing
};

/// Reads what leads to the sections, and the sections that are asked for. The file's bytes must
/// outlive it.
class PagedFile
{
public:
    explicit PagedFile(std::string_view bytes);

    /// Reads both maps.
    bool open();

    /// Of the one that was found first.
    [[nodiscard]] const PageTrouble& trouble() const { return m_trouble; }

    [[nodiscard]] const std::vector<Section>& sections() const { return m_sections; }

    /// Null for none of that name.
    [[nodiscard]] const Section* find(std::string_view name) const;

    /// What a section holds. A page that is absent is zeros. Nothing when a page is damaged.
    std::optional<std::string> read(const Section& section);

    /// The place of a page. Null when the map has none of that number, or it lies outside the file.
    [[nodiscard]] const PlacedPage* placeOf(std::uint32_t id) const;

    /// The page that a byte of the file lies in; null for none.
    [[nodiscard]] const PlacedPage* pageAt(std::size_t address) const;

private:
    bool openHeader(PagedHeader& header);
    std::optional<std::string> systemPage(std::size_t address, std::uint32_t type);
    bool readPage(const Section& section, const SectionPage& page, std::size_t size,
                  std::string& out);
    bool take(std::uint64_t size, std::size_t at);
    bool fail(std::size_t at, const wchar_t* what);

    std::string_view m_bytes;
    Allowance m_allowance;
    std::vector<PlacedPage> m_places; // in the order of their numbers
    std::vector<Section> m_sections;
    PageTrouble m_trouble;
};

} // namespace corma::host::dwg
