#include "inifile/InifileTest.h"
#include "inifile/drawing_tree.h"
#include "inifile/scrambling.h"
#include "platform/platform.h"
#include <corma/texts.h>

using corma::testing::Ini;
using corma::testing::InifileTest;
using corma::testing::settingsOfDrawing;

namespace {

class Local : public InifileTest
{
protected:
    void SetUp() override { ASSERT_TRUE(corma::newDocument(drawing().c_str())); }

    [[nodiscard]] std::wstring drawing() const { return folder.path(L"house.dxf"); }

    std::wstring tool(std::string_view text) { return folder.write(L"tool.ini", text); }

    static void makeLocal(Ini& ini, std::wstring ident, int report = 0)
    {
        ini.file.makeLocal(ident.data(), report);
        EXPECT_EQ(corma::host::openObjectCount(), 0);
    }

    static void makeChapterLocal(Ini& ini, const wchar_t* chapter, int report = 0)
    {
        ini.file.makeLocalChapter(chapter, report);
        EXPECT_EQ(corma::host::openObjectCount(), 0);
    }

    static void makeLevelsLocal(Ini& ini, int report = 0)
    {
        ini.file.makeLocalLevelsLocal(report);
        EXPECT_EQ(corma::host::openObjectCount(), 0);
    }

    void openDrawingOfR12()
    {
        folder.write(L"r12.dxf",
                     corma::platform::readFile(CORMA_SOURCE_FOLDER "/tests/data/r12.dxf")->view());
        ASSERT_TRUE(corma::openDocument(folder.path(L"r12.dxf").c_str()));
        services.printed.clear();
    }
};

// --- one setting ---------------------------------------------------------------------------------

using LocalSetting = Local;

TEST_F(LocalSetting, TakesTheValueOfTheFile)
{
    Ini ini(tool("a=1\n[B]\nb=2\n"));
    makeLocal(ini, L"a");
    makeLocal(ini, L"[B]b");
    EXPECT_EQ(settingsOfDrawing(), L"TOOL.INI\n  a=1\n  B\n    b=2\n");
    tool("a=3\n[B]\nb=3\n");
    EXPECT_EQ(ini.get(L"a"), L"1");
    EXPECT_EQ(ini.get(L"[B]b"), L"2");
    EXPECT_EQ(services.allPrinted(), L"");
}

TEST_F(LocalSetting, KeepsWhatTheDrawingHas)
{
    Ini ini(tool("a=1\n"));
    makeLocal(ini, L"a");
    ASSERT_TRUE(corma::saveDocument());
    tool("a=2\n");
    makeLocal(ini, L"a");
    EXPECT_EQ(settingsOfDrawing(), L"TOOL.INI\n  a=1\n");
    EXPECT_FALSE(corma::isDocumentModified());
}

TEST_F(LocalSetting, KeepsAnEmptyValueThatTheDrawingHas)
{
    Ini ini(tool("a=1\n"));
    ASSERT_EQ(corma::writeToDrawing(L"tool.ini", L"", L"a", L"", nullptr), Acad::eOk);
    makeLocal(ini, L"a");
    EXPECT_EQ(settingsOfDrawing(), L"TOOL.INI\n  a=\n");
}

TEST_F(LocalSetting, TakesTheValueOfTheProjectFirst)
{
    folder.write(L"tool.ipr", "a=project\n");
    Ini ini(tool("a=file\nb=file\n"));
    makeLocal(ini, L"a");
    makeLocal(ini, L"b");
    EXPECT_EQ(settingsOfDrawing(), L"TOOL.INI\n  a=project\n  b=file\n");
}

TEST_F(LocalSetting, WithoutAValueBecomesAnEmptyOne)
{
    Ini ini(tool("a=1\n"));
    makeLocal(ini, L"b", 0);
    EXPECT_EQ(services.allPrinted(), L"");
    makeLocal(ini, L"[C]c", 1);
    EXPECT_EQ(services.allPrinted(), L"\n[C]c not found in configurationfile\n");
    EXPECT_EQ(settingsOfDrawing(), L"TOOL.INI\n  b=\n  C\n    c=\n");
    EXPECT_EQ(ini.status(L"b"), RTNORM);
    EXPECT_EQ(ini.value, L"");
}

TEST_F(LocalSetting, OfTheHeadMayHaveItsNameOrNoneInBrackets)
{
    Ini ini(tool("a=1\nb=2\n[Algemeen]\na=3\n"));
    makeLocal(ini, L"[]b");
    EXPECT_EQ(settingsOfDrawing(), L"TOOL.INI\n  b=2\n");
    makeLocal(ini, L"[Algemeen]a");
    EXPECT_EQ(settingsOfDrawing(), L"TOOL.INI\n  a=3\n  b=2\n")
        << "a lookup by that name is one of a header, the drawing has one place for both";
}

TEST_F(LocalSetting, OfAnIncludedFileIsAnEmptyOne)
{
    folder.write(L"part.ini", "a=part\nb=part\n");
    Ini ini(tool("#INCLUDE=part.ini\nb=own\n"));
    makeLocal(ini, L"a");
    makeLocal(ini, L"b");
    EXPECT_EQ(settingsOfDrawing(), L"TOOL.INI\n  a=\n  b=own\n");
    EXPECT_EQ(ini.get(L"a"), L"part") << "included files go before the drawing";
}

TEST_F(LocalSetting, IsCutAt511Characters)
{
    for (const std::size_t length : {510U, 511U, 512U, 2000U}) {
        const std::string name = "v" + std::to_string(length);
        Ini ini(tool(name + "=" + std::string(length, 'x') + "\n"));
        const std::wstring ident(name.begin(), name.end());
        makeLocal(ini, ident);
        EXPECT_EQ(corma::readFromDrawing(L"tool.ini", L"", ident.c_str(), nullptr),
                  std::wstring(std::min<std::size_t>(length, 511), L'x'))
            << length;
    }
}

TEST_F(LocalSetting, TakesTheValueThatTheCacheHas)
{
    IniBuffer buffer;
    Ini ini(tool("a=1\n"), 0, &buffer);
    EXPECT_EQ(ini.get(L"a"), L"1");
    tool("a=2\n");
    makeLocal(ini, L"a");
    EXPECT_EQ(settingsOfDrawing(), L"TOOL.INI\n  a=1\n");
}

TEST_F(LocalSetting, OfAScrambledFileIsOneOfThePlainFile)
{
    folder.write(L"tool7.ini", corma::scrambledForm("a=1\n", 7));
    Ini ini(folder.path(L"tool.ini"), 7);
    makeLocal(ini, L"A");
    EXPECT_EQ(settingsOfDrawing(), L"TOOL.INI\n  A=1\n");
}

TEST_F(LocalSetting, OfAFileOfAnotherExtensionIsTakenEachTime)
{
    Ini ini(folder.write(L"tool.cfg", "a=1\n"));
    makeLocal(ini, L"a");
    EXPECT_EQ(settingsOfDrawing(), L"TOOL.CFG\n  a=1\n");
    folder.write(L"tool.cfg", "a=2\n");
    makeLocal(ini, L"a");
    EXPECT_EQ(settingsOfDrawing(), L"TOOL.CFG\n  a=2\n") << "such a file sees no drawing";
}

TEST_F(LocalSetting, WithoutADrawingDoesNothing)
{
    corma::closeDocument();
    Ini ini(tool("a=1\n"));
    makeLocal(ini, L"a");
    makeLocal(ini, L"b", 0);
    EXPECT_EQ(services.allPrinted(), L"");
    makeLocal(ini, L"b", 1);
    EXPECT_EQ(services.allPrinted(), L"\nb not found in configurationfile\n");
    EXPECT_EQ(folder.read(L"tool.ini"), "a=1\n");
}

TEST_F(LocalSetting, ThatADrawingOfR12CannotHoldIsTold)
{
    openDrawingOfR12();
    Ini ini(tool("a=1\n"));
    makeLocal(ini, L"a");
    ASSERT_FALSE(services.printed.empty());
    EXPECT_EQ(services.printed.back(), L"a not stored in the drawing");
    EXPECT_FALSE(corma::isDocumentModified());
    EXPECT_EQ(ini.get(L"a"), L"1");
}

TEST_F(LocalSetting, StaysInTheSavedDrawing)
{
    Ini ini(tool("a=1\n"));
    makeLocal(ini, L"a");
    ASSERT_TRUE(corma::saveDocument());
    tool("a=2\n");
    ASSERT_TRUE(corma::openDocument(drawing().c_str()));
    EXPECT_EQ(ini.get(L"a"), L"1");
}

// --- chapters ------------------------------------------------------------------------------------

using LocalChapter = Local;

TEST_F(LocalChapter, TakesEachEntryOfTheChapter)
{
    Ini ini(tool("a=0\n[B]\na=1\nlos\n off=1\nb=2=3\n[C]\na=4\n"));
    makeChapterLocal(ini, L"B");
    EXPECT_EQ(settingsOfDrawing(), L"TOOL.INI\n  B\n    a=1\n    b=2=3\n");
}

TEST_F(LocalChapter, KeepsWhatTheDrawingHas)
{
    Ini ini(tool("[B]\na=1\nb=1\n"));
    ASSERT_EQ(corma::writeToDrawing(L"tool.ini", L"B", L"a", L"drawing", nullptr), Acad::eOk);
    makeChapterLocal(ini, L"B");
    tool("[B]\na=2\nb=2\n");
    makeChapterLocal(ini, L"B");
    EXPECT_EQ(settingsOfDrawing(), L"TOOL.INI\n  B\n    a=drawing\n    b=1\n");
}

TEST_F(LocalChapter, WithoutEntriesLeavesTheDrawingAlone)
{
    Ini ini(tool("a=1\n[B]\n[C]\na=1\n"));
    makeChapterLocal(ini, L"B");
    EXPECT_EQ(settingsOfDrawing(), L"(none)");
    EXPECT_FALSE(corma::isDocumentModified());
}

TEST_F(LocalChapter, ThatIsNotThereIsToldWhenAsked)
{
    Ini ini(tool("a=1\n"));
    makeChapterLocal(ini, L"B", 0);
    EXPECT_EQ(services.allPrinted(), L"");
    makeChapterLocal(ini, L"B", 1);
    EXPECT_EQ(services.allPrinted(), L"\n[B]* not found in configurationfile");
    EXPECT_EQ(settingsOfDrawing(), L"(none)");
}

TEST_F(LocalChapter, MayBeAPattern)
{
    Ini ini(tool("a=0\n[Deur]\na=1\n[Raam]\na=2\n[Deurpost]\na=3\n"));
    makeChapterLocal(ini, L"deur*");
    EXPECT_EQ(settingsOfDrawing(), L"TOOL.INI\n  Deur\n    a=1\n  Deurpost\n    a=3\n");
    makeChapterLocal(ini, L"*");
    EXPECT_EQ(settingsOfDrawing(),
              L"TOOL.INI\n  Deur\n    a=1\n  Deurpost\n    a=3\n  Raam\n    a=2\n")
        << "but not the head of the file";
}

TEST_F(LocalChapter, ThatIsThereTwiceGivesTheValuesOfTheFirst)
{
    Ini ini(tool("[B]\na=1\n[C]\n[B]\na=2\nb=3\n"));
    makeChapterLocal(ini, L"B");
    EXPECT_EQ(settingsOfDrawing(), L"TOOL.INI\n  B\n    a=1\n    b=\n")
        << "a lookup looks no further than the first";
}

TEST_F(LocalChapter, TakesTheIdentsOfIncludedFilesWithoutTheirValues)
{
    folder.write(L"part.ini", "[B]\na=part\nb=part\n");
    Ini ini(tool("#INCLUDE=part.ini\n[B]\nb=own\nc=own\n"));
    makeChapterLocal(ini, L"B");
    EXPECT_EQ(settingsOfDrawing(), L"TOOL.INI\n  B\n    a=\n    b=own\n    c=own\n");
}

TEST_F(LocalChapter, TakesTheProjectsValueOfWhatTheFileHas)
{
    folder.write(L"tool.ipr", "[B]\na=project\nb=project\n");
    Ini ini(tool("[B]\na=file\n"));
    makeChapterLocal(ini, L"B");
    EXPECT_EQ(settingsOfDrawing(), L"TOOL.INI\n  B\n    a=project\n");
}

TEST_F(LocalChapter, MayHaveANameThatIsNoKey)
{
    Ini ini(tool("[A=B]\na=1\n"));
    makeChapterLocal(ini, L"A=B");
    EXPECT_EQ(settingsOfDrawing(), L"TOOL.INI\n  XX_HEX_0x41003d004200\n    a=1\n");
    EXPECT_EQ(ini.get(L"[A=B]a"), L"1");
}

TEST_F(LocalChapter, PassesOverAnEntryWithoutAnIdent)
{
    Ini ini(tool("[B]\n=1\na=2\n"));
    makeChapterLocal(ini, L"B");
    EXPECT_EQ(settingsOfDrawing(), L"TOOL.INI\n  B\n    a=2\n");
    EXPECT_EQ(services.allPrinted(), L"");
}

TEST_F(LocalChapter, WithoutADrawingDoesNothing)
{
    corma::closeDocument();
    Ini ini(tool("[B]\na=1\n"));
    makeChapterLocal(ini, L"B", 1);
    EXPECT_EQ(services.allPrinted(), L"");
}

TEST_F(LocalChapter, OfADrawingOfR12IsToldForEachEntry)
{
    openDrawingOfR12();
    Ini ini(tool("[B]\na=1\nb=1\n"));
    makeChapterLocal(ini, L"B");
    EXPECT_NE(services.allPrinted().find(L"\n[B]a not stored in the drawing"), std::wstring::npos);
    EXPECT_NE(services.allPrinted().find(L"\n[B]b not stored in the drawing"), std::wstring::npos);
    EXPECT_FALSE(corma::isDocumentModified());
}

// --- levels --------------------------------------------------------------------------------------

class LocalLevels : public Local
{
protected:
    std::wstring toolWith(std::string_view text, std::string_view definitions)
    {
        folder.write(L"tool.inr", definitions);
        return tool(text);
    }
};

TEST_F(LocalLevels, TakesWhatIsDefinedForTheDrawing)
{
    Ini ini(toolWith("a=1\nb=2\nc=3\n[D]\na=4\nb=5\n[E]\na=6\n",
                     "a=i level=d\nb=i level=p\nc=i\n[D]\nb=i level=d\n[E]\na=i level=D\n"));
    makeLevelsLocal(ini);
    EXPECT_EQ(settingsOfDrawing(), L"TOOL.INI\n  a=1\n  D\n    b=5\n");
    EXPECT_EQ(ini.get(L"a"), L"1") << "the file is open";
    EXPECT_EQ(services.allPrinted(), L"");
    EXPECT_TRUE(services.boxes.empty());
}

TEST_F(LocalLevels, ASecondTimeChangesNothing)
{
    Ini ini(toolWith("a=1\n", "a=i level=d\n"));
    makeLevelsLocal(ini);
    ASSERT_TRUE(corma::saveDocument());
    tool("a=2\n");
    makeLevelsLocal(ini);
    EXPECT_EQ(settingsOfDrawing(), L"TOOL.INI\n  a=1\n");
    EXPECT_FALSE(corma::isDocumentModified());
}

TEST_F(LocalLevels, TakesTheProjectsValueFirst)
{
    folder.write(L"tool.ipr", "a=project\n");
    Ini ini(toolWith("a=1\n", "a=i level=d\n"));
    makeLevelsLocal(ini);
    EXPECT_EQ(settingsOfDrawing(), L"TOOL.INI\n  a=project\n");
}

TEST_F(LocalLevels, WithoutDefinitionsTakesNothing)
{
    Ini ini(tool("a=1\n"));
    makeLevelsLocal(ini);
    EXPECT_EQ(settingsOfDrawing(), L"(none)");
    EXPECT_FALSE(corma::isDocumentModified());
}

TEST_F(LocalLevels, ALevelOfMoreThanItsLetterIsAnother)
{
    Ini ini(toolWith("a=1\nb=1\n", "a=i level=dp\nb=i level=\n"));
    makeLevelsLocal(ini);
    EXPECT_EQ(settingsOfDrawing(), L"(none)");
}

TEST_F(LocalLevels, WithoutAFileTakesNothing)
{
    Ini ini(folder.path(L"missing.ini"));
    services.printed.clear();
    makeLevelsLocal(ini, 1);
    EXPECT_EQ(services.allPrinted(), L"");
    EXPECT_TRUE(services.boxes.empty());
    EXPECT_EQ(settingsOfDrawing(), L"(none)");
}

TEST_F(LocalLevels, WithoutADrawingDoNothing)
{
    corma::closeDocument();
    Ini ini(toolWith("a=1\n", "a=i level=d\n"));
    makeLevelsLocal(ini, 1);
    EXPECT_EQ(services.allPrinted(), L"");
    EXPECT_EQ(ini.get(L"a"), L"1");
}

TEST_F(LocalLevels, KeepTheLanguageOfTheTexts)
{
    corma::setTextLanguage(19);
    Ini ini(toolWith("a=1\n", "a=i level=d\n"));
    makeLevelsLocal(ini);
    EXPECT_EQ(corma::textLanguage(), 19);
    EXPECT_EQ(settingsOfDrawing(), L"TOOL.INI\n  a=1\n");
}

TEST_F(LocalLevels, OfAScrambledFileAreReadFromItsTextAsItStands)
{
    folder.write(L"tool7.ini", corma::scrambledForm("a=1\n", 7));
    folder.write(L"tool7.inr", "a=i level=d\n");
    Ini ini(folder.path(L"tool.ini"), 7);
    makeLevelsLocal(ini);
    EXPECT_EQ(settingsOfDrawing(), L"(none)") << "which has no ident a";
    EXPECT_EQ(ini.get(L"a"), L"1");
}

} // namespace
