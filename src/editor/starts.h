#pragma once

#include "editor/Desk.h"

namespace corma {

// What each way to start the editor means, by the arguments of the exported functions. A text that
// is null or empty is absent.

/// The language of a letter, which counts in upper case only.
int languageOfLetter(wchar_t letter);

DeskStart plainStart(const wchar_t* iniFile, int language, const wchar_t* projectFile,
                     CfgDeskCallback callback);

DeskStart cleanStart(const wchar_t* iniFile, int language);

/// A drawing, with the file of a project and of a picture.
struct DrawingArguments
{
    AcApDocument* document = nullptr;
    const wchar_t* projectFile = nullptr;
    const wchar_t* bitmapFile = nullptr;
};

DeskStart drawingStart(const wchar_t* iniFile, int language, const DrawingArguments& arguments);

/// A drawing in a chosen mode. With neither flag it is the same as one without files.
struct ModeArguments
{
    AcApDocument* document = nullptr;
    bool startLocal = false;
    bool startProject = false;
};

DeskStart drawingStart(const wchar_t* iniFile, int language, const ModeArguments& arguments);

/// Shows the editor until the user closes it.
void runDesk(const DeskStart& start, short accessLevel);

} // namespace corma
