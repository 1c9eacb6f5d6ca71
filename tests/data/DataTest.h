#pragma once

#include "support/RecordingServices.h"
#include "support/SqliteFile.h"
#include "support/TempFolder.h"
#include <corma/xx_Var.h>
#include <corma/xx_ado.h>

#include <gtest/gtest.h>
#include <string>

namespace corma::testing {

using Messages = std::vector<std::wstring>;

/// A result in UTF-8, one line a column with its type and its values:
///
///     Naam text: Deur|Raam
///     Breedte long: 3|-4
std::string columnsOf(const xx_VarArray& result);

/// Tests with databases in a folder of their own. No connection is left open by one.
class DataTest : public ::testing::Test
{
protected:
    DataTest() { xx_ado_close_all(); }

    ~DataTest() override { xx_ado_close_all(); }

    /// Makes a database by statements in UTF-8. Returns its path.
    std::wstring database(std::wstring_view name, const std::string& statements) const;

    /// Runs a statement into `result`, whose columns it gives; `status` is that of the call.
    std::string select(const std::wstring& connection, const std::wstring& sql, int maximumRows = 0,
                       bool isDebug = false);

    /// What was shown since the last look, a line each with "~" for the folder, and without the
    /// line ends that part messages.
    std::string shown();

    RecordingServices services;
    TempFolder folder;
    xx_VarArray result;
    int status = 0;
};

} // namespace corma::testing
