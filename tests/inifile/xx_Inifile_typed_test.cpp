#include "inifile/InifileTest.h"
#include "inifile/numbers.h"
#include "platform/text.h"
#include <corma/host.h>

#include <array>
#include <climits>
#include <clocale>
#include <cmath>

using corma::testing::Ini;
using corma::testing::InifileTest;

namespace {

struct IntRow
{
    const char* sentence;
    const wchar_t* text;
    int number;
};

class IntText : public testing::TestWithParam<IntRow>
{
};

TEST_P(IntText, IsRead)
{
    EXPECT_EQ(corma::toInt(GetParam().text), GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(
    Number, IntText,
    testing::Values(IntRow {"Digits", L"42", 42}, IntRow {"Negative", L"-42", -42},
                    IntRow {"WithAPlus", L"+42", 42}, IntRow {"BehindBlanks", L" \t42", 42},
                    IntRow {"UpToTheFirstUnfitCharacter", L"42mm", 42},
                    IntRow {"UpToAPoint", L"2.9", 2}, IntRow {"AWordIsZero", L"ja", 0},
                    IntRow {"NothingIsZero", L"", 0}, IntRow {"ASignAloneIsZero", L"-", 0},
                    IntRow {"TwoSignsAreZero", L"--1", 0},
                    IntRow {"ABlankBehindTheSignIsZero", L"- 1", 0},
                    IntRow {"TheLargest", L"2147483647", INT_MAX},
                    IntRow {"AboveIt", L"2147483648", INT_MAX},
                    IntRow {"FarAboveIt", L"99999999999999999999999", INT_MAX},
                    IntRow {"TheSmallest", L"-2147483648", INT_MIN},
                    IntRow {"BelowIt", L"-2147483649", INT_MIN},
                    IntRow {"OtherDigitsAreNone", L"\x0664\x0662", 0}),
    [](const auto& row) { return row.param.sentence; });

struct DoubleRow
{
    const char* sentence;
    const wchar_t* text;
    double number;
};

class DoubleText : public testing::TestWithParam<DoubleRow>
{
};

TEST_P(DoubleText, IsRead)
{
    EXPECT_EQ(corma::toDouble(GetParam().text), GetParam().number);
}

INSTANTIATE_TEST_SUITE_P(
    Number, DoubleText,
    testing::Values(
        DoubleRow {"APoint", L"2.5", 2.5}, DoubleRow {"Negative", L"-0.125", -0.125},
        DoubleRow {"WithAPlus", L"+1e3", 1000}, DoubleRow {"WithoutALeadingZero", L".5", 0.5},
        DoubleRow {"WithoutDecimals", L"5.", 5}, DoubleRow {"ANegativeExponent", L"1e-3", 0.001},
        DoubleRow {"ACapitalExponent", L"1E+2", 100}, DoubleRow {"ACutExponent", L"1e", 1},
        DoubleRow {"AnExponentOfOnlyASign", L"1e+", 1}, DoubleRow {"BehindBlanks", L"  2", 2},
        DoubleRow {"UpToTheFirstUnfitCharacter", L"2.5mm", 2.5},
        DoubleRow {"UpToACommaAsDecimalSign", L"2,5", 2},
        DoubleRow {"UpToASecondPoint", L"1.2.3", 1.2}, DoubleRow {"UpToAnInnerSign", L"1-2", 1},
        DoubleRow {"AWordIsZero", L"none", 0}, DoubleRow {"InfinityIsAWord", L"inf", 0},
        DoubleRow {"AnExponentAloneIsZero", L"e5", 0}, DoubleRow {"NothingIsZero", L"", 0},
        DoubleRow {"TwoSignsAreZero", L"+-1", 0}, DoubleRow {"TooLarge", L"1e999", HUGE_VAL},
        DoubleRow {"TooLargeBelowZero", L"-1e999", -HUGE_VAL},
        DoubleRow {"TooSmall", L"1e-999", 0}),
    [](const auto& row) { return row.param.sentence; });

TEST(DoubleText, IsTheSameInEveryLocale)
{
    const std::string before = std::setlocale(LC_ALL, nullptr);
    std::setlocale(LC_ALL, "nl_NL.UTF-8");
    EXPECT_EQ(corma::toDouble(L"2.5"), 2.5);
    std::setlocale(LC_ALL, before.c_str());
}

TEST(DoubleText, OfManyDigitsIsReadWhole)
{
    EXPECT_EQ(corma::toDouble(std::wstring(400, L'9')), HUGE_VAL);
    EXPECT_EQ(corma::toDouble(L"0." + std::wstring(400, L'0') + L"1"), 0.0);
    EXPECT_EQ(corma::toDouble(std::wstring(400, L'0') + L"1"), 1.0);
}

class TypedGetters : public InifileTest
{
protected:
    // A file with one entry, and what its getter gives.
    Ini& with(const std::string& value)
    {
        m_ini.emplace(folder.write(L"a.ini", "[A]\nX=" + value + "\n"));
        return *m_ini;
    }

    template<class Get> int status(const std::string& value, Get get)
    {
        std::wstring ident = L"[A]X";
        return get(with(value).file, ident.data());
    }

    std::wstring m_missing = L"[A]Y";
    wchar_t* missing = m_missing.data();

private:
    std::optional<Ini> m_ini;
};

TEST_F(TypedGetters, AnIntIsRead)
{
    int number = -1;
    const auto get
        = [&](xx_Inifile& file, wchar_t* ident) { return file.getInt(ident, &number, 0); };
    EXPECT_EQ(status("42mm", get), RTNORM);
    EXPECT_EQ(number, 42);
    EXPECT_EQ(status("word", get), RTNORM);
    EXPECT_EQ(number, 0);
}

TEST_F(TypedGetters, AnEmptyValueIsAFailureWithAClearedOutput)
{
    int number = -1;
    bool flag = true;
    double real = -1;
    EXPECT_EQ(status("", [&](auto& file, auto* ident) { return file.getInt(ident, &number, 0); }),
              RTERROR);
    EXPECT_EQ(status("", [&](auto& file, auto* ident) { return file.getBool(ident, &flag, 0); }),
              RTERROR);
    EXPECT_EQ(status("", [&](auto& file, auto* ident) { return file.getDouble(ident, &real, 0); }),
              RTERROR);
    EXPECT_EQ(number, 0);
    EXPECT_FALSE(flag);
    EXPECT_EQ(real, 0.0);
}

TEST_F(TypedGetters, AMissClearsTheOutputAndIsToldWhenAsked)
{
    int number = -1;
    bool flag = true;
    double real = -1;
    Ini& ini = with("1");
    EXPECT_EQ(ini.file.getInt(missing, &number, 0), RTERROR);
    EXPECT_EQ(ini.file.getBool(missing, &flag, 0), RTERROR);
    EXPECT_TRUE(services.printed.empty());
    EXPECT_EQ(ini.file.getDouble(missing, &real, 1), RTERROR);
    EXPECT_EQ(services.allPrinted(), L"\n[A]Y not found in configurationfile\n");
    EXPECT_EQ(number, 0);
    EXPECT_FALSE(flag);
    EXPECT_EQ(real, 0.0);
}

TEST_F(TypedGetters, ABoolIsTrueForAnyNumberButZero)
{
    bool flag = false;
    const auto get
        = [&](xx_Inifile& file, wchar_t* ident) { return file.getBool(ident, &flag, 0); };
    for (const char* text : {"1", "-1", "2"}) {
        EXPECT_EQ(status(text, get), RTNORM);
        EXPECT_TRUE(flag) << text;
    }
    for (const char* text : {"0", "true", "ja"}) {
        EXPECT_EQ(status(text, get), RTNORM);
        EXPECT_FALSE(flag) << text;
    }
}

TEST_F(TypedGetters, TakeAListOfIdents)
{
    double real = 0;
    std::wstring idents = L"[A]Q,[A]X";
    EXPECT_EQ(with("2.5").file.getDouble(idents.data(), &real, 0), RTNORM);
    EXPECT_EQ(real, 2.5);
}

TEST_F(TypedGetters, Count499CharactersOfAValue)
{
    int number = 0;
    const auto get
        = [&](xx_Inifile& file, wchar_t* ident) { return file.getInt(ident, &number, 0); };
    EXPECT_EQ(status(std::string(498, ' ') + "12", get), RTNORM);
    EXPECT_EQ(number, 1);
}

class TypedArrays : public TypedGetters
{
protected:
    int getDoubles(const std::string& value, int capacity)
    {
        doubles.assign(8, -1.0);
        count = capacity;
        return status(value, [&](auto& file, auto* ident) {
            return file.getDoubleArray(ident, doubles.data(), &count, 0);
        });
    }

    int getInts(const std::string& value, int capacity)
    {
        ints.assign(8, -1);
        count = capacity;
        return status(value, [&](auto& file, auto* ident) {
            return file.getIntArray(ident, ints.data(), &count, 0);
        });
    }

    void expectOneReport(const std::wstring& text, int reported)
    {
        const std::wstring printed = services.allPrinted();
        EXPECT_TRUE(printed.starts_with(L"\nError in file xx_Inifile.cpp on line "))
            << corma::toUtf8(printed);
        EXPECT_TRUE(
            printed.ends_with(L"\n(" + text + L", ec = " + std::to_wstring(reported) + L")"))
            << corma::toUtf8(printed);
        EXPECT_EQ(services.printed.size(), 2U);
    }

    std::vector<double> doubles;
    std::vector<int> ints;
    int count = 0;
};

TEST_F(TypedArrays, AreSplitAtCommas)
{
    EXPECT_EQ(getDoubles("0.5,1,-2e1", 8), RTNORM);
    EXPECT_EQ(count, 3);
    EXPECT_EQ(doubles, (std::vector<double> {0.5, 1, -20, -1, -1, -1, -1, -1}));
    EXPECT_EQ(getInts("5,x,-2", 8), RTNORM);
    EXPECT_EQ(count, 3);
    EXPECT_EQ(ints, (std::vector<int> {5, 0, -2, -1, -1, -1, -1, -1}));
}

TEST_F(TypedArrays, TwoCommasInARowGiveAZeroBetweenThem)
{
    EXPECT_EQ(getInts("1,,3,", 8), RTNORM);
    EXPECT_EQ(count, 4);
    EXPECT_EQ(ints, (std::vector<int> {1, 0, 3, 0, -1, -1, -1, -1}));
}

TEST_F(TypedArrays, AnEmptyValueIsOneZero)
{
    EXPECT_EQ(getDoubles("", 8), RTNORM);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(doubles[0], 0.0);
}

TEST_F(TypedArrays, AsManyNumbersAsTheCapacityFit)
{
    EXPECT_EQ(getDoubles("1,2,3", 3), RTNORM);
    EXPECT_EQ(count, 3);
    EXPECT_TRUE(services.printed.empty());
}

TEST_F(TypedArrays, MoreNumbersThanTheCapacityAreReportedOnce)
{
    EXPECT_EQ(getDoubles("1,2,3,4", 2), RTNORM);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(doubles, (std::vector<double> {1, 2, -1, -1, -1, -1, -1, -1}));
    expectOneReport(L"Array too small", 2);
}

TEST_F(TypedArrays, TheReportForIntegersIsWordedItsOwnWay)
{
    EXPECT_EQ(getInts("1,2,3", 2), RTNORM);
    EXPECT_EQ(count, 2);
    expectOneReport(L"Array too small !", 2);
}

TEST_F(TypedArrays, WithoutACapacityNothingIsWritten)
{
    EXPECT_EQ(getDoubles("1,2", 0), RTNORM);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(doubles[0], -1.0);
    expectOneReport(L"Array too small", 0);
}

TEST_F(TypedArrays, AMissLeavesNoNumbers)
{
    count = 8;
    doubles.assign(8, -1.0);
    EXPECT_EQ(with("1").file.getDoubleArray(missing, doubles.data(), &count, 0), RTERROR);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(doubles[0], -1.0);
}

TEST_F(TypedArrays, OfAFixedSizeNeedAllTheirNumbers)
{
    std::array<double, 3> three {};
    const auto get = [&](xx_Inifile& file, wchar_t* ident) {
        return file.getDoubleArray(ident, three.data(), 3, 0);
    };
    EXPECT_EQ(status("1,2,3", get), RTNORM);
    EXPECT_EQ(three, (std::array<double, 3> {1, 2, 3}));
    EXPECT_TRUE(services.printed.empty());
    EXPECT_EQ(status("1,2", get), RTCAN);
    expectOneReport(L"Only 2 of 3 numbers found for [A]X in configuration", 2);
}

TEST_F(TypedArrays, OfAFixedSizeTakeTheFirstOfMoreNumbers)
{
    std::array<int, 2> two {};
    const auto get = [&](xx_Inifile& file, wchar_t* ident) {
        return file.getIntArray(ident, two.data(), 2, 0);
    };
    EXPECT_EQ(status("1,2,3", get), RTNORM);
    EXPECT_EQ(two, (std::array<int, 2> {1, 2}));
    expectOneReport(L"Array too small !", 2);
}

TEST_F(TypedArrays, OfAFixedSizeAreIncompleteWithoutTheIdent)
{
    std::array<int, 2> two {};
    EXPECT_EQ(with("1").file.getIntArray(missing, two.data(), 2, 0), RTCAN);
    expectOneReport(L"Only 0 of 2 numbers found for [A]Y in configuration", 0);
}

class StringLists : public TypedGetters
{
protected:
    std::vector<std::wstring> pieces(const std::string& value, wchar_t separator)
    {
        resbuf* list = nullptr;
        const auto get = [&](xx_Inifile& file, wchar_t* ident) {
            return file.getStringList(ident, &list, separator, 0);
        };
        EXPECT_EQ(status(value, get), RTNORM);
        std::vector<std::wstring> texts;
        for (const resbuf* node = list; node != nullptr; node = node->rbnext) {
            EXPECT_EQ(node->restype, RTSTR);
            texts.emplace_back(node->resval.rstring);
        }
        acutRelRb(list);
        return texts;
    }
};

TEST_F(StringLists, AreSplitAtTheGivenSeparator)
{
    EXPECT_EQ(pieces("a;b c;;d", L';'), (std::vector<std::wstring> {L"a", L"b c", L"", L"d"}));
    EXPECT_EQ(pieces("a,b;c", L','), (std::vector<std::wstring> {L"a", L"b;c"}));
    EXPECT_EQ(pieces("a,", L','), (std::vector<std::wstring> {L"a", L""}));
}

TEST_F(StringLists, AValueWithNothingInItIsOneEmptyText)
{
    EXPECT_EQ(pieces("", L','), std::vector<std::wstring> {L""});
}

TEST_F(StringLists, HaveNoLimit)
{
    EXPECT_EQ(pieces(std::string(498, ','), L',').size(), 499U);
}

TEST_F(StringLists, AreNullAfterAMiss)
{
    resbuf something {};
    resbuf* list = &something;
    EXPECT_EQ(with("1").file.getStringList(missing, &list, L',', 1), RTERROR);
    EXPECT_EQ(list, nullptr);
    EXPECT_EQ(services.allPrinted(), L"\n[A]Y not found in configurationfile\n");
}

} // namespace
