// The records of real DWG drawings that are not drawn: all of them are understood, and they say
// what the DXF file of the same drawing says.

#include "host/dwg/SampleNames.h"
#include "platform/platform.h"
#include "platform/text.h"
#include "support/DxfDrawing.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <gtest/gtest.h>
#include <set>

namespace corma::host::dwg {
namespace {

using corma::testing::described;
using corma::testing::DxfDrawing;

const std::set<std::string_view> kTypes = {"TABLE",
                                           "BLOCK_RECORD",
                                           "LAYER",
                                           "STYLE",
                                           "LTYPE",
                                           "VIEW",
                                           "UCS",
                                           "VPORT",
                                           "APPID",
                                           "DIMSTYLE",
                                           "VX",
                                           "DICTIONARY",
                                           "XRECORD",
                                           "LAYOUT",
                                           "GROUP",
                                           "MLINESTYLE",
                                           "PLOTSETTINGS",
                                           "DICTIONARYVAR",
                                           "SCALE",
                                           "SORTENTSTABLE",
                                           "RASTERVARIABLES",
                                           "ACDBPLACEHOLDER",
                                           "IMAGEDEF",
                                           "ACDBDICTIONARYWDFLT",
                                           "WIPEOUTVARIABLES"};

/// Goes over the records of these types in all samples.
void eachObject(const std::function<void(const SampleFile&, const SampleNames&, Record&)>& take)
{
    for (const auto& path : sampleDwgFiles()) {
        SCOPED_TRACE(path.filename().string());
        const SampleFile file(path);
        const SampleNames names(file);
        file.eachRecord([&](std::string_view bytes, Handle /*handle*/) {
            auto record = Record::read(bytes, file.form, file.types);
            if (record && kTypes.count(file.types.find(record->type()).name) != 0) {
                take(file, names, *record);
            }
        });
    }
}

/// Its data has a code that begins extended data in groups.
constexpr std::string_view kHasApplication = "XRECORD 357";

std::string labelOf(const SampleFile& file, const Record& record)
{
    return std::string(file.types.find(record.type()).name) + " "
        + toUtf8(toText(record.frame().self.target));
}

bool isEqual(const Group& a, const Group& b)
{
    constexpr double kRelative = 1e-9;
    if (a.code != b.code) {
        return false;
    }
    if (std::holds_alternative<double>(a.value) || std::holds_alternative<double>(b.value)) {
        return std::fabs(a.real() - b.real()) <= kRelative * std::max(1.0, std::fabs(b.real()));
    }
    // Names of linetypes stand in the case of the table's entry or in another.
    return a.value == b.value
        || (a.code == code::linetype && foldedName(a.text()) == foldedName(b.text()));
}

bool areEqual(const Groups& a, const Groups& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), isEqual);
}

/// The DXF file of the same drawing.
std::filesystem::path dxfPathOf(std::filesystem::path path)
{
    return path.replace_extension(".dxf");
}

} // namespace

TEST(DwgObjectSamples, EveryOneIsUnderstood)
{
    if (sampleDwgFiles().empty()) {
        GTEST_SKIP() << kNoSamples;
    }
    eachObject([](const SampleFile& file, const SampleNames& /*names*/, const Record& record) {
        const bool isException = labelOf(file, record) == kHasApplication
            && file.path.filename() == "libredwg-2000_PolyLine2D.dwg";
        EXPECT_EQ(record.depth() == Record::Depth::all, !isException) << labelOf(file, record);
    });
}

TEST(DwgObjectSamples, ItsOwnGroupsLeaveARecordAsItIs)
{
    if (sampleDwgFiles().empty()) {
        GTEST_SKIP() << kNoSamples;
    }
    eachObject([](const SampleFile& file, const SampleNames& names, Record& record) {
        if (record.depth() != Record::Depth::all) {
            return;
        }
        Groups groups;
        record.toGroups(names, groups);
        const std::string before = record.bytes();
        const auto facts = record.blockFacts();
        const auto trouble = record.fromGroups(names, groups, surroundingsOf(record, groups));
        if (facts) {
            record.setBlockFacts(*facts);
        }
        EXPECT_FALSE(trouble) << labelOf(file, record);
        EXPECT_EQ(record.bytes() == before, true) << labelOf(file, record);
    });
}

TEST(DwgObjectSamples, ANewRecordOfTheGroupsHasTheSameGroups)
{
    if (sampleDwgFiles().empty()) {
        GTEST_SKIP() << kNoSamples;
    }
    eachObject([](const SampleFile& file, const SampleNames& names, const Record& record) {
        if (record.depth() != Record::Depth::all) {
            return;
        }
        Groups groups;
        record.toGroups(names, groups);
        Record fresh(file.form, file.types, record.type());
        ASSERT_FALSE(fresh.fromGroups(names, groups, surroundingsOf(record, groups)))
            << labelOf(file, record);
        const auto back = Record::read(fresh.bytes(), file.form, file.types);
        ASSERT_TRUE(back && back->depth() == Record::Depth::all) << labelOf(file, record);
        Groups again;
        back->toGroups(names, again);
        EXPECT_TRUE(areEqual(again, groups)) << labelOf(file, record) << "\n"
                                             << described(groups) << described(again);
    });
}

// Drawings of which both files were saved in one go, so most records are the same in both. What is
// left differs in what programs note at each saving.
TEST(DwgObjectSamples, RecordsHaveTheGroupsOfTheDxfFile)
{
    if (sampleDwgFiles().empty()) {
        GTEST_SKIP() << kNoSamples;
    }
    const std::set<std::string_view> exact
        = {"LTYPE", "STYLE", "DICTIONARYVAR", "SCALE", "MLINESTYLE", "GROUP", "APPID"};
    for (const char* const name : {"libredwg-example_2007", "libredwg-example_2018"}) {
        const std::filesystem::path folder = CORMA_SAMPLE_DRAWINGS;
        const SampleFile file(folder / (std::string(name) + ".dwg"));
        const SampleNames names(file);
        const auto content = platform::readFile(dxfPathOf(file.path).native());
        ASSERT_TRUE(content);
        const DxfDrawing twin(content->view());
        int compared = 0;
        file.eachRecord([&](std::string_view bytes, Handle handle) {
            const auto record = Record::read(bytes, file.form, file.types);
            const AcDbStub* const stub = twin.store.find(handle);
            if (!record || stub == nullptr
                || exact.count(file.types.find(record->type()).name) == 0) {
                return;
            }
            Groups groups;
            record->toGroups(names, groups);
            const Groups expected = twin.store.groupsOf(*stub);
            if (expected[0].value == groups[0].value) {
                EXPECT_TRUE(areEqual(groups, expected)) << labelOf(file, *record) << "\n"
                                                        << described(groups) << described(expected);
                ++compared;
            }
        });
        EXPECT_GT(compared, 40) << name;
    }
}

} // namespace corma::host::dwg
