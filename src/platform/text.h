#pragma once

// Characters, encodings and formats: the same on every platform and in every locale.

#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace corma {

/// The case-folded form of a character. ASCII folds to ASCII and nothing else does: letters such
/// as the Kelvin sign stay apart from their look-alikes, so bytes can be compared as they are.
wchar_t foldCase(wchar_t c);

/// The upper-case form of a character by Unicode's one-to-one mapping.
wchar_t upperCase(wchar_t c);

std::wstring upperCase(std::wstring_view text);

/// The text with each character in the lower-case form of Unicode's one-to-one mapping.
std::wstring lowerCase(std::wstring_view text);

/// Equal without regard to case.
bool equalIgnoringCase(std::wstring_view a, std::wstring_view b);

/// Orders texts as people who read a language expect them in a list: letters with marks where the
/// language has them, upper and lower case apart only where nothing else is, and by code points
/// what still is the same, so that only equal texts are. Copies are cheap.
class TextOrder
{
public:
    /// For the number of a primary language: 7, 9, 10, 12, 19, 21 or 25 (German, English, Spanish,
    /// French, Dutch, Polish, Russian). Any other number stands for the order common to all.
    explicit TextOrder(int language);

    /// True when a comes before b.
    bool operator()(std::wstring_view a, std::wstring_view b) const;

    /// Bytes that are ordered among each other as the texts are: for long lists, where a text is
    /// compared many times.
    [[nodiscard]] std::string key(std::wstring_view text) const;

private:
    class Collation;
    std::shared_ptr<const Collation> m_collation;
};

inline constexpr char32_t kGreatestCharacter = 0x10FFFF; // of Unicode

/// Text from UTF-8; each byte of a broken sequence becomes U+FFFD.
std::wstring fromUtf8(std::string_view bytes);

/// UTF-8 from text; what is no Unicode character becomes U+FFFD.
std::string toUtf8(std::wstring_view text);

/// The next code point of UTF-8 at `at`, which moves behind it; U+FFFD for a broken sequence, of
/// which one byte is taken. `at` must be below the size.
char32_t nextUtf8(std::string_view bytes, std::size_t& at);

/// Appends one code point as UTF-8.
void appendUtf8(std::string& bytes, char32_t c);

/// True when no byte is above 127.
bool isAllAscii(std::string_view bytes);

/// True when the bytes are well-formed UTF-8 from the first to the last.
bool isUtf8(std::string_view bytes);

/// A byte of Windows-1252 as a character. The five bytes that the code page leaves open are the
/// control characters of the same number, as Windows decodes them.
wchar_t fromWindows1252(unsigned char byte);

/// The byte of Windows-1252 for a character, if there is one.
std::optional<unsigned char> toWindows1252(wchar_t c);

/// The bytes of a text; nothing when one of its characters has none.
std::optional<std::string> toWindows1252(std::wstring_view text);

/// The UTF-16 code units of a text, for the rules that count or code them.
std::u16string toUtf16(std::wstring_view text);

/// Formats like wide printf with `%s` for wide text: conversions s, S (narrow UTF-8), c, C, d, i,
/// u, x, X, f, e, g, p and %%, with flags, width, precision and the sizes h, l, ll, z, t. A null
/// text prints as "(null)". An unknown conversion is copied as it stands. Numbers are the same in
/// every locale.
std::wstring formatWide(const wchar_t* format, std::va_list arguments);

} // namespace corma
