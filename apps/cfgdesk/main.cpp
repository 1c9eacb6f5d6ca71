#include "cfgctl/text.h"
#include "cfgctl/usage.h"
#include "run.h"
#include <corma/version_note.h>

#include <cstdio>
#include <exception>
#include <iostream>

CORMA_VERSION_NOTE("CfgDesk, the settings editor", CFGDESK_VERSION, CORMA_COPYRIGHT)

namespace {

constexpr int kFailed = 1;
constexpr int kWrongUsage = 2;

// An argument that is named in the message may hold line ends.
int tell(const char* message, int exitStatus)
{
    std::fprintf(stderr, "cfgdesk: %s\n", cfgctl::withoutControls(message).c_str());
    return exitStatus;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        return cfgdesk::run({argv, static_cast<std::size_t>(argc)}, std::cout);
    } catch (const cfgctl::UsageError& error) {
        return tell(error.what(), kWrongUsage);
    } catch (const std::exception& error) {
        return tell(error.what(), kFailed);
    }
}
