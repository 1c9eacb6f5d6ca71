#pragma once

#include "host/dwg/fields.h"
#include "host/dwg/group_fields.h"

#include <string>
#include <string_view>

namespace corma::host::dwg {

/// Appends the groups (1000 to 1071) of the data of one application. Data that cannot be understood
/// to its end comes as one binary group of the rest.
void extendedDataToGroups(std::string_view bytes, const FileForm& form, const Names& names,
                          Groups& groups);

/// The data for groups in place of `bytes`, which stay when they have the same groups. False when
/// there is too much of it.
bool extendedDataFromGroups(const Groups& groups, GroupRange range, const FileForm& form,
                            const Names& names, std::string& bytes);

} // namespace corma::host::dwg
