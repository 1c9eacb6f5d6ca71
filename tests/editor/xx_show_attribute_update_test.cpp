// The exported attribute update, with its dialog, on a drawing.

#include "AttributeUpdateTest.h"
#include "editor/AttributeRowView.h"
#include "editor/xx_attUpdateDlg.h"
#include "support/CommandRecorder.h"
#include <corma/attribute_dialog.h>

#include <QApplication>
#include <QDialogButtonBox>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace corma::testing {

namespace {

class ShownAttributeUpdate : public AttributeUpdateTest
{
protected:
    /// Calls the exported function, does this while its dialog is open, and closes that with OK or
    /// Cancel.
    void show(bool records, const wchar_t* pattern, bool isAccepted,
              std::function<void(xx_attUpdateDlg&)> act = {})
    {
        QTimer::singleShot(0, qApp, [this, isAccepted, act = std::move(act)] {
            auto* const dialog = qobject_cast<xx_attUpdateDlg*>(QApplication::activeModalWidget());
            ASSERT_NE(dialog, nullptr);
            isShown = true;
            QApplication::setActiveWindow(dialog);
            for (int row = 0; row < rowsOf(*dialog).rowCount(); ++row) {
                names.push_back(rowsOf(*dialog).index(row, 0).data().toString().toStdString());
            }
            if (act) {
                act(*dialog);
            }
            if (dialog->isVisible()) {
                const auto which = isAccepted ? QDialogButtonBox::Ok : QDialogButtonBox::Cancel;
                dialog->findChild<QDialogButtonBox*>()->button(which)->click();
            }
        });
        xx_show_attribute_update(records, pattern);
    }

    static QAbstractItemModel& rowsOf(xx_attUpdateDlg& dialog)
    {
        return *dialog.findChild<AttributeRowView*>()->model();
    }

    CommandRecorder commands;
    bool isShown = false;
    std::vector<std::string> names; // of the rows
};

TEST_F(ShownAttributeUpdate, BringsTheCheckedReferencesUpToDate)
{
    open(doors());
    show(false, nullptr, true);
    EXPECT_EQ(names, (std::vector<std::string> {"DOOR (2)", "GATE"}));
    EXPECT_EQ(commands.sent(), "_ATTSYNC|NAME|DOOR\n");
    EXPECT_EQ(attributesOf("A1"), "WOOD=pine");
    EXPECT_EQ(attributesOf("A3"), "WOOD=oak") << "the dialog gave the first one only";
    EXPECT_TRUE(isDocumentModified());
    EXPECT_EQ(printed(), "");
}

TEST_F(ShownAttributeUpdate, LoadsTheCheckedBlocksAnew)
{
    open(doors());
    static_cast<void>(writeFile(L"DOOR.DWG", {{"WOOD"}, {"NUMBER", "1"}}));
    static_cast<void>(writeFile(L"GATE.DWG", {{"WIDTH", "9"}}));
    show(true, nullptr, true, [](xx_attUpdateDlg& dialog) {
        QAbstractItemModel& rows = rowsOf(dialog);
        rows.setData(rows.index(0, 0), Qt::Unchecked, Qt::CheckStateRole);
    });
    EXPECT_EQ(names, (std::vector<std::string> {"DOOR", "GATE"}));
    EXPECT_EQ(commands.sent(), "_ATTSYNC|Name|GATE\n");
    EXPECT_EQ(definitionsOf(L"GATE"), "WIDTH=9");
    EXPECT_EQ(attributesOf("A2"), "WIDTH=9");
    EXPECT_EQ(attributesOf("A1"), "");
}

TEST_F(ShownAttributeUpdate, ShowsTheBlocksOfThePattern)
{
    open(doors());
    show(false, L"gate", true);
    EXPECT_EQ(names, (std::vector<std::string> {"GATE"})) << "which is up to date";
    EXPECT_EQ(commands.sent(), "");
    EXPECT_FALSE(isDocumentModified());
}

TEST_F(ShownAttributeUpdate, DoesNothingAfterCancel)
{
    open(doors());
    show(false, nullptr, false);
    EXPECT_TRUE(isShown);
    EXPECT_EQ(commands.sent(), "");
    EXPECT_FALSE(isDocumentModified());
}

TEST_F(ShownAttributeUpdate, AReplacedDefinitionOutlivesCancel)
{
    open(doors());
    const std::wstring library = writeLibrary(L"lib.dxf", "DOOR", {{"LOCK"}});
    show(false, nullptr, false, [&](xx_attUpdateDlg& dialog) {
        dialog.setFileQuestion([&](QWidget&, const std::wstring&, const QStringList&) {
            return std::optional<std::wstring>(library);
        });
        QTest::keyClick(&dialog, Qt::Key_F4);
    });
    EXPECT_EQ(definitionsOf(L"DOOR"), "LOCK=");
    EXPECT_EQ(attributesOf("A1"), "");
    EXPECT_EQ(attributesOf("A3"), "WOOD=oak OLD=x");
    EXPECT_EQ(commands.sent(), "");
    EXPECT_TRUE(isDocumentModified());
}

TEST_F(ShownAttributeUpdate, ABrowsedDefinitionReachesTheReferencesOfItsBlock)
{
    open(doors());
    const std::wstring library = writeLibrary(L"lib.dxf", "GATE", {{"COLOR"}, {"LOCK", "no"}});
    show(false, L"GATE", true, [&](xx_attUpdateDlg& dialog) {
        dialog.setFileQuestion([&](QWidget&, const std::wstring&, const QStringList&) {
            return std::optional<std::wstring>(library);
        });
        QTest::keyClick(&dialog, Qt::Key_F4);
    });
    EXPECT_EQ(commands.sent(), "_ATTSYNC|NAME|GATE\n");
    EXPECT_EQ(attributesOf("A2"), "COLOR=blue LOCK=no");
}

struct NothingRow
{
    const char* sentence;
    bool records;
    const wchar_t* pattern;
    const char* message;
};

class NothingIsShown : public ShownAttributeUpdate, public ::testing::WithParamInterface<NothingRow>
{
};

TEST_P(NothingIsShown, WhereAllIsUpToDate)
{
    BlockDrawing drawing;
    open(drawing.block("DOOR", {{"WOOD"}}));
    xx_show_attribute_update(GetParam().records, GetParam().pattern); // a dialog would never end
    EXPECT_EQ(printed(), GetParam().message);
    EXPECT_EQ(commands.sent(), "");
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(ShownAttributeUpdate, NothingIsShown, ::testing::Values(
    NothingRow {"OfReferences", false, nullptr, "Block References (*) : Attributes up to date."},
    NothingRow {"OfReferencesOfAPattern", false, L"x*", "Block References (x*) : Attributes up to date."},
    NothingRow {"OfRecords", true, nullptr, "Block Tabel Records (*) : Attributes up to date."}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

// What goes wrong while the chosen things are done comes in a window, too.
TEST_F(ShownAttributeUpdate, AlertsOfTheUpdateComeInWindows)
{
    open(doors());
    static_cast<void>(writeFile(L"GATE.DWG", {{"WIDTH", "9"}}));
    std::vector<std::string> boxes;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&boxes] {
        if (auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            boxes.push_back(box->text().toStdString());
            box->close();
        }
    });
    timer.start(0);
    show(true, nullptr, true, [this](xx_attUpdateDlg&) { folder.remove(L"GATE.DWG"); });
    EXPECT_EQ(boxes, (std::vector<std::string> {"Block GATE not found"}));
    EXPECT_TRUE(services.alerts.empty());
    EXPECT_EQ(definitionsOf(L"GATE"), "COLOR=red");
}

TEST_F(ShownAttributeUpdate, TheServicesBeforeAreInForceAgain)
{
    open(doors());
    Services* const before = &corma::services();
    show(false, nullptr, true);
    EXPECT_EQ(&corma::services(), before);
}

} // namespace

} // namespace corma::testing
