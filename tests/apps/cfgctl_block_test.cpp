// cfgctl block: blocks that a drawing has, or that are loaded into it.

#include "CfgctlTest.h"
#include "DrawingChanges.h"

#include <gmock/gmock.h>

using ::testing::HasSubstr;

namespace corma::testing {

namespace {

// A drawing of R12 with one line.
constexpr const char* kLine = "0\nSECTION\n2\nENTITIES\n0\nLINE\n8\n0\n10\n0.0\n20\n0.0\n30\n0.0\n"
                              "11\n3.0\n21\n0.0\n31\n0.0\n0\nENDSEC\n0\nEOF\n";

class CfgctlBlock : public CfgctlTest
{
protected:
    CfgctlBlock() { copyDrawing("r2018", "plan.dxf"); }

    // A run of the command on plan.dxf, which it leaves byte for byte and does not write.
    ProgramResult look(Words words)
    {
        const std::string bytes = read("plan.dxf");
        const auto time = timeOf("plan.dxf");
        words.insert(words.begin(), "block");
        words.emplace_back("--drawing=plan.dxf");
        ProgramResult result = run(words);
        EXPECT_EQ(read("plan.dxf"), bytes);
        EXPECT_EQ(timeOf("plan.dxf"), time);
        return result;
    }

    // The names of all blocks of a drawing.
    std::string blocksOf(const std::string& drawing) const
    {
        return Json::parse(json({"drawing", "--drawing", drawing}))["blocks"].dump();
    }

    std::string definitionsOf(const std::string& block, const std::string& drawing) const
    {
        return Json::parse(json({"attdefs", block, "--drawing", drawing}))["attributes"].dump();
    }
};

// --- a block that is there -----------------------------------------------------------------------

TEST_F(CfgctlBlock, GivesTheHandleOfABlockThatIsThereAndWritesNothing)
{
    const ProgramResult plain = look({"deur"});
    EXPECT_EQ(plain.exitStatus, 0);
    EXPECT_EQ(plain.out, "32\n");
    EXPECT_EQ(plain.err, "");
    const ProgramResult document = look({"deur", "--json"});
    EXPECT_EQ(document.exitStatus, 0);
    EXPECT_EQ(document.out,
              "{\"status\":5100,\"handle\":\"32\",\"name\":\"DEUR\",\"text\":\"deur\"}\n");
    EXPECT_EQ(document.err, "");
}

struct TextRow
{
    const char* sentence;
    const char* text;
    const char* document;
};

class CfgctlBlockText : public CfgctlBlock, public ::testing::WithParamInterface<TextRow>
{
};

TEST_P(CfgctlBlockText, IsTakenApart)
{
    const ProgramResult result = look({GetParam().text, "--json"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, std::string(GetParam().document) + "\n");
    EXPECT_EQ(result.err, "");
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Of, CfgctlBlockText, ::testing::Values(
    TextRow {"AName",              "Deur.dwt",           R"({"status":5100,"handle":"32","name":"DEUR","text":"Deur.dwt"})"},
    TextRow {"APath",              "C:\\lib\\deur.dwg",  R"({"status":5100,"handle":"32","name":"DEUR","text":"C:\\lib\\deur.dwg"})"},
    TextRow {"AFileThatIsNotThere", "weg.dwg!plaat",     R"({"status":5100,"handle":"2C","name":"PLAAT","text":"plaat"})"},
    TextRow {"AnEmptyFile",        "!plaat",             R"({"status":5100,"handle":"2C","name":"PLAAT","text":"plaat"})"},
    TextRow {"NoText",             "",                   R"({"status":5100,"handle":null,"name":"","text":""})"}),
    [](const auto& row) { return std::string(row.param.sentence); });

// clang-format on

TEST_F(CfgctlBlock, OfNoTextIsNothingInThePlainForm)
{
    const ProgramResult result = look({""});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "");
}

// --- a block that is loaded ----------------------------------------------------------------------

TEST_F(CfgctlBlock, InsertsADrawing)
{
    copyDrawing("r2018", "eerst.dxf");
    write("door.dwg", kLine);
    const Json document = Json::parse(json({"block", "Door", "--drawing=plan.dxf"}));
    EXPECT_EQ(document["status"], 5100);
    EXPECT_EQ(document["name"], "DOOR");
    EXPECT_EQ(document["text"], "Door");
    EXPECT_EQ(drawingChanges(pathOf("eerst.dxf"), pathOf("plan.dxf")),
              "- TABLE\n+ TABLE\n+ BLOCK_RECORD\n+ BLOCK\n+ LINE\n+ ENDBLK\n");
    // The saved drawing has it under that handle, and nothing is loaded again.
    EXPECT_EQ(look({"door"}).out, document["handle"].get<std::string>() + "\n");
}

TEST_F(CfgctlBlock, ClonesOutOfADrawing)
{
    copyDrawing("r12", "lib.dwg");
    copyDrawing("damaged/owner_missing", "klein.dxf");
    const ProgramResult result
        = run({"block", "lib.dwg!Plaat", "--drawing=klein.dxf", "--save-as=uit.dxf", "--json"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.err, "");
    const Json document = Json::parse(result.out);
    EXPECT_EQ(document["name"], "PLAAT");
    EXPECT_EQ(document["text"], "Plaat");
    EXPECT_THAT(blocksOf("uit.dxf"), HasSubstr(R"("Plaat","BOUT")"));
    EXPECT_THAT(blocksOf("klein.dxf"), Not(HasSubstr("Plaat")));
}

TEST_F(CfgctlBlock, ForcedReplacesADefinition)
{
    write("deur.dwg", kLine);
    EXPECT_NE(definitionsOf("DEUR", "plan.dxf"), "[]");
    EXPECT_EQ(json({"block", "$deur", "--drawing=plan.dxf", "--save-as=uit.dxf"}),
              R"({"status":5100,"handle":"32","name":"DEUR","text":"$deur"})");
    EXPECT_EQ(definitionsOf("DEUR", "uit.dxf"), "[]");
    copyDrawing("r12", "lib.dwg");
    EXPECT_EQ(json({"block", "lib!$deur", "--drawing=uit.dxf"}),
              R"({"status":5100,"handle":"32","name":"DEUR","text":"$deur"})");
    EXPECT_EQ(definitionsOf("DEUR", "uit.dxf"), definitionsOf("DEUR", "plan.dxf"));
}

TEST_F(CfgctlBlock, LooksInTheFoldersOfTheLibrary)
{
    write("module/blokken/a.dwg", kLine);
    write("steun/b.dwg", kLine);
    environment["ACAD"] = pathOf("steun");
    for (const char* name : {"a", "b"}) {
        const ProgramResult result
            = run({"block", name, "--drawing=plan.dxf", "--module-dir=module"});
        EXPECT_EQ(result.exitStatus, 0) << result.err;
    }
    EXPECT_THAT(blocksOf("plan.dxf"), HasSubstr(R"("A","B")"));
}

TEST_F(CfgctlBlock, LeavesTheDrawingAloneWhenACopyIsWanted)
{
    write("door.dwg", kLine);
    const ProgramResult result = look({"door", "--save-as=uit.dxf"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(drawingChanges(pathOf("plan.dxf"), pathOf("uit.dxf")),
              "- TABLE\n+ TABLE\n+ BLOCK_RECORD\n+ BLOCK\n+ LINE\n+ ENDBLK\n");
    EXPECT_EQ(run({"block", "DOOR", "--drawing=uit.dxf"}).out, result.out);
}

TEST_F(CfgctlBlock, WritesNoCopyOfAnUnchangedDrawing)
{
    EXPECT_EQ(look({"deur", "--save-as=uit.dxf"}).exitStatus, 0);
    EXPECT_EQ(look({"door", "--save-as=uit.dxf"}).exitStatus, 1);
    EXPECT_FALSE(folder.has(L"uit.dxf"));
}

TEST_F(CfgctlBlock, FailsWhenTheDrawingCannotBeWritten)
{
    write("door.dwg", kLine);
    const ProgramResult result = look({"door", "--save-as=weg/uit.dxf"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_THAT(result.err, HasSubstr("weg/uit.dxf could not be written ("));
}

// --- a source ------------------------------------------------------------------------------------

TEST_F(CfgctlBlock, IsTakenOutOfASource)
{
    copyDrawing("r2004", "bron.dxf");
    copyDrawing("damaged/owner_missing", "klein.dxf");
    const std::string source = read("bron.dxf");
    const Json document
        = Json::parse(json({"block", "weg.dwg!bout", "--drawing=klein.dxf", "--source=bron.dxf"}));
    EXPECT_EQ(document["status"], 5100);
    EXPECT_EQ(document["text"], "bout");
    EXPECT_THAT(blocksOf("klein.dxf"), HasSubstr("\"BOUT\""));
    EXPECT_EQ(read("bron.dxf"), source);
}

TEST_F(CfgctlBlock, OfASourceAsAWholeNeedsItsFileToBeFound)
{
    write("bron.dxf", kLine);
    const ProgramResult absent = look({"door", "--source=bron.dxf"});
    EXPECT_EQ(absent.exitStatus, 1);
    EXPECT_EQ(absent.err, "Block door not found\n");
    write("door.dwg", "no drawing: reading it would be told");
    const ProgramResult found = look({"door", "--source=bron.dxf", "--save-as=uit.dxf"});
    EXPECT_EQ(found.exitStatus, 0);
    EXPECT_EQ(found.err, "");
    EXPECT_THAT(blocksOf("uit.dxf"), HasSubstr("\"DOOR\""));
}

TEST_F(CfgctlBlock, OfASourceThatIsTheDrawingItselfIsAnotherReadingOfIt)
{
    const ProgramResult result
        = look({"x!$plaat", "--source=plan.dxf", "--save-as=uit.dxf", "--json"});
    EXPECT_EQ(result.exitStatus, 0) << result.err;
    EXPECT_EQ(result.out,
              "{\"status\":5100,\"handle\":\"2C\",\"name\":\"PLAAT\",\"text\":\"$plaat\"}\n");
}

// --- failures ------------------------------------------------------------------------------------

struct FailureRow
{
    const char* sentence;
    Words words;
    const char* out; // as JSON
    const char* err; // "$" stands for the folder
};

class CfgctlBlockFailure : public CfgctlBlock, public ::testing::WithParamInterface<FailureRow>
{
protected:
    CfgctlBlockFailure()
    {
        write("kapot.dwg", "Geen tekening\n");
        write("door.dwg", kLine);
        copyDrawing("r2018", "geheel.dwg");
    }
};

TEST_P(CfgctlBlockFailure, IsToldAndChangesNothing)
{
    Words words = GetParam().words;
    const ProgramResult plain = look(words);
    EXPECT_EQ(plain.exitStatus, 1);
    EXPECT_EQ(plain.out, "");
    words.emplace_back("--json");
    const ProgramResult document = look(words);
    EXPECT_EQ(document.exitStatus, 1);
    EXPECT_EQ(document.out, std::string(GetParam().out) + "\n");
    std::string told = GetParam().err;
    for (std::size_t at = 0; (at = told.find("$/")) != std::string::npos;) {
        told.replace(at, 2, pathOf(""));
    }
    EXPECT_EQ(plain.err, told);
    EXPECT_EQ(document.err, told);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Of, CfgctlBlockFailure, ::testing::Values(
    FailureRow {"NoSuchBlock", {"Raam.dwg"},
        R"({"status":-5001,"handle":null,"name":"RAAM","text":"Raam.dwg"})",
        "Block Raam.dwg not found\n"},
    FailureRow {"NoSuchBlockQuietly", {"Raam.dwg", "--quiet"},
        R"({"status":-5001,"handle":null,"name":"RAAM","text":"Raam.dwg"})", ""},
    FailureRow {"AForcedBlockWithoutAFile", {"$plaat"},
        R"({"status":-5001,"handle":null,"name":"PLAAT","text":"$plaat"})",
        "Block plaat not found\n"},
    FailureRow {"NoSuchFile", {"weg.dwg!$plaat"},
        R"({"status":-5001,"handle":null,"name":"PLAAT","text":"$plaat"})",
        "File weg.dwg not found\nBlock PLAAT not found\n"},
    FailureRow {"NoSuchFileQuietly", {"weg.dwg!$plaat", "--quiet"},
        R"({"status":-5001,"handle":null,"name":"PLAAT","text":"$plaat"})", ""},
    FailureRow {"NoSuchBlockInTheFile", {"geheel.dwg!raam"},
        R"({"status":-5001,"handle":null,"name":"RAAM","text":"raam"})",
        "Block RAAM not found\n"},
    FailureRow {"AFileThatIsNoDrawing", {"kapot"},
        R"({"status":-5002,"handle":null,"name":"KAPOT","text":"kapot"})",
        "$/kapot.dwg is no drawing: it begins neither as a DWG nor as a text or binary DXF file\n"
        "Error in file xx_findblk.cpp on line 137\n(eUnsupportedFileFormat, ec = 300)\n"},
    FailureRow {"ANamedFileThatIsNoDrawing", {"kapot!raam", "--quiet"},
        R"({"status":-5002,"handle":null,"name":"RAAM","text":"raam"})",
        "$/kapot.dwg is no drawing: it begins neither as a DWG nor as a text or binary DXF file\n"
        "Error in file xx_findblk.cpp on line 215\n(eUnsupportedFileFormat, ec = 300)\n"},
    FailureRow {"ANamedFileThatIsNoDrawingAndItsBlock", {"kapot.dwg!raam"},
        R"({"status":-5002,"handle":null,"name":"RAAM","text":"raam"})",
        "$/kapot.dwg is no drawing: it begins neither as a DWG nor as a text or binary DXF file\n"
        "Error in file xx_findblk.cpp on line 215\n(eUnsupportedFileFormat, ec = 300)\n"
        "Block RAAM not found\n"},
    FailureRow {"ADrawingThatCannotBeInserted", {"geheel"},
        R"({"status":-5002,"handle":null,"name":"GEHEEL","text":"geheel"})",
        "Cannot clone a record of type KVRTESTBORD: its content is not understood.\n"
        "Error in file xx_findblk.cpp on line 170\n(0, ec = 1)\n"},
    FailureRow {"APassword", {"door", "--password", "geheim"},
        R"({"status":-5002,"handle":null,"name":"DOOR","text":"door"})",
        "$/DOOR.DWG: a drawing of this format has no password; open it without one.\n"
        "Error in file xx_findblk.cpp on line 137\n(eInvalidInput, ec = 300)\n"}),
    [](const auto& row) { return std::string(row.param.sentence); });

// clang-format on

TEST_F(CfgctlBlock, TakesAnEmptyPasswordForNone)
{
    write("door.dwg", kLine);
    const ProgramResult result = look({"door", "--password", "", "--save-as=uit.dxf"});
    EXPECT_EQ(result.exitStatus, 0) << result.err;
}

// --- wrong usage ---------------------------------------------------------------------------------

struct BlockUsageRow
{
    const char* sentence;
    Words words;
    const char* message; // behind "cfgctl: "; "$/" at its beginning stands for the folder
};

class CfgctlBlockUsage : public CfgctlBlock, public ::testing::WithParamInterface<BlockUsageRow>
{
};

TEST_P(CfgctlBlockUsage, IsToldInOneLine)
{
    write("tekst.dxf", "Geen tekening\n");
    write("door.dwg", kLine);
    expectWrongUse(GetParam().words, GetParam().message);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Of, CfgctlBlockUsage, ::testing::Values(
    BlockUsageRow {"NoText",            {"block", "--drawing=plan.dxf"}, "TEXT is required; see cfgctl block --help"},
    BlockUsageRow {"TwoTexts",          {"block", "a", "b", "--drawing=plan.dxf"}, "not expected: \"b\"; see cfgctl block --help"},
    BlockUsageRow {"NoDrawing",         {"block", "door"}, "no drawing to work on; pass one with --drawing FILE"},
    BlockUsageRow {"NoDrawingButASource", {"block", "door", "--source=plan.dxf"}, "no drawing to work on; pass one with --drawing FILE"},
    BlockUsageRow {"ADrawingThatIsNotThere", {"block", "door", "--drawing=weg.dxf"}, "$/weg.dxf does not exist; pass a DWG or DXF drawing to --drawing"},
    BlockUsageRow {"ASourceThatIsNotThere", {"block", "door", "--drawing=plan.dxf", "--source=weg.dxf"}, "$/weg.dxf does not exist; pass a DWG or DXF drawing to --source"},
    BlockUsageRow {"ASourceThatIsNoDrawing", {"block", "door", "--drawing=plan.dxf", "--source=tekst.dxf"}, "$/tekst.dxf is no drawing: it begins neither as a DWG nor as a text or binary DXF file; pass a DWG or DXF drawing to --source"},
    BlockUsageRow {"AnEmptySource",     {"block", "door", "--source", "", "--drawing=plan.dxf"}, "--source is empty; pass a DWG or DXF drawing to --source"},
    BlockUsageRow {"ASourceWithoutAName", {"block", "door", "--drawing=plan.dxf", "--source"}, "--source: 1 required FILE missing; see cfgctl block --help"},
    BlockUsageRow {"APasswordWithoutAText", {"block", "door", "--drawing=plan.dxf", "--password"}, "--password: 1 required P missing; see cfgctl block --help"},
    BlockUsageRow {"AnOptionOfAnotherCommand", {"block", "door", "--drawing=plan.dxf", "--constant"}, "not expected: \"--constant\"; see cfgctl block --help"},
    BlockUsageRow {"ACopyWithoutADrawing", {"block", "door", "--save-as=uit.dxf"}, "--save-as needs a drawing to save; pass one with --drawing FILE"}),
    [](const auto& row) { return std::string(row.param.sentence); });
// clang-format on

} // namespace

} // namespace corma::testing
