#include "host/dwg/Container.h"
#include "host/dwg/MadeR2007File.h"
#include "host/dwg/R2007File.h"
#include "host/dwg/object_map.h"
#include "host/dwg/sections.h"
#include "platform/text.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <variant>

namespace corma::host::dwg {
namespace {

using corma::testing::literalStream;
using corma::testing::MadeR2007File;
using corma::testing::mixedRows;
using corma::testing::r2007MapEntry;

constexpr std::uint64_t kMixed = 4;
constexpr std::size_t kRowSize = 251;

// A page in rows, whose number is the next one.
void addPage(const std::string& content, MadeR2007File& file, R2007Section& section)
{
    std::string whole = content;
    const std::string stream = literalStream(whole);
    constexpr std::size_t kStep = 64;
    whole.resize(std::max((whole.size() + kStep - 1) / kStep * kStep, kStep), '\0');
    const std::uint64_t id = file.pages.size() + 1;
    file.pages.push_back({.stored = mixedRows(stream, kRowSize), .id = id});
    section.pages.push_back({.start = section.size,
                             .id = id,
                             .size = whole.size(),
                             .dataSize = stream.size(),
                             .checksum = r2007Checksum(whole)});
    section.size += whole.size();
}

struct Sample
{
    MadeR2007File file;
    std::vector<R2007Section> sections;

    [[nodiscard]] std::string bytes()
    {
        file.sectionMap.clear();
        for (const R2007Section& section : sections) {
            file.sectionMap += r2007MapEntry(section);
        }
        return file.bytes();
    }
};

Sample sample()
{
    constexpr std::size_t kObjectsSize = 64 * 300;
    Sample made;
    const std::pair<std::string_view, std::string> contents[] = {
        {section::kHeader, std::string(640, 'h')},
        {section::kClasses, std::string(128, 'c')},
        {section::kMap, encodeObjectMap({})},
        {section::kObjects, std::string(kObjectsSize, 'o')},
    };
    for (const auto& [name, content] : contents) {
        R2007Section section;
        section.name = name;
        section.coding = kMixed;
        addPage(content, made.file, section);
        made.sections.push_back(section);
    }
    addPage("more objects", made.file, made.sections.back());
    return made;
}

std::wstring messageOf(const std::string& bytes)
{
    const auto read = readContainer(textContent(bytes), L"a.dwg");
    const auto* const trouble = std::get_if<ReadResult>(&read);
    return trouble == nullptr ? std::wstring() : trouble->message;
}

::testing::AssertionResult has(const std::wstring& message, std::wstring_view part)
{
    const bool isThere = message.find(part) != std::wstring::npos;
    return (isThere ? ::testing::AssertionSuccess() : ::testing::AssertionFailure())
        << toUtf8(message);
}

TEST(R2007Container, PartsComeOutOfThePagesOfTheirSections)
{
    const std::string bytes = sample().bytes();
    const auto read = readContainer(textContent(bytes), L"a.dwg");
    ASSERT_TRUE(std::holds_alternative<std::unique_ptr<Container>>(read)) << bytes.size();
    const auto& container = *std::get<std::unique_ptr<Container>>(read);
    EXPECT_EQ(container.parts().version, DrawingVersion::r2007);
    EXPECT_EQ(container.parts().header, std::string(640, 'h'));
    EXPECT_EQ(container.parts().classes, std::string(128, 'c'));
    EXPECT_TRUE(container.parts().objects.ends_with("more objects" + std::string(64 - 12, '\0')));
    EXPECT_EQ(container.bytes(), bytes);
    EXPECT_EQ(container.canWrite(), Acad::eNotImplementedYet);
    EXPECT_FALSE(container.write({}, [](std::string_view) { return true; }));
}

TEST(R2007Container, AnAbsentPageIsZeros)
{
    Sample made = sample();
    made.sections.back().pages.erase(made.sections.back().pages.begin());
    const auto read = readContainer(textContent(made.bytes()), L"a.dwg");
    ASSERT_TRUE(std::holds_alternative<std::unique_ptr<Container>>(read));
    const auto objects = std::get<std::unique_ptr<Container>>(read)->parts().objects;
    EXPECT_EQ(objects.find_first_not_of('\0'), 64U * 300U);
}

TEST(R2007Container, EachDamageIsNamed)
{
    Sample made = sample();
    ++made.sections[0].pages[0].checksum;
    EXPECT_TRUE(has(messageOf(made.bytes()), L"a page has a wrong checksum"));
    made = sample();
    made.sections[1].pages[0].id = 77;
    EXPECT_TRUE(has(messageOf(made.bytes()), L"a page lies outside the file"));
    made = sample();
    made.sections[1].pages[0].dataSize = 100000;
    EXPECT_TRUE(has(messageOf(made.bytes()), L"a page is longer than the file or its section"));
    made = sample();
    made.sections[2].size = std::uint64_t {1} << 50U;
    EXPECT_TRUE(has(messageOf(made.bytes()), L"a section cannot be as long as it says"));
    made = sample();
    made.sections[3].name = "AcDb:Objects";
    EXPECT_TRUE(has(messageOf(made.bytes()), L"the section AcDb:AcDbObjects is missing"));
    made = sample();
    made.sections[3].pages.assign(5000, made.sections[3].pages[0]);
    EXPECT_TRUE(has(messageOf(made.bytes()), L"a section has more pages than the file"));
}

TEST(R2007Container, ACutFileIsRefused)
{
    const std::string bytes = sample().bytes();
    for (std::size_t size = 6; size + 16 < bytes.size(); size += 13) {
        const std::wstring trouble = messageOf(bytes.substr(0, size));
        // The page map stands at the end, with parity that is not read.
        EXPECT_TRUE(trouble.starts_with(L"a.dwg, byte ")) << size;
    }
}

TEST(R2007Container, ChangedBytesAreReadOrRefused)
{
    const std::string bytes = sample().bytes();
    std::mt19937 random(1);
    for (std::size_t at = 6; at < bytes.size(); at += 9) {
        std::string changed = bytes;
        changed[at] = static_cast<char>(random());
        const std::wstring trouble = messageOf(changed);
        EXPECT_TRUE(trouble.empty() || trouble.starts_with(L"a.dwg")) << at;
    }
}

TEST(R2007SectionMap, ACutOneIsNone)
{
    R2007Section section;
    section.name = "Name";
    section.pages.resize(2);
    const std::string entry = r2007MapEntry(section);
    const auto sections = decodeR2007SectionMap(entry + entry);
    ASSERT_TRUE(sections);
    EXPECT_EQ(sections->size(), 2U);
    EXPECT_EQ(sections->front().name, "Name");
    EXPECT_EQ(sections->front().pages.size(), 2U);
    for (std::size_t size = 1; size < entry.size(); ++size) {
        EXPECT_FALSE(decodeR2007SectionMap(entry.substr(0, size))) << size;
    }
}

} // namespace
} // namespace corma::host::dwg
