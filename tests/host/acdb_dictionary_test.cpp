#include "host/acdb_dictionary.h"
#include "host/acdb_symbol_table.h"
#include "host/result_list.h"
#include "support/OpenObjects.h"
#include "support/RecordingServices.h"
#include "support/TestDrawing.h"

#include <gtest/gtest.h>

using corma::host::Opened;
using corma::testing::RecordingServices;
using corma::testing::TestDrawing;
using corma::testing::withSections;

namespace {

using Dictionary = corma::testing::OpenObjects;

constexpr std::string_view kGroup = R"(0 DICTIONARY
5 D
330 C
100 AcDbDictionary
281 1
)";

constexpr std::string_view kRecord = R"(0 XRECORD
5 20
102 {ACAD_REACTORS
330 C
102 }
330 C
100 AcDbXrecord
280 1
1 hout
)";

// The nine tables that the text lacks have handles in memory, so that new ones begin with 1009.
// The named objects dictionary C with these entries, and the objects D and 20.
std::string drawingText(std::string_view entries, std::string_view more = {},
                        std::string_view version = "AC1015")
{
    std::string objects = "0 SECTION\n2 OBJECTS\n0 DICTIONARY\n5 C\n330 0\n100 AcDbDictionary\n"
                          "281 1\n";
    objects += entries;
    objects += kGroup;
    objects += kRecord;
    objects += more;
    objects += "0 ENDSEC\n";
    return withSections(version, objects);
}

constexpr std::string_view kEntries = "3 ACAD_GROUP\n350 D\n3 Kozijn\n350 20\n";

TestDrawing aDrawing()
{
    return TestDrawing(drawingText(kEntries));
}

Opened<AcDbDictionary> openRoot(TestDrawing& drawing, AcDb::OpenMode mode = AcDb::kForRead)
{
    return Opened<AcDbDictionary>(AcDbObjectId(&drawing.store().namedObjects()), mode);
}

std::unique_ptr<AcDbXrecord> aText(const wchar_t* text)
{
    auto record = std::make_unique<AcDbXrecord>();
    resbuf node {};
    node.restype = 1;
    node.resval.rstring = const_cast<wchar_t*>(text);
    EXPECT_EQ(record->setFromRbChain(node), Acad::eOk);
    return record;
}

// Puts a new object under a name and closes it.
template<class Object>
AcDbObjectId put(AcDbDictionary& dictionary, const wchar_t* name, std::unique_ptr<Object> object)
{
    AcDbObjectId id;
    EXPECT_EQ(dictionary.setAt(name, object.get(), id), Acad::eOk);
    EXPECT_TRUE(object->isWriteEnabled());
    EXPECT_EQ(object.release()->close(), Acad::eOk);
    return id;
}

std::wstring names(const AcDbDictionary& dictionary, AcRx::DictIterType type = AcRx::kDictCollated)
{
    const std::unique_ptr<AcDbDictionaryIterator> walk(dictionary.newIterator(type));
    std::wstring all;
    for (; !walk->done(); walk->next()) {
        all += all.empty() ? L"" : L" ";
        all += walk->name();
    }
    return all;
}

std::string without(std::string text, std::string_view part)
{
    const std::size_t at = text.find(part);
    EXPECT_NE(at, std::string::npos) << part;
    return at == std::string::npos ? text : text.erase(at, part.size());
}

// --- reading -------------------------------------------------------------------------------------

TEST_F(Dictionary, FindsAnEntryInAnyCase)
{
    TestDrawing drawing = aDrawing();
    const auto root = openRoot(drawing);
    for (const wchar_t* name : {L"Kozijn", L"KOZIJN", L"kozijn"}) {
        AcDbObjectId id;
        EXPECT_TRUE(root->has(name)) << name;
        EXPECT_EQ(root->getAt(name, id), Acad::eOk) << name;
        EXPECT_EQ(id, drawing.id("20")) << name;
    }
    EXPECT_EQ(root->numEntries(), 2U);
}

TEST_F(Dictionary, GivesNothingForANameThatIsNotThere)
{
    TestDrawing drawing = aDrawing();
    const auto root = openRoot(drawing);
    for (const wchar_t* name : {L"", L"Kozij", L"Kozijnen", static_cast<const wchar_t*>(nullptr)}) {
        AcDbObjectId id = drawing.id("20");
        AcDbObject* entry = &*root;
        EXPECT_FALSE(root->has(name));
        EXPECT_EQ(root->getAt(name, id), Acad::eKeyNotFound);
        EXPECT_TRUE(id.isNull());
        EXPECT_EQ(root->getAt(name, entry, AcDb::kForRead), Acad::eKeyNotFound);
        EXPECT_EQ(entry, nullptr);
    }
}

TEST_F(Dictionary, OpensTheObjectUnderAName)
{
    TestDrawing drawing = aDrawing();
    const auto root = openRoot(drawing);
    AcDbObject* entry = nullptr;
    ASSERT_EQ(root->getAt(L"Kozijn", entry, AcDb::kForWrite), Acad::eOk);
    EXPECT_NE(AcDbXrecord::cast(entry), nullptr);
    EXPECT_TRUE(entry->isWriteEnabled());
    AcDbObject* second = entry;
    EXPECT_EQ(root->getAt(L"Kozijn", second, AcDb::kForRead), Acad::eWasOpenForWrite);
    EXPECT_EQ(second, nullptr);
    EXPECT_EQ(entry->close(), Acad::eOk);
}

TEST_F(Dictionary, KnowsItsEntriesByTheirIds)
{
    TestDrawing drawing = aDrawing();
    TestDrawing other = aDrawing();
    const auto root = openRoot(drawing);
    EXPECT_TRUE(root->has(drawing.id("20")));
    EXPECT_FALSE(root->has(drawing.id("C")));
    EXPECT_FALSE(root->has(other.id("20")));
    EXPECT_FALSE(root->has(AcDbObjectId()));
}

TEST_F(Dictionary, AnEntryWithoutItsObjectIsAbsentAndStaysInTheFile)
{
    TestDrawing drawing(drawingText("3 Weg\n350 FFF\n3 Kozijn\n350 20\n"));
    const auto root = openRoot(drawing, AcDb::kForWrite);
    EXPECT_FALSE(root->has(L"Weg"));
    EXPECT_EQ(root->numEntries(), 1U);
    EXPECT_EQ(names(*root), L"Kozijn");
    EXPECT_EQ(root->remove(L"Weg"), Acad::eKeyNotFound);
    put(*root, L"Nieuw", aText(L"eik"));
    EXPECT_EQ(drawing.savedRecord("C"),
              "0 DICTIONARY\n5 C\n330 0\n100 AcDbDictionary\n281 1\n"
              "3 Weg\n350 FFF\n3 Kozijn\n350 20\n3 Nieuw\n350 1009\n");
}

TEST_F(Dictionary, ANewObjectTakesTheEntryThatHasNone)
{
    TestDrawing drawing(drawingText("3 Weg\n350 FFF\n3 Kozijn\n350 20\n"));
    const auto root = openRoot(drawing, AcDb::kForWrite);
    put(*root, L"weg", aText(L"eik"));
    EXPECT_EQ(names(*root), L"weg Kozijn");
}

TEST_F(Dictionary, OfTwoEntriesOfANameTheFirstThatHasAnObjectCounts)
{
    TestDrawing drawing(drawingText("3 A\n350 FFF\n3 a\n350 20\n3 A\n350 D\n"));
    const auto root = openRoot(drawing, AcDb::kForWrite);
    AcDbObjectId id;
    ASSERT_EQ(root->getAt(L"A", id), Acad::eOk);
    EXPECT_EQ(id, drawing.id("20"));
    EXPECT_EQ(root->numEntries(), 2U);
    ASSERT_EQ(root->remove(L"A"), Acad::eOk);
    ASSERT_EQ(root->getAt(L"A", id), Acad::eOk);
    EXPECT_EQ(id, drawing.id("D"));
    EXPECT_EQ(drawing.savedRecord("C"),
              "0 DICTIONARY\n5 C\n330 0\n100 AcDbDictionary\n281 1\n"
              "3 A\n350 FFF\n3 A\n350 D\n");
}

TEST_F(Dictionary, AGarbledEntryIsNoEntryAndStaysInTheFile)
{
    TestDrawing drawing(drawingText("3 Zonder\n3 Kozijn\n350 20\n350 D\n"));
    const auto root = openRoot(drawing, AcDb::kForWrite);
    EXPECT_EQ(names(*root), L"Kozijn");
    EXPECT_EQ(root->changeGroups().size(), 7U); // of this drawing the root counts as changed
    EXPECT_EQ(drawing.savedRecord("C"),
              "0 DICTIONARY\n5 C\n330 0\n100 AcDbDictionary\n281 1\n"
              "3 Zonder\n3 Kozijn\n350 20\n350 D\n");
}

// --- new entries ---------------------------------------------------------------------------------

TEST_F(Dictionary, ANewObjectStandsInTheFileWithItsOwner)
{
    TestDrawing drawing = aDrawing();
    auto root = openRoot(drawing, AcDb::kForWrite);
    const AcDbObjectId id = put(*root, L"Raam", aText(L"eik"));
    EXPECT_EQ(id.stub()->handle, corma::host::Handle {0x1009});
    root.close();

    const std::string added = "3 Raam\n350 1009\n";
    const std::string record = "0 XRECORD\n5 1009\n102 {ACAD_REACTORS\n330 C\n102 }\n330 C\n"
                               "100 AcDbXrecord\n280 1\n1 eik\n";
    EXPECT_EQ(drawing.savedRecord("1009"), record);
    std::string saved = drawing.saved();
    saved = without(without(std::move(saved), added), record);
    saved.replace(saved.find("5 100A"), 6, "5 1000"); // $HANDSEED
    EXPECT_EQ(saved, aDrawing().saved()) << "all else is as it was";
}

TEST_F(Dictionary, ATreeOfNewDictionariesIsThereAfterLoadingAgain)
{
    TestDrawing drawing = aDrawing();
    {
        const auto root = openRoot(drawing, AcDb::kForWrite);
        auto first = std::make_unique<AcDbDictionary>();
        AcDbObjectId id;
        ASSERT_EQ(root->setAt(L"INSTELLINGEN", first.get(), id), Acad::eOk);
        const Opened<AcDbDictionary> outer(first.release());
        const auto inner = put(*outer, L"TOOL.INI", std::make_unique<AcDbDictionary>());
        const Opened<AcDbDictionary> tool(inner, AcDb::kForWrite);
        put(*tool, L"Hoogte", aText(L"2"));
    }
    TestDrawing again = drawing.reloaded();
    const auto root = openRoot(again);
    EXPECT_EQ(names(*root), L"ACAD_GROUP Kozijn INSTELLINGEN");
    Opened<AcDbObject> outer;
    ASSERT_EQ(root->getAt(L"instellingen", outer.out(), AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(outer->ownerId(), root->objectId());
    Opened<AcDbObject> tool;
    ASSERT_EQ(AcDbDictionary::cast(outer.get())->getAt(L"TOOL.INI", tool.out(), AcDb::kForRead),
              Acad::eOk);
    EXPECT_EQ(names(*AcDbDictionary::cast(tool.get())), L"Hoogte");
    EXPECT_EQ(again.saved(), drawing.saved());
}

TEST_F(Dictionary, ASecondObjectTakesThePlaceOfTheFirst)
{
    TestDrawing drawing(drawingText("3 Kozijn\n350 20\n3 ACAD_GROUP\n350 D\n"));
    const auto root = openRoot(drawing, AcDb::kForWrite);
    put(*root, L"KOZIJN", aText(L"eik"));
    EXPECT_EQ(names(*root), L"KOZIJN ACAD_GROUP");
    EXPECT_TRUE(drawing.stub("20").isErased);
    EXPECT_EQ(drawing.savedRecord("20"), "");
    EXPECT_EQ(drawing.reloaded().store().recordCount(), drawing.store().recordCount() - 1);
}

TEST_F(Dictionary, AReplacedObjectThatIsNotItsOwnStays)
{
    TestDrawing drawing(drawingText("3 Zacht\n350 30\n",
                                    "0 XRECORD\n5 30\n330 D\n100 AcDbXrecord\n280 1\n1 van D\n"));
    const auto root = openRoot(drawing, AcDb::kForWrite);
    put(*root, L"Zacht", aText(L"eik"));
    EXPECT_FALSE(drawing.stub("30").isErased);
    EXPECT_NE(drawing.savedRecord("30"), "");
}

TEST_F(Dictionary, WhatSomeoneHasOpenIsNotReplaced)
{
    struct Row
    {
        AcDb::OpenMode mode;
        Acad::ErrorStatus status;
    };

    TestDrawing drawing = aDrawing();
    const std::string before = drawing.saved();
    const auto root = openRoot(drawing, AcDb::kForWrite);
    for (const Row row : {Row {AcDb::kForRead, Acad::eWasOpenForRead},
                          Row {AcDb::kForWrite, Acad::eWasOpenForWrite}}) {
        const auto held = drawing.open<AcDbXrecord>("20", row.mode);
        const auto record = aText(L"eik");
        AcDbObjectId id;
        EXPECT_EQ(root->setAt(L"Kozijn", record.get(), id), row.status);
        EXPECT_TRUE(id.isNull());
        EXPECT_TRUE(record->isNewObject());
    }
    EXPECT_EQ(drawing.saved(), before);
}

TEST_F(Dictionary, RefusesWhatCannotBeAnEntry)
{
    TestDrawing drawing(drawingText(kEntries, R"(0 DICTIONARY
5 40
330 D
100 AcDbDictionary
281 1
)"));
    TestDrawing other = aDrawing();
    const std::string before = drawing.saved();
    const auto record = aText(L"eik");
    AcDbObjectId id;
    {
        const auto root = openRoot(drawing);
        EXPECT_EQ(root->setAt(L"A", record.get(), id), Acad::eNotOpenForWrite);
    }
    const auto root = openRoot(drawing, AcDb::kForWrite);
    EXPECT_EQ(root->setAt(L"", record.get(), id), Acad::eInvalidKey);
    EXPECT_EQ(root->setAt(nullptr, record.get(), id), Acad::eInvalidKey);
    EXPECT_EQ(root->setAt(L"A", nullptr, id), Acad::eNullObjectPointer);
    AcDbDictionary nobodys;
    EXPECT_EQ(nobodys.setAt(L"A", record.get(), id), Acad::eNotApplicable);
    AcDbLayerTableRecord layer;
    EXPECT_EQ(root->setAt(L"A", &layer, id), Acad::eWrongObjectType);
    const auto foreign = other.open<AcDbXrecord>("20");
    EXPECT_EQ(root->setAt(L"A", &*foreign, id), Acad::eWrongDatabase);
    EXPECT_EQ(root->setAt(L"A", &*root, id), Acad::eInvalidInput);
    const auto inner = drawing.open<AcDbDictionary>("40", AcDb::kForWrite);
    const auto outer = drawing.open<AcDbDictionary>("D", AcDb::kForWrite);
    EXPECT_EQ(inner->setAt(L"A", &*outer, id), Acad::eInvalidInput);
    EXPECT_TRUE(id.isNull());
    EXPECT_EQ(drawing.saved(), before);
}

TEST_F(Dictionary, AnErasedObjectIsNoEntry)
{
    TestDrawing drawing = aDrawing();
    const auto root = openRoot(drawing, AcDb::kForWrite);
    const auto record = drawing.open<AcDbXrecord>("20", AcDb::kForWrite);
    ASSERT_EQ(record->erase(), Acad::eOk);
    AcDbObjectId id;
    EXPECT_EQ(root->setAt(L"Weer", &*record, id), Acad::eWasErased);
}

TEST_F(Dictionary, AnObjectOfTheDrawingGetsAnEntryOnly)
{
    TestDrawing drawing = aDrawing();
    const auto group = drawing.open<AcDbDictionary>("D", AcDb::kForWrite);
    const auto record = drawing.open<AcDbXrecord>("20");
    AcDbObjectId id;
    ASSERT_EQ(group->setAt(L"Ook", &*record, id), Acad::eOk);
    EXPECT_EQ(id, drawing.id("20"));
    EXPECT_EQ(drawing.savedRecord("20"), kRecord);
    EXPECT_EQ(drawing.savedRecord("D"), std::string(kGroup) + "3 Ook\n350 20\n");
}

TEST_F(Dictionary, TheSameObjectUnderTheSameNameChangesNothing)
{
    TestDrawing drawing = aDrawing();
    const auto root = openRoot(drawing, AcDb::kForWrite);
    const auto record = drawing.open<AcDbXrecord>("20");
    AcDbObjectId id;
    ASSERT_EQ(root->setAt(L"kozijn", &*record, id), Acad::eOk);
    EXPECT_EQ(id, drawing.id("20"));
    EXPECT_FALSE(root->isModified());
}

TEST_F(Dictionary, OwnsHardWhereItSaysSo)
{
    TestDrawing drawing(
        drawingText(kEntries,
                    "0 DICTIONARY\n5 40\n330 D\n100 AcDbDictionary\n280 1\n281 1\n3 A\n360 41\n"
                    "0 XRECORD\n5 41\n330 40\n100 AcDbXrecord\n280 1\n"));
    const auto hard = drawing.open<AcDbDictionary>("40", AcDb::kForWrite);
    EXPECT_TRUE(hard->isTreatElementsAsHard());
    EXPECT_FALSE(openRoot(drawing)->isTreatElementsAsHard());
    put(*hard, L"B", aText(L"eik"));
    EXPECT_EQ(drawing.savedRecord("40"),
              "0 DICTIONARY\n5 40\n330 D\n100 AcDbDictionary\n280 1\n"
              "281 1\n3 A\n360 41\n3 B\n360 1009\n");
}

TEST_F(Dictionary, EntriesStayAheadOfAnotherSubclass)
{
    TestDrawing drawing(
        drawingText(kEntries,
                    "0 ACDBDICTIONARYWDFLT\n5 40\n330 C\n100 AcDbDictionary\n281 1\n3 Normal\n"
                    "350 41\n100 AcDbDictionaryWithDefault\n340 41\n"
                    "0 ACDBPLACEHOLDER\n5 41\n330 40\n"));
    const auto styles = drawing.open<AcDbDictionary>("40", AcDb::kForWrite);
    EXPECT_NE(AcDbDictionaryWithDefault::cast(styles.get()), nullptr);
    put(*styles, L"B", aText(L"eik"));
    EXPECT_EQ(drawing.savedRecord("40"),
              "0 ACDBDICTIONARYWDFLT\n5 40\n330 C\n100 AcDbDictionary\n281 1\n3 Normal\n350 41\n"
              "3 B\n350 1009\n100 AcDbDictionaryWithDefault\n340 41\n");
}

// --- versions ------------------------------------------------------------------------------------

TEST_F(Dictionary, ADrawingOfR14GetsOnlyWhatItKnows)
{
    TestDrawing drawing(drawingText(kEntries, {}, "AC1014"));
    const auto root = openRoot(drawing, AcDb::kForWrite);
    put(*root, L"Boom", std::make_unique<AcDbDictionary>());
    put(*root, L"Tekst", aText(L"eik"));
    EXPECT_EQ(drawing.savedRecord("1009"),
              "0 DICTIONARY\n5 1009\n102 {ACAD_REACTORS\n330 C\n"
              "102 }\n330 C\n100 AcDbDictionary\n");
    EXPECT_EQ(drawing.savedRecord("100A"),
              "0 XRECORD\n5 100A\n102 {ACAD_REACTORS\n330 C\n"
              "102 }\n330 C\n100 AcDbXrecord\n1 eik\n");
}

TEST_F(Dictionary, ADrawingOfR12RefusesObjectsAndSaysWhy)
{
    RecordingServices services;
    TestDrawing drawing(withSections("AC1009", "0 SECTION\n2 ENTITIES\n0 ENDSEC\n"));
    const std::string before = drawing.saved();
    const auto root = openRoot(drawing, AcDb::kForWrite);
    const auto record = aText(L"eik");
    AcDbObjectId id;
    EXPECT_EQ(root->setAt(L"A", record.get(), id), Acad::eInvalidDwgVersion);
    EXPECT_TRUE(record->isNewObject());
    EXPECT_EQ(services.allPrinted(),
              L"\nSettings cannot be kept in the drawing (unnamed): its version (AC1009) is R12 or "
              L"older. Save it as R2000 or later first.");
    EXPECT_EQ(root->numEntries(), 0U);
    EXPECT_EQ(drawing.saved(), before);
    EXPECT_FALSE(drawing.store().isChanged());
}

TEST_F(Dictionary, ADrawingWithoutObjectsGetsTheSectionWithTheFirstEntry)
{
    TestDrawing drawing(withSections("AC1015", "0 SECTION\n2 ENTITIES\n0 ENDSEC\n"));
    const std::string before = drawing.saved();
    {
        const auto root = openRoot(drawing, AcDb::kForWrite);
        EXPECT_EQ(root->numEntries(), 0U);
        EXPECT_EQ(drawing.saved(), before);
        put(*root, L"A", aText(L"eik"));
    }
    TestDrawing again = drawing.reloaded();
    EXPECT_EQ(names(*openRoot(again)), L"A");
    EXPECT_EQ(openRoot(again)->objectId().stub()->handle,
              openRoot(drawing)->objectId().stub()->handle);
    EXPECT_EQ(again.saved(), drawing.saved());
}

// --- taking out ----------------------------------------------------------------------------------

TEST_F(Dictionary, WhatIsTakenOutIsNotErasedButNotSaved)
{
    TestDrawing drawing = aDrawing();
    const auto root = openRoot(drawing, AcDb::kForWrite);
    AcDbObjectId former;
    ASSERT_EQ(root->remove(L"KOZIJN", former), Acad::eOk);
    EXPECT_EQ(former, drawing.id("20"));
    EXPECT_FALSE(root->has(L"Kozijn"));
    EXPECT_FALSE(root->has(former));
    EXPECT_EQ(root->numEntries(), 1U);
    EXPECT_FALSE(Opened<AcDbXrecord>(former)->isErased());
    EXPECT_EQ(drawing.savedRecord("20"), "");
    EXPECT_EQ(drawing.savedRecord("C"),
              "0 DICTIONARY\n5 C\n330 0\n100 AcDbDictionary\n281 1\n"
              "3 ACAD_GROUP\n350 D\n");
}

TEST_F(Dictionary, WhatIsTakenOutCanGoElsewhere)
{
    TestDrawing drawing = aDrawing();
    const auto root = openRoot(drawing, AcDb::kForWrite);
    const auto group = drawing.open<AcDbDictionary>("D", AcDb::kForWrite);
    ASSERT_EQ(root->remove(drawing.id("20")), Acad::eOk);
    AcDbObjectId id;
    {
        const auto record = drawing.open<AcDbXrecord>("20");
        EXPECT_EQ(group->setAt(L"Hier", &*record, id), Acad::eNotOpenForWrite);
    }
    const auto record = drawing.open<AcDbXrecord>("20", AcDb::kForWrite);
    ASSERT_EQ(group->setAt(L"Hier", &*record, id), Acad::eOk);
    EXPECT_EQ(drawing.savedRecord("20"),
              "0 XRECORD\n5 20\n102 {ACAD_REACTORS\n330 D\n102 }\n"
              "330 D\n100 AcDbXrecord\n280 1\n1 hout\n");
    EXPECT_EQ(record->ownerId(), drawing.id("D"));
}

TEST_F(Dictionary, ADictionaryThatIsTakenOutTakesItsTreeAlong)
{
    constexpr std::string_view kLeaf = "0 XRECORD\n5 41\n330 40\n100 AcDbXrecord\n280 1\n";
    TestDrawing drawing(drawingText("3 Boom\n350 40\n3 ACAD_GROUP\n350 D\n",
                                    std::string("0 DICTIONARY\n5 40\n330 C\n100 AcDbDictionary\n"
                                                "281 1\n3 A\n350 41\n")
                                        + std::string(kLeaf)));
    const auto root = openRoot(drawing, AcDb::kForWrite);
    ASSERT_EQ(root->remove(L"Boom"), Acad::eOk);
    EXPECT_EQ(drawing.savedRecord("40"), "");
    EXPECT_EQ(drawing.savedRecord("41"), "");
    const auto group = drawing.open<AcDbDictionary>("D", AcDb::kForWrite);
    const auto tree = drawing.open<AcDbDictionary>("40", AcDb::kForWrite);
    AcDbObjectId id;
    EXPECT_EQ(tree->setAt(L"Kring", &*tree, id), Acad::eInvalidInput);
    ASSERT_EQ(group->setAt(L"Boom", &*tree, id), Acad::eOk);
    EXPECT_EQ(drawing.savedRecord("41"), kLeaf);
    EXPECT_EQ(tree->ownerId(), drawing.id("D"));
}

TEST_F(Dictionary, TakingOutNeedsAnEntryAndWriting)
{
    TestDrawing drawing = aDrawing();
    {
        const auto root = openRoot(drawing);
        AcDbObjectId former = drawing.id("20");
        EXPECT_EQ(root->remove(L"Kozijn", former), Acad::eNotOpenForWrite);
        EXPECT_TRUE(former.isNull());
        EXPECT_EQ(root->remove(drawing.id("20")), Acad::eNotOpenForWrite);
    }
    const auto root = openRoot(drawing, AcDb::kForWrite);
    EXPECT_EQ(root->remove(L"Raam"), Acad::eKeyNotFound);
    EXPECT_EQ(root->remove(nullptr), Acad::eKeyNotFound);
    EXPECT_EQ(root->remove(drawing.id("C")), Acad::eKeyNotFound);
    EXPECT_FALSE(root->isModified());
}

TEST_F(Dictionary, ReplacingAValueTheWayTheEditorDoesLeavesOneRecord)
{
    TestDrawing drawing = aDrawing();
    const auto root = openRoot(drawing, AcDb::kForWrite);
    for (const wchar_t* text : {L"eik", L"beuk", L"es"}) {
        ASSERT_EQ(root->remove(L"Kozijn"), Acad::eOk);
        put(*root, L"Kozijn", aText(text));
    }
    EXPECT_EQ(root->numEntries(), 2U);
    const std::string saved = drawing.saved();
    EXPECT_EQ(saved.find("eik"), std::string::npos);
    EXPECT_EQ(saved.find("beuk"), std::string::npos);
    EXPECT_NE(saved.find("\n1 es\n"), std::string::npos);
}

// --- erasing -------------------------------------------------------------------------------------

TEST_F(Dictionary, AnErasedObjectTakesItsEntryAlongAndBack)
{
    TestDrawing drawing = aDrawing();
    const std::string before = drawing.saved();
    const auto root = openRoot(drawing);
    const auto record = drawing.open<AcDbXrecord>("20", AcDb::kForWrite);
    ASSERT_EQ(record->erase(), Acad::eOk);
    EXPECT_FALSE(root->has(L"Kozijn"));
    EXPECT_FALSE(root->has(drawing.id("20")));
    EXPECT_EQ(names(*root), L"ACAD_GROUP");
    EXPECT_EQ(drawing.saved(), without(without(before, kRecord), "3 Kozijn\n350 20\n"));
    ASSERT_EQ(record->erase(false), Acad::eOk);
    EXPECT_TRUE(root->has(L"Kozijn"));
    EXPECT_EQ(drawing.saved(), before);
}

TEST_F(Dictionary, AnErasedTreeComesBackWithoutWhatWasErasedBefore)
{
    TestDrawing drawing(
        drawingText("3 Boom\n350 40\n",
                    "0 DICTIONARY\n5 40\n330 C\n100 AcDbDictionary\n281 1\n3 A\n350 41\n"
                    "3 B\n350 42\n"
                    "0 XRECORD\n5 41\n330 40\n100 AcDbXrecord\n280 1\n"
                    "0 XRECORD\n5 42\n330 40\n100 AcDbXrecord\n280 1\n"));
    const auto tree = drawing.open<AcDbDictionary>("40", AcDb::kForWrite);
    ASSERT_EQ(drawing.open<AcDbXrecord>("41", AcDb::kForWrite)->erase(), Acad::eOk);
    ASSERT_EQ(tree->erase(), Acad::eOk);
    EXPECT_TRUE(drawing.stub("42").isErased);
    EXPECT_EQ(drawing.saved().find("AcDbXrecord"), drawing.saved().rfind("AcDbXrecord"));
    ASSERT_EQ(tree->erase(false), Acad::eOk);
    EXPECT_FALSE(drawing.stub("42").isErased);
    EXPECT_TRUE(drawing.stub("41").isErased);
    EXPECT_EQ(drawing.savedRecord("40"),
              "0 DICTIONARY\n5 40\n330 C\n100 AcDbDictionary\n281 1\n3 B\n350 42\n");
}

TEST_F(Dictionary, TheOwnerOfAllCannotBeErased)
{
    TestDrawing drawing = aDrawing();
    const auto root = openRoot(drawing, AcDb::kForWrite);
    EXPECT_EQ(root->erase(), Acad::eCannotBeErasedByCaller);
    EXPECT_FALSE(root->isErased());
}

TEST_F(Dictionary, ACircleOfOwnersHasAnEnd)
{
    TestDrawing drawing(
        drawingText(kEntries,
                    "0 DICTIONARY\n5 40\n330 41\n100 AcDbDictionary\n281 1\n3 A\n350 41\n"
                    "0 DICTIONARY\n5 41\n330 40\n100 AcDbDictionary\n281 1\n3 B\n350 40\n"));
    const auto first = drawing.open<AcDbDictionary>("40", AcDb::kForWrite);
    const auto record = drawing.open<AcDbXrecord>("20");
    AcDbObjectId id;
    EXPECT_EQ(first->setAt(L"C", &*record, id), Acad::eOk);
    ASSERT_EQ(first->erase(), Acad::eOk);
    EXPECT_TRUE(drawing.stub("41").isErased);
    EXPECT_FALSE(drawing.stub("20").isErased);
}

// --- walks ---------------------------------------------------------------------------------------

TEST_F(Dictionary, IsWalkedByNameOrInTheOrderOfEntries)
{
    TestDrawing drawing(drawingText({}));
    const auto root = openRoot(drawing, AcDb::kForWrite);
    for (const wchar_t* name : {L"pear", L"Apple", L"orange", L"Banana"}) {
        put(*root, name, aText(name));
    }
    EXPECT_EQ(names(*root, AcRx::kDictSorted), L"Apple Banana orange pear");
    EXPECT_EQ(names(*root, AcRx::kDictCollated), L"pear Apple orange Banana");
}

TEST_F(Dictionary, AWalkOverNothingIsDone)
{
    TestDrawing drawing(drawingText({}));
    const auto root = openRoot(drawing);
    const std::unique_ptr<AcDbDictionaryIterator> walk(root->newIterator());
    EXPECT_TRUE(walk->done());
    EXPECT_FALSE(walk->next());
    EXPECT_STREQ(walk->name(), L"");
    EXPECT_TRUE(walk->objectId().isNull());
    AcDbObject* object = nullptr;
    EXPECT_EQ(walk->getObject(object, AcDb::kForRead), Acad::eInvalidIndex);
}

TEST_F(Dictionary, AWalkGivesTheObjects)
{
    TestDrawing drawing = aDrawing();
    const auto root = openRoot(drawing);
    const std::unique_ptr<AcDbDictionaryIterator> walk(root->newIterator());
    EXPECT_EQ(walk->objectId(), drawing.id("D"));
    ASSERT_TRUE(walk->next());
    Opened<AcDbObject> object;
    ASSERT_EQ(walk->getObject(object.out(), AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(object->objectId(), drawing.id("20"));
    EXPECT_FALSE(walk->next());
}

TEST_F(Dictionary, EntriesMayGoWhileItIsWalked)
{
    constexpr int kCount = 100; // enough to close the gaps, were it not for the walk
    TestDrawing drawing(drawingText({}));
    const auto root = openRoot(drawing, AcDb::kForWrite);
    for (int i = 0; i < kCount; ++i) {
        put(*root, (L"E" + std::to_wstring(i)).c_str(), aText(L""));
    }
    std::unique_ptr<AcDbDictionaryIterator> walk(root->newIterator(AcRx::kDictCollated));
    int seen = 0;
    for (; !walk->done(); walk->next(), ++seen) {
        const std::wstring name = walk->name();
        const int number = std::stoi(name.substr(1));
        EXPECT_EQ(root->remove(name.c_str()), Acad::eOk);
        if (number % 2 == 0) { // the next one goes, too, before the walk is there
            EXPECT_EQ(root->remove((L"E" + std::to_wstring(number + 1)).c_str()), Acad::eOk);
        }
        if (number == 0) {
            put(*root, L"Laat", aText(L""));
        }
    }
    walk.reset();
    EXPECT_EQ(seen, kCount / 2);
    EXPECT_EQ(names(*root), L"Laat");
    EXPECT_TRUE(root->has(L"laat"));
}

TEST_F(Dictionary, ManyEntriesAreFoundAfterManyWereTakenOut)
{
    constexpr int kCount = 5000;
    TestDrawing drawing(drawingText({}));
    const auto root = openRoot(drawing, AcDb::kForWrite);
    const auto name = [](int i) { return L"Naam " + std::to_wstring(i); };
    for (int i = 0; i < kCount; ++i) {
        put(*root, name(i).c_str(), aText(L"x"));
    }
    for (int i = 0; i < kCount; ++i) {
        if (i % 5 != 0) {
            ASSERT_EQ(root->remove(name(i).c_str()), Acad::eOk);
        }
    }
    EXPECT_EQ(root->numEntries(), kCount / 5U);
    for (int i = 0; i < kCount; ++i) {
        AcDbObjectId id;
        ASSERT_EQ(root->getAt(name(i).c_str(), id), i % 5 == 0 ? Acad::eOk : Acad::eKeyNotFound);
        ASSERT_EQ(id.isNull(), i % 5 != 0);
    }
}

} // namespace
