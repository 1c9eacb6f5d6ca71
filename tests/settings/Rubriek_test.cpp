#include "host/host.h"
#include "inifile/drawing_settings.h"
#include "platform/text.h"
#include "settings/Rubriek.h"
#include "settings/SettingsTest.h"

using corma::host::Opened;
using corma::testing::SettingsTest;

namespace {

class RubriekTest : public SettingsTest
{
protected:
    void SetUp() override
    {
        SettingsTest::SetUp();
        ASSERT_TRUE(corma::newDocument(folder.path(L"house.dxf").c_str()));
    }

    static void store(const wchar_t* chapter, const wchar_t* ident, const wchar_t* value)
    {
        ASSERT_EQ(corma::writeToDrawing(L"tool.ini", chapter, ident, value, nullptr), Acad::eOk);
    }

    static Opened<AcDbDictionary> dictionary(const wchar_t* chapter)
    {
        Opened<AcDbDictionary> found;
        EXPECT_EQ(xx_dictionaryFor(L"tool.ini", chapter, found.out(), true, nullptr), Acad::eOk);
        return found;
    }

    /// Puts an object into a dictionary.
    static void put(const wchar_t* chapter, const wchar_t* name, AcDbObject* object)
    {
        const auto parent = dictionary(chapter);
        ASSERT_EQ(parent->upgradeOpen(), Acad::eOk);
        AcDbObjectId id;
        ASSERT_EQ(parent->setAt(name, object, id), Acad::eOk);
        object->close();
    }

    /// A record whose nodes are all numbers, or texts of these words.
    static AcDbXrecord* record(const std::vector<std::wstring>& words)
    {
        auto* const made = new AcDbXrecord; // the dictionary's from put() on
        resbuf* list = nullptr;
        for (auto word = words.rbegin(); word != words.rend(); ++word) {
            resbuf* const node = acutNewRb(1);
            node->resval.rstring = ::wcsdup(word->c_str());
            node->rbnext = list;
            list = node;
        }
        if (list == nullptr) {
            list = acutNewRb(70);
            list->resval.rint = 7;
        }
        EXPECT_EQ(made->setFromRbChain(*list), Acad::eOk);
        acutRelRb(list);
        return made;
    }

    static Instelling* add(Rubriek& category, const wchar_t* name, const wchar_t* value)
    {
        auto setting = std::make_unique<Instelling>(name, value);
        setting->setCategory(&category);
        Instelling* const added = setting.get();
        EXPECT_GE(category.settings().addSetting(std::move(setting)), 0);
        return added;
    }

    /// The settings of a category, one a line, with all that tells their level.
    static std::string settingsOf(const Rubriek& category)
    {
        std::string text;
        for (std::size_t i = 0; i < category.settings().size(); ++i) {
            const Instelling& setting = category.settings()[i];
            EXPECT_EQ(setting.category(), &category);
            text += corma::toUtf8(setting.name()) + "=" + corma::toUtf8(setting.value())
                + (setting.isProject() ? " project" : "") + (setting.isLocal() ? " drawing" : "")
                + " global=" + corma::toUtf8(setting.globalValue())
                + " project=" + corma::toUtf8(setting.projectValue()) + "\n";
        }
        return text;
    }
};

constexpr const char* kNoValue = "***KV_BESTAAT_NIET***";

std::string drawn(const std::string& entry)
{
    return entry + " drawing global=" + kNoValue + " project=" + kNoValue + "\n";
}

TEST(Rubriek, WithoutANameIsCalledAlgemeen)
{
    EXPECT_EQ(Rubriek(static_cast<const wchar_t*>(nullptr)).name(), L"Algemeen");
    EXPECT_EQ(Rubriek(L"").name(), L"");
    EXPECT_EQ(Rubriek(L"Chauffé").name(), L"Chauffé");
}

TEST(Rubriek, BeginsWithNothing)
{
    Rubriek category(L"Tekst");
    EXPECT_EQ(category.settings().size(), 0U);
    EXPECT_EQ(category.settings().owner(), &category);
    EXPECT_EQ(category.description, L"");
    EXPECT_EQ(category.treeItem(), nullptr);
    int item = 0;
    category.setTreeItem(&item);
    EXPECT_EQ(category.treeItem(), &item);
}

TEST_F(RubriekTest, OfADictionaryHasItsRecordsAsSettingsOfTheDrawing)
{
    store(L"Tekst", L"Hoogte", L"2.5");
    store(L"Tekst", L"Breedte", L"");
    const Rubriek category(L"Tekst", *dictionary(L"Tekst"));
    EXPECT_EQ(category.name(), L"Tekst");
    EXPECT_EQ(settingsOf(category), drawn("Breedte=") + drawn("Hoogte=2.5"));
    EXPECT_EQ(category.settings()[0].type(), SettingType::string);
    EXPECT_EQ(Rubriek(static_cast<const wchar_t*>(nullptr), *dictionary(L"Tekst")).name(),
              L"Algemeen");
}

TEST_F(RubriekTest, ARecordOfAGlobalSettingMakesItLocalAndKeepsTheGlobalValue)
{
    store(L"Tekst", L"Hoogte", L"2.5");
    Rubriek category(L"Tekst");
    Instelling* const setting = add(category, L"Hoogte", L"1");
    add(category, L"Breedte", L"7");
    category.loadDictionary(*dictionary(L"Tekst"));
    EXPECT_EQ(settingsOf(category),
              std::string("Hoogte=2.5 drawing global=1 project=") + kNoValue
                  + "\nBreedte=7 global=" + kNoValue + " project=" + kNoValue + "\n");
    EXPECT_EQ(category.settings().findSetting(L"Hoogte"), setting);
}

TEST_F(RubriekTest, ARecordOfAProjectSettingKeepsTheProjectsValue)
{
    store(L"Tekst", L"Hoogte", L"2.5");
    Rubriek category(L"Tekst");
    add(category, L"Hoogte", L"1")->setProjectValue(L"2");
    category.loadDictionary(*dictionary(L"Tekst"));
    EXPECT_EQ(settingsOf(category), "Hoogte=2.5 drawing global=1 project=2\n");
}

TEST_F(RubriekTest, NewIdentsComeBehindTheOthersInTheOrderOfTheDictionary)
{
    for (const wchar_t* const ident : {L"z", L"B", L"a", L"M"}) {
        store(L"Tekst", ident, L"1");
    }
    Rubriek category(L"Tekst");
    add(category, L"M", L"0");
    category.loadDictionary(*dictionary(L"Tekst"));
    EXPECT_EQ(settingsOf(category),
              std::string("M=1 drawing global=0 project=") + kNoValue + "\n" + drawn("a=1")
                  + drawn("B=1") + drawn("z=1"));
}

TEST_F(RubriekTest, IdentsHeedCaseAndAreTakenAsTheyStand)
{
    store(L"Tekst", L"HOOGTE", L"2.5");
    store(L"Tekst", L"XX_HEX_0x41004200", L"coded");
    Rubriek category(L"Tekst");
    add(category, L"Hoogte", L"1");
    category.loadDictionary(*dictionary(L"Tekst"));
    EXPECT_EQ(settingsOf(category),
              std::string("Hoogte=1 global=") + kNoValue + " project=" + kNoValue + "\n"
                  + drawn("HOOGTE=2.5") + drawn("XX_HEX_0x41004200=coded"));
}

TEST_F(RubriekTest, LoadedTwiceTheDrawingsValueIsTheOneBelow)
{
    store(L"Tekst", L"Hoogte", L"2.5");
    Rubriek category(L"Tekst");
    category.loadDictionary(*dictionary(L"Tekst"));
    store(L"Tekst", L"Hoogte", L"3");
    category.loadDictionary(*dictionary(L"Tekst"));
    EXPECT_EQ(settingsOf(category),
              std::string("Hoogte=3 drawing global=2.5 project=") + kNoValue + "\n");
}

TEST_F(RubriekTest, ADictionaryWithinTheDictionaryIsPassedOver)
{
    store(L"Tekst", L"Hoogte", L"2.5");
    put(L"Tekst", L"Binnen", new AcDbDictionary);
    Rubriek category(L"Tekst");
    category.loadDictionary(*dictionary(L"Tekst"));
    EXPECT_EQ(settingsOf(category), drawn("Hoogte=2.5"));
    EXPECT_EQ(settingsOf(Rubriek(L"Tekst", *dictionary(L"Tekst"))), drawn("Hoogte=2.5"));
}

TEST_F(RubriekTest, OnlyTheFirstTextOfARecordCounts)
{
    put(L"Tekst", L"Hoogte", record({L"2.5", L"more"}));
    EXPECT_EQ(settingsOf(Rubriek(L"Tekst", *dictionary(L"Tekst"))), drawn("Hoogte=2.5"));
}

TEST_F(RubriekTest, ARecordWithoutATextIsPassedOver)
{
    put(L"Tekst", L"Getal", record({}));
    store(L"Tekst", L"Hoogte", L"2.5");
    EXPECT_EQ(settingsOf(Rubriek(L"Tekst", *dictionary(L"Tekst"))), drawn("Hoogte=2.5"));
}

TEST_F(RubriekTest, ARecordThatCannotBeOpenedEndsTheLoad)
{
    for (const wchar_t* const ident : {L"A", L"B", L"C"}) {
        store(L"Tekst", ident, L"1");
    }
    AcDbObjectId id;
    ASSERT_EQ(dictionary(L"Tekst")->getAt(L"B", id), Acad::eOk);
    const Opened<AcDbXrecord> busy(id, AcDb::kForWrite);
    Rubriek category(L"Tekst");
    category.loadDictionary(*dictionary(L"Tekst"));
    EXPECT_EQ(settingsOf(category), drawn("A=1"));
    EXPECT_EQ(settingsOf(Rubriek(L"Tekst", *dictionary(L"Tekst"))), drawn("A=1"));
    EXPECT_EQ(corma::host::openObjectCount(), 1);
    EXPECT_EQ(boxes(), "");
    EXPECT_EQ(services.allPrinted(), L"");
}

} // namespace
