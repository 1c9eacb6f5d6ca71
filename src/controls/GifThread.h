#pragma once

#include "controls/GifPlayer.h"

#include <QImage>

#include <chrono>
#include <functional>
#include <memory>
#include <thread>

class QWidget;

namespace corma {

/// A thread that shows one picture after the other, each for its time, in a widget.
class GifThread
{
public:
    /// Gives the next picture; called on the thread only.
    using Pictures = std::function<TimedPicture()>;

    enum class End
    {
        waitedFor, // the thread is over
        leftBehind // it goes on by itself and ends as soon as it can
    };

    /// Starts. The widget is asked to update itself, on its own thread, when there is another
    /// picture to paint; once until picture() is called. Throws std::system_error when the system
    /// gives no thread.
    GifThread(QWidget& widget, Pictures pictures);
    GifThread(const GifThread&) = delete;
    GifThread& operator=(const GifThread&) = delete;

    /// Stops, unless that was done.
    ~GifThread();

    /// The picture to paint now; null before the first.
    [[nodiscard]] QImage picture();

    /// Lets no further picture be shown and waits for the end of the thread for this long at most.
    /// Even a thread that is left behind asks nothing of the widget any more.
    End stop(std::chrono::milliseconds longestWait = kLongestWait);

    static constexpr std::chrono::milliseconds kLongestWait {5000};

private:
    struct State;

    static void run(State& state);

    std::shared_ptr<State> m_state; // with the thread too, which may outlive this object
    std::thread m_thread;
};

} // namespace corma
