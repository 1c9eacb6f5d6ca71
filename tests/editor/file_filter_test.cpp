#include "editor/file_filter.h"

#include <gtest/gtest.h>
#include <ostream>

namespace {

struct FilterRow
{
    const char* sentence;
    const wchar_t* filter;
    std::vector<std::wstring> filters;
};

void PrintTo(const FilterRow& row, std::ostream* out)
{
    *out << row.sentence;
}

class NameFilters : public ::testing::TestWithParam<FilterRow>
{
};

TEST_P(NameFilters, AreTheFormOfQt)
{
    EXPECT_EQ(corma::nameFilters(GetParam().filter), GetParam().filters);
}

// clang-format off
const FilterRow filterRows[] = {
    {"APair", L"Texts|*.txt||", {L"Texts (*.txt)"}},
    {"SeveralPatterns", L"Texts|*.txt;*.doc||", {L"Texts (*.txt *.doc)"}},
    {"SeveralPairs", L"Texts|*.txt|All|*.*||", {L"Texts (*.txt)", L"All (*)"}},
    {"PatternsInTheDescriptionAreNotToldTwice", L"Texts (*.txt)|*.txt;*.doc||", {L"Texts (*.txt *.doc)"}},
    {"OtherBracketsStay", L"Texts (old)|*.txt||", {L"Texts (old) (*.txt)"}},
    {"AProject", L"project files (tool.ipr)|tool.ipr||", {L"project files (tool.ipr)"}},
    {"WithoutAnEnd", L"Texts|*.txt", {L"Texts (*.txt)"}},
    {"WithOneEnd", L"Texts|*.txt|", {L"Texts (*.txt)"}},
    {"OtherAlphabets", L"Тексты|*.тхт||", {L"Тексты (*.тхт)"}},
    {"WithoutADescription", L"|*.txt||", {L"(*.txt)"}},
    {"EmptyPatternsAreLeftOut", L"Texts|;*.txt; ;||", {L"Texts (*.txt)"}},
    {"ADescriptionAloneIsLeftOut", L"Texts", {}},
    {"ADescriptionWithoutPatternsIsLeftOut", L"Texts||All|*||", {L"All (*)"}},
    {"Empty", L"", {}},
    {"OnlyAnEnd", L"||", {}},
};
// clang-format on

INSTANTIATE_TEST_SUITE_P(Of, NameFilters, ::testing::ValuesIn(filterRows),
                         [](const auto& row) { return std::string(row.param.sentence); });

} // namespace
