#include "data/declared_types.h"
#include "fuzz_support.h"

#include <cstdint>

namespace {

using Columns = std::vector<corma::DeclaredColumn>;

std::string quoted(const std::string& text)
{
    std::string result = "\"";
    for (const char c : text) {
        result.append(c == '"' ? 2 : 1, c);
    }
    return result + "\"";
}

std::string statementFor(const Columns& columns)
{
    std::string text = "CREATE TABLE t(";
    for (const auto& [name, type] : columns) {
        text += (text.back() == '(' ? "" : ", ") + quoted(name) + " " + quoted(type);
    }
    return text + ")";
}

bool areEqual(const Columns& a, const Columns& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& x, const auto& y) {
        return x.name == y.name && x.type == y.type;
    });
}

} // namespace

/// The input is a statement.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace corma;
    const std::string statement(reinterpret_cast<const char*>(data), size);
    const Columns columns = declaredColumns(statement);
    std::size_t characters = 0;
    for (const auto& [name, type] : columns) {
        characters += name.size() + type.size();
    }
    fuzzing::require(characters <= size);
    fuzzing::require(areEqual(declaredColumns(statementFor(columns)), columns));
    fuzzing::require(areEqual(declaredColumns("/* ( */ -- [\n" + statement), columns));
    return 0;
}
