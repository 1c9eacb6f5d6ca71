#include "editor/NieuwDlg.h"
#include "editor/QuietView.h"
#include "support/RecordingServices.h"
#include "support/TempFolder.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <gtest/gtest.h>

namespace corma::testing {

namespace {

class NieuwDlgTest : public ::testing::Test
{
protected:
    NieuwDlgTest() { folder.write(L"tool.ini", "A=1\n[Walls]\nB=2\n[Doors]\nC=3\n"); }

    void make(NameOf what, int language = kEnglish)
    {
        desk = std::make_unique<Desk>(
            DeskStart {.request = {.iniFile = folder.path(L"tool.ini"), .language = language}},
            preferences);
        desk->open(view);
        dialog = std::make_unique<NieuwDlg>(*desk, what, nullptr);
        dialog->show();
    }

    template<class Widget> [[nodiscard]] Widget* get(const char* name) const
    {
        auto* const widget = dialog->findChild<Widget*>(QString::fromLatin1(name));
        EXPECT_NE(widget, nullptr) << name;
        return widget;
    }

    [[nodiscard]] QPushButton* button(QDialogButtonBox::StandardButton which) const
    {
        return get<QDialogButtonBox>("buttons")->button(which);
    }

    const RecordingServices services;
    const TempFolder folder;
    KeptPreferences preferences;
    QuietView view;
    std::unique_ptr<Desk> desk;
    std::unique_ptr<NieuwDlg> dialog;
};

// Without the "&" before the letter that leads to the widget.
std::string plain(QString text)
{
    return text.remove(u'&').toStdString();
}

TEST_F(NieuwDlgTest, ASettingIsAskedForItsNameAlone)
{
    make(NameOf::setting);
    EXPECT_FALSE(get<QCheckBox>("copy")->isVisible());
    EXPECT_FALSE(get<QComboBox>("source")->isVisible());
    EXPECT_TRUE(get<QLineEdit>("name")->isVisible());
}

TEST_F(NieuwDlgTest, ACategoryCanBeACopy)
{
    make(NameOf::category);
    EXPECT_TRUE(get<QCheckBox>("copy")->isVisible());
    const auto* const source = get<QComboBox>("source");
    EXPECT_TRUE(source->isVisible());
    EXPECT_FALSE(source->isEnabled());
    EXPECT_FALSE(source->isEditable());
    EXPECT_EQ(source->count(), 3);
    EXPECT_EQ(source->currentText(), QStringLiteral("General"));
}

TEST_F(NieuwDlgTest, TheFormForASettingIsTheLowerOne)
{
    make(NameOf::category);
    const int height = dialog->height();
    make(NameOf::setting);
    EXPECT_LE(dialog->height(), height - 40);
}

TEST_F(NieuwDlgTest, ItsTextsAreThoseOfTheDesk)
{
    make(NameOf::category, 19);
    EXPECT_EQ(plain(dialog->windowTitle()), "Nieuw");
    EXPECT_EQ(plain(get<QLabel>("nameLabel")->text()), "Geef naam op:");
    EXPECT_EQ(plain(get<QCheckBox>("copy")->text()), "Kopie van:");
    EXPECT_EQ(plain(button(QDialogButtonBox::Ok)->text()), "OK");
    EXPECT_EQ(plain(button(QDialogButtonBox::Cancel)->text()), "Annuleren");
}

TEST_F(NieuwDlgTest, TypingGoesIntoTheNameAtOnce)
{
    make(NameOf::setting);
    EXPECT_EQ(dialog->focusWidget(), get<QLineEdit>("name"));
    EXPECT_EQ(get<QLabel>("nameLabel")->buddy(), get<QLineEdit>("name"));
    QTest::keyClicks(dialog->focusWidget(), QStringLiteral("Height"));
    QTest::keyClick(dialog->focusWidget(), Qt::Key_Return);
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_EQ(dialog->answer().name, L"Height");
    EXPECT_EQ(dialog->answer().copyOf, std::nullopt);
}

TEST_F(NieuwDlgTest, ACopyIsTickedAndChosen)
{
    make(NameOf::category);
    QTest::keyClicks(get<QLineEdit>("name"), QStringLiteral("Stairs"));
    QTest::keyClick(get<QCheckBox>("copy"), Qt::Key_Space);
    ASSERT_TRUE(get<QComboBox>("source")->isEnabled());
    QTest::keyClick(get<QComboBox>("source"), Qt::Key_Down);
    QTest::mouseClick(button(QDialogButtonBox::Ok), Qt::LeftButton);
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_EQ(dialog->answer().name, L"Stairs");
    EXPECT_EQ(dialog->answer().copyOf, L"Walls");
}

TEST_F(NieuwDlgTest, ClearingTheTickLocksTheListAgain)
{
    make(NameOf::category);
    QTest::keyClick(get<QCheckBox>("copy"), Qt::Key_Space);
    QTest::keyClick(get<QCheckBox>("copy"), Qt::Key_Space);
    EXPECT_FALSE(get<QComboBox>("source")->isEnabled());
    QTest::keyClick(get<QLineEdit>("name"), Qt::Key_Return);
    EXPECT_EQ(dialog->answer().copyOf, std::nullopt);
}

TEST_F(NieuwDlgTest, EscapeAndCancelTakeNoName)
{
    make(NameOf::setting);
    QTest::keyClick(get<QLineEdit>("name"), Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(dialog->result(), QDialog::Rejected);
    make(NameOf::setting);
    QTest::mouseClick(button(QDialogButtonBox::Cancel), Qt::LeftButton);
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(dialog->result(), QDialog::Rejected);
}

TEST_F(NieuwDlgTest, AnEmptyNameIsTaken)
{
    make(NameOf::category);
    QTest::mouseClick(button(QDialogButtonBox::Ok), Qt::LeftButton);
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_EQ(dialog->answer().name, L"");
}

} // namespace

} // namespace corma::testing
