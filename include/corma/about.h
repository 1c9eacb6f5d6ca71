#pragma once

// The about box that client applications of the library show: name, version, date and copyright of
// their module, the version of their menu file, and a list of what they run on.
//
// The box is shown by the thread of the user interface and closed by the user before a call
// returns. In a process without a Qt application one is made for that time. Where no window can be
// shown a message tells so, and nothing else happens. No call fails: what cannot be read is empty
// in the box or says so there.
//
// What the box tells of a module is its version note (corma/version_note.h) and the time of its
// file. Labels are English; the link to the support has the language of the texts (corma/texts.h).

#include <corma/export.h>

#include <string>
#include <vector>

class QImage;

/// Rows of the list. The cells of a row have tabs between them, and several tabs part as one does,
/// so that no cell can be empty. A row without text is left out. There are five columns:
/// "Hard-/Software", "Number", "Name", "Success" and one without a heading; what is behind the
/// fifth cell is not shown.
using CStringArray = std::vector<std::wstring>;

// The bitmap is a picture of the application; null for none. It is read while the call lasts,
// shown in its proportions, and smaller where it is large.

/// For the module of the application. There is no menu, "N/A", and there are no rows.
CORMA_EXPORT void xx_show_about(const QImage* bitmap);

/// For the module of the application. The menu file is looked for as xx_findfile_arx() does; one
/// that is not found is reported, and the box says "(menu file not found)". Its version stands in
/// its first line with _MENUVERSION: behind that and two more characters, up to a double quote.
CORMA_EXPORT void xx_show_about(const wchar_t* menuFile, const CStringArray& rows,
                                const QImage* bitmap);

/// For another module, by the path of its file, which need not be loaded; null or empty stands for
/// that of the application.
CORMA_EXPORT void xx_show_about(const wchar_t* menuFile, const CStringArray& rows,
                                const QImage* bitmap, const wchar_t* moduleFile);

/// For the module of the application, with this version of the menu; no menu file is read.
CORMA_EXPORT void xx_show_about_internal(const wchar_t* menuVersion, const CStringArray& rows,
                                         const QImage* bitmap);
