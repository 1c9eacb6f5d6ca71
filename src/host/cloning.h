#pragma once

#include "host/acdb_database.h"
#include "host/clone/conversion.h"
#include "host/model/Store.h"

#include <optional>
#include <string>
#include <vector>

namespace corma::host {

/// What is to be cloned from one drawing into another, and where to. With it comes what it owns and
/// what it needs: layers, styles, blocks, objects.
///
/// Records that have a name meet those of the destination by the rule. A copy beside one of the
/// same name is called "$0$NAME", or "DRAWING$0$NAME" for kDrcXrefMangleName, with the first number
/// that is free. Names of applications are always merged; a block without a name of its own (such
/// as "*U12") always gets a new number.
struct CloneJob
{
    /// What becomes of names that every drawing has: layer "0", "Standard", "Continuous".
    enum class Standard
    {
        kept, // those of the destination stay, whatever the rule
        byRule
    };

    Store& source;
    Store& destination;
    AcDb::DuplicateRecordCloning rule = AcDb::kDrcIgnore;
    Standard standard = Standard::kept;
    std::wstring drawingName {}; // for kDrcXrefMangleName

    /// Entities, into a block of the destination; moved when there is a transformation.
    std::vector<AcDbStub*> entities {};
    AcDbStub* block = nullptr; // its record
    std::optional<AcGeMatrix3d> transform {};

    /// Entries of a table, with their content.
    std::vector<AcDbStub*> entries {};

    /// Objects of dictionaries, into a dictionary of the destination, under the names they have.
    std::vector<AcDbStub*> objects {};
    AcDbStub* dictionary = nullptr;

    /// The entities of the model space as a block of this name; one that is there is redefined and
    /// keeps its record. Its origin is $INSBASE of the source.
    std::wstring modelSpaceAs {};
};

/// Clones. A failure changes nothing: a record that is not understood (eNotImplementedYet) or that
/// the destination's version has no form for (eInvalidDwgVersion), an entity that cannot be
/// transformed, a block that would contain itself (eInvalidInput), a record that would have to
/// change and is open (eWasOpenForRead, eWasOpenForWrite).
CloneFailure clone(const CloneJob& job, AcDbIdMapping& mapping);

} // namespace corma::host
