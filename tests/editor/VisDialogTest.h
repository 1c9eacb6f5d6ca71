#pragma once

#include "editor/EditDialogTest.h"
#include "editor/EditDlgVis.h"

#include <QApplication>
#include <QTimer>

namespace corma::testing {

/// Tests of the dialogs for how something is drawn, on a drawing with the layers 0 (white) and WALL
/// (red), the linetypes ByBlock, ByLayer, Continuous and DASHED, and the text styles Standard and
/// NOTES.
class VisDialogTest : public EditDialogTest
{
protected:
    void SetUp() override;

    /// Chooses an entry of a list with the keys of a person who begins at the top.
    void chooseEntry(const char* list, int entry) const;

    [[nodiscard]] std::string fieldText(const char* name) const;

    /// What a closed list shows.
    [[nodiscard]] std::string listText(const char* name) const;

    [[nodiscard]] bool isChecked(const char* name) const;
    [[nodiscard]] bool isEnabled(const char* name) const;

    /// The names of those of the widgets that can be used, a blank between.
    [[nodiscard]] std::string enabledOf(std::initializer_list<const char*> names) const;

    /// Does something that brings up a dialog of that kind, and acts on it.
    template<class Dialog, class Act, class Reply> static void answer(Act act, Reply reply)
    {
        bool isAsked = false;
        QTimer::singleShot(0, qApp, [&] {
            auto* const asked = qobject_cast<Dialog*>(QApplication::activeModalWidget());
            isAsked = asked != nullptr;
            if (isAsked) {
                reply(*asked);
            }
            if (QWidget* const open = QApplication::activeModalWidget()) {
                open->close();
            }
        });
        act();
        EXPECT_TRUE(isAsked);
    }

    /// For each widget that Tab reaches: it has a name for those who cannot see it.
    void expectAccessibleNames() const;
};

} // namespace corma::testing
