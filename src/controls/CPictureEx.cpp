#include "controls/CPictureEx.h"

#include "controls/GifPlayer.h"
#include "controls/GifThread.h"
#include "controls/pictures.h"
#include "platform/platform.h"

#include <QPainter>

#include <cstdint>
#include <system_error>

namespace platform = corma::platform;

namespace {

/// No picture file is read that is larger, so that a wrong path does not fill the memory.
constexpr std::uint64_t kMostBytes = 256ULL * 1024 * 1024;

} // namespace

CPictureEx::CPictureEx(QWidget* parent)
    : QWidget(parent)
{
}

CPictureEx::~CPictureEx()
{
    unload();
}

bool CPictureEx::load(const std::wstring& path)
{
    unload();
    const platform::NativePath file = platform::locate(path);
    const auto stamp = platform::fileStamp(file);
    if (!stamp || stamp->size > kMostBytes) {
        return false;
    }
    const auto content = platform::readFile(file);
    return content && take(content->view());
}

bool CPictureEx::load(const void* block, std::size_t size)
{
    unload();
    return block != nullptr && take({static_cast<const char*>(block), size});
}

/// Of an empty control.
bool CPictureEx::take(std::string_view bytes)
{
    const auto gif = corma::parseGif(bytes);
    if (corma::isGif(bytes) && !gif) {
        return false;
    }
    if (gif && gif->frames.size() > 1) {
        m_player = corma::GifPlayer::open(std::string(bytes));
        m_size = m_player ? m_player->size() : QSize(0, 0);
    } else {
        m_single = corma::decodePicture(bytes);
        m_size = m_single.size();
    }
    updateGeometry();
    return !m_size.isEmpty();
}

bool CPictureEx::draw()
{
    if (m_size.isEmpty()) {
        return false;
    }
    m_isDrawn = true;
    if (m_player && !m_thread) {
        try {
            m_thread = std::make_unique<corma::GifThread>(
                *this, [player = m_player] { return player->next(); });
        } catch (const std::system_error&) {
            unload();
            return false;
        }
    }
    update();
    return true;
}

void CPictureEx::unload()
{
    m_thread.reset();
    m_player.reset();
    m_single = {};
    m_size = {0, 0};
    m_isDrawn = false;
    m_paintRect = {};
    updateGeometry();
    update();
}

void CPictureEx::setPaintRect(const QRect& part)
{
    m_paintRect = part;
    update();
}

void CPictureEx::paintEvent(QPaintEvent* /*event*/)
{
    if (!m_isDrawn) {
        return;
    }
    const QImage picture = m_thread ? m_thread->picture() : m_single;
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform); // for screens of more pixels
    if (m_paintRect.width() > 0) {
        painter.drawImage(m_paintRect.topLeft(), picture, m_paintRect);
    } else {
        painter.drawImage(0, 0, picture);
    }
}
