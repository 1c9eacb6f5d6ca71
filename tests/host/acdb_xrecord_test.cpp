#include "host/acdb_dictionary.h"
#include "host/drawing_files.h"
#include "host/host.h"
#include "host/model/Store.h"
#include "host/result_list.h"
#include "platform/platform.h"
#include "support/OpenObjects.h"
#include "support/TestDrawing.h"

#include <array>
#include <filesystem>
#include <gtest/gtest.h>
#include <iomanip>
#include <sstream>

using corma::host::Groups;
using corma::host::Opened;
using corma::host::ResultMember;
using corma::testing::TestDrawing;
using corma::testing::withSections;

namespace {

using Xrecord = corma::testing::OpenObjects;

struct FreeList
{
    void operator()(resbuf* list) const { acutRelRb(list); }
};

using List = std::unique_ptr<resbuf, FreeList>;

// A record 20 with this data behind its marker, in the named objects dictionary C.
TestDrawing drawingWith(std::string_view data, std::string_view version = "AC1015")
{
    std::string objects = "0 SECTION\n2 OBJECTS\n0 DICTIONARY\n5 C\n330 0\n100 AcDbDictionary\n"
                          "281 1\n3 A\n350 20\n0 XRECORD\n5 20\n330 C\n100 AcDbXrecord\n";
    objects += data;
    objects += "0 ENDSEC\n";
    return TestDrawing(withSections(version, objects));
}

List chainOf(const AcDbXrecord& record)
{
    resbuf* list = nullptr;
    EXPECT_EQ(record.rbChain(&list), Acad::eOk);
    return List(list);
}

std::wstring valueOf(const resbuf& node)
{
    std::wostringstream text;
    switch (corma::host::resultMemberOf(node.restype)) {
    case ResultMember::text:
        text << L'"' << node.resval.rstring << L'"';
        break;
    case ResultMember::real:
        text << node.resval.rreal;
        break;
    case ResultMember::point:
        text << node.resval.rpoint[0] << L',' << node.resval.rpoint[1] << L','
             << node.resval.rpoint[2];
        break;
    case ResultMember::int16:
        text << L's' << node.resval.rint;
        break;
    case ResultMember::int32:
        text << L'l' << node.resval.rlong;
        break;
    case ResultMember::int64:
        text << L'i' << node.resval.mnInt64;
        break;
    case ResultMember::id:
        text << L'#'
             << (node.resval.rlname[0] == 0
                     ? L"null"
                     : corma::host::toText(
                         reinterpret_cast<AcDbStub*>(node.resval.rlname[0])->handle));
        break;
    case ResultMember::binary:
        for (int i = 0; i < node.resval.rbinary.clen; ++i) {
            text << std::hex << std::setw(2) << std::setfill(L'0')
                 << static_cast<int>(static_cast<unsigned char>(node.resval.rbinary.buf[i]));
        }
        break;
    default:
        text << L"nothing";
    }
    return text.str();
}

// Such as `1 "text"; 70 s5`.
std::wstring textOf(const resbuf* list)
{
    std::wstring text;
    for (; list != nullptr; list = list->rbnext) {
        text += (text.empty() ? L"" : L"; ") + std::to_wstring(list->restype) + L" "
            + valueOf(*list);
    }
    return text;
}

// --- reading -------------------------------------------------------------------------------------

struct ReadRow
{
    const char* name;
    std::string_view data;
    std::wstring chain;
};

class XrecordValues : public ::testing::TestWithParam<ReadRow>
{
};

TEST_P(XrecordValues, AreReadAndSetAgainWithoutAChange)
{
    const ReadRow& row = GetParam();
    TestDrawing drawing = drawingWith("280 1\n" + std::string(row.data));
    const std::string before = drawing.saved();
    {
        const auto record = drawing.open<AcDbXrecord>("20", AcDb::kForWrite);
        const List list = chainOf(*record);
        EXPECT_EQ(textOf(list.get()), row.chain);
        if (list) {
            EXPECT_EQ(record->setFromRbChain(*list), Acad::eOk);
        }
        EXPECT_EQ(textOf(chainOf(*record).get()), row.chain);
    }
    EXPECT_EQ(drawing.saved(), before);
    EXPECT_EQ(corma::host::openObjectCount(), 0);
}

const ReadRow kReadRows[] = {
    {"NothingIsAnEmptyList", "", L""},
    {"AText", "1 hout\n", L"1 \"hout\""},
    {"AnEmptyText", "1 \n", L"1 \"\""},
    {"TextsOfAllKinds", "1 a\n3 b\n8 c\n300 d\n410 e\n430 f\n470 g\n",
     L"1 \"a\"; 3 \"b\"; 8 \"c\"; 300 \"d\"; 410 \"e\"; 430 \"f\"; 470 \"g\""},
    {"WholeNumbers", "70 5\n90 100000\n160 5000000000\n170 -3\n270 2\n280 1\n370 -3\n420 255\n",
     L"70 s5; 90 l100000; 160 i5000000000; 170 s-3; 270 s2; 280 s1; 370 s-3; 420 l255"},
    {"AFlag", "290 1\n", L"290 s1"},
    {"RealNumbers", "40 1.5\n50 90.0\n140 2.0\n460 0.25\n", L"40 1.5; 50 90; 140 2; 460 0.25"},
    {"APointIsOneValue", "10 1.0\n20 2.0\n30 3.0\n", L"10 1,2,3"},
    {"SeveralPoints", "10 1.0\n20 2.0\n30 3.0\n10 4.0\n20 5.0\n30 6.0\n", L"10 1,2,3; 10 4,5,6"},
    {"PointsOfOtherCodes",
     "11 1.0\n21 2.0\n31 3.0\n110 4.0\n120 5.0\n130 6.0\n210 0.0\n220 0.0\n"
     "230 1.0\n",
     L"11 1,2,3; 110 4,5,6; 210 0,0,1"},
    {"APointOfTwoCoordinatesStaysOne", "11 2.0\n21 3.0\n40 4.0\n", L"11 2,3,0; 40 4"},
    {"ALoneXStaysOne", "10 2.0\n", L"10 2,0,0"},
    {"ALoneYIsAReal", "20 2.0\n30 3.0\n38 4.0\n", L"20 2; 30 3; 38 4"},
    {"Ids", "330 C\n340 20\n350 C\n360 C\n390 C\n", L"330 #C; 340 #20; 350 #C; 360 #C; 390 #C"},
    {"AnUnknownHandleIsNullAndStays", "330 FFF\n340 0\n", L"330 #null; 340 #null"},
    {"HandlesAsTexts", "5 1A\n105 1B\n320 1C\n", L"5 \"1A\"; 105 \"1B\"; 320 \"1C\""},
    {"Bytes", "310 00FF10\n310 AB\n", L"310 00ff10; 310 ab"},
    {"BracesAreData", "102 {ACAD_XYZ\n70 1\n102 }\n", L"102 \"{ACAD_XYZ\"; 70 s1; 102 \"}\""},
    {"AMarkerIsData", "100 AcDbOther\n70 1\n", L"100 \"AcDbOther\"; 70 s1"},
    {"CodesOfExtendedDataAreData",
     "1000 DSTYLE\n1002 {\n1070 340\n1005 2A\n1040 1.5\n1071 7\n"
     "1010 1.0\n1020 2.0\n1030 3.0\n1004 0A\n1002 }\n",
     L"1000 \"DSTYLE\"; 1002 \"{\"; 1070 s340; 1005 \"2A\"; 1040 1.5; 1071 l7; 1010 1,2,3; "
     L"1004 0a; 1002 \"}\""},
    {"ExtendedDataAreNoData", "70 1\n1001 MCS\n1071 45\n1004 05\n", L"70 s1"},
};

INSTANTIATE_TEST_SUITE_P(, XrecordValues, ::testing::ValuesIn(kReadRows),
                         [](const auto& row) { return row.param.name; });

TEST_F(Xrecord, HasACloningFlagFromR2000OnOnly)
{
    for (const auto& [version, chain] :
         {std::pair {"AC1014", L"280 s1; 70 s2"}, std::pair {"AC1015", L"70 s2"}}) {
        TestDrawing drawing = drawingWith("280 1\n70 2\n", version);
        EXPECT_EQ(textOf(chainOf(*drawing.open<AcDbXrecord>("20")).get()), chain) << version;
    }
    TestDrawing without = drawingWith("70 2\n280 1\n");
    EXPECT_EQ(textOf(chainOf(*without.open<AcDbXrecord>("20")).get()), L"70 s2; 280 s1");
}

TEST_F(Xrecord, NeedsAPlaceForItsList)
{
    TestDrawing drawing = drawingWith("280 1\n1 a\n");
    EXPECT_EQ(drawing.open<AcDbXrecord>("20")->rbChain(nullptr), Acad::eNullObjectPointer);
}

// --- setting -------------------------------------------------------------------------------------

// A list that the test builds; texts and bytes are those of the test.
class Builder
{
public:
    Builder& text(int code, const wchar_t* value)
    {
        node(code).resval.rstring = const_cast<wchar_t*>(value);
        return *this;
    }

    Builder& real(int code, double value)
    {
        node(code).resval.rreal = value;
        return *this;
    }

    Builder& point(int code, double x, double y, double z)
    {
        resbuf& at = node(code);
        at.resval.rpoint[0] = x;
        at.resval.rpoint[1] = y;
        at.resval.rpoint[2] = z;
        return *this;
    }

    Builder& int16(int code, short value)
    {
        node(code).resval.rint = value;
        return *this;
    }

    Builder& int32(int code, int value)
    {
        node(code).resval.rlong = value;
        return *this;
    }

    Builder& int64(int code, long long value)
    {
        node(code).resval.mnInt64 = value;
        return *this;
    }

    Builder& id(int code, AcDbObjectId value)
    {
        node(code).resval.rlname[0] = reinterpret_cast<long long>(value.stub());
        return *this;
    }

    Builder& bytes(int code, char* value, short count)
    {
        node(code).resval.rbinary = {count, value};
        return *this;
    }

    const resbuf& list()
    {
        for (std::size_t i = 1; i < m_nodes.size(); ++i) {
            m_nodes[i - 1]->rbnext = m_nodes[i].get();
        }
        return *m_nodes.front();
    }

private:
    resbuf& node(int code)
    {
        m_nodes.push_back(std::make_unique<resbuf>());
        m_nodes.back()->restype = static_cast<short>(code);
        return *m_nodes.back();
    }

    std::vector<std::unique_ptr<resbuf>> m_nodes;
};

std::string dataOf(const TestDrawing& drawing)
{
    const std::string record = drawing.savedRecord("20");
    const std::string marker = "100 AcDbXrecord\n";
    return record.substr(record.find(marker) + marker.size());
}

TEST_F(Xrecord, WritesValuesOfEveryKind)
{
    TestDrawing drawing = drawingWith("280 1\n1 oud\n");
    char bytes[] = {0, 1, '\xFF'};
    {
        const auto record = drawing.open<AcDbXrecord>("20", AcDb::kForWrite);
        Builder builder;
        builder.text(1, L"Größe").int16(70, -5).int32(90, 70000).int64(160, -5000000000LL);
        builder.real(40, 2.5).point(10, 1.0, 2.0, 3.0).int16(290, 1).id(330, drawing.id("C"));
        builder.id(340, {}).text(5, L"1a").text(1005, L"2B").bytes(310, bytes, 3);
        ASSERT_EQ(record->setFromRbChain(builder.list()), Acad::eOk);
    }
    EXPECT_EQ(dataOf(drawing),
              "280 1\n1 Gr\xF6\xDF"
              "e\n70 -5\n90 70000\n160 -5000000000\n40 2.5\n"
              "10 1.0\n20 2.0\n30 3.0\n290 1\n330 C\n340 0\n5 1A\n1005 2B\n"
              "310 0001FF\n");
    TestDrawing again = drawing.reloaded();
    EXPECT_EQ(textOf(chainOf(*again.open<AcDbXrecord>("20")).get()),
              L"1 \"Größe\"; 70 s-5; 90 l70000; 160 i-5000000000; 40 2.5; 10 1,2,3; 290 s1; "
              L"330 #C; 340 #null; 5 \"1A\"; 1005 \"2B\"; 310 0001ff");
}

TEST_F(Xrecord, LeavesWhatIsAroundItsData)
{
    TestDrawing drawing = drawingWith("280 0\n1 a\n70 1\n1001 MCS\n1071 45\n");
    Builder builder;
    builder.text(1, L"b");
    ASSERT_EQ(drawing.open<AcDbXrecord>("20", AcDb::kForWrite)->setFromRbChain(builder.list()),
              Acad::eOk);
    EXPECT_EQ(dataOf(drawing), "280 0\n1 b\n1001 MCS\n1071 45\n");
}

TEST_F(Xrecord, SplitsManyBytes)
{
    struct Row
    {
        short count;
        std::vector<std::size_t> chunks;
    };

    for (const Row& row : {Row {0, {0}}, Row {126, {126}}, Row {127, {127}}, Row {128, {127, 1}},
                           Row {254, {127, 127}}, Row {255, {127, 127, 1}}}) {
        TestDrawing drawing = drawingWith("280 1\n");
        std::string bytes(static_cast<std::size_t>(row.count), 'x');
        Builder builder;
        builder.bytes(310, bytes.data(), row.count);
        const auto record = drawing.open<AcDbXrecord>("20", AcDb::kForWrite);
        ASSERT_EQ(record->setFromRbChain(builder.list()), Acad::eOk);
        std::vector<std::size_t> chunks;
        const List list = chainOf(*record);
        for (const resbuf* node = list.get(); node != nullptr; node = node->rbnext) {
            chunks.push_back(static_cast<std::size_t>(node->resval.rbinary.clen));
        }
        EXPECT_EQ(chunks, row.chunks) << row.count;
    }
}

TEST_F(Xrecord, RefusesAListWithATypeThatItCannotHold)
{
    TestDrawing drawing = drawingWith("280 1\n1 a\n");
    const std::string before = drawing.saved();
    const auto record = drawing.open<AcDbXrecord>("20", AcDb::kForWrite);
    for (const int type : {-5, -1, 0, 80, 103, 150, 180, 240, 483, 999, 1001, 1072, RTSTR, RTREAL,
                           RTSHORT, RTNONE}) {
        Builder builder;
        builder.text(1, L"b").text(type, L"2A").int16(70, 1);
        EXPECT_EQ(record->setFromRbChain(builder.list()), Acad::eInvalidResBuf) << type;
    }
    EXPECT_FALSE(record->isModified());
    EXPECT_EQ(drawing.saved(), before);
}

TEST_F(Xrecord, RefusesValuesThatAreNone)
{
    TestDrawing drawing = drawingWith("280 1\n1 a\n");
    TestDrawing other = drawingWith("280 1\n1 a\n");
    const auto record = drawing.open<AcDbXrecord>("20", AcDb::kForWrite);
    char bytes[] = "x";
    EXPECT_EQ(record->setFromRbChain(Builder().text(1, nullptr).list()), Acad::eInvalidResBuf);
    EXPECT_EQ(record->setFromRbChain(Builder().text(5, L"xyz").list()), Acad::eInvalidResBuf);
    EXPECT_EQ(record->setFromRbChain(Builder().text(1005, L"").list()), Acad::eInvalidResBuf);
    EXPECT_EQ(record->setFromRbChain(Builder().bytes(310, bytes, -1).list()), Acad::eInvalidResBuf);
    EXPECT_EQ(record->setFromRbChain(Builder().bytes(310, nullptr, 1).list()),
              Acad::eInvalidResBuf);
    EXPECT_EQ(record->setFromRbChain(Builder().id(330, other.id("C")).list()),
              Acad::eWrongDatabase);
    EXPECT_EQ(textOf(chainOf(*record).get()), L"1 \"a\"");
}

TEST_F(Xrecord, NeedsToBeOpenForWrite)
{
    TestDrawing drawing = drawingWith("280 1\n1 a\n");
    const auto record = drawing.open<AcDbXrecord>("20");
    EXPECT_EQ(record->setFromRbChain(Builder().text(1, L"b").list()), Acad::eNotOpenForWrite);
}

TEST_F(Xrecord, ANewOneHoldsValuesBeforeItIsInADrawing)
{
    AcDbXrecord record;
    EXPECT_EQ(chainOf(record), nullptr);
    ASSERT_EQ(record.setFromRbChain(Builder().text(1, L"b").int16(280, 3).list()), Acad::eOk);
    EXPECT_EQ(textOf(chainOf(record).get()), L"1 \"b\"; 280 s3");
}

// --- real drawings -------------------------------------------------------------------------------

bool isSame(const Groups& a, const Groups& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& one, const auto& two) {
        return one.code == two.code && one.value == two.value && one.raw.data() == two.raw.data()
            && one.raw.size() == two.raw.size();
    });
}

TEST_F(Xrecord, OfRealDrawingsAreSetAgainWithoutAChange)
{
    const std::filesystem::path folder = CORMA_SAMPLE_DRAWINGS;
    if (folder.empty()) {
        GTEST_SKIP() << "no folder of real drawings: configure with -DCORMA_SAMPLE_DRAWINGS=FOLDER";
    }
    int count = 0;
    for (const auto& file : std::filesystem::directory_iterator(folder)) {
        auto content = corma::platform::readFile(file.path().string());
        corma::host::Store store(nullptr);
        if (file.path().extension() != ".dxf" || !content
            || corma::host::readDrawing(std::move(*content), L"", store).status != Acad::eOk) {
            continue;
        }
        for (AcDbStub* at = store.first(); at != nullptr; at = at->next) {
            const Opened<AcDbXrecord> record(
                at->type == corma::host::RecordType::xrecord ? AcDbObjectId(at) : AcDbObjectId(),
                AcDb::kForWrite);
            if (!record) {
                continue;
            }
            const Groups before = record->groups();
            const List list = chainOf(*record);
            ASSERT_TRUE(!list || record->setFromRbChain(*list) == Acad::eOk) << file.path();
            ASSERT_TRUE(isSame(before, record->groups())) << file.path();
            ++count;
        }
    }
    EXPECT_GT(count, 0);
}

} // namespace
