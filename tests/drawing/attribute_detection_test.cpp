// What is out of date: references that differ from their blocks, blocks that differ from their
// drawing files.

#include "AttributeTest.h"
#include "drawing/attribute_update.h"
#include "host/host.h"
#include "platform/platform.h"
#include "platform/text.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <set>
#include <utility>

using corma::host::Opened;

namespace corma::testing {

namespace {

// --- equal lists ---------------------------------------------------------------------------------

struct EqualRow
{
    const char* sentence;
    std::vector<const wchar_t*> definitions;
    std::vector<const wchar_t*> found;
    bool isEqual;
};

class SameAttributes : public ::testing::TestWithParam<EqualRow>
{
protected:
    // The values differ throughout.
    static xx_VarArray listOf(const std::vector<const wchar_t*>& tags, const wchar_t* text)
    {
        xx_VarArray list;
        for (const wchar_t* const tag : tags) {
            list.append(new xx_Var(tag, text));
        }
        return list;
    }
};

TEST_P(SameAttributes, AreThoseOfTheSameNumberAndNames)
{
    EXPECT_EQ(
        xx_same_attributes(listOf(GetParam().definitions, L"a"), listOf(GetParam().found, L"b")),
        GetParam().isEqual);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(AttributeDetection, SameAttributes, ::testing::Values(
    EqualRow {"NoneAndNone", {}, {}, true},
    EqualRow {"NoneAndOne", {}, {L"A"}, false},
    EqualRow {"OneAndNone", {L"A"}, {}, false},
    EqualRow {"TheSameInAnotherOrder", {L"A", L"B", L"C"}, {L"C", L"A", L"B"}, true},
    EqualRow {"TheSameInOtherCase", {L"Ab", L"Cd"}, {L"aB", L"CD"}, true},
    EqualRow {"OneMore", {L"A"}, {L"A", L"B"}, false},
    EqualRow {"OneLess", {L"A", L"B"}, {L"A"}, false},
    EqualRow {"AnotherName", {L"A", L"B"}, {L"A", L"C"}, false},
    // Only the names of the first list are looked for.
    EqualRow {"ADoubleNameAmongTheDefinitions", {L"A", L"A"}, {L"A", L"B"}, true},
    EqualRow {"ADoubleNameAmongTheFound", {L"A", L"B"}, {L"A", L"A"}, false}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

// --- references in model space -------------------------------------------------------------------

class ReferenceScan : public AttributeTest
{
protected:
    static BlockDrawing plan()
    {
        BlockDrawing drawing;
        drawing.block("DOOR")
            .block("Door_2", {}, {{"B1", "DOOR"}})
            .block("GATE")
            .block("*U1")
            .inModel({"A1", "DOOR", {{"WOOD", "oak"}}})
            .inModel({"A2", "door_2"})
            .definitionInModel({"TITLE", "plan"})
            .inModel({"A3", "*U1"})
            .inModel({"A4", "GATE"})
            .inModel({"A5", "door"})
            .inPaper({"C1", "DOOR"});
        return drawing;
    }

    static std::string scan(const wchar_t* pattern)
    {
        AcDbObjectIdArray result;
        const int status = xx_block_refs_in_model_space(result, pattern);
        return (status == RTNORM ? "" : std::to_string(status) + ' ') + described(result);
    }
};

TEST_F(ReferenceScan, FindsThoseInModelSpaceWhoseBlocksFitInTheOrderOfTheDrawing)
{
    open(plan());
    const std::pair<const wchar_t*, const char*> rows[] = {
        {L"*", "A1 A2 A3 A4 A5"},
        {L"DOOR", "A1 A5"},
        {L"dOOr*", "A1 A2 A5"},
        {L"GATE,DOOR", "A1 A4 A5"},
        {L"GATE,DOOR_#", "A2 A4"},
        {L"~DOOR*", "A3 A4"},
        {L"`*U*", "A3"},
        {L"WINDOW", ""},
        {L"", ""},
    };
    for (const auto& [pattern, handles] : rows) {
        EXPECT_EQ(scan(pattern), handles) << toUtf8(pattern);
    }
    EXPECT_EQ(printed(), "");
}

TEST_F(ReferenceScan, PutsThemBehindWhatIsThere)
{
    open(plan());
    AcDbObjectIdArray result;
    result.append(id("C1"));
    EXPECT_EQ(xx_block_refs_in_model_space(result, L"GATE"), RTNORM);
    EXPECT_EQ(described(result), "C1 A4");
}

TEST_F(ReferenceScan, LeavesErasedOnesOut)
{
    open(plan());
    erase(id("A1"));
    EXPECT_EQ(scan(L"DOOR"), "A5");
}

TEST_F(ReferenceScan, TellsAReferenceThatCannotBeOpenedAndGoesOn)
{
    open(plan());
    const Opened<AcDbObject> held(id("A1"), AcDb::kForWrite);
    EXPECT_EQ(scan(L"DOOR*"), "A2 A5");
    EXPECT_EQ(printed(), failure("xx_entlay", 104, "eWasOpenForWrite", "1010"));
}

TEST_F(ReferenceScan, TellsABlockThatCannotBeOpenedForEachOfItsReferences)
{
    open(plan());
    const Opened<AcDbObject> held(block(L"DOOR"), AcDb::kForWrite);
    EXPECT_EQ(scan(L"*"), "A2 A3 A4");
    EXPECT_EQ(printed(),
              failure("xx_addblk2", 95, "0", "83") + failure("xx_addblk2", 95, "0", "83"));
}

TEST_F(ReferenceScan, TellsAReferenceWithoutABlock)
{
    BlockDrawing drawing;
    open(drawing.inModel({"A1", "WINDOW"}));
    EXPECT_EQ(scan(L"*"), "");
    EXPECT_EQ(printed(), failure("xx_addblk2", 95, "0", "16"));
}

TEST_F(ReferenceScan, FailsWithoutADrawingOrItsModelSpace)
{
    EXPECT_EQ(scan(L"*"), "-5001 ");
    open(plan());
    const Opened<AcDbObject> held(block(ACDB_MODEL_SPACE), AcDb::kForWrite);
    EXPECT_EQ(scan(L"*"), "-5001 ");
    EXPECT_EQ(printed(), "");
}

TEST_F(ReferenceScan, AsksABlockByItsName)
{
    open(plan());
    const Opened<AcDbBlockReference> reference(id("A2"));
    EXPECT_TRUE(xx_block_matches(*reference, L"DOOR_2"));
    EXPECT_FALSE(xx_block_matches(*reference, L"DOOR"));
}

// --- references out of date ----------------------------------------------------------------------

struct ReferenceRow
{
    const char* sentence;
    DrawnAttributes definitions;
    DrawnAttributes attributes;
    bool isOutOfDate;
};

class ReferencesOutOfDate : public AttributeTest, public ::testing::WithParamInterface<ReferenceRow>
{
};

TEST_P(ReferencesOutOfDate, AreThoseWithOtherTagsThanTheBlockDefines)
{
    BlockDrawing drawing;
    drawing.block("DOOR", GetParam().definitions).inModel({"A1", "DOOR", GetParam().attributes});
    open(drawing);
    EXPECT_EQ(described(xx_find_out_of_date_refs(L"*")), GetParam().isOutOfDate ? "A1" : "");
    EXPECT_EQ(printed(), "");
    EXPECT_FALSE(isDocumentModified());
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(AttributeDetection, ReferencesOutOfDate, ::testing::Values(
    ReferenceRow {"NothingOnEitherSideIsUpToDate", {}, {}, false},
    ReferenceRow {"OtherTextsAreUpToDate", {{"A", "1"}, {"B", "2"}}, {{"A", "x"}, {"B", ""}}, false},
    ReferenceRow {"AnotherOrderIsUpToDate", {{"A"}, {"B"}}, {{"B"}, {"A"}}, false},
    ReferenceRow {"OtherCaseIsUpToDate", {{"Wood"}}, {{"WOOD"}}, false},
    ReferenceRow {"AMissingAttributeIsNot", {{"A"}, {"B"}}, {{"A"}}, true},
    ReferenceRow {"NoAttributesAtAllAreNot", {{"A"}}, {}, true},
    ReferenceRow {"AnAttributeTooManyIsNot", {{"A"}}, {{"A"}, {"B"}}, true},
    ReferenceRow {"ABlockThatLostItsDefinitionsIsNot", {}, {{"A"}}, true},
    ReferenceRow {"AnotherTagIsNot", {{"A"}, {"B"}}, {{"A"}, {"C"}}, true},
    ReferenceRow {"OnlyConstantsAreUpToDate", {{"A", "1", true}, {"B", "2", true}}, {}, false},
    ReferenceRow {"ConstantsAreNotMissing", {{"A", "1", true}, {"B", "2"}}, {{"B", "3"}}, false},
    ReferenceRow {"AnAttributeThatBecameConstantIsUpToDate", {{"A", "1", true}}, {{"A", "2"}}, false},
    ReferenceRow {"AConstantThatIsAnAttributeNowIsNot", {{"A", "1"}, {"B", "2", true}}, {}, true},
    ReferenceRow {"ADoubleTagInTheBlockIsOneTag", {{"A", "1"}, {"a", "2"}}, {{"A"}}, false},
    ReferenceRow {"ADoubleTagInTheReferenceIsOneTag", {{"A"}}, {{"A", "1"}, {"a", "2"}}, false}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

class FindOutOfDate : public AttributeTest
{
};

TEST_F(FindOutOfDate, ReferencesLooksAtThosePatternsAndModelSpaceOnly)
{
    BlockDrawing drawing;
    drawing.block("DOOR", {{"WOOD"}}, {{"B1", "GATE"}})
        .block("GATE", {{"WOOD"}})
        .block("*U1", {{"WOOD"}})
        .inModel({"A1", "GATE"})
        .inModel({"A2", "DOOR"})
        .inModel({"A3", "*U1"})
        .inPaper({"C1", "GATE"});
    open(drawing);
    EXPECT_EQ(described(xx_find_out_of_date_refs(L"*")), "A1 A2 A3");
    EXPECT_EQ(described(xx_find_out_of_date_refs(L"door,gate")), "A1 A2");
    EXPECT_EQ(described(xx_find_out_of_date_refs(L"GATE")), "A1");
}

TEST_F(FindOutOfDate, ReferencesCountsErasedAttributesAndDefinitionsAsGone)
{
    BlockDrawing drawing;
    drawing.block("DOOR", {{"WOOD", "", false, "21"}, {"NUMBER"}})
        .inModel({"A1", "DOOR", {{"WOOD", "", false, "31"}, {"NUMBER"}}})
        .inModel({"A2", "DOOR", {{"WOOD"}, {"NUMBER"}}});
    open(drawing);
    EXPECT_EQ(described(xx_find_out_of_date_refs(L"*")), "");
    erase(id("31"));
    EXPECT_EQ(described(xx_find_out_of_date_refs(L"*")), "A1");
    erase(id("21"));
    EXPECT_EQ(described(xx_find_out_of_date_refs(L"*")), "A2");
}

TEST_F(FindOutOfDate, ReferencesPassesOverWhatCannotBeOpened)
{
    BlockDrawing drawing;
    drawing.block("DOOR", {{"WOOD"}})
        .block("GATE", {{"WOOD"}})
        .inModel({"A1", "DOOR"})
        .inModel({"A2", "GATE"})
        .inModel({"A3", "GATE"})
        .inModel({"A4", "WINDOW"});
    open(drawing);
    const Opened<AcDbObject> door(block(L"DOOR"), AcDb::kForWrite);
    const Opened<AcDbObject> gate(id("A2"), AcDb::kForWrite);
    EXPECT_EQ(described(xx_find_out_of_date_refs(L"*")), "A3");
    EXPECT_EQ(printed(),
              failure("xx_addblk2", 95, "0", "83")
                  + failure("xx_entlay", 104, "eWasOpenForWrite", "1010")
                  + failure("xx_addblk2", 95, "0", "16"));
}

// Its list is then one without the constants of the block as well.
TEST_F(FindOutOfDate, ReferencesTellsAnAttributeThatCannotBeOpened)
{
    BlockDrawing drawing;
    drawing.block("DOOR", {{"WOOD"}, {"MAKER", "Jansen", true}})
        .inModel({"A1", "DOOR", {{"WOOD", "oak", false, "31"}}});
    open(drawing);
    const Opened<AcDbObject> held(id("31"), AcDb::kForWrite);
    EXPECT_EQ(described(xx_find_out_of_date_refs(L"*")), "A1");
    EXPECT_EQ(printed(), failure("xx_get_bl_attributes", 53, "0", "83"));
}

TEST_F(FindOutOfDate, FindsNothingWithoutADrawing)
{
    EXPECT_EQ(described(xx_find_out_of_date_refs(L"*")), "");
    EXPECT_EQ(described(xx_find_out_of_date_records(L"*")), "");
    EXPECT_EQ(printed(), "");
}

// --- references against a plain model ------------------------------------------------------------

/// Drawings by chance, and what of them is out of date by a plain count of their tags.
class ChanceDrawing
{
public:
    explicit ChanceDrawing(unsigned seed)
        : m_chance(seed)
    {
        for (int i = 0; i < kBlocks; ++i) {
            m_definitions.push_back(attributes(true));
            m_drawing.block(nameOf(i), m_definitions.back());
        }
        for (int i = 0; i < kReferences; ++i) {
            const int block = upTo(kBlocks);
            const DrawnAttributes present
                = upTo(3) == 0 ? varied(m_definitions[block]) : variables(m_definitions[block]);
            const std::string handle = "20" + std::to_string(10 + i);
            m_drawing.inModel({handle, nameOf(block), present});
            if (isOutOfDate(block, present)) {
                m_expected += (m_expected.empty() ? "" : " ") + handle;
            }
        }
    }

    [[nodiscard]] const BlockDrawing& drawing() const { return m_drawing; }

    [[nodiscard]] const std::string& expected() const { return m_expected; }

private:
    static constexpr int kBlocks = 6;
    static constexpr int kReferences = 40;

    int upTo(int bound) { return static_cast<int>(m_chance() % static_cast<unsigned>(bound)); }

    static std::string nameOf(int block) { return "BLOCK_" + std::to_string(block); }

    // Few tags, so that the same ones meet, some in other case.
    DrawnAttributes attributes(bool mayBeConstant)
    {
        const char* const tags[] = {"A", "a", "B", "C", "c", "D"};
        DrawnAttributes result;
        for (int count = upTo(5); count > 0; --count) {
            result.push_back(
                {tags[upTo(6)], std::to_string(upTo(9)), mayBeConstant && upTo(4) == 0});
        }
        return result;
    }

    static DrawnAttributes variables(const DrawnAttributes& definitions)
    {
        DrawnAttributes result;
        std::copy_if(definitions.begin(), definitions.end(), std::back_inserter(result),
                     [](const DrawnAttribute& definition) { return !definition.isConstant; });
        return result;
    }

    DrawnAttributes varied(const DrawnAttributes& definitions)
    {
        DrawnAttributes result = variables(definitions);
        if (!result.empty() && upTo(2) == 0) {
            result.erase(result.begin() + upTo(static_cast<int>(result.size())));
        }
        for (const DrawnAttribute& more : attributes(false)) {
            result.push_back(more);
        }
        std::shuffle(result.begin(), result.end(), m_chance);
        return result;
    }

    static void addTag(std::set<char>& tags, const DrawnAttribute& attribute)
    {
        tags.insert(static_cast<char>(attribute.tag.front() | 0x20));
    }

    [[nodiscard]] bool isOutOfDate(int block, const DrawnAttributes& present) const
    {
        std::set<char> wanted;
        std::set<char> found;
        for (const DrawnAttribute& definition : m_definitions[block]) {
            addTag(wanted, definition);
            if (definition.isConstant) {
                addTag(found, definition);
            }
        }
        for (const DrawnAttribute& attribute : present) {
            addTag(found, attribute);
        }
        return wanted != found;
    }

    std::mt19937 m_chance;
    std::vector<DrawnAttributes> m_definitions;
    BlockDrawing m_drawing;
    std::string m_expected;
};

TEST_F(FindOutOfDate, ReferencesAgreesWithACountOfTheTags)
{
    int differing = 0;
    for (unsigned seed = 1; seed <= 60; ++seed) {
        const ChanceDrawing drawn(seed);
        open(drawn.drawing());
        EXPECT_EQ(described(xx_find_out_of_date_refs(L"*")), drawn.expected()) << "seed " << seed;
        differing += drawn.expected().empty() ? 0 : 1;
    }
    EXPECT_GT(differing, 50);
}

// --- blocks out of date --------------------------------------------------------------------------

class RecordsOutOfDate : public AttributeTest
{
protected:
    // The drawing file of a block, with these definitions.
    void writeFile(std::wstring_view name, const DrawnAttributes& definitions)
    {
        BlockDrawing drawing;
        for (const DrawnAttribute& definition : definitions) {
            drawing.definitionInModel(definition);
        }
        folder.write(name, drawing.bytes());
    }

    static std::string find(const wchar_t* pattern = L"*")
    {
        std::string names;
        for (const AcDbObjectId id : xx_find_out_of_date_records(pattern)) {
            const Opened<AcDbBlockTableRecord> record(id);
            std::wstring name;
            record->getName(name);
            names += (names.empty() ? "" : " ") + toUtf8(name);
        }
        return names;
    }
};

TEST_F(RecordsOutOfDate, AreThoseWithOtherTagsThanTheirFiles)
{
    BlockDrawing drawing;
    drawing.block("SAME", {{"A", "1"}, {"B", "2", true}})
        .block("More", {{"A"}})
        .block("LESS", {{"A"}, {"B"}})
        .block("OTHER", {{"A"}})
        .block("EMPTY", {{"A"}});
    open(drawing);
    writeFile(L"SAME.DWG", {{"b", "9"}, {"a", "8", true}});
    writeFile(L"MORE.DWG", {{"A"}, {"B", "x", true}});
    writeFile(L"LESS.DWG", {{"B"}});
    writeFile(L"OTHER.DWG", {{"C"}});
    writeFile(L"EMPTY.DWG", {});
    EXPECT_EQ(find(), "More LESS OTHER EMPTY");
    EXPECT_EQ(find(L"more,l*"), "More LESS");
    EXPECT_EQ(find(L"~*E*"), "");
    EXPECT_EQ(printed(), "");
    EXPECT_FALSE(isDocumentModified());
}

TEST_F(RecordsOutOfDate, NeedDefinitionsAndAFile)
{
    BlockDrawing drawing;
    drawing.block("PLAIN").block("HOMELESS", {{"A"}});
    open(drawing);
    writeFile(L"PLAIN.DWG", {{"A"}});
    EXPECT_EQ(find(), "");
    EXPECT_EQ(printed(), "");
}

TEST_F(RecordsOutOfDate, AreNeverThoseWithAnAsterisk)
{
    BlockDrawing drawing;
    drawing.block("*U1", {{"A"}}).definitionInModel({"A"});
    open(drawing);
    writeFile(L"*U1.DWG", {{"B"}});
    writeFile(L"*MODEL_SPACE.DWG", {{"B"}});
    EXPECT_EQ(find(), "");
    EXPECT_EQ(find(L"`**"), "");
}

TEST_F(RecordsOutOfDate, AreComparedWithTheFileThatTheSearchFindsFirst)
{
    BlockDrawing drawing;
    drawing.block("DOOR", {{"A"}});
    open(drawing);
    writeFile(L"late/DOOR.DWG", {{"A"}});
    services.variables[L"ACAD"] = folder.path(L"early") + L";" + folder.path(L"late");
    EXPECT_EQ(find(), "");
    writeFile(L"early/DOOR.DWG", {{"A"}, {"B"}});
    EXPECT_EQ(find(), "DOOR");
    writeFile(L"module/DOOR.DWG", {{"A"}});
    services.module = folder.path(L"module/program");
    forgetModuleFolder();
    EXPECT_EQ(find(), "");
}

TEST_F(RecordsOutOfDate, MayHaveFilesOfAnyVersion)
{
    BlockDrawing drawing;
    drawing.block("DOOR", {{"NR"}});
    open(drawing);
    for (const char* const file : {"r12", "r12_binary", "r13", "r14", "r2000", "r2018_binary"}) {
        const auto bytes = platform::readFile(std::string(CORMA_TEST_DATA "/") + file + ".dxf");
        ASSERT_TRUE(bytes.has_value()) << file;
        folder.write(L"DOOR.DWG", bytes->view());
        EXPECT_EQ(find(), "DOOR") << file;
        EXPECT_EQ(printed(), "") << file;
    }
}

TEST_F(RecordsOutOfDate, AreToldWhenTheirFileCannotBeReadAndPassedOver)
{
    BlockDrawing drawing;
    drawing.block("BROKEN", {{"A"}}).block("HALF", {{"A"}}).block("DOOR", {{"A"}});
    open(drawing);
    folder.write(L"BROKEN.DWG", "no drawing");
    const std::string whole = BlockDrawing().definitionInModel({"B"}).bytes();
    folder.write(L"HALF.DWG", whole.substr(0, whole.size() / 2));
    writeFile(L"DOOR.DWG", {{"B"}});
    EXPECT_EQ(find(), "DOOR");
    const std::string told = printed();
    const std::string broken = failure("xx_atblk", 191, "eUnsupportedFileFormat", "301");
    EXPECT_NE(told.find(broken), std::string::npos) << told;
    EXPECT_TRUE(told.ends_with(failure("xx_atblk", 191, "eBadDxfFile", "301"))) << told;
}

TEST_F(RecordsOutOfDate, HaveNoFileInAFolderOfItsName)
{
    BlockDrawing drawing;
    open(drawing.block("DOOR", {{"A"}}));
    folder.makeFolder(L"DOOR.DWG");
    EXPECT_EQ(find(), "");
}

TEST_F(RecordsOutOfDate, AreToldWhenTheyCannotBeOpenedAndPassedOver)
{
    BlockDrawing drawing;
    drawing.block("DOOR", {{"A"}}).block("GATE", {{"A"}});
    open(drawing);
    writeFile(L"DOOR.DWG", {{"B"}});
    writeFile(L"GATE.DWG", {{"B"}});
    const Opened<AcDbObject> held(block(L"DOOR"), AcDb::kForWrite);
    EXPECT_EQ(find(), "GATE");
    EXPECT_EQ(printed(), failure("xx_findblk_int", 117, "eWasOpenForWrite", "801"));
}

TEST_F(RecordsOutOfDate, AreNotThereWhileTheTableCannotBeOpened)
{
    BlockDrawing drawing;
    open(drawing.block("DOOR", {{"A"}}));
    writeFile(L"DOOR.DWG", {{"B"}});
    const Opened<AcDbObject> held(acdbHostApplicationServices()->workingDatabase()->blockTableId(),
                                  AcDb::kForWrite);
    EXPECT_EQ(find(), "");
    EXPECT_EQ(printed(), "");
}

TEST_F(RecordsOutOfDate, AreNotErasedOnes)
{
    BlockDrawing drawing;
    open(drawing.block("DOOR", {{"A"}}));
    writeFile(L"DOOR.DWG", {{"B"}});
    erase(block(L"DOOR"));
    EXPECT_EQ(find(), "");
    EXPECT_EQ(printed(), "");
}

} // namespace

} // namespace corma::testing
