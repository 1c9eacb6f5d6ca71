#include "foundation/expand.h"
#include "support/RecordingServices.h"

#include <gtest/gtest.h>

namespace corma {
namespace {

struct ExpandRow
{
    const char* sentence;
    const wchar_t* text;
    const wchar_t* expanded;
};

class ExpandEnvironment : public ::testing::TestWithParam<ExpandRow>
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
    ::testing::Values(ExpandRow {"AValueInThePlaceOfItsName", L"%NORM%/a.ini", L"/office/a.ini"},
                      ExpandRow {"AnUnknownNameStays", L"%NONE%/a.ini", L"%NONE%/a.ini"},
                      ExpandRow {"TheSignThatEndsAnUnknownNameMayBeginTheNext", L"%NONE%NORM%",
                                 L"%NONE/office"},
                      ExpandRow {"ALoneSignStays", L"100%", L"100%"},
                      ExpandRow {"TwoSignsStay", L"a%%b", L"a%%b"},
                      ExpandRow {"TwoNamesInARow", L"%NORM%%NORM%", L"/office/office"},
                      ExpandRow {"AnEmptyValue", L"x%EMPTY%y", L"xy"},
                      ExpandRow {"ABlankInAName", L"%A B%", L"blank"},
                      ExpandRow {"NothingToExpand", L"norm\\a.ini", L"norm\\a.ini"},
                      ExpandRow {"Nothing", L"", L""}),
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
