#pragma once

#include "host/model/DrawingFormat.h"
#include "host/model/Group.h"

namespace corma::host {

/// Takes out of the groups of a new record what drawings of a version do not know.
void fitToVersion(Groups& groups, DrawingVersion version);

/// Puts the dictionary that has an object as an entry among those that want to hear of its changes,
/// in place of a former one.
void setReactor(Groups& groups, Handle former, Handle dictionary);

} // namespace corma::host
