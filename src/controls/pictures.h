#pragma once

// Decoding of pictures within bounds.

#include <QImage>

#include <string_view>

namespace corma {

/// Pixels of the largest picture that is shown: what Qt decodes by itself in 128 MB.
inline constexpr qint64 kMostPixels = 32LL * 1024 * 1024;

/// True for a size of at least one pixel and at most kMostPixels.
bool isShowable(const QSize& size);

/// The picture in a file of any format that Qt reads; the content tells the format. Of an animation
/// the first frame. Null when the bytes are no picture, or one that is too large.
QImage decodePicture(std::string_view bytes);

} // namespace corma
