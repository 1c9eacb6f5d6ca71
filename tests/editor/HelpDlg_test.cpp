#include "controls/icons.h"
#include "editor/HelpDlg.h"

#include <QFile>
#include <QRegularExpression>
#include <QTest>
#include <QTextBrowser>

#include <gtest/gtest.h>

namespace {

std::string pageIn(int language)
{
    QFile page(HelpDlg::pageFor(language));
    EXPECT_TRUE(page.open(QIODevice::ReadOnly)) << language;
    return page.readAll().toStdString();
}

int countOf(const QString& text, const char* pattern)
{
    auto found = QRegularExpression(QString::fromLatin1(pattern)).globalMatch(text);
    int count = 0;
    for (; found.hasNext(); found.next()) {
        ++count;
    }
    return count;
}

class HelpPages : public ::testing::TestWithParam<int>
{
};

TEST_P(HelpPages, ShowAllMarksKeysAndPartsOfTheEnglishOne)
{
    const QString english = QString::fromStdString(pageIn(9));
    const QString page = QString::fromStdString(pageIn(GetParam()));
    for (int mark = 0; mark < corma::kMarks; ++mark) {
        EXPECT_TRUE(page.contains(QStringLiteral("\"mark:%1\"").arg(mark))) << mark;
    }
    for (const char* const pattern : {"<h3>", "<li>", "<tr>", "<p>", "<b>F2</b>"}) {
        EXPECT_GT(countOf(page, pattern), 0) << pattern;
        EXPECT_EQ(countOf(page, pattern), countOf(english, pattern)) << pattern;
    }
}

TEST_P(HelpPages, AreWellFormed)
{
    const QString page = QString::fromStdString(pageIn(GetParam()));
    for (const char* const tag : {"h2", "h3", "p", "ul", "li", "table", "tr", "td", "b", "i"}) {
        const std::string opening = std::string("<") + tag + "[ >]";
        const std::string closing = std::string("</") + tag + ">";
        EXPECT_EQ(countOf(page, opening.c_str()), countOf(page, closing.c_str())) << tag;
    }
}

INSTANTIATE_TEST_SUITE_P(All, HelpPages, ::testing::Values(9, 12, 19, 25));

TEST(HelpDlg, EachTranslationIsAPageOfItsOwn)
{
    EXPECT_NE(pageIn(12), pageIn(9));
    EXPECT_NE(pageIn(19), pageIn(9));
    EXPECT_NE(pageIn(25), pageIn(9));
    EXPECT_NE(pageIn(19), pageIn(12));
}

TEST(HelpDlg, OtherLanguagesHaveTheEnglishPage)
{
    for (const int language : {7, 10, 21, 0, -1}) {
        EXPECT_EQ(HelpDlg::pageFor(language), HelpDlg::pageFor(9)) << language;
    }
}

TEST(HelpDlg, ShowsThePageUnderItsTitle)
{
    HelpDlg help(19, nullptr);
    EXPECT_EQ(help.windowTitle(), QStringLiteral("Help"));
    const auto* const page = help.findChild<QTextBrowser*>(QStringLiteral("page"));
    ASSERT_NE(page, nullptr);
    EXPECT_TRUE(page->toPlainText().contains(QStringLiteral("de editor voor instellingen")));
    EXPECT_TRUE(page->isReadOnly());
}

TEST(HelpDlg, MarksArePicturesInThePage)
{
    HelpDlg help(9, nullptr);
    auto* const page = help.findChild<QTextBrowser*>(QStringLiteral("page"));
    const auto picture
        = page->loadResource(QTextDocument::ImageResource, QUrl(QStringLiteral("mark:2")));
    EXPECT_EQ(picture.value<QPixmap>().toImage(), corma::markIcon(2).pixmap(16, 16).toImage());
}

TEST(HelpDlg, EscapeClosesIt)
{
    HelpDlg help(9, nullptr);
    help.show();
    QTest::keyClick(&help, Qt::Key_Escape);
    EXPECT_FALSE(help.isVisible());
}

} // namespace
