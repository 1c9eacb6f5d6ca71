#include "foundation/decoded_text.h"
#include "platform/text.h"

#include <array>
#include <gtest/gtest.h>
#include <random>

using namespace std::string_literals;

namespace corma {
namespace {

using Pieces = std::vector<std::string_view>;

// The content that a text is given in the encoding of another content, or why there is none.
std::string contentFor(const DecodedText& decoded, const Pieces& pieces)
{
    const DecodedText::Encoded encoded = decoded.encoded(pieces);
    if (!encoded.defect.empty()) {
        return toUtf8(encoded.defect);
    }
    if (!encoded.isAsGiven) {
        return encoded.bytes;
    }
    std::string content(decoded.mark());
    for (const std::string_view piece : pieces) {
        content += piece;
    }
    return content;
}

// --- reading -------------------------------------------------------------------------------------

struct Reading
{
    const char* sentence;
    std::string content;
    std::string text; // UTF-8
};

class WholeContent : public ::testing::TestWithParam<Reading>
{
};

TEST_P(WholeContent, IsReadAndComesBack)
{
    const DecodedText decoded(GetParam().content);
    EXPECT_EQ(decoded.defect(), L"");
    EXPECT_EQ(decoded.text(), GetParam().text);
    EXPECT_EQ(contentFor(decoded, {decoded.text()}), GetParam().content);
}

INSTANTIATE_TEST_SUITE_P(
    DecodedText, WholeContent,
    ::testing::Values(
        Reading {"AnEmptyFileIsAnEmptyText", "", ""},
        Reading {"TheMarkOfUtf8AloneIsAnEmptyText", "\xEF\xBB\xBF", ""},
        Reading {"TheMarkOfLittleUtf16AloneIsAnEmptyText", "\xFF\xFE", ""},
        Reading {"TheMarkOfBigUtf16AloneIsAnEmptyText", "\xFE\xFF", ""},
        Reading {"AsciiIsTakenAsItIs", "a=1\r\n\tb\n", "a=1\r\n\tb\n"},
        Reading {"Utf8NeedsNoMark", "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80", "é€😀"},
        Reading {"AMarkOfUtf8IsNoPartOfTheText", "\xEF\xBB\xBF\xC3\xA9", "é"},
        Reading {"ASecondMarkIsPartOfTheText", "\xEF\xBB\xBF\xEF\xBB\xBFx", "\xEF\xBB\xBFx"},
        Reading {"OneBrokenByteMakesAllOfItWindows1252", "\xC3\xA9 \xE9", "Ã© é"},
        Reading {"HalfAMarkIsWindows1252", "\xEF\xBB", "ï»"},
        Reading {"OneByteOfAMarkIsWindows1252", "\xFF", "ÿ"},
        Reading {"ACutSequenceAtTheEndIsWindows1252", "a\xE2\x82", "aâ‚"},
        Reading {"ASequenceThatIsTooLongIsWindows1252", "\xC0\xAF", "À¯"},
        Reading {"AnEncodedSurrogateIsWindows1252", "\xED\xA0\x80", "í\xC2\xA0€"},
        Reading {"AByteOfNoCharacterInWindows1252IsAControlCharacter", "\x81\xE9", "\xC2\x81é"},
        Reading {"NullBytesStay", "a\0b\n"s, "a\0b\n"s},
        Reading {"LittleUtf16",
                 "\xFF\xFE"
                 "a\0\xAC\x20"s,
                 "a€"},
        Reading {"BigUtf16", "\xFE\xFF\0a\x20\xAC"s, "a€"},
        Reading {"ANullInUtf16Stays", "\xFF\xFE\0\0a\0"s, "\0a"s},
        Reading {"APairAtTheEnd",
                 "\xFF\xFE"
                 "a\0\x3D\xD8\x00\xDE"s,
                 "a😀"},
        Reading {"TheFirstPair", "\xFE\xFF\xD8\x00\xDC\x00"s, "\xF0\x90\x80\x80"},
        Reading {"TheLastPair", "\xFE\xFF\xDB\xFF\xDF\xFF"s, "\xF4\x8F\xBF\xBF"},
        Reading {"TheUnitsAroundTheSurrogates", "\xFE\xFF\xD7\xFF\xE0\x00"s,
                 "\xED\x9F\xBF\xEE\x80\x80"},
        Reading {"AMarkWithinUtf16IsACharacter", "\xFE\xFF\xFE\xFF"s, "\xEF\xBB\xBF"}),
    [](const auto& row) { return std::string(row.param.sentence); });

struct Defect
{
    const char* sentence;
    std::string content;
    std::wstring defect;
};

class BrokenContent : public ::testing::TestWithParam<Defect>
{
};

TEST_P(BrokenContent, IsToldWithItsLine)
{
    EXPECT_EQ(DecodedText(GetParam().content).defect(), GetParam().defect);
}

const std::wstring kFirstUtf8 = L"line 1 is no UTF-8, as its byte-order mark says";
const std::wstring kFirstUtf16 = L"line 1 is no UTF-16, as its byte-order mark says";
const std::wstring kThirdUtf16 = L"line 3 is no UTF-16, as its byte-order mark says";

INSTANTIATE_TEST_SUITE_P(
    DecodedText, BrokenContent,
    ::testing::Values(Defect {"AByteOfNoSequence",
                              "\xEF\xBB\xBF"
                              "a\xFFz",
                              kFirstUtf8},
                      Defect {"ASequenceThatIsTooLong", "\xEF\xBB\xBF\xC0\xAF", kFirstUtf8},
                      Defect {"AnEncodedSurrogate", "\xEF\xBB\xBF\xED\xA0\x80", kFirstUtf8},
                      Defect {"ACodeBehindTheLastOne", "\xEF\xBB\xBF\xF4\x90\x80\x80", kFirstUtf8},
                      Defect {"TheLineIsThatOfTheDefect",
                              "\xEF\xBB\xBF"
                              "a\n\xC3\xA9\r\nb\xE9\nc",
                              L"line 3 is no UTF-8, as its byte-order mark says"},
                      Defect {"OfTwoDefectsTheFirstIsTold",
                              "\xEF\xBB\xBF"
                              "a\n\xFF\n\xFF\n",
                              L"line 2 is no UTF-8, as its byte-order mark says"},
                      Defect {"ASequenceCutByTheEnd",
                              "\xEF\xBB\xBF"
                              "a\nb\xC3",
                              L"line 2 is no UTF-8, as its byte-order mark says"},
                      Defect {"ASequenceCutByALineEnd", "\xEF\xBB\xBF\xC3\n\xA9", kFirstUtf8},
                      Defect {"OneByteBehindTheMark",
                              "\xFF\xFE"
                              "a",
                              kFirstUtf16},
                      Defect {"AnOddNumberOfBytes", "\xFE\xFF\0a\0\n\0b\0\n\0"s, kThirdUtf16},
                      Defect {"ALoneLead",
                              "\xFF\xFE\x3D\xD8"
                              "a\0"s,
                              kFirstUtf16},
                      Defect {"ALoneTrail",
                              "\xFF\xFE\x00\xDE"
                              "a\0"s,
                              kFirstUtf16},
                      Defect {"ALeadAtTheEnd",
                              "\xFF\xFE"
                              "a\0\n\0b\0\n\0\x3D\xD8"s,
                              kThirdUtf16},
                      Defect {"ALeadAndHalfATrail", "\xFF\xFE\x3D\xD8\x00"s, kFirstUtf16},
                      Defect {"ATrailBeforeItsLead", "\xFF\xFE\x00\xDE\x3D\xD8"s, kFirstUtf16},
                      Defect {"TwoLeads", "\xFF\xFE\x3D\xD8\x3D\xD8\x00\xDE"s, kFirstUtf16}),
    [](const auto& row) { return std::string(row.param.sentence); });

// --- writing -------------------------------------------------------------------------------------

struct Writing
{
    const char* sentence;
    std::string content;
    Pieces pieces;
    std::string written;
};

class NewText : public ::testing::TestWithParam<Writing>
{
};

TEST_P(NewText, IsEncodedAsTheFormerOneOrRefused)
{
    const DecodedText decoded(GetParam().content);
    ASSERT_EQ(decoded.defect(), L"");
    EXPECT_EQ(contentFor(decoded, GetParam().pieces), GetParam().written);
}

INSTANTIATE_TEST_SUITE_P(
    DecodedText, NewText,
    ::testing::Values(
        Writing {"AsciiBecomesUtf8", "a=1\n", {"a=", "€", "\n"}, "a=€\n"},
        Writing {"AnEmptyFileBecomesUtf8", "", {"Łódź"}, "Łódź"},
        Writing {"AMarkStays",
                 "\xEF\xBB\xBF"
                 "a",
                 {"é"},
                 "\xEF\xBB\xBF\xC3\xA9"},
        Writing {"AMarkStaysOfAnEmptyText",
                 "\xEF\xBB\xBF"
                 "a",
                 {},
                 "\xEF\xBB\xBF"},
        Writing {"Utf8RefusesToBeginWithAMark",
                 "a=1\n",
                 {"\xEF", "\xBB\xBF=1\n"},
                 "the file would then begin with what is taken for a byte-order mark"},
        Writing {"Windows1252RefusesToBeginWithAMark",
                 "\xE9=1\n",
                 {"ÿþ=1\n"},
                 "the file would then begin with what is taken for a byte-order mark"},
        Writing {"Windows1252Stays", "\xE9\n", {"é€", "\x7F"}, "\xE9\x80\x7F"},
        Writing {"Windows1252MayLoseItsLastAccent", "\xE9\n", {"e\n"}, "e\n"},
        Writing {"Windows1252MayBecomeEmpty", "\xE9\n", {}, ""},
        Writing {"Windows1252RefusesWhatItDoesNotHave",
                 "\xE9\n",
                 {"é\n", "b\nŁ\n", "Ł"},
                 "line 3 has a character that Windows-1252, the encoding of the file, does not "
                 "have"},
        Writing {"Windows1252RefusesWhatHasNoSixteenBits",
                 "\xE9\n",
                 {"😀"},
                 "line 1 has a character that Windows-1252, the encoding of the file, does not "
                 "have"},
        Writing {"Windows1252RefusesWhatWouldBeTakenForUtf8",
                 "\xE9\n",
                 {"Ã", "©"},
                 "the file, which is in Windows-1252, would then be taken for UTF-8"},
        Writing {"Windows1252NextToAPlainAccentIsNotTakenForUtf8",
                 "\xE9\n",
                 {"Ã©", "é"},
                 "\xC3\xA9\xE9"},
        Writing {"LittleUtf16Stays",
                 "\xFF\xFE"
                 "a\0"s,
                 {"é", "😀"},
                 "\xFF\xFE\xE9\0\x3D\xD8\x00\xDE"s},
        Writing {"BigUtf16Stays", "\xFE\xFF\0a"s, {"é😀", ""}, "\xFE\xFF\0\xE9\xD8\x3D\xDE\x00"s},
        Writing {"AMarkAloneStaysUtf16",
                 "\xFF\xFE",
                 {"a"},
                 "\xFF\xFE"
                 "a\0"s}),
    [](const auto& row) { return std::string(row.param.sentence); });

// --- random texts --------------------------------------------------------------------------------

using Random = std::mt19937;

std::size_t below(Random& random, std::size_t bound)
{
    return std::uniform_int_distribution<std::size_t>(0, bound - 1)(random);
}

// From all lengths of UTF-8 and both sides of each limit.
std::u32string randomText(Random& random)
{
    static constexpr std::array<char32_t, 18> kLimits
        = {0,     1,     '\n',   '\r',   '=',    'a',    0x7F,   0x80,    0xE9,
           0x7FF, 0x800, 0xD7FF, 0xE000, 0xFEFF, 0xFFFD, 0xFFFF, 0x10000, 0x10FFFF};
    std::u32string text(below(random, 50), U'x');
    for (char32_t& c : text) {
        c = below(random, 3) == 0 ? kLimits[below(random, kLimits.size())]
                                  : static_cast<char32_t>(1 + below(random, 0xD7FF));
    }
    return text;
}

std::string utf8Of(char32_t c)
{
    std::string bytes;
    appendUtf8(bytes, c);
    return bytes;
}

void append(std::string& bytes, char32_t unit, Mark mark)
{
    const auto high = static_cast<char>(unit / 256);
    const auto low = static_cast<char>(unit % 256);
    bytes += mark == Mark::utf16Big ? std::string {high, low} : std::string {low, high};
}

std::string encodedFor(Mark mark, const std::u32string& text)
{
    std::string bytes(bytesOf(mark));
    for (const char32_t c : text) {
        if (mark == Mark::none || mark == Mark::utf8) {
            bytes += utf8Of(c);
        } else if (c < 0x10000) {
            append(bytes, c, mark);
        } else {
            append(bytes, 0xD800 + (c - 0x10000) / 0x400, mark);
            append(bytes, 0xDC00 + (c - 0x10000) % 0x400, mark);
        }
    }
    return bytes;
}

class EveryMark : public ::testing::TestWithParam<Mark>
{
};

TEST_P(EveryMark, GivesBackRandomTextsInPieces)
{
    Random random(17);
    for (int i = 0; i < 3000; ++i) {
        const std::u32string text = randomText(random);
        std::vector<std::string> characters;
        std::string utf8;
        for (const char32_t c : text) {
            characters.push_back(utf8Of(c));
            utf8 += characters.back();
        }
        if (GetParam() == Mark::none && utf8.starts_with("\xEF\xBB\xBF")) {
            continue; // which would be the mark
        }
        const std::string content = encodedFor(GetParam(), text);
        const DecodedText decoded(content);
        ASSERT_EQ(decoded.defect(), L"");
        ASSERT_EQ(decoded.text(), utf8);
        ASSERT_EQ(contentFor(decoded, {characters.begin(), characters.end()}), content);
    }
}

INSTANTIATE_TEST_SUITE_P(DecodedText, EveryMark,
                         ::testing::Values(Mark::none, Mark::utf8, Mark::utf16Little,
                                           Mark::utf16Big));

TEST(DecodedText, GivesBackEveryByteOfWindows1252)
{
    std::string content;
    for (int byte = 0; byte < 256; ++byte) {
        content.push_back(static_cast<char>(byte));
    }
    const DecodedText decoded(content);
    EXPECT_EQ(decoded.defect(), L"");
    std::wstring characters;
    for (int byte = 0; byte < 256; ++byte) {
        characters.push_back(fromWindows1252(static_cast<unsigned char>(byte)));
    }
    EXPECT_EQ(decoded.text(), toUtf8(characters));
    EXPECT_EQ(contentFor(decoded, {decoded.text()}), content);
}

TEST(DecodedText, GivesBackRandomBytesOrTellsTheirDefect)
{
    static constexpr std::array<std::string_view, 12> kParts
        = {"\xEF\xBB\xBF", "\xFF\xFE", "\xFE\xFF", "\xC3\xA9", "\xE9",         "a",
           "\n",           "\r\n",     "\xD8\x3D", "\xDE\x00", "\xF0\x9F\x98", "\x80"};
    Random random(23);
    int defects = 0;
    for (int i = 0; i < 20'000; ++i) {
        std::string content;
        for (std::size_t count = below(random, 8); count > 0; --count) {
            content += kParts[below(random, kParts.size())];
        }
        const DecodedText decoded(content);
        if (decoded.defect().empty()) {
            ASSERT_TRUE(isUtf8(decoded.text()));
            ASSERT_EQ(contentFor(decoded, {decoded.text()}), content);
        } else {
            ASSERT_NE(markOf(content), Mark::none); // without one there is always an encoding
            ++defects;
        }
    }
    EXPECT_GT(defects, 100);
    EXPECT_LT(defects, 19'000);
}

// --- line ends -----------------------------------------------------------------------------------

TEST(LineEnd, IsThatOfTheFirstLine)
{
    EXPECT_EQ(lineEndOf("a\r\nb\n"), "\r\n");
    EXPECT_EQ(lineEndOf("\r\nb\n"), "\r\n");
    EXPECT_EQ(lineEndOf("a\nb\r\n"), "\n");
    EXPECT_EQ(lineEndOf("\n\r\n"), "\n");
    EXPECT_EQ(lineEndOf("a\rb\nc\r\n"), "\n");
}

TEST(LineEnd, IsALineFeedWhereThereIsNone)
{
    EXPECT_EQ(lineEndOf(""), "\n");
    EXPECT_EQ(lineEndOf("a"), "\n");
    EXPECT_EQ(lineEndOf("a\rb\r"), "\n");
}

// --- texts of callers ----------------------------------------------------------------------------

TEST(StrictUtf8, IsGivenForTextsOfCharacters)
{
    EXPECT_EQ(toStrictUtf8(L""), "");
    EXPECT_EQ(toStrictUtf8(L"é€😀"), "é€😀");
    EXPECT_EQ(toStrictUtf8(L"a\0b"s), "a\0b"s);
    EXPECT_EQ(toStrictUtf8(L"\xFFFD and \xFFFD\xFFFD"),
              "\xEF\xBF\xBD and \xEF\xBF\xBD\xEF\xBF\xBD");
    EXPECT_EQ(toStrictUtf8({L"\xD7FF\xE000", 2}), "\xED\x9F\xBF\xEE\x80\x80");
}

TEST(StrictUtf8, IsNotGivenForWhatIsNoCharacter)
{
    for (const auto bad : {0xD800U, 0xDBFFU, 0xDC00U, 0xDFFFU, 0x110000U, 0xFFFFFFFFU}) {
        const auto c = static_cast<wchar_t>(bad);
        EXPECT_EQ(toStrictUtf8(std::wstring(1, c)), std::nullopt) << bad;
        EXPECT_EQ(toStrictUtf8(std::wstring {L'a', c, L'\xFFFD'}), std::nullopt) << bad;
    }
}

} // namespace
} // namespace corma
