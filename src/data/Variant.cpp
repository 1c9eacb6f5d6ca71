#include "data/Variant.h"

#include "foundation/messages.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <iterator>
#include <limits>
#include <optional>
#include <utility>

namespace corma {

namespace {

constexpr const wchar_t* kUnknown = L"Fish";
constexpr const wchar_t* kNone = L"NULL";
constexpr const wchar_t* kInvalidDate = L"Invalid DateTime";
constexpr std::size_t kPiece = 20;

// In days, so that the first and the last day of the years 100 to 9999 are within.
constexpr double kDatesBegin = -657434.0;
constexpr double kDatesEnd = 2958466.0;

constexpr std::chrono::sys_days kDayZero
    = std::chrono::year {1899} / std::chrono::December / std::chrono::day {30};

struct TagName
{
    unsigned short tag;
    const wchar_t* name;
};

// VT_DECIMAL, VT_RECORD and the bits alone have no name.
// clang-format off
constexpr TagName kTagNames[] = {
    {VT_EMPTY,           L"VT_EMPTY"},           {VT_NULL,          L"VT_NULL"},
    {VT_I2,              L"VT_I2"},              {VT_I4,            L"VT_I4"},
    {VT_R4,              L"VT_R4"},              {VT_R8,            L"VT_R8"},
    {VT_CY,              L"VT_CY"},              {VT_DATE,          L"VT_DATE"},
    {VT_BSTR,            L"VT_BSTR"},            {VT_DISPATCH,      L"VT_DISPATCH"},
    {VT_ERROR,           L"VT_ERROR"},           {VT_BOOL,          L"VT_BOOL"},
    {VT_VARIANT,         L"VT_VARIANT"},         {VT_UNKNOWN,       L"VT_UNKNOWN"},
    {VT_I1,              L"VT_I1"},              {VT_UI1,           L"VT_UI1"},
    {VT_UI2,             L"VT_UI2"},             {VT_UI4,           L"VT_UI4"},
    {VT_I8,              L"VT_I8"},              {VT_UI8,           L"VT_UI8"},
    {VT_INT,             L"VT_INT"},             {VT_UINT,          L"VT_UINT"},
    {VT_VOID,            L"VT_VOID"},            {VT_HRESULT,       L"VT_HRESULT"},
    {VT_PTR,             L"VT_PTR"},             {VT_SAFEARRAY,     L"VT_SAFEARRAY"},
    {VT_CARRAY,          L"VT_CARRAY"},          {VT_USERDEFINED,   L"VT_USERDEFINED"},
    {VT_LPSTR,           L"VT_LPSTR"},           {VT_LPWSTR,        L"VT_LPWSTR"},
    {VT_FILETIME,        L"VT_FILETIME"},        {VT_BLOB,          L"VT_BLOB"},
    {VT_STREAM,          L"VT_STREAM"},          {VT_STORAGE,       L"VT_STORAGE"},
    {VT_STREAMED_OBJECT, L"VT_STREAMED_OBJECT"}, {VT_STORED_OBJECT, L"VT_STORED_OBJECT"},
    {VT_BLOB_OBJECT,     L"VT_BLOB_OBJECT"},     {VT_CF,            L"VT_CF"},
    {VT_CLSID,           L"VT_CLSID"}
};

// clang-format on

// Null for a tag that is unknown.
const wchar_t* tagName(int tag)
{
    const auto* const found = std::find_if(std::begin(kTagNames), std::end(kTagNames),
                                           [tag](const TagName& row) { return row.tag == tag; });
    return found == std::end(kTagNames) ? nullptr : found->name;
}

std::wstring arrayOrPointerText(unsigned short tag)
{
    // A pointer alone is told behind the text for what is unknown, which only an array replaces.
    std::wstring text = (tag & VT_ARRAY) != 0 ? L"Array of " : kUnknown;
    if ((tag & VT_BYREF) != 0) {
        text += L"Pointer to ";
    }
    const wchar_t* const name = tagName(tag & ~(VT_ARRAY | VT_BYREF));
    return name == nullptr ? text : text + name;
}

std::wstring currencyText(std::int64_t tenThousandths)
{
    // The lowest number has no positive counterpart but as unsigned.
    const auto bits = static_cast<std::uint64_t>(tenThousandths);
    const std::uint64_t size = tenThousandths < 0 ? 0 - bits : bits;
    std::wstring text = tenThousandths < 0 ? L"-" : L"";
    text += std::to_wstring(size / 10000);
    std::wstring decimals = formatted(L".%04d", static_cast<int>(size % 10000));
    while (decimals.back() == L'0') {
        decimals.pop_back();
    }
    return decimals == L"." ? text : text + decimals;
}

std::wstring dateText(double days)
{
    // Before day zero the fraction still counts the hours since midnight: -1.25 is day -1, 6:00.
    const double day = std::trunc(days);
    if (!(day >= kDatesBegin && day < kDatesEnd)) {
        return kInvalidDate;
    }
    const std::chrono::year_month_day date {kDayZero + std::chrono::days {static_cast<int>(day)}};
    const int year = static_cast<int>(date.year());
    const auto number = [](auto part) { return static_cast<int>(static_cast<unsigned>(part)); };
    const std::wstring dayAndMonth
        = formatted(L"%02d/%02d/", number(date.day()), number(date.month()));
    // Two digits tell a year only within the hundred years that they commonly stand for.
    return dayAndMonth
        + (year >= 1930 && year < 2030 ? formatted(L"%02d", year % 100) : formatted(L"%04d", year));
}

std::wstring copyByPieces(const std::wstring& text)
{
    std::wstring copy;
    for (std::size_t at = 0; at < text.size(); at += kPiece) {
        copy.append(text, at, kPiece);
    }
    return copy;
}

// Nothing for a tag whose values have no text.
std::optional<std::wstring> plainText(const Variant& value, bool inPieces)
{
    switch (value.tag) {
    case VT_EMPTY:
    case VT_NULL:
        return kNone;
    case VT_I2:
        return formatted(L"%hd", static_cast<short>(value.integer));
    case VT_I4:
        return formatted(L"%d", static_cast<int>(value.integer));
    case VT_R4:
    case VT_R8:
        return formatted(L"%e", value.real);
    case VT_CY:
        return currencyText(value.integer);
    case VT_DATE:
        return dateText(value.real);
    case VT_BSTR:
        return inPieces ? copyByPieces(value.text) : value.text;
    case VT_BOOL:
        return value.integer != 0 ? L"TRUE" : L"FALSE";
    case VT_UI1:
        return formatted(L"0x%02hX", static_cast<unsigned char>(value.integer));
    default:
        return std::nullopt;
    }
}

// Halves go up, also below zero; both constants are a little off so that a half which came out of
// a calculation a little low does so too.
std::int32_t rounded(double value)
{
    using Limits = std::numeric_limits<std::int32_t>;
    const double moved = std::trunc(value >= 0.0 ? value + 0.50000001 : value - 0.49999999);
    const bool fits = moved >= Limits::min() && moved <= Limits::max();
    return fits ? static_cast<std::int32_t>(moved) : Limits::min();
}

} // namespace

std::int32_t integerOf(const Variant& value)
{
    switch (value.tag) {
    case VT_I2:
    case VT_I4:
        return static_cast<std::int32_t>(value.integer);
    case VT_R4:
    case VT_R8:
        return rounded(value.real);
    default:
        return 0;
    }
}

double realOf(const Variant& value)
{
    switch (value.tag) {
    case VT_I2:
    case VT_I4:
        return static_cast<double>(value.integer);
    case VT_R4:
    case VT_R8:
        return value.real;
    default:
        return 0.0;
    }
}

double dateValue(int year, int month, int day)
{
    const std::chrono::year_month_day date {std::chrono::year {year},
                                            std::chrono::month {static_cast<unsigned>(month)},
                                            std::chrono::day {static_cast<unsigned>(day)}};
    return static_cast<double>((std::chrono::sys_days {date} - kDayZero).count());
}

} // namespace corma

std::wstring xx_variant_text(const corma::Variant& value, bool inPieces)
{
    using namespace corma;
    if (auto text = plainText(value, inPieces)) {
        return *text;
    }
    if ((value.tag & (VT_ARRAY | VT_BYREF)) != 0) {
        return arrayOrPointerText(value.tag);
    }
    const wchar_t* const name = tagName(value.tag);
    return name == nullptr ? kUnknown : name;
}
