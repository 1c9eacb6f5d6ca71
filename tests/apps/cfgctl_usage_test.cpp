// cfgctl: wrong usage, help, and output that cannot be written.

#include "CfgctlTest.h"
#include "platform/platform.h"

#include <gmock/gmock.h>
#include <sstream>

using ::testing::HasSubstr;

namespace corma::testing {

namespace {

struct Row
{
    const char* sentence;
    Words arguments;
    const char* message; // behind "cfgctl: "
};

std::string sentenceOf(const ::testing::TestParamInfo<Row>& row)
{
    return row.param.sentence;
}

const std::vector<const char*> kCommands
    = {"get",   "find", "levels", "includes", "where",   "record",
       "model", "rows", "set",    "scramble", "drawing", "texts"};

class CfgctlUsage : public CfgctlTest, public ::testing::WithParamInterface<Row>
{
protected:
    CfgctlUsage()
    {
        write("tool.ini", "X=1\n");
        write("leeg.dxf", "");
        write("tekst.dxf", "Geen tekening\n");
        write("map/x", "");
        copyDrawing("r2000", "plan.dxf");
        copyDrawing("damaged/looks_like_dwg", "plan.dwg");
        copyDrawing("damaged/truncated_value", "half.dxf");
    }
};

// "$/" in a message stands for the folder.
TEST_P(CfgctlUsage, IsToldInOneLine)
{
    const std::string drawing = read("plan.dxf");
    const ProgramResult result = run(GetParam().arguments);
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_EQ(result.out, "");
    std::string message = GetParam().message;
    if (message.starts_with("$/")) {
        message.replace(0, 2, pathOf(""));
    }
    EXPECT_EQ(result.err, "cfgctl: " + message + "\n");
    EXPECT_EQ(read("plan.dxf"), drawing);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Wrong, CfgctlUsage, ::testing::Values(
    Row {"NoCommand",            {}, "no command given; the commands are get, find, levels, includes, where, record, model, rows, set, scramble, drawing, texts; see cfgctl --help"},
    Row {"AnUnknownCommand",     {"gett"}, "unknown command \"gett\"; the commands are get, find, levels, includes, where, record, model, rows, set, scramble, drawing, texts"},
    Row {"AnEmptyCommand",       {""}, "unknown command \"\"; the commands are get, find, levels, includes, where, record, model, rows, set, scramble, drawing, texts"},
    Row {"AnOptionFirst",        {"--json", "get", "tool.ini", "X"}, "not expected: \"--json\"; the command goes first; see cfgctl --help"},
    Row {"NoFile",               {"get"}, "FILE is required; see cfgctl get --help"},
    Row {"NoIdent",              {"get", "tool.ini"}, "IDENTS is required; see cfgctl get --help"},
    Row {"AnIdentLikeAnOption",  {"get", "tool.ini", "-x"}, "IDENTS is required; see cfgctl get --help"},
    Row {"OneArgumentTooMany",   {"get", "tool.ini", "X", "Y"}, "not expected: \"Y\"; see cfgctl get --help"},
    Row {"AnUnknownOption",      {"get", "tool.ini", "X", "--model", "7"}, "not expected: \"--model\" \"7\"; see cfgctl get --help"},
    Row {"AnOptionOfAnother",    {"levels", "tool.ini", "X", "--size", "7"}, "not expected: \"--size\" \"7\"; see cfgctl levels --help"},
    Row {"ALineEndInAnArgument", {"get", "tool.ini", "X", "a\nb"}, "not expected: \"a b\"; see cfgctl get --help"},
    Row {"ASizeThatIsNoNumber",  {"get", "tool.ini", "X", "--size", "groot"}, "--size is no whole number that can be used: \"groot\"; pass one such as 7"},
    Row {"AnEmptySize",          {"get", "tool.ini", "X", "--size", ""}, "--size is no whole number that can be used: \"\"; pass one such as 7"},
    Row {"AFractionForASize",    {"get", "tool.ini", "X", "--size", "1.5"}, "--size is no whole number that can be used: \"1.5\"; pass one such as 7"},
    Row {"ANumberOutOfRange",    {"get", "tool.ini", "X", "--scramble", "2147483648"}, "--scramble is out of range: \"2147483648\"; pass a whole number from -2147483648 to 2147483647"},
    Row {"AScrambleNumberThatIsNone", {"find", "tool.ini", "X", "--scramble=7x"}, "--scramble is no whole number that can be used: \"7x\"; pass one such as 7"},
    Row {"ASkipThatIsNoNumber",  {"find", "tool.ini", "X", "--skip", "een"}, "--skip is no whole number that can be used: \"een\"; pass one such as 7"},
    Row {"AKeyThatIsNoNumber",   {"scramble", "tool.ini", "sleutel"}, "KEY is no whole number that can be used: \"sleutel\"; pass one such as 7"},
    Row {"NoKey",                {"scramble", "tool.ini"}, "KEY is required; see cfgctl scramble --help"},
    Row {"ALanguageThatIsNoNumber", {"texts", "--language", "nl"}, "--language is no whole number that can be used: \"nl\"; pass one such as 7"},
    Row {"AnAccessLevelTooHigh", {"texts", "--access", "32768"}, "--access is out of range: \"32768\"; pass a whole number from -32768 to 32767"},
    Row {"AnAccessLevelTooLow",  {"texts", "--access", "-32769"}, "--access is out of range: \"-32769\"; pass a whole number from -32768 to 32767"},
    Row {"AnAccessLevelThatIsNoNumber", {"get", "tool.ini", "X", "--access", "hoog"}, "--access is no whole number that can be used: \"hoog\"; pass one such as 7"},
    Row {"ARowThatIsNoNumber",   {"texts", "2972", "x"}, "ROW is no whole number that can be used: \"x\"; pass one such as 7"},
    Row {"ARowWithALetter",      {"texts", "2972a"}, "ROW is no whole number that can be used: \"2972a\"; pass one such as 7"},
    Row {"AnEmptyRow",           {"texts", ""}, "ROW is no whole number that can be used: \"\"; pass one such as 7"},
    Row {"ARowOutOfRange",       {"texts", "2147483648"}, "ROW is out of range: \"2147483648\"; pass a whole number from -2147483648 to 2147483647"},
    Row {"RowsInBrackets",       {"texts", "[2972,2973]"}, "not expected: \"[2972,2973]\"; see cfgctl texts --help"},
    Row {"AnOptionWithoutValue", {"get", "tool.ini", "X", "--scramble"}, "--scramble: 1 required N missing; see cfgctl get --help"},
    Row {"AnOptionTwice",        {"get", "tool.ini", "X", "--scramble=1", "--scramble=2"}, "--scramble: At Most 1 required but received 2; see cfgctl get --help"},
    Row {"AnUnknownKind",        {"get", "tool.ini", "X", "--as", "float"}, "unknown kind \"float\"; pass string, int, bool, double, doubles:N, ints:N, doubles=N, ints=N or list:C to --as"},
    Row {"AnEmptyKind",          {"get", "tool.ini", "X", "--as", ""}, "unknown kind \"\"; pass string, int, bool, double, doubles:N, ints:N, doubles=N, ints=N or list:C to --as"},
    Row {"AKindInOtherCase",     {"get", "tool.ini", "X", "--as", "Int"}, "unknown kind \"Int\"; pass string, int, bool, double, doubles:N, ints:N, doubles=N, ints=N or list:C to --as"},
    Row {"ACountTooLarge",       {"get", "tool.ini", "X", "--as", "ints=1000001"}, "--as ints=1000001 needs a count; pass one of 0 to 1000000"},
    Row {"AHugeCount",           {"get", "tool.ini", "X", "--as", "ints:99999999999999999999"}, "--as ints:99999999999999999999 needs a count; pass one of 0 to 1000000"},
    Row {"NoCount",              {"get", "tool.ini", "X", "--as", "ints:"}, "--as ints: needs a count; pass one of 0 to 1000000"},
    Row {"ANegativeCount",       {"get", "tool.ini", "X", "--as", "doubles=-1"}, "--as doubles=-1 needs a count; pass one of 0 to 1000000"},
    Row {"ACountThatIsNoNumber", {"get", "tool.ini", "X", "--as", "doubles=1x"}, "--as doubles=1x needs a count; pass one of 0 to 1000000"},
    Row {"NoSeparator",          {"get", "tool.ini", "X", "--as", "list:"}, "--as list: needs one character as separator; pass one, such as list:;"},
    Row {"TwoSeparators",        {"get", "tool.ini", "X", "--as", "list:;,"}, "--as list:;, needs one character as separator; pass one, such as list:;"},
    Row {"NoSuchDrawing",        {"get", "tool.ini", "X", "--drawing", "weg.dxf"}, "$/weg.dxf does not exist; pass a DXF drawing to --drawing"},
    Row {"AFolderForADrawing",   {"levels", "tool.ini", "X", "--drawing", "map"}, "$/map cannot be read: it is no file, or reading it is not allowed; pass a DXF drawing to --drawing"},
    Row {"AnEmptyDrawingName",   {"get", "tool.ini", "X", "--drawing", ""}, "--drawing is empty; pass a DXF drawing to --drawing"},
    Row {"AnEmptyDrawing",       {"find", "tool.ini", "X", "--drawing", "leeg.dxf"}, "$/leeg.dxf is empty and so no drawing; pass a DXF drawing to --drawing"},
    Row {"TextForADrawing",      {"includes", "tool.ini", "--drawing", "tekst.dxf"}, "$/tekst.dxf is no drawing: it begins neither as a text nor as a binary DXF file; pass a DXF drawing to --drawing"},
    Row {"ADwgDrawing",          {"drawing", "--drawing", "plan.dwg"}, "$/plan.dwg is a DWG drawing (AC1032, R2018); only DXF drawings can be opened; save it as DXF in the CAD program; pass a DXF drawing to --drawing"},
    Row {"ADamagedDrawing",      {"set", "tool.ini", "X", "1", "--drawing", "half.dxf"}, "$/half.dxf: ends in the middle of the section ENTITIES (line 210); the file was not saved or copied to its end: copy it again, or use a backup; pass a DXF drawing to --drawing"},
    Row {"SaveAsWithoutDrawing", {"get", "tool.ini", "X", "--save-as", "kopie.dxf"}, "--save-as needs a drawing to save; pass one with --drawing FILE"},
    Row {"AnEmptySaveAs",        {"get", "tool.ini", "X", "--drawing", "plan.dxf", "--save-as", ""}, "--save-as is empty; pass the name of a file"},
    Row {"DrawingWithoutADrawing", {"drawing", "--json"}, "no drawing to show; pass one with --drawing FILE"},
    Row {"RecordWithoutItsKind", {"record", "tool.ini", "X"}, "no record told; pass vis, text or hatch to --as"},
    Row {"RecordOfAnotherKind",  {"record", "tool.ini", "X", "--as", "Vis"}, "unknown record \"Vis\"; pass vis, text or hatch to --as"},
    Row {"SetWithoutAValue",     {"set", "tool.ini", "X", "--drawing", "plan.dxf"}, "VALUE is required; see cfgctl set --help"},
    Row {"SetWithoutADrawing",   {"set", "tool.ini", "X", "1"}, "this version writes into drawings only; pass --drawing FILE, and neither another level nor --no-create"},
    Row {"SetGlobally",          {"set", "tool.ini", "X", "1", "--level", "global", "--drawing", "plan.dxf"}, "this version writes into drawings only; pass --drawing FILE, and neither another level nor --no-create"},
    Row {"SetInTheProject",      {"set", "tool.ini", "X", "1", "--level", "project", "--drawing", "plan.dxf"}, "this version writes into drawings only; pass --drawing FILE, and neither another level nor --no-create"},
    Row {"SetWithoutCreating",   {"set", "tool.ini", "X", "1", "--no-create", "--drawing", "plan.dxf"}, "this version writes into drawings only; pass --drawing FILE, and neither another level nor --no-create"},
    Row {"SetAtAnUnknownLevel",  {"set", "tool.ini", "X", "1", "--level", "Drawing", "--drawing", "plan.dxf"}, "unknown level \"Drawing\"; pass global, project or drawing to --level"},
    Row {"SetInTheDrawingWithoutOne", {"set", "tool.ini", "X", "1", "--level", "drawing"}, "--level drawing needs a drawing; pass one with --drawing FILE"},
    Row {"AnEmptyModuleFolder",  {"where", "tool.ini", "--module-dir", ""}, "--module-dir is empty; pass a folder such as \".\""}),
    sentenceOf);

// clang-format on

class CfgctlHelp : public CfgctlTest
{
};

TEST_F(CfgctlHelp, NamesTheCommandsAndTeachesByExamples)
{
    for (const char* option : {"--help", "-h"}) {
        const ProgramResult result = run({option});
        EXPECT_EQ(result.exitStatus, 0);
        EXPECT_EQ(result.err, "");
        for (const char* name : kCommands) {
            EXPECT_THAT(result.out, HasSubstr(std::string("\n  ") + name + " ")) << name;
        }
        EXPECT_THAT(result.out,
                    HasSubstr("Examples, in the folder examples/plattegrond:\n"
                              "  cfgctl get plattegrond.ini \"[Trappen]OptredeMax\"\n"));
        EXPECT_THAT(result.out, HasSubstr("Exit status: 0 "));
    }
}

TEST_F(CfgctlHelp, OfACommandTellsItsArgumentsAndExamples)
{
    for (const char* name : kCommands) {
        const ProgramResult result = run({name, "--help"});
        EXPECT_EQ(result.exitStatus, 0) << name;
        EXPECT_EQ(result.err, "") << name;
        EXPECT_THAT(result.out, HasSubstr(std::string("Usage: cfgctl ") + name + " [OPTIONS]"));
        EXPECT_THAT(result.out, HasSubstr(std::string("plattegrond:\n  cfgctl ") + name + " "));
        EXPECT_THAT(result.out, HasSubstr("--scramble N")) << name;
        EXPECT_THAT(result.out, HasSubstr("--save-as FILE")) << name;
    }
}

// What a screen of 100 columns shows without wrapping.
TEST_F(CfgctlHelp, FitsTheScreen)
{
    for (const Words& words :
         {Words {"--help"}, Words {"get", "--help"}, Words {"find", "--help"},
          Words {"levels", "--help"}, Words {"scramble", "--help"}, Words {"record", "--help"},
          Words {"model", "--help"}, Words {"rows", "--help"}, Words {"set", "--help"},
          Words {"drawing", "--help"}, Words {"texts", "--help"}}) {
        std::istringstream lines(run(words).out);
        for (std::string line; std::getline(lines, line);) {
            EXPECT_LE(line.size(), 100U) << line;
        }
    }
}

// Each command line that a help shows as an example is run in the folder of the examples.
TEST_F(CfgctlHelp, ShowsExamplesThatWork)
{
    workIn = CORMA_EXAMPLES;
    for (const Words& words :
         {Words {"get", "plattegrond.ini", "[Tekst]Hoogten", "--as", "doubles:10"},
          Words {"get", "geheim.ini", "[Formules]StapModulusMax", "--scramble", "7", "--json"},
          Words {"find", "plattegrond.ini", "[*]Hoogte"},
          Words {"find", "plattegrond.ini", "KleurF*,KleurH*"},
          Words {"find", "plattegrond.ini", "[Wanden]Dikte*", "--skip", "5"},
          Words {"levels", "plattegrond.ini", "[Plot]Schaal", "--drawing", "project/woonhuis.dxf"},
          Words {"get", "plattegrond.ini", "[Ruimten]Hoogte", "--drawing", "project/woonhuis.dxf"},
          Words {"record", "plattegrond.ini", "[Lagen]Buitenwand", "--as", "vis"},
          Words {"find", "plattegrond.ini", "[*]XXINIFRUBR", "--model"},
          Words {"model", "plattegrond.ini", "--language", "19"},
          Words {"rows", "plattegrond.ini", "Plot"},
          Words {"rows", "plattegrond.ini", "Wanden", "--search", "hoogte+lengte"},
          Words {"drawing", "--drawing", "project/woonhuis.dxf", "--json"},
          Words {"texts", "2972", "2981", "--language", "19"},
          Words {"texts", "--language", "25", "--json"}, Words {"includes", "plattegrond.ini"},
          Words {"where", "plattegrond.ini"}}) {
        const ProgramResult result = run(words);
        EXPECT_EQ(result.exitStatus, 0) << result.err;
        EXPECT_NE(result.out, "");
        EXPECT_EQ(result.err, "");
        const std::string help = run({words.front(), "--help"}).out;
        for (const std::string& word : words) {
            EXPECT_THAT(help, HasSubstr(word));
        }
    }
}

TEST_F(CfgctlHelp, GoesBeforeMissingArguments)
{
    EXPECT_EQ(run({"get", "--help", "tool.ini"}).exitStatus, 0);
}

TEST_F(CfgctlHelp, TellsTheVersion)
{
    const ProgramResult result = run({"--version"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, "cfgctl " CFGCTL_VERSION "\n");
    EXPECT_EQ(result.err, "");
}

class CfgctlOutput : public CfgctlTest
{
};

TEST_F(CfgctlOutput, ThatCannotBeWrittenIsAFailure)
{
    write("tool.ini", "X=1\n");
    const ProgramResult result = runProgram({CFGCTL_PROGRAM,
                                             {"get", "tool.ini", "X"},
                                             platform::toNative(folder.path()),
                                             environment,
                                             "/dev/full"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.err, "cfgctl: the result could not be written to standard output\n");
}

} // namespace

} // namespace corma::testing
