#include "model_checks.h"

#include <cstddef>
#include <cstdint>

/// The input is a configuration file. It is loaded as a global file and as a stream.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    corma::fuzzing::checkModel(
        {.global = bytes, .definitions = {}, .descriptions = {}, .project = {}});
    corma::fuzzing::checkStream(bytes);
    return 0;
}
