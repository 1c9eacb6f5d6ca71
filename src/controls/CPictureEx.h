#pragma once

#include <QImage>
#include <QWidget>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace corma {
class GifPlayer;
class GifThread;
} // namespace corma

/// Shows a picture file from its upper left corner, at its size in device-independent pixels: BMP,
/// PNG, JPEG, ICO and whatever else Qt reads, and GIF files with animation, which play on a thread
/// of their own. The order of calls: load, draw, and unload when no picture applies. Whatever fails
/// leaves the control empty and tells nobody. It takes the accessible name that the host sets.
class CPictureEx : public QWidget
{
    Q_OBJECT

public:
    explicit CPictureEx(QWidget* parent = nullptr);
    CPictureEx(const CPictureEx&) = delete;
    CPictureEx& operator=(const CPictureEx&) = delete;

    /// Unloads.
    ~CPictureEx() override;

    /// Takes a picture file in the place of what was loaded; the content tells its format, not the
    /// name. False when it cannot be read or is no picture.
    bool load(const std::wstring& path);

    /// The same for the bytes of a file, which may go after the call.
    bool load(const void* block, std::size_t size);

    /// Shows what is loaded; an animation begins, or goes on when it plays already. False when
    /// nothing is loaded, or no thread is to be had.
    bool draw();

    /// Ends an animation and frees everything; the control is then as new. Waits for the thread,
    /// for 5 seconds at most; one that takes longer goes on without the control and ends by itself.
    void unload();

    /// Width and height of what is loaded, in pixels of the picture; 0 by 0 when nothing is.
    [[nodiscard]] QSize pictureSize() const { return m_size; }

    /// True while the thread of an animation runs.
    [[nodiscard]] bool isPlaying() const { return m_thread != nullptr; }

    /// The part of the picture to paint, in its place; one without width means all. Goes with the
    /// picture.
    void setPaintRect(const QRect& part);

    /// The size of the picture.
    [[nodiscard]] QSize sizeHint() const override { return m_size; }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    bool take(std::string_view bytes);

    QSize m_size {0, 0};
    QImage m_single; // a picture without animation
    std::shared_ptr<corma::GifPlayer> m_player; // of an animation; its thread's while there is one
    std::unique_ptr<corma::GifThread> m_thread;
    bool m_isDrawn = false;
    QRect m_paintRect;
};
