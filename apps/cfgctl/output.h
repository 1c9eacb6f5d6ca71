#pragma once

#include <corma/host.h>

#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace cfgctl {

/// Keys come out in the order in which they are put in.
using Json = nlohmann::ordered_json;

enum class Form
{
    both,
    jsonOnly // what --json gives comes out without it as well
};

/// What a command has to say.
// NOLINTNEXTLINE(bugprone-exception-escape): moving a JSON value throws nothing
struct Answer
{
    int status = RTNORM;
    Json document;
    std::string lines; // the plain form, each line with its end
    Form form = Form::both;

    /// Makes it that of a command that ran, but whose result could not be stored.
    void fail();
};

/// The text as a JSON value.
Json toJson(std::wstring_view text);

/// A value in the plain form: a line, or a line for each element of an array; nothing for null.
std::string plainLines(const Json& value);

/// A table with two blanks between its columns.
std::string alignedLines(const std::vector<std::vector<std::wstring>>& rows);

/// Writes one of its forms to standard output. False when that fails.
bool write(const Answer& answer, bool asJson);

} // namespace cfgctl
