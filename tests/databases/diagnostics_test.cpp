#include "data/odbc/diagnostics.h"

#include <gtest/gtest.h>

namespace corma {

namespace {

using odbc::Diagnosis;
using odbc::Step;

struct StateRow
{
    const char* sentence;
    std::vector<std::wstring> states; // of the records
    std::uint32_t running; // the code for a statement
    std::uint32_t opening; // and for the opening of a connection
    bool isLost = false;
};

Diagnosis diagnosis(const std::vector<std::wstring>& states)
{
    Diagnosis records;
    for (const std::wstring& state : states) {
        records.push_back({.state = state, .text = L"text"});
    }
    return records;
}

class SqlStates : public ::testing::TestWithParam<StateRow>
{
};

TEST_P(SqlStates, HaveTheirCode)
{
    const Diagnosis records = diagnosis(GetParam().states);
    EXPECT_EQ(odbc::codeOf(records, Step::running), GetParam().running);
    EXPECT_EQ(odbc::codeOf(records, Step::opening), GetParam().opening);
    EXPECT_EQ(odbc::tellsOfLoss(records), GetParam().isLost);
}

constexpr std::uint32_t kStatement = 0x80040E14;
constexpr std::uint32_t kRefused = 0x80040E4D;
constexpr std::uint32_t kOther = 0x80004005;

// clang-format off
INSTANTIATE_TEST_SUITE_P(Diagnostics, SqlStates, ::testing::Values(
    StateRow {"SyntaxError",          {L"42601"},            kStatement, kOther},
    StateRow {"DivisionByZero",       {L"22012"},            kStatement, kOther},
    StateRow {"BrokenConstraint",     {L"23505"},            kStatement, kOther},
    StateRow {"GeneralError",         {L"HY000"},            kStatement, kOther},
    StateRow {"Timeout",              {L"HYT00"},            kStatement, kOther},
    StateRow {"WrongPassword",        {L"28P01"},            kRefused,   kRefused},
    StateRow {"NotAllowedIn",         {L"28000"},            kRefused,   kRefused},
    StateRow {"NoDataSource",         {L"IM002"},            kOther,     kOther},
    StateRow {"CannotConnect",        {L"08001"},            kOther,     kOther, true},
    StateRow {"LinkBroken",           {L"08S01"},            kOther,     kOther, true},
    StateRow {"ServerShutsDown",      {L"57P01"},            kOther,     kOther, true},
    StateRow {"ServerStarts",         {L"57P03"},            kOther,     kOther, true},
    StateRow {"StatementCancelled",   {L"57014"},            kOther,     kOther},
    StateRow {"LossBehindAnError",    {L"HY000", L"08S01"},  kStatement, kOther, true},
    StateRow {"ErrorBehindAWarning",  {L"01000", L"28000"},  kRefused,   kRefused},
    StateRow {"WarningAlone",         {L"01000"},            kOther,     kOther},
    StateRow {"StateCutShort",        {L"4"},                kOther,     kOther},
    StateRow {"NoRecord",             {},                    kOther,     kOther}),
    [](const auto& row) { return row.param.sentence; });

// clang-format on

TEST(Diagnostics, ShowEachRecordWithItsState)
{
    EXPECT_EQ(odbc::textOf({}), L"");
    EXPECT_EQ(odbc::textOf({{.state = L"42P01", .text = L"no table"}}), L"[42P01] no table");
    EXPECT_EQ(
        odbc::textOf({{.state = L"01000", .text = L"one"}, {.state = L"HY000", .text = L"two"}}),
        L"[01000] one [HY000] two");
}

} // namespace

} // namespace corma
