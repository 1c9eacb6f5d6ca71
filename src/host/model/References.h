#pragma once

#include "host/model/Store.h"

namespace corma::host {

/// Which block references bear which name.
struct Store::References
{
    std::unordered_map<std::wstring, std::vector<AcDbStub*>> byName; // folded; what bore it once
    std::vector<AcDbStub*> changed; // since they were entered; some more than once
};

} // namespace corma::host
