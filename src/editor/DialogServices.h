#pragma once

#include <corma/host.h>

class QWidget;

namespace corma {

/// The window that new ones belong above: the dialog that waits for the user, else the window with
/// the focus; null for none. In the thread of the Qt application.
QWidget* windowInUse();

/// Services of a process with windows: what the user must see or answer comes in a window above the
/// one that is in use. In force from construction to destruction, in the thread of the Qt
/// application; all else, and what other threads send, goes to the services in force before.
class DialogServices : public Services
{
public:
    DialogServices();
    DialogServices(const DialogServices&) = delete;
    DialogServices& operator=(const DialogServices&) = delete;
    ~DialogServices() override;

    void print(const wchar_t* text) override;

    void alert(const wchar_t* text) override;

    /// The first button is the one that Enter presses; Escape gives the cautious answer.
    MessageAnswer messageBox(const wchar_t* text, const wchar_t* title, MessageIcon icon,
                             MessageButtons buttons) override;

    void fail(const wchar_t* text) override;

    /// Shows the palette of patterns.
    bool chooseHatchPattern(const HatchPatternQuestion& question, std::wstring& chosen) override;

    /// Opens the file with the program that the desktop has for it; without a file or such a
    /// program, shows a page of our own, which stays open while the user goes on.
    bool showHelp(const wchar_t* file) override;

    const wchar_t* moduleFile() override;
    const wchar_t* environment(const wchar_t* name) override;

private:
    Services& m_before;
    Services* m_former; // as setServices() wants it back
};

} // namespace corma
