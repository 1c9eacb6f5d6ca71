#pragma once

// host/clone/ - copying records from one drawing into another: which types are understood, what
// they name, how their groups differ between versions, the plan of a cloning and its execution.

#include "host/model/DrawingFormat.h"

#include <string_view>

namespace corma::host {

/// What a cloning has to know of a type of record. Within one version the references in its groups
/// are found by their codes; what else the record says is copied as it stands.
struct RecordKnowledge
{
    std::string_view type;
    DrawingVersion since = DrawingVersion::unknown; // the first version that has it

    // The last version in which its groups are all of it: later ones keep the shape of a solid in a
    // section of its own, under the handle of the record.
    DrawingVersion until = DrawingVersion::r2018;
};

/// Null for a type that is not understood, such as that of a proxy or of another application.
const RecordKnowledge* knowledgeOf(std::string_view type);

} // namespace corma::host
