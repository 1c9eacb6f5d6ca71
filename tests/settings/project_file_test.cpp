#include "platform/text.h"
#include "settings/SettingsTest.h"
#include "settings/texts.h"
#include "support/row_names.h"

using corma::testing::CurrentFolder;
using corma::testing::sentenceOf;
using corma::testing::SettingsTest;
using corma::testing::valuesOf;

namespace {

using namespace std::string_literals;

class ProjectFile : public SettingsTest
{
protected:
    /// The model with the project on top, without the description of the head.
    std::unique_ptr<RubriekenArray> loaded(std::string_view ini, std::string_view ipr,
                                           int language = 9)
    {
        auto model = load(ini, language);
        (*model)[0].description.clear();
        EXPECT_FALSE(model->projectMode);
        EXPECT_TRUE(model->loadProjectFile(folder.write(L"tool.ipr", ipr)));
        EXPECT_TRUE(model->projectMode);
        EXPECT_FALSE(model->localMode);
        return model;
    }
};

// --- lines ---------------------------------------------------------------------------------------

struct ProjectRow
{
    const char* sentence;
    std::string ini;
    std::string ipr;
    std::string model;
};

void PrintTo(const ProjectRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class Project : public ProjectFile, public ::testing::WithParamInterface<ProjectRow>
{
};

TEST_P(Project, IsLoadedOnTop)
{
    EXPECT_EQ(valuesOf(*loaded(GetParam().ini, GetParam().ipr)), GetParam().model);
    EXPECT_EQ(boxes(), "");
    EXPECT_EQ(services.allPrinted(), L"");
    EXPECT_EQ(folder.read(L"tool.ipr"), GetParam().ipr);
}

INSTANTIATE_TEST_SUITE_P(
    Levels, Project,
    ::testing::Values(
        ProjectRow {"OfNothingChangesNothing", "A=1\n[B]\nC=2\n", "",
                    "[Algemeen]\n  A=1\n[B]\n  C=2\n"},
        ProjectRow {"KeepsTheGlobalValueBelow", "A=1\n[B]\nC=2\n", "A=p\n[B]\nC=q\n",
                    "[Algemeen]\n  A=p (project; global 1)\n[B]\n  C=q (project; global 2)\n"},
        ProjectRow {"OfAnIdentOfItsOwnHasNoGlobalValue", "A=1\n", "B=p\n",
                    "[Algemeen]\n  A=1\n  B=p (project; global none)\n"},
        ProjectRow {"OfTheSameValueIsACopy", "A=1\n", "A=1\n",
                    "[Algemeen]\n  A=1 (project; global 1)\n"},
        ProjectRow {"OfAnIdentThatStandsTwiceLosesTheGlobalValue", "A=1\n", "A=p\nA=q\n",
                    "[Algemeen]\n  A=q (project; global p)\n"},
        ProjectRow {"OfAnIdentOfItsOwnThatStandsTwiceKeepsTheFirstBelow", "", "A=p\nA=q\n",
                    "[Algemeen]\n  A=q (project; global p)\n"},
        ProjectRow {"MayBeEmptyOfValue", "A=1\n", "A=\n", "[Algemeen]\n  A= (project; global 1)\n"},
        ProjectRow {"OfTheMarkerIsAValue", "A=1\n", "A=***KV_BESTAAT_NIET***\nA=2\n",
                    "[Algemeen]\n  A=2 (project; global none)\n"}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(
    Chapters, Project,
    ::testing::Values(
        ProjectRow {"OfANewChapterMakesACategoryAtTheEnd", "A=1\n[B]\nC=2\n",
                    "[Nieuw]\nD=p\n[B]\nC=q\n",
                    "[Algemeen]\n  A=1\n[B]\n  C=q (project; global 2)\n[Nieuw]\n  D=p (project; "
                    "global none)\n"},
        ProjectRow {"OfANewChapterMakesItOnce", "", "[N]\nA=p\n[M]\n[N]\nB=q\n",
                    "[Algemeen]\n[N]\n  A=p (project; global none)\n  B=q (project; global "
                    "none)\n[M]\n"},
        ProjectRow {"OfAChapterHeedsCase", "[b]\nA=1\n", "[B]\nA=p\n",
                    "[Algemeen]\n[b]\n  A=1\n[B]\n  A=p (project; global none)\n"},
        ProjectRow {"OfAnotherChapterDoesNotReachTheSetting", "A=1\n[B]\n", "[B]\nA=p\n",
                    "[Algemeen]\n  A=1\n[B]\n  A=p (project; global none)\n"},
        ProjectRow {"MayNameTheHead", "A=1\n[B]\n", "[B]\n[Algemeen]\nA=p\n",
                    "[Algemeen]\n  A=p (project; global 1)\n[B]\n"},
        ProjectRow {"OfAChapterThatStandsTwiceMeansTheLater", "[B]\nA=1\n[B]\nA=2\n", "[B]\nA=p\n",
                    "[Algemeen]\n[B]\n  A=1\n[B]\n  A=p (project; global 2)\n"},
        ProjectRow {"IgnoresWhatStandsBehindAHeader", "[B]\nA=1\n", "[B]=x\nA=p\n",
                    "[Algemeen]\n[B]\n  A=p (project; global 1)\n"},
        ProjectRow {"LosesTheBlanksOfAHeader", "[B c]\nA=1\n[Bc]\nA=2\n", "[B c]\nA=p\n",
                    "[Algemeen]\n[B c]\n  A=1\n[Bc]\n  A=p (project; global 2)\n"}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(
    Lines, Project,
    ::testing::Values(
        ProjectRow {"LosesBlanksAroundTheEqualsSign", "A=1\nA = 2\n", "A = p\n",
                    "[Algemeen]\n  A=p (project; global 1)\n  A = 2\n"},
        ProjectRow {"LosesOnlyOneBlankBehindTheEqualsSign", "A=1\n", "A=  p \n",
                    "[Algemeen]\n  A= p  (project; global 1)\n"},
        ProjectRow {"TakesALineThatBeginsWithABlank", "A=1\n", " A=p\n",
                    "[Algemeen]\n  A=1\n   A=p (project; global none)\n"},
        ProjectRow {"TakesALineThatBeginsWithATab", "A=1\n", "\tA b = p\n",
                    "[Algemeen]\n  A=1\n  \tA b = p (project; global none)\n"},
        ProjectRow {"HasCommentsBehindASemicolon", "A=1\n", ";A=p\n\n;\n", "[Algemeen]\n  A=1\n"},
        ProjectRow {"HasAHeaderOnlyAtTheBeginningOfALine", "A=1\n", " [B]=x\nA=p\n",
                    "[Algemeen]\n  A=p (project; global 1)\n   [B]=x (project; global none)\n"},
        ProjectRow {"MayEndLinesInReturnAndFeed", "A=1\n[B]\nC=2\n", "A=p\r\n\r\n[B]\r\nC=q",
                    "[Algemeen]\n  A=p (project; global 1)\n[B]\n  C=q (project; global 2)\n"},
        ProjectRow {"InWindows1252", "\xE9=1\n", "\xE9=m\xB2\n",
                    "[Algemeen]\n  \xC3\xA9=m\xC2\xB2 (project; global 1)\n"},
        ProjectRow {"InUtf16", "A=1\n",
                    "\xFF\xFE"
                    "A\0=\0\xAC\x20\n\0"s,
                    "[Algemeen]\n  A=\xE2\x82\xAC (project; global 1)\n"}),
    sentenceOf);

std::string letters(std::size_t count)
{
    return std::string(count, 'v');
}

INSTANTIATE_TEST_SUITE_P(
    LongLines, Project,
    ::testing::Values(
        ProjectRow {"TakesALineOf253Characters", "", "A=" + letters(251) + "\nB=p\n",
                    "[Algemeen]\n  A=" + letters(251)
                        + " (project; global none)\n"
                          "  B=p (project; global none)\n"},
        ProjectRow {"TakesALineOf254Characters", "", "A=" + letters(252) + "\nB=p\n",
                    "[Algemeen]\n  A=" + letters(252)
                        + " (project; global none)\n"
                          "  B=p (project; global none)\n"},
        ProjectRow {"TakesALineOf255CharactersInPieces", "", "A=" + letters(252) + "=\nB=p\n",
                    "[Algemeen]\n  A=" + letters(252)
                        + " (project; global none)\n"
                          "  = (project; global none)\n  B=p (project; global none)\n"},
        ProjectRow {"TakesTheRestOfALineAsALineOfItsOwn", "",
                    "A=" + letters(252) + "[C]" + "\nB=p\n",
                    "[Algemeen]\n  A=" + letters(252)
                        + " (project; global none)\n"
                          "[C]\n  B=p (project; global none)\n"},
        ProjectRow {"TakesARestThatIsAComment", "", "A=" + letters(252) + ";B=p\nC=q\n",
                    "[Algemeen]\n  A=" + letters(252)
                        + " (project; global none)\n"
                          "  C=q (project; global none)\n"},
        ProjectRow {"CountsCharactersAndNotBytes", "",
                    "A=" + std::string(251, 'v') + "\xC3\xA9" + "B=p\n",
                    "[Algemeen]\n  A=" + letters(251)
                        + "\xC3\xA9 (project; global none)\n"
                          "  B=p (project; global none)\n"}),
    sentenceOf);

TEST_F(ProjectFile, ALineOf300CharactersIsASettingAndAnotherLine)
{
    EXPECT_EQ(valuesOf(*loaded("", "A=" + letters(298) + "\nB=p\n")),
              "[Algemeen]\n  A=" + letters(252)
                  + " (project; global none)\n  B=p (project; global none)\n");
    EXPECT_EQ(boxes(), "Line was skipped! Expected: \"=\" (ipr:1) (" + letters(46) + ")\n");
}

TEST_F(ProjectFile, ALineIsCutBeforeItsBlanksGo)
{
    EXPECT_EQ(valuesOf(*loaded("A=1\n", "A" + std::string(253, ' ') + "=p\n")),
              "[Algemeen]\n  A=1\n  =p (project; global none)\n");
    EXPECT_EQ(boxes(), "Line was skipped! Expected: \"=\" (ipr:0) (A)\n");
}

TEST_F(ProjectFile, SettingsOfTheProjectAloneAreStringsOfTheirCategory)
{
    folder.write(L"tool.inr", "[Nieuw]\nA=d max=3\n");
    folder.write(L"LanEN/tool.ind", "[Nieuw]=text\nA=text\n");
    const auto model = loaded("B=1\n", "[Nieuw]\nA=p\n");
    ASSERT_EQ(model->size(), 2U);
    Rubriek& category = (*model)[1];
    EXPECT_EQ(category.name(), L"Nieuw");
    EXPECT_EQ(category.description, L"");
    ASSERT_EQ(category.settings().size(), 1U);
    const Instelling& setting = category.settings()[0];
    EXPECT_EQ(setting.type(), SettingType::string);
    EXPECT_EQ(setting.category(), &category);
    for (const std::wstring& text : {setting.longDescription(), setting.shortDescription(),
                                     setting.maxValue(), setting.readOnly()}) {
        EXPECT_EQ(text, L"");
    }
    EXPECT_EQ(setting.globalValue(), NOT_FOUND_MARKER);
    EXPECT_EQ(setting.projectValue(), NOT_FOUND_MARKER);
}

TEST_F(ProjectFile, AttributesOfASettingStay)
{
    folder.write(L"tool.inr", "A=d max=3\n");
    const auto model = loaded("A=1\n", "A=p\n");
    EXPECT_EQ((*model)[0].settings()[0].type(), SettingType::decimal);
    EXPECT_EQ((*model)[0].settings()[0].maxValue(), L"3");
}

TEST_F(ProjectFile, OnAProjectTheFormerValueIsTheOneBelow)
{
    const auto model = loaded("A=1\n", "A=p\n");
    EXPECT_TRUE(model->loadProjectFile(folder.write(L"other.ipr", "A=q\n")));
    EXPECT_EQ(valuesOf(*model), "[Algemeen]\n  A=q (project; global p)\n");
}

// --- lines that are none -------------------------------------------------------------------------

struct ProjectDefectRow
{
    const char* sentence;
    int language;
    std::string ipr;
    std::string box;
};

void PrintTo(const ProjectDefectRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class ProjectLinesThatAreNone : public ProjectFile,
                                public ::testing::WithParamInterface<ProjectDefectRow>
{
};

TEST_P(ProjectLinesThatAreNone, AreSkippedAndToldOnce)
{
    EXPECT_EQ(valuesOf(*loaded("[A]\nB=1\n", GetParam().ipr, GetParam().language)),
              "[Algemeen]\n[A]\n  B=p (project; global 1)\n");
    EXPECT_EQ(boxes(), GetParam().box + "\n");
    EXPECT_EQ(services.icons, std::vector {corma::MessageIcon::exclamation});
}

INSTANTIATE_TEST_SUITE_P(
    ProjectFile, ProjectLinesThatAreNone,
    ::testing::Values(
        ProjectDefectRow {"ALineWithoutAnEqualsSign", 9, "[A]\nlos\nB=p\n",
                          "Line was skipped! Expected: \"=\" (ipr:1) (los)"},
        ProjectDefectRow {"AHeaderWithoutAnEndLeavesTheChapter", 9, "[A]\n[Open\nB=p\n",
                          "Line was skipped! Expected: \"]\" (ipr:1) (Open)"},
        ProjectDefectRow {"BlanksOfTheLineAreGone", 9, "[A]\nlos en vast\nB=p\n",
                          "Line was skipped! Expected: \"=\" (ipr:1) (losenvast)"},
        ProjectDefectRow {"BlanksOfALineThatBeginsWithOneAreKept", 9, "[A]\n los en vast\nB=p\n",
                          "Line was skipped! Expected: \"=\" (ipr:1) ( los en vast)"},
        ProjectDefectRow {"ABlankAloneIsALine", 9, "[A]\n \nB=p\n",
                          "Line was skipped! Expected: \"=\" (ipr:1) ( )"},
        ProjectDefectRow {"IgnoredLinesCount", 9, ";\n\n[A]\r\n\r\nB=p\nlos",
                          "Line was skipped! Expected: \"=\" (ipr:5) (los)"},
        ProjectDefectRow {"PiecesOfALongLineCount", 9,
                          "[A]\n;" + letters(253) + letters(254) + "\nB=p\nlos\n",
                          "Line was skipped! Expected: \"=\" (ipr:2) (" + letters(254) + ")"},
        ProjectDefectRow {"TheFirstOfSeveral", 9, "[een\n[A]\ntwee\nB=p\n[drie\n",
                          "Line was skipped! Expected: \"]\" (ipr:0) (een)"},
        ProjectDefectRow {"Dutch", 19, "[A]\nB=p\nlos\n",
                          "Regel overgeslagen! Verwacht: \"=\" (ipr:2) (los)"},
        ProjectDefectRow {"Polish", 21, "[A]\nB=p\nlos\n",
                          "Pomini\xC4\x99to wiersz! Oczekiwano: \"=\" (ipr:2) (los)"}),
    [](const auto& row) { return row.param.sentence; });

// --- files ---------------------------------------------------------------------------------------

TEST_F(ProjectFile, OneThatIsMissingIsMadeEmpty)
{
    const auto model = load("A=1\n[B]\nC=2\n");
    const std::string before = valuesOf(*model);
    EXPECT_TRUE(model->loadProjectFile(folder.path(L"new.ipr")));
    EXPECT_TRUE(folder.has(L"new.ipr"));
    EXPECT_EQ(folder.read(L"new.ipr"), "");
    EXPECT_TRUE(model->projectMode);
    EXPECT_EQ(valuesOf(*model), before);
    EXPECT_EQ(boxes(), "");
}

TEST_F(ProjectFile, ABareNameIsInTheCurrentFolder)
{
    const auto model = load("A=1\n");
    folder.write(L"sub/bare", "A=p\n");
    const CurrentFolder there(folder.path(L"sub"));
    EXPECT_TRUE(model->loadProjectFile(L"bare"));
    EXPECT_EQ((*model)[0].settings()[0].value(), L"p");
}

TEST_F(ProjectFile, OneThatCanBeNeitherOpenedNorMadeLeavesTheCategories)
{
    const auto model = load("A=1\n");
    const std::string before = valuesOf(*model);
    folder.makeFolder(L"folder.ipr");
    for (const wchar_t* const name : {L"none/tool.ipr", L"folder.ipr"}) {
        model->projectMode = false;
        EXPECT_FALSE(model->loadProjectFile(folder.path(name))) << corma::toUtf8(name);
        EXPECT_TRUE(model->projectMode);
        EXPECT_EQ(valuesOf(*model), before);
    }
    EXPECT_EQ(boxes(), "") << "the caller tells";
    EXPECT_FALSE(folder.has(L"none"));
}

TEST_F(ProjectFile, OnAnEmptyModelTheHeadIsMade)
{
    RubriekenArray model(names());
    services.boxes.clear();
    EXPECT_TRUE(model.loadProjectFile(folder.write(L"tool.ipr", "A=p\n[B]\nC=q\n")));
    EXPECT_EQ(valuesOf(model),
              "[Algemeen]\n  A=p (project; global none)\n[B]\n  C=q (project; global none)\n");
}

} // namespace
