#include "drawing/host_variables.h"

#include "host/host.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

constexpr const wchar_t* kEchoVariable = L"CMDECHO";
constexpr const wchar_t* kRunningCommands = L"CMDNAMES";
constexpr const wchar_t* kUsualCommand = L"INSERT";

/// The value of a variable as the host gives it, with the text that belongs to it.
class VariableValue
{
public:
    explicit VariableValue(const wchar_t* name)
        : m_status(acedGetVar(name, &m_node))
    {
    }

    VariableValue(const VariableValue&) = delete;
    VariableValue& operator=(const VariableValue&) = delete;

    ~VariableValue()
    {
        if (m_status == RTNORM && m_node.restype == RTSTR) {
            std::free(m_node.resval.rstring);
        }
    }

    [[nodiscard]] int status() const { return m_status; }

    resbuf& node() { return m_node; }

private:
    resbuf m_node {};
    int m_status;
};

bool fill(resbuf& node, const void* value)
{
    switch (node.restype) {
    case RTREAL:
        node.resval.rreal = *static_cast<const double*>(value);
        return true;
    case RTPOINT:
        std::memcpy(node.resval.rpoint, value, 2 * sizeof(double));
        return true;
    case RT3DPOINT:
        std::memcpy(node.resval.rpoint, value, 3 * sizeof(double));
        return true;
    case RTSHORT:
        node.resval.rint = static_cast<short>(*static_cast<const std::int32_t*>(value));
        return true;
    case RTLONG:
        node.resval.rlong = *static_cast<const std::int32_t*>(value);
        return true;
    case RTSTR:
        // The host takes a text that it may not change, by a pointer that says otherwise.
        node.resval.rstring = const_cast<wchar_t*>(static_cast<const wchar_t*>(value));
        return true;
    default:
        return false;
    }
}

bool isRunning(const wchar_t* command)
{
    VariableValue names(kRunningCommands);
    return names.status() == RTNORM && names.node().restype == RTSTR
        && acutWcMatchEx(names.node().resval.rstring, command, true);
}

} // namespace

int xx_set_variable(const wchar_t* name, short type, const void* value)
{
    resbuf node {};
    node.restype = type;
    return fill(node, value) ? acedSetVar(name, &node) : RTCAN;
}

int xx_get_variable(const wchar_t* name, const VariableTarget& value, int report)
{
    VariableValue present(name);
    return present.status() == RTNORM ? xx_assign_value2(present.node(), value, report)
                                      : present.status();
}

int xx_finish_command(const wchar_t* command)
{
    int status = RTNORM;
    // A host that refuses the Enter would be asked for ever.
    while (status == RTNORM && isRunning(command == nullptr ? kUsualCommand : command)) {
        status = acedCommandS(RTSTR, L"", RTNONE);
    }
    return status;
}

namespace corma {

QuietCommands::QuietCommands()
{
    resbuf echo {};
    if (acedGetVar(kEchoVariable, &echo) == RTNORM && echo.restype == RTSHORT) {
        m_former = echo.resval.rint;
    }
    set(0);
}

QuietCommands::~QuietCommands()
{
    set(m_former);
}

void QuietCommands::set(short echo)
{
    resbuf node {};
    node.restype = RTSHORT;
    node.resval.rint = echo;
    acedSetVar(kEchoVariable, &node);
}

} // namespace corma
