#include "host/acdb_block.h"
#include "host/acdb_entity.h"
#include "host/host.h"
#include "platform/text.h"
#include "support/OpenObjects.h"
#include "support/TestDrawing.h"
#include "support/small_drawing.h"

#include <cmath>
#include <gtest/gtest.h>
#include <numbers>

using corma::host::Opened;
using corma::host::TableKind;
using corma::testing::kSmallDrawing;
using corma::testing::kSmallDrawingR12;
using corma::testing::TestDrawing;
using corma::testing::withSections;

namespace {

using Entity = corma::testing::OpenObjects;

constexpr double kHalfTurn = std::numbers::pi;

// A text that the host handed out, which is freed.
std::wstring taken(ACHAR* text)
{
    const std::wstring copy = text == nullptr ? L"(null)" : text;
    acutDelString(text);
    return copy;
}

void expectNear(const AcGePoint3d& point, double x, double y, double z)
{
    EXPECT_NEAR(point.x, x, 1e-9);
    EXPECT_NEAR(point.y, y, 1e-9);
    EXPECT_NEAR(point.z, z, 1e-9);
}

std::string handleOf(AcDbObjectId id)
{
    return corma::toUtf8(corma::host::toText(id.stub()->handle));
}

std::wstring attributes(const AcDbBlockReference& reference)
{
    const std::unique_ptr<AcDbObjectIterator> walk(reference.attributeIterator());
    std::wstring all;
    for (; !walk->done(); walk->step()) {
        const Opened<AcDbAttribute> attribute(walk->objectId());
        all += (all.empty() ? L"" : L" ") + taken(attribute->tag()) + L"="
            + taken(attribute->textString());
    }
    EXPECT_TRUE(walk->objectId().isNull());
    return all;
}

AcDbObjectId append(AcDbBlockReference& reference, const wchar_t* tag)
{
    auto attribute = std::make_unique<AcDbAttribute>();
    EXPECT_EQ(attribute->setTag(tag), Acad::eOk);
    AcDbObjectId id;
    EXPECT_EQ(reference.appendAttribute(id, attribute.get()), Acad::eOk);
    EXPECT_TRUE(attribute->isWriteEnabled());
    EXPECT_EQ(attribute.release()->close(), Acad::eOk);
    return id;
}

// The lines of a file from one group to another.
std::string between(const std::string& text, std::string_view first, std::string_view last)
{
    const std::size_t begin = text.find(first);
    const std::size_t end = text.find(last, begin);
    return begin == std::string::npos ? "" : text.substr(begin, end - begin);
}

// --- layer and colour ----------------------------------------------------------------------------

TEST_F(Entity, IsInALayerOfItsDrawing)
{
    for (const auto text : {kSmallDrawing, kSmallDrawingR12}) {
        TestDrawing drawing(text);
        const auto line = drawing.open<AcDbEntity>("40", AcDb::kForWrite);
        EXPECT_EQ(corma::upperCase(taken(line->layer())), L"GEVEL");
        AcDbStub* gevel = drawing.store().findEntry(TableKind::layer, L"Gevel");
        AcDbStub* zero = drawing.store().findEntry(TableKind::layer, L"0");
        EXPECT_EQ(line->layerId(), AcDbObjectId(gevel));
        EXPECT_EQ(line->setLayer(L"Dak"), Acad::eKeyNotFound);
        EXPECT_EQ(line->setLayer(L""), Acad::eInvalidInput);
        EXPECT_EQ(line->setLayer(nullptr), Acad::eInvalidInput);
        EXPECT_FALSE(line->isModified());
        EXPECT_EQ(line->setLayer(L"0"), Acad::eOk);
        EXPECT_EQ(line->layerId(), AcDbObjectId(zero));
    }
}

TEST_F(Entity, TakesTheSpellingOfItsLayer)
{
    TestDrawing drawing(kSmallDrawing);
    const auto line = drawing.open<AcDbEntity>("44", AcDb::kForWrite);
    EXPECT_EQ(line->setLayer(L"GEVEL"), Acad::eOk);
    EXPECT_EQ(taken(line->layer()), L"Gevel");
    EXPECT_EQ(drawing.open<AcDbEntity>("40")->setLayer(L"0"), Acad::eNotOpenForWrite);
}

TEST_F(Entity, WithoutALayerIsInTheFirst)
{
    TestDrawing drawing(
        withSections("AC1009", "0 SECTION\n2 ENTITIES\n0 POINT\n5 50\n10 0.0\n20 0.0\n0 ENDSEC\n"));
    const auto point = drawing.open<AcDbEntity>("50");
    EXPECT_EQ(taken(point->layer()), L"0");
    EXPECT_TRUE(point->layerId().isNull());
}

TEST_F(Entity, HasAColour)
{
    TestDrawing drawing(kSmallDrawing);
    EXPECT_EQ(drawing.open<AcDbEntity>("32")->colorIndex(), 3);
    EXPECT_EQ(drawing.open<AcDbEntity>("40")->colorIndex(), 256);
}

TEST_F(Entity, InNoDrawingTakesAnyLayer)
{
    AcDbText text;
    EXPECT_EQ(taken(text.layer()), L"0");
    EXPECT_TRUE(text.layerId().isNull());
    EXPECT_TRUE(text.blockId().isNull());
    EXPECT_EQ(text.setLayer(L"Overal"), Acad::eOk);
    EXPECT_EQ(taken(text.layer()), L"Overal");
}

// --- texts ---------------------------------------------------------------------------------------

TEST_F(Entity, ATextTellsWhatItIs)
{
    for (const auto text : {kSmallDrawing, kSmallDrawingR12}) {
        TestDrawing drawing(text);
        const auto definition = drawing.open<AcDbText>("33");
        EXPECT_EQ(taken(definition->textString()), L"000");
        EXPECT_EQ(definition->position(), AcGePoint3d(3.0, 2.0, 0.0));
        EXPECT_EQ(definition->height(), 2.5);
        EXPECT_DOUBLE_EQ(definition->rotation(), kHalfTurn / 2.0);
        EXPECT_EQ(definition->normal(), AcGeVector3d::kZAxis);
        EXPECT_EQ(definition->textStyle(),
                  AcDbObjectId(drawing.store().findEntry(TableKind::textStyle, L"Standard")));
    }
}

TEST_F(Entity, ATextIsSet)
{
    TestDrawing drawing(kSmallDrawing);
    {
        const auto attribute = drawing.open<AcDbText>("42", AcDb::kForWrite);
        EXPECT_EQ(attribute->setTextString(L"%%c12"), Acad::eOk);
        EXPECT_EQ(attribute->setPosition({1.0, 2.5, 3.0}), Acad::eOk);
    }
    EXPECT_EQ(drawing.savedRecord("42"),
              "0 ATTRIB\n5 42\n330 41\n100 AcDbEntity\n8 Gevel\n100 AcDbText\n10 1.0\n20 2.5\n"
              "30 3.0\n40 5.0\n1 %%c12\n50 180.0\n100 AcDbAttribute\n2 NUMMER\n70 9\n");
    const auto attribute = drawing.open<AcDbText>("42");
    EXPECT_EQ(attribute->setTextString(L"x"), Acad::eNotOpenForWrite);
    EXPECT_EQ(attribute->setPosition({}), Acad::eNotOpenForWrite);
    AcDbText made;
    EXPECT_EQ(made.setTextString(nullptr), Acad::eOk);
    EXPECT_EQ(taken(made.textString()), L"");
    EXPECT_TRUE(made.textStyle().isNull());
}

constexpr std::string_view kSeveralLines = R"(0 SECTION
2 ENTITIES
0 ATTDEF
5 50
330 0
100 AcDbEntity
8 0
100 AcDbText
10 1.0
20 1.0
30 0.0
40 2.0
1 
100 AcDbAttributeDefinition
280 0
3 Regels?
2 REGELS
70 0
280 1
71 4
72 0
11 1.0
21 3.0
31 0.0
101 Embedded Object
10 1.0
20 3.0
30 0.0
40 2.0
41 0.0
71 1
3 begin van
1  de tekst
73 1
44 1.0
1001 AcDbAttr
1070 0
0 ENDSEC
)";

TEST_F(Entity, AnAttributeOfSeveralLinesHasThemInItsEmbeddedText)
{
    TestDrawing drawing(withSections("AC1032", kSeveralLines));
    const auto definition = drawing.open<AcDbAttributeDefinition>("50", AcDb::kForWrite);
    EXPECT_EQ(taken(definition->textString()), L"begin van de tekst");
    EXPECT_EQ(definition->setTextString(L"een\\Ptwee"), Acad::eOk);
    EXPECT_EQ(taken(definition->textString()), L"een\\Ptwee");
    const std::string saved = drawing.savedRecord("50");
    EXPECT_EQ(between(saved, "71 1\n", "73 1"), "71 1\n1 een\\Ptwee\n");
    EXPECT_NE(saved.find("40 2.0\n1 \n100 "), std::string::npos) << "the line stays empty";
}

// --- definitions and attributes ------------------------------------------------------------------

TEST_F(Entity, ADefinitionTellsWhatItIs)
{
    for (const auto text : {kSmallDrawing, kSmallDrawingR12}) {
        TestDrawing drawing(text);
        const auto number = drawing.open<AcDbAttributeDefinition>("33");
        EXPECT_EQ(taken(number->tag()), L"NUMMER");
        EXPECT_EQ(taken(number->prompt()), L"Welk nummer?");
        EXPECT_TRUE(number->isInvisible());
        EXPECT_FALSE(number->isConstant());
        EXPECT_FALSE(number->isVerifiable());
        EXPECT_TRUE(number->isPreset());
        const auto kind = drawing.open<AcDbAttributeDefinition>("34");
        EXPECT_EQ(taken(kind->tag()), L"SOORT");
        EXPECT_EQ(taken(kind->prompt()), L"");
        EXPECT_FALSE(kind->isInvisible());
        EXPECT_TRUE(kind->isConstant());
        EXPECT_TRUE(kind->isVerifiable());
        EXPECT_FALSE(kind->isPreset());
    }
}

TEST_F(Entity, FlagsOfADefinitionAreToldFromOtherNumbersOfItsCodes)
{
    // 70 and 280 stand in several subclasses.
    TestDrawing drawing(withSections("AC1032", R"(0 SECTION
2 ENTITIES
0 ATTDEF
5 50
100 AcDbEntity
8 0
100 AcDbText
10 1.0
20 1.0
30 0.0
40 2.0
1 a
100 AcDbAttributeDefinition
280 0
3 
2 TAG
70 2
280 1
100 AcDbXrecord
280 1
70 13
0 ENDSEC
)"));
    const auto definition = drawing.open<AcDbAttributeDefinition>("50");
    EXPECT_TRUE(definition->isConstant());
    EXPECT_FALSE(definition->isInvisible() || definition->isPreset());
}

TEST_F(Entity, ATagIsSet)
{
    TestDrawing drawing(kSmallDrawing);
    for (const char* handle : {"33", "42"}) {
        const auto text = drawing.open<AcDbText>(handle, AcDb::kForWrite);
        auto* definition = AcDbAttributeDefinition::cast(text.get());
        auto* attribute = AcDbAttribute::cast(text.get());
        const auto set = [&](const wchar_t* tag) {
            return definition != nullptr ? definition->setTag(tag) : attribute->setTag(tag);
        };
        EXPECT_EQ(set(L""), Acad::eInvalidInput);
        EXPECT_EQ(set(nullptr), Acad::eInvalidInput);
        EXPECT_EQ(set(L"ANDERS"), Acad::eOk);
        EXPECT_NE(drawing.savedRecord(handle).find("\n2 ANDERS\n"), std::string::npos);
    }
    EXPECT_EQ(drawing.open<AcDbAttribute>("42")->setTag(L"A"), Acad::eNotOpenForWrite);
    EXPECT_TRUE(drawing.open<AcDbAttribute>("42")->isInvisible());
}

TEST_F(Entity, AnAttributeIsMadeAsItsDefinitionPrescribes)
{
    for (const auto text : {kSmallDrawing, kSmallDrawingR12}) {
        TestDrawing drawing(text);
        std::string handle;
        {
            const auto reference = drawing.open<AcDbBlockReference>("41", AcDb::kForWrite);
            const auto definition = drawing.open<AcDbAttributeDefinition>("33");
            auto attribute = std::make_unique<AcDbAttribute>();
            ASSERT_EQ(
                attribute->setAttributeFromBlock(definition.get(), reference->blockTransform()),
                Acad::eOk);
            AcDbObjectId id;
            ASSERT_EQ(reference->appendAttribute(id, attribute.get()), Acad::eOk);
            const Opened<AcDbAttribute> opened(attribute.release());
            handle = handleOf(id);
            EXPECT_EQ(taken(opened->tag()), L"NUMMER");
            EXPECT_EQ(taken(opened->textString()), L"000");
            EXPECT_TRUE(opened->isInvisible());
            EXPECT_EQ(opened->layerId(), definition->layerId());
            EXPECT_DOUBLE_EQ(opened->height(), 5.0);
            EXPECT_NEAR(opened->rotation(), kHalfTurn, 1e-12);
            // From the block's (1, 2) it is 2 to the right; twice that, turned by 90 degrees.
            expectNear(opened->position(), 10.0, 24.0, 0.0);
        }
        TestDrawing again = drawing.reloaded();
        const auto attribute = again.open<AcDbAttribute>(handle);
        EXPECT_EQ(taken(attribute->tag()), L"NUMMER");
        EXPECT_EQ(attribute->ownerId(), again.id("41"));
        const std::string saved = again.savedRecord(handle);
        EXPECT_EQ(saved.find("Welk"), std::string::npos) << "the prompt is the definition's";
        EXPECT_NE(saved.find("\n72 1\n"), std::string::npos) << saved;
        EXPECT_NE(saved.find("\n74 2\n"), std::string::npos) << saved;
        EXPECT_EQ(saved.find("AttributeDefinition"), std::string::npos);
        EXPECT_EQ(again.saved(), drawing.saved());
    }
}

TEST_F(Entity, AnAttributeThatIsSynchronisedKeepsWhatIsItsOwn)
{
    TestDrawing drawing(kSmallDrawing);
    const auto attribute = drawing.open<AcDbAttribute>("42", AcDb::kForWrite);
    const auto definition = drawing.open<AcDbAttributeDefinition>("34");
    ASSERT_EQ(attribute->setAttributeFromBlock(definition.get(), AcGeMatrix3d::kIdentity),
              Acad::eOk);
    EXPECT_EQ(drawing.savedRecord("42"),
              "0 ATTRIB\n5 42\n330 41\n100 AcDbEntity\n8 0\n100 AcDbText\n10 0.0\n20 0.0\n30 0.0\n"
              "40 1.0\n1 draai\n100 AcDbAttribute\n2 SOORT\n70 6\n");
}

TEST_F(Entity, AnAttributeOfSeveralLinesIsMadeLikeItsDefinition)
{
    TestDrawing drawing(withSections("AC1032", kSeveralLines));
    const auto definition = drawing.open<AcDbAttributeDefinition>("50");
    AcDbAttribute attribute;
    ASSERT_EQ(attribute.setAttributeFromBlock(definition.get(),
                                              AcGeMatrix3d().setToTranslation({10.0, 0.0, 0.0})),
              Acad::eOk);
    EXPECT_EQ(taken(attribute.textString()), L"begin van de tekst");
    const auto& groups = attribute.groups();
    const auto lines = groups.find(101, groups.all());
    ASSERT_TRUE(lines);
    EXPECT_EQ(groups.real(10, {*lines, groups.size()}), 11.0);
    EXPECT_EQ(groups.integer(71, groups.subclass(L"AcDbAttribute")), 2);
    EXPECT_FALSE(groups.find(1001, groups.all())) << "extended data are the definition's";
}

TEST_F(Entity, AnAttributeThatCannotBeMadeStaysAsItWas)
{
    TestDrawing drawing(kSmallDrawing);
    const std::string before = drawing.saved();
    const auto definition = drawing.open<AcDbAttributeDefinition>("33");
    {
        const auto attribute = drawing.open<AcDbAttribute>("42");
        EXPECT_EQ(attribute->setAttributeFromBlock(definition.get(), AcGeMatrix3d::kIdentity),
                  Acad::eNotOpenForWrite);
    }
    const auto attribute = drawing.open<AcDbAttribute>("42", AcDb::kForWrite);
    EXPECT_EQ(attribute->setAttributeFromBlock(nullptr, AcGeMatrix3d::kIdentity),
              Acad::eNullObjectPointer);
    AcGeMatrix3d flat;
    flat(0, 0) = 0.0;
    EXPECT_EQ(attribute->setAttributeFromBlock(definition.get(), flat), Acad::eInvalidInput);
    EXPECT_FALSE(attribute->isModified());
    EXPECT_EQ(drawing.saved(), before);
}

// --- block references ----------------------------------------------------------------------------

TEST_F(Entity, AReferenceTellsWhatItIs)
{
    for (const auto text : {kSmallDrawing, kSmallDrawingR12}) {
        TestDrawing drawing(text);
        const auto reference = drawing.open<AcDbBlockReference>("41");
        EXPECT_EQ(reference->blockTableRecord(),
                  AcDbObjectId(drawing.store().findBlock(L"Deur")->record));
        EXPECT_EQ(reference->position(), AcGePoint3d(10.0, 20.0, 0.0));
        EXPECT_EQ(reference->scaleFactors(), AcGeScale3d(2.0, 2.0, 2.0));
        EXPECT_DOUBLE_EQ(reference->rotation(), kHalfTurn / 2.0);
        EXPECT_EQ(reference->normal(), AcGeVector3d::kZAxis);
        EXPECT_EQ(attributes(*reference), L"NUMMER=12a");
    }
}

TEST_F(Entity, AReferenceCarriesItsBlockToItsPlace)
{
    TestDrawing drawing(kSmallDrawing);
    const auto reference = drawing.open<AcDbBlockReference>("41");
    const AcGeMatrix3d matrix = reference->blockTransform();
    expectNear(matrix * AcGePoint3d(1.0, 2.0, 0.0), 10.0, 20.0, 0.0); // the block's origin
    expectNear(matrix * AcGePoint3d(2.0, 2.0, 0.0), 10.0, 22.0, 0.0);
    expectNear(matrix * AcGePoint3d(1.0, 3.0, 1.0), 8.0, 20.0, 2.0);
}

TEST_F(Entity, AReferenceCarriesItsBlockWhileItsRecordIsWritten)
{
    TestDrawing drawing(kSmallDrawing);
    const auto block = drawing.open<AcDbBlockTableRecord>("30", AcDb::kForWrite);
    const auto reference = drawing.open<AcDbBlockReference>("41");
    expectNear(reference->blockTransform() * AcGePoint3d(1.0, 2.0, 0.0), 10.0, 20.0, 0.0);
}

TEST_F(Entity, AMirroredReferenceStandsInItsOwnPlane)
{
    TestDrawing drawing(withSections("AC1015", R"(0 SECTION
2 ENTITIES
0 INSERT
5 50
100 AcDbEntity
8 0
100 AcDbBlockReference
2 Weg
10 10.0
20 5.0
30 1.0
41 2.0
210 0.0
220 0.0
230 -1.0
0 ENDSEC
)"));
    {
        const auto reference = drawing.open<AcDbBlockReference>("50", AcDb::kForWrite);
        EXPECT_TRUE(reference->blockTableRecord().isNull());
        expectNear(reference->position(), -10.0, 5.0, -1.0);
        expectNear(reference->blockTransform() * AcGePoint3d(1.0, 1.0, 1.0), -12.0, 6.0, -2.0);
        EXPECT_EQ(reference->setPosition({4.0, 6.0, 2.0}), Acad::eOk);
        expectNear(reference->position(), 4.0, 6.0, 2.0);
    }
    EXPECT_EQ(between(drawing.savedRecord("50"), "10 ", "41 "), "10 -4.0\n20 6.0\n30 -2.0\n");
}

TEST_F(Entity, AReferenceIsSet)
{
    TestDrawing drawing(kSmallDrawing);
    TestDrawing other(kSmallDrawing);
    {
        const auto reference = drawing.open<AcDbBlockReference>("41", AcDb::kForWrite);
        EXPECT_EQ(reference->setBlockTableRecord({}), Acad::eNullObjectId);
        EXPECT_EQ(reference->setBlockTableRecord(drawing.id("31")), Acad::eWrongObjectType);
        EXPECT_EQ(reference->setBlockTableRecord(drawing.id("40")), Acad::eWrongObjectType);
        EXPECT_EQ(reference->setBlockTableRecord(other.id("30")), Acad::eWrongDatabase);
        EXPECT_EQ(reference->setScaleFactors({1.0, 0.0, 1.0}), Acad::eInvalidInput);
        EXPECT_FALSE(reference->isModified());
        EXPECT_EQ(reference->setBlockTableRecord(drawing.id("30")), Acad::eOk);
        EXPECT_EQ(reference->setScaleFactors({2.0, -3.0, 2.0}), Acad::eOk);
        EXPECT_EQ(reference->setRotation(kHalfTurn), Acad::eOk);
        EXPECT_EQ(reference->setPosition({1.0, 2.0, 3.0}), Acad::eOk);
    }
    EXPECT_EQ(drawing.savedRecord("41"),
              "0 INSERT\n5 41\n330 1F\n100 AcDbEntity\n8 0\n100 AcDbBlockReference\n66 1\n2 Deur\n"
              "10 1.0\n20 2.0\n30 3.0\n41 2.0\n42 -3.0\n43 2.0\n50 180.0\n");
    const auto reference = drawing.open<AcDbBlockReference>("41");
    EXPECT_EQ(reference->setBlockTableRecord(drawing.id("30")), Acad::eNotOpenForWrite);
    EXPECT_EQ(reference->setScaleFactors({}), Acad::eNotOpenForWrite);
    EXPECT_EQ(reference->setRotation(0.0), Acad::eNotOpenForWrite);
    EXPECT_EQ(reference->setPosition({}), Acad::eNotOpenForWrite);
}

TEST_F(Entity, ANewReferenceStandsInTheFile)
{
    TestDrawing drawing(kSmallDrawing);
    {
        auto made
            = std::make_unique<AcDbBlockReference>(AcGePoint3d(1.0, 2.0, 3.0), drawing.id("30"));
        const auto model = drawing.open<AcDbBlockTableRecord>("1F", AcDb::kForWrite);
        ASSERT_EQ(model->appendAcDbEntity(made.get()), Acad::eOk);
        const Opened<AcDbBlockReference> reference(made.release());
        EXPECT_EQ(reference->blockTableRecord(), drawing.id("30"));
        EXPECT_EQ(reference->setScaleFactors({1.0, 1.0, 1.0}), Acad::eOk);
    }
    EXPECT_EQ(drawing.savedRecord("1003"),
              "0 INSERT\n5 1003\n330 1F\n100 AcDbEntity\n8 0\n100 AcDbBlockReference\n2 Deur\n"
              "10 1.0\n20 2.0\n30 3.0\n");
}

TEST_F(Entity, AReferenceInRowsAndColumnsIsOneToo)
{
    TestDrawing drawing(withSections("AC1015", R"(0 SECTION
2 ENTITIES
0 INSERT
5 50
100 AcDbEntity
8 0
100 AcDbMInsertBlock
2 Weg
10 10.0
20 5.0
30 0.0
50 90.0
70 5
71 5
0 ENDSEC
)"));
    const auto reference = drawing.open<AcDbBlockReference>("50");
    EXPECT_EQ(reference->position(), AcGePoint3d(10.0, 5.0, 0.0));
    EXPECT_DOUBLE_EQ(reference->rotation(), kHalfTurn / 2.0);
}

// --- attributes of references --------------------------------------------------------------------

TEST_F(Entity, AttributesFollowOneAnother)
{
    TestDrawing drawing(kSmallDrawing);
    {
        const auto reference = drawing.open<AcDbBlockReference>("41", AcDb::kForWrite);
        append(*reference, L"KLEUR");
        append(*reference, L"MAAT");
        EXPECT_EQ(attributes(*reference), L"NUMMER=12a KLEUR= MAAT=");
    }
    EXPECT_EQ(between(drawing.saved(), "0 ATTRIB\n5 1003", "0 LINE"),
              "0 ATTRIB\n5 1003\n330 41\n100 AcDbEntity\n8 0\n100 AcDbText\n10 0.0\n20 0.0\n"
              "30 0.0\n40 1.0\n1 \n100 AcDbAttribute\n2 KLEUR\n70 0\n"
              "0 ATTRIB\n5 1004\n330 41\n100 AcDbEntity\n8 0\n100 AcDbText\n10 0.0\n20 0.0\n"
              "30 0.0\n40 1.0\n1 \n100 AcDbAttribute\n2 MAAT\n70 0\n"
              "0 SEQEND\n5 43\n330 41\n100 AcDbEntity\n8 0\n");
    TestDrawing again = drawing.reloaded();
    EXPECT_EQ(attributes(*again.open<AcDbBlockReference>("41")), L"NUMMER=12a KLEUR= MAAT=");
}

TEST_F(Entity, TheFirstAttributeBringsTheEndOfTheList)
{
    TestDrawing drawing(kSmallDrawing);
    AcDbObjectId id;
    {
        auto made = std::make_unique<AcDbBlockReference>(AcGePoint3d(), drawing.id("30"));
        const auto paper = drawing.open<AcDbBlockTableRecord>("1B", AcDb::kForWrite);
        ASSERT_EQ(paper->appendAcDbEntity(id, made.get()), Acad::eOk);
        const Opened<AcDbBlockReference> reference(made.release());
        EXPECT_EQ(attributes(*reference), L"");
        append(*reference, L"KLEUR");
    }
    EXPECT_EQ(between(drawing.saved(), "0 INSERT\n5 1003", "0 ENDSEC"),
              "0 INSERT\n5 1003\n330 1B\n100 AcDbEntity\n67 1\n410 Blad 1\n8 0\n"
              "100 AcDbBlockReference\n66 1\n2 Deur\n10 0.0\n20 0.0\n30 0.0\n"
              "0 ATTRIB\n5 1004\n330 1003\n100 AcDbEntity\n67 1\n410 Blad 1\n8 0\n100 AcDbText\n"
              "10 0.0\n20 0.0\n30 0.0\n40 1.0\n1 \n100 AcDbAttribute\n2 KLEUR\n70 0\n"
              "0 SEQEND\n5 1005\n330 1003\n100 AcDbEntity\n67 1\n410 Blad 1\n8 0\n");
    TestDrawing again = drawing.reloaded();
    EXPECT_EQ(attributes(*again.open<AcDbBlockReference>("1003")), L"KLEUR=");
}

TEST_F(Entity, AttributesOfR12HaveOnlyWhatR12Knows)
{
    TestDrawing drawing(kSmallDrawingR12);
    std::string handle;
    {
        const auto reference = drawing.open<AcDbBlockReference>("41", AcDb::kForWrite);
        handle = handleOf(append(*reference, L"KLEUR"));
    }
    EXPECT_EQ(drawing.savedRecord(handle),
              "0 ATTRIB\n5 " + handle
                  + "\n8 0\n10 0.0\n20 0.0\n30 0.0\n40 1.0\n1 \n"
                    "2 KLEUR\n70 0\n");
}

TEST_F(Entity, AnAttributeOfR2010HasItsVersionAndLock)
{
    std::string text(kSmallDrawing);
    text.replace(text.find("AC1015"), 6, "AC1024");
    TestDrawing drawing(text);
    append(*drawing.open<AcDbBlockReference>("41", AcDb::kForWrite), L"KLEUR");
    EXPECT_NE(drawing.savedRecord("1003").find("100 AcDbAttribute\n280 0\n2 KLEUR\n70 0\n280 0\n"),
              std::string::npos);
}

TEST_F(Entity, TheLastAttributeTakesTheEndOfTheListAlongAndBack)
{
    for (const auto text : {kSmallDrawing, kSmallDrawingR12}) {
        TestDrawing drawing(text);
        const std::string before = drawing.saved();
        const auto attribute = drawing.open<AcDbAttribute>("42", AcDb::kForWrite);
        ASSERT_EQ(attribute->erase(), Acad::eOk);
        EXPECT_EQ(attributes(*drawing.open<AcDbBlockReference>("41")), L"");
        const std::string saved = drawing.saved();
        EXPECT_EQ(saved.find("SEQEND"), std::string::npos);
        EXPECT_EQ(saved.find("\n66 "), std::string::npos);
        TestDrawing again = drawing.reloaded();
        EXPECT_EQ(attributes(*again.open<AcDbBlockReference>("41")), L"");
        ASSERT_EQ(attribute->erase(false), Acad::eOk);
        EXPECT_EQ(drawing.saved(), before);
    }
}

TEST_F(Entity, AReferenceThatLostItsAttributesGetsNewOnes)
{
    TestDrawing drawing(kSmallDrawing);
    ASSERT_EQ(drawing.open<AcDbAttribute>("42", AcDb::kForWrite)->erase(), Acad::eOk);
    append(*drawing.open<AcDbBlockReference>("41", AcDb::kForWrite), L"KLEUR");
    TestDrawing again = drawing.reloaded();
    EXPECT_EQ(attributes(*again.open<AcDbBlockReference>("41")), L"KLEUR=");
    EXPECT_NE(again.savedRecord("43"), "") << "the SEQEND is back";
}

TEST_F(Entity, AReferenceGoesAndComesBackWithItsAttributes)
{
    TestDrawing drawing(kSmallDrawing);
    append(*drawing.open<AcDbBlockReference>("41", AcDb::kForWrite), L"KLEUR");
    ASSERT_EQ(drawing.open<AcDbAttribute>("42", AcDb::kForWrite)->erase(), Acad::eOk);
    const std::string before = drawing.saved();
    const auto reference = drawing.open<AcDbBlockReference>("41", AcDb::kForWrite);
    ASSERT_EQ(reference->erase(), Acad::eOk);
    EXPECT_EQ(drawing.saved().find("ATTRIB"), std::string::npos);
    EXPECT_EQ(drawing.saved().find("SEQEND"), std::string::npos);
    ASSERT_EQ(reference->erase(false), Acad::eOk);
    EXPECT_EQ(drawing.saved(), before) << "without the attribute that was erased before";
}

TEST_F(Entity, AttributesMayGoWhileTheyAreWalked)
{
    TestDrawing drawing(kSmallDrawing);
    const auto reference = drawing.open<AcDbBlockReference>("41", AcDb::kForWrite);
    append(*reference, L"KLEUR");
    append(*reference, L"MAAT");
    const std::unique_ptr<AcDbObjectIterator> walk(reference->attributeIterator());
    int erased = 0;
    for (walk->start(); !walk->done(); walk->step(), ++erased) {
        EXPECT_EQ(Opened<AcDbAttribute>(walk->objectId(), AcDb::kForWrite)->erase(), Acad::eOk);
    }
    EXPECT_EQ(erased, 3);
    walk->step();
    EXPECT_TRUE(walk->done());
    EXPECT_EQ(drawing.saved().find("SEQEND"), std::string::npos);
}

TEST_F(Entity, RefusesWhatCannotBeAnAttribute)
{
    TestDrawing drawing(kSmallDrawing);
    const std::string before = drawing.saved();
    AcDbAttribute attribute;
    AcDbObjectId id;
    EXPECT_EQ(drawing.open<AcDbBlockReference>("41")->appendAttribute(id, &attribute),
              Acad::eNotOpenForWrite);
    AcDbBlockReference nobodys;
    EXPECT_EQ(nobodys.appendAttribute(id, &attribute), Acad::eNotApplicable);
    const auto reference = drawing.open<AcDbBlockReference>("41", AcDb::kForWrite);
    EXPECT_EQ(reference->appendAttribute(id, nullptr), Acad::eNullObjectPointer);
    const auto present = drawing.open<AcDbAttribute>("42");
    EXPECT_EQ(reference->appendAttribute(id, present.get()), Acad::eAlreadyInDb);
    EXPECT_TRUE(id.isNull());
    EXPECT_TRUE(attribute.isNewObject());
    EXPECT_EQ(drawing.saved(), before);
    const std::unique_ptr<AcDbObjectIterator> walk(nobodys.attributeIterator());
    EXPECT_TRUE(walk->done());
}

// --- transformation ------------------------------------------------------------------------------

TEST_F(Entity, AttributesFollowTheirReference)
{
    TestDrawing drawing(kSmallDrawing);
    const std::string sequenceEnd = drawing.savedRecord("43");
    {
        const auto reference = drawing.open<AcDbBlockReference>("41", AcDb::kForWrite);
        ASSERT_EQ(reference->transformBy(AcGeMatrix3d().setToTranslation({1.0, 2.0, 0.0})),
                  Acad::eOk);
        EXPECT_EQ(reference->position(), AcGePoint3d(11.0, 22.0, 0.0));
    }
    EXPECT_EQ(drawing.open<AcDbAttribute>("42")->position(), AcGePoint3d(11.0, 26.0, 0.0));
    EXPECT_FALSE(drawing.stub("43").isChanged);
    TestDrawing again = drawing.reloaded();
    EXPECT_EQ(again.open<AcDbAttribute>("42")->position(), AcGePoint3d(11.0, 26.0, 0.0));
}

TEST_F(Entity, WhatCannotBeTransformedStaysAsItWas)
{
    TestDrawing drawing(kSmallDrawing);
    const std::string before = drawing.saved();
    AcGeMatrix3d flat;
    flat(2, 2) = 0.0;
    const auto reference = drawing.open<AcDbBlockReference>("41", AcDb::kForWrite);
    EXPECT_EQ(reference->transformBy(flat), Acad::eInvalidInput);
    EXPECT_FALSE(reference->isModified());
    EXPECT_EQ(drawing.open<AcDbEntity>("40")->transformBy(flat), Acad::eNotOpenForWrite);
    EXPECT_EQ(drawing.saved(), before);
}

// --- viewports -----------------------------------------------------------------------------------

TEST_F(Entity, AViewportHasANumberAndADirection)
{
    for (const auto text : {kSmallDrawing, kSmallDrawingR12}) {
        TestDrawing drawing(text);
        const auto viewport = drawing.open<AcDbViewport>("45");
        EXPECT_EQ(viewport->number(), 3);
        EXPECT_EQ(viewport->viewDirection(), AcGeVector3d::kXAxis);
    }
}

TEST_F(Entity, AViewportThatIsOffHasNoNumber)
{
    std::string text(kSmallDrawing);
    text.replace(text.find("68 2"), 4, "68 0");
    TestDrawing drawing(text);
    EXPECT_EQ(drawing.open<AcDbViewport>("45")->number(), -1);
}

TEST_F(Entity, AViewportThatDoesNotTellLooksFromAbove)
{
    TestDrawing drawing(
        withSections("AC1009",
                     "0 SECTION\n2 ENTITIES\n0 VIEWPORT\n5 50\n8 0\n68 1\n69 1\n1001 ACAD\n"
                     "1000 MVIEW\n1010 0.0\n1020 0.0\n1030 0.0\n0 ENDSEC\n"));
    EXPECT_EQ(drawing.open<AcDbViewport>("50")->viewDirection(), AcGeVector3d::kZAxis);
    AcDbViewport made;
    EXPECT_EQ(made.number(), -1);
    EXPECT_EQ(made.viewDirection(), AcGeVector3d::kZAxis);
}

} // namespace
