#pragma once

// editor/ - CfgDesk, the settings editor, as programs start it.
//
// Each start shows the editor on a configuration file and returns when the user has closed it. What
// the user changes is written at once, so a start has no result; problems are told to the user.
// The read caches of the process are empty afterwards, so that a lookup finds what was written.
//
// A start must come from the thread of the user interface. In a process without a Qt application it
// makes one for as long as it lasts. Where no window can be shown it tells so and does nothing.
//
// Languages are numbers: 7 German, 9 English, 10 Spanish, 12 French, 19 Dutch, 21 Polish,
// 25 Russian; any other one has English texts. Or letters: 'G' German, 'S' Spanish, 'F' French,
// 'N' Dutch, any other one English. The language stays that of the texts of the process.
//
// A configuration file named without a dot and with a folder has ".ini" behind it; a bare name is
// that of a file in the current folder, as it stands. Null or empty texts for other files stand for
// none. No text is changed or kept.

#include <corma/export.h>

class AcApDocument;

/// Asked before a value of the dialog for plain settings is taken: 0 refuses it. It gets the text
/// of the value's field, the name of the setting and the label of its type. For yes/no and options
/// the field is hidden and still has the former value.
using CfgDeskCallback
    = int (*)(const wchar_t* value, const wchar_t* name, const wchar_t* typeLabel);

/// On the file alone, or with a project file on top, which is made where there is none.
CORMA_EXPORT void xx_startCfgDesk(wchar_t* iniFile, int language);
CORMA_EXPORT void xx_startCfgDesk(wchar_t* iniFile, int language, wchar_t* projectFile,
                                  CfgDeskCallback callback);
CORMA_EXPORT void xx_startCfgDesk(wchar_t* iniFile, wchar_t languageLetter, wchar_t* projectFile,
                                  CfgDeskCallback callback);

/// On the global values only, without menu, New buttons and help.
CORMA_EXPORT void xx_startCfgDeskClean(wchar_t* iniFile, int language);

/// With the values of a drawing on top, and those of the project file in its folder if there is
/// one; a project file that is passed is not looked at. The bitmap is shown for settings without a
/// picture. A null document is none: the start is then one on the file alone, or with the project.
CORMA_EXPORT void xx_startCfgDeskFromDwg(wchar_t* iniFile, AcApDocument* document, int language,
                                         wchar_t* projectFile, wchar_t* bitmapFile);
CORMA_EXPORT void xx_startCfgDeskFromDwg(wchar_t* iniFile, AcApDocument* document,
                                         wchar_t languageLetter, wchar_t* projectFile,
                                         wchar_t* bitmapFile);

/// The same in a chosen mode: with startLocal the drawing without the project, with startProject
/// the project without the drawing, with both the global values only; with neither as above.
CORMA_EXPORT void xx_startCfgDeskFromDwg(wchar_t* iniFile, AcApDocument* document, int language,
                                         bool startLocal, bool startProject);
CORMA_EXPORT void xx_startCfgDeskFromDwg(wchar_t* iniFile, AcApDocument* document,
                                         wchar_t languageLetter, bool startLocal,
                                         bool startProject);

/// The access level of the user in all later starts of the process; 0 until it is set. Settings
/// that want a higher one are not shown, or cannot be changed.
CORMA_EXPORT void xx_setAccessLevel(short level);

/// Asks the user for a hatch pattern in the host's palette. The pattern is the one that is selected
/// first; with the flag set, the user's own patterns are offered as well. The name that the host
/// hands back, chosen or not, is copied to result, cut to resultSize characters with its
/// terminator. False when the user cancelled, or no window could be shown.
CORMA_EXPORT bool xx_showHatchPalleteDialog(const wchar_t* pattern, bool flag, wchar_t* result,
                                            int resultSize);
