#pragma once

#include "host/dwg/TypeTable.h"
#include "host/dwg/fields.h"
#include "host/model/Group.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corma::host::dwg {

/// The classes of a file, of Parts::classes; nothing when that is damaged.
std::optional<std::vector<ClassInfo>> decodeClasses(std::string_view section, const FileForm& form);

/// The section for some classes, with its sentinels, in place of a former one, which is empty for a
/// new file. What decodeClasses() made of that comes back to the same bytes.
std::string encodeClasses(const std::vector<ClassInfo>& classes, const FileForm& form,
                          std::string_view former);

/// The record CLASS that a DXF file would have.
Groups classToGroups(const ClassInfo& described, DrawingVersion version);

/// What such a record says; its number is still to be given.
ClassInfo classFromGroups(const Groups& groups);

} // namespace corma::host::dwg
