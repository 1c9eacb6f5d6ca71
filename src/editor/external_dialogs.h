#pragma once

// The dialogs for colours, visualisations, text styles and hatches. They stand in a library beside
// ours that only some programs have, and that is never loaded from here.

/// Edit a value in place, in a buffer of that many characters without the terminator. RTNORM when
/// the user accepted; RTERROR when the process does not have the dialog.
int xx_show_hatch_dialog(wchar_t* value, int capacity);
int xx_show_textinfo_dialog(wchar_t* value, int capacity);
int xx_show_visparam_dialog(wchar_t* value, int capacity);

/// Asks for a colour number. RTNORM with the chosen one, whatever the user did; RTERROR when the
/// process does not have the dialog.
int xx_show_color_dialog(int colour, int& chosen);
