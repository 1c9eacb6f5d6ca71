#pragma once

// Values as database providers hand them over: with a tag that tells what is in them.

#include <cstdint>
#include <string>

namespace corma {

/// The tags, by the numbers and names that providers and their users know.
// clang-format off
enum VariantTag : unsigned short
{
    VT_EMPTY    = 0,  VT_NULL     = 1,  VT_I2       = 2,  VT_I4      = 3,  VT_R4          = 4,
    VT_R8       = 5,  VT_CY       = 6,  VT_DATE     = 7,  VT_BSTR    = 8,  VT_DISPATCH    = 9,
    VT_ERROR    = 10, VT_BOOL     = 11, VT_VARIANT  = 12, VT_UNKNOWN = 13, VT_DECIMAL     = 14,
    VT_I1       = 16, VT_UI1      = 17, VT_UI2      = 18, VT_UI4     = 19, VT_I8          = 20,
    VT_UI8      = 21, VT_INT      = 22, VT_UINT     = 23, VT_VOID    = 24, VT_HRESULT     = 25,
    VT_PTR      = 26, VT_SAFEARRAY = 27, VT_CARRAY  = 28, VT_USERDEFINED = 29, VT_LPSTR   = 30,
    VT_LPWSTR   = 31, VT_RECORD   = 36, VT_FILETIME = 64, VT_BLOB    = 65, VT_STREAM      = 66,
    VT_STORAGE  = 67, VT_STREAMED_OBJECT = 68, VT_STORED_OBJECT = 69, VT_BLOB_OBJECT = 70,
    VT_CF       = 71, VT_CLSID    = 72,
    VT_ARRAY    = 0x2000, // added to the tag of the elements
    VT_BYREF    = 0x4000  // added to the tag of what is pointed to
};

// clang-format on

/// A value; `tag` tells which of the other members counts.
struct Variant
{
    unsigned short tag = VT_EMPTY;
    std::int64_t integer
        = 0; // VT_I2, VT_I4, VT_I8, VT_UI1; VT_BOOL (0 for false); VT_CY, in 1/10000
    double real = 0.0; // VT_R4, VT_R8; VT_DATE, in days since the end of 1899-12-30
    std::wstring text {}; // VT_BSTR
};

/// The value as a 32-bit integer; doubles are rounded, halves up, and give the lowest integer when
/// they do not fit. 0 for any tag but VT_I2, VT_I4, VT_R4 and VT_R8.
std::int32_t integerOf(const Variant& value);

/// The value as a double. 0 for any tag but those four.
double realOf(const Variant& value);

/// The days that VT_DATE counts for a date of the Gregorian calendar.
double dateValue(int year, int month, int day);

} // namespace corma

/// The value as a text for the user: "NULL" without one, the text of a text, a date as day, month
/// and year ("Invalid DateTime" outside the years 100 to 9999), an amount of money with at most
/// four decimals, other values formatted, and the name of the tag for what has no text. "Fish" for
/// a tag that is unknown. `inPieces` copies a text by 20 characters, with the same result.
std::wstring xx_variant_text(const corma::Variant& value, bool inPieces);
