#include "controls/CIconStatic.h"
#include "controls/xx_aboutDlg.h"
#include "support/RecordingServices.h"
#include <corma/texts.h>
#include <corma/xx_gridListCtrl.h>

#include <QClipboard>
#include <QDesktopServices>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace corma::testing {

namespace {

/// Takes the web addresses that would be opened by the desktop.
class OpenedAddresses : public QObject
{
    Q_OBJECT

public:
    OpenedAddresses() { QDesktopServices::setUrlHandler(scheme(), this, "take"); }

    OpenedAddresses(const OpenedAddresses&) = delete;
    OpenedAddresses& operator=(const OpenedAddresses&) = delete;

    ~OpenedAddresses() override { QDesktopServices::unsetUrlHandler(scheme()); }

    Q_INVOKABLE void take(const QUrl& url) { addresses.push_back(url.toString()); }

    std::vector<QString> addresses;

private:
    static QString scheme() { return QUrl(xx_aboutDlg::supportAddress()).scheme(); }
};

class AboutDialog : public ::testing::Test
{
protected:
    AboutDialog()
    {
        box.appName = L"Plattegrond";
        box.appVersion = L"4.2.1";
        box.menuVersion = L"4.2";
        box.appDate = L"07/07/2026 09:05:09";
        box.copyright = L"Copyright (c) 2026 Korvane";
        box.setRows({L"Software\t1\tPlattegrond\tyes", L"Hardware\t2"});
    }

    xx_aboutDlg& show(const QImage* bitmap = nullptr)
    {
        dialog = std::make_unique<xx_aboutDlg>(box, bitmap, nullptr);
        dialog->show();
        dialog->activateWindow();
        QApplication::processEvents();
        return *dialog;
    }

    template<class Widget> Widget& find(const char* name)
    {
        auto* const found = dialog->findChild<Widget*>(QLatin1StringView(name));
        if (found == nullptr) {
            throw std::runtime_error(name);
        }
        return *found;
    }

    QString line(const char* name) { return find<QLineEdit>(name).text(); }

    QString label(const char* name) { return find<QLabel>(name).text(); }

    /// All of a widget can be seen within the dialog.
    bool isInSight(const QWidget& widget) const
    {
        const QRect place(widget.mapTo(dialog.get(), QPoint()), widget.size());
        return widget.isVisible() && dialog->rect().contains(place);
    }

    RecordingServices services;
    AboutBox box;
    std::unique_ptr<xx_aboutDlg> dialog;
};

TEST_F(AboutDialog, ShowsWhatTheBoxHolds)
{
    show();
    EXPECT_EQ(dialog->windowTitle(), QStringLiteral("About"));
    EXPECT_EQ(label("appName"), QStringLiteral("Plattegrond"));
    EXPECT_EQ(label("appVersionLabel"), QStringLiteral("Application Version"));
    EXPECT_EQ(line("appVersion"), QStringLiteral("4.2.1"));
    EXPECT_EQ(label("menuVersionLabel"), QStringLiteral("Menu Version"));
    EXPECT_EQ(line("menuVersion"), QStringLiteral("4.2"));
    EXPECT_EQ(label("appDateLabel"), QStringLiteral("Application Date"));
    EXPECT_EQ(line("appDate"), QStringLiteral("07/07/2026 09:05:09"));
    EXPECT_EQ(label("copyright"), QStringLiteral("Copyright (c) 2026 Korvane"));
    EXPECT_TRUE(isInSight(find<CIconStatic>("header")));
}

TEST_F(AboutDialog, ShowsTheRowsInAGridOfFiveColumns)
{
    show();
    auto& grid = find<xx_gridListCtrl>("grid");
    std::vector<QString> headings;
    for (int column = 0; column < grid.columnCount(); ++column) {
        headings.push_back(grid.model()->headerData(column, Qt::Horizontal).toString());
        EXPECT_EQ(grid.header()->visualIndex(column), column);
        const QVariant alignment
            = grid.model()->headerData(column, Qt::Horizontal, Qt::TextAlignmentRole);
        EXPECT_TRUE(alignment.value<Qt::Alignment>() & Qt::AlignLeft) << column;
    }
    EXPECT_THAT(headings,
                ElementsAre(QStringLiteral("Hard-/Software"), QStringLiteral("Number"),
                            QStringLiteral("Name"), QStringLiteral("Success"), QString()));
    EXPECT_EQ(grid.gridStyle(), 0);
    ASSERT_EQ(grid.rowCount(), 2);
    EXPECT_EQ(grid.text(0, 0), QStringLiteral("Software"));
    EXPECT_EQ(grid.text(0, 3), QStringLiteral("yes"));
    EXPECT_EQ(grid.text(0, 4), QString());
    EXPECT_EQ(grid.text(1, 1), QStringLiteral("2"));
    EXPECT_EQ(grid.text(1, 2), QString());
}

TEST_F(AboutDialog, ColumnsAreAsWideAsTheirTexts)
{
    box.setRows({L"a\tb\tc\td\te", std::wstring(100, L'w') + L"\tb"});
    show();
    auto& grid = find<xx_gridListCtrl>("grid");
    const int text = grid.fontMetrics().horizontalAdvance(QString(100, QLatin1Char('w')));
    EXPECT_GE(grid.columnWidth(0), text);
    EXPECT_LT(grid.columnWidth(1), text);
}

TEST_F(AboutDialog, OkEnterAndEscapeCloseIt)
{
    show();
    QTest::mouseClick(find<QDialogButtonBox>("buttons").button(QDialogButtonBox::Ok),
                      Qt::LeftButton);
    EXPECT_FALSE(dialog->isVisible());
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Escape}) {
        show();
        QTest::keyClick(dialog->focusWidget(), key);
        EXPECT_FALSE(dialog->isVisible()) << key;
    }
    // Also from within the list and a text.
    for (const char* const name : {"grid", "menuVersion"}) {
        for (const auto key : {Qt::Key_Return, Qt::Key_Escape}) {
            show();
            find<QWidget>(name).setFocus();
            QTest::keyClick(dialog->focusWidget(), key);
            EXPECT_FALSE(dialog->isVisible()) << name << " " << key;
        }
    }
}

TEST_F(AboutDialog, BeginsAtOkAndTabGoesInReadingOrder)
{
    show();
    EXPECT_EQ(dialog->focusWidget(),
              find<QDialogButtonBox>("buttons").button(QDialogButtonBox::Ok));
    std::vector<std::string> names;
    for (int i = 0; i < 7; ++i) {
        QTest::keyClick(dialog->focusWidget(), Qt::Key_Tab);
        names.push_back(dialog->focusWidget()->objectName().toStdString());
    }
    EXPECT_THAT(names,
                ElementsAre("appName", "appVersion", "menuVersion", "appDate", "copyright", "grid",
                            "link"));
}

// --- the link ------------------------------------------------------------------------------------

TEST_F(AboutDialog, TheLinkOpensTheAddressByMouseAndByKeyboard)
{
    const OpenedAddresses opened;
    show();
    auto& link = find<QLabel>("link");
    EXPECT_EQ(link.toolTip(), xx_aboutDlg::supportAddress());
    QTest::mouseClick(&link, Qt::LeftButton, {}, QPoint(5, link.height() / 2));
    EXPECT_THAT(opened.addresses, ElementsAre(xx_aboutDlg::supportAddress()));
    find<QWidget>("grid").setFocus();
    QTest::keyClick(dialog->focusWidget(), Qt::Key_Tab);
    ASSERT_EQ(dialog->focusWidget(), &link);
    QTest::keyClick(&link, Qt::Key_Return);
    EXPECT_EQ(opened.addresses.size(), 2U);
    EXPECT_TRUE(dialog->isVisible());
}

TEST_F(AboutDialog, AnAddressThatCannotBeOpenedIsTold)
{
    if (QGuiApplication::platformName() != QStringLiteral("offscreen")) {
        GTEST_SKIP() << "a desktop would open it";
    }
    show();
    Q_EMIT find<QLabel>("link").linkActivated(QString());
    EXPECT_THAT(services.alerts,
                ElementsAre(L"Cannot open " + xx_aboutDlg::supportAddress().toStdWString()));
}

TEST_F(AboutDialog, TheLinkIsInTheLanguageInForce)
{
    for (const int language : {7, 9, 10, 12, 19, 21, 25}) {
        setTextLanguage(language);
        show();
        const QString text = QString::fromWCharArray(textOf(3056, language));
        EXPECT_TRUE(label("link").contains(QLatin1Char('>') + text + QLatin1Char('<'))) << language;
        EXPECT_EQ(find<QLabel>("link").accessibleName(), text);
    }
}

// --- texts ---------------------------------------------------------------------------------------

TEST_F(AboutDialog, TextsAreNoMarkup)
{
    const std::wstring markup = L"<b>a</b><img src='http://x'>&amp;&x";
    box = {markup, markup, markup, markup, markup, {{markup}}};
    show();
    const QString expected = QString::fromStdWString(markup);
    for (const char* const name : {"appName", "copyright"}) {
        EXPECT_EQ(label(name), expected);
        EXPECT_EQ(find<QLabel>(name).textFormat(), Qt::PlainText);
    }
    for (const char* const name : {"appVersion", "menuVersion", "appDate"}) {
        EXPECT_EQ(line(name), expected);
    }
    EXPECT_EQ(find<xx_gridListCtrl>("grid").text(0, 0), expected);
}

TEST_F(AboutDialog, TextsCanBeCopiedAndNotChanged)
{
    show();
    for (const char* const name : {"appVersion", "menuVersion", "appDate"}) {
        auto& shown = find<QLineEdit>(name);
        EXPECT_TRUE(shown.isReadOnly()) << name;
        shown.selectAll();
        shown.copy();
        EXPECT_EQ(QApplication::clipboard()->text(), shown.text()) << name;
    }
    for (const char* const name : {"appName", "copyright"}) {
        auto& shown = find<QLabel>(name);
        shown.setSelection(0, static_cast<int>(shown.text().size()));
        QTest::keySequence(&shown, QKeySequence::Copy);
        EXPECT_EQ(QApplication::clipboard()->text(), shown.text()) << name;
    }
}

TEST_F(AboutDialog, WhatIsEmptyTakesNoRoom)
{
    box = {};
    show();
    for (const char* const name : {"appName", "copyright", "bitmap"}) {
        EXPECT_FALSE(find<QWidget>(name).isVisible()) << name;
    }
    EXPECT_EQ(line("appVersion"), QString());
    EXPECT_EQ(find<xx_gridListCtrl>("grid").rowCount(), 0);
    EXPECT_TRUE(isInSight(find<QWidget>("grid")));
}

TEST_F(AboutDialog, EachWidgetTellsWhatItIs)
{
    show();
    for (const char* const name : {"appName", "appVersion", "menuVersion", "appDate", "copyright",
                                   "bitmap", "grid", "link"}) {
        EXPECT_FALSE(find<QWidget>(name).accessibleName().isEmpty()) << name;
    }
}

// --- sizes ---------------------------------------------------------------------------------------

TEST_F(AboutDialog, StaysUsableWithLongTextsAndManyRows)
{
    const QSize usual = show().size();
    std::wstring words;
    while (words.size() < 250) {
        words += L"words ";
    }
    const std::wstring unbroken(255, L'w');
    for (const std::wstring& text : {words, unbroken}) {
        box = {text, text, text, text, text, {}};
        box.setRows(std::vector<std::wstring>(1000, text + L"\t" + text));
        show();
        EXPECT_EQ(dialog->width(), usual.width());
        EXPECT_LT(dialog->height(), 2 * usual.height());
        EXPECT_EQ(find<xx_gridListCtrl>("grid").rowCount(), 1000);
        for (const char* const name :
             {"header", "appName", "menuVersion", "copyright", "grid", "link", "buttons"}) {
            EXPECT_TRUE(isInSight(find<QWidget>(name))) << name;
        }
        EXPECT_GE(find<QWidget>("grid").height(), find<QWidget>("buttons").height());
    }
}

struct PictureRow
{
    const char* name;
    QSize size;
    QSize shown; // at 100 %
};

void PrintTo(const PictureRow& row, std::ostream* out)
{
    *out << row.name;
}

class AboutPicture : public AboutDialog, public ::testing::WithParamInterface<PictureRow>
{
};

TEST_P(AboutPicture, FitsInItsPlace)
{
    QImage image(GetParam().size, QImage::Format_RGB32);
    image.fill(Qt::red);
    show(&image);
    const auto& shown = find<QLabel>("bitmap");
    EXPECT_TRUE(isInSight(shown));
    EXPECT_EQ(shown.pixmap().deviceIndependentSize().toSize(), GetParam().shown);
    EXPECT_EQ(shown.pixmap().toImage().pixelColor(0, 0), QColor(Qt::red));
    EXPECT_TRUE(isInSight(find<QWidget>("buttons")));
}

INSTANTIATE_TEST_SUITE_P(All, AboutPicture,
                         ::testing::Values(PictureRow {"OnePixel", {1, 1}, {1, 1}},
                                           PictureRow {"Small", {30, 20}, {30, 20}},
                                           PictureRow {"JustFitting", {128, 128}, {128, 128}},
                                           PictureRow {"TooWideByOne", {129, 128}, {128, 127}},
                                           PictureRow {"TooHighByOne", {128, 129}, {127, 128}},
                                           PictureRow {"Large", {4000, 4000}, {128, 128}},
                                           PictureRow {"Wide", {4000, 2000}, {128, 64}},
                                           PictureRow {"AsThinAsALine", {4000, 1}, {128, 1}}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(AboutDialog, APictureWithoutPixelsIsNone)
{
    const QImage image;
    show(&image);
    EXPECT_FALSE(find<QWidget>("bitmap").isVisible());
}

} // namespace

} // namespace corma::testing

#include "xx_aboutDlg_test.moc"
