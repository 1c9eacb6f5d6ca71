#pragma once

// The dialogs for colours, visualisations, text styles and hatches. Some programs have them in a
// library beside ours, which is never loaded from here; where it is in the process it goes first.
// Else they are our own, while an editor offers them.

/// Edit a value in place, in a buffer of that many characters without the terminator. RTNORM when
/// the user accepted; RTERROR when there is no such dialog.
int xx_show_hatch_dialog(wchar_t* value, int capacity);
int xx_show_textinfo_dialog(wchar_t* value, int capacity);
int xx_show_visparam_dialog(wchar_t* value, int capacity);

/// Asks for a colour number. RTNORM with the chosen one, which by the other library's dialog is
/// told whatever the user did; RTERROR when there is no such dialog. Else, as when the user cancels
/// ours, `chosen` stays as it was.
int xx_show_color_dialog(int colour, int& chosen);

namespace corma {

/// The dialogs that an editor offers. The statuses are those above; RTCAN when the user cancels.
class OwnDialogs
{
public:
    OwnDialogs() = default;
    OwnDialogs(const OwnDialogs&) = delete;
    OwnDialogs& operator=(const OwnDialogs&) = delete;
    virtual ~OwnDialogs() = default;

    virtual int editHatch(wchar_t* value, int capacity) = 0;
    virtual int editTextStyle(wchar_t* value, int capacity) = 0;
    virtual int editVisualisation(wchar_t* value, int capacity) = 0;
    virtual int chooseColour(int colour, int& chosen) = 0;
};

/// Installs them and returns the former ones, null for none. The caller keeps ownership; null takes
/// them away.
OwnDialogs* setOwnDialogs(OwnDialogs* replacement);

} // namespace corma
