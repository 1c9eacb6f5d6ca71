// What must hold for every drawing, held against files: those of the repository, and those of CAD
// programs in a folder that the developer names.

#include "host/dxf/group_codec.h"
#include "platform/platform.h"
#include "platform/text.h"
#include "support/DxfDrawing.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <set>
#include <string>
#include <vector>

namespace corma::host::dxf {
namespace {

using corma::testing::described;
using corma::testing::DxfDrawing;
namespace fs = std::filesystem;

constexpr const char* kTestData = CORMA_SOURCE_FOLDER "/tests/data";

std::vector<fs::path> drawingsBelow(const fs::path& folder)
{
    std::vector<fs::path> found;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.path().extension() == ".dxf") {
            found.push_back(entry.path());
        }
    }
    return found;
}

std::string bytesOf(const fs::path& path)
{
    const auto content = platform::readFile(path.native());
    return content ? std::string(content->view()) : std::string();
}

std::string_view bytesOf(const DxfDrawing& drawing, const AcDbStub& stub)
{
    return drawing.format().bytes().substr(stub.offset, stub.size);
}

void checkThatRecordsCover(const DxfDrawing& drawing)
{
    std::size_t at = 0;
    for (const AcDbStub* stub : drawing.records()) {
        EXPECT_EQ(stub->offset, at);
        EXPECT_EQ(stub->size == 0, stub->isImplied);
        at += stub->size;
    }
    EXPECT_EQ(at, drawing.format().bytes().size());
}

std::string joinedRaw(const Groups& groups)
{
    std::string joined;
    for (const Group& group : groups) {
        joined += group.raw;
    }
    return joined;
}

// Bytes of neighbours are put together, as encoding may have parted them.
Groups withoutRaw(const Groups& groups)
{
    Groups plain;
    for (const Group& group : groups) {
        const bool continues = valueKindOf(group.code) == ValueKind::binary && plain.size() != 0
            && plain[plain.size() - 1].code == group.code;
        if (continues) {
            Group& last = plain[plain.size() - 1];
            last.set(last.bytes() + group.bytes());
        } else {
            plain.add(Group(group.code, group.value));
        }
    }
    return plain;
}

bool areEqual(const Groups& a, const Groups& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const Group& x, const Group& y) {
        return x.code == y.code && x.value == y.value;
    });
}

void checkThatGroupsComeBack(const DxfDrawing& drawing)
{
    for (const AcDbStub* stub : drawing.records()) {
        const Groups groups = drawing.format().decode(*stub);
        if (stub->type == RecordType::none || stub->isImplied) {
            continue;
        }
        ASSERT_EQ(joinedRaw(groups), bytesOf(drawing, *stub));
        const Groups plain = withoutRaw(groups);
        std::string encoded;
        encodeGroups(plain, drawing.format().form(), {}, encoded);
        const Groups again = withoutRaw(decodeGroups(encoded, drawing.format().form()));
        ASSERT_TRUE(areEqual(plain, again)) << described(plain) << "\nbecame\n" << described(again);
    }
}

// Where two texts differ first, with some of both; they are too long to be shown.
std::string difference(std::string_view a, std::string_view b)
{
    constexpr std::size_t kShown = 200;
    const auto [x, y] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    if (x == a.end() && y == b.end()) {
        return {};
    }
    const auto at = static_cast<std::size_t>(x - a.begin());
    return "at " + std::to_string(at) + "\n" + std::string(a.substr(at, kShown)) + "\nis not\n"
        + std::string(b.substr(at, kShown));
}

// A comment in a record moves what stands behind it, and changes nothing else. A dictionary writes
// its entries behind all other groups.
void checkThatAChangeIsLocal(const std::string& bytes, const Form& form, std::size_t position)
{
    DxfDrawing drawing(bytes);
    AcDbStub& stub = *drawing.records()[position];
    const std::size_t end = stub.offset + stub.size;
    const bool hasObject = stub.kind != RecordKind::structure && stub.kind != RecordKind::header;
    const bool isDictionary
        = stub.type == RecordType::dictionary || stub.type == RecordType::dictionaryWithDefault;
    if (!hasObject || isDictionary || stub.isImplied || bytes[end - 1] != '\n') {
        return;
    }
    constexpr int kComment = 999;
    drawing.change(stub, kComment, L"changed");
    std::string wanted = bytes.substr(0, end);
    encodeGroups(Groups({{kComment, L"changed"}}), form, {}, wanted);
    wanted += bytes.substr(end);
    EXPECT_EQ(difference(drawing.written(), wanted), "") << described(stub);
}

void checkThatChangesAreLocal(const std::string& bytes, const DxfDrawing& drawing)
{
    constexpr std::size_t kTried = 7;
    const std::size_t count = drawing.records().size();
    for (std::size_t i = 0; i < count && !drawing.format().form().isBinary;
         i += count / kTried + 1) {
        checkThatAChangeIsLocal(bytes, drawing.format().form(), i);
    }
}

void checkDrawing(const fs::path& path)
{
    SCOPED_TRACE(path.filename());
    const std::string bytes = bytesOf(path);
    const DxfDrawing drawing(bytes);
    ASSERT_EQ(drawing.result.status, Acad::eOk) << toUtf8(drawing.result.message);
    EXPECT_EQ(drawing.result.message, L"");
    EXPECT_EQ(difference(drawing.written(), bytes), "");
    checkThatRecordsCover(drawing);
    checkThatGroupsComeBack(drawing);
    checkThatChangesAreLocal(bytes, drawing);
}

TEST(DxfSamples, RealDrawingsKeepEveryByteAndValue)
{
    const fs::path folder = CORMA_SAMPLE_DRAWINGS;
    if (folder.empty()) {
        GTEST_SKIP() << "no folder of real drawings: configure with -DCORMA_SAMPLE_DRAWINGS=FOLDER";
    }
    const auto drawings = drawingsBelow(folder);
    EXPECT_FALSE(drawings.empty());
    for (const fs::path& path : drawings) {
        checkDrawing(path);
    }
}

TEST(DxfSamples, WholeDrawingsKeepEveryByteAndValue)
{
    int count = 0;
    for (const fs::path& path : drawingsBelow(kTestData)) {
        if (path.parent_path().filename() != "damaged") {
            checkDrawing(path);
            ++count;
        }
    }
    EXPECT_GT(count, 0);
}

TEST(DxfSamples, DamagedDrawingsComeBackOrAreRefused)
{
    const std::set<std::string> refused = {"binary_cut_before_a_length",
                                           "binary_cut_in_a_chunk",
                                           "binary_cut_in_a_code",
                                           "binary_cut_in_a_real",
                                           "binary_cut_in_a_text",
                                           "binary_negative_code",
                                           "binary_sentinel_alone",
                                           "binary_sentinel_and_text",
                                           "binary_sentinel_cut",
                                           "binary_unknown_code",
                                           "code_is_huge",
                                           "code_is_negative",
                                           "code_is_no_number",
                                           "empty",
                                           "line_missing",
                                           "looks_like_dwg",
                                           "mixed_line_ends",
                                           "only_line_end",
                                           "only_zero",
                                           "plain_text",
                                           "truncated_between_lines",
                                           "truncated_value",
                                           "xml"};
    std::set<std::string> found;
    for (const fs::path& path : drawingsBelow(fs::path(kTestData) / "damaged")) {
        const DxfDrawing drawing(bytesOf(path));
        if (drawing.result.status == Acad::eOk) {
            checkDrawing(path);
        } else {
            EXPECT_FALSE(drawing.result.message.empty()) << path;
            found.insert(path.stem());
        }
    }
    EXPECT_EQ(found, refused);
}

} // namespace
} // namespace corma::host::dxf
