#include "settings/text_table.h"

#include "platform/text.h"

#include <algorithm>
#include <charconv>
#include <set>

namespace corma {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

using Cells = std::vector<std::string>;

/// Cuts a table into lines of cells. What is malformed gives nothing.
class CsvReader
{
public:
    explicit CsvReader(std::string_view csv)
        : m_rest(csv)
    {
        take(kByteOrderMark);
    }

    [[nodiscard]] bool atEnd() const { return m_rest.empty(); }

    std::optional<Cells> nextLine()
    {
        Cells cells;
        do {
            auto cell = take("\"") ? restOfQuoted() : plain();
            if (!cell) {
                return std::nullopt;
            }
            cells.push_back(std::move(*cell));
        } while (take(","));
        const bool isWhole = take("\n") || take("\r\n") || atEnd();
        return isWhole ? std::optional(std::move(cells)) : std::nullopt;
    }

private:
    bool take(std::string_view text)
    {
        if (!m_rest.starts_with(text)) {
            return false;
        }
        m_rest.remove_prefix(text.size());
        return true;
    }

    std::string takeUpTo(std::size_t end)
    {
        std::string taken(m_rest.substr(0, end));
        m_rest.remove_prefix(taken.size());
        return taken;
    }

    std::optional<std::string> plain()
    {
        std::string cell = takeUpTo(m_rest.find_first_of(",\r\n"));
        return cell.find('"') == std::string::npos ? std::optional(std::move(cell)) : std::nullopt;
    }

    std::optional<std::string> restOfQuoted()
    {
        std::string cell = takeUpTo(m_rest.find('"'));
        while (take("\"")) {
            if (!take("\"")) {
                return cell;
            }
            cell += '"' + takeUpTo(m_rest.find('"'));
        }
        return std::nullopt;
    }

    std::string_view m_rest;
};

/// Where the cells of a row stand.
struct Places
{
    std::size_t row = 0;
    std::array<std::size_t, kTextColumns.size()> texts {};
};

std::optional<std::size_t> placeOf(std::string_view heading, const Cells& headings)
{
    const auto found = std::find(headings.begin(), headings.end(), heading);
    return found == headings.end()
        ? std::nullopt
        : std::optional(static_cast<std::size_t>(found - headings.begin()));
}

std::optional<Places> placesOf(const Cells& headings)
{
    const auto row = placeOf("Row", headings);
    if (!row) {
        return std::nullopt;
    }
    Places places;
    places.row = *row;
    for (std::size_t i = 0; i < kTextColumns.size(); ++i) {
        const auto text = placeOf(kTextColumns[i].heading, headings);
        if (!text) {
            return std::nullopt;
        }
        places.texts[i] = *text;
    }
    return places;
}

std::optional<int> numberIn(std::string_view cell)
{
    int number = 0;
    const char* const end = cell.data() + cell.size();
    const auto [behind, error] = std::from_chars(cell.data(), end, number);
    return error == std::errc() && behind == end ? std::optional(number) : std::nullopt;
}

std::wstring textIn(std::string cell)
{
    for (std::size_t at = 0; (at = cell.find("\r\n", at)) != std::string::npos;) {
        cell.erase(at, 1);
    }
    return fromUtf8(cell);
}

std::optional<TextRow> rowOf(const Cells& cells, const Places& places)
{
    const auto number = numberIn(cells[places.row]);
    if (!number) {
        return std::nullopt;
    }
    TextRow row {*number, {}};
    for (std::size_t i = 0; i < row.texts.size(); ++i) {
        row.texts[i] = textIn(cells[places.texts[i]]);
    }
    return row;
}

} // namespace

std::optional<std::vector<TextRow>> parseTextTable(std::string_view csv)
{
    CsvReader reader(csv);
    const auto headings = reader.nextLine();
    const auto places = headings ? placesOf(*headings) : std::nullopt;
    if (!places || !isUtf8(csv)) {
        return std::nullopt;
    }
    std::vector<TextRow> rows;
    std::set<int> numbers;
    while (!reader.atEnd()) {
        const auto cells = reader.nextLine();
        if (!cells || cells->size() != headings->size()) {
            return std::nullopt;
        }
        auto row = rowOf(*cells, *places);
        if (!row || !numbers.insert(row->number).second) {
            return std::nullopt;
        }
        rows.push_back(std::move(*row));
    }
    return rows;
}

} // namespace corma
