#include "host/dwg/fields.h"

#include "host/dxf/dxf_text.h"
#include "platform/text.h"

#include <algorithm>

namespace corma::host::dwg {

namespace {

constexpr Point kUsualExtrusion {0.0, 0.0, 1.0};

// The codes of handles that say how far the named record lies from this one.
enum Distance : std::uint8_t
{
    kNext = 6,
    kPrevious = 8,
    kBehind = 10,
    kAhead = 12
};

Handle targetOf(const Ref& ref, Handle self)
{
    const auto own = static_cast<std::uint64_t>(self);
    switch (ref.code) {
    case kNext:
        return Handle {own + 1};
    case kPrevious:
        return Handle {own - 1};
    case kBehind:
        return Handle {own + ref.number};
    case kAhead:
        return Handle {own - ref.number};
    default:
        return Handle {ref.number};
    }
}

bool isUsualExtrusion(const Point& value)
{
    return std::bit_cast<std::uint64_t>(value.x) == 0 && std::bit_cast<std::uint64_t>(value.y) == 0
        && value.z == 1.0;
}

constexpr char32_t kSurrogateMask = 0xFC00;
constexpr char32_t kHighSurrogate = 0xD800;
constexpr char32_t kLowSurrogate = 0xDC00;

bool isHighSurrogate(char32_t unit)
{
    return (unit & kSurrogateMask) == kHighSurrogate;
}

bool isLowSurrogate(char32_t unit)
{
    return (unit & kSurrogateMask) == kLowSurrogate;
}

char32_t joined(char32_t high, char32_t low)
{
    constexpr char32_t kFirst = 0x10000;
    constexpr unsigned kHalfBits = 10;
    return kFirst + ((high - kHighSurrogate) << kHalfBits) + (low - kLowSurrogate);
}

void dropZeros(std::wstring& text)
{
    while (text.ends_with(L'\0')) {
        text.pop_back();
    }
}

// Characters that a drawing had as escapes when its texts were in a code page can still be so.
std::wstring withoutEscapes(std::wstring text)
{
    if (text.find(L"\\U+") == std::wstring::npos) {
        return text;
    }
    static const dxf::CodePage page = dxf::CodePage::utf8();
    return dxf::decodeText(toUtf8(text), page, dxf::Caret::isItself);
}

} // namespace

std::wstring textFromUnicode(std::string_view bytes)
{
    std::wstring text;
    text.reserve(bytes.size() / kUnicodeSize);
    for (std::size_t i = 0; i + 1 < bytes.size(); i += kUnicodeSize) {
        const auto low = static_cast<unsigned char>(bytes[i]);
        const auto high = static_cast<unsigned char>(bytes[i + 1]);
        const char32_t unit = low | unsigned {high} << kByteBits;
        const char32_t before = text.empty() ? 0 : static_cast<char32_t>(text.back());
        if (isLowSurrogate(unit) && isHighSurrogate(before)) {
            text.back() = static_cast<wchar_t>(joined(before, unit));
        } else {
            text += static_cast<wchar_t>(unit);
        }
    }
    return text;
}

std::string textToUnicode(std::wstring_view text)
{
    std::string bytes;
    for (const char16_t unit : toUtf16(text)) {
        bytes += static_cast<char>(unit);
        bytes += static_cast<char>(unit >> kByteBits);
    }
    return bytes;
}

Ref readRef(BitReader& from, Handle self)
{
    constexpr unsigned kHalfByte = 4;
    constexpr unsigned kSizeMask = 0xF;
    constexpr unsigned kMostBytes = 8;
    const unsigned head = from.byte();
    Ref ref;
    ref.isFromFile = true;
    ref.code = static_cast<std::uint8_t>(head >> kHalfByte);
    ref.size = static_cast<std::uint8_t>(head & kSizeMask);
    if (ref.size > kMostBytes) {
        from.fail();
        return {};
    }
    const std::uint64_t highest = ref.size == kMostBytes ? from.byte() : 0;
    constexpr unsigned kOthers = kMostBytes - 1;
    ref.number
        = highest << kOthers * kByteBits | from.bigEndian(std::min<unsigned>(ref.size, kOthers));
    ref.target = targetOf(ref, self);
    return ref;
}

void writeRef(const Ref& ref, Bond bond, BitWriter& to)
{
    constexpr unsigned kHalfByte = 4;
    const bool isNew = !ref.isFromFile;
    const std::uint64_t number = isNew ? static_cast<std::uint64_t>(ref.target) : ref.number;
    unsigned size = ref.size;
    if (isNew) {
        while (size < sizeof number && number >> (size * kByteBits) != 0) {
            ++size;
        }
    }
    to.bits(isNew ? static_cast<unsigned>(bond) : ref.code, kHalfByte);
    to.bits(size, kHalfByte);
    for (unsigned i = size; i > 0; --i) {
        to.byte(static_cast<std::uint8_t>(number >> ((i - 1) * kByteBits)));
    }
}

// --- FieldsFromBits ------------------------------------------------------------------------------

void FieldsFromBits::rawPoint2(Point2& value)
{
    rawDouble(value.x);
    rawDouble(value.y);
}

void FieldsFromBits::point2(Point2& value)
{
    bitDouble(value.x);
    bitDouble(value.y);
}

void FieldsFromBits::defaultPoint2(Point2& value, const Point2& usual)
{
    defaultDouble(value.x, usual.x);
    defaultDouble(value.y, usual.y);
}

void FieldsFromBits::point3(Point& value)
{
    bitDouble(value.x);
    bitDouble(value.y);
    bitDouble(value.z);
}

void FieldsFromBits::rawPoint3(Point& value)
{
    rawDouble(value.x);
    rawDouble(value.y);
    rawDouble(value.z);
}

void FieldsFromBits::thickness(double& value)
{
    value = 0.0;
    if (until(DrawingVersion::r14) || !m_streams.data.bit()) {
        bitDouble(value);
    }
}

void FieldsFromBits::extrusion(Point& value)
{
    value = kUsualExtrusion;
    if (until(DrawingVersion::r14) || !m_streams.data.bit()) {
        point3(value);
    }
}

void FieldsFromBits::bytes(std::string& value, std::size_t count)
{
    value = m_streams.data.bytes(count);
}

void FieldsFromBits::text(Text& value)
{
    BitReader& from = form().hasUnicode() ? m_streams.texts : m_streams.data;
    const std::size_t length = from.bitShort();
    value.isFromFile = true;
    if (form().hasUnicode()) {
        value.raw = from.bytes(length * kUnicodeSize);
        value.value = withoutEscapes(textFromUnicode(value.raw));
    } else {
        value.raw = from.bytes(length);
        value.value = dxf::decodeText(value.raw, form().page, dxf::Caret::isItself);
    }
    dropZeros(value.value);
}

void FieldsFromBits::color(Color& value)
{
    constexpr std::uint8_t kHasName = 1;
    constexpr std::uint8_t kHasBook = 2;
    bitShort(value.index);
    if (!since(DrawingVersion::r2004)) {
        return;
    }
    bitLong(value.rgb);
    byte(value.names);
    if ((value.names & kHasName) != 0) {
        text(value.name);
    }
    if ((value.names & kHasBook) != 0) {
        text(value.book);
    }
}

void FieldsFromBits::entityColor(Color& value)
{
    if (!since(DrawingVersion::r2004)) {
        bitShort(value.index);
        return;
    }
    constexpr std::uint16_t kColorIndex = 0x01FF;
    const std::uint16_t whole = m_streams.data.bitShort();
    value.flags = static_cast<std::uint16_t>(whole & ~kColorIndex);
    value.index = static_cast<std::int16_t>(whole & kColorIndex);
    if (value.hasRgb()) {
        bitLong(value.rgb);
    }
    if ((value.flags & Color::kHasTransparency) != 0) {
        bitLong(value.transparency);
    }
}

void FieldsFromBits::handle(Ref& value, Bond /*bond*/)
{
    value = readRef(m_streams.handles, self());
}

void FieldsFromBits::handles(std::vector<Ref>& list, std::uint64_t number, Bond bond)
{
    constexpr std::size_t kFewestBits = 8;
    list.resize(m_streams.handles.count(number, kFewestBits));
    for (Ref& ref : list) {
        handle(ref, bond);
    }
}

// --- FieldsToBits --------------------------------------------------------------------------------

void FieldsToBits::rawPoint2(const Point2& value)
{
    rawDouble(value.x);
    rawDouble(value.y);
}

void FieldsToBits::point2(const Point2& value)
{
    bitDouble(value.x);
    bitDouble(value.y);
}

void FieldsToBits::defaultPoint2(const Point2& value, const Point2& usual)
{
    defaultDouble(value.x, usual.x);
    defaultDouble(value.y, usual.y);
}

void FieldsToBits::point3(const Point& value)
{
    bitDouble(value.x);
    bitDouble(value.y);
    bitDouble(value.z);
}

void FieldsToBits::rawPoint3(const Point& value)
{
    rawDouble(value.x);
    rawDouble(value.y);
    rawDouble(value.z);
}

void FieldsToBits::thickness(const double& value)
{
    const bool isUsual = std::bit_cast<std::uint64_t>(value) == 0;
    if (since(DrawingVersion::r2000)) {
        m_data.bit(isUsual);
    }
    if (until(DrawingVersion::r14) || !isUsual) {
        bitDouble(value);
    }
}

void FieldsToBits::extrusion(const Point& value)
{
    const bool isUsual = isUsualExtrusion(value);
    if (since(DrawingVersion::r2000)) {
        m_data.bit(isUsual);
    }
    if (until(DrawingVersion::r14) || !isUsual) {
        point3(value);
    }
}

void FieldsToBits::bytes(const std::string& value, std::size_t count)
{
    m_data.bytes(std::string_view(value).substr(0, count));
}

void FieldsToBits::text(const Text& value)
{
    BitWriter& to = form().hasUnicode() ? m_texts : m_data;
    constexpr std::size_t kMost = 0xFFFF;
    std::string raw = value.raw;
    if (!value.isFromFile) {
        raw = form().hasUnicode() ? textToUnicode(value.value)
                                  : dxf::encodeText(value.value, form().page, dxf::Caret::isItself);
    }
    const std::size_t unit = form().hasUnicode() ? kUnicodeSize : 1;
    const std::size_t length = std::min(raw.size() / unit, kMost);
    to.bitShort(static_cast<std::uint16_t>(length));
    to.bytes(std::string_view(raw).substr(0, length * unit));
}

void FieldsToBits::color(const Color& value)
{
    constexpr std::uint8_t kHasName = 1;
    constexpr std::uint8_t kHasBook = 2;
    bitShort(value.index);
    if (!since(DrawingVersion::r2004)) {
        return;
    }
    bitLong(value.rgb);
    byte(value.names);
    if ((value.names & kHasName) != 0) {
        text(value.name);
    }
    if ((value.names & kHasBook) != 0) {
        text(value.book);
    }
}

void FieldsToBits::entityColor(const Color& value)
{
    if (!since(DrawingVersion::r2004)) {
        bitShort(value.index);
        return;
    }
    m_data.bitShort(
        static_cast<std::uint16_t>(value.flags | static_cast<std::uint16_t>(value.index)));
    if (value.hasRgb()) {
        bitLong(value.rgb);
    }
    if ((value.flags & Color::kHasTransparency) != 0) {
        bitLong(value.transparency);
    }
}

void FieldsToBits::handle(const Ref& value, Bond bond)
{
    writeRef(value, bond, m_handles);
}

void FieldsToBits::handles(const std::vector<Ref>& list, std::uint64_t /*number*/, Bond bond)
{
    for (const Ref& ref : list) {
        handle(ref, bond);
    }
}

} // namespace corma::host::dwg
