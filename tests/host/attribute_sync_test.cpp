#include "host/attribute_sync.h"
#include "host/host.h"
#include "platform/text.h"
#include "support/CloneDrawing.h"
#include "support/DxfDrawing.h"
#include "support/OpenObjects.h"
#include "support/RecordingServices.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>
#include <sstream>
#include <vector>

namespace corma::host {

namespace {

using corma::toUtf8;
using corma::testing::binaryDxf;
using corma::testing::CloneDrawing;
using corma::testing::DrawingText;
using corma::testing::dxfText;
using corma::testing::RecordingServices;
using corma::testing::TempFolder;

// --- drawings out of parts -----------------------------------------------------------------------

/// Lines of a code and a value out of "40=2.5 1=oak"; an underscore stands for a blank.
std::string lines(std::string_view groups)
{
    std::string text;
    std::istringstream words {std::string(groups)};
    for (std::string word; words >> word;) {
        word[word.find('=')] = ' ';
        std::replace(word.begin(), word.end(), '_', ' ');
        text += word + "\n";
    }
    return text;
}

std::string block(std::string_view name, std::string_view base, std::string_view content)
{
    return "0 BLOCK\n5 A0\n100 AcDbEntity\n8 0\n100 AcDbBlockBegin\n2 " + std::string(name)
        + "\n70 2\n" + lines(base) + "3 " + std::string(name) + "\n" + std::string(content)
        + "0 ENDBLK\n5 AF\n100 AcDbEntity\n8 0\n100 AcDbBlockEnd\n";
}

std::string entity(std::string_view type, std::string_view handle)
{
    return "0 " + std::string(type) + "\n5 " + std::string(handle) + "\n";
}

std::string entityEnd(std::string_view owner)
{
    return "0 SEQEND\n5 5F\n330 " + std::string(owner) + "\n100 AcDbEntity\n8 0\n";
}

// R12 has neither markers nor owners.
std::string withoutMarkers(const std::string& text)
{
    std::string kept;
    std::istringstream all(text);
    for (std::string line; std::getline(all, line);) {
        if (!line.starts_with("100 ") && !line.starts_with("330 ")) {
            kept += line + "\n";
        }
    }
    return kept;
}

/// One definition with a tag A and the groups given.
std::string definition(std::string_view text, std::string_view own = {},
                       std::string_view common = "8=0")
{
    return entity("ATTDEF", "A1") + "100 AcDbEntity\n" + lines(common) + "100 AcDbText\n"
        + lines(text) + "100 AcDbAttributeDefinition\n3 Which?\n2 A\n"
        + lines(own.empty() ? "70=0" : own);
}

std::string reference(std::string_view groups)
{
    return entity("INSERT", "50") + "100 AcDbEntity\n8 0\n100 AcDbBlockReference\n2 B\n"
        + lines(groups);
}

class AttributeSync : public corma::testing::OpenObjects
{
protected:
    RecordingServices m_services;

    static int sync(const CloneDrawing& drawing, const wchar_t* name = L"B")
    {
        return syncAttributes(&drawing.database(), name);
    }

    /// What the saved drawing has after a run; a run over that leaves it byte for byte.
    static CloneDrawing synced(const CloneDrawing& drawing)
    {
        EXPECT_EQ(sync(drawing), RTNORM);
        CloneDrawing saved = drawing.reloaded();
        const std::string bytes = saved.bytes();
        EXPECT_EQ(sync(saved), RTNORM);
        EXPECT_FALSE(saved.database().isModified()) << "the second run changes something";
        EXPECT_EQ(saved.bytes(), bytes);
        return saved;
    }

    void TearDown() override
    {
        EXPECT_EQ(m_services.allPrinted(), L"");
        OpenObjects::TearDown();
    }
};

// --- the place of one attribute ------------------------------------------------------------------

struct PlaceRow
{
    const char* sentence;
    const char* definition; // groups of its text
    const char* own; // those behind its tag; nothing for flags 0
    const char* reference; // its groups
    const char* attribute; // as described
    const char* base = "10=0 20=0 30=0";
};

class AttributePlace : public AttributeSync, public ::testing::WithParamInterface<PlaceRow>
{
};

TEST_P(AttributePlace, FollowsItsDefinitionAndItsReference)
{
    const PlaceRow& row = GetParam();
    const std::string blocks = block("B", row.base, definition(row.definition, row.own));
    const std::string entities = reference(row.reference);
    const CloneDrawing drawing({.blocks = blocks, .entities = entities});
    const std::string model = synced(drawing).model();
    const std::size_t begin = model.find("  ATTRIB ");
    ASSERT_NE(begin, std::string::npos) << model;
    EXPECT_EQ(model.substr(begin + 9, model.find('\n', begin) - begin - 9), row.attribute);
}

// A left-aligned text at (1, 3) above the block's origin; "at" is a reference at (100, 0).
#define CORMA_LEFT "10=1 20=3 30=0 40=2.5 1=a"
#define CORMA_AT "10=100 20=0 30=0"

// clang-format off
INSTANTIATE_TEST_SUITE_P(AttributeSync, AttributePlace, ::testing::Values(
    PlaceRow {"IsMovedByThePosition", CORMA_LEFT, "", CORMA_AT,
              "10=101 20=3 30=0 40=2.5 1=a 2=A 70=0"},
    PlaceRow {"IsTakenFromTheBasePoint", CORMA_LEFT, "", CORMA_AT,
              "10=91 20=1 30=-5 40=2.5 1=a 2=A 70=0", "10=10 20=2 30=5"},
    PlaceRow {"IsScaledAndTurned", CORMA_LEFT, "", CORMA_AT " 41=2 42=2 43=2 50=90",
              "10=94 20=2 30=0 40=5 1=a 50=90 2=A 70=0"},
    PlaceRow {"AddsItsOwnAngleToThatOfTheReference", CORMA_LEFT " 50=300", "", CORMA_AT " 50=90",
              "10=97 20=1 30=0 40=2.5 1=a 50=30 2=A 70=0"},
    PlaceRow {"IsStretchedByItsWidth", CORMA_LEFT " 41=0.8", "", CORMA_AT " 41=3 42=2",
              "10=103 20=6 30=0 40=5 1=a 41=1.2 2=A 70=0"},
    PlaceRow {"StandsUprightWhenItStandsAtRightAnglesInAStretchedReference", CORMA_LEFT " 50=90", "",
              CORMA_AT " 41=3 42=2", "10=103 20=6 30=0 40=7.5 1=a 50=90 41=0.666667 2=A 70=0"},
    PlaceRow {"ReadsBackwardsInAMirror", CORMA_LEFT, "", CORMA_AT " 41=-1",
              "10=99 20=3 30=0 40=2.5 1=a 71=2 2=A 70=0"},
    PlaceRow {"ReadsUpsideDownInAMirrorOfHeights", CORMA_LEFT, "", CORMA_AT " 42=-1",
              "10=101 20=-3 30=0 40=2.5 1=a 50=180 71=2 2=A 70=0"},
    PlaceRow {"IsTurnedHalfWayWhenBothScalesAreNegative", CORMA_LEFT, "", CORMA_AT " 41=-2 42=-2 43=2",
              "10=98 20=-6 30=0 40=5 1=a 50=180 2=A 70=0"},
    PlaceRow {"IsAtItsHeight", "10=1 20=3 30=4 40=2.5 1=a", "", "10=0 20=0 30=1 43=3",
              "10=1 20=3 30=13 40=2.5 1=a 2=A 70=0"},
    PlaceRow {"LiesInThePlaneOfAReferenceFromBelow", CORMA_LEFT, "",
              "10=100 20=0 30=2 50=90 210=0 220=0 230=-1",
              "10=97 20=1 30=2 40=2.5 1=a 50=90 210=0 220=0 230=-1 2=A 70=0"},
    PlaceRow {"LiesInAnUprightPlane", CORMA_LEFT, "", "10=100 20=0 30=2 41=2 42=2 43=2 210=0 220=1 230=0",
              "10=102 20=6 30=2 40=5 1=a 210=0 220=1 230=0 2=A 70=0"},
    PlaceRow {"LiesInAnObliquePlane", CORMA_LEFT, "", "10=100 20=0 30=2 50=90 210=0.6 220=0 230=0.8",
              "10=97 20=1 30=2 40=2.5 1=a 50=90 210=0.6 220=0 230=0.8 2=A 70=0"},
    PlaceRow {"IsSeenFromBelowWhereItsDefinitionIs", "10=-1 20=3 30=0 40=2.5 1=a 210=0 220=0 230=-1", "",
              CORMA_AT " 50=90", "10=-97 20=1 30=0 40=2.5 1=a 210=0 220=0 230=-1 50=270 2=A 70=0"},
    PlaceRow {"IsSeenFromAboveWhereBothAreFromBelow", "10=-1 20=3 30=0 40=2.5 1=a 210=0 220=0 230=-1", "",
              "10=-100 20=0 30=0 210=0 220=0 230=-1",
              "10=99 20=3 30=0 40=2.5 1=a 210=0 220=0 230=1 2=A 70=0"},
    PlaceRow {"TakesAScaleOfZeroForOne", CORMA_LEFT, "", CORMA_AT " 41=0 42=2 43=0",
              "10=101 20=6 30=0 40=5 1=a 41=0.5 2=A 70=0"},
    PlaceRow {"KeepsTheMiddleOfCentredText", CORMA_LEFT " 72=1 11=2 21=3 31=0", "", CORMA_AT " 41=2 42=2 43=2",
              "10=102 20=6 30=0 40=5 1=a 72=1 11=104 21=6 31=0 2=A 70=0"},
    PlaceRow {"KeepsTheCornerOfTextThatHangs", CORMA_LEFT " 72=2 11=2 21=3 31=0", "70=0 74=3", CORMA_AT " 50=90",
              "10=97 20=1 30=0 40=2.5 1=a 72=2 11=97 21=2 31=0 50=90 2=A 70=0 74=3"},
    PlaceRow {"KeepsTheMiddlePoint", CORMA_LEFT " 72=4 11=2 21=4 31=0", "", CORMA_AT " 41=-1",
              "10=99 20=3 30=0 40=2.5 1=a 72=4 11=98 21=4 31=0 71=2 2=A 70=0"},
    PlaceRow {"KeepsBothEndsOfAlignedText", CORMA_LEFT " 72=3 11=5 21=3 31=0", "", CORMA_AT " 41=2 42=2 43=2",
              "10=102 20=6 30=0 40=5 1=a 72=3 11=110 21=6 31=0 2=A 70=0"},
    PlaceRow {"KeepsBothEndsOfFittedText", CORMA_LEFT " 72=5 11=5 21=3 31=0", "", CORMA_AT " 41=2",
              "10=102 20=3 30=0 40=2.5 1=a 72=5 11=110 21=3 31=0 41=2 2=A 70=0"},
    PlaceRow {"LeavesASecondPointWithoutMeaning", CORMA_LEFT " 11=0 21=0 31=0", "", CORMA_AT,
              "10=101 20=3 30=0 40=2.5 1=a 11=0 21=0 31=0 2=A 70=0"},
    PlaceRow {"HasTheLetteringOfItsDefinition", CORMA_LEFT " 7=Narrow 41=0.8 51=15 71=4", "", CORMA_AT,
              "10=101 20=3 30=0 40=2.5 1=a 7=Narrow 41=0.8 51=15 71=4 2=A 70=0"},
    PlaceRow {"IsInvisibleAndPresetLikeItsDefinition", CORMA_LEFT, "70=9 73=0", CORMA_AT,
              "10=101 20=3 30=0 40=2.5 1=a 2=A 70=9 73=0"},
    PlaceRow {"KeepsAnEmptyText", "10=1 20=3 30=0 40=2.5 1=", "", CORMA_AT,
              "10=101 20=3 30=0 40=2.5 1= 2=A 70=0"}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

TEST_F(AttributeSync, TakesLayerColourAndLineFromTheDefinition)
{
    const std::string common = "6=Dashed 8=Texts 62=3 370=25 48=2";
    const std::string blocks = block("B", "10=0 20=0 30=0", definition(CORMA_LEFT, "", common));
    const std::string entities = entity("INSERT", "50")
        + "100 AcDbEntity\n8 Doors\n62 1\n100 AcDbBlockReference\n66 1\n2 B\n"
        + lines("10=0 20=0 30=0") + entity("ATTRIB", "51")
        + "330 50\n100 AcDbEntity\n8 Old\n62 5\n100 AcDbText\n"
        + lines("10=9 20=9 30=0 40=1 1=kept") + "100 AcDbAttribute\n2 A\n70 1\n" + entityEnd("50");
    const CloneDrawing drawing({.blocks = blocks, .entities = entities});
    EXPECT_EQ(synced(drawing).model(),
              "INSERT 8=Doors 62=1 66=1 2=B 10=0 20=0 30=0\n"
              "  ATTRIB 6=Dashed 8=Texts 62=3 370=25 48=2 10=1 20=3 30=0 40=2.5 1=kept 2=A 70=0\n"
              "  SEQEND\n");
}

// --- which attributes there are ------------------------------------------------------------------

/// Definitions or attributes out of "A=a B=b"; an exclamation mark makes a definition constant.
std::string texts(std::string_view type, std::string_view pairs, const std::string& owner = {})
{
    std::string all;
    std::istringstream words {std::string(pairs)};
    int number = 0;
    for (std::string word; words >> word; ++number) {
        const bool isConstant = word.front() == '!';
        const std::size_t equal = word.find('=');
        const std::string tag = word.substr(isConstant ? 1 : 0, equal - (isConstant ? 1 : 0));
        const bool isDefinition = type == "ATTDEF";
        all += entity(type, (isDefinition ? "A" : owner) + std::to_string(number + 1))
            + (isDefinition ? "" : "330 " + owner + "\n") + "100 AcDbEntity\n8 0\n100 AcDbText\n"
            + lines("10=0 20=0 30=0 40=1") + "1 " + word.substr(equal + 1) + "\n"
            + (isDefinition ? "100 AcDbAttributeDefinition\n3 " + tag + "?" : "100 AcDbAttribute")
            + "\n2 ";
        all += tag;
        all += isConstant ? "\n70 2\n" : "\n70 0\n";
    }
    return all;
}

std::string referenceWith(const std::string& attributes, const std::string& handle)
{
    const bool hasAny = !attributes.empty();
    return entity("INSERT", handle) + "100 AcDbEntity\n8 0\n100 AcDbBlockReference\n"
        + (hasAny ? "66 1\n" : "") + "2 B\n" + lines("10=0 20=0 30=0")
        + (hasAny ? texts("ATTRIB", attributes, handle) + entity("SEQEND", handle + "F") + "330 "
                   + handle + "\n100 AcDbEntity\n8 0\n"
                  : "");
}

/// The attributes of all references in model space: "A=a B=b." each, with a point for SEQEND and a
/// plus for the flag that announces them.
std::string attributesOf(const CloneDrawing& drawing)
{
    std::string all;
    std::istringstream rows {drawing.model()};
    for (std::string row; std::getline(rows, row);) {
        const auto value = [&](const std::string& code) {
            const std::size_t begin = row.find(" " + code + "=");
            if (begin == std::string::npos) {
                return std::string();
            }
            const std::size_t from = begin + code.size() + 2;
            return row.substr(from, row.find(' ', from) - from);
        };
        if (row.starts_with("INSERT")) {
            all += (all.empty() ? "" : " / ") + std::string(value("66") == "1" ? "+" : "-");
        } else if (row.starts_with("  ATTRIB")) {
            all += " " + value("2") + "=" + value("1");
        } else {
            all += ".";
        }
    }
    return all;
}

struct MembersRow
{
    const char* sentence;
    const char* definitions;
    std::vector<const char*> references; // the attributes of each
    const char* result;
};

class AttributeMembers : public AttributeSync, public ::testing::WithParamInterface<MembersRow>
{
};

TEST_P(AttributeMembers, AreThoseOfTheDefinition)
{
    const MembersRow& row = GetParam();
    const std::string blocks = block("B", "10=0 20=0 30=0", texts("ATTDEF", row.definitions));
    std::string entities;
    int handle = 0x50;
    for (const char* const attributes : row.references) {
        entities += referenceWith(attributes, toUtf8(toText(Handle(handle))));
        ++handle;
    }
    // R12 as it is, and as a writer leaves it that mixes the versions.
    for (const char* const version : {"AC1009", "AC1015", "AC1032"}) {
        const CloneDrawing drawing({.version = version, .blocks = blocks, .entities = entities});
        EXPECT_EQ(attributesOf(synced(drawing)), row.result) << version;
    }
    const std::string plainBlocks = withoutMarkers(blocks);
    const std::string plainEntities = withoutMarkers(entities);
    const CloneDrawing plain(
        {.version = "AC1009", .blocks = plainBlocks, .entities = plainEntities});
    EXPECT_EQ(attributesOf(synced(plain)), row.result);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(AttributeSync, AttributeMembers, ::testing::Values(
    MembersRow {"MissingOnesAppearInTheirPlace", "A=a B=b C=c", {"A=1 C=3"}, "+ A=1 B=b C=3."},
    MembersRow {"AllAppearWhereThereAreNone", "A=a B=b", {"", "A=1", "B=2"}, "+ A=a B=b. / + A=1 B=b. / + A=a B=2."},
    MembersRow {"RemovedOnesGo", "B=b", {"A=1 B=2 C=3"}, "+ B=2."},
    MembersRow {"AllGoWithTheLastDefinition", "", {"A=1", "", "B=1 C=1"}, "- / - / -"},
    MembersRow {"TheOrderIsThatOfTheDefinition", "A=a B=b C=c", {"C=3 B=2 A=1"}, "+ A=1 B=2 C=3."},
    MembersRow {"EmptyTextsStay", "A=a", {"A="}, "+ A=."},
    MembersRow {"TagsDifferInCase", "Aa=a bB=b", {"BB=2 aA=1"}, "+ Aa=1 bB=2."},
    MembersRow {"ConstantOnesAreInTheDefinitionOnly", "A=a !B=b", {"", "A=1"}, "+ A=a. / + A=1."},
    MembersRow {"OneThatBecameConstantGoes", "A=a !B=b", {"A=1 B=2"}, "+ A=1."},
    MembersRow {"TheListGoesWhenAllBecameConstant", "!A=a !B=b", {"A=1 B=2", ""}, "- / -"},
    MembersRow {"OneThatIsNoLongerConstantAppears", "A=a B=b", {"A=1"}, "+ A=1 B=b."},
    MembersRow {"DuplicatesAreServedInOrder", "A=a A=b A=c", {"A=1 A=2"}, "+ A=1 A=2 A=c."},
    MembersRow {"DuplicatesTooManyGo", "A=a B=b", {"A=1 B=2 A=3 B=4"}, "+ A=1 B=2."},
    MembersRow {"ADuplicateThatIsConstantTakesNone", "!A=a A=b", {"A=1"}, "+ A=1."},
    MembersRow {"ATagIsNoBeginningOfAnother", "AB=a", {"A=1 ABC=2"}, "+ AB=a."},
    MembersRow {"NothingHappensWithoutAny", "", {""}, "-"}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

TEST_F(AttributeSync, ServesReferencesInAllSpacesAndBlocksAndForms)
{
    const std::string blocks = block("B", "10=0 20=0 30=0", texts("ATTDEF", "A=a"))
        + "0 BLOCK\n5 B0\n100 AcDbEntity\n8 0\n100 AcDbBlockBegin\n2 OUTER\n70 0\n"
        + lines("10=0 20=0 30=0") + "3 OUTER\n" + referenceWith("", "B1")
        + "0 ENDBLK\n5 B2\n100 AcDbEntity\n8 0\n100 AcDbBlockEnd\n";
    const std::string entities = referenceWith("", "50") + entity("INSERT", "51")
        + "100 AcDbEntity\n67 1\n8 0\n100 AcDbBlockReference\n2 b\n" + lines("10=0 20=0 30=0")
        + entity("INSERT", "52") + "100 AcDbEntity\n8 0\n100 AcDbMInsertBlock\n2 B\n"
        + lines("10=0 20=0 30=0 70=3 71=2 44=10 45=20");
    const CloneDrawing drawing({.blocks = blocks, .entities = entities});
    const CloneDrawing saved = synced(drawing);
    EXPECT_EQ(saved.model(),
              "INSERT 66=1 2=B 10=0 20=0 30=0\n  ATTRIB 10=0 20=0 30=0 40=1 1=a 2=A 70=0\n"
              "  SEQEND\n"
              "INSERT 66=1 2=B 10=0 20=0 30=0 70=3 71=2 44=10 45=20\n"
              "  ATTRIB 10=0 20=0 30=0 40=1 1=a 2=A 70=0\n  SEQEND\n");
    EXPECT_EQ(saved.content(L"*Paper_Space"),
              "INSERT 67=1 66=1 2=b 10=0 20=0 30=0\n"
              "  ATTRIB 67=1 10=0 20=0 30=0 40=1 1=a 2=A 70=0\n  SEQEND 67=1\n");
    EXPECT_EQ(attributesOf(saved), "+ A=a. / + A=a.");
    EXPECT_EQ(saved.content(L"OUTER"),
              "INSERT 66=1 2=B 10=0 20=0 30=0\n  ATTRIB 10=0 20=0 30=0 40=1 1=a 2=A 70=0\n"
              "  SEQEND\n");
}

TEST_F(AttributeSync, LeavesReferencesOfOtherBlocksAlone)
{
    const std::string blocks = block("B", "10=0 20=0 30=0", texts("ATTDEF", "A=a"));
    std::string other = referenceWith("X=1", "50");
    other.replace(other.find("\n2 B\n"), 5, "\n2 BB\n");
    const CloneDrawing drawing({.blocks = blocks, .entities = other});
    EXPECT_EQ(sync(drawing), RTNORM);
    EXPECT_FALSE(drawing.database().isModified());
}

TEST_F(AttributeSync, LeavesErasedReferencesAlone)
{
    const std::string blocks = block("B", "10=0 20=0 30=0", texts("ATTDEF", "A=a"));
    const std::string entities = referenceWith("", "50") + referenceWith("X=1", "51");
    const CloneDrawing drawing({.blocks = blocks, .entities = entities});
    for (const int index : {0, 1}) {
        Opened<AcDbEntity>(drawing.entity(index), AcDb::kForWrite)->erase();
    }
    EXPECT_EQ(sync(drawing), RTNORM);
    EXPECT_EQ(drawing.reloaded().model(), "");
}

// The references of a name are remembered from one run to the next.
TEST_F(AttributeSync, FollowsWhatBecomesOfReferencesBetweenTwoRuns)
{
    const std::string blocks = block("B", "10=0 20=0 30=0", texts("ATTDEF", "A=a"))
        + "0 BLOCK\n5 B0\n100 AcDbEntity\n8 0\n100 AcDbBlockBegin\n2 C\n70 0\n"
        + lines("10=0 20=0 30=0") + "3 C\n0 ENDBLK\n5 B2\n100 AcDbEntity\n8 0\n100 AcDbBlockEnd\n";
    const std::string entities = referenceWith("", "50") + referenceWith("X=1", "51");
    const CloneDrawing drawing({.blocks = blocks, .entities = entities});
    const auto useBlock = [&](const wchar_t* name) {
        return Opened<AcDbBlockReference>(drawing.entity(1), AcDb::kForWrite)
            ->setBlockTableRecord(drawing.block(name));
    };
    ASSERT_EQ(sync(drawing, L"C"), RTNORM);
    EXPECT_EQ(attributesOf(drawing), "- / + X=1.") << "of another block";
    ASSERT_EQ(useBlock(L"C"), Acad::eOk);
    ASSERT_EQ(sync(drawing), RTNORM);
    EXPECT_EQ(attributesOf(drawing), "+ A=a. / + X=1.") << "it was one of the block's";
    ASSERT_EQ(useBlock(L"B"), Acad::eOk);
    ASSERT_EQ(useBlock(L"C"), Acad::eOk);
    ASSERT_EQ(useBlock(L"B"), Acad::eOk);

    AcDbBlockTableRecord* space = nullptr;
    ASSERT_EQ(acdbOpenObject(space, drawing.block(L"*Model_Space"), AcDb::kForWrite), Acad::eOk);
    const Opened<AcDbBlockTableRecord> guard(space);
    auto added = std::make_unique<AcDbBlockReference>(AcGePoint3d::kOrigin, drawing.block(L"B"));
    ASSERT_EQ(space->appendAcDbEntity(added.get()), Acad::eOk);
    added.release()->close();
    Opened<AcDbEntity>(drawing.entity(0), AcDb::kForWrite)->erase();
    ASSERT_EQ(sync(drawing), RTNORM);
    EXPECT_EQ(attributesOf(drawing), "+ A=a. / + A=a.");
    ASSERT_EQ(sync(drawing, L"C"), RTNORM);
    EXPECT_EQ(attributesOf(drawing), "+ A=a. / + A=a.");
}

// --- what belongs to an attribute ----------------------------------------------------------------

TEST_F(AttributeSync, KeepsDataAndDictionariesOfAttributesThatStay)
{
    const auto attribute = [](const char* handle, const char* dictionary, const char* tag) {
        return entity("ATTRIB", handle) + "102 {ACAD_XDICTIONARY\n360 " + dictionary
            + "\n102 }\n330 50\n100 AcDbEntity\n8 0\n100 AcDbText\n"
            + lines("10=0 20=0 30=0 40=9 1=kept") + "100 AcDbAttribute\n2 " + tag
            + "\n70 0\n1001 OURS\n1000 data\n1070 5\n";
    };
    const std::string blocks = block("B", "10=0 20=0 30=0", texts("ATTDEF", "A=a"));
    const std::string entities = entity("INSERT", "50")
        + "100 AcDbEntity\n8 0\n100 AcDbBlockReference\n66 1\n2 B\n" + lines("10=0 20=0 30=0")
        + attribute("51", "61", "A") + attribute("52", "62", "GONE") + entityEnd("50");
    const std::string objects = "0 DICTIONARY\n5 C\n330 0\n100 AcDbDictionary\n"
                                "0 DICTIONARY\n5 61\n330 51\n100 AcDbDictionary\n"
                                "0 DICTIONARY\n5 62\n330 52\n100 AcDbDictionary\n";
    const CloneDrawing saved
        = synced(CloneDrawing({.blocks = blocks, .entities = entities, .objects = objects}));
    EXPECT_EQ(saved.model(),
              "INSERT 66=1 2=B 10=0 20=0 30=0\n"
              "  ATTRIB 102={ACAD_XDICTIONARY 360=#DICTIONARY 102=} 10=0 20=0 30=0 40=1 1=kept "
              "2=A 70=0 1001=OURS 1000=data 1070=5\n"
              "  SEQEND\n");
    EXPECT_NE(saved.store().find(Handle {0x61}), nullptr);
    EXPECT_EQ(saved.store().find(Handle {0x62}), nullptr) << "it goes with its attribute";
}

// --- several lines -------------------------------------------------------------------------------

constexpr const char* kEmbedded = "101=Embedded_Object 10=1 20=3 30=0 40=2 41=20 71=1";

/// A text of several lines, in one group or in two.
std::string severalLines(std::string_view line, std::string_view text, std::string_view own)
{
    return "100 AcDbText\n" + lines("10=1 20=1 30=0 40=2") + "1 " + std::string(line) + "\n100 "
        + std::string(own) + "\n280 0\n" + (own == "AcDbAttribute" ? "2 A\n" : "3 Which?\n2 A\n")
        + "70 0\n280 0\n" + (own == "AcDbAttribute" ? "71 2\n" : "71 4\n") + "72 0\n"
        + lines("11=1 21=3 31=0") + lines(kEmbedded) + std::string(text) + "73 1\n44 1.0\n";
}

std::string oneLine(std::string_view text, std::string_view own)
{
    return "100 AcDbText\n" + lines("10=1 20=3 30=0 40=2") + "1 " + std::string(text) + "\n100 "
        + std::string(own) + "\n" + (own == "AcDbAttribute" ? "" : "3 Which?\n") + "2 A\n70 0\n";
}

struct LinesRow
{
    const char* sentence;
    bool isDefinitionOfSeveral;
    bool isAttributeOfSeveral;
    const char* line; // of the attribute
    const char* text; // of its several lines
    const char* result;
};

class AttributeLines : public AttributeSync, public ::testing::WithParamInterface<LinesRow>
{
};

TEST_P(AttributeLines, KeepTheirText)
{
    const LinesRow& row = GetParam();
    constexpr const char* kDefinition = "AcDbAttributeDefinition";
    constexpr const char* kAttribute = "AcDbAttribute";
    const std::string head = "100 AcDbEntity\n8 0\n";
    const std::string blocks
        = block("B", "10=0 20=0 30=0",
                entity("ATTDEF", "A1") + head
                    + (row.isDefinitionOfSeveral ? severalLines("def", "1 def\n", kDefinition)
                                                 : oneLine("def", kDefinition)));
    const std::string entities = entity("INSERT", "50") + head
        + "100 AcDbBlockReference\n66 1\n2 B\n" + lines("10=10 20=0 30=0 41=2 42=2 43=2")
        + entity("ATTRIB", "51") + "330 50\n" + head
        + (row.isAttributeOfSeveral ? severalLines(row.line, row.text, kAttribute)
                                    : oneLine(row.line, kAttribute))
        + entityEnd("50");
    const CloneDrawing saved
        = synced(CloneDrawing({.version = "AC1032", .blocks = blocks, .entities = entities}));
    const std::string model = saved.model();
    const std::size_t begin = model.find("  ATTRIB ") + 9;
    EXPECT_EQ(model.substr(begin, model.find('\n', begin) - begin), row.result);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(AttributeSync, AttributeLines, ::testing::Values(
    LinesRow {"InOneGroup", true, true, "one", "1 one\\Ptwo\n",
              "10=12 20=2 30=0 40=4 1=one 280=0 2=A 70=0 280=0 71=2 72=0 11=12 21=6 31=0 "
              "101=Embedded Object 10=12 20=6 30=0 40=4 41=40 71=1 1=one\\Ptwo 73=1 44=1"},
    LinesRow {"InSeveralGroups", true, true, "", "3 begin \n1 end\n",
              "10=12 20=2 30=0 40=4 1= 280=0 2=A 70=0 280=0 71=2 72=0 11=12 21=6 31=0 "
              "101=Embedded Object 10=12 20=6 30=0 40=4 41=40 71=1 3=begin  1=end 73=1 44=1"},
    LinesRow {"OfOneLineWhenTheDefinitionGetsSeveral", true, false, "one", "",
              "10=12 20=2 30=0 40=4 1=one 280=0 2=A 70=0 280=0 71=2 72=0 11=12 21=6 31=0 "
              "101=Embedded Object 10=12 20=6 30=0 40=4 41=40 71=1 1=one 73=1 44=1"},
    LinesRow {"OfSeveralLinesWhenTheDefinitionGetsOne", false, true, "one", "3 one\\P\n1 two\n",
              "10=12 20=6 30=0 40=4 1=one two 2=A 70=0"}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

// Letters of several lines have no width of their own.
TEST_F(AttributeSync, GivesSeveralLinesTheHeightOfAStretchedReference)
{
    const std::string blocks
        = block("B", "10=0 20=0 30=0",
                entity("ATTDEF", "A1") + "100 AcDbEntity\n8 0\n"
                    + severalLines("def", "1 def\n", "AcDbAttributeDefinition"));
    const std::string entities = reference("10=10 20=0 30=0 41=3 42=2");
    const std::string model
        = synced(CloneDrawing({.version = "AC1032", .blocks = blocks, .entities = entities}))
              .model();
    EXPECT_NE(model.find(" 101=Embedded Object 10=13 20=6 30=0 40=4 41=60 71=1 1=def 73=1 44=1\n"),
              std::string::npos)
        << model;
}

// A line at 45 degrees, flattened to nearly nothing, would lie down altogether.
TEST_F(AttributeSync, SlantsLettersNoFurtherThanTheyCanBe)
{
    const std::string blocks = block("B", "10=0 20=0 30=0", definition(CORMA_LEFT " 50=45"));
    const std::string entities = reference("10=0 20=0 30=0 41=1000 42=1");
    const std::string model
        = synced(CloneDrawing({.blocks = blocks, .entities = entities})).model();
    EXPECT_NE(model.find(" 51=-85 "), std::string::npos) << model;
}

// --- files ---------------------------------------------------------------------------------------

constexpr std::string_view kHeader = "0 SECTION\n2 HEADER\n9 $ACADVER\n1 ";

std::string fileText(std::string_view version)
{
    return std::string(kHeader) + std::string(version) + "\n9 $HANDLING\n70 1\n0 ENDSEC\n"
        + "0 SECTION\n2 BLOCKS\n" + block("B", "10=0 20=0 30=0", texts("ATTDEF", "A=a B=b"))
        + "0 ENDSEC\n0 SECTION\n2 ENTITIES\n" + referenceWith("B=2 C=3", "50")
        + referenceWith("", "51") + "0 ENDSEC\n0 EOF\n";
}

class FileVersions : public AttributeSync, public ::testing::WithParamInterface<const char*>
{
protected:
    static void checkSynced(const std::string& bytes, const std::string& beginning)
    {
        const TempFolder folder;
        auto database = std::make_unique<AcDbDatabase>(false, true);
        ASSERT_EQ(database->readDwgFile(folder.write(L"in.dxf", bytes).c_str()), Acad::eOk);
        const CloneDrawing saved = synced(CloneDrawing(std::move(database)));
        EXPECT_EQ(attributesOf(saved), "+ A=a B=2. / + A=a B=b.");
        EXPECT_TRUE(saved.bytes().starts_with(beginning));
    }
};

TEST_P(FileVersions, AreServedInTextAndBinary)
{
    const std::string version = GetParam();
    const bool hasMarkers = version != "AC1009";
    const std::string text = hasMarkers ? fileText(version) : withoutMarkers(fileText(version));
    checkSynced(dxfText(text), "0\nSECTION\n");
    checkSynced(binaryDxf(text), "AutoCAD Binary DXF");
}

INSTANTIATE_TEST_SUITE_P(AttributeSync, FileVersions,
                         ::testing::Values("AC1009", "AC1012", "AC1015", "AC1021", "AC1027",
                                           "AC1032"),
                         [](const auto& row) { return row.param; });

TEST_F(AttributeSync, WritesNoMarkersIntoR12)
{
    const std::string blocks = withoutMarkers(block("B", "10=0 20=0 30=0", texts("ATTDEF", "A=a")));
    const std::string entities = withoutMarkers(referenceWith("", "50"));
    const CloneDrawing saved
        = synced(CloneDrawing({.version = "AC1009", .blocks = blocks, .entities = entities}));
    EXPECT_EQ(attributesOf(saved), "+ A=a.");
    EXPECT_EQ(saved.bytes().find("AcDb"), std::string::npos);
}

TEST_F(AttributeSync, ServesThousandsOfReferences)
{
    constexpr int kCount = 5000;
    const std::string blocks = block("B", "10=0 20=0 30=0", texts("ATTDEF", "A=a B=b"));
    std::string entities;
    for (int i = 0; i < kCount; ++i) {
        entities += referenceWith(i % 2 == 0 ? "" : "B=2 C=3", toUtf8(toText(Handle(0x10000 + i))));
    }
    const std::string all
        = attributesOf(synced(CloneDrawing({.blocks = blocks, .entities = entities})));
    constexpr std::string_view kPair = " / + A=a B=b. / + A=a B=2.";
    ASSERT_EQ(all.size() + 3, kPair.size() * kCount / 2);
    for (std::size_t at = 0; at + kPair.size() <= all.size() + 3; at += kPair.size()) {
        ASSERT_EQ((" / " + all).substr(at, kPair.size()), kPair) << at;
    }
}

// --- failure -------------------------------------------------------------------------------------

TEST_F(AttributeSync, ChangesNothingWhileAnythingOfItIsOpen)
{
    const std::string blocks = block("B", "10=0 20=0 30=0", texts("ATTDEF", "A=a"));
    const std::string entities = referenceWith("X=1", "50") + referenceWith("A=1", "51");
    const CloneDrawing drawing({.blocks = blocks, .entities = entities});
    const std::string before = drawing.bytes();
    int refused = 0;
    const auto syncWhileOpen = [&](unsigned int handle, AcDb::OpenMode mode) {
        const Opened<AcDbObject> open(AcDbObjectId(drawing.store().find(Handle {handle})), mode);
        refused += open && sync(drawing) == RTERROR ? 1 : 0;
    };
    for (const unsigned int handle : {0x50U, 0x51U, 0x501U, 0x511U}) {
        syncWhileOpen(handle, AcDb::kForRead);
        syncWhileOpen(handle, AcDb::kForWrite);
    }
    syncWhileOpen(0xA1U, AcDb::kForWrite); // a definition that is being written
    EXPECT_EQ(refused, 9);
    EXPECT_EQ(m_services.printed.size(), 9U);
    m_services.printed.clear();
    EXPECT_FALSE(drawing.database().isModified());
    EXPECT_EQ(drawing.bytes(), before);
}

TEST_F(AttributeSync, WorksWhileADefinitionIsRead)
{
    const std::string blocks = block("B", "10=0 20=0 30=0", texts("ATTDEF", "A=a"));
    const std::string entities = referenceWith("", "50");
    const CloneDrawing drawing({.blocks = blocks, .entities = entities});
    const Opened<AcDbObject> open(AcDbObjectId(drawing.store().find(Handle {0xA1U})));
    EXPECT_EQ(sync(drawing), RTNORM);
    EXPECT_EQ(attributesOf(drawing), "+ A=a.");
}

} // namespace

} // namespace corma::host
