#pragma once

// Long texts come in pieces.

#include "data/odbc/handles.h"

#include <cstddef>
#include <span>

namespace corma::odbc {

/// What came of a text in one piece.
struct Piece
{
    std::size_t count = 0; // units
    bool isLast = true;
};

/// What a driver has put into a zeroed buffer. `length` is that of all the rest, in bytes; a
/// negative one means that the driver does not know.
template<class Unit> Piece pieceIn(std::span<const Unit> buffer, SQLLEN length)
{
    const std::size_t room = buffer.size() - 1; // the driver puts a terminator behind it
    const std::size_t rest = static_cast<std::size_t>(length) / sizeof(Unit);
    if (length >= 0 && rest <= room) {
        return {.count = rest, .isLast = true};
    }
    // A driver may leave places free so that no character is cut: they are still zero.
    std::size_t count = room;
    while (count > 0 && buffer[count - 1] == Unit {}) {
        --count;
    }
    return {.count = count, .isLast = count == 0 || (length < 0 && count < room)};
}

} // namespace corma::odbc
