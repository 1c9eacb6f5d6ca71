#include "inifile/InifileTest.h"
#include "inifile/drawing_settings.h"
#include "inifile/drawing_tree.h"
#include "platform/platform.h"
#include <corma/xx_Var.h>

#include <memory>

using corma::host::Opened;
using corma::testing::Ini;
using corma::testing::InifileTest;

namespace {

std::wstring dataFile(const wchar_t* name)
{
    return corma::platform::fromNative(CORMA_SOURCE_FOLDER "/tests/data/") + name;
}

class DrawingSettings : public InifileTest
{
protected:
    void newDrawing() { ASSERT_TRUE(corma::newDocument(folder.path(L"house.dxf").c_str())); }

    static Acad::ErrorStatus store(const wchar_t* file, const wchar_t* chapter,
                                   const wchar_t* ident, const wchar_t* value)
    {
        const auto status = corma::writeToDrawing(file, chapter, ident, value, nullptr);
        EXPECT_EQ(corma::host::openObjectCount(), 0);
        return status;
    }

    static std::wstring settings() { return corma::testing::settingsOfDrawing(); }
};

// --- keys ----------------------------------------------------------------------------------------

struct Key
{
    const char* sentence;
    std::wstring name;
    std::wstring key;
};

class Keys : public ::testing::TestWithParam<Key>
{
};

TEST_P(Keys, AreCodedAndDecoded)
{
    EXPECT_EQ(xx_encodeKey(GetParam().name), GetParam().key);
    EXPECT_EQ(xx_decodeKey(GetParam().key), GetParam().name);
    EXPECT_EQ(xx_isLegalKey(GetParam().name), GetParam().name == GetParam().key);
}

INSTANTIATE_TEST_SUITE_P(
    DrawingSettings, Keys,
    ::testing::Values(Key {"APlainNameStaysAsItIs", L"Tekst", L"Tekst"},
                      Key {"AnEmptyNameIsLegal", L"", L""},
                      Key {"BlanksAndDotsAreLegal", L"Laag 1.2 [x] (y)", L"Laag 1.2 [x] (y)"},
                      Key {"LettersOfAllAlphabetsAreLegal", L"Чертёж", L"Чертёж"},
                      Key {"AnEqualsSignIsCoded", L"A=B", L"XX_HEX_0x41003d004200"},
                      Key {"TheHighestByteSurvives", L"\u00FF,", L"XX_HEX_0xff002c00"}),
    [](const auto& row) { return std::string(row.param.sentence); });

TEST(DrawingKeys, EveryOneOfTheFifteenCharactersIsCoded)
{
    for (const wchar_t c : {60, 62, 47, 92, 34, 180, 96, 58, 59, 63, 42, 124, 44, 61, 39}) {
        const std::wstring name = {L'A', c};
        EXPECT_FALSE(xx_isLegalKey(name)) << static_cast<int>(c);
        EXPECT_EQ(xx_decodeKey(xx_encodeKey(name)), name) << static_cast<int>(c);
    }
    for (wchar_t c = 1; c < 256; ++c) {
        const bool isOne
            = std::wstring_view(L"<>/\\\"\u00B4`:;?*|,='").find(c) != std::wstring_view::npos;
        EXPECT_EQ(xx_isLegalKey(std::wstring(1, c)), !isOne) << static_cast<int>(c);
    }
}

TEST(DrawingKeys, OfACharacterAbove255OnlyTheLowByteComesBack)
{
    EXPECT_EQ(xx_encodeKey(L"\u0416="), L"XX_HEX_0x16043d00");
    EXPECT_EQ(xx_decodeKey(L"XX_HEX_0x16043d00"), L"\u0016=");
    EXPECT_EQ(xx_encodeKey(L"\U0001F600="), L"XX_HEX_0x3dd800de3d00"); // two code units
}

TEST(DrawingKeys, ACodeThatIsCutIsReadAsFarAsItGoes)
{
    EXPECT_EQ(xx_decodeKey(L"XX_HEX_0x"), L"");
    EXPECT_EQ(xx_decodeKey(L"XX_HEX_0x4"), L"");
    EXPECT_EQ(xx_decodeKey(L"XX_HEX_0x41"), L"A");
    EXPECT_EQ(xx_decodeKey(L"XX_HEX_0x41004"), L"A");
    EXPECT_EQ(xx_decodeKey(L"XX_HEX_0x4A00"), L"J");
}

// --- the tree ------------------------------------------------------------------------------------

TEST_F(DrawingSettings, StandBelowTheRootTheFileAndTheChapter)
{
    newDrawing();
    EXPECT_EQ(store(L"/some/where/tool.ini", L"Tekst", L"Hoogte", L"2.5"), Acad::eOk);
    EXPECT_EQ(store(L"tool.ini", L"Algemeen", L"Kleur", L"rood"), Acad::eOk);
    EXPECT_EQ(store(L"tool.ini", L"", L"Schaal", L"50"), Acad::eOk);
    EXPECT_EQ(store(L"tool.ini", L"A=B", L"x=y", L"1"), Acad::eOk);
    EXPECT_EQ(settings(),
              L"TOOL.INI\n"
              L"  Kleur=rood\n"
              L"  Schaal=50\n"
              L"  Tekst\n"
              L"    Hoogte=2.5\n"
              L"  XX_HEX_0x41003d004200\n"
              L"    x=y=1\n");
}

TEST_F(DrawingSettings, ChapterAlgemeenIsTheFileItselfInThatSpellingOnly)
{
    newDrawing();
    store(L"tool.ini", L"ALGEMEEN", L"Kleur", L"rood");
    EXPECT_EQ(settings(), L"TOOL.INI\n  ALGEMEEN\n    Kleur=rood\n");
}

TEST_F(DrawingSettings, WrittenTwiceAreOneRecord)
{
    newDrawing();
    store(L"tool.ini", L"Tekst", L"Hoogte", L"former value");
    store(L"tool.ini", L"Tekst", L"Hoogte", L"3.5");
    EXPECT_EQ(settings(), L"TOOL.INI\n  Tekst\n    Hoogte=3.5\n");
    ASSERT_TRUE(corma::saveDocument());
    const std::string saved = folder.read(L"house.dxf");
    EXPECT_EQ(saved.find("former value"), std::string::npos);
    ASSERT_TRUE(corma::openDocument(folder.path(L"house.dxf").c_str()));
    EXPECT_EQ(settings(), L"TOOL.INI\n  Tekst\n    Hoogte=3.5\n");
}

TEST_F(DrawingSettings, ALookupMakesNothing)
{
    newDrawing();
    EXPECT_EQ(corma::readFromDrawing(L"tool.ini", L"Tekst", L"Hoogte", nullptr), std::nullopt);
    EXPECT_EQ(settings(), L"(none)");
    EXPECT_FALSE(corma::isDocumentModified());
    store(L"other.ini", L"", L"x", L"1");
    EXPECT_EQ(corma::readFromDrawing(L"tool.ini", L"Tekst", L"Hoogte", nullptr), std::nullopt);
    EXPECT_EQ(corma::readFromDrawing(L"other.ini", L"Tekst", L"Hoogte", nullptr), std::nullopt);
    EXPECT_EQ(settings(), L"OTHER.INI\n  x=1\n");
}

TEST_F(DrawingSettings, WithoutADrawingThereIsNoDictionary)
{
    AcDbDictionary* dictionary = nullptr;
    EXPECT_EQ(xx_dictionaryFor(L"tool.ini", L"Tekst", dictionary, true, nullptr), 22);
    EXPECT_EQ(dictionary, nullptr);
}

TEST_F(DrawingSettings, TheDictionaryIsHandedOutOpenForRead)
{
    newDrawing();
    for (const bool isThere : {false, true}) {
        Opened<AcDbDictionary> dictionary;
        ASSERT_EQ(xx_dictionaryFor(L"tool.ini", L"Tekst", dictionary.out(), true, nullptr), 0)
            << isThere;
        EXPECT_TRUE(dictionary->isReadEnabled());
        EXPECT_FALSE(dictionary->isWriteEnabled());
        EXPECT_EQ(corma::host::openObjectCount(), 1);
    }
    AcDbDictionary* none = nullptr;
    EXPECT_EQ(xx_dictionaryFor(L"tool.ini", L"Other", none, false, nullptr), 22);
    EXPECT_EQ(none, nullptr);
}

TEST_F(DrawingSettings, ANamedDatabaseGoesBeforeTheWorkingOne)
{
    newDrawing();
    AcDbDatabase other;
    EXPECT_EQ(corma::writeToDrawing(L"tool.ini", L"", L"x", L"1", &other), Acad::eOk);
    EXPECT_EQ(settings(), L"(none)");
    EXPECT_EQ(corma::readFromDrawing(L"tool.ini", L"", L"x", &other), L"1");
}

TEST_F(DrawingSettings, ARecordInTheWayOfADictionaryIsLeftAlone)
{
    newDrawing();
    store(L"tool.ini", L"", L"Tekst", L"value");
    EXPECT_EQ(store(L"tool.ini", L"Tekst", L"Hoogte", L"1"), Acad::eKeyNotFound);
    EXPECT_EQ(corma::readFromDrawing(L"tool.ini", L"Tekst", L"Hoogte", nullptr), std::nullopt);
    EXPECT_EQ(settings(), L"TOOL.INI\n  Tekst=value\n");
}

TEST_F(DrawingSettings, ADrawingOfR12HasNoPlaceForThem)
{
    ASSERT_TRUE(corma::openDocument(dataFile(L"r12.dxf").c_str()));
    EXPECT_NE(store(L"tool.ini", L"", L"x", L"1"), Acad::eOk);
    EXPECT_FALSE(corma::isDocumentModified());
    EXPECT_NE(services.allPrinted().find(L"r12.dxf"), std::wstring::npos);
    EXPECT_NE(services.allPrinted().find(L"AC1009"), std::wstring::npos);
}

// --- lookups -------------------------------------------------------------------------------------

class DrawingLookup : public DrawingSettings
{
};

TEST_F(DrawingLookup, TheDrawingGoesBeforeProjectAndFileAndBehindIncludes)
{
    newDrawing();
    folder.write(L"part.ini", "[A]\nIncluded=part\n");
    folder.write(L"tool.ipr", "[A]\nIncluded=project\nDrawn=project\nProject=project\n");
    Ini ini(
        folder.write(L"tool.ini", "#INCLUDE=part.ini\n[A]\nIncluded=own\nDrawn=own\nOwn=own\n"));
    store(L"tool.ini", L"A", L"Drawn", L"drawing");
    store(L"tool.ini", L"A", L"Included", L"drawing");
    EXPECT_EQ(ini.get(L"[A]Included"), L"part");
    EXPECT_EQ(ini.get(L"[A]Drawn"), L"drawing");
    EXPECT_EQ(ini.get(L"[A]Project"), L"project");
    EXPECT_EQ(ini.get(L"[A]Own"), L"own");
    corma::closeDocument();
    EXPECT_EQ(ini.get(L"[A]Drawn"), L"own");
}

TEST_F(DrawingLookup, AValueThatIsInNoFileIsFound)
{
    newDrawing();
    Ini ini(folder.write(L"tool.ini", "x=1\n"));
    store(L"tool.ini", L"", L"Alleen", L"hier");
    store(L"tool.ini", L"Nieuw", L"Leeg", L"");
    EXPECT_EQ(ini.get(L"Alleen"), L"hier");
    EXPECT_EQ(ini.get(L"[Algemeen]Alleen"), L"hier");
    EXPECT_EQ(ini.get(L"[]Alleen"), L"hier");
    EXPECT_EQ(ini.status(L"[Nieuw]Leeg"), RTNORM);
    EXPECT_EQ(ini.value, L"");
}

TEST_F(DrawingLookup, OnlyIniFilesHaveValuesInADrawing)
{
    newDrawing();
    Ini other(folder.write(L"tool.cfg", "x=file\n"));
    store(L"tool.cfg", L"", L"x", L"drawing");
    EXPECT_EQ(other.get(L"x"), L"file");
}

TEST_F(DrawingLookup, AScrambledFileSharesTheDictionaryOfThePlainOne)
{
    newDrawing();
    Ini plain(folder.write(L"tool.ini", "x=file\n"));
    std::wstring target = folder.path(L"tool7.ini");
    ASSERT_EQ(plain.file.scramble(target.data(), 7), RTNORM);
    store(L"tool.ini", L"", L"x", L"drawing");
    Ini scrambled(folder.path(L"tool.ini"), 7);
    EXPECT_EQ(scrambled.get(L"x"), L"drawing");
}

TEST_F(DrawingLookup, LongValuesAreCutToTheBuffer)
{
    newDrawing();
    Ini ini(folder.write(L"tool.ini", ""));
    const std::wstring value(5000, L'v');
    store(L"tool.ini", L"", L"x", value.c_str());
    EXPECT_EQ(ini.get(L"x", 10), value.substr(0, 9));
    EXPECT_EQ(ini.get(L"x", 999), value.substr(0, 998));
    EXPECT_EQ(ini.get(L"x", 6000), value);
}

TEST_F(DrawingLookup, WildcardsGiveTheDrawingsValueInAChapterOnly)
{
    newDrawing();
    Ini ini(folder.write(L"tool.ini", "Kop=file\n[A]\nX=file\nY=file\n"));
    store(L"tool.ini", L"", L"Kop", L"drawing");
    store(L"tool.ini", L"A", L"X", L"drawing");
    const auto queried = [&](std::wstring pattern, int skip) {
        xx_VarArray results;
        ini.file.getWcString(pattern.data(), &results, 0, skip);
        EXPECT_EQ(corma::host::openObjectCount(), 0);
        std::wstring text;
        for (int i = 0; i < results.length(); ++i) {
            text += std::wstring(results[i]->name()) + L"=" + results[i]->currentText() + L"\n";
        }
        return text;
    };
    EXPECT_EQ(queried(L"Kop", 0), L"Kop=file\n");
    EXPECT_EQ(queried(L"[A]?", 0), L"[A]X=drawing\n[A]Y=file\n");
}

TEST_F(DrawingLookup, WildcardsAskTheDrawingForTheNameWithoutItsSkippedPart)
{
    newDrawing();
    Ini ini(folder.write(L"tool.ini", "[A]\nDikteX=file\n"));
    store(L"tool.ini", L"A", L"X", L"drawing");
    std::wstring pattern = L"[A]Dikte*";
    xx_VarArray results;
    ini.file.getWcString(pattern.data(), &results, 0, 5);
    ASSERT_EQ(results.length(), 1);
    EXPECT_STREQ(results[0]->name(), L"[A]X");
    EXPECT_STREQ(results[0]->currentText(), L"drawing");
}

// --- writing -------------------------------------------------------------------------------------

class DrawingWrite : public DrawingSettings
{
protected:
    static void write(Ini& ini, std::wstring ident, std::wstring value)
    {
        ini.file.writeString(ident.data(), value.data());
        EXPECT_EQ(corma::host::openObjectCount(), 0);
    }
};

TEST_F(DrawingWrite, AStoredValueIsReadBackThroughTheLookupOrder)
{
    newDrawing();
    Ini ini(folder.write(L"tool.ini", "[Tekst]\nHoogte=file\n"));
    write(ini, L"[Tekst]Hoogte", L"drawing");
    write(ini, L"Los", L"also");
    EXPECT_EQ(ini.get(L"[Tekst]Hoogte"), L"drawing");
    EXPECT_EQ(settings(), L"TOOL.INI\n  Los=also\n  Tekst\n    Hoogte=drawing\n");
    EXPECT_EQ(folder.read(L"tool.ini"), "[Tekst]\nHoogte=file\n");
    EXPECT_EQ(services.allPrinted(), L"");
}

TEST_F(DrawingWrite, AValueInTheCacheIsTheNewOneAfterwards)
{
    newDrawing();
    Ini ini(folder.write(L"tool.ini", "x=file\n"), 0, &IniBuffer::shared());
    EXPECT_EQ(ini.get(L"x"), L"file");
    write(ini, L"x", L"drawing");
    const auto other = std::make_unique<AcDbDatabase>();
    acdbHostApplicationServices()->setWorkingDatabase(other.get());
    EXPECT_EQ(ini.get(L"x"), L"drawing") << "the cache answers before any drawing";
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    ini.file.flushIniBuffer();
    EXPECT_EQ(ini.get(L"x"), L"drawing");
}

TEST_F(DrawingWrite, AValueTooLongForTheCacheIsNotFoundThereCut)
{
    newDrawing();
    Ini ini(folder.write(L"tool.ini", "x=file\n"), 0, &IniBuffer::shared());
    EXPECT_EQ(ini.get(L"x"), L"file");
    for (const std::size_t length : {255U, 256U, 1000U}) {
        const std::wstring value(length, L'v');
        write(ini, L"x", value);
        EXPECT_EQ(ini.get(L"x"), value) << length;
    }
}

TEST_F(DrawingWrite, AFileWithoutAnExtensionHasItsValuesUnderThatOfConfigurationFiles)
{
    newDrawing();
    Ini ini(folder.write(L"tool", "x=file\n"));
    write(ini, L"x", L"drawing");
    EXPECT_EQ(settings(), L"TOOL.INI\n  x=drawing\n");
    EXPECT_EQ(ini.get(L"x"), L"file"); // its own lookups see no drawing
}

TEST_F(DrawingWrite, AFileThatWasNotFoundHasNoPlaceInADrawing)
{
    newDrawing();
    Ini ini(folder.path(L"missing.ini"));
    services.printed.clear();
    write(ini, L"x", L"drawing");
    EXPECT_EQ(services.allPrinted(), L"\nx not stored in the drawing");
    EXPECT_EQ(settings(), L"(none)");
    EXPECT_FALSE(corma::isDocumentModified());
}

TEST_F(DrawingWrite, WithoutADrawingTheUserIsTold)
{
    Ini ini(folder.write(L"tool.ini", "x=file\n"));
    write(ini, L"x", L"1");
    EXPECT_EQ(services.allPrinted(), L"\nx not stored: no drawing is open");
    EXPECT_EQ(ini.get(L"x"), L"file");
}

struct VersionFile
{
    const char* sentence;
    const wchar_t* file;
};

class EveryVersion : public DrawingSettings, public ::testing::WithParamInterface<VersionFile>
{
};

// The lines of a text that are not those of another one at the same distance from either end.
std::string changedPart(const std::string& before, const std::string& after)
{
    std::size_t begin = 0;
    while (begin < before.size() && begin < after.size() && before[begin] == after[begin]) {
        ++begin;
    }
    std::size_t end = 0;
    while (end < before.size() - begin && end < after.size() - begin
           && before[before.size() - 1 - end] == after[after.size() - 1 - end]) {
        ++end;
    }
    return after.substr(begin, after.size() - begin - end);
}

TEST_P(EveryVersion, KeepsASettingInItsFile)
{
    const std::wstring path = folder.write(
        L"copy.dxf",
        corma::platform::readFile(corma::platform::toNative(dataFile(GetParam().file)))->view());
    const std::string before = folder.read(L"copy.dxf");
    ASSERT_TRUE(corma::openDocument(path.c_str()));
    ASSERT_EQ(store(L"nieuw.ini", L"Één", L"Ident", L"waarde \u20AC"), Acad::eOk);
    ASSERT_TRUE(corma::saveDocument());
    EXPECT_FALSE(corma::isDocumentModified());
    const std::string once = folder.read(L"copy.dxf");

    ASSERT_TRUE(corma::openDocument(path.c_str()));
    EXPECT_EQ(corma::readFromDrawing(L"nieuw.ini", L"Één", L"Ident", nullptr), L"waarde \u20AC");
    ASSERT_TRUE(corma::saveDocument());
    EXPECT_EQ(folder.read(L"copy.dxf"), once);
    ASSERT_EQ(store(L"nieuw.ini", L"Één", L"Ident", L"waarde \u20AC"), Acad::eOk);
    ASSERT_TRUE(corma::saveDocument());
    EXPECT_LT(changedPart(once, folder.read(L"copy.dxf")).size(), once.size());
    EXPECT_EQ(services.allPrinted(), L"");
}

INSTANTIATE_TEST_SUITE_P(
    DrawingSettings, EveryVersion,
    ::testing::Values(VersionFile {"R13", L"r13.dxf"}, VersionFile {"R13Binary", L"r13_binary.dxf"},
                      VersionFile {"R14", L"r14.dxf"}, VersionFile {"R2000", L"r2000.dxf"},
                      VersionFile {"R2000Binary", L"r2000_binary.dxf"},
                      VersionFile {"R2004", L"r2004.dxf"}, VersionFile {"R2007", L"r2007.dxf"},
                      VersionFile {"R2010", L"r2010.dxf"}, VersionFile {"R2013", L"r2013.dxf"},
                      VersionFile {"R2018", L"r2018.dxf"},
                      VersionFile {"R2018Binary", L"r2018_binary.dxf"}),
    [](const auto& row) { return std::string(row.param.sentence); });

} // namespace
