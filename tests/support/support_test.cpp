#include "host/host.h"
#include "platform/platform.h"
#include "support/RecordingServices.h"
#include "support/TempFolder.h"
#include "support/TestDrawing.h"
#include "support/small_drawing.h"
#include <corma/texts.h>

#include <gtest/gtest.h>
#include <stdexcept>

using corma::testing::CurrentFolder;
using corma::testing::FullDisk;
using corma::testing::kSmallDrawing;
using corma::testing::kSmallDrawingR12;
using corma::testing::RecordingServices;
using corma::testing::TempFolder;
using corma::testing::TestDrawing;
using corma::testing::withSections;

TEST(TempFolder, HoldsWhatWasWrittenAndGoesAway)
{
    std::wstring path;
    {
        const TempFolder folder;
        path = folder.write(L"sub/a.txt", "abc");
        EXPECT_EQ(folder.read(L"sub/a.txt"), "abc");
        folder.replace(L"sub/a.txt", "d");
        EXPECT_EQ(folder.read(L"sub/a.txt"), "d");
        EXPECT_FALSE(folder.has(L"sub/a.txt.new"));
        EXPECT_TRUE(corma::platform::exists(path));
    }
    EXPECT_FALSE(corma::platform::exists(path));
}

TEST(TempFolder, TellsWhatIsInIt)
{
    const TempFolder folder;
    EXPECT_EQ(folder.names(), "");
    folder.write(L"b", "");
    folder.write(L"a/c", "");
    EXPECT_EQ(folder.names(), "a b");
    EXPECT_EQ(folder.homely(folder.path(L"é") + L" and " + folder.path()), "~/é and ~");
}

TEST(FullDisk, HasRoomUpToItsSizeAndEndsWithTheObject)
{
    const TempFolder folder;
    {
        const FullDisk disk(10);
        EXPECT_TRUE(corma::platform::replaceFile(folder.path(L"a"), "0123456789"));
        EXPECT_FALSE(corma::platform::replaceFile(folder.path(L"b"), "0123456789a"));
    }
    EXPECT_TRUE(corma::platform::replaceFile(folder.path(L"b"), "0123456789a"));
}

TEST(CurrentFolder, IsPutBack)
{
    const TempFolder folder;
    const std::wstring before = corma::platform::currentFolder();
    {
        const CurrentFolder there(folder.path());
        EXPECT_EQ(corma::platform::currentFolder(), folder.path());
    }
    EXPECT_EQ(corma::platform::currentFolder(), before);
}

TEST(RecordingServices, KeepsWhatTheLibrarySends)
{
    RecordingServices services;
    acutPrintf(L"%s is %d", L"a", 1);
    acedAlert(L"stop");
    services.answer = corma::MessageAnswer::yes;
    EXPECT_EQ(corma::services().messageBox(L"really?", L"title", corma::MessageIcon::question,
                                           corma::MessageButtons::yesNo),
              corma::MessageAnswer::yes);
    EXPECT_EQ(services.printed, std::vector<std::wstring> {L"a is 1"});
    EXPECT_EQ(services.alerts, std::vector<std::wstring> {L"stop"});
    EXPECT_EQ(services.boxes, std::vector<std::wstring> {L"really?"});
}

TEST(RecordingServices, PutsTheFormerServicesBack)
{
    corma::Services* before = &corma::services();
    {
        RecordingServices recording;
        EXPECT_EQ(&corma::services(), &recording);
    }
    EXPECT_EQ(&corma::services(), before);
}

TEST(RecordingServices, HaveEnglishTextsAndLeaveThem)
{
    corma::setTextLanguage(19);
    {
        const RecordingServices services;
        EXPECT_EQ(corma::textLanguage(), corma::kEnglish);
        corma::setTextLanguage(19);
    }
    EXPECT_EQ(corma::textLanguage(), corma::kEnglish);
}

TEST(TestDrawing, IsLoadedFromGroupsAndTellsWhatItIsWrittenAs)
{
    for (const auto text : {kSmallDrawing, kSmallDrawingR12}) {
        TestDrawing drawing(text);
        EXPECT_EQ(drawing.saved(), text);
        EXPECT_EQ(drawing.reloaded().saved(), text);
        EXPECT_TRUE(drawing.file().starts_with("0\nSECTION\n2\nHEADER\n"));
    }
}

TEST(TestDrawing, TellsARecordByItsHandle)
{
    TestDrawing drawing(withSections("AC1015",
                                     "0 SECTION\n2 ENTITIES\n0 LINE\n5 2A\n8 0\n"
                                     "0 POINT\n5 2\n0 ENDSEC\n"));
    EXPECT_EQ(drawing.savedRecord("2A"), "0 LINE\n5 2A\n8 0\n");
    EXPECT_EQ(drawing.savedRecord("2"), "0 POINT\n5 2\n");
    EXPECT_EQ(drawing.savedRecord("A"), "");
    EXPECT_EQ(drawing.stub("2a").handle, corma::host::Handle {0x2A});
    EXPECT_THROW(drawing.stub("3"), std::runtime_error);
}

TEST(TestDrawing, MustBeADrawing)
{
    EXPECT_THROW(TestDrawing("1 hello\n"), std::runtime_error);
}
