#include "editor/external_dialogs.h"

#include "host/host.h"
#include "platform/platform.h"

namespace {

constexpr const wchar_t* kLibrary = L"xx_corma_dotnet_acad.dll";

template<class Function> Function functionOf(const char* decoratedName)
{
    return reinterpret_cast<Function>(corma::platform::loadedFunction(kLibrary, decoratedName));
}

int edit(const char* decoratedName, wchar_t* value, int capacity)
{
    const auto dialog = functionOf<int (*)(wchar_t*, int)>(decoratedName);
    return dialog == nullptr ? RTERROR : dialog(value, capacity);
}

} // namespace

int xx_show_hatch_dialog(wchar_t* value, int capacity)
{
    return edit("?xx_show_hatch_dialog@@YAHPEA_WH@Z", value, capacity);
}

int xx_show_textinfo_dialog(wchar_t* value, int capacity)
{
    return edit("?xx_show_textinfo_dialog@@YAHPEA_WH@Z", value, capacity);
}

int xx_show_visparam_dialog(wchar_t* value, int capacity)
{
    return edit("?xx_show_visparam_dialog@@YAHPEA_WH@Z", value, capacity);
}

int xx_show_color_dialog(int colour, int& chosen)
{
    const auto dialog = functionOf<int (*)(int)>("?xx_show_color_dialog@@YAHH@Z");
    if (dialog == nullptr) {
        return RTERROR;
    }
    chosen = dialog(colour);
    return RTNORM;
}
