#include "databases/reading.h"

namespace corma::testing {

FirstField firstField(ado::Connection& connection, const std::wstring& sql)
{
    ado::Recordset records(&connection);
    records.open(sql);
    return {.name = records.name(0),
            .type = records.type(0),
            .attributes = records.attributes(0),
            .value = records.value(0)};
}

std::wstring firstText(ado::Connection& connection, const std::wstring& sql)
{
    return xx_variant_text(firstField(connection, sql).value, true);
}

std::wstring firstChunk(ado::Connection& connection, const std::wstring& sql, int bytes)
{
    ado::Recordset records(&connection);
    records.open(sql);
    return xx_variant_text(records.chunk(0, bytes), true);
}

void run(ado::Connection& connection, const std::wstring& sql)
{
    ado::Recordset records(&connection);
    records.open(sql);
}

std::optional<ComError> errorOf(ado::Connection& connection, const std::wstring& sql)
{
    try {
        run(connection, sql);
        return std::nullopt;
    } catch (const ComError& error) {
        return error;
    }
}

std::optional<ComError> errorOfOpening(const std::wstring& text)
{
    try {
        ado::Connection connection;
        connection.open(text);
        return std::nullopt;
    } catch (const ComError& error) {
        return error;
    }
}

std::wstring times(int count, const std::wstring& text)
{
    std::wstring all;
    for (int i = 0; i < count; ++i) {
        all += text;
    }
    return all;
}

} // namespace corma::testing
