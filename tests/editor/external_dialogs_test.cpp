#include "editor/DeskTest.h"
#include "editor/DialogLibrary.h"
#include "editor/external_dialogs.h"
#include "platform/text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <tuple>

using corma::toUtf8;
using corma::testing::DialogLibrary;
using corma::testing::ToldDialogs;

namespace {

using Dialog = int (*)(wchar_t* value, int capacity);

struct DialogRow
{
    const char* name;
    Dialog dialog;
    char letter; // of the type that it is for
};

constexpr std::array kDialogs = {DialogRow {"visual", xx_show_visparam_dialog, 'v'},
                                 DialogRow {"text", xx_show_textinfo_dialog, 'x'},
                                 DialogRow {"hatch", xx_show_hatch_dialog, 'h'}};

void put(ToldDialogs& dialogs, std::wstring_view answer)
{
    dialogs.answer.fill(0);
    std::copy(answer.begin(), answer.end(), dialogs.answer.begin());
}

class ExternalDialogs : public corma::testing::DeskTest
{
protected:
    void writeType(char letter) const
    {
        folder.write(L"cfg/tool.inr", std::string("A=") + letter + "\n");
    }
};

void expectNone()
{
    for (const DialogRow& row : kDialogs) {
        std::wstring value = L"before";
        EXPECT_EQ(row.dialog(value.data(), 6), RTERROR) << row.name;
        EXPECT_EQ(value, L"before");
    }
    int chosen = 7;
    EXPECT_EQ(xx_show_color_dialog(3, chosen), RTERROR);
    EXPECT_EQ(chosen, 7);
}

TEST_F(ExternalDialogs, AreAnErrorWithoutTheirLibrary)
{
    expectNone();
}

TEST_F(ExternalDialogs, AreAnErrorInALibraryWithOtherNames)
{
    const DialogLibrary library(folder, DialogLibrary::Names::others);
    ASSERT_TRUE(library.isLoaded());
    expectNone();
}

TEST_F(ExternalDialogs, EditTheValueInPlaceAndHandBackTheirStatus)
{
    DialogLibrary library(folder);
    ASSERT_TRUE(library.isLoaded());
    for (const DialogRow& row : kDialogs) {
        for (const int status : {RTNORM, RTCAN, 0}) {
            std::array<wchar_t, 20> value {L"before"};
            put(library.dialogs(), L"after");
            library.dialogs().status = status;
            EXPECT_EQ(row.dialog(value.data(), 19), status);
            EXPECT_STREQ(library.dialogs().called, row.name);
            EXPECT_EQ(library.dialogs().capacity, 19);
            EXPECT_STREQ(library.dialogs().given.data(), L"before");
            EXPECT_STREQ(value.data(), L"after");
        }
    }
}

TEST_F(ExternalDialogs, GiveAColourWhateverTheUserDid)
{
    DialogLibrary library(folder);
    ASSERT_TRUE(library.isLoaded());
    library.dialogs().colour = -5;
    int chosen = 7;
    EXPECT_EQ(xx_show_color_dialog(3, chosen), RTNORM);
    EXPECT_EQ(chosen, -5);
    EXPECT_EQ(library.dialogs().givenColour, 3);
}

TEST_F(ExternalDialogs, AnExternalDialogStoresGloballyInEveryMode)
{
    DialogLibrary library(folder);
    ASSERT_TRUE(library.isLoaded());
    library.dialogs().status = RTNORM;
    put(library.dialogs(), L"new");
    for (const DialogRow& row : kDialogs) {
        writeType(row.letter);
        for (const auto& [levels, before, after] :
             {std::tuple(Levels::global, "0 A=1", "0 A=new"),
              std::tuple(Levels::project, "1 A=p", "3 A=new"),
              std::tuple(Levels::localProject, "1 A=p", "3 A=new"),
              std::tuple(Levels::local, "2 A=d", "4 A=new")}) {
            writeIni("A=1\nB=2\n");
            writeIpr("A=p\n");
            corma::closeDocument();
            if (levels == Levels::local) {
                folder.remove(L"house/tool.ipr");
                newDrawing();
                store(L"", L"A", L"d");
            }
            open(levels);
            ASSERT_TRUE(rows().starts_with(before)) << rows();
            select({L"A"});
            view.takeCalls();
            desk().activateList();
            EXPECT_EQ(view.takeCalls(), "list, focus list");
            EXPECT_STREQ(library.dialogs().called, row.name);
            EXPECT_EQ(library.dialogs().capacity, 256);
            EXPECT_TRUE(rows().starts_with(after)) << rows();
            EXPECT_EQ(ini(), "A=new\nB=2\n");
            if (levels == Levels::local) {
                EXPECT_EQ(drawing(), "A=d\n");
            } else {
                EXPECT_EQ(ipr(), "A=p\n");
            }
        }
    }
}

TEST_F(ExternalDialogs, NothingIsStoredWhenTheUserDidNotAccept)
{
    DialogLibrary library(folder);
    ASSERT_TRUE(library.isLoaded());
    put(library.dialogs(), L"new");
    for (const int status : {RTCAN, RTERROR, 0, 1}) {
        library.dialogs().status = status;
        for (const DialogRow& row : kDialogs) {
            writeType(row.letter);
            writeIni("A=1\n");
            open(Levels::global);
            activate(L"A");
            EXPECT_STREQ(library.dialogs().given.data(), L"1");
            EXPECT_TRUE(rows().starts_with("0 A=1"));
            EXPECT_EQ(ini(), "A=1\n");
        }
    }
}

TEST_F(ExternalDialogs, AValueIsEditedByItsFirst256Characters)
{
    DialogLibrary library(folder);
    ASSERT_TRUE(library.isLoaded());
    library.dialogs().status = RTNORM;
    writeType('v');
    const std::wstring wide(256, L'x');
    for (const std::size_t length : {255U, 256U, 257U, 400U}) {
        writeIni("A=" + std::string(length, 'x') + "\n");
        put(library.dialogs(), std::wstring(256, L'y'));
        open(Levels::global);
        activate(L"A");
        EXPECT_EQ(library.dialogs().given.data(), wide.substr(0, length));
        EXPECT_EQ(ini(), "A=" + std::string(256, 'y') + "\n");
    }
}

struct ColourCallRow
{
    const char* value;
    int given;
    int chosen;
    const char* written;
};

TEST_F(ExternalDialogs, AColourIsANumber)
{
    DialogLibrary library(folder);
    ASSERT_TRUE(library.isLoaded());
    writeType('k');
    for (const ColourCallRow& row :
         {ColourCallRow {"3", 3, 255, "255"}, ColourCallRow {"", 0, 1, "1"},
          ColourCallRow {"rood", 0, -1, "-1"}, ColourCallRow {"12abc", 12, 0, "0"}}) {
        writeIni(std::string("A=") + row.value + "\n");
        writeIpr("");
        library.dialogs().colour = row.chosen;
        open(Levels::project);
        activate(L"A");
        EXPECT_STREQ(library.dialogs().called, "colour");
        EXPECT_EQ(library.dialogs().givenColour, row.given);
        EXPECT_EQ(ini(), std::string("A=") + row.written + "\n");
        EXPECT_EQ(ipr(), "");
    }
}

TEST_F(ExternalDialogs, AValueThatCannotBeWrittenIsToldAndShown)
{
    DialogLibrary library(folder);
    ASSERT_TRUE(library.isLoaded());
    writeType('k');
    writeIni("A=3\n");
    library.dialogs().colour = 4;
    open(Levels::global);
    {
        const corma::testing::RefusedCalls readOnly(corma::platform::SystemCall::openTarget,
                                                    EACCES);
        activate(L"A");
    }
    EXPECT_EQ(services.boxes.size(), 2U);
    EXPECT_TRUE(rows().starts_with("0 A=4")) << rows();
    EXPECT_EQ(ini(), "A=3\n");
}

} // namespace
