#include "platform/text.h"
#include "settings/SettingsTest.h"
#include "support/row_names.h"

using corma::testing::descriptionsOf;
using corma::testing::sentenceOf;
using corma::testing::SettingsTest;
using corma::testing::valuesOf;

namespace {

using namespace std::string_literals;

class LoadDescriptions : public SettingsTest
{
protected:
    /// The folder is "~".
    std::string described(std::string_view ini, std::string_view ind)
    {
        folder.write(L"LanEN/tool.ind", ind);
        return homely(descriptionsOf(*load(ini)));
    }
};

// --- lines ---------------------------------------------------------------------------------------

struct DescriptionRow
{
    const char* sentence;
    std::string ini;
    std::string ind;
    std::string descriptions;
};

void PrintTo(const DescriptionRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class Descriptions : public LoadDescriptions, public ::testing::WithParamInterface<DescriptionRow>
{
};

TEST_P(Descriptions, AreTaken)
{
    EXPECT_EQ(described(GetParam().ini, GetParam().ind), GetParam().descriptions);
    EXPECT_EQ(boxes(), "");
    EXPECT_EQ(services.allPrinted(), L"");
}

INSTANTIATE_TEST_SUITE_P(
    Headers, Descriptions,
    ::testing::Values(DescriptionRow {"WithATextDescribeTheirChapter", "[Tekst]\n",
                                      "[Tekst]=Alles over tekst\n",
                                      "[Algemeen] General settings\n[Tekst] Alles over tekst\n"},
                      DescriptionRow {"WithoutATextOnlyNameIt", "[Tekst]\nA=1\n", "[Tekst]\nA=x\n",
                                      "[Algemeen] General settings\n[Tekst]\n  A long=x short=x\n"},
                      DescriptionRow {"WithAnEmptyTextTakeTheTextAway", "[Tekst]\n",
                                      "[Tekst]=x\n[Tekst]=\n",
                                      "[Algemeen] General settings\n[Tekst]\n"},
                      DescriptionRow {"OfAlgemeenReplaceItsText", "", "[Algemeen]=Van alles\n",
                                      "[Algemeen] Van alles\n"},
                      DescriptionRow {"KeepEqualsSignsAndBracketsOfTheText", "[A]\n", "[A]=x=[y]\n",
                                      "[Algemeen] General settings\n[A] x=[y]\n"},
                      DescriptionRow {"OfAChapterThatStandsTwiceMeanTheLater", "[A]\n[A]\n",
                                      "[A]=x\n", "[Algemeen] General settings\n[A]\n[A] x\n"},
                      DescriptionRow {"OfUnknownChaptersMakeNone", "", "[A]\nB=x\n",
                                      "[Algemeen] General settings\n"}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(
    Idents, Descriptions,
    ::testing::Values(
        DescriptionRow {"HaveALongAndAShortText", "Ident=1\n", "Ident=Eerste regel§Tweede regel\n",
                        "[Algemeen] General settings\n"
                        "  Ident long=Eerste regel§Tweede regel short=Eerste regel Tweede regel\n"},
        DescriptionRow {"MayHaveManyLines", "A=1\n", "A=§x§§y§\n",
                        "[Algemeen] General settings\n  A long=§x§§y§ short= x  y \n"},
        DescriptionRow {"KeepBlanksAndEqualsSigns", "A=1\n", "A= x = y \n",
                        "[Algemeen] General settings\n  A long= x = y  short= x = y \n"},
        DescriptionRow {"MayHaveAnEmptyText", "A=1\n", "A=x\nA=\n",
                        "[Algemeen] General settings\n"},
        DescriptionRow {"HeedCase", "A=1\n", "a=x\n", "[Algemeen] General settings\n"},
        DescriptionRow {"AreThoseOfTheChapter", "A=1\n[B]\nA=2\n[C]\nD=3\n", "[B]\nA=x\nD=y\n",
                        "[Algemeen] General settings\n[B]\n  A long=x short=x\n[C]\n"},
        DescriptionRow {"OfAnUnknownChapterAreNot", "A=1\n", "[B]\nA=x\n",
                        "[Algemeen] General settings\n"},
        DescriptionRow {"MayComeAfterTheHeadIsNamed", "A=1\n[B]\n", "[B]\n[Algemeen]\nA=x\n",
                        "[Algemeen] General settings\n  A long=x short=x\n[B]\n"},
        DescriptionRow {"StandInNoComment", "A=1\n", ";A=x\n A=x\n\tA=x\n\n",
                        "[Algemeen] General settings\n"},
        DescriptionRow {"WithASectionSignAreLookedUpWithABlankForTheShortText", "a§b=1\na b=2\n",
                        "a§b=x§y\n",
                        "[Algemeen] General settings\n  a§b long=x§y\n  a b short=x y\n"},
        DescriptionRow {"LoseTheWordFiletypes", "A=1\n", "A=tekst filetypes=Alle|*.*|| en zo\n",
                        "[Algemeen] General settings\n"
                        "  A long=tekstAlle|*.*|| en zo short=tekstAlle|*.*|| en zo\n"},
        DescriptionRow {"LoseTheWordFiletypesBehindABlankOnly", "A=1\n", "A=tekst,filetypes=x\n",
                        "[Algemeen] General settings\n"
                        "  A long=tekst,filetypes=x short=tekst,filetypes=x\n"},
        DescriptionRow {"LoseTheWordFiletypesBehindASectionSignInTheShortText", "A=1\n",
                        "A=tekst§filetypes=x\n",
                        "[Algemeen] General settings\n  A long=tekst§filetypes=x short=tekstx\n"},
        DescriptionRow {"OfASectionSignAndFiletypesAreFoundForTheShortText", "A§filetypes=1\n",
                        "A§filetypes=x=y\n",
                        "[Algemeen] General settings\n  A§filetypes long=x=y\n"},
        DescriptionRow {"LoseTheWordFiletypesBeforeTheyAreCut", "Ax=1\n", "A filetypes=x=y\n",
                        "[Algemeen] General settings\n  Ax long=y short=y\n"},
        DescriptionRow {"MayEndInReturnAndFeed", "A=1\nB=2\n", "A=x\r\nB=y",
                        "[Algemeen] General settings\n  A long=x short=x\n  B long=y short=y\n"},
        DescriptionRow {"InWindows1252", "A=1\n", "A=m\xB2\xA7\x80\n",
                        "[Algemeen] General settings\n  A long=m²§€ short=m² €\n"},
        DescriptionRow {"InUtf16", "A=1\n",
                        "\xFF\xFE"
                        "A\0=\0\xA7\0\xAC\x20"s,
                        "[Algemeen] General settings\n  A long=§€ short= €\n"}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(
    Pictures, Descriptions,
    ::testing::Values(
        DescriptionRow {"AreForTheIdentAbove", "A=1\nB=2\n", "A=tekst\nbitmap=a.bmp\nB=x\n",
                        "[Algemeen] General settings\n"
                        "  A long=tekst short=tekst bitmap=~/a.bmp\n  B long=x short=x\n"},
        DescriptionRow {"OnTheFirstLineAreForNobody", "A=1\n", "A=tekst bitmap=a.bmp\n",
                        "[Algemeen] General settings\n"
                        "  A long=tekst bitmap=a.bmp short=tekst bitmap=a.bmp\n"},
        DescriptionRow {"OnADescriptionAreForTheOneAbove", "A=1\nB=2\n",
                        "A=x\nB=y bitmap=b.bmp z\n",
                        "[Algemeen] General settings\n  A long=x short=x bitmap=~/b.bmp\n"
                        "  B long=y bitmap=b.bmp z short=y bitmap=b.bmp z\n"},
        DescriptionRow {"OfTwoLinesTheSecondIsForNobody", "A=1\n",
                        "A=x\nbitmap=a.bmp\nbitmap=b.bmp\n",
                        "[Algemeen] General settings\n  A long=x short=x bitmap=~/a.bmp\n"},
        DescriptionRow {"BehindAnUnknownIdentAreForNobody", "A=1\n", "A=x\nB=y\nbitmap=a.bmp\n",
                        "[Algemeen] General settings\n  A long=x short=x\n"},
        DescriptionRow {"BehindAHeaderAreForTheIdentBeforeIt", "A=1\n[B]\n",
                        "A=x\n[B]\nbitmap=a.bmp\n",
                        "[Algemeen] General settings\n  A long=x short=x bitmap=~/a.bmp\n[B]\n"},
        DescriptionRow {"BehindAnUnknownChapterAreForTheIdentBeforeIt", "A=1\n",
                        "A=x\n[B]\nC=y\nbitmap=a.bmp\n",
                        "[Algemeen] General settings\n  A long=x short=x bitmap=~/a.bmp\n"},
        DescriptionRow {"WithAFolderAreKept", "A=1\nB=1\n",
                        "A=x\nbitmap=p\\a.bmp\nB=y\nbitmap=p/b.bmp\n",
                        "[Algemeen] General settings\n  A long=x short=x bitmap=p\\a.bmp\n"
                        "  B long=y short=y bitmap=p/b.bmp\n"},
        DescriptionRow {"EndAtABlank", "A=1\n", "A=x\nbitmap=a b.bmp\n",
                        "[Algemeen] General settings\n  A long=x short=x bitmap=~/a\n"},
        DescriptionRow {"TheFirstOfALineCounts", "A=1\n", "A=x\nbitmap=a bitmap=b\n",
                        "[Algemeen] General settings\n  A long=x short=x bitmap=~/a\n"},
        DescriptionRow {"MayStandInALongerWord", "A=1\n", "A=x\nxbitmap=a\n",
                        "[Algemeen] General settings\n  A long=x short=x bitmap=~/a\n"},
        DescriptionRow {"ABitmapThatIsASettingIsDescribed", "A=1\nbitmap=2\n",
                        "A=x\nbitmap=a\nbitmap=b\n",
                        "[Algemeen] General settings\n  A long=x short=x bitmap=~/a\n"
                        "  bitmap long=b short=b bitmap=~/b\n"},
        DescriptionRow {"CommentsBetweenDoNotMatter", "A=1\n", "A=x\n;\n\nbitmap=a\n",
                        "[Algemeen] General settings\n  A long=x short=x bitmap=~/a\n"}),
    sentenceOf);

TEST_F(LoadDescriptions, TheTextOfAnUnknownChapterGoesToAlgemeen)
{
    EXPECT_EQ(described("[A]\n", "[Tekst]=Alles over tekst\n"),
              "[Algemeen] Alles over tekst\n[A]\n");
}

TEST_F(LoadDescriptions, PicturesGoBeforeThoseOfTheDefinitions)
{
    folder.write(L"tool.inr", "A=s bitmap=r.bmp\nB=s bitmap=r.bmp\n");
    EXPECT_EQ(described("A=1\nB=2\n", "A=x\nbitmap=d.bmp\nB=y\n"),
              "[Algemeen] General settings\n  A long=x short=x bitmap=~/d.bmp\n"
              "  B long=y short=y bitmap=~/r.bmp\n");
}

TEST_F(LoadDescriptions, LinesThatAreNoneAreSkippedAndTheFirstIsTold)
{
    EXPECT_EQ(described("A=1\n", "een\nA=x\n[twee\nbitmap=a\n"),
              "[Algemeen] General settings\n  A long=x short=x bitmap=~/a\n");
    EXPECT_EQ(boxes(), "Line was skipped! Expected: \"=\" (ind:0) (een)\n");
    EXPECT_EQ(services.icons, std::vector {corma::MessageIcon::exclamation});
}

TEST_F(LoadDescriptions, AHeaderWithoutAnEndIsTold)
{
    EXPECT_EQ(described("A=1\n[B]\nA=1\n", "[B]\n[A=x\nA=y\n"),
              "[Algemeen] General settings\n[B]\n  A long=y short=y\n");
    EXPECT_EQ(boxes(), "Line was skipped! Expected: \"]\" (ind:1) (A=x)\n");
}

TEST_F(LoadDescriptions, ALineIsToldAsItStands)
{
    EXPECT_EQ(described("", "een§twee filetypes=\n"), "[Algemeen] General settings\n");
    EXPECT_EQ(services.boxes,
              std::vector<std::wstring> {
                  L"Line was skipped! Expected: \"=\" (ind:0) (een§twee filetypes=)"});
}

// --- languages -----------------------------------------------------------------------------------

struct FolderRow
{
    const char* sentence;
    int language;
    const wchar_t* folder;
    const wchar_t* formerFolder;
};

void PrintTo(const FolderRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class LanguageFolders : public SettingsTest, public ::testing::WithParamInterface<FolderRow>
{
protected:
    void describe(const std::wstring& languageFolder)
    {
        folder.write(languageFolder + L"/tool.ind", "A=" + corma::toUtf8(languageFolder) + "\n");
    }

    std::wstring description()
    {
        return (*load("A=1\n", GetParam().language))[0].settings()[0].longDescription();
    }
};

TEST_P(LanguageFolders, HaveANewNameAndAFormerOne)
{
    for (const wchar_t* const other :
         {L"LanNL", L"LanFR", L"LanDE", L"LanES", L"LanRU", L"LanEN", L"LanPL"}) {
        if (other != std::wstring_view(GetParam().folder)) {
            describe(other);
        }
    }
    EXPECT_EQ(description(), L"") << "there is no way to another language";
    describe(GetParam().formerFolder);
    EXPECT_EQ(description(), GetParam().formerFolder);
    describe(GetParam().folder);
    EXPECT_EQ(description(), GetParam().folder);
    folder.remove(std::wstring(GetParam().folder) + L"/tool.ind");
    EXPECT_EQ(description(), GetParam().formerFolder) << "the file counts, not the folder";
    EXPECT_EQ(boxes(), "");
    EXPECT_EQ(services.allPrinted(), L"");
}

INSTANTIATE_TEST_SUITE_P(
    LoadDescriptions, LanguageFolders,
    ::testing::Values(
        FolderRow {"Dutch", 19, L"LanNL", L"LanN"}, FolderRow {"French", 12, L"LanFR", L"LanF"},
        FolderRow {"German", 7, L"LanDE", L"LanG"}, FolderRow {"Spanish", 10, L"LanES", L"LanS"},
        FolderRow {"Russian", 25, L"LanRU", L"LanR"}, FolderRow {"English", 9, L"LanEN", L"LanE"},
        FolderRow {"PolishHasTheEnglishOnes", 21, L"LanEN", L"LanE"},
        FolderRow {"AnyOtherHasTheEnglishOnes", 1, L"LanEN", L"LanE"}),
    [](const auto& row) { return row.param.sentence; });

TEST_F(LoadDescriptions, AFileThatCannotBeReadIsNoneAndHidesTheFormerOne)
{
    folder.makeFolder(L"LanEN/tool.ind");
    folder.write(L"LanE/tool.ind", "A=x\n");
    EXPECT_EQ(descriptionsOf(*load("A=1\n")), "[Algemeen] General settings\n");
    EXPECT_EQ(boxes(), "");
}

TEST_F(LoadDescriptions, AShortTextStaysWhenTheLongOneIsSet)
{
    folder.write(L"LanEN/tool.ind", "A=x§y\n");
    const auto model = load("A=1\n");
    Instelling& setting = (*model)[0].settings()[0];
    setting.setLongDescription(L"other§text");
    EXPECT_EQ(setting.longDescription(), L"other§text");
    EXPECT_EQ(setting.shortDescription(), L"x y") << "each has its own setter";
}

} // namespace
