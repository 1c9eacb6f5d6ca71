#include "settings/SettingType.h"

#include "settings/texts.h"

#include <algorithm>
#include <array>

namespace corma {

namespace {

struct TypeRow
{
    SettingType type;
    char letter;
    int label;
};

constexpr std::array kTypes = {
    TypeRow {SettingType::yesNo, 't', row::kYesNo},
    TypeRow {SettingType::integer, 'i', row::kInteger},
    TypeRow {SettingType::decimal, 'd', row::kDecimal},
    TypeRow {SettingType::colour, 'k', row::kColour},
    TypeRow {SettingType::linetype, 'l', row::kLinetype},
    TypeRow {SettingType::file, 'b', row::kFile},
    TypeRow {SettingType::visualisation, 'v', row::kVisualisation},
    TypeRow {SettingType::obsolete, 'o', row::kObsolete},
    TypeRow {SettingType::textStyle, 'x', row::kTextStyle},
    TypeRow {SettingType::hatch, 'h', row::kHatch},
    TypeRow {SettingType::option, 'c', row::kOption},
    TypeRow {SettingType::openOption, 'q', row::kOption},
};

} // namespace

SettingType typeOfLetter(char letter)
{
    const auto* const found = std::find_if(
        kTypes.begin(), kTypes.end(), [&](const TypeRow& row) { return row.letter == letter; });
    return found == kTypes.end() ? SettingType::string : found->type;
}

int labelRowOf(SettingType type)
{
    const auto* const found = std::find_if(kTypes.begin(), kTypes.end(),
                                           [&](const TypeRow& row) { return row.type == type; });
    return found == kTypes.end() ? row::kString : found->label;
}

} // namespace corma
