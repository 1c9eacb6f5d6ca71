#include "bench_table.h"

#include <algorithm>
#include <cstdio>

namespace corma::bench {

namespace {

// Five digits tell enough, whatever the size of the number.
std::string number(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, value < 1 ? "%.3f" : value < 100 ? "%.1f" : "%.0f", value);
    return text;
}

std::string numberOrDash(const std::optional<double>& value)
{
    return value ? number(*value) : "-";
}

std::string ratio(const Row& row)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", row.floor ? row.measured / *row.floor : 0.0);
    return row.floor ? text : "-";
}

bool holds(const Row& row)
{
    return row.measured <= *row.aim;
}

const char* verdict(const Row& row)
{
    if (!row.aim) {
        return "";
    }
    return holds(row) ? "ok" : "OVER";
}

void printLine(const Row& row)
{
    std::printf("%-36s %-9s %8zu %12s %12s %7s %12s  %s\n", row.what.c_str(), row.form.c_str(),
                row.entries, number(row.measured).c_str(), numberOrDash(row.floor).c_str(),
                ratio(row).c_str(), numberOrDash(row.aim).c_str(), verdict(row));
}

} // namespace

void printTable(const std::vector<Row>& rows, const std::string& unit)
{
    const std::string measured = "measured/" + unit;
    const std::string floor = "floor/" + unit;
    const std::string aim = "at most/" + unit;
    std::printf("\n%-36s %-9s %8s %12s %12s %7s %12s\n", "case", "form", "entries",
                measured.c_str(), floor.c_str(), "ratio", aim.c_str());
    for (const Row& row : rows) {
        printLine(row);
    }
    const auto withAim = std::count_if(rows.begin(), rows.end(),
                                       [](const Row& row) { return row.aim.has_value(); });
    const auto kept = std::count_if(rows.begin(), rows.end(),
                                    [](const Row& row) { return row.aim && holds(row); });
    std::printf("%td of %td aims hold\n", kept, withAim);
}

} // namespace corma::bench
