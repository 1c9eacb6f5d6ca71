// cfgctl update and replace: a new version of an add-on comes into the files of a user.

#include "CfgctlTest.h"

#include <gmock/gmock.h>

using ::testing::HasSubstr;

namespace corma::testing {

namespace {

class CfgctlMerge : public CfgctlTest
{
protected:
    CfgctlMerge()
    {
        write("tool.ini", kFile);
        write("nieuw.inp",
              "Taal=EN\n[Tekst]\n;not carried over\nHoogte=9\nKleur=7\n[Deur]\n"
              "Hoogte=2315\n");
    }

    // "$" stands for the path of the folder.
    std::string inFolder(std::string text) const
    {
        for (std::size_t at = 0; (at = text.find('$', at)) != std::string::npos;) {
            text.replace(at, 1, pathOf(""));
        }
        return text;
    }

    static constexpr const char* kFile = ";remark\nTaal=NL\n[Tekst]\nHoogte=3.5\nBreedte=1\n";
};

class CfgctlUpdate : public CfgctlMerge
{
};

TEST_F(CfgctlUpdate, AddsWhatIsNewAndKeepsTheRest)
{
    const ProgramResult result = run({"update", "tool.ini", "nieuw.inp"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, "3 added\n");
    EXPECT_EQ(result.err, inFolder("Old version of file $tool.ini renamed to $tool.ino\n"));
    EXPECT_EQ(read("tool.ini"),
              ";remark\nTaal=NL\n\n[Tekst]\nHoogte=3.5\nKleur=7\nBreedte=1\n\n"
              "[Deur]\nHoogte=2315\n");
    EXPECT_EQ(read("tool.ino"), kFile);
    EXPECT_FALSE(folder.has(L"dummy.tmp"));
}

TEST_F(CfgctlUpdate, TheSecondTimeNothingIsNew)
{
    EXPECT_EQ(json({"update", "tool.ini", "nieuw.inp"}), R"({"status":5100,"added":3})");
    const std::string merged = read("tool.ini");
    const auto time = timeOf("tool.ini");
    folder.remove(L"tool.ino");
    letFilesSettle();
    EXPECT_EQ(json({"update", "tool.ini", "nieuw.inp"}), R"({"status":5100,"added":0})");
    const ProgramResult result = run({"update", "tool.ini", "nieuw.inp"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, "0 added\n");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(read("tool.ini"), merged);
    EXPECT_EQ(timeOf("tool.ini"), time);
    EXPECT_FALSE(folder.has(L"tool.ino"));
}

TEST_F(CfgctlUpdate, IncludedFilesTakeTheirOwnDefaults)
{
    write("tool.ini", "#INCLUDE=norm/een.ini;norm/twee.ini\nA=1\n");
    write("norm/een.ini", "X=1\n");
    write("norm/een.inp", "X=2\nY=2\nZ=2\n");
    write("norm/twee.ini", "X=1\n");
    write("nieuw.inp", "A=2\nB=2\n");
    const ProgramResult result = run({"update", "tool.ini", "nieuw.inp"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, "2 added\n"); // of the last file with defaults
    EXPECT_EQ(result.err,
              inFolder("Old version of file $tool.ini renamed to $tool.ino\n"
                       "Old version of file $norm/een.ini renamed to $norm/een.ino\n"));
    EXPECT_EQ(read("tool.ini"), "#INCLUDE=norm/een.ini;norm/twee.ini\nA=1\nB=2\n");
    EXPECT_EQ(read("norm/een.ini"), "X=1\nY=2\nZ=2\n");
    EXPECT_EQ(read("norm/twee.ini"), "X=1\n");
    EXPECT_FALSE(folder.has(L"norm/twee.ino"));
}

TEST_F(CfgctlUpdate, ABackupOfTheSameNameGoes)
{
    write("tool.ino", "an older one\n");
    run({"update", "tool.ini", "nieuw.inp"});
    EXPECT_EQ(read("tool.ino"), kFile);
    write("tool.o", "A=1\n");
    run({"update", "tool.o", "nieuw.inp"});
    EXPECT_EQ(read("tool.o old"), "A=1\n");
}

TEST_F(CfgctlUpdate, KeepsLineEndsAndEncoding)
{
    write("tool.ini", ";\xE9\r\nA=1\r\n[X]\r\nB=2\r\n");
    write("nieuw.inp", "[X]\nB=3\nC=\xE2\x82\xAC\n");
    EXPECT_EQ(json({"update", "tool.ini", "nieuw.inp"}), R"({"status":5100,"added":1})");
    EXPECT_EQ(read("tool.ini"), ";\xE9\r\nA=1\r\n\r\n[X]\r\nB=2\r\nC=\x80\r\n");
}

struct RefusedUpdate
{
    const char* sentence;
    Words arguments;
    const char* message; // a part of what is told
};

class CfgctlUpdateRefused : public CfgctlMerge, public ::testing::WithParamInterface<RefusedUpdate>
{
};

TEST_P(CfgctlUpdateRefused, LeavesTheFilesAlone)
{
    write("map/x", "");
    run({"scramble", "tool.ini", "7"});
    const std::string scrambled = read("tool7.ini");
    Words words = GetParam().arguments;
    words.emplace_back("--json");
    const ProgramResult result = run(words);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "{\"status\":-5002,\"added\":0}\n");
    EXPECT_THAT(result.err, HasSubstr(inFolder(GetParam().message)));
    EXPECT_EQ(read("tool.ini"), kFile);
    EXPECT_EQ(read("tool7.ini"), scrambled);
    EXPECT_FALSE(folder.has(L"tool.ino"));
    EXPECT_FALSE(folder.has(L"weg.ini"));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Because, CfgctlUpdateRefused, ::testing::Values(
    RefusedUpdate {"TheFileIsNotThere",       {"update", "weg.ini", "nieuw.inp"}, ""},
    RefusedUpdate {"TheDefaultsAreNotThere",  {"update", "tool.ini", "weg.inp"}, ""},
    RefusedUpdate {"TheDefaultsAreAFolder",   {"update", "tool.ini", "map"}, ""},
    RefusedUpdate {"TheFileIsScrambled",      {"update", "tool.ini", "nieuw.inp", "--scramble", "7"}, "Not supported for use with $tool7.ini\n"}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

TEST_F(CfgctlUpdate, CountsNothingWhenItFails)
{
    const ProgramResult result = run({"update", "tool.ini", "weg.inp"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err, HasSubstr("\"weg.inp\" not found"));
}

TEST_F(CfgctlUpdate, AFolderThatTakesNoFileEndsIt)
{
    setMode(".", 0555);
    const ProgramResult result = runWithoutPrivilege({"update", "tool.ini", "nieuw.inp", "--json"});
    setMode(".", 0755);
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "{\"status\":-5002,\"added\":0}\n");
    EXPECT_THAT(result.err,
                HasSubstr(inFolder("Could not rename $tool.ini into $tool.ino (Aborting)\n")));
    EXPECT_EQ(read("tool.ini"), kFile);
    EXPECT_FALSE(folder.has(L"tool.ino"));
}

TEST_F(CfgctlUpdate, AFullDiskEndsIt)
{
    const std::string former = kFile + std::string(2900, ';') + '\n';
    write("tool.ini", former);
    ProgramResult result;
    {
        const FullDisk disk(former.size() / 2);
        result = run({"update", "tool.ini", "nieuw.inp", "--json"});
    }
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "{\"status\":-5002,\"added\":0}\n");
    EXPECT_THAT(result.err, HasSubstr(pathOf("tool.ini")));
    EXPECT_EQ(read("tool.ini"), former);
    EXPECT_FALSE(folder.has(L"tool.ino"));
    EXPECT_FALSE(folder.has(L"dummy.tmp"));
}

class CfgctlReplace : public CfgctlMerge
{
protected:
    CfgctlReplace()
    {
        write("nieuw.irp", "Taal=EN\nTekst=x\n[Tekst]\nHoogte=9\nKleur=7\n[Deur]\nHoogte=1\n");
    }
};

TEST_F(CfgctlReplace, TakesNewValuesAndAddsNothing)
{
    const ProgramResult result = run({"replace", "tool.ini", "nieuw.irp"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out + result.err, "");
    EXPECT_EQ(read("tool.ini"), ";remark\nTaal=EN\n[Tekst]\nHoogte=9\nBreedte=1\n");
    EXPECT_FALSE(folder.has(L"tool.ino"));
    EXPECT_FALSE(folder.has(L"dummy.tmp"));
    EXPECT_EQ(json({"replace", "tool.ini", "nieuw.irp"}), R"({"status":5100})");
    EXPECT_EQ(read("tool.ini"), ";remark\nTaal=EN\n[Tekst]\nHoogte=9\nBreedte=1\n");
}

TEST_F(CfgctlReplace, IncludedFilesTakeTheirOwnNewValues)
{
    write("tool.ini", "#INCLUDE=norm/een.ini;norm/twee.ini\nX=1\n");
    write("norm/een.ini", "X=1\nY=1\n");
    write("norm/een.irp", "X=2\nZ=2\n");
    write("norm/twee.ini", "X=1\n");
    write("nieuw.irp", "Y=3\n");
    EXPECT_EQ(json({"replace", "tool.ini", "nieuw.irp"}), R"({"status":5100})");
    EXPECT_EQ(read("tool.ini"), "#INCLUDE=norm/een.ini;norm/twee.ini\nX=1\n");
    EXPECT_EQ(read("norm/een.ini"), "X=2\nY=1\n");
    EXPECT_EQ(read("norm/twee.ini"), "X=1\n");
}

TEST_F(CfgctlReplace, KeepsLineEndsAndEncoding)
{
    write("tool.ini", ";\xE9\r\nA=1\r\n[X]\r\nA=2\r\n");
    write("nieuw.irp", "[X]\nA=\xE2\x82\xAC\n");
    EXPECT_EQ(json({"replace", "tool.ini", "nieuw.irp"}), R"({"status":5100})");
    EXPECT_EQ(read("tool.ini"), ";\xE9\r\nA=1\r\n[X]\r\nA=\x80\r\n");
}

TEST_F(CfgctlReplace, TellsNewValuesThatAreNotThere)
{
    const ProgramResult result = run({"replace", "tool.ini", "weg.irp", "--json"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "{\"status\":-5001}\n");
    EXPECT_EQ(result.err, "cfgctl: the file of new values \"weg.irp\" was not found\n");
    EXPECT_EQ(read("tool.ini"), kFile);
}

TEST_F(CfgctlReplace, TellsAFileThatIsNotThere)
{
    const ProgramResult result = run({"replace", "weg.ini", "nieuw.irp", "--json"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "{\"status\":-5001}\n");
    EXPECT_NE(result.err, "");
    EXPECT_FALSE(folder.has(L"weg.ini"));
}

TEST_F(CfgctlReplace, TellsAFileThatMayNotBeWritten)
{
    setMode("tool.ini", 0444);
    const ProgramResult result
        = runWithoutPrivilege({"replace", "tool.ini", "nieuw.irp", "--json"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "{\"status\":-5001}\n");
    EXPECT_THAT(result.err,
                HasSubstr(inFolder("Unable to read the file '$tool.ini' (osError=13, "
                                   "cause=5)")));
    EXPECT_EQ(read("tool.ini"), kFile);
}

TEST_F(CfgctlMerge, WritesNoDrawing)
{
    copyDrawing("r2000", "plan.dxf");
    write("nieuw.irp", "Taal=FR\n");
    const std::string drawing = read("plan.dxf");
    const auto time = timeOf("plan.dxf");
    letFilesSettle();
    run({"update", "tool.ini", "nieuw.inp", "--drawing=plan.dxf", "--save-as=kopie.dxf"});
    run({"replace", "tool.ini", "nieuw.irp", "--drawing=plan.dxf"});
    EXPECT_EQ(get({"tool.ini", "Taal"}), "FR");
    EXPECT_EQ(get({"tool.ini", "[Deur]Hoogte"}), "2315");
    EXPECT_EQ(read("plan.dxf"), drawing);
    EXPECT_EQ(timeOf("plan.dxf"), time);
    EXPECT_FALSE(folder.has(L"kopie.dxf"));
}

} // namespace

} // namespace corma::testing
