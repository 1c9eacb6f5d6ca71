#include "support/CloneDrawing.h"
#include "support/RecordingServices.h"

#include <gtest/gtest.h>

namespace corma::host {

namespace {

using corma::testing::CloneDrawing;
using corma::testing::RecordingServices;

constexpr std::string_view kTwoLines = R"(
0 LINE
5 30
100 AcDbEntity
8 WALLS
100 AcDbLine
10 1.0
20 2.0
30 0.0
11 4.0
21 2.0
31 0.0
0 LINE
5 31
100 AcDbEntity
8 DOORS
100 AcDbLine
10 0.0
20 0.0
30 0.0
11 1.0
21 1.0
31 0.0)";

constexpr std::string_view kOldTwoLines = R"(
0 LINE
8 WALLS
10 1.0
20 2.0
30 0.0
11 4.0
21 2.0
31 0.0)";

class Wblock : public ::testing::Test
{
protected:
    RecordingServices m_services;

    static CloneDrawing written(const CloneDrawing& from, int entity, AcGePoint3d base)
    {
        AcDbObjectIdArray ids;
        ids.append(from.entity(entity));
        AcDbDatabase* output = nullptr;
        EXPECT_EQ(from.database().wblock(output, ids, base), Acad::eOk);
        return CloneDrawing(std::unique_ptr<AcDbDatabase>(output));
    }
};

TEST_F(Wblock, MakesADrawingOfEntitiesAroundTheBasePoint)
{
    const CloneDrawing from({.header = "9 $MEASUREMENT\n70 0\n", .entities = kTwoLines});
    const std::string before = from.bytes();
    const CloneDrawing output = written(from, 0, {1.0, 2.0, 0.0});
    EXPECT_EQ(output.store().versionText(), L"AC1015");

    const CloneDrawing saved = output.reloaded();
    EXPECT_EQ(saved.model(), "LINE 8=WALLS 10=0 20=0 30=0 11=3 21=0 31=0\n");
    EXPECT_FALSE(saved.entry(TableKind::layer, L"WALLS").isNull());
    EXPECT_TRUE(saved.entry(TableKind::layer, L"DOORS").isNull());
    const Groups measurement = saved.store().variable(L"$MEASUREMENT");
    EXPECT_EQ(measurement.integer(70, measurement.all(), -1), 0);
    EXPECT_EQ(from.bytes(), before);
    EXPECT_FALSE(from.database().isModified());
    EXPECT_EQ(openObjectCount(), 0);
}

struct WblockVersionRow
{
    const char* sentence;
    std::string_view version;
    const wchar_t* output;
};

class WblockVersion : public Wblock, public ::testing::WithParamInterface<WblockVersionRow>
{
};

TEST_P(WblockVersion, IsThatOfTheDrawing)
{
    const bool isOld = GetParam().version == "AC1009";
    const CloneDrawing from(
        {.version = GetParam().version, .entities = isOld ? kOldTwoLines : kTwoLines});
    const CloneDrawing output = written(from, 0, {0.0, 0.0, 0.0});
    EXPECT_EQ(output.store().versionText(), GetParam().output);
    EXPECT_EQ(output.reloaded().model(), "LINE 8=WALLS 10=1 20=2 30=0 11=4 21=2 31=0\n");
}

INSTANTIATE_TEST_SUITE_P(Wblock, WblockVersion,
                         ::testing::Values(WblockVersionRow {"OfR12", "AC1009", L"AC1009"},
                                           WblockVersionRow {"R14HasNoTemplateAndBecomesR2000",
                                                             "AC1014", L"AC1015"},
                                           WblockVersionRow {"OfR2000", "AC1015", L"AC1015"},
                                           WblockVersionRow {"OfR2007", "AC1021", L"AC1021"},
                                           WblockVersionRow {"OfR2018", "AC1032", L"AC1032"}),
                         [](const auto& row) { return row.param.sentence; });

TEST_F(Wblock, TakesTheDrawingsOwnStandardStyleAlong)
{
    const CloneDrawing from({.tables = R"(
0 TABLE
2 STYLE
5 10
100 AcDbSymbolTable
70 1
0 STYLE
5 11
330 10
100 AcDbSymbolTableRecord
100 AcDbTextStyleTableRecord
2 Standard
70 0
3 special.shx
0 ENDTAB)",
                             .entities = R"(
0 TEXT
5 30
100 AcDbEntity
8 0
100 AcDbText
10 0.0
20 0.0
30 0.0
40 2.0
1 hall
7 Standard
100 AcDbText)"});
    const CloneDrawing output = written(from, 0, {0.0, 0.0, 0.0});
    const CloneDrawing saved = output.reloaded();
    EXPECT_EQ(saved.described(*saved.entry(TableKind::textStyle, L"STANDARD").stub()),
              "STYLE 2=Standard 70=0 3=special.shx");
}

TEST_F(Wblock, KeepsTheCodePage)
{
    const CloneDrawing from({.header = "9 $DWGCODEPAGE\n3 ANSI_1251\n",
                             .entities = "0 TEXT\n5 30\n100 AcDbEntity\n8 0\n100 AcDbText\n"
                                         "10 0.0\n20 0.0\n30 0.0\n40 1.0\n1 \xC4\xEE\xEC\n"
                                         "100 AcDbText"});
    const CloneDrawing output = written(from, 0, {0.0, 0.0, 0.0});
    EXPECT_NE(output.bytes().find("\xC4\xEE\xEC"), std::string::npos);
}

TEST_F(Wblock, TellsWhatIsWrongWithItsArguments)
{
    const CloneDrawing from({.entities = kTwoLines});
    const CloneDrawing other({.entities = kTwoLines});
    AcDbObjectIdArray ids;
    AcDbDatabase* output = &other.database();
    const auto status = [&](AcDbObjectId id) {
        ids.removeAll().append(id);
        return from.database().wblock(output, ids, AcGePoint3d::kOrigin);
    };
    EXPECT_EQ(status({}), Acad::eNullObjectId);
    EXPECT_EQ(output, nullptr);
    EXPECT_EQ(status(other.entity(0)), Acad::eWrongDatabase);
    EXPECT_EQ(status(from.block(ACDB_MODEL_SPACE)), Acad::eWrongObjectType);
    Opened<AcDbEntity>(from.entity(1), AcDb::kForWrite)->erase();
    EXPECT_EQ(status(from.entity(1)), Acad::eWasErased);
}

} // namespace

} // namespace corma::host
