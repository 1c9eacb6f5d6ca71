#include "inifile/InifileTest.h"
#include "inifile/drawing_tree.h"
#include "inifile/scrambling.h"
#include "platform/platform.h"
#include "platform/text.h"
#include "support/RefusedCalls.h"
#include "support/row_names.h"
#include <corma/xx_Var.h>

#include <cerrno>
#include <filesystem>

using corma::platform::SystemCall;
using corma::testing::Ini;
using corma::testing::InifileTest;
using corma::testing::RefusedCalls;
using corma::testing::sentenceOf;
using corma::testing::settingsOfDrawing;
using namespace std::string_literals;

namespace {

class Write : public InifileTest
{
protected:
    static void write(Ini& ini, std::wstring ident, std::wstring value, int level = 0,
                      bool create = true)
    {
        ini.file.writeString(ident.data(), value.data(), level, create);
        EXPECT_EQ(corma::host::openObjectCount(), 0);
    }

    std::wstring tool(std::string_view text) { return folder.write(L"tool.ini", text); }

    std::string content(const wchar_t* name = L"tool.ini") const { return folder.read(name); }

    void newDrawing(const wchar_t* name = L"house.dxf")
    {
        ASSERT_TRUE(corma::newDocument(folder.path(name).c_str()));
    }

    // With "~" in the place of the folder and "#" in that of line numbers of sources.
    [[nodiscard]] std::string printed() const { return homely(services.allPrinted()); }

    // The texts of message boxes, with a bar behind each.
    [[nodiscard]] std::string boxes() const
    {
        std::wstring all;
        for (const std::wstring& box : services.boxes) {
            all += box + L"|";
        }
        return homely(all);
    }

    // Nothing is told.
    void expectSilence() const
    {
        EXPECT_EQ(printed(), "");
        EXPECT_EQ(boxes(), "");
        EXPECT_TRUE(services.alerts.empty());
    }

private:
    [[nodiscard]] std::string homely(const std::wstring& wide) const
    {
        std::string text = folder.homely(wide);
        const std::string before = "xx_Inifile.cpp on line ";
        for (std::size_t at = 0; (at = text.find(before, at)) != std::string::npos;) {
            at += before.size();
            text.replace(at, text.find('\n', at) - at, "#");
        }
        return text;
    }
};

const std::string kNotWritten = "Setting was not written. \nCheck if ini-file is present and \n"
                                "if the file is not read-only|";

// --- the file itself -----------------------------------------------------------------------------

struct PlainRow
{
    const char* sentence;
    std::string own;
    const wchar_t* ident;
    const wchar_t* value;
    std::string text;
};

class PlainWrite : public Write, public ::testing::WithParamInterface<PlainRow>
{
};

TEST_P(PlainWrite, GivesTheText)
{
    Ini ini(tool(GetParam().own));
    write(ini, GetParam().ident, GetParam().value);
    EXPECT_EQ(content(), GetParam().text);
    EXPECT_EQ(folder.names(), "tool.ini");
    expectSilence();
}

INSTANTIATE_TEST_SUITE_P(
    Value, PlainWrite,
    ::testing::Values(PlainRow {"IsPutInItsLine", "a=1\nb=1\n[C]\na=1\n", L"a", L"2",
                                "a=2\nb=1\n[C]\na=1\n"},
                      PlainRow {"IsPutInItsChapter", "a=1\n[C]\na=1\n[D]\na=1\n", L"[C]a", L"2",
                                "a=1\n[C]\na=2\n[D]\na=1\n"},
                      PlainRow {"MayBecomeEmpty", "a=1\n", L"a", L"", "a=\n"},
                      PlainRow {"MayHoldAnEqualsSign", "a=1=2\n", L"a", L"3=4", "a=3=4\n"},
                      PlainRow {"TakesThePlaceOfAWholeLine", "a=1\tcomment\n", L"a", L"2", "a=2\n"},
                      PlainRow {"MayHoldAllCharacters", "a=1\n", L"a", L"é€😀", "a=é€😀\n"},
                      PlainRow {"WithALineFeedMakesALine", "a=1\r\nb=1\r\n", L"a", L"2\nc=3",
                                "a=2\r\nc=3\r\nb=1\r\n"}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(
    NewIdent, PlainWrite,
    ::testing::Values(
        PlainRow {"OfTheHeadComesBeforeTheFirstHeader", "b=1\n\n[C]\nc=1\n[D]\n", L"a", L"2",
                  "b=1\n\na=2\n[C]\nc=1\n[D]\n"},
        PlainRow {"OfAnEmptyHeadComesBeforeTheFirstHeader", "[C]\nc=1\n", L"a", L"2",
                  "a=2\n[C]\nc=1\n"},
        PlainRow {"OfAChapterComesBeforeTheNextHeader", "[C]\nc=1\n\n[D]\nd=1\n", L"[C]a", L"2",
                  "[C]\nc=1\n\na=2\n[D]\nd=1\n"},
        PlainRow {"OfTheLastChapterComesBehindItsHeader", "[C]\nc=1\n", L"[C]a", L"2",
                  "[C]\na=2\nc=1\n"},
        PlainRow {"OfAFileWithoutHeadersComesBehindItsFirstLine", "b=1\nc=1\n", L"a", L"2",
                  "b=1\na=2\nc=1\n"},
        PlainRow {"OfAnEmptyFileIsItsLine", "", L"a", L"2", "a=2\n"},
        PlainRow {"OfANewChapterComesWithItAtTheEnd", "a=1\n[C]\nc=1\n", L"[D]a", L"2",
                  "a=1\n[C]\nc=1\n[D]\na=2"},
        PlainRow {"OfANewChapterComesBehindAnEndOfTheLastLine", "a=1\r\nb=1", L"[D]a", L"2",
                  "a=1\r\nb=1\r\n[D]\r\na=2"},
        PlainRow {"IsOneInAnotherCaseOfItsLetters", "[C]\nA=1\n", L"[C]a", L"2", "[C]\na=2\nA=1\n"},
        PlainRow {"IsOneOfAChapterInAnotherCase", "[C]\na=1\n", L"[c]a", L"2",
                  "[C]\na=1\n[c]\na=2"},
        PlainRow {"IsOneThatOnlyBeginsAnother", "ab=1\n[C]\n", L"a", L"2", "ab=1\na=2\n[C]\n"},
        PlainRow {"IsOneThatIsDisabledByABlank", " a=1\n[C]\n", L"a", L"2", " a=1\na=2\n[C]\n"}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(
    Ident, PlainWrite,
    ::testing::Values(
        PlainRow {"WithEmptyBracketsIsOneOfTheHead", "a=1\n[]\na=1\n", L"[]a", L"2",
                  "a=2\n[]\na=1\n"},
        PlainRow {"OfTheHeadByItsNameIsOneOfTheHead", "a=1\n[Algemeen]\na=1\n", L"[Algemeen]a",
                  L"2", "a=2\n[Algemeen]\na=1\n"},
        PlainRow {"OfTheHeadsNameInAnotherCaseIsOneOfAChapter", "a=1\n[ALGEMEEN]\na=1\n",
                  L"[ALGEMEEN]a", L"2", "a=1\n[ALGEMEEN]\na=2\n"},
        PlainRow {"WithABracketThatIsNotClosedIsOneOfTheHead", "[a=1\n", L"[a", L"2", "[a=2\n"},
        PlainRow {"ThatStandsTwiceIsChangedOnce", "a=1\na=1\n", L"a", L"2", "a=2\na=1\n"}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(
    Encoding, PlainWrite,
    ::testing::Values(PlainRow {"Windows1252IsKept", "\xE9=1\n", L"é", L"€é", "\xE9=\x80\xE9\n"},
                      PlainRow {"AMarkIsKept",
                                "\xEF\xBB\xBF"
                                "a=1\n",
                                L"a", L"é",
                                "\xEF\xBB\xBF"
                                "a=é\n"},
                      PlainRow {"Utf16IsKept",
                                "\xFF\xFE"
                                "a\0=\0"
                                "1\0\n\0"s,
                                L"a", L"€",
                                "\xFF\xFE"
                                "a\0=\0\xAC\x20\n\0"s},
                      PlainRow {"AsciiBecomesUtf8", "a=1\n", L"a", L"Ł", "a=Ł\n"},
                      PlainRow {"LineEndsOfOtherLinesAreKept", "a=1\r\nb=1\nc=1\r\n", L"a", L"2",
                                "a=2\r\nb=1\nc=1\r\n"},
                      PlainRow {"TheLastLineGetsAnEnd", "a=1\r\nb=1", L"a", L"2",
                                "a=2\r\nb=1\r\n"}),
    sentenceOf);

using FileWrite = Write;

TEST_F(FileWrite, WithoutCreateAddsNothing)
{
    const std::string own = "a=1\n[C]\nc=1\n";
    Ini ini(tool(own));
    for (const wchar_t* ident : {L"b", L"[C]a", L"[D]a", L"A"}) {
        write(ini, ident, L"2", 0, false);
        EXPECT_EQ(content(), own);
    }
    write(ini, L"[C]c", L"2", 0, false);
    EXPECT_EQ(content(), "a=1\n[C]\nc=2\n") << "what is there is changed";
    expectSilence();
}

TEST_F(FileWrite, TheFormsWithFewerArgumentsAdd)
{
    newDrawing();
    Ini ini(tool("b=1\n[C]\n"));
    std::wstring ident = L"a";
    std::wstring value = L"file";
    ini.file.writeString(ident.data(), value.data(), 0);
    EXPECT_EQ(content(), "b=1\na=file\n[C]\n");
    ini.file.writeString(ident.data(), value.data(), 1);
    EXPECT_EQ(content(L"tool.ipr"), "a=file\n");
    value = L"drawing";
    ini.file.writeString(ident.data(), value.data());
    EXPECT_EQ(settingsOfDrawing(), L"TOOL.INI\n  a=drawing\n");
    value = L"again";
    ini.file.writeString(ident.data(), value.data(), 2);
    EXPECT_EQ(settingsOfDrawing(), L"TOOL.INI\n  a=again\n");
    EXPECT_EQ(content(), "b=1\na=file\n[C]\n");
}

TEST_F(FileWrite, TheObjectReadsWhatItWrote)
{
    Ini ini(tool("a=1\n[C]\nc=1\n"));
    write(ini, L"a", L"2");
    EXPECT_EQ(ini.get(L"a"), L"2");
    write(ini, L"[C]d", L"3");
    EXPECT_EQ(ini.get(L"[c]D"), L"3");
    write(ini, L"[E]e", L"4");
    EXPECT_EQ(ini.get(L"[E]e"), L"4");
    std::wstring pattern = L"[*]?";
    xx_VarArray results;
    EXPECT_EQ(ini.file.getWcString(pattern.data(), &results, 0, 0), RTNORM);
    ASSERT_EQ(results.length(), 3);
    EXPECT_STREQ(results[0]->name(), L"[C]d");
    EXPECT_STREQ(results[2]->name(), L"[E]e");
    EXPECT_STREQ(results[2]->currentText(), L"4");
}

TEST_F(FileWrite, IncludedFilesAreNotTouched)
{
    folder.write(L"part.ini", "a=part\n");
    Ini ini(tool("#INCLUDE=part.ini\n[C]\n"));
    write(ini, L"a", L"own");
    EXPECT_EQ(content(L"part.ini"), "a=part\n");
    EXPECT_EQ(content(), "#INCLUDE=part.ini\na=own\n[C]\n");
    EXPECT_EQ(ini.get(L"a"), L"part") << "an included file goes before the file itself";
}

TEST_F(FileWrite, AFileThatWasMissingAndIsThereNowIsRead)
{
    Ini ini(tool("a=1\n"));
    folder.remove(L"tool.ini");
    EXPECT_EQ(ini.get(L"a"), L"1") << "it is open";
    tool("a=2\n");
    write(ini, L"b", L"3");
    EXPECT_EQ(ini.get(L"a"), L"2");
    EXPECT_EQ(ini.get(L"b"), L"3");
}

TEST_F(FileWrite, AFileWithoutAnExtensionIsWrittenUnderThatOfConfigurationFiles)
{
    Ini ini(folder.write(L"tool", "a=1\n"));
    tool("a=1\n");
    write(ini, L"a", L"2");
    EXPECT_EQ(content(), "a=2\n");
    EXPECT_EQ(content(L"tool"), "a=1\n");
}

TEST_F(FileWrite, AFileWithAnotherExtensionIsWritten)
{
    Ini ini(folder.write(L"tool.cfg", "a=1\n"));
    write(ini, L"a", L"2");
    EXPECT_EQ(content(L"tool.cfg"), "a=2\n");
}

TEST_F(FileWrite, ALinkStaysALink)
{
    folder.write(L"real/real.ini", "a=1\n");
    std::filesystem::create_symlink(corma::platform::toNative(folder.path(L"real/real.ini")),
                                    corma::platform::toNative(folder.path(L"tool.ini")));
    Ini ini(folder.path(L"tool.ini"));
    write(ini, L"a", L"2");
    EXPECT_EQ(content(L"real/real.ini"), "a=2\n");
    EXPECT_EQ(ini.get(L"a"), L"2");
}

TEST_F(FileWrite, ANullValueIsAnEmptyOne)
{
    Ini ini(tool("a=1\n"));
    std::wstring ident = L"a";
    ini.file.writeString(ident.data(), nullptr, 0);
    EXPECT_EQ(content(), "a=\n");
}

// --- failures ------------------------------------------------------------------------------------

using FailedWrite = Write;

TEST_F(FailedWrite, OfAFileThatWasNotFoundIsTold)
{
    Ini ini(folder.path(L"tool.ini"));
    services.printed.clear();
    write(ini, L"[C]a", L"2");
    EXPECT_EQ(boxes(), "a\n" + kNotWritten);
    write(ini, L"b", L"2", 1);
    EXPECT_EQ(boxes(), "a\n" + kNotWritten + "b\n" + kNotWritten);
    EXPECT_EQ(printed(), "");
    EXPECT_EQ(folder.names(), "");
}

TEST_F(FailedWrite, OfAFileThatIsGoneIsTold)
{
    Ini ini(tool("a=1\n"));
    folder.remove(L"tool.ini");
    write(ini, L"a", L"2");
    EXPECT_EQ(boxes(), "~/tool.ini : Ini-file not found: |~/tool.ini\n" + kNotWritten);
    EXPECT_EQ(folder.names(), "");
}

TEST_F(FailedWrite, OfAFileThatMayNotBeWrittenIsTold)
{
    Ini ini(tool("a=1\n"));
    {
        const RefusedCalls refused(SystemCall::openTarget, EACCES);
        write(ini, L"a", L"2");
    }
    EXPECT_EQ(boxes(), "~/tool.ini : Could not open file for write |~/tool.ini\n" + kNotWritten);
    EXPECT_EQ(content(), "a=1\n");
    EXPECT_EQ(ini.get(L"a"), L"1");
    write(ini, L"a", L"2");
    EXPECT_EQ(ini.get(L"a"), L"2");
}

TEST_F(FailedWrite, OfACharacterThatTheFileCannotHoldIsTold)
{
    Ini ini(tool("\xE9=1\na=1\n"));
    write(ini, L"a", L"Ł");
    EXPECT_EQ(boxes(),
              "~/tool.ini : line 2 has a character that Windows-1252, the encoding of the file, "
              "does not have|~/tool.ini\n"
                  + kNotWritten);
    EXPECT_EQ(content(), "\xE9=1\na=1\n");
    EXPECT_EQ(folder.names(), "tool.ini");
    EXPECT_EQ(ini.get(L"a"), L"1");
}

TEST_F(FailedWrite, OfWhatIsNoCharacterIsTold)
{
    Ini ini(tool("a=1\n"));
    write(ini, L"a", std::wstring(1, static_cast<wchar_t>(0xD800)));
    EXPECT_EQ(boxes(),
              "~/tool.ini : the setting has a character that no file can hold|~/tool.ini\n"
                  + kNotWritten);
    EXPECT_EQ(content(), "a=1\n");
}

TEST_F(FailedWrite, OfAFileThatIsNotWhatItsMarkSaysIsTold)
{
    const std::string own = "\xEF\xBB\xBF"
                            "a=1\nb=\xE9\n";
    Ini ini(tool(own));
    write(ini, L"a", L"2");
    EXPECT_EQ(boxes(),
              "~/tool.ini : line 2 is no UTF-8, as its byte-order mark says|~/tool.ini\n"
                  + kNotWritten);
    EXPECT_EQ(content(), own);
}

TEST_F(FailedWrite, OnAFullDiskIsTold)
{
    Ini ini(tool("a=1\n"));
    const RefusedCalls full(SystemCall::write, ENOSPC);
    write(ini, L"a", L"2");
    EXPECT_EQ(boxes(), "~/tool.ini : the disk is full|~/tool.ini\n" + kNotWritten);
    EXPECT_EQ(content(), "a=1\n");
    EXPECT_EQ(folder.names(), "tool.ini");
    EXPECT_EQ(ini.get(L"a"), L"1");
}

TEST_F(FailedWrite, OfAFileThatCannotBeReplacedIsReportedInThreeLines)
{
    Ini ini(tool("a=1\n"));
    const RefusedCalls refused(SystemCall::rename, EACCES);
    write(ini, L"a", L"2");
    EXPECT_EQ(printed(),
              "\nError in file Instelling.cpp on line 388\n"
              "(unable to rename dummy.tmp to inifile, ec = 13)"
              "\nError in file Instelling.cpp on line 389\n(  - ~/dummy.tmp, ec = 13)"
              "\nError in file Instelling.cpp on line 390\n(  - ~/tool.ini, ec = 13)");
    EXPECT_EQ(boxes(), "");
    EXPECT_EQ(content(), "a=1\n");
    EXPECT_EQ(folder.names(), "tool.ini");
    EXPECT_EQ(ini.get(L"a"), L"1");
}

// --- the project file ----------------------------------------------------------------------------

using ProjectWrite = Write;

TEST_F(ProjectWrite, IsMadeBesideTheFileItself)
{
    newDrawing(L"drawings/house.dxf");
    Ini ini(tool("a=1\n"));
    write(ini, L"a", L"2", 1);
    EXPECT_EQ(content(L"tool.ipr"), "a=2\n");
    EXPECT_EQ(content(), "a=1\n");
    EXPECT_FALSE(folder.has(L"drawings/tool.ipr"));
    EXPECT_EQ(ini.get(L"a"), L"1") << "the project file of a lookup is that beside the drawing";
    expectSilence();
}

TEST_F(ProjectWrite, IsReadOfADrawingBesideIt)
{
    newDrawing();
    Ini ini(tool("a=1\n"));
    write(ini, L"a", L"2", 1);
    write(ini, L"[C]c", L"3", 1);
    EXPECT_EQ(content(L"tool.ipr"), "a=2\n[C]\nc=3");
    EXPECT_EQ(ini.get(L"a"), L"2");
    EXPECT_EQ(ini.get(L"[C]c"), L"3");
    expectSilence();
}

TEST_F(ProjectWrite, AProjectFileGetsWhatItLacksInAnyCase)
{
    Ini ini(tool("a=1\n"));
    for (const bool create : {false, true}) {
        folder.write(L"tool.ipr", "b=1\n[C]\nc=1\n");
        write(ini, L"a", L"2", 1, create);
        EXPECT_EQ(content(L"tool.ipr"), "b=1\na=2\n[C]\nc=1\n") << create;
        write(ini, L"[D]a", L"2", 1, create);
        EXPECT_EQ(content(L"tool.ipr"), "b=1\na=2\n[C]\nc=1\n[D]\na=2") << create;
    }
}

TEST_F(ProjectWrite, ThatFailsIsToldByTheNameOfTheFileItself)
{
    Ini ini(tool("a=1\n"));
    folder.makeFolder(L"tool.ipr");
    write(ini, L"a", L"2", 1);
    EXPECT_EQ(boxes(), "~/tool.ini : Could not open file for write |~/tool.ini\n" + kNotWritten);
    EXPECT_EQ(folder.names(), "tool.ini tool.ipr");
}

TEST_F(ProjectWrite, ThatCannotBeReplacedIsNotTold)
{
    Ini ini(tool("a=1\n"));
    folder.write(L"tool.ipr", "a=1\n");
    const RefusedCalls refused(SystemCall::rename, EACCES);
    write(ini, L"a", L"2", 1);
    EXPECT_EQ(content(L"tool.ipr"), "a=1\n");
    EXPECT_EQ(folder.names(), "tool.ini tool.ipr");
    expectSilence();
}

TEST_F(ProjectWrite, OfAScrambledFileDoesNothing)
{
    Ini ini(tool(corma::scrambledForm("a=1\n", 7)), 7);
    write(ini, L"a", L"2", 1);
    EXPECT_EQ(folder.names(), "tool.ini");
    EXPECT_EQ(ini.get(L"a"), L"1");
    expectSilence();
}

// --- other levels --------------------------------------------------------------------------------

TEST_F(Write, OtherLevelsDoNothing)
{
    newDrawing();
    Ini ini(tool("a=1\n"));
    for (const int level : {-1, 3, 99}) {
        write(ini, L"a", L"2", level);
        write(ini, L"b", L"2", level);
    }
    EXPECT_EQ(content(), "a=1\n");
    EXPECT_EQ(folder.names(), "tool.ini");
    EXPECT_EQ(settingsOfDrawing(), L"(none)");
    EXPECT_EQ(ini.get(L"a"), L"1");
    expectSilence();
}

// --- the cache -----------------------------------------------------------------------------------

class CachedWrite : public Write
{
protected:
    IniBuffer buffer;
};

TEST_F(CachedWrite, OfAFileIsSeen)
{
    Ini ini(tool("a=1\n[C]\na=1\n"), 0, &buffer);
    EXPECT_EQ(ini.get(L"a"), L"1");
    EXPECT_EQ(ini.get(L"[C]a"), L"1");
    write(ini, L"a", L"2");
    EXPECT_EQ(ini.get(L"a"), L"2");
    write(ini, L"[C]a", L"3");
    EXPECT_EQ(ini.get(L"[C]a"), L"3");
}

TEST_F(CachedWrite, TakesOutAValueAtAnyLevelOfFilesAndAtNone)
{
    for (const int level : {0, 1, 3, -1}) {
        Ini ini(tool("a=1\n"), 0, &buffer);
        EXPECT_EQ(ini.get(L"a"), L"1");
        tool("a=3\n");
        EXPECT_EQ(ini.get(L"a"), L"1") << "it is in the cache";
        write(ini, L"a", L"2", level);
        EXPECT_EQ(ini.get(L"a"), level == 0 ? L"2" : L"3") << level;
        ini.file.flushIniBuffer();
    }
}

TEST_F(CachedWrite, LeavesOtherValuesInTheCache)
{
    Ini ini(tool("a=1\nb=1\n"), 0, &buffer);
    EXPECT_EQ(ini.get(L"b"), L"1");
    write(ini, L"a", L"2");
    tool("a=3\nb=3\n");
    EXPECT_EQ(ini.get(L"b"), L"1");
    EXPECT_EQ(ini.get(L"a"), L"3");
}

TEST_F(CachedWrite, OfADrawingRenewsAValueThatIsThere)
{
    newDrawing();
    Ini ini(tool("a=1\n[C]\nc=1\n"), 0, &buffer);
    EXPECT_EQ(ini.get(L"[C]c"), L"1");
    write(ini, L"[C]c", L"2", 2);
    const auto other = std::make_unique<AcDbDatabase>();
    acdbHostApplicationServices()->setWorkingDatabase(other.get());
    EXPECT_EQ(ini.get(L"[C]c"), L"2") << "the cache answers before any drawing";
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
}

TEST_F(CachedWrite, OfADrawingBringsNothingNewIntoTheCache)
{
    newDrawing();
    Ini ini(tool("a=1\n"), 0, &buffer);
    write(ini, L"a", L"2", 2);
    const auto other = std::make_unique<AcDbDatabase>();
    acdbHostApplicationServices()->setWorkingDatabase(other.get());
    EXPECT_EQ(ini.get(L"a"), L"1");
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
}

TEST_F(CachedWrite, ThatADrawingRefusesLeavesNoWrongValue)
{
    Ini ini(tool("a=1\n"), 0, &buffer);
    EXPECT_EQ(ini.get(L"a"), L"1");
    write(ini, L"a", L"2", 2);
    EXPECT_EQ(printed(), "\na not stored: no drawing is open");
    EXPECT_EQ(ini.get(L"a"), L"1");

    folder.write(L"r12.dxf",
                 corma::platform::readFile(CORMA_SOURCE_FOLDER "/tests/data/r12.dxf")->view());
    ASSERT_TRUE(corma::openDocument(folder.path(L"r12.dxf").c_str()));
    services.printed.clear();
    EXPECT_EQ(ini.get(L"a"), L"1");
    write(ini, L"a", L"2", 2);
    ASSERT_FALSE(services.printed.empty());
    EXPECT_EQ(services.printed.back(), L"a not stored in the drawing");
    EXPECT_EQ(ini.get(L"a"), L"1");
    EXPECT_FALSE(corma::isDocumentModified());
}

TEST_F(CachedWrite, ThatAFileRefusesLeavesNoWrongValue)
{
    Ini ini(tool("a=1\n"), 0, &buffer);
    EXPECT_EQ(ini.get(L"a"), L"1");
    const RefusedCalls refused(SystemCall::openTarget, EACCES);
    write(ini, L"a", L"2");
    EXPECT_EQ(ini.get(L"a"), L"1");
}

// --- scrambled files -----------------------------------------------------------------------------

class ScrambledWrite : public Write
{
protected:
    std::wstring scrambledTool(std::string_view text, int key = 7)
    {
        folder.write(L"tool" + std::to_wstring(key) + L".ini", corma::scrambledForm(text, key));
        return folder.path(L"tool.ini");
    }
};

TEST_F(ScrambledWrite, ChangesTheNumberedFile)
{
    for (const int key : {7, -7, 123'456}) {
        const std::wstring name = L"tool" + std::to_wstring(key) + L".ini";
        Ini ini(scrambledTool("a=1\n[B]\na=1\nb=1\n\n[C]\nc=1\n", key), key);
        write(ini, L"[b]A", L"new value");
        EXPECT_EQ(content(name.c_str()),
                  corma::scrambledForm("a=1\n[B]\nA=new value\nb=1\n\n[C]\nc=1\n", key));
        EXPECT_EQ(ini.get(L"[B]a"), L"new value");
        EXPECT_EQ(ini.get(L"[C]c"), L"1");
        EXPECT_EQ(ini.get(L"a"), L"1");
        folder.remove(name);
    }
    EXPECT_EQ(folder.names(), "");
    expectSilence();
}

TEST_F(ScrambledWrite, OfAnIdentWithoutAChapterChangesItInAllLaterOnes)
{
    Ini ini(scrambledTool("a=1\n[B]\na=1\n[C]\nb=1\n[D]\nA=1\n"), 7);
    write(ini, L"a", L"2");
    EXPECT_EQ(content(L"tool7.ini"),
              corma::scrambledForm("a=2\n[B]\na=2\n[C]\nb=1\n[D]\na=2\n", 7));
}

TEST_F(ScrambledWrite, OfAnIdentThatIsNotThereLeavesTheFileAlone)
{
    Ini ini(scrambledTool("a=1\tcut\nb=1"), 7);
    const std::string before = content(L"tool7.ini");
    for (const bool create : {false, true}) {
        write(ini, L"c", L"2", 0, create);
        write(ini, L"[B]a", L"2", 0, create);
        EXPECT_EQ(content(L"tool7.ini"), before);
    }
    expectSilence();
}

TEST_F(ScrambledWrite, CutsEachLineAndLosesALastOneWithoutAnEnd)
{
    Ini ini(scrambledTool("a=1\tcut\nb=1\tcut\nc=1"), 7);
    write(ini, L"a", L"2");
    EXPECT_EQ(content(L"tool7.ini"), corma::scrambledForm("a=2\nb=1\n", 7));
    EXPECT_EQ(ini.get(L"c"), L"(none)");
}

TEST_F(ScrambledWrite, NeedsNoLeaveToAdd)
{
    Ini ini(scrambledTool("a=1\n"), 7);
    write(ini, L"a", L"2", 0, false);
    EXPECT_EQ(ini.get(L"a"), L"2");
}

TEST_F(ScrambledWrite, OfAPlainFileThatServesForItLeavesItAlone)
{
    Ini ini(tool("a=1\r\n[B]\r\nb=2\r\n"), 7);
    write(ini, L"a", L"2");
    EXPECT_EQ(content(), "a=1\r\n[B]\r\nb=2\r\n");
    EXPECT_EQ(folder.names(), "tool.ini");
}

TEST_F(ScrambledWrite, IsSeenBehindTheCache)
{
    IniBuffer buffer;
    Ini ini(scrambledTool("a=1\n"), 7, &buffer);
    EXPECT_EQ(ini.get(L"a"), L"1");
    write(ini, L"a", L"2");
    EXPECT_EQ(ini.get(L"a"), L"2");
}

TEST_F(ScrambledWrite, HoldsWindows1252)
{
    Ini ini(scrambledTool("a=1\n\xE9=1\n"), 7);
    write(ini, L"a", L"€é");
    EXPECT_EQ(ini.get(L"a"), L"€é");
    write(ini, L"É", L"2");
    EXPECT_EQ(ini.get(L"é"), L"2");
    expectSilence();
    write(ini, L"[B]a", L"Ł");
    EXPECT_EQ(printed(),
              "\na not written: its value has a character that Windows-1252 does not have");
    EXPECT_EQ(ini.get(L"a"), L"€é");
}

TEST_F(ScrambledWrite, OfAFileThatIsGoneIsReported)
{
    Ini ini(scrambledTool("a=1\n"), 7);
    folder.remove(L"tool7.ini");
    write(ini, L"a", L"2");
    EXPECT_EQ(printed(),
              "\nError in file xx_Inifile.cpp on line #\n(\nCannot open ~/tool7.ini, ec = 2)");
    EXPECT_EQ(folder.names(), "");
    EXPECT_EQ(boxes(), "");
}

TEST_F(ScrambledWrite, OfAFileThatMayNotBeWrittenIsReported)
{
    Ini ini(scrambledTool("a=1\n"), 7);
    const RefusedCalls refused(SystemCall::openTarget, EACCES);
    write(ini, L"a", L"2");
    EXPECT_EQ(printed(),
              "\nError in file xx_Inifile.cpp on line #\n(\nCannot open ~/tool7.ini, ec = 13)");
    EXPECT_EQ(ini.get(L"a"), L"1");
}

TEST_F(ScrambledWrite, AFolderThatTakesNoFileIsNotTold)
{
    Ini ini(scrambledTool("a=1\n"), 7);
    const std::string before = content(L"tool7.ini");
    const RefusedCalls refused(SystemCall::create, EACCES);
    write(ini, L"a", L"2");
    EXPECT_GT(refused.count(), 0);
    EXPECT_EQ(content(L"tool7.ini"), before);
    EXPECT_EQ(ini.get(L"a"), L"1");
    EXPECT_EQ(folder.names(), "tool7.ini");
    expectSilence();
}

TEST_F(ScrambledWrite, ThatDoesNotGetItsNameIsReported)
{
    Ini ini(scrambledTool("a=1\n"), 7);
    const RefusedCalls refused(SystemCall::rename, EACCES);
    write(ini, L"a", L"2");
    EXPECT_EQ(printed(),
              "\nError in file xx_Inifile.cpp on line #\n(\nCannot write ~/tool7.ini, ec = 13)");
    EXPECT_EQ(ini.get(L"a"), L"1");
    EXPECT_EQ(folder.names(), "tool7.ini");
}

TEST_F(ScrambledWrite, OnAFullDiskIsReported)
{
    Ini ini(scrambledTool("a=1\n"), 7);
    const std::string before = content(L"tool7.ini");
    const RefusedCalls full(SystemCall::write, ENOSPC);
    write(ini, L"a", L"2");
    EXPECT_EQ(printed(),
              "\nError in file xx_Inifile.cpp on line #\n(\nCannot write ~/tool7.ini, ec = 28)");
    EXPECT_EQ(content(L"tool7.ini"), before);
    EXPECT_EQ(ini.get(L"a"), L"1");
    EXPECT_EQ(folder.names(), "tool7.ini");
}

TEST_F(ScrambledWrite, OfADrawingGoesUnderTheNameWithoutTheNumber)
{
    newDrawing();
    Ini ini(scrambledTool("a=1\n"), 7);
    write(ini, L"[C]a", L"2", 2);
    EXPECT_EQ(settingsOfDrawing(), L"TOOL.INI\n  C\n    a=2\n");
    EXPECT_EQ(ini.get(L"[C]a"), L"2");
    EXPECT_EQ(content(L"tool7.ini"), corma::scrambledForm("a=1\n", 7));
    expectSilence();
}

TEST_F(ScrambledWrite, OfADrawingTakesTheNumberOutOfTheNameWhereverItStands)
{
    newDrawing();
    folder.write(L"t7oo7l7.ini", corma::scrambledForm("a=1\n", 7));
    Ini ini(folder.path(L"t7oo7l.ini"), 7);
    write(ini, L"a", L"2", 2);
    EXPECT_EQ(settingsOfDrawing(), L"TOOL.INI\n  a=2\n");
}

// --- the drawing ---------------------------------------------------------------------------------

using WriteToDrawing = Write;

TEST_F(WriteToDrawing, LeavesTheFilesAlone)
{
    newDrawing();
    Ini ini(tool("a=1\n"));
    write(ini, L"a", L"2", 2, false);
    write(ini, L"[N]n", L"3", 2, false);
    EXPECT_EQ(settingsOfDrawing(), L"TOOL.INI\n  a=2\n  N\n    n=3\n")
        << "what is not there is added in any case";
    EXPECT_EQ(content(), "a=1\n");
    EXPECT_EQ(folder.names(), "tool.ini");
    EXPECT_EQ(ini.get(L"a"), L"2");
    EXPECT_TRUE(corma::isDocumentModified());
    expectSilence();
}

TEST_F(WriteToDrawing, WithoutOneIsTold)
{
    Ini ini(tool("a=1\n"));
    write(ini, L"[C]a", L"2", 2);
    EXPECT_EQ(printed(), "\n[C]a not stored: no drawing is open");
    EXPECT_EQ(content(), "a=1\n");
}

} // namespace
