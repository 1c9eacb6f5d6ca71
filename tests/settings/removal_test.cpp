// Settings and categories taken out of files and drawings: InstellingenArray and RubriekenArray.

#include "host/host.h"
#include "inifile/drawing_settings.h"
#include "settings/LevelsTest.h"
#include "support/RefusedCalls.h"

#include <cerrno>

using corma::host::Opened;
using corma::platform::SystemCall;
using corma::testing::filesIn;
using corma::testing::LevelsTest;
using corma::testing::RefusedCalls;
using corma::testing::valuesOf;
using corma::testing::WriteWatch;

namespace {

constexpr const char* kRemoved = "information: Rubriek succesvol verwijderd.\n";
constexpr const char* kNotAllRemoved
    = "exclamation: Een van de onderliggende instellingen kon niet verwijderd worden. "
      "Daarom kan de rubriek niet verwijderd worden.\n";
constexpr const char* kNotLocal = "information: Can not remove setting in Local Mode\n";
constexpr const char* kNoFile = "stop: Ini-file not found: ~/cfg/tool.ini\n";

class Removal : public LevelsTest
{
protected:
    [[nodiscard]] bool removeFromFile(RubriekenArray& model, const wchar_t* chapter,
                                      const wchar_t* name) const
    {
        return model.findCategory(chapter)->settings().removeFromFile(name, where());
    }

    [[nodiscard]] bool removeFromDrawing(RubriekenArray& model, const wchar_t* chapter,
                                         const wchar_t* name) const
    {
        return model.findCategory(chapter)->settings().removeFromDrawing(name, nullptr, where());
    }

    [[nodiscard]] static AcDbDatabase* database()
    {
        return acdbHostApplicationServices()->workingDatabase();
    }
};

// --- out of files --------------------------------------------------------------------------------

struct RemovalRow
{
    const char* sentence;
    std::string ini;
    const char* ipr; // null for none
    const wchar_t* local; // value of the setting in the drawing; null for none
    const wchar_t* chapter;
    const wchar_t* name;
    bool result;
    std::string model;
    std::string iniAfter;
    const char* iprAfter; // null for none
};

void PrintTo(const RemovalRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class RemovingFromFiles : public Removal, public ::testing::WithParamInterface<RemovalRow>
{
};

TEST_P(RemovingFromFiles, LeavesThis)
{
    const RemovalRow& row = GetParam();
    writeIni(row.ini);
    if (row.ipr != nullptr) {
        writeIpr(row.ipr);
    }
    newDrawing();
    if (row.local != nullptr) {
        store(row.chapter, row.name, row.local);
    }
    const std::string drawn = drawing();
    const auto loaded = model();
    services.printed.clear();
    EXPECT_EQ(removeFromFile(*loaded, row.chapter, row.name), row.result);
    EXPECT_EQ(valuesOf(*loaded), row.model);
    EXPECT_EQ(ini(), row.iniAfter);
    EXPECT_EQ(filesIn(folder),
              row.iprAfter == nullptr ? "cfg/tool.ini" : "cfg/tool.ini house/tool.ipr");
    EXPECT_EQ(ipr(), row.iprAfter == nullptr ? "" : row.iprAfter);
    EXPECT_EQ(drawing(), drawn);
    EXPECT_EQ(told(), "");
    EXPECT_EQ(services.allPrinted(), L"");
}

INSTANTIATE_TEST_SUITE_P(
    Global, RemovingFromFiles,
    ::testing::Values(
        RemovalRow {"OfTheHead", "A=1\nB=2\n[X]\nA=3\n", nullptr, nullptr, L"Algemeen", L"A", true,
                    "[Algemeen]\n  B=2\n[X]\n  A=3\n", "B=2\n[X]\nA=3\n", nullptr},
        RemovalRow {"OfAChapter", "A=1\n[X]\nA=2\nB=3", nullptr, nullptr, L"X", L"A", true,
                    "[Algemeen]\n  A=1\n[X]\n  B=3\n", "A=1\n[X]\nB=3\n", nullptr},
        RemovalRow {"TakesTheProjectsWordForNothing", "A=1\n", "B=p\n", nullptr, L"Algemeen", L"A",
                    true, "[Algemeen]\n  B=p (project; global none)\n", "", "B=p\n"},
        RemovalRow {"TakesTheLineOfALongerIdent", "[X]\nKleurRand=1\nKleur=2\n", nullptr, nullptr,
                    L"X", L"Kleur", true, "[Algemeen]\n[X]\n  KleurRand=1\n", "[X]\nKleur=2\n",
                    nullptr},
        RemovalRow {"TakesTheFirstOfTwoLines", "A=1\nA=2\n", nullptr, nullptr, L"Algemeen", L"A",
                    true, "[Algemeen]\n", "A=2\n", nullptr},
        RemovalRow {"WithABlankBeforeTheEqualsSignHasItInItsName", "A = 1\n", nullptr, nullptr,
                    L"Algemeen", L"A ", true, "[Algemeen]\n", "", nullptr},
        RemovalRow {"ThatIsNotThereChangesNothing", "A=1\n", nullptr, nullptr, L"Algemeen", L"B",
                    false, "[Algemeen]\n  A=1\n", "A=1\n", nullptr},
        RemovalRow {"HeedsCase", "A=1\n", nullptr, nullptr, L"Algemeen", L"a", false,
                    "[Algemeen]\n  A=1\n", "A=1\n", nullptr},
        RemovalRow {"OfOtherCharacters", "[Chauff\xE9]\n\x80=1\nB=\xB2\n", nullptr, nullptr,
                    L"Chauff\xE9", L"\x20AC", true, "[Algemeen]\n[Chauff\xC3\xA9]\n  B=\xC2\xB2\n",
                    "[Chauff\xE9]\nB=\xB2\n", nullptr},
        RemovalRow {"KeepsLineEnds", "A=1\r\nB=2\n[X]\r\nC=3", nullptr, nullptr, L"Algemeen", L"A",
                    true, "[Algemeen]\n  B=2\n[X]\n  C=3\n", "B=2\n[X]\r\nC=3\r\n", nullptr}),
    [](const auto& row) { return row.param.sentence; });

INSTANTIATE_TEST_SUITE_P(
    Project, RemovingFromFiles,
    ::testing::Values(
        RemovalRow {"OverAGlobalValueGivesThatBack", "A=G\n", "B=p\nA=P\n", nullptr, L"Algemeen",
                    L"A", true, "[Algemeen]\n  A=G (; global G)\n  B=p (project; global none)\n",
                    "A=G\n", "B=p\n"},
        RemovalRow {"OverTheSameGlobalValueGivesThatBack", "[X]\nA=G\n", "[X]\nA=G", nullptr, L"X",
                    L"A", true, "[Algemeen]\n[X]\n  A=G (; global G)\n", "[X]\nA=G\n", "[X]\n"},
        RemovalRow {"AloneLeavesTheModel", "[X]\nB=1\n", "[X]\nA=P\n", nullptr, L"X", L"A", true,
                    "[Algemeen]\n[X]\n  B=1\n", "[X]\nB=1\n", "[X]\n"},
        RemovalRow {"ThatStandsTwiceGivesTheFirstValueBack", "", "A=P\nA=Q\n", nullptr, L"Algemeen",
                    L"A", true, "[Algemeen]\n  A=P (; global P)\n", "", "A=Q\n"},
        RemovalRow {"BehindABlankIsNoLine", "A=G\n[X]\n", "[X]\n\tA=P\n", nullptr, L"X", L"\tA",
                    true, "[Algemeen]\n  A=G\n[X]\n", "A=G\n[X]\n", "[X]\n"}),
    [](const auto& row) { return row.param.sentence; });

// The level of the drawing is not looked at: what is not in the file stays.
INSTANTIATE_TEST_SUITE_P(
    Local, RemovingFromFiles,
    ::testing::Values(
        RemovalRow {"OverAGlobalValueTakesThatOutOfTheFile", "A=G\n", nullptr, L"D", L"Algemeen",
                    L"A", true, "[Algemeen]\n  A=G (drawing; global G; project none)\n", "",
                    nullptr},
        RemovalRow {"OverAProjectAndAGlobalValueTakesTheGlobalOne", "A=G\n", "A=P\n", L"D",
                    L"Algemeen", L"A", true, "[Algemeen]\n  A=G (drawing; global G; project P)\n",
                    "", "A=P\n"},
        RemovalRow {"OverAProjectValueAloneStays", "B=1\n", "A=P\n", L"D", L"Algemeen", L"A", false,
                    "[Algemeen]\n  B=1\n  A=D (drawing; global none; project P)\n", "B=1\n",
                    "A=P\n"},
        RemovalRow {"AloneStays", "B=1", nullptr, L"D", L"Algemeen", L"A", false,
                    "[Algemeen]\n  B=1\n  A=D (drawing; global none; project none)\n", "B=1\n",
                    nullptr}),
    [](const auto& row) { return row.param.sentence; });

TEST_F(Removal, OfAProjectSettingWithoutItsFileTakesTheGlobalLine)
{
    writeIni("A=G\nB=1\n");
    writeIpr("A=P\n");
    const auto loaded = model();
    folder.remove(L"house/tool.ipr");
    EXPECT_TRUE(removeFromFile(*loaded, L"Algemeen", L"A"));
    EXPECT_EQ(valuesOf(*loaded), "[Algemeen]\n  A=G (; global G)\n  B=1\n");
    EXPECT_EQ(ini(), "B=1\n");
    EXPECT_EQ(filesIn(folder), "cfg/tool.ini");
}

TEST_F(Removal, OfASettingWithoutACategoryLooksInTheHead)
{
    writeIni("A=1\n[X]\nA=2\n");
    InstellingenArray settings(nullptr);
    ASSERT_EQ(settings.addSetting(std::make_unique<Instelling>(L"A", L"1")), 0);
    EXPECT_TRUE(settings.removeFromFile(L"A", where()));
    EXPECT_EQ(settings.size(), 0U);
    EXPECT_EQ(ini(), "[X]\nA=2\n");
}

TEST_F(Removal, LeavesAListInWhichTheOthersAreFound)
{
    writeIni("A=1\nB=2\nC=3\nD=4\n");
    const auto loaded = model();
    const InstellingenArray& settings = (*loaded)[0].settings();
    ASSERT_NE(settings.findSetting(L"D"), nullptr); // what is looked for next is expected here
    EXPECT_TRUE(removeFromFile(*loaded, L"Algemeen", L"B"));
    EXPECT_EQ(settings.findSetting(L"B"), nullptr);
    for (const auto& [name, value] : {std::pair {L"A", L"1"}, {L"C", L"3"}, {L"D", L"4"}}) {
        ASSERT_NE(settings.findSetting(name), nullptr);
        EXPECT_EQ(settings.findSetting(name)->value(), value);
    }
    EXPECT_EQ(valuesOf(*loaded), "[Algemeen]\n  A=1\n  C=3\n  D=4\n");
    EXPECT_TRUE(removeFromFile(*loaded, L"Algemeen", L"D"));
    EXPECT_TRUE(removeFromFile(*loaded, L"Algemeen", L"A"));
    EXPECT_TRUE(removeFromFile(*loaded, L"Algemeen", L"C"));
    EXPECT_EQ(ini(), "");
    EXPECT_EQ((*loaded)[0].settings().size(), 0U);
}

TEST_F(Removal, GathersTheNewContentInTheProjectFolder)
{
    writeIni("A=1\n[X]\n");
    const auto loaded = model();
    const WriteWatch watch(folder);
    EXPECT_TRUE(removeFromFile(*loaded, L"Algemeen", L"A"));
    EXPECT_EQ(watch.files, "cfg/tool.ini house/dummy.tmp");
    EXPECT_TRUE(loaded->removeCategory(L"X", where(), false, false, nullptr));
    EXPECT_EQ(watch.files, "cfg/tool.ini house/dummy.tmp");
    EXPECT_EQ(watch.writes, 2);
    EXPECT_EQ(filesIn(folder), "cfg/tool.ini");
}

TEST_F(Removal, OfAMissingConfigurationFileIsToldAndMakesItEmpty)
{
    writeIni("A=1\n");
    const auto loaded = model();
    folder.remove(L"cfg/tool.ini");
    EXPECT_FALSE(removeFromFile(*loaded, L"Algemeen", L"A"));
    EXPECT_EQ(told(), kNoFile);
    EXPECT_EQ(valuesOf(*loaded), "[Algemeen]\n  A=1\n");
    EXPECT_EQ(filesIn(folder), "cfg/tool.ini");
    EXPECT_EQ(ini(), "");
}

TEST_F(Removal, AFileThatMayNotBeWrittenStaysWhole)
{
    for (const auto& [language, notFound, cannotOpen] :
         {std::tuple {9, "stop: Ini-file not found: ", "Could not open file for write "},
          {19, "stop: Ini-bestand niet gevonden: ", "Kan bestand niet openen om te schrijven "}}) {
        writeIni("A=1\nB=2\n");
        writeIpr("B=P\n");
        const auto loaded = model(language);
        const std::string before = valuesOf(*loaded);
        {
            const RefusedCalls readOnly(SystemCall::openTarget, EACCES);
            EXPECT_FALSE(removeFromFile(*loaded, L"Algemeen", L"A"));
            EXPECT_EQ(told(), notFound + std::string("~/cfg/tool.ini\n"));
            EXPECT_FALSE(removeFromFile(*loaded, L"Algemeen", L"B"));
            EXPECT_EQ(told(), notFound + std::string("~/house/tool.ipr\n"));
        }
        {
            const RefusedCalls readOnly(SystemCall::create, EACCES);
            EXPECT_FALSE(removeFromFile(*loaded, L"Algemeen", L"A"));
            EXPECT_EQ(told(), std::string("stop: ~/cfg/tool.ini : ") + cannotOpen + "\n");
        }
        EXPECT_EQ(valuesOf(*loaded), before);
        EXPECT_EQ(ini(), "A=1\nB=2\n");
        EXPECT_EQ(ipr(), "B=P\n");
        EXPECT_EQ(filesIn(folder), "cfg/tool.ini house/tool.ipr");
    }
}

TEST_F(Removal, OnAFullDiskIsToldAndChangesNothing)
{
    writeIni("A=1\n");
    const auto loaded = model();
    const RefusedCalls full(SystemCall::flush, ENOSPC);
    EXPECT_FALSE(removeFromFile(*loaded, L"Algemeen", L"A"));
    EXPECT_EQ(told(), "stop: ~/cfg/tool.ini : the disk is full\n");
    EXPECT_EQ(valuesOf(*loaded), "[Algemeen]\n  A=1\n");
    EXPECT_EQ(ini(), "A=1\n");
}

TEST_F(Removal, FromAFileThatAnotherProgramKeepsIsToldAndChangesNothing)
{
    writeIni("A=1\n");
    const auto loaded = model();
    const RefusedCalls kept(SystemCall::openTarget, EWOULDBLOCK);
    EXPECT_FALSE(removeFromFile(*loaded, L"Algemeen", L"A"));
    EXPECT_EQ(told(),
              std::string(kNoFile)
                  + "stop: ~/cfg/tool.ini : another program keeps it from being changed\n");
    EXPECT_EQ(valuesOf(*loaded), "[Algemeen]\n  A=1\n");
    EXPECT_EQ(ini(), "A=1\n");
}

TEST_F(Removal, OfWhichTheFileIsNotReplacedChangesNothing)
{
    writeIni("A=1\n");
    const auto loaded = model();
    const RefusedCalls busy(SystemCall::rename, EBUSY);
    EXPECT_FALSE(removeFromFile(*loaded, L"Algemeen", L"A"));
    EXPECT_EQ(told(), "");
    EXPECT_EQ(services.allPrinted(), L"");
    EXPECT_EQ(valuesOf(*loaded), "[Algemeen]\n  A=1\n");
    EXPECT_EQ(ini(), "A=1\n");
    EXPECT_EQ(filesIn(folder), "cfg/tool.ini");
}

TEST_F(Removal, FromAFileWhoseMarkLiesIsToldAndChangesNothing)
{
    writeIni("A=1\n");
    const auto loaded = model();
    const std::string broken = "\xEF\xBB\xBF"
                               "A=1\nB=\xE9\n";
    writeIni(broken);
    EXPECT_FALSE(removeFromFile(*loaded, L"Algemeen", L"A"));
    EXPECT_EQ(told(), "stop: ~/cfg/tool.ini : line 2 is no UTF-8, as its byte-order mark says\n");
    EXPECT_EQ(valuesOf(*loaded), "[Algemeen]\n  A=1\n");
    EXPECT_EQ(ini(), broken);
}

// --- out of drawings -----------------------------------------------------------------------------

struct DrawingRow
{
    const char* sentence;
    std::string ini;
    const char* ipr; // null for none
    const wchar_t* local; // value in the drawing; null for none
    bool result;
    std::string settings; // of chapter X
};

void PrintTo(const DrawingRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class RemovingFromDrawings : public Removal, public ::testing::WithParamInterface<DrawingRow>
{
};

TEST_P(RemovingFromDrawings, LeavesThis)
{
    const DrawingRow& row = GetParam();
    writeIni("[X]\n" + row.ini);
    if (row.ipr != nullptr) {
        writeIpr(std::string("[X]\n") + row.ipr);
    }
    newDrawing();
    store(L"", L"A", L"of the head");
    store(L"X", L"Other", L"stays");
    if (row.local != nullptr) {
        store(L"X", L"A", row.local);
    }
    const auto loaded = model();
    EXPECT_EQ(removeFromDrawing(*loaded, L"X", L"A"), row.result);
    EXPECT_EQ(valuesOf(*loaded),
              "[Algemeen]\n  A=of the head (drawing; global none; project none)\n[X]\n"
                  + row.settings + "  Other=stays (drawing; global none; project none)\n");
    EXPECT_EQ(told(), row.result ? "" : kNotLocal);
    EXPECT_EQ(drawing(), "A=of the head\nX/\nX/Other=stays\n");
    EXPECT_EQ(ini(), "[X]\n" + row.ini);
    EXPECT_EQ(ipr(), row.ipr == nullptr ? "" : std::string("[X]\n") + row.ipr);
    EXPECT_EQ(corma::host::openObjectCount(), 0);
}

INSTANTIATE_TEST_SUITE_P(
    ASetting, RemovingFromDrawings,
    ::testing::Values(DrawingRow {"OfTheDrawingAloneGoes", "", nullptr, L"D", true, ""},
                      DrawingRow {"OverAGlobalValueGivesThatBack", "A=G\n", nullptr, L"D", true,
                                  "  A=G (; global G)\n"},
                      DrawingRow {"OverAProjectValueGivesThatBack", "", "A=P\n", L"D", true,
                                  "  A=P (project; global none; project P)\n"},
                      DrawingRow {"OverBothGivesTheProjectValueBack", "A=G\n", "A=P\n", L"D", true,
                                  "  A=P (project; global G; project P)\n"},
                      DrawingRow {"OverAnEmptyValueGivesThatBack", "A=\n", nullptr, L"D", true,
                                  "  A= (; global )\n"},
                      DrawingRow {"OfTheFileAloneIsToldToBeNone", "A=G\n", nullptr, nullptr, false,
                                  "  A=G\n"},
                      DrawingRow {"OfTheProjectIsToldToBeNone", "A=G\n", "A=P\n", nullptr, false,
                                  "  A=P (project; global G)\n"},
                      DrawingRow {"ThatIsUnknownIsAsGoodAsGone", "", nullptr, nullptr, true, ""}),
    [](const auto& row) { return row.param.sentence; });

TEST_F(Removal, OfASettingThatIsNotOfTheDrawingTakesItsRecordAllTheSame)
{
    writeIni("[X]\nA=G\n");
    newDrawing();
    const auto loaded = model();
    store(L"X", L"A", L"D"); // the model does not know of it
    EXPECT_FALSE(removeFromDrawing(*loaded, L"X", L"A"));
    EXPECT_EQ(told(), kNotLocal);
    EXPECT_EQ(valuesOf(*loaded), "[Algemeen]\n[X]\n  A=G\n");
    EXPECT_EQ(drawing(), "X/\n");
}

TEST_F(Removal, FromTheDrawingIsRefusedInTheLanguageOfTheTexts)
{
    writeIni("A=G\n");
    newDrawing();
    const auto loaded = model(19);
    EXPECT_FALSE(removeFromDrawing(*loaded, L"Algemeen", L"A"));
    EXPECT_EQ(told(), "information: Kan instelling niet verwijderen in Lokale modus\n");
}

TEST_F(Removal, OfTheHeadTakesTheRecordOfTheFilesDictionary)
{
    writeIni("");
    newDrawing();
    store(L"", L"A", L"1");
    store(L"X", L"A", L"2");
    const auto loaded = model();
    EXPECT_TRUE(removeFromDrawing(*loaded, L"Algemeen", L"A"));
    EXPECT_EQ(drawing(), "X/\nX/A=2\n");
    EXPECT_EQ(valuesOf(*loaded), "[Algemeen]\n[X]\n  A=2 (drawing; global none; project none)\n");
}

TEST_F(Removal, OfAChapterWithACodedKeyTakesItsRecord)
{
    writeIni("");
    newDrawing();
    store(L"A=B", L"C", L"1");
    store(L"A=B", L"D", L"2");
    const auto loaded = model();
    EXPECT_TRUE(removeFromDrawing(*loaded, L"A=B", L"C"));
    EXPECT_EQ(drawing(), "XX_HEX_0x41003d004200/\nXX_HEX_0x41003d004200/D=2\n");
}

TEST_F(Removal, FromAListWithoutAnOwnerLeavesTheDrawing)
{
    newDrawing();
    store(L"", L"A", L"1");
    InstellingenArray settings(nullptr);
    auto setting = std::make_unique<Instelling>(L"A", NOT_FOUND_MARKER);
    setting->setLocalValue(L"1");
    ASSERT_EQ(settings.addSetting(std::move(setting)), 0);
    EXPECT_TRUE(settings.removeFromDrawing(L"A", nullptr, where()));
    EXPECT_EQ(settings.size(), 0U);
    EXPECT_EQ(drawing(), "A=1\n");
}

TEST_F(Removal, WithoutADrawingChangesTheModelAlone)
{
    writeIni("A=G\n");
    const auto loaded = model();
    (*loaded)[0].settings()[0].setLocalValue(L"D");
    EXPECT_TRUE(removeFromDrawing(*loaded, L"Algemeen", L"A"));
    EXPECT_EQ(valuesOf(*loaded), "[Algemeen]\n  A=G (; global G)\n");
    EXPECT_EQ(told(), "");
}

TEST_F(Removal, OfARecordIsSaved)
{
    writeIni("");
    newDrawing();
    store(L"X", L"A", L"vanishing value");
    store(L"X", L"B", L"staying value");
    ASSERT_TRUE(corma::saveDocument());
    const auto loaded = model();
    EXPECT_TRUE(removeFromDrawing(*loaded, L"X", L"A"));
    EXPECT_TRUE(corma::isDocumentModified());
    ASSERT_TRUE(corma::saveDocument());
    const std::string saved = folder.read(L"house/house.dxf");
    EXPECT_EQ(saved.find("vanishing value"), std::string::npos);
    EXPECT_NE(saved.find("staying value"), std::string::npos);
    ASSERT_TRUE(corma::openDocument(folder.path(L"house/house.dxf").c_str()));
    EXPECT_EQ(drawing(), "X/\nX/B=staying value\n");
}

// --- categories ----------------------------------------------------------------------------------

enum class From
{
    files,
    drawing
};

struct CategoryRow
{
    const char* sentence;
    std::string ini;
    const char* ipr; // null for none
    From from;
    const wchar_t* name;
    bool result;
    std::string model;
    std::string iniAfter;
    const char* iprAfter; // null for none
    std::string drawingAfter;
    std::string told;
};

void PrintTo(const CategoryRow& row, std::ostream* out)
{
    *out << row.sentence;
}

// The drawing has a setting of its own of the chapter X, which only counts where the drawing is
// loaded.
class RemovingCategories : public Removal, public ::testing::WithParamInterface<CategoryRow>
{
};

TEST_P(RemovingCategories, LeavesThis)
{
    const CategoryRow& row = GetParam();
    writeIni(row.ini);
    if (row.ipr != nullptr) {
        writeIpr(row.ipr);
    }
    auto loaded = model();
    newDrawing();
    store(L"X", L"Drawn", L"D");
    store(L"Y", L"Drawn", L"D");
    if (row.from == From::drawing) {
        loaded = model();
    }
    const bool isLocal = row.from == From::drawing;
    EXPECT_EQ(loaded->removeCategory(row.name, where(), row.ipr != nullptr, isLocal, database()),
              row.result);
    EXPECT_EQ(valuesOf(*loaded), row.model);
    EXPECT_EQ(ini(), row.iniAfter);
    EXPECT_EQ(ipr(), row.iprAfter == nullptr ? "" : row.iprAfter);
    EXPECT_EQ(drawing(), row.drawingAfter);
    EXPECT_EQ(told(), row.told);
    EXPECT_EQ(filesIn(folder),
              row.iprAfter == nullptr ? "cfg/tool.ini" : "cfg/tool.ini house/tool.ipr");
}

constexpr const char* kBothDrawn = "X/\nX/Drawn=D\nY/\nY/Drawn=D\n";
constexpr const char* kYDrawn = "Y/\nY/Drawn=D\n";

INSTANTIATE_TEST_SUITE_P(
    OutOfFiles, RemovingCategories,
    ::testing::Values(
        CategoryRow {"ItsSettingsAndItsHeaderGo", "A=1\n[X]\n;c\nB=2\nC=3\nlos\n[Y]\nD=4\n",
                     nullptr, From::files, L"X", true, "[Algemeen]\n  A=1\n[Y]\n  D=4\n",
                     "A=1\n;c\nlos\n[Y]\nD=4\n", nullptr, kYDrawn,
                     std::string("exclamation: Line was skipped! Expected: \"=\" (ini:5) (los)\n")
                         + kRemoved},
        CategoryRow {"OneWithoutSettingsLosesItsHeader", "A=1\n[X]\n[Y]\n", nullptr, From::files,
                     L"X", true, "[Algemeen]\n  A=1\n[Y]\n", "A=1\n[Y]\n", nullptr, kYDrawn,
                     kRemoved},
        CategoryRow {"TheHeaderOfALongerNameGoesWhenItComesFirst", "[XY]\nA=1\n[X]\nB=2\n", nullptr,
                     From::files, L"X", true, "[Algemeen]\n[XY]\n  A=1\n", "A=1\n[X]\n", nullptr,
                     kYDrawn, kRemoved},
        CategoryRow {"OfTheProjectAloneTheHeaderStaysInItsFile", "A=1\n", "[X]\nB=P\nC=P\n",
                     From::files, L"X", true, "[Algemeen]\n  A=1\n", "A=1\n", "[X]\n", kYDrawn,
                     kRemoved},
        CategoryRow {"ItsProjectSettingsFallBackAndTheirGlobalLinesStay", "[X]\nA=G\n",
                     "[X]\nA=P\n", From::files, L"X", true, "[Algemeen]\n", "A=G\n", "[X]\n",
                     kYDrawn, kRemoved},
        CategoryRow {"TheGlobalLineOfTheFirstGoesInTheTurnOfTheSecond", "[X]\nA=G\nB=H\n",
                     "[X]\nA=P\n", From::files, L"X", true, "[Algemeen]\n", "B=H\n", "[X]\n",
                     kYDrawn, kRemoved},
        CategoryRow {"TheFirstIsNotThereInTheTurnOfTheThird", "[X]\nA=G\nB=H\nC=I\n", "[X]\nA=P\n",
                     From::files, L"X", false,
                     "[Algemeen]\n[X]\n  A=G (; global G)\n  B=H\n  C=I\n", "[X]\nB=H\nC=I\n",
                     "[X]\n", kBothDrawn, kNotAllRemoved},
        CategoryRow {"WhatWasRemovedBeforeAFailureStaysRemoved", "[X]\nB=1\nA=G\nC=1\nD=1\n",
                     "[X]\nA=P\n", From::files, L"X", false,
                     "[Algemeen]\n[X]\n  A=G (; global G)\n  C=1\n  D=1\n", "[X]\nC=1\nD=1\n",
                     "[X]\n", kBothDrawn, kNotAllRemoved},
        CategoryRow {"AProjectSettingBehindAnotherIsNotReached", "[X]\nA=1\nC=2\n",
                     "[X]\nC=P\nB=Q\n", From::files, L"X", true, "[Algemeen]\n", "", "[X]\nB=Q\n",
                     kYDrawn, kRemoved},
        CategoryRow {"OfTwoOfANameTheLaterIsEmptiedAndBothGo", "[X]\nA=1\n[X]\nB=2\n", nullptr,
                     From::files, L"X", true, "[Algemeen]\n", "A=1\n[X]\n", nullptr, kYDrawn,
                     kRemoved},
        CategoryRow {"TheHeadLosesItsSettings", "A=1\n;c\n[X]\nB=2\n", nullptr, From::files,
                     L"Algemeen", true, "[X]\n  B=2\n", ";c\n[X]\nB=2\n", nullptr, kBothDrawn,
                     kRemoved}),
    [](const auto& row) { return row.param.sentence; });

INSTANTIATE_TEST_SUITE_P(
    OutOfTheDrawing, RemovingCategories,
    ::testing::Values(
        CategoryRow {"ItsRecordsItsDictionaryAndItsHeaderGo", "[X]\n[Y]\nA=1\n", nullptr,
                     From::drawing, L"X", true,
                     "[Algemeen]\n[Y]\n  A=1\n  Drawn=D (drawing; global none; project none)\n",
                     "[Y]\nA=1\n", nullptr, kYDrawn, kRemoved},
        CategoryRow {"OneThatIsInNoFileGoesAsWell", "A=1\n", nullptr, From::drawing, L"X", true,
                     "[Algemeen]\n  A=1\n[Y]\n  Drawn=D (drawing; global none; project none)\n",
                     "A=1\n", nullptr, kYDrawn, kRemoved},
        CategoryRow {"ASettingOfTheFileKeepsIt", "[X]\nA=1\n[Y]\n", nullptr, From::drawing, L"X",
                     false,
                     "[Algemeen]\n[X]\n  A=1\n  Drawn=D (drawing; global none; project none)\n"
                     "[Y]\n  Drawn=D (drawing; global none; project none)\n",
                     "[X]\nA=1\n[Y]\n", nullptr, kBothDrawn,
                     std::string(kNotLocal) + kNotLocal + kNotAllRemoved},
        CategoryRow {"ASettingThatFellBackToTheProjectGoesFromTheModelAlone", "[X]\nDrawn=G\n",
                     "[X]\nDrawn=P\n", From::drawing, L"X", true,
                     "[Algemeen]\n[Y]\n  Drawn=D (drawing; global none; project none)\n",
                     "Drawn=G\n", "[X]\nDrawn=P\n", kYDrawn, kRemoved}),
    [](const auto& row) { return row.param.sentence; });

TEST_F(Removal, AProjectSettingThatFellBackIsTakenOutOfTheGlobalFileNext)
{
    writeIni("[X]\nA=G\nB=H\n[Y]\n");
    writeIpr("[X]\nA=P\n");
    const auto loaded = model();
    EXPECT_TRUE(loaded->removeCategory(L"X", where(), true, false, nullptr));
    EXPECT_EQ(ini(), "B=H\n[Y]\n") << "two settings, two turns, both of the first";
    EXPECT_EQ(ipr(), "[X]\n");
    EXPECT_EQ(told(), kRemoved);
}

TEST_F(Removal, OfAnUnknownCategoryIsRefusedAndTouchesNoOther)
{
    writeIni("A=1\n[X]\nB=2");
    newDrawing();
    store(L"Z", L"A", L"1");
    const auto loaded = model();
    const std::string before = valuesOf(*loaded);
    for (const wchar_t* const name : {L"none", L"x", L"", L"X "}) {
        for (const bool local : {false, true}) {
            EXPECT_FALSE(loaded->removeCategory(name, where(), false, local, database()));
        }
    }
    EXPECT_EQ(valuesOf(*loaded), before);
    EXPECT_EQ(ini(), "A=1\n[X]\nB=2");
    EXPECT_EQ(drawing(), "Z/\nZ/A=1\n");
    EXPECT_EQ(told(), "");
}

TEST_F(Removal, OfACategoryHeedsNoProject)
{
    for (const bool project : {false, true}) {
        writeIni("[X]\nA=1\n");
        writeIpr("[X]\nB=2\n");
        const auto loaded = model();
        EXPECT_TRUE(loaded->removeCategory(L"X", where(), project, false, nullptr));
        EXPECT_EQ(valuesOf(*loaded), "[Algemeen]\n");
        EXPECT_EQ(ini(), "");
        EXPECT_EQ(ipr(), "[X]\n");
        EXPECT_EQ(told(), kRemoved);
    }
}

TEST_F(Removal, OfACategoryLeavesTheOthersToBeFound)
{
    writeIni("[X]\n[Y]\nA=1\n[Z]\nB=2\n");
    const auto loaded = model();
    EXPECT_TRUE(loaded->removeCategory(L"Y", where(), false, false, nullptr));
    EXPECT_FALSE(loaded->hasCategory(L"Y"));
    EXPECT_EQ(loaded->findCategory(L"Z"), &(*loaded)[2]);
    EXPECT_EQ(loaded->findCategory(L"X"), &(*loaded)[1]);
    EXPECT_EQ(valuesOf(*loaded), "[Algemeen]\n[X]\n[Z]\n  B=2\n");
}

TEST_F(Removal, OfACategoryWhoseHeaderCannotBeWrittenKeepsIt)
{
    writeIni("[X]\n");
    newDrawing();
    store(L"X", L"A", L"1");
    const auto loaded = model();
    {
        const RefusedCalls readOnly(SystemCall::openTarget, EACCES);
        EXPECT_FALSE(loaded->removeCategory(L"X", where(), false, true, database()));
    }
    EXPECT_EQ(told(), kNoFile);
    EXPECT_EQ(valuesOf(*loaded), "[Algemeen]\n[X]\n") << "its setting was removed before";
    EXPECT_EQ(ini(), "[X]\n");
    EXPECT_EQ(drawing(), "X/\n");
    EXPECT_TRUE(loaded->removeCategory(L"X", where(), false, true, database()));
    EXPECT_EQ(told(), kRemoved);
    EXPECT_EQ(drawing(), "");
}

/// Lets the first write of a file fail.
class FailingOnce : public RefusedCalls
{
public:
    FailingOnce()
        : RefusedCalls(SystemCall::flush, ENOSPC)
    {
    }

    int before(SystemCall call) override
    {
        const int error = m_hasFailed ? 0 : RefusedCalls::before(call);
        m_hasFailed = m_hasFailed || error != 0;
        return error;
    }

private:
    bool m_hasFailed = false;
};

TEST_F(Removal, OfACategoryGoesOnBehindAFailureAndKeepsTheCategory)
{
    writeIni("[X]\nA=1\nB=2\nC=3\n");
    const auto loaded = model();
    const FailingOnce once;
    EXPECT_FALSE(loaded->removeCategory(L"X", where(), false, false, nullptr));
    EXPECT_EQ(told(), std::string("stop: ~/cfg/tool.ini : the disk is full\n") + kNotAllRemoved);
    EXPECT_EQ(valuesOf(*loaded), "[Algemeen]\n[X]\n  C=3\n") << "three turns, one in vain";
    EXPECT_EQ(ini(), "[X]\nC=3\n");
}

TEST_F(Removal, OfACategoryWithoutAFileIsToldAndMakesOne)
{
    writeIni("[X]\n");
    const auto loaded = model();
    folder.remove(L"cfg/tool.ini");
    EXPECT_TRUE(loaded->removeCategory(L"X", where(), false, false, nullptr));
    EXPECT_EQ(told(), std::string(kNoFile) + kRemoved);
    EXPECT_EQ(ini(), "");
    EXPECT_EQ(valuesOf(*loaded), "[Algemeen]\n");
}

TEST_F(Removal, OfACategoryTellsItsResultInDutchInEveryLanguage)
{
    for (const int language : {7, 9, 19, 21}) {
        writeIni("[X]\n");
        EXPECT_TRUE(model(language)->removeCategory(L"X", where(), false, false, nullptr));
        EXPECT_EQ(told(), kRemoved);
    }
}

TEST_F(Removal, OfACategoryWithACodedKeyLeavesItsDictionary)
{
    writeIni("[A=B]\n");
    newDrawing();
    store(L"A=B", L"C", L"1");
    const auto loaded = model();
    EXPECT_TRUE(loaded->removeCategory(L"A=B", where(), false, true, database()));
    EXPECT_EQ(drawing(), "XX_HEX_0x41003d004200/\n") << "the key is taken as it stands";
}

TEST_F(Removal, OfACategoryThatHasTheNameOfAnIdentTakesThat)
{
    writeIni("[X]\n");
    newDrawing();
    store(L"", L"X", L"of the head");
    const auto loaded = model();
    EXPECT_TRUE(loaded->removeCategory(L"X", where(), false, false, database()));
    EXPECT_EQ(drawing(), "") << "both have their place in the dictionary of the file";
}

TEST_F(Removal, OfACategoryTakesItsDictionaryOutOfTheSavedDrawing)
{
    writeIni("[X]\n[Y]\n");
    newDrawing();
    store(L"X", L"A", L"vanishing value");
    store(L"X", L"B", L"vanishing value too");
    store(L"Y", L"C", L"staying value");
    ASSERT_TRUE(corma::saveDocument());
    RubriekenArray files(where()); // knows nothing of the records
    EXPECT_TRUE(files.removeCategory(L"X", where(), false, false, database()));
    EXPECT_TRUE(corma::isDocumentModified());
    ASSERT_TRUE(corma::saveDocument());
    const std::string saved = folder.read(L"house/house.dxf");
    EXPECT_EQ(saved.find("vanishing"), std::string::npos);
    EXPECT_NE(saved.find("staying value"), std::string::npos);
    ASSERT_TRUE(corma::openDocument(folder.path(L"house/house.dxf").c_str()));
    EXPECT_EQ(drawing(), "Y/\nY/C=staying value\n");
}

} // namespace
