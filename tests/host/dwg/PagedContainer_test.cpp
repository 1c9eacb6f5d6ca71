#include "host/dwg/Container.h"
#include "host/dwg/PagedWriter.h"
#include "host/dwg/little_endian.h"
#include "host/dwg/object_map.h"
#include "host/dwg/page_checksum.h"
#include "host/dwg/sections.h"
#include "host/dwg/sentinels.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <variant>
#include <vector>

namespace corma::host::dwg {
namespace {

const std::wstring kPath = L"a.dwg";

// Parts of a drawing; they need not be understood here.
struct Drawing
{
    std::string header = "the header variables";
    std::string classes = "the classes" + std::string(kClassesEnd);
    std::vector<std::pair<std::uint64_t, std::string>> objects; // those of number 0 belong to none

    [[nodiscard]] NewParts parts() const
    {
        constexpr std::uint64_t kSeed = 0x4711;
        NewParts made {.header = header, .classes = classes, .objects = {}, .seed = Handle {kSeed}};
        for (const auto& [handle, bytes] : objects) {
            made.objects.push_back({.handle = Handle {handle}, .bytes = bytes});
        }
        return made;
    }
};

// With objects that take more than one page.
Drawing sampleDrawing(std::size_t count = 400)
{
    constexpr std::size_t kMostSize = 300;
    std::mt19937 random(7);
    Drawing drawing;
    for (std::uint64_t handle = 1; handle <= count; ++handle) {
        std::string bytes(1 + random() % kMostSize, 'o');
        for (char& byte : bytes) {
            byte = static_cast<char>(random() % 8);
        }
        drawing.objects.emplace_back(handle * 3, bytes);
    }
    return drawing;
}

std::string written(const Container& container, const NewParts& parts)
{
    std::string bytes;
    EXPECT_TRUE(container.write(parts, [&](std::string_view piece) {
        bytes += piece;
        return true;
    }));
    return bytes;
}

std::string newFile(DrawingVersion version, const Drawing& drawing)
{
    constexpr int kCodePage = 30;
    const auto container = newPagedContainer(version, kCodePage);
    return container ? written(*container, drawing.parts()) : std::string();
}

std::unique_ptr<Container> readBytes(const std::string& bytes)
{
    auto read = readContainer(textContent(bytes), kPath);
    if (const auto* const trouble = std::get_if<ReadResult>(&read)) {
        EXPECT_EQ(trouble->message, L"");
        return nullptr;
    }
    return std::get<std::unique_ptr<Container>>(std::move(read));
}

// Empty for a file that is read.
std::wstring troubleOf(const std::string& bytes)
{
    const auto read = readContainer(textContent(bytes), kPath);
    const auto* const trouble = std::get_if<ReadResult>(&read);
    if (trouble == nullptr) {
        return {};
    }
    EXPECT_NE(trouble->status, Acad::eOk);
    return trouble->message.empty() ? L"no message" : trouble->message;
}

std::string joined(const Drawing& drawing)
{
    std::string all("\xCA\x0D\0\0", 4);
    for (const auto& [handle, bytes] : drawing.objects) {
        all += bytes;
    }
    return all;
}

constexpr DrawingVersion kVersions[]
    = {DrawingVersion::r2004, DrawingVersion::r2010, DrawingVersion::r2013, DrawingVersion::r2018};

TEST(PagedContainer, ANewFileHasThePartsThatItWasWrittenWith)
{
    const Drawing drawing = sampleDrawing();
    for (const DrawingVersion version : kVersions) {
        const auto container = readBytes(newFile(version, drawing));
        ASSERT_NE(container, nullptr);
        const Parts& parts = container->parts();
        EXPECT_EQ(parts.version, version);
        EXPECT_EQ(parts.codePage, 30);
        EXPECT_EQ(parts.header, drawing.header);
        EXPECT_EQ(parts.classes, drawing.classes);
        EXPECT_TRUE(parts.objects == joined(drawing));
        const auto places = decodeObjectMap(parts.map);
        ASSERT_TRUE(places);
        ASSERT_EQ(places->size(), drawing.objects.size());
        for (std::size_t i = 0; i < places->size(); ++i) {
            const auto& [handle, bytes] = drawing.objects[i];
            EXPECT_EQ((*places)[i].handle, Handle {handle});
            EXPECT_TRUE(parts.objects.substr((*places)[i].offset).starts_with(bytes));
        }
    }
}

TEST(PagedContainer, ANewFileOfAnotherReleaseIsNotBegun)
{
    EXPECT_EQ(newPagedContainer(DrawingVersion::r2000, 30), nullptr);
    EXPECT_EQ(newPagedContainer(DrawingVersion::r2007, 30), nullptr);
}

TEST(PagedContainer, ANewFileHasEachSectionThatProgramsLookFor)
{
    for (const DrawingVersion version : kVersions) {
        const std::string bytes = newFile(version, sampleDrawing(2));
        PagedFile file(bytes);
        ASSERT_TRUE(file.open());
        for (const std::string_view name :
             {section::kHeader, section::kClasses, section::kMap, section::kObjects,
              section::kFreeSpace, section::kAuxiliary, section::kTemplate, section::kPreview,
              section::kSummary, section::kAppInfo, section::kFileDependencies,
              section::kHistory}) {
            const Section* const found = file.find(name);
            ASSERT_NE(found, nullptr) << name;
            const auto content = file.read(*found);
            ASSERT_TRUE(content) << name;
            EXPECT_FALSE(content->empty()) << name;
        }
    }
}

TEST(PagedContainer, AddressesInTheHeadLeadToData)
{
    constexpr std::size_t kPreviewAt = 0x0D;
    constexpr std::size_t kSummaryAt = 0x20;
    const Drawing drawing = sampleDrawing();
    const std::string first = newFile(DrawingVersion::r2018, drawing);
    const auto container = readBytes(first);
    ASSERT_NE(container, nullptr);
    NewParts parts = drawing.parts();
    parts.objects.resize(3);
    for (const std::string& bytes : {first, written(*container, parts)}) {
        const auto preview = numberAt<std::uint32_t>(bytes, kPreviewAt);
        EXPECT_TRUE(bytes.substr(preview).starts_with("\x1F\x25\x6D\x07"));
        const auto summary = numberAt<std::uint32_t>(bytes, kSummaryAt);
        EXPECT_TRUE(bytes.substr(summary).starts_with(std::string("\x01\0\0\0\x01\0\0\0", 8)));
    }
}

TEST(PagedContainer, TheFileEndsWithASecondCopyOfItsMixedHeader)
{
    const std::string bytes = newFile(DrawingVersion::r2013, sampleDrawing());
    EXPECT_EQ(bytes.substr(bytes.size() - PagedHeader::kSize),
              bytes.substr(PagedHeader::kAt, PagedHeader::kSize));
}

TEST(PagedContainer, WritingWhatWasReadGivesTheSameFile)
{
    const Drawing drawing = sampleDrawing();
    for (const DrawingVersion version : kVersions) {
        const std::string bytes = newFile(version, drawing);
        const auto container = readBytes(bytes);
        ASSERT_NE(container, nullptr);
        EXPECT_EQ(container->bytes(), bytes);
        NewParts parts = drawing.parts();
        const std::string all = written(*container, parts);
        EXPECT_TRUE(all == bytes);
        parts.header = {};
        parts.classes = {};
        EXPECT_TRUE(written(*container, parts) == all);
        const auto again = readBytes(all);
        ASSERT_NE(again, nullptr);
        EXPECT_EQ(again->parts().header, container->parts().header);
        EXPECT_TRUE(again->parts().objects == container->parts().objects);
        EXPECT_EQ(again->parts().map, container->parts().map);
    }
}

TEST(PagedContainer, BytesThatBelongToNoObjectStayBetweenThem)
{
    Drawing drawing;
    drawing.objects = {{5, "five"}, {0, "none"}, {2, "two"}};
    const auto container = readBytes(newFile(DrawingVersion::r2010, drawing));
    ASSERT_NE(container, nullptr);
    EXPECT_EQ(container->parts().objects, std::string("\xCA\x0D\0\0", 4) + "fivenonetwo");
    const auto places = decodeObjectMap(container->parts().map);
    ASSERT_TRUE(places);
    ASSERT_EQ(places->size(), 2U);
    EXPECT_EQ((*places)[0].handle, Handle {2});
    EXPECT_EQ((*places)[0].offset, 12U);
    EXPECT_EQ((*places)[1].handle, Handle {5});
    EXPECT_EQ((*places)[1].offset, 4U);
}

TEST(PagedContainer, TheClassesEndWithTheirSentinelAndKeepWhatStandsBehind)
{
    const std::string end(kClassesEnd);
    Drawing drawing = sampleDrawing(1);
    drawing.classes = "classes" + end + "behind";
    const auto first = readBytes(newFile(DrawingVersion::r2018, drawing));
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->parts().classes, "classes" + end);
    const std::string classes = "others" + end;
    NewParts parts = drawing.parts();
    parts.classes = classes;
    const std::string bytes = written(*first, parts);
    PagedFile file(bytes);
    ASSERT_TRUE(file.open());
    EXPECT_EQ(file.read(*file.find(section::kClasses)),
              "others" + end + "behind" + std::string(8, '\0'));
}

TEST(PagedContainer, CountAndSeedAreThoseOfTheNewParts)
{
    constexpr std::size_t kCountAt = 8;
    constexpr std::size_t kSeedAt = 79;
    const std::string bytes = newFile(DrawingVersion::r2013, sampleDrawing(5));
    PagedFile file(bytes);
    ASSERT_TRUE(file.open());
    const auto freeSpace = file.read(*file.find(section::kFreeSpace));
    const auto auxiliary = file.read(*file.find(section::kAuxiliary));
    ASSERT_TRUE(freeSpace && auxiliary);
    EXPECT_EQ(numberAt<std::uint64_t>(*freeSpace, kCountAt), 5U);
    EXPECT_EQ(numberAt<std::uint32_t>(*auxiliary, kSeedAt), 0x4711U);
}

TEST(PagedContainer, WritingStopsWhenItIsTold)
{
    const auto container = newPagedContainer(DrawingVersion::r2018, 30);
    ASSERT_NE(container, nullptr);
    const Drawing drawing = sampleDrawing();
    int pieces = 0;
    ASSERT_TRUE(container->write(drawing.parts(), [&](std::string_view) { return ++pieces > 0; }));
    for (int last = 1; last <= pieces; ++last) {
        int count = 0;
        EXPECT_FALSE(
            container->write(drawing.parts(), [&](std::string_view) { return ++count < last; }));
        EXPECT_EQ(count, last);
    }
}

TEST(PagedContainer, ACutFileIsRefusedOrLacksNothingThatIsNeeded)
{
    const std::string bytes = newFile(DrawingVersion::r2004, sampleDrawing(30));
    constexpr std::size_t kRest = 0x200; // in which the page map ends, which fills its page
    for (std::size_t size = 6; size < bytes.size(); ++size) {
        const std::wstring trouble = troubleOf(bytes.substr(0, size));
        EXPECT_TRUE(trouble.starts_with(L"a.dwg, byte ")
                    || (trouble.empty() && size + kRest > bytes.size()))
            << size;
    }
}

TEST(PagedContainer, AnyChangedByteIsFoundOrDoesNoHarm)
{
    const Drawing drawing = sampleDrawing(10);
    const std::string bytes = newFile(DrawingVersion::r2018, drawing);
    const std::string expected = joined(drawing);
    for (std::size_t at = 6; at < bytes.size(); ++at) {
        std::string changed = bytes;
        changed[at] = static_cast<char>(changed[at] ^ 0x10);
        auto read = readContainer(textContent(changed), kPath);
        if (const auto* const trouble = std::get_if<ReadResult>(&read)) {
            EXPECT_FALSE(trouble->message.empty()) << at;
            continue;
        }
        const auto& container = std::get<std::unique_ptr<Container>>(read);
        EXPECT_EQ(container->parts().header, drawing.header) << at;
        EXPECT_TRUE(container->parts().objects == expected) << at;
        if (at % 32 == 0) {
            EXPECT_NE(readBytes(written(*container, drawing.parts())), nullptr) << at;
        }
    }
}

TEST(PagedContainer, ADamagedPageOfAnotherSectionHindersNothing)
{
    constexpr std::size_t kPreviewAt = 0x0D;
    const Drawing drawing = sampleDrawing();
    std::string bytes = newFile(DrawingVersion::r2018, drawing);
    const auto preview = numberAt<std::uint32_t>(bytes, kPreviewAt);
    bytes.replace(preview - PageHeader::kSize, PageHeader::kSize * 2,
                  std::string(PageHeader::kSize * 2, '\xAA'));
    const auto container = readBytes(bytes);
    ASSERT_NE(container, nullptr);
    EXPECT_TRUE(container->parts().objects == joined(drawing));
    const std::string again = written(*container, drawing.parts());
    const auto address = numberAt<std::uint32_t>(again, kPreviewAt);
    EXPECT_EQ(again.substr(address, PageHeader::kSize), std::string(PageHeader::kSize, '\xAA'));
}

TEST(PagedContainer, AFileWithAPasswordIsRefused)
{
    std::string bytes = newFile(DrawingVersion::r2004, sampleDrawing(1));
    bytes[head::kSecurityAt] = 1;
    EXPECT_EQ(troubleOf(bytes),
              L"a.dwg is protected with a password; take the password off in the CAD program to "
              L"open it here");
}

// --- files as nobody writes them
// ----------------------------------------------------------------

Section sectionOf(std::string_view name, std::uint32_t id)
{
    Section section;
    section.id = id;
    section.nameBytes = name;
    section.nameBytes.resize(Section::kNameSize, '\0');
    return section;
}

std::vector<Section> neededSections()
{
    return {sectionOf(section::kHeader, 1), sectionOf(section::kClasses, 2),
            sectionOf(section::kMap, 3), sectionOf(section::kObjects, 4)};
}

std::string headOfR2010()
{
    std::string head = "AC1024";
    head.resize(kPagedHeadSize, '\0');
    return head;
}

std::string finished(PagedWriter& writer)
{
    std::string bytes;
    writer.write([&](std::string_view piece) {
        bytes += piece;
        return true;
    });
    return bytes;
}

TEST(PagedContainer, AnAbsentPageIsZeros)
{
    auto sections = neededSections();
    sections.back().size = 70000;
    PagedWriter writer(headOfR2010(), sections);
    const auto container = readBytes(finished(writer));
    ASSERT_NE(container, nullptr);
    EXPECT_TRUE(container->parts().objects == std::string(70000, '\0'));
    EXPECT_EQ(container->parts().header, "");
}

TEST(PagedContainer, APageBehindAbsentOnesStandsInItsPlace)
{
    PagedWriter writer(headOfR2010(), neededSections());
    const std::string content = std::string(Section::kUsualPageSize, '\0') + "objects";
    writer.add(3, content);
    const std::string bytes = finished(writer);
    PagedFile file(bytes);
    ASSERT_TRUE(file.open());
    Section section = *file.find(section::kObjects);
    ASSERT_EQ(section.pages.size(), 2U);
    section.pages.erase(section.pages.begin());
    const auto read = file.read(section);
    ASSERT_TRUE(read);
    EXPECT_TRUE(*read == content);
}

TEST(PagedContainer, ASectionLongerThanAnyFileIsRefused)
{
    auto sections = neededSections();
    for (const std::uint64_t size : {std::uint64_t {1} << 26U, ~std::uint64_t {0}}) {
        sections.back().size = size;
        PagedWriter writer(headOfR2010(), sections);
        EXPECT_NE(troubleOf(finished(writer)).find(L"a section cannot be as long as it says"),
                  std::wstring::npos);
    }
}

TEST(PagedContainer, APageThatIsNamedAgainAndAgainIsRefused)
{
    constexpr int kTimes = 2000;
    PagedWriter writer(headOfR2010(), neededSections());
    writer.add(3, std::string(100, 'o'));
    for (int i = 0; i < kTimes; ++i) {
        writer.addAgain(3, {.id = 0, .dataSize = 100, .start = 0}, 1);
    }
    EXPECT_NE(troubleOf(finished(writer)).find(L"a section has more pages than the file"),
              std::wstring::npos);
}

TEST(PagedContainer, AMissingSectionIsNamed)
{
    auto sections = neededSections();
    sections.pop_back();
    PagedWriter writer(headOfR2010(), sections);
    EXPECT_NE(troubleOf(finished(writer)).find(L"the section AcDb:AcDbObjects is missing"),
              std::wstring::npos);
}

TEST(PagedContainer, APageOfAnotherSectionIsRefused)
{
    PagedWriter writer(headOfR2010(), neededSections());
    writer.add(2, "map");
    writer.addAgain(3, {.id = 0, .dataSize = 3, .start = 0}, 1);
    EXPECT_NE(troubleOf(finished(writer)).find(L"another page is where one of a section should be"),
              std::wstring::npos);
}

TEST(PagedContainer, PlainSectionsAreReadAndWritten)
{
    auto sections = neededSections();
    sections.front().form = Section::Form::plain;
    sections.front().pageSize = 0x100;
    PagedWriter writer(headOfR2010(), sections);
    const std::string header(1000, 'h');
    writer.add(0, header);
    const auto container = readBytes(finished(writer));
    ASSERT_NE(container, nullptr);
    EXPECT_EQ(container->parts().header, header);
    const std::string other(600, 'x');
    NewParts parts;
    parts.header = other;
    const auto again = readBytes(written(*container, parts));
    ASSERT_NE(again, nullptr);
    EXPECT_EQ(again->parts().header, other);
}

TEST(PageMap, GapsTakePlaceButAreNoPages)
{
    std::string bytes;
    const auto add = [&](std::int32_t number) { addNumber(number, bytes); };
    add(1);
    add(0x40);
    add(-1);
    add(0x60);
    bytes.append(16, '\0');
    add(7);
    add(0x20);
    const auto places = decodePageMap(bytes);
    ASSERT_TRUE(places);
    ASSERT_EQ(places->size(), 2U);
    EXPECT_EQ((*places)[0].address, 0x100U);
    EXPECT_EQ((*places)[1].id, 7U);
    EXPECT_EQ((*places)[1].address, 0x1A0U);
    EXPECT_FALSE(decodePageMap(bytes.substr(0, bytes.size() - 1)));
    EXPECT_FALSE(decodePageMap(bytes.substr(0, bytes.size() - 9)));
}

} // namespace
} // namespace corma::host::dwg
