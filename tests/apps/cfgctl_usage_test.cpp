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

class CfgctlUsage : public CfgctlTest, public ::testing::WithParamInterface<Row>
{
protected:
    CfgctlUsage() { write("tool.ini", "X=1\n"); }
};

TEST_P(CfgctlUsage, IsToldInOneLine)
{
    const ProgramResult result = run(GetParam().arguments);
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, std::string("cfgctl: ") + GetParam().message + "\n");
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Wrong, CfgctlUsage, ::testing::Values(
    Row {"NoCommand",            {}, "no command given; the commands are get, find, levels, includes, where, scramble; see cfgctl --help"},
    Row {"AnUnknownCommand",     {"gett"}, "unknown command \"gett\"; the commands are get, find, levels, includes, where, scramble"},
    Row {"AnEmptyCommand",       {""}, "unknown command \"\"; the commands are get, find, levels, includes, where, scramble"},
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
    Row {"ANumberOutOfRange",    {"get", "tool.ini", "X", "--scramble", "2147483648"}, "--scramble is no whole number that can be used: \"2147483648\"; pass one such as 7"},
    Row {"AScrambleNumberThatIsNone", {"find", "tool.ini", "X", "--scramble=7x"}, "--scramble is no whole number that can be used: \"7x\"; pass one such as 7"},
    Row {"ASkipThatIsNoNumber",  {"find", "tool.ini", "X", "--skip", "een"}, "--skip is no whole number that can be used: \"een\"; pass one such as 7"},
    Row {"AKeyThatIsNoNumber",   {"scramble", "tool.ini", "sleutel"}, "KEY is no whole number that can be used: \"sleutel\"; pass one such as 7"},
    Row {"NoKey",                {"scramble", "tool.ini"}, "KEY is required; see cfgctl scramble --help"},
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
    Row {"NoSuchDrawing",        {"get", "tool.ini", "X", "--drawing", "weg.dxf"}, "the drawing \"weg.dxf\" cannot be read; pass an existing file to --drawing"},
    Row {"AFolderForADrawing",   {"levels", "tool.ini", "X", "--drawing", "."}, "the drawing \".\" cannot be read; pass an existing file to --drawing"},
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
        for (const char* name : {"get", "find", "levels", "includes", "where", "scramble"}) {
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
    for (const char* name : {"get", "find", "levels", "includes", "where", "scramble"}) {
        const ProgramResult result = run({name, "--help"});
        EXPECT_EQ(result.exitStatus, 0) << name;
        EXPECT_EQ(result.err, "") << name;
        EXPECT_THAT(result.out, HasSubstr(std::string("Usage: cfgctl ") + name + " [OPTIONS] "));
        EXPECT_THAT(result.out, HasSubstr(std::string("plattegrond:\n  cfgctl ") + name + " "));
        EXPECT_THAT(result.out, HasSubstr("--scramble N")) << name;
    }
}

// What a screen of 100 columns shows without wrapping.
TEST_F(CfgctlHelp, FitsTheScreen)
{
    for (const Words& words : {Words {"--help"}, Words {"get", "--help"}, Words {"find", "--help"},
                               Words {"levels", "--help"}, Words {"scramble", "--help"}}) {
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
          Words {"includes", "plattegrond.ini"}, Words {"where", "plattegrond.ini"}}) {
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
