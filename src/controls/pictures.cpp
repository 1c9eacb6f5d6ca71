#include "controls/pictures.h"

#include "controls/gif.h"

#include <QBuffer>
#include <QImageReader>

namespace corma {

namespace {

constexpr auto kKnownVersion = "GIF89a";

QByteArray bytesForQt(std::string_view bytes)
{
    auto data = QByteArray::fromRawData(bytes.data(), static_cast<qsizetype>(bytes.size()));
    if (isGif(bytes)) {
        // Qt wants one of the two published versions. This makes it a copy.
        data.replace(0, static_cast<qsizetype>(qstrlen(kKnownVersion)), kKnownVersion);
    }
    return data;
}

} // namespace

bool isShowable(const QSize& size)
{
    return !size.isEmpty() && qint64 {size.width()} * size.height() <= kMostPixels;
}

QImage decodePicture(std::string_view bytes)
{
    if (bytes.empty()) {
        return {};
    }
    QByteArray data = bytesForQt(bytes);
    QBuffer buffer(&data);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    reader.setDecideFormatFromContent(true);
    const QSize promised = reader.size();
    if (promised.isValid() && !isShowable(promised)) {
        return {};
    }
    const QImage image = reader.read();
    if (image.isNull() || !isShowable(image.size())) {
        return {};
    }
    return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

} // namespace corma
