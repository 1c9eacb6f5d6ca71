// The text table: what resources/texts.csv holds, and how tables are read.

#include "platform/text.h"
#include "settings/text_table.h"
#include "support/row_names.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <map>
#include <set>

namespace corma {

namespace {

using corma::testing::sentenceOf;

// --- reading -------------------------------------------------------------------------------------

struct TableCase
{
    const char* sentence;
    std::string csv;
    std::string rows; // as shown() has them
};

// "7 a|b|c|d|e|f|g" for each row, in the order of kTextColumns.
std::string shown(const std::optional<std::vector<TextRow>>& rows)
{
    if (!rows) {
        return "no table";
    }
    std::string all;
    for (const TextRow& row : *rows) {
        all += (all.empty() ? "" : "; ") + std::to_string(row.number);
        char before = ' ';
        for (const std::wstring& text : row.texts) {
            all += before + toUtf8(text);
            before = '|';
        }
    }
    return all;
}

const std::string kHead = "Row,German,English,Spanish,French,Dutch,Polish,Russian\n";

class ParsedTable : public ::testing::TestWithParam<TableCase>
{
};

TEST_P(ParsedTable, HasTheRowsOfTheFile)
{
    EXPECT_EQ(shown(parseTextTable(GetParam().csv)), GetParam().rows);
}

// clang-format off
INSTANTIATE_TEST_SUITE_P(Cells, ParsedTable, ::testing::Values(
    TableCase {"TextsNeedNoQuotes",            kHead + "7,a,b,c,d,e,f,g\n",                             "7 a|b|c|d|e|f|g"},
    TableCase {"TextsMayHaveQuotes",           kHead + R"("7","a",b,"c",d,"e",f,"g")" "\n",             "7 a|b|c|d|e|f|g"},
    TableCase {"AQuotedTextMayHoldACommaAndALineEnd", kHead + "7,\"a,a\",\"b\nb\",c,d,e,f,\"\n\"\n",    "7 a,a|b\nb|c|d|e|f|\n"},
    TableCase {"ALineEndWithinATextIsALineFeed", kHead + "7,\"a \r\n\r\n\",\"\r\",c,d,e,f,g\n",         "7 a \n\n|\r|c|d|e|f|g"},
    TableCase {"ADoubledQuoteIsOne",           kHead + R"(7,"""a""","b""b","""""",d,e,f,g)" "\n",       "7 \"a\"|b\"b|\"\"|d|e|f|g"},
    TableCase {"BlanksStay",                   kHead + "7, a ,\" b \",c,d,e,f,g \n",                    "7  a | b |c|d|e|f|g "},
    TableCase {"TextsMayBeEmpty",              kHead + "7,,\"\",,,,,\n",                                "7 ||||||"},
    TableCase {"TextsAreUtf8",                 kHead + "7,ä,b,ñ,é,ë,ł,я\n",                             "7 ä|b|ñ|é|ë|ł|я"}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(Lines, ParsedTable, ::testing::Values(
    TableCase {"TheLastLineNeedsNoEnd",        kHead + "7,a,b,c,d,e,f,g",                               "7 a|b|c|d|e|f|g"},
    TableCase {"TheLastLineNeedsNoEndBehindAQuote", kHead + "7,a,b,c,d,e,f,\"g\"",                      "7 a|b|c|d|e|f|g"},
    TableCase {"TheLastTextMayBeEmpty",        kHead + "7,a,b,c,d,e,f,",                                "7 a|b|c|d|e|f|"},
    TableCase {"LinesMayEndInCrLf",            "Row,German,English,Spanish,French,Dutch,Polish,Russian\r\n7,a,b,c,d,e,f,g\r\n", "7 a|b|c|d|e|f|g"},
    TableCase {"AByteOrderMarkMayGoFirst",     "\xEF\xBB\xBF" + kHead + "7,a,b,c,d,e,f,g\n",            "7 a|b|c|d|e|f|g"},
    TableCase {"AByteOrderMarkMayGoBeforeAQuote", "\xEF\xBB\xBF\"Row\",German,English,Spanish,French,Dutch,Polish,Russian\n7,a,b,c,d,e,f,g\n", "7 a|b|c|d|e|f|g"},
    TableCase {"RowsComeInTheOrderOfTheFile",  kHead + "8,,,,,,,\n-7,,,,,,,\n",                         "8 ||||||; -7 ||||||"},
    TableCase {"ATableMayHaveNoRows",          kHead,                                                   ""}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(Columns, ParsedTable, ::testing::Values(
    TableCase {"StandInAnyOrder",              "Russian,Polish,Dutch,French,Spanish,English,German,Row\ng,f,e,d,c,b,a,7\n", "7 a|b|c|d|e|f|g"},
    TableCase {"OfOtherHeadingsAreNotLookedAt", "Use,Row,German,English,Spanish,French,Dutch,Polish,Russian,Czech\nx,7,a,b,c,d,e,f,g,y\n", "7 a|b|c|d|e|f|g"},
    TableCase {"AreNoneWithoutALine",          "",                                                      "no table"},
    TableCase {"NeedTheNumber",                "German,English,Spanish,French,Dutch,Polish,Russian\na,b,c,d,e,f,g\n", "no table"},
    TableCase {"NeedEachLanguage",             "Row,German,English,Spanish,French,Dutch,Polish\n7,a,b,c,d,e,f\n", "no table"},
    TableCase {"AreFoundByTheExactHeading",    "Row,German,English,Spanish,French,Dutch,Polish,russian\n7,a,b,c,d,e,f,g\n", "no table"}),
    sentenceOf);

INSTANTIATE_TEST_SUITE_P(Malformed, ParsedTable, ::testing::Values(
    TableCase {"AQuoteThatDoesNotEnd",         kHead + "7,a,b,c,d,e,f,\"g\n",                           "no table"},
    TableCase {"ADoubledQuoteAtTheEnd",        kHead + "7,a,b,c,d,e,f,\"g\"\"",                         "no table"},
    TableCase {"AQuoteWithinAText",            kHead + "7,a,b,c,d,e,f,g\"\n",                           "no table"},
    TableCase {"ATextBehindAQuote",            kHead + "7,a,b,c,d,e,f,\"g\"g\n",                        "no table"},
    TableCase {"ABlankBehindAQuote",           kHead + "7,a,b,c,d,e,f,\"g\" \n",                        "no table"},
    TableCase {"ACarriageReturnAlone",         kHead + "7,a,b,c,d,e,f,g\r8,a,b,c,d,e,f,g",              "no table"},
    TableCase {"ACellTooFew",                  kHead + "7,a,b,c,d,e,f\n",                               "no table"},
    TableCase {"ACellTooMany",                 kHead + "7,a,b,c,d,e,f,g,\n",                            "no table"},
    TableCase {"AnEmptyLine",                  kHead + "\n7,a,b,c,d,e,f,g\n",                           "no table"},
    TableCase {"ARowWithoutNumber",            kHead + ",a,b,c,d,e,f,g\n",                              "no table"},
    TableCase {"ARowWhoseNumberIsNone",        kHead + "7x,a,b,c,d,e,f,g\n",                            "no table"},
    TableCase {"ARowWhoseNumberIsTooLarge",    kHead + "2147483648,a,b,c,d,e,f,g\n",                    "no table"},
    TableCase {"ARowThatComesTwice",           kHead + "7,a,b,c,d,e,f,g\n8,,,,,,,\n7,a,b,c,d,e,f,g\n",  "no table"},
    TableCase {"AnotherEncoding",              kHead + "7,\xE4,b,c,d,e,f,g\n",                          "no table"}),
    sentenceOf);

// clang-format on

// --- the table of the editor ---------------------------------------------------------------------

// The menu of another program has texts in English only.
constexpr int kFirstEditorRow = 2964;

class EditorTable : public ::testing::Test
{
protected:
    void SetUp() override
    {
        const auto rows = parseTextTable(kTextTable);
        ASSERT_TRUE(rows.has_value());
        for (const TextRow& row : *rows) {
            (row.number < kFirstEditorRow ? m_others : m_rows)[row.number] = row.texts;
        }
    }

    using Texts = std::map<int, std::wstring>;

    Texts column(std::string_view heading) const
    {
        const auto* const found
            = std::find_if(kTextColumns.begin(), kTextColumns.end(),
                           [&](const TextColumn& some) { return some.heading == heading; });
        EXPECT_NE(found, kTextColumns.end()) << heading;
        Texts texts;
        for (const auto& [number, all] : m_rows) {
            texts[number] = all.at(static_cast<std::size_t>(found - kTextColumns.begin()));
        }
        return texts;
    }

    std::map<int, std::array<std::wstring, kTextColumns.size()>> m_rows;
    std::map<int, std::array<std::wstring, kTextColumns.size()>> m_others;
};

// Rows that code asks for by number: none may come or go unnoticed.
TEST_F(EditorTable, HasItsRowsAndNoOthers)
{
    std::vector<int> expected;
    for (int number = kFirstEditorRow; number <= 3057; ++number) {
        if (number != 3001 && number != 3008 && number != 3010 && number != 3030) {
            expected.push_back(number);
        }
    }
    expected.push_back(8566);
    std::vector<int> found;
    for (const auto& [number, texts] : m_rows) {
        found.push_back(number);
    }
    EXPECT_EQ(found, expected);
}

TEST_F(EditorTable, HasATextInEveryLanguageForEveryRow)
{
    for (const auto& [number, texts] : m_rows) {
        for (std::size_t i = 0; i < texts.size(); ++i) {
            EXPECT_FALSE(texts[i].empty()) << number << ' ' << kTextColumns[i].heading;
        }
    }
}

TEST_F(EditorTable, HasTheMenuOfTheProgramInEnglishOnly)
{
    using Row = std::array<std::wstring, kTextColumns.size()>;
    const std::map<int, Row> expected
        = {{101, {L"", L"&About CfgDeskExe..."}}, {102, {L"", L"check"}}};
    EXPECT_EQ(m_others, expected);
}

TEST_F(EditorTable, IsEnglishInGerman)
{
    EXPECT_EQ(column("German"), column("English"));
}

// What of a text must be the same in all languages: the blanks at its ends and before its line
// ends, its line ends, the marks for values and menu letters, and the mark that it ends in.
std::wstring frameOf(const std::wstring& text)
{
    const std::size_t begin = text.find_first_not_of(L' ');
    const std::size_t end = text.find_last_not_of(L' ') + 1;
    std::wstring frame = text.substr(0, begin) + L'<';
    for (std::size_t i = begin; i < end; ++i) {
        if (text[i] == L'\n') {
            frame += text[i - 1] == L' ' ? L" \n" : L"\n";
        } else if (text[i] == L'%' || text[i] == L'&') {
            frame += text[i];
        }
    }
    const std::size_t mark = text.find_last_not_of(L".:?", end - 1) + 1;
    return frame + L'>' + text.substr(mark);
}

TEST_F(EditorTable, HasTextsOfTheSameFrameInAllLanguages)
{
    for (const auto& [number, english] : column("English")) {
        for (const TextColumn& some : kTextColumns) {
            EXPECT_EQ(frameOf(column(some.heading).at(number)), frameOf(english))
                << number << ' ' << some.heading;
        }
    }
}

// A value follows these, and lines must break where they do.
TEST_F(EditorTable, KeepsBlanksAndLineEndsOfMessages)
{
    const Texts english = column("English");
    EXPECT_EQ(english.at(2992), L"Ini-file not found: ");
    EXPECT_EQ(english.at(2997), L"Can not remove setting in ");
    EXPECT_EQ(english.at(3000), L"This is not a correct value for a setting of type ");
    EXPECT_EQ(english.at(3002), L"Could not open file for write ");
    EXPECT_EQ(english.at(3003),
              L"Setting was not written. \nCheck if ini-file is present and \n"
              L"if the file is not read-only");
    EXPECT_EQ(english.at(3016), L"The maximum value : ");
    EXPECT_EQ(english.at(3017), L"The minimum value : ");
    EXPECT_EQ(english.at(3026), L"The degrees of the angle must lie between 0° and 360°");
    for (const auto& [number, text] : english) {
        const bool isFollowed = std::set {2992, 2997, 3000, 3002, 3016, 3017}.contains(number);
        EXPECT_EQ(text.ends_with(L' '), isFollowed) << number;
    }
}

// The type of a setting and the root of the tree are recognised by their texts.
TEST_F(EditorTable, HasDifferentTextsForWhatIsRecognisedByThem)
{
    for (const TextColumn& some : kTextColumns) {
        const Texts texts = column(some.heading);
        std::set<std::wstring> different;
        for (const int number :
             {2972, 2976, 2977, 2978, 2979, 2980, 2981, 2982, 3004, 3005, 3007, 3019, 3028}) {
            EXPECT_TRUE(different.insert(texts.at(number)).second)
                << number << ' ' << some.heading << ' ' << toUtf8(texts.at(number));
        }
    }
}

// A text that equals the English one has either the same word or was forgotten.
TEST_F(EditorTable, IsTranslated)
{
    const std::map<std::string, std::vector<int>> sameWord = {
        {"Spanish", {2967, 2972, 2979, 2996}},
        {"French", {2967, 2969, 2975, 2993, 3004, 3028}},
        {"Dutch", {2968, 2969, 3021, 3041}},
        {"Polish", {}},
        {"Russian", {}},
    };
    const Texts english = column("English");
    for (const auto& [heading, expected] : sameWord) {
        std::vector<int> same;
        for (const auto& [number, text] : column(heading)) {
            if (text == english.at(number)) {
                same.push_back(number);
            }
        }
        EXPECT_EQ(same, expected) << heading;
    }
}

TEST_F(EditorTable, HasTheRootOfTheTreeInDutchAndEnglish)
{
    EXPECT_EQ(column("Dutch").at(2972), L"Algemeen");
    EXPECT_EQ(column("English").at(2972), L"General");
}

TEST_F(EditorTable, HasItsPeculiaritiesInFrench)
{
    const Texts french = column("French");
    EXPECT_EQ(french.at(2993), L"Line was skipped! Expected");
    EXPECT_EQ(french.at(3036), L"**TRANS**");
    EXPECT_EQ(french.at(3037), L"**TRANS**");
    EXPECT_NE(french.at(3007), french.at(3011));
    EXPECT_EQ(column("English").at(3007), column("English").at(3011));
}

// A letter of another alphabet is the trace of a wrong encoding, or of a look-alike.
TEST_F(EditorTable, HasLettersOfTheLanguageOnly)
{
    const std::map<std::string, std::wstring> lettersBeyondAscii = {
        {"English", L"°"},  {"Spanish", L"°¡¿áéíóúüñÁ"},        {"French", L"°àâçéèêîôûÉ"},
        {"Dutch", L"°ëéï"}, {"Polish", L"°ąćęłńóśźżĄĆĘŁŃÓŚŹŻ"},
    };
    for (const auto& [heading, letters] : lettersBeyondAscii) {
        for (const auto& [number, text] : column(heading)) {
            EXPECT_TRUE(std::all_of(text.begin(), text.end(),
                                    [&, &known = letters](wchar_t c) {
                                        return c < 0x80 || known.find(c) != std::wstring::npos;
                                    }))
                << number << ' ' << heading << ' ' << toUtf8(text);
        }
    }
}

// Some Latin letters look like Cyrillic ones.
TEST_F(EditorTable, HasCyrillicLettersInRussian)
{
    const auto isLatin = [](wchar_t c) { return upperCase(c) >= L'A' && upperCase(c) <= L'Z'; };
    const auto isCyrillic = [](wchar_t c) { return c >= 0x400 && c < 0x460; };
    const std::set<std::wstring> latinWords = {L"Ini", L"ini", L"Access"};
    for (const auto& [number, text] : column("Russian")) {
        EXPECT_TRUE(std::any_of(text.begin(), text.end(), isCyrillic)) << number;
        auto begin = std::find_if(text.begin(), text.end(), isLatin);
        while (begin != text.end()) {
            const auto end = std::find_if_not(begin, text.end(), isLatin);
            EXPECT_TRUE(latinWords.contains(std::wstring(begin, end))) << number << toUtf8(text);
            begin = std::find_if(end, text.end(), isLatin);
        }
    }
}

} // namespace

} // namespace corma
