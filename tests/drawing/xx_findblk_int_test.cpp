#include "BlockTest.h"
#include "drawing/xx_findblk.h"
#include "platform/text.h"

#include <array>
#include <gtest/gtest.h>

using corma::host::Opened;

namespace corma::testing {

namespace {

// --- names ---------------------------------------------------------------------------------------

struct BlockNameRow
{
    const char* sentence;
    const wchar_t* text;
    const wchar_t* name;
};

class BlockName : public ::testing::TestWithParam<BlockNameRow>
{
};

TEST_P(BlockName, IsTheTextWithoutFolderAndExtensionInCapitals)
{
    EXPECT_EQ(xx_findblk_name(GetParam().text), GetParam().name);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Of, BlockName, ::testing::Values(
    BlockNameRow {"ANameInCapitals",                L"DOOR",               L"DOOR"},
    BlockNameRow {"SmallLettersBecomeCapitals",     L"Door 2",             L"DOOR 2"},
    BlockNameRow {"LettersOutsideAsciiToo",         L"\u00E9\u00E9n",      L"\u00C9\u00C9N"},
    BlockNameRow {"ADrawing",                       L"door.dwg",           L"DOOR"},
    BlockNameRow {"ADrawingInAnyCase",              L"door.dWg",           L"DOOR"},
    BlockNameRow {"ATemplate",                      L"door.Dwt",           L"DOOR"},
    BlockNameRow {"ADxfFileKeepsItsExtension",      L"door.dxf",           L"DOOR.DXF"},
    BlockNameRow {"AnotherExtensionStays",          L"door.bak",           L"DOOR.BAK"},
    BlockNameRow {"AllBehindTheExtensionGoes",      L"door.dwg.old",       L"DOOR"},
    BlockNameRow {"LettersBehindTheExtensionGo",    L"door.dwgx",          L"DOOR"},
    BlockNameRow {"TheFirstOfTwoExtensionsCuts",    L"a.dwg.dwg",          L"A"},
    BlockNameRow {"ADrawingGoesBeforeATemplate",    L"a.dwt.dwg",          L"A.DWT"},
    BlockNameRow {"AndBehindOneToo",                L"a.dwg.dwt",          L"A"},
    BlockNameRow {"TheFirstOfTwoTemplatesCuts",     L"a.dwt.dwt",          L"A"},
    BlockNameRow {"NoPointNoExtension",             L"doordwg",            L"DOORDWG"},
    BlockNameRow {"ABackSlashEndsAFolder",          L"C:\\lib\\door.dwg",  L"DOOR"},
    BlockNameRow {"ASlashEndsAFolder",              L"/lib/door.dwg",      L"DOOR"},
    BlockNameRow {"BothInOnePath",                  L"lib\\sub/door",      L"DOOR"},
    BlockNameRow {"AndTheOtherWayRound",            L"lib/sub\\door",      L"DOOR"},
    BlockNameRow {"AnExtensionOfAFolderIsGone",     L"lib.dwg/door.x",     L"DOOR.X"},
    BlockNameRow {"ADriveWithoutAFolderStays",      L"c:door",             L"C:DOOR"},
    BlockNameRow {"ADollarStays",                   L"$door",              L"$DOOR"},
    BlockNameRow {"ADollarBehindAFolderStays",      L"lib/$door",          L"$DOOR"},
    BlockNameRow {"AMarkStays",                     L"a!b",                L"A!B"},
    BlockNameRow {"AFolderHasNoName",               L"lib/",               L""},
    BlockNameRow {"AnExtensionHasNoName",           L".dwg",               L""},
    BlockNameRow {"NothingHasNoName",               L"",                   L""},
    BlockNameRow {"ASeparatorAlone",                L"\\",                 L""},
    BlockNameRow {"AnAsteriskStays",                L"*Model_Space",       L"*MODEL_SPACE"}),
    [](const auto& row) { return std::string(row.param.sentence); });

// clang-format on

// --- one block -----------------------------------------------------------------------------------

class FindBlockInDrawing : public BlockTest
{
protected:
    FindBlockInDrawing()
    {
        const std::wstring path = copyData("r2000", L"plan.dxf");
        m_drawing = std::make_unique<AcDbDatabase>(false);
        EXPECT_EQ(m_drawing->readDwgFile(path.c_str()), Acad::eOk);
        m_status = 0;
    }

    std::string find(const wchar_t* name, AcDbDatabase* database)
    {
        m_status = 0;
        const AcDbObjectId id = xx_findblk_int(name, &m_status, database);
        const Opened<AcDbBlockTableRecord> record(id);
        std::wstring found = L"(none)";
        if (record) {
            record->getName(found);
        }
        return toUtf8(found);
    }

    std::string find(const wchar_t* name) { return find(name, m_drawing.get()); }

    std::unique_ptr<AcDbDatabase> m_drawing;
    int m_status = 0;
};

TEST_F(FindBlockInDrawing, GivesTheRecordOfTheNameInAnyForm)
{
    for (const wchar_t* name : {L"Plaat", L"plaat", L"PLAAT.dwg", L"C:\\lib\\plaat.dwt"}) {
        EXPECT_EQ(find(name), "Plaat") << toUtf8(name);
        EXPECT_EQ(m_status, RTNORM);
    }
    EXPECT_EQ(find(L"*model_space"), "*Model_Space");
    EXPECT_FALSE(m_drawing->isModified());
}

TEST_F(FindBlockInDrawing, ABlockThatIsAbsentIsNoError)
{
    for (const wchar_t* name : {L"none", L"plaat2", L"", L"lib/", L"Plaa?", L"*"}) {
        EXPECT_EQ(find(name), "(none)") << toUtf8(name);
        EXPECT_EQ(m_status, RTNORM);
    }
    EXPECT_EQ(find(nullptr), "(none)");
    EXPECT_EQ(m_status, RTNORM);
    EXPECT_EQ(printed() + alerts(), "");
}

TEST_F(FindBlockInDrawing, ANameThatBeginsWithADollarIsNotLookedFor)
{
    Opened<AcDbBlockTableRecord> record(xx_findblk_int(L"BOUT", &m_status, m_drawing.get()),
                                        AcDb::kForWrite);
    ASSERT_EQ(record->setName(L"$BOUT"), Acad::eOk);
    record.close();
    EXPECT_EQ(find(L"$BOUT"), "(none)");
    EXPECT_EQ(m_status, RTNORM);
    // Only at the very beginning of the text.
    EXPECT_EQ(find(L"lib/$bout"), "$BOUT");
}

TEST_F(FindBlockInDrawing, AnErasedBlockIsAbsent)
{
    Opened<AcDbBlockTableRecord> record(xx_findblk_int(L"BOUT", &m_status, m_drawing.get()),
                                        AcDb::kForWrite);
    ASSERT_EQ(record->erase(), Acad::eOk);
    record.close();
    EXPECT_EQ(find(L"BOUT"), "(none)");
    EXPECT_EQ(m_status, RTNORM);
}

TEST_F(FindBlockInDrawing, WithoutADatabaseTheWorkingOneIsTaken)
{
    EXPECT_EQ(find(L"BOUT", nullptr), "(none)");
    EXPECT_EQ(m_status, RTNORM);
    acdbHostApplicationServices()->setWorkingDatabase(m_drawing.get());
    EXPECT_EQ(find(L"BOUT", nullptr), "BOUT");
    EXPECT_EQ(find(L"BOUT", CloneDrawing().database().store().database()), "(none)");
}

TEST_F(FindBlockInDrawing, ATableThatCannotBeOpenedIsAnErrorThatIsNotTold)
{
    Opened<AcDbBlockTable> table;
    ASSERT_EQ(m_drawing->getSymbolTable(table.out(), AcDb::kForWrite), Acad::eOk);
    EXPECT_TRUE(xx_findblk_int(L"BOUT", &m_status, m_drawing.get()).isNull());
    EXPECT_EQ(m_status, RTERROR);
    table.close();
    EXPECT_EQ(find(L"BOUT"), "BOUT");
    EXPECT_EQ(m_status, RTNORM);
    EXPECT_EQ(printed() + alerts(), "");
}

TEST_F(FindBlockInDrawing, ABlockThatIsOpenIsFoundAllTheSame)
{
    const Opened<AcDbBlockTableRecord> record(xx_findblk_int(L"BOUT", &m_status, m_drawing.get()),
                                              AcDb::kForWrite);
    ASSERT_TRUE(record);
    EXPECT_EQ(xx_findblk_int(L"bout", &m_status, m_drawing.get()), record->objectId());
    EXPECT_EQ(m_status, RTNORM);
}

// --- many blocks ---------------------------------------------------------------------------------

class BlockRecords : public FindBlockInDrawing
{
protected:
    BlockRecords() { acdbHostApplicationServices()->setWorkingDatabase(m_drawing.get()); }

    static std::string namesOf(const AcDbObjectIdArray& ids)
    {
        std::string names;
        for (const AcDbObjectId id : ids) {
            const Opened<AcDbBlockTableRecord> record(id);
            std::wstring name = L"?";
            record->getName(name);
            names += (names.empty() ? "" : " ") + toUtf8(name);
        }
        return names;
    }

    static std::string matching(const wchar_t* pattern)
    {
        AcDbObjectIdArray ids;
        EXPECT_EQ(xx_block_records(ids, pattern), RTNORM);
        return namesOf(ids);
    }
};

TEST_F(BlockRecords, AreThoseWhosePatternFitsInTheOrderOfTheDrawing)
{
    const std::array<std::pair<const wchar_t*, const char*>, 8> rows {{
        {L"*", "BOUT Plaat DEUR"},
        {L"PLAAT", "Plaat"},
        {L"*t", "BOUT Plaat"},
        {L"deur,bout", "BOUT DEUR"},
        {L"~plaat", "BOUT DEUR"},
        {L"D???", "DEUR"},
        {L"none", ""},
        {L"", ""},
    }};
    for (const auto& [pattern, names] : rows) {
        EXPECT_EQ(matching(pattern), names) << toUtf8(pattern);
    }
    EXPECT_EQ(printed() + alerts(), "");
}

TEST_F(BlockRecords, SpacesAndAnonymousBlocksAreNeverAmongThem)
{
    ASSERT_NE(find(L"*U1"), "(none)");
    for (const wchar_t* pattern : {L"`**", L"`*U1", L"`*Model_Space", L"*Space*"}) {
        EXPECT_EQ(matching(pattern), "") << toUtf8(pattern);
    }
}

TEST_F(BlockRecords, ComeBehindThoseThatAreThere)
{
    AcDbObjectIdArray ids;
    ids.append(xx_findblk_int(L"deur", &m_status));
    EXPECT_EQ(xx_block_records(ids, L"*"), RTNORM);
    EXPECT_EQ(namesOf(ids), "DEUR BOUT Plaat DEUR");
}

TEST_F(BlockRecords, AnErasedOneIsNotAmongThem)
{
    Opened<AcDbBlockTableRecord> record(xx_findblk_int(L"BOUT", &m_status), AcDb::kForWrite);
    ASSERT_EQ(record->erase(), Acad::eOk);
    record.close();
    EXPECT_EQ(matching(L"*"), "Plaat DEUR");
}

TEST_F(BlockRecords, OneThatCannotBeOpenedIsReportedAndPassedOver)
{
    Opened<AcDbBlockTableRecord> record(xx_findblk_int(L"PLAAT", &m_status), AcDb::kForWrite);
    ASSERT_TRUE(record);
    AcDbObjectIdArray ids;
    EXPECT_EQ(xx_block_records(ids, L"*"), RTNORM);
    EXPECT_EQ(namesOf(ids), "BOUT DEUR");
    EXPECT_EQ(printed(),
              "\nError in file xx_findblk_int.cpp on line 117\n(eWasOpenForWrite, ec = 801)");
    EXPECT_EQ(alerts(), "");
    record.close();
    EXPECT_EQ(matching(L"*"), "BOUT Plaat DEUR");
}

TEST_F(BlockRecords, ThereAreNoneWithoutADrawingOrItsTable)
{
    AcDbObjectIdArray ids;
    Opened<AcDbBlockTable> table;
    ASSERT_EQ(m_drawing->getSymbolTable(table.out(), AcDb::kForWrite), Acad::eOk);
    EXPECT_EQ(xx_block_records(ids, L"*"), RTERROR);
    table.close();
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    EXPECT_EQ(xx_block_records(ids, L"*"), RTERROR);
    EXPECT_TRUE(ids.isEmpty());
    EXPECT_EQ(printed() + alerts(), "");
}

} // namespace

} // namespace corma::testing
