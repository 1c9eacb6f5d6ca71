// Blocks between drawings of different versions and forms.

#include "BlockTest.h"
#include "platform/platform.h"
#include "platform/text.h"
#include <corma/attributes.h>
#include <corma/blocks.h>

#include <array>
#include <gtest/gtest.h>
#include <sstream>

using corma::host::TableKind;

namespace corma::testing {

namespace {

// Drawings of the test data. All have the block DEUR with attribute definitions, and Plaat, which
// holds BOUT and a line on a layer with a linetype of its own.
constexpr std::array kDrawings
    = {"r12", "r12_binary", "r2000", "r2000_binary", "r2004", "r2007", "r2018", "r2018_binary"};

constexpr std::array kVersions = {"AC1009", "AC1015", "AC1018", "AC1021", "AC1032"};

constexpr const char* kDefinitionsOfDoor
    = "NUMMER=D000 CODE=geheim SOORT=binnendeur BREEDTE=930 MERK= PRIJS=0";

bool isR12(std::string_view drawing)
{
    return drawing.starts_with("r12");
}

// One of the entities in the model space is of a type that nobody knows.
bool hasUnknown(std::string_view drawing)
{
    return drawing.starts_with("r2000") || drawing.starts_with("r2018");
}

CloneDrawing load(const std::string& drawing)
{
    auto database = std::make_unique<AcDbDatabase>(false);
    const std::wstring path = platform::fromNative(CORMA_TEST_DATA "/" + drawing + ".dxf");
    EXPECT_EQ(database->readDwgFile(path.c_str()), Acad::eOk) << drawing;
    return CloneDrawing(std::move(database));
}

std::string definitionsOf(AcDbObjectId block)
{
    xx_VarArray definitions;
    EXPECT_EQ(xx_get_attdefs(block, definitions), RTNORM);
    std::string all;
    for (int i = 0; i < definitions.length(); ++i) {
        const wchar_t* const text = definitions[i]->currentText();
        all += (i == 0 ? "" : " ") + toUtf8(definitions[i]->name()) + "="
            + (text == nullptr ? "(none)" : toUtf8(text));
    }
    return all;
}

// The types of described entities.
std::string typesOf(const std::string& content)
{
    std::istringstream lines(content);
    std::string types;
    for (std::string line; std::getline(lines, line);) {
        types += line.substr(0, line.find(' ', line.find_first_not_of(' '))) + '\n';
    }
    return types;
}

// The layer of the first of described entities.
std::wstring layerOf(const std::string& content)
{
    const std::size_t begin = content.find(" 8=") + 3;
    return fromUtf8(content.substr(begin, content.find(' ', begin) - begin));
}

class BlocksOfAllVersions : public BlockTest, public ::testing::WithParamInterface<const char*>
{
protected:
    BlocksOfAllVersions()
        : m_source(load(GetParam()))
    {
        copyData(GetParam(), L"here/bron.dwg");
    }

    // The id that a call gives, which must not fail.
    AcDbObjectId find(std::wstring text, const CloneDrawing& to)
    {
        int status = 0;
        const AcDbObjectId id = xx_findblk(text.data(), &status, &to.database());
        EXPECT_EQ(status, RTNORM);
        EXPECT_EQ(printed() + alerts(), "");
        return id;
    }

    // The blocks of the source are in a drawing with all that they need.
    void expectBlocks(const CloneDrawing& in) const
    {
        EXPECT_EQ(definitionsOf(in.block(L"DEUR")), kDefinitionsOfDoor);
        EXPECT_EQ(typesOf(in.content(L"DEUR")), typesOf(m_source.content(L"DEUR")));
        const std::string plate = m_source.content(L"Plaat");
        EXPECT_EQ(in.content(L"Plaat"), plate);
        EXPECT_EQ(in.content(L"BOUT"), m_source.content(L"BOUT"));
        const AcDbObjectId layer = in.entry(TableKind::layer, layerOf(plate).c_str());
        ASSERT_FALSE(layer.isNull());
        EXPECT_NE(in.described(*layer.stub()).find(" 6=STREEP"), std::string::npos);
        EXPECT_FALSE(in.entry(TableKind::linetype, L"STREEP").isNull());
        EXPECT_FALSE(in.entry(TableKind::textStyle, L"NOTITIE").isNull());
    }

    CloneDrawing m_source;
};

TEST_P(BlocksOfAllVersions, AreClonedIntoDrawingsWithoutThem)
{
    for (const char* version : kVersions) {
        SCOPED_TRACE(version);
        const CloneDrawing to({.version = version});
        const AcDbObjectId door = find(L"bron.dwg!deur", to);
        EXPECT_FALSE(door.isNull());
        EXPECT_EQ(door, to.block(L"DEUR"));
        const AcDbObjectId plate = find(L"bron.dwg!plaat", to);
        EXPECT_EQ(plate, to.block(L"Plaat"));
        const CloneDrawing saved = to.reloaded();
        EXPECT_EQ(toUtf8(saved.database().versionText()), version);
        expectBlocks(saved);
        EXPECT_EQ(saved.model(), "");
    }
}

TEST_P(BlocksOfAllVersions, ReplaceThoseOfOtherDrawingsAndKeepTheReferences)
{
    for (const char* drawing : kDrawings) {
        SCOPED_TRACE(drawing);
        const CloneDrawing to = load(drawing);
        const std::string model = to.model();
        const AcDbObjectId door = to.block(L"DEUR");
        const AcDbObjectId plate = to.block(L"Plaat");
        EXPECT_EQ(find(L"bron.dwg!$deur", to), door);
        EXPECT_EQ(find(L"bron.dwg!$plaat", to), plate);
        const CloneDrawing saved = to.reloaded();
        expectBlocks(saved);
        EXPECT_EQ(saved.model(), model);
        EXPECT_NE(model.find("INSERT 66=1 2=DEUR"), std::string::npos) << model;
    }
}

TEST_P(BlocksOfAllVersions, AreWholeDrawingsWhereTheVersionCanHoldThem)
{
    for (const char* drawing : kDrawings) {
        if (hasUnknown(GetParam()) || (isR12(drawing) && !isR12(GetParam()))) {
            continue; // those are refused
        }
        SCOPED_TRACE(drawing);
        const CloneDrawing to = load(drawing);
        const std::string model = to.model();
        const AcDbObjectId block = find(L"bron", to);
        EXPECT_FALSE(block.isNull());
        EXPECT_EQ(find(L"$Bron", to), block);
        const CloneDrawing saved = to.reloaded();
        EXPECT_EQ(typesOf(saved.content(L"BRON")), typesOf(m_source.model()));
        EXPECT_EQ(saved.model(), model);
    }
}

TEST_P(BlocksOfAllVersions, ThatCannotBeHeldAreRefusedAndNothingIsChanged)
{
    for (const char* drawing : kDrawings) {
        const bool isTooOld = isR12(drawing) && !isR12(GetParam());
        if (!isTooOld && !hasUnknown(GetParam())) {
            continue;
        }
        SCOPED_TRACE(drawing);
        const CloneDrawing to = load(drawing);
        const std::string before = to.bytes();
        int status = 0;
        std::wstring text = L"bron";
        EXPECT_TRUE(xx_findblk(text.data(), &status, &to.database()).isNull());
        EXPECT_EQ(status, RTCAN);
        const std::string why = isTooOld
            ? "\nCannot clone a record of type MTEXT into a drawing of version R12: that version "
              "does not have it."
            : "\nCannot clone a record of type KVRTESTBORD: its content is not understood.";
        EXPECT_EQ(printed(),
                  why + "\nError in file xx_findblk.cpp on line 170\n(0, ec = "
                      + (isTooOld ? "37)" : "1)"));
        EXPECT_EQ(alerts(), "");
        EXPECT_FALSE(to.database().isModified());
        EXPECT_EQ(to.bytes(), before);
    }
}

INSTANTIATE_TEST_SUITE_P(Of, BlocksOfAllVersions, ::testing::ValuesIn(kDrawings),
                         [](const auto& row) { return std::string(row.param); });

// --- a block that an old version cannot hold -----------------------------------------------------

constexpr std::string_view kNoteTables = R"(0 TABLE
2 BLOCK_RECORD
5 14
100 AcDbSymbolTable
70 1
0 BLOCK_RECORD
5 15
330 14
100 AcDbSymbolTableRecord
100 AcDbBlockTableRecord
2 NOTE
340 0
0 ENDTAB)";

constexpr std::string_view kNoteBlock = R"(0 BLOCK
5 20
330 15
100 AcDbEntity
8 0
100 AcDbBlockBegin
2 NOTE
70 0
10 0.0
20 0.0
30 0.0
3 NOTE
1
0 MTEXT
5 21
330 15
100 AcDbEntity
8 0
100 AcDbMText
10 0.0
20 0.0
30 0.0
40 2.5
1 note
0 ENDBLK
5 22
330 15
100 AcDbEntity
8 0
100 AcDbBlockEnd)";

using BlockOfALaterVersion = BlockTest;

TEST_F(BlockOfALaterVersion, IsNotClonedIntoR12AndNothingIsChanged)
{
    folder.write(L"here/notes.dxf", drawingOf({.tables = kNoteTables, .blocks = kNoteBlock}));
    for (const char* drawing : {"r12", "r12_binary"}) {
        const CloneDrawing to = load(drawing);
        const std::string before = to.bytes();
        int status = 0;
        std::wstring text = L"notes.dxf!note";
        EXPECT_TRUE(xx_findblk(text.data(), &status, &to.database()).isNull());
        EXPECT_EQ(status, RTERROR);
        EXPECT_EQ(printed(),
                  "\nCannot clone a record of type MTEXT into a drawing of version R12: that "
                  "version does not have it.");
        EXPECT_EQ(alerts(), "Block NOTE not found");
        EXPECT_FALSE(to.database().isModified());
        EXPECT_EQ(to.bytes(), before);
    }
    const CloneDrawing later = load("r2000");
    int status = 0;
    std::wstring text = L"notes.dxf!note";
    EXPECT_FALSE(xx_findblk(text.data(), &status, &later.database()).isNull());
    EXPECT_EQ(status, RTNORM);
    EXPECT_EQ(later.reloaded().content(L"NOTE"), "MTEXT 10=0 20=0 30=0 40=2.5 1=note\n");
}

} // namespace

} // namespace corma::testing
