#pragma once

#include <ostream>
#include <string>

namespace cfgdesk {

/// A drawing that is the current document for the life of the object.
class CurrentDrawing
{
public:
    /// Throws cfgctl::UsageError when it cannot be read, with `advice` behind the reason.
    CurrentDrawing(const std::wstring& name, const char* advice);
    CurrentDrawing(const CurrentDrawing&) = delete;
    CurrentDrawing& operator=(const CurrentDrawing&) = delete;
    ~CurrentDrawing();

    /// Saves it when it was changed, and tells so. False when it could not be saved, which the
    /// library tells.
    [[nodiscard]] bool saveIfChanged(std::ostream& out) const;

private:
    std::wstring m_name;
};

} // namespace cfgdesk
