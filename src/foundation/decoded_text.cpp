#include "foundation/decoded_text.h"

#include "foundation/messages.h"
#include "platform/text.h"

#include <algorithm>

namespace corma {

namespace {

constexpr const wchar_t* kNotDecoded = L"line %d is no %s, as its byte-order mark says";
constexpr const wchar_t* kNotInWindows1252
    = L"line %d has a character that Windows-1252, the encoding of the file, does not have";
constexpr const wchar_t* kNotSeenAsWindows1252
    = L"the file, which is in Windows-1252, would then be taken for UTF-8";

constexpr char32_t kFirstSurrogate = 0xD800;
constexpr char32_t kFirstTrail = 0xDC00;
constexpr char32_t kBehindSurrogates = 0xE000;
constexpr char32_t kFirstPaired = 0x10000;
constexpr unsigned kSurrogateBits = 10;

bool isLead(char32_t unit)
{
    return unit >= kFirstSurrogate && unit < kFirstTrail;
}

bool isTrail(char32_t unit)
{
    return unit >= kFirstTrail && unit < kBehindSurrogates;
}

// UTF-8 of UTF-16 bytes as far as they are well-formed.
struct FromUtf16
{
    FromUtf16(std::string_view bytes, std::size_t highByte)
    {
        text.reserve(bytes.size());
        const auto unitAt = [&](std::size_t at) {
            const auto high = static_cast<unsigned char>(bytes[at + highByte]);
            const auto low = static_cast<unsigned char>(bytes[at + 1 - highByte]);
            return static_cast<char32_t>(high << 8U | low);
        };
        std::size_t at = 0;
        for (; at + 1 < bytes.size(); at += 2) {
            char32_t c = unitAt(at);
            if (isLead(c) && at + 3 < bytes.size() && isTrail(unitAt(at + 2))) {
                c = kFirstPaired + ((c - kFirstSurrogate) << kSurrogateBits)
                    + (unitAt(at + 2) - kFirstTrail);
                at += 2;
            } else if (isLead(c) || isTrail(c)) {
                return;
            }
            appendUtf8(text, c);
        }
        isWhole = at == bytes.size();
    }

    std::string text;
    bool isWhole = false;
};

void appendUnit(std::string& bytes, char32_t unit, std::size_t highByte)
{
    const auto high = static_cast<char>(unit >> 8U);
    const auto low = static_cast<char>(unit & 0xFFU);
    bytes.push_back(highByte == 0 ? high : low);
    bytes.push_back(highByte == 0 ? low : high);
}

void appendUtf16(std::string& bytes, std::string_view utf8, std::size_t highByte)
{
    for (std::size_t at = 0; at < utf8.size();) {
        char32_t c = nextUtf8(utf8, at);
        if (c >= kFirstPaired) {
            c -= kFirstPaired;
            appendUnit(bytes, kFirstSurrogate + (c >> kSurrogateBits), highByte);
            c = kFirstTrail + (c & ((1U << kSurrogateBits) - 1));
        }
        appendUnit(bytes, c, highByte);
    }
}

std::size_t highByteOf(Mark mark)
{
    return mark == Mark::utf16Little ? 1 : 0;
}

int lineBehind(std::string_view text)
{
    return static_cast<int>(std::count(text.begin(), text.end(), '\n')) + 1;
}

// The bytes up to the line that is broken.
std::string_view wholeLinesOf(std::string_view bytes)
{
    std::size_t at = 0;
    while (at < bytes.size()) {
        const std::size_t end = std::min(bytes.find('\n', at), bytes.size() - 1) + 1;
        if (!isUtf8(bytes.substr(at, end - at))) {
            break;
        }
        at = end;
    }
    return bytes.substr(0, at);
}

// What is wrong with pieces that the encoding cannot hold; else empty.
std::wstring appendWindows1252(std::string& bytes, std::span<const std::string_view> pieces)
{
    for (const std::string_view piece : pieces) {
        for (std::size_t at = 0; at < piece.size();) {
            const auto byte = toWindows1252(static_cast<wchar_t>(nextUtf8(piece, at)));
            if (!byte) {
                return formatted(kNotInWindows1252, lineBehind(bytes));
            }
            bytes.push_back(static_cast<char>(*byte));
        }
    }
    // Nothing but its other bytes tells that a file is in Windows-1252.
    return !isAllAscii(bytes) && isUtf8(bytes) ? kNotSeenAsWindows1252 : L"";
}

} // namespace

DecodedText::DecodedText(std::string_view content)
    : m_mark(markOf(content))
    , m_text(content.substr(bytesOf(m_mark).size()))
{
    if (m_mark == Mark::utf16Little || m_mark == Mark::utf16Big) {
        decodeUtf16(m_text);
    } else if (!isUtf8(m_text)) {
        if (m_mark == Mark::utf8) {
            m_defect = formatted(kNotDecoded, lineBehind(wholeLinesOf(m_text)), L"UTF-8");
        } else {
            decodeWindows1252(m_text);
        }
    }
}

void DecodedText::decodeUtf16(std::string_view bytes)
{
    FromUtf16 decoded(bytes, highByteOf(m_mark));
    m_form = Form::utf16;
    m_converted = std::move(decoded.text);
    m_text = m_converted;
    if (!decoded.isWhole) {
        m_defect = formatted(kNotDecoded, lineBehind(m_converted), L"UTF-16");
    }
}

void DecodedText::decodeWindows1252(std::string_view bytes)
{
    m_form = Form::windows1252;
    m_converted.reserve(bytes.size() + bytes.size() / 8);
    for (const char byte : bytes) {
        const wchar_t c = fromWindows1252(static_cast<unsigned char>(byte));
        appendUtf8(m_converted, static_cast<char32_t>(c));
    }
    m_text = m_converted;
}

DecodedText::Encoded DecodedText::encoded(std::span<const std::string_view> pieces) const
{
    Encoded result;
    switch (m_form) {
    case Form::utf8:
        result.isAsGiven = true;
        break;
    case Form::utf16:
        result.bytes = bytesOf(m_mark);
        for (const std::string_view piece : pieces) {
            appendUtf16(result.bytes, piece, highByteOf(m_mark));
        }
        break;
    case Form::windows1252:
        result.defect = appendWindows1252(result.bytes, pieces);
        break;
    }
    return result;
}

std::string_view lineEndOf(std::string_view text)
{
    const std::size_t feed = text.find('\n');
    const bool hasReturn = feed != std::string_view::npos && feed > 0 && text[feed - 1] == '\r';
    return hasReturn ? "\r\n" : "\n";
}

std::optional<std::string> toStrictUtf8(std::wstring_view text)
{
    constexpr wchar_t kReplacement = 0xFFFD;
    std::string bytes = toUtf8(text);
    std::ptrdiff_t replaced = 0;
    constexpr std::string_view kReplacementBytes = "\xEF\xBF\xBD";
    for (std::size_t at = bytes.find(kReplacementBytes); at != std::string::npos;
         at = bytes.find(kReplacementBytes, at + 1)) {
        ++replaced;
    }
    if (replaced != std::count(text.begin(), text.end(), kReplacement)) {
        return std::nullopt;
    }
    return bytes;
}

} // namespace corma
