#pragma once

#include "host/dxf/Form.h"
#include "host/model/Group.h"

#include <string>
#include <string_view>

namespace corma::host::dxf {

/// The groups of a record. The bytes of the groups, put one behind the other, are those of the
/// record, whatever stands in it.
Groups decodeGroups(std::string_view record, const Form& form);

/// The same in the place of what `groups` has, whose memory is used again.
void decodeGroups(std::string_view record, const Form& form, Groups& groups);

/// Appends groups to bytes in the form of a file. A group whose bytes lie in `file` is written as
/// those; any other is written anew, as the kind of value that its code has, whatever it holds.
/// Bytes beyond 127 are continued in further groups of the same code.
void encodeGroups(const Groups& groups, const Form& form, std::string_view file,
                  std::string& bytes);

} // namespace corma::host::dxf
