#pragma once

// The pages of an R2007 file. Its head leads to a page map and a section map, as in the other
// releases, but all three are coded with a correction of errors: a page is cut into rows whose
// bytes are mixed, with parity behind each row. The parity is not used; pages have checksums.

#include "host/dwg/Allowance.h"
#include "host/dwg/PagedFile.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corma::host::dwg {

struct R2007Page
{
    std::uint64_t start = 0; // in the section
    std::uint64_t id = 0;
    std::uint64_t size = 0; // of what it holds
    std::uint64_t dataSize = 0; // as it is stored, without parity
    std::uint64_t checksum = 0;
};

struct R2007Section
{
    std::uint64_t size = 0;
    std::uint64_t coding = 0;
    std::string name; // of which only the part in ASCII is kept
    std::vector<R2007Page> pages;
};

/// Takes `rows` rows of `rowSize` bytes from among the bytes of a coded page, which must hold at
/// least rows * kCodedRowSize bytes.
std::string unmixedRows(std::string_view coded, std::size_t rows, std::size_t rowSize);

inline constexpr std::size_t kCodedRowSize = 255; // with the parity

/// The checksum of what a page holds.
std::uint32_t r2007Checksum(std::string_view bytes);

/// Nothing when an entry is cut off or lies beyond any file.
std::optional<std::vector<PlacedPage>> decodeR2007PageMap(std::string_view bytes);

/// Nothing when a section or page is cut off.
std::optional<std::vector<R2007Section>> decodeR2007SectionMap(std::string_view bytes);

/// Reads what leads to the sections, and the sections that are asked for. The file's bytes must
/// outlive it.
class R2007File
{
public:
    explicit R2007File(std::string_view bytes);

    /// Reads both maps.
    bool open();

    /// Of the one that was found first.
    [[nodiscard]] const PageTrouble& trouble() const { return m_trouble; }

    /// Null for none of that name.
    [[nodiscard]] const R2007Section* find(std::string_view name) const;

    /// What a section holds. A page that is absent is zeros. Nothing when a page is damaged.
    std::optional<std::string> read(const R2007Section& section);

private:
    struct CodedMap
    {
        std::uint64_t address = 0;
        std::uint64_t size = 0;
        std::uint64_t dataSize = 0;
        std::uint64_t repeats = 0; // how often the data is in the page
    };

    std::optional<std::string> readHeader();
    std::optional<std::string> readMap(const CodedMap& map);
    bool readPage(const R2007Section& section, const R2007Page& page, std::string& out);
    [[nodiscard]] const PlacedPage* placeOf(std::uint64_t id) const;
    bool fail(std::size_t at, const wchar_t* what);

    std::string_view m_bytes;
    Allowance m_allowance;
    std::vector<PlacedPage> m_places; // in the order of their numbers
    std::vector<R2007Section> m_sections;
    PageTrouble m_trouble;
};

} // namespace corma::host::dwg
