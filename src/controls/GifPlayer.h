#pragma once

#include "controls/gif.h"

#include <QColor>
#include <QImage>

#include <chrono>
#include <cstddef>
#include <memory>
#include <string>

namespace corma {

/// What is to be seen, and for how long.
struct TimedPicture
{
    QImage picture; // null: what was seen before stays
    std::chrono::milliseconds time {0};
};

/// For how long a frame stays, by its delay in 1/100 s. Short delays are mostly meant as "some
/// time", so below 5 it is 1/10 s.
std::chrono::milliseconds timeOfFrame(int delay);

/// Puts the frames of an animated GIF together, one after the other and again from the first. It
/// has no clock: whoever asks for the next picture waits.
class GifPlayer
{
public:
    /// Null for data that is no GIF of several images, has no image that can be decoded, or is too
    /// large (see kMostPixels).
    static std::unique_ptr<GifPlayer> open(std::string bytes);

    GifPlayer(const GifPlayer&) = delete;
    GifPlayer& operator=(const GifPlayer&) = delete;

    /// The size of all its pictures.
    [[nodiscard]] QSize size() const { return m_surface.size(); }

    /// The number of frames, without those that were found to be broken so far.
    [[nodiscard]] std::size_t frames() const { return m_gif.frames.size(); }

    /// The picture with the next frame. Null, for no time, when that frame cannot be decoded; it is
    /// dropped then.
    TimedPicture next();

private:
    explicit GifPlayer(std::string bytes);

    [[nodiscard]] bool prepare();
    [[nodiscard]] bool dropBrokenBeginning();
    [[nodiscard]] QImage decoded(const GifFrame& frame) const;
    void clear(const QRect& area);
    void leaveFrame();
    void showFrame(const GifFrame& frame, const QImage& image);

    std::string m_bytes; // what m_gif refers to
    GifFile m_gif;
    QImage m_surface;
    std::size_t m_next = 0; // the frame after that which is to be seen
    QRect m_area; // of the frame to be seen; empty for none
    int m_disposal = 0; // of that frame
    QImage m_before; // what was in its area, for disposal 3
};

} // namespace corma
