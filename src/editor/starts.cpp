#include "editor/starts.h"

#include "editor/CCfgDeskExeDlg.h"
#include "editor/DialogServices.h"
#include "editor/EditorApplication.h"
#include "editor/UserPreferences.h"
#include "foundation/wide_text.h"

namespace corma {

namespace {

std::optional<std::wstring> given(const wchar_t* text)
{
    const std::wstring_view seen = view(text);
    return seen.empty() ? std::nullopt : std::optional<std::wstring>(seen);
}

StartRequest requestOf(const wchar_t* iniFile, int language)
{
    return {.iniFile = std::wstring(view(iniFile)), .language = language};
}

} // namespace

int languageOfLetter(wchar_t letter)
{
    switch (letter) {
    case L'N':
        return 19;
    case L'F':
        return 12;
    case L'G':
        return 7;
    case L'S':
        return 10;
    default:
        return kEnglish;
    }
}

DeskStart plainStart(const wchar_t* iniFile, int language, const wchar_t* projectFile,
                     CfgDeskCallback callback)
{
    DeskStart start {.request = requestOf(iniFile, language), .callback = callback};
    start.request.projectFile = given(projectFile);
    return start;
}

DeskStart cleanStart(const wchar_t* iniFile, int language)
{
    return {.request = requestOf(iniFile, language),
            .startLocal = true,
            .startProject = true,
            .clean = true};
}

DeskStart drawingStart(const wchar_t* iniFile, int language, const DrawingArguments& arguments)
{
    DeskStart start {.request = requestOf(iniFile, language),
                     .defaultBitmap = given(arguments.bitmapFile).value_or(L"")};
    start.request.projectFile = given(arguments.projectFile);
    start.request.document = arguments.document;
    return start;
}

DeskStart drawingStart(const wchar_t* iniFile, int language, const ModeArguments& arguments)
{
    DeskStart start {.request = requestOf(iniFile, language),
                     .startLocal = arguments.startLocal,
                     .startProject = arguments.startProject};
    start.request.document = arguments.document;
    return start;
}

void runDesk(const DeskStart& start, short accessLevel)
{
    const EditorApplication application(start.request.language);
    if (!application.isReady()) {
        return;
    }
    const DialogServices dialogs;
    UserPreferences preferences;
    CCfgDeskExeDlg desk(start, preferences, windowInUse());
    desk.setAccessLevel(accessLevel);
    desk.exec();
}

} // namespace corma
