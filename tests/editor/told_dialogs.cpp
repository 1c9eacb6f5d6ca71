// The library of dialogs beside ours, as far as a linker of this system can make it: a name may
// have no "@" in it, so a "$" stands for each.

#include "editor/told_dialogs.h"

#include <algorithm>

using corma::testing::ToldDialogs;

extern "C" {

ToldDialogs toldDialogs;

int showHatch(wchar_t* value, int capacity) __asm__("\"?xx_show_hatch_dialog$$YAHPEA_WH$Z\"");
int showText(wchar_t* value, int capacity) __asm__("\"?xx_show_textinfo_dialog$$YAHPEA_WH$Z\"");
int showVisual(wchar_t* value, int capacity) __asm__("\"?xx_show_visparam_dialog$$YAHPEA_WH$Z\"");
int showColour(int colour) __asm__("\"?xx_show_color_dialog$$YAHH$Z\"");
}

namespace {

int show(const char* dialog, wchar_t* value, int capacity)
{
    toldDialogs.called = dialog;
    ++toldDialogs.calls;
    toldDialogs.capacity = capacity;
    // The terminator is not counted in the capacity.
    std::copy_n(value, capacity + 1, toldDialogs.given.begin());
    std::copy_n(toldDialogs.answer.begin(), capacity + 1, value);
    return toldDialogs.status;
}

} // namespace

int showHatch(wchar_t* value, int capacity)
{
    return show("hatch", value, capacity);
}

int showText(wchar_t* value, int capacity)
{
    return show("text", value, capacity);
}

int showVisual(wchar_t* value, int capacity)
{
    return show("visual", value, capacity);
}

int showColour(int colour)
{
    toldDialogs.called = "colour";
    ++toldDialogs.calls;
    toldDialogs.givenColour = colour;
    return toldDialogs.colour;
}
