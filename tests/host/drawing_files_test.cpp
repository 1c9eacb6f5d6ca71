#include "host/drawing_files.h"
#include "host/model/Store.h"

#include <gtest/gtest.h>

namespace corma::host {
namespace {

struct ContentRow
{
    const char* test;
    std::string bytes;
    const wchar_t* message; // null for a drawing
};

class DrawingContent : public ::testing::TestWithParam<ContentRow>
{
};

TEST_P(DrawingContent, TellsTheFormat)
{
    Store store(nullptr);
    const ReadResult result = readDrawing(textContent(GetParam().bytes), L"FILE", store);
    const bool isDrawing = GetParam().message == nullptr;
    EXPECT_EQ(result.status, isDrawing ? Acad::eOk : Acad::eUnsupportedFileFormat);
    EXPECT_EQ(result.message, isDrawing ? L"" : GetParam().message);
}

constexpr const wchar_t* kNone
    = L"FILE is no drawing: it begins neither as a DWG nor as a text or binary DXF file";

INSTANTIATE_TEST_SUITE_P(
    Drawing, DrawingContent,
    ::testing::Values(
        ContentRow {"TextDxf", "0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\nEOF\n", nullptr},
        ContentRow {"TextDxfWithCommentsAhead", "999\na\n999\nb\n  0\nSECTION\n0\nENDSEC\n",
                    nullptr},
        ContentRow {"TextDxfWithAMarkAhead", "\xEF\xBB\xBF  0\nEOF\n", nullptr},
        ContentRow {"BinaryDxf", std::string("AutoCAD Binary DXF\r\n\x1A\0\0EOF\0", 27), nullptr},
        ContentRow {"Nothing", "", L"FILE is empty and so no drawing"},
        ContentRow {"EmptyLines", "\n\n", kNone},
        ContentRow {"ALineOfText", "[TOOL]\nHoogte=2\n", kNone},
        ContentRow {"ACodeAndNothingElse", "0\n", kNone},
        ContentRow {"ACommentAndNothingElse", "999\ncomment\n", kNone},
        ContentRow {"AnotherRecordFirst", "0\nLINE\n", kNone},
        ContentRow {"AnotherGroupFirst", "2\nSECTION\n", kNone},
        ContentRow {"AMarkOfBinaryDxfThatIsCut", "AutoCAD Binary DXF\r\n\x1A", kNone},
        ContentRow {
            "DwgOfAnOldVersion", "AC1009xxx",
            L"FILE is a DWG drawing (AC1009, R11 or R12); only those of R13 to R2018 can be "
            L"opened; save it as one of these, or as DXF, in the CAD program"},
        ContentRow {
            "DwgOfAnUnknownVersion", "AC1099xxx",
            L"FILE is a DWG drawing (AC1099); only those of R13 to R2018 can be opened; save it "
            L"as one of these, or as DXF, in the CAD program"},
        ContentRow {"AWordLikeDwg", "AC10X2xxx", kNone},
        ContentRow {"AWordThatIsTooShort", "AC103", kNone}),
    [](const auto& row) { return std::string(row.param.test); });

TEST(DwgContent, ThatIsCutIsDamaged)
{
    Store store(nullptr);
    const ReadResult result
        = readDrawing(textContent(std::string_view("AC1032\0\0\0", 9)), L"FILE", store);
    EXPECT_EQ(result.status, Acad::eFileInternalErr);
    EXPECT_EQ(result.message,
              L"FILE, byte 9: the file ends within its header; the file is damaged: use a backup, "
              L"or recover the drawing in the CAD program");
}

TEST(TextContent, HasZerosBehindIt)
{
    const platform::FileContent content = textContent("abc");
    EXPECT_EQ(content.view(), "abc");
    for (std::size_t i = 0; i < platform::FileContent::kPadding; ++i) {
        EXPECT_EQ(content.bytes[content.size + i], '\0');
    }
}

} // namespace
} // namespace corma::host
