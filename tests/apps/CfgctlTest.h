#pragma once

#include "RunProgram.h"
#include "support/SqliteFile.h"
#include "support/TempFolder.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>
#include <vector>

namespace corma::testing {

using Json = nlohmann::ordered_json;
using Words = std::vector<std::string>;

/// Statements for a translation database in which WOOD has a word in each language.
inline constexpr const char* kWords
    = "CREATE TABLE Keys(Key TEXT,E TEXT,F TEXT,G TEXT,S TEXT,N TEXT);"
      "INSERT INTO Keys VALUES('WOOD','Wood','Bois','Holz','Madera','Hout'),"
      "('STEEL','Steel','Acier','Stahl','Acero','Staal')";

/// The document of a command that stores settings, when all is stored.
inline constexpr const char* kStored = R"({"status":5100})";

/// What a command says that needs a drawing.
inline constexpr const char* kNoDrawing = "no drawing to work on; pass one with --drawing FILE";

/// Runs cfgctl in a folder of its own.
class CfgctlTest : public ::testing::Test
{
protected:
    ProgramResult run(const Words& arguments) const;

    /// The same by someone whom the mode of a file can keep out, which nothing does with root.
    ProgramResult runWithoutPrivilege(const Words& arguments) const;

    /// The value that `get` prints with these arguments, without its line end; "(none)" when it
    /// fails.
    std::string get(const Words& arguments) const;

    /// The document of a run with --json, which must be the only thing on standard output. Its
    /// text: keys count with their order.
    std::string json(Words arguments) const;

    /// Runs something that must be wrong usage: told in one line, with nothing on standard output
    /// and no file changed that the test wrote under these names. "$/" at the beginning of the
    /// message stands for the folder.
    void expectWrongUse(const Words& arguments, std::string message,
                        const Words& files = {"plan.dxf"}) const;

    /// Full path of a name in the folder, as the program tells it.
    std::string pathOf(std::string_view name) const;

    void write(std::string_view name, std::string_view bytes) const;

    std::string read(std::string_view name) const;

    /// Sets the mode bits of a file or folder.
    void setMode(std::string_view name, unsigned mode) const;

    /// When a file got its present content.
    std::filesystem::file_time_type timeOf(std::string_view name) const;

    /// Puts a copy of a drawing of the test data, such as "r2000", into the folder.
    void copyDrawing(const std::string& drawing, std::string_view name) const;

    /// The SQLite database of a name in the folder, which is made when there is none.
    SqliteFile database(std::string_view name) const;

    TempFolder folder;
    std::string workIn; // the current folder of the program; empty: the test's folder
    std::map<std::string, std::string> environment {{"ACAD", ""}};
};

} // namespace corma::testing
