#pragma once

#include "host/error_status.h"
#include "host/model/DrawingFormat.h"
#include "host/model/Stub.h"

#include <string>

namespace corma::host {

/// Why a cloning cannot be done; nothing has been changed then.
struct CloneFailure
{
    Acad::ErrorStatus status = Acad::eOk;
    std::wstring message;

    explicit operator bool() const { return status != Acad::eOk; }
};

struct Versions
{
    DrawingVersion from = DrawingVersion::unknown;
    DrawingVersion to = DrawingVersion::unknown;

    // The other drawing can have records of which nothing is known but their bits.
    bool takesBits = false;

    // Before R13 a record has no subclasses, no owner, no reactors and no extension dictionary, and
    // a drawing no objects.
    [[nodiscard]] bool fromOld() const { return from < DrawingVersion::r13; }

    [[nodiscard]] bool toOld() const { return to < DrawingVersion::r13; }
};

/// Makes the groups of a record those of a record that is in no drawing, as the other version has
/// them: without handle, owner and bytes of the file, without what the other version does not know.
///
/// eNotImplementedYet for a type that is not understood; eInvalidDwgVersion for one that the other
/// version has no form for.
CloneFailure convertRecord(Groups& groups, RecordKind kind, const Versions& versions);

/// The name of a version that users know, such as "R2000".
std::wstring nameOf(DrawingVersion version);

/// Puts subclass markers into the groups of a record of R12. False for a type that has a different
/// content from R13 on.
bool addSubclassMarkers(Groups& groups, RecordKind kind);

} // namespace corma::host
