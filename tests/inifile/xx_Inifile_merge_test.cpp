#include "inifile/InifileTest.h"
#include "inifile/scrambling.h"
#include "platform/platform.h"
#include "platform/text.h"
#include "support/RefusedCalls.h"

#include <cerrno>

using corma::platform::SystemCall;
using corma::testing::CurrentFolder;
using corma::testing::Ini;
using corma::testing::InifileTest;
using corma::testing::RefusedCalls;
using namespace std::string_literals;

namespace {

class Merge : public InifileTest
{
protected:
    // All that was printed, with "~" in the place of the folder and "#" in that of line numbers of
    // sources.
    [[nodiscard]] std::string printed() const { return homely(services.allPrinted()); }

    [[nodiscard]] std::string homely(const std::wstring& wide) const
    {
        std::string text = folder.homely(wide);
        const std::string before = " on line ";
        for (std::size_t at = 0; (at = text.find(before, at)) != std::string::npos;) {
            at += before.size();
            text.replace(at, text.find('\n', at) - at, "#");
        }
        return text;
    }
};

// --- update --------------------------------------------------------------------------------------

class Update : public Merge
{
protected:
    int update(Ini& ini, std::wstring defaults = L"default.ini")
    {
        added = -1;
        return ini.file.update(path(std::move(defaults)).data(), &added);
    }

    int updateAndTell(Ini& ini, std::wstring defaults = L"default.ini")
    {
        return ini.file.update(path(std::move(defaults)).data());
    }

    std::wstring path(std::wstring name) const { return folder.path(name); }

    int added = -1;
};

TEST_F(Update, AddsWhatIsNewAndKeepsTheFormerFile)
{
    folder.write(L"default.ini", "a=0\nb=0\n[C]\nc=0\n");
    Ini ini(folder.write(L"tool.ini", "a=1\n"));
    EXPECT_EQ(update(ini), RTNORM);
    EXPECT_EQ(added, 3);
    EXPECT_EQ(folder.read(L"tool.ini"), "a=1\nb=0\n\n[C]\nc=0\n");
    EXPECT_EQ(folder.read(L"tool.ino"), "a=1\n");
    EXPECT_EQ(printed(), "\n\nOld version of file ~/tool.ini renamed to ~/tool.ino");
    EXPECT_EQ(folder.names(), "default.ini tool.ini tool.ino");
    EXPECT_TRUE(services.alerts.empty());
}

TEST_F(Update, TellsHowManyItemsAreNew)
{
    folder.write(L"default.ini", "[C]\nc=0\n");
    Ini ini(folder.write(L"tool.ini", "a=1\n"));
    EXPECT_EQ(updateAndTell(ini), RTNORM);
    EXPECT_EQ(printed(),
              "\n\nOld version of file ~/tool.ini renamed to ~/tool.ino"
              "\n2 new items added to ~/tool.ini\n");
}

TEST_F(Update, TellsThatACompleteFileIsOkAndMakesNoBackup)
{
    folder.write(L"default.ini", "a=0\n");
    Ini ini(folder.write(L"tool.ini", "a=1\tcomment\n[B]"));
    const auto before = corma::platform::fileStamp(corma::platform::toNative(path(L"tool.ini")));
    EXPECT_EQ(updateAndTell(ini), RTNORM);
    EXPECT_EQ(printed(), "\nFile ~/tool.ini is OK\n");
    EXPECT_EQ(update(ini), RTNORM);
    EXPECT_EQ(added, 0);
    EXPECT_EQ(corma::platform::fileStamp(corma::platform::toNative(path(L"tool.ini"))), before);
    EXPECT_EQ(folder.names(), "default.ini tool.ini");
    EXPECT_EQ(ini.get(L"a"), L"1");
}

TEST_F(Update, NeedsNoCounter)
{
    folder.write(L"default.ini", "b=0\n");
    Ini ini(folder.write(L"tool.ini", "a=1\n"));
    EXPECT_EQ(ini.file.update(path(L"default.ini").data(), nullptr), RTNORM);
    EXPECT_EQ(folder.read(L"tool.ini"), "b=0\na=1\n");
}

TEST_F(Update, ASecondTimeChangesNothing)
{
    folder.write(L"default.ini", "a=0\n[C]\nc=0\n");
    Ini ini(folder.write(L"tool.ini", ""));
    EXPECT_EQ(update(ini), RTNORM);
    const std::string once = folder.read(L"tool.ini");
    folder.write(L"tool.ino", "not touched");
    EXPECT_EQ(update(ini), RTNORM);
    EXPECT_EQ(added, 0);
    EXPECT_EQ(folder.read(L"tool.ini"), once);
    EXPECT_EQ(folder.read(L"tool.ino"), "not touched");
}

TEST_F(Update, TheObjectReadsTheNewFileAndWhatItIncludesNow)
{
    folder.write(L"part.ini", "p=part\n");
    folder.write(L"part.inp", "q=new\n");
    folder.write(L"default.ini", "#INCLUDE=part.ini\nb=0\n");
    IniBuffer buffer;
    Ini ini(folder.write(L"tool.ini", "a=1\n"), 0, &buffer);
    EXPECT_EQ(ini.get(L"a"), L"1");
    EXPECT_EQ(ini.get(L"p"), L"(none)");
    EXPECT_EQ(update(ini), RTNORM);
    EXPECT_EQ(ini.file.getIncludedFiles(), 1);
    EXPECT_EQ(std::wstring(ini.file.getFilename()), folder.path(L"tool.ini"));
    EXPECT_EQ(ini.get(L"p"), L"part");
    EXPECT_EQ(ini.get(L"b"), L"0");
    EXPECT_EQ(ini.get(L"a"), L"1");
    EXPECT_EQ(folder.read(L"part.ini"), "q=new\np=part\n") << "which is part of the tree now";
    EXPECT_EQ(added, 1);
}

struct Backup
{
    const char* sentence;
    const wchar_t* name;
    const wchar_t* backup;
};

class BackupName : public Update, public ::testing::WithParamInterface<Backup>
{
};

TEST_P(BackupName, IsMadeOfTheFiles)
{
    folder.write(L"default.cfg", "b=0\n");
    folder.write(GetParam().backup, "a former one");
    Ini ini(folder.write(GetParam().name, "a=1\n"));
    EXPECT_EQ(update(ini, L"default.cfg"), RTNORM);
    EXPECT_EQ(folder.read(GetParam().name), "b=0\na=1\n");
    EXPECT_EQ(folder.read(GetParam().backup), "a=1\n");
    EXPECT_EQ(printed(),
              "\n\nOld version of file ~/" + corma::toUtf8(GetParam().name) + " renamed to ~/"
                  + corma::toUtf8(GetParam().backup));
}

INSTANTIATE_TEST_SUITE_P(
    Update, BackupName,
    ::testing::Values(Backup {"EndsInAnO", L"tool.ini", L"tool.ino"},
                      Backup {"EndsInAnOInAnyCase", L"TOOL.INI", L"TOOL.INo"},
                      Backup {"HasOldBehindAnO", L"tool.o", L"tool.o old"},
                      Backup {"HasOldBehindAnUpperCaseO", L"TOOL.O", L"TOOL.O old"},
                      Backup {"NeedsNoExtension", L"tool", L"tooo"},
                      Backup {"MayBeThatOfAFormerBackup", L"tool.ino", L"tool.ino old"}),
    [](const auto& row) { return std::string(row.param.sentence); });

// --- encodings -----------------------------------------------------------------------------------

struct Encoding
{
    const char* sentence;
    std::string own;
    std::string defaults;
    std::string text;
};

class UpdatedEncoding : public Update, public ::testing::WithParamInterface<Encoding>
{
};

TEST_P(UpdatedEncoding, IsThatOfTheFile)
{
    folder.write(L"default.ini", GetParam().defaults);
    Ini ini(folder.write(L"tool.ini", GetParam().own));
    EXPECT_EQ(update(ini), RTNORM);
    EXPECT_EQ(folder.read(L"tool.ini"), GetParam().text);
    EXPECT_EQ(folder.read(L"tool.ino"), GetParam().own);
}

INSTANTIATE_TEST_SUITE_P(
    Update, UpdatedEncoding,
    ::testing::Values(
        Encoding {"Windows1252", "\xE9=1\n", "é=0\nè=€\n", "\xE9=1\n\xE8=\x80\n"},
        Encoding {"Utf8", "é=1\n", "\xE9=0\n\xE8=1\n", "é=1\nè=1\n"},
        Encoding {"Utf8WithItsMark",
                  "\xEF\xBB\xBF"
                  "a=1\n",
                  "a=0\nb=Ł\n",
                  "\xEF\xBB\xBF"
                  "a=1\nb=Ł\n"},
        Encoding {"Utf16",
                  "\xFF\xFE"
                  "a\0=\0\n\0"s,
                  "a=0\n[B]\nb=€\n",
                  "\xFF\xFE"
                  "a\0=\0\n\0\n\0[\0B\0]\0\n\0b\0=\0\xAC\x20\n\0"s},
        Encoding {"AsciiThatBecomesUtf8", "a=1\n", "a=0\nb=Ł\n", "a=1\nb=Ł\n"},
        Encoding {"LineEndsOfTwoCharacters", "a=1\r\n[B]\r\nb=1\r\n", "a=0\nc=0\n[D]\nd=0",
                  "a=1\r\nc=0\r\n\r\n[B]\r\nb=1\r\n\r\n[D]\r\nd=0\r\n"},
        Encoding {"LineEndsOfOneCharacter", "a=1\n", "a=0\r\nc=0\r\n", "a=1\nc=0\n"},
        Encoding {"TheLineEndOfTheFirstLine", "a=1\nb=1\r\n", "a=0\r\nc=0\r\n", "a=1\nc=0\nb=1\n"},
        Encoding {"NoneForAnEmptyFile", "", "é=0\r\n", "é=0\n"}),
    [](const auto& row) { return std::string(row.param.sentence); });

// --- update that fails ---------------------------------------------------------------------------

class UpdateFails : public Update
{
protected:
    // The file is whole and alone, and the object reads it.
    void expectAsBefore(Ini& ini, const std::string& former, const char* others = "default.ini ")
    {
        EXPECT_EQ(added, -1) << "the counter is not touched";
        EXPECT_EQ(folder.read(L"tool.ini"), former);
        EXPECT_EQ(folder.names(), std::string(others) + "tool.ini");
        EXPECT_EQ(ini.get(L"a"), L"1");
        EXPECT_TRUE(services.alerts.empty());
    }
};

TEST_F(UpdateFails, WithoutAFileOfDefaults)
{
    Ini ini(folder.write(L"tool.ini", "a=1\n"));
    EXPECT_EQ(update(ini), RTCAN);
    EXPECT_EQ(printed(),
              "\nError in file xx_Inifile.cpp on line #\n"
              "(Inifile \"~/default.ini\" not found , ec = 0)");
    expectAsBefore(ini, "a=1\n", "");
    services.printed.clear();
    EXPECT_EQ(updateAndTell(ini, L"tool.inp"), RTCAN);
    EXPECT_EQ(printed(),
              "\nError in file xx_Inifile.cpp on line #\n"
              "(.inp file \"~/tool.inp\" not found , ec = 0)");
}

TEST_F(UpdateFails, WithoutAFileOfItsOwn)
{
    folder.write(L"default.ini", "a=0\n");
    Ini ini(folder.path(L"tool.ini"));
    services.printed.clear();
    EXPECT_EQ(update(ini), RTCAN);
    EXPECT_EQ(printed(), "");
    EXPECT_EQ(folder.names(), "default.ini");
}

TEST_F(UpdateFails, ForAScrambledFile)
{
    folder.write(L"default.ini", "b=0\n");
    const std::string form = corma::scrambledForm("a=1\n", 7);
    Ini ini(folder.write(L"tool.ini", form), 7);
    EXPECT_EQ(update(ini), RTCAN);
    EXPECT_EQ(printed(), "\nNot supported for use with ~/tool.ini");
    expectAsBefore(ini, form);
}

TEST_F(UpdateFails, ForDefaultsThatAreNotWhatTheirMarkSays)
{
    folder.write(L"default.ini",
                 "\xEF\xBB\xBF"
                 "b=\xE9\n");
    Ini ini(folder.write(L"tool.ini", "a=1\n"));
    EXPECT_EQ(updateAndTell(ini), RTCAN);
    EXPECT_EQ(
        printed(),
        "\n\nFile ~/tool.ini is not changed: line 1 is no UTF-8, as its byte-order mark says");
    expectAsBefore(ini, "a=1\n");
}

TEST_F(UpdateFails, ForAFileThatIsNotWhatItsMarkSays)
{
    folder.write(L"default.ini", "b=0\n");
    const std::string own = "\xEF\xBB\xBF"
                            "a=1\nc=\xE9\n";
    Ini ini(folder.write(L"tool.ini", own));
    EXPECT_EQ(updateAndTell(ini), RTCAN);
    EXPECT_EQ(
        printed(),
        "\n\nFile ~/tool.ini is not changed: line 2 is no UTF-8, as its byte-order mark says");
    expectAsBefore(ini, own);
}

TEST_F(UpdateFails, ForACharacterThatTheFileCannotHold)
{
    folder.write(L"default.ini", "a=0\nb=\xC5\x81\n");
    Ini ini(folder.write(L"tool.ini", "a=1\n\xE9=1\n"));
    EXPECT_EQ(update(ini), RTCAN);
    EXPECT_EQ(printed(),
              "\n\nFile ~/tool.ini is not changed: line 2 has a character that Windows-1252, the "
              "encoding of the file, does not have");
    expectAsBefore(ini, "a=1\n\xE9=1\n");
}

TEST_F(UpdateFails, ForAFullDisk)
{
    folder.write(L"default.ini", "b=0\n");
    Ini ini(folder.write(L"tool.ini", "a=1\n"));
    const RefusedCalls full(SystemCall::write, ENOSPC);
    EXPECT_EQ(update(ini), RTCAN);
    EXPECT_EQ(printed(), "\n\nFile ~/tool.ini is not changed: No space left on device");
    expectAsBefore(ini, "a=1\n");
}

class UpdateAborts : public UpdateFails, public ::testing::WithParamInterface<SystemCall>
{
};

TEST_P(UpdateAborts, WhenTheFormerFileCannotGetItsOtherName)
{
    folder.write(L"default.ini", "b=0\n");
    Ini ini(folder.write(L"tool.ini", "a=1\n"));
    {
        const RefusedCalls refused(GetParam(), EACCES);
        EXPECT_EQ(updateAndTell(ini), RTCAN);
    }
    const std::string text = "Could not rename ~/tool.ini into ~/tool.ino (Aborting)";
    EXPECT_EQ(printed(), "\n\n\n" + text);
    ASSERT_EQ(services.alerts.size(), 1U);
    EXPECT_EQ(homely(services.alerts.front()), text);
    EXPECT_EQ(folder.read(L"tool.ini"), "a=1\n");
    EXPECT_EQ(folder.names(), "default.ini tool.ini");
    EXPECT_EQ(ini.get(L"a"), L"(none)") << "the object is without its file";
    EXPECT_EQ(Ini(folder.path(L"tool.ini")).get(L"a"), L"1");
}

INSTANTIATE_TEST_SUITE_P(Update, UpdateAborts,
                         ::testing::Values(SystemCall::openTarget, SystemCall::create,
                                           SystemCall::rename),
                         [](const auto& row) { return std::string(nameOf(row.param)); });

TEST_F(UpdateFails, WhenAFolderHasTheNameOfTheBackup)
{
    folder.write(L"default.ini", "b=0\n");
    folder.write(L"tool.ino/in the way", "");
    Ini ini(folder.write(L"tool.ini", "a=1\n"));
    EXPECT_EQ(update(ini), RTCAN);
    EXPECT_EQ(printed(), "\n\n\nCould not rename ~/tool.ini into ~/tool.ino (Aborting)");
    EXPECT_EQ(folder.read(L"tool.ini"), "a=1\n");
    EXPECT_EQ(folder.names(), "default.ini tool.ini tool.ino");
}

TEST_F(Update, ACompleteFileThatMayNotBeWrittenIsOk)
{
    folder.write(L"default.ini", "a=0\n");
    Ini ini(folder.write(L"tool.ini", "a=1\n"));
    const RefusedCalls refused(SystemCall::openTarget, EACCES);
    EXPECT_EQ(updateAndTell(ini), RTNORM);
    EXPECT_EQ(printed(), "\nFile ~/tool.ini is OK\n");
    EXPECT_EQ(ini.get(L"a"), L"1");
    EXPECT_TRUE(services.alerts.empty());
}

// --- update of included files --------------------------------------------------------------------

class UpdateTree : public Update
{
};

TEST_F(UpdateTree, GoesThroughAllFilesThatHaveDefaultsAndCountsTheLast)
{
    folder.write(L"one.ini", "a=1\n#INCLUDE=deep.ini\n");
    folder.write(L"one.inp", "b=0\n");
    folder.write(L"deep.ini", "a=1\n");
    folder.write(L"deep.inp", "b=0\nc=0\nd=0\n");
    folder.write(L"two.ini", "a=1\n");
    folder.write(L"three.ini", "a=1\n");
    folder.write(L"three.inp", "a=0\nb=0\n[C]\nc=0\nd=0\n");
    folder.write(L"default.ini", "#INCLUDE=one.ini\nown=0\n");
    Ini ini(folder.write(L"tool.ini", "#INCLUDE=one.ini,two.ini,one.ini,three.ini\n"));
    EXPECT_EQ(updateAndTell(ini), RTNORM);
    EXPECT_EQ(folder.read(L"tool.ini"), "#INCLUDE=one.ini,two.ini,one.ini,three.ini\nown=0\n");
    EXPECT_EQ(folder.read(L"one.ini"), "b=0\na=1\n#INCLUDE=deep.ini\n");
    EXPECT_EQ(folder.read(L"deep.ini"), "b=0\nc=0\nd=0\na=1\n");
    EXPECT_EQ(folder.read(L"two.ini"), "a=1\n");
    EXPECT_EQ(folder.read(L"three.ini"), "a=1\nb=0\n\n[C]\nc=0\nd=0\n");
    EXPECT_EQ(printed(),
              "\n\nOld version of file ~/tool.ini renamed to ~/tool.ino"
              "\n\nOld version of file ~/one.ini renamed to ~/one.ino"
              "\n\nOld version of file ~/deep.ini renamed to ~/deep.ino"
              "\n\nOld version of file ~/three.ini renamed to ~/three.ino"
              "\n4 new items added to ~/tool.ini\n");
    EXPECT_EQ(ini.get(L"[C]d"), L"0");
    EXPECT_EQ(ini.get(L"own"), L"0");
}

TEST_F(UpdateTree, TellsThatAFileIsOkWhenTheLastOneIs)
{
    folder.write(L"part.ini", "a=1\n");
    folder.write(L"part.inp", "a=0\n");
    folder.write(L"default.ini", "b=0\n");
    Ini ini(folder.write(L"tool.ini", "#INCLUDE=part.ini\n"));
    EXPECT_EQ(updateAndTell(ini), RTNORM);
    EXPECT_EQ(folder.read(L"tool.ini"), "b=0\n#INCLUDE=part.ini\n");
    EXPECT_EQ(printed(),
              "\n\nOld version of file ~/tool.ini renamed to ~/tool.ino"
              "\nFile ~/tool.ini is OK\n");
}

TEST_F(UpdateTree, TheCountIsThatOfTheFileItselfWhereNoIncludedFileHasDefaults)
{
    folder.write(L"part.ini", "a=1\n");
    folder.write(L"default.ini", "b=0\n");
    Ini ini(folder.write(L"tool.ini", "#INCLUDE=part.ini\n"));
    EXPECT_EQ(update(ini), RTNORM);
    EXPECT_EQ(added, 1);
}

TEST_F(UpdateTree, GoesOnWhenTheFileItselfFailed)
{
    folder.write(L"part.ini", "a=1\n");
    folder.write(L"part.inp", "b=0\nc=0\n");
    Ini ini(folder.write(L"tool.ini", "#INCLUDE=part.ini\n"));
    EXPECT_EQ(update(ini), RTCAN);
    EXPECT_EQ(added, 2);
    EXPECT_EQ(folder.read(L"part.ini"), "b=0\nc=0\na=1\n");
    EXPECT_EQ(folder.read(L"tool.ini"), "#INCLUDE=part.ini\n");
}

TEST_F(UpdateTree, GoesOnWhenTheFileIsLostToTheObject)
{
    folder.write(L"default.ini", "b=0\n");
    folder.write(L"tool.ino/in the way", "");
    folder.write(L"part.ini", "a=1\n");
    folder.write(L"part.inp", "b=0\n");
    Ini ini(folder.write(L"tool.ini", "#INCLUDE=part.ini\n"));
    EXPECT_EQ(update(ini), RTCAN);
    EXPECT_EQ(added, 1);
    EXPECT_EQ(folder.read(L"part.ini"), "b=0\na=1\n");
    EXPECT_EQ(ini.get(L"a"), L"1");
}

TEST_F(UpdateTree, TheStatusOfAnIncludedFileThatFailsIsTheResult)
{
    folder.write(L"one.ini", "a=1\n");
    folder.write(L"one.inp",
                 "\xFF\xFE"
                 "b");
    folder.write(L"two.ini", "a=1\n");
    folder.write(L"two.inp", "b=0\n");
    folder.write(L"default.ini", "b=0\n");
    Ini ini(folder.write(L"tool.ini", "#INCLUDE=one.ini,two.ini\n"));
    EXPECT_EQ(updateAndTell(ini), RTCAN);
    EXPECT_EQ(folder.read(L"one.ini"), "a=1\n");
    EXPECT_EQ(folder.read(L"two.ini"), "b=0\na=1\n");
    EXPECT_EQ(printed(),
              "\n\nOld version of file ~/tool.ini renamed to ~/tool.ino"
              "\n\nFile ~/one.ini is not changed: line 1 is no UTF-16, as its byte-order mark says"
              "\n\nOld version of file ~/two.ini renamed to ~/two.ino");
}

TEST_F(UpdateTree, RefusesEachScrambledFileThatHasDefaults)
{
    folder.write(L"part.ini", corma::scrambledForm("a=1\n", 7));
    folder.write(L"part.inp", "b=0\n");
    folder.write(L"default.ini", "b=0\n");
    Ini ini(folder.write(L"tool.ini", corma::scrambledForm("#INCLUDE=part.ini\n", 7)), 7);
    EXPECT_EQ(update(ini), RTCAN);
    EXPECT_EQ(printed(),
              "\nNot supported for use with ~/tool.ini\nNot supported for use with ~/part.ini");
    EXPECT_EQ(ini.get(L"a"), L"1");
}

// --- replaceNew ----------------------------------------------------------------------------------

class ReplaceNew : public Merge
{
protected:
    int replace(Ini& ini, const wchar_t* name = L"new.ini")
    {
        return ini.file.replaceNew(folder.path(name).c_str());
    }

    // Tells a file that was written from one that was not.
    [[nodiscard]] std::uint64_t identity(const wchar_t* name) const
    {
        return corma::platform::fileStamp(corma::platform::toNative(folder.path(name)))->file;
    }
};

TEST_F(ReplaceNew, TakesNewValuesAndAddsNothing)
{
    folder.write(L"new.ini", "a=2\nb=2\n[C]\nc=2\nd=2\n[E]\ne=2\n");
    Ini ini(folder.write(L"tool.ini", "a=1\n; mine\n\n[C]\nc=1\n x=1\n"));
    EXPECT_EQ(replace(ini), RTNORM);
    EXPECT_EQ(folder.read(L"tool.ini"), "a=2\n; mine\n\n[C]\nc=2\n x=1\n");
    EXPECT_EQ(ini.get(L"a"), L"2");
    EXPECT_EQ(ini.get(L"[C]c"), L"2");
    EXPECT_EQ(printed(), "");
    EXPECT_EQ(folder.names(), "new.ini tool.ini") << "there is no backup";
}

TEST_F(ReplaceNew, IsReplace)
{
    folder.write(L"new.ini", "a=2\n");
    Ini ini(folder.write(L"tool.ini", "a=1\n"));
    EXPECT_EQ(ini.file.replace(folder.path(L"new.ini").c_str()), RTNORM);
    EXPECT_EQ(folder.read(L"tool.ini"), "a=2\n");
}

TEST_F(ReplaceNew, WritesTheFileAlsoWhenNoValueIsAnother)
{
    folder.write(L"new.ini", "a=1\n");
    Ini ini(folder.write(L"tool.ini", "a=1\n"));
    const auto before = identity(L"tool.ini");
    EXPECT_EQ(replace(ini), RTNORM);
    EXPECT_NE(identity(L"tool.ini"), before);
    EXPECT_EQ(folder.read(L"tool.ini"), "a=1\n");
}

TEST_F(ReplaceNew, EndsTheLastLine)
{
    folder.write(L"new.ini", "a=2");
    Ini ini(folder.write(L"tool.ini", "b=1\r\na=1"));
    EXPECT_EQ(replace(ini), RTNORM);
    EXPECT_EQ(folder.read(L"tool.ini"), "b=1\r\na=2\r\n");
    Ini twice(folder.write(L"twice.ini", "[B]\n[B]"));
    EXPECT_EQ(replace(twice), RTNORM);
    EXPECT_EQ(folder.read(L"twice.ini"), "[B]\n") << "the last line is left out";
    Ini empty(folder.write(L"empty.ini", ""));
    EXPECT_EQ(replace(empty), RTNORM);
    EXPECT_EQ(folder.read(L"empty.ini"), "");
}

TEST_F(ReplaceNew, LeavesNoFormerValueInTheCache)
{
    folder.write(L"new.ini", "a=2\n[B]\nb=2\n");
    IniBuffer buffer;
    Ini ini(folder.write(L"tool.ini", "a=1\n[B]\nb=1\n"), 0, &buffer);
    EXPECT_EQ(ini.get(L"a"), L"1");
    EXPECT_EQ(ini.get(L"[B]b"), L"1");
    EXPECT_EQ(replace(ini), RTNORM);
    EXPECT_EQ(ini.get(L"a"), L"2");
    EXPECT_EQ(ini.get(L"[B]b"), L"2");
}

TEST_F(ReplaceNew, KeepsTheEncodingOfTheFile)
{
    folder.write(L"new.ini", "\xEF\xBB\xBFé=€\n");
    Ini narrow(folder.write(L"narrow.ini", "\xE9=1\r\n"));
    EXPECT_EQ(replace(narrow), RTNORM);
    EXPECT_EQ(folder.read(L"narrow.ini"), "\xE9=\x80\r\n");
    Ini wide(folder.write(L"wide.ini",
                          "\xFE\xFF\0\xE9\0=\0"
                          "1\0\n"s));
    EXPECT_EQ(replace(wide), RTNORM);
    EXPECT_EQ(folder.read(L"wide.ini"), "\xFE\xFF\0\xE9\0=\x20\xAC\0\n"s);
}

TEST_F(ReplaceNew, RefusesACharacterThatTheFileCannotHold)
{
    folder.write(L"new.ini", "a=\xC5\x81\n");
    Ini ini(folder.write(L"tool.ini", "\xE9=1\na=1\n"));
    EXPECT_EQ(replace(ini), RTERROR);
    EXPECT_EQ(folder.read(L"tool.ini"), "\xE9=1\na=1\n");
    EXPECT_EQ(printed(),
              "\n\nFile ~/tool.ini is not changed: line 2 has a character that Windows-1252, the "
              "encoding of the file, does not have");
    EXPECT_EQ(ini.get(L"a"), L"1");
    EXPECT_EQ(folder.names(), "new.ini tool.ini");
}

TEST_F(ReplaceNew, OfAFileThatIsNotFoundDoesNothing)
{
    folder.write(L"part.ini", "a=1\n");
    folder.write(L"part.irp", "a=2\n");
    Ini ini(folder.write(L"tool.ini", "#INCLUDE=part.ini\n"));
    const auto before = identity(L"tool.ini");
    EXPECT_EQ(replace(ini), RTERROR);
    EXPECT_EQ(identity(L"tool.ini"), before);
    EXPECT_EQ(folder.read(L"part.ini"), "a=1\n");
    EXPECT_EQ(ini.get(L"a"), L"1");
    EXPECT_EQ(printed(), "");
}

TEST_F(ReplaceNew, ReadsTheNewFileByTheNameAsItWasPassed)
{
    services.variables[L"ACAD"] = folder.makeFolder(L"support");
    folder.write(L"support/new.irp", "a=2\n");
    const CurrentFolder here(folder.makeFolder(L"here"));
    Ini ini(folder.write(L"tool.ini", "a=1"));
    EXPECT_EQ(ini.file.replaceNew(L"new.irp"), RTNORM) << "it is found on the support path";
    EXPECT_EQ(printed(),
              "\nError in file xx_Inifile.cpp on line #\n"
              "(Unable to read the file 'new.irp' (osError=2, cause=2)\n"
              "Detail: No such file or directory, ec = 2)");
    EXPECT_EQ(folder.read(L"tool.ini"), "a=1\n") << "the file is written all the same";
    folder.write(L"here/new.irp", "a=3\n");
    EXPECT_EQ(ini.file.replaceNew(L"new.irp"), RTNORM);
    EXPECT_EQ(ini.get(L"a"), L"3");
}

TEST_F(ReplaceNew, OfAFileThatIsNotWhatItsMarkSaysHasNoValues)
{
    folder.write(L"new.ini",
                 "\xEF\xBB\xBF"
                 "a=2\nb=\xE9\n");
    Ini ini(folder.write(L"tool.ini", "a=1\n"));
    EXPECT_EQ(replace(ini), RTNORM);
    EXPECT_EQ(printed(),
              "\nError in file xx_Inifile.cpp on line #\n"
              "(Unable to read the file '~/new.ini' (osError=0, cause=0)\n"
              "Detail: line 2 is no UTF-8, as its byte-order mark says, ec = 0)");
    EXPECT_EQ(folder.read(L"tool.ini"), "a=1\n");
}

TEST_F(ReplaceNew, OfAFileOfItsOwnThatIsNotWhatItsMarkSaysIsAnError)
{
    folder.write(L"new.ini", "a=2\n");
    const std::string own = "\xEF\xBB\xBF"
                            "a=1\nb=\xE9\n";
    Ini ini(folder.write(L"tool.ini", own));
    EXPECT_EQ(replace(ini), RTERROR);
    EXPECT_EQ(printed(),
              "\nError in file xx_Inifile.cpp on line #\n"
              "(Unable to read the file '~/tool.ini' (osError=0, cause=0)\n"
              "Detail: line 2 is no UTF-8, as its byte-order mark says, ec = 0)");
    EXPECT_EQ(folder.read(L"tool.ini"), own);
    EXPECT_EQ(ini.get(L"a"), L"1");
}

TEST_F(ReplaceNew, WithoutItsFileIsAnErrorAndMakesNone)
{
    folder.write(L"new.ini", "a=2\n");
    Ini ini(folder.write(L"tool.ini", "a=1\n"));
    folder.remove(L"tool.ini");
    EXPECT_EQ(replace(ini), RTERROR);
    EXPECT_EQ(printed(),
              "\nError in file xx_Inifile.cpp on line #\n"
              "(Unable to read the file '~/tool.ini' (osError=2, cause=2)\n"
              "Detail: No such file or directory, ec = 2)");
    EXPECT_EQ(folder.names(), "new.ini");
}

TEST_F(ReplaceNew, OfAFileThatMayNotBeWrittenIsAnError)
{
    folder.write(L"new.ini", "a=2\n");
    Ini ini(folder.write(L"tool.ini", "a=1\n"));
    const RefusedCalls refused(SystemCall::openTarget, EACCES);
    EXPECT_EQ(replace(ini), RTERROR);
    EXPECT_EQ(printed(),
              "\nError in file xx_Inifile.cpp on line #\n"
              "(Unable to read the file '~/tool.ini' (osError=13, cause=5)\n"
              "Detail: Permission denied, ec = 13)");
    EXPECT_EQ(folder.read(L"tool.ini"), "a=1\n");
    EXPECT_EQ(ini.get(L"a"), L"1");
}

TEST_F(ReplaceNew, OnAFullDiskChangesNothing)
{
    folder.write(L"new.ini", "a=2\n");
    Ini ini(folder.write(L"tool.ini", "a=1\n"));
    const RefusedCalls full(SystemCall::write, ENOSPC);
    EXPECT_EQ(replace(ini), RTERROR);
    EXPECT_EQ(printed(), "\n\nFile ~/tool.ini is not changed: No space left on device");
    EXPECT_EQ(folder.read(L"tool.ini"), "a=1\n");
    EXPECT_EQ(ini.get(L"a"), L"1");
    EXPECT_EQ(folder.names(), "new.ini tool.ini");
}

TEST_F(ReplaceNew, GoesThroughIncludedFilesThatHaveNewValues)
{
    folder.write(L"one.ini", "#INCLUDE=deep.ini\na=1\n");
    folder.write(L"one.irp", "a=2\n");
    folder.write(L"deep.ini", "b=1\n");
    folder.write(L"deep.irp", "b=2\n");
    folder.write(L"two.ini", "c=1\n");
    folder.write(L"two.inp", "c=2\n");
    folder.write(L"new.ini", "a=3\nb=3\nc=3\nd=3\n");
    Ini ini(folder.write(L"tool.ini", "#INCLUDE=one.ini,two.ini,one.ini\nd=1\n"));
    EXPECT_EQ(replace(ini), RTNORM);
    EXPECT_EQ(folder.read(L"tool.ini"), "#INCLUDE=one.ini,two.ini,one.ini\nd=3\n");
    EXPECT_EQ(folder.read(L"one.ini"), "#INCLUDE=deep.ini\na=2\n");
    EXPECT_EQ(folder.read(L"deep.ini"), "b=2\n");
    EXPECT_EQ(folder.read(L"two.ini"), "c=1\n");
    EXPECT_EQ(ini.get(L"a"), L"2");
    EXPECT_EQ(ini.get(L"b"), L"2");
}

TEST_F(ReplaceNew, TheStatusOfAnIncludedFileThatFailsIsTheResult)
{
    folder.write(L"one.ini", "\xE9=1\na=1\n");
    folder.write(L"one.irp", "a=\xC5\x81\n");
    folder.write(L"two.ini", "b=1\n");
    folder.write(L"two.irp", "b=2\n");
    folder.write(L"new.ini", "c=2\n");
    Ini ini(folder.write(L"tool.ini", "#INCLUDE=one.ini,two.ini\nc=1\n"));
    EXPECT_EQ(replace(ini), RTERROR);
    EXPECT_EQ(ini.get(L"a"), L"1");
    EXPECT_EQ(ini.get(L"b"), L"2");
    EXPECT_EQ(ini.get(L"c"), L"2");
}

TEST_F(ReplaceNew, GoesOnWhenTheFileItselfFailed)
{
    folder.write(L"part.ini", "b=1\n");
    folder.write(L"part.irp", "b=2\n");
    folder.write(L"new.ini", "a=\xC5\x81\n");
    Ini ini(folder.write(L"tool.ini", "#INCLUDE=part.ini\n\xE9=1\na=1\n"));
    EXPECT_EQ(replace(ini), RTERROR);
    EXPECT_EQ(ini.get(L"a"), L"1");
    EXPECT_EQ(ini.get(L"b"), L"2");
}

TEST_F(ReplaceNew, ReadsAScrambledFileAsItStands)
{
    const std::string form = corma::scrambledForm("a=1\n[B]\nb=1\n", 7);
    folder.write(L"new.ini", "a=2\n[B]\nb=2\n");
    Ini ini(folder.write(L"tool.ini", form), 7);
    EXPECT_EQ(replace(ini), RTNORM);
    EXPECT_EQ(folder.read(L"tool.ini"), form) << "its idents are not those of the new file";
    EXPECT_EQ(ini.get(L"[B]b"), L"1");
}

} // namespace
