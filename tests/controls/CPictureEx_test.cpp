#include "controls/CPictureEx.h"
#include "controls/pictures.h"
#include "gif_bytes.h"
#include "support/TempFolder.h"

#include <QAccessible>
#include <QAccessibleInterface>
#include <QBuffer>
#include <QFile>
#include <QPainter>
#include <QtTest>

#include <array>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace {

using corma::testing::gifBlocks;
using corma::testing::gifBytes;
using corma::testing::gifHead;
using corma::testing::TempFolder;

const QColor kPaperBehind(1, 2, 3); // behind the picture

/// A picture of one colour in a format that Qt writes.
std::string fileOf(const char* format, const QSize& size = {3, 2}, const QColor& colour = Qt::red)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(colour);
    QBuffer buffer;
    EXPECT_TRUE(buffer.open(QIODevice::WriteOnly) && image.save(&buffer, format)) << format;
    return buffer.data().toStdString();
}

const std::string kStill = gifBytes({.width = 3, .height = 2}, {{.width = 3, .height = 2}});

/// Red and green all over, by turns.
const std::string kMoving = gifBytes({.width = 3, .height = 2},
                                     {{.width = 3, .height = 2, .colour = 1, .delay = 5},
                                      {.width = 3, .height = 2, .colour = 2, .delay = 5}});

/// One that stays red for hours.
const std::string kSlow = gifBytes({.width = 5, .height = 4},
                                   {{.width = 5, .height = 4, .colour = 1, .delay = 65535},
                                    {.width = 5, .height = 4, .colour = 2, .delay = 65535}});

class Picture : public ::testing::Test
{
protected:
    Picture()
    {
        QPalette palette;
        palette.setColor(QPalette::Window, kPaperBehind);
        control->setPalette(palette);
        control->setAutoFillBackground(true);
        control->resize(10, 8);
    }

    [[nodiscard]] bool load(const std::string& bytes) const
    {
        return control->load(bytes.data(), bytes.size());
    }

    [[nodiscard]] QImage seen(double scale = 1) const
    {
        QImage image(QSize(10, 8) * scale, QImage::Format_RGB32);
        image.setDevicePixelRatio(scale);
        control->render(&image);
        return image;
    }

    [[nodiscard]] bool isEmpty() const
    {
        return control->pictureSize() == QSize(0, 0) && control->sizeHint() == QSize(0, 0)
            && !control->isPlaying() && !control->draw() && seenColours() == "paper";
    }

    /// What the control paints in: the paper only, or the picture's colour at its corner.
    [[nodiscard]] std::string seenColours() const
    {
        const QColor corner = seen().pixelColor(0, 0);
        return corner == kPaperBehind ? "paper" : corner.name().toStdString();
    }

    [[nodiscard]] bool comesToShow(const char* colour) const
    {
        return QTest::qWaitFor([&] { return seenColours() == colour; });
    }

    std::unique_ptr<CPictureEx> control = std::make_unique<CPictureEx>();
    TempFolder folder;
};

constexpr auto kRed = "#ff0000";
constexpr auto kGreen = "#00ff00";

TEST_F(Picture, OfEveryCommonFormatIsShown)
{
    for (const char* format : {"BMP", "PNG", "ICO", "PPM"}) {
        ASSERT_TRUE(load(fileOf(format))) << format;
        EXPECT_EQ(control->pictureSize(), QSize(3, 2)) << format;
        EXPECT_TRUE(control->draw());
        EXPECT_EQ(seenColours(), kRed) << format;
    }
    ASSERT_TRUE(load(kStill));
    EXPECT_TRUE(control->draw());
    EXPECT_EQ(seenColours(), kRed);
}

TEST_F(Picture, OfAFormatWithLossIsShown)
{
    ASSERT_TRUE(load(fileOf("JPG", {30, 20})));
    EXPECT_EQ(control->pictureSize(), QSize(30, 20));
    EXPECT_TRUE(control->draw());
    const QColor corner = seen().pixelColor(0, 0);
    EXPECT_GT(corner.red(), 240);
    EXPECT_LT(corner.green(), 15);
}

TEST_F(Picture, OfAGifWithAnyVersionIsShown)
{
    ASSERT_TRUE(load("GIFxyz" + kStill.substr(6)));
    EXPECT_TRUE(control->draw());
    EXPECT_EQ(seenColours(), kRed);
    ASSERT_TRUE(load("GIFxyz" + kMoving.substr(6)));
    EXPECT_TRUE(control->draw());
    EXPECT_TRUE(comesToShow(kGreen));
}

TEST_F(Picture, IsReadFromItsFile)
{
    ASSERT_TRUE(control->load(folder.write(L"a.png", fileOf("PNG", {7, 5}))));
    EXPECT_EQ(control->pictureSize(), QSize(7, 5));
    EXPECT_EQ(control->sizeHint(), QSize(7, 5));
}

TEST_F(Picture, IsWhatTheContentSaysAndNotTheName)
{
    EXPECT_TRUE(control->load(folder.write(L"a.gif", fileOf("BMP"))));
    EXPECT_TRUE(control->draw());
    EXPECT_FALSE(control->isPlaying());
    EXPECT_EQ(seenColours(), kRed);

    EXPECT_TRUE(control->load(folder.write(L"a.bmp", kMoving)));
    EXPECT_TRUE(control->draw());
    EXPECT_TRUE(control->isPlaying());
}

TEST_F(Picture, ThatCannotBeReadLeavesTheControlEmpty)
{
    std::string wide = fileOf("BMP");
    wide.replace(18, 8, "\xFF\xFF\0\0\xFF\xFF\0\0", 8); // width and height in pixels
    const std::array<std::string, 8> defects = {
        "",
        "nonsense",
        "GIF",
        fileOf("PNG").substr(0, 20),
        gifHead({}) + ";",
        gifBytes({.width = 65535, .height = 65535}, {{}, {}}),
        gifBytes({}, {{.width = 0}, {.width = 0}}),
        wide,
    };
    for (std::size_t i = 0; i < defects.size(); ++i) {
        for (const std::string& former : {std::string(), fileOf("PNG"), kMoving}) {
            EXPECT_EQ(load(former), !former.empty());
            control->draw();
            EXPECT_FALSE(load(defects[i])) << i;
            EXPECT_TRUE(isEmpty()) << i;
        }
        EXPECT_FALSE(control->load(folder.write(L"a.gif", defects[i]))) << i;
        EXPECT_TRUE(isEmpty()) << i;
    }
}

TEST_F(Picture, ThatIsNotThereLeavesTheControlEmpty)
{
    for (const std::wstring& path : {std::wstring(), folder.path(L"a.gif"), folder.path()}) {
        ASSERT_TRUE(load(kMoving));
        ASSERT_TRUE(control->draw());
        EXPECT_FALSE(control->load(path));
        EXPECT_TRUE(isEmpty());
    }
    EXPECT_FALSE(control->load(nullptr, 5));
    EXPECT_TRUE(isEmpty());
}

TEST_F(Picture, OfAFileOfManyMegabytesIsNotLoaded)
{
    const std::wstring path = folder.write(L"a.bmp", fileOf("BMP"));
    ASSERT_TRUE(control->load(path));
    ASSERT_TRUE(QFile::resize(QString::fromStdWString(path), 256LL * 1024 * 1024 + 1));
    EXPECT_FALSE(control->load(path));
}

TEST_F(Picture, IsShownOnceItIsDrawn)
{
    EXPECT_FALSE(control->draw());
    ASSERT_TRUE(load(fileOf("BMP")));
    EXPECT_EQ(seenColours(), "paper");
    EXPECT_TRUE(control->draw());
    EXPECT_EQ(seenColours(), kRed);
}

TEST_F(Picture, BeginsAtTheUpperLeftCorner)
{
    ASSERT_TRUE(load(fileOf("BMP")) && control->draw());
    QImage expected(10, 8, QImage::Format_RGB32);
    expected.fill(kPaperBehind);
    QPainter(&expected).fillRect(0, 0, 3, 2, Qt::red);
    EXPECT_EQ(seen(), expected);
}

TEST_F(Picture, KeepsItsSizeOnAScreenOfMorePixels)
{
    ASSERT_TRUE(load(fileOf("BMP")) && control->draw());
    const QImage image = seen(2);
    EXPECT_EQ(image.pixelColor(5, 3), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(6, 3), kPaperBehind);
    EXPECT_EQ(image.pixelColor(5, 4), kPaperBehind);
}

TEST_F(Picture, IsPaintedInPartWhenAPartIsAskedFor)
{
    ASSERT_TRUE(load(fileOf("BMP")) && control->draw());
    control->setPaintRect({1, 1, 9, 9});
    QImage expected(10, 8, QImage::Format_RGB32);
    expected.fill(kPaperBehind);
    QPainter(&expected).fillRect(1, 1, 2, 1, Qt::red);
    EXPECT_EQ(seen(), expected);

    control->setPaintRect({1, 1, 0, 9});
    EXPECT_EQ(seenColours(), kRed);
}

TEST_F(Picture, IsPaintedWholeAfterAnotherWasPaintedInPart)
{
    ASSERT_TRUE(load(fileOf("BMP")) && control->draw());
    control->setPaintRect({1, 1, 9, 9});
    EXPECT_EQ(seenColours(), "paper");
    ASSERT_TRUE(load(fileOf("BMP")) && control->draw());
    EXPECT_EQ(seenColours(), kRed);
}

TEST_F(Picture, ShowsThePaperWhereItIsTransparent)
{
    QImage glass(3, 2, QImage::Format_ARGB32);
    glass.fill(Qt::transparent);
    QBuffer buffer;
    ASSERT_TRUE(buffer.open(QIODevice::WriteOnly) && glass.save(&buffer, "PNG"));
    ASSERT_TRUE(load(buffer.data().toStdString()) && control->draw());
    EXPECT_EQ(seenColours(), "paper");

    const auto frames = {corma::testing::TestFrame {.left = 1, .hasOwnColours = true},
                         corma::testing::TestFrame {.left = 2, .hasOwnColours = true}};
    ASSERT_TRUE(load(gifBytes({.hasColours = false}, frames)) && control->draw());
    EXPECT_TRUE(QTest::qWaitFor([this] { return seen().pixelColor(1, 0) == QColor(255, 255, 0); }));
    EXPECT_EQ(seenColours(), "paper");
}

TEST_F(Picture, OfOneFrameStartsNoThread)
{
    ASSERT_TRUE(load(kStill));
    EXPECT_EQ(control->pictureSize(), QSize(3, 2));
    EXPECT_TRUE(control->draw());
    EXPECT_FALSE(control->isPlaying());
}

TEST_F(Picture, OfSeveralFramesPlaysAgainAndAgain)
{
    ASSERT_TRUE(load(kMoving));
    EXPECT_EQ(control->pictureSize(), QSize(3, 2));
    EXPECT_FALSE(control->isPlaying());
    EXPECT_TRUE(control->draw());
    EXPECT_TRUE(control->isPlaying());
    for (const char* colour : {kRed, kGreen, kRed, kGreen}) {
        EXPECT_TRUE(comesToShow(colour)) << colour;
    }
}

TEST_F(Picture, IsPaintedAnewByItselfWhileItPlays)
{
    control->show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(control.get()));

    struct Counter : QObject
    {
        bool eventFilter(QObject* /*watched*/, QEvent* event) override
        {
            paints += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }

        int paints = 0;
    } counter;

    control->installEventFilter(&counter);
    ASSERT_TRUE(load(kMoving) && control->draw());
    EXPECT_TRUE(QTest::qWaitFor([&] { return counter.paints > 4; }));
    control->removeEventFilter(&counter);
}

TEST_F(Picture, ThatPlaysGoesOnWhenItIsDrawnAgain)
{
    ASSERT_TRUE(load(kMoving) && control->draw());
    EXPECT_TRUE(control->draw());
    EXPECT_TRUE(control->isPlaying());
    EXPECT_TRUE(comesToShow(kGreen));
}

TEST_F(Picture, ThatPlaysEndsWhenAnotherIsLoaded)
{
    ASSERT_TRUE(load(kSlow) && control->draw());
    ASSERT_TRUE(comesToShow(kRed));
    ASSERT_TRUE(load(fileOf("BMP", {4, 4}, Qt::green)));
    EXPECT_FALSE(control->isPlaying());
    EXPECT_EQ(control->pictureSize(), QSize(4, 4));
    EXPECT_TRUE(control->draw());
    EXPECT_EQ(seenColours(), kGreen);

    ASSERT_TRUE(load(kMoving) && control->draw());
    ASSERT_TRUE(load(kSlow));
    EXPECT_FALSE(control->isPlaying());
    EXPECT_EQ(control->pictureSize(), QSize(5, 4));
}

TEST_F(Picture, ThatIsUnloadedLeavesTheControlAsNew)
{
    control->unload();
    EXPECT_TRUE(isEmpty());
    for (const std::string& bytes : {fileOf("BMP"), kMoving, kSlow}) {
        ASSERT_TRUE(load(bytes) && control->draw());
        control->unload();
        EXPECT_TRUE(isEmpty());
        control->unload();
        EXPECT_TRUE(isEmpty());
    }
}

TEST_F(Picture, EndsAtOnceWhenItsControlGoes)
{
    for (const std::string& bytes : {kMoving, kSlow}) {
        control = std::make_unique<CPictureEx>();
        control->resize(10, 8);
        ASSERT_TRUE(load(bytes) && control->draw());
        ASSERT_TRUE(comesToShow(kRed));
        QElapsedTimer timer;
        timer.start();
        control.reset();
        EXPECT_LT(timer.elapsed(), 5000) << "the thread was left behind";
        QCoreApplication::processEvents();
    }
}

TEST_F(Picture, MayBeginAndEndAtAnyTime)
{
    for (int i = 0; i < 100; ++i) {
        ASSERT_TRUE(load(kMoving) && control->draw());
        QCoreApplication::processEvents();
    }
    EXPECT_TRUE(comesToShow(kGreen));
}

TEST_F(Picture, DoesNotNeedItsBlockAnyMore)
{
    std::string block = kMoving;
    ASSERT_TRUE(load(block));
    block.assign(block.size(), '\0');
    ASSERT_TRUE(control->draw());
    EXPECT_TRUE(comesToShow(kGreen));
}

TEST_F(Picture, HasTheAccessibleNameThatItIsGiven)
{
    control->setAccessibleName(QStringLiteral("Preview"));
    QAccessibleInterface* accessible = QAccessible::queryAccessibleInterface(control.get());
    ASSERT_NE(accessible, nullptr);
    EXPECT_EQ(accessible->text(QAccessible::Name), QStringLiteral("Preview"));
}

TEST(DecodedPictures, HaveAtMostTheNumberOfPixelsThatCanBeShown)
{
    EXPECT_TRUE(corma::isShowable({1, 1}));
    EXPECT_TRUE(corma::isShowable({8192, 4096}));
    EXPECT_FALSE(corma::isShowable({8192, 4097}));
    EXPECT_FALSE(corma::isShowable({65535, 65535}));
    EXPECT_FALSE(corma::isShowable({0, 1}));
    EXPECT_FALSE(corma::isShowable({1, 0}));
    EXPECT_FALSE(corma::isShowable({}));
}

} // namespace
