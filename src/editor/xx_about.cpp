// The exported about box.

#include "controls/AboutBox.h"
#include "controls/xx_aboutDlg.h"
#include "editor/DialogServices.h"
#include "editor/EditorApplication.h"
#include "foundation/at_boundary.h"
#include "foundation/wide_text.h"
#include "host/host.h"
#include <corma/about.h>
#include <corma/texts.h>

namespace {

constexpr const wchar_t* kAboutSource = L"xx_about.cpp";

// The menu version is asked for when the box can be shown, so that without a window nothing is
// reported but that.
template<class MenuVersion>
void show(MenuVersion menuVersion, const CStringArray& rows, const QImage* bitmap,
          const wchar_t* moduleFile)
{
    corma::atBoundary(kAboutSource, __LINE__, RTERROR, [&] {
        const corma::EditorApplication application(corma::textLanguage(), L"The about box");
        if (!application.isReady()) {
            return RTCAN;
        }
        const corma::DialogServices dialogs;
        corma::AboutBox box;
        box.menuVersion = menuVersion();
        box.readModule(moduleFile);
        box.setRows(rows);
        xx_aboutDlg(box, bitmap, corma::windowInUse()).exec();
        return RTNORM;
    });
}

} // namespace

void xx_show_about(const QImage* bitmap)
{
    xx_show_about_internal(corma::kNoMenu, {}, bitmap);
}

void xx_show_about(const wchar_t* menuFile, const CStringArray& rows, const QImage* bitmap)
{
    xx_show_about(menuFile, rows, bitmap, nullptr);
}

void xx_show_about(const wchar_t* menuFile, const CStringArray& rows, const QImage* bitmap,
                   const wchar_t* moduleFile)
{
    show([=] { return corma::versionOfMenu(menuFile); }, rows, bitmap, moduleFile);
}

void xx_show_about_internal(const wchar_t* menuVersion, const CStringArray& rows,
                            const QImage* bitmap)
{
    show([=] { return std::wstring(corma::view(menuVersion)); }, rows, bitmap, nullptr);
}
