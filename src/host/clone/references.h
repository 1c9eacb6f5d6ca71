#pragma once

#include "host/model/Store.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace corma::host {

/// A group that names another record.
struct Reference
{
    enum class Kind : std::uint8_t
    {
        name, // of an entry of a table, as text
        hardPointer, // needs the other record
        softPointer, // can do without it
        owned, // is the owner of it
        reactor, // one of those that want to hear of changes
        sortHandle // of the record whose place in the drawing order is taken
    };

    std::size_t at = 0; // position of the group
    Kind kind = Kind::name;
    TableKind table = TableKind::layer; // of a name
};

/// What a record refers to, in the order of its groups: by name, and by handle in the groups that
/// are for that. Its own handle and that of its owner are not among them.
std::vector<Reference> referencesOf(const Groups& groups, RecordKind kind);

/// The entry of a table that a group of a DIMSTYLE names: 5 is the handle in all other records, so
/// a name that could be one was taken for it.
std::wstring nameIn(const Group& group);

/// True for the braces that hold who wants to hear of changes, or the extension dictionary.
bool isReactors(const Group& group);
bool isExtensionDictionary(const Group& group);

/// True for the end of braces.
bool isClosingBrace(const Group& group);

} // namespace corma::host
