// Attribute lists of block references and of blocks.

#include "AttributeTest.h"
#include "drawing/xx_get_bl_attributes.h"
#include "host/acdb_database.h"

#include <gtest/gtest.h>

using corma::host::Opened;

namespace corma::testing {

namespace {

const DrawnReference kDoor {"A1", "DOOR", {{"WOOD", "oak"}, {"NUMBER", "17"}}};

BlockDrawing doors()
{
    BlockDrawing drawing;
    drawing.block("DOOR",
                  {{"WOOD", "pine", false, "21"},
                   {"MAKER", "Jansen", true, "22"},
                   {"NUMBER", "1", false, "23"},
                   {"PLACE", "Delft", true, "24"}});
    return drawing;
}

class GetAttributes : public AttributeTest
{
protected:
    // The attributes of a reference of the drawing, behind the status unless it is RTNORM.
    std::string get(AcDbObjectId reference, const wchar_t* pattern = nullptr)
    {
        xx_VarArray result;
        const int status = xx_get_bl_attributes(reference, result, &m_point, pattern);
        return (status == RTNORM ? "" : std::to_string(status) + ' ') + described(result);
    }

    AcGePoint3d m_point {7, 7, 7};
};

// --- references ----------------------------------------------------------------------------------

TEST_F(GetAttributes, GiveTagAndTextInTheirOrderAndTheConstantsOfTheBlockBehind)
{
    open(doors().inModel(kDoor));
    EXPECT_EQ(get(id("A1")), "WOOD=oak NUMBER=17 MAKER=Jansen PLACE=Delft");
    EXPECT_EQ(printed(), "");
}

TEST_F(GetAttributes, OfAnOpenReferenceAreTheSame)
{
    open(doors().inModel(kDoor));
    const Opened<AcDbBlockReference> reference(id("A1"));
    xx_VarArray result;
    EXPECT_EQ(xx_get_bl_attributes(reference.get(), result), RTNORM);
    EXPECT_EQ(described(result), "WOOD=oak NUMBER=17 MAKER=Jansen PLACE=Delft");
}

TEST_F(GetAttributes, NeedNoAttributes)
{
    open(doors().block("PLAIN").inModel({"A1", "PLAIN"}).inModel({"A2", "DOOR"}));
    EXPECT_EQ(get(id("A1")), "");
    EXPECT_EQ(get(id("A2")), "MAKER=Jansen PLACE=Delft");
}

struct ListRow
{
    const char* sentence;
    DrawnAttributes attributes;
    DrawnAttributes definitions;
    const char* list;
};

class AttributeLists : public AttributeTest, public ::testing::WithParamInterface<ListRow>
{
};

TEST_P(AttributeLists, HaveEachTagOnce)
{
    BlockDrawing drawing;
    drawing.block("DOOR", GetParam().definitions).inModel({"A1", "DOOR", GetParam().attributes});
    open(drawing);
    xx_VarArray result;
    EXPECT_EQ(xx_get_bl_attributes(id("A1"), result), RTNORM);
    EXPECT_EQ(described(result), GetParam().list);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(GetAttributes, AttributeLists, ::testing::Values(
    ListRow {"TheLastOfATagWinsInThePlaceOfTheFirst",
             {{"WOOD", "oak"}, {"NUMBER", "1"}, {"WOOD", "elm"}}, {}, "WOOD=elm NUMBER=1"},
    ListRow {"ATagInOtherCaseIsTheSameTagAndBringsItsSpelling",
             {{"WOOD", "oak"}, {"NUMBER", "1"}, {"Wood", "elm"}}, {}, "Wood=elm NUMBER=1"},
    ListRow {"AConstantOverwritesTheAttributeOfItsTag",
             {{"WOOD", "oak"}, {"NUMBER", "1"}}, {{"wood", "pine", true}}, "wood=pine NUMBER=1"},
    ListRow {"AnEmptyTextIsAText", {{"WOOD", ""}}, {{"MAKER", "", true}}, "WOOD= MAKER="},
    ListRow {"AnAttributeNeedsNoDefinition", {{"OLD", "x"}}, {{"NEW", "y"}}, "OLD=x"}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

TEST_F(GetAttributes, AreEmptyForATextThatIsNull)
{
    open(doors().inModel({"A1", "DOOR", {{"WOOD", "oak", false, "31"}}}));
    Opened<AcDbAttribute>(id("31"), AcDb::kForWrite)->setTextString(nullptr);
    EXPECT_EQ(get(id("A1")), "WOOD= MAKER=Jansen PLACE=Delft");
}

TEST_F(GetAttributes, LeaveErasedOnesOut)
{
    open(doors().inModel({"A1", "DOOR", {{"WOOD", "oak", false, "31"}, {"NUMBER", "17"}}}));
    erase(id("31"));
    erase(id("22"));
    EXPECT_EQ(get(id("A1")), "NUMBER=17 PLACE=Delft");
}

TEST_F(GetAttributes, StandBehindAndOverWhatTheListHas)
{
    open(doors().inModel(kDoor));
    xx_VarArray result;
    result.setCopy(xx_Var(L"number", 4.5));
    result.setCopy(xx_Var(L"OTHER", L"kept"));
    EXPECT_EQ(xx_get_bl_attributes(id("A1"), result), RTNORM);
    EXPECT_EQ(described(result), "NUMBER=17 OTHER=kept WOOD=oak MAKER=Jansen PLACE=Delft");
}

TEST_F(GetAttributes, OfADrawingAsideAreReadAsWell)
{
    const std::wstring path = folder.write(L"aside.dxf", doors().inModel(kDoor).bytes());
    AcDbDatabase* const database = openDatabase(path.c_str());
    ASSERT_NE(database, nullptr);
    EXPECT_EQ(get(objectWithHandle(L"A1", database)),
              "WOOD=oak NUMBER=17 MAKER=Jansen PLACE=Delft");
    closeDatabase(database);
}

// --- the point -----------------------------------------------------------------------------------

TEST_F(GetAttributes, ComeWithThePositionInTheWorld)
{
    open(doors()
             .inModel({"A1", "DOOR", {}, "10 3.0\n20 4.0\n30 5.0\n"})
             .inModel({"A2", "DOOR", {}, "10 3.0\n20 4.0\n30 5.0\n210 0.0\n220 0.0\n230 -1.0\n"}));
    get(id("A1"));
    EXPECT_EQ(m_point, AcGePoint3d(3, 4, 5));
    get(id("A2"));
    EXPECT_EQ(m_point, AcGePoint3d(-3, 4, -5));
}

// --- the numbers of the reference ----------------------------------------------------------------

struct PatternRow
{
    const char* sentence;
    const wchar_t* pattern;
    const char* added;
};

class Numbers : public AttributeTest, public ::testing::WithParamInterface<PatternRow>
{
};

TEST_P(Numbers, AreThoseWhoseNamesFit)
{
    BlockDrawing drawing;
    drawing.block("DOOR", {{"MAKER", "Jansen", true}});
    open(drawing.inModel({"A1", "DOOR", {}, "10 0.0\n41 2.0\n42 -3.0\n43 4.5\n50 90.0\n"}));
    xx_VarArray result;
    EXPECT_EQ(xx_get_bl_attributes(id("A1"), result, nullptr, GetParam().pattern), RTNORM);
    EXPECT_EQ(described(result), "MAKER=Jansen" + std::string(GetParam().added));
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(GetAttributes, Numbers, ::testing::Values(
    PatternRow {"AllInOneOrder", L"*", " BL_XSCALE=2 BL_YSCALE=-3 BL_ZSCALE=4.5 BL_ROTATION=1.5708"},
    PatternRow {"SomeByAWildCard", L"BL_?SCALE", " BL_XSCALE=2 BL_YSCALE=-3 BL_ZSCALE=4.5"},
    PatternRow {"OneByItsName", L"BL_ROTATION", " BL_ROTATION=1.5708"},
    PatternRow {"SeveralInTheirOwnOrder", L"BL_ZSCALE,BL_XSCALE", " BL_XSCALE=2 BL_ZSCALE=4.5"},
    PatternRow {"AllButOne", L"~BL_R*", " BL_XSCALE=2 BL_YSCALE=-3 BL_ZSCALE=4.5"},
    PatternRow {"NoneInSmallLetters", L"bl_*", ""},
    PatternRow {"NoneForAnEmptyPattern", L"", ""},
    PatternRow {"NoneForNull", nullptr, ""}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

// --- failures ------------------------------------------------------------------------------------

TEST_F(GetAttributes, OfNoReferenceAreAFailure)
{
    open(doors());
    xx_VarArray result;
    EXPECT_EQ(
        xx_get_bl_attributes(static_cast<const AcDbBlockReference*>(nullptr), result, &m_point),
        RTERROR);
    EXPECT_EQ(printed(), failure("xx_get_bl_attributes", 26, "0", "15"));
    EXPECT_EQ(m_point, AcGePoint3d(7, 7, 7));
}

TEST_F(GetAttributes, OfWhatCannotBeOpenedAreAFailureAtTheOrigin)
{
    open(doors().inModel(kDoor).inModel({"A2", "DOOR"}).inModel({"A3", "DOOR"}));
    erase(id("A2"));
    const Opened<AcDbObject> held(id("A3"), AcDb::kForWrite);

    const struct
    {
        AcDbObjectId id;
        const char* code;
    } rows[] = {{AcDbObjectId(), "16"}, {block(L"DOOR"), "46"}, {id("A2"), "80"}, {id("A3"), "83"}};

    for (const auto& row : rows) {
        m_point = {7, 7, 7};
        EXPECT_EQ(get(row.id, L"*"), "-5001 ");
        EXPECT_EQ(printed(), failure("xx_get_bl_attributes", 110, "0", row.code));
        EXPECT_EQ(m_point, AcGePoint3d::kOrigin);
    }
}

TEST_F(GetAttributes, AreWithoutThoseThatCannotBeOpened)
{
    open(doors().inModel(
        {"A1",
         "DOOR",
         {{"WOOD", "oak", false, "31"}, {"NUMBER", "17"}, {"OLD", "x", false, "33"}, {"NEW", "y"}},
         "10 3.0\n"}));
    const Opened<AcDbObject> first(id("31"), AcDb::kForWrite);
    const Opened<AcDbObject> third(id("33"), AcDb::kForWrite);
    // The list is not complete any more, so nothing completes it.
    EXPECT_EQ(get(id("A1"), L"*"), "-5001 NUMBER=17 NEW=y");
    EXPECT_EQ(printed(),
              failure("xx_get_bl_attributes", 53, "0", "83")
                  + failure("xx_get_bl_attributes", 53, "0", "83"));
    EXPECT_EQ(m_point, AcGePoint3d(3, 0, 0));
}

TEST_F(GetAttributes, AreWithoutConstantsAndNumbersWhileTheBlockCannotBeOpened)
{
    open(doors().inModel(kDoor));
    const Opened<AcDbObject> held(block(L"DOOR"), AcDb::kForWrite);
    EXPECT_EQ(get(id("A1"), L"*"), "-5001 WOOD=oak NUMBER=17");
    EXPECT_EQ(printed(), failure("xx_get_bl_attributes", 66, "0", "83"));
}

TEST_F(GetAttributes, AreWithoutConstantsAndNumbersWhenThereIsNoBlock)
{
    open(doors().inModel({"A1", "GATE", {{"WOOD", "oak"}}}));
    EXPECT_EQ(get(id("A1"), L"*"), "-5001 WOOD=oak");
    EXPECT_EQ(printed(), failure("xx_get_bl_attributes", 66, "0", "16"));
}

// --- definitions ---------------------------------------------------------------------------------

class GetDefinitions : public AttributeTest
{
protected:
    static std::string get(AcDbObjectId block, bool constantOnly = false)
    {
        xx_VarArray result;
        const int status = xx_get_attdefs(block, result, constantOnly);
        return (status == RTNORM ? "" : std::to_string(status) + ' ') + described(result);
    }
};

TEST_F(GetDefinitions, GiveTagAndDefaultTextInTheirOrder)
{
    open(doors().block("PLAIN"));
    EXPECT_EQ(get(block(L"DOOR")), "WOOD=pine MAKER=Jansen NUMBER=1 PLACE=Delft");
    EXPECT_EQ(get(block(L"DOOR"), true), "MAKER=Jansen PLACE=Delft");
    EXPECT_EQ(get(block(L"PLAIN")), "");
}

TEST_F(GetDefinitions, HaveEachTagOnce)
{
    BlockDrawing drawing;
    open(
        drawing.block("DOOR", {{"WOOD", "a"}, {"NUMBER", ""}, {"Wood", "b", true}, {"wood", "c"}}));
    EXPECT_EQ(get(block(L"DOOR")), "wood=c NUMBER=");
    EXPECT_EQ(get(block(L"DOOR"), true), "Wood=b");
}

TEST_F(GetDefinitions, AreOfTheBlockItselfOnly)
{
    open(doors().block("HOUSE", {{"STREET", "Markt"}}, {{"B1", "DOOR", {{"WOOD", "oak"}}}}));
    EXPECT_EQ(get(block(L"HOUSE")), "STREET=Markt");
}

TEST_F(GetDefinitions, LeaveOutThoseThatAreErasedOrCannotBeOpened)
{
    open(doors());
    erase(id("21"));
    const Opened<AcDbObject> held(id("24"), AcDb::kForWrite);
    EXPECT_EQ(get(block(L"DOOR")), "MAKER=Jansen NUMBER=1");
    EXPECT_EQ(get(block(L"DOOR"), true), "MAKER=Jansen");
    EXPECT_EQ(printed(), "");
}

TEST_F(GetDefinitions, OfModelSpaceAreThoseOfADrawingThatIsABlock)
{
    BlockDrawing drawing;
    open(drawing.definitionInModel({"WOOD", "pine"}).definitionInModel({"MAKER", "x", true}));
    EXPECT_EQ(get(block(ACDB_MODEL_SPACE)), "WOOD=pine MAKER=x");
}

TEST_F(GetDefinitions, OfWhatIsNoBlockAreAFailure)
{
    open(doors().inModel(kDoor));
    EXPECT_EQ(get(AcDbObjectId()), "-5001 ");
    EXPECT_EQ(get(id("A1")), "-5001 ");
    const Opened<AcDbObject> held(block(L"DOOR"), AcDb::kForWrite);
    EXPECT_EQ(get(block(L"DOOR")), "-5001 ");
    EXPECT_EQ(printed(), "");
}

TEST_F(GetDefinitions, StandBehindAndOverWhatTheListHas)
{
    open(doors());
    xx_VarArray result;
    result.setCopy(xx_Var(L"Place", L"Leiden"));
    EXPECT_EQ(xx_get_attdefs(block(L"DOOR"), result, true), RTNORM);
    EXPECT_EQ(described(result), "PLACE=Delft MAKER=Jansen");
}

} // namespace

} // namespace corma::testing
