#include "foundation/text_file.h"

#include "foundation/byte_order_mark.h"
#include "foundation/utf16.h"
#include "platform/text.h"

#include <algorithm>
#include <utility>

namespace corma {

namespace {

// UTF-8 of the text, with the padding that FileContent promises. Measured first, so that the
// buffer is taken once and at its right size.
void turnIntoUtf8(platform::FileContent& content, Mark mark)
{
    const std::string_view units = content.view().substr(bytesOf(mark).size());
    std::string one;
    std::size_t size = 0;
    for (std::size_t at = 0; at < units.size(); size += one.size()) {
        one.clear();
        appendUtf8(one, nextUtf16(units, at, mark));
    }
    constexpr std::size_t kPadding = platform::FileContent::kPadding;
    auto bytes = std::make_unique_for_overwrite<char[]>(size + kPadding);
    char* out = bytes.get();
    for (std::size_t at = 0; at < units.size();) {
        one.clear();
        appendUtf8(one, nextUtf16(units, at, mark)); // of half a pair it makes U+FFFD
        out = std::copy(one.begin(), one.end(), out);
    }
    std::fill_n(out, kPadding, '\0');
    content.bytes = std::move(bytes);
    content.size = size;
}

// Leaves the mark out of the text and tells the encoding, if the mark does.
std::optional<Encoding> followMark(platform::FileContent& content, std::string_view& text)
{
    const Mark mark = markOf(content.view());
    if (mark == Mark::utf16Little || mark == Mark::utf16Big) {
        turnIntoUtf8(content, mark);
        text = content.view();
        return Encoding::utf8;
    }
    text = content.view().substr(bytesOf(mark).size());
    return mark == Mark::none ? std::nullopt : std::optional(Encoding::utf8);
}

// The ASCII characters that a text begins with, at most `most`; the count.
std::size_t asciiInto(std::string_view bytes, wchar_t* out, std::size_t most)
{
    const std::size_t end = std::min(bytes.size(), most);
    std::size_t at = 0;
    for (; at < end && static_cast<unsigned char>(bytes[at]) < 0x80; ++at) {
        out[at] = static_cast<wchar_t>(bytes[at]);
    }
    return at;
}

} // namespace

char32_t nextCharacter(std::string_view text, std::size_t& at, Encoding encoding)
{
    if (encoding == Encoding::utf8) {
        return nextUtf8(text, at);
    }
    return static_cast<char32_t>(fromWindows1252(static_cast<unsigned char>(text[at++])));
}

std::size_t decodeInto(std::string_view bytes, Encoding encoding, wchar_t* out,
                       std::size_t capacity)
{
    if (capacity == 0) {
        return 0;
    }
    std::size_t count = asciiInto(bytes, out, capacity - 1);
    for (std::size_t at = count; at < bytes.size() && count < capacity - 1; ++count) {
        out[count] = static_cast<wchar_t>(nextCharacter(bytes, at, encoding));
    }
    out[count] = 0;
    return count;
}

std::wstring decode(std::string_view bytes, Encoding encoding)
{
    std::wstring text(bytes.size() + 1, L'\0');
    text.resize(decodeInto(bytes, encoding, text.data(), text.size()));
    return text;
}

TextFile::TextFile(platform::NativePath path, OpenMode mode, Transform transform)
    : m_path(std::move(path))
    , m_mode(mode)
    , m_transform(std::move(transform))
{
    m_isOpen = read();
}

bool TextFile::refresh()
{
    const auto stamp = platform::fileStamp(m_path);
    if (!stamp || (*stamp == m_content.stamp && !m_mayHideAChange)) {
        return false;
    }
    return read();
}

// True when the text is another one now. The old text stays when the file cannot be read.
bool TextFile::read()
{
    const std::int64_t now = platform::fileClock();
    auto content = platform::readFile(m_path);
    if (!content) {
        return false;
    }
    if (m_transform) {
        m_transform(*content);
    }
    std::string_view text = content->view();
    std::optional<Encoding> stated = Encoding::windows1252;
    if (m_mode == OpenMode::text) {
        stated = followMark(*content, text);
    }
    m_mayHideAChange = platform::couldHideAChange(content->stamp, now);
    if (m_isOpen && text == m_text && stated == m_stated) {
        m_content.stamp = content->stamp;
        return false;
    }
    m_content = std::move(*content);
    m_text = text;
    m_stated = stated;
    m_encoding = stated;
    return true;
}

std::size_t TextFile::decodeInto(std::string_view part, wchar_t* out, std::size_t capacity) const
{
    const std::size_t most = capacity == 0 ? 0 : capacity - 1;
    const std::size_t count = asciiInto(part, out, most);
    const bool isDone = count == part.size() || count == most;
    const auto encoding = isDone ? Encoding::utf8 : this->encoding();
    return count + corma::decodeInto(part.substr(count), encoding, out + count, capacity - count);
}

std::wstring TextFile::decode(std::string_view part) const
{
    std::wstring text(part.size() + 1, L'\0');
    text.resize(decodeInto(part, text.data(), text.size()));
    return text;
}

std::string_view TextFile::utf8(std::string& converted) const
{
    if (m_stated != Encoding::windows1252 && isUtf8(m_text)) {
        m_encoding = Encoding::utf8;
        return m_text;
    }
    converted = toUtf8(decode(m_text));
    return converted;
}

Encoding TextFile::encoding() const
{
    if (!m_encoding) {
        m_encoding = isUtf8(m_text) ? Encoding::utf8 : Encoding::windows1252;
    }
    return *m_encoding;
}

} // namespace corma

std::unique_ptr<corma::TextFile> xx_openUnicode(std::wstring_view path, corma::OpenMode mode,
                                                corma::TextFile::Transform transform)
{
    auto file = std::make_unique<corma::TextFile>(corma::platform::locate(path), mode,
                                                  std::move(transform));
    return file->isOpen() ? std::move(file) : nullptr;
}
