// cfgctl set at the levels of files: the configuration file itself, plain or scrambled, and the
// project file beside it.

#include "CfgctlTest.h"

#include <gmock/gmock.h>

using ::testing::HasSubstr;

namespace corma::testing {

namespace {

constexpr const char* kNotStored = R"({"status":-5001})";
constexpr const char* kNotWritten = "Setting was not written. \nCheck if ini-file is present and \n"
                                    "if the file is not read-only\n";

class CfgctlWrite : public CfgctlTest
{
protected:
    CfgctlWrite() { write("tool.ini", kFile); }

    static constexpr const char* kFile
        = ";remark\nTaal=NL\n\n[Tekst]\nHoogte=3.5\nBreedte=1\n\n[Wand]\nDikte=100\n";
};

TEST_F(CfgctlWrite, ChangesOneLineOfTheFile)
{
    const ProgramResult result = run({"set", "tool.ini", "[Tekst]Hoogte", "2.5"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(read("tool.ini"),
              ";remark\nTaal=NL\n\n[Tekst]\nHoogte=2.5\nBreedte=1\n\n[Wand]\nDikte=100\n");
    EXPECT_EQ(get({"tool.ini", "[Tekst]Hoogte"}), "2.5");
    EXPECT_FALSE(folder.has(L"dummy.tmp"));
    EXPECT_FALSE(folder.has(L"tool.ipr"));
}

TEST_F(CfgctlWrite, GivesAStatus)
{
    EXPECT_EQ(json({"set", "tool.ini", "Taal", "EN"}), kStored);
    EXPECT_EQ(json({"set", "tool.ini", "Taal", "FR", "--level", "global"}), kStored);
    EXPECT_EQ(json({"set", "tool.ini", "Taal", "DE", "--level=project"}), kStored);
    EXPECT_EQ(get({"tool.ini", "Taal"}), "FR");
}

TEST_F(CfgctlWrite, IsSeenAtItsLevel)
{
    copyDrawing("r2000", "plan.dxf");
    run({"set", "tool.ini", "[Wand]Dikte", "120"});
    run({"set", "tool.ini", "[Wand]Dikte", "150", "--level", "project"});
    EXPECT_EQ(get({"tool.ini", "[Wand]Dikte"}), "120");
    EXPECT_EQ(get({"tool.ini", "[Wand]Dikte", "--drawing", "plan.dxf"}), "150");
    run({"set", "tool.ini", "[Wand]Dikte", "70", "--drawing", "plan.dxf"});
    EXPECT_EQ(get({"tool.ini", "[Wand]Dikte", "--drawing", "plan.dxf"}), "70");
    EXPECT_EQ(get({"tool.ini", "[Wand]Dikte", "--drawing", "plan.dxf", "--cache"}), "70");
    EXPECT_EQ(read("tool.ipr"), "[Wand]\nDikte=150");
    EXPECT_EQ(get({"tool.ini", "[Wand]Dikte"}), "120");
}

TEST_F(CfgctlWrite, WritesNoDrawingForAnotherLevel)
{
    copyDrawing("r2000", "plan.dxf");
    const std::string drawing = read("plan.dxf");
    const auto time = timeOf("plan.dxf");
    letFilesSettle();
    for (const char* level : {"global", "project"}) {
        for (const Words& more : {Words {}, Words {"--save-as", "kopie.dxf"}}) {
            Words words {"set", "tool.ini", "Maat", "1", "--drawing=plan.dxf", "--level", level};
            words.insert(words.end(), more.begin(), more.end());
            EXPECT_EQ(json(words), kStored);
        }
    }
    EXPECT_EQ(get({"tool.ini", "Maat"}), "1");
    EXPECT_EQ(read("plan.dxf"), drawing);
    EXPECT_EQ(timeOf("plan.dxf"), time);
    EXPECT_FALSE(folder.has(L"kopie.dxf"));
}

TEST_F(CfgctlWrite, FindsABareNameAsALookupDoes)
{
    write("steun/norm.ini", "A=1\n");
    environment["ACAD"] = pathOf("steun");
    EXPECT_EQ(json({"set", "norm.ini", "A", "2"}), kStored);
    EXPECT_EQ(read("steun/norm.ini"), "A=2\n");
    EXPECT_FALSE(folder.has(L"norm.ini"));
}

TEST_F(CfgctlWrite, LeavesIncludedFilesAlone)
{
    write("norm.ini", "[Tekst]\nHoogte=5\n");
    write("tool.ini", "#INCLUDE=norm.ini\n[Tekst]\nHoogte=3.5\n");
    EXPECT_EQ(json({"set", "tool.ini", "[Tekst]Hoogte", "7"}), kStored);
    EXPECT_EQ(read("norm.ini"), "[Tekst]\nHoogte=5\n");
    EXPECT_EQ(read("tool.ini"), "#INCLUDE=norm.ini\n[Tekst]\nHoogte=7\n");
    EXPECT_EQ(get({"tool.ini", "[Tekst]Hoogte"}), "5");
}

TEST_F(CfgctlWrite, AddsNothingWithoutLeave)
{
    EXPECT_EQ(json({"set", "tool.ini", "Taal", "EN", "--no-create"}), kStored);
    EXPECT_EQ(get({"tool.ini", "Taal"}), "EN");
    const std::string former = read("tool.ini");
    for (const char* ident : {"Maat", "[Tekst]Kleur", "[Deur]Hoogte", "[Tekst]hoogte"}) {
        EXPECT_EQ(json({"set", "tool.ini", ident, "1", "--no-create"}), kStored);
        EXPECT_EQ(read("tool.ini"), former) << ident;
    }
}

TEST_F(CfgctlWrite, AProjectFileGetsWhatItLacksAllTheSame)
{
    EXPECT_EQ(json({"set", "tool.ini", "[A]B", "1", "--no-create", "--level=project"}), kStored);
    EXPECT_EQ(read("tool.ipr"), "[A]\nB=1");
    EXPECT_EQ(json({"set", "tool.ini", "[A]B", "2", "--no-create", "--level=project"}), kStored);
    EXPECT_EQ(read("tool.ipr"), "[A]\nB=2\n");
    EXPECT_EQ(read("tool.ini"), kFile);
}

struct Rewritten
{
    const char* sentence;
    std::string before;
    Words arguments; // behind the name of the file
    std::string after;
};

class CfgctlWriteRows : public CfgctlWrite, public ::testing::WithParamInterface<Rewritten>
{
};

TEST_P(CfgctlWriteRows, MakesTheWholeFile)
{
    write("tool.ini", GetParam().before);
    Words words {"set", "tool.ini"};
    words.insert(words.end(), GetParam().arguments.begin(), GetParam().arguments.end());
    const ProgramResult result = run(words);
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out + result.err, "");
    EXPECT_EQ(read("tool.ini"), GetParam().after);
    run(words);
    const std::string twice = read("tool.ini");
    EXPECT_EQ(twice.ends_with('\n') ? twice.substr(0, GetParam().after.size()) : twice,
              GetParam().after);
}

using std::string_literals::operator""s;

// clang-format off
INSTANTIATE_TEST_SUITE_P(Row, CfgctlWriteRows, ::testing::Values(
    Rewritten {"TheChapterCounts",            "A=1\n[X]\nA=2\n[Y]\nA=3\n", {"[Y]A", "9"}, "A=1\n[X]\nA=2\n[Y]\nA=9\n"},
    Rewritten {"TheHeadCounts",               "A=1\n[X]\nA=2\n", {"A", "9"}, "A=9\n[X]\nA=2\n"},
    Rewritten {"TheHeadHasAName",             "A=1\n[X]\nA=2\n", {"[Algemeen]A", "9"}, "A=9\n[X]\nA=2\n"},
    Rewritten {"TheFirstOfTwoChanges",        "[X]\nA=1\n", {"[X]A", "9"}, "[X]\nA=9\n"},
    Rewritten {"ANewOneStandsBeforeTheNextHeader", "[X]\nA=1\n\n[Y]\n", {"[X]B", "9"}, "[X]\nA=1\n\nB=9\n[Y]\n"},
    Rewritten {"ANewOneOfTheHeadToo",         "A=1\n[X]\n", {"B", "9"}, "A=1\nB=9\n[X]\n"},
    Rewritten {"InTheLastChapterBelowItsHeader", "[X]\nA=1\n", {"[X]B", "9"}, "[X]\nB=9\nA=1\n"},
    Rewritten {"WithoutHeadersBelowTheFirstLine", "A=1\nC=3\n", {"B", "9"}, "A=1\nB=9\nC=3\n"},
    Rewritten {"AnEmptyFileGetsIt",           "", {"B", "9"}, "B=9\n"},
    Rewritten {"ANewChapterComesLast",        "A=1\n", {"[X]B", "9"}, "A=1\n[X]\nB=9"},
    Rewritten {"OtherCaseIsAnotherOne",       "[X]\nhoogte=1\n[Y]\n", {"[X]Hoogte", "9"}, "[X]\nhoogte=1\nHoogte=9\n[Y]\n"},
    Rewritten {"ABlankBeforeTheSignIsAnother", "[X]\nA =1\n[Y]\n", {"[X]A", "9"}, "[X]\nA =1\nA=9\n[Y]\n"},
    Rewritten {"ALongerOneStays",             "[X]\nAB=1\nA=1\n", {"[X]A", "9"}, "[X]\nAB=1\nA=9\n"},
    Rewritten {"LineEndsStay",                ";r\r\nA=1\r\n[X]\r\n", {"A", "9"}, ";r\r\nA=9\r\n[X]\r\n"},
    Rewritten {"NewLinesGetTheFilesLineEnd",  ";r\r\n[X]\r\n[Y]\r\n", {"[X]A", "9"}, ";r\r\n[X]\r\nA=9\r\n[Y]\r\n"},
    Rewritten {"AMarkStays",                  "\xEF\xBB\xBF" "A=1\n", {"A", "\xE2\x82\xAC"}, "\xEF\xBB\xBF" "A=\xE2\x82\xAC\n"},
    Rewritten {"Utf16Stays",                  "\xFF\xFE" "A\0=\0""1\0\n\0"s, {"A", "\xE2\x82\xAC"}, "\xFF\xFE" "A\0=\0\xAC\x20\n\0"s},
    Rewritten {"Windows1252Stays",            "N=\xE9\nA=1\n", {"A", "\xE2\x82\xAC"}, "N=\xE9\nA=\x80\n"},
    Rewritten {"AnEmptyValue",                "A=1\n", {"A", ""}, "A=\n"},
    Rewritten {"AValueWithEqualsSigns",       "A=1\n", {"A", "b=c=d"}, "A=b=c=d\n"},
    Rewritten {"AValueWithBlanks",            "A=1\n", {"A", " x "}, "A= x \n"},
    Rewritten {"AValueThatBeginsWithAMinus",  "A=1\n", {"A", "--", "-5"}, "A=-5\n"},
    Rewritten {"AValueInBrackets",            "A=1\n", {"A", "[1,2]"}, "A=[1,2]\n"},
    Rewritten {"AnIdentOfAnotherAlphabet",    "[\xCE\xB4]\nA=1\n", {"[\xCE\xB4]A", "9"}, "[\xCE\xB4]\nA=9\n"}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

TEST_F(CfgctlWrite, TheProjectFileFollowsTheSameRules)
{
    write("tool.ipr", ";remark\r\n[Wand]\r\nDikte=70\r\n[X]\r\n");
    run({"set", "tool.ini", "[Wand]Dikte", "90", "--level", "project"});
    run({"set", "tool.ini", "[Wand]Hoogte", "2600", "--level", "project"});
    EXPECT_EQ(read("tool.ipr"), ";remark\r\n[Wand]\r\nDikte=90\r\nHoogte=2600\r\n[X]\r\n");
    EXPECT_EQ(read("tool.ini"), kFile);
}

class CfgctlWriteRefused : public CfgctlWrite
{
protected:
    // What is told of a write that leaves all as it was. "$/" stands for the folder.
    void expectRefusal(const ProgramResult& result, std::string message) const
    {
        const std::size_t at = message.find("$/");
        if (at != std::string::npos) {
            message.replace(at, 2, pathOf(""));
        }
        EXPECT_EQ(result.exitStatus, 1);
        EXPECT_EQ(result.out, std::string(kNotStored) + '\n');
        EXPECT_TRUE(result.err.ends_with(message)) << result.err;
        EXPECT_EQ(read("tool.ini"), kFile);
        EXPECT_FALSE(folder.has(L"dummy.tmp"));
    }
};

TEST_F(CfgctlWriteRefused, AFileThatIsNotThere)
{
    for (const char* level : {"global", "project"}) {
        expectRefusal(run({"set", "weg.ini", "A", "1", "--json", "--level", level}),
                      "A\n" + std::string(kNotWritten));
        EXPECT_FALSE(folder.has(L"weg.ini"));
        EXPECT_FALSE(folder.has(L"weg.ipr"));
    }
}

TEST_F(CfgctlWriteRefused, AFolderForAFile)
{
    write("map/x", "");
    expectRefusal(run({"set", "map", "A", "1", "--json"}), kNotWritten);
    EXPECT_FALSE(folder.has(L"map.ini"));
}

TEST_F(CfgctlWriteRefused, AFileThatMayNotBeWritten)
{
    setMode("tool.ini", 0444);
    expectRefusal(runWithoutPrivilege({"set", "tool.ini", "Taal", "EN", "--json"}),
                  pathOf("tool.ini") + " : Could not open file for write \n" + pathOf("tool.ini")
                      + "\n" + kNotWritten);
}

// The message names the file that users know.
TEST_F(CfgctlWriteRefused, AProjectFileThatMayNotBeWritten)
{
    write("tool.ipr", "A=1\n");
    setMode("tool.ipr", 0444);
    expectRefusal(
        runWithoutPrivilege({"set", "tool.ini", "Taal", "EN", "--json", "--level", "project"}),
        pathOf("tool.ini") + " : Could not open file for write \n" + pathOf("tool.ini") + "\n"
            + kNotWritten);
    EXPECT_EQ(read("tool.ipr"), "A=1\n");
}

TEST_F(CfgctlWriteRefused, AFolderThatTakesNoFile)
{
    setMode(".", 0555);
    const ProgramResult result = runWithoutPrivilege({"set", "tool.ini", "Taal", "EN", "--json"});
    setMode(".", 0755);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.err, HasSubstr(kNotWritten));
    EXPECT_EQ(read("tool.ini"), kFile);
}

TEST_F(CfgctlWriteRefused, AFullDisk)
{
    const std::string former = kFile + std::string(10000, ';') + '\n';
    write("tool.ini", former);
    ProgramResult result;
    {
        const FullDisk disk(former.size() / 2);
        result = run({"set", "tool.ini", "Taal", "EN", "--json"});
    }
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.err, HasSubstr(kNotWritten));
    EXPECT_EQ(read("tool.ini"), former);
    EXPECT_FALSE(folder.has(L"dummy.tmp"));
}

TEST_F(CfgctlWriteRefused, ACharacterThatTheFileCannotHold)
{
    write("oud.ini", "N=\xE9\nA=1\n");
    const ProgramResult result = run({"set", "oud.ini", "A", "\xCE\xB4"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.err, HasSubstr(pathOf("oud.ini")));
    EXPECT_THAT(result.err, HasSubstr(kNotWritten));
    EXPECT_EQ(read("oud.ini"), "N=\xE9\nA=1\n");
}

TEST_F(CfgctlWriteRefused, TellsItInTheLanguageOfTheUser)
{
    setMode("tool.ini", 0444);
    const ProgramResult result
        = runWithoutPrivilege({"set", "tool.ini", "Taal", "EN", "--language", "19"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.err,
                HasSubstr(pathOf("tool.ini") + " : Kan bestand niet openen om te schrijven \n"));
}

// --- scrambled files -----------------------------------------------------------------------------

class CfgctlWriteScrambled : public CfgctlTest
{
protected:
    CfgctlWriteScrambled()
    {
        write("tool.ini",
              ";remark\r\nTaal=NL\r\n[Tekst]\r\nHoogte=3.5\r\n[Wand]\r\nHoogte=2600\r\nB="
              "\xE9\r\n");
        run({"scramble", "tool.ini", "7"});
    }

    // The scrambled file in clear.
    std::string clear() const
    {
        std::string text = read("tool7.ini");
        for (std::size_t i = 0; i < text.size(); ++i) {
            const auto position = static_cast<unsigned>(i) + 1;
            constexpr unsigned kMoves[] = {48, 15, 71, 128};
            const unsigned rest = position % 4;
            const unsigned key = rest == 1 || rest == 2 ? 7U : 0U - 7U;
            text[i] = static_cast<char>(static_cast<unsigned char>(text[i]) - position
                                        - kMoves[rest] - key);
        }
        return text;
    }
};

// The ident is written as it was named.
TEST_F(CfgctlWriteScrambled, ChangesItsLine)
{
    EXPECT_EQ(clear(), read("tool.ini"));
    const ProgramResult result
        = run({"set", "tool.ini", "[wand]HOOGTE", "2,7 m\xC2\xB2 \xE2\x82\xAC", "--scramble", "7"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out + result.err, "");
    EXPECT_EQ(clear(),
              ";remark\r\nTaal=NL\r\n[Tekst]\r\nHoogte=3.5\r\n[Wand]\r\n"
              "HOOGTE=2,7 m\xB2 \x80\r\nB=\xE9\r\n");
    EXPECT_EQ(get({"tool.ini", "[Wand]Hoogte", "--scramble=7"}), "2,7 m\xC2\xB2 \xE2\x82\xAC");
    EXPECT_EQ(get({"tool.ini", "[Wand]Hoogte"}), "2600");
    EXPECT_FALSE(folder.has(L"tool7.ini2"));
}

TEST_F(CfgctlWriteScrambled, GainsNothing)
{
    const std::string former = read("tool7.ini");
    for (const char* ident : {"Maat", "[Tekst]Kleur", "[Deur]Kleur"}) {
        EXPECT_EQ(json({"set", "tool.ini", ident, "1", "--scramble", "7"}), kStored);
        EXPECT_EQ(read("tool7.ini"), former) << ident;
    }
}

TEST_F(CfgctlWriteScrambled, HasNoProjectFile)
{
    const std::string former = read("tool7.ini");
    EXPECT_EQ(json({"set", "tool.ini", "Taal", "EN", "--scramble=7", "--level=project"}), kStored);
    EXPECT_EQ(read("tool7.ini"), former);
    EXPECT_FALSE(folder.has(L"tool.ipr"));
    EXPECT_FALSE(folder.has(L"tool7.ipr"));
}

TEST_F(CfgctlWriteScrambled, TellsACharacterThatItCannotHold)
{
    const std::string former = read("tool7.ini");
    const ProgramResult result
        = run({"set", "tool.ini", "Taal", "\xCE\xB4", "--scramble=7", "--json"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, std::string(kNotStored) + '\n');
    EXPECT_EQ(result.err,
              "Taal not written: its value has a character that Windows-1252 does not have\n");
    EXPECT_EQ(read("tool7.ini"), former);
}

TEST_F(CfgctlWriteScrambled, TellsAFileThatMayNotBeWritten)
{
    const std::string former = read("tool7.ini");
    setMode("tool7.ini", 0444);
    const ProgramResult result
        = runWithoutPrivilege({"set", "tool.ini", "Taal", "EN", "--scramble=7", "--json"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, std::string(kNotStored) + '\n');
    EXPECT_THAT(result.err, HasSubstr("Cannot open " + pathOf("tool7.ini")));
    EXPECT_EQ(read("tool7.ini"), former);
}

TEST_F(CfgctlWriteScrambled, TellsAFileThatIsNotThere)
{
    const ProgramResult result = run({"set", "weg.ini", "A", "1", "--scramble=7", "--json"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, std::string(kNotStored) + '\n');
    EXPECT_NE(result.err, "");
}

} // namespace

} // namespace corma::testing
