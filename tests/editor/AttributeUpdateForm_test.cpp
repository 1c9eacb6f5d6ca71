// What is shown of an attribute update, and what is chosen.

#include "AttributeUpdateTest.h"
#include "drawing/attribute_update.h"
#include "host/host.h"
#include "platform/text.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

using corma::host::Opened;

namespace corma::testing {

namespace {

constexpr auto kRecords = AttributeUpdateMode::records;

class AttributeForm : public AttributeUpdateTest
{
protected:
    /// The tags of the current row, "+" before new ones.
    static std::string tagsOf(const AttributeUpdateForm& form)
    {
        std::string text;
        for (const AttributeUpdateForm::Tag& tag : form.tags()) {
            text += (text.empty() ? "" : " ") + std::string(tag.isNew ? "+" : "-")
                + toUtf8(tag.text);
        }
        return text;
    }
};

// --- rows of references --------------------------------------------------------------------------

TEST_F(AttributeForm, HasARowForTheReferencesOfEachBlock)
{
    open(doors());
    AttributeUpdate update = detected();
    const AttributeUpdateForm form(update);
    EXPECT_EQ(rowsOf(form),
              "x DOOR (2) | DOOR | +WOOD\n"
              "- GATE | GATE |\n");
    EXPECT_TRUE(form.rows()[0].isReference);
    EXPECT_EQ(form.rows()[0].id, id("A1"));
    EXPECT_EQ(form.rows()[1].id, id("A2"));
    EXPECT_EQ(printed(), "");
}

TEST_F(AttributeForm, TellsWhatTheFirstReferenceOfABlockLacksAndHasTooMuch)
{
    open(doors());
    AttributeUpdate update = updateOf(references({"A3", "A1"}));
    const AttributeUpdateForm form(update);
    EXPECT_EQ(rowsOf(form), "x DOOR (2) | DOOR | -OLD\n");
    EXPECT_EQ(form.rows()[0].id, id("A3"));
}

TEST_F(AttributeForm, ComparesTagsWithoutRegardToCaseTextAndOrder)
{
    BlockDrawing drawing;
    drawing.block("DOOR", {{"A", "1"}, {"B"}, {"C"}, {"D"}})
        .inModel({"A1", "DOOR", {{"X"}, {"d", "2"}, {"a"}, {"W"}}});
    open(drawing);
    AttributeUpdate update = updateOf(references({"A1"}));
    const AttributeUpdateForm form(update);
    EXPECT_EQ(rowsOf(form), "x DOOR | DOOR | +B +C -X -W\n");
    EXPECT_EQ(tagsOf(form), "+B +C -X -W");
}

struct CountRow
{
    const char* sentence;
    std::vector<const char*> outOfDate;
    std::vector<const char*> upToDate;
    const char* rows;
};

class CountedReferences : public AttributeUpdateTest, public ::testing::WithParamInterface<CountRow>
{
};

TEST_P(CountedReferences, AreToldBehindTheName)
{
    BlockDrawing drawing;
    drawing.block("DOOR").block("GATE");
    drawing.inModel({"A1", "DOOR"}).inModel({"A2", "DOOR"}).inModel({"A3", "DOOR"});
    drawing.inModel({"A4", "DOOR"}).inModel({"A5", "DOOR"});
    drawing.inModel({"B1", "GATE"}).inModel({"B2", "GATE"});
    open(drawing);
    AttributeUpdate update
        = updateOf(references(GetParam().outOfDate), references(GetParam().upToDate));
    const AttributeUpdateForm form(update);
    std::string rows;
    for (const AttributeUpdateForm::Row& row : form.rows()) {
        rows += (rows.empty() ? "" : ", ") + std::string(row.isChecked ? "x " : "- ")
            + toUtf8(row.name);
    }
    EXPECT_EQ(rows, GetParam().rows);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(AttributeForm, CountedReferences, ::testing::Values(
    CountRow {"OneIsNotCounted", {"A1"}, {}, "x DOOR"},
    CountRow {"ThreeOfTheFirstPass", {"A1", "A2", "A3"}, {}, "x DOOR (3)"},
    CountRow {"TwoOfTheSecondPass", {}, {"A1", "A2"}, "- DOOR (2)"},
    CountRow {"OthersBetweenThem", {"A1", "B1", "A2", "B2", "A3"}, {}, "x DOOR (3), x GATE (2)"},
    CountRow {"EachPassCountsAnew", {"A1"}, {"A2"}, "x DOOR, - DOOR"},
    CountRow {"TheSecondPassKeepsACountThatItDoesNotReach", {"A1", "A2", "A3"}, {"A4"}, "x DOOR (3), - DOOR"},
    // A block that was met again is told in the rows of both passes: the last count stays.
    CountRow {"TheSecondPassCountsForBothRows", {"A1", "A2", "A3"}, {"A4", "A5"}, "x DOOR (2), - DOOR (2)"},
    CountRow {"TheSecondPassTellsASingleReferenceOfTheFirst", {"A1"}, {"A2", "A3"}, "x DOOR (2), - DOOR (2)"},
    CountRow {"AReferenceThatIsGivenTwiceCountsTwice", {"A1", "A1"}, {}, "x DOOR (2)"}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

// The name of a block that was met again is a pattern for those of the rows, so "#" and "." fit
// other names, and "#" not its own.
TEST_F(AttributeForm, NamesLikePatternsAreTakenForSuch)
{
    BlockDrawing drawing;
    drawing.block("D1").block("D#").block("E-F").block("E.F").block("D2");
    drawing.inModel({"A1", "D1"}).inModel({"A2", "D#"}).inModel({"A3", "D#"});
    drawing.inModel({"A4", "E-F"}).inModel({"A5", "E.F"}).inModel({"A6", "E.F"});
    drawing.inModel({"A7", "D2"});
    open(drawing);
    AttributeUpdate update = updateOf(references({"A1", "A2", "A3", "A4", "A5", "A6", "A7"}));
    const AttributeUpdateForm form(update);
    EXPECT_EQ(rowsOf(form),
              "x D# (2) | D1 |\n"
              "x D# | D# |\n"
              "x E.F (2) | E-F |\n"
              "x E.F (2) | E.F |\n"
              "x D2 | D2 |\n")
        << "D2 was not there yet";
}

/// The rule of the counts to the letter: each repeated block rewrites the rows at once.
class LiteralRows
{
public:
    void add(const AcDbObjectIdArray& references)
    {
        std::vector<AcDbObjectId> seen;
        for (const AcDbObjectId id : references) {
            const Opened<AcDbBlockReference> reference(id);
            const AcDbObjectId block = reference->blockTableRecord();
            std::wstring name;
            Opened<AcDbBlockTableRecord>(block)->getName(name);
            const bool isKnown = std::find(seen.begin(), seen.end(), block) != seen.end();
            seen.push_back(block);
            if (!isKnown) {
                m_rows.push_back({id, name});
                continue;
            }
            const auto count = std::count(seen.begin(), seen.end(), block);
            for (auto& [first, text] : m_rows) {
                const Opened<AcDbBlockReference> shown(first);
                if (xx_block_matches(*shown, name.c_str())) {
                    text = name + L" (" + std::to_wstring(count) + L")";
                }
            }
        }
    }

    [[nodiscard]] std::string text() const
    {
        std::string all;
        for (const auto& [first, text] : m_rows) {
            all += toUtf8(text) + '\n';
        }
        return all;
    }

private:
    std::vector<std::pair<AcDbObjectId, std::wstring>> m_rows;
};

TEST_F(AttributeForm, CountsAsTheRuleToTheLetterDoes)
{
    const std::vector<std::string> names
        = {"A1", "A#", "A-1", "A.1", "a2", "@@", "~A1", "[A]2", "DEUR", "Ruit$0"};
    BlockDrawing drawing;
    std::vector<std::string> handles;
    for (std::size_t i = 0; i < names.size(); ++i) {
        drawing.block(names[i]);
        for (int copy = 0; copy < 3; ++copy) {
            handles.push_back("20" + std::to_string(i) + std::to_string(copy));
            drawing.inModel({handles.back(), names[i]});
        }
    }
    open(drawing);
    std::mt19937 random(7);
    for (int round = 0; round < 300; ++round) {
        std::shuffle(handles.begin(), handles.end(), random);
        AttributeUpdate update;
        const std::size_t both = random() % handles.size() + 1;
        const std::size_t first = random() % (both + 1);
        for (std::size_t i = 0; i < both; ++i) {
            (i < first ? update.outOfDateRefs : update.upToDateRefs).append(id(handles[i].c_str()));
        }
        LiteralRows literal;
        literal.add(update.outOfDateRefs);
        literal.add(update.upToDateRefs);
        const AttributeUpdateForm form(update);
        std::string rows;
        for (const AttributeUpdateForm::Row& row : form.rows()) {
            rows += toUtf8(row.name) + '\n';
        }
        ASSERT_EQ(rows, literal.text()) << "round " << round;
    }
}

TEST_F(AttributeForm, BearsManyReferences)
{
    constexpr int kBlocks = 10;
    constexpr int kReferences = 100'000;
    BlockDrawing drawing;
    std::vector<std::string> handles;
    for (int i = 0; i < kBlocks; ++i) {
        const std::string name = "B" + std::to_string(i);
        handles.push_back("A" + std::to_string(i));
        drawing.block(name, {{"TAG"}}).inModel({handles.back(), name});
    }
    open(drawing);
    AttributeUpdate update;
    for (int i = 0; i < kReferences; ++i) {
        update.outOfDateRefs.append(id(handles[static_cast<std::size_t>(i % kBlocks)].c_str()));
    }
    const AttributeUpdateForm form(update);
    ASSERT_EQ(form.rows().size(), 10U);
    for (const AttributeUpdateForm::Row& row : form.rows()) {
        EXPECT_EQ(row.name, row.source + L" (10000)");
    }
}

TEST_F(AttributeForm, HasNoRowForAnonymousBlocks)
{
    BlockDrawing drawing;
    drawing.block("*U1", {{"WOOD"}})
        .block("DOOR", {{"WOOD"}})
        .inModel({"A1", "*U1"})
        .inModel({"A2", "DOOR"})
        .inModel({"A3", "*U1", {{"WOOD"}}});
    open(drawing);
    AttributeUpdate update = detected();
    ASSERT_EQ(described(update.outOfDateRefs), "A1 A2");
    ASSERT_EQ(described(update.upToDateRefs), "A3");
    const AttributeUpdateForm form(update);
    EXPECT_EQ(rowsOf(form), "x DOOR | DOOR | +WOOD\n");
}

TEST_F(AttributeForm, PassesOverReferencesThatCannotBeOpened)
{
    open(doors().inModel({"A4", "WINDOW", {{"WOOD", "elm"}}}));
    const AcDbObjectIdArray all = references({"A1", "A3", "A4", "A2"});
    AttributeUpdate update = updateOf(all);
    erase(id("A2"));
    {
        const Opened<AcDbObject> held(id("A1"), AcDb::kForWrite);
        // A4 is of no block of the drawing; of DOOR one reference is left.
        EXPECT_EQ(rowsOf(AttributeUpdateForm(update)), "x DOOR | DOOR | -OLD\n");
    }
    const Opened<AcDbObject> held(block(L"DOOR"), AcDb::kForWrite);
    const AttributeUpdateForm form(update);
    EXPECT_EQ(rowsOf(form), "");
    EXPECT_EQ(form.current(), std::nullopt);
    EXPECT_EQ(printed(), "");
}

TEST_F(AttributeForm, ComparesWhatCanBeReadOfAReference)
{
    BlockDrawing drawing;
    drawing.block("DOOR", {{"WOOD"}, {"MAKER", "Jansen", true}})
        .inModel({"A1", "DOOR", {{"WOOD", "oak", false, "31"}, {"OLD"}}});
    open(drawing);
    const Opened<AcDbObject> held(id("31"), AcDb::kForWrite);
    AttributeUpdate update = updateOf(references({"A1"}));
    EXPECT_EQ(rowsOf(AttributeUpdateForm(update)), "x DOOR | DOOR | +WOOD +MAKER -OLD\n");
    EXPECT_EQ(printed(),
              failure("xx_get_bl_attributes", 53, "0", std::to_string(Acad::eWasOpenForWrite)));
}

// --- rows of records -----------------------------------------------------------------------------

TEST_F(AttributeForm, HasARowForEachRecordWithThePathOfItsDrawing)
{
    open(doors());
    static_cast<void>(writeFile(L"DOOR.DWG", {{"NUMBER"}, {"wood"}}));
    static_cast<void>(writeFile(L"GATE.DWG", {{"WIDTH"}}));
    AttributeUpdate update = detected(kRecords);
    const AttributeUpdateForm form(update);
    EXPECT_EQ(rowsOf(form),
              "x DOOR | ~/DOOR.DWG | +NUMBER -MAKER\n"
              "x GATE | ~/GATE.DWG | +WIDTH -COLOR\n");
    EXPECT_FALSE(form.rows()[0].isReference);
    EXPECT_EQ(form.rows()[1].id, block(L"GATE"));
}

TEST_F(AttributeForm, KeepsTheRowOfARecordWhoseDrawingIsGone)
{
    open(doors());
    static_cast<void>(writeFile(L"GATE.DWG", {{"WIDTH"}}));
    AttributeUpdate update = detected(kRecords);
    folder.remove(L"GATE.DWG");
    EXPECT_EQ(rowsOf(AttributeUpdateForm(update)), "x GATE |  | -COLOR\n");
    EXPECT_EQ(printed(), "");
}

TEST_F(AttributeForm, PassesOverRecordsThatCannotBeOpened)
{
    open(doors());
    static_cast<void>(writeFile(L"DOOR.DWG", {{"WIDTH"}}));
    static_cast<void>(writeFile(L"GATE.DWG", {{"WIDTH"}}));
    AttributeUpdate update = detected(kRecords);
    const Opened<AcDbObject> held(block(L"DOOR"), AcDb::kForWrite);
    EXPECT_EQ(rowsOf(AttributeUpdateForm(update)), "x GATE | ~/GATE.DWG | +WIDTH -COLOR\n");
}

TEST_F(AttributeForm, ShowsRecordsBeforeReferences)
{
    open(doors());
    AttributeUpdate update = updateOf(references({"A1", "A3"}), references({"A2"}));
    update.outOfDateRecords.append(block(L"DOOR"));
    AttributeUpdateForm form(update);
    // The counts are those of references: the row of the record keeps its name.
    EXPECT_EQ(rowsOf(form),
              "x DOOR |  | -WOOD -MAKER\n"
              "x DOOR (2) | DOOR | +WOOD\n"
              "- GATE | GATE |\n");
    form.accept();
    EXPECT_EQ(described(update.outOfDateRecords), toUtf8(handleOf(block(L"DOOR"))));
    EXPECT_EQ(described(update.outOfDateRefs), "A1");
}

// --- the current row -----------------------------------------------------------------------------

TEST_F(AttributeForm, BeginsWithTheFirstRowAndNoButton)
{
    open(doors());
    AttributeUpdate update = detected();
    const AttributeUpdateForm form(update);
    EXPECT_EQ(form.current(), 0U);
    EXPECT_EQ(tagsOf(form), "+WOOD");
    EXPECT_TRUE(form.canBrowse());
    EXPECT_FALSE(form.hasBrowseButton());
}

TEST_F(AttributeForm, HasNothingCurrentWithoutRows)
{
    open(doors());
    AttributeUpdate update;
    AttributeUpdateForm form(update);
    form.select(0);
    EXPECT_EQ(form.current(), std::nullopt);
    EXPECT_EQ(tagsOf(form), "");
    EXPECT_FALSE(form.canBrowse());
    EXPECT_FALSE(form.hasBrowseButton());
    EXPECT_FALSE(form.browse(folder.path(L"lib.dxf")));
    form.accept();
    EXPECT_TRUE(update.outOfDateRefs.isEmpty());
    EXPECT_EQ(printed(), "");
}

TEST_F(AttributeForm, ASelectedReferenceHasTheButton)
{
    open(doors());
    AttributeUpdate update = updateOf(references({"A1", "A2"}));
    update.outOfDateRecords.append(block(L"DOOR"));
    AttributeUpdateForm form(update);
    form.select(1);
    EXPECT_EQ(form.current(), 1U);
    EXPECT_EQ(tagsOf(form), "+WOOD");
    EXPECT_TRUE(form.hasBrowseButton());
    form.select(0);
    EXPECT_EQ(tagsOf(form), "-WOOD -MAKER");
    EXPECT_FALSE(form.hasBrowseButton()) << "that is a record";
    EXPECT_FALSE(form.canBrowse());
    form.select(2);
    EXPECT_TRUE(form.hasBrowseButton());
    for (const AttributeUpdateForm::Index none : {AttributeUpdateForm::Index(), {3}}) {
        form.select(2);
        form.select(none);
        EXPECT_FALSE(form.hasBrowseButton());
        EXPECT_EQ(form.current(), 2U);
    }
}

TEST_F(AttributeForm, TheButtonGoesWhenARowIsCheckedOrUnchecked)
{
    open(doors());
    AttributeUpdate update = detected();
    AttributeUpdateForm form(update);
    form.select(1);
    form.check(1, false);
    EXPECT_TRUE(form.hasBrowseButton()) << "nothing has changed";
    form.check(1, true);
    EXPECT_FALSE(form.hasBrowseButton());
    form.select(1);
    form.check(0, false);
    EXPECT_FALSE(form.hasBrowseButton());
}

// --- another source ------------------------------------------------------------------------------

TEST_F(AttributeForm, ABrowsedDrawingReplacesTheDefinitionAtOnce)
{
    open(doors());
    const std::wstring library
        = writeLibrary(L"lib.dxf", "DOOR", {{"WOOD"}, {"LOCK"}, {"MAKER", "Smit", true}});
    AttributeUpdate update = detected();
    AttributeUpdateForm form(update);
    ASSERT_TRUE(form.browse(library));
    EXPECT_EQ(definitionsOf(L"DOOR"), "WOOD= LOCK= MAKER=Smit");
    EXPECT_EQ(rowsOf(form),
              "x DOOR (2) | DOOR | +WOOD +LOCK\n"
              "- GATE | GATE |\n");
    EXPECT_EQ(tagsOf(form), "+WOOD +LOCK");
    EXPECT_EQ(described(update.outOfDateRefs), "A1 A3") << "only accept() changes it";
    EXPECT_TRUE(services.alerts.empty());
    EXPECT_EQ(printed(), "");
}

TEST_F(AttributeForm, ARowThatDiffersAfterBrowsingIsChecked)
{
    open(doors());
    const std::wstring library = writeLibrary(L"lib.dxf", "GATE", {{"COLOUR"}});
    AttributeUpdate update = detected();
    AttributeUpdateForm form(update);
    form.select(1);
    ASSERT_TRUE(form.browse(library));
    EXPECT_TRUE(form.rows()[1].isChecked);
    EXPECT_EQ(tagsOf(form), "+COLOUR -COLOR");
    EXPECT_FALSE(form.hasBrowseButton()) << "it was checked";
    form.select(1);
    ASSERT_TRUE(form.browse(library));
    EXPECT_TRUE(form.hasBrowseButton()) << "it was checked before";
}

TEST_F(AttributeForm, ARowThatDoesNotDifferAfterBrowsingStaysAsItIs)
{
    open(doors());
    const std::wstring gate = writeLibrary(L"gate.dxf", "GATE", {{"COLOR", "green"}});
    const std::wstring door = writeLibrary(L"door.dxf", "DOOR", {});
    AttributeUpdate update = detected();
    AttributeUpdateForm form(update);
    ASSERT_TRUE(form.browse(door));
    form.select(1);
    ASSERT_TRUE(form.browse(gate));
    EXPECT_EQ(rowsOf(form),
              "x DOOR (2) | DOOR |\n"
              "- GATE | GATE |\n");
    EXPECT_TRUE(form.hasBrowseButton());
    EXPECT_EQ(definitionsOf(L"GATE"), "COLOR=green");
}

struct BadSource
{
    const char* sentence;
    const wchar_t* file;
    std::vector<std::wstring> alerts; // "~" stands for the folder
};

class UnusableSource : public AttributeUpdateTest, public ::testing::WithParamInterface<BadSource>
{
};

TEST_P(UnusableSource, IsToldAndLeavesTheRowAsItWas)
{
    open(doors());
    static_cast<void>(writeLibrary(L"gates.dxf", "GATE", {{"COLOR"}}));
    static_cast<void>(writeLibrary(L"!old/gates.dxf", "GATE", {{"COLOR"}}));
    folder.write(L"text.dxf", "no drawing");
    folder.write(L"!old/text.dxf", "no drawing");
    AttributeUpdate update = detected();
    AttributeUpdateForm form(update);
    form.select(0);
    form.check(0, false);
    const std::string before = rowsOf(form);
    EXPECT_FALSE(form.browse(folder.path(GetParam().file)));
    EXPECT_EQ(rowsOf(form), before);
    EXPECT_EQ(definitionsOf(L"DOOR"), "WOOD=pine MAKER=Jansen");
    EXPECT_FALSE(isDocumentModified());
    std::vector<std::string> alerts;
    for (const std::wstring& alert : services.alerts) {
        alerts.push_back(folder.homely(alert));
    }
    std::vector<std::string> expected;
    for (const std::wstring& alert : GetParam().alerts) {
        expected.push_back(toUtf8(alert));
    }
    EXPECT_EQ(alerts, expected);
    EXPECT_TRUE(!alerts.empty() || !printed().empty());
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(AttributeForm, UnusableSource, ::testing::Values(
    BadSource {"AFileThatIsNotThere", L"weg.dxf", {L"File ~/weg.dxf not found", L"Block DOOR not found"}},
    BadSource {"ADrawingWithoutTheBlock", L"gates.dxf", {L"Block DOOR not found"}},
    BadSource {"AFileThatIsNoDrawing", L"text.dxf", {L"Block DOOR not found"}},
    BadSource {"NoDrawingInAFolderWithTheMark", L"!old/text.dxf", {}},
    BadSource {"NoFileInAFolderWithTheMark", L"!old/weg.dxf", {}},
    BadSource {"NoBlockInAFolderWithTheMark", L"!old/gates.dxf", {L"Block DOOR not found"}}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

TEST_F(AttributeForm, TakesADrawingWhosePathHasTheMarkBehindFilesOrIsLong)
{
    const std::wstring longName(200, L'a');
    for (const std::wstring& name :
         {std::wstring(L"!old/lib!.dxf"), longName + L'/' + longName + L"/lib.dxf"}) {
        open(doors());
        const std::wstring library = writeLibrary(name, "DOOR", {{"LOCK"}});
        AttributeUpdate update = detected();
        AttributeUpdateForm form(update);
        EXPECT_TRUE(form.browse(library)) << toUtf8(name);
        EXPECT_EQ(definitionsOf(L"DOOR"), "LOCK=");
        EXPECT_EQ(tagsOf(form), "+LOCK");
        EXPECT_TRUE(services.alerts.empty());
        EXPECT_EQ(printed(), "");
    }
}

TEST_F(AttributeForm, ARecordHasNoOtherSource)
{
    open(doors());
    static_cast<void>(writeFile(L"DOOR.DWG", {{"NUMBER"}}));
    const std::wstring library = writeLibrary(L"lib.dxf", "DOOR", {{"LOCK"}});
    AttributeUpdate update = detected(kRecords);
    AttributeUpdateForm form(update);
    form.select(0);
    EXPECT_FALSE(form.canBrowse());
    EXPECT_FALSE(form.browse(library));
    EXPECT_FALSE(isDocumentModified());
}

// --- what is chosen ------------------------------------------------------------------------------

TEST_F(AttributeForm, LeavesWhatIsCheckedInTheOrderOfTheRows)
{
    open(doors());
    AttributeUpdate update = detected();
    AttributeUpdateForm form(update);
    form.check(1, true);
    form.accept();
    EXPECT_EQ(described(update.outOfDateRefs), "A1 A2") << "one reference stands for its block";
    EXPECT_EQ(described(update.upToDateRefs), "A2");
    form.check(0, false);
    form.accept();
    EXPECT_EQ(described(update.outOfDateRefs), "A2");
    form.check(1, false);
    form.accept();
    EXPECT_EQ(described(update.outOfDateRefs), "");
    EXPECT_EQ(described(update.upToDateRefs), "A2");
}

TEST_F(AttributeForm, LeavesTheRecordsThatAreChecked)
{
    open(doors());
    static_cast<void>(writeFile(L"DOOR.DWG", {{"WIDTH"}}));
    static_cast<void>(writeFile(L"GATE.DWG", {{"WIDTH"}}));
    AttributeUpdate update = detected(kRecords);
    AttributeUpdateForm form(update);
    form.check(0, false);
    EXPECT_EQ(update.outOfDateRecords.length(), 2);
    form.accept();
    EXPECT_EQ(described(update.outOfDateRecords), toUtf8(handleOf(block(L"GATE"))));
    EXPECT_TRUE(update.outOfDateRefs.isEmpty());
}

} // namespace

} // namespace corma::testing
