#include "data/ado_reader.h"

#include "foundation/messages.h"
#include <corma/xx_Var.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace {

using corma::Variant;
using corma::ado::Recordset;

constexpr std::size_t kLongestSelectedName = 132; // characters
constexpr int kLongPiece = 100; // bytes, of a long field

struct Column
{
    std::wstring name;
    int type;
    std::unique_ptr<xx_Var> values;
};

// Names pass through a narrow text on their way: of each character its low byte is left.
std::wstring narrowed(const std::wstring& name)
{
    constexpr unsigned kLowByte = 0xFF;
    std::wstring narrow = name.substr(0, kLongestSelectedName);
    for (wchar_t& c : narrow) {
        c = static_cast<wchar_t>(static_cast<unsigned>(c) & kLowByte);
    }
    return narrow;
}

std::vector<Column> columnsOf(const Recordset& records)
{
    std::vector<Column> columns;
    columns.reserve(static_cast<std::size_t>(records.fieldCount()));
    for (int i = 0; i < records.fieldCount(); ++i) {
        columns.push_back({narrowed(records.name(i)), records.type(i), std::make_unique<xx_Var>()});
    }
    return columns;
}

// Puts values into columns, and shows them where that is wanted.
class Keeper
{
public:
    explicit Keeper(bool isShowing)
        : m_isShowing(isShowing)
    {
    }

    void beginRecord(int number) const
    {
        if (m_isShowing) {
            corma::showUserMessage(L"\n----------------------------------------------------------");
            corma::showUserMessage(corma::formatted(L"\nRead record %d", number));
        }
    }

    void beginField(int index) const
    {
        if (m_isShowing) {
            corma::showUserMessage(corma::formatted(L"\nField %3ld : ", static_cast<long>(index)));
        }
    }

    void keep(Column& column, const Variant& value) const
    {
        using corma::ado::Type;
        const wchar_t* const name = column.name.c_str();
        switch (column.type) {
        case Type::smallInteger:
        case Type::integer: {
            const std::int32_t number = corma::integerOf(value);
            show(L"Naam %20s Var (Int) %d", name, number);
            column.values->addLong(name, number);
            break;
        }
        case Type::real: {
            const double number = corma::realOf(value);
            show(L"Naam %20s Var (Double) %lf", name, number);
            column.values->add(name, number);
            break;
        }
        case Type::boolean: {
            const int isSet = value.tag == corma::VT_BOOL && value.integer != 0 ? 1 : 0;
            show(L"Naam %20s Var (Bool) %i", name, isSet);
            column.values->addShort(name, isSet);
            break;
        }
        case Type::bigInteger: {
            const auto number = static_cast<std::int32_t>(value.integer); // of a NULL 0
            show(L"Naam %20s Var (Long) %ld", name, static_cast<long>(number));
            column.values->addLong(name, number);
            break;
        }
        default: {
            const std::wstring text = xx_variant_text(value, true);
            show(L"Naam %20s Var (String) %s", name, text.c_str());
            column.values->addText(name, text.c_str());
        }
        }
    }

private:
    template<class Value> void show(const wchar_t* format, const wchar_t* name, Value value) const
    {
        if (m_isShowing) {
            corma::showUserMessage(corma::formatted(format, name, value));
        }
    }

    bool m_isShowing;
};

void readRecord(Recordset& records, std::vector<Column>& columns, const Keeper& keeper)
{
    int index = 0;
    for (Column& column : columns) {
        keeper.beginField(index);
        const bool isLong = (records.attributes(index) & corma::ado::kIsLong) != 0;
        keeper.keep(column, isLong ? records.chunk(index, kLongPiece) : records.value(index));
        ++index;
    }
}

void readRecords(Recordset& records, const corma::Query& query, xx_VarArray& result)
{
    std::vector<Column> columns = columnsOf(records);
    const Keeper keeper(query.debug);
    int rows = 0;
    for (; !columns.empty() && query.wantsMoreThan(rows) && !records.isAtEnd()
         && !corma::isFull(rows);
         records.moveNext()) {
        keeper.beginRecord(rows);
        readRecord(records, columns, keeper);
        ++rows;
    }
    for (Column& column : columns) {
        if (rows > 0) {
            result.setOwned(column.values.release());
        }
    }
}

// A connection whose other side is gone would fail for ever: the next call opens it anew.
void forgetIfLost(corma::ConnectionSlot& slot)
{
    if (!slot.connection || slot.connection->isLost()) {
        slot.empty();
    }
}

int runStatement(corma::ConnectionSlot& slot, const corma::Query& query, xx_VarArray& result)
{
    try {
        Recordset records(slot.connection.get());
        records.open(query.sql);
        readRecords(records, query, result);
        if (records.isOpen()) {
            records.close();
        }
        return RTNORM;
    } catch (const corma::ComError& error) {
        xx_dump_com_error(error);
    }
    forgetIfLost(slot);
    return RTERROR;
}

} // namespace

int xx_ado_sql(const std::wstring& path, const std::wstring& provider, const corma::Query& query,
               xx_VarArray& result, const corma::Credentials& credentials)
{
    if (query.debug) {
        corma::showLongText(L"xx_ado_sql 1", query.sql);
    }
    result = xx_VarArray();
    int status = RTNORM;
    const int slot = xx_ado_connection(path, provider, &status, credentials);
    if (status != RTNORM) {
        return status;
    }
    status = runStatement(corma::connectionSlot(slot), query, result);
    if (query.debug) {
        corma::showUserMessage(corma::formatted(L"\nec = %d", status));
    }
    return status;
}
