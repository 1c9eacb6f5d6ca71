// cfgdesk as a program of its own: what it does without showing a window.

#include "RunProgram.h"
#include "platform/platform.h"
#include "support/BlockDrawing.h"
#include "support/TempFolder.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

using ::testing::HasSubstr;
using ::testing::StartsWith;

namespace corma::testing {

namespace {

using Words = std::vector<std::string>;

class CfgdeskTest : public ::testing::Test
{
protected:
    CfgdeskTest()
    {
        folder.write(L"tool.ini", "A=1\n");
        folder.write(L"tekst.dxf", "Geen tekening\n");
    }

    // Where no window can be shown.
    [[nodiscard]] ProgramResult run(const Words& arguments) const
    {
        return runProgram(
            {CFGDESK_PROGRAM,
             arguments,
             platform::toNative(folder.path()),
             {{"DISPLAY", ""}, {"WAYLAND_DISPLAY", ""}, {"QT_QPA_PLATFORM", ""}, {"ACAD", ""}},
             ""});
    }

    const TempFolder folder;
};

struct Row
{
    const char* sentence;
    Words arguments;
    const char* message; // behind "cfgdesk: "
};

class CfgdeskUsage : public CfgdeskTest, public ::testing::WithParamInterface<Row>
{
};

TEST_P(CfgdeskUsage, IsToldInOneLine)
{
    const ProgramResult result = run(GetParam().arguments);
    EXPECT_EQ(result.exitStatus, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, std::string("cfgdesk: ") + GetParam().message + "\n");
    EXPECT_EQ(folder.names(), "tekst.dxf tool.ini");
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Wrong, CfgdeskUsage, ::testing::Values(
    Row {"NoFile",                {}, "FILE is required; see cfgdesk --help"},
    Row {"AnEmptyFile",           {""}, "FILE is empty; see cfgdesk --help"},
    Row {"TwoFiles",              {"tool.ini", "b.ini"}, "not expected: \"b.ini\"; see cfgdesk --help"},
    Row {"AnUnknownOption",       {"tool.ini", "--json"}, "not expected: \"--json\"; see cfgdesk --help"},
    Row {"ALineEnd",              {"tool.ini", "a\nb"}, "not expected: \"a b\"; see cfgdesk --help"},
    Row {"NoNumber",              {"tool.ini", "--language", "nl"}, "--language is no whole number that can be used: \"nl\"; pass one such as 7"},
    Row {"ATooLargeAccess",       {"tool.ini", "--access", "32768"}, "--access is out of range: \"32768\"; pass a whole number from -32768 to 32767"},
    Row {"AnEmptyDrawing",        {"tool.ini", "--drawing", ""}, "--drawing is empty; see cfgdesk --help"},
    Row {"AnEmptyProject",        {"tool.ini", "--project", ""}, "--project is empty; see cfgdesk --help"},
    Row {"ProjectAndDrawing",     {"tool.ini", "--drawing", "a.dxf", "--project", "b.ipr"}, "--project cannot go with --drawing, whose project file lies beside it; see cfgdesk --help"},
    Row {"LocalWithoutADrawing",  {"tool.ini", "--local"}, "--local needs a drawing; pass one with --drawing; see cfgdesk --help"},
    Row {"ProjectModeWithoutOne", {"tool.ini", "--project-mode", "--project", "p.ipr"}, "--project-mode needs a drawing, beside which the project lies; pass one with --drawing, or the project with --project; see cfgdesk --help"},
    Row {"CleanWithADrawing",     {"tool.ini", "--clean", "--drawing", "a.dxf"}, "--clean cannot go with --drawing, --project, --local or --project-mode; see cfgdesk --help"},
    Row {"CleanWithAProject",     {"tool.ini", "--clean", "--project", "p.ipr"}, "--clean cannot go with --drawing, --project, --local or --project-mode; see cfgdesk --help"},
    Row {"CleanInLocalMode",      {"tool.ini", "--clean", "--local"}, "--clean cannot go with --drawing, --project, --local or --project-mode; see cfgdesk --help"},
    Row {"CleanInProjectMode",    {"tool.ini", "--clean", "--project-mode"}, "--clean cannot go with --drawing, --project, --local or --project-mode; see cfgdesk --help"},
    Row {"AttributesWithADrawing", {"a.dxf", "--attributes", "--drawing", "a.dxf"}, "--attributes cannot go with --drawing, --project, --local, --project-mode, --clean or --access; FILE is the drawing; see cfgdesk --help"},
    Row {"AttributesWithAProject", {"a.dxf", "--attributes", "--project", "p.ipr"}, "--attributes cannot go with --drawing, --project, --local, --project-mode, --clean or --access; FILE is the drawing; see cfgdesk --help"},
    Row {"AttributesInLocalMode", {"a.dxf", "--attributes", "--local"}, "--attributes cannot go with --drawing, --project, --local, --project-mode, --clean or --access; FILE is the drawing; see cfgdesk --help"},
    Row {"AttributesInProjectMode", {"a.dxf", "--attributes", "--project-mode"}, "--attributes cannot go with --drawing, --project, --local, --project-mode, --clean or --access; FILE is the drawing; see cfgdesk --help"},
    Row {"AttributesClean",       {"a.dxf", "--attributes", "--clean"}, "--attributes cannot go with --drawing, --project, --local, --project-mode, --clean or --access; FILE is the drawing; see cfgdesk --help"},
    Row {"AttributesWithAccess",  {"a.dxf", "--attributes", "--access", "0"}, "--attributes cannot go with --drawing, --project, --local, --project-mode, --clean or --access; FILE is the drawing; see cfgdesk --help"},
    Row {"AttributesWithoutAFile", {"--attributes"}, "FILE is required; see cfgdesk --help"},
    Row {"AttributesOfAnEmptyFile", {"--attributes", ""}, "FILE is empty; see cfgdesk --help"},
    Row {"RecordsWithoutAttributes", {"tool.ini", "--records"}, "--records needs --attributes; see cfgdesk --help"},
    Row {"APatternWithoutAttributes", {"tool.ini", "--pattern", "A*"}, "--pattern needs --attributes; see cfgdesk --help"},
    Row {"AnEmptyPattern",        {"a.dxf", "--attributes", "--pattern", ""}, "--pattern is empty; see cfgdesk --help"}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

TEST_F(CfgdeskTest, ADrawingThatCannotBeReadIsToldInOneLine)
{
    for (const char* const name : {"tekst.dxf", "weg.dxf"}) {
        const ProgramResult result = run({"tool.ini", "--drawing", name});
        EXPECT_EQ(result.exitStatus, 2) << name;
        EXPECT_EQ(result.out, "") << name;
        EXPECT_THAT(result.err, StartsWith("cfgdesk: ")) << name;
        EXPECT_THAT(result.err, HasSubstr(name));
        EXPECT_THAT(result.err, ::testing::EndsWith("; pass a DWG or DXF drawing to --drawing\n"))
            << name;
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
    }
}

TEST_F(CfgdeskTest, AFileWithAttributesMustBeADrawing)
{
    for (const char* const name : {"tekst.dxf", "weg.dxf", "tool.ini"}) {
        const ProgramResult result = run({"--attributes", name});
        EXPECT_EQ(result.exitStatus, 2) << name;
        EXPECT_THAT(result.err, HasSubstr(name));
        EXPECT_THAT(result.err, ::testing::EndsWith("; pass a DWG or DXF drawing\n")) << name;
        EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
    }
}

TEST_F(CfgdeskTest, AttributesThatAreUpToDateAreToldWithoutADisplay)
{
    const std::string plan = BlockDrawing().block("DOOR", {{"WOOD"}}).bytes();
    folder.write(L"plan.dxf", plan);
    const ProgramResult references = run({"--attributes", "plan.dxf"});
    EXPECT_EQ(references.exitStatus, 0);
    EXPECT_EQ(references.out, "");
    EXPECT_EQ(references.err, "Block References (*) : Attributes up to date.\n");
    const ProgramResult records = run({"plan.dxf", "--attributes", "--records", "--pattern", "D*"});
    EXPECT_EQ(records.exitStatus, 0);
    EXPECT_EQ(records.err, "Block Tabel Records (D*) : Attributes up to date.\n");
    EXPECT_EQ(folder.read(L"plan.dxf"), plan);
}

TEST_F(CfgdeskTest, WithoutADisplayNoAttributesChange)
{
    const std::string plan
        = BlockDrawing().block("DOOR", {{"WOOD"}}).inModel({"A1", "DOOR"}).bytes();
    folder.write(L"plan.dxf", plan);
    const ProgramResult result = run({"--attributes", "plan.dxf"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err, StartsWith("The attribute update cannot be shown: "));
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
    EXPECT_EQ(folder.read(L"plan.dxf"), plan);
}

TEST_F(CfgdeskTest, HelpAndVersionNeedNoDisplay)
{
    const ProgramResult version = run({"--version"});
    EXPECT_EQ(version.exitStatus, 0);
    EXPECT_EQ(version.out, "cfgdesk " CFGDESK_VERSION "\n");
    EXPECT_EQ(version.err, "");
    const ProgramResult help = run({"--help"});
    EXPECT_EQ(help.exitStatus, 0);
    EXPECT_EQ(help.err, "");
    for (const char* const option :
         {"--drawing FILE", "--project FILE", "--local", "--project-mode", "--clean",
          "--language N", "--access N", "--attributes", "--records", "--pattern P", "-h,--help",
          "--version"}) {
        EXPECT_THAT(help.out, HasSubstr(option));
    }
}

TEST_F(CfgdeskTest, HelpFitsATerminal)
{
    std::istringstream lines(run({"--help"}).out);
    for (std::string line; std::getline(lines, line);) {
        EXPECT_LE(line.size(), 100U) << line;
    }
}

TEST_F(CfgdeskTest, WithoutADisplayItTellsSoAndChangesNothing)
{
    const ProgramResult result = run({"tool.ini", "--project", "new.ipr"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_THAT(result.err, StartsWith("CfgDesk cannot be shown: "));
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
    EXPECT_EQ(folder.names(), "tekst.dxf tool.ini");
    EXPECT_EQ(folder.read(L"tool.ini"), "A=1\n");
}

TEST_F(CfgdeskTest, WithoutADisplayADrawingStaysAsItIs)
{
    const auto drawing = platform::readFile(std::string(CORMA_TEST_DATA "/r2000.dxf"));
    ASSERT_TRUE(drawing.has_value());
    folder.write(L"plan.dxf", drawing->view());
    const ProgramResult result = run({"tool.ini", "--drawing", "plan.dxf"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(folder.read(L"plan.dxf"), drawing->view());
}

// Run where the help says, they get as far as the display; their files are there.
TEST_F(CfgdeskTest, TheExamplesOfTheHelpAreRight)
{
    std::istringstream lines(run({"--help"}).out);
    int examples = 0;
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with("  cfgdesk ")) {
            continue;
        }
        ++examples;
        std::istringstream words(line);
        std::string word;
        words >> word;
        Words arguments;
        while (words >> word) {
            std::erase(word, '"'); // as a shell does
            arguments.push_back(word);
            if (word.find('.') != std::string::npos) {
                EXPECT_TRUE(std::filesystem::exists(std::string(CORMA_EXAMPLES "/") + word))
                    << line;
            }
        }
        const ProgramResult result
            = runProgram({CFGDESK_PROGRAM,
                          arguments,
                          CORMA_EXAMPLES,
                          {{"DISPLAY", ""}, {"WAYLAND_DISPLAY", ""}, {"QT_QPA_PLATFORM", ""}},
                          ""});
        EXPECT_EQ(result.exitStatus, 1) << line;
        const bool isUpdate = line.find("--attributes") != std::string::npos;
        EXPECT_THAT(result.err,
                    StartsWith(isUpdate ? "The attribute update cannot be shown: "
                                        : "CfgDesk cannot be shown: "))
            << line;
    }
    EXPECT_EQ(examples, 6);
}

// The manual tells each option that the help tells.
TEST_F(CfgdeskTest, TheManualNamesTheOptions)
{
    const auto manual = platform::readFile(std::string(CFGDESK_MANUAL));
    ASSERT_TRUE(manual.has_value());
    for (const char* const option :
         {"\\-\\-drawing", "\\-\\-project", "\\-\\-local", "\\-\\-project\\-mode", "\\-\\-clean",
          "\\-\\-language", "\\-\\-access", "\\-\\-attributes", "\\-\\-records", "\\-\\-pattern",
          "\\-\\-help", "\\-\\-version"}) {
        EXPECT_THAT(std::string(manual->view()), HasSubstr(option));
    }
}

} // namespace

} // namespace corma::testing
