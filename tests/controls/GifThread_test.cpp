#include "controls/GifThread.h"

#include <QCoreApplication>
#include <QWidget>
#include <QtTest>

#include <atomic>
#include <gtest/gtest.h>
#include <memory>
#include <new>
#include <semaphore>

namespace corma {

namespace {

using namespace std::chrono_literals;

QImage dot(QRgb colour)
{
    QImage image(1, 1, QImage::Format_RGB32);
    image.fill(colour);
    return image;
}

/// Counts the requests of a thread that come to a widget.
class RequestCounter : public QObject
{
public:
    explicit RequestCounter(QWidget& widget) { widget.installEventFilter(this); }

    bool eventFilter(QObject* /*watched*/, QEvent* event) override
    {
        requests += event->type() == QEvent::MetaCall ? 1 : 0;
        return false;
    }

    int requests = 0;
};

TEST(GifThread, ShowsOnePictureAfterTheOther)
{
    QWidget widget;
    GifThread thread(widget, [number = 0]() mutable {
        ++number;
        return TimedPicture {.picture = dot(qRgb(number, 0, 0)), .time = number < 3 ? 1ms : 1h};
    });
    EXPECT_TRUE(QTest::qWaitFor([&] {
        const QImage seen = thread.picture();
        return !seen.isNull() && seen.pixel(0, 0) == qRgb(3, 0, 0);
    }));
    EXPECT_EQ(thread.stop(), GifThread::End::waitedFor);
}

TEST(GifThread, KeepsThePictureWhenThereIsNoOther)
{
    QWidget widget;
    std::atomic<int> calls = 0;
    GifThread thread(widget, [&calls]() -> TimedPicture {
        if (++calls == 1) {
            return {.picture = dot(qRgb(9, 0, 0)), .time = 0ms};
        }
        return {.picture = {}, .time = 0ms};
    });
    ASSERT_TRUE(QTest::qWaitFor([&] { return calls > 10; }));
    EXPECT_EQ(thread.picture().pixel(0, 0), qRgb(9, 0, 0));
}

TEST(GifThread, EndsAtOnceHoweverLongAPictureStays)
{
    QWidget widget;
    GifThread thread(widget, [] { return TimedPicture {.picture = dot(0), .time = 1h}; });
    ASSERT_TRUE(QTest::qWaitFor([&] { return !thread.picture().isNull(); }));
    EXPECT_EQ(thread.stop(), GifThread::End::waitedFor);
    EXPECT_EQ(thread.stop(), GifThread::End::waitedFor);
}

TEST(GifThread, IsWaitedForFiveSecondsAtMost)
{
    EXPECT_EQ(GifThread::kLongestWait, 5000ms);
}

TEST(GifThread, IsLeftBehindWhenItDoesNotEnd)
{
    struct Gate
    {
        std::binary_semaphore isIn {0};
        std::binary_semaphore mayGo {0};
    };

    auto gate = std::make_shared<Gate>();
    const std::weak_ptr<Gate> threadsGate = gate;
    auto widget = std::make_unique<QWidget>();
    const RequestCounter counter(*widget);
    {
        GifThread thread(*widget, [gate] {
            gate->isIn.release();
            gate->mayGo.acquire();
            return TimedPicture {.picture = dot(0), .time = 1h};
        });
        gate->isIn.acquire();
        EXPECT_EQ(thread.stop(20ms), GifThread::End::leftBehind);
        EXPECT_EQ(thread.stop(20ms), GifThread::End::waitedFor) << "there is none any more";
    }
    widget.reset();
    gate->mayGo.release();
    gate.reset();
    EXPECT_TRUE(QTest::qWaitFor([&] { return threadsGate.expired(); })) << "it ends by itself";
    EXPECT_EQ(counter.requests, 0);
}

TEST(GifThread, AsksAgainOnlyWhenItsPictureWasTaken)
{
    QWidget widget;
    RequestCounter counter(widget);
    std::atomic<int> calls = 0;
    GifThread thread(widget, [&calls] {
        ++calls;
        return TimedPicture {.picture = dot(0), .time = 0ms};
    });
    const auto waitForTenMore = [&] {
        const int before = calls;
        while (calls < before + 10) {
            std::this_thread::yield(); // without an event handled
        }
    };
    for (int i = 1; i <= 3; ++i) {
        waitForTenMore();
        EXPECT_EQ(counter.requests, i - 1);
        QCoreApplication::processEvents();
        EXPECT_EQ(counter.requests, i);
        waitForTenMore();
        QCoreApplication::processEvents();
        EXPECT_EQ(counter.requests, i);
        EXPECT_FALSE(thread.picture().isNull());
    }
}

TEST(GifThread, EndsWithoutMemory)
{
    QWidget widget;
    GifThread thread(widget, []() -> TimedPicture { throw std::bad_alloc(); });
    EXPECT_EQ(thread.stop(), GifThread::End::waitedFor);
    EXPECT_TRUE(thread.picture().isNull());
}

} // namespace

} // namespace corma
