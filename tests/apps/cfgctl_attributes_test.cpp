// cfgctl attributes, attdefs, attupdate and attsync: attributes of block references and of blocks.

#include "CfgctlTest.h"
#include "support/BlockDrawing.h"

#include <gmock/gmock.h>

using ::testing::EndsWith;

namespace corma::testing {

namespace {

class CfgctlAttributes : public CfgctlTest
{
protected:
    // A1 and A3 are out of date, A2 is not, and A4 lost its definition.
    CfgctlAttributes()
    {
        BlockDrawing drawing;
        m_door = drawing.nextRecord();
        drawing.block("DOOR", {{"WOOD", "pine"}, {"MAKER", "Jansen", true}, {"NUMBER", ""}});
        m_gate = drawing.nextRecord();
        drawing.block("Gate", {{"COLOR", "red"}})
            .block("BARE")
            .inModel({"A1",
                      "DOOR",
                      {{"WOOD", "oak"}},
                      "10 3.0\n20 4.5\n30 -5.0\n41 2.0\n42 0.5\n50 180.0\n"})
            .inModel({"A2", "Gate", {{"COLOR", "bl\\U+00E9u"}}})
            .inModel({"A3", "DOOR"})
            .inModel({"A4", "BARE", {{"OLD", "x"}}});
        write("plan.dxf", drawing.bytes());
    }

    void writeBlock(std::string_view name, const DrawnAttributes& definitions) const
    {
        BlockDrawing drawing;
        for (const DrawnAttribute& definition : definitions) {
            drawing.definitionInModel(definition);
        }
        write(name, drawing.bytes());
    }

    // The attributes of a reference, as JSON.
    std::string attributesOf(const std::string& handle, const std::string& drawing) const
    {
        return Json::parse(json({"attributes", handle, "--drawing", drawing}))["attributes"].dump();
    }

    std::string m_door; // handles of the blocks
    std::string m_gate;
};

// --- attributes ----------------------------------------------------------------------------------

TEST_F(CfgctlAttributes, OfAReferenceComeWithItsPoint)
{
    EXPECT_EQ(json({"attributes", "A1", "--drawing=plan.dxf"}),
              R"({"status":5100,"point":[3.0,4.5,-5.0],)"
              R"("attributes":[["WOOD","oak"],["MAKER","Jansen"]]})");
    EXPECT_EQ(json({"attributes", "a4", "--drawing=plan.dxf"}),
              R"({"status":5100,"point":[0.0,0.0,0.0],"attributes":[["OLD","x"]]})");
}

TEST_F(CfgctlAttributes, StandInLinesOfTagAndText)
{
    const ProgramResult result
        = run({"attributes", "A1", "--pseudo=BL_XSCALE,BL_Y*", "--drawing=plan.dxf"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, "WOOD\toak\nMAKER\tJansen\nBL_XSCALE\t2\nBL_YSCALE\t0.5\n");
    EXPECT_EQ(result.err, "");
}

TEST_F(CfgctlAttributes, TakeInTheNumbersOfTheReferenceByAPattern)
{
    EXPECT_EQ(json({"attributes", "A1", "--pseudo", "*", "--drawing=plan.dxf"}),
              R"({"status":5100,"point":[3.0,4.5,-5.0],"attributes":[["WOOD","oak"],)"
              R"(["MAKER","Jansen"],["BL_XSCALE",2.0],["BL_YSCALE",0.5],["BL_ZSCALE",1.0],)"
              R"(["BL_ROTATION",3.141592653589793]]})");
    EXPECT_EQ(json({"attributes", "A2", "--pseudo", "bl_*", "--drawing=plan.dxf"}),
              "{\"status\":5100,\"point\":[0.0,0.0,0.0],"
              "\"attributes\":[[\"COLOR\",\"bl\xC3\xA9u\"]]}");
}

TEST_F(CfgctlAttributes, OfWhatIsNoReferenceAreNone)
{
    for (const std::string& handle : {std::string("FFFF"), m_door}) {
        EXPECT_EQ(json({"attributes", handle, "--drawing=plan.dxf"}),
                  R"({"status":-5001,"point":[0.0,0.0,0.0],"attributes":[]})");
    }
    const ProgramResult result = run({"attributes", "FFFF", "--drawing=plan.dxf"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "Error in file xx_get_bl_attributes.cpp on line 110\n(0, ec = 16)\n");
}

// --- attdefs -------------------------------------------------------------------------------------

TEST_F(CfgctlAttributes, OfADefinitionAreListed)
{
    EXPECT_EQ(json({"attdefs", "door", "--drawing=plan.dxf"}),
              R"({"status":5100,"attributes":[["WOOD","pine"],["MAKER","Jansen"],["NUMBER",""]]})");
    EXPECT_EQ(json({"attdefs", "DOOR", "--constant", "--drawing=plan.dxf"}),
              R"({"status":5100,"attributes":[["MAKER","Jansen"]]})");
    EXPECT_EQ(json({"attdefs", "BARE", "--drawing=plan.dxf"}),
              R"({"status":5100,"attributes":[]})");
    const ProgramResult result = run({"attdefs", "DOOR", "--drawing=plan.dxf"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, "WOOD\tpine\nMAKER\tJansen\nNUMBER\t\n");
    EXPECT_EQ(result.err, "");
}

TEST_F(CfgctlAttributes, OfADefinitionThatIsNotThereAreNone)
{
    EXPECT_EQ(json({"attdefs", "WINDOW", "--drawing=plan.dxf"}),
              R"({"status":-5001,"attributes":[]})");
    const ProgramResult result = run({"attdefs", "WINDOW", "--drawing=plan.dxf"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, "cfgctl: the drawing has no block \"WINDOW\"\n");
}

// --- attupdate of references ---------------------------------------------------------------------

constexpr const char* kFoundReferences
    = R"({"outOfDateRefs":["A1","A3","A4"],"upToDateRefs":["A2"],"outOfDateRecords":[]})";

TEST_F(CfgctlAttributes, ThatAreOutOfDateAreTold)
{
    const std::string before = read("plan.dxf");
    const auto time = timeOf("plan.dxf");
    EXPECT_EQ(json({"attupdate", "--drawing=plan.dxf"}), kFoundReferences);
    EXPECT_EQ(json({"attupdate", "--pattern", "d*,gate", "--drawing=plan.dxf"}),
              R"({"outOfDateRefs":["A1","A3"],"upToDateRefs":["A2"],"outOfDateRecords":[]})");
    const ProgramResult result = run({"attupdate", "--drawing=plan.dxf", "--save-as=nieuw.dxf"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out,
              "outOfDateRefs\tA1\noutOfDateRefs\tA3\noutOfDateRefs\tA4\nupToDateRefs\tA2\n");
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(read("plan.dxf"), before);
    EXPECT_EQ(timeOf("plan.dxf"), time);
    EXPECT_FALSE(folder.has(L"nieuw.dxf"));
}

TEST_F(CfgctlAttributes, ThatAreOutOfDateAreMended)
{
    const std::string before = read("plan.dxf");
    const ProgramResult result
        = run({"attupdate", "--apply", "--json", "--drawing=plan.dxf", "--save-as=nieuw.dxf"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, std::string(kFoundReferences) + '\n');
    EXPECT_EQ(result.err, "Attributes removed successfully.\n");
    EXPECT_EQ(read("plan.dxf"), before);
    EXPECT_EQ(attributesOf("A1", "nieuw.dxf"),
              R"([["WOOD","oak"],["NUMBER",""],["MAKER","Jansen"]])");
    EXPECT_EQ(attributesOf("A3", "nieuw.dxf"),
              R"([["WOOD","pine"],["NUMBER",""],["MAKER","Jansen"]])");
    EXPECT_EQ(attributesOf("A4", "nieuw.dxf"), "[]");
    EXPECT_EQ(json({"attupdate", "--drawing=nieuw.dxf"}),
              R"({"outOfDateRefs":[],"upToDateRefs":["A1","A2","A3","A4"],"outOfDateRecords":[]})");
}

TEST_F(CfgctlAttributes, ThatAreOutOfDateAreMendedForThePatternOnly)
{
    EXPECT_EQ(json({"attupdate", "--apply", "--pattern=BARE", "--drawing=plan.dxf"}),
              R"({"outOfDateRefs":["A4"],"upToDateRefs":[],"outOfDateRecords":[]})");
    EXPECT_EQ(attributesOf("A4", "plan.dxf"), "[]");
    EXPECT_EQ(attributesOf("A3", "plan.dxf"), R"([["MAKER","Jansen"]])");
}

TEST_F(CfgctlAttributes, ThatAreUpToDateLeaveTheDrawingAlone)
{
    const std::string before = read("plan.dxf");
    const auto time = timeOf("plan.dxf");
    EXPECT_EQ(json({"attupdate", "--apply", "--pattern=gate", "--drawing=plan.dxf",
                    "--save-as=nieuw.dxf"}),
              R"({"outOfDateRefs":[],"upToDateRefs":["A2"],"outOfDateRecords":[]})");
    EXPECT_EQ(read("plan.dxf"), before);
    EXPECT_EQ(timeOf("plan.dxf"), time);
    EXPECT_FALSE(folder.has(L"nieuw.dxf"));
}

TEST_F(CfgctlAttributes, AreToldToBeUpToDateWhenThereIsNothingToShow)
{
    for (const bool isApplied : {false, true}) {
        Words words {"attupdate", "--pattern=W*", "--json", "--drawing=plan.dxf"};
        if (isApplied) {
            words.emplace_back("--apply");
        }
        const ProgramResult result = run(words);
        EXPECT_EQ(result.exitStatus, 0);
        EXPECT_EQ(result.out,
                  "{\"outOfDateRefs\":[],\"upToDateRefs\":[],\"outOfDateRecords\":[]}\n");
        EXPECT_EQ(result.err, "Block References (W*) : Attributes up to date.\n");
    }
    const ProgramResult records = run({"attupdate", "--records", "--drawing=plan.dxf"});
    EXPECT_EQ(records.exitStatus, 0);
    EXPECT_EQ(records.out, "");
    EXPECT_EQ(records.err, "Block Tabel Records (*) : Attributes up to date.\n");
}

// --- attupdate of blocks -------------------------------------------------------------------------

TEST_F(CfgctlAttributes, OfBlocksAreComparedWithTheirFiles)
{
    writeBlock("DOOR.DWG", {{"WOOD", "fir"}, {"WIDTH", "9"}});
    writeBlock("GATE.DWG", {{"color", "green"}});
    const std::string before = read("plan.dxf");
    EXPECT_EQ(json({"attupdate", "--records", "--drawing=plan.dxf"}),
              R"({"outOfDateRefs":[],"upToDateRefs":[],"outOfDateRecords":[")" + m_door + R"("]})");
    const ProgramResult result
        = run({"attupdate", "--records", "--pattern=DOOR", "--drawing=plan.dxf"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, "outOfDateRecords\t" + m_door + '\n');
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(read("plan.dxf"), before);
}

TEST_F(CfgctlAttributes, OfBlocksAreLoadedAnewFromTheSupportFolders)
{
    writeBlock("support/DOOR.DWG", {{"WOOD", "fir"}, {"WIDTH", "9"}});
    writeBlock("support/GATE.DWG", {{"SIZE", "2"}});
    environment["ACAD"] = pathOf("support");
    const ProgramResult result
        = run({"attupdate", "--records", "--apply", "--json", "--drawing=plan.dxf"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out,
              R"({"outOfDateRefs":[],"upToDateRefs":[],"outOfDateRecords":[")" + m_door + R"(",")"
                  + m_gate + "\"]}\n");
    EXPECT_EQ(result.err, "DOOR\nGate\n");
    EXPECT_EQ(json({"attdefs", "DOOR", "--drawing=plan.dxf"}),
              R"({"status":5100,"attributes":[["WOOD","fir"],["WIDTH","9"]]})");
    EXPECT_EQ(attributesOf("A1", "plan.dxf"), R"([["WOOD","oak"],["WIDTH","9"]])");
    EXPECT_EQ(attributesOf("A2", "plan.dxf"), R"([["SIZE","2"]])");
    EXPECT_EQ(attributesOf("A3", "plan.dxf"), R"([["WOOD","fir"],["WIDTH","9"]])");
    EXPECT_EQ(json({"attupdate", "--records", "--drawing=plan.dxf"}),
              R"({"outOfDateRefs":[],"upToDateRefs":[],"outOfDateRecords":[]})");
}

TEST_F(CfgctlAttributes, OfBlocksWithFilesThatCannotBeReadAreToldAndPassedOver)
{
    write("DOOR.DWG", "geen tekening\n");
    writeBlock("GATE.DWG", {{"SIZE", "2"}});
    const ProgramResult result = run({"attupdate", "--records", "--drawing=plan.dxf"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, "outOfDateRecords\t" + m_gate + '\n');
    EXPECT_THAT(result.err,
                EndsWith("Error in file xx_atblk.cpp on line 191\n"
                         "(eUnsupportedFileFormat, ec = 301)\n"));
}

TEST_F(CfgctlAttributes, OfBlocksWithFilesThatMayNotBeReadArePassedOverToo)
{
    writeBlock("DOOR.DWG", {{"WIDTH", "9"}});
    writeBlock("GATE.DWG", {{"SIZE", "2"}});
    setMode("DOOR.DWG", 0);
    const ProgramResult result
        = runWithoutPrivilege({"attupdate", "--records", "--apply", "--drawing=plan.dxf"});
    EXPECT_EQ(result.exitStatus, 0);
    EXPECT_EQ(result.out, "outOfDateRecords\t" + m_gate + '\n');
    EXPECT_THAT(result.err,
                EndsWith("Error in file xx_atblk.cpp on line 191\n"
                         "(eFileAccessErr, ec = 301)\nGate\n"));
}

// --- attsync -------------------------------------------------------------------------------------

TEST_F(CfgctlAttributes, AreBroughtToWhatTheBlockDefines)
{
    EXPECT_EQ(json({"attsync", "door", "--drawing=plan.dxf", "--save-as=nieuw.dxf"}),
              R"({"status":5100})");
    EXPECT_EQ(attributesOf("A3", "nieuw.dxf"),
              R"([["WOOD","pine"],["NUMBER",""],["MAKER","Jansen"]])");
    EXPECT_EQ(attributesOf("A2", "nieuw.dxf"), attributesOf("A2", "plan.dxf"));
    EXPECT_EQ(attributesOf("A3", "plan.dxf"), R"([["MAKER","Jansen"]])");

    const std::string before = read("nieuw.dxf");
    const auto time = timeOf("nieuw.dxf");
    const ProgramResult again = run({"attsync", "DOOR", "--drawing=nieuw.dxf"});
    EXPECT_EQ(again.exitStatus, 0);
    EXPECT_EQ(again.out + again.err, "");
    EXPECT_EQ(read("nieuw.dxf"), before);
    EXPECT_EQ(timeOf("nieuw.dxf"), time);
}

TEST_F(CfgctlAttributes, AreNotBroughtAnywhereWithoutABlock)
{
    const std::string before = read("plan.dxf");
    for (const char* const name : {"WINDOW", ""}) {
        const ProgramResult result
            = run({"attsync", name, "--json", "--drawing=plan.dxf", "--save-as=nieuw.dxf"});
        EXPECT_EQ(result.exitStatus, 1);
        EXPECT_EQ(result.out, "{\"status\":-5001}\n");
        EXPECT_EQ(result.err, "ATTSYNC: the drawing has no block \"" + std::string(name) + "\".\n");
    }
    EXPECT_EQ(read("plan.dxf"), before);
    EXPECT_FALSE(folder.has(L"nieuw.dxf"));
}

// --- failures of saving, and wrong usage ---------------------------------------------------------

TEST_F(CfgctlAttributes, ThatCannotBeSavedAreAFailure)
{
    const std::string before = read("plan.dxf");
    const ProgramResult result
        = run({"attsync", "DOOR", "--json", "--drawing=plan.dxf", "--save-as=geen/map.dxf"});
    EXPECT_EQ(result.exitStatus, 1);
    EXPECT_EQ(result.out, "{\"status\":-5001}\n");
    EXPECT_NE(result.err, "");
    EXPECT_EQ(read("plan.dxf"), before);
}

struct AttributesUsageRow
{
    const char* sentence;
    Words arguments;
    const char* message;
};

class CfgctlAttributesUsage : public CfgctlAttributes,
                              public ::testing::WithParamInterface<AttributesUsageRow>
{
};

TEST_P(CfgctlAttributesUsage, IsToldInOneLine)
{
    expectWrongUse(GetParam().arguments, GetParam().message);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(CfgctlAttributes, CfgctlAttributesUsage, ::testing::Values(
    AttributesUsageRow {"AttributesNeedADrawing", {"attributes", "A1"}, kNoDrawing},
    AttributesUsageRow {"AttdefsNeedADrawing", {"attdefs", "DOOR"}, kNoDrawing},
    AttributesUsageRow {"AttupdateNeedsADrawing", {"attupdate"}, kNoDrawing},
    AttributesUsageRow {"AttsyncNeedsADrawing", {"attsync", "DOOR"}, kNoDrawing},
    AttributesUsageRow {"AHandleIsHexadecimal", {"attributes", "XYZ", "--drawing=plan.dxf"}, "\"XYZ\" is no handle; pass one as the drawing has it, such as 6D"},
    AttributesUsageRow {"AHandleIsNotEmpty", {"attributes", "", "--drawing=plan.dxf"}, "\"\" is no handle; pass one as the drawing has it, such as 6D"},
    AttributesUsageRow {"AHandleIsNotLong", {"attributes", "11112222333344445", "--drawing=plan.dxf"}, "\"11112222333344445\" is no handle; pass one as the drawing has it, such as 6D"},
    AttributesUsageRow {"AttributesNeedAHandle", {"attributes", "--drawing=plan.dxf"}, "HANDLE is required; see cfgctl attributes --help"},
    AttributesUsageRow {"AttributesTakeOneHandle", {"attributes", "A1", "A2", "--drawing=plan.dxf"}, "not expected: \"A2\"; see cfgctl attributes --help"},
    AttributesUsageRow {"AttdefsNeedAName", {"attdefs", "--drawing=plan.dxf"}, "NAME is required; see cfgctl attdefs --help"},
    AttributesUsageRow {"AttsyncNeedsAName", {"attsync", "--drawing=plan.dxf"}, "NAME is required; see cfgctl attsync --help"},
    AttributesUsageRow {"AttupdateTakesNoName", {"attupdate", "DOOR", "--drawing=plan.dxf"}, "not expected: \"DOOR\"; see cfgctl attupdate --help"},
    AttributesUsageRow {"APatternNeedsAText", {"attupdate", "--drawing=plan.dxf", "--pattern"}, "--pattern: 1 required P missing; see cfgctl attupdate --help"},
    AttributesUsageRow {"AnOptionOfAnotherCommandIsUnknown", {"attdefs", "DOOR", "--apply", "--drawing=plan.dxf"}, "not expected: \"--apply\"; see cfgctl attdefs --help"},
    AttributesUsageRow {"TheDrawingMustBeThere", {"attsync", "DOOR", "--drawing=geen.dxf"}, "$/geen.dxf does not exist; pass a DWG or DXF drawing to --drawing"}),
    [](const auto& row) { return row.param.sentence; });
// clang-format on

} // namespace

} // namespace corma::testing
