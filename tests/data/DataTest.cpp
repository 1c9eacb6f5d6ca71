#include "data/DataTest.h"

#include "platform/text.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace corma::testing {

namespace {

std::string number(double value)
{
    std::array<char, 40> digits {};
    std::snprintf(digits.data(), digits.size(), "%.15g", value);
    return digits.data();
}

std::string typeOf(const xx_Var& column)
{
    switch (column.type) {
    case RTLONG:
        return "long";
    case RTREAL:
        return "real";
    case RTSTR:
        return "text";
    default:
        return std::to_string(column.type);
    }
}

std::string valueOf(const xx_Var& column, int row)
{
    const ads_u_val& value = column.values[row];
    switch (column.type) {
    case RTLONG:
        return std::to_string(value.rlong);
    case RTREAL:
        return number(value.rreal);
    case RTSTR:
        return value.rstring == nullptr ? "(null)" : toUtf8(value.rstring);
    default:
        return "?";
    }
}

} // namespace

std::string columnsOf(const xx_VarArray& result)
{
    std::string lines;
    for (int i = 0; i < result.length(); ++i) {
        const xx_Var& column = *result[i];
        lines += (i == 0 ? "" : "\n") + toUtf8(column.name()) + ' ' + typeOf(column) + ':';
        for (int row = 0; row < column.count; ++row) {
            lines += (row == 0 ? " " : "|") + valueOf(column, row);
        }
    }
    return lines;
}

std::wstring DataTest::database(std::wstring_view name, const std::string& statements) const
{
    const std::wstring path = folder.path(name);
    SqliteFile(path).run(statements);
    return path;
}

std::string DataTest::select(const std::wstring& connection, const std::wstring& sql,
                             int maximumRows, bool isDebug)
{
    status = xx_ado_select(connection.c_str(), sql.c_str(), &result, maximumRows, isDebug);
    return columnsOf(result);
}

std::string DataTest::shown()
{
    std::string lines;
    for (std::size_t i = 0; i < services.printed.size(); ++i) {
        // Each message has a line end of its own before it.
        if (i % 2 == 0) {
            EXPECT_EQ(services.printed[i], L"\n");
        } else {
            lines += (lines.empty() ? "" : "\n") + folder.homely(services.printed[i]);
        }
    }
    services.printed.clear();
    return lines;
}

} // namespace corma::testing
