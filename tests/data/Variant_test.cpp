#include "data/Variant.h"
#include "support/row_names.h"

#include <gtest/gtest.h>
#include <limits>

namespace corma {

namespace {

using corma::testing::nameOfRow;

constexpr double kNotANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinite = std::numeric_limits<double>::infinity();

struct TextCase
{
    const char* name;
    Variant value;
    const wchar_t* text;
};

class VariantText : public ::testing::TestWithParam<TextCase>
{
};

TEST_P(VariantText, IsAsTheTagTells)
{
    EXPECT_EQ(xx_variant_text(GetParam().value, false), GetParam().text);
    EXPECT_EQ(xx_variant_text(GetParam().value, true), GetParam().text);
}

Variant ofTag(int tag)
{
    return {.tag = static_cast<unsigned short>(tag)};
}

Variant money(std::int64_t tenThousandths)
{
    return {.tag = VT_CY, .integer = tenThousandths};
}

Variant days(double count)
{
    return {.tag = VT_DATE, .real = count};
}

Variant date(int year, int month, int day)
{
    return days(dateValue(year, month, day));
}

Variant text(const std::wstring& characters)
{
    return {.tag = VT_BSTR, .text = characters};
}

const std::wstring kForty = L"1234567890123456789012345678901234567890";

// clang-format off
const TextCase kTextCases[] = {
    {"EmptyIsNull",                   ofTag(VT_EMPTY), L"NULL"},
    {"NullIsNull",                    ofTag(VT_NULL), L"NULL"},
    {"AShort",                        {.tag = VT_I2, .integer = -32768}, L"-32768"},
    {"AnInteger",                     {.tag = VT_I4, .integer = -2147483648LL}, L"-2147483648"},
    {"ASingleIsInExponentForm",       {.tag = VT_R4, .real = 1.5}, L"1.500000e+00"},
    {"ADoubleIsInExponentForm",       {.tag = VT_R8, .real = -1234.5}, L"-1.234500e+03"},
    {"AByteIsHexadecimal",            {.tag = VT_UI1, .integer = 10}, L"0x0A"},
    {"TheLargestByte",                {.tag = VT_UI1, .integer = 255}, L"0xFF"},
    {"True",                          {.tag = VT_BOOL, .integer = -1}, L"TRUE"},
    {"AnythingButZeroIsTrue",         {.tag = VT_BOOL, .integer = 2}, L"TRUE"},
    {"False",                         {.tag = VT_BOOL}, L"FALSE"},
    {"AnEmptyText",                   text(L""), L""},
    {"AText",                         text(L"Door \u20ac"), L"Door \u20ac"},
    {"ATextOfOnePiece",               text(kForty.substr(0, 20)), L"12345678901234567890"},
    {"ATextBelowTwoPieces",           text(kForty.substr(0, 39)), L"123456789012345678901234567890123456789"},
    {"ATextOfTwoPieces",              text(kForty), L"1234567890123456789012345678901234567890"},
    {"ATextAboveTwoPieces",           text(kForty + L"x"), L"1234567890123456789012345678901234567890x"},
    {"NoMoney",                       money(0), L"0"},
    {"WholeMoneyHasNoDecimals",       money(120000), L"12"},
    {"MoneyLeavesOutTrailingZeros",   money(125000), L"12.5"},
    {"MoneyHasFourDecimals",          money(10001), L"1.0001"},
    {"MoneyBelowOne",                 money(5), L"0.0005"},
    {"MoneyOwed",                     money(-5), L"-0.0005"},
    {"TheMostMoney",                  money(std::numeric_limits<std::int64_t>::max()), L"922337203685477.5807"},
    {"TheLeastMoney",                 money(std::numeric_limits<std::int64_t>::min()), L"-922337203685477.5808"},
    {"TheLastYearWithFourDigits",     date(1929, 12, 31), L"31/12/1929"},
    {"TheFirstYearWithTwoDigits",     date(1930, 1, 1), L"01/01/30"},
    {"TheLastYearWithTwoDigits",      date(2029, 12, 31), L"31/12/29"},
    {"TheNextYearWithFourDigits",     date(2030, 1, 1), L"01/01/2030"},
    {"AYearBelowTen",                 date(2008, 2, 29), L"29/02/08"},
    {"DayZero",                       days(0), L"30/12/1899"},
    {"TheTimeOfTheDayIsNotShown",     days(46347.99), L"21/11/26"},
    {"ADayBeforeDayZeroAtSix",        days(-1.25), L"29/12/1899"},
    {"AnHourOfDayZero",               days(-0.25), L"30/12/1899"},
    {"TheFirstDate",                  date(100, 1, 1), L"01/01/0100"},
    {"TheFirstDateInTheEvening",      days(-657434.75), L"01/01/0100"},
    {"BeforeTheFirstDate",            days(-657435), L"Invalid DateTime"},
    {"TheLastDate",                   date(9999, 12, 31), L"31/12/9999"},
    {"TheLastDateInTheEvening",       days(2958465.75), L"31/12/9999"},
    {"BehindTheLastDate",             days(2958466), L"Invalid DateTime"},
    {"ADateThatIsNoNumber",           days(kNotANumber), L"Invalid DateTime"},
    {"ADateWithoutEnd",               days(kInfinite), L"Invalid DateTime"},
    {"AnUnknownTag",                  ofTag(15), L"Fish"},
    {"ADecimalIsUnknown",             ofTag(VT_DECIMAL), L"Fish"},
    {"ARecordIsUnknown",              ofTag(VT_RECORD), L"Fish"},
    {"AVectorIsUnknown",              ofTag(0x1000 | VT_I4), L"Fish"},
    {"AnArray",                       ofTag(VT_ARRAY | VT_I4), L"Array of VT_I4"},
    {"AnArrayOfWhatIsNotPlain",       ofTag(VT_ARRAY | VT_CLSID), L"Array of VT_CLSID"},
    {"AnArrayOfNothing",              ofTag(VT_ARRAY), L"Array of VT_EMPTY"},
    {"AnArrayOfTheUnknown",           ofTag(VT_ARRAY | 15), L"Array of "},
    {"AnArrayOfPointers",             ofTag(VT_ARRAY | VT_BYREF | VT_BSTR), L"Array of Pointer to VT_BSTR"},
    {"APointerIsAddedToTheUnknown",   ofTag(VT_BYREF | VT_I4), L"FishPointer to VT_I4"},
    {"APointerToTheUnknown",          ofTag(VT_BYREF | 15), L"FishPointer to "},
};

const TextCase kNamedTags[] = {
    {"DISPATCH",    ofTag(9),  L"VT_DISPATCH"},    {"ERROR",     ofTag(10), L"VT_ERROR"},
    {"VARIANT",     ofTag(12), L"VT_VARIANT"},     {"UNKNOWN",   ofTag(13), L"VT_UNKNOWN"},
    {"I1",          ofTag(16), L"VT_I1"},          {"UI2",       ofTag(18), L"VT_UI2"},
    {"UI4",         ofTag(19), L"VT_UI4"},         {"I8",        ofTag(20), L"VT_I8"},
    {"UI8",         ofTag(21), L"VT_UI8"},         {"INT",       ofTag(22), L"VT_INT"},
    {"UINT",        ofTag(23), L"VT_UINT"},        {"VOID",      ofTag(24), L"VT_VOID"},
    {"HRESULT",     ofTag(25), L"VT_HRESULT"},     {"PTR",       ofTag(26), L"VT_PTR"},
    {"SAFEARRAY",   ofTag(27), L"VT_SAFEARRAY"},   {"CARRAY",    ofTag(28), L"VT_CARRAY"},
    {"USERDEFINED", ofTag(29), L"VT_USERDEFINED"}, {"LPSTR",     ofTag(30), L"VT_LPSTR"},
    {"LPWSTR",      ofTag(31), L"VT_LPWSTR"},      {"FILETIME",  ofTag(64), L"VT_FILETIME"},
    {"BLOB",        ofTag(65), L"VT_BLOB"},        {"STREAM",    ofTag(66), L"VT_STREAM"},
    {"STORAGE",     ofTag(67), L"VT_STORAGE"},     {"CF",        ofTag(71), L"VT_CF"},
    {"STREAMED_OBJECT", ofTag(68), L"VT_STREAMED_OBJECT"},
    {"STORED_OBJECT",   ofTag(69), L"VT_STORED_OBJECT"},
    {"BLOB_OBJECT",     ofTag(70), L"VT_BLOB_OBJECT"},
    {"CLSID",           ofTag(72), L"VT_CLSID"},
};

const TextCase kPlainElements[] = {
    {"NULL_", ofTag(VT_ARRAY | 1), L"Array of VT_NULL"}, {"I2",   ofTag(VT_ARRAY | 2), L"Array of VT_I2"},
    {"R4",    ofTag(VT_ARRAY | 4), L"Array of VT_R4"},   {"R8",   ofTag(VT_ARRAY | 5), L"Array of VT_R8"},
    {"CY",    ofTag(VT_ARRAY | 6), L"Array of VT_CY"},   {"DATE", ofTag(VT_ARRAY | 7), L"Array of VT_DATE"},
    {"BSTR",  ofTag(VT_ARRAY | 8), L"Array of VT_BSTR"}, {"BOOL", ofTag(VT_ARRAY | 11), L"Array of VT_BOOL"},
    {"UI1",   ofTag(VT_ARRAY | 17), L"Array of VT_UI1"},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Values, VariantText, ::testing::ValuesIn(kTextCases), nameOfRow);
INSTANTIATE_TEST_SUITE_P(NamesOfTags, VariantText, ::testing::ValuesIn(kNamedTags), nameOfRow);
INSTANTIATE_TEST_SUITE_P(NamesOfPlainTags, VariantText, ::testing::ValuesIn(kPlainElements),
                         nameOfRow);

struct NumberCase
{
    const char* name;
    Variant value;
    std::int32_t integer;
    double real;
};

class VariantNumber : public ::testing::TestWithParam<NumberCase>
{
};

TEST_P(VariantNumber, IsReadByItsTag)
{
    EXPECT_EQ(integerOf(GetParam().value), GetParam().integer);
    EXPECT_EQ(realOf(GetParam().value), GetParam().real);
}

constexpr std::int32_t kLowest = std::numeric_limits<std::int32_t>::min();

Variant real(double value)
{
    return {.tag = VT_R8, .real = value};
}

// clang-format off
const NumberCase kNumberCases[] = {
    {"AShort",                    {.tag = VT_I2, .integer = -7}, -7, -7.0},
    {"AnInteger",                 {.tag = VT_I4, .integer = 70000}, 70000, 70000.0},
    {"ASingle",                   {.tag = VT_R4, .real = 2.5}, 3, 2.5},
    {"Zero",                      real(0.0), 0, 0.0},
    {"BelowAHalf",                real(0.4999), 0, 0.4999},
    {"AHalfGoesUp",               real(0.5), 1, 0.5},
    {"NearlyAHalfGoesUp",         real(0.499999995), 1, 0.499999995},
    {"BelowZero",                 real(-0.4), 0, -0.4},
    {"AHalfBelowZeroGoesUp",      real(-2.5), -2, -2.5},
    {"AboveAHalfBelowZero",       real(-2.6), -3, -2.6},
    {"TheHighestInteger",         real(2147483647.0), 2147483647, 2147483647.0},
    {"AboveTheHighestInteger",    real(2147483648.0), kLowest, 2147483648.0},
    {"TheLowestInteger",          real(-2147483648.0), kLowest, -2147483648.0},
    {"BelowTheLowestInteger",     real(-2147483649.0), kLowest, -2147483649.0},
    {"WithoutEnd",                real(kInfinite), kLowest, kInfinite},
    {"AByteIsNotRead",            {.tag = VT_UI1, .integer = 5}, 0, 0.0},
    {"ABigIntegerIsNotRead",      {.tag = VT_I8, .integer = 5}, 0, 0.0},
    {"ATextIsNotRead",            {.tag = VT_BSTR, .text = L"5"}, 0, 0.0},
    {"ADateIsNotRead",            {.tag = VT_DATE, .real = 5.0}, 0, 0.0},
    {"NothingIsZero",             {.tag = VT_NULL}, 0, 0.0},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Tags, VariantNumber, ::testing::ValuesIn(kNumberCases), nameOfRow);

TEST(VariantNumber, WhatIsNoNumberHasNoInteger)
{
    EXPECT_EQ(integerOf(real(kNotANumber)), kLowest);
}

TEST(DateValue, CountsFromTheEndOfTheYear1899)
{
    EXPECT_EQ(dateValue(1899, 12, 30), 0.0);
    EXPECT_EQ(dateValue(1899, 12, 31), 1.0);
    EXPECT_EQ(dateValue(1899, 12, 29), -1.0);
    EXPECT_EQ(dateValue(2026, 11, 21), 46347.0);
    EXPECT_EQ(dateValue(100, 1, 1), -657434.0);
    EXPECT_EQ(dateValue(9999, 12, 31), 2958465.0);
}

} // namespace

} // namespace corma
