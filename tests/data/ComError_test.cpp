#include "data/ComError.h"
#include "support/RecordingServices.h"
#include "support/row_names.h"

#include <gtest/gtest.h>

using corma::testing::nameOfRow;

namespace {

using corma::testing::RecordingServices;
using Messages = std::vector<std::wstring>;

struct MeaningCase
{
    const char* name;
    std::uint32_t code;
    const wchar_t* meaning;
};

class MeaningOf : public testing::TestWithParam<MeaningCase>
{
};

TEST_P(MeaningOf, IsWhatTheSystemSays)
{
    EXPECT_EQ(corma::meaningOf(GetParam().code), GetParam().meaning);
}

// clang-format off
const MeaningCase kMeaningCases[] = {
    {"NotImplemented",              0x80004001, L"Not implemented"},
    {"Pointer",                     0x80004003, L"Invalid pointer"},
    {"Unspecified",                 corma::kUnspecified, L"Unspecified error"},
    {"NoSuchProvider",              corma::kClassNotRegistered, L"Class not registered"},
    {"AccessDenied",                0x80070005, L"Access is denied."},
    {"OutOfMemory",                 0x8007000E, L"Not enough storage is available to complete this operation."},
    {"InvalidArgument",             0x80070057, L"The parameter is incorrect."},
    {"BelowTheInterfaceErrors",     0x800401FF, L"Unknown error 0x800401FF"},
    {"TheFirstInterfaceError",      0x80040200, L"IDispatch error #0"},
    {"AnInterfaceError",            0x80040E14, L"IDispatch error #3092"},
    {"TheLastInterfaceError",       0x8004FFFF, L"IDispatch error #65023"},
    {"AboveTheInterfaceErrors",     0x80050000, L"Unknown error 0x80050000"},
    {"ASmallCode",                  0x1F, L"Unknown error 0x1F"},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Codes, MeaningOf, testing::ValuesIn(kMeaningCases), nameOfRow);

TEST(DumpComError, ShowsAMessageForEachPart)
{
    RecordingServices services;
    xx_dump_com_error({corma::kUnspecified, L"ODBC", L"no table Keys"});
    EXPECT_EQ(services.printed,
              (Messages {L"\n", L"\nxx_dump_com_error!\n", L"\n", L"\tCode = 80004005\n", L"\n",
                         L"\tCode meaning = Unspecified error\n", L"\n", L"\tSource = ODBC\n",
                         L"\n", L"\tDescription = no table Keys\n"}));
}

TEST(DumpComError, ShowsEightDigitsOfASmallCode)
{
    RecordingServices services;
    xx_dump_com_error({0x1F});
    EXPECT_EQ(services.printed.at(3), L"\tCode = 0000001f\n");
    EXPECT_EQ(services.printed.at(7), L"\tSource = \n");
}

TEST(DumpComError, ShowsThePercentSignsOfADescriptionAsItsReportsDo)
{
    RecordingServices services;
    xx_dump_com_error({corma::kUnspecified, L"", L"LIKE '%s'"});
    EXPECT_EQ(services.printed.back(), L"\tDescription = LIKE '$s'\n");
}

struct LengthCase
{
    std::size_t description;
    std::size_t shown;
};

TEST(DumpComError, CutsAMessageTo256Characters)
{
    const std::size_t around = std::wstring(L"\tDescription = \n").size();
    const LengthCase cases[] = {{255 - around, 255}, {256 - around, 256}, {257 - around, 256}};
    for (const auto& [description, shown] : cases) {
        RecordingServices services;
        xx_dump_com_error({1, L"", std::wstring(description, L'x')});
        EXPECT_EQ(services.printed.back().size(), shown);
        EXPECT_EQ(services.printed.back().back() == L'\n', description + around <= 256);
    }
}

} // namespace
