#include "settings/texts.h"

#include "settings/text_table.h"

#include <algorithm>
#include <cassert>

namespace corma {

namespace {

int& languageInForce()
{
    static int language = kEnglish;
    return language;
}

constexpr std::optional<std::size_t> columnOf(int language)
{
    const auto* const found
        = std::find_if(kTextColumns.begin(), kTextColumns.end(),
                       [=](const TextColumn& column) { return column.language == language; });
    return found == kTextColumns.end()
        ? std::nullopt
        : std::optional(static_cast<std::size_t>(found - kTextColumns.begin()));
}

constexpr std::size_t kEnglishColumn = columnOf(kEnglish).value();

// The rows in rising order, each with a text in every column.
std::vector<TextRow> readRows()
{
    auto rows = parseTextTable(kTextTable).value_or(std::vector<TextRow>());
    assert(!rows.empty()); // resources/texts.csv is well-formed
    std::sort(rows.begin(), rows.end(),
              [](const TextRow& a, const TextRow& b) { return a.number < b.number; });
    for (TextRow& row : rows) {
        std::replace(row.texts.begin(), row.texts.end(), std::wstring(),
                     std::wstring(row.texts[kEnglishColumn]));
    }
    return rows;
}

const std::vector<TextRow>& rows()
{
    static const std::vector<TextRow> read = readRows();
    return read;
}

} // namespace

const wchar_t* textOf(int row, int language)
{
    const auto found
        = std::lower_bound(rows().begin(), rows().end(), row,
                           [](const TextRow& some, int number) { return some.number < number; });
    if (found == rows().end() || found->number != row) {
        return L"";
    }
    return found->texts[columnOf(language).value_or(kEnglishColumn)].c_str();
}

std::vector<int> textRows()
{
    std::vector<int> numbers;
    for (const TextRow& row : rows()) {
        numbers.push_back(row.number);
    }
    return numbers;
}

void setTextLanguage(int language)
{
    languageInForce() = language;
}

int textLanguage()
{
    return languageInForce();
}

} // namespace corma
