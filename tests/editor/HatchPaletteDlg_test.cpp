#include "editor/HatchPaletteDlg.h"
#include "editor/HatchPatternModel.h"
#include "editor/HatchSwatchDelegate.h"
#include "editor/hatch_swatch.h"
#include "settings/texts.h"
#include "support/RecordingServices.h"
#include "support/TempFolder.h"
#include "support/languages.h"

#include <QAbstractItemModelTester>
#include <QApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QListView>
#include <QPainter>
#include <QPushButton>
#include <QSignalSpy>
#include <QString>
#include <QTest>

#include <gtest/gtest.h>

using corma::HatchPalette;
using corma::HatchPatternModel;
using corma::host::HatchPattern;
using corma::testing::CurrentFolder;
using corma::testing::kDutch;
using corma::testing::RecordingServices;
using corma::testing::TempFolder;

namespace {

class HatchDialog : public ::testing::Test
{
protected:
    void open(const std::wstring& pattern, bool showCustom = false)
    {
        m_dialog = std::make_unique<HatchPaletteDlg>(pattern, showCustom);
        m_dialog->show();
        QApplication::setActiveWindow(m_dialog.get());
    }

    HatchPaletteDlg& dialog() { return *m_dialog; }

    QListView& list() { return *m_dialog->findChild<QListView*>(QStringLiteral("patterns")); }

    QPushButton& button(QDialogButtonBox::StandardButton which)
    {
        return *m_dialog->findChild<QDialogButtonBox*>(QStringLiteral("buttons"))->button(which);
    }

    QPushButton& ok() { return button(QDialogButtonBox::Ok); }

    std::wstring label(const char* name)
    {
        return m_dialog->findChild<QLabel*>(QString::fromLatin1(name))->text().toStdWString();
    }

    QPoint placeOf(const std::wstring& name)
    {
        const auto found
            = list().model()->match(list().model()->index(0, 0), Qt::DisplayRole,
                                    QString::fromStdWString(name), 1, Qt::MatchExactly);
        list().scrollTo(found.at(0));
        return list().visualRect(found.at(0)).center();
    }

    RecordingServices services;
    TempFolder folder;
    CurrentFolder there {folder.path()};

private:
    std::unique_ptr<HatchPaletteDlg> m_dialog;
};

TEST_F(HatchDialog, ShowsThePatternThatIsGiven)
{
    open(L"brick");
    EXPECT_EQ(list().currentIndex().data().toString(), QStringLiteral("BRICK"));
    EXPECT_TRUE(list().selectionModel()->isSelected(list().currentIndex()));
    EXPECT_EQ(label("nameText"), L"BRICK");
    EXPECT_EQ(label("descriptionText"), L"bricks in courses");
    EXPECT_TRUE(ok().isEnabled());
    EXPECT_TRUE(list().viewport()->rect().contains(placeOf(L"BRICK")));
    EXPECT_EQ(list().model()->rowCount(), 17);
}

TEST_F(HatchDialog, HasNothingToChooseUntilOneIsSelected)
{
    open(L"NOSUCH");
    EXPECT_FALSE(ok().isEnabled());
    EXPECT_EQ(label("nameText"), L"");
    QTest::keyClick(&list(), Qt::Key_Return);
    EXPECT_TRUE(dialog().isVisible());
    EXPECT_EQ(dialog().chosen(), L"");
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, placeOf(L"NET"));
    EXPECT_TRUE(ok().isEnabled());
    EXPECT_EQ(label("nameText"), L"NET");
    EXPECT_TRUE(dialog().isVisible()) << "one click only selects";
}

TEST_F(HatchDialog, ADoubleClickChooses)
{
    open(L"NET");
    const QSignalSpy finished(&dialog(), &QDialog::finished);
    const QPoint place = placeOf(L"ANSI31");
    QTest::mouseClick(list().viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(list().viewport(), Qt::LeftButton, {}, place);
    EXPECT_EQ(dialog().result(), QDialog::Accepted);
    EXPECT_EQ(finished.count(), 1);
    EXPECT_EQ(dialog().chosen(), L"ANSI31");
}

TEST_F(HatchDialog, TheKeyboardDoesAll)
{
    open(L"SOLID");
    EXPECT_TRUE(list().hasFocus());
    const QSignalSpy finished(&dialog(), &QDialog::finished);
    QTest::keyClick(&list(), Qt::Key_Right);
    EXPECT_EQ(label("nameText"), L"ANGLE");
    QTest::keyClick(&list(), Qt::Key_End);
    EXPECT_EQ(label("nameText"), L"SQUARE");
    QTest::keyClicks(&list(), QStringLiteral("ansi33"));
    EXPECT_EQ(label("nameText"), L"ANSI33");
    QTest::keyClick(&list(), Qt::Key_Return);
    EXPECT_EQ(finished.count(), 1);
    EXPECT_EQ(dialog().result(), QDialog::Accepted);
    EXPECT_EQ(dialog().chosen(), L"ANSI33");
}

TEST_F(HatchDialog, EscapeAndCancelChooseNothing)
{
    open(L"NET");
    QTest::keyClick(&list(), Qt::Key_Escape);
    EXPECT_FALSE(dialog().isVisible());
    EXPECT_EQ(dialog().result(), QDialog::Rejected);
    open(L"NET");
    button(QDialogButtonBox::Cancel).click();
    EXPECT_FALSE(dialog().isVisible());
    EXPECT_EQ(dialog().result(), QDialog::Rejected);
}

TEST_F(HatchDialog, SpeaksTheLanguageInForce)
{
    corma::setTextLanguage(kDutch);
    open(L"NET");
    EXPECT_EQ(dialog().windowTitle().toStdWString(), corma::textOf(corma::row::kHatch, kDutch));
    EXPECT_EQ(label("patternLabel"), L"Patroon:");
    EXPECT_EQ(list().accessibleName(), QStringLiteral("Patroon:"));
    EXPECT_EQ(ok().text(), QStringLiteral("OK"));
    EXPECT_EQ(button(QDialogButtonBox::Cancel).text().toStdWString(),
              corma::textOf(corma::row::kCancel, kDutch));
}

TEST_F(HatchDialog, TheSelectedPatternHasTheColourOfASelection)
{
    open(L"NET");
    QApplication::processEvents();
    const QImage image = list().viewport()->grab().toImage();
    const QRect selected = list().visualRect(list().currentIndex());
    const QColor highlight = list().palette().color(QPalette::Active, QPalette::Highlight);
    const QPoint inside(selected.left() + 3, selected.center().y());
    EXPECT_EQ(image.pixelColor(inside), highlight);
    const QRect other = list().visualRect(list().model()->index(0, 0));
    EXPECT_NE(image.pixelColor(QPoint(other.left() + 3, other.center().y())), highlight);
}

TEST_F(HatchDialog, CustomPatternsAreShownWhereTheyAreWanted)
{
    folder.write(L"s/waves.pat", "*WAVES,all at sea\n0,0,0,0,1\n");
    services.variables[L"ACAD"] = folder.path(L"s");
    open(L"WAVES");
    EXPECT_EQ(label("nameText"), L"");
    open(L"WAVES", true);
    EXPECT_EQ(label("descriptionText"), L"all at sea");
}

TEST_F(HatchDialog, AnEmptyFileLeavesNothingToChoose)
{
    folder.write(L"acadiso.pat", "");
    open(L"NET");
    EXPECT_EQ(list().model()->rowCount(), 0);
    EXPECT_FALSE(ok().isEnabled());
}

TEST_F(HatchDialog, CanBeMadeLargerAndSmaller)
{
    open(L"NET");
    const int height = list().height();
    dialog().resize(dialog().width() * 2, dialog().height() * 2);
    QApplication::processEvents();
    EXPECT_GT(list().height(), height);
    dialog().resize(dialog().minimumSizeHint());
    QApplication::processEvents();
    EXPECT_LT(list().height(), height);
}

TEST(HatchPatternModelTest, IsAModel)
{
    const std::vector<HatchPattern> patterns
        = {{L"A", L"about a", {{.across = 1.0}}}, {L"Ba", L"about b", {{.across = 1.0}}}};
    const HatchPalette palette(patterns, L"");
    HatchPatternModel model(palette);
    const QAbstractItemModelTester tester(&model,
                                          QAbstractItemModelTester::FailureReportingMode::Fatal);
    EXPECT_EQ(model.rowCount(), 2);
    const QModelIndex second = model.index(1);
    EXPECT_EQ(second.data(), QStringLiteral("Ba"));
    EXPECT_EQ(second.data(Qt::ToolTipRole), QStringLiteral("about b"));
    EXPECT_EQ(second.data(Qt::AccessibleDescriptionRole), QStringLiteral("about b"));
    EXPECT_EQ(model.pattern(second).name, L"Ba");
}

// How much of a swatch has the colour of its lines, in percent.
int inked(const HatchPattern& pattern, const QPalette& palette)
{
    QImage image(100, 100, QImage::Format_RGB32);
    image.fill(Qt::green);
    QPainter painter(&image);
    corma::paintSwatch(painter, image.rect(), palette, pattern, corma::swatchSide(pattern));
    painter.end();
    int count = 0;
    const int middle
        = (palette.text().color().lightness() + palette.base().color().lightness()) / 2;
    const bool isDark = palette.text().color().lightness() < middle;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            EXPECT_NE(image.pixelColor(x, y), QColor(Qt::green));
            count += (image.pixelColor(x, y).lightness() < middle) == isDark ? 1 : 0;
        }
    }
    return count / 100;
}

TEST(PaintedSwatch, IsDistinctInLightAndDark)
{
    QPalette light;
    light.setColor(QPalette::Base, Qt::white);
    light.setColor(QPalette::Text, Qt::black);
    QPalette dark;
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::Text, QColor(230, 230, 230));
    const HatchPattern solid {L"Solid", L"", {{.across = 1.0}}};
    const HatchPattern lines {L"LINE", L"", {{.across = 1.0}}};
    for (const QPalette& palette : {light, dark}) {
        EXPECT_EQ(inked(solid, palette), 100);
        const int percent = inked(lines, palette);
        EXPECT_GE(percent, 4);
        EXPECT_LE(percent, 14);
    }
}

} // namespace
