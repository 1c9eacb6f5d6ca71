#include "BlockTest.h"
#include "drawing/xx_atblk.h"
#include "platform/text.h"

#include <gtest/gtest.h>

namespace corma::testing {

namespace {

// Definitions in model space, one of them constant, and one in a block that is none of them.
constexpr std::string_view kEntities = R"(0 LINE
8 0
10 0.0
20 0.0
30 0.0
11 1.0
21 0.0
31 0.0
0 ATTDEF
8 0
10 0.0
20 0.0
30 0.0
40 2.5
1 oak
3 Wood?
2 WOOD
70 0
0 ATTDEF
8 0
10 0.0
20 5.0
30 0.0
40 2.5
1 left
3
2 SIDE
70 2
0 ATTDEF
8 0
67 1
10 0.0
20 5.0
30 0.0
40 2.5
1 A4
3
2 SHEET
70 0)";

constexpr std::string_view kBlocks = R"(0 BLOCK
8 0
2 LEG
70 2
10 0.0
20 0.0
30 0.0
3 LEG
1
0 ATTDEF
8 0
10 0.0
20 0.0
30 0.0
40 2.5
1 deep
3
2 WITHIN
70 0
0 ENDBLK
8 0)";

class ReadDefinitions : public BlockTest
{
protected:
    static std::string doorOf(std::string_view version)
    {
        return drawingOf({.version = version, .blocks = kBlocks, .entities = kEntities});
    }

    // What is in the list behind a call: "tag=text" with blanks between.
    std::string read(const wchar_t* name, std::wstring* path = nullptr)
    {
        m_status = xx_atblk(name, path, m_list);
        std::string all;
        for (int i = 0; i < m_list.length(); ++i) {
            const wchar_t* const text = m_list[i]->currentText();
            all += (i == 0 ? "" : " ") + toUtf8(m_list[i]->name()) + "="
                + (text == nullptr ? "(none)" : toUtf8(text));
        }
        return all;
    }

    xx_VarArray m_list;
    int m_status = 0;
};

TEST_F(ReadDefinitions, AreAllOfTheModelSpaceConstantOnesToo)
{
    for (const char* version : {"AC1009", "AC1015", "AC1018", "AC1021", "AC1032"}) {
        m_list.clear();
        folder.write(L"support/door.dwg", doorOf(version));
        EXPECT_EQ(read(L"door"), "WOOD=oak SIDE=left") << version;
        EXPECT_EQ(m_status, RTNORM);
    }
    EXPECT_EQ(printed() + alerts(), "");
}

TEST_F(ReadDefinitions, TellThePathOfTheDrawing)
{
    folder.write(L"module/blokken/door.dwt", doorOf("AC1015"));
    std::wstring path = L"before";
    EXPECT_EQ(read(L"Door.dwt", &path), "WOOD=oak SIDE=left");
    EXPECT_EQ(folder.homely(path), "~/module/blokken/DOOR.DWT");
    EXPECT_EQ(acdbHostApplicationServices()->workingDatabase(), nullptr);
}

TEST_F(ReadDefinitions, TakeTheTextOfADxfFileUnderTheNameOfADrawingOnly)
{
    folder.write(L"support/door.dxf", doorOf("AC1015"));
    EXPECT_EQ(read(L"door.dxf"), "");
    EXPECT_EQ(m_status, RTERROR);
}

TEST_F(ReadDefinitions, GoToWhatIsInTheList)
{
    m_list.setCopy(xx_Var(L"SIDE", L"right"));
    m_list.setCopy(xx_Var(L"ELSE", L"x"));
    folder.write(L"support/door.dwg", doorOf("AC1015"));
    EXPECT_EQ(read(L"door"), "SIDE=left ELSE=x WOOD=oak");
}

TEST_F(ReadDefinitions, AreNoneInADrawingWithoutThem)
{
    folder.write(L"support/door.dwg", lineDrawing(3));
    std::wstring path;
    EXPECT_EQ(read(L"door", &path), "");
    EXPECT_EQ(m_status, RTNORM);
    EXPECT_EQ(folder.homely(path), "~/support/DOOR.DWG");
}

struct AbsentRow
{
    const char* sentence;
    const wchar_t* name;
};

class DefinitionsOfNoDrawing : public ReadDefinitions,
                               public ::testing::WithParamInterface<AbsentRow>
{
};

TEST_P(DefinitionsOfNoDrawing, AreNeitherReadNorTold)
{
    std::wstring path = L"before";
    EXPECT_EQ(read(GetParam().name, &path), "");
    EXPECT_EQ(m_status, RTERROR);
    EXPECT_EQ(path, L"before");
    EXPECT_EQ(printed() + alerts(), "");
}

INSTANTIATE_TEST_SUITE_P(Of, DefinitionsOfNoDrawing,
                         ::testing::Values(AbsentRow {"AName", L"door"},
                                           AbsentRow {"ATemplate", L"lib\\door.dwt"},
                                           AbsentRow {"AFullPath", L"/none/door.dwg"},
                                           AbsentRow {"AnEmptyName", L""},
                                           AbsentRow {"NoName", nullptr}),
                         [](const auto& row) { return std::string(row.param.sentence); });

TEST_F(ReadDefinitions, OfADrawingThatCannotBeReadAreReported)
{
    folder.write(L"support/door.dwg", "AC1009 and more");
    std::wstring path = L"before";
    EXPECT_EQ(read(L"door", &path), "");
    EXPECT_EQ(m_status, RTCAN);
    EXPECT_EQ(path, L"before");
    EXPECT_EQ(printed(),
              "\n~/support/door.dwg is a DWG drawing (AC1009, R11 or R12); only those of R13 to "
              "R2018 can be opened; save it as one of these, or as DXF, in the CAD program"
              "\nError in file xx_atblk.cpp on line 191\n(eUnsupportedFileFormat, ec = 301)");
    EXPECT_EQ(alerts(), "");
}

TEST_F(ReadDefinitions, OfABinaryDrawingAreReadAsWell)
{
    for (const char* drawing : {"r12_binary", "r2000_binary", "r2018_binary"}) {
        copyData(drawing, L"support/door.dwg");
        EXPECT_EQ(read(L"door"), "") << drawing; // its definitions stand in blocks
        EXPECT_EQ(m_status, RTNORM) << drawing;
    }
    EXPECT_EQ(printed() + alerts(), "");
}

} // namespace

} // namespace corma::testing
