#include "controls/gif.h"

#include <cstddef>
#include <utility>

namespace corma {

namespace {

constexpr std::string_view kSignature = "GIF";
constexpr std::string_view kHeader = "GIF89a"; // the version that has control extensions

constexpr char kExtension = '\x21';
constexpr char kImage = '\x2C';
constexpr char kTrailer = ';';

constexpr char kPlainText = '\x01';
constexpr char kControl = '\xF9';

constexpr std::size_t kScreenSize = 7; // bytes of the screen descriptor
constexpr std::size_t kImageSize = 10; // of the image descriptor, with its first byte
constexpr std::size_t kControlSize = 8; // of a control extension, with all around it
constexpr std::size_t kColourSize = 3;

constexpr unsigned kHasTable = 0x80;
constexpr unsigned kTableSize = 0x07;

unsigned byteAt(std::string_view bytes, std::size_t at)
{
    return static_cast<unsigned char>(bytes[at]);
}

int shortAt(std::string_view bytes, std::size_t at)
{
    return static_cast<int>(byteAt(bytes, at) | byteAt(bytes, at + 1) << 8U);
}

void appendShort(std::string& bytes, int value)
{
    bytes.push_back(static_cast<char>(value & 0xFF));
    bytes.push_back(static_cast<char>(value >> 8 & 0xFF));
}

/// Bytes of the colour table that a byte of flags announces.
std::size_t tableSize(unsigned flags)
{
    return (flags & kHasTable) == 0 ? 0 : kColourSize << ((flags & kTableSize) + 1);
}

/// What is left of a file, taken from its front.
class Rest
{
public:
    explicit Rest(std::string_view bytes)
        : m_bytes(bytes)
    {
    }

    /// The next bytes without taking them; nothing when there are fewer.
    [[nodiscard]] std::optional<std::string_view> peek(std::size_t count) const
    {
        return count <= m_bytes.size() ? std::optional(m_bytes.substr(0, count)) : std::nullopt;
    }

    std::optional<std::string_view> take(std::size_t count)
    {
        const auto taken = peek(count);
        m_bytes.remove_prefix(taken ? count : 0);
        return taken;
    }

    /// Takes a chain of data blocks, each behind its length, with the empty one that ends it. False
    /// when the file ends before that.
    [[nodiscard]] bool takeDataBlocks()
    {
        while (const auto length = take(1)) {
            const std::size_t size = byteAt(*length, 0);
            if (size == 0) {
                return true;
            }
            if (!take(size)) {
                return false;
            }
        }
        return false;
    }

    /// What was taken since the rest was this much.
    [[nodiscard]] std::string_view since(const Rest& former) const
    {
        return former.m_bytes.substr(0, former.m_bytes.size() - m_bytes.size());
    }

private:
    std::string_view m_bytes;
};

/// The extension at the front; nothing when the file ends in it.
std::optional<std::string_view> takeExtension(Rest& rest)
{
    const Rest former = rest;
    if (!rest.take(2) || !rest.takeDataBlocks()) {
        return std::nullopt;
    }
    return rest.since(former);
}

/// The image block at the front; nothing when the file ends in it.
std::optional<std::string_view> takeImage(Rest& rest)
{
    const Rest former = rest;
    const auto descriptor = rest.take(kImageSize);
    if (!descriptor || !rest.take(tableSize(byteAt(*descriptor, kImageSize - 1)))
        || !rest.take(1) // the bits of a code
        || !rest.takeDataBlocks()) {
        return std::nullopt;
    }
    return rest.since(former);
}

bool isControl(std::string_view extension)
{
    return extension.size() == kControlSize && extension[1] == kControl
        && byteAt(extension, 2) == 4;
}

GifFrame frameOf(std::string_view image, std::string_view control)
{
    GifFrame frame {.left = shortAt(image, 1),
                    .top = shortAt(image, 3),
                    .width = shortAt(image, 5),
                    .height = shortAt(image, 7),
                    .control = control,
                    .image = image};
    if (!control.empty()) {
        frame.disposal = static_cast<int>(byteAt(control, 3) >> 2U & 7U);
        frame.delay = shortAt(control, 4);
    }
    return frame;
}

std::vector<GifFrame> takeFrames(Rest& rest)
{
    std::vector<GifFrame> frames;
    std::string_view control;
    while (const auto kind = rest.peek(1)) {
        if (kind->front() == kExtension) {
            const auto extension = takeExtension(rest);
            if (!extension) {
                break;
            }
            if (isControl(*extension)) {
                control = *extension;
            } else if ((*extension)[1] == kPlainText) {
                control = {}; // the text is what it was for
            }
        } else if (kind->front() == kImage) {
            const auto image = takeImage(rest);
            if (!image) {
                break;
            }
            frames.push_back(frameOf(*image, control));
            control = {};
        } else {
            break; // the trailer, or what makes no sense
        }
    }
    return frames;
}

std::optional<GifColour> colourAt(std::string_view table, std::size_t index)
{
    if ((index + 1) * kColourSize > table.size()) {
        return std::nullopt;
    }
    const auto part = [&](std::size_t which) {
        return static_cast<std::uint8_t>(byteAt(table, index * kColourSize + which));
    };
    return GifColour {.red = part(0), .green = part(1), .blue = part(2)};
}

/// The bits of flags that announce a table of this size.
unsigned flagsOfTable(std::size_t size)
{
    unsigned exponent = 0;
    while (kColourSize << (exponent + 1) < size) {
        ++exponent;
    }
    return size == 0 ? 0 : kHasTable | exponent;
}

} // namespace

bool isGif(std::string_view bytes)
{
    return bytes.starts_with(kSignature);
}

std::optional<GifFile> parseGif(std::string_view bytes)
{
    Rest rest(bytes);
    const auto header = rest.take(kHeader.size());
    const auto screen = rest.take(kScreenSize);
    if (!header || !screen || !isGif(*header)) {
        return std::nullopt;
    }
    const auto colours = rest.take(tableSize(byteAt(*screen, 4)));
    if (!colours) {
        return std::nullopt;
    }
    GifFile gif {.width = shortAt(*screen, 0),
                 .height = shortAt(*screen, 2),
                 .background = colourAt(*colours, byteAt(*screen, 5)),
                 .globalColours = *colours,
                 .frames = takeFrames(rest)};
    return gif.frames.empty() ? std::nullopt : std::optional(std::move(gif));
}

std::string fileOfFrame(const GifFile& gif, const GifFrame& frame)
{
    std::string file;
    file.reserve(kHeader.size() + kScreenSize + gif.globalColours.size() + frame.control.size()
                 + frame.image.size() + 1);
    file.append(kHeader);
    appendShort(file, frame.width);
    appendShort(file, frame.height);
    file.push_back(static_cast<char>(flagsOfTable(gif.globalColours.size())));
    file.append(2, '\0'); // background and shape of a pixel, which matter to nobody here
    file.append(gif.globalColours).append(frame.control).append(frame.image.substr(0, 1));
    file.append(4, '\0'); // the left and upper end of the screen
    file.append(frame.image.substr(5));
    file.push_back(kTrailer);
    return file;
}

} // namespace corma
