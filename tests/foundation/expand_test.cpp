#include "foundation/expand.h"
#include "support/RecordingServices.h"

#include <gtest/gtest.h>

namespace corma {
namespace {

struct Row
{
    const char* sentence;
    const wchar_t* text;
    const wchar_t* expanded;
};

class ExpandEnvironment : public ::testing::TestWithParam<Row>
{
};

TEST_P(ExpandEnvironment, Gives)
{
    testing::RecordingServices services;
    services.variables = {{L"NORM", L"/office"}, {L"EMPTY", L""}, {L"A B", L"blank"}};
    EXPECT_EQ(expandEnvironment(GetParam().text, 260), GetParam().expanded);
}

INSTANTIATE_TEST_SUITE_P(
    Names, ExpandEnvironment,
    ::testing::Values(
        Row {"AValueInThePlaceOfItsName", L"%NORM%/a.ini", L"/office/a.ini"},
        Row {"AnUnknownNameStays", L"%NONE%/a.ini", L"%NONE%/a.ini"},
        Row {"TheSignThatEndsAnUnknownNameMayBeginTheNext", L"%NONE%NORM%", L"%NONE/office"},
        Row {"ALoneSignStays", L"100%", L"100%"}, Row {"TwoSignsStay", L"a%%b", L"a%%b"},
        Row {"TwoNamesInARow", L"%NORM%%NORM%", L"/office/office"},
        Row {"AnEmptyValue", L"x%EMPTY%y", L"xy"}, Row {"ABlankInAName", L"%A B%", L"blank"},
        Row {"NothingToExpand", L"norm\\a.ini", L"norm\\a.ini"}, Row {"Nothing", L"", L""}),
    [](const auto& row) { return row.param.sentence; });

TEST(ExpandEnvironment, FailsWhenTheResultIsTooLong)
{
    testing::RecordingServices services;
    services.variables = {{L"LONG", std::wstring(100, L'x')}};
    EXPECT_TRUE(expandEnvironment(L"%LONG%", 100));
    EXPECT_FALSE(expandEnvironment(L"%LONG%", 99));
}

} // namespace
} // namespace corma
