#include "host/templates/default_drawing.h"

#include <algorithm>
#include <charconv>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corma::host {
namespace {

struct Pair
{
    int code = -1; // -1 for a line that is no number
    std::string_view value;
};

std::string_view nextLine(std::string_view& text)
{
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(text.size(), line.size() + 1));
    return line;
}

std::vector<Pair> pairsOf(std::string_view text)
{
    std::vector<Pair> pairs;
    while (!text.empty()) {
        std::string_view code = nextLine(text);
        code.remove_prefix(std::min(code.size(), code.find_first_not_of(' ')));
        Pair pair;
        const auto [end, error] = std::from_chars(code.begin(), code.end(), pair.code);
        pair.code = error == std::errc {} && end == code.end() ? pair.code : -1;
        pair.value = nextLine(text);
        pairs.push_back(pair);
    }
    return pairs;
}

unsigned long hexadecimal(std::string_view text)
{
    unsigned long number = 0;
    std::from_chars(text.begin(), text.end(), number, 16);
    return number;
}

// How often each handle is given to a record; the head's are left out.
std::map<unsigned long, int> handlesOf(const std::vector<Pair>& pairs)
{
    std::map<unsigned long, int> counts;
    std::string_view type;
    bool isHead = true;
    for (const auto& [code, value] : pairs) {
        type = code == 0 ? value : type;
        isHead = isHead && type != "ENDSEC";
        if (!isHead && (code == 5 || code == 105) && !(code == 5 && type == "DIMSTYLE")) {
            ++counts[hexadecimal(value)];
        }
    }
    return counts;
}

unsigned long handleSeedOf(const std::vector<Pair>& pairs)
{
    const auto name = std::find_if(pairs.begin(), pairs.end(),
                                   [](const Pair& pair) { return pair.value == "$HANDSEED"; });
    return name == pairs.end() ? 0 : hexadecimal((name + 1)->value);
}

class Templates : public ::testing::TestWithParam<std::pair<const char*, std::string_view>>
{
protected:
    const std::string_view text = GetParam().second;
    const std::vector<Pair> pairs = pairsOf(text);
};

TEST_P(Templates, AreWholePairsOfCodeAndValueUpToTheEndOfTheFile)
{
    EXPECT_EQ(text.find('\r'), std::string_view::npos);
    EXPECT_TRUE(text.ends_with("  0\nEOF\n"));
    EXPECT_TRUE(std::all_of(pairs.begin(), pairs.end(), [](auto& pair) { return pair.code >= 0; }));
}

TEST_P(Templates, NameTheirVersionOnce)
{
    const std::size_t version = text.find("AC1");
    ASSERT_NE(version, std::string_view::npos);
    EXPECT_EQ(text.find("AC1", version + 1), std::string_view::npos);
}

TEST_P(Templates, GiveEachHandleOnceAndBelowTheSeed)
{
    const unsigned long seed = handleSeedOf(pairs);
    ASSERT_GT(seed, 0U);
    for (const auto& [handle, count] : handlesOf(pairs)) {
        EXPECT_EQ(count, 1) << std::hex << handle;
        EXPECT_GT(handle, 0U);
        EXPECT_LT(handle, seed);
    }
}

TEST_P(Templates, ReferToNothingThatIsNotThere)
{
    const auto handles = handlesOf(pairs);
    for (const auto& [code, value] : pairs) {
        if (code >= 320 && code < 370 && value != "0") {
            EXPECT_TRUE(handles.contains(hexadecimal(value))) << code << ' ' << value;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(, Templates,
                         ::testing::Values(std::pair("Default", defaultDrawing()),
                                           std::pair("R12", r12Drawing())),
                         [](const auto& row) { return row.param.first; });

TEST(DefaultDrawing, HasModelAndOneLayout)
{
    const auto pairs = pairsOf(defaultDrawing());
    const auto layouts = std::count_if(pairs.begin(), pairs.end(), [](const Pair& pair) {
        return pair.code == 0 && pair.value == "LAYOUT";
    });
    EXPECT_EQ(layouts, 2);
}

TEST(R12Drawing, HasNoDictionaries)
{
    EXPECT_EQ(r12Drawing().find("OBJECTS"), std::string_view::npos);
    EXPECT_TRUE(handlesOf(pairsOf(r12Drawing())).empty());
}

} // namespace
} // namespace corma::host
