// cfgctl: wrong usage, help, and output that cannot be written.

#include "CfgctlTest.h"
#include "platform/platform.h"
#include "support/row_names.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <iomanip>
#include <sstream>

using ::testing::HasSubstr;

namespace corma::testing {

namespace {

struct UsageRow
{
    const char* sentence;
    Words arguments;
    const char* message; // behind "cfgctl: "
};

const std::vector<const char*> kCommands = {"get",
                                            "find",
                                            "levels",
                                            "includes",
                                            "where",
                                            "record",
                                            "model",
                                            "rows",
                                            "set",
                                            "freeze",
                                            "apply",
                                            "remove",
                                            "remove-category",
                                            "update",
                                            "replace",
                                            "scramble",
                                            "drawing",
                                            "sql",
                                            "translate",
                                            "texts"};

class CfgctlUsage : public CfgctlTest, public ::testing::WithParamInterface<UsageRow>
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
        write("oud.dwg", "AC1009 and more");
        copyDrawing("damaged/truncated_value", "half.dxf");
    }
};

TEST_P(CfgctlUsage, IsToldInOneLine)
{
    expectWrongUse(GetParam().arguments, GetParam().message, {"plan.dxf", "tool.ini"});
    EXPECT_FALSE(folder.has(L"tool.ipr"));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Wrong, CfgctlUsage, ::testing::Values(
    UsageRow {"NoCommand",            {}, "no command given; the commands are get, find, levels, includes, where, record, model, rows, set, freeze, apply, remove, remove-category, update, replace, scramble, drawing, block, attributes, attdefs, attupdate, attsync, copy, erase, view, sql, translate, texts; see cfgctl --help"},
    UsageRow {"AnUnknownCommand",     {"gett"}, "unknown command \"gett\"; the commands are get, find, levels, includes, where, record, model, rows, set, freeze, apply, remove, remove-category, update, replace, scramble, drawing, block, attributes, attdefs, attupdate, attsync, copy, erase, view, sql, translate, texts"},
    UsageRow {"AnEmptyCommand",       {""}, "unknown command \"\"; the commands are get, find, levels, includes, where, record, model, rows, set, freeze, apply, remove, remove-category, update, replace, scramble, drawing, block, attributes, attdefs, attupdate, attsync, copy, erase, view, sql, translate, texts"},
    UsageRow {"AnOptionFirst",        {"--json", "get", "tool.ini", "X"}, "not expected: \"--json\"; the command goes first; see cfgctl --help"},
    UsageRow {"NoFile",               {"get"}, "FILE is required; see cfgctl get --help"},
    UsageRow {"NoIdent",              {"get", "tool.ini"}, "IDENTS is required; see cfgctl get --help"},
    UsageRow {"AnIdentLikeAnOption",  {"get", "tool.ini", "-x"}, "IDENTS is required; see cfgctl get --help"},
    UsageRow {"OneArgumentTooMany",   {"get", "tool.ini", "X", "Y"}, "not expected: \"Y\"; see cfgctl get --help"},
    UsageRow {"AnUnknownOption",      {"get", "tool.ini", "X", "--model", "7"}, "not expected: \"--model\" \"7\"; see cfgctl get --help"},
    UsageRow {"AnOptionOfAnother",    {"levels", "tool.ini", "X", "--size", "7"}, "not expected: \"--size\" \"7\"; see cfgctl levels --help"},
    UsageRow {"ALineEndInAnArgument", {"get", "tool.ini", "X", "a\nb"}, "not expected: \"a b\"; see cfgctl get --help"},
    UsageRow {"ASizeThatIsNoNumber",  {"get", "tool.ini", "X", "--size", "groot"}, "--size is no whole number that can be used: \"groot\"; pass one such as 7"},
    UsageRow {"AnEmptySize",          {"get", "tool.ini", "X", "--size", ""}, "--size is no whole number that can be used: \"\"; pass one such as 7"},
    UsageRow {"AFractionForASize",    {"get", "tool.ini", "X", "--size", "1.5"}, "--size is no whole number that can be used: \"1.5\"; pass one such as 7"},
    UsageRow {"ANumberOutOfRange",    {"get", "tool.ini", "X", "--scramble", "2147483648"}, "--scramble is out of range: \"2147483648\"; pass a whole number from -2147483648 to 2147483647"},
    UsageRow {"AScrambleNumberThatIsNone", {"find", "tool.ini", "X", "--scramble=7x"}, "--scramble is no whole number that can be used: \"7x\"; pass one such as 7"},
    UsageRow {"ASkipThatIsNoNumber",  {"find", "tool.ini", "X", "--skip", "een"}, "--skip is no whole number that can be used: \"een\"; pass one such as 7"},
    UsageRow {"AKeyThatIsNoNumber",   {"scramble", "tool.ini", "sleutel"}, "KEY is no whole number that can be used: \"sleutel\"; pass one such as 7"},
    UsageRow {"NoKey",                {"scramble", "tool.ini"}, "KEY is required; see cfgctl scramble --help"},
    UsageRow {"ALanguageThatIsNoNumber", {"texts", "--language", "nl"}, "--language is no whole number that can be used: \"nl\"; pass one such as 7"},
    UsageRow {"AnAccessLevelTooHigh", {"texts", "--access", "32768"}, "--access is out of range: \"32768\"; pass a whole number from -32768 to 32767"},
    UsageRow {"AnAccessLevelTooLow",  {"texts", "--access", "-32769"}, "--access is out of range: \"-32769\"; pass a whole number from -32768 to 32767"},
    UsageRow {"AnAccessLevelThatIsNoNumber", {"get", "tool.ini", "X", "--access", "hoog"}, "--access is no whole number that can be used: \"hoog\"; pass one such as 7"},
    UsageRow {"ARowThatIsNoNumber",   {"texts", "2972", "x"}, "ROW is no whole number that can be used: \"x\"; pass one such as 7"},
    UsageRow {"ARowWithALetter",      {"texts", "2972a"}, "ROW is no whole number that can be used: \"2972a\"; pass one such as 7"},
    UsageRow {"AnEmptyRow",           {"texts", ""}, "ROW is no whole number that can be used: \"\"; pass one such as 7"},
    UsageRow {"ARowOutOfRange",       {"texts", "2147483648"}, "ROW is out of range: \"2147483648\"; pass a whole number from -2147483648 to 2147483647"},
    UsageRow {"RowsInBrackets",       {"texts", "[2972,2973]"}, "not expected: \"[2972,2973]\"; see cfgctl texts --help"},
    UsageRow {"AnOptionWithoutValue", {"get", "tool.ini", "X", "--scramble"}, "--scramble: 1 required N missing; see cfgctl get --help"},
    UsageRow {"AnOptionTwice",        {"get", "tool.ini", "X", "--scramble=1", "--scramble=2"}, "--scramble: At Most 1 required but received 2; see cfgctl get --help"},
    UsageRow {"AnUnknownKind",        {"get", "tool.ini", "X", "--as", "float"}, "unknown kind \"float\"; pass string, int, bool, double, doubles:N, ints:N, doubles=N, ints=N or list:C to --as"},
    UsageRow {"AnEmptyKind",          {"get", "tool.ini", "X", "--as", ""}, "unknown kind \"\"; pass string, int, bool, double, doubles:N, ints:N, doubles=N, ints=N or list:C to --as"},
    UsageRow {"AKindInOtherCase",     {"get", "tool.ini", "X", "--as", "Int"}, "unknown kind \"Int\"; pass string, int, bool, double, doubles:N, ints:N, doubles=N, ints=N or list:C to --as"},
    UsageRow {"ACountTooLarge",       {"get", "tool.ini", "X", "--as", "ints=1000001"}, "--as ints=1000001 needs a count; pass one of 0 to 1000000"},
    UsageRow {"AHugeCount",           {"get", "tool.ini", "X", "--as", "ints:99999999999999999999"}, "--as ints:99999999999999999999 needs a count; pass one of 0 to 1000000"},
    UsageRow {"NoCount",              {"get", "tool.ini", "X", "--as", "ints:"}, "--as ints: needs a count; pass one of 0 to 1000000"},
    UsageRow {"ANegativeCount",       {"get", "tool.ini", "X", "--as", "doubles=-1"}, "--as doubles=-1 needs a count; pass one of 0 to 1000000"},
    UsageRow {"ACountThatIsNoNumber", {"get", "tool.ini", "X", "--as", "doubles=1x"}, "--as doubles=1x needs a count; pass one of 0 to 1000000"},
    UsageRow {"NoSeparator",          {"get", "tool.ini", "X", "--as", "list:"}, "--as list: needs one character as separator; pass one, such as list:;"},
    UsageRow {"TwoSeparators",        {"get", "tool.ini", "X", "--as", "list:;,"}, "--as list:;, needs one character as separator; pass one, such as list:;"},
    UsageRow {"NoSuchDrawing",        {"get", "tool.ini", "X", "--drawing", "weg.dxf"}, "$/weg.dxf does not exist; pass a DWG or DXF drawing to --drawing"},
    UsageRow {"AFolderForADrawing",   {"levels", "tool.ini", "X", "--drawing", "map"}, "$/map cannot be read: it is no file, or reading it is not allowed; pass a DWG or DXF drawing to --drawing"},
    UsageRow {"AnEmptyDrawingName",   {"get", "tool.ini", "X", "--drawing", ""}, "--drawing is empty; pass a DWG or DXF drawing to --drawing"},
    UsageRow {"AnEmptyDrawing",       {"find", "tool.ini", "X", "--drawing", "leeg.dxf"}, "$/leeg.dxf is empty and so no drawing; pass a DWG or DXF drawing to --drawing"},
    UsageRow {"TextForADrawing",      {"includes", "tool.ini", "--drawing", "tekst.dxf"}, "$/tekst.dxf is no drawing: it begins neither as a DWG nor as a text or binary DXF file; pass a DWG or DXF drawing to --drawing"},
    UsageRow {"ADamagedDwgDrawing",   {"drawing", "--drawing", "plan.dwg"}, "$/plan.dwg, byte 128: the file header has a wrong checksum; the file is damaged: use a backup, or recover the drawing in the CAD program; pass a DWG or DXF drawing to --drawing"},
    UsageRow {"AnOlderDwgDrawing",    {"drawing", "--drawing", "oud.dwg"}, "$/oud.dwg is a DWG drawing (AC1009, R11 or R12); only those of R13 to R2018 can be opened; save it as one of these, or as DXF, in the CAD program; pass a DWG or DXF drawing to --drawing"},
    UsageRow {"ADamagedDrawing",      {"set", "tool.ini", "X", "1", "--drawing", "half.dxf"}, "$/half.dxf: ends in the middle of the section ENTITIES (line 210); the file was not saved or copied to its end: copy it again, or use a backup; pass a DWG or DXF drawing to --drawing"},
    UsageRow {"SaveAsWithoutDrawing", {"get", "tool.ini", "X", "--save-as", "kopie.dxf"}, "--save-as needs a drawing to save; pass one with --drawing FILE"},
    UsageRow {"AnEmptySaveAs",        {"get", "tool.ini", "X", "--drawing", "plan.dxf", "--save-as", ""}, "--save-as is empty; pass the name of a file"},
    UsageRow {"DrawingWithoutADrawing", {"drawing", "--json"}, "no drawing to show; pass one with --drawing FILE"},
    UsageRow {"RecordWithoutItsKind", {"record", "tool.ini", "X"}, "no record told; pass vis, text or hatch to --as"},
    UsageRow {"RecordOfAnotherKind",  {"record", "tool.ini", "X", "--as", "Vis"}, "unknown record \"Vis\"; pass vis, text or hatch to --as"},
    UsageRow {"SetWithoutAValue",     {"set", "tool.ini", "X", "--drawing", "plan.dxf"}, "VALUE is required; see cfgctl set --help"},
    UsageRow {"SetAtAnUnknownLevel",  {"set", "tool.ini", "X", "1", "--level", "Drawing", "--drawing", "plan.dxf"}, "unknown level \"Drawing\"; pass global, project or drawing to --level"},
    UsageRow {"SetInTheDrawingWithoutOne", {"set", "tool.ini", "X", "1", "--level", "drawing"}, "--level drawing needs a drawing; pass one with --drawing FILE"},
    UsageRow {"SetAtAnEmptyLevel",    {"set", "tool.ini", "X", "1", "--level", ""}, "unknown level \"\"; pass global, project or drawing to --level"},
    UsageRow {"SetToAValueLikeAnOption", {"set", "tool.ini", "X", "-x"}, "VALUE is required; see cfgctl set --help"},
    UsageRow {"SetWithAnOptionOfAnother", {"set", "tool.ini", "X", "1", "--project", "tool.ipr"}, "not expected: \"--project\" \"tool.ipr\"; see cfgctl set --help"},
    UsageRow {"FreezeWithoutAFile",   {"freeze", "--drawing", "plan.dxf"}, "FILE is required; see cfgctl freeze --help"},
    UsageRow {"FreezeOfNothing",      {"freeze", "tool.ini", "--drawing", "plan.dxf"}, "pass one of IDENT, --chapter C and --levels to freeze"},
    UsageRow {"FreezeOfAnIdentAndAChapter", {"freeze", "tool.ini", "X", "--chapter", "A", "--drawing", "plan.dxf"}, "pass one of IDENT, --chapter C and --levels to freeze"},
    UsageRow {"FreezeOfAChapterAndLevels", {"freeze", "tool.ini", "--levels", "--chapter", "A", "--drawing", "plan.dxf"}, "pass one of IDENT, --chapter C and --levels to freeze"},
    UsageRow {"FreezeOfAnIdentAndLevels", {"freeze", "tool.ini", "X", "--levels", "--drawing", "plan.dxf"}, "pass one of IDENT, --chapter C and --levels to freeze"},
    UsageRow {"FreezeWithoutADrawing", {"freeze", "tool.ini", "X"}, "freeze needs a drawing; pass one with --drawing FILE"},
    UsageRow {"FreezeOfLevelsWithoutADrawing", {"freeze", "tool.ini", "--levels"}, "freeze needs a drawing; pass one with --drawing FILE"},
    UsageRow {"ApplyWithoutAValue",   {"apply", "tool.ini", "Algemeen", "X"}, "VALUE is required; see cfgctl apply --help"},
    UsageRow {"ApplyWithoutAName",    {"apply", "tool.ini", "Algemeen"}, "NAME is required; see cfgctl apply --help"},
    UsageRow {"ApplyToAnEmptyProject", {"apply", "tool.ini", "Algemeen", "X", "2", "--project", ""}, "--project is empty; pass the name of a project file"},
    UsageRow {"ApplyAtALevel",        {"apply", "tool.ini", "Algemeen", "X", "2", "--level", "global"}, "not expected: \"--level\" \"global\"; see cfgctl apply --help"},
    UsageRow {"RemoveWithoutAName",   {"remove", "tool.ini", "Algemeen"}, "NAME is required; see cfgctl remove --help"},
    UsageRow {"RemoveFromAnEmptyProject", {"remove", "tool.ini", "Algemeen", "X", "--project", ""}, "--project is empty; pass the name of a project file"},
    UsageRow {"RemoveCategoryWithoutOne", {"remove-category", "tool.ini"}, "CATEGORY is required; see cfgctl remove-category --help"},
    UsageRow {"RemoveCategoryOfTwo",  {"remove-category", "tool.ini", "A", "B"}, "not expected: \"B\"; see cfgctl remove-category --help"},
    UsageRow {"UpdateWithoutDefaults", {"update", "tool.ini"}, "DEFAULTFILE is required; see cfgctl update --help"},
    UsageRow {"UpdateFromTwo",        {"update", "tool.ini", "a.inp", "b.inp"}, "not expected: \"b.inp\"; see cfgctl update --help"},
    UsageRow {"ReplaceWithoutNewValues", {"replace", "tool.ini"}, "NEWFILE is required; see cfgctl replace --help"},
    UsageRow {"SqlWithoutADatabase",  {"sql"}, "CONNECTION is required; see cfgctl sql --help"},
    UsageRow {"SqlWithoutAStatement", {"sql", "x.db3"}, "SQL is required; see cfgctl sql --help"},
    UsageRow {"SqlOfTwoStatements",   {"sql", "x.db3", "SELECT 1", "SELECT 2"}, "not expected: \"SELECT 2\"; see cfgctl sql --help"},
    UsageRow {"AMaximumThatIsNoNumber", {"sql", "x.db3", "SELECT 1", "--max", "veel"}, "--max is no whole number that can be used: \"veel\"; pass one such as 7"},
    UsageRow {"AMaximumOutOfRange",   {"sql", "x.db3", "SELECT 1", "--max=2147483648"}, "--max is out of range: \"2147483648\"; pass a whole number from -2147483648 to 2147483647"},
    UsageRow {"TranslateWithoutAFile", {"translate"}, "FILE is required; see cfgctl translate --help"},
    UsageRow {"TranslateWithoutAWord", {"translate", "tool.ini"}, "WORD is required; see cfgctl translate --help"},
    UsageRow {"TranslateOfTwoWords",  {"translate", "tool.ini", "A", "B"}, "not expected: \"B\"; see cfgctl translate --help"},
    UsageRow {"ReplaceInADrawingThatIsNotThere", {"replace", "tool.ini", "tool.ini", "--drawing", "weg.dxf"}, "$/weg.dxf does not exist; pass a DWG or DXF drawing to --drawing"},
    UsageRow {"AnEmptyModuleFolder",  {"where", "tool.ini", "--module-dir", ""}, "--module-dir is empty; pass a folder such as \".\""}),
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
    std::vector<Words> lines {{"--help"}};
    for (const char* name : kCommands) {
        lines.push_back({name, "--help"});
    }
    for (const Words& words : lines) {
        std::istringstream help(run(words).out);
        for (std::string line; std::getline(help, line);) {
            EXPECT_LE(line.size(), 100U) << line;
        }
    }
}

// The words of a command line that a help shows. Those in quotes are one.
Words wordsOf(const std::string& line)
{
    std::istringstream stream(line);
    Words words;
    while (stream >> std::ws && !stream.eof()) {
        std::string word;
        if (stream.peek() == '\'') {
            stream >> std::quoted(word, '\'');
        } else {
            stream >> std::quoted(word);
        }
        words.push_back(word);
    }
    return words;
}

// The lines that stand as examples in a help.
std::vector<std::string> examplesIn(const std::string& help)
{
    std::istringstream lines(help);
    std::vector<std::string> found;
    bool isBehindHeading = false;
    for (std::string line; std::getline(lines, line);) {
        if (isBehindHeading && line.starts_with("  ") && line[2] != ' ') {
            found.push_back(line);
        }
        isBehindHeading = isBehindHeading || line.starts_with("Examples, in the folder ");
    }
    return found;
}

// A copy of the example of its own, with the drawings that the examples name.
class ExampleCopy
{
public:
    ExampleCopy()
    {
        namespace fs = std::filesystem;
        fs::copy(CORMA_EXAMPLES, path(), fs::copy_options::recursive);
        for (const char* drawing : {"plan.dxf", "project/plan.dxf"}) {
            fs::copy_file(path() + "/project/woonhuis.dxf", path() + '/' + drawing);
        }
    }

    std::string path() const { return platform::toNative(m_folder.path(L"copy")); }

private:
    TempFolder m_folder;
};

class CfgctlExamples : public CfgctlHelp, public ::testing::WithParamInterface<const char*>
{
};

TEST_P(CfgctlExamples, WorkInTheFolderThatTheyAreMadeFor)
{
    const std::vector<std::string> examples = examplesIn(run({GetParam(), "--help"}).out);
    EXPECT_FALSE(examples.empty());
    for (const std::string& example : examples) {
        const ExampleCopy copy;
        workIn = copy.path();
        Words words = wordsOf(example);
        if (words.front() == "ACAD=norm") {
            environment["ACAD"] = "norm";
            words.erase(words.begin());
        }
        ASSERT_EQ(words.front(), "cfgctl") << example;
        words.erase(words.begin());
        const ProgramResult result = run(words);
        EXPECT_EQ(result.exitStatus, 0) << example << '\n' << result.err;
        environment["ACAD"] = "";
    }
}

INSTANTIATE_TEST_SUITE_P(Of, CfgctlExamples,
                         ::testing::Values("--help", "get", "find", "levels", "includes", "where",
                                           "record", "model", "rows", "set", "freeze", "apply",
                                           "remove", "remove-category", "update", "replace",
                                           "scramble", "drawing", "block", "attributes", "attdefs",
                                           "attupdate", "attsync", "copy", "erase", "view", "sql",
                                           "translate", "texts"));

// What a command that writes leaves behind, for each of its examples.
struct Effect
{
    const char* command;
    std::size_t example; // its place in the help
    Words lookup;
    const char* value; // that the lookup gives afterwards
};

class CfgctlExampleEffect : public CfgctlHelp, public ::testing::WithParamInterface<Effect>
{
};

TEST_P(CfgctlExampleEffect, IsWhatTheHelpTells)
{
    const auto examples = examplesIn(run({GetParam().command, "--help"}).out);
    ASSERT_LT(GetParam().example, examples.size());
    const ExampleCopy copy;
    workIn = copy.path();
    EXPECT_NE(get(GetParam().lookup), GetParam().value) << "it is so without the command";
    Words words = wordsOf(examples[GetParam().example]);
    words.erase(words.begin());
    run(words);
    EXPECT_EQ(get(GetParam().lookup), GetParam().value) << examples[GetParam().example];
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Of, CfgctlExampleEffect, ::testing::Values(
    Effect {"set", 0, {"plattegrond.ini", "[Trappen]OptredeMax"}, "185"},
    Effect {"set", 1, {"plattegrond.ini", "[Plot]Schaal", "--drawing=plan.dxf"}, "20"},
    Effect {"set", 2, {"plattegrond.ini", "[Trappen]OptredeMax"}, "185"},
    Effect {"set", 3, {"plattegrond.ini", "[Ruimten]Hoogte", "--drawing=plan.dxf"}, "2650"},
    Effect {"set", 5, {"geheim.ini", "[Formules]StapModulusMax", "--scramble=7"}, "640"},
    Effect {"set", 6, {"plattegrond.ini", "Noordhoek"}, "-12.5"},
    Effect {"apply", 0, {"plattegrond.ini", "[Trappen]OptredeMax"}, "185"},
    Effect {"apply", 1, {"plattegrond.ini", "[Plot]Schaal", "--drawing=project/plan.dxf"}, "20"},
    Effect {"apply", 2, {"plattegrond.ini", "[Plot]Schaal"}, "20"},
    Effect {"apply", 3, {"plattegrond.ini", "[Ruimten]Hoogte", "--drawing=plan.dxf"}, "2650"},
    Effect {"remove", 0, {"plattegrond.ini", "[Trappen]OptredeMax"}, "(none)"},
    Effect {"remove", 1, {"plattegrond.ini", "[Plot]Schaal", "--drawing=project/plan.dxf"}, "100"},
    Effect {"remove", 2, {"plattegrond.ini", "[Ruimten]Hoogte", "--drawing=plan.dxf"}, "2600"},
    Effect {"remove-category", 0, {"plattegrond.ini", "[Trappen]Optrede"}, "(none)"},
    Effect {"update", 0, {"plattegrond.ini", "[Zonnepanelen]Vermogen"}, "430"},
    Effect {"update", 0, {"plattegrond.ini", "[Arcering]Leem"}, "00-ARCERING,42,CONTINUOUS,0.09,NK_LEEM,0,40"},
    Effect {"replace", 0, {"plattegrond.ini", "[Trappen]AantredeMin"}, "230"},
    Effect {"replace", 0, {"plattegrond.ini", "[Maatvoering]Afronding"}, "1"}));

// clang-format on

// What a command that reads prints, for an example of its help that tells it.
struct Print
{
    const char* command;
    std::size_t example; // its place in the help
    const char* out;
};

class CfgctlExamplePrint : public CfgctlHelp, public ::testing::WithParamInterface<Print>
{
};

TEST_P(CfgctlExamplePrint, IsWhatTheHelpTells)
{
    const auto examples = examplesIn(run({GetParam().command, "--help"}).out);
    ASSERT_LT(GetParam().example, examples.size());
    workIn = CORMA_EXAMPLES;
    Words words = wordsOf(examples[GetParam().example]);
    words.erase(words.begin());
    EXPECT_EQ(run(words).out, GetParam().out) << examples[GetParam().example];
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Of, CfgctlExamplePrint, ::testing::Values(
    Print {"sql", 0, "Key\tE\tN\nWOOD\tWood\tHout\nCONCRETE\tConcrete\tBeton\nSTEEL\tSteel\tStaal\n"},
    Print {"sql", 1, "Key\nWOOD\nhout\n"},
    Print {"sql", 2, "{\"status\":5100,\"columns\":[{\"name\":\"E\",\"type\":5005,\"values\":[\"Wood\"]}]}\n"},
    Print {"sql", 3, "Key\nCONCRETE\n"},
    Print {"translate", 0, "Wood\n"},
    Print {"translate", 1, "Hout\n"},
    Print {"translate", 2, "HR++\n"}));

// clang-format on

TEST_F(CfgctlHelp, ShowsWhatFreezingDoes)
{
    const auto examples = examplesIn(run({"freeze", "--help"}).out);
    const Words lookups {"[Plot]Schaal", "[Trappen]OptredeMax", "[Plot]StempelTekst"};
    ASSERT_EQ(examples.size(), lookups.size());
    for (std::size_t i = 0; i < examples.size(); ++i) {
        const ExampleCopy copy;
        workIn = copy.path();
        Words words = wordsOf(examples[i]);
        words.erase(words.begin());
        const std::string former = get({"plattegrond.ini", lookups[i], "--drawing=plan.dxf"});
        run(words);
        run({"set", "plattegrond.ini", lookups[i], "7"});
        EXPECT_EQ(get({"plattegrond.ini", lookups[i]}), "7");
        EXPECT_EQ(get({"plattegrond.ini", lookups[i], "--drawing=plan.dxf"}), former);
    }
}

// The commands that a README shows, one after the other as a reader types them.
TEST_F(CfgctlHelp, IsInAccordWithTheReadmes)
{
    for (const char* readme : {"/../../README.md", "/../README.md"}) {
        const auto content = platform::readFile(CORMA_EXAMPLES + std::string(readme));
        ASSERT_TRUE(content.has_value()) << readme;
        const ExampleCopy copy;
        workIn = copy.path();
        std::istringstream lines {std::string(content->view())};
        int commands = 0;
        for (std::string line; std::getline(lines, line);) {
            if (!line.starts_with("    $ cfgctl ")) {
                continue;
            }
            Words words = wordsOf(line.substr(0, line.find(" # ")));
            words.erase(words.begin(), words.begin() + 2);
            const ProgramResult result = run(words);
            EXPECT_EQ(result.exitStatus, 0) << line << '\n' << result.err;
            ++commands;
        }
        EXPECT_GE(commands, 2) << readme;
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
