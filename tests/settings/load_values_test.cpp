#include "foundation/text_file.h"
#include "platform/text.h"
#include "settings/SettingsTest.h"
#include "settings/texts.h"
#include "support/row_names.h"

using corma::testing::sentenceOf;
using corma::testing::SettingsTest;
using corma::testing::valuesOf;

namespace {

using namespace std::string_literals;

struct ContentRow
{
    const char* sentence;
    std::string file;
    std::string model;
};

void PrintTo(const ContentRow& row, std::ostream* out)
{
    *out << row.sentence;
}

// --- the configuration file ----------------------------------------------------------------------

class ConfigurationFile : public SettingsTest, public ::testing::WithParamInterface<ContentRow>
{
};

TEST_P(ConfigurationFile, IsLoaded)
{
    EXPECT_EQ(valuesOf(*load(GetParam().file)), GetParam().model);
    EXPECT_EQ(boxes(), "");
    EXPECT_EQ(services.allPrinted(), L"");
}

INSTANTIATE_TEST_SUITE_P(
    LoadValues, ConfigurationFile,
    ::testing::Values(
        ContentRow {"AnEmptyFileIsAlgemeenAlone", "", "[Algemeen] General settings\n"},
        ContentRow {"AFileWithoutAChapterIsAlgemeenAlone", "A=1\nB=2\n",
                    "[Algemeen] General settings\n  A=1\n  B=2\n"},
        ContentRow {"ChaptersStandInTheOrderOfTheFile", "A=1\n[Z]\nB=2\n[Y]\n[X]\nC=3\n",
                    "[Algemeen] General settings\n  A=1\n[Z]\n  B=2\n[Y]\n[X]\n  C=3\n"},
        ContentRow {"BlanksAroundTheEqualsSignAreKept", "Ident = waarde\n",
                    "[Algemeen] General settings\n  Ident = waarde\n"},
        ContentRow {"BlanksAtTheEndAreKept", "A=1  \n", "[Algemeen] General settings\n  A=1  \n"},
        ContentRow {"AnEmptyValueIsEmpty", "Ident=\n", "[Algemeen] General settings\n  Ident=\n"},
        ContentRow {"AnIdentMayBeEmpty", "=waarde\n", "[Algemeen] General settings\n  =waarde\n"},
        ContentRow {"TheFirstEqualsSignEndsTheIdent", "A=1=2\n",
                    "[Algemeen] General settings\n  A=1=2\n"},
        ContentRow {"CommentsBeginWithASemicolonABlankOrATab",
                    ";A=1\n A=2\n\tA=3\n [B]\n\n;;\n;[C]\nD=4\n",
                    "[Algemeen] General settings\n  D=4\n"},
        ContentRow {"ASemicolonWithinALineIsPartOfIt", "A;B=1;2\n",
                    "[Algemeen] General settings\n  A;B=1;2\n"},
        ContentRow {"WhatStandsBehindAHeaderIsIgnored", "[Tekst]=A=1 ;x\nB=2\n",
                    "[Algemeen] General settings\n[Tekst]\n  B=2\n"},
        ContentRow {"AHeaderEndsAtItsFirstClosingBracket", "[A[b]c]\nB=2\n",
                    "[Algemeen] General settings\n[A[b]\n  B=2\n"},
        ContentRow {"AHeaderKeepsItsBlanks", "[ A b ]\nB=2\n",
                    "[Algemeen] General settings\n[ A b ]\n  B=2\n"},
        ContentRow {"AHeaderMayBeEmpty", "[]\nB=2\n", "[Algemeen] General settings\n[]\n  B=2\n"},
        ContentRow {"NamesThatDifferInCaseAreTwo", "a=1\nA=2\n[t]\nb=3\n[T]\nb=4\n",
                    "[Algemeen] General settings\n  a=1\n  A=2\n[t]\n  b=3\n[T]\n  b=4\n"},
        ContentRow {"AnIdentMayStandInTwoChapters", "A=1\n[B]\nA=2\n",
                    "[Algemeen] General settings\n  A=1\n[B]\n  A=2\n"},
        ContentRow {"AnIncludeIsASettingAsAnother", "#INCLUDE=part.ini\n",
                    "[Algemeen] General settings\n  #INCLUDE=part.ini\n"},
        ContentRow {"LinesMayEndInReturnAndFeed", "A=1\r\n\r\n[B]\r\nC=2",
                    "[Algemeen] General settings\n  A=1\n[B]\n  C=2\n"},
        ContentRow {"TheMarkerOfNoValueIsAValueHere", "A=***KV_BESTAAT_NIET***\n",
                    "[Algemeen] General settings\n  A=***KV_BESTAAT_NIET***\n"},
        ContentRow {"LongLinesAreWhole", "A=" + std::string(5000, 'v') + "\n",
                    "[Algemeen] General settings\n  A=" + std::string(5000, 'v') + "\n"},
        ContentRow {"Utf8", "Hoogte=m\xC2\xB2\n",
                    "[Algemeen] General settings\n  Hoogte=m\xC2\xB2\n"},
        ContentRow {"Utf8BehindAMark",
                    "\xEF\xBB\xBF"
                    "A=\xD0\x96\n",
                    "[Algemeen] General settings\n  A=\xD0\x96\n"},
        ContentRow {"Windows1252", "Hoogte\xE9=m\xB2 \x80\n",
                    "[Algemeen] General settings\n  Hoogte\xC3\xA9=m\xC2\xB2 \xE2\x82\xAC\n"},
        ContentRow {"Utf16LittleEndian",
                    "\xFF\xFE"
                    "A\0=\0\xAC\x20\r\0\n\0[\0B\0]\0"s,
                    "[Algemeen] General settings\n  A=\xE2\x82\xAC\n[B]\n"},
        ContentRow {"Utf16BigEndian", "\xFE\xFF\0A\0=\x20\xAC\0\n"s,
                    "[Algemeen] General settings\n  A=\xE2\x82\xAC\n"}),
    sentenceOf);

class LoadValues : public SettingsTest
{
protected:
    static std::wstring wide(const std::string& text) { return corma::fromUtf8(text); }
};

TEST_F(LoadValues, AChapterThatStandsTwiceAppearsTwice)
{
    const auto model = load("[A]\nX=1\n[B]\nY=2\n[A]\nX=3\nZ=4\n");
    EXPECT_EQ(valuesOf(*model),
              "[Algemeen] General settings\n[A]\n  X=1\n[B]\n  Y=2\n[A]\n  X=3\n  Z=4\n");
    EXPECT_EQ(model->findCategory(L"A"), &(*model)[3]);
    EXPECT_EQ(services.allPrinted(), L"") << "an ident may stand in both";
}

TEST_F(LoadValues, AChapterAlgemeenIsASecondOneAndGetsWhatFollows)
{
    const auto model = load("A=1\n[Algemeen]\nA=2\nB=3\n");
    EXPECT_EQ(valuesOf(*model), "[Algemeen] General settings\n  A=1\n[Algemeen]\n  A=2\n  B=3\n");
    EXPECT_EQ(model->findCategory(L"Algemeen"), &(*model)[1]);
}

TEST_F(LoadValues, TheDescriptionOfAlgemeenIsInTheLanguageOfTheTexts)
{
    EXPECT_EQ(valuesOf(*load("", 19)), "[Algemeen] Algemene instellingen\n");
    EXPECT_EQ(valuesOf(*load("", 21)), "[Algemeen] Ustawienia og\xC3\xB3lne\n");
    EXPECT_EQ(valuesOf(*load("", 7)), "[Algemeen] General settings\n");
}

TEST_F(LoadValues, AllLevelsAreShownAndNoneButTheGlobalOneIsLoaded)
{
    const auto model = load("A=1\n");
    EXPECT_TRUE(model->shown.global);
    EXPECT_TRUE(model->shown.project);
    EXPECT_TRUE(model->shown.local);
    EXPECT_FALSE(model->projectMode);
    EXPECT_FALSE(model->localMode);
}

TEST_F(LoadValues, OfDoublesTheFirstStaysAndEachOtherIsReported)
{
    EXPECT_EQ(valuesOf(*load("A=1\nA=2\nB=3\n[C]\nA=4\nA=5\nD=6\n")),
              "[Algemeen] General settings\n  A=1\n  B=3\n[C]\n  A=4\n  D=6\n");
    const std::wstring report = L"\nError in file InstellingenArray.cpp on line 45\n"
                                L"(Setting 'A' already exists, ec = 59798)";
    EXPECT_EQ(services.allPrinted(), report + report);
    EXPECT_EQ(boxes(), "");
}

// --- files that cannot be opened -----------------------------------------------------------------

TEST_F(LoadValues, AFileThatIsMissingIsToldAndTheModelIsEmpty)
{
    folder.write(L"tool.inr", "A=d max=3\n[B]\nC=i\n");
    folder.write(L"LanEN/tool.ind", "A=text\n[B]=text\nbitmap=x\n");
    const RubriekenArray model(names());
    EXPECT_TRUE(model.empty());
    EXPECT_EQ(boxes(), "~/tool.ini was not found.\n");
    EXPECT_EQ(services.icons, std::vector {corma::MessageIcon::exclamation});
    EXPECT_EQ(services.titles, std::vector<std::wstring> {L"CfgDesk"});
    EXPECT_TRUE(model.shown.global && model.shown.project && model.shown.local);
    EXPECT_FALSE(model.projectMode || model.localMode);
}

TEST_F(LoadValues, AFileThatCannotBeReadIsTold)
{
    folder.makeFolder(L"tool.ini");
    const RubriekenArray model(names());
    EXPECT_TRUE(model.empty());
    EXPECT_EQ(boxes(), "Access to ~/tool.ini was denied.\n");
}

TEST_F(LoadValues, AnEmptyModelAnswersLookups)
{
    const RubriekenArray model(names());
    EXPECT_EQ(model.findCategory(L"Algemeen"), nullptr);
    EXPECT_FALSE(model.hasCategory(L"Algemeen"));
    EXPECT_TRUE(model.filterByPattern(L"*").empty());
}

// --- lines that are none -------------------------------------------------------------------------

struct FileDefectRow
{
    const char* sentence;
    int language;
    std::string file;
    std::string box;
    std::string model;
};

void PrintTo(const FileDefectRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class LinesThatAreNone : public SettingsTest, public ::testing::WithParamInterface<FileDefectRow>
{
};

TEST_P(LinesThatAreNone, AreSkippedAndToldOnce)
{
    const auto model = load(GetParam().file, GetParam().language);
    EXPECT_EQ(boxes(), GetParam().box + "\n");
    EXPECT_EQ(services.icons, std::vector {corma::MessageIcon::exclamation});
    EXPECT_EQ(services.titles, std::vector<std::wstring> {L"CfgDesk"});
    (*model)[0].description.clear(); // in the language
    EXPECT_EQ(valuesOf(*model), GetParam().model);
}

INSTANTIATE_TEST_SUITE_P(
    LoadValues, LinesThatAreNone,
    ::testing::Values(
        FileDefectRow {"ALineWithoutAnEqualsSign", 9, "A=1\nlos\nB=2\n",
                       "Line was skipped! Expected: \"=\" (ini:1) (los)",
                       "[Algemeen]\n  A=1\n  B=2\n"},
        FileDefectRow {"AHeaderWithoutAnEndLeavesTheChapter", 9, "[A]\n[Open\nB=2\n",
                       "Line was skipped! Expected: \"]\" (ini:1) (Open)",
                       "[Algemeen]\n[A]\n  B=2\n"},
        FileDefectRow {"TheFirstOfSeveral", 9, "een\n[twee\ndrie\nA=1\n",
                       "Line was skipped! Expected: \"=\" (ini:0) (een)", "[Algemeen]\n  A=1\n"},
        FileDefectRow {"IgnoredLinesCount", 9, ";een\n\n\ttwee\n drie\n[A]\r\nlos",
                       "Line was skipped! Expected: \"=\" (ini:5) (los)", "[Algemeen]\n[A]\n"},
        FileDefectRow {"BlanksOfTheLineAreKept", 9, "los en  vast \n",
                       "Line was skipped! Expected: \"=\" (ini:0) (los en  vast )", "[Algemeen]\n"},
        FileDefectRow {"French", 12, "los\n", "Line was skipped! Expected: \"=\" (ini:0) (los)",
                       "[Algemeen]\n"},
        FileDefectRow {
            "Spanish", 10, "los\n",
            "\xC2\xA1Se omiti\xC3\xB3 una l\xC3\xADnea! Se esperaba: \"=\" (ini:0) (los)",
            "[Algemeen]\n"},
        FileDefectRow {"Dutch", 19, "[los\n", "Regel overgeslagen! Verwacht: \"]\" (ini:0) (los)",
                       "[Algemeen]\n"}),
    [](const auto& row) { return row.param.sentence; });

TEST_F(LoadValues, AChapterOfMoreThan256CharactersIsCutAndTold)
{
    const std::string name(256, 'n');
    EXPECT_EQ(valuesOf(*load("[" + name + "]\nA=1\n")),
              "[Algemeen] General settings\n[" + name + "]\n  A=1\n");
    EXPECT_EQ(services.allPrinted(), L"");
    EXPECT_EQ(valuesOf(*load("\n[" + name + "x]\nA=1\n")),
              "[Algemeen] General settings\n[" + name + "]\n  A=1\n");
    EXPECT_EQ(services.allPrinted(), L"\nLine was too long and is cut (ini:1)");
}

// --- open files ----------------------------------------------------------------------------------

class OpenFile : public SettingsTest, public ::testing::WithParamInterface<ContentRow>
{
};

TEST_P(OpenFile, IsLoaded)
{
    const auto file
        = xx_openUnicode(folder.write(L"a.ini", GetParam().file), corma::OpenMode::text);
    ASSERT_TRUE(file);
    EXPECT_EQ(valuesOf(RubriekenArray(file.get())), GetParam().model);
    EXPECT_EQ(valuesOf(RubriekenArray(file.get())), GetParam().model)
        << "it is read from its start";
    EXPECT_EQ(boxes(), "");
    EXPECT_EQ(services.allPrinted(), L"");
}

INSTANTIATE_TEST_SUITE_P(
    LoadValues, OpenFile,
    ::testing::Values(
        ContentRow {"AlgemeenHasNoDescription", "", "[Algemeen]\n"},
        ContentRow {"BlanksGoAroundTheEqualsSign", "Ident = waarde\n",
                    "[Algemeen]\n  Ident=waarde\n"},
        ContentRow {"BlanksGoFromAnIdent", "a b = c d\n", "[Algemeen]\n  ab=c d\n"},
        ContentRow {"BlanksGoFromAHeader", "[Tekst en maat]\nA=1\n",
                    "[Algemeen]\n[Tekstenmaat]\n  A=1\n"},
        ContentRow {"CommentsStayComments", ";A=1\n A=2\n\tA=3\n\nB=4\n", "[Algemeen]\n  B=4\n"},
        ContentRow {"AChapterThatStandsTwiceIsThereTwice", "[A]\nX=1\n[A]\nX=2\n",
                    "[Algemeen]\n[A]\n  X=1\n[A]\n  X=2\n"},
        ContentRow {"AnEmptyValueIsEmpty", "Ident=\n", "[Algemeen]\n  Ident=\n"},
        ContentRow {"ReturnsGo", "A=1\r\n[B]\r\nC=2\r\n", "[Algemeen]\n  A=1\n[B]\n  C=2\n"},
        ContentRow {"ALineOf255Characters", "A=" + std::string(253, 'v') + "\n",
                    "[Algemeen]\n  A=" + std::string(253, 'v') + "\n"},
        ContentRow {"ALongCommentIsNotTold", ";" + std::string(300, 'v') + "\n", "[Algemeen]\n"},
        ContentRow {"Windows1252", "A=m\xB2\n", "[Algemeen]\n  A=m\xC2\xB2\n"},
        ContentRow {"Utf16",
                    "\xFF\xFE"
                    "A\0=\0\xAC\x20\n\0"s,
                    "[Algemeen]\n  A=\xE2\x82\xAC\n"}),
    sentenceOf);

class LoadOpenFile : public SettingsTest
{
protected:
    std::string loaded(std::string_view text)
    {
        return valuesOf(RubriekenArray(
            xx_openUnicode(folder.write(L"a.ini", text), corma::OpenMode::text).get()));
    }
};

TEST_F(LoadOpenFile, NoFileIsToldAsNotFound)
{
    const RubriekenArray model(static_cast<const corma::TextFile*>(nullptr));
    EXPECT_TRUE(model.empty());
    EXPECT_EQ(boxes(), "Ini-file not found: \n");
    EXPECT_EQ(services.icons, std::vector {corma::MessageIcon::stop});
    services.boxes.clear();
    corma::setTextLanguage(19);
    EXPECT_TRUE(RubriekenArray(static_cast<const corma::TextFile*>(nullptr)).empty());
    EXPECT_EQ(boxes(), "Ini-bestand niet gevonden: \n");
}

TEST_F(LoadOpenFile, LongerLinesAreCutAndTheFirstIsTold)
{
    const std::string longest(253, 'v');
    EXPECT_EQ(loaded("A=1\nB=" + longest + "v\nC=" + longest + "vv\n"),
              "[Algemeen]\n  A=1\n  B=" + longest + "\n  C=" + longest + "\n");
    EXPECT_EQ(services.allPrinted(), L"\nLine was too long and is cut (ini:1)");
    EXPECT_EQ(boxes(), "");
}

TEST_F(LoadOpenFile, LinesThatAreNoneAreToldWithoutTheirBlanks)
{
    EXPECT_EQ(loaded("A=1\nlos en vast\n"), "[Algemeen]\n  A=1\n");
    EXPECT_EQ(boxes(), "Line was skipped! Expected: \"=\" (ini:1) (losenvast)\n");
    services.boxes.clear();
    corma::setTextLanguage(25);
    EXPECT_EQ(loaded("[Open en dicht\n"), "[Algemeen]\n");
    EXPECT_EQ(
        services.boxes,
        std::vector<std::wstring> {L"Строка пропущена! Ожидалось: \"]\" (ini:0) (Openendicht)"});
}

TEST_F(LoadOpenFile, DoublesAreReported)
{
    EXPECT_EQ(loaded("A b=1\nAb=2\n"), "[Algemeen]\n  Ab=1\n");
    EXPECT_EQ(services.allPrinted(),
              L"\nError in file InstellingenArray.cpp on line 45\n"
              L"(Setting 'Ab' already exists, ec = 59798)");
}

} // namespace
