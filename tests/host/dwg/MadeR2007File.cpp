#include "host/dwg/MadeR2007File.h"

#include "host/dwg/little_endian.h"

#include <algorithm>

namespace corma::testing {

using host::dwg::addNumber;
using host::dwg::kCodedRowSize;
using host::dwg::putNumber;

namespace {

constexpr std::size_t kMapRowSize = 239;
constexpr std::size_t kFirstPageAt = 0x480;
constexpr std::size_t kHeaderAt = 0x80;
constexpr std::uint64_t kPageMapId = 1000001;
constexpr std::uint64_t kSectionMapId = 1000002;

std::size_t filledUp(std::size_t size)
{
    constexpr std::size_t kStep = 64;
    return (size + kStep - 1) / kStep * kStep;
}

// With room for what a reader takes for the parity of the last row.
std::string mapPage(std::string_view content)
{
    return mixedRows(literalStream(std::string(content)), kMapRowSize);
}

// A section without pages makes the map as long as what comes out of a stream.
std::string closedMap(std::string map)
{
    constexpr std::size_t kEntrySize = 64;
    constexpr std::size_t kNameSizeAt = 0x20;
    std::string entry(kEntrySize, '\0');
    const std::size_t whole = filledUp(map.size() + kEntrySize);
    putNumber<std::uint64_t>(whole - map.size() - kEntrySize, kNameSizeAt, entry);
    map += entry;
    map.resize(whole, '\0');
    return map;
}

std::size_t sizeInFile(std::string_view content)
{
    return literalStream(std::string(content)).size();
}

} // namespace

std::string literalStream(std::string bytes)
{
    constexpr std::size_t kWord = 8;
    constexpr std::size_t kWhole = 32;
    constexpr std::size_t kLong = 0x17;
    constexpr std::size_t kByteMost = 0xFF;
    constexpr std::size_t kMost = 0xFFFF;
    constexpr unsigned kLongOpcode = 0x0F;
    bytes.resize(std::max(filledUp(bytes.size()), 2 * kWhole), '\0');
    std::string stream(1, static_cast<char>(kLongOpcode));
    std::size_t left = bytes.size() - kLong;
    stream += static_cast<char>(std::min(left, kByteMost));
    if (left >= kByteMost) {
        left -= kByteMost;
        for (; left >= kMost; left -= kMost) {
            addNumber(static_cast<std::uint16_t>(kMost), stream);
        }
        addNumber(static_cast<std::uint16_t>(left), stream);
    }
    for (std::size_t at = 0; at < bytes.size(); at += kWhole) {
        for (std::size_t back = kWord; back <= kWhole; back += kWord) {
            stream += bytes.substr(at + kWhole - back, kWord);
        }
    }
    return stream;
}

std::string mixedRows(std::string bytes, std::size_t rowSize)
{
    constexpr std::size_t kWord = 8;
    const std::size_t words = (bytes.size() + kWord - 1) / kWord * kWord;
    const std::size_t rows = (words + rowSize - 1) / rowSize;
    bytes.resize(rows * rowSize, '\0');
    std::string mixed(rows * kCodedRowSize, '\0');
    for (std::size_t row = 0; row < rows; ++row) {
        for (std::size_t i = 0; i < rowSize; ++i) {
            mixed[row + i * rows] = bytes[row * rowSize + i];
        }
    }
    return mixed;
}

std::string r2007MapEntry(const host::dwg::R2007Section& section)
{
    std::string entry;
    const auto add = [&](std::uint64_t number) { addNumber(number, entry); };
    add(section.size);
    add(0); // the most that a page holds
    add(0);
    add(0);
    add(2 * section.name.size());
    add(0);
    add(section.coding);
    add(section.pages.size());
    for (const char c : section.name) {
        entry += c;
        entry += '\0';
    }
    for (const auto& page : section.pages) {
        add(page.start);
        add(0);
        add(page.id);
        add(page.size);
        add(page.dataSize);
        add(page.checksum);
        add(0);
    }
    return entry;
}

std::string MadeR2007File::bytes() const
{
    constexpr std::size_t kHeaderSize = 0x110;
    constexpr std::size_t kHeaderDataAt = 32;
    constexpr std::size_t kHeaderSizeAt = 24;
    const std::string closed = closedMap(sectionMap);
    const std::string sections = mapPage(closed);
    std::string map;
    const auto addPlace = [&](std::size_t size, std::uint64_t id) {
        addNumber<std::uint64_t>(size, map);
        addNumber(id, map);
    };
    std::string body;
    for (const Page& page : pages) {
        addPlace(page.stored.size(), page.id);
        body += page.stored;
    }
    addPlace(sections.size(), kSectionMapId);
    const std::size_t pageMapAt = body.size() + sections.size();
    const std::string pageMap = mapPage(map);
    body += sections + pageMap;

    std::string header(kHeaderSize, '\0');
    const auto put = [&](std::size_t at, std::uint64_t number) { putNumber(number, at, header); };
    put(0x18, 1);
    put(0x38, pageMapAt);
    put(0x40, kPageMapId);
    put(0x50, sizeInFile(map));
    put(0x58, std::max<std::size_t>(filledUp(map.size()), 64));
    put(0xB0, sizeInFile(closed));
    put(0xC0, kSectionMapId);
    put(0xC8, closed.size());
    put(0xD8, 1);
    std::string rows(kHeaderDataAt, '\0');
    putNumber(static_cast<std::uint32_t>(0U - kHeaderSize), kHeaderSizeAt, rows);
    rows += header;
    rows.resize(3 * kMapRowSize - sizeof(std::uint64_t), '\0'); // three rows of words
    std::string file = "AC1021";
    file.resize(kHeaderAt, '\0');
    file += mixedRows(rows, kMapRowSize);
    file.resize(kFirstPageAt, '\0');
    return file + body;
}

} // namespace corma::testing
