#pragma once

#include "editor/EditDlg.h"
#include "editor/SettingDialogTest.h"

#include <QTest>

#include <memory>
#include <string>
#include <vector>

namespace corma::testing {

/// Tests of a dialog for the value of the setting A itself, with the hands of a person.
class EditDialogTest : public SettingDialogTest
{
protected:
    void TearDown() override;

    /// Shows a dialog in the place of the former one.
    template<class Dialog> Dialog& showDialog(const DeskStart& start)
    {
        dialog.reset();
        open(start);
        auto made = std::make_unique<Dialog>(desk());
        Dialog& shown = *made;
        dialog = std::move(made);
        dialog->show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(dialog.get()));
        return shown;
    }

    template<class Widget> [[nodiscard]] Widget& at(const char* name) const
    {
        auto* const found = dialog->findChild<Widget*>(QString::fromUtf8(name));
        EXPECT_NE(found, nullptr) << name;
        return *found;
    }

    [[nodiscard]] bool isShown(const char* name) const { return at<QWidget>(name).isVisible(); }

    /// Types where the focus is.
    void type(const char* text) const;
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) const;

    /// On the left part, where a box has its tick.
    void click(const char* name) const;

    [[nodiscard]] std::string focus() const;
    [[nodiscard]] bool isAccepted() const;
    [[nodiscard]] bool isRejected() const;

    /// The widgets that Tab reaches, from the top, until it comes back to the first.
    [[nodiscard]] std::vector<std::string> tabOrder() const;

    std::unique_ptr<EditDlg> dialog;
};

} // namespace corma::testing
