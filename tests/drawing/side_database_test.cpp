#include "BlockTest.h"
#include "drawing/side_database.h"
#include "platform/text.h"

#include <gtest/gtest.h>

namespace corma::testing {

namespace {

// --- names ---------------------------------------------------------------------------------------

struct DrawingNameRow
{
    const char* sentence;
    const wchar_t* name;
    DrawingNames names;
    const wchar_t* file; // the only one that is there
};

std::string sentenceOf(const ::testing::TestParamInfo<DrawingNameRow>& row)
{
    return row.param.sentence;
}

class FindDrawingByName : public BlockTest, public ::testing::WithParamInterface<DrawingNameRow>
{
};

TEST_P(FindDrawingByName, LooksForTheFile)
{
    EXPECT_EQ(findDrawing(GetParam().name, GetParam().names).status, RTERROR);
    const std::wstring path = folder.write(std::wstring(L"support/") + GetParam().file, "");
    const FoundDrawing found = findDrawing(GetParam().name, GetParam().names);
    EXPECT_EQ(found.status, RTNORM);
    EXPECT_EQ(folder.homely(found.path), folder.homely(path));
}

constexpr auto kDwg = DrawingNames::dwgOrDwt;
constexpr auto kDxfToo = DrawingNames::dwgDwtOrDxf;

// clang-format off
INSTANTIATE_TEST_SUITE_P(Of, FindDrawingByName, ::testing::Values(
    DrawingNameRow {"ABareNameGetsTheExtensionOfADrawing",   L"door",          kDwg,    L"DOOR.DWG"},
    DrawingNameRow {"ABareNameGetsItAmongDxfFilesToo",       L"door",          kDxfToo, L"DOOR.DWG"},
    DrawingNameRow {"ADrawingStays",                         L"door.dwg",      kDwg,    L"DOOR.DWG"},
    DrawingNameRow {"TheCaseOfTheExtensionDoesNotCount",     L"Door.DwG",      kDxfToo, L"DOOR.DWG"},
    DrawingNameRow {"ATemplateStays",                        L"door.dwt",      kDwg,    L"DOOR.DWT"},
    DrawingNameRow {"ATemplateStaysAmongDxfFilesToo",        L"door.Dwt",      kDxfToo, L"DOOR.DWT"},
    DrawingNameRow {"ADxfFileStaysWhereItIsAskedFor",        L"door.dxf",      kDxfToo, L"DOOR.DXF"},
    DrawingNameRow {"ADxfFileIsNoDrawingElsewhere",          L"door.dxf",      kDwg,    L"DOOR.DXF.DWG"},
    DrawingNameRow {"AnotherExtensionIsPartOfTheName",       L"door.bak",      kDxfToo, L"DOOR.BAK.DWG"},
    DrawingNameRow {"APointAtTheEndIsPartOfTheName",         L"door.",         kDwg,    L"DOOR..DWG"},
    DrawingNameRow {"AnExtensionInTheMiddleCounts",          L"door.dwg.old",  kDwg,    L"DOOR.DWG.OLD"},
    DrawingNameRow {"ATemplateInTheMiddleCounts",            L"door.dwtx",     kDxfToo, L"DOOR.DWTX"},
    DrawingNameRow {"DxfInTheMiddleCounts",                  L"door.dxf.2",    kDxfToo, L"DOOR.DXF.2"},
    DrawingNameRow {"TheExtensionOfAFolderCounts",           L"lib.dwg/door",  kDwg,    L"LIB.DWG/DOOR"},
    DrawingNameRow {"AnExtensionAloneIsAName",               L".dwg",          kDwg,    L".DWG"},
    DrawingNameRow {"NoNameIsAnExtensionAlone",              L"",              kDwg,    L".DWG"},
    DrawingNameRow {"BothSeparatorsPartFolders",             L"a\\b/door",     kDwg,    L"A/B/DOOR.DWG"},
    DrawingNameRow {"LettersOutsideAsciiAreCapitalsToo",     L"\u00E9\u00E9n", kDwg,    L"\u00C9\u00C9N.DWG"}),
    sentenceOf);
// clang-format on

using FindDrawing = BlockTest;

TEST_F(FindDrawing, TheNameInCapitalsFindsAFileOfAnyCase)
{
    folder.write(L"support/Door.dwg", "");
    const FoundDrawing found = findDrawing(L"DooR.DWG", kDwg);
    EXPECT_EQ(found.status, RTNORM);
    EXPECT_EQ(folder.homely(found.path), "~/support/DOOR.DWG");
}

TEST_F(FindDrawing, CaseDoesNotCountOutsideAsciiEither)
{
    folder.write(L"support/\u00E9\u00E9n\u0434.dwg", "");
    const FoundDrawing found = findDrawing(L"\u00E9\u00C9n\u0434", kDwg);
    EXPECT_EQ(found.status, RTNORM);
    EXPECT_TRUE(found.path.ends_with(L"/\u00C9\u00C9N\u0414.DWG"));
    EXPECT_EQ(readAside(found.path).status, Acad::eUnsupportedFileFormat);
}

TEST_F(FindDrawing, NothingIsToldOfAFileThatIsNotThere)
{
    const FoundDrawing found = findDrawing(L"door", kDwg);
    EXPECT_EQ(found.status, RTERROR);
    EXPECT_TRUE(found.path.empty());
    EXPECT_EQ(printed() + alerts(), "");
}

// --- places --------------------------------------------------------------------------------------

TEST_F(FindDrawing, PlacesAreLookedThroughInTheirOrder)
{
    copyData("r2000", L"project/plan.dxf");
    ASSERT_TRUE(openDocument(folder.path(L"project/plan.dxf").c_str()));
    const std::vector<std::wstring> places
        = {L"module/", L"support/", L"here/", L"project/", L"module/blokken/", L"module/blocks/"};
    for (const std::wstring& place : places) {
        folder.write(place + L"door.dwg", "");
    }
    for (const std::wstring& place : places) {
        const FoundDrawing found = findDrawing(L"Door", kDwg);
        EXPECT_EQ(folder.homely(found.path), "~/" + toUtf8(place) + "DOOR.DWG");
        folder.remove(place + L"door.dwg");
    }
    EXPECT_EQ(findDrawing(L"Door", kDwg).status, RTERROR);
    closeDocument();
}

TEST_F(FindDrawing, AFullPathIsTakenWhereItIsAndNowhereElse)
{
    const std::wstring path = folder.path(L"lib/door");
    folder.write(L"module/blokken/door.dwg", "");
    EXPECT_EQ(findDrawing(path, kDwg).status, RTERROR);
    folder.write(L"lib/door.dwg", "");
    const FoundDrawing found = findDrawing(path, kDwg);
    EXPECT_EQ(found.status, RTNORM);
    EXPECT_EQ(found.path, upperCase(path) + L".DWG");
}

// --- lengths -------------------------------------------------------------------------------------

// A folder below another one so that a file "D.DWG" in it has a path of a length.
std::wstring folderFor(const std::wstring& parent, std::size_t length)
{
    constexpr std::size_t kName = 6; // with its separator
    std::wstring deep = parent;
    while (deep.size() + kName < length) {
        const std::size_t rest = length - kName - deep.size() - 1;
        // Never so that only a separator would be left for the next folder.
        deep += L"/" + std::wstring(rest > 100 ? 90 : rest, L'f');
    }
    return deep;
}

TEST_F(FindDrawing, APathOf260CharactersIsWhole)
{
    services.variables[L"ACAD"] = folderFor(folder.path(), 260);
    folder.write(services.variables[L"ACAD"].substr(folder.path().size() + 1) + L"/d.dwg", "");
    const FoundDrawing found = findDrawing(L"d", kDwg);
    EXPECT_EQ(found.status, RTNORM);
    EXPECT_EQ(found.path.size(), 260U);
    EXPECT_TRUE(found.path.ends_with(L"/D.DWG"));
    EXPECT_EQ(printed(), "");
}

TEST_F(FindDrawing, ALongerPathIsReportedAndCut)
{
    services.variables[L"ACAD"] = folderFor(folder.path(), 261);
    folder.write(services.variables[L"ACAD"].substr(folder.path().size() + 1) + L"/d.dwg", "");
    const FoundDrawing found = findDrawing(L"d", kDwg);
    EXPECT_EQ(found.status, RTNORM);
    EXPECT_EQ(found.path.size(), 260U);
    EXPECT_TRUE(found.path.ends_with(L"/D.DW"));
    const std::string report = printed();
    EXPECT_TRUE(report.ends_with("(xx_findfile filename length, ec = 261)")) << report;
}

// --- reading -------------------------------------------------------------------------------------

struct ReadRow
{
    const char* sentence;
    const wchar_t* file;
    Acad::ErrorStatus byName;
    Acad::ErrorStatus asDrawing;
};

class ReadAside : public BlockTest, public ::testing::WithParamInterface<ReadRow>
{
};

TEST_P(ReadAside, MakesADrawingThatIsNotTheWorkingOne)
{
    const std::wstring path = folder.write(GetParam().file, lineDrawing(3));
    const SideDatabase named = readAsideByName(path);
    EXPECT_EQ(named.status, GetParam().byName);
    EXPECT_EQ(named.database != nullptr, GetParam().byName == Acad::eOk);
    const SideDatabase drawing = readAside(path);
    EXPECT_EQ(drawing.status, GetParam().asDrawing);
    EXPECT_EQ(drawing.database != nullptr, GetParam().asDrawing == Acad::eOk);
    EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), nullptr);
    EXPECT_EQ(printed() + alerts(), "");
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Of, ReadAside, ::testing::Values(
    ReadRow {"ADrawing",             L"a.dwg",     Acad::eOk,                    Acad::eOk},
    ReadRow {"ATemplate",            L"a.Dwt",     Acad::eOk,                    Acad::eOk},
    ReadRow {"ADxfFile",             L"a.dxF",     Acad::eOk,                    Acad::eOk},
    ReadRow {"AnExtensionWithin",    L"a.dxf.bak", Acad::eOk,                    Acad::eOk},
    ReadRow {"AFolderLikeADrawing",  L"a.dwg/a",   Acad::eOk,                    Acad::eOk},
    ReadRow {"AnotherName",          L"a.dw",      Acad::eUnsupportedFileFormat, Acad::eOk},
    ReadRow {"NoExtension",          L"a",         Acad::eUnsupportedFileFormat, Acad::eOk}),
    [](const auto& row) { return std::string(row.param.sentence); });
// clang-format on

using ReadDrawing = BlockTest;

TEST_F(ReadDrawing, GivesTheHostsStatusAndNoDrawingWhenItCannotBeRead)
{
    const std::wstring path = folder.write(L"a.dwg", "no drawing");
    const SideDatabase drawing = readAside(path);
    EXPECT_EQ(drawing.status, Acad::eUnsupportedFileFormat);
    EXPECT_EQ(drawing.database, nullptr);
    const SideDatabase named = readAsideByName(path);
    EXPECT_EQ(named.status, Acad::eUnsupportedFileFormat);
    EXPECT_EQ(named.database, nullptr);
}

TEST_F(ReadDrawing, GivesTheHostsStatusForAFileThatIsNotThere)
{
    EXPECT_EQ(readAside(folder.path(L"none.dwg")).status, Acad::eFileNotFound);
    EXPECT_EQ(readAsideByName(folder.path(L"none.dxf")).status, Acad::eFileNotFound);
}

TEST_F(ReadDrawing, HandsThePasswordToTheHostWhichHasNoneHere)
{
    const std::wstring path = folder.write(L"a.dwg", lineDrawing(3));
    EXPECT_EQ(readAside(path, L"").status, Acad::eOk);
    EXPECT_EQ(printed(), "");
    const SideDatabase side = readAside(path, L"geheim");
    EXPECT_EQ(side.status, Acad::eInvalidInput);
    EXPECT_EQ(side.database, nullptr);
    EXPECT_EQ(printed(),
              "\n~/a.dwg: a drawing of this format has no password; open it without one.");
}

} // namespace

} // namespace corma::testing
