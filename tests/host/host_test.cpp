#include "foundation/wide_text.h"
#include "host/host.h"
#include "host/variables.h"
#include "support/RecordingServices.h"
#include "support/TempFolder.h"

#include <array>
#include <cstdlib>
#include <gtest/gtest.h>

using corma::testing::CurrentFolder;
using corma::testing::RecordingServices;
using corma::testing::TempFolder;

namespace {

std::wstring findFile(const std::wstring& name)
{
    std::array<wchar_t, 1000> found {};
    return acedFindFile(name.c_str(), found.data(), found.size()) == RTNORM ? found.data() : L"";
}

TEST(ResultLists, OwnTheirTexts)
{
    resbuf* list = acutNewRb(RTSTR);
    ASSERT_NE(list, nullptr);
    list->resval.rstring = corma::duplicate(L"text");
    list->rbnext = acutNewRb(RTSHORT);
    list->rbnext->resval.rint = 7;
    list->rbnext->rbnext = acutNewRb(1); // a text in the chain of a record
    list->rbnext->rbnext->resval.rstring = corma::duplicate(L"record");
    EXPECT_EQ(acutRelRb(list), RTNORM); // the leak sanitizer holds this to its word
}

TEST(ResultLists, ANewNodeIsEmptyAndNullCanBeFreed)
{
    resbuf* node = acutNewRb(RTLONG);
    EXPECT_EQ(node->restype, RTLONG);
    EXPECT_EQ(node->rbnext, nullptr);
    EXPECT_EQ(node->resval.rlong, 0);
    acutRelRb(node);
    EXPECT_EQ(acutRelRb(nullptr), RTNORM);
}

TEST(Variables, ReadInAnyCase)
{
    resbuf value {};
    ASSERT_EQ(acedGetVar(L"cmdecho", &value), RTNORM);
    EXPECT_EQ(value.restype, RTSHORT);
    EXPECT_EQ(value.resval.rint, 1);
}

TEST(Variables, TextsAreCopiesForTheCaller)
{
    RecordingServices services;
    corma::host::setVariable(L"CMDNAMES", L"PLOT");
    resbuf value {};
    ASSERT_EQ(acedGetVar(L"CMDNAMES", &value), RTNORM);
    EXPECT_EQ(value.restype, RTSTR);
    EXPECT_STREQ(value.resval.rstring, L"PLOT");
    std::free(value.resval.rstring);
}

TEST(Variables, ChangeByASetOfTheSameType)
{
    RecordingServices services;
    resbuf value {};
    value.restype = RTSHORT;
    value.resval.rint = 0;
    EXPECT_EQ(acedSetVar(L"CMDECHO", &value), RTNORM);
    ASSERT_EQ(acedGetVar(L"CMDECHO", &value), RTNORM);
    EXPECT_EQ(value.resval.rint, 0);
    value.restype = RTSTR;
    value.resval.rstring = nullptr;
    EXPECT_EQ(acedSetVar(L"CMDECHO", &value), RTERROR);
}

TEST(Variables, UnknownAndReadOnlyOnesAreRefused)
{
    resbuf value {};
    EXPECT_EQ(acedGetVar(L"NOSUCHTHING", &value), RTERROR);
    value.restype = RTSHORT;
    EXPECT_EQ(acedSetVar(L"NOSUCHTHING", &value), RTERROR);
    wchar_t text[] = L"PLOT";
    value.restype = RTSTR;
    value.resval.rstring = text;
    EXPECT_EQ(acedSetVar(L"CMDNAMES", &value), RTERROR);
}

TEST(FindFile, LooksInTheCurrentFolderThenWithTheDrawingThenInTheSupportFolders)
{
    RecordingServices services;
    const TempFolder folder;
    folder.makeFolder(L"here");
    const auto last = folder.write(L"two/a.txt", "");
    services.variables[L"ACAD"] = folder.path(L"one") + L";;" + folder.path(L"two");
    const CurrentFolder there(folder.path(L"here"));
    EXPECT_EQ(findFile(L"a.txt"), last);
    const auto middle = folder.write(L"drawings/a.txt", "");
    corma::newDocument(folder.path(L"drawings/house.dwg").c_str());
    EXPECT_EQ(findFile(L"a.txt"), middle);
    const auto first = folder.write(L"here/a.txt", "");
    EXPECT_EQ(findFile(L"a.txt"), first);
}

TEST(FindFile, TakesAFullPathAsItStands)
{
    RecordingServices services;
    const TempFolder folder;
    const auto path = folder.write(L"a.txt", "");
    EXPECT_EQ(findFile(path), path);
    services.variables[L"ACAD"] = folder.path();
    EXPECT_EQ(findFile(L"/a.txt"), L"");
    EXPECT_EQ(findFile(L""), L"");
}

TEST(FindFile, DoesNotWriteWhatDoesNotFit)
{
    RecordingServices services;
    const TempFolder folder;
    const auto path = folder.write(L"a.txt", "");
    std::wstring buffer(path.size() + 1, L'#');
    EXPECT_EQ(acedFindFile(path.c_str(), buffer.data(), path.size()), RTERROR);
    EXPECT_EQ(buffer[0], L'#');
    EXPECT_EQ(acedFindFile(path.c_str(), buffer.data(), path.size() + 1), RTNORM);
    EXPECT_EQ(buffer.c_str(), path);
}

// The text that the host hands out, which is the caller's.
struct Palette
{
    explicit Palette(const wchar_t* pattern, bool showCustom = false)
        : isChosen(acedHatchPalletteDialog(pattern, showCustom, result))
    {
    }

    Palette(const Palette&) = delete;
    Palette& operator=(const Palette&) = delete;

    ~Palette() { acutDelString(result); }

    ACHAR* result = nullptr;
    bool isChosen;
};

TEST(HatchPalette, GivesWhatTheUserChose)
{
    RecordingServices services;
    services.hatchPattern = L"BRICK";
    const Palette palette(L"ANSI31", true);
    EXPECT_TRUE(palette.isChosen);
    EXPECT_STREQ(palette.result, L"BRICK");
    const Palette other(nullptr);
    EXPECT_STREQ(other.result, L"BRICK");
    EXPECT_EQ(services.hatchQuestions, (std::vector<std::wstring> {L"ANSI31+custom", L""}));
}

TEST(HatchPalette, GivesThePatternBackWhenNothingIsChosen)
{
    RecordingServices services;
    const Palette palette(L"ANSI31");
    EXPECT_FALSE(palette.isChosen);
    EXPECT_STREQ(palette.result, L"ANSI31");
    const Palette none(nullptr);
    EXPECT_FALSE(none.isChosen);
    EXPECT_STREQ(none.result, L"");
}

TEST(HatchPalette, ChoosesNothingOnATerminal)
{
    corma::Services terminal;
    std::wstring chosen = L"as it was";
    ::testing::internal::CaptureStderr();
    EXPECT_FALSE(terminal.chooseHatchPattern({}, chosen));
    EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(chosen, L"as it was");
}

TEST(Help, GoesToTheUser)
{
    RecordingServices services;
    EXPECT_EQ(acedHelp(L"/a/help.chm", nullptr, 0), RTNORM);
    EXPECT_EQ(acedHelp(L"", L"topic", 1), RTERROR);
    EXPECT_EQ(acedHelp(nullptr, nullptr, 0), RTERROR);
    EXPECT_EQ(services.helpFiles, (std::vector<std::wstring> {L"/a/help.chm", L"", L""}));
}

TEST(Help, IsNamedOnATerminal)
{
    corma::Services terminal;
    ::testing::internal::CaptureStderr();
    EXPECT_TRUE(terminal.showHelp(L"/a/help.chm"));
    EXPECT_FALSE(terminal.showHelp(L""));
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              "\nHelp: /a/help.chm\nThe help file was not found.");
}

TEST(Application, TellsTheSupportFoldersByTheNumbersOfItsProperties)
{
    RecordingServices services;
    services.variables[L"ACAD"] = L"/one;/two";
    const AcadAutomation* const application = acedGetAcadWinApp();
    const AcadAutomation* const preferences = application->object(14);
    ASSERT_NE(preferences, nullptr);
    const AcadAutomation* const files = preferences->object(0x60020001);
    ASSERT_NE(files, nullptr);
    EXPECT_EQ(files->text(0), L"/one;/two");
    EXPECT_EQ(files->text(1), L"");
    EXPECT_EQ(files->object(0), nullptr);
    EXPECT_EQ(application->object(15), nullptr);
    EXPECT_EQ(application->text(14), L"");
    services.variables.clear();
    EXPECT_EQ(files->text(0), L"");
}

TEST(DefaultServices, AnswerMessageBoxesCautiously)
{
    struct Quiet : corma::Services
    {
        void print(const wchar_t* text) override { printed += text; }

        std::wstring printed;
    } quiet;

    using corma::MessageAnswer;
    using corma::MessageButtons;
    const auto ask = [&](MessageButtons buttons) {
        return quiet.messageBox(L"text", L"title", corma::MessageIcon::none, buttons);
    };
    EXPECT_EQ(ask(MessageButtons::ok), MessageAnswer::ok);
    EXPECT_EQ(ask(MessageButtons::okCancel), MessageAnswer::cancel);
    EXPECT_EQ(ask(MessageButtons::yesNo), MessageAnswer::no);
    EXPECT_EQ(ask(MessageButtons::yesNoCancel), MessageAnswer::cancel);
    EXPECT_EQ(quiet.printed, L"\ntext\ntext\ntext\ntext");
}

TEST(DefaultServices, TakeTheProgramForTheModule)
{
    corma::Services services;
    EXPECT_TRUE(std::wstring(services.moduleFile()).ends_with(L"/test_host"));
}

} // namespace
