#include "editor/external_dialogs.h"

#include "host/host.h"
#include "platform/platform.h"

#include <utility>

namespace {

constexpr const wchar_t* kLibrary = L"xx_corma_dotnet_acad.dll";

template<class Function> Function functionOf(const char* decoratedName)
{
    return reinterpret_cast<Function>(corma::platform::loadedFunction(kLibrary, decoratedName));
}

corma::OwnDialogs*& ownDialogs()
{
    static corma::OwnDialogs* dialogs = nullptr;
    return dialogs;
}

using Edit = int (corma::OwnDialogs::*)(wchar_t* value, int capacity);

int edit(const char* decoratedName, Edit own, wchar_t* value, int capacity)
{
    if (const auto dialog = functionOf<int (*)(wchar_t*, int)>(decoratedName)) {
        return dialog(value, capacity);
    }
    return ownDialogs() == nullptr ? RTERROR : (ownDialogs()->*own)(value, capacity);
}

} // namespace

int xx_show_hatch_dialog(wchar_t* value, int capacity)
{
    return edit("?xx_show_hatch_dialog@@YAHPEA_WH@Z", &corma::OwnDialogs::editHatch, value,
                capacity);
}

int xx_show_textinfo_dialog(wchar_t* value, int capacity)
{
    return edit("?xx_show_textinfo_dialog@@YAHPEA_WH@Z", &corma::OwnDialogs::editTextStyle, value,
                capacity);
}

int xx_show_visparam_dialog(wchar_t* value, int capacity)
{
    return edit("?xx_show_visparam_dialog@@YAHPEA_WH@Z", &corma::OwnDialogs::editVisualisation,
                value, capacity);
}

int xx_show_color_dialog(int colour, int& chosen)
{
    if (const auto dialog = functionOf<int (*)(int)>("?xx_show_color_dialog@@YAHH@Z")) {
        chosen = dialog(colour);
        return RTNORM;
    }
    return ownDialogs() == nullptr ? RTERROR : ownDialogs()->chooseColour(colour, chosen);
}

corma::OwnDialogs* corma::setOwnDialogs(OwnDialogs* replacement)
{
    return std::exchange(ownDialogs(), replacement);
}
