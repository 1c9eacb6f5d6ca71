#include "platform/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cwchar>
#include <string>

namespace corma {

namespace {

// The analyzer does not follow a va_list that is a member of a structure.
// NOLINTBEGIN(clang-analyzer-valist.Uninitialized)

// One conversion such as %-8.3ls.
struct Conversion
{
    bool leftAligned = false;
    bool zeroFilled = false;
    bool plus = false;
    bool blank = false;
    bool alternate = false;
    int width = 0;
    int precision = -1; // none
    int longs = 0; // one for "l", two for "ll"
    bool isSize = false; // "z" or "t"
    wchar_t kind = 0;
};

// The arguments behind a reference, so that functions can take from one list.
struct Arguments
{
    std::va_list list;
};

int takeNumber(const wchar_t*& at, Arguments& arguments)
{
    if (*at == L'*') {
        ++at;
        return va_arg(arguments.list, int);
    }
    int number = 0;
    for (; *at >= L'0' && *at <= L'9'; ++at) {
        number = number < 100000 ? number * 10 + (*at - L'0') : number;
    }
    return number;
}

void takeFlags(const wchar_t*& at, Conversion& conversion)
{
    for (;; ++at) {
        switch (*at) {
        case L'-':
            conversion.leftAligned = true;
            break;
        case L'0':
            conversion.zeroFilled = true;
            break;
        case L'+':
            conversion.plus = true;
            break;
        case L' ':
            conversion.blank = true;
            break;
        case L'#':
            conversion.alternate = true;
            break;
        default:
            return;
        }
    }
}

Conversion takeConversion(const wchar_t*& at, Arguments& arguments)
{
    Conversion conversion;
    takeFlags(at, conversion);
    conversion.width = takeNumber(at, arguments);
    if (conversion.width < 0) {
        conversion.leftAligned = true;
        conversion.width = -conversion.width;
    }
    if (*at == L'.') {
        ++at;
        conversion.precision = takeNumber(at, arguments);
    }
    for (;; ++at) {
        if (*at == L'l') {
            ++conversion.longs;
        } else if (*at == L'z' || *at == L't') {
            conversion.isSize = true;
        } else if (*at != L'h') {
            break;
        }
    }
    conversion.kind = *at;
    if (*at != 0) {
        ++at;
    }
    return conversion;
}

void appendPadded(std::wstring& out, std::wstring_view text, const Conversion& conversion)
{
    const auto width = static_cast<std::size_t>(conversion.width);
    const std::size_t fill = width > text.size() ? width - text.size() : 0;
    if (!conversion.leftAligned) {
        out.append(fill, L' ');
    }
    out.append(text);
    if (conversion.leftAligned) {
        out.append(fill, L' ');
    }
}

void appendText(std::wstring& out, const wchar_t* text, const Conversion& conversion)
{
    if (text == nullptr) {
        text = L"(null)";
    }
    const std::size_t length = conversion.precision < 0
        ? std::wcslen(text)
        : wcsnlen(text, static_cast<std::size_t>(conversion.precision));
    appendPadded(out, {text, length}, conversion);
}

// Zeros fill a number unless it has a precision or is none.
Conversion fillingZerosIf(bool mayFill, Conversion conversion)
{
    conversion.zeroFilled = conversion.zeroFilled && mayFill;
    return conversion;
}

// Sign or prefix, then zeros, then digits, padded to the width.
void appendNumber(std::wstring& out, std::wstring prefix, std::string_view digits,
                  const Conversion& conversion)
{
    const auto width = static_cast<std::size_t>(conversion.width);
    if (conversion.zeroFilled && !conversion.leftAligned) {
        const std::size_t used = prefix.size() + digits.size();
        prefix.append(width > used ? width - used : 0, L'0');
    }
    prefix.append(digits.begin(), digits.end());
    appendPadded(out, prefix, conversion);
}

const wchar_t* signText(bool negative, const Conversion& conversion)
{
    if (negative) {
        return L"-";
    }
    if (conversion.plus) {
        return L"+";
    }
    return conversion.blank ? L" " : L"";
}

std::string withPrecision(std::string digits, int precision)
{
    const auto wanted = static_cast<std::size_t>(precision < 0 ? 1 : precision);
    if (digits.size() < wanted) {
        digits.insert(0, wanted - digits.size(), '0');
    }
    return digits;
}

std::string digitsOf(unsigned long long value, int base, bool upper)
{
    std::array<char, 72> buffer {};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, base).ptr;
    std::string digits(buffer.data(), end);
    for (char& c : digits) {
        c = upper && c >= 'a' ? static_cast<char>(c - 'a' + 'A') : c;
    }
    return digits;
}

void appendSigned(std::wstring& out, Arguments& arguments, const Conversion& conversion)
{
    long long value = 0;
    if (conversion.longs >= 2 || conversion.isSize) {
        value = va_arg(arguments.list, long long);
    } else {
        value = conversion.longs == 1 ? va_arg(arguments.list, long) : va_arg(arguments.list, int);
    }
    const auto magnitude = value < 0 ? 0ULL - static_cast<unsigned long long>(value)
                                     : static_cast<unsigned long long>(value);
    appendNumber(out, signText(value < 0, conversion),
                 withPrecision(digitsOf(magnitude, 10, false), conversion.precision),
                 fillingZerosIf(conversion.precision < 0, conversion));
}

void appendUnsigned(std::wstring& out, Arguments& arguments, const Conversion& conversion)
{
    unsigned long long value = 0;
    if (conversion.kind == L'p') {
        value = reinterpret_cast<std::uintptr_t>(va_arg(arguments.list, void*));
    } else if (conversion.longs >= 2 || conversion.isSize) {
        value = va_arg(arguments.list, unsigned long long);
    } else {
        value = conversion.longs == 1 ? va_arg(arguments.list, unsigned long)
                                      : va_arg(arguments.list, unsigned);
    }
    const bool decimal = conversion.kind == L'u';
    const bool upper = conversion.kind == L'X';
    const bool prefixed
        = !decimal && (conversion.kind == L'p' || (conversion.alternate && value != 0));
    appendNumber(out, prefixed ? (upper ? L"0X" : L"0x") : L"",
                 withPrecision(digitsOf(value, decimal ? 10 : 16, upper), conversion.precision),
                 fillingZerosIf(conversion.precision < 0, conversion));
}

// The digits come from to_chars, which knows no locale.
void appendReal(std::wstring& out, double value, const Conversion& conversion)
{
    const bool negative = std::signbit(value);
    const double magnitude = negative ? -value : value;
    const int precision = conversion.precision < 0 ? 6 : std::min(conversion.precision, 300);
    std::array<char, 700> buffer {};
    const auto format = conversion.kind == L'f' ? std::chars_format::fixed
        : conversion.kind == L'e'               ? std::chars_format::scientific
                                                : std::chars_format::general;
    const auto end
        = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude, format, precision)
              .ptr;
    appendNumber(out, signText(negative, conversion), {buffer.data(), end},
                 fillingZerosIf(std::isfinite(value), conversion));
}

// False for a conversion that is not known; nothing was taken from the arguments then.
bool appendConverted(std::wstring& out, const Conversion& conversion, Arguments& arguments)
{
    switch (conversion.kind) {
    case L's':
        appendText(out, va_arg(arguments.list, const wchar_t*), conversion);
        return true;
    case L'S': {
        const char* narrow = va_arg(arguments.list, const char*);
        appendText(out, narrow == nullptr ? nullptr : fromUtf8(narrow).c_str(), conversion);
        return true;
    }
    case L'c':
    case L'C': {
        const auto c = static_cast<wchar_t>(va_arg(arguments.list, wint_t));
        appendPadded(out, {&c, 1}, conversion);
        return true;
    }
    case L'd':
    case L'i':
        appendSigned(out, arguments, conversion);
        return true;
    case L'u':
    case L'x':
    case L'X':
    case L'p':
        appendUnsigned(out, arguments, conversion);
        return true;
    case L'f':
    case L'e':
    case L'g':
        appendReal(out, va_arg(arguments.list, double), conversion);
        return true;
    case L'%':
        out.push_back(L'%');
        return true;
    default:
        return false;
    }
}

} // namespace

std::wstring formatWide(const wchar_t* format, std::va_list list)
{
    Arguments arguments;
    va_copy(arguments.list, list);
    std::wstring out;
    for (const wchar_t* at = format; *at != 0;) {
        if (*at != L'%') {
            out.push_back(*at++);
            continue;
        }
        const wchar_t* begin = at++;
        const Conversion conversion = takeConversion(at, arguments);
        if (!appendConverted(out, conversion, arguments)) {
            out.append(begin, at);
        }
    }
    va_end(arguments.list);
    return out;
}

// NOLINTEND(clang-analyzer-valist.Uninitialized)

} // namespace corma
