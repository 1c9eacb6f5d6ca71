#include "host/host.h"
#include "platform/platform.h"
#include "support/BlockDrawing.h"
#include "support/CommandRecorder.h"
#include "support/RecordingServices.h"
#include "support/TempFolder.h"
#include "support/TestDrawing.h"
#include "support/small_drawing.h"
#include <corma/drawing_contents.h>
#include <corma/texts.h>

#include <gtest/gtest.h>
#include <stdexcept>

using corma::testing::BlockDrawing;
using corma::testing::CommandRecorder;
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

TEST(BlockDrawing, IsReadAsItWasPutTogether)
{
    BlockDrawing drawing;
    drawing.block("DOOR", {{"WOOD", "pine", false, "21"}});
    const std::string house = drawing.nextRecord();
    drawing.block("HOUSE", {}, {{"B1", "DOOR"}})
        .inModel({"A1", "HOUSE"})
        .inPaper({"C1", "DOOR", {{"WOOD", "oak", false, "31"}}})
        .definitionInModel({"TITLE", "", true, "22"});

    RecordingServices services;
    const TempFolder folder;
    ASSERT_TRUE(corma::openDocument(folder.write(L"plan.dxf", drawing.bytes()).c_str()));
    EXPECT_TRUE(services.printed.empty());
    const auto contents = corma::contentsOf(nullptr);
    ASSERT_TRUE(contents.has_value());
    EXPECT_EQ(contents->blocks,
              (std::vector<std::wstring> {L"*Model_Space", L"*Paper_Space", L"DOOR", L"HOUSE"}));
    std::wstring references;
    for (const auto& reference : contents->references) {
        references += reference.handle + L' ' + reference.block + L' ' + reference.space + L'\n';
    }
    EXPECT_EQ(references,
              L"A1 HOUSE *Model_Space\n"
              L"C1 DOOR *Paper_Space\n"
              L"B1 DOOR HOUSE\n");
    const std::pair<const wchar_t*, const wchar_t*> owners[]
        = {{L"31", L"C1"}, {L"22", L"81"}, {L"21", L"800"}};
    for (const auto& [handle, owner] : owners) {
        const corma::host::Opened<AcDbObject> object(corma::objectWithHandle(handle));
        ASSERT_TRUE(object);
        EXPECT_EQ(corma::handleOf(object->ownerId()), owner);
    }
    EXPECT_EQ(house, "801");
}

TEST(CommandRecorder, TellsWhatIsSentAndLetsItRun)
{
    const RecordingServices services;
    CommandRecorder recorder;
    EXPECT_EQ(acedCommandS(RTSTR, L"", RTNONE), RTNORM);
    EXPECT_EQ(acedCommandS(RTSTR, L"NOSUCH", RTSHORT, 2, RTREAL, 1.5, RTNONE), RTERROR);
    resbuf echo {};
    echo.restype = RTSHORT;
    acedSetVar(L"CMDECHO", &echo);
    recorder.instead = [](const corma::host::CommandArguments&) { return RTCAN; };
    EXPECT_EQ(acedCommandS(RTSTR, L"_LINE", RTNONE), RTCAN);
    EXPECT_EQ(recorder.sent(), "1:\n1:NOSUCH|2|1.500000\n_LINE\n");
    EXPECT_EQ(services.allPrinted(), L"\nUnknown command \"NOSUCH\".");
}

TEST(CommandRecorder, PutsTheFormerOneBack)
{
    const RecordingServices services;
    CommandRecorder outer;
    {
        const CommandRecorder inner;
        acedCommandS(RTSTR, L"", RTNONE);
        EXPECT_EQ(inner.sent(), "1:\n");
    }
    EXPECT_EQ(outer.sent(), "");
    acedCommandS(RTSTR, L"", RTNONE);
    EXPECT_EQ(outer.sent(), "1:\n");
}
