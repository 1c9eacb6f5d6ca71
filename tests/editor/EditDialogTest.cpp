#include "editor/EditDialogTest.h"

namespace corma::testing {

void EditDialogTest::TearDown()
{
    dialog.reset();
    SettingDialogTest::TearDown();
}

void EditDialogTest::type(const char* text) const
{
    QTest::keyClicks(dialog->focusWidget(), QString::fromUtf8(text));
}

void EditDialogTest::press(Qt::Key key, Qt::KeyboardModifiers modifiers) const
{
    QTest::keyClick(dialog->focusWidget(), key, modifiers);
}

void EditDialogTest::click(const char* name) const
{
    constexpr int kLeftPart = 10; // pixels
    auto& widget = at<QWidget>(name);
    QTest::mouseClick(&widget, Qt::LeftButton, {}, QPoint(kLeftPart, widget.height() / 2));
}

std::string EditDialogTest::focus() const
{
    return dialog->focusWidget()->objectName().toStdString();
}

bool EditDialogTest::isAccepted() const
{
    return !dialog->isVisible() && dialog->result() == QDialog::Accepted;
}

bool EditDialogTest::isRejected() const
{
    return !dialog->isVisible() && dialog->result() == QDialog::Rejected;
}

std::vector<std::string> EditDialogTest::tabOrder() const
{
    constexpr std::size_t kMost = 40;
    at<QWidget>("typeText").setFocus();
    std::vector<std::string> names;
    do {
        names.push_back(focus());
        press(Qt::Key_Tab);
    } while (focus() != names.front() && names.size() < kMost);
    return names;
}

} // namespace corma::testing
