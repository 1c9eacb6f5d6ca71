#include "host/dxf/CodePage.h"

#include "platform/text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <numeric>
#include <unicode/ucnv.h>
#include <unicode/ucnv_cb.h>
#include <unicode/utf16.h>

namespace corma::host::dxf {

namespace {

struct NamedConverter
{
    std::string_view name; // in small letters, without "-", "_" and "/"
    const char* converter; // of ICU
};

// Names that are not told by a number at their end.
constexpr std::array kNamed = {
    NamedConverter {"big5", "windows-950"},
    NamedConverter {"gb2312", "windows-936"},
    NamedConverter {"ksc5601", "windows-949"},
    NamedConverter {"macroman", "macintosh"},
};

constexpr std::string_view kIsoPrefix = "iso8859";
constexpr std::string_view kDigits = "0123456789";

// The double-byte code pages that an escape names by a digit from 1 on. The fourth, Johab, has no
// converter.
constexpr std::array<std::string_view, 5> kEscapePages = {"932", "950", "949", "1361", "936"};

std::string plainName(std::string_view name)
{
    std::string plain;
    for (const char c : name) {
        const bool isCapital = c >= 'A' && c <= 'Z';
        if (c != '-' && c != '_' && c != '/' && c != ' ') {
            plain += isCapital ? static_cast<char>(c - 'A' + 'a') : c;
        }
    }
    return plain;
}

std::string_view numberAtEndOf(std::string_view name)
{
    const std::size_t last = name.find_last_not_of(kDigits);
    return last == std::string_view::npos ? name : name.substr(last + 1);
}

// The converters' own replacement is a control character for some bytes.
void replaceBytes(const void* /*context*/, UConverterToUnicodeArgs* arguments,
                  const char* /*bytes*/, std::int32_t /*count*/, UConverterCallbackReason reason,
                  UErrorCode* error)
{
    constexpr UChar kReplacement = 0xFFFD;
    if (reason <= UCNV_IRREGULAR) {
        *error = U_ZERO_ERROR;
        ucnv_cbToUWriteUChars(arguments, &kReplacement, 1, 0, error);
    }
}

std::u16string toUnits(UConverter* converter, std::string_view bytes)
{
    std::u16string units(2 * bytes.size() + 1, u'\0'); // more than any of them needs
    UErrorCode error = U_ZERO_ERROR;
    const std::int32_t count
        = ucnv_toUChars(converter, units.data(), static_cast<std::int32_t>(units.size()),
                        bytes.data(), static_cast<std::int32_t>(bytes.size()), &error);
    units.resize(U_SUCCESS(error) ? static_cast<std::size_t>(count) : 0);
    return units;
}

// No byte may change what later ones mean.
bool isStateless(const UConverter* converter)
{
    const UConverterType type = ucnv_getType(converter);
    return type == UCNV_SBCS || type == UCNV_MBCS || type == UCNV_LATIN_1 || type == UCNV_US_ASCII;
}

std::wstring fromUtf16(std::u16string_view units)
{
    if constexpr (sizeof(wchar_t) == sizeof(char16_t)) {
        return {units.begin(), units.end()};
    }
    std::wstring text;
    text.reserve(units.size());
    for (std::size_t i = 0; i < units.size();) {
        char32_t c = 0;
        U16_NEXT(units.data(), i, units.size(), c);
        text += static_cast<wchar_t>(c);
    }
    return text;
}

} // namespace

void CodePage::Close::operator()(UConverter* converter) const
{
    ucnv_close(converter);
}

CodePage CodePage::utf8()
{
    CodePage page;
    page.m_form = Form::utf8;
    return page;
}

CodePage CodePage::named(std::string_view name)
{
    const std::string plain = plainName(name);
    const std::string number(numberAtEndOf(plain));
    CodePage page;
    const auto* const known = std::find_if(kNamed.begin(), kNamed.end(),
                                           [&](const auto& row) { return row.name == plain; });
    if (known != kNamed.end()) {
        page.open(known->converter);
    } else if (plain.starts_with(kIsoPrefix)) {
        page.open(("ISO-8859-" + plain.substr(kIsoPrefix.size())).c_str());
    } else if (!number.empty() && number != "1252" && !page.open(("windows-" + number).c_str())) {
        page.open(("ibm-" + number).c_str());
    }
    return page;
}

std::optional<CodePage> CodePage::ofEscape(char digit)
{
    const auto at = static_cast<std::size_t>(digit - '1');
    if (digit < '1' || at >= kEscapePages.size()) {
        return std::nullopt;
    }
    CodePage page = named(kEscapePages[at]);
    return page.m_form == Form::converter ? std::optional(std::move(page)) : std::nullopt;
}

bool CodePage::open(const char* converterName)
{
    UErrorCode error = U_ZERO_ERROR;
    std::unique_ptr<UConverter, Close> converter(ucnv_open(converterName, &error));
    if (U_FAILURE(error) || !isStateless(converter.get())) {
        return false;
    }
    ucnv_setFromUCallBack(converter.get(), UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr,
                          &error);
    ucnv_setToUCallBack(converter.get(), replaceBytes, nullptr, nullptr, nullptr, &error);
    std::string ascii(0x80, '\0');
    std::iota(ascii.begin(), ascii.end(), '\0');
    const std::u16string read = toUnits(converter.get(), ascii);
    std::vector<Odd> odd;
    for (std::size_t i = 0; i < read.size(); ++i) {
        if (read[i] != i) {
            odd.push_back({read[i], static_cast<char16_t>(i)});
        }
    }
    constexpr std::size_t kMostOdd = 4; // those that are not based on ASCII have many more
    if (read.size() != ascii.size() || odd.size() > kMostOdd) {
        return false;
    }
    m_form = Form::converter;
    m_converter = std::move(converter);
    m_odd = std::move(odd);
    return true;
}

std::wstring CodePage::decode(std::string_view bytes) const
{
    if (m_form == Form::utf8) {
        return fromUtf8(bytes);
    }
    if (m_form == Form::converter) {
        return convert(bytes);
    }
    std::wstring text;
    text.reserve(bytes.size());
    for (const char byte : bytes) {
        text += fromWindows1252(static_cast<unsigned char>(byte));
    }
    return text;
}

std::wstring CodePage::convert(std::string_view bytes) const
{
    std::u16string units = toUnits(m_converter.get(), bytes);
    for (char16_t& unit : units) {
        const auto odd = std::find_if(m_odd.begin(), m_odd.end(),
                                      [&](const Odd& row) { return row.converted == unit; });
        unit = odd == m_odd.end() ? unit : odd->ascii;
    }
    return fromUtf16(units);
}

bool CodePage::encode(char32_t c, std::string& bytes) const
{
    if (c > kGreatestCharacter || U_IS_SURROGATE(c)) {
        return false;
    }
    if (m_form == Form::utf8) {
        appendUtf8(bytes, c);
        return true;
    }
    if (m_form == Form::windows1252) {
        const auto byte = toWindows1252(static_cast<wchar_t>(c));
        if (byte) {
            bytes += static_cast<char>(*byte);
        }
        return byte.has_value();
    }
    std::array<UChar, U16_MAX_LENGTH> units {};
    std::int32_t length = 0;
    U16_APPEND_UNSAFE(units, length, c);
    std::array<char, 8> encoded {};
    UErrorCode error = U_ZERO_ERROR;
    const std::int32_t count
        = ucnv_fromUChars(m_converter.get(), encoded.data(),
                          static_cast<std::int32_t>(encoded.size()), units.data(), length, &error);
    if (U_FAILURE(error)) {
        return false;
    }
    // Some characters have only a look-alike in the code page.
    const std::string_view found(encoded.data(), static_cast<std::size_t>(count));
    if (convert(found) != fromUtf16({units.data(), static_cast<std::size_t>(length)})) {
        return false;
    }
    bytes += found;
    return true;
}

} // namespace corma::host::dxf
