// Attributes are brought up to date as it is chosen.

#include "AttributeTest.h"
#include "drawing/attribute_update.h"
#include "host/host.h"
#include "host/variables.h"
#include "platform/text.h"
#include "support/CommandRecorder.h"

#include <functional>
#include <gtest/gtest.h>
#include <stdexcept>

using corma::host::Opened;

namespace corma::testing {

namespace {

constexpr const char* kRemoved = "\nAttributes removed successfully.";
constexpr auto kReferences = AttributeUpdateMode::references;
constexpr auto kRecords = AttributeUpdateMode::records;

/// Stands for the dialog: keeps what it is shown, and answers as the test says.
class Chooser : public AttributeUpdateChooser
{
public:
    /// Takes what is out of date as it is.
    Chooser() = default;

    explicit Chooser(std::function<bool(AttributeUpdate&)> answer)
        : m_answer(std::move(answer))
    {
    }

    bool choose(AttributeUpdate& update) override
    {
        ++asked;
        found = update;
        EXPECT_EQ(host::openObjectCount(), 0);
        return m_answer ? m_answer(update) : true;
    }

    int asked = 0;
    AttributeUpdate found;

private:
    std::function<bool(AttributeUpdate&)> m_answer;
};

AcDbObjectIdArray listOf(std::initializer_list<AcDbObjectId> ids)
{
    AcDbObjectIdArray list;
    for (const AcDbObjectId id : ids) {
        list.append(id);
    }
    return list;
}

class UpdateTest : public AttributeTest
{
protected:
    // Both references of DOOR are out of date, that of GATE is not.
    static BlockDrawing doors()
    {
        BlockDrawing drawing;
        drawing.block("DOOR", {{"WOOD", "pine", false, "21"}, {"MAKER", "Jansen", true}})
            .block("GATE", {{"COLOR", "red"}})
            .inModel({"A1", "DOOR"})
            .inModel({"A2", "GATE", {{"COLOR", "blue"}}})
            .inModel({"A3", "DOOR", {{"WOOD", "oak"}, {"OLD", "x"}}});
        return drawing;
    }

    void writeFile(std::wstring_view name, const DrawnAttributes& definitions)
    {
        BlockDrawing drawing;
        for (const DrawnAttribute& definition : definitions) {
            drawing.definitionInModel(definition);
        }
        folder.write(name, drawing.bytes());
    }

    static std::string definitionsOf(const wchar_t* name)
    {
        xx_VarArray definitions;
        EXPECT_EQ(xx_get_attdefs(block(name), definitions), RTNORM);
        return described(definitions);
    }

    static void setEcho(short echo)
    {
        resbuf value {};
        value.restype = RTSHORT;
        value.resval.rint = echo;
        ASSERT_EQ(acedSetVar(L"CMDECHO", &value), RTNORM);
    }

    static int echo()
    {
        resbuf value {};
        EXPECT_EQ(acedGetVar(L"CMDECHO", &value), RTNORM);
        return value.resval.rint;
    }

    CommandRecorder commands;
};

// --- what is shown -------------------------------------------------------------------------------

class ShowAttributeUpdate : public UpdateTest
{
};

TEST_F(ShowAttributeUpdate, ShowsReferencesOutOfDateAndUpToDate)
{
    open(doors());
    Chooser chooser([](AttributeUpdate&) { return false; });
    EXPECT_EQ(updateAttributes(kReferences, nullptr, chooser), RTNORM);
    EXPECT_EQ(chooser.found.mode, kReferences);
    EXPECT_EQ(described(chooser.found.outOfDateRefs), "A1 A3");
    EXPECT_EQ(described(chooser.found.upToDateRefs), "A2");
    EXPECT_EQ(described(chooser.found.outOfDateRecords), "");
}

TEST_F(ShowAttributeUpdate, ShowsReferencesThatAreAllUpToDate)
{
    open(doors());
    Chooser chooser;
    EXPECT_EQ(updateAttributes(kReferences, L"gate", chooser), RTNORM);
    EXPECT_EQ(chooser.asked, 1);
    EXPECT_EQ(described(chooser.found.outOfDateRefs), "");
    EXPECT_EQ(described(chooser.found.upToDateRefs), "A2");
    EXPECT_EQ(commands.sent(), "");
    EXPECT_EQ(printed(), "");
}

TEST_F(ShowAttributeUpdate, ShowsRecordsOutOfDate)
{
    open(doors());
    writeFile(L"DOOR.DWG", {{"WOOD"}});
    writeFile(L"GATE.DWG", {{"COLOR"}});
    Chooser chooser([](AttributeUpdate&) { return false; });
    EXPECT_EQ(updateAttributes(kRecords, nullptr, chooser), RTNORM);
    EXPECT_EQ(chooser.found.mode, kRecords);
    EXPECT_EQ(described(chooser.found.outOfDateRecords), described(listOf({block(L"DOOR")})));
    EXPECT_EQ(described(chooser.found.outOfDateRefs), "");
    EXPECT_EQ(described(chooser.found.upToDateRefs), "");
}

struct NothingRow
{
    const char* sentence;
    AttributeUpdateMode mode;
    const wchar_t* pattern;
    const char* message;
};

class NothingToShow : public UpdateTest, public ::testing::WithParamInterface<NothingRow>
{
};

TEST_P(NothingToShow, IsToldInPlaceOfAQuestion)
{
    BlockDrawing drawing;
    open(drawing.block("DOOR", {{"WOOD"}}));
    Chooser chooser;
    EXPECT_EQ(updateAttributes(GetParam().mode, GetParam().pattern, chooser), RTNORM);
    EXPECT_EQ(chooser.asked, 0);
    EXPECT_EQ(printed(), GetParam().message);
    EXPECT_EQ(commands.sent(), "");
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(AttributeUpdate, NothingToShow, ::testing::Values(
    NothingRow {"ForReferencesOfAnyBlock", kReferences, nullptr, "Block References (*) : Attributes up to date."},
    NothingRow {"ForReferencesOfAPattern", kReferences, L"DO%OR,x*", "Block References (DO%OR,x*) : Attributes up to date."},
    NothingRow {"ForReferencesOfAnEmptyPattern", kReferences, L"", "Block References () : Attributes up to date."},
    NothingRow {"ForAnyRecord", kRecords, nullptr, "Block Tabel Records (*) : Attributes up to date."},
    NothingRow {"ForRecordsOfAPattern", kRecords, L"door", "Block Tabel Records (door) : Attributes up to date."}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

TEST_F(ShowAttributeUpdate, HasNothingToShowWithoutADrawing)
{
    Chooser chooser;
    EXPECT_EQ(updateAttributes(kReferences, nullptr, chooser), RTNORM);
    EXPECT_EQ(updateAttributes(kRecords, nullptr, chooser), RTNORM);
    EXPECT_EQ(chooser.asked, 0);
    EXPECT_EQ(printed(),
              "Block References (*) : Attributes up to date."
              "Block Tabel Records (*) : Attributes up to date.");
}

// --- what is chosen ------------------------------------------------------------------------------

TEST_F(ShowAttributeUpdate, DoesNothingWhenNothingIsWanted)
{
    open(doors());
    for (const bool isAccepted : {false, true}) {
        Chooser chooser([=](AttributeUpdate& update) {
            if (isAccepted) {
                update.outOfDateRefs.removeAll();
            }
            return isAccepted;
        });
        EXPECT_EQ(updateAttributes(kReferences, nullptr, chooser), RTNORM);
    }
    EXPECT_EQ(commands.sent(), "");
    EXPECT_EQ(printed(), "");
    EXPECT_FALSE(isDocumentModified());
}

TEST_F(ShowAttributeUpdate, BringsWhatIsWantedUpToDate)
{
    open(doors());
    Chooser chooser;
    EXPECT_EQ(updateAttributes(kReferences, nullptr, chooser), RTNORM);
    EXPECT_EQ(commands.sent(), "_ATTSYNC|NAME|DOOR\n");
    EXPECT_EQ(attributesOf("A1"), "WOOD=pine");
    EXPECT_EQ(attributesOf("A2"), "COLOR=blue");
    EXPECT_EQ(attributesOf("A3"), "WOOD=oak");
    EXPECT_EQ(printed(), "");
}

TEST_F(ShowAttributeUpdate, TakesOtherReferencesThanThoseOutOfDate)
{
    open(doors());
    Chooser chooser([](AttributeUpdate& update) {
        std::swap(update.outOfDateRefs, update.upToDateRefs);
        return true;
    });
    EXPECT_EQ(updateAttributes(kReferences, nullptr, chooser), RTNORM);
    EXPECT_EQ(commands.sent(), "_ATTSYNC|NAME|GATE\n");
    EXPECT_EQ(attributesOf("A1"), "");
}

TEST_F(ShowAttributeUpdate, LooksAtTheListOfItsModeOnly)
{
    open(doors());
    writeFile(L"DOOR.DWG", {{"WOOD"}});
    Chooser chooser([&](AttributeUpdate& update) {
        update.mode = kReferences;
        update.outOfDateRefs = listOf({id("A2")});
        update.outOfDateRecords.removeAll();
        return true;
    });
    EXPECT_EQ(updateAttributes(kRecords, nullptr, chooser), RTNORM);
    EXPECT_EQ(chooser.asked, 1);
    EXPECT_EQ(commands.sent(), "");
    EXPECT_FALSE(isDocumentModified());
}

TEST_F(ShowAttributeUpdate, BearsADrawingThatTheChooserChanged)
{
    open(doors());
    Chooser chooser([](AttributeUpdate&) {
        erase(id("A1"));
        erase(id("21"));
        return true;
    });
    EXPECT_EQ(updateAttributes(kReferences, nullptr, chooser), RTNORM);
    // A1 is gone; the constant definition is left, so A3 is brought up to that.
    EXPECT_EQ(commands.sent(), "_ATTSYNC|NAME|DOOR\n");
    EXPECT_EQ(attributesOf("A3"), "");
    EXPECT_EQ(printed(), "");
}

TEST_F(ShowAttributeUpdate, LetsNothingOutThatTheChooserThrows)
{
    open(doors());
    Chooser chooser([](AttributeUpdate&) -> bool { throw std::runtime_error("no"); });
    EXPECT_EQ(updateAttributes(kReferences, nullptr, chooser), RTERROR);
    EXPECT_NE(printed(), "");
    EXPECT_EQ(commands.sent(), "");
}

// --- references ----------------------------------------------------------------------------------

class UpdateReferences : public UpdateTest
{
};

TEST_F(UpdateReferences, SendsOneCommandForTenReferencesOfABlock)
{
    BlockDrawing drawing;
    drawing.block("DOOR", {{"WOOD", "pine"}}).block("GATE", {{"COLOR", "red"}});
    for (int i = 0; i < 10; ++i) {
        drawing.inModel({"200" + std::to_string(i), "DOOR"});
    }
    drawing.inModel({"2010", "GATE"}).inModel({"2011", "DOOR"});
    open(drawing);
    Chooser chooser;
    EXPECT_EQ(updateAttributes(kReferences, nullptr, chooser), RTNORM);
    EXPECT_EQ(commands.sent(), "_ATTSYNC|NAME|DOOR\n_ATTSYNC|NAME|GATE\n");
    EXPECT_EQ(attributesOf("2000"), "WOOD=pine");
    EXPECT_EQ(attributesOf("2009"), "WOOD=pine");
    EXPECT_EQ(attributesOf("2011"), "WOOD=pine");
    EXPECT_EQ(attributesOf("2010"), "COLOR=red");
    EXPECT_EQ(described(xx_find_out_of_date_refs(L"*")), "");
}

TEST_F(UpdateReferences, NamesTheBlockAsTheDrawingDoes)
{
    BlockDrawing drawing;
    open(drawing.block("Door no 1", {{"WOOD"}}).inModel({"A1", "DOOR NO 1"}));
    EXPECT_EQ(xx_update_refs(listOf({id("A1")})), RTNORM);
    EXPECT_EQ(commands.sent(), "_ATTSYNC|NAME|Door no 1\n");
}

TEST_F(UpdateReferences, TriesAFailedCommandAgainForTheNextReference)
{
    open(doors());
    // A reference that is open cannot be changed, nor can any other of its block.
    const Opened<AcDbObject> held(id("A1"));
    EXPECT_EQ(xx_update_refs(listOf({id("A1"), id("A3"), id("A2")})), RTNORM);
    EXPECT_EQ(commands.sent(), "_ATTSYNC|NAME|DOOR\n_ATTSYNC|NAME|DOOR\n_ATTSYNC|NAME|GATE\n");
    EXPECT_EQ(attributesOf("A3"), "WOOD=oak OLD=x");
}

TEST_F(UpdateReferences, SendNoMoreOnceACommandHadSuccess)
{
    open(doors().inModel({"A4", "DOOR"}));
    int count = 0;
    commands.instead
        = [&](const host::CommandArguments&) { return ++count == 1 ? RTERROR : RTNORM; };
    EXPECT_EQ(xx_update_refs(listOf({id("A1"), id("A3"), id("A4")})), RTNORM);
    EXPECT_EQ(commands.sent(), "_ATTSYNC|NAME|DOOR\n_ATTSYNC|NAME|DOOR\n");
}

TEST_F(UpdateReferences, GiveTheStatusOfTheLast)
{
    open(doors());
    const Opened<AcDbObject> held(id("A1"));
    EXPECT_EQ(xx_update_refs(listOf({id("A2"), id("A3")})), RTERROR);
    EXPECT_EQ(xx_update_refs({}), RTNORM);
}

TEST_F(UpdateReferences, SendEnterUntilTheCommandIsOver)
{
    open(doors());
    int enters = 0;
    commands.instead = [&](const host::CommandArguments& arguments) {
        const bool isEnter = arguments.size() == 1;
        enters += isEnter ? 1 : 0;
        host::setVariable(L"CMDNAMES", enters == 2 ? L"" : L"ATTSYNC");
        return RTNORM;
    };
    EXPECT_EQ(xx_update_refs(listOf({id("A1")})), RTNORM);
    EXPECT_EQ(commands.sent(), "_ATTSYNC|NAME|DOOR\n\n\n");
}

TEST_F(UpdateReferences, WorkWithoutEchoAndPutItBack)
{
    open(doors());
    for (const short former : std::initializer_list<short> {0, 1, 5}) {
        setEcho(former);
        EXPECT_EQ(xx_update_refs(listOf({id("A1")})), RTNORM);
        EXPECT_EQ(echo(), former);
    }
    // A number in front would tell another echo.
    EXPECT_EQ(commands.sent(), "_ATTSYNC|NAME|DOOR\n_ATTSYNC|NAME|DOOR\n_ATTSYNC|NAME|DOOR\n");
}

TEST_F(UpdateReferences, PutTheEchoBackAfterAFailure)
{
    open(doors());
    setEcho(5);
    commands.instead = [](const host::CommandArguments&) { return RTERROR; };
    EXPECT_EQ(xx_update_refs(listOf({id("A1")})), RTERROR);
    EXPECT_EQ(echo(), 5);
    commands.instead = [](const host::CommandArguments&) -> int { throw std::runtime_error("no"); };
    Chooser chooser;
    EXPECT_EQ(updateAttributes(kReferences, nullptr, chooser), RTERROR);
    EXPECT_EQ(echo(), 5);
}

TEST_F(UpdateReferences, PassOverWhatCannotBeOpened)
{
    open(doors().inModel({"A4", "WINDOW", {{"WOOD", "elm"}}}));
    const Opened<AcDbObject> held(id("A1"), AcDb::kForWrite);
    erase(id("A3"));
    EXPECT_EQ(
        xx_update_refs(listOf({AcDbObjectId(), id("A1"), id("A3"), block(L"DOOR"), id("A4")})),
        RTNORM);
    EXPECT_EQ(commands.sent(), "");
    EXPECT_EQ(attributesOf("A4"), "WOOD=elm");
    EXPECT_EQ(printed(), "");
}

// Whether it has definitions cannot be told then, and what is stripped is lost.
TEST_F(UpdateReferences, KeepTheirAttributesWhileTheBlockCannotBeOpened)
{
    open(doors());
    const Opened<AcDbObject> held(block(L"DOOR"), AcDb::kForWrite);
    EXPECT_EQ(xx_update_refs(listOf({id("A3")})), RTNORM);
    EXPECT_EQ(attributesOf("A3"), "WOOD=oak OLD=x");
    EXPECT_EQ(commands.sent(), "");
    EXPECT_EQ(printed(), "");
}

// --- orphans -------------------------------------------------------------------------------------

class Orphans : public UpdateTest
{
protected:
    static BlockDrawing bare()
    {
        BlockDrawing drawing;
        drawing.block("DOOR")
            .inModel({"A1", "DOOR", {{"WOOD", "oak", false, "31"}, {"OLD", "x", false, "32"}}})
            .inModel({"A2", "DOOR", {{"WOOD", "elm"}}})
            .inModel({"A3", "DOOR", {{"WOOD", "ash"}}})
            .inModel({"A4", "DOOR"});
        return drawing;
    }
};

TEST_F(Orphans, AreRemovedFromEachChosenReferenceWithAMessageEach)
{
    open(bare());
    Chooser chooser([](AttributeUpdate& update) { return update.outOfDateRefs.remove(id("A2")); });
    EXPECT_EQ(updateAttributes(kReferences, nullptr, chooser), RTNORM);
    EXPECT_EQ(described(chooser.found.outOfDateRefs), "A1 A2 A3");
    EXPECT_EQ(attributesOf("A1"), "");
    EXPECT_EQ(attributesOf("A2"), "WOOD=elm");
    EXPECT_EQ(attributesOf("A3"), "");
    EXPECT_EQ(printed(), std::string(kRemoved) + kRemoved);
    EXPECT_EQ(commands.sent(), "");
}

TEST_F(Orphans, AreRemovedWithoutAMessageWhereThereAreNone)
{
    open(bare());
    EXPECT_EQ(xx_update_refs(listOf({id("A4")})), RTNORM);
    EXPECT_EQ(printed(), "");
    EXPECT_FALSE(isDocumentModified());
}

TEST_F(Orphans, AreGoneFromTheFileToo)
{
    open(bare());
    Chooser chooser;
    EXPECT_EQ(updateAttributes(kReferences, nullptr, chooser), RTNORM);
    ASSERT_TRUE(saveDocument());
    const std::string saved = folder.read(L"plan.dxf");
    EXPECT_EQ(saved.find("ATTRIB"), std::string::npos);
    EXPECT_EQ(saved.find("SEQEND"), std::string::npos);
    EXPECT_NE(saved.find("INSERT"), std::string::npos);
}

TEST_F(Orphans, AreRemovedUpToTheFirstThatCannotBeWritten)
{
    open(bare());
    {
        const Opened<AcDbObject> held(id("32"));
        EXPECT_EQ(xx_update_refs(listOf({id("A1")})), RTCAN);
        EXPECT_EQ(printed(), failure("xx_corma", 244, "0", "0"));
        EXPECT_EQ(xx_update_refs(listOf({id("A1"), id("A2")})), RTNORM);
        EXPECT_EQ(printed(), failure("xx_corma", 244, "0", "0") + kRemoved);
    }
    EXPECT_EQ(attributesOf("A1"), "OLD=x");
    EXPECT_EQ(attributesOf("A2"), "");
}

TEST_F(Orphans, StayWhereTheyCannotBeRead)
{
    open(bare());
    {
        const Opened<AcDbObject> held(id("31"), AcDb::kForWrite);
        EXPECT_EQ(xx_update_refs(listOf({id("A1")})), RTNORM);
    }
    EXPECT_EQ(attributesOf("A1"), "WOOD=oak");
    EXPECT_EQ(printed(), kRemoved);
}

TEST_F(Orphans, OfABlockWithConstantsOnlyAreNone)
{
    BlockDrawing drawing;
    drawing.block("DOOR", {{"MAKER", "Jansen", true}}).inModel({"A1", "DOOR", {{"WOOD", "oak"}}});
    open(drawing);
    EXPECT_EQ(xx_update_refs(listOf({id("A1")})), RTNORM);
    EXPECT_EQ(commands.sent(), "_ATTSYNC|NAME|DOOR\n");
    EXPECT_EQ(attributesOf("A1"), "");
    EXPECT_EQ(printed(), "");
}

// --- records -------------------------------------------------------------------------------------

class UpdateRecords : public UpdateTest
{
protected:
    // References in all spaces, of blocks that differ from their files.
    void openPlan()
    {
        BlockDrawing drawing;
        drawing.block("Door", {{"WOOD", "pine"}, {"OLD", "x"}})
            .block("GATE", {{"COLOR", "red"}})
            .block("HOUSE", {}, {{"B1", "DOOR", {{"WOOD", "elm"}, {"OLD", "3"}}}})
            .inModel({"A1", "DOOR", {{"WOOD", "oak"}, {"OLD", "1"}}})
            .inModel({"A2", "GATE", {{"COLOR", "blue"}}})
            .inPaper({"C1", "DOOR", {{"OLD", "2"}}});
        open(drawing);
        writeFile(L"DOOR.DWG", {{"NUMBER", "1"}, {"WOOD", "fir"}});
        writeFile(L"GATE.DWG", {{"WIDTH", "9"}});
    }
};

TEST_F(UpdateRecords, LoadsBlocksAnewAndThenSyncsTheirReferencesInAllSpaces)
{
    openPlan();
    const AcDbObjectId door = block(L"DOOR");
    Chooser chooser;
    EXPECT_EQ(updateAttributes(kRecords, nullptr, chooser), RTNORM);
    EXPECT_EQ(described(chooser.found.outOfDateRecords), described(listOf({door, block(L"GATE")})));
    EXPECT_EQ(commands.sent(), "_ATTSYNC|Name|Door\n_ATTSYNC|Name|GATE\n");
    EXPECT_EQ(printed(), "\nDoor\nGATE");
    EXPECT_EQ(block(L"DOOR"), door);
    EXPECT_EQ(definitionsOf(L"DOOR"), "NUMBER=1 WOOD=fir");
    EXPECT_EQ(attributesOf("A1"), "NUMBER=1 WOOD=oak");
    EXPECT_EQ(attributesOf("A2"), "WIDTH=9");
    EXPECT_EQ(attributesOf("B1"), "NUMBER=1 WOOD=elm");
    EXPECT_EQ(attributesOf("C1"), "NUMBER=1 WOOD=fir");
    EXPECT_EQ(described(xx_find_out_of_date_records(L"*")), "");
    EXPECT_EQ(described(xx_find_out_of_date_refs(L"*")), "");
}

struct LoadedVersionRow
{
    const char* sentence;
    const char* version;
};

// A drawing with the definition WOOD. A file of R12 has neither subclasses nor records of blocks.
std::string fileOf(const std::string& version)
{
    if (version != "AC1009") {
        std::string file = BlockDrawing().definitionInModel({"WOOD", "fir"}).bytes();
        return file.replace(file.find("AC1015"), version.size(), version);
    }
    return "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1009\n0\nENDSEC\n"
           "0\nSECTION\n2\nENTITIES\n0\nATTDEF\n8\n0\n10\n0.0\n20\n0.0\n40\n2.5\n"
           "1\nfir\n3\n\n2\nWOOD\n70\n0\n0\nENDSEC\n0\nEOF\n";
}

class LoadedVersions : public UpdateTest, public ::testing::WithParamInterface<LoadedVersionRow>
{
};

TEST_P(LoadedVersions, BecomeThatOfTheDrawing)
{
    open(doors());
    folder.write(L"DOOR.DWG", fileOf(GetParam().version));
    Chooser chooser;
    EXPECT_EQ(updateAttributes(kRecords, L"DOOR", chooser), RTNORM);
    EXPECT_EQ(printed(), "\nDOOR");
    EXPECT_EQ(attributesOf("A1"), "WOOD=fir");
    EXPECT_EQ(attributesOf("A3"), "WOOD=oak");

    const std::wstring saved = folder.path(L"saved.dxf");
    ASSERT_TRUE(saveDocument(saved.c_str()));
    ASSERT_TRUE(openDocument(saved.c_str()));
    EXPECT_EQ(definitionsOf(L"DOOR"), "WOOD=fir");
    EXPECT_EQ(attributesOf("A1"), "WOOD=fir");
    EXPECT_EQ(attributesOf("A3"), "WOOD=oak");
    EXPECT_EQ(printed(), "");
}

INSTANTIATE_TEST_SUITE_P(
    AttributeUpdate, LoadedVersions,
    ::testing::Values(LoadedVersionRow {"R12", "AC1009"}, LoadedVersionRow {"R13", "AC1012"},
                      LoadedVersionRow {"R14", "AC1014"}, LoadedVersionRow {"R2000", "AC1015"},
                      LoadedVersionRow {"R2007", "AC1021"}, LoadedVersionRow {"R2018", "AC1032"}),
    [](const auto& row) { return row.param.sentence; });

TEST_F(UpdateRecords, LoadsOnlyWhatIsWanted)
{
    openPlan();
    Chooser chooser(
        [](AttributeUpdate& update) { return update.outOfDateRecords.remove(block(L"DOOR")); });
    EXPECT_EQ(updateAttributes(kRecords, nullptr, chooser), RTNORM);
    EXPECT_EQ(commands.sent(), "_ATTSYNC|Name|GATE\n");
    EXPECT_EQ(definitionsOf(L"DOOR"), "WOOD=pine OLD=x");
    EXPECT_EQ(attributesOf("A1"), "WOOD=oak OLD=1");
    EXPECT_EQ(definitionsOf(L"GATE"), "WIDTH=9");
}

TEST_F(UpdateRecords, WorksWithoutEchoAndPutsItBack)
{
    openPlan();
    setEcho(5);
    EXPECT_EQ(xx_update_records(listOf({block(L"DOOR")})), RTNORM);
    EXPECT_EQ(commands.sent(), "_ATTSYNC|Name|Door\n");
    EXPECT_EQ(echo(), 5);
}

TEST_F(UpdateRecords, PutsTheEchoBackAfterAFailureAndGivesTheStatusOfTheLast)
{
    openPlan();
    setEcho(5);
    {
        const Opened<AcDbObject> held(id("B1"));
        EXPECT_EQ(xx_update_records(listOf({block(L"DOOR"), block(L"GATE")})), RTNORM);
        EXPECT_EQ(echo(), 5);
        EXPECT_EQ(xx_update_records(listOf({block(L"GATE"), block(L"DOOR")})), RTERROR);
        EXPECT_EQ(echo(), 5);
    }
    EXPECT_EQ(commands.sent(),
              "_ATTSYNC|Name|Door\n_ATTSYNC|Name|GATE\n_ATTSYNC|Name|GATE\n_ATTSYNC|Name|Door\n");
    EXPECT_EQ(attributesOf("A1"), "WOOD=oak OLD=1");
}

TEST_F(UpdateRecords, SendsNoCommandForABlockThatCouldNotBeLoaded)
{
    openPlan();
    Chooser chooser([this](AttributeUpdate&) {
        folder.remove(L"DOOR.DWG");
        return true;
    });
    EXPECT_EQ(updateAttributes(kRecords, nullptr, chooser), RTNORM);
    EXPECT_EQ(commands.sent(), "_ATTSYNC|Name|GATE\n");
    EXPECT_EQ(definitionsOf(L"DOOR"), "WOOD=pine OLD=x");
    EXPECT_EQ(services.alerts, std::vector<std::wstring> {L"Block Door not found"});
}

TEST_F(UpdateRecords, EndsWithTheStatusOfTheLoadingWhenNothingWasLoaded)
{
    openPlan();
    setEcho(5);
    folder.remove(L"GATE.DWG");
    EXPECT_EQ(xx_update_records(listOf({block(L"GATE")})), RTERROR);
    folder.write(L"DOOR.DWG", "no drawing");
    EXPECT_EQ(xx_update_records(listOf({block(L"DOOR")})), RTCAN);
    EXPECT_TRUE(printed().ends_with(failure("xx_findblk", 137, "eUnsupportedFileFormat", "300")));
    EXPECT_EQ(xx_update_records({}), RTNORM);
    EXPECT_EQ(commands.sent(), "");
    EXPECT_EQ(echo(), 5);
}

TEST_F(UpdateRecords, PassesOverWhatCannotBeOpened)
{
    openPlan();
    const AcDbObjectId gate = block(L"GATE");
    erase(gate);
    const Opened<AcDbObject> held(block(L"DOOR"), AcDb::kForWrite);
    EXPECT_EQ(xx_update_records(listOf({AcDbObjectId(), id("A1"), gate, held->objectId()})),
              RTNORM);
    EXPECT_EQ(commands.sent(), "");
}

// --- one block -----------------------------------------------------------------------------------

class SyncAttributes : public UpdateTest
{
};

TEST_F(SyncAttributes, SendsTheCommandForABlock)
{
    open(doors());
    setEcho(0);
    EXPECT_EQ(xx_sync_attributes(L"door"), RTNORM);
    EXPECT_EQ(commands.sent(), "_ATTSYNC|NAME|door\n");
    EXPECT_EQ(attributesOf("A1"), "WOOD=pine");
    EXPECT_EQ(attributesOf("A3"), "WOOD=oak");
    EXPECT_EQ(printed(), "");
}

TEST_F(SyncAttributes, FailsWithAMessage)
{
    EXPECT_EQ(xx_sync_attributes(L"DOOR"), RTERROR);
    EXPECT_NE(printed(), "");
    open(doors());
    for (const wchar_t* const name : {L"WINDOW", L"", static_cast<const wchar_t*>(nullptr)}) {
        EXPECT_EQ(xx_sync_attributes(name), RTERROR);
        EXPECT_NE(printed(), "");
    }
    const Opened<AcDbObject> held(id("A1"));
    EXPECT_EQ(xx_sync_attributes(L"DOOR"), RTERROR);
    EXPECT_NE(printed(), "");
    EXPECT_FALSE(isDocumentModified());
}

TEST_F(SyncAttributes, LetsNothingOut)
{
    open(doors());
    commands.instead = [](const host::CommandArguments&) -> int { throw std::runtime_error("no"); };
    EXPECT_EQ(xx_sync_attributes(L"DOOR"), RTERROR);
    EXPECT_NE(printed(), "");
}

} // namespace

} // namespace corma::testing
