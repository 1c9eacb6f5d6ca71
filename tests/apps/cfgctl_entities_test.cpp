// cfgctl copy, erase and view: entities, and where the user of a drawing works.

#include "CfgctlTest.h"
#include "DrawingChanges.h"

#include <gmock/gmock.h>

using ::testing::HasSubstr;

namespace corma::testing {

namespace {

class CfgctlEntities : public CfgctlTest
{
protected:
    void SetUp() override { copyDrawing("r2018", "plan.dxf"); }

    // Where a reference stands, as JSON.
    std::string pointOf(const std::string& handle, const std::string& drawing) const
    {
        return Json::parse(json({"attributes", handle, "--drawing", drawing}))["point"].dump();
    }
};

// --- copy ----------------------------------------------------------------------------------------

TEST_F(CfgctlEntities, CopyTellsTheHandlesTheNewestFirst)
{
    const auto document = Json::parse(json({"copy", "78", "5A", "--drawing=plan.dxf"}));
    EXPECT_EQ(document["status"], 5100);
    ASSERT_EQ(document["handles"].size(), 2U);
    const auto references = Json::parse(json({"drawing", "--drawing=plan.dxf"}))["references"];
    std::map<std::string, std::string> blocks;
    for (const auto& reference : references) {
        blocks[reference["handle"]] = reference["block"];
    }
    EXPECT_EQ(blocks[document["handles"][0]], "Plaat");
    EXPECT_EQ(blocks[document["handles"][1]], "BOUT");
}

TEST_F(CfgctlEntities, CopyStandsInLinesForPeople)
{
    const ProgramResult result = run({"copy", "78", "--drawing=plan.dxf", "--save-as=twee.dxf"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.err, "");
    ASSERT_FALSE(result.out.empty());
    const std::string handle = result.out.substr(0, result.out.size() - 1);
    EXPECT_EQ(result.out, handle + "\n");
    EXPECT_EQ(pointOf(handle, "twee.dxf"), pointOf("78", "plan.dxf"));
    EXPECT_EQ(drawingChanges(pathOf("plan.dxf"), pathOf("twee.dxf")), "+ INSERT\n");
}

TEST_F(CfgctlEntities, CopyMovesByAMatrix)
{
    const std::string matrix = "-1,0,0,500, 0,-1,0,250.5, 0,0,1,+7, 0,0,0,1";
    const auto document
        = Json::parse(json({"copy", "5A", "--drawing=plan.dxf", "--matrix", matrix}));
    const auto from = Json::parse(pointOf("5A", "plan.dxf"));
    const auto to = Json::parse(pointOf(document["handles"][0], "plan.dxf"));
    EXPECT_NEAR(to[0].get<double>(), 500 - from[0].get<double>(), 1e-9);
    EXPECT_NEAR(to[1].get<double>(), 250.5 - from[1].get<double>(), 1e-9);
    EXPECT_NEAR(to[2].get<double>(), 7 + from[2].get<double>(), 1e-9);
}

TEST_F(CfgctlEntities, CopyOfAHandleThatIsNotThereFailsAndWritesNothing)
{
    EXPECT_EQ(json({"copy", "FFFF", "--drawing=plan.dxf", "--save-as=twee.dxf"}),
              R"({"status":-5001,"handles":[]})");
    EXPECT_EQ(run({"copy", "FFFF", "--drawing=plan.dxf"}).err,
              "cfgctl: the drawing has no object FFFF\n");
    const ProgramResult result
        = run({"copy", "78", "FFFF", "--drawing=plan.dxf", "--save-as=twee.dxf"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "Error in file xx_copy_ent.cpp on line 70\n(100, ec = 16)\n");
    EXPECT_FALSE(std::filesystem::exists(pathOf("twee.dxf")));
}

// --- erase ---------------------------------------------------------------------------------------

TEST_F(CfgctlEntities, EraseTakesAReferenceWithItsAttributes)
{
    EXPECT_EQ(json({"erase", "78", "--drawing=plan.dxf", "--save-as=twee.dxf"}),
              R"({"status":5100})");
    EXPECT_EQ(drawingChanges(pathOf("plan.dxf"), pathOf("twee.dxf")), "- INSERT\n");
    const ProgramResult result
        = run({"erase", "5C", "5A", "--drawing=plan.dxf", "--save-as=drie.dxf"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out + result.err, "");
    EXPECT_THAT(drawingChanges(pathOf("plan.dxf"), pathOf("drie.dxf")),
                HasSubstr("- INSERT\n- ATTRIB\n"));
}

TEST_F(CfgctlEntities, EraseEndsAtWhatIsNotThere)
{
    const ProgramResult result
        = run({"erase", "78", "FFFF", "5A", "--drawing=plan.dxf", "--save-as=twee.dxf"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.err, "Error in file xx_corma.cpp on line 244\n(0, ec = 0)\n");
    EXPECT_EQ(drawingChanges(pathOf("plan.dxf"), pathOf("twee.dxf")), "- INSERT\n");
}

// --- view ----------------------------------------------------------------------------------------

TEST_F(CfgctlEntities, ViewOfTheModelAndOfAWindowInALayout)
{
    EXPECT_EQ(json({"view", "--drawing=plan.dxf"}),
              R"({"direction":[0.0,0.0,1.0],"space":"*Model_Space","viewport":"B"})");
    copyDrawing("layout_current", "blad.dxf");
    EXPECT_EQ(json({"view", "--drawing=blad.dxf"}),
              R"({"direction":[0.0,0.0,1.0],"space":"*Model_Space","viewport":"82"})");
    run({"erase", "82", "--drawing=blad.dxf"});
    EXPECT_THAT(json({"view", "--drawing=blad.dxf"}), HasSubstr(R"("space":"*Paper_Space")"));
}

TEST_F(CfgctlEntities, ViewStandsInLinesForPeople)
{
    EXPECT_EQ(run({"view", "--drawing=plan.dxf"}).out,
              "direction\t0 0 1\nspace\t*Model_Space\nviewport\tB\n");
}

// --- usage ---------------------------------------------------------------------------------------

struct WrongUse
{
    const char* sentence;
    Words words;
    const std::string message;
};

class CfgctlWrongUseOfEntities : public CfgctlEntities,
                                 public ::testing::WithParamInterface<WrongUse>
{
};

TEST_P(CfgctlWrongUseOfEntities, IsToldInOneLine)
{
    expectWrongUse(GetParam().words, GetParam().message);
}

const std::string kHandleAdvice = "; pass one as the drawing has it, such as 6D";
const std::string kMatrixAdvice
    = "; pass 16 numbers, row by row, such as 1,0,0,5,0,1,0,0,0,0,1,0,0,0,0,1";

// clang-format off
INSTANTIATE_TEST_SUITE_P(Of, CfgctlWrongUseOfEntities, ::testing::Values(
    WrongUse {"ViewNeedsADrawing", {"view"}, kNoDrawing},
    WrongUse {"CopyNeedsADrawing", {"copy", "78"}, kNoDrawing},
    WrongUse {"EraseNeedsADrawing", {"erase", "78"}, kNoDrawing},
    WrongUse {"CopyNeedsAHandle", {"copy", "--drawing=plan.dxf"}, "HANDLES is required; see cfgctl copy --help"},
    WrongUse {"EraseNeedsAHandle", {"erase", "--drawing=plan.dxf"}, "HANDLES is required; see cfgctl erase --help"},
    WrongUse {"AHandleIsHexadecimal", {"erase", "78G", "--drawing=plan.dxf"}, "\"78G\" is no handle" + kHandleAdvice},
    WrongUse {"AHandleIsNotEmpty", {"erase", "", "--drawing=plan.dxf"}, "\"\" is no handle" + kHandleAdvice},
    WrongUse {"AHandleHas16DigitsAtMost", {"erase", "00000000000000078", "--drawing=plan.dxf"}, "\"00000000000000078\" is no handle" + kHandleAdvice},
    WrongUse {"AMatrixHas16Numbers", {"copy", "78", "--drawing=plan.dxf", "--matrix=1,0,0"}, "--matrix has 3 numbers" + kMatrixAdvice},
    WrongUse {"AMatrixHasNumbersOnly", {"copy", "78", "--drawing=plan.dxf", "--matrix=1,x"}, "--matrix has \"x\", which is no number" + kMatrixAdvice},
    WrongUse {"AMatrixHasNoEmptyPlace", {"copy", "78", "--drawing=plan.dxf", "--matrix=1,,0"}, "--matrix has \"\", which is no number" + kMatrixAdvice},
    WrongUse {"AMatrixIsFinite", {"copy", "78", "--drawing=plan.dxf", "--matrix=inf"}, "--matrix has \"inf\", which is no number" + kMatrixAdvice},
    WrongUse {"AMatrixIsAffine", {"copy", "78", "--drawing=plan.dxf", "--matrix=1,0,0,0,0,1,0,0,0,0,1,0,0,0,1,1"}, "--matrix must end in the row 0,0,0,1" + kMatrixAdvice}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

} // namespace

} // namespace corma::testing
