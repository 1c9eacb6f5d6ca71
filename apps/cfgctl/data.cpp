// Databases: rows of a statement, and words that are translated by one.

#include "commands.h"
#include "console.h"
#include "text.h"
#include <corma/translation.h>
#include <corma/xx_Var.h>
#include <corma/xx_ado.h>

#include <algorithm>
#include <cmath>

namespace cfgctl {

namespace {

Json valueOf(const xx_Var& column, int row)
{
    const ads_u_val& value = column.values[row];
    switch (column.type) {
    case RTREAL:
        return value.rreal;
    case RTSHORT:
        return value.rint;
    case RTLONG:
        return value.rlong;
    default:
        return value.rstring == nullptr ? Json() : toJson(value.rstring);
    }
}

Json columnAsJson(const xx_Var& column)
{
    Json one;
    one["name"] = toJson(column.name());
    one["type"] = column.type;
    one["values"] = Json::array();
    for (int row = 0; row < column.count; ++row) {
        one["values"].push_back(valueOf(column, row));
    }
    return one;
}

// Values of one row stand on one line, so that what parts them must not be in them.
std::string asCell(const Json& value)
{
    if (value.is_string()) {
        return withoutControls(value.get<std::string>());
    }
    if (value.is_number_float() && std::isinf(value.get<double>())) {
        return value.get<double>() < 0 ? "-Inf"
                                       : "Inf"; // as SQLite has it; JSON has no such number
    }
    return value.is_null() ? std::string() : value.dump();
}

// The names, then the rows, with a tab between.
std::string tableLines(const xx_VarArray& columns)
{
    std::string lines;
    int rows = 0;
    for (int i = 0; i < columns.length(); ++i) {
        lines += (i == 0 ? "" : "\t") + asCell(toJson(columns[i]->name()));
        rows = std::max<int>(rows, columns[i]->count);
    }
    lines += columns.length() == 0 ? "" : "\n";
    for (int row = 0; row < rows; ++row) {
        for (int i = 0; i < columns.length(); ++i) {
            lines += (i == 0 ? "" : "\t") + asCell(valueOf(*columns[i], row));
        }
        lines += '\n';
    }
    return lines;
}

class Sql : public Command
{
public:
    void declare(Syntax& syntax) override
    {
        syntax.argument("CONNECTION", "A database file, or a text that tells how to connect",
                        m_connection);
        syntax.argument("SQL", "A SELECT statement", m_sql);
        syntax.option("--max N", "At most N rows; with 0, the usual number, or less all of them",
                      m_maximum);
        syntax.flag("--debug", "Show on standard error what is run and read", m_isDebug);
    }

    Answer run(const Options& /*options*/) override
    {
        xx_VarArray columns;
        const Listener library(Listener::Pass::on);
        Answer answer;
        answer.status
            = xx_ado_select(m_connection.c_str(), m_sql.c_str(), &columns, m_maximum, m_isDebug);
        if (answer.status != RTNORM && library.heard().empty()) {
            complain(L"the database \"" + m_connection + L"\" was not found");
        }
        answer.document["status"] = answer.status;
        answer.document["columns"] = Json::array();
        for (int i = 0; i < columns.length(); ++i) {
            answer.document["columns"].push_back(columnAsJson(*columns[i]));
        }
        answer.lines = tableLines(columns);
        xx_ado_close_all();
        return answer;
    }

private:
    std::wstring m_connection;
    std::wstring m_sql;
    int m_maximum = 0;
    bool m_isDebug = false;
};

class Translate : public Command
{
public:
    void declare(Syntax& syntax) override
    {
        syntax.argument("FILE", "Configuration file whose TranslateDB names the database", m_file);
        syntax.argument("WORD", "A word as it is stored", m_word);
    }

    Answer run(const Options& options) override
    {
        const std::wstring text = corma::translateKey(m_file.c_str(), m_word, options.language);
        Answer answer;
        answer.document["status"] = RTNORM;
        answer.lines = toBytes(text) + '\n';
        return answer;
    }

private:
    std::wstring m_file;
    std::wstring m_word;
};

} // namespace

std::unique_ptr<Command> makeSql()
{
    return std::make_unique<Sql>();
}

std::unique_ptr<Command> makeTranslate()
{
    return std::make_unique<Translate>();
}

} // namespace cfgctl
