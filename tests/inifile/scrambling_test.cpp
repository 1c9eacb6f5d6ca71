#include "inifile/InifileTest.h"
#include "inifile/scrambling.h"
#include "platform/platform.h"
#include "platform/text.h"

#include <array>
#include <climits>
#include <filesystem>

using corma::descramble;
using corma::scramble;
using corma::testing::Ini;
using corma::testing::InifileTest;
using namespace std::string_literals;

namespace {

TEST(ScrambledByte, ComesBackForAllBytesPositionsAndKeys)
{
    for (const int key : {0, 1, 7, -7, 200, 4711, INT_MAX, INT_MIN}) {
        for (const long position : {1L, 2L, 3L, 4L, 5L, 255L, 256L, 257L, 70'000L, LONG_MAX}) {
            for (int byte = 0; byte < 256; ++byte) {
                const char there = scramble(byte, position, key);
                EXPECT_EQ(descramble(static_cast<unsigned char>(there), position, key),
                          static_cast<char>(byte));
            }
        }
    }
}

TEST(ScrambledByte, IsTheSumThatTheFormTells)
{
    // byte + position + 15, 71, 128 or 48 by the position modulo 4, plus or minus the key
    EXPECT_EQ(scramble('A', 1, 7), static_cast<char>('A' + 1 + 15 + 7));
    EXPECT_EQ(scramble('A', 2, 7), static_cast<char>('A' + 2 + 71 + 7));
    EXPECT_EQ(scramble('A', 3, 7), static_cast<char>('A' + 3 + 128 - 7));
    EXPECT_EQ(scramble('A', 4, 7), static_cast<char>('A' + 4 + 48 - 7));
}

TEST(ScrambledForm, IsReadBackWhole)
{
    std::string text;
    for (int i = 0; i < 1000; ++i) {
        text += "Ident" + std::to_string(i) + "=value\n";
    }
    const std::string form = corma::scrambledForm(text, -3);
    corma::platform::FileContent content;
    content.size = form.size();
    content.bytes = std::make_unique<char[]>(form.size() + corma::platform::FileContent::kPadding);
    form.copy(content.bytes.get(), form.size());
    corma::descrambleContent(content, -3);
    std::string back(content.view());
    std::erase(back, '\r');
    EXPECT_EQ(back, text);
}

TEST(ScrambledName, HasTheNumberBehindTheBaseName)
{
    EXPECT_EQ(corma::scrambledName(L"/a/tool.ini", 7), L"/a/tool7.ini");
    EXPECT_EQ(corma::scrambledName(L"tool", -7), L"tool-7");
}

using Scrambling = InifileTest;

TEST_F(Scrambling, MakesACopyUnderTheNumberedName)
{
    Ini ini(folder.write(L"tool.ini", "X=1\r\n[A]\r\nY=2\r\n"));
    EXPECT_EQ(ini.file.scramble(nullptr, 7), RTNORM);
    EXPECT_EQ(services.allPrinted(), L"\nFile scrambled into " + folder.path(L"tool7.ini"));
    Ini copy(folder.path(L"tool.ini"), 7);
    EXPECT_EQ(copy.get(L"X"), L"1");
    EXPECT_EQ(copy.get(L"[A]Y"), L"2");
    EXPECT_EQ(ini.get(L"X"), L"1") << "the source stays open";
}

TEST_F(Scrambling, TheCopyHasTheByteCountOfASourceWithTwoByteLineEnds)
{
    const std::string source = "X=1\r\n[A]\r\nY=2";
    Ini(folder.write(L"tool.ini", source)).file.scramble(nullptr, 7);
    const std::string copy = folder.read(L"tool7.ini");
    ASSERT_EQ(copy.size(), source.size());
    for (std::size_t i = 0; i < source.size(); ++i) {
        EXPECT_EQ(copy[i], scramble(source[i], static_cast<long>(i + 1), 7)) << i;
    }
}

TEST_F(Scrambling, BareLineFeedsBecomeTwoBytes)
{
    Ini(folder.write(L"tool.ini", "X=1\nY=2\n")).file.scramble(nullptr, 7);
    EXPECT_EQ(folder.read(L"tool7.ini").size(), 10U);
    EXPECT_EQ(Ini(folder.path(L"tool.ini"), 7).get(L"Y"), L"2");
}

TEST_F(Scrambling, TakesTheTargetAsGiven)
{
    std::wstring target = folder.path(L"other.bin");
    Ini ini(folder.write(L"tool.ini", "X=1\n"));
    EXPECT_EQ(ini.file.scramble(target.data(), 7), RTNORM);
    EXPECT_EQ(Ini(target, 7).get(L"X"), L"1");
}

TEST_F(Scrambling, ATargetThatCannotBeMadeIsAFailure)
{
    std::wstring target = folder.path(L"none/tool.ini");
    Ini ini(folder.write(L"tool.ini", "X=1\n"));
    EXPECT_EQ(ini.file.scramble(target.data(), 7), RTERROR);
    EXPECT_EQ(services.allPrinted(), L"\nFile " + target + L" could not be opened");
}

TEST_F(Scrambling, BytesAreWindows1252)
{
    Ini(folder.write(L"tool.ini", "Eenheid=\xE2\x82\xAC/m\xC2\xB2\n")).file.scramble(nullptr, 7);
    EXPECT_EQ(folder.read(L"tool7.ini").size(), 8 + 4 + 2U);
    EXPECT_EQ(Ini(folder.path(L"tool.ini"), 7).get(L"eenheid"), L"€/m²");
}

TEST_F(Scrambling, ACharacterThatHasNoByteThereIsRefusedAndNothingIsWritten)
{
    Ini ini(folder.write(L"tool.ini", "X=1\r\nY=\xC5\x81\xC3\xB3\x64\xC5\xBA\r\n"));
    EXPECT_EQ(ini.file.scramble(nullptr, 7), RTERROR);
    EXPECT_EQ(services.allPrinted(),
              L"\nFile " + folder.path(L"tool.ini")
                  + L" not scrambled: line 2 has a character that Windows-1252 does not have");
    EXPECT_FALSE(folder.has(L"tool7.ini"));
}

TEST_F(Scrambling, AScrambledFileCanBeGivenAnotherNumber)
{
    Ini(folder.write(L"tool.ini", "X=1\n[A]\nY=2\n")).file.scramble(nullptr, 7);
    std::wstring target = folder.path(L"tool9.ini");
    EXPECT_EQ(Ini(folder.path(L"tool.ini"), 7).file.scramble(target.data(), 9), RTNORM);
    EXPECT_EQ(Ini(folder.path(L"tool.ini"), 9).get(L"[A]Y"), L"2");
}

TEST_F(Scrambling, WithoutAFileItIsRefused)
{
    Ini ini(L"none.ini");
    EXPECT_EQ(ini.file.scramble(nullptr, 7), RTCAN);
}

// The copy is made from bytes that a writer of the form may produce in other ways, too.
std::string formOf(std::string_view bytes, int key)
{
    std::string form;
    for (const char c : bytes) {
        form.push_back(
            scramble(static_cast<unsigned char>(c), static_cast<long>(form.size() + 1), key));
    }
    return form;
}

struct ScrambledRow
{
    const char* sentence;
    std::string text;
    std::wstring ident;
    std::wstring value;
};

class ScrambledLookup : public testing::TestWithParam<ScrambledRow>
{
};

TEST_P(ScrambledLookup, Gives)
{
    corma::testing::RecordingServices services;
    const corma::testing::TempFolder folder;
    Ini ini(folder.write(L"tool.ini", formOf(GetParam().text, 7)), 7);
    EXPECT_EQ(ini.get(GetParam().ident), GetParam().value) << "by a scan";
    EXPECT_EQ(ini.get(GetParam().ident), GetParam().value) << "by the index";
}

INSTANTIATE_TEST_SUITE_P(
    Form, ScrambledLookup,
    testing::Values(ScrambledRow {"FollowsTheGrammarOfPlainFiles",
                                  "K=0\r\n[A]\r\n X=no\r\nX=1\tlost\r\n", L"[a]x", L"1"},
                    ScrambledRow {"ALoneCarriageReturnIsDropped", "X=a\rb\r\n", L"X", L"ab"},
                    ScrambledRow {"ACarriageReturnAtTheEndIsDropped", "X=ab\r", L"X", L"ab"},
                    ScrambledRow {"ANulByteEndsALine", "X=a\0b\r\nY=1\r\n"s, L"X", L"a"},
                    ScrambledRow {"TheNextLineCountsAfterThat", "X=a\0b\r\nY=1\r\n"s, L"Y", L"1"},
                    ScrambledRow {"BytesAreWindows1252EvenWhereTheyAreUtf8", "X=\xC2\xB2\r\n", L"X",
                                  L"Â²"},
                    ScrambledRow {"AByteOrderMarkIsText", "\xEF\xBB\xBFX=1\r\n", L"X", Ini::kNone},
                    ScrambledRow {"BareLineFeedsEndLines", "X=1\nY=2\n", L"Y", L"2"}),
    [](const auto& row) { return row.param.sentence; });

} // namespace
