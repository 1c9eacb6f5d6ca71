#include "model_checks.h"

#include <cstddef>
#include <cstdint>

/// The input is a description file and, behind a byte 1E, the configuration file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const corma::fuzzing::TwoFiles files({reinterpret_cast<const char*>(data), size});
    corma::fuzzing::checkModel(
        {.global = files.global, .definitions = {}, .descriptions = files.subject, .project = {}});
    return 0;
}
