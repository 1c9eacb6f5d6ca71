#pragma once

#include "host/dwg/Container.h"
#include "host/dwg/fields.h"

namespace corma::host::dwg {

/// How the records of a file are to be read.
FileForm formOf(const Parts& parts);

/// That of a file which is still to be written.
FileForm newForm(DrawingVersion version, int codePage);

} // namespace corma::host::dwg
