// cfgctl: the commands besides get, and the options that all share.

#include "CfgctlTest.h"

#include <gmock/gmock.h>

using ::testing::HasSubstr;

namespace corma::testing {

namespace {

class CfgctlFind : public CfgctlTest
{
protected:
    CfgctlFind()
    {
        write("tool.ini", "Kop=0\nKopie=00\n[A]\nKleur=rood\nLeeg=\n[B]\nKleur=blauw\n");
        write("boven.ini", "#INCLUDE=tool.ini\n");
    }
};

TEST_F(CfgctlFind, PrintsALineForEachPair)
{
    const ProgramResult result = run({"find", "tool.ini", "[A]Kleur,Leeg"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, "[A]Kleur\trood\n[A]Leeg\t\n");
    EXPECT_EQ(result.err, "");
}

TEST_F(CfgctlFind, ListsChaptersBesideTheirEntries)
{
    EXPECT_EQ(json({"find", "tool.ini", "[*]*"}),
              R"({"status":5100,"pairs":[["[A]",""],["[A]Kleur","rood"],["[A]Leeg",""],)"
              R"(["[B]",""],["[B]Kleur","blauw"]]})");
}

TEST_F(CfgctlFind, LeavesLeadingCharactersOut)
{
    EXPECT_EQ(json({"find", "tool.ini", "Kop*", "--skip", "3"}),
              R"({"status":5100,"pairs":[["ie","00"]]})");
}

TEST_F(CfgctlFind, ShowsPairsOfIncludedFilesThatAreNoSuccess)
{
    const ProgramResult result = run({"find", "boven.ini", "Kop*", "--report", "--json"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "{\"status\":2,\"pairs\":[[\"Kop\",\"0\"],[\"Kopie\",\"00\"]]}\n");
    EXPECT_EQ(result.err, "");
}

TEST_F(CfgctlFind, ReportsAMiss)
{
    const ProgramResult silent = run({"find", "tool.ini", "[C]*"});
    EXPECT_EQ(silent.exitStatus, 1);
    EXPECT_EQ(silent.out + silent.err, "");

    const ProgramResult told = run({"find", "tool.ini", "[C]*", "--report", "--json"});
    EXPECT_EQ(told.exitStatus, 1);
    EXPECT_EQ(told.out, "{\"status\":2,\"pairs\":[]}\n");
    EXPECT_EQ(told.err, "[C]* not found in configurationfile\n");
}

TEST_F(CfgctlFind, FailsForAFileThatIsNotThere)
{
    const ProgramResult result = run({"find", "weg.ini", "*", "--json"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "{\"status\":3,\"pairs\":[]}\n");
    EXPECT_THAT(result.err, HasSubstr("\"weg.ini\" not found"));
}

class CfgctlLevels : public CfgctlTest
{
protected:
    CfgctlLevels()
    {
        write("tool.ini", "#INCLUDE=norm.ini\n[A]\nEen=1\nTwee=2\nDrie=\n");
        write("norm.ini", "[A]\nEen=11\n");
        copyDrawing("r2000", "werk/plan.dxf");
        write("werk/tool.ipr", "[A]\nEen=111\nTwee=22\n");
    }

    std::string level(const char* source, const char* file, const char* rest) const
    {
        return std::string(R"({"source":")") + source + R"(","file":")" + pathOf(file) + R"(",)"
            + rest + "}";
    }
};

TEST_F(CfgctlLevels, TellsEveryLevelWithAllKeys)
{
    EXPECT_EQ(
        json({"levels", "tool.ini", "[A]Een", "--drawing", "werk/plan.dxf"}),
        "[" + level("included", "norm.ini", R"("found":true,"value":"11","line":2,"inForce":true)")
            + ","
            + level("drawing", "werk/plan.dxf",
                    R"("found":false,"value":null,"line":null,"inForce":false)")
            + ","
            + level("project", "werk/tool.ipr",
                    R"("found":true,"value":"111","line":2,"inForce":false)")
            + ","
            + level("file", "tool.ini", R"("found":true,"value":"1","line":3,"inForce":false)")
            + "]");
}

TEST_F(CfgctlLevels, TellsAnAbsentValueFromAnEmptyOne)
{
    EXPECT_EQ(json({"levels", "tool.ini", "[A]Drie"}),
              "["
                  + level("included", "norm.ini",
                          R"("found":false,"value":null,"line":null,"inForce":false)")
                  + ","
                  + level("file", "tool.ini", R"("found":true,"value":"","line":5,"inForce":true)")
                  + "]");
}

// The drawing holds Taal and [Tekst]Hoogte for this file.
TEST_F(CfgctlLevels, PutTheDrawingBeforeTheProjectAndTheFile)
{
    write("tool.ini", "Taal=1\n");
    write("werk/tool.ipr", "Taal=2\n");
    EXPECT_EQ(
        json({"levels", "tool.ini", "Taal", "--drawing", "werk/plan.dxf", "--cache"}),
        "["
            + level("cache", "tool.ini",
                    R"("found":false,"value":null,"line":null,"inForce":false)")
            + ","
            + level("drawing", "werk/plan.dxf",
                    R"("found":true,"value":"NL","line":null,"inForce":true)")
            + ","
            + level("project", "werk/tool.ipr",
                    R"("found":true,"value":"2","line":1,"inForce":false)")
            + ","
            + level("file", "tool.ini", R"("found":true,"value":"1","line":1,"inForce":false)")
            + "]");
}

TEST_F(CfgctlLevels, AgreesWithGet)
{
    for (const char* ident : {"[A]Een", "[A]Twee", "[A]Drie", "[Tekst]Hoogte"}) {
        const Words where = {"tool.ini", ident, "--drawing=werk/plan.dxf", "--cache"};
        Words words = where;
        words.insert(words.begin(), "levels");
        std::string inForce = "(none)";
        for (const Json& each : Json::parse(json(words))) {
            if (each["inForce"].get<bool>()) {
                inForce = each["value"].get<std::string>();
            }
        }
        EXPECT_EQ(inForce, get(where)) << ident;
    }
}

TEST_F(CfgctlLevels, StandInATable)
{
    const ProgramResult result
        = run({"levels", "tool.ini", "[A]Twee", "--drawing", "werk/plan.dxf"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out,
              "  included  (not there)  " + pathOf("norm.ini")
                  + "\n"
                    "  drawing   (not there)  "
                  + pathOf("werk/plan.dxf")
                  + "\n"
                    "* project   22           "
                  + pathOf("werk/tool.ipr")
                  + ":3\n"
                    "  file      2            "
                  + pathOf("tool.ini") + ":4\n");
}

TEST_F(CfgctlLevels, FailWhenTheIdentIsNowhere)
{
    const ProgramResult result = run({"levels", "tool.ini", "[A]Vier"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.out, HasSubstr("  file      (not there)  " + pathOf("tool.ini") + "\n"));
    EXPECT_EQ(run({"levels", "weg.ini", "X", "--json"}).exitStatus, 1);
}

class CfgctlIncludes : public CfgctlTest
{
protected:
    CfgctlIncludes()
    {
        write("tool.ini", "#INCLUDE=norm/a.ini;weg.ini;norm/a.ini\n");
        write("norm/a.ini", "#INCLUDE=b.ini\n");
        write("norm/b.ini", "X=1\n");
    }
};

TEST_F(CfgctlIncludes, GivesTheTree)
{
    const std::string leaf
        = R"({"file":")" + pathOf("norm/b.ini") + R"(","found":true,"count":0,"included":[]})";
    const std::string child = R"({"file":")" + pathOf("norm/a.ini")
        + R"(","found":true,"count":1,"included":[)" + leaf + "]}";
    EXPECT_EQ(json({"includes", "tool.ini"}),
              R"({"file":")" + pathOf("tool.ini") + R"(","found":true,"count":3,"included":[)"
                  + child + R"(,{"file":"","found":false,"count":0,"included":[]},null]})");
}

TEST_F(CfgctlIncludes, PrintsTheTreeIndented)
{
    const ProgramResult result = run({"includes", "tool.ini"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out,
              pathOf("tool.ini")
                  + "\n"
                    "  "
                  + pathOf("norm/a.ini")
                  + "\n"
                    "    "
                  + pathOf("norm/b.ini")
                  + "\n"
                    "  (not found)\n"
                    "  (skipped: in the tree already)\n");
    EXPECT_THAT(result.err, HasSubstr("weg.ini\" not found"));
}

TEST_F(CfgctlIncludes, ShowsAFileThatIsNotThere)
{
    const ProgramResult result = run({"includes", "weg.ini", "--json"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, "{\"file\":\"\",\"found\":false,\"count\":0,\"included\":[]}\n");
    EXPECT_THAT(result.err, HasSubstr("\"weg.ini\" not found"));
    EXPECT_EQ(run({"includes", "weg.ini"}).out, "(not found)\n");
}

TEST_F(CfgctlIncludes, ShowsAFileThatCannotBeOpened)
{
    write("map.ini/x", "");
    EXPECT_EQ(json({"includes", "map.ini"}),
              R"({"file":")" + pathOf("map.ini") + R"(","found":false,"count":0,"included":[]})");
    EXPECT_EQ(run({"includes", "map.ini"}).out, pathOf("map.ini") + " (cannot be opened)\n");
}

class CfgctlWhere : public CfgctlTest
{
protected:
    CfgctlWhere() { write("map/blok.dxf", "x"); }
};

TEST_F(CfgctlWhere, FindsInTheCurrentFolder)
{
    write("hier.txt", "x");
    const ProgramResult result = run({"where", "hier.txt"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, pathOf("hier.txt") + "\n");
    EXPECT_EQ(json({"where", "hier.txt"}),
              R"({"status":5100,"path":")" + pathOf("hier.txt") + R"("})");
}

TEST_F(CfgctlWhere, FindsInTheSupportFolders)
{
    environment["ACAD"] = pathOf("nergens") + ";" + pathOf("map");
    EXPECT_EQ(run({"where", "blok.dxf"}).out, pathOf("map/blok.dxf") + "\n");
}

TEST_F(CfgctlWhere, FindsInTheModuleFolderFirst)
{
    write("module/blok.dxf", "y");
    write("module/blocks/ander.dxf", "y");
    environment["ACAD"] = pathOf("map");
    EXPECT_EQ(run({"where", "blok.dxf", "--module-dir", pathOf("module")}).out,
              pathOf("module/blok.dxf") + "\n");
    EXPECT_EQ(run({"where", "ander.dxf", "--module-dir", "module"}).out,
              pathOf("module/blocks/ander.dxf") + "\n");
}

TEST_F(CfgctlWhere, TellsThatThereIsNone)
{
    const ProgramResult result = run({"where", "blok.dxf"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(json({"where", "blok.dxf"}), R"({"status":-5001,"path":null})");
    EXPECT_EQ(json({"where", ""}), R"({"status":-5001,"path":null})");
}

// In the plain form such a name can be passed on; JSON cannot hold it.
TEST_F(CfgctlWhere, BearsANameThatIsNoText)
{
    write("oud\xE9.txt", "x");
    EXPECT_EQ(run({"where", "oud\xE9.txt"}).out, pathOf("oud\xE9.txt") + "\n");
    EXPECT_THAT(run({"where", "oud\xE9.txt", "--json"}).out, HasSubstr("oud\xEF\xBF\xBD.txt\"}\n"));
}

class CfgctlScramble : public CfgctlTest
{
protected:
    CfgctlScramble() { write("tool.ini", "[A]\r\nGeheim=42\r\n"); }
};

TEST_F(CfgctlScramble, WritesACopyBesideTheFile)
{
    const ProgramResult result = run({"scramble", "tool.ini", "7"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "File scrambled into " + pathOf("tool7.ini") + "\n");
    EXPECT_EQ(folder.read(L"tool7.ini").find("Geheim"), std::string::npos);
    EXPECT_EQ(get({"tool.ini", "[A]Geheim", "--scramble", "7"}), "42");
}

TEST_F(CfgctlScramble, WritesACopyToATarget)
{
    EXPECT_EQ(json({"scramble", "tool.ini", "-3", "kopie.dat"}), R"({"status":5100})");
    EXPECT_EQ(get({"kopie.dat", "[A]Geheim", "--scramble", "-3"}), "42");
    EXPECT_EQ(get({"kopie.dat", "[A]Geheim", "--scramble=-3"}), "42");
    EXPECT_EQ(get({"kopie.dat", "[A]Geheim", "--scramble=4"}), "(none)");
}

TEST_F(CfgctlScramble, FailsWhenTheCopyCannotBeWritten)
{
    const ProgramResult result = run({"scramble", "tool.ini", "7", "weg/kopie.ini", "--json"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "{\"status\":-5001}\n");
    EXPECT_THAT(result.err, HasSubstr("could not be opened\n"));
}

TEST_F(CfgctlScramble, FailsForAFileThatIsNotThere)
{
    const ProgramResult result = run({"scramble", "weg.ini", "7", "--json"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "{\"status\":-5002}\n");
}

TEST_F(CfgctlScramble, MakesTheScrambledExample)
{
    workIn = CORMA_EXAMPLES;
    EXPECT_EQ(run({"scramble", "geheim.ini", "7", pathOf("kopie.ini")}).exitStatus, 0);
    const ProgramResult example
        = run({"get", "geheim.ini", "[Licentie]ProefDagen", "--scramble=7"});
    const ProgramResult copy
        = run({"get", pathOf("kopie.ini"), "[Licentie]ProefDagen", "--scramble=7"});
    EXPECT_EQ(example.out, "30\n");
    EXPECT_EQ(copy.out, example.out);
}

class CfgctlOptions : public CfgctlTest
{
protected:
    CfgctlOptions()
    {
        write("module/tool.ini", "X=module\n");
        write("tool.ini", "X=hier\n");
    }
};

TEST_F(CfgctlOptions, MayStandAnywhereBehindTheCommand)
{
    for (const Words& words :
         {Words {"get", "--json", "tool.ini", "X"}, Words {"get", "tool.ini", "--json", "X"},
          Words {"get", "tool.ini", "X", "--json"},
          Words {"get", "--cache", "tool.ini", "--scramble", "0", "X", "--json"}}) {
        EXPECT_EQ(run(words).out, "{\"status\":5100,\"value\":\"hier\"}\n");
    }
}

TEST_F(CfgctlOptions, AreTakenByEveryCommand)
{
    const Words common = {"--json", "--scramble=0", "--cache", "--module-dir=."};
    for (Words words :
         {Words {"get", "tool.ini", "X"}, Words {"find", "tool.ini", "X"},
          Words {"levels", "tool.ini", "X"}, Words {"includes", "tool.ini"},
          Words {"where", "tool.ini"}, Words {"model", "tool.ini"},
          Words {"rows", "tool.ini", "Algemeen"}, Words {"scramble", "tool.ini", "1"}}) {
        words.insert(words.end(), common.begin(), common.end());
        const ProgramResult result = run(words);
        EXPECT_EQ(result.exitStatus, 0) << words.front() << ": " << result.err;
        EXPECT_TRUE(Json::accept(result.out)) << words.front() << ": " << result.out;
    }
}

TEST_F(CfgctlOptions, ModuleFolderGoesBeforeTheCurrentOne)
{
    EXPECT_EQ(get({"tool.ini", "X"}), "hier");
    EXPECT_EQ(get({"tool.ini", "X", "--module-dir", "module"}), "module");
    EXPECT_EQ(get({"tool.ini", "X", "--module-dir", pathOf("module/")}), "module");
}

TEST_F(CfgctlOptions, DrawingIsTakenByEveryCommand)
{
    copyDrawing("r2004", "werk/plan.dxf");
    for (const Words& words : {Words {"get", "tool.ini", "X"}, Words {"find", "tool.ini", "X"},
                               Words {"levels", "tool.ini", "X"}, Words {"includes", "tool.ini"},
                               Words {"where", "tool.ini"}, Words {"scramble", "tool.ini", "1"},
                               Words {"record", "tool.ini", "X", "--as=vis"},
                               Words {"model", "tool.ini"}, Words {"rows", "tool.ini", "Algemeen"},
                               Words {"set", "tool.ini", "X", "1"}, Words {"drawing"}}) {
        Words all = words;
        all.emplace_back("--drawing=werk/plan.dxf");
        EXPECT_EQ(run(all).exitStatus, 0) << words.front();
        all.emplace_back("--save-as=kopie.dxf");
        EXPECT_EQ(run(all).exitStatus, 0) << words.front();
    }
}

TEST_F(CfgctlOptions, FilesBesideTheDrawingAreFound)
{
    copyDrawing("r2004", "werk/plan.dxf");
    write("werk/naast.ini", "");
    EXPECT_EQ(run({"where", "naast.ini"}).exitStatus, 1);
    EXPECT_EQ(run({"where", "naast.ini", "--drawing", "werk/plan.dxf"}).out,
              pathOf("werk/naast.ini") + "\n");
}

TEST_F(CfgctlOptions, MessagesStandOneBelowTheOther)
{
    write("tool.ini", "#INCLUDE=a.ini;b.ini\n");
    const ProgramResult result = run({"get", "tool.ini", "Y", "--report"});
    EXPECT_THAT(result.err,
                ::testing::MatchesRegex("Error in file xx_Inifile.cpp on line [0-9]+\n"
                                        "[(]Inifile \"[^\"]*a.ini\" not found , ec = 0[)]\n"
                                        "Error in file xx_Inifile.cpp on line [0-9]+\n"
                                        "[(]Inifile \"[^\"]*b.ini\" not found , ec = 0[)]\n"
                                        "Y not found in configurationfile\n"));
    EXPECT_EQ(result.out, "");
}

} // namespace

} // namespace corma::testing
