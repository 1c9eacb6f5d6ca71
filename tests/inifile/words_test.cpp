#include "inifile/Ident.h"
#include "inifile/line.h"
#include "inifile/words.h"
#include "platform/text.h"

#include <gtest/gtest.h>

namespace corma {

namespace {

// A text with the padding that reading by words needs.
std::string padded(const std::string& text)
{
    return text + std::string(8, '\x7F');
}

TEST(LowerWord, TreatsEachByteOfAnyValueByItself)
{
    for (int before = 0; before < 256; before += 5) {
        for (int c = 0; c < 256; ++c) {
            std::string bytes(8, static_cast<char>(before));
            bytes[3] = static_cast<char>(c);
            std::string expected = bytes;
            for (char& byte : expected) {
                byte = byte >= 'A' && byte <= 'Z' ? static_cast<char>(byte + 32) : byte;
            }
            storeWord(bytes.data(), lowerWord(loadWord(bytes.data())));
            ASSERT_EQ(bytes, expected) << before << ' ' << c;
        }
    }
}

TEST(FirstControl, IsFoundAtEachPlaceAndBehindAnyByte)
{
    for (std::size_t size = 0; size < 20; ++size) {
        for (std::size_t at = 0; at < size; ++at) {
            for (const char before : {' ', '\x7F', '\x80', '\xFF'}) {
                std::string text = padded(std::string(size, before));
                text[at] = '\x1F';
                ASSERT_EQ(firstControl(text.data(), text.data() + size), text.data() + at);
            }
        }
    }
}

TEST(FirstControl, IsTheEndWhereThereIsNoneBeforeIt)
{
    for (std::size_t size = 0; size < 20; ++size) {
        std::string text = padded(std::string(size, ' '));
        text[size] = '\n';
        ASSERT_EQ(firstControl(text.data(), text.data() + size), text.data() + size);
    }
}

TEST(FoldedText, OfAnyLengthIsTheTextFolded)
{
    std::wstring text;
    for (int i = 0; i < 300; ++i) {
        text.push_back(static_cast<wchar_t>(L'!' + i * 7 % 90));
        std::wstring folded;
        for (const wchar_t c : text) {
            folded.push_back(foldCase(c));
        }
        const FoldedText ascii(text);
        ASSERT_EQ(ascii.bytes(), toUtf8(folded));
        ASSERT_TRUE(ascii.isAscii());
        const FoldedText wide(text + L'É');
        ASSERT_EQ(wide.bytes(), toUtf8(folded + L'é'));
        ASSERT_FALSE(wide.isAscii());
    }
}

TEST(CanBeAName, UnlessAnEqualsSignOrAControlCharacterIsInIt)
{
    for (std::size_t size = 1; size < 20; ++size) {
        const std::wstring name(size, L'a');
        EXPECT_TRUE(canBeAName(FoldedText(name).bytes()));
        for (const wchar_t c : {L'=', L'\x1F', L'\t'}) {
            std::wstring other = name;
            other.back() = c;
            EXPECT_FALSE(canBeAName(FoldedText(other).bytes()));
        }
    }
    EXPECT_TRUE(canBeAName(FoldedText(L"").bytes()));
    EXPECT_TRUE(canBeAName(FoldedText(L"<>é ").bytes()));
}

TEST(FindNear, FindsWhatFindFinds)
{
    std::string text;
    for (int i = 0; i < 60; ++i) {
        text.push_back(static_cast<char>(i * 37 % 256));
    }
    for (std::size_t size = 0; size <= text.size(); ++size) {
        const std::string_view part = std::string_view(text).substr(0, size);
        for (int c = 0; c < 256; ++c) {
            for (const std::size_t from : {std::size_t {0}, size / 3, size}) {
                ASSERT_EQ(findNear(part, static_cast<char>(c), from),
                          part.find(static_cast<char>(c), from));
            }
        }
    }
}

TEST(FindNear, FindsTheFirstOfSeveral)
{
    EXPECT_EQ(findNear("a=b=c=d=e=f=g=h=", '='), 1U);
    EXPECT_EQ(findNear("a=b=c=d=e=f=g=h=", '=', 2), 3U);
    EXPECT_EQ(findNear("========", '='), 0U);
    EXPECT_EQ(findNear("a", '=', 1), std::string_view::npos);
}

} // namespace

} // namespace corma
