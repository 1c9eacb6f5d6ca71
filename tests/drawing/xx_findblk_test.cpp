#include "BlockTest.h"
#include "drawing/xx_findblk.h"
#include "platform/text.h"

#include <gtest/gtest.h>
#include <malloc.h>
#include <stdexcept>

using corma::host::Opened;
using corma::host::TableKind;

namespace corma::testing {

namespace {

/// What is handed over beside the text.
struct How
{
    int report = 1;
    AcDbDatabase* source = nullptr;
    const wchar_t* password = nullptr;
};

// Loads blocks into a new drawing, which is the working one.
class FindBlock : public BlockTest
{
protected:
    FindBlock() { acdbHostApplicationServices()->setWorkingDatabase(&m_to.database()); }

    AcDbObjectId find(const wchar_t* text, const How& how = {})
    {
        m_text = text;
        m_status = 0;
        const AcDbObjectId id
            = xx_findblk(m_text.data(), how.report, &m_status, nullptr, how.source, how.password);
        m_text.resize(std::wcslen(m_text.c_str()));
        return id;
    }

    // A call that gives a block of the working drawing.
    void expectLoaded(const wchar_t* block, const wchar_t* text, const How& how = {})
    {
        const AcDbObjectId id = find(text, how);
        EXPECT_EQ(m_status, RTNORM) << toUtf8(text);
        EXPECT_FALSE(id.isNull()) << toUtf8(text);
        EXPECT_EQ(id, m_to.block(block)) << toUtf8(text);
    }

    // A call that fails, leaves no trace in the drawing, and tells what is returned.
    std::string refusal(const wchar_t* text, int status, const How& how = {})
    {
        const std::string before = m_to.bytes();
        printed();
        EXPECT_TRUE(find(text, how).isNull());
        EXPECT_EQ(m_status, status);
        EXPECT_FALSE(m_to.database().isModified());
        EXPECT_EQ(m_to.bytes(), before);
        const std::string told = printed();
        const std::string alerted = alerts();
        return told + (alerted.empty() ? "" : "\n{" + alerted + "}");
    }

    // Puts a block into the drawing that is one line, and takes the drawing for saved.
    AcDbObjectId define(const wchar_t* name, int length)
    {
        const CloneDrawing from(
            read(folder.write(L"defined.dxf", lineLibrary(toUtf8(name), length))));
        const AcDbObjectId id
            = find((L"x!$" + std::wstring(name)).c_str(), {.source = &from.database()});
        EXPECT_EQ(m_status, RTNORM);
        EXPECT_FALSE(id.isNull());
        EXPECT_FALSE(m_to.bytes().empty());
        return id;
    }

    static std::unique_ptr<AcDbDatabase> read(const std::wstring& path)
    {
        auto database = std::make_unique<AcDbDatabase>(false);
        EXPECT_EQ(database->readDwgFile(path.c_str()), Acad::eOk);
        return database;
    }

    // Puts a reference into the model space.
    AcDbObjectId refer(AcDbObjectId block)
    {
        Opened<AcDbBlockTableRecord> model(m_to.block(ACDB_MODEL_SPACE), AcDb::kForWrite);
        auto made = std::make_unique<AcDbBlockReference>(AcGePoint3d(1, 2, 3), block);
        AcDbObjectId id;
        EXPECT_EQ(model->appendAcDbEntity(id, made.get()), Acad::eOk);
        made.release()->close();
        return id;
    }

    static AcDbObjectId blockOf(AcDbObjectId reference)
    {
        return Opened<AcDbBlockReference>(reference)->blockTableRecord();
    }

    CloneDrawing m_to;
    std::wstring m_text; // what the call left of it
    int m_status = 0; // of the last call
};

// --- the text ------------------------------------------------------------------------------------

struct BlockTextRow
{
    const char* sentence;
    const wchar_t* text;
    const wchar_t* left; // of the text
    const char* alerts; // name the file and the block that were looked for
};

class BlockText : public FindBlock, public ::testing::WithParamInterface<BlockTextRow>
{
};

TEST_P(BlockText, NamesFileAndBlock)
{
    EXPECT_EQ(refusal(GetParam().text, RTERROR), "\n{" + std::string(GetParam().alerts) + "}");
    EXPECT_EQ(m_text, GetParam().left);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Of, BlockText, ::testing::Values(
    BlockTextRow {"AName",                     L"door",                 L"door",       "Block door not found"},
    BlockTextRow {"ANameWithAnExtension",      L"Door.dwt",             L"Door.dwt",   "Block Door.dwt not found"},
    BlockTextRow {"APath",                     L"C:\\lib\\door.dwg",    L"C:\\lib\\door.dwg", "Block C:\\lib\\door.dwg not found"},
    BlockTextRow {"APathOfThisPlatform",       L"/lib/door",            L"/lib/door",  "Block /lib/door not found"},
    BlockTextRow {"AFileAndABlock",            L"details.dwg!door",     L"door",       "File details.dwg not found|Block DOOR not found"},
    BlockTextRow {"AFileOfNoKind",             L"Details!door",         L"door",       "File Details not found|Block DOOR not found"},
    BlockTextRow {"AFileWithFolders",          L"a\\b/c.dxf!Door",      L"Door",       "File a\\b/c.dxf not found|Block DOOR not found"},
    BlockTextRow {"ABlockWithAFolder",         L"c.dwg!a\\Door.dwg",    L"a\\Door.dwg", "File c.dwg not found|Block DOOR not found"},
    BlockTextRow {"AForcedName",               L"$door",                L"$door",      "Block door not found"},
    BlockTextRow {"AForcedBlockOfAFile",       L"details.dwg!$door",    L"$door",      "File details.dwg not found|Block DOOR not found"},
    BlockTextRow {"TwoDollars",                L"$$door",               L"$$door",     "Block $door not found"},
    BlockTextRow {"ADollarWithin",             L"do$or",                L"do$or",      "Block do$or not found"},
    BlockTextRow {"ADollarBehindAFolder",      L"lib\\$door",           L"lib\\$door", "Block lib\\$door not found"},
    BlockTextRow {"ADollarAtTheEnd",           L"door$",                L"door$",      "Block door$ not found"},
    BlockTextRow {"ADollarBeforeAFile",        L"$details.dwg!door",    L"door",       "File $details.dwg not found|Block DOOR not found"},
    BlockTextRow {"TwoDollarsBehindAFile",     L"details.dwg!$$door",   L"$$door",     "File details.dwg not found|Block $DOOR not found"},
    BlockTextRow {"TwoMarks",                  L"a.dwg!b!c",            L"b!c",        "File a.dwg not found|Block B!C not found"},
    BlockTextRow {"TwoMarksWithExtensions",    L"a.dwg!b.dwg!c",        L"b.dwg!c",    "File a.dwg not found|Block B not found"},
    BlockTextRow {"TwoMarksInARow",            L"a.dwg!!c",             L"!c",         "File a.dwg not found|Block !C not found"},
    BlockTextRow {"AnEmptyFile",               L"!door",                L"door",       "Block door not found"},
    BlockTextRow {"AnEmptyFileAndADollar",     L"!$door",               L"$door",      "Block door not found"},
    BlockTextRow {"ADollarForAFile",           L"$!door",               L"door",       "File $ not found|Block DOOR not found"},
    BlockTextRow {"AnEmptyName",               L"details.dwg!",         L"",           "File details.dwg not found|Block  not found"},
    BlockTextRow {"AnEmptyForcedName",         L"details.dwg!$",        L"$",          "File details.dwg not found|Block  not found"},
    BlockTextRow {"AMarkAlone",                L"!",                    L"",           "Block  not found"},
    BlockTextRow {"ADollarAlone",              L"$",                    L"$",          "Block  not found"},
    BlockTextRow {"AMarkAndADollar",           L"!$",                   L"$",          "Block  not found"},
    BlockTextRow {"ABlank",                    L" ",                    L" ",          "Block   not found"},
    BlockTextRow {"AFolder",                   L"lib/",                 L"lib/",       "Block lib/ not found"},
    BlockTextRow {"PercentSigns",              L"%s%d!%n",              L"%n",         "File %s%d not found|Block %N not found"}),
    [](const auto& row) { return std::string(row.param.sentence); });

// clang-format on

TEST_P(BlockText, TellsNothingWithoutReport)
{
    EXPECT_EQ(refusal(GetParam().text, RTERROR, {.report = 0}), "");
    EXPECT_EQ(m_text, GetParam().left);
}

TEST_F(FindBlock, AnEmptyTextFindsNothingAndIsNoError)
{
    EXPECT_EQ(refusal(L"", RTNORM), "");
    EXPECT_TRUE(xx_findblk(nullptr, 1, &m_status, nullptr, nullptr, nullptr).isNull());
    EXPECT_EQ(m_status, RTNORM);
    EXPECT_TRUE(xx_findblk(nullptr, &m_status).isNull());
    EXPECT_EQ(m_status, RTNORM);
    EXPECT_EQ(printed() + alerts(), "");
}

TEST_F(FindBlock, WithoutADrawingNothingIsFoundAndTheTextStays)
{
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    folder.write(L"here/door.dwg", lineDrawing(3));
    for (const wchar_t* text : {L"door", L"$door", L"details.dwg!door"}) {
        EXPECT_TRUE(find(text).isNull());
        EXPECT_EQ(m_status, RTNORM);
        EXPECT_EQ(m_text, text);
    }
    EXPECT_EQ(printed() + alerts(), "");
}

// The longest file part has 260 characters.
TEST_F(FindBlock, AFileOfMoreThan260CharactersIsCut)
{
    for (const std::size_t length : {259U, 260U, 261U, 300U}) {
        std::wstring file(length, L'f');
        file[length - 1] = L'e';
        const std::string told = toUtf8(file.substr(0, 260));
        EXPECT_EQ(refusal((file + L"!door").c_str(), RTERROR),
                  "\n{File " + told + " not found|Block DOOR not found}")
            << length;
        EXPECT_EQ(m_text, L"door");
    }
}

// --- a block that is there -----------------------------------------------------------------------

TEST_F(FindBlock, ThatIsDefinedGivesItsIdAndOpensNoFile)
{
    const AcDbObjectId door = define(L"DOOR", 1);
    folder.write(L"here/door.dwg", "no drawing: reading it would be told");
    for (const wchar_t* text : {L"door", L"Door.dwg", L"C:\\lib\\door.dwt", L"!door"}) {
        EXPECT_EQ(find(text), door) << toUtf8(text);
        EXPECT_EQ(m_status, RTNORM);
    }
    EXPECT_EQ(printed() + alerts(), "");
    EXPECT_FALSE(m_to.database().isModified());
    EXPECT_EQ(m_to.content(L"DOOR"), line(1));
}

TEST_F(FindBlock, ThatIsDefinedDropsTheFile)
{
    const AcDbObjectId door = define(L"DOOR", 1);
    folder.write(L"here/details.dwg", "no drawing: reading it would be told");
    EXPECT_EQ(find(L"details.dwg!door"), door);
    EXPECT_EQ(m_status, RTNORM);
    EXPECT_EQ(m_text, L"door");
    EXPECT_EQ(find(L"none.dwg!door"), door);
    EXPECT_EQ(m_status, RTNORM);
    EXPECT_EQ(printed() + alerts(), "");
    EXPECT_FALSE(m_to.database().isModified());
}

TEST_F(FindBlock, InADrawingThatIsGivenLeavesTheWorkingOneAlone)
{
    define(L"DOOR", 1);
    folder.write(L"here/door.dwg", lineDrawing(2));
    const CloneDrawing other;
    std::wstring text = L"door";
    const AcDbObjectId id = xx_findblk(text.data(), &m_status, &other.database());
    EXPECT_EQ(m_status, RTNORM);
    EXPECT_EQ(id, other.block(L"DOOR"));
    EXPECT_EQ(other.content(L"DOOR"), line(2));
    EXPECT_EQ(m_to.content(L"DOOR"), line(1));
    EXPECT_FALSE(m_to.database().isModified());
}

// --- a drawing as a block ------------------------------------------------------------------------

TEST_F(FindBlock, ThatIsAbsentIsInsertedFromItsDrawing)
{
    folder.write(L"module/blokken/door.dwg", lineDrawing(3));
    const AcDbObjectId door = find(L"Door");
    EXPECT_EQ(m_status, RTNORM);
    EXPECT_FALSE(door.isNull());
    EXPECT_EQ(door, m_to.block(L"DOOR"));
    EXPECT_TRUE(m_to.database().isModified());
    EXPECT_EQ(m_to.reloaded().content(L"DOOR"), line(3));
    EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), &m_to.database());
    EXPECT_EQ(currentDocument(), nullptr);
    EXPECT_EQ(printed() + alerts(), "");
}

TEST_F(FindBlock, KeepsThePathForTheSearch)
{
    const std::wstring path = folder.write(L"lib/door.dwg", lineDrawing(3));
    folder.write(L"module/door.dwg", lineDrawing(4));
    expectLoaded(L"DOOR", path.c_str());
    EXPECT_EQ(m_to.content(L"DOOR"), line(3));
    EXPECT_EQ(m_text, path);
}

TEST_F(FindBlock, ReadsATemplateUnderTheNameWithoutItsExtension)
{
    folder.write(L"here/door.dwt", lineDrawing(3));
    expectLoaded(L"DOOR", L"door.dwt");
    EXPECT_EQ(m_to.content(L"DOOR"), line(3));
}

TEST_F(FindBlock, ForcedReadsTheFileAndRedefinesTheBlock)
{
    const AcDbObjectId door = define(L"DOOR", 1);
    const AcDbObjectId reference = refer(door);
    folder.write(L"here/door.dwg", lineDrawing(2));
    EXPECT_EQ(find(L"door"), door);
    EXPECT_EQ(m_to.content(L"DOOR"), line(1));
    EXPECT_EQ(find(L"$door"), door);
    EXPECT_EQ(m_status, RTNORM);
    EXPECT_EQ(m_text, L"$door");
    EXPECT_EQ(m_to.content(L"DOOR"), line(2));
    EXPECT_EQ(blockOf(reference), door);
    const CloneDrawing saved = m_to.reloaded();
    EXPECT_EQ(saved.content(L"DOOR"), line(2));
    EXPECT_EQ(saved.model(), "INSERT 2=DOOR 10=1 20=2 30=3\n");
}

TEST_F(FindBlock, OfAnyCaseIsRedefinedUnderTheNameThatItHas)
{
    const AcDbObjectId door = define(L"Door", 1);
    folder.write(L"here/door.dwg", lineDrawing(2));
    EXPECT_EQ(find(L"$DOOR"), door);
    EXPECT_EQ(m_to.content(L"door"), line(2));
}

TEST_F(FindBlock, ForcedWithoutAFileLeavesTheDefinition)
{
    define(L"DOOR", 1);
    EXPECT_EQ(refusal(L"$door", RTERROR), "\n{Block door not found}");
    EXPECT_EQ(m_to.content(L"DOOR"), line(1));
}

// --- a block out of a drawing --------------------------------------------------------------------

TEST_F(FindBlock, OfANamedDrawingIsClonedAlone)
{
    copyData("r2000", L"support/details.dwg");
    const std::string before = m_to.names(TableKind::blockRecord);
    const AcDbObjectId bolt = find(L"details.dwg!bout");
    EXPECT_EQ(m_status, RTNORM);
    EXPECT_FALSE(bolt.isNull());
    EXPECT_EQ(bolt, m_to.block(L"BOUT"));
    EXPECT_EQ(m_text, L"bout");
    EXPECT_EQ(m_to.reloaded().names(TableKind::blockRecord), before + " BOUT");
    EXPECT_EQ(printed() + alerts(), "");
}

TEST_F(FindBlock, OfANamedDrawingNeedsNoExtension)
{
    folder.write(L"here/details.dwg", lineLibrary("DOOR", 3));
    expectLoaded(L"DOOR", L"details!door");
    EXPECT_EQ(m_to.content(L"DOOR"), line(3));
}

TEST_F(FindBlock, OfADxfFileStaysThatOfADxfFile)
{
    folder.write(L"here/details.dxf.dwg", lineLibrary("DOOR", 4));
    EXPECT_EQ(refusal(L"details.dxf!door", RTERROR),
              "\n{File details.dxf not found|Block DOOR not found}");
    folder.write(L"here/details.dxf", lineLibrary("DOOR", 3));
    expectLoaded(L"DOOR", L"details.dxf!door");
    EXPECT_EQ(m_to.content(L"DOOR"), line(3));
}

TEST_F(FindBlock, OfATemplateIsClonedAsWell)
{
    folder.write(L"here/details.dwt", lineLibrary("DOOR", 3));
    expectLoaded(L"DOOR", L"details.dwt!door");
}

TEST_F(FindBlock, OfANamedDrawingForcedReplacesTheDefinitionAndKeepsReferences)
{
    const AcDbObjectId door = define(L"DOOR", 1);
    const AcDbObjectId reference = refer(door);
    folder.write(L"here/details.dwg", lineLibrary("Door", 2));
    EXPECT_EQ(find(L"details.dwg!$door"), door);
    EXPECT_EQ(m_status, RTNORM);
    EXPECT_EQ(m_text, L"$door");
    EXPECT_EQ(blockOf(reference), door);
    const CloneDrawing saved = m_to.reloaded();
    EXPECT_EQ(saved.content(L"DOOR"), line(2));
    EXPECT_EQ(saved.model(), "INSERT 2=DOOR 10=1 20=2 30=3\n");
}

TEST_F(FindBlock, ThatBeginsWithADollarIsNeverOneOfANamedDrawing)
{
    folder.write(L"here/details.dwg", lineLibrary("$DOOR", 2));
    EXPECT_EQ(refusal(L"details.dwg!$$door", RTERROR), "\n{Block $DOOR not found}");
}

// --- what comes along ----------------------------------------------------------------------------

// A layer table with one layer of a colour.
std::string layerTable(int color)
{
    return "0 TABLE\n2 LAYER\n70 1\n0 LAYER\n2 WALLS\n70 0\n62 " + std::to_string(color)
        + "\n6 CONTINUOUS\n0 ENDTAB\n";
}

constexpr std::string_view kWall = "0 LINE\n8 WALLS\n10 0.0\n20 0.0\n30 0.0\n11 1.0\n21 0.0\n"
                                   "31 0.0\n";

class LoadedLayer : public FindBlock
{
protected:
    LoadedLayer()
    {
        const std::string block = "0 BLOCK\n8 0\n2 WALL\n70 0\n10 0.0\n20 0.0\n30 0.0\n"
            + std::string(kWall) + "0 ENDBLK\n8 0\n";
        folder.write(L"here/lib.dwg",
                     drawingOf({.version = "AC1009", .tables = layerTable(3), .blocks = block}));
        folder.write(L"here/wall.dwg",
                     drawingOf({.version = "AC1009", .tables = layerTable(5), .entities = kWall}));
    }

    std::string layer() const
    {
        const AcDbObjectId id = m_to.entry(TableKind::layer, L"WALLS");
        const std::string told = id.isNull() ? "" : m_to.described(*id.stub());
        const std::size_t color = told.find(" 62=");
        return color == std::string::npos ? told : told.substr(color + 1, 4);
    }
};

TEST_F(LoadedLayer, OfAClonedBlockReplacesThatOfTheDrawing)
{
    expectLoaded(L"WALL", L"wall");
    EXPECT_EQ(layer(), "62=5");
    expectLoaded(L"WALL", L"lib.dwg!$wall");
    EXPECT_EQ(layer(), "62=3");
}

TEST_F(LoadedLayer, OfAnInsertedDrawingGivesWayToThatOfTheDrawing)
{
    expectLoaded(L"WALL", L"lib.dwg!wall");
    EXPECT_EQ(layer(), "62=3");
    expectLoaded(L"WALL", L"$wall");
    EXPECT_EQ(layer(), "62=3");
}

// --- a source of the caller ----------------------------------------------------------------------

class FromASource : public FindBlock
{
protected:
    FromASource()
        : m_from(read(folder.write(L"from.dxf", lineLibrary("DOOR", 7))))
    {
        // So that its model space holds something as well.
        const AcDbObjectId door = m_from.block(L"DOOR");
        Opened<AcDbBlockTableRecord> model(m_from.block(ACDB_MODEL_SPACE), AcDb::kForWrite);
        auto made = std::make_unique<AcDbBlockReference>(AcGePoint3d(0, 0, 0), door);
        EXPECT_EQ(model->appendAcDbEntity(made.get()), Acad::eOk);
        made.release()->close();
        model.close();
        m_bytes = m_from.bytes();
    }

    void expectUsable()
    {
        EXPECT_FALSE(m_from.database().isModified());
        EXPECT_EQ(m_from.bytes(), m_bytes);
        EXPECT_EQ(m_from.content(L"DOOR"), line(7));
        int status = 0;
        EXPECT_EQ(xx_findblk_int(L"door", &status, &m_from.database()), m_from.block(L"DOOR"));
        EXPECT_EQ(host::openObjectCount(), 0);
    }

    CloneDrawing m_from;
    std::string m_bytes;
};

TEST_F(FromASource, ABlockIsClonedWithoutAnyFile)
{
    for (const wchar_t* text : {L"none.dwg!door", L"none.dwg!$door"}) {
        expectLoaded(L"DOOR", text, {.source = &m_from.database()});
        EXPECT_EQ(m_to.content(L"DOOR"), line(7));
        expectUsable();
    }
    EXPECT_EQ(printed() + alerts(), "");
}

TEST_F(FromASource, ABlockThatItLacksIsAbsent)
{
    folder.write(L"here/details.dwg", lineLibrary("WINDOW", 3));
    EXPECT_EQ(refusal(L"details.dwg!window", RTERROR, {.source = &m_from.database()}),
              "\n{Block WINDOW not found}");
    expectUsable();
}

TEST_F(FromASource, ADrawingBecomesTheBlockOnceItsFileIsFound)
{
    EXPECT_EQ(refusal(L"Plan", RTERROR, {.source = &m_from.database()}),
              "\n{Block Plan not found}");
    folder.write(L"here/plan.dwg", "no drawing: reading it would be told");
    expectLoaded(L"PLAN", L"plan", {.source = &m_from.database()});
    EXPECT_EQ(m_to.content(L"PLAN"), "INSERT 2=DOOR 10=0 20=0 30=0\n");
    EXPECT_EQ(m_to.content(L"DOOR"), line(7));
    expectUsable();
    EXPECT_EQ(printed() + alerts(), "");
}

TEST_F(FromASource, NoPasswordIsAskedFor)
{
    folder.write(L"here/plan.dwg", "");
    EXPECT_FALSE(find(L"plan", {.source = &m_from.database(), .password = L"geheim"}).isNull());
    EXPECT_EQ(m_status, RTNORM);
}

TEST_F(FromASource, TheDestinationItselfIsRefused)
{
    define(L"DOOR", 1);
    folder.write(L"here/door.dwg", "");
    EXPECT_EQ(refusal(L"x!$door", RTERROR, {.source = &m_to.database()}),
              "\n{Block DOOR not found}");
    EXPECT_EQ(refusal(L"$door", RTCAN, {.source = &m_to.database()}),
              "\nError in file xx_findblk.cpp on line 170\n(0, ec = 35)");
}

TEST_F(FromASource, ThatIsRefusedStaysAsItIs)
{
    const CloneDrawing unknown(read(copyData("r2000", L"unknown.dxf")));
    const std::string before = unknown.bytes();
    folder.write(L"here/plan.dwg", "");
    EXPECT_EQ(refusal(L"plan", RTCAN, {.source = &unknown.database()}),
              "\nCannot clone a record of type KVRTESTBORD: its content is not understood."
              "\nError in file xx_findblk.cpp on line 170\n(0, ec = 1)");
    EXPECT_FALSE(unknown.database().isModified());
    EXPECT_EQ(unknown.bytes(), before);
    expectLoaded(L"DEUR", L"x!deur", {.source = &unknown.database()});
}

TEST_F(FromASource, ATableThatIsOpenMakesTheBlockAbsent)
{
    Opened<AcDbBlockTable> table;
    ASSERT_EQ(m_from.database().getSymbolTable(table.out(), AcDb::kForWrite), Acad::eOk);
    EXPECT_EQ(refusal(L"x!door", RTERROR, {.source = &m_from.database()}),
              "\n{Block DOOR not found}");
    table.close();
    expectUsable();
}

TEST_F(FromASource, TheShortFormTakesItToo)
{
    std::wstring text = L"x!door";
    const AcDbObjectId door
        = xx_findblk(text.data(), &m_status, &m_to.database(), &m_from.database());
    EXPECT_EQ(m_status, RTNORM);
    EXPECT_FALSE(door.isNull());
    EXPECT_EQ(door, m_to.block(L"DOOR"));
    EXPECT_STREQ(text.c_str(), L"door");
    expectUsable();
}

// --- other forms of the call ---------------------------------------------------------------------

TEST_F(FindBlock, ByTheShortFormsTellsWhatIsNotFound)
{
    std::wstring text = L"details.dwg!door";
    EXPECT_TRUE(xx_findblk(text.data(), &m_status).isNull());
    EXPECT_EQ(m_status, RTERROR);
    EXPECT_EQ(alerts(), "File details.dwg not found|Block DOOR not found");
    AcDbObjectId id = m_to.block(ACDB_MODEL_SPACE);
    xx_find_block_recordId_arx(text.data(), &m_status, nullptr, &id);
    EXPECT_TRUE(id.isNull());
    EXPECT_EQ(m_status, RTERROR);
    EXPECT_EQ(alerts(), "Block door not found");
}

TEST_F(FindBlock, ForOtherModulesGivesIdAndStatus)
{
    folder.write(L"here/door.dwg", lineDrawing(3));
    const CloneDrawing other;
    std::wstring text = L"door";
    AcDbObjectId id;
    xx_find_block_recordId_arx(text.data(), &m_status, &other.database(), &id);
    EXPECT_EQ(m_status, RTNORM);
    EXPECT_EQ(id, other.block(L"DOOR"));
    xx_find_block_recordId_arx(text.data(), &m_status, nullptr, &id);
    EXPECT_EQ(m_status, RTNORM);
    EXPECT_EQ(id, m_to.block(L"DOOR"));
}

// --- failures ------------------------------------------------------------------------------------

constexpr const char* kNoDrawing
    = " is no drawing: it begins neither as a DWG nor as a text or binary DXF file";

TEST_F(FindBlock, OfADrawingThatCannotBeReadIsReported)
{
    folder.write(L"here/door.dwg", "no drawing");
    const std::string report = "\n~/here/door.dwg" + std::string(kNoDrawing)
        + "\nError in file xx_findblk.cpp on line 137\n(eUnsupportedFileFormat, ec = 300)";
    EXPECT_EQ(refusal(L"door", RTCAN), report);
    EXPECT_EQ(refusal(L"$door", RTCAN, {.report = 0}), report);
    EXPECT_EQ(refusal(L"door", RTCAN, {.password = L""}), report);
}

TEST_F(FindBlock, OfANamedDrawingThatCannotBeReadIsReported)
{
    for (const char* name : {"details.dwg", "details.dxf"}) {
        folder.write(L"here/" + fromUtf8(name), "no drawing");
        const std::string report = "\n~/here/" + std::string(name) + kNoDrawing
            + "\nError in file xx_findblk.cpp on line 215\n(eUnsupportedFileFormat, ec = 300)";
        const std::wstring text = fromUtf8(name) + L"!door";
        EXPECT_EQ(refusal(text.c_str(), RTCAN), report + "\n{Block DOOR not found}");
        EXPECT_EQ(refusal(text.c_str(), RTCAN, {.report = 0}), report);
    }
}

TEST_F(FindBlock, OfAFolderIsReported)
{
    folder.makeFolder(L"here/door.dwg");
    EXPECT_EQ(refusal(L"door", RTCAN),
              "\n~/here/DOOR.DWG cannot be read: it is no file, or reading it is not allowed."
              "\nError in file xx_findblk.cpp on line 137\n(eFileAccessErr, ec = 300)");
}

TEST_F(FindBlock, OfAGarbledDrawingIsReported)
{
    copyData("damaged/truncated_value", L"here/door.dwg");
    const std::string told = refusal(L"door", RTCAN);
    EXPECT_TRUE(
        told.ends_with("\nError in file xx_findblk.cpp on line 137\n(eBadDxfFile, ec = 300)"))
        << told;
}

TEST_F(FindBlock, WithAPasswordIsReportedWhereDrawingsHaveNone)
{
    folder.write(L"here/door.dwg", lineDrawing(3));
    EXPECT_EQ(refusal(L"door", RTCAN, {.password = L"geheim"}),
              "\n~/here/DOOR.DWG: a drawing of this format has no password; open it without one."
              "\nError in file xx_findblk.cpp on line 137\n(eInvalidInput, ec = 300)");
    EXPECT_FALSE(find(L"door", {.password = L""}).isNull());
}

TEST_F(FindBlock, OutOfANamedDrawingNeedsNoPassword)
{
    folder.write(L"here/details.dwg", lineLibrary("DOOR", 3));
    expectLoaded(L"DOOR", L"details.dwg!door", {.password = L"geheim"});
}

TEST_F(FindBlock, ThatTheNamedDrawingLacksIsTold)
{
    folder.write(L"here/details.dwg", lineLibrary("WINDOW", 3));
    EXPECT_EQ(refusal(L"details.dwg!door", RTERROR), "\n{Block DOOR not found}");
    EXPECT_EQ(refusal(L"details.dwg!door", RTERROR, {.report = 0}), "");
    EXPECT_EQ(refusal(L"details.dwg!", RTERROR), "\n{Block  not found}");
}

TEST_F(FindBlock, ThatCannotBeClonedIsTold)
{
    std::string library = lineLibrary("DOOR", 3);
    library.replace(library.find("LINE"), 4, "KVRTESTBORD");
    folder.write(L"here/details.dwg", library);
    const std::string why
        = "\nCannot clone a record of type KVRTESTBORD: its content is not understood.";
    EXPECT_EQ(refusal(L"details.dwg!door", RTERROR), why + "\n{Block DOOR not found}");
    EXPECT_EQ(refusal(L"details.dwg!door", RTERROR, {.report = 0}), why);
}

TEST_F(FindBlock, ThatIsASpaceIsNotReplaced)
{
    folder.write(L"here/details.dwg", lineDrawing(3));
    const std::string told = refusal(L"details.dwg!$*Model_Space", RTERROR);
    EXPECT_TRUE(told.starts_with("\nCannot clone the record ")) << told;
    EXPECT_TRUE(told.ends_with(": it is the space of a layout, or in no table."
                               "\n{Block *MODEL_SPACE not found}"))
        << told;
    EXPECT_EQ(find(L"details.dwg!*Model_Space"), m_to.block(ACDB_MODEL_SPACE));
}

TEST_F(FindBlock, ThatCannotBeInsertedIsReported)
{
    copyData("r2000", L"here/plan.dwg");
    const std::string told = "\nCannot clone a record of type KVRTESTBORD: its content is not "
                             "understood."
                             "\nError in file xx_findblk.cpp on line 170\n(0, ec = 1)";
    EXPECT_EQ(refusal(L"plan", RTCAN), told);
    EXPECT_EQ(refusal(L"plan", RTCAN, {.report = 0}), told);
}

TEST_F(FindBlock, OfANameThatNoBlockCanHaveIsReported)
{
    folder.write(L"here/do?or.dwg", lineDrawing(3));
    folder.write(L"here/.dwg", lineDrawing(3));
    for (const wchar_t* text : {L"do?or", L"$", L"!"}) {
        EXPECT_EQ(refusal(text, RTCAN), "\nError in file xx_findblk.cpp on line 170\n(0, ec = 47)");
    }
}

TEST_F(FindBlock, ThatWouldContainItselfIsRefused)
{
    const std::string chair = lineLibrary("DOOR", 2);
    const std::string entities = "0\nSECTION\n2\nENTITIES\n0\nINSERT\n8\n0\n2\nDOOR\n10\n0.0\n"
                                 "20\n0.0\n30\n0.0\n0\nENDSEC\n0\nEOF\n";
    folder.write(L"here/door.dwg", chair.substr(0, chair.size() - 6) + entities);
    EXPECT_EQ(refusal(L"door", RTCAN),
              "\nCannot clone: the block door would contain itself."
              "\nError in file xx_findblk.cpp on line 170\n(0, ec = 3)");
}

TEST_F(FindBlock, ThatIsOpenIsNotReplaced)
{
    const AcDbObjectId door = define(L"DOOR", 1);
    folder.write(L"here/door.dwg", lineDrawing(2));
    folder.write(L"here/details.dwg", lineLibrary("DOOR", 2));
    const Opened<AcDbBlockTableRecord> record(door);
    const std::string handle = toUtf8(handleOf(door));
    const std::string why = "\nCannot clone: the record " + handle
        + " of the destination has to change, and is open.";
    EXPECT_EQ(refusal(L"$door", RTCAN),
              why + "\nError in file xx_findblk.cpp on line 170\n(0, ec = 82)");
    EXPECT_EQ(refusal(L"details.dwg!$door", RTERROR), why + "\n{Block DOOR not found}");
    EXPECT_EQ(m_to.content(L"DOOR"), line(1));
}

TEST_F(FindBlock, InATableThatCannotBeOpenedIsAnErrorThatIsNotTold)
{
    define(L"DOOR", 1);
    folder.write(L"here/details.dwg", lineLibrary("DOOR", 2));
    Opened<AcDbBlockTable> table;
    ASSERT_EQ(m_to.database().getSymbolTable(table.out(), AcDb::kForWrite), Acad::eOk);
    for (const wchar_t* text : {L"door", L"window", L"details.dwg!door"}) {
        EXPECT_EQ(refusal(text, RTERROR), "") << toUtf8(text);
    }
}

// A path that is cut has lost its extension, and so no longer tells how the file is to be read.
TEST_F(FindBlock, OfADrawingWithTooLongAPathIsReported)
{
    const std::wstring deep = L"/" + std::wstring(120, L'f') + L"/" + std::wstring(120, L'f');
    services.variables[L"ACAD"] = folder.path() + deep;
    for (const wchar_t* name : {L"/plan_with_a_long_name.dwg", L"/plan_with_a_long_name.dxf"}) {
        folder.write(deep.substr(1) + name, lineLibrary("DOOR", 3));
    }
    for (const wchar_t* text :
         {L"plan_with_a_long_name.dwg!door", L"plan_with_a_long_name.dxf!door"}) {
        const std::string told = refusal(text, RTCAN);
        EXPECT_NE(told.find("(xx_findfile filename length, ec = "), std::string::npos) << told;
        EXPECT_TRUE(told.ends_with(
            "\nError in file xx_findblk.cpp on line 215\n(eUnsupportedFileFormat, ec = 300)"
            "\n{Block DOOR not found}"))
            << told;
    }
    const std::string told = refusal(L"plan_with_a_long_name", RTCAN);
    EXPECT_NE(told.find("(xx_findfile filename length, ec = "), std::string::npos) << told;
    EXPECT_TRUE(
        told.ends_with("\nError in file xx_findblk.cpp on line 137\n(eFileNotFound, ec = 300)"))
        << told;
}

TEST_F(FindBlock, IsNoSuccessWhenSomethingIsThrown)
{
    struct Throwing : RecordingServices
    {
        const wchar_t* environment(const wchar_t* /*name*/) override
        {
            throw std::runtime_error("no environment");
        }
    };

    const Throwing throwing;
    const CloneDrawing to;
    std::wstring text = L"door";
    EXPECT_TRUE(xx_findblk(text.data(), &m_status, &to.database()).isNull());
    EXPECT_EQ(m_status, RTERROR);
    EXPECT_TRUE(throwing.allPrinted().starts_with(L"\nError in file xx_findblk.cpp on line "));
    EXPECT_TRUE(throwing.allPrinted().ends_with(L"\n(no environment, ec = 0)"));
}

// --- drawings that are read aside ----------------------------------------------------------------

// A drawing keeps the bytes of its file, so one that outlived the call would hold them.
TEST_F(FindBlock, KeepsNoDrawingThatWasReadForIt)
{
    constexpr std::size_t kLarge = 16U << 20U;
    const auto inUse = [] {
        const auto info = ::mallinfo2();
        return info.uordblks + info.hblkhd;
    };
    const std::string ballast = "999\n" + std::string(kLarge, 'x') + "\n";
    folder.write(L"here/door.dwg", ballast + lineDrawing(3));
    folder.write(L"here/details.dwg", ballast + lineLibrary("WINDOW", 3));
    folder.write(L"here/broken.dwg", ballast + "0\nSECTION\n");

    const std::size_t atFirst = inUse();
    auto kept = read(folder.path(L"here/door.dwg"));
    if (inUse() < atFirst + kLarge) {
        GTEST_SKIP() << "this memory allocator does not tell what is in use";
    }
    kept.reset();
    const std::size_t before = inUse();
    EXPECT_LT(before, atFirst + kLarge);
    for (const wchar_t* text : {L"door", L"$door", L"details.dwg!window", L"details.dwg!none",
                                L"details.dwg!$window", L"broken", L"broken.dwg!door"}) {
        find(text);
        EXPECT_LT(inUse(), before + kLarge) << toUtf8(text);
    }
}

} // namespace

} // namespace corma::testing
