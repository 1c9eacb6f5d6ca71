#pragma once

// What the nodes of the host's result lists hold.

#include <corma/host.h>

#include <cstdint>
#include <string_view>

namespace corma::host {

/// The member of a node's value that is live.
enum class ResultMember : std::uint8_t
{
    none,
    text, // rstring, owned by the node
    real, // rreal
    point, // rpoint
    int16, // rint
    int32, // rlong
    int64, // mnInt64
    id, // rlname, an object id in its first half
    binary // rbinary, the bytes owned by the node
};

/// By a node's type: a result type such as RTSTR, or, in the chain of a record, a group code. The
/// code of a point is that of its x.
ResultMember resultMemberOf(int type);

/// A copy of a text that is freed by acutDelString(), or by acutRelRb() as part of a node. Null
/// when there is no memory.
ACHAR* heapCopy(std::wstring_view text);

} // namespace corma::host
