#pragma once

#include <corma/host.h>

#include <string>

namespace corma {

/// The title of the message boxes of the editor and its model.
inline constexpr const wchar_t* kEditorTitle = L"CfgDesk";

/// Shows a message box with one button.
inline void showMessage(const std::wstring& text, MessageIcon icon)
{
    services().messageBox(text.c_str(), kEditorTitle, icon, MessageButtons::ok);
}

} // namespace corma
