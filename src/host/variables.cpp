#include "host/variables.h"

#include "host/host.h"
#include "host/result_list.h"
#include "platform/platform.h"
#include "platform/text.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <string>
#include <variant>
#include <vector>

namespace {

enum class Access
{
    readOnly,
    writable
};

struct Variable
{
    std::wstring_view name;
    Access access;
    std::variant<std::wstring, short> value;
};

const std::vector<Variable>& initialVariables()
{
    static const std::vector<Variable> variables = {
        {L"CMDNAMES", Access::readOnly, std::wstring()},
        {L"CMDECHO", Access::writable, short {1}},
        {L"MEASUREMENT", Access::writable, short {1}},
    };
    return variables;
}

std::vector<Variable>& variables()
{
    static std::vector<Variable> current = initialVariables();
    return current;
}

Variable* findVariable(std::wstring_view name)
{
    auto& all = variables();
    const auto found = std::find_if(all.begin(), all.end(), [&](const Variable& variable) {
        return corma::equalIgnoringCase(variable.name, name);
    });
    return found == all.end() ? nullptr : &*found;
}

} // namespace

namespace corma::host {

void setVariable(std::wstring_view name, std::wstring_view value)
{
    Variable* variable = findVariable(name);
    assert(variable != nullptr);
    variable->value = std::wstring(value);
}

void resetVariables()
{
    variables() = initialVariables();
}

} // namespace corma::host

int acedGetVar(const ACHAR* name, resbuf* result)
{
    const Variable* variable = findVariable(name);
    if (variable == nullptr) {
        return RTERROR;
    }
    result->rbnext = nullptr;
    if (const auto* text = std::get_if<std::wstring>(&variable->value)) {
        result->restype = RTSTR;
        result->resval.rstring = corma::host::heapCopy(*text);
    } else {
        result->restype = RTSHORT;
        result->resval.rint = std::get<short>(variable->value);
    }
    return RTNORM;
}

int acedSetVar(const ACHAR* name, const resbuf* value)
{
    Variable* variable = findVariable(name);
    if (variable == nullptr || variable->access == Access::readOnly) {
        return RTERROR;
    }
    if (auto* number = std::get_if<short>(&variable->value)) {
        if (value->restype != RTSHORT) {
            return RTERROR;
        }
        *number = value->resval.rint;
        return RTNORM;
    }
    if (value->restype != RTSTR || value->resval.rstring == nullptr) {
        return RTERROR;
    }
    variable->value = std::wstring(value->resval.rstring);
    return RTNORM;
}
