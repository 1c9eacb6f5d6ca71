#include "fuzz_support.h"
#include "platform/text.h"
#include "settings/ReferenceModel.h"
#include "settings/model_lines.h"

#include <cstdint>

/// The input is a line in UTF-8.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace corma;
    const std::wstring line = fromUtf8({reinterpret_cast<const char*>(data), size});
    const std::string normal = normaliseLine(toUtf8(line));
    fuzzing::require(isUtf8(normal));
    fuzzing::require(fromUtf8(normal) == testing::plainNormaliseLine(line));
    return 0;
}
