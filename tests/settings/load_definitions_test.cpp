#include "platform/text.h"
#include "settings/SettingsTest.h"
#include "support/row_names.h"

using corma::testing::definitionsOf;
using corma::testing::sentenceOf;
using corma::testing::SettingsTest;
using corma::testing::valuesOf;

namespace {

using namespace std::string_literals;

// --- types ---------------------------------------------------------------------------------------

class LoadDefinitions : public SettingsTest
{
protected:
    std::unique_ptr<RubriekenArray> load(std::string_view ini, std::string_view inr)
    {
        folder.write(L"tool.inr", inr);
        return SettingsTest::load(ini);
    }

    /// What is not as without definitions; the folder is "~".
    std::string defined(std::string_view ini, std::string_view inr)
    {
        return homely(definitionsOf(*load(ini, inr)));
    }
};

TEST_F(LoadDefinitions, TheLetterBehindTheEqualsSignIsTheType)
{
    const std::string letters = "tidklbvoxhcq";
    std::string ini;
    std::string inr;
    for (int byte = 1; byte < 256; ++byte) {
        if (byte != '\n' && byte != '\r') {
            ini += std::to_string(byte) + "=1\n";
            inr += std::to_string(byte) + "=" + static_cast<char>(byte) + "anything\n";
        }
    }
    const auto model = load(ini, inr);
    const InstellingenArray& settings = (*model)[0].settings();
    ASSERT_EQ(settings.size(), 253U);
    for (std::size_t i = 0; i < settings.size(); ++i) {
        const auto place = letters.find(static_cast<char>(std::stoi(settings[i].name())));
        const unsigned type = place == std::string::npos ? 0 : static_cast<unsigned>(place) + 1;
        EXPECT_EQ(static_cast<unsigned>(settings[i].type()), type)
            << corma::toUtf8(settings[i].name());
    }
}

TEST_F(LoadDefinitions, WithoutALetterItIsAString)
{
    EXPECT_EQ(defined("A=1\nB=1\n", "A=\nB= d\n"),
              "[Algemeen]A: 0 readonly=false\n[Algemeen]B: 0 readonly=false\n");
}

// --- lines ---------------------------------------------------------------------------------------

struct DefinitionRow
{
    const char* sentence;
    std::string ini;
    std::string inr;
    std::string definitions;
};

void PrintTo(const DefinitionRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class Definitions : public LoadDefinitions, public ::testing::WithParamInterface<DefinitionRow>
{
};

TEST_P(Definitions, AreTaken)
{
    EXPECT_EQ(defined(GetParam().ini, GetParam().inr), GetParam().definitions);
    EXPECT_EQ(boxes(), "");
    EXPECT_EQ(services.allPrinted(), L"");
}

INSTANTIATE_TEST_SUITE_P(
    Constructs, Definitions,
    ::testing::Values(
        DefinitionRow {"TypeLetterOnly", "Naam=1\n", "Naam=s\n",
                       "[Algemeen]Naam: 0 readonly=false\n"},
        DefinitionRow {"Bounds", "Breedte=1\n", "Breedte=d min=0 max=100\n",
                       "[Algemeen]Breedte: 3 max=100 min=0 readonly=false\n"},
        DefinitionRow {"FixedList", "Soort=1\n", "Soort=c choices={links,midden,rechts}\n",
                       "[Algemeen]Soort: 11 choices=links,midden,rechts readonly=false\n"},
        DefinitionRow {"ListInASettingOfTheSameChapter",
                       "SoortLijst=x\n[A]\nSoort=1\nSoortLijst=een,twee drie\n",
                       "[A]\nSoort=q choices=SoortLijst\n",
                       "[A]Soort: 12 choices=een,twee drie readonly=false\n"},
        DefinitionRow {"ListInASettingOfAnotherChapter",
                       "[Lijsten]\nSoortLijst=a,b\n[A]\nSoort=1\n",
                       "[A]\nSoort=c choices=[Lijsten]SoortLijst\n",
                       "[A]Soort: 11 choices=a,b readonly=false\n"},
        DefinitionRow {"ReadOnly", "Versie=1\n", "Versie=s readonly=true\n",
                       "[Algemeen]Versie: 0 readonly=true\n"},
        DefinitionRow {"Picture", "Stijl=1\n", "Stijl=v bitmap=stijl.bmp\n",
                       "[Algemeen]Stijl: 7 bitmap=~/stijl.bmp readonly=false\n"},
        DefinitionRow {"Level", "Schaal=1\n", "Schaal=i level=d\n",
                       "[Algemeen]Schaal: 2 readonly=false level=d\n"},
        DefinitionRow {"FileFilter", "Pad=1\n", "Pad=b filetypes=Tekst|*.txt||\n",
                       "[Algemeen]Pad: 6 readonly=false filetypes=Tekst|*.txt||\n"},
        DefinitionRow {"RowColour", "Waarschuwing=1\n", "Waarschuwing=t rgb=255,0,0\n",
                       "[Algemeen]Waarschuwing: 1 readonly=false red=255 green=0 blue=0\n"},
        DefinitionRow {"AccessLevels", "Beheer=1\n", "Beheer=t access=10,20\n",
                       "[Algemeen]Beheer: 1 readonly=false view=10 edit=20\n"},
        DefinitionRow {"AllAtOnce", "A=1\n",
                       "A=i access=1,2 rgb=3,4,5 filetypes=f level=p readonly=true min=6 max=7 "
                       "choices={x} bitmap=b.bmp\n",
                       "[Algemeen]A: 2 bitmap=~/b.bmp choices=x max=7 min=6 readonly=true level=p "
                       "filetypes=f red=3 green=4 blue=5 view=1 edit=2\n"}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(
    Keys, Definitions,
    ::testing::Values(
        DefinitionRow {"AKeyInTheValueOfAnotherIsFoundAsWell", "A=1\n", "A=b filetypes=max=7\n",
                       "[Algemeen]A: 6 max=7 readonly=false filetypes=max=7\n"},
        DefinitionRow {"AKeyInAListIsFoundAsWell", "A=1\n", "A=c choices={x min=3,level=d}\n",
                       "[Algemeen]A: 11 choices=x min=3,level=d min=3,level=d} readonly=false "
                       "level=d}\n"},
        DefinitionRow {"AKeyNeedsNoBlankBeforeIt", "A=1\n", "A=dmin=3,max=4\n",
                       "[Algemeen]A: 3 max=4 min=3,max=4 readonly=false\n"},
        DefinitionRow {"AKeyWithinALongerWordCounts", "A=1\n", "A=d xmax=4 submin=3\n",
                       "[Algemeen]A: 3 max=4 min=3 readonly=false\n"},
        DefinitionRow {"TheFirstOfAKeyCounts", "A=1\n", "A=d min=1 min=2\n",
                       "[Algemeen]A: 3 min=1 readonly=false\n"},
        DefinitionRow {"AKeyHeedsCase", "A=1\n", "A=d MIN=1 Max=2 READONLY=true\n",
                       "[Algemeen]A: 3 readonly=false\n"},
        DefinitionRow {"AKeyNeedsItsEqualsSign", "A=1\n", "A=d min max =2\n",
                       "[Algemeen]A: 3 readonly=false\n"},
        DefinitionRow {"AKeyMayBeTheIdent", "max=1\n", "max=5\n",
                       "[Algemeen]max: 0 max=5 readonly=false\n"},
        DefinitionRow {"AKeyMayStandInTheIdent", "a level=1\n", "a level=d\n",
                       "[Algemeen]a level: 3 readonly=false level=d\n"},
        DefinitionRow {"AValueMayBeEmpty", "A=1\n", "A=d max= min=1\n",
                       "[Algemeen]A: 3 min=1 readonly=false\n"},
        DefinitionRow {"AValueEndsAtABlank", "A=1\n", "A=d level=d x max=1\n",
                       "[Algemeen]A: 3 max=1 readonly=false level=d\n"},
        DefinitionRow {"ATabDoesNotEndAValue", "A=1\n", "A=d level=d\tmax=1\n",
                       "[Algemeen]A: 3 max=1 readonly=false level=d\tmax=1\n"},
        DefinitionRow {"AValueKeepsItsSpelling", "A=1\n", "A=d readonly=TRUE level=X max=a\n",
                       "[Algemeen]A: 3 max=a readonly=TRUE level=X\n"},
        DefinitionRow {
            "KeysThatAreAbsentLeaveWhatIsThere", "A=1\n",
            "A=c choices={x} max=1 min=2 level=p filetypes=f rgb=1,2,3 access=4,5\nA=d\n",
            "[Algemeen]A: 3 choices=x max=1 min=2 readonly=false level=p filetypes=f "
            "red=1 green=2 blue=3 view=4 edit=5\n"},
        DefinitionRow {"PictureAndReadOnlyGoWhenAbsent", "A=1\n",
                       "A=d bitmap=a.bmp readonly=true\nA=d\n", "[Algemeen]A: 3 readonly=false\n"},
        DefinitionRow {"APictureWithAFolderIsKept", "A=1\nB=1\nC=1\n",
                       "A=s bitmap=x\\a.bmp\nB=s bitmap=x/b.bmp\nC=s bitmap=\n",
                       "[Algemeen]A: 0 bitmap=x\\a.bmp readonly=false\n"
                       "[Algemeen]B: 0 bitmap=x/b.bmp readonly=false\n"
                       "[Algemeen]C: 0 bitmap=~/ readonly=false\n"}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(
    Choices, Definitions,
    ::testing::Values(
        DefinitionRow {"AListMayHoldBlanks", "A=1\n", "A=c choices={x y,z} max=2\n",
                       "[Algemeen]A: 11 choices=x y,z max=2 readonly=false\n"},
        DefinitionRow {"AListEndsAtItsFirstBrace", "A=1\n", "A=c choices={x}y}\n",
                       "[Algemeen]A: 11 choices=x readonly=false\n"},
        DefinitionRow {"AListWithoutAnEndIsEmpty", "A=1\n", "A=c choices={x}\nA=c choices={y,z\n",
                       "[Algemeen]A: 11 readonly=false\n"},
        DefinitionRow {"AListMayBeEmpty", "A=1\n", "A=c choices={x}\nA=c choices={}\n",
                       "[Algemeen]A: 11 readonly=false\n"},
        DefinitionRow {"AListGoesBeforeAReference", "A=1\nB=ref\n", "A=c choices=B choices={x}\n",
                       "[Algemeen]A: 11 choices=x readonly=false\n"},
        DefinitionRow {"ABlankBeforeTheBraceMakesAReference", "A=1\n", "A=c choices= {x}\n",
                       "[Algemeen]A: 11 readonly=false\n"},
        DefinitionRow {"AReferenceIsAllTheRestOfTheLine", "A=1\nB=x,y\n", "A=c choices=B max=3\n",
                       "[Algemeen]A: 11 max=3 readonly=false\n"},
        DefinitionRow {"AReferenceMayHoldBlanks", "A=1\nB max=3=x,y\nB b=z\n", "A=c choices=B b\n",
                       "[Algemeen]A: 11 choices=z readonly=false\n"},
        DefinitionRow {"AReferenceToNothingStoresNothing", "A=1\n",
                       "A=c choices={x}\nA=c choices=B\n",
                       "[Algemeen]A: 11 choices=x readonly=false\n"},
        DefinitionRow {"AnUnknownChapterStoresNothing", "A=1\nB=x,y\n", "A=c choices=[C]B\n",
                       "[Algemeen]A: 11 readonly=false\n"},
        DefinitionRow {"AReferenceToAlgemeen", "B=x,y\n[C]\nA=1\n",
                       "[C]\nA=c choices=[Algemeen]B\n", "[C]A: 11 choices=x,y readonly=false\n"},
        DefinitionRow {"AReferenceHeedsCase", "A=1\nB=x,y\n", "A=c choices=b\n",
                       "[Algemeen]A: 11 readonly=false\n"},
        DefinitionRow {"AReferenceToTheSettingItself", "A=x,y\n", "A=c choices=A\n",
                       "[Algemeen]A: 11 choices=x,y readonly=false\n"},
        DefinitionRow {"AReferenceToAnEmptyValueEmptiesTheList", "A=1\nB=\n",
                       "A=c choices={x}\nA=c choices=B\n", "[Algemeen]A: 11 readonly=false\n"},
        DefinitionRow {"TheFirstPieceIsTheChapterEvenBeforeTheBracket",
                       "A=1\nC=no\n[B]\nC=x,y\n[C]\nD=no\n", "A=c choices=B[C]D\n",
                       "[Algemeen]A: 11 choices=x,y readonly=false\n"},
        DefinitionRow {"ABracketThatIsNotClosedIsPartOfTheIdent", "A=1\nC]D[E=y,z\n",
                       "A=c choices=C]D[E\n", "[Algemeen]A: 11 choices=y,z readonly=false\n"},
        DefinitionRow {"AReferenceInAnUnknownChapterFindsNothing", "A=1\nB=x,y\n",
                       "[C]\nA=c choices=B\n", "[Algemeen]A: 0 readonly=false\n"}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(
    Numbers, Definitions,
    ::testing::Values(
        DefinitionRow {"ColoursAreRedGreenAndBlue", "A=1\n", "A=s rgb=1,2,3\n",
                       "[Algemeen]A: 0 readonly=false red=1 green=2 blue=3\n"},
        DefinitionRow {"MissingColoursAreNone", "A=1\nB=1\nC=1\n",
                       "A=s rgb=1\nB=s rgb=1,2\nC=s rgb=\n",
                       "[Algemeen]A: 0 readonly=false red=1 green=0 blue=0\n"
                       "[Algemeen]B: 0 readonly=false red=1 green=2 blue=0\n"
                       "[Algemeen]C: 0 readonly=false\n"},
        DefinitionRow {"AFourthColourIsIgnored", "A=1\n", "A=s rgb=1,2,3,4\n",
                       "[Algemeen]A: 0 readonly=false red=1 green=2 blue=3\n"},
        DefinitionRow {"ColoursAreCutToEightBits", "A=1\n",
                       "A=s rgb=255,256,257\nA=s rgb=254,-1,511\n",
                       "[Algemeen]A: 0 readonly=false red=254 green=255 blue=255\n"},
        DefinitionRow {"ColoursAreReadAsFarAsTheyAreNumbers", "A=1\n", "A=s rgb=12x,y,+7\n",
                       "[Algemeen]A: 0 readonly=false red=12 green=0 blue=7\n"},
        DefinitionRow {"ABlankEndsTheColours", "A=1\n", "A=s rgb=1, 2, 3\n",
                       "[Algemeen]A: 0 readonly=false red=1 green=0 blue=0\n"},
        DefinitionRow {"WithoutASecondLevelAnyoneMayChange", "A=1\n",
                       "A=s access=1,2\nA=s access=10\n",
                       "[Algemeen]A: 0 readonly=false view=10 edit=0\n"},
        DefinitionRow {"AThirdLevelIsIgnored", "A=1\n", "A=s access=1,2,3\n",
                       "[Algemeen]A: 0 readonly=false view=1 edit=2\n"},
        DefinitionRow {"LevelsAreCutToSixteenBits", "A=1\nB=1\nC=1\n",
                       "A=s access=32767,-32768\nB=s access=32768,-32769\nC=s access=65537,70000\n",
                       "[Algemeen]A: 0 readonly=false view=32767 edit=-32768\n"
                       "[Algemeen]B: 0 readonly=false view=-32768 edit=32767\n"
                       "[Algemeen]C: 0 readonly=false view=1 edit=4464\n"}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(
    Places, Definitions,
    ::testing::Values(
        DefinitionRow {"UnknownIdentsAreWithoutEffect", "A=1\n", "B=d max=3\n[C]\nD=d\n", ""},
        DefinitionRow {"IdentsHeedCase", "A=1\n", "a=d\n", ""},
        DefinitionRow {"CommentsAreIgnored", "A=1\n", ";A=d\n A=d\n\tA=d\n\n", ""},
        DefinitionRow {"AnIdentWithABlankBeforeItsEqualsSignIsAnother", "A=1\nA =2\n", "A =d\n",
                       "[Algemeen]A : 3 readonly=false\n"},
        DefinitionRow {"AChapterIsThatOfTheDefinitions", "A=1\n[B]\nA=2\n", "[B]\nA=d\n",
                       "[B]A: 3 readonly=false\n"},
        DefinitionRow {"AChapterMayComeAgain", "[B]\nA=1\nC=2\n[D]\n", "[B]\nA=d\n[D]\n[B]\nC=i\n",
                       "[B]A: 3 readonly=false\n[B]C: 2 readonly=false\n"},
        DefinitionRow {"TheHeadMayBeNamed", "A=1\n[B]\n", "[B]\n[Algemeen]\nA=d\n",
                       "[Algemeen]A: 3 readonly=false\n"},
        DefinitionRow {"ASettingOfAnotherChapterStaysAString", "[B]\nA=1\n[C]\n", "[C]\nA=d\n", ""},
        DefinitionRow {"ASettingOfAnotherUnknownChapterStaysAString", "[B]\nA=1\n", "[C]\nA=d\n",
                       ""},
        DefinitionRow {"OfAChapterThatStandsTwiceTheLaterIsMeant", "[B]\nA=1\n[B]\nC=2\n",
                       "[B]\nA=d\nC=i\n", "[B]C: 2 readonly=false\n"},
        DefinitionRow {"ALineWithoutAnEqualsSignIsAnIdent", "A=1\n",
                       "A=d readonly=true bitmap=x\nA\n", "[Algemeen]A: 0 readonly=false\n"},
        DefinitionRow {"ALineWithoutAnEqualsSignIsNeverTold", "A=1\n", "een\ntwee\nA=d\n",
                       "[Algemeen]A: 3 readonly=false\n"},
        DefinitionRow {"LinesMayEndInReturnAndFeed", "A=1\nB=2\n", "A=d level=d\r\nB=i",
                       "[Algemeen]A: 3 readonly=false level=d\n[Algemeen]B: 2 readonly=false\n"},
        DefinitionRow {"Windows1252", "\xE9=1\n", "\xE9=d level=\x80\n",
                       "[Algemeen]\xC3\xA9: 3 readonly=false level=\xE2\x82\xAC\n"},
        DefinitionRow {"FilesMayDifferInEncoding", "\xE9=1\n", "\xC3\xA9=d level=\xE2\x82\xAC\n",
                       "[Algemeen]\xC3\xA9: 3 readonly=false level=\xE2\x82\xAC\n"},
        DefinitionRow {"Utf16", "A=1\n",
                       "\xFF\xFE"
                       "A\0=\0d\0\n\0"s,
                       "[Algemeen]A: 3 readonly=false\n"}),
    sentenceOf);

TEST_F(LoadDefinitions, DefinitionsOfAnUnknownChapterGoToAlgemeen)
{
    EXPECT_EQ(defined("B=1\n[C]\n",
                      "[D]\nB=i min=0 max=9 readonly=true level=d bitmap=b.bmp access=1,2 "
                      "choices={x}\n"),
              "[Algemeen]B: 0 bitmap=~/b.bmp choices=x max=9 min=0 readonly=true level=d view=1 "
              "edit=2\n")
        << "all but the type";
}

TEST_F(LoadDefinitions, HeadersMakeNoCategory)
{
    EXPECT_EQ(valuesOf(*load("A=1\n", "[B]\nC=d\n")), "[Algemeen] General settings\n  A=1\n");
}

TEST_F(LoadDefinitions, ValuesAreNotTaken)
{
    EXPECT_EQ(valuesOf(*load("A=1\n", "A=d max=5\n")), "[Algemeen] General settings\n  A=1\n");
}

TEST_F(LoadDefinitions, AReferenceReadsTheGlobalValue)
{
    folder.write(L"project.ipr", "B=p,q\n");
    const auto model = load("A=1\nB=x,y\n", "A=c choices=B\n");
    EXPECT_TRUE(model->loadProjectFile(folder.path(L"project.ipr")));
    EXPECT_EQ((*model)[0].settings()[0].choices(), L"x,y");
    EXPECT_EQ((*model)[0].settings()[1].value(), L"p,q");
}

TEST_F(LoadDefinitions, AHeaderWithoutAnEndIsTold)
{
    EXPECT_EQ(defined("A=1\n[B]\nA=2\n", ";\nlos\n[B]\n[Open\nA=d\n[Nog een\n"),
              "[B]A: 3 readonly=false\n");
    EXPECT_EQ(boxes(), "Line was skipped! Expected: \"]\" (inr:3) (Open)\n");
    EXPECT_EQ(services.icons, std::vector {corma::MessageIcon::exclamation});
}

TEST_F(LoadDefinitions, AHeaderWithoutAnEndIsToldInTheLanguageOfTheTexts)
{
    folder.write(L"tool.inr", "[Open\n");
    EXPECT_EQ((SettingsTest::load("", 19)->size()), 1U);
    EXPECT_EQ(boxes(), "Regel overgeslagen! Verwacht: \"]\" (inr:0) (Open)\n");
}

TEST_F(LoadDefinitions, EachFileTellsOfItsFirstLine)
{
    folder.write(L"LanEN/tool.ind", "ook los\n");
    EXPECT_EQ(defined("los\nA=1\n", "[Open\n"), "");
    EXPECT_EQ(boxes(),
              "Line was skipped! Expected: \"=\" (ini:0) (los)\n"
              "Line was skipped! Expected: \"]\" (inr:0) (Open)\n"
              "Line was skipped! Expected: \"=\" (ind:0) (ook los)\n");
}

TEST_F(LoadDefinitions, WithoutAFileNothingIsTold)
{
    EXPECT_EQ(definitionsOf(*SettingsTest::load("A=1\n")), "");
    folder.makeFolder(L"tool.inr");
    EXPECT_EQ(definitionsOf(*SettingsTest::load("A=1\n")), "");
    EXPECT_EQ(boxes(), "");
}

TEST_F(LoadDefinitions, WithoutANameTheyAreNotLoaded)
{
    folder.write(L"tool.ini", "A=1\n");
    folder.write(L"tool.inr", "A=d\n");
    folder.write(L"LanEN/tool.ind", "A=text\n");
    FileNameSet some = names();
    some.definitionsName.clear();
    EXPECT_EQ(definitionsOf(RubriekenArray(some)), "");
    some = names();
    some.descriptionsName.clear();
    const RubriekenArray model(some);
    EXPECT_EQ(definitionsOf(model), "[Algemeen]A: 3 readonly=false\n");
    EXPECT_EQ(model[0].settings()[0].longDescription(), L"");
}

} // namespace
