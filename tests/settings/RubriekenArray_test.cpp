#include "host/host.h"
#include "inifile/drawing_settings.h"
#include "platform/text.h"
#include "settings/RubriekenArray.h"
#include "settings/SettingsTest.h"
#include "settings/texts.h"

#include <algorithm>

using corma::host::Opened;
using corma::testing::SettingsTest;
using corma::testing::valuesOf;

namespace {

// --- lookups -------------------------------------------------------------------------------------

class CategoryLookup : public SettingsTest
{
protected:
    /// The names, one behind the other.
    static std::wstring namesOf(const std::vector<Rubriek*>& categories)
    {
        std::wstring text;
        for (const Rubriek* const category : categories) {
            text += L"[" + category->name() + L"]";
        }
        return text;
    }
};

TEST_F(CategoryLookup, GivesTheCategoryOfExactlyThatName)
{
    const auto model = load("[Tekst]\n[tekst]\n[Chauff\xC3\xA9]\n");
    EXPECT_EQ(model->findCategory(L"Algemeen"), &(*model)[0]);
    EXPECT_EQ(model->findCategory(L"Tekst"), &(*model)[1]);
    EXPECT_EQ(model->findCategory(L"tekst"), &(*model)[2]);
    EXPECT_EQ(model->findCategory(L"Chauffé"), &(*model)[3]);
    EXPECT_TRUE(model->hasCategory(L"Tekst"));
    EXPECT_TRUE(model->hasCategory(L"Chauffé"));
}

TEST_F(CategoryLookup, OfAnUnknownNameGivesTheFirst)
{
    const auto model = load("[Tekst]\n");
    for (const wchar_t* const name : {L"TEKST", L"Teks", L"Tekst ", L"", L"algemeen", L"x"}) {
        EXPECT_EQ(model->findCategory(name), &(*model)[0]) << corma::toUtf8(name);
        EXPECT_FALSE(model->hasCategory(name)) << corma::toUtf8(name);
    }
}

TEST_F(CategoryLookup, OfTwoOfTheNameGivesTheLater)
{
    const auto model = load("[A]\n[B]\n[A]\n[C]\n[Algemeen]\n");
    EXPECT_EQ(model->findCategory(L"A"), &(*model)[3]);
    EXPECT_EQ(model->findCategory(L"Algemeen"), &(*model)[5]);
    EXPECT_EQ(model->findCategory(L"unknown"), &(*model)[0]);
}

TEST_F(CategoryLookup, FindsWhatWasAdded)
{
    const auto model = load("[A]\n");
    EXPECT_EQ(model->addCategory(std::make_unique<Rubriek>(L"B")), 2);
    EXPECT_EQ(model->addCategory(std::make_unique<Rubriek>(L"A")), 3);
    EXPECT_EQ(model->findCategory(L"B"), &(*model)[2]);
    EXPECT_EQ(model->findCategory(L"A"), &(*model)[3]);
    EXPECT_EQ(model->size(), 4U);
}

TEST_F(CategoryLookup, ByPatternGivesThoseThatFitAndAlgemeen)
{
    const auto model = load("[Tekst]\n[Tabel]\n[Deur]\n[tekst2]\n[Algemeen]\n");
    const auto fitting
        = [&](const wchar_t* pattern) { return namesOf(model->filterByPattern(pattern)); };
    EXPECT_EQ(fitting(L"T*"), L"[Algemeen][Tekst][Tabel][Algemeen]");
    EXPECT_EQ(fitting(L"Deur,Tabel"), L"[Algemeen][Tabel][Deur][Algemeen]");
    EXPECT_EQ(fitting(L"*"), L"[Algemeen][Tekst][Tabel][Deur][tekst2][Algemeen]");
    EXPECT_EQ(fitting(L""), L"[Algemeen][Algemeen]");
    EXPECT_EQ(fitting(L"Algemeen"), L"[Algemeen][Algemeen]");
    EXPECT_EQ(fitting(L"x"), L"[Algemeen][Algemeen]");
    EXPECT_EQ(model->filterByPattern(L"Deur")[1], &(*model)[3]) << "they are not copied";
}

// --- drawings ------------------------------------------------------------------------------------

class DrawingLevel : public SettingsTest
{
protected:
    void newDrawing() { ASSERT_TRUE(corma::newDocument(folder.path(L"house.dxf").c_str())); }

    static AcDbDatabase* database() { return acdbHostApplicationServices()->workingDatabase(); }

    static void store(const wchar_t* chapter, const wchar_t* ident, const wchar_t* value,
                      const wchar_t* file = L"tool.ini")
    {
        ASSERT_EQ(corma::writeToDrawing(file, chapter, ident, value, nullptr), Acad::eOk);
    }

    /// The model with the drawing on top, without the description of the head.
    std::unique_ptr<RubriekenArray> drawn(std::string_view ini, const char* ipr = nullptr)
    {
        auto model = load(ini);
        (*model)[0].description.clear();
        if (ipr != nullptr) {
            EXPECT_TRUE(model->loadProjectFile(folder.write(L"tool.ipr", ipr)));
        }
        model->loadDrawing(database(), names());
        EXPECT_TRUE(model->localMode);
        EXPECT_EQ(model->projectMode, ipr != nullptr);
        EXPECT_EQ(corma::host::openObjectCount(), 0);
        EXPECT_EQ(boxes(), "");
        EXPECT_EQ(services.allPrinted(), L"");
        return model;
    }
};

struct LevelRow
{
    const char* sentence;
    const char* ini;
    const char* ipr; // null: no project
    const wchar_t* drawing; // null: nothing in the drawing
    const char* state; // of the setting X, whose values are G, P and D
};

void PrintTo(const LevelRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class Levels : public DrawingLevel, public ::testing::WithParamInterface<LevelRow>
{
};

TEST_P(Levels, LeaveTheirState)
{
    newDrawing();
    for (const bool isHead : {true, false}) {
        const std::string chapter = isHead ? "" : "[A]\n";
        if (GetParam().drawing != nullptr) {
            store(isHead ? L"" : L"A", L"X", GetParam().drawing);
        }
        const std::string ipr = chapter + (GetParam().ipr == nullptr ? "" : GetParam().ipr);
        const auto model
            = drawn(chapter + GetParam().ini, GetParam().ipr == nullptr ? nullptr : ipr.c_str());
        const std::string head = isHead ? "[Algemeen]\n" : "[A]\n";
        EXPECT_TRUE(valuesOf(*model).ends_with(head + "  " + GetParam().state + "\n"))
            << valuesOf(*model);
    }
}

INSTANTIATE_TEST_SUITE_P(
    RubriekenArray, Levels,
    ::testing::Values(
        LevelRow {"GlobalFileOnly", "X=G\n", nullptr, nullptr, "X=G"},
        LevelRow {"GlobalAndProject", "X=G\n", "X=P\n", nullptr, "X=P (project; global G)"},
        LevelRow {"ProjectOnly", "", "X=P\n", nullptr, "X=P (project; global none)"},
        LevelRow {"GlobalAndDrawing", "X=G\n", nullptr, L"D",
                  "X=D (drawing; global G; project none)"},
        LevelRow {"GlobalAndAnEmptyProjectAndDrawing", "X=G\n", "", L"D",
                  "X=D (drawing; global G; project none)"},
        LevelRow {"GlobalProjectAndDrawing", "X=G\n", "X=P\n", L"D",
                  "X=D (drawing; global G; project P)"},
        LevelRow {"ProjectAndDrawing", "", "X=P\n", L"D", "X=D (drawing; global none; project P)"},
        LevelRow {"DrawingOnly", "", nullptr, L"D", "X=D (drawing; global none; project none)"},
        LevelRow {"AnEmptyValueInTheDrawing", "X=G\n", nullptr, L"",
                  "X= (drawing; global G; project none)"}),
    [](const auto& row) { return row.param.sentence; });

TEST_F(DrawingLevel, CategoriesOfTheDrawingAloneComeBehindThoseOfTheFile)
{
    newDrawing();
    store(L"B", L"X", L"1");
    store(L"A", L"Y", L"2");
    store(L"Z", L"Y", L"3");
    store(L"", L"Kop", L"4");
    const auto model = drawn("[Z]\n[M]\nX=1\n");
    EXPECT_EQ(valuesOf(*model),
              "[Algemeen]\n  Kop=4 (drawing; global none; project none)\n"
              "[Z]\n  Y=3 (drawing; global none; project none)\n"
              "[M]\n  X=1\n"
              "[A]\n  Y=2 (drawing; global none; project none)\n"
              "[B]\n  X=1 (drawing; global none; project none)\n");
    EXPECT_EQ((*model)[3].description, L"");
    EXPECT_EQ(model->findCategory(L"A"), &(*model)[3]);
}

TEST_F(DrawingLevel, NamesOfChaptersAreDecoded)
{
    newDrawing();
    store(L"A=B", L"X", L"1");
    store(L"C/D", L"Y", L"2");
    const auto model = drawn("[C/D]\nY=0\n");
    EXPECT_EQ(valuesOf(*model),
              "[Algemeen]\n"
              "[C/D]\n  Y=2 (drawing; global 0; project none)\n"
              "[A=B]\n  X=1 (drawing; global none; project none)\n");
}

TEST_F(DrawingLevel, AChapterHeedsCase)
{
    newDrawing();
    store(L"TEKST", L"X", L"1");
    EXPECT_EQ(valuesOf(*drawn("[Tekst]\nX=0\n")),
              "[Algemeen]\n[Tekst]\n  X=0\n[TEKST]\n  X=1 (drawing; global none; project none)\n");
}

TEST_F(DrawingLevel, OfAChapterThatStandsTwiceTheLaterIsMeant)
{
    newDrawing();
    store(L"A", L"X", L"1");
    store(L"", L"Y", L"2");
    EXPECT_EQ(valuesOf(*drawn("Y=0\n[A]\nX=0\n[A]\nX=0\n[Algemeen]\nY=0\n")),
              "[Algemeen]\n  Y=0\n[A]\n  X=0\n"
              "[A]\n  X=1 (drawing; global 0; project none)\n"
              "[Algemeen]\n  Y=2 (drawing; global 0; project none)\n");
}

TEST_F(DrawingLevel, TheFileIsKnownInCapitals)
{
    newDrawing();
    store(L"", L"X", L"1", L"TOOL.INI");
    store(L"", L"X", L"2", L"other.ini");
    EXPECT_EQ(valuesOf(*drawn("X=0\n")), "[Algemeen]\n  X=1 (drawing; global 0; project none)\n");
}

TEST_F(DrawingLevel, ADictionaryWithinAChapterIsPassedOver)
{
    newDrawing();
    store(L"A", L"X", L"1");
    {
        Opened<AcDbDictionary> chapter;
        ASSERT_EQ(xx_dictionaryFor(L"tool.ini", L"A", chapter.out(), false, nullptr), Acad::eOk);
        ASSERT_EQ(chapter->upgradeOpen(), Acad::eOk);
        AcDbObjectId id;
        auto* const inner = new AcDbDictionary; // the drawing's from here on
        ASSERT_EQ(chapter->setAt(L"B", inner, id), Acad::eOk);
        inner->close();
    }
    EXPECT_EQ(valuesOf(*drawn("")),
              "[Algemeen]\n[A]\n  X=1 (drawing; global none; project none)\n");
}

TEST_F(DrawingLevel, AChapterThatCannotBeOpenedEndsTheLoad)
{
    newDrawing();
    store(L"A", L"X", L"1");
    store(L"B", L"X", L"1");
    store(L"C", L"X", L"1");
    Opened<AcDbDictionary> busy;
    ASSERT_EQ(xx_dictionaryFor(L"tool.ini", L"B", busy.out(), false, nullptr), Acad::eOk);
    ASSERT_EQ(busy->upgradeOpen(), Acad::eOk);
    const auto model = load("");
    model->loadDrawing(database(), names());
    EXPECT_EQ(valuesOf(*model),
              "[Algemeen] General settings\n[A]\n  X=1 (drawing; global none; project none)\n");
    EXPECT_TRUE(model->localMode);
    EXPECT_EQ(corma::host::openObjectCount(), 1);
}

TEST_F(DrawingLevel, WhatIsMissingLeavesTheModelAsItIs)
{
    EXPECT_EQ(valuesOf(*drawn("X=0\n")), "[Algemeen]\n  X=0\n") << "no drawing";
    newDrawing();
    EXPECT_EQ(valuesOf(*drawn("X=0\n")), "[Algemeen]\n  X=0\n") << "no settings in it";
    store(L"", L"X", L"1", L"other.ini");
    EXPECT_EQ(valuesOf(*drawn("X=0\n")), "[Algemeen]\n  X=0\n") << "none of the file";
}

TEST_F(DrawingLevel, ARecordInThePlaceOfADictionaryHoldsNothing)
{
    newDrawing();
    {
        Opened<AcDbDictionary> named;
        ASSERT_EQ(database()->getNamedObjectsDictionary(named.out(), AcDb::kForWrite), Acad::eOk);
        AcDbObjectId id;
        auto* const record = new AcDbXrecord; // the drawing's from here on
        ASSERT_EQ(named->setAt(corma::kSettingsRoot, record, id), Acad::eOk);
        record->close();
    }
    EXPECT_EQ(valuesOf(*drawn("X=0\n")), "[Algemeen]\n  X=0\n");
}

TEST_F(DrawingLevel, ADrawingThatWasSavedHoldsTheSame)
{
    newDrawing();
    store(L"A=B", L"X", L"é§");
    store(L"", L"Y", L"1");
    ASSERT_TRUE(corma::saveDocument());
    ASSERT_TRUE(corma::openDocument(folder.path(L"house.dxf").c_str()));
    EXPECT_EQ(valuesOf(*drawn("Y=0\n")),
              "[Algemeen]\n  Y=1 (drawing; global 0; project none)\n"
              "[A=B]\n  X=é§ (drawing; global none; project none)\n");
    EXPECT_FALSE(corma::isDocumentModified());
}

TEST_F(DrawingLevel, OnAnEmptyModelChaptersAreLoaded)
{
    newDrawing();
    store(L"", L"X", L"1");
    store(L"A", L"Y", L"2");
    RubriekenArray model(names());
    model.loadDrawing(database(), names());
    EXPECT_EQ(valuesOf(model), "[A]\n  Y=2 (drawing; global none; project none)\n");
}

// --- the tree ------------------------------------------------------------------------------------

/// Keeps items, and what is done to them.
class RecordingTree : public corma::CategoryTree
{
public:
    struct Item
    {
        std::wstring text;
        Item* parent;
    };

    void* selectedItem() override { return selected; }

    std::wstring textOf(void* item) override { return static_cast<Item*>(item)->text; }

    void deleteAllItems() override
    {
        items.clear();
        selected = nullptr;
        expanded = nullptr;
        sorted = nullptr;
    }

    void* insertItem(const std::wstring& text, void* parent) override
    {
        items.push_back(std::make_unique<Item>(Item {text, static_cast<Item*>(parent)}));
        return items.back().get();
    }

    void selectItem(void* item) override { selected = static_cast<Item*>(item); }

    void expand(void* item) override { expanded = static_cast<Item*>(item); }

    void sortChildren(void* item) override { sorted = static_cast<Item*>(item); }

    /// The items, one a line, indented below their parents: "*" marks the selected one, "-" the one
    /// that was expanded, "^" the one whose children were sorted.
    [[nodiscard]] std::string text() const
    {
        std::string all;
        for (const auto& item : items) {
            all += std::string(item->parent == nullptr ? 0 : 2, ' ') + corma::toUtf8(item->text)
                + (item.get() == selected ? " *" : "") + (item.get() == expanded ? " -" : "")
                + (item.get() == sorted ? " ^" : "") + "\n";
        }
        return all;
    }

    void select(const wchar_t* name)
    {
        const auto found = std::find_if(items.begin(), items.end(),
                                        [&](const auto& item) { return item->text == name; });
        ASSERT_NE(found, items.end());
        selected = found->get();
    }

    std::vector<std::unique_ptr<Item>> items;
    Item* selected = nullptr;
    Item* expanded = nullptr;
    Item* sorted = nullptr;
};

class CategoryTreeTest : public SettingsTest
{
protected:
    RecordingTree tree;
};

TEST_F(CategoryTreeTest, HasAllCategoriesBelowTheFirst)
{
    const auto model = load("[Tekst]\n[Deur]\n[Alarm]\n");
    model->fillTree(tree, false);
    EXPECT_EQ(tree.text(), "General * -\n  Tekst\n  Deur\n  Alarm\n");
    for (std::size_t i = 0; i < model->size(); ++i) {
        EXPECT_EQ((*model)[i].treeItem(), tree.items[i].get());
    }
}

TEST_F(CategoryTreeTest, IsSortedByItselfWhenAskedFor)
{
    const auto model = load("[Tekst]\n[Deur]\n");
    model->fillTree(tree, true);
    EXPECT_EQ(tree.text(), "General * - ^\n  Tekst\n  Deur\n");
    EXPECT_EQ((*model)[1].name(), L"Tekst") << "the model keeps the order of the file";
}

TEST_F(CategoryTreeTest, BearsTheWordOfTheLanguage)
{
    load("", 19)->fillTree(tree, false);
    EXPECT_EQ(tree.text(), "Algemeen * -\n");
    load("", 12)->fillTree(tree, false);
    EXPECT_EQ(tree.text(), "G\xC3\xA9n\xC3\xA9ral * -\n");
}

TEST_F(CategoryTreeTest, KeepsTheSelectionByItsText)
{
    const auto model = load("[Tekst]\n[Deur]\n");
    model->fillTree(tree, false);
    tree.select(L"Deur");
    model->fillTree(tree, false);
    EXPECT_EQ(tree.text(), "General -\n  Tekst\n  Deur *\n");
    load("[Deur]\n[Raam]\n")->fillTree(tree, false);
    EXPECT_EQ(tree.text(), "General -\n  Deur *\n  Raam\n");
    load("[deur]\n[Raam]\n")->fillTree(tree, false);
    EXPECT_EQ(tree.text(), "General * -\n  deur\n  Raam\n") << "it is no longer there";
}

TEST_F(CategoryTreeTest, OfTwoOfTheSelectedTextTheLaterIsSelected)
{
    const auto model = load("[A]\n[B]\n[A]\n");
    model->fillTree(tree, false);
    tree.select(L"A");
    model->fillTree(tree, false);
    EXPECT_EQ(tree.text(), "General -\n  A\n  B\n  A *\n");
}

TEST_F(CategoryTreeTest, TheRootIsSelectedAgain)
{
    const auto model = load("[A]\n");
    model->fillTree(tree, false);
    model->fillTree(tree, false);
    EXPECT_EQ(tree.text(), "General * -\n  A\n");
}

TEST_F(CategoryTreeTest, ACategoryThatIsCalledAsTheRootTakesItsSelection)
{
    const auto model = load("[General]\n");
    model->fillTree(tree, false);
    model->fillTree(tree, false);
    EXPECT_EQ(tree.text(), "General -\n  General *\n");
}

TEST_F(CategoryTreeTest, ALaterAlgemeenIsAChildAsOthers)
{
    const auto model = load("[A]\n[Algemeen]\n");
    model->fillTree(tree, false);
    EXPECT_EQ(tree.text(), "General * -\n  A\n  Algemeen\n");
    EXPECT_EQ((*model)[0].treeItem(), nullptr);
    EXPECT_EQ((*model)[2].treeItem(), tree.items[2].get());
}

TEST_F(CategoryTreeTest, OfAnEmptyModelIsTheRootAlone)
{
    RubriekenArray(names()).fillTree(tree, false);
    EXPECT_EQ(tree.text(), "General * -\n");
}

} // namespace
