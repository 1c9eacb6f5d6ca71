#pragma once

#include "cfgctl/console.h"

#include <string>
#include <vector>

namespace cfgdesk {

/// Sends what the library says to standard error, and shows it in a window as well: all that comes
/// at one go in one message box, a repeated line once. The editor shows its own questions itself.
class WindowServices : public cfgctl::ConsoleServices
{
public:
    WindowServices();

    void print(const wchar_t* text) override;

    /// Reaches these services only when the editor could not be shown.
    void alert(const wchar_t* text) override;

    [[nodiscard]] bool wasRefused() const { return m_wasRefused; }

    /// Shows now what was not shown yet. Makes a Qt application for it where there is none, so
    /// windows must be possible.
    void showRest();

private:
    void keepLines(std::wstring_view text);
    void showLines();

    std::vector<std::wstring> m_lines; // that are to be shown
    bool m_isDue = false; // they will be shown, or the box is open
    bool m_wasRefused = false;
};

} // namespace cfgdesk
