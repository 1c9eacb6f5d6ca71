#pragma once

#include <string>
#include <string_view>

namespace cfgctl {

/// Text from UTF-8. A byte that is none becomes U+DC80 to U+DCFF, which is how the library keeps
/// such a byte in a path.
std::wstring toWide(std::string_view bytes);

/// The way back from toWide().
std::string toBytes(std::wstring_view text);

/// The text between double quotes, as it is shown in messages.
std::string quoted(std::wstring_view text);

/// The text with blanks in place of control characters, so that it is one line.
std::string withoutControls(std::string text);

} // namespace cfgctl
