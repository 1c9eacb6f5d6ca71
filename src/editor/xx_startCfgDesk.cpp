// The exported starts of the editor.

#include "editor/DialogServices.h"
#include "editor/EditorApplication.h"
#include "editor/starts.h"
#include "foundation/at_boundary.h"
#include "foundation/wide_text.h"
#include "host/host.h"
#include <corma/IniBuffer.h>
#include <corma/cfgdesk.h>

namespace {

constexpr const wchar_t* kStartCfgDeskSource = L"xx_startCfgDesk.cpp";

short& accessLevel()
{
    static short level = 0;
    return level;
}

// What applications looked up before may have been edited meanwhile.
class EmptyCacheBehind
{
public:
    EmptyCacheBehind() = default;
    EmptyCacheBehind(const EmptyCacheBehind&) = delete;
    EmptyCacheBehind& operator=(const EmptyCacheBehind&) = delete;

    ~EmptyCacheBehind() { IniBuffer::clear(); }
};

template<class MakeStart> void startDesk(MakeStart makeStart)
{
    const EmptyCacheBehind cache;
    corma::atBoundary(kStartCfgDeskSource, __LINE__, RTERROR, [&] {
        corma::runDesk(makeStart(), accessLevel());
        return RTNORM;
    });
}

// Without a window nothing is asked, and the pattern stays.
bool askPattern(const wchar_t* pattern, bool showCustom, std::wstring& chosen)
{
    const corma::EditorApplication application(corma::textLanguage());
    if (!application.isReady()) {
        chosen = corma::view(pattern);
        return false;
    }
    const corma::DialogServices dialogs;
    ACHAR* text = nullptr;
    const bool isChosen = acedHatchPalletteDialog(pattern, showCustom, text);
    chosen = corma::view(text);
    acutDelString(text);
    return isChosen;
}

} // namespace

void xx_startCfgDesk(wchar_t* iniFile, int language)
{
    xx_startCfgDesk(iniFile, language, nullptr, nullptr);
}

void xx_startCfgDesk(wchar_t* iniFile, int language, wchar_t* projectFile, CfgDeskCallback callback)
{
    startDesk([=] { return corma::plainStart(iniFile, language, projectFile, callback); });
}

void xx_startCfgDesk(wchar_t* iniFile, wchar_t languageLetter, wchar_t* projectFile,
                     CfgDeskCallback callback)
{
    xx_startCfgDesk(iniFile, corma::languageOfLetter(languageLetter), projectFile, callback);
}

void xx_startCfgDeskClean(wchar_t* iniFile, int language)
{
    startDesk([=] { return corma::cleanStart(iniFile, language); });
}

void xx_startCfgDeskFromDwg(wchar_t* iniFile, AcApDocument* document, int language,
                            wchar_t* projectFile, wchar_t* bitmapFile)
{
    startDesk([=] {
        return corma::drawingStart(iniFile, language,
                                   corma::DrawingArguments {.document = document,
                                                            .projectFile = projectFile,
                                                            .bitmapFile = bitmapFile});
    });
}

void xx_startCfgDeskFromDwg(wchar_t* iniFile, AcApDocument* document, wchar_t languageLetter,
                            wchar_t* projectFile, wchar_t* bitmapFile)
{
    xx_startCfgDeskFromDwg(iniFile, document, corma::languageOfLetter(languageLetter), projectFile,
                           bitmapFile);
}

void xx_startCfgDeskFromDwg(wchar_t* iniFile, AcApDocument* document, int language, bool startLocal,
                            bool startProject)
{
    startDesk([=] {
        return corma::drawingStart(iniFile, language,
                                   corma::ModeArguments {.document = document,
                                                         .startLocal = startLocal,
                                                         .startProject = startProject});
    });
}

void xx_startCfgDeskFromDwg(wchar_t* iniFile, AcApDocument* document, wchar_t languageLetter,
                            bool startLocal, bool startProject)
{
    xx_startCfgDeskFromDwg(iniFile, document, corma::languageOfLetter(languageLetter), startLocal,
                           startProject);
}

void xx_setAccessLevel(short level)
{
    accessLevel() = level;
}

bool xx_showHatchPalleteDialog(const wchar_t* pattern, bool flag, wchar_t* result, int resultSize)
{
    return corma::atBoundary(kStartCfgDeskSource, __LINE__, false, [&] {
        std::wstring chosen;
        const bool isChosen = askPattern(pattern, flag, chosen);
        if (result != nullptr && resultSize > 0) {
            corma::copyBounded(result, static_cast<std::size_t>(resultSize), chosen);
        }
        return isChosen;
    });
}
