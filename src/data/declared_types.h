#pragma once

// Types of columns as the statement that made a table spells them. SQLite itself gives the standard
// ones in capitals since its version 3.37, however they were declared.

#include <string>
#include <string_view>
#include <vector>

namespace corma {

struct DeclaredColumn
{
    std::string name; // without its quotes
    std::string type; // without quotes around the whole of it; a comment or white space between
                      // its words becomes one blank; empty when none is declared
};

/// The columns of a CREATE TABLE statement in SQLite's dialect, in UTF-8, in their order; names and
/// types as they are spelled. Constraints of the table are left out, and so are columns behind the
/// first place where the text is no such statement. Any text is taken; the cost is linear.
std::vector<DeclaredColumn> declaredColumns(std::string_view createStatement);

} // namespace corma
