#include "output.h"

#include "text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace cfgctl {

namespace {

// The shortest text that reads back as the same number. Numbers of a usual size are written out,
// since a length of 100000 is hard to recognise in 1e+05.
std::string numberText(double number)
{
    const double size = std::abs(number);
    const bool isUsual = size == 0 || (size >= 1e-5 && size < 1e15);
    const auto format = isUsual ? std::chars_format::fixed : std::chars_format::scientific;
    std::array<char, 64> digits {};
    const auto result = std::to_chars(digits.begin(), digits.end(), number, format);
    return {digits.data(), result.ptr};
}

std::string plainText(const Json& value)
{
    if (value.is_string()) {
        return value.get<std::string>();
    }
    return value.is_number_float() ? numberText(value.get<double>()) : value.dump();
}

} // namespace

void Answer::fail()
{
    status = RTERROR;
    if (document.contains("status")) {
        document["status"] = status;
    }
}

Json toJson(std::wstring_view text)
{
    return toBytes(text);
}

std::string plainLines(const Json& value)
{
    if (value.is_null()) {
        return {};
    }
    if (!value.is_array()) {
        return plainText(value) + '\n';
    }
    std::string lines;
    for (const Json& element : value) {
        lines += plainText(element) + '\n';
    }
    return lines;
}

std::string alignedLines(const std::vector<std::vector<std::wstring>>& rows)
{
    std::vector<std::size_t> widths;
    for (const auto& row : rows) {
        widths.resize(std::max(widths.size(), row.size()));
        for (std::size_t i = 0; i < row.size(); ++i) {
            widths[i] = std::max(widths[i], row[i].size());
        }
    }
    std::string lines;
    for (const auto& row : rows) {
        std::wstring line;
        for (std::size_t i = 0; i < row.size(); ++i) {
            line += row[i];
            if (i + 1 < row.size()) {
                line.append(widths[i] - row[i].size() + 2, L' ');
            }
        }
        lines += toBytes(line) + '\n';
    }
    return lines;
}

// Bytes of file names that are no UTF-8 come out as they are in the plain form, so that the name
// serves as an argument again. JSON cannot hold them; there they are replaced.
bool write(const Answer& answer, bool asJson)
{
    const std::string text = asJson || answer.form == Form::jsonOnly
        ? answer.document.dump(-1, ' ', false, Json::error_handler_t::replace) + '\n'
        : answer.lines;
    const bool isWritten = std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
    return std::fflush(stdout) == 0 && isWritten;
}

} // namespace cfgctl
