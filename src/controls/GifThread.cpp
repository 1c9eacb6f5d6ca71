#include "controls/GifThread.h"

#include <QMetaObject>
#include <QWidget>

#include <condition_variable>
#include <mutex>
#include <utility>

namespace corma {

struct GifThread::State
{
    Pictures pictures; // of the thread alone

    std::mutex mutex; // for all below
    std::condition_variable changed;
    QWidget* widget = nullptr; // null from the moment on that it must not be touched
    QImage picture;
    bool isUpdateAsked = false; // since a picture was taken; so requests do not pile up
    bool isStopping = false;
    bool hasEnded = false;
};

GifThread::GifThread(QWidget& widget, Pictures pictures)
    : m_state(std::make_shared<State>())
{
    m_state->pictures = std::move(pictures);
    m_state->widget = &widget;
    m_thread = std::thread([state = m_state] {
        try {
            run(*state);
        } catch (...) { // NOLINT(bugprone-empty-catch): no memory; the last picture stays
        }
        const std::lock_guard lock(state->mutex);
        state->hasEnded = true;
        state->changed.notify_all();
    });
}

GifThread::~GifThread()
{
    if (m_thread.joinable()) {
        stop();
    }
}

void GifThread::run(State& state)
{
    for (;;) {
        TimedPicture next = state.pictures(); // without the lock: it takes its time
        std::unique_lock lock(state.mutex);
        if (state.isStopping) {
            return;
        }
        if (!next.picture.isNull()) {
            state.picture = std::move(next.picture);
            if (!std::exchange(state.isUpdateAsked, true)) {
                // Queued, it vanishes together with the widget.
                QMetaObject::invokeMethod(state.widget, "update", Qt::QueuedConnection);
            }
        }
        if (state.changed.wait_for(lock, next.time, [&] { return state.isStopping; })) {
            return;
        }
    }
}

QImage GifThread::picture()
{
    const std::lock_guard lock(m_state->mutex);
    m_state->isUpdateAsked = false;
    return m_state->picture;
}

GifThread::End GifThread::stop(std::chrono::milliseconds longestWait)
{
    if (!m_thread.joinable()) {
        return End::waitedFor;
    }
    std::unique_lock lock(m_state->mutex);
    m_state->isStopping = true;
    m_state->widget = nullptr;
    m_state->changed.notify_all();
    const bool hasEnded
        = m_state->changed.wait_for(lock, longestWait, [this] { return m_state->hasEnded; });
    lock.unlock();
    if (!hasEnded) {
        m_thread.detach();
        return End::leftBehind;
    }
    m_thread.join();
    return End::waitedFor;
}

} // namespace corma
