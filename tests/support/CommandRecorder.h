#pragma once

#include "host/commands.h"

#include <functional>
#include <string>
#include <vector>

namespace corma::testing {

/// Sees the commands that are sent to the host while it lives, and lets them run.
class CommandRecorder : public host::CommandRunner
{
public:
    CommandRecorder();
    ~CommandRecorder() override;

    /// The commands so far, one a line, as "_ATTSYNC|Name|DOOR": the words as they were sent. Where
    /// CMDECHO is not 0 its value stands in front, as in "1:_ATTSYNC|Name|DOOR".
    [[nodiscard]] std::string sent() const;

    /// What runs in place of the host's own command, if there is something.
    std::function<int(const host::CommandArguments&)> instead;

    int run(const host::CommandArguments& arguments) override;

private:
    std::string m_sent;
    host::CommandRunner* m_former;
};

} // namespace corma::testing
