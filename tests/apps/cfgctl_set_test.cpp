// cfgctl set at the level of the drawing, and what happens to the file of a drawing: written back,
// written elsewhere, left alone. The levels of files: cfgctl_write_test.cpp.

#include "CfgctlTest.h"
#include "DrawingChanges.h"
#include "platform/platform.h"

#include <gmock/gmock.h>

using ::testing::HasSubstr;

namespace corma::testing {

namespace {

class CfgctlSet : public CfgctlTest
{
protected:
    CfgctlSet()
    {
        write("tool.ini", "Taal=EN\nMaat=1\n[Tekst]\nHoogte=9\n[Wand]\nDikte=100\n");
        write("tool.ipr", "Maat=2\n");
        copyDrawing("r2000", "plan.dxf");
    }

    std::string changes(std::string_view before, std::string_view after) const
    {
        return drawingChanges(pathOf(before), pathOf(after));
    }
};

TEST_F(CfgctlSet, StoresAValueThatLookupsFindThen)
{
    EXPECT_EQ(get({"tool.ini", "Maat", "--drawing", "plan.dxf"}), "2");
    const ProgramResult result = run({"set", "tool.ini", "Maat", "3", "--drawing", "plan.dxf"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out + result.err, "");
    EXPECT_EQ(get({"tool.ini", "Maat", "--drawing", "plan.dxf"}), "3");
    EXPECT_EQ(get({"tool.ini", "Maat"}), "1");
    EXPECT_EQ(read("tool.ipr"), "Maat=2\n");
}

TEST_F(CfgctlSet, GivesAStatus)
{
    EXPECT_EQ(json({"set", "tool.ini", "Maat", "3", "--level", "drawing", "--drawing=plan.dxf"}),
              R"({"status":5100})");
}

TEST_F(CfgctlSet, AgreesWithWhatTheDrawingIsSaidToHold)
{
    run({"set", "tool.ini", "[Wand: a=b]Dikte", "1,5 m\xC2\xB2", "--drawing=plan.dxf", "--cache"});
    const Json document = Json::parse(json({"drawing", "--drawing=plan.dxf"}));
    EXPECT_EQ(document["settings"]["TOOL.INI"]["Wand: a=b"]["Dikte"], "1,5 m\xC2\xB2");
}

TEST_F(CfgctlSet, ChangesTheRecordsOfTheValueOnly)
{
    copyDrawing("r2000", "eerst.dxf");
    run({"set", "tool.ini", "[Tekst]Hoogte", "3.5", "--drawing", "plan.dxf"});
    EXPECT_EQ(changes("eerst.dxf", "plan.dxf"),
              "- DICTIONARY\n- XRECORD\n+ DICTIONARY\n+ XRECORD\n");
    write("ander.ini", "");
    run({"set", "ander.ini", "[Wand]Dikte", "70", "--drawing=plan.dxf", "--save-as=ander.dxf"});
    EXPECT_EQ(changes("plan.dxf", "ander.dxf"),
              "- DICTIONARY\n+ DICTIONARY\n+ DICTIONARY\n+ DICTIONARY\n+ XRECORD\n");
}

TEST_F(CfgctlSet, MakesADwgFileOfADxfDrawingUnderSuchAName)
{
    const auto beginOf = [&](const char* file) { return read(file).substr(0, 6); };
    std::filesystem::copy_file(CORMA_EXAMPLES "/project/woonhuis.dxf", pathOf("huis.dxf"));
    const std::string former = read("huis.dxf");
    run({"set", "tool.ini", "Maat", "3", "--drawing=huis.dxf", "--save-as=huis.dwg"});
    EXPECT_EQ(read("huis.dxf"), former);
    EXPECT_EQ(beginOf("huis.dwg"), "AC1032");
    EXPECT_EQ(get({"tool.ini", "Maat", "--drawing=huis.dwg"}), "3");
    run({"set", "tool.ini", "Maat", "4", "--drawing=huis.dwg"});
    EXPECT_EQ(beginOf("huis.dwg"), "AC1032");
    EXPECT_EQ(get({"tool.ini", "Maat", "--drawing=huis.dwg"}), "4");
    run({"set", "tool.ini", "Maat", "5", "--drawing=huis.dwg", "--save-as=kopie.dxf"});
    EXPECT_EQ(beginOf("kopie.dxf"), "AC1032") << "it stays DWG whatever the name";
    EXPECT_EQ(get({"tool.ini", "Maat", "--drawing=kopie.dxf"}), "5");
}

TEST_F(CfgctlSet, KeepsADxfDrawingThatIsNamedDwgAsItIs)
{
    copyDrawing("r2000", "plan.dwg");
    run({"set", "tool.ini", "Maat", "3", "--drawing=plan.dwg"});
    EXPECT_EQ(changes("plan.dxf", "plan.dwg"), "- DICTIONARY\n+ DICTIONARY\n+ XRECORD\n");
}

TEST_F(CfgctlSet, SavesElsewhereAndLeavesTheFirstAlone)
{
    const std::string former = read("plan.dxf");
    const auto time = timeOf("plan.dxf");
    EXPECT_EQ(run({"set", "tool.ini", "Maat", "3", "--drawing=plan.dxf", "--save-as", "kopie.dxf"})
                  .exitStatus,
              0);
    EXPECT_EQ(read("plan.dxf"), former);
    EXPECT_EQ(timeOf("plan.dxf"), time);
    EXPECT_EQ(get({"tool.ini", "Maat", "--drawing", "kopie.dxf"}), "3");
    EXPECT_EQ(get({"tool.ini", "Maat", "--drawing", "plan.dxf"}), "2");
}

TEST_F(CfgctlSet, TakesTheDrawingsOwnNameForTheCopyToo)
{
    run({"set", "tool.ini", "Maat", "3", "--drawing=plan.dxf", "--save-as=plan.dxf"});
    EXPECT_EQ(get({"tool.ini", "Maat", "--drawing", "plan.dxf"}), "3");
}

TEST_F(CfgctlSet, TakesOddValuesAsTheyAre)
{
    for (const std::string value :
         {"", " ", "a=b", "-", "\xE2\x82\xAC \xC3\xA9", "%s%n", "^J", "{102"}) {
        EXPECT_EQ(run({"set", "tool.ini", "Maat", "--drawing=plan.dxf", "--", value}).exitStatus,
                  0);
        EXPECT_EQ(get({"tool.ini", "Maat", "--drawing=plan.dxf"}), value);
    }
}

// The name without the number is the key; both files have the value.
TEST_F(CfgctlSet, StoresForAScrambledFileUnderThePlainName)
{
    run({"scramble", "tool.ini", "7"});
    run({"set", "tool.ini", "Maat", "3", "--drawing=plan.dxf", "--scramble=7"});
    EXPECT_EQ(get({"tool.ini", "Maat", "--drawing=plan.dxf"}), "3");
    EXPECT_EQ(get({"tool.ini", "Maat", "--drawing=plan.dxf", "--scramble=7"}), "3");
}

struct RefusedSet
{
    const char* sentence;
    Words arguments;
    const char* message; // a part of what is told
};

class CfgctlSetRefused : public CfgctlSet, public ::testing::WithParamInterface<RefusedSet>
{
};

TEST_P(CfgctlSetRefused, LeavesTheDrawingAlone)
{
    copyDrawing("r12", "oud.dxf");
    copyDrawing("r12_binary", "oud_binair.dxf");
    write("map/x", "");
    const std::string former = read("plan.dxf");
    const std::string old = read("oud.dxf");
    const auto time = timeOf("oud.dxf");
    Words words = GetParam().arguments;
    words.emplace_back("--json");
    const ProgramResult result = run(words);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "{\"status\":-5001}\n");
    EXPECT_THAT(result.err, HasSubstr(GetParam().message));
    EXPECT_EQ(read("plan.dxf"), former);
    EXPECT_EQ(read("oud.dxf"), old);
    EXPECT_EQ(timeOf("oud.dxf"), time);
    EXPECT_FALSE(folder.has(L"kopie.dxf"));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Because, CfgctlSetRefused, ::testing::Values(
    RefusedSet {"R12HasNoPlace",       {"set", "tool.ini", "Maat", "3", "--drawing", "oud.dxf"}, "oud.dxf: its version (AC1009) is R12 or older."},
    RefusedSet {"BinaryR12HasNoPlace", {"set", "tool.ini", "Maat", "3", "--drawing", "oud_binair.dxf", "--save-as", "kopie.dxf"}, "Maat not stored in the drawing\n"},
    RefusedSet {"TheFileIsNotThere",   {"set", "weg.ini", "Maat", "3", "--drawing", "plan.dxf"}, "(Inifile \"weg.ini\" not found , ec = 0)\nMaat not stored in the drawing\n"},
    RefusedSet {"TheIdentIsEmpty",     {"set", "tool.ini", "[Wand]", "3", "--drawing", "plan.dxf"}, "[Wand] not stored in the drawing\n"},
    RefusedSet {"TheFolderIsNotThere", {"set", "tool.ini", "Maat", "3", "--drawing", "plan.dxf", "--save-as", "weg/kopie.dxf"}, "weg/kopie.dxf could not be written ("},
    RefusedSet {"TheTargetIsAFolder",  {"set", "tool.ini", "Maat", "3", "--drawing", "plan.dxf", "--save-as", "map"}, "map could not be written ("}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

TEST_F(CfgctlSet, LeavesTheDrawingAsItWasWhenTheDiskIsFull)
{
    const std::string former = read("plan.dxf");
    ProgramResult result;
    {
        const FullDisk disk(former.size() / 2);
        result = run({"set", "tool.ini", "Maat", "3", "--drawing", "plan.dxf"});
    }
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.err, HasSubstr("plan.dxf could not be written ("));
    EXPECT_EQ(read("plan.dxf"), former);
}

TEST_F(CfgctlSet, ACommandThatChangesNothingDoesNotTouchTheDrawing)
{
    const std::string former = read("plan.dxf");
    const auto time = timeOf("plan.dxf");
    letFilesSettle();
    for (Words words : {Words {"get", "tool.ini", "[Tekst]Hoogte"}, Words {"find", "tool.ini", "*"},
                        Words {"levels", "tool.ini", "Maat"}, Words {"includes", "tool.ini"},
                        Words {"where", "tool.ini"}, Words {"model", "tool.ini"},
                        Words {"rows", "tool.ini", "Wand"}, Words {"scramble", "tool.ini", "1"},
                        Words {"drawing"}}) {
        words.insert(words.end(), {"--drawing=plan.dxf"});
        EXPECT_EQ(run(words).exitStatus, 0) << words.front();
        words.emplace_back("--save-as=kopie.dxf");
        EXPECT_EQ(run(words).exitStatus, 0) << words.front();
    }
    EXPECT_EQ(read("plan.dxf"), former);
    EXPECT_EQ(timeOf("plan.dxf"), time);
    EXPECT_FALSE(folder.has(L"kopie.dxf"));
}

struct Drawing
{
    const char* file;
    const char* changes; // that a new value of [Tekst]Hoogte makes
};

class CfgctlSetIn : public CfgctlSet, public ::testing::WithParamInterface<Drawing>
{
};

constexpr const char* kInPlace = "- DICTIONARY\n- XRECORD\n+ DICTIONARY\n+ XRECORD\n";

TEST_P(CfgctlSetIn, TheValueComesBackAndAllElseStays)
{
    copyDrawing(GetParam().file, "een.dxf");
    EXPECT_EQ(
        run({"set", "tool.ini", "[Tekst]Hoogte", "3.5", "--drawing=een.dxf", "--save-as=twee.dxf"})
            .exitStatus,
        0);
    EXPECT_EQ(get({"tool.ini", "[Tekst]Hoogte", "--drawing=twee.dxf"}), "3.5");
    EXPECT_EQ(changes("een.dxf", "twee.dxf"), GetParam().changes);

    const std::string odd = "Ma\xC3\x9F \xE2\x82\xAC \xE6\x97\xA5 \xF0\x9F\x98\x80";
    run({"set", "tool.ini", "[Wand: " + odd + "]" + odd, odd, "--drawing=twee.dxf"});
    EXPECT_EQ(get({"tool.ini", "[Wand: " + odd + "]" + odd, "--drawing=twee.dxf"}), odd);
    EXPECT_EQ(get({"tool.ini", "[Tekst]Hoogte", "--drawing=twee.dxf"}), "3.5");
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Versions, CfgctlSetIn, ::testing::Values(
    Drawing {"r13", kInPlace}, Drawing {"r13_binary", kInPlace}, Drawing {"r14", kInPlace},
    Drawing {"r2000", kInPlace}, Drawing {"r2000_binary", kInPlace}, Drawing {"r2004", kInPlace},
    Drawing {"r2007", kInPlace}, Drawing {"r2010", kInPlace}, Drawing {"r2013", kInPlace},
    Drawing {"r2018", kInPlace}, Drawing {"r2018_binary", kInPlace}, Drawing {"settings", kInPlace},
    Drawing {"ucs", kInPlace}, Drawing {"layout_current", kInPlace}),
    [](const auto& row) { return row.param.file; });
// clang-format on

} // namespace

} // namespace corma::testing
