// cfgctl freeze: what a drawing keeps when the files behind it change.

#include "CfgctlTest.h"

#include <algorithm>
#include <gmock/gmock.h>

using ::testing::HasSubstr;

namespace corma::testing {

namespace {

class CfgctlFreeze : public CfgctlTest
{
protected:
    CfgctlFreeze()
    {
        write("stop.ini",
              "Taal=NL\nMaat=1\n[Wand]\nDikte=100\nHoogte=2600\n[Leeg]\n[Deur]\n"
              "Dikte=40\n");
        write("stop.inr",
              "Taal=s level=d\nMaat=i\n[Wand]\nDikte=i level=d\nHoogte=i level=p\n"
              "[Deur]\nDikte=i level=d\n");
        write("stop.ipr", "Maat=2\n");
        copyDrawing("r2000", "plan.dxf");
    }

    // What the drawing holds for the file.
    std::string held(const char* drawing = "plan.dxf") const
    {
        const Json settings = Json::parse(json({"drawing", "--drawing", drawing}))["settings"];
        return settings.contains("STOP.INI") ? settings["STOP.INI"].dump() : "nothing";
    }
};

TEST_F(CfgctlFreeze, TheDrawingKeepsTheValueWhenTheFileChanges)
{
    const ProgramResult result = run({"freeze", "stop.ini", "[Wand]Dikte", "--drawing=plan.dxf"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out + result.err, "");
    EXPECT_EQ(held(), R"({"Wand":{"Dikte":"100"}})");
    run({"set", "stop.ini", "[Wand]Dikte", "120"});
    EXPECT_EQ(get({"stop.ini", "[Wand]Dikte", "--drawing=plan.dxf"}), "100");
    EXPECT_EQ(get({"stop.ini", "[Wand]Dikte"}), "120");
}

TEST_F(CfgctlFreeze, GivesAStatus)
{
    EXPECT_EQ(json({"freeze", "stop.ini", "Taal", "--drawing=plan.dxf"}), kStored);
    EXPECT_EQ(json({"freeze", "stop.ini", "--chapter=Wand", "--drawing=plan.dxf"}), kStored);
    EXPECT_EQ(json({"freeze", "stop.ini", "--levels", "--drawing=plan.dxf"}), kStored);
}

TEST_F(CfgctlFreeze, TakesTheValueOfTheProject)
{
    run({"freeze", "stop.ini", "Maat", "--drawing=plan.dxf"});
    EXPECT_EQ(held(), R"({"Algemeen":{"Maat":"2"}})");
}

TEST_F(CfgctlFreeze, PassesOverIncludedFiles)
{
    write("norm.ini", "Taal=EN\n");
    write("stop.ini", "#INCLUDE=norm.ini\nTaal=NL\n");
    EXPECT_EQ(get({"stop.ini", "Taal"}), "EN");
    run({"freeze", "stop.ini", "Taal", "--drawing=plan.dxf"});
    EXPECT_EQ(held(), R"({"Algemeen":{"Taal":"NL"}})");
}

TEST_F(CfgctlFreeze, AnIdentWithoutAValueBecomesAnEmptyOne)
{
    EXPECT_EQ(json({"freeze", "stop.ini", "[Raam]Hoogte", "--drawing=plan.dxf"}), kStored);
    EXPECT_EQ(held(), R"({"Raam":{"Hoogte":""}})");
}

TEST_F(CfgctlFreeze, CutsALongValue)
{
    for (const std::size_t length : {510U, 511U, 512U}) {
        copyDrawing("r2000", "plan.dxf");
        write("stop.ini", "A=" + std::string(length, 'x') + "\n");
        run({"freeze", "stop.ini", "A", "--drawing=plan.dxf"});
        EXPECT_EQ(get({"stop.ini", "A", "--drawing=plan.dxf"}),
                  std::string(std::min<std::size_t>(length, 511), 'x'));
    }
}

TEST_F(CfgctlFreeze, LeavesADrawingAloneThatHasTheValue)
{
    run({"freeze", "stop.ini", "[Wand]Dikte", "--drawing=plan.dxf"});
    run({"set", "stop.ini", "[Wand]Dikte", "120"});
    const std::string former = read("plan.dxf");
    const auto time = timeOf("plan.dxf");
    letFilesSettle();
    EXPECT_EQ(json({"freeze", "stop.ini", "[Wand]Dikte", "--drawing=plan.dxf"}), kStored);
    EXPECT_EQ(json({"freeze", "stop.ini", "--chapter=Leeg", "--drawing=plan.dxf"}), kStored);
    EXPECT_EQ(
        json({"freeze", "stop.ini", "--chapter=Weg", "--drawing=plan.dxf", "--save-as=kopie.dxf"}),
        kStored);
    EXPECT_EQ(read("plan.dxf"), former);
    EXPECT_EQ(timeOf("plan.dxf"), time);
    EXPECT_FALSE(folder.has(L"kopie.dxf"));
}

TEST_F(CfgctlFreeze, SavesElsewhere)
{
    const std::string former = read("plan.dxf");
    EXPECT_EQ(json({"freeze", "stop.ini", "Taal", "--drawing=plan.dxf", "--save-as=kopie.dxf"}),
              kStored);
    EXPECT_EQ(read("plan.dxf"), former);
    EXPECT_EQ(held("kopie.dxf"), R"({"Algemeen":{"Taal":"NL"}})");
}

TEST_F(CfgctlFreeze, TakesAWholeChapter)
{
    run({"set", "stop.ini", "[Wand]Hoogte", "2700", "--drawing=plan.dxf"});
    run({"freeze", "stop.ini", "--chapter", "Wand", "--drawing=plan.dxf"});
    EXPECT_EQ(held(), R"({"Wand":{"Hoogte":"2700","Dikte":"100"}})");
}

TEST_F(CfgctlFreeze, TakesAllThatBelongsIntoDrawings)
{
    const ProgramResult result = run({"freeze", "stop.ini", "--levels", "--drawing=plan.dxf"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out + result.err, "");
    EXPECT_EQ(held(), R"({"Algemeen":{"Taal":"NL"},"Wand":{"Dikte":"100"},"Deur":{"Dikte":"40"}})");
}

TEST_F(CfgctlFreeze, WithoutDefinitionsNothingBelongsIntoDrawings)
{
    folder.remove(L"stop.inr");
    const std::string former = read("plan.dxf");
    EXPECT_EQ(json({"freeze", "stop.ini", "--levels", "--drawing=plan.dxf"}), kStored);
    EXPECT_EQ(read("plan.dxf"), former);
}

TEST_F(CfgctlFreeze, KeepsTheValuesOfAScrambledFileUnderThePlainName)
{
    run({"scramble", "stop.ini", "7"});
    run({"freeze", "stop.ini", "[Wand]Dikte", "--drawing=plan.dxf", "--scramble=7"});
    EXPECT_EQ(held(), R"({"Wand":{"Dikte":"100"}})");
}

struct RefusedFreeze
{
    const char* sentence;
    Words arguments;
    const char* message; // a part of what is told
};

class CfgctlFreezeRefused : public CfgctlFreeze, public ::testing::WithParamInterface<RefusedFreeze>
{
};

TEST_P(CfgctlFreezeRefused, LeavesTheDrawingAlone)
{
    copyDrawing("r12", "oud.dxf");
    const std::string former = read("plan.dxf");
    const std::string old = read("oud.dxf");
    Words words = GetParam().arguments;
    words.emplace_back("--json");
    const ProgramResult result = run(words);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "{\"status\":-5001}\n");
    EXPECT_THAT(result.err, HasSubstr(GetParam().message));
    EXPECT_EQ(read("plan.dxf"), former);
    EXPECT_EQ(read("oud.dxf"), old);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Because, CfgctlFreezeRefused, ::testing::Values(
    RefusedFreeze {"TheFileIsNotThere",            {"freeze", "weg.ini", "Maat", "--drawing", "plan.dxf"}, "weg.ini"},
    RefusedFreeze {"TheFileOfAChapterIsNotThere",  {"freeze", "weg.ini", "--chapter", "A", "--drawing", "plan.dxf"}, ""},
    RefusedFreeze {"TheFileOfLevelsIsNotThere",    {"freeze", "weg.ini", "--levels", "--drawing", "plan.dxf"}, ""},
    RefusedFreeze {"R12HasNoPlace",                {"freeze", "stop.ini", "Maat", "--drawing", "oud.dxf"}, "oud.dxf: its version (AC1009) is R12 or older."},
    RefusedFreeze {"R12HasNoPlaceForAChapter",     {"freeze", "stop.ini", "--chapter=Wand", "--drawing", "oud.dxf"}, "[Wand]Dikte not stored in the drawing\n"},
    RefusedFreeze {"R12HasNoPlaceForLevels",       {"freeze", "stop.ini", "--levels", "--drawing", "oud.dxf"}, "[Wand]Dikte not stored in the drawing\n"},
    RefusedFreeze {"TheIdentIsEmpty",              {"freeze", "stop.ini", "[Wand]", "--drawing", "plan.dxf"}, "[Wand] not stored in the drawing\n"},
    RefusedFreeze {"TheCopyHasNoFolder",           {"freeze", "stop.ini", "Maat", "--drawing", "plan.dxf", "--save-as", "weg/kopie.dxf"}, "weg/kopie.dxf could not be written ("}),
    [](const auto& row) { return row.param.sentence; });
// clang-format on

} // namespace

} // namespace corma::testing
