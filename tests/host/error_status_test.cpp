#include "host/error_status.h"

#include <fstream>
#include <gtest/gtest.h>
#include <regex>
#include <string>

namespace {

std::wstring statusText(int number)
{
    return acadErrorStatusText(static_cast<Acad::ErrorStatus>(number));
}

TEST(ErrorStatusText, EveryStatusOfTheHeaderHasItsName)
{
    std::ifstream header(CORMA_SOURCE_FOLDER "/src/host/error_status.h");
    ASSERT_TRUE(header.is_open());
    const std::regex enumerator(R"(^\s*(e\w+) = (\d+),?$)");
    int found = 0;
    for (std::string line; std::getline(header, line);) {
        std::smatch match;
        if (std::regex_match(line, match, enumerator)) {
            const std::string name = match[1];
            EXPECT_EQ(statusText(std::stoi(match[2])), std::wstring(name.begin(), name.end()));
            ++found;
        }
    }
    EXPECT_GE(found, 50);
}

TEST(ErrorStatusText, KnownNames)
{
    EXPECT_EQ(statusText(Acad::eOk), L"eOk");
    EXPECT_EQ(statusText(22), L"eKeyNotFound");
    EXPECT_EQ(statusText(434), L"eUnsupportedFileFormat");
}

TEST(ErrorStatusText, AnotherNumberIsItsDigits)
{
    EXPECT_EQ(statusText(4), L"4");
    EXPECT_EQ(statusText(435), L"435");
    EXPECT_EQ(statusText(511), L"511");
}

TEST(ErrorStatusText, TheTextOfANumberLivesUntilTheNext)
{
    const ACHAR* const name = acadErrorStatusText(Acad::eOk);
    const ACHAR* const digits = acadErrorStatusText(static_cast<Acad::ErrorStatus>(4));
    EXPECT_STREQ(name, L"eOk");
    EXPECT_STREQ(digits, L"4");
}

} // namespace
