#include "host/dxf/DxfFormat.h"
#include "support/DxfDrawing.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>

namespace corma::host::dxf {
namespace {

using corma::testing::binaryDxf;
using corma::testing::described;
using corma::testing::DxfDrawing;
using corma::testing::dxfText;
using corma::testing::TempFolder;

std::string drawingOf(std::string_view entities)
{
    return dxfText("0 SECTION\n2 ENTITIES\n" + std::string(entities) + "0 ENDSEC\n0 EOF\n");
}

// --- characters ----------------------------------------------------------------------------------

struct Characters
{
    const char* test;
    std::string header;
    std::string value;
    const wchar_t* text;
};

class DxfHeader : public ::testing::TestWithParam<Characters>
{
};

TEST_P(DxfHeader, TellsHowCharactersStand)
{
    const Characters& row = GetParam();
    const DxfDrawing drawing("0\nSECTION\n2\nHEADER\n" + row.header
                             + "0\nENDSEC\n0\nSECTION\n2\nENTITIES\n0\nTEXT\n1\n" + row.value
                             + "\n0\nENDSEC\n0\nEOF\n");
    ASSERT_EQ(drawing.result.status, Acad::eOk);
    EXPECT_EQ(drawing.store.textOf(drawing.record("TEXT"), 1), row.text);
}

INSTANTIATE_TEST_SUITE_P(
    Characters, DxfHeader,
    ::testing::Values(
        Characters {"NoVariables", "", "\xE9", L"é"},
        Characters {"OfTheCodePage", "9\n$ACADVER\n1\nAC1018\n9\n$DWGCODEPAGE\n3\nANSI_1250\n",
                    "\xE8", L"č"},
        Characters {"InTheOtherOrder", "9\n$DWGCODEPAGE\n3\nANSI_1250\n9\n$ACADVER\n1\nAC1018\n",
                    "\xE8", L"č"},
        Characters {"ACodePageWithoutAVersion", "9\n$DWGCODEPAGE\n3\nANSI_1250\n", "\xE8", L"č"},
        Characters {"NoCodePage", "9\n$ACADVER\n1\nAC1015\n", "\xE9", L"é"},
        Characters {"Utf8FromR2007On", "9\n$ACADVER\n1\nAC1021\n9\n$DWGCODEPAGE\n3\nANSI_1250\n",
                    "\xC4\x8D", L"č"},
        Characters {"Utf8Later", "9\n$ACADVER\n1\nAC1099\n", "\xC4\x8D", L"č"},
        Characters {"AVersionThatIsNone", "9\n$ACADVER\n1\nnewest\n", "\xE9", L"é"},
        Characters {"AVariableWithoutAValue", "9\n$ACADVER\n9\n$DWGCODEPAGE\n3\nANSI_1250\n",
                    "\xE8", L"č"}),
    [](const auto& row) { return std::string(row.param.test); });

TEST(DxfCharacters, AByteOrderMarkTellsUtf8)
{
    const DxfDrawing drawing("\xEF\xBB\xBF" + drawingOf("0 TEXT\n1 \xC3\xA9\n"));
    EXPECT_EQ(drawing.store.textOf(drawing.record("TEXT"), 1), L"é");
}

// --- writing -------------------------------------------------------------------------------------

TEST(DxfWriting, AnUnchangedDrawingIsOnePiece)
{
    const DxfDrawing drawing(drawingOf("0 LINE\n5 A\n"));
    int pieces = 0;
    drawing.format().eachPiece(drawing.store, [&](std::string_view piece) {
        ++pieces;
        EXPECT_EQ(piece.data(), drawing.format().bytes().data());
        return true;
    });
    EXPECT_EQ(pieces, 1);
}

TEST(DxfWriting, OnlyTheChangedGroupDiffers)
{
    const std::string before = "  0\r\nSECTION\r\n  2\r\nENTITIES\r\n  0\r\nTEXT\r\n  5\r\n0A\r\n"
                               "40\n+2.50\n  1\r\nold\r\n  0\r\nENDSEC\r\n  0\r\nEOF";
    DxfDrawing drawing(before);
    drawing.change(drawing.record("TEXT"), 1, L"new");
    std::string after = before;
    after.replace(after.find("old"), 3, "new");
    EXPECT_EQ(drawing.written(), after);
    drawing.change(drawing.record("TEXT"), 62, std::int64_t {7});
    after.insert(after.find("new\r\n") + 5, " 62\r\n     7\r\n");
    EXPECT_EQ(drawing.written(), after);
}

TEST(DxfWriting, OnlyTheChangedGroupDiffersInBinary)
{
    const std::string groups = "0 SECTION\n2 ENTITIES\n0 TEXT\n5 A\n40 2.5\n1 ";
    const std::string behind = "\n0 ENDSEC\n0 EOF\n";
    DxfDrawing drawing(binaryDxf(groups + "old" + behind));
    ASSERT_EQ(drawing.result.status, Acad::eOk);
    drawing.change(drawing.record("TEXT"), 1, L"newer");
    EXPECT_EQ(drawing.written(), binaryDxf(groups + "newer" + behind));
}

TEST(DxfWriting, ANewGroupIsInTheCharactersOfTheFile)
{
    const std::string header = "0 SECTION\n2 HEADER\n9 $DWGCODEPAGE\n3 ANSI_1250\n0 ENDSEC\n";
    DxfDrawing drawing(dxfText(header) + drawingOf("0 TEXT\n1 x\n"));
    drawing.change(drawing.record("TEXT"), 1, L"čЖ");
    EXPECT_EQ(drawing.written(), dxfText(header) + drawingOf("0 TEXT\n1 \xE8\\U+0416\n"));
}

TEST(DxfWriting, WhatIsErasedImpliedOrLooseIsLeftOut)
{
    DxfDrawing drawing(drawingOf("0 LINE\n5 A\n0 ARC\n5 B\n0 CIRCLE\n5 C\n0 POINT\n5 D\n"));
    drawing.store.erase(drawing.record("LINE"), true);
    drawing.record("ARC").isImplied = true;
    drawing.record("CIRCLE").isLoose = true;
    EXPECT_EQ(drawing.written(), drawingOf("0 POINT\n5 D\n"));
    drawing.store.erase(drawing.record("LINE"), false);
    EXPECT_EQ(drawing.written(), drawingOf("0 LINE\n5 A\n0 POINT\n5 D\n"));
}

TEST(DxfWriting, ANewRecordStandsBehindALineThatHadNoEnd)
{
    // There is no end of the file here, so what is new goes behind the last line.
    const std::string before = "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n0\nENDSEC";
    DxfDrawing drawing(before);
    ASSERT_EQ(drawing.store.makeRoomForObjects(), Acad::eOk);
    EXPECT_TRUE(drawing.written().find("ENDSEC\n0\nSECTION\n2\nOBJECTS\n0\nDICTIONARY\n")
                != std::string::npos)
        << drawing.written();
    DxfDrawing again(drawing.written());
    EXPECT_EQ(again.result.status, Acad::eOk);
    EXPECT_EQ(again.store.namedObjects().handle, drawing.store.namedObjects().handle);
}

TEST(DxfWriting, StopsWhenThePiecesAreNotTaken)
{
    DxfDrawing drawing(drawingOf("0 LINE\n8 0\n0 LINE\n8 0\n0 LINE\n8 0\n"));
    drawing.change(*drawing.record("LINE").next, 8, L"A");
    for (int most = 0; most < 3; ++most) {
        int taken = 0;
        EXPECT_FALSE(drawing.format().eachPiece(drawing.store,
                                                [&](std::string_view) { return taken++ < most; }));
        EXPECT_EQ(taken, most + 1);
    }
}

TEST(DxfWriting, ReplacesTheFile)
{
    const TempFolder folder;
    const std::string bytes = drawingOf("0 LINE\n5 A\n");
    const DxfDrawing drawing(bytes);
    const std::wstring path = folder.write(L"a.dxf", "old");
    EXPECT_EQ(drawing.format().write(drawing.store, path).status, Acad::eOk);
    EXPECT_EQ(folder.read(L"a.dxf"), bytes);
    EXPECT_EQ(drawing.format().write(drawing.store, folder.path(L"none/a.dxf")).status,
              Acad::eFileAccessErr);
}

TEST(DxfWriting, AFullDiskLeavesTheFileAsItWas)
{
    const TempFolder folder;
    const DxfDrawing drawing(drawingOf("0 LINE\n5 A\n"));
    const std::wstring path = folder.write(L"a.dxf", "old");
    {
        const corma::testing::FullDisk disk(10);
        EXPECT_EQ(drawing.format().write(drawing.store, path).status, Acad::eOutOfDisk);
    }
    EXPECT_EQ(folder.read(L"a.dxf"), "old");
}

} // namespace
} // namespace corma::host::dxf
