#pragma once

// Texts in DXF: characters that a file cannot hold as they are stand in it as escapes.
//   \U+XXXX   a UTF-16 code unit          \M+nXXXX   a character of the double-byte code page n
//   ^J        a control character         ^ and a space: "^" itself

#include "host/dxf/CodePage.h"

#include <string>
#include <string_view>

namespace corma::host::dxf {

/// The text that a value stands for. What is no escape stays as it stands.
std::wstring decodeText(std::string_view value, const CodePage& page);

/// A value, in one line and without zeros, that decodeText() makes the text from.
std::string encodeText(std::wstring_view text, const CodePage& page);

} // namespace corma::host::dxf
