// What must hold for the container of every real drawing in a folder that the developer names.

#include "host/dwg/Container.h"
#include "host/dwg/PagedFile.h"
#include "host/dwg/checksum.h"
#include "host/dwg/little_endian.h"
#include "host/dwg/object_map.h"
#include "host/dwg/sections.h"
#include "platform/platform.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <variant>
#include <vector>

namespace corma::host::dwg {
namespace {

namespace fs = std::filesystem;

std::string fileBytes(const fs::path& path)
{
    const auto content = platform::readFile(path.native());
    return content ? std::string(content->view()) : std::string();
}

// Those from R2004 on.
std::vector<fs::path> sectionedDrawings()
{
    std::vector<fs::path> found;
    const fs::path folder = CORMA_SAMPLE_DRAWINGS;
    if (folder.empty()) {
        return found;
    }
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.path().extension() == ".dwg"
            && fileBytes(entry.path()).substr(0, 6) >= "AC1018") {
            found.push_back(entry.path());
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

class ContainerSamples : public ::testing::Test
{
protected:
    void SetUp() override
    {
        if (fs::path(CORMA_SAMPLE_DRAWINGS).empty()) {
            GTEST_SKIP() << "no folder of real drawings: configure with "
                            "-DCORMA_SAMPLE_DRAWINGS=FOLDER";
        }
        m_drawings = sectionedDrawings();
        EXPECT_FALSE(m_drawings.empty());
    }

    std::vector<fs::path> m_drawings;
};

std::unique_ptr<Container> containerOf(std::string_view bytes)
{
    auto read = readContainer(textContent(bytes), L"a.dwg");
    if (const auto* const trouble = std::get_if<ReadResult>(&read)) {
        EXPECT_EQ(trouble->message, L"");
        return nullptr;
    }
    return std::get<std::unique_ptr<Container>>(std::move(read));
}

// Of a record with its length ahead and its checksum behind.
std::size_t sizeOfRecord(const Parts& parts, std::size_t at)
{
    constexpr unsigned kMore = 0x8000;
    constexpr unsigned kValueMask = 0x7FFF;
    constexpr unsigned kValueBits = 15;
    constexpr unsigned kMoreByte = 0x80;
    const std::size_t begin = at;
    std::size_t size = 0;
    for (unsigned shift = 0;; shift += kValueBits) {
        const auto word = numberAt<std::uint16_t>(parts.objects, at);
        at += sizeof word;
        size |= std::size_t {word & kValueMask} << shift;
        if ((word & kMore) == 0) {
            break;
        }
    }
    if (parts.version >= DrawingVersion::r2010) {
        while ((static_cast<unsigned char>(parts.objects[at++]) & kMoreByte) != 0) { }
    }
    return at + size + sizeof(std::uint16_t) - begin;
}

// All objects and what stands between them, in the order of the file.
std::vector<ObjectBytes> objectsOf(const Parts& parts)
{
    auto places = decodeObjectMap(parts.map).value_or(std::vector<ObjectPlace>());
    std::sort(places.begin(), places.end(),
              [](const ObjectPlace& a, const ObjectPlace& b) { return a.offset < b.offset; });
    std::vector<ObjectBytes> objects;
    std::size_t at = 4;
    for (const ObjectPlace& place : places) {
        const auto offset = static_cast<std::size_t>(place.offset);
        if (offset > at) {
            objects.push_back(
                {.handle = Handle::none, .bytes = parts.objects.substr(at, offset - at)});
        }
        const std::size_t size = sizeOfRecord(parts, offset);
        objects.push_back({.handle = place.handle, .bytes = parts.objects.substr(offset, size)});
        at = offset + size;
    }
    if (at < parts.objects.size()) {
        objects.push_back({.handle = Handle::none, .bytes = parts.objects.substr(at)});
    }
    return objects;
}

TEST_F(ContainerSamples, EachObjectHasTheChecksumBehindIt)
{
    for (const fs::path& path : m_drawings) {
        SCOPED_TRACE(path);
        const auto container = containerOf(fileBytes(path));
        ASSERT_NE(container, nullptr);
        const Parts& parts = container->parts();
        EXPECT_TRUE(parts.header.starts_with("\xCF\x7B\x1F\x23"));
        EXPECT_TRUE(parts.header.ends_with("\xB1\x92\xCC\xA0"));
        EXPECT_TRUE(parts.classes.starts_with("\x8D\xA1\xC4\xB8"));
        EXPECT_TRUE(parts.classes.ends_with("\x18\x30\x49\x75"));
        const auto places = decodeObjectMap(parts.map);
        ASSERT_TRUE(places);
        EXPECT_GT(places->size(), 100U);
        for (const ObjectPlace& place : *places) {
            const auto offset = static_cast<std::size_t>(place.offset);
            ASSERT_LT(offset, parts.objects.size());
            const std::string_view record
                = parts.objects.substr(offset, sizeOfRecord(parts, offset));
            const std::size_t end = record.size() - sizeof(std::uint16_t);
            ASSERT_EQ(checksum(record.substr(0, end)), numberAt<std::uint16_t>(record, end));
        }
    }
}

// Those that are written anew are left out.
void checkOtherSections(const std::string& former, const std::string& bytes)
{
    PagedFile before(former);
    PagedFile after(bytes);
    ASSERT_TRUE(before.open());
    ASSERT_TRUE(after.open());
    ASSERT_EQ(before.sections().size(), after.sections().size());
    for (const Section& section : before.sections()) {
        const Section* const again = after.find(section.name());
        ASSERT_NE(again, nullptr);
        EXPECT_EQ(again->nameBytes, section.nameBytes);
        EXPECT_EQ(again->size == section.size || section.name() == section::kMap, true);
        if (section.name() == section::kObjects || section.name() == section::kMap
            || section.name() == section::kFreeSpace) {
            continue;
        }
        ASSERT_EQ(again->pages.size(), section.pages.size());
        for (std::size_t i = 0; i < section.pages.size(); ++i) {
            const PlacedPage* const from = before.placeOf(section.pages[i].id);
            const PlacedPage* const to = after.placeOf(again->pages[i].id);
            ASSERT_TRUE(from != nullptr && to != nullptr);
            EXPECT_EQ(from->size, to->size);
            EXPECT_TRUE(
                former.substr(from->address + PageHeader::kSize, section.pages[i].dataSize)
                == bytes.substr(to->address + PageHeader::kSize, section.pages[i].dataSize));
        }
        EXPECT_TRUE(before.read(section) == after.read(*again)) << section.name();
    }
}

TEST_F(ContainerSamples, WritingWhatWasReadChangesNoPartAndNoOtherSection)
{
    for (const fs::path& path : m_drawings) {
        SCOPED_TRACE(path);
        const std::string former = fileBytes(path);
        const auto container = containerOf(former);
        ASSERT_NE(container, nullptr);
        if (container->canWrite() != Acad::eOk) {
            EXPECT_EQ(container->canWrite(), Acad::eNotImplementedYet);
            EXPECT_EQ(container->parts().version, DrawingVersion::r2007);
            EXPECT_FALSE(container->write({}, [](std::string_view) { return true; }));
            continue;
        }
        const Parts& parts = container->parts();
        NewParts unchanged;
        unchanged.objects = objectsOf(parts);
        std::string bytes;
        EXPECT_TRUE(container->write(unchanged, [&](std::string_view piece) {
            bytes += piece;
            return true;
        }));
        const auto again = containerOf(bytes);
        ASSERT_NE(again, nullptr);
        EXPECT_TRUE(again->parts().header == parts.header);
        EXPECT_TRUE(again->parts().classes == parts.classes);
        EXPECT_TRUE(again->parts().objects == parts.objects);
        // Programs cut the map into pieces in more than one way.
        EXPECT_TRUE(encodeObjectMap(*decodeObjectMap(parts.map)) == again->parts().map);
        EXPECT_EQ(again->parts().codePage, parts.codePage);
        EXPECT_EQ(again->parts().maintenance, parts.maintenance);
        checkOtherSections(former, bytes);
    }
}

// It is read, or refused with a message.
void checkDamaged(const std::string& bytes)
{
    auto read = readContainer(textContent(bytes), L"a.dwg");
    if (const auto* const trouble = std::get_if<ReadResult>(&read)) {
        EXPECT_NE(trouble->status, Acad::eOk);
        EXPECT_TRUE(trouble->message.starts_with(L"a.dwg"));
        return;
    }
    const auto& container = std::get<std::unique_ptr<Container>>(read);
    EXPECT_LE(container->parts().objects.size(), 32 * bytes.size() + (1U << 20U));
    decodeObjectMap(container->parts().map);
}

TEST_F(ContainerSamples, CutOnesAreReadOrRefused)
{
    constexpr std::size_t kPlaces = 60;
    for (const fs::path& path : m_drawings) {
        SCOPED_TRACE(path);
        const std::string bytes = fileBytes(path);
        for (std::size_t i = 0; i < kPlaces; ++i) {
            checkDamaged(bytes.substr(0, 6 + i * (bytes.size() - 6) / kPlaces));
        }
    }
}

TEST_F(ContainerSamples, OnesWithChangedBitsAreReadOrRefused)
{
    constexpr int kPlaces = 80;
    std::mt19937 random(1);
    for (const fs::path& path : m_drawings) {
        SCOPED_TRACE(path);
        const std::string bytes = fileBytes(path);
        for (int i = 0; i < kPlaces; ++i) {
            // Half of them where the file tells how it is built.
            const std::size_t most = i % 2 == 0 ? bytes.size() : 0x500;
            std::string changed = bytes;
            const std::size_t at = 6 + random() % (most - 6);
            changed[at]
                = static_cast<char>(static_cast<unsigned char>(changed[at]) ^ (1U << random() % 8));
            checkDamaged(changed);
        }
    }
}

} // namespace
} // namespace corma::host::dwg
