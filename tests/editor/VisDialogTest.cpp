#include "editor/VisDialogTest.h"

#include "support/table_entries.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

namespace corma::testing {

void VisDialogTest::SetUp()
{
    EditDialogTest::SetUp();
    newDrawing();
    addLayer(L"WALL", 1);
    addTextStyle(L"NOTES");
    addLinetype(L"DASHED");
}

void VisDialogTest::chooseEntry(const char* list, int entry) const
{
    auto& box = at<QComboBox>(list);
    box.setFocus();
    QTest::keyClick(&box, Qt::Key_Home);
    for (int i = 0; i < entry; ++i) {
        QTest::keyClick(&box, Qt::Key_Down);
    }
}

std::string VisDialogTest::fieldText(const char* name) const
{
    return at<QLineEdit>(name).text().toStdString();
}

std::string VisDialogTest::listText(const char* name) const
{
    return at<QComboBox>(name).currentText().toStdString();
}

bool VisDialogTest::isChecked(const char* name) const
{
    return at<QAbstractButton>(name).isChecked();
}

bool VisDialogTest::isEnabled(const char* name) const
{
    return at<QWidget>(name).isEnabled();
}

std::string VisDialogTest::enabledOf(std::initializer_list<const char*> names) const
{
    std::string all;
    for (const char* const name : names) {
        if (isEnabled(name)) {
            all += (all.empty() ? "" : " ") + std::string(name);
        }
    }
    return all;
}

void VisDialogTest::expectAccessibleNames() const
{
    for (const std::string& name : tabOrder()) {
        const auto& widget = at<QWidget>(name.c_str());
        const auto* const button = qobject_cast<const QPushButton*>(&widget);
        EXPECT_FALSE(widget.accessibleName().isEmpty()
                     && (button == nullptr || button->text().isEmpty()))
            << name;
    }
}

} // namespace corma::testing
