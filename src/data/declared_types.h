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
    std::string type; // empty when none is declared
};

/// The columns of a CREATE TABLE statement in SQLite's dialect, in UTF-8, in their order. None for
/// a virtual table and for CREATE TABLE AS.
///
/// A type is what SQLite tells of it but for its case: the words and the sizes behind them as they
/// stand, with what white space and comments are between them; of a type that begins with a quoted
/// word only that word, without its quotes; GENERATED ALWAYS does not belong to it.
///
/// Any text is taken, and only as much of a column is looked at as tells its name and type: what
/// comes behind that, up to the next comma, is passed over. Reading ends at the end of the list of
/// columns, at a constraint of the table, at an open quote, and where no name of a column follows.
/// The cost is linear.
std::vector<DeclaredColumn> declaredColumns(std::string_view createStatement);

} // namespace corma
