#pragma once

#include "host/model/Group.h"
#include "host/model/Store.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

namespace corma::host {

/// The header variables of a drawing: the groups of one record, in which each variable is a name
/// (code 9) with the values behind it.
struct Store::Header
{
    explicit Header(Groups all);

    [[nodiscard]] GroupRange rangeOf(std::wstring_view name) const; // of the values; may be empty
    void set(std::wstring_view name, const Group& value);

    Groups groups;
    std::unordered_map<std::wstring, std::size_t> positions; // of the names
};

} // namespace corma::host
