#pragma once

#include "output.h"

#include <functional>
#include <string>
#include <string_view>

class xx_Inifile;

namespace cfgctl {

/// What one getter of the library gave; the value is null unless the status is RTNORM.
struct Reading
{
    int status = RTERROR;
    Json value;
};

using Reader = std::function<Reading(xx_Inifile& file, std::wstring& idents, int report)>;

/// The getter of a kind: "string", "int", "bool", "double", "doubles:N" and "ints:N" (at most N
/// numbers), "doubles=N" and "ints=N" (exactly N), "list:C" (texts between separators C). size is
/// that of the buffer for a string. Throws UsageError for any other kind.
Reader readerFor(std::wstring_view kind, int size);

} // namespace cfgctl
