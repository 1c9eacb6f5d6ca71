#include "OpenedDrawing.h"
#include <corma/drawing_contents.h>
#include <corma/entities.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <numbers>

using corma::host::Opened;

namespace corma::testing {

namespace {

constexpr const wchar_t* kModel = L"*Model_Space";
constexpr const wchar_t* kPaper = L"*Paper_Space";

class CopyEntities : public OpenedDrawing
{
protected:
    static AcGePoint3d positionOf(AcDbObjectId reference)
    {
        return Opened<AcDbBlockReference>(reference)->position();
    }

    static double rotationOf(AcDbObjectId reference)
    {
        return Opened<AcDbBlockReference>(reference)->rotation();
    }

    static std::wstring blockOf(AcDbObjectId reference)
    {
        const Opened<AcDbBlockReference> opened(reference);
        return recordName(opened->blockTableRecord()).value_or(L"(none)");
    }

    static std::wstring typeOf(AcDbObjectId entity)
    {
        return Opened<AcDbObject>(entity)->dxfName();
    }

    // Tags and texts, with their places on the way from the reference.
    static std::wstring attributesOf(AcDbObjectId reference)
    {
        const Opened<AcDbBlockReference> opened(reference);
        const std::unique_ptr<AcDbObjectIterator> attributes(opened->attributeIterator());
        std::wstring all;
        for (; !attributes->done(); attributes->step()) {
            const Opened<AcDbAttribute> attribute(attributes->objectId());
            ACHAR* tag = attribute->tag();
            ACHAR* text = attribute->textString();
            all += std::wstring(tag) + L"=" + text + L' ';
            acutDelString(tag);
            acutDelString(text);
        }
        return all;
    }

    static void expectNear(const AcGePoint3d& found, const AcGePoint3d& wanted)
    {
        EXPECT_NEAR((found - wanted).length(), 0, 1e-9)
            << found.x << ' ' << found.y << ' ' << found.z << " in place of " << wanted.x << ' '
            << wanted.y << ' ' << wanted.z;
    }

    static AcGeMatrix3d userCoordinates()
    {
        AcGeMatrix3d matrix;
        EXPECT_TRUE(acdbUcsMatrix(matrix));
        return matrix;
    }

    // The entities of the model but for the one whose type nobody knows.
    static AcDbObjectIdArray understoodIn(AcDbDatabase& database)
    {
        AcDbObjectIdArray understood;
        for (const AcDbObjectId entity : entitiesOf(database, kModel)) {
            if (typeOf(entity) != L"KVRTESTBORD") {
                understood.append(entity);
            }
        }
        return understood;
    }

    static AcDbObjectId firstOf(AcDbDatabase& database, const wchar_t* type)
    {
        const AcDbObjectIdArray all = entitiesOf(database, kModel);
        const auto found = std::find_if(all.begin(), all.end(),
                                        [&](AcDbObjectId one) { return typeOf(one) == type; });
        EXPECT_NE(found, all.end());
        return found == all.end() ? AcDbObjectId() : *found;
    }
};

// --- one entity ----------------------------------------------------------------------------------

TEST_F(CopyEntities, TellsTheCopyOfOne)
{
    AcDbDatabase& database = open(L"r2018");
    AcDbObjectId copy;
    EXPECT_EQ(xx_copy_entity_arx(id(L"78"), AcGeMatrix3d::kIdentity, &copy), RTNORM);
    ASSERT_FALSE(copy.isNull());
    EXPECT_NE(copy, id(L"78"));
    EXPECT_EQ(blockOf(copy), L"BOUT");
    expectNear(positionOf(copy), positionOf(id(L"78")));
    const AcDbObjectIdArray all = entitiesOf(database, kModel);
    EXPECT_EQ(all.at(all.length() - 1), copy);
    EXPECT_EQ(services.allPrinted(), L"");
}

TEST_F(CopyEntities, CopiesWithoutTellingWhenNobodyAsks)
{
    AcDbDatabase& database = open(L"r2018");
    const int before = entitiesOf(database, kModel).length();
    EXPECT_EQ(xx_copy_entity_arx(id(L"78"), AcGeMatrix3d::kIdentity, nullptr), RTNORM);
    EXPECT_EQ(entitiesOf(database, kModel).length(), before + 1);
}

TEST_F(CopyEntities, TellsNoCopyWhenItFails)
{
    AcDbDatabase& database = open(L"r2018");
    AcDbObjectId copy = id(L"78");
    EXPECT_EQ(xx_copy_entity_arx(id(L"FFFF"), AcGeMatrix3d::kIdentity, &copy), RTERROR);
    EXPECT_TRUE(copy.isNull());
    EXPECT_EQ(xx_copy_entity_arx(id(L"FFFF"), AcGeMatrix3d::kIdentity, nullptr), RTERROR);
    EXPECT_FALSE(database.isModified());
}

// --- where the copies lie ------------------------------------------------------------------------

TEST_F(CopyEntities, TurnsACopyWithTheUserCoordinates)
{
    open(L"ucs");
    AcDbObjectId copy;
    EXPECT_EQ(xx_copy_entity_arx(id(L"5C"), AcGeMatrix3d::kIdentity, &copy), RTNORM);
    expectNear(positionOf(copy), userCoordinates() * positionOf(id(L"5C")));
    const double turn = std::atan2(0.8, 0.6);
    EXPECT_NEAR(
        std::remainder(rotationOf(copy) - rotationOf(id(L"5C")) - turn, 2 * std::numbers::pi), 0,
        1e-9);
}

TEST_F(CopyEntities, AppliesTheMatrixBehindTheUserCoordinates)
{
    open(L"ucs");
    AcGeMatrix3d matrix;
    matrix.setToRotation(0.5, AcGeVector3d::kZAxis, {10, 20, 0});
    AcDbObjectId copy;
    EXPECT_EQ(xx_copy_entity_arx(id(L"78"), matrix, &copy), RTNORM);
    expectNear(positionOf(copy), matrix * (userCoordinates() * positionOf(id(L"78"))));
}

TEST_F(CopyEntities, PutsThemIntoModelSpaceFromAWindowOfALayout)
{
    AcDbDatabase& database = open(L"layout_current");
    const int inModel = entitiesOf(database, kModel).length();
    const int onPaper = entitiesOf(database, kPaper).length();
    AcDbObjectId copy;
    EXPECT_EQ(xx_copy_entity_arx(id(L"78"), AcGeMatrix3d::kIdentity, &copy), RTNORM);
    EXPECT_EQ(blockOf(copy), L"BOUT");
    EXPECT_EQ(entitiesOf(database, kModel).length(), inModel + 1);
    EXPECT_EQ(entitiesOf(database, kPaper).length(), onPaper);
}

TEST_F(CopyEntities, PutsThemOntoThePaperOfALayout)
{
    AcDbDatabase& database = open(L"layout_current");
    AcDbObjectIdArray window;
    window.append(xx_getCurViewportObjectId_arx());
    ASSERT_EQ(xx_erase_ids(window), RTNORM);
    const int inModel = entitiesOf(database, kModel).length();
    const int onPaper = entitiesOf(database, kPaper).length();
    AcDbObjectId copy;
    EXPECT_EQ(xx_copy_entity_arx(id(L"78"), AcGeMatrix3d::kIdentity, &copy), RTNORM);
    EXPECT_EQ(blockOf(copy), L"BOUT");
    EXPECT_EQ(entitiesOf(database, kModel).length(), inModel);
    EXPECT_EQ(entitiesOf(database, kPaper).length(), onPaper + 1);
}

// --- several, and what they need -----------------------------------------------------------------

TEST_F(CopyEntities, TellsTheNewestFirst)
{
    open(L"r2018");
    AcDbObjectIdArray copies = ids({L"5A"}); // what was in it goes
    EXPECT_EQ(xx_copy_entities(ids({L"5C", L"78"}), AcGeMatrix3d::kIdentity, &copies), RTNORM);
    ASSERT_EQ(copies.length(), 2);
    EXPECT_EQ(blockOf(copies.at(0)), L"BOUT");
    EXPECT_EQ(blockOf(copies.at(1)), L"DEUR");
}

TEST_F(CopyEntities, TakesTheListOfTheOriginalsForThatOfTheCopies)
{
    open(L"r2018");
    AcDbObjectIdArray list = ids({L"78", L"79"});
    EXPECT_EQ(xx_copy_entities(list, AcGeMatrix3d::kIdentity, &list), RTNORM);
    ASSERT_EQ(list.length(), 2);
    EXPECT_FALSE(list.contains(id(L"78")));
}

TEST_F(CopyEntities, BringsAttributesAlong)
{
    open(L"r2018");
    AcDbObjectId copy;
    EXPECT_EQ(xx_copy_entity_arx(id(L"5C"), AcGeMatrix3d::kIdentity, &copy), RTNORM);
    EXPECT_FALSE(attributesOf(copy).empty());
    EXPECT_EQ(attributesOf(copy), attributesOf(id(L"5C")));
}

TEST_F(CopyEntities, MakesNoBlockTwice)
{
    AcDbDatabase& database = open(L"r2018");
    const std::wstring before = blockNames(database);
    EXPECT_EQ(xx_copy_entities(ids({L"5A", L"5C", L"78"}), AcGeMatrix3d::kIdentity, nullptr),
              RTNORM);
    EXPECT_EQ(blockNames(database), before);
}

TEST_F(CopyEntities, GivesACopiedDimensionAPictureOfItsOwn)
{
    AcDbDatabase& database = open(L"r2018");
    const std::wstring before = blockNames(database);
    ASSERT_EQ(before.find(L"*D2"), std::wstring::npos);
    EXPECT_EQ(xx_copy_entity_arx(firstOf(database, L"DIMENSION"), AcGeMatrix3d::kIdentity, nullptr),
              RTNORM);
    EXPECT_EQ(blockNames(database), before + L"*D2 ");
}

TEST_F(CopyEntities, CopiesEveryEntityOfTheModelThatIsUnderstood)
{
    for (const wchar_t* const name :
         {L"r12", L"r13", L"r2000", L"r2004", L"r2010", L"r2018_binary"}) {
        const AcDbObjectIdArray originals = understoodIn(open(name));
        AcDbObjectIdArray copies;
        EXPECT_EQ(xx_copy_entities(originals, AcGeMatrix3d::kIdentity, &copies), RTNORM);
        ASSERT_EQ(copies.length(), originals.length());
        for (int i = 0; i < originals.length(); ++i) {
            const int newestFirst = originals.length() - 1 - i;
            EXPECT_EQ(typeOf(copies.at(newestFirst)), typeOf(originals.at(i)));
        }
    }
}

TEST_F(CopyEntities, RefusesAnEntityThatIsNotUnderstood)
{
    AcDbDatabase& database = open(L"r2018");
    EXPECT_EQ(xx_copy_entities(entitiesOf(database, kModel), AcGeMatrix3d::kIdentity, nullptr),
              RTERROR);
    EXPECT_EQ(services.allPrinted(),
              L"\nCannot clone a record of type KVRTESTBORD: its content is not understood."
              L"\nError in file xx_copy_ent.cpp on line 70\n(100, ec = 1)");
    EXPECT_FALSE(database.isModified());
}

// --- other drawings ------------------------------------------------------------------------------

TEST_F(CopyEntities, BringsLayersLinetypesStylesAndBlocksIntoAnotherDrawing)
{
    AcDbDatabase& database = open(L"r2018");
    AcDbDatabase other;
    const AcDbObjectIdArray originals = understoodIn(database);
    EXPECT_EQ(xx_copy_ent(originals, AcGeMatrix3d::kIdentity, &other), RTNORM);
    const auto from = contentsOf(&database);
    const auto to = contentsOf(&other);
    for (const wchar_t* const block : {L"BOUT", L"Plaat", L"DEUR"}) {
        EXPECT_EQ(std::count(to->blocks.begin(), to->blocks.end(), block), 1);
    }
    for (const wchar_t* const layer : {L"UIT", L"Wände"}) {
        EXPECT_EQ(std::count(to->layers.begin(), to->layers.end(), layer), 1);
    }
    EXPECT_EQ(std::count(to->linetypes.begin(), to->linetypes.end(), L"STREEP"), 1);
    EXPECT_EQ(std::count(to->textStyles.begin(), to->textStyles.end(), L"NOTITIE"), 1);
    EXPECT_EQ(entitiesOf(other, kModel).length(), originals.length());
    EXPECT_FALSE(database.isModified());
}

TEST_F(CopyEntities, TellsCopiesInASpaceThatWasEmpty)
{
    AcDbDatabase& database = open(L"r2018");
    const AcDbObjectIdArray originals = ids({L"78", L"79"});
    AcDbDatabase other;
    acdbHostApplicationServices()->setWorkingDatabase(&other);
    AcDbObjectIdArray copies;
    EXPECT_EQ(xx_copy_entities(originals, AcGeMatrix3d::kIdentity, &copies), RTNORM);
    EXPECT_EQ(copies.length(), 2);
    EXPECT_EQ(entitiesOf(other, kModel).length(), 2);
    EXPECT_FALSE(database.isModified());
}

// --- failures ------------------------------------------------------------------------------------

TEST_F(CopyEntities, WithoutADrawingFails)
{
    AcDbObjectIdArray copies;
    EXPECT_EQ(xx_copy_entities({}, AcGeMatrix3d::kIdentity, &copies), RTERROR);
    EXPECT_EQ(xx_copy_entities({}, AcGeMatrix3d::kIdentity, nullptr), RTERROR);
    EXPECT_EQ(xx_copy_ent({}, AcGeMatrix3d::kIdentity, nullptr), RTERROR);
    EXPECT_EQ(services.allPrinted(), L"");
}

TEST_F(CopyEntities, OfAnArrayWithoutAFirstEntityFailsSilently)
{
    AcDbDatabase& database = open(L"r2018");
    AcDbObjectIdArray copies;
    EXPECT_EQ(xx_copy_entities({}, AcGeMatrix3d::kIdentity, &copies), RTERROR);
    EXPECT_EQ(xx_copy_entities(ids({L"FFFF", L"78"}), AcGeMatrix3d::kIdentity, &copies), RTERROR);
    EXPECT_EQ(services.allPrinted(), L"");
    EXPECT_FALSE(database.isModified());
}

TEST_F(CopyEntities, ThatTheHostDoesNotExportAreReported)
{
    AcDbDatabase& database = open(L"r2018");
    AcDbObjectIdArray copies = ids({L"78"});
    EXPECT_EQ(xx_copy_entities(ids({L"78", L"FFFF"}), AcGeMatrix3d::kIdentity, &copies), RTERROR);
    EXPECT_TRUE(copies.isEmpty());
    EXPECT_EQ(services.allPrinted(), L"\nError in file xx_copy_ent.cpp on line 70\n(100, ec = 16)");
    EXPECT_FALSE(database.isModified());
}

TEST_F(CopyEntities, OfWhatIsNoEntityIsReported)
{
    AcDbDatabase& database = open(L"r2018");
    AcDbObjectIdArray layer;
    layer.append(database.layerTableId());
    EXPECT_EQ(xx_copy_entities(layer, AcGeMatrix3d::kIdentity, nullptr), RTERROR);
    EXPECT_EQ(services.allPrinted(), L"\nError in file xx_copy_ent.cpp on line 70\n(100, ec = 34)");
}

TEST_F(CopyEntities, WithAMatrixWithoutAnInverseAreReported)
{
    AcDbDatabase& database = open(L"r2018");
    AcGeMatrix3d flat;
    flat(2, 2) = 0;
    AcDbObjectIdArray copies;
    EXPECT_EQ(xx_copy_entities(ids({L"78"}), flat, &copies), RTERROR);
    EXPECT_TRUE(copies.isEmpty());
    const std::wstring printed = services.allPrinted();
    EXPECT_NE(printed.find(L"Error in file xx_copy_ent.cpp on line 94\n(100, ec = 3)"),
              std::wstring::npos)
        << std::string(printed.begin(), printed.end());
    EXPECT_FALSE(database.isModified());
}

TEST_F(CopyEntities, WhileTheSpaceIsOpenForWriteAreNotTold)
{
    AcDbDatabase& database = open(L"r2018");
    const AcDbObjectId model = Opened<AcDbEntity>(id(L"78"))->blockId();
    const Opened<AcDbBlockTableRecord> writer(model, AcDb::kForWrite);
    AcDbObjectIdArray copies;
    EXPECT_EQ(xx_copy_entities(ids({L"78"}), AcGeMatrix3d::kIdentity, &copies), RTERROR);
    EXPECT_EQ(services.allPrinted(), L"");
    EXPECT_FALSE(database.isModified());
}

} // namespace

} // namespace corma::testing
