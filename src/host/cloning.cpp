#include "host/cloning.h"

#include "host/clone/ClonePlanner.h"

namespace corma::host {

CloneFailure clone(const CloneJob& job, AcDbIdMapping& mapping)
{
    ClonePlan plan(job);
    if (CloneFailure failure = ClonePlanner(plan).complete()) {
        return failure;
    }
    execute(plan, mapping);
    return {};
}

} // namespace corma::host
