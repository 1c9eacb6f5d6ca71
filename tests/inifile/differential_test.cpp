// Holds the index against the plain scan over files that change between lookups.

#include "inifile/ConfigFile.h"
#include "inifile/InifileTest.h"
#include "inifile/scrambling.h"
#include "support/random_choice.h"

#include <map>
#include <random>

using corma::testing::below;
using corma::testing::oneOf;
using corma::testing::Random;
using corma::testing::TempFolder;

namespace {

// Few names in few chapters, so that doubles, misses and look-alikes all occur.
const std::vector<std::string> kNames
    = {"a",      "A",      "ab",           "B",
       "",       "a b",    "[a",           "a]",
       "Hoogte", "hoogte", "\xC3\xA9",     "\xC3\x89",
       "\xE9",   "k",      "\xE2\x84\xAA", "LongerThanEightCharacters"};
const std::vector<std::string> kChapters
    = {"A", "a", "B", "", "A]", "[A", "A=", "Algemeen", "\xC3\xA9", "\xC3\x89", "Tekst en maat"};

std::string randomLine(Random& random)
{
    switch (below(random, 12)) {
    case 0:
        return "[" + oneOf(random, kChapters) + "]";
    case 1:
        return "[" + oneOf(random, kChapters);
    case 2:
        return " " + oneOf(random, kNames) + "=disabled";
    case 3:
        return "";
    case 4:
        return oneOf(random, kNames);
    case 5:
        return oneOf(random, kNames) + "\t=x";
    case 6:
        return oneOf(random, kNames) + "=" + std::string(below(random, 5000), 'v') + "=y";
    case 7:
        return std::string(2998 + below(random, 4), 'z') + oneOf(random, kNames) + "=long";
    case 8:
        return oneOf(random, kNames) + "=v" + std::string(1, '\0') + "w";
    default:
        return oneOf(random, kNames) + "=" + std::to_string(below(random, 1000));
    }
}

std::string randomText(Random& random)
{
    static const std::vector<std::string> kMarks = {"", "", "", "\xEF\xBB\xBF"};
    static const std::vector<std::string> kLineEnds = {"\n", "\r\n", "\r"};
    std::string text = oneOf(random, kMarks);
    const std::string lineEnd = kLineEnds[below(random, 20) == 0 ? 2 : below(random, 2)];
    for (std::size_t lines = below(random, 40); lines > 0; --lines) {
        text += randomLine(random) + lineEnd;
    }
    if (below(random, 3) == 0) {
        text += randomLine(random);
    }
    return text;
}

std::wstring randomIdent(Random& random)
{
    const std::wstring name = corma::decode(oneOf(random, kNames), corma::Encoding::utf8);
    const std::wstring chapter = corma::decode(oneOf(random, kChapters), corma::Encoding::utf8);
    return below(random, 3) == 0 ? name : L"[" + chapter + L"]" + name;
}

// The answer in words, so that a failure explains itself.
std::string answer(const std::optional<corma::FoundEntry>& entry)
{
    return entry ? std::to_string(entry->at) + ":" + std::string(entry->value) : "(none)";
}

// What a reader finds who has just come.
std::string plainAnswer(const std::wstring& path, int number, const corma::IdentKey& key)
{
    const auto fresh = corma::ConfigFile::open(path, number);
    return fresh ? answer(corma::findByScan(fresh->text(), key)) : "(none)";
}

enum class Change
{
    none,
    inPlace,
    byRename,
    sameSize
};

// Changes the file in a way that a reader must notice; the same size and the same second included.
void change(Random& random, const TempFolder& folder, std::string& text, int number)
{
    const auto how = static_cast<Change>(below(random, 4));
    if (how == Change::none) {
        return;
    }
    if (how == Change::sameSize) {
        for (std::size_t i = 0; i < text.size(); ++i) {
            if (text[i] >= '0' && text[i] <= '9' && below(random, 2) == 0) {
                text[i] = static_cast<char>('0' + below(random, 10));
            }
        }
    } else {
        text = randomText(random);
    }
    const std::string bytes = number == 0 ? text : corma::scrambledForm(text, number);
    if (how == Change::byRename) {
        folder.replace(L"a.ini", bytes);
    } else {
        folder.write(L"a.ini", bytes);
    }
}

class Differential : public testing::TestWithParam<int>
{
};

TEST_P(Differential, TheIndexFindsWhatThePlainScanFinds)
{
    const int number = GetParam();
    corma::testing::RecordingServices services;
    const TempFolder folder;
    Random random(static_cast<unsigned>(20 + number));
    std::string text;
    const auto path = folder.write(L"a.ini", text);
    const auto kept = corma::ConfigFile::open(path, number);
    ASSERT_TRUE(kept);
    int found = 0;
    for (int round = 0; round < 400; ++round) {
        change(random, folder, text, number);
        if (round % 8 == 0) {
            corma::testing::letFilesSettle(); // from now on only the file's stamp tells
        }
        for (int i = 0; i < 12; ++i) {
            const std::wstring ident = randomIdent(random);
            const corma::IdentKey key(corma::Ident::parse(ident));
            const std::string expected = plainAnswer(path, number, key);
            ASSERT_EQ(answer(kept->find(key)), expected)
                << "round " << round << ", ident " << testing::PrintToString(ident) << "\n"
                << text;
            found += expected == "(none)" ? 0 : 1;
        }
    }
    EXPECT_GT(found, 200) << "the test must look up what is there, too";
}

INSTANTIATE_TEST_SUITE_P(Reader, Differential, testing::Values(0, 7, -300), [](const auto& row) {
    return row.param == 0 ? "Plain" : row.param > 0 ? "Scrambled" : "ScrambledBelowZero";
});

// The rules once more, written as plainly as they can be, against the reader for a whole file.
std::map<std::pair<std::wstring, std::wstring>, std::wstring> plainRules(const std::wstring& text)
{
    std::map<std::pair<std::wstring, std::wstring>, std::wstring> entries;
    std::map<std::wstring, bool> seen;
    std::wstring chapter;
    bool counts = true;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t end = std::min(text.find(L'\n', at), text.size());
        std::size_t next = end + 1;
        if (end - at > 3000) {
            end = next = at + 3000;
        }
        std::wstring line = text.substr(at, end - at);
        at = next;
        if (line.empty() || line[0] == L' ' || line[0] == 0) {
            continue;
        }
        line = line.substr(0,
                           std::find_if(line.begin(), line.end(), [](wchar_t c) { return c < 32; })
                               - line.begin());
        if (line.size() >= 2 && line.front() == L'[' && line.back() == L']') {
            chapter = line.substr(0, line.find(L']') + 1);
            counts = !seen[chapter];
            seen[chapter] = true;
        } else if (counts && line.find(L'=') != std::wstring::npos) {
            const std::size_t equals = line.find(L'=');
            entries.try_emplace({chapter, line.substr(0, equals)}, line.substr(equals + 1));
        }
    }
    return entries;
}

TEST(Differential, EveryEntryIsFoundByTheRulesWrittenPlainly)
{
    corma::testing::RecordingServices services;
    const TempFolder folder;
    Random random(7);
    const std::vector<std::string> names = {"a", "b", "ab", "hoogte", "x y", "longer-than-eight"};
    const std::vector<std::string> chapters = {"a", "b", "a]b", "maat"};
    for (int round = 0; round < 60; ++round) {
        std::string text;
        for (std::size_t lines = below(random, 60); lines > 0; --lines) {
            const std::size_t kind = below(random, 8);
            text += kind == 0 ? "[" + oneOf(random, chapters) + "]"
                : kind == 1   ? std::string(below(random, 6100), 'p') + oneOf(random, names) + "=1"
                              : oneOf(random, names) + "=" + std::to_string(below(random, 99));
            text += "\n";
        }
        const auto file = corma::ConfigFile::open(folder.write(L"a.ini", text), 0);
        const auto expected = plainRules(std::wstring(text.begin(), text.end()));
        for (const auto& [where, value] : expected) {
            const std::wstring ident = where.first + where.second;
            const auto entry = file->find(corma::IdentKey(corma::Ident::parse(ident)));
            ASSERT_TRUE(entry) << testing::PrintToString(ident) << "\n" << text;
            EXPECT_EQ(corma::decode(entry->value, corma::Encoding::utf8), value);
        }
    }
}

} // namespace
