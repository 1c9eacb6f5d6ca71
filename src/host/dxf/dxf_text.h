#pragma once

// Texts in DXF: characters that a file cannot hold as they are stand in it as escapes.
//   \U+XXXX   a UTF-16 code unit          \M+nXXXX   a character of the double-byte code page n
//   ^J        a control character         ^ and a space: "^" itself; both in text files only

#include "host/dxf/CodePage.h"

#include <string>
#include <string_view>

namespace corma::host::dxf {

/// What "^" is. A binary file holds control characters as they are, so there it is nothing but
/// itself.
enum class Caret : unsigned char
{
    escapes,
    isItself
};

/// The text that a value stands for. What is no escape stays as it stands.
std::wstring decodeText(std::string_view value, const CodePage& page, Caret caret = Caret::escapes);

/// A value without zeros, and in one line where carets escape, that decodeText() makes the text
/// from.
std::string encodeText(std::wstring_view text, const CodePage& page, Caret caret = Caret::escapes);

} // namespace corma::host::dxf
