#include "settings/ReferenceModel.h"
#include "settings/reference_setting.h"

#include <gtest/gtest.h>

namespace corma::testing {

namespace {

FileFamily familyOf(std::map<std::wstring, std::string> files)
{
    return {.folder = L"/m/", .name = L"a.ini", .language = 9, .files = std::move(files)};
}

std::string repeated(std::size_t count, char c)
{
    return std::string(count, c);
}

TEST(ReferenceModel, AChapterThatStandsTwiceGetsItsLaterSettingsInTheSecond)
{
    const auto model = ReferenceModel::load(familyOf({{L"a.ini",
                                                       "a=1\n[T]\nb=2\n[Algemeen]\nc=3\n"
                                                       "[T]\nb=4\nb=5\n"}}));
    EXPECT_EQ(model.asText(),
              L"[\"Algemeen\"] \"General settings\"\n"
              L"    \"a\" = \"1\", type 0, mark 0\n"
              L"[\"T\"] \"\"\n"
              L"    \"b\" = \"2\", type 0, mark 0\n"
              L"[\"Algemeen\"] \"\"\n"
              L"    \"c\" = \"3\", type 0, mark 0\n"
              L"[\"T\"] \"\"\n"
              L"    \"b\" = \"4\", type 0, mark 0\n");
    EXPECT_EQ(model.doubles, std::vector<std::wstring>({L"b"}));
    EXPECT_EQ(model.printed,
              L"\nError in file InstellingenArray.cpp on line 45\n"
              L"(Setting 'b' already exists, ec = 59798)");
}

TEST(ReferenceModel, TheFirstSkippedLineIsToldWithItsNumber)
{
    const auto model
        = ReferenceModel::load(familyOf({{L"a.ini", "; no\n\n[open\r\nno entry\n a=1"}}));
    EXPECT_EQ(model.boxes,
              std::vector<std::wstring>({L"Line was skipped! Expected: \"]\" (ini:2) (open)"}));
}

TEST(ReferenceModel, OnlyTheLastCarriageReturnBelongsToTheLineEnd)
{
    auto model = ReferenceModel::load(familyOf({{L"a.ini", "a=1\r\r\nb=2\rc\nd=3\r"}}));
    EXPECT_EQ(model.asText(),
              L"[\"Algemeen\"] \"General settings\"\n"
              L"    \"a\" = \"1<13>\", type 0, mark 0\n"
              L"    \"b\" = \"2<13>c\", type 0, mark 0\n"
              L"    \"d\" = \"3<13>\", type 0, mark 0\n");
}

struct DefinitionRow
{
    const char* sentence;
    const char* line;
    const wchar_t* fields; // of asText()
};

// clang-format off
const DefinitionRow kDefinitions[] = {
    {"ALetterTellsTheType", "A=i", L"type 2, mark 0\n"},
    {"ALineWithoutEqualsHasNoType", "A", L"type 0, mark 0\n"},
    {"BoundsAreFoundAnywhere", "A=dmin=1 xmax=2",
     L"type 3, mark 0\n        max \"2\"\n        min \"1\"\n"},
    {"AListKeepsItsBlanks", "A=c choices={x y,z} max=3",
     L"type 11, mark 0\n        choices \"x y,z\"\n        max \"3\"\n"},
    {"AReferenceIsTheRestOfTheLine", "A=c choices=B max=3", L"type 11, mark 0\n        max \"3\"\n"},
    {"AReferenceGivesAValue", "A=c choices=B", L"type 11, mark 0\n        choices \"2\"\n"},
    {"AReferenceMayNameItsChapter", "A=c choices=[[T]]C",
     L"type 11, mark 0\n        choices \"3\"\n"},
    {"APictureStandsInTheGlobalFolder", "A=v bitmap=p.bmp",
     L"type 7, mark 0\n        bitmap \"/m/p.bmp\"\n"},
    {"APictureWithAFolderStaysAsItIs", "A=v bitmap=s\\p.bmp",
     L"type 7, mark 0\n        bitmap \"s\\p.bmp\"\n"},
    {"RedIsTheLowestByte", "A=t rgb=257,2,3", L"type 1, mark 0\n        rgb \"197121\"\n"},
    {"AMissingColourIsNone", "A=t rgb=,2", L"type 1, mark 0\n        rgb \"512\"\n"},
    {"AccessIsCutTo16Bits", "A=t access=65537", L"type 1, mark 0\n        view \"1\"\n"},
};

// clang-format on

TEST(ReferenceModel, ADefinitionSetsWhatItTells)
{
    for (const DefinitionRow& row : kDefinitions) {
        const auto model = ReferenceModel::load(familyOf(
            {{L"a.ini", "A=1\nB=2\n[T]\nC=3\n"}, {L"a.inr", row.line + std::string("\n")}}));
        std::wstring text = model.asText();
        const std::wstring readOnly = L"        read-only \"false\"\n";
        const std::size_t at = text.find(readOnly);
        ASSERT_NE(at, std::wstring::npos) << row.sentence;
        text.erase(at, readOnly.size());
        EXPECT_EQ(text,
                  L"[\"Algemeen\"] \"General settings\"\n    \"A\" = \"1\", "
                      + std::wstring(row.fields)
                      + L"    \"B\" = \"2\", type 0, mark 0\n"
                        L"[\"T\"] \"\"\n    \"C\" = \"3\", type 0, mark 0\n")
            << row.sentence;
    }
}

TEST(ReferenceModel, AnUnknownChapterGivesAttributesWithoutATypeToAlgemeen)
{
    const auto model
        = ReferenceModel::load(familyOf({{L"a.ini", "B=1"}, {L"a.inr", "[None]\nB=i min=0"}}));
    EXPECT_EQ(model.asText(),
              L"[\"Algemeen\"] \"General settings\"\n"
              L"    \"B\" = \"1\", type 0, mark 0\n"
              L"        min \"0\"\n"
              L"        read-only \"false\"\n");
}

TEST(ReferenceModel, ThePictureBelongsToTheIdentAbove)
{
    const auto model
        = ReferenceModel::load(familyOf({{L"a.ini", "A=1\nB=2\n[T]\n"},
                                         {L"LanE/a.ind",
                                          "A=x\xC2\xA7y bitmap=no.bmp\n[T]=Tekst\nbitmap=a.bmp\n"
                                          "[Algemeen]\nB=x filetypes=*.t\nC\n"}}));
    EXPECT_EQ(model.asText(),
              L"[\"Algemeen\"] \"General settings\"\n"
              L"    \"A\" = \"1\", type 0, mark 0\n"
              L"        long description \"x\xA7y bitmap=no.bmp\"\n"
              L"        short description \"x y bitmap=no.bmp\"\n"
              L"        bitmap \"/m/a.bmp\"\n"
              L"    \"B\" = \"2\", type 0, mark 0\n"
              L"        long description \"x*.t\"\n"
              L"        short description \"x*.t\"\n"
              L"[\"T\"] \"Tekst\"\n");
    EXPECT_EQ(model.boxes,
              std::vector<std::wstring>({L"Line was skipped! Expected: \"=\" (ind:5) (C)"}));
}

TEST(ReferenceModel, TheFirstFolderOfALanguageWins)
{
    FileFamily family
        = familyOf({{L"a.cfg", "A=1"}, {L"LanN/a.cfd", "A=second"}, {L"LanNL/a.cfd", "A=first"}});
    family.name = L"a.cfg";
    family.language = 19;
    auto model = ReferenceModel::load(family);
    EXPECT_EQ(ReferenceModel::findSetting(model.findCategory(L"none"), L"A")->longDescription,
              L"first");
}

TEST(ReferenceModel, AProjectFileStandsOnTop)
{
    auto model = ReferenceModel::load(familyOf({{L"a.ini", "A=1\nB=2\n"}}));
    model.loadProjectFile("A = 3\nB=4\nB=5\n A=6\n[Nieuw]\nC=7\n");
    EXPECT_EQ(model.asText(),
              L"project mode\n"
              L"[\"Algemeen\"] \"General settings\"\n"
              L"    \"A\" = \"3\", type 0, mark 1, project\n"
              L"        global value \"1\"\n"
              L"    \"B\" = \"5\", type 0, mark 1, project\n"
              L"        global value \"4\"\n"
              L"    \" A\" = \"6\", type 0, mark 1, project\n"
              L"[\"Nieuw\"] \"\"\n"
              L"    \"C\" = \"7\", type 0, mark 1, project\n");
}

// The line feed counts as a character of a piece, and so does a piece that has nothing else.
TEST(ReferenceModel, ALongLineOfAProjectFileComesInPieces)
{
    for (const std::size_t size : {253U, 254U, 255U, 508U}) {
        auto model = ReferenceModel::load(familyOf({{L"a.ini", ""}}));
        model.loadProjectFile("A=" + repeated(size - 2, 'v') + "\r\n?");
        auto& settings = model.categories[0].settings;
        ASSERT_EQ(settings.size(), 1U);
        EXPECT_EQ(settings[0].value.size(), std::min<std::size_t>(size, 254) - 2) << size;
        const std::wstring told = size == 253 ? L"1) (?)"
            : size == 254                     ? L"2) (?)"
            : size == 255                     ? L"1) (v)"
                                              : L"1) (" + std::wstring(254, L'v') + L")";
        EXPECT_EQ(model.boxes[0], L"Line was skipped! Expected: \"=\" (ipr:" + told);
    }
}

TEST(ReferenceModel, AStreamLosesTheBlanksAroundItsIdents)
{
    const auto model = ReferenceModel::loadStream("Ident = waarde x\n[a b]\na b = c d\n\tx y=1\n");
    EXPECT_EQ(model.asText(),
              L"[\"Algemeen\"] \"\"\n"
              L"    \"Ident\" = \"waarde x\", type 0, mark 0\n"
              L"[\"ab\"] \"\"\n"
              L"    \"ab\" = \"c d\", type 0, mark 0\n");
}

TEST(ReferenceModel, ALineIsNormalisedUpToBehindItsFirstEquals)
{
    EXPECT_EQ(plainNormaliseLine(L"a b = c = d\n"), L"ab=c = d");
    EXPECT_EQ(plainNormaliseLine(L"a\t=  c"), L"a\t= c");
    EXPECT_EQ(plainNormaliseLine(L"\ta b = c\n"), L"\ta b = c");
    EXPECT_EQ(plainNormaliseLine(L"a b c"), L"abc");
    EXPECT_EQ(plainNormaliseLine(std::wstring(256, L'x')).size(), 255U);
}

TEST(ReferenceModel, LevelsStackAsTheyAreLoaded)
{
    auto model = ReferenceModel::load(familyOf({{L"a.ini", "A=1\nB=2\n"}}));
    model.loadProjectFile("A=3\n");
    model.loadDrawing({.head = {{L"A", L"4"}, {L"B", L"2"}, {L"C", L"5"}},
                       .chapters = {{L"Nieuw", {{L"D", L"6"}}}}});
    EXPECT_EQ(model.asText(),
              L"project mode\nlocal mode\n"
              L"[\"Algemeen\"] \"General settings\"\n"
              L"    \"A\" = \"4\", type 0, mark 2, local\n"
              L"        global value \"1\"\n"
              L"        project value \"3\"\n"
              L"    \"B\" = \"2\", type 0, mark 4, local\n"
              L"        global value \"2\"\n"
              L"    \"C\" = \"5\", type 0, mark 2, local\n"
              L"[\"Nieuw\"] \"\"\n"
              L"    \"D\" = \"6\", type 0, mark 2, local\n");
}

TEST(ReferenceModel, AListShowsLevelsThatAreAskedFor)
{
    auto model = ReferenceModel::load(
        familyOf({{L"a.ini", "A=1\nB=0\nC=x\nD=4\n"},
                  {L"a.inr", "A=o\nB=t access=0,5\nC=c access=3\nD=i rgb=1\n"},
                  {L"LanEN/a.ind",
                   "B=Ja\xC2\xA7"
                   "NEE\n"}}));
    const auto names = [&](const wchar_t* search, short access, ShownLevels shown) {
        std::wstring text;
        for (const SettingRow& row : fillRows(model.categories[0], search, access, shown)) {
            text += row.name + L"|" + std::to_wstring(row.image) + L"|" + row.type + L"|"
                + row.value + L"|" + row.description + L"|" + std::to_wstring(row.rgb) + L"\n";
        }
        return text;
    };
    EXPECT_EQ(names(L"", 5, {.global = false}), L"A|7|Obsolete|1||0\n");
    EXPECT_EQ(names(L"a+", 2, {}),
              L"A|7|Obsolete|1||0\nB|0|Yes/No|No|Ja NEE|0\nD|0|Integer|4||1\n");
    EXPECT_EQ(names(L"x+x+nee", 3, {.global = false}), L"B|8|Yes/No|No|Ja NEE|0\n");
    EXPECT_EQ(names(L"c", 3, {}), L"C|0|Option|<x>||0\n");
}

struct ValueRow
{
    const wchar_t* label;
    const wchar_t* value;
    bool isValid;
    const wchar_t* kept;
    std::size_t boxes;
};

TEST(ReferenceModel, AValueIsCheckedByItsLabel)
{
    const ValueRow rows[] = {
        {L"Integer", L"1-2", true, L"1-2", 0},
        {L"Integer", L"1,2a", false, L"12", 0},
        {L"Decimal", L"1,2", true, L"1.2", 0},
        {L"Decimal", L"", true, L"", 0},
        {L"Yes/No", L"", false, L"0", 0},
        {L"Hatch", L"a,b,c,d,e,360,0", true, L"a,b,c,d,e,360,0", 0},
        {L"Hatch", L"a,b,c,d,e,,400,,1", false, L"a,b,c,d,e,,400,,1", 1},
        {L"Hatch", L"a,b,c,d,e,10,-1", false, L"a,b,c,d,e,10,-1", 1},
        {L"Hatch", L"a,b,c,d,e,400,-1", false, L"", 2},
        {L"Hatch", L"-1,-2", false, L"-1,-2", 1}, // the walk ends on the second field
        {L"String", L"x", true, L"x", 0},
    };
    for (const ValueRow& row : rows) {
        std::wstring value = row.value;
        std::vector<std::wstring> boxes;
        EXPECT_EQ(validateValue(value, row.label, boxes), row.isValid) << row.value;
        EXPECT_EQ(value, row.kept);
        EXPECT_EQ(boxes.size(), row.boxes) << row.value;
    }
}

TEST(ReferenceModel, FilesAreDecodedByTheirMarkOrTheirContent)
{
    for (const std::string& bytes : {std::string("A=\xC3\xA9"), std::string("A=\xE9"),
                                     std::string("\xEF\xBB\xBF"
                                                 "A=\xC3\xA9"),
                                     std::string("\xFF\xFE"
                                                 "A\0=\0\xE9\0",
                                                 8),
                                     std::string("\xFE\xFF\0A\0=\0\xE9", 8)}) {
        auto model = ReferenceModel::load(familyOf({{L"a.ini", bytes}}));
        const auto* const setting = ReferenceModel::findSetting(model.findCategory(L""), L"A");
        ASSERT_NE(setting, nullptr) << ::testing::PrintToString(bytes);
        EXPECT_EQ(setting->value, L"\xE9") << ::testing::PrintToString(bytes);
    }
}

} // namespace

} // namespace corma::testing
