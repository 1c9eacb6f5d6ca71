#include "editor/drawing_tables.h"
#include "host/host.h"
#include "platform/text.h"
#include "support/CloneDrawing.h"
#include "support/OpenObjects.h"
#include "support/RecordingServices.h"

#include <algorithm>
#include <sstream>

using corma::layersOfDrawing;
using corma::linetypesOfDrawing;
using corma::textStylesOfDrawing;
using corma::host::Opened;
using corma::testing::CloneDrawing;
using corma::testing::OpenObjects;
using corma::testing::RecordingServices;

namespace {

std::string record(const char* type, const char* className, int handle, const std::string& groups)
{
    return std::string("0 ") + type + "\n5 " + std::to_string(handle)
        + "\n100 AcDbSymbolTableRecord\n100 " + className + "\n" + groups;
}

std::string layer(int handle, const std::string& name, int colour)
{
    return record("LAYER", "AcDbLayerTableRecord", handle,
                  "2 " + name + "\n70 0\n62 " + std::to_string(colour) + "\n6 Continuous\n");
}

std::string linetype(int handle, const std::string& name, const std::string& dashes)
{
    return record("LTYPE", "AcDbLinetypeTableRecord", handle,
                  "2 " + name + "\n70 0\n3 \n72 65\n" + dashes);
}

std::string style(int handle, const std::string& name, int flags = 0)
{
    return record("STYLE", "AcDbTextStyleTableRecord", handle,
                  "2 " + name + "\n70 " + std::to_string(flags) + "\n3 txt\n");
}

std::string table(const char* name, int handle, const std::string& records)
{
    return std::string("0 TABLE\n2 ") + name + "\n5 " + std::to_string(handle)
        + "\n100 AcDbSymbolTable\n70 9\n" + records + "0 ENDTAB\n";
}

std::string houseTables()
{
    std::string many;
    for (int i = 1; i <= 40; ++i) {
        many += "49 " + std::to_string(i) + ".0\n";
    }
    return table("LTYPE", 10,
                 linetype(11, "ByBlock", "73 0\n40 0.0\n")
                     + linetype(12, "Dot_Dash",
                                "73 4\n40 1.0\n49 0.5\n49 -0.25\n49 0.0\n"
                                "49 -0.25\n")
                     + linetype(13, "Long", "73 40\n40 1.0\n" + many))
        + table("LAYER", 20, layer(21, "Zolder", 30) + layer(22, "0", 7) + layer(23, "Gevel", -3))
        + table("STYLE", 30, style(31, "Smal") + style(32, "", 1) + style(33, "Breed"));
}

/// With a drawing to work on that has these tables.
class DrawingTables : public OpenObjects
{
protected:
    void SetUp() override
    {
        OpenObjects::SetUp();
        acdbHostApplicationServices()->setWorkingDatabase(&drawing.database());
    }

    void TearDown() override
    {
        acdbHostApplicationServices()->setWorkingDatabase(nullptr);
        OpenObjects::TearDown();
    }

    static std::string layers()
    {
        std::ostringstream text;
        for (const auto& each : layersOfDrawing()) {
            text << corma::toUtf8(each.name) << '=' << each.colour << ' ';
        }
        return text.str();
    }

    static std::string linetypes()
    {
        std::ostringstream text;
        for (const auto& each : linetypesOfDrawing()) {
            text << corma::toUtf8(each.name) << ' ';
        }
        return text.str();
    }

    static std::string styles()
    {
        std::ostringstream text;
        for (const auto& each : textStylesOfDrawing()) {
            text << corma::toUtf8(each) << ' ';
        }
        return text.str();
    }

    RecordingServices services;
    const std::string groups = houseTables();
    const CloneDrawing drawing {{.tables = groups}};
};

TEST_F(DrawingTables, AreGivenInTheirOrder)
{
    EXPECT_EQ(layers(), "Zolder=30 0=7 Gevel=3 ") << "an off layer has its colour all the same";
    EXPECT_EQ(linetypes(), "ByBlock Dot_Dash Long ");
    EXPECT_EQ(styles(), "Smal Breed ") << "what has no name is for shapes";
}

TEST_F(DrawingTables, LinetypesHaveTheirDashesUpToALimit)
{
    const auto all = linetypesOfDrawing();
    ASSERT_EQ(all.size(), 3U);
    EXPECT_TRUE(all[0].dashes.empty());
    EXPECT_EQ(all[1].dashes, (std::vector {0.5, -0.25, 0.0, -0.25}));
    ASSERT_EQ(all[2].dashes.size(), 32U);
    EXPECT_EQ(all[2].dashes.back(), 32.0);
}

TEST_F(DrawingTables, ErasedRecordsAreNotThere)
{
    ASSERT_EQ(Opened<AcDbLayerTableRecord>(drawing.entry(corma::host::TableKind::layer, L"0"),
                                           AcDb::kForWrite)
                  ->erase(),
              Acad::eOk);
    EXPECT_EQ(layers(), "Zolder=30 Gevel=3 ");
}

TEST_F(DrawingTables, ARecordThatIsBeingChangedIsPassedOver)
{
    using corma::host::TableKind;
    const Opened<AcDbLayerTableRecord> gevel(drawing.entry(TableKind::layer, L"Zolder"),
                                             AcDb::kForWrite);
    const Opened<AcDbLinetypeTableRecord> dashes(drawing.entry(TableKind::linetype, L"Dot_Dash"),
                                                 AcDb::kForWrite);
    const Opened<AcDbTextStyleTableRecord> narrow(drawing.entry(TableKind::textStyle, L"Breed"),
                                                  AcDb::kForWrite);
    ASSERT_TRUE(gevel && dashes && narrow);
    EXPECT_EQ(layers(), "0=7 Gevel=3 ");
    EXPECT_EQ(linetypes(), "ByBlock Long ");
    EXPECT_EQ(styles(), "Smal ");
}

TEST_F(DrawingTables, ATableThatIsBeingChangedHasNothing)
{
    AcDbDatabase& database = drawing.database();
    {
        Opened<AcDbLayerTable> writer;
        ASSERT_EQ(database.getLayerTable(writer.out(), AcDb::kForWrite), Acad::eOk);
        EXPECT_EQ(layers(), "");
        EXPECT_EQ(linetypes(), "ByBlock Dot_Dash Long ");
    }
    {
        Opened<AcDbLinetypeTable> writer;
        ASSERT_EQ(database.getLinetypeTable(writer.out(), AcDb::kForWrite), Acad::eOk);
        EXPECT_EQ(linetypes(), "");
    }
    Opened<AcDbTextStyleTable> writer;
    ASSERT_EQ(database.getTextStyleTable(writer.out(), AcDb::kForWrite), Acad::eOk);
    EXPECT_EQ(styles(), "");
    EXPECT_EQ(layers(), "Zolder=30 0=7 Gevel=3 ");
}

TEST_F(DrawingTables, ATableThatIsBeingReadIsReadAgain)
{
    Opened<AcDbLayerTable> reader;
    ASSERT_EQ(drawing.database().getLayerTable(reader.out()), Acad::eOk);
    EXPECT_EQ(layers(), "Zolder=30 0=7 Gevel=3 ");
}

TEST_F(DrawingTables, OfADrawingWithoutThemAreEmpty)
{
    const CloneDrawing bare(corma::testing::DrawingText {});
    acdbHostApplicationServices()->setWorkingDatabase(&bare.database());
    EXPECT_EQ(layers() + linetypes() + styles(), "");
}

TEST_F(DrawingTables, WithoutADrawingThereAreNone)
{
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    ASSERT_EQ(acdbHostApplicationServices()->workingDatabase(), nullptr);
    EXPECT_EQ(layers() + linetypes() + styles(), "");
}

} // namespace
