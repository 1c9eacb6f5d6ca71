// cfgdesk --attributes with its dialog, within the process of the tests.

#include "cfgdesk/run.h"
#include "editor/AttributeRowView.h"
#include "editor/xx_attUpdateDlg.h"
#include "host/host.h"
#include "platform/platform.h"
#include "platform/text.h"
#include "support/BlockDrawing.h"
#include "support/RecordingServices.h"
#include "support/TempFolder.h"
#include <corma/attributes.h>
#include <corma/blocks.h>
#include <corma/xx_Var.h>

#include <QDialogButtonBox>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

namespace corma::testing {

namespace {

class CfgdeskAttributes : public ::testing::Test
{
protected:
    CfgdeskAttributes()
    {
        BlockDrawing plan;
        plan.block("DOOR", {{"WOOD", "pine"}})
            .block("GATE", {{"COLOR", "red"}})
            .inModel({"A1", "DOOR"})
            .inModel({"A2", "GATE", {{"COLOR", "blue"}}});
        untouched = plan.bytes();
        drawing = narrow(folder.write(L"house/plan.dxf", untouched));
    }

    static std::string narrow(const std::wstring& path) { return platform::toNative(path); }

    /// Runs the program, does this with its dialog, and ends that with OK or Cancel. Message boxes
    /// that come are answered, and their texts kept.
    int run(const std::vector<std::string>& options, bool isAccepted,
            std::function<void(xx_attUpdateDlg&)> act = {})
    {
        std::vector<const char*> words {"cfgdesk", "--attributes", drawing.c_str()};
        for (const std::string& option : options) {
            words.push_back(option.c_str());
        }
        QTimer timer;
        QObject::connect(&timer, &QTimer::timeout, [&] {
            QWidget* const modal = QApplication::activeModalWidget();
            if (auto* const dialog = qobject_cast<xx_attUpdateDlg*>(modal)) {
                if (!std::exchange(isShown, true)) {
                    play(*dialog, isAccepted, act);
                }
            } else if (auto* const box = qobject_cast<QMessageBox*>(modal)) {
                boxes.push_back(box->text().toStdString());
                box->button(answer) != nullptr ? box->button(answer)->click() : box->reject();
            }
        });
        timer.start(0);
        return cfgdesk::run(words, out);
    }

    /// The attributes of a reference in the saved drawing.
    [[nodiscard]] std::string inDrawing(const wchar_t* reference) const
    {
        if (!openDocument(platform::fromNative(drawing).c_str())) {
            return "no drawing";
        }
        xx_VarArray attributes;
        EXPECT_EQ(xx_get_bl_attributes(objectWithHandle(reference), attributes), RTNORM);
        std::string text;
        for (int i = 0; i < attributes.length(); ++i) {
            text += (text.empty() ? "" : " ") + toUtf8(attributes[i]->name()) + '='
                + toUtf8(attributes[i]->currentText());
        }
        return text;
    }

    [[nodiscard]] std::string saved() const { return folder.read(L"house/plan.dxf"); }

    /// Takes the block of the first row out of a drawing that has another definition of it.
    void browse(xx_attUpdateDlg& dialog)
    {
        const std::wstring library
            = folder.write(L"lib.dxf", BlockDrawing().block("DOOR", {{"LOCK", "no"}}).bytes());
        dialog.setFileQuestion([library](QWidget&, const std::wstring&, const QStringList&) {
            return std::optional<std::wstring>(library);
        });
        QTest::keyClick(&dialog, Qt::Key_F4);
    }

    const RecordingServices services;
    const TempFolder folder;
    const CurrentFolder here {folder.path()};
    std::string drawing;
    std::string untouched;
    std::ostringstream out;
    bool isShown = false;
    std::vector<std::string> names; // of the rows
    std::vector<std::string> boxes;
    QMessageBox::StandardButton answer = QMessageBox::Ok;

private:
    void play(xx_attUpdateDlg& dialog, bool isAccepted,
              const std::function<void(xx_attUpdateDlg&)>& act)
    {
        QApplication::setActiveWindow(&dialog);
        const QAbstractItemModel& rows = *dialog.findChild<AttributeRowView*>()->model();
        for (int row = 0; row < rows.rowCount(); ++row) {
            names.push_back(rows.index(row, 0).data().toString().toStdString());
        }
        if (act) {
            act(dialog);
        }
        dialog.findChild<QDialogButtonBox*>()
            ->button(isAccepted ? QDialogButtonBox::Ok : QDialogButtonBox::Cancel)
            ->click();
    }
};

TEST_F(CfgdeskAttributes, ADrawingIsSavedAfterOk)
{
    EXPECT_EQ(run({}, true), 0);
    EXPECT_THAT(names, ElementsAre("DOOR", "GATE"));
    EXPECT_EQ(out.str(), "cfgdesk: saved " + drawing + "\n");
    EXPECT_THAT(boxes, IsEmpty());
    EXPECT_EQ(currentDocument(), nullptr);
    EXPECT_EQ(inDrawing(L"A1"), "WOOD=pine");
    EXPECT_EQ(inDrawing(L"A2"), "COLOR=blue");
}

TEST_F(CfgdeskAttributes, NothingIsSavedAfterCancelOrWhenNothingChanged)
{
    EXPECT_EQ(run({}, false), 0);
    EXPECT_TRUE(isShown);
    isShown = false;
    EXPECT_EQ(run({"--pattern", "gate"}, true), 0);
    EXPECT_THAT(names, ElementsAre("DOOR", "GATE", "GATE"));
    EXPECT_EQ(out.str(), "");
    EXPECT_THAT(boxes, IsEmpty());
    EXPECT_EQ(saved(), untouched);
}

TEST_F(CfgdeskAttributes, BlocksAreLoadedAnewFromTheirDrawings)
{
    folder.write(L"DOOR.DWG", BlockDrawing().definitionInModel({"LOCK", "yes"}).bytes());
    EXPECT_EQ(run({"--records"}, true), 0);
    EXPECT_THAT(names, ElementsAre("DOOR"));
    EXPECT_EQ(out.str(), "cfgdesk: saved " + drawing + "\n");
    EXPECT_THAT(boxes, ElementsAre("DOOR")) << "what the update tells";
    EXPECT_EQ(inDrawing(L"A1"), "LOCK=yes");
}

TEST_F(CfgdeskAttributes, ABrowsedBlockIsSavedAfterOk)
{
    EXPECT_EQ(run({}, true, [this](xx_attUpdateDlg& dialog) { browse(dialog); }), 0);
    EXPECT_EQ(out.str(), "cfgdesk: saved " + drawing + "\n");
    EXPECT_THAT(boxes, IsEmpty());
    EXPECT_EQ(inDrawing(L"A1"), "LOCK=no");
}

struct SaveRow
{
    const char* sentence;
    const char* language;
    QMessageBox::StandardButton answer;
    bool isSaved;
    const char* question;
};

class AfterCancel : public CfgdeskAttributes, public ::testing::WithParamInterface<SaveRow>
{
};

TEST_P(AfterCancel, AReplacedBlockIsSavedWhenThatIsWanted)
{
    answer = GetParam().answer;
    EXPECT_EQ(run({"--language", GetParam().language}, false,
                  [this](xx_attUpdateDlg& dialog) { browse(dialog); }),
              0);
    EXPECT_THAT(boxes, ElementsAre(GetParam().question));
    EXPECT_EQ(out.str(), GetParam().isSaved ? "cfgdesk: saved " + drawing + "\n" : "");
    EXPECT_EQ(saved() != untouched, GetParam().isSaved);
    EXPECT_EQ(inDrawing(L"A1"), "") << "the update itself was cancelled";
    int status = RTNORM;
    xx_VarArray definitions;
    EXPECT_EQ(xx_get_attdefs(xx_findblk_int(L"DOOR", &status), definitions), RTNORM);
    ASSERT_EQ(definitions.length(), 1);
    EXPECT_STREQ(definitions[0]->name(), GetParam().isSaved ? L"LOCK" : L"WOOD");
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(CfgdeskAttributes, AfterCancel, ::testing::Values(
    SaveRow {"Yes",        "9",  QMessageBox::Yes, true,  "The definition of a block was replaced. Save the drawing all the same?"},
    SaveRow {"No",         "9",  QMessageBox::No,  false, "The definition of a block was replaced. Save the drawing all the same?"},
    SaveRow {"Escape",     "9",  QMessageBox::Ok,  false, "The definition of a block was replaced. Save the drawing all the same?"},
    SaveRow {"InGerman",   "7",  QMessageBox::Yes, true,  "Die Definition eines Blocks wurde ersetzt. Die Zeichnung trotzdem speichern?"},
    SaveRow {"InSpanish",  "10", QMessageBox::No,  false, "Se ha sustituido la definición de un bloque. ¿Guardar el dibujo de todos modos?"},
    SaveRow {"InFrench",   "12", QMessageBox::Yes, true,  "La définition d'un bloc a été remplacée. Enregistrer le dessin quand même ?"},
    SaveRow {"InDutch",    "19", QMessageBox::No,  false, "De definitie van een blok is vervangen. De tekening toch opslaan?"},
    SaveRow {"InPolish",   "21", QMessageBox::Yes, true,  "Definicja bloku została zastąpiona. Zapisać mimo to rysunek?"},
    SaveRow {"InRussian",  "25", QMessageBox::No,  false, "Определение блока было заменено. Всё равно сохранить чертёж?"},
    SaveRow {"InAnyOther", "99", QMessageBox::No,  false, "The definition of a block was replaced. Save the drawing all the same?"}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

TEST_F(CfgdeskAttributes, ADrawingThatCannotBeSavedIsToldInABox)
{
    const int status = run({}, true, [this](xx_attUpdateDlg&) {
        std::filesystem::remove_all(narrow(folder.path(L"house")));
    });
    EXPECT_EQ(status, 1);
    EXPECT_EQ(out.str(), "");
    ASSERT_EQ(boxes.size(), 1U);
    EXPECT_THAT(boxes.front(), HasSubstr("plan.dxf"));
}

TEST_F(CfgdeskAttributes, WhatCouldNotBeLoadedIsToldInABox)
{
    folder.write(L"DOOR.DWG", BlockDrawing().definitionInModel({"LOCK"}).bytes());
    const int status
        = run({"--records"}, true, [this](xx_attUpdateDlg&) { folder.remove(L"DOOR.DWG"); });
    EXPECT_EQ(status, 1);
    EXPECT_EQ(out.str(), "");
    EXPECT_THAT(boxes, ElementsAre("Block DOOR not found"));
    EXPECT_EQ(saved(), untouched);
}

} // namespace

} // namespace corma::testing
