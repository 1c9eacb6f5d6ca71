#include "host/host.h"
#include "inifile/drawing_settings.h"
#include "platform/text.h"
#include "settings/LevelsTest.h"
#include "settings/saving.h"
#include "settings/texts.h"
#include "support/RefusedCalls.h"
#include "support/random_choice.h"

#include <cerrno>
#include <random>

using corma::MessageIcon;
using corma::platform::SystemCall;
using corma::testing::below;
using corma::testing::filesIn;
using corma::testing::LevelsTest;
using corma::testing::Random;
using corma::testing::RefusedCalls;
using corma::testing::TempFolder;
using corma::testing::WriteWatch;

namespace {

using namespace std::string_literals;

/// What is to be written.
struct What
{
    const wchar_t* chapter = L"Algemeen";
    const wchar_t* ident = L"A";
    std::wstring value = L"2";
};

enum class Target
{
    global,
    project
};

bool save(const FileNameSet& names, const What& what, Target target = Target::global,
          bool mayAdd = true)
{
    Rubriek category(what.chapter);
    Instelling setting(what.ident, what.value.c_str());
    setting.setCategory(&category);
    return setting.writeToFile(names, target == Target::global, mayAdd);
}

class Saving : public LevelsTest
{
};

// --- targets -------------------------------------------------------------------------------------

TEST_F(Saving, GloballyChangesTheConfigurationFileAlone)
{
    writeIni("A=1\n[X]\nB=2\n");
    writeIpr("A=p\n");
    EXPECT_TRUE(save(where(), {L"X", L"B", L"3"}));
    EXPECT_EQ(ini(), "A=1\n[X]\nB=3\n");
    EXPECT_EQ(ipr(), "A=p\n");
    EXPECT_EQ(filesIn(folder), "cfg/tool.ini house/tool.ipr");
    EXPECT_EQ(boxes(), "");
    EXPECT_EQ(services.allPrinted(), L"");
}

TEST_F(Saving, InTheProjectChangesTheProjectFileAlone)
{
    writeIni("A=1\n");
    writeIpr("A=p\n");
    EXPECT_TRUE(save(where(), {}, Target::project));
    EXPECT_EQ(ini(), "A=1\n");
    EXPECT_EQ(ipr(), "A=2\n");
    EXPECT_EQ(filesIn(folder), "cfg/tool.ini house/tool.ipr");
    EXPECT_EQ(boxes(), "");
}

TEST_F(Saving, InTheProjectMakesAMissingFile)
{
    EXPECT_TRUE(save(where(), {L"X", L"B", L"3"}, Target::project));
    EXPECT_EQ(ipr(), "[X]\nB=3");
    EXPECT_TRUE(save(where(), {}, Target::project));
    EXPECT_EQ(ipr(), "A=2\n[X]\nB=3\n");
    EXPECT_EQ(filesIn(folder), "house/tool.ipr");
    EXPECT_EQ(boxes(), "");
}

TEST_F(Saving, InTheProjectMakesAMissingFileEvenWhenNothingMayBeAdded)
{
    EXPECT_TRUE(save(where(), {}, Target::project, false));
    EXPECT_EQ(filesIn(folder), "house/tool.ipr");
    EXPECT_EQ(ipr(), "");
}

TEST_F(Saving, WithoutAProjectFolderUsesTheGlobalOne)
{
    writeIni("A=1\n");
    EXPECT_TRUE(save(FileNameSet::of(folder.path(L"cfg/"), L"tool.ini", 9), {}, Target::project));
    EXPECT_EQ(ini(), "A=1\n");
    EXPECT_EQ(folder.read(L"cfg/tool.ipr"), "A=2\n");
}

TEST_F(Saving, WithoutLeaveToAddChangesOnlyWhatIsThere)
{
    writeIni("A=1\n[X]\nB=1");
    EXPECT_TRUE(save(where(), {L"X", L"C", L"2"}, Target::global, false));
    EXPECT_EQ(ini(), "A=1\n[X]\nB=1\n") << "each line has its end then";
    EXPECT_TRUE(save(where(), {L"X", L"B", L"2"}, Target::global, false));
    EXPECT_EQ(ini(), "A=1\n[X]\nB=2\n");
    EXPECT_TRUE(save(where(), {L"Y", L"B", L"3"}, Target::global, false));
    EXPECT_EQ(ini(), "A=1\n[X]\nB=2\n");
}

TEST_F(Saving, WithLeaveToAddIsWhatSavingDoes)
{
    writeIni("A=1\n");
    const Instelling setting(L"B", L"2");
    EXPECT_TRUE(setting.saveToFile(where(), true));
    EXPECT_EQ(ini(), "A=1\nB=2\n") << "a setting without a category is one of the head";
    EXPECT_TRUE(setting.saveToFile(where(), false));
    EXPECT_EQ(ipr(), "B=2\n");
}

TEST_F(Saving, TwiceChangesNothingMore)
{
    writeIni("A=1\n[X]\n");
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(save(where(), {L"X", L"B", L"3"}));
        EXPECT_EQ(ini(), "A=1\n[X]\nB=3\n");
    }
}

TEST_F(Saving, GathersTheNewContentInTheProjectFolder)
{
    writeIni("A=1\n");
    for (const Target target : {Target::global, Target::project}) {
        const WriteWatch watch(folder);
        EXPECT_TRUE(save(where(), {}, target));
        EXPECT_EQ(watch.files, "cfg/tool.ini house/dummy.tmp");
    }
    EXPECT_EQ(filesIn(folder), "cfg/tool.ini house/tool.ipr");
}

TEST_F(Saving, TakesTheNameOfATemporaryFileThatWasLeft)
{
    writeIni("A=1\n");
    folder.write(L"house/dummy.tmp", "left by another");
    EXPECT_TRUE(save(where(), {}));
    EXPECT_EQ(ini(), "A=2\n");
    EXPECT_EQ(filesIn(folder), "cfg/tool.ini");
}

TEST(SavingPaths, AreThoseOfTheNames)
{
    FileNameSet names = FileNameSet::of(L"/cfg/", L"tool.ini", 9);
    names.projectFolder = L"/house/";
    EXPECT_EQ(corma::pathOf(names, true), L"/cfg/tool.ini");
    EXPECT_EQ(corma::pathOf(names, false), L"/house/tool.ipr");
    EXPECT_EQ(corma::temporaryPath(names), L"/house/dummy.tmp");
}

// --- encodings -----------------------------------------------------------------------------------

struct EncodingRow
{
    const char* sentence;
    std::string before;
    std::wstring value; // of A in the head
    std::string after;
};

void PrintTo(const EncodingRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class SavingInto : public Saving, public ::testing::WithParamInterface<EncodingRow>
{
};

TEST_P(SavingInto, KeepsTheEncoding)
{
    writeIni(GetParam().before);
    EXPECT_TRUE(save(where(), {L"Algemeen", L"A", GetParam().value}));
    EXPECT_EQ(ini(), GetParam().after);
    EXPECT_EQ(boxes(), "");
}

INSTANTIATE_TEST_SUITE_P(
    Encodings, SavingInto,
    ::testing::Values(
        EncodingRow {"Ascii", "A=1\n;c\n", L"2", "A=2\n;c\n"},
        EncodingRow {"AsciiThatBecomesUtf8", "A=1\n;c\n", L"\xE9\x20AC",
                     "A=\xC3\xA9\xE2\x82\xAC\n;c\n"},
        EncodingRow {"Utf8", ";\xC3\xA9\nA=1\n", L"\x20AC", ";\xC3\xA9\nA=\xE2\x82\xAC\n"},
        EncodingRow {"Utf8ThatBecomesAscii", "A=\xC3\xA9\n", L"1", "A=1\n"},
        EncodingRow {"Utf8WithAMark",
                     "\xEF\xBB\xBF"
                     "A=1\r\nB=\xC3\xA9\r\n",
                     L"\xE8",
                     "\xEF\xBB\xBF"
                     "A=\xC3\xA8\r\nB=\xC3\xA9\r\n"},
        EncodingRow {"AMarkAlone", "\xEF\xBB\xBF", L"1",
                     "\xEF\xBB\xBF"
                     "A=1\n"},
        EncodingRow {"Utf16Little",
                     "\xFF\xFE"
                     "A\0=\0"
                     "1\0\r\0\n\0"
                     ";\0\xE9\0\r\0\n\0"s,
                     L"\x20AC",
                     "\xFF\xFE"
                     "A\0=\0\xAC\x20\r\0\n\0"
                     ";\0\xE9\0\r\0\n\0"s},
        EncodingRow {"Utf16Big",
                     "\xFE\xFF"
                     "\0A\0=\0"
                     "1\0\n"s,
                     L"\x20AC",
                     "\xFE\xFF"
                     "\0A\0=\x20\xAC\0\n"s},
        EncodingRow {"Utf16WithoutALastLineEnd",
                     "\xFF\xFE"
                     "A\0=\0"
                     "1\0"s,
                     L"2",
                     "\xFF\xFE"
                     "A\0=\0"
                     "2\0\n\0"s},
        EncodingRow {"Utf16OfTwoUnits",
                     "\xFE\xFF"
                     "\0A\0=\xD8\x3D\xDE\x00\0\n\0;\xD8\x3D\xDE\x01"s,
                     L"\U0001F602",
                     "\xFE\xFF"
                     "\0A\0=\xD8\x3D\xDE\x02\0\n\0;\xD8\x3D\xDE\x01\0\n"s},
        EncodingRow {"AMarkOfUtf16Alone", "\xFF\xFE", L"1",
                     "\xFF\xFE"
                     "A\0=\0"
                     "1\0\n\0"s},
        EncodingRow {"Windows1252", ";m\xB2\nA=1\n", L"\xE9\x20AC", ";m\xB2\nA=\xE9\x80\n"},
        EncodingRow {"Windows1252WithBytesThatItLeavesOpen", ";\x81\x8D\x8F\x90\x9D\nA=1\n", L"2",
                     ";\x81\x8D\x8F\x90\x9D\nA=2\n"},
        EncodingRow {"Windows1252ThatBecomesAscii", "A=\xB2\n", L"2", "A=2\n"},
        EncodingRow {"BrokenUtf8WithoutAMarkAsWindows1252", ";\xC3\xA9\xE9\nA=1\n", L"\xE8",
                     ";\xC3\xA9\xE9\nA=\xE8\n"},
        EncodingRow {"NothingAtAll", "", L"\xE9", "A=\xC3\xA9\n"}),
    [](const auto& row) { return row.param.sentence; });

// --- files that stay as they are -----------------------------------------------------------------

struct RefusalRow
{
    const char* sentence;
    std::string file;
    std::wstring value;
    std::string cause;
};

void PrintTo(const RefusalRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class SavingRefused : public Saving, public ::testing::WithParamInterface<RefusalRow>
{
};

TEST_P(SavingRefused, LeavesTheFileAndTellsWhy)
{
    for (const Target target : {Target::global, Target::project}) {
        services.boxes.clear();
        services.icons.clear();
        const bool isGlobal = target == Target::global;
        const wchar_t* const name = isGlobal ? L"cfg/tool.ini" : L"house/tool.ipr";
        folder.write(name, GetParam().file);
        EXPECT_FALSE(save(where(), {L"Algemeen", L"A", GetParam().value}, target));
        EXPECT_EQ(folder.read(name), GetParam().file);
        EXPECT_EQ(boxes(),
                  "~/" + corma::toUtf8(name) + " : " + GetParam().cause
                      + "\n~/cfg/tool.ini\nSetting was not written. \nCheck if ini-file is present "
                        "and \nif the file is not read-only\n");
        EXPECT_EQ(services.icons, std::vector(2, MessageIcon::stop));
        EXPECT_EQ(services.titles.back(), L"CfgDesk");
        folder.remove(name);
        EXPECT_EQ(filesIn(folder), "");
    }
    EXPECT_EQ(services.allPrinted(), L"");
}

INSTANTIATE_TEST_SUITE_P(
    AFile, SavingRefused,
    ::testing::Values(
        RefusalRow {"ThatIsNotTheUtf8OfItsMark",
                    "\xEF\xBB\xBF"
                    "A=1\n;\xE9\n",
                    L"2", "line 2 is no UTF-8, as its byte-order mark says"},
        RefusalRow {"ThatIsHalfACharacterOfUtf16",
                    "\xFF\xFE"
                    "A\0=\0"
                    "1"s,
                    L"2", "line 1 is no UTF-16, as its byte-order mark says"},
        RefusalRow {"ThatHasHalfASurrogatePair",
                    "\xFE\xFF"
                    "\0A\0=\0\n\0;\xD8\x3D\0\n"s,
                    L"2", "line 2 is no UTF-16, as its byte-order mark says"},
        RefusalRow {"WhoseEncodingLacksACharacter", ";m\xB2\nA=1\n", L"\x416",
                    "line 2 has a character that Windows-1252, the encoding of the file, does not "
                    "have"},
        RefusalRow {"WhoseEncodingHasNoCharactersOfTwoUnits", "A=\xB2\n", L"\U0001F602",
                    "line 1 has a character that Windows-1252, the encoding of the file, does not "
                    "have"},
        RefusalRow {"ThatWouldBeTakenForUtf8", ";\xC3\xA9\nA=\xB2\n", L"2",
                    "the file, which is in Windows-1252, would then be taken for UTF-8"}),
    [](const auto& row) { return row.param.sentence; });

// The two halves of a pair are only on their own what no file can hold.
TEST_F(Saving, AValueThatIsNoTextIsRefused)
{
    for (const std::wstring& value : {std::wstring(1, wchar_t {0xD83D}), L"a\xDE02"s}) {
        services.boxes.clear();
        writeIni("A=1\n");
        EXPECT_FALSE(save(where(), {L"Algemeen", L"A", value}));
        EXPECT_EQ(ini(), "A=1\n");
        EXPECT_EQ(boxes(),
                  "~/cfg/tool.ini : the setting has a character that no file can hold\n"
                  "~/cfg/tool.ini\nSetting was not written. \nCheck if ini-file is present and \n"
                  "if the file is not read-only\n");
    }
}

// --- messages ------------------------------------------------------------------------------------

struct Told
{
    int language;
    std::string notFound;
    std::string denied;
    std::string notWritten;
};

const Told kEnglish {9, "Ini-file not found: ", "Could not open file for write ",
                     "Setting was not written. \nCheck if ini-file is present and \nif the file is "
                     "not read-only"};
const Told kDutch {19, "Ini-bestand niet gevonden: ", "Kan bestand niet openen om te schrijven ",
                   "De instelling is niet weggeschreven. \nControleer of het ini-bestand aanwezig "
                   "is en \nof het niet alleen-lezen is"};

class SavingTells : public Saving, public ::testing::WithParamInterface<Told>
{
protected:
    void SetUp() override
    {
        Saving::SetUp();
        corma::setTextLanguage(GetParam().language);
    }

    /// The texts name the configuration file whatever the target was.
    static std::string notWritten() { return "~/cfg/tool.ini\n" + GetParam().notWritten + "\n"; }

    [[nodiscard]] std::string toldToStop()
    {
        EXPECT_EQ(services.icons, std::vector(services.boxes.size(), MessageIcon::stop));
        EXPECT_EQ(services.titles, std::vector<std::wstring>(services.boxes.size(), L"CfgDesk"));
        std::string text = boxes();
        services.boxes.clear();
        services.icons.clear();
        services.titles.clear();
        return text;
    }
};

TEST_P(SavingTells, OfAMissingConfigurationFile)
{
    EXPECT_FALSE(save(where(), {}));
    EXPECT_EQ(toldToStop(), "~/cfg/tool.ini : " + GetParam().notFound + "\n" + notWritten());
    EXPECT_EQ(filesIn(folder), "");
}

TEST_P(SavingTells, OfAMissingFolder)
{
    FileNameSet names = where();
    names.globalFolder = folder.path(L"none/");
    EXPECT_FALSE(save(names, {}));
    EXPECT_EQ(toldToStop(), "~/none/tool.ini\n" + GetParam().notWritten + "\n");
    names = where();
    names.projectFolder = folder.path(L"none/");
    EXPECT_FALSE(save(names, {}, Target::project));
    EXPECT_EQ(toldToStop(), notWritten());
    EXPECT_FALSE(folder.has(L"none"));
}

TEST_P(SavingTells, OfAFileThatMayNotBeWritten)
{
    writeIni("A=1\n");
    writeIpr("A=p\n");
    for (const Target target : {Target::global, Target::project}) {
        const RefusedCalls readOnly(SystemCall::openTarget, EACCES);
        EXPECT_FALSE(save(where(), {}, target));
        EXPECT_EQ(toldToStop(), "~/cfg/tool.ini : " + GetParam().denied + "\n" + notWritten());
    }
    EXPECT_EQ(ini(), "A=1\n");
    EXPECT_EQ(ipr(), "A=p\n");
    EXPECT_EQ(filesIn(folder), "cfg/tool.ini house/tool.ipr");
}

TEST_P(SavingTells, OfAFolderOfTheName)
{
    folder.makeFolder(L"cfg/tool.ini");
    EXPECT_FALSE(save(where(), {}));
    EXPECT_EQ(toldToStop(), "~/cfg/tool.ini : " + GetParam().denied + "\n" + notWritten());
}

TEST_P(SavingTells, OfATemporaryFileThatCannotBeMade)
{
    writeIni("A=1\n");
    const RefusedCalls readOnly(SystemCall::create, EACCES);
    EXPECT_FALSE(save(where(), {}));
    EXPECT_EQ(toldToStop(), "~/cfg/tool.ini : " + GetParam().denied + "\n" + notWritten());
    EXPECT_EQ(ini(), "A=1\n");
}

TEST_P(SavingTells, OfADiskThatIsFull)
{
    writeIni("A=1\n");
    for (const SystemCall call : {SystemCall::write, SystemCall::flush, SystemCall::create}) {
        const RefusedCalls full(call, ENOSPC);
        EXPECT_FALSE(save(where(), {}));
        EXPECT_EQ(toldToStop(), "~/cfg/tool.ini : the disk is full\n" + notWritten());
        EXPECT_FALSE(save(where(), {}, Target::project));
        EXPECT_EQ(toldToStop(), "~/house/tool.ipr : the disk is full\n" + notWritten());
        EXPECT_EQ(ini(), "A=1\n");
        EXPECT_EQ(filesIn(folder), "cfg/tool.ini");
    }
}

TEST_P(SavingTells, OfAFileThatAnotherProgramKeeps)
{
    writeIni("A=1\n");
    const RefusedCalls kept(SystemCall::openTarget, EWOULDBLOCK);
    for (const Target target : {Target::global, Target::project}) {
        EXPECT_FALSE(save(where(), {}, target));
        const std::string path = target == Target::global ? "~/cfg/tool.ini" : "~/house/tool.ipr";
        EXPECT_EQ(toldToStop(),
                  path + " : another program keeps it from being changed\n" + notWritten());
    }
    EXPECT_EQ(ini(), "A=1\n");
    EXPECT_EQ(filesIn(folder), "cfg/tool.ini");
}

TEST_P(SavingTells, OfAnyOtherErrorWithoutItsName)
{
    writeIni("A=1\n");
    const RefusedCalls broken(SystemCall::read, EIO);
    EXPECT_FALSE(save(where(), {}));
    EXPECT_EQ(toldToStop(), notWritten());
    EXPECT_EQ(ini(), "A=1\n");
}

INSTANTIATE_TEST_SUITE_P(Languages, SavingTells, ::testing::Values(kEnglish, kDutch),
                         [](const auto& row) {
                             return row.param.language == kDutch.language ? "Dutch" : "English";
                         });

TEST_F(Saving, ATemporaryFileThatDoesNotGetTheNameIsReportedInThreeLines)
{
    writeIni("A=1\n");
    const RefusedCalls busy(SystemCall::rename, EBUSY);
    EXPECT_FALSE(save(where(), {}));
    const std::string status = ", ec = " + std::to_string(EBUSY) + ")";
    EXPECT_EQ(homely(corma::toUtf8(services.allPrinted())),
              "\nError in file Instelling.cpp on line 388\n"
              "(unable to rename dummy.tmp to inifile"
                  + status + "\nError in file Instelling.cpp on line 389\n(  - ~/house/dummy.tmp"
                  + status + "\nError in file Instelling.cpp on line 390\n(  - ~/cfg/tool.ini"
                  + status);
    EXPECT_EQ(boxes(), "");
    EXPECT_EQ(ini(), "A=1\n");
    EXPECT_EQ(filesIn(folder), "cfg/tool.ini");
}

TEST_F(Saving, OfAProjectFileThatIsNotReported)
{
    writeIpr("A=p\n");
    const RefusedCalls busy(SystemCall::rename, EBUSY);
    EXPECT_FALSE(save(where(), {}, Target::project));
    EXPECT_EQ(services.allPrinted(), L"");
    EXPECT_EQ(boxes(), "");
    EXPECT_EQ(ipr(), "A=p\n");
    EXPECT_EQ(filesIn(folder), "house/tool.ipr");
}

// --- headers -------------------------------------------------------------------------------------

struct AddedHeaderRow
{
    const char* sentence;
    Target target;
    std::string before;
    std::string after;
};

void PrintTo(const AddedHeaderRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class AddedHeader : public Saving, public ::testing::WithParamInterface<AddedHeaderRow>
{
};

TEST_P(AddedHeader, StandsAtTheEndOfTheFile)
{
    const bool isGlobal = GetParam().target == Target::global;
    isGlobal ? writeIni(GetParam().before) : writeIpr(GetParam().before);
    EXPECT_FALSE(corma::addHeader(L"Zoë", where(), isGlobal).isOne());
    EXPECT_EQ(isGlobal ? ini() : ipr(), GetParam().after);
    EXPECT_EQ(filesIn(folder), isGlobal ? "cfg/tool.ini" : "house/tool.ipr");
    EXPECT_EQ(boxes(), "");
}

INSTANTIATE_TEST_SUITE_P(
    Saving, AddedHeader,
    ::testing::Values(AddedHeaderRow {"BehindAnEmptyLineInAConfigurationFile", Target::global,
                                      "A=1\n[X]\nB=2\n", "A=1\n[X]\nB=2\n\n[Zoë]\n"},
                      AddedHeaderRow {"OfAConfigurationFileWithAnOpenLastLine", Target::global,
                                      "A=1", "A=1\n[Zoë]\n"},
                      AddedHeaderRow {"OfAnEmptyConfigurationFile", Target::global, "",
                                      "\n[Zoë]\n"},
                      AddedHeaderRow {"WithTheLineEndsOfAConfigurationFile", Target::global,
                                      "A=1\r\nB=2\r\n", "A=1\r\nB=2\r\n\r\n[Zoë]\r\n"},
                      AddedHeaderRow {"InTheEncodingOfAConfigurationFile", Target::global,
                                      "\xFF\xFE"
                                      "A\0=\0\n\0"s,
                                      "\xFF\xFE"
                                      "A\0=\0\n\0\n\0[\0Z\0o\0\xEB\0]\0\n\0"s},
                      AddedHeaderRow {"InAProjectFile", Target::project, "A=1\n", "A=1\n[Zoë]\n"},
                      AddedHeaderRow {"OfAnEmptyProjectFile", Target::project, "", "[Zoë]\n"},
                      AddedHeaderRow {"OfAProjectFileWithAnOpenLastLine", Target::project,
                                      "[X]\nB=2", "[X]\nB=2\n[Zoë]\n"},
                      AddedHeaderRow {"WithTheLineEndsOfAProjectFile", Target::project, "A=1\r\n",
                                      "A=1\r\n[Zoë]\r\n"}),
    [](const auto& row) { return row.param.sentence; });

TEST_F(Saving, AddsNoHeaderToAFileThatIsNotThere)
{
    for (const bool isGlobal : {true, false}) {
        const corma::RewriteFailure failure = corma::addHeader(L"X", where(), isGlobal);
        EXPECT_EQ(failure.step, corma::RewriteFailure::Step::open);
        EXPECT_EQ(failure.error.cause, corma::platform::FileError::Cause::notFound);
        EXPECT_EQ(corma::describe(L"tool", failure), L"tool : No such file or directory");
    }
    EXPECT_EQ(filesIn(folder), "");
    EXPECT_EQ(boxes(), "");
}

TEST_F(Saving, LeavesAFileAsItIsWhenAHeaderCannotBeAdded)
{
    writeIni("A=1\n");
    EXPECT_EQ(corma::describe(L"tool", corma::addHeader(L"\xD800", where(), true)),
              L"tool : the setting has a character that no file can hold");
    for (const SystemCall call :
         {SystemCall::openTarget, SystemCall::create, SystemCall::write, SystemCall::rename}) {
        const RefusedCalls refused(call, EACCES);
        EXPECT_TRUE(corma::addHeader(L"X", where(), true).isOne());
        EXPECT_GT(refused.count(), 0);
    }
    EXPECT_EQ(ini(), "A=1\n");
    EXPECT_EQ(filesIn(folder), "cfg/tool.ini");
    EXPECT_EQ(boxes(), "");
}

// --- drawings ------------------------------------------------------------------------------------

class SavingInDrawings : public Saving
{
protected:
    void SetUp() override
    {
        Saving::SetUp();
        newDrawing();
    }
};

TEST_F(SavingInDrawings, StoresTheValueUnderTheIdent)
{
    Rubriek category(L"A=B/C");
    Instelling setting(L"Hoogte", L"2.5");
    setting.setCategory(&category);
    EXPECT_EQ(setting.writeToDrawing(nullptr, where()), Acad::eOk);
    EXPECT_EQ(drawing(),
              "XX_HEX_0x41003d0042002f004300/\nXX_HEX_0x41003d0042002f004300/Hoogte=2.5\n");
    setting.setValue(L"");
    EXPECT_EQ(setting.writeToDrawing(acdbHostApplicationServices()->workingDatabase(), where()),
              Acad::eOk);
    EXPECT_EQ(corma::readFromDrawing(L"tool.ini", L"A=B/C", L"Hoogte", nullptr), L"");
    EXPECT_EQ(filesIn(folder), "") << "files are not written";
}

TEST_F(SavingInDrawings, WithoutACategoryStoresInTheHead)
{
    const Instelling setting(L"Hoogte", L"1");
    EXPECT_EQ(setting.writeToDrawing(nullptr, where()), Acad::eOk);
    EXPECT_EQ(drawing(), "Hoogte=1\n");
    Rubriek head(L"Algemeen");
    Instelling other(L"Breedte", L"2");
    other.setCategory(&head);
    EXPECT_EQ(other.writeToDrawing(nullptr, where()), Acad::eOk);
    EXPECT_EQ(drawing(), "Breedte=2\nHoogte=1\n");
}

TEST_F(SavingInDrawings, OutlivesTheDocument)
{
    const Instelling setting(L"Hoogte", L"\xE9 \x20AC");
    ASSERT_EQ(setting.writeToDrawing(nullptr, where()), Acad::eOk);
    ASSERT_TRUE(corma::saveDocument());
    ASSERT_TRUE(corma::openDocument(folder.path(L"house/house.dxf").c_str()));
    EXPECT_EQ(drawing(), "Hoogte=\xC3\xA9 \xE2\x82\xAC\n");
}

TEST_F(SavingInDrawings, AProjectCopyIsWrittenIntoTheProjectAndTheRecordStays)
{
    writeIni("[X]\nA=G\n");
    store(L"X", L"A", L"D");
    const auto loaded = model();
    Instelling& setting = (*loaded)[1].settings()[0];
    setting.makeProjectCopy();
    EXPECT_TRUE(setting.saveToFile(where(), false));
    EXPECT_EQ(ini(), "[X]\nA=G\n");
    EXPECT_EQ(ipr(), "[X]\nA=D");
    EXPECT_EQ(drawing(), "X/\nX/A=D\n");
}

TEST_F(SavingInDrawings, ALocalCopyIsWrittenIntoTheDrawingAlone)
{
    writeIni("[X]\nA=G\n");
    writeIpr("[X]\nA=P\n");
    const auto loaded = model();
    Instelling& setting = (*loaded)[1].settings()[0];
    setting.makeLocalCopy();
    EXPECT_EQ(setting.writeToDrawing(nullptr, where()), Acad::eOk);
    EXPECT_EQ(ini(), "[X]\nA=G\n");
    EXPECT_EQ(ipr(), "[X]\nA=P\n");
    EXPECT_EQ(drawing(), "X/\nX/A=P\n");
}

TEST_F(SavingInDrawings, ThatCannotBeDoneTellsNothing)
{
    corma::closeDocument();
    const Instelling setting(L"Hoogte", L"1");
    EXPECT_EQ(setting.writeToDrawing(nullptr, where()), Acad::eKeyNotFound);
    EXPECT_EQ(boxes(), "");
    EXPECT_EQ(services.allPrinted(), L"");
}

TEST_F(Saving, TellsOfASettingThatIsNotStoredInTheDrawing)
{
    Rubriek category(L"X");
    Instelling setting(L"A", L"2");
    setting.setCategory(&category);
    EXPECT_FALSE(corma::saveToDrawing(setting, nullptr, where()));
    EXPECT_EQ(told(), "stop: A not stored in the drawing\n") << "there is none";
    newDrawing();
    EXPECT_TRUE(corma::saveToDrawing(setting, nullptr, where()));
    EXPECT_EQ(told(), "");
    EXPECT_EQ(drawing(), "X/\nX/A=2\n");
}

// --- random files --------------------------------------------------------------------------------

enum class Encoding
{
    ascii,
    utf8,
    utf8WithMark,
    utf16Little,
    utf16Big,
    windows1252
};

constexpr std::size_t kEncodings = 6;

void appendUnit(std::string& bytes, unsigned unit, Encoding encoding)
{
    const char high = static_cast<char>(unit >> 8U);
    const char low = static_cast<char>(unit & 0xFFU);
    const bool isLittle = encoding == Encoding::utf16Little;
    bytes += isLittle ? low : high;
    bytes += isLittle ? high : low;
}

/// The bytes of a text in an encoding, worked out here and not by what is tested.
std::string encoded(std::wstring_view text, Encoding encoding)
{
    std::string bytes;
    for (const wchar_t c : text) {
        const auto code = static_cast<unsigned>(c);
        switch (encoding) {
        case Encoding::ascii:
        case Encoding::utf8:
        case Encoding::utf8WithMark:
            bytes += corma::toUtf8(std::wstring(1, c));
            break;
        case Encoding::utf16Little:
        case Encoding::utf16Big:
            if (code > 0xFFFFU) {
                appendUnit(bytes, 0xD800U + ((code - 0x10000U) >> 10U), encoding);
                appendUnit(bytes, 0xDC00U + (code & 0x3FFU), encoding);
            } else {
                appendUnit(bytes, code, encoding);
            }
            break;
        case Encoding::windows1252:
            bytes += c == L'\x20AC' ? '\x80' : static_cast<char>(code);
            break;
        }
    }
    return bytes;
}

std::string markOf(Encoding encoding)
{
    switch (encoding) {
    case Encoding::utf8WithMark:
        return "\xEF\xBB\xBF";
    case Encoding::utf16Little:
        return "\xFF\xFE";
    case Encoding::utf16Big:
        return "\xFE\xFF";
    default:
        return {};
    }
}

struct Line
{
    std::wstring text;
    std::wstring end;
};

/// A file, and the value that is to be written: its line, or the place where it is to be added.
struct RandomFile
{
    Encoding encoding = Encoding::ascii;
    std::vector<Line> lines;
    std::wstring chapter;
    std::wstring ident;
    std::wstring value;
    std::size_t at = 0;
    bool isThere = false;
};

std::wstring randomWord(Random& random, Encoding encoding)
{
    static const std::wstring kAscii = L"aB =[];\r\t0";
    static const std::wstring kWestern = kAscii + L"\xE9\xDF\x20AC\xB2";
    static const std::wstring kAll = kWestern + L"\x416\x4E2D\U0001F602";
    const std::wstring& letters = encoding == Encoding::ascii ? kAscii
        : encoding == Encoding::windows1252                   ? kWestern
                                                              : kAll;
    std::wstring word;
    for (std::size_t left = below(random, 12); left > 0; --left) {
        word += letters[below(random, letters.size())];
    }
    return word + L"."; // so that it does not end in a carriage return
}

// Ends of one kind, or of both.
std::wstring randomEnd(Random& random, std::size_t kind)
{
    return kind == 0 || (kind == 2 && below(random, 2) == 0) ? L"\n" : L"\r\n";
}

std::wstring randomOther(Random& random, Encoding encoding)
{
    switch (below(random, 3)) {
    case 0:
        return L"";
    case 1:
        return L";" + randomWord(random, encoding);
    default:
        return L" " + randomWord(random, encoding);
    }
}

// Chapters of names of their own, each with settings of names of their own. The value of one of
// them is to be written, or the one that none has to one of the chapters.
RandomFile randomFile(Random& random)
{
    RandomFile file;
    file.encoding = static_cast<Encoding>(below(random, kEncodings));
    file.value = randomWord(random, file.encoding);
    const std::size_t kind = below(random, 3);
    const std::size_t chapters = 1 + below(random, 4);
    const std::size_t chosen = below(random, chapters);
    const std::size_t entry = below(random, 4); // the last one is not there
    const auto add = [&](const std::wstring& text) {
        file.lines.push_back({text, randomEnd(random, kind)});
    };
    // Without such a line a file in Windows-1252 is none.
    add(file.encoding == Encoding::windows1252 ? L";\xE9" : L";");
    for (std::size_t chapter = 0; chapter < chapters; ++chapter) {
        std::size_t header = 0;
        if (chapter > 0) {
            header = file.lines.size();
            add(L"[\x43" + std::to_wstring(chapter) + L"]" + randomOther(random, file.encoding));
        }
        for (std::size_t i = 0; i < 3; ++i) {
            add(randomOther(random, file.encoding));
            if (chapter == chosen && entry == i) {
                file.at = file.lines.size();
                file.isThere = true;
            }
            add(L"I" + std::to_wstring(i) + L"=" + randomWord(random, file.encoding));
        }
        if (chapter == chosen && entry == 3) {
            const bool isLast = chapter + 1 == chapters;
            file.at = isLast ? header + 1 : file.lines.size();
        }
    }
    file.chapter = chosen == 0 ? L"Algemeen" : L"C" + std::to_wstring(chosen);
    file.ident = L"I" + std::to_wstring(entry);
    if (below(random, 2) == 0) {
        file.lines.back().end.clear();
    }
    return file;
}

std::string bytesOf(const RandomFile& file, const std::vector<Line>& lines)
{
    std::string bytes = markOf(file.encoding);
    for (const Line& line : lines) {
        bytes += encoded(line.text + line.end, file.encoding);
    }
    return bytes;
}

std::string expectedOf(const RandomFile& file)
{
    std::vector<Line> lines = file.lines;
    const std::wstring entry = file.ident + L"=" + file.value;
    const std::wstring first = lines.front().end;
    if (lines.back().end.empty()) {
        lines.back().end = first;
    }
    if (file.isThere) {
        lines[file.at].text = entry;
    } else {
        lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(file.at), {entry, first});
    }
    return bytesOf(file, lines);
}

TEST_F(Saving, ChangesOneLineOfAnyFileAndNoOtherByte)
{
    constexpr int kFiles = 12000;
    const std::string memory = corma::testing::memoryFolder();
    const auto place
        = memory.empty() ? std::make_unique<TempFolder>() : std::make_unique<TempFolder>(memory);
    const FileNameSet names = FileNameSet::of(place->path(L""), L"tool.ini", 9);
    Random random(20261121);
    int replaced = 0;
    for (int i = 0; i < kFiles && !HasFailure(); ++i) {
        const RandomFile file = randomFile(random);
        const std::string before = bytesOf(file, file.lines);
        place->write(L"tool.ini", before);
        EXPECT_TRUE(save(names, {file.chapter.c_str(), file.ident.c_str(), file.value}));
        EXPECT_EQ(place->read(L"tool.ini"), expectedOf(file))
            << "of " << ::testing::PrintToString(before) << "\nwrite ["
            << corma::toUtf8(file.chapter) << "]" << corma::toUtf8(file.ident) << "="
            << corma::toUtf8(file.value);
        replaced += file.isThere ? 1 : 0;
    }
    EXPECT_GT(replaced, kFiles / 2);
    EXPECT_LT(replaced, kFiles);
    EXPECT_EQ(filesIn(*place), "tool.ini");
    EXPECT_EQ(boxes(), "");
}

} // namespace
