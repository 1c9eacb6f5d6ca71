#pragma once

#include "command.h"
#include <corma/host.h>

#include <optional>
#include <string>

namespace cfgctl {

/// The drawing of --drawing as the current document, for as long as the object lives.
class CurrentDrawing
{
public:
    /// Throws UsageError when the drawing cannot be opened. Without --drawing nothing is open.
    explicit CurrentDrawing(const Options& options);
    CurrentDrawing(const CurrentDrawing&) = delete;
    CurrentDrawing& operator=(const CurrentDrawing&) = delete;
    ~CurrentDrawing();

    /// Writes the drawing where the options want it, if it was changed. False when that fails,
    /// which the library tells.
    [[nodiscard]] bool saveIfChanged() const;

private:
    std::optional<std::wstring> m_saveAs; // empty: to its own file
};

/// A drawing that an option of that name brings in beside the current one. It is the caller's, who
/// closes it by corma::closeDatabase(). Throws UsageError when it cannot be read.
AcDbDatabase* openAside(const std::wstring& file, const std::string& option);

} // namespace cfgctl
