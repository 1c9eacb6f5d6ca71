#include "controls/GifPlayer.h"

#include "controls/pictures.h"

#include <QPainter>

#include <utility>

namespace corma {

namespace {

using namespace std::chrono_literals;

constexpr int kShortestDelay = 5; // 1/100 s
constexpr auto kTimeOfShortDelay = 100ms;

constexpr int kToBackground = 2;
constexpr int kToBefore = 3;

/// What the search for a frame that can be decoded spends on each broken one, in pixels.
constexpr qint64 kCostOfFrame = 4096;

QSize sizeOf(const GifFrame& frame)
{
    return {frame.width, frame.height};
}

QColor colourOf(const std::optional<GifColour>& colour)
{
    return colour ? QColor(colour->red, colour->green, colour->blue) : QColor(Qt::transparent);
}

} // namespace

std::chrono::milliseconds timeOfFrame(int delay)
{
    return delay >= kShortestDelay ? delay * 10ms : kTimeOfShortDelay;
}

std::unique_ptr<GifPlayer> GifPlayer::open(std::string bytes)
{
    std::unique_ptr<GifPlayer> player(new GifPlayer(std::move(bytes)));
    return player->prepare() ? std::move(player) : nullptr;
}

GifPlayer::GifPlayer(std::string bytes)
    : m_bytes(std::move(bytes))
{
}

bool GifPlayer::prepare()
{
    auto gif = parseGif(m_bytes);
    if (!gif || gif->frames.size() < 2 || !isShowable({gif->width, gif->height})) {
        return false;
    }
    m_gif = std::move(*gif);
    if (!dropBrokenBeginning()) {
        return false;
    }
    m_surface = QImage(m_gif.width, m_gif.height, QImage::Format_ARGB32_Premultiplied);
    return !m_surface.isNull();
}

/// Looks for the first frame that can be decoded; the others are tried when their turn comes, since
/// to decode all of them here would keep the user waiting. A file of nothing but broken frames is
/// given up before they cost more than a large picture.
bool GifPlayer::dropBrokenBeginning()
{
    auto& frames = m_gif.frames;
    qint64 cost = 0;
    auto first = frames.begin();
    while (first != frames.end() && cost <= kMostPixels && decoded(*first).isNull()) {
        cost += kCostOfFrame;
        cost += isShowable(sizeOf(*first)) ? qint64 {first->width} * first->height : 0;
        ++first;
    }
    if (cost > kMostPixels) {
        return false;
    }
    frames.erase(frames.begin(), first);
    return !frames.empty();
}

QImage GifPlayer::decoded(const GifFrame& frame) const
{
    return isShowable(sizeOf(frame)) ? decodePicture(fileOfFrame(m_gif, frame)) : QImage();
}

TimedPicture GifPlayer::next()
{
    leaveFrame();
    if (m_next >= m_gif.frames.size()) {
        m_next = 0;
    }
    if (m_next == 0) {
        clear(m_surface.rect());
    }
    if (m_gif.frames.empty()) {
        return {.picture = {}, .time = kTimeOfShortDelay};
    }
    const auto frame = m_gif.frames.begin() + static_cast<std::ptrdiff_t>(m_next);
    const QImage image = decoded(*frame);
    if (image.isNull()) {
        m_gif.frames.erase(frame);
        return {};
    }
    showFrame(*frame, image);
    ++m_next;
    return {.picture = m_surface, .time = timeOfFrame(frame->delay)};
}

void GifPlayer::clear(const QRect& area)
{
    QPainter painter(&m_surface);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(area, colourOf(m_gif.background));
}

/// Does what the frame to be seen asks for at its end.
void GifPlayer::leaveFrame()
{
    if (m_disposal == kToBackground) {
        clear(m_area);
    } else if (m_disposal == kToBefore && !m_before.isNull()) {
        QPainter painter(&m_surface);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.drawImage(m_area.topLeft(), m_before);
    }
    m_disposal = 0;
    m_before = {};
}

void GifPlayer::showFrame(const GifFrame& frame, const QImage& image)
{
    m_area = QRect(QPoint(frame.left, frame.top), sizeOf(frame)) & m_surface.rect();
    m_disposal = frame.disposal;
    if (m_disposal == kToBefore && !m_area.isEmpty()) {
        m_before = m_surface.copy(m_area);
    }
    QPainter painter(&m_surface);
    painter.drawImage(frame.left, frame.top, image);
}

} // namespace corma
