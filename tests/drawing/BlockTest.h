#pragma once

#include "host/host.h"
#include "support/CloneDrawing.h"
#include "support/OpenObjects.h"
#include "support/RecordingServices.h"
#include "support/TempFolder.h"

#include <string>
#include <string_view>

namespace corma::testing {

/// A test on drawing files in a folder of its own. That has the folders "module" (the module's),
/// "support" (on the support path) and "here" (the current one).
class BlockTest : public OpenObjects
{
protected:
    BlockTest();

    /// A drawing file of R12 with a line of a length in its model space: the length tells it apart.
    static std::string lineDrawing(int length);

    /// A drawing file of R12 with a block that is such a line.
    static std::string lineLibrary(std::string_view block, int length);

    /// What a block is that was loaded from one of them; see CloneDrawing::content().
    static std::string line(int length);

    /// A drawing file of a version from groups as lines of a code and a value.
    static std::string drawingOf(const DrawingText& text);

    /// Copies a drawing of the test data, such as "r2000". Returns the path.
    std::wstring copyData(const std::string& drawing, std::wstring_view name) const;

    /// All messages printed so far, one behind the other, and nothing of them from now on.
    std::string printed();

    /// All alerts so far with "|" between, and nothing of them from now on.
    std::string alerts();

    RecordingServices services;
    TempFolder folder;
    CurrentFolder here {folder.makeFolder(L"here")};
};

} // namespace corma::testing
