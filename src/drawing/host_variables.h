#pragma once

// System variables of the host, and the end of commands that wait for input.

#include <corma/host.h>

#include <cstddef>

/// A variable's value as its owner has it in memory, by its type: a double for RTREAL, two and
/// three of them for RTPOINT and RT3DPOINT, a 32-bit whole number for RTSHORT and RTLONG, a text
/// for RTSTR (const wchar_t* to set it, a buffer to get it).
///
/// Sets a variable. RTCAN for another type, and the variable is then not touched; else the status
/// of the host.
int xx_set_variable(const wchar_t* name, short type, const void* value);

/// Where a value goes: `target` is what `type` says, `size` the characters of a buffer, its
/// terminator counted, for RTSTR.
struct VariableTarget
{
    short type;
    void* target;
    std::size_t size = 0;
};

/// Reads a variable. RTCAN when its value is of another type, which the user is told with report
/// not 0; else the status of the host. The target is untouched unless the status is RTNORM.
int xx_get_variable(const wchar_t* name, const VariableTarget& value, int report);

/// Assigns the value of a host's result node, which must be of the target's type. Besides those of
/// variables there are RTENAME and RTPICKS (the first 64-bit word), the list between RTLB and its
/// RTLE (a resbuf*, which is taken out of the chain and the caller's to free; both marks stay, and
/// null is an empty list), and 5019 for nothing, which has no target. A null text leaves the buffer
/// as it is; a long one is cut. RTNORM; RTCAN for a type that differs or is none of these, which
/// the user is told with report not 0, and for a list without its end.
int xx_assign_value2(resbuf& node, const VariableTarget& value, int report);

/// Sends Enter to the host while the running command is `command` (a wild-card pattern, null:
/// "INSERT"), so that nothing waits for input any more. The status of the last Enter; RTNORM when
/// none was needed.
int xx_finish_command(const wchar_t* command);

namespace corma {

/// Sets CMDECHO to 0, so that commands print no prompts, and back at its end.
class QuietCommands
{
public:
    QuietCommands();
    QuietCommands(const QuietCommands&) = delete;
    QuietCommands& operator=(const QuietCommands&) = delete;
    ~QuietCommands();

private:
    static void set(short echo);

    short m_former = 1; // 16 bits, as the host keeps it
};

} // namespace corma
