#include "Input.h"
#include "fuzz_support.h"
#include "host/dwg/Container.h"
#include "host/dwg/MadeR2007File.h"
#include "host/dwg/PagedFile.h"
#include "host/dwg/PagedWriter.h"
#include "host/dwg/little_endian.h"
#include "host/dwg/lz77.h"
#include "host/dwg/object_map.h"
#include "host/dwg/page_checksum.h"
#include "host/dwg/sections.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace {

using namespace corma::host;
using namespace corma::host::dwg;
using corma::fuzzing::Input;
using corma::fuzzing::require;

// From each place in the map to the next one; the objects need not be understood.
std::vector<ObjectBytes> objectsOf(const Parts& parts)
{
    constexpr std::size_t kBegin = 4;
    auto places = decodeObjectMap(parts.map).value_or(std::vector<ObjectPlace>());
    std::sort(places.begin(), places.end(),
              [](const ObjectPlace& a, const ObjectPlace& b) { return a.offset < b.offset; });
    std::vector<ObjectBytes> objects;
    std::size_t at = std::min(kBegin, parts.objects.size());
    Handle handle = Handle::none;
    for (const ObjectPlace& place : places) {
        if (place.offset < at || place.offset > parts.objects.size()) {
            continue;
        }
        const auto offset = static_cast<std::size_t>(place.offset);
        objects.push_back({.handle = handle, .bytes = parts.objects.substr(at, offset - at)});
        at = offset;
        handle = place.handle;
    }
    objects.push_back({.handle = handle, .bytes = parts.objects.substr(at)});
    return objects;
}

std::string written(const Container& container, const NewParts& parts)
{
    std::string bytes;
    require(container.write(parts, [&](std::string_view piece) {
        bytes += piece;
        return true;
    }));
    return bytes;
}

// The file gets smaller when it is written, and with it what may come out of it.
bool mayBeTooLong(const Parts& parts, const std::string& bytes)
{
    constexpr std::size_t kGrowth = 16;
    constexpr std::size_t kLeast = std::size_t {1} << 19U;
    return parts.objects.size() + parts.map.size() + parts.header.size() + parts.classes.size()
        > kGrowth * bytes.size() + kLeast;
}

void checkRewritten(const Container& container)
{
    constexpr std::size_t kPrefix = 4;
    const Parts& parts = container.parts();
    NewParts unchanged;
    unchanged.objects = objectsOf(parts);
    const std::string bytes = written(container, unchanged);
    auto read = readContainer(textContent(bytes), L"FILE");
    if (std::holds_alternative<ReadResult>(read)) {
        require(mayBeTooLong(parts, bytes));
        return;
    }
    const auto& again = *std::get<std::unique_ptr<Container>>(read);
    require(again.parts().version == parts.version);
    require(again.parts().codePage == parts.codePage);
    require(again.parts().maintenance == parts.maintenance);
    require(again.parts().header == parts.header);
    require(again.parts().classes == parts.classes);
    require(parts.objects.size() < kPrefix || again.parts().objects == parts.objects);
}

void checkFile(std::string_view bytes)
{
    auto read = readContainer(textContent(bytes), L"FILE");
    if (const auto* const trouble = std::get_if<ReadResult>(&read)) {
        require(trouble->status != Acad::eOk && !trouble->message.empty());
        return;
    }
    const auto& container = *std::get<std::unique_ptr<Container>>(read);
    require(container.bytes() == bytes);
    const bool isSectioned = container.parts().version >= DrawingVersion::r2004;
    if (isSectioned && container.canWrite() == Acad::eOk) {
        checkRewritten(container);
    }
}

std::string systemPage(std::uint32_t type, std::string_view content)
{
    std::string bytes(content);
    bytes.resize(std::max(bytes.size(), kLeastToCompress), '\0');
    const std::string data = compressPage(bytes);
    const SystemPageHeader header {.type = type,
                                   .size = static_cast<std::uint32_t>(bytes.size()),
                                   .dataSize = static_cast<std::uint32_t>(data.size())};
    return encodeSystemPageHeader(header, data) + data;
}

// A file whose pages and section map are any bytes, with checksums that are right.
std::string pagedFile(Input& input)
{
    constexpr std::string_view kVersions[] = {"AC1018", "AC1024", "AC1027", "AC1032"};
    constexpr std::size_t kPageMapAt = 0x54;
    constexpr std::size_t kSectionMapIdAt = 0x5C;
    constexpr std::size_t kChecksumAt = 0x68;
    std::string file(kVersions[input.byte() % std::size(kVersions)]);
    file.resize(kPagedHeadSize, '\0');
    std::string map;
    std::uint32_t id = 0;
    const auto addPlace = [&](std::size_t size) {
        addNumber(++id, map);
        addNumber(static_cast<std::uint32_t>(size), map);
    };
    for (std::size_t count = input.byte() % 16; count != 0; --count) {
        const auto sectionId = static_cast<std::uint32_t>(input.byte());
        const std::string_view data = input.counted();
        const PageHeader header {.type = kSectionPageType,
                                 .sectionId = sectionId,
                                 .dataSize = static_cast<std::uint32_t>(data.size()),
                                 .pageSize = static_cast<std::uint32_t>(data.size())};
        addPlace(PageHeader::kSize + data.size());
        file += maskedPageHeader(encodePageHeader(header, data), file.size());
        file += data;
    }
    const std::string sections = systemPage(kSectionMapType, input.rest());
    addPlace(sections.size());
    file += sections;
    std::string header = "AcFssFcAJMB";
    header.resize(PagedHeader::kSize, '\0');
    putNumber<std::uint64_t>(file.size() - kPagedHeadSize, kPageMapAt, header);
    putNumber(id, kSectionMapIdAt, header);
    putNumber(headerChecksum(header), kChecksumAt, header);
    for (std::size_t i = 0; i < header.size(); ++i) {
        header[i] = static_cast<char>(static_cast<unsigned char>(header[i]) ^ kMask[i]);
    }
    file.replace(PagedHeader::kAt, header.size(), header);
    file += systemPage(kPageMapType, map);
    return file.append(kPagedHeadSize, '\0');
}

std::string r2007File(Input& input)
{
    corma::testing::MadeR2007File file;
    for (std::size_t count = input.byte() % 16; count != 0; --count) {
        const std::uint64_t id = file.pages.size() + 1;
        file.pages.push_back({.stored = std::string(input.counted()), .id = id});
    }
    file.sectionMap = input.rest();
    return file.bytes();
}

// The maps without a file around them.
void checkMaps(std::string_view bytes)
{
    if (const auto places = decodePageMap(bytes)) {
        require(places->size() <= bytes.size());
    }
    if (const auto places = decodeR2007PageMap(bytes)) {
        require(places->size() <= bytes.size());
    }
    decodeSectionMap(bytes);
    decodeR2007SectionMap(bytes);
}

} // namespace

/// The first byte tells what the others are.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    enum Kind
    {
        file,
        pages,
        r2007Pages,
        maps,
        kinds
    };

    if (size == 0) {
        return 0;
    }
    const std::string_view bytes(reinterpret_cast<const char*>(data + 1), size - 1);
    Input input(bytes);
    switch (data[0] % kinds) {
    case file:
        checkFile(bytes);
        break;
    case pages:
        checkFile(pagedFile(input));
        break;
    case r2007Pages:
        checkFile(r2007File(input));
        break;
    default:
        checkMaps(bytes);
        break;
    }
    return 0;
}
