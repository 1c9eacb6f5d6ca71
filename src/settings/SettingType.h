#pragma once

#include <string_view>

/// What a setting is, which decides how its value is checked and edited. The numbers are fixed:
/// programs see them.
enum class SettingType : unsigned
{
    string = 0,
    yesNo = 1, // "1" or "0"
    integer = 2,
    decimal = 3,
    colour = 4, // a colour number
    linetype = 5,
    file = 6,
    visualisation = 7, // the text of an xx_VisParam
    obsolete = 8, // shown, not edited
    textStyle = 9, // the text of an xx_TextInfo
    hatch = 10, // the text of an xx_VisHatchInfo
    option = 11, // one of the choices
    openOption = 12 // one of the choices, or any text
};

namespace corma {

/// The type that a letter of a definitions file stands for; string for any other letter.
SettingType typeOfLetter(char letter);

/// The row of the text table with the label of a type.
int labelRowOf(SettingType type);

} // namespace corma
