#include "host/commands.h"
#include "host/host.h"
#include "host/variables.h"
#include "support/CloneDrawing.h"
#include "support/RecordingServices.h"

#include <gtest/gtest.h>

namespace corma::host {

namespace {

using corma::testing::CloneDrawing;
using corma::testing::DrawingText;
using corma::testing::RecordingServices;

std::wstring commandNames()
{
    resbuf value {};
    EXPECT_EQ(acedGetVar(L"CMDNAMES", &value), RTNORM);
    const std::wstring names = value.resval.rstring;
    acutDelString(value.resval.rstring);
    return names;
}

constexpr std::string_view kBlocks = R"(
0 BLOCK
5 40
100 AcDbEntity
8 0
100 AcDbBlockBegin
2 DOOR
70 2
10 1.0
20 0.0
30 0.0
3 DOOR
1
0 ATTDEF
5 41
100 AcDbEntity
8 TEXTS
100 AcDbText
10 1.0
20 3.0
30 0.0
40 2.5
1 oak
100 AcDbAttributeDefinition
3 Wood?
2 WOOD
70 0
0 ATTDEF
5 42
100 AcDbEntity
8 0
100 AcDbText
10 1.0
20 5.0
30 0.0
40 2.5
1 fixed
100 AcDbAttributeDefinition
3
2 MAKER
70 2
0 ATTDEF
5 43
100 AcDbEntity
8 0
100 AcDbText
10 1.0
20 7.0
30 0.0
40 2.5
1 1
100 AcDbAttributeDefinition
3 Number?
2 NUMBER
70 1
0 ENDBLK
5 44
100 AcDbEntity
8 0
100 AcDbBlockEnd
0 BLOCK
5 45
100 AcDbEntity
8 0
100 AcDbBlockBegin
2 HOUSE
70 0
10 0.0
20 0.0
30 0.0
3 HOUSE
1
0 INSERT
5 46
100 AcDbEntity
8 0
100 AcDbBlockReference
2 DOOR
10 0.0
20 0.0
30 0.0
0 ENDBLK
5 47
100 AcDbEntity
8 0
100 AcDbBlockEnd)";

// Turned by a right angle and twice as large, with a value, and with an attribute from before.
constexpr std::string_view kEntities = R"(
0 INSERT
5 50
100 AcDbEntity
8 0
100 AcDbBlockReference
66 1
2 door
10 100.0
20 0.0
30 0.0
41 2.0
42 2.0
43 2.0
50 90.0
0 ATTRIB
5 51
330 50
100 AcDbEntity
8 0
100 AcDbText
10 0.0
20 0.0
30 0.0
40 1.0
1 17
100 AcDbAttribute
2 number
70 0
1001 ACAD
1000 kept
0 ATTRIB
5 52
330 50
100 AcDbEntity
8 0
100 AcDbText
10 0.0
20 0.0
30 0.0
40 1.0
1 gone
100 AcDbAttribute
2 OLD
70 0
0 SEQEND
5 53
330 50
100 AcDbEntity
8 0
0 INSERT
5 54
100 AcDbEntity
67 1
8 0
100 AcDbBlockReference
2 DOOR
10 0.0
20 0.0
30 0.0
0 INSERT
5 55
100 AcDbEntity
8 0
100 AcDbBlockReference
2 HOUSE
10 0.0
20 0.0
30 0.0)";

class Commands : public ::testing::Test
{
protected:
    RecordingServices m_services;

    void TearDown() override
    {
        acdbHostApplicationServices()->setWorkingDatabase(nullptr);
        resetVariables();
        EXPECT_EQ(openObjectCount(), 0);
    }

    static int sync(const CloneDrawing& drawing, const wchar_t* block = L"DOOR")
    {
        acdbHostApplicationServices()->setWorkingDatabase(&drawing.database());
        return acedCommandS(RTSTR, L"_ATTSYNC", RTSTR, L"Name", RTSTR, block, RTNONE);
    }
};

TEST_F(Commands, AttSyncGivesAllReferencesWhatTheDefinitionPrescribes)
{
    const CloneDrawing drawing({.blocks = kBlocks, .entities = kEntities});
    ASSERT_EQ(sync(drawing), RTNORM);

    const CloneDrawing saved = drawing.reloaded();
    // The base point (1,0) is at (100,0); 3 up is 6 to the left.
    EXPECT_EQ(saved.model(),
              "INSERT 66=1 2=door 10=100 20=0 30=0 41=2 42=2 43=2 50=90\n"
              "  ATTRIB 8=TEXTS 10=94 20=0 30=0 40=5 1=oak 50=90 2=WOOD 70=0\n"
              "  ATTRIB 10=86 20=0 30=0 40=5 1=17 50=90 2=NUMBER 70=1 1001=ACAD 1000=kept\n"
              "  SEQEND\n"
              "INSERT 2=HOUSE 10=0 20=0 30=0\n");
    EXPECT_EQ(saved.content(L"*Paper_Space"),
              "INSERT 67=1 66=1 2=DOOR 10=0 20=0 30=0\n"
              "  ATTRIB 67=1 8=TEXTS 10=0 20=3 30=0 40=2.5 1=oak 2=WOOD 70=0\n"
              "  ATTRIB 67=1 10=0 20=7 30=0 40=2.5 1=1 2=NUMBER 70=1\n"
              "  SEQEND 67=1\n");
    EXPECT_EQ(saved.content(L"HOUSE"),
              "INSERT 66=1 2=DOOR 10=0 20=0 30=0\n"
              "  ATTRIB 8=TEXTS 10=0 20=3 30=0 40=2.5 1=oak 2=WOOD 70=0\n"
              "  ATTRIB 10=0 20=7 30=0 40=2.5 1=1 2=NUMBER 70=1\n"
              "  SEQEND\n");
    EXPECT_EQ(saved.store().find(Handle {0x51})->type, RecordType::attribute);
    EXPECT_TRUE(m_services.printed.empty());
}

TEST_F(Commands, AttSyncForTheSecondTimeChangesNothing)
{
    const CloneDrawing drawing({.blocks = kBlocks, .entities = kEntities});
    ASSERT_EQ(sync(drawing), RTNORM);
    const CloneDrawing saved = drawing.reloaded();
    const std::string before = saved.bytes();
    ASSERT_EQ(sync(saved), RTNORM);
    EXPECT_FALSE(saved.database().isModified());
    EXPECT_EQ(saved.bytes(), before);
}

TEST_F(Commands, AttSyncTakesTheListAwayWithTheLastDefinition)
{
    const CloneDrawing drawing({.blocks = kBlocks, .entities = kEntities});
    for (const int handle : {0x41, 0x43}) {
        Opened<AcDbEntity>(
            AcDbObjectId(drawing.store().find(Handle {static_cast<unsigned>(handle)})),
            AcDb::kForWrite)
            ->erase();
    }
    ASSERT_EQ(sync(drawing), RTNORM);
    EXPECT_EQ(drawing.reloaded().model(),
              "INSERT 2=door 10=100 20=0 30=0 41=2 42=2 43=2 50=90\n"
              "INSERT 2=HOUSE 10=0 20=0 30=0\n");
}

TEST_F(Commands, AttSyncServesReferencesInRowsAndColumns)
{
    const CloneDrawing drawing({.blocks = kBlocks, .entities = R"(
0 INSERT
5 50
100 AcDbEntity
8 0
100 AcDbMInsertBlock
2 DOOR
10 0.0
20 0.0
30 0.0
70 3
44 10.0)"});
    ASSERT_EQ(sync(drawing), RTNORM);
    EXPECT_EQ(drawing.reloaded().model(),
              "INSERT 66=1 2=DOOR 10=0 20=0 30=0 70=3 44=10\n"
              "  ATTRIB 8=TEXTS 10=0 20=3 30=0 40=2.5 1=oak 2=WOOD 70=0\n"
              "  ATTRIB 10=0 20=7 30=0 40=2.5 1=1 2=NUMBER 70=1\n"
              "  SEQEND\n");
}

TEST_F(Commands, AttSyncServesReferencesThatAreStretchedOrMirrored)
{
    const CloneDrawing drawing({.blocks = kBlocks, .entities = R"(
0 INSERT
5 50
100 AcDbEntity
8 0
100 AcDbBlockReference
2 DOOR
10 1.0
20 0.0
30 0.0
41 3.0
42 2.0
0 INSERT
5 51
100 AcDbEntity
8 0
100 AcDbBlockReference
2 DOOR
10 1.0
20 0.0
30 0.0
41 -1.0)"});
    ASSERT_EQ(sync(drawing), RTNORM);
    // Attributes are stretched by their width, and read backwards in a mirror.
    EXPECT_EQ(drawing.reloaded().model(),
              "INSERT 66=1 2=DOOR 10=1 20=0 30=0 41=3 42=2\n"
              "  ATTRIB 8=TEXTS 10=1 20=6 30=0 40=5 1=oak 41=1.5 2=WOOD 70=0\n"
              "  ATTRIB 10=1 20=14 30=0 40=5 1=1 41=1.5 2=NUMBER 70=1\n"
              "  SEQEND\n"
              "INSERT 66=1 2=DOOR 10=1 20=0 30=0 41=-1\n"
              "  ATTRIB 8=TEXTS 10=1 20=3 30=0 40=2.5 1=oak 71=2 2=WOOD 70=0\n"
              "  ATTRIB 10=1 20=7 30=0 40=2.5 1=1 71=2 2=NUMBER 70=1\n"
              "  SEQEND\n");
}

TEST_F(Commands, AttSyncDoesNothingWhileAReferenceIsOpen)
{
    const CloneDrawing drawing({.blocks = kBlocks, .entities = kEntities});
    for (const unsigned int handle : {0x46U, 0x52U, 0x54U}) {
        const Opened<AcDbObject> open(AcDbObjectId(drawing.store().find(Handle {handle})));
        EXPECT_EQ(sync(drawing), RTERROR);
        EXPECT_FALSE(drawing.database().isModified());
    }
    EXPECT_EQ(m_services.printed.front(),
              L"\nATTSYNC: the references of \"DOOR\" cannot be "
              L"changed (eWasOpenForRead).");
}

struct CallRow
{
    const char* sentence;
    CommandArguments arguments;
    int result;
    const wchar_t* printed;
};

class CommandCall : public Commands, public ::testing::WithParamInterface<CallRow>
{
};

TEST_P(CommandCall, IsAnsweredByItsArguments)
{
    const CloneDrawing drawing({.blocks = kBlocks});
    acdbHostApplicationServices()->setWorkingDatabase(&drawing.database());
    EXPECT_EQ(runCommand(GetParam().arguments), GetParam().result);
    EXPECT_EQ(m_services.allPrinted(), GetParam().printed);
    EXPECT_EQ(commandNames(), L"");
}

constexpr const wchar_t* kUsage = L"\nATTSYNC needs the option \"Name\" and the name of a block.";

// clang-format off
INSTANTIATE_TEST_SUITE_P(Commands, CommandCall, ::testing::Values(
    CallRow {"TheOptionMayBeInCapitals", {L"_ATTSYNC", L"NAME", L"DOOR"}, RTNORM, L""},
    CallRow {"ANameMayBeInSmallLettersAndWithoutAPrefix", {L"attsync", L"name", L"door"}, RTNORM, L""},
    CallRow {"PrefixesMayCombine", {L"_.attsync", L"Name", L"DOOR"}, RTNORM, L""},
    CallRow {"AnUnknownOptionIsAnError", {L"_ATTSYNC", L"Select", L"DOOR"}, RTERROR, kUsage},
    CallRow {"AMissingNameIsAnError", {L"_ATTSYNC", L"Name"}, RTERROR, kUsage},
    CallRow {"ANumberForANameIsAnError", {L"_ATTSYNC", L"Name", 1L}, RTERROR, kUsage},
    CallRow {"ALeftOverArgumentIsAnError", {L"_ATTSYNC", L"Name", L"DOOR", L""}, RTERROR, kUsage},
    CallRow {"AnUnknownBlockIsAnError", {L"_ATTSYNC", L"Name", L"GATE"}, RTERROR, L"\nATTSYNC: the drawing has no block \"GATE\"."},
    CallRow {"AnUnknownCommandIsAnError", {L"_ERASE", L"ALL"}, RTERROR, L"\nUnknown command \"_ERASE\"."},
    CallRow {"APrefixAloneIsAnUnknownCommand", {L"_"}, RTERROR, L"\nUnknown command \"_\"."},
    CallRow {"NothingIsAnError", {}, RTERROR, L"\nThe name of a command was expected."},
    CallRow {"ANumberIsNoCommand", {1.0}, RTERROR, L"\nThe name of a command was expected."},
    CallRow {"AnEnterWhileNothingRunsDoesNothing", {L""}, RTNORM, L""}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

TEST_F(Commands, AnEnterEndsWhatIsRunning)
{
    setVariable(L"CMDNAMES", L"INSERT");
    EXPECT_EQ(acedCommandS(RTSTR, L"", RTNONE), RTNORM);
    EXPECT_EQ(commandNames(), L"");
}

TEST_F(Commands, ReadTextsAndNumbersFromTheCall)
{
    EXPECT_EQ(acedCommandS(RTSTR, L"NOSUCH", RTREAL, 1.5, RTSHORT, 2, RTLONG, 3, RTNONE), RTERROR);
    EXPECT_EQ(acedCommandS(RTSTR, L"NOSUCH", RTPOINT, nullptr, RTNONE), RTERROR);
    EXPECT_EQ(acedCommandS(RTSTR, nullptr, RTNONE), RTERROR);
    EXPECT_EQ(m_services.allPrinted(),
              L"\nUnknown command \"NOSUCH\"."
              L"\nA command takes texts and numbers only."
              L"\nA command takes texts and numbers only.");
}

TEST_F(Commands, NeedADrawing)
{
    EXPECT_EQ(acedCommandS(RTSTR, L"_ATTSYNC", RTSTR, L"NAME", RTSTR, L"DOOR", RTNONE), RTERROR);
    EXPECT_EQ(m_services.allPrinted(), L"\nATTSYNC: there is no drawing.");
}

} // namespace

} // namespace corma::host
