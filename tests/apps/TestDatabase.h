#pragma once

#include <string>

namespace corma::testing {

/// Makes an SQLite database, or adds to one, by statements; a failure fails the test.
void makeDatabase(const std::string& path, const char* statements);

/// Statements for a translation database in which WOOD has a word in each language.
inline constexpr const char* kWords
    = "CREATE TABLE Keys(Key TEXT,E TEXT,F TEXT,G TEXT,S TEXT,N TEXT);"
      "INSERT INTO Keys VALUES('WOOD','Wood','Bois','Holz','Madera','Hout'),"
      "('STEEL','Steel','Acier','Stahl','Acero','Staal')";

} // namespace corma::testing
