#include "settings/reference_setting.h"

#include "inifile/numbers.h"
#include "platform/text.h"

#include <algorithm>

namespace corma::testing {

SettingContents newSetting(const std::wstring& name, const std::wstring& value)
{
    SettingContents setting;
    setting.name = name;
    setting.value = value;
    setting.globalValue = L"***KV_BESTAAT_NIET***";
    setting.projectValue = L"***KV_BESTAAT_NIET***";
    return setting;
}

// --- levels ------------------------------------------------------------------------------------

void setProjectValue(SettingContents& setting, const std::wstring& text)
{
    setting.globalValue = setting.value;
    setting.value = text;
    setting.isProject = true;
    setting.isLocal = false;
}

void setLocalValue(SettingContents& setting, const std::wstring& text)
{
    if (setting.isProject) {
        setting.projectValue = setting.value;
    } else {
        setting.globalValue = setting.value;
    }
    setting.value = text;
    setting.isProject = false;
    setting.isLocal = true;
}

void makeProjectCopy(SettingContents& setting)
{
    setting.globalValue = setting.value;
    setting.isProject = true;
    setting.isLocal = false;
    setProjectValue(setting, std::wstring(setting.value));
}

void makeLocalCopy(SettingContents& setting)
{
    if (setting.projectValue != L"***KV_BESTAAT_NIET***") {
        setting.globalValue = setting.value;
    } else {
        setting.projectValue = setting.value;
    }
    setting.isLocal = true;
    setting.isProject = false;
    setLocalValue(setting, std::wstring(setting.value));
}

int levelMark(const SettingContents& setting)
{
    const bool isGlobals = setting.value == setting.globalValue;
    const bool isProjects = setting.value == setting.projectValue;
    if (setting.isProject) {
        return isGlobals ? 3 : 1;
    }
    if (!setting.isLocal) {
        return 0;
    }
    if (isGlobals) {
        return isProjects ? 6 : 4;
    }
    return isProjects ? 5 : 2;
}

// --- lists and values ----------------------------------------------------------------------------

namespace {

bool contains(const std::wstring& text, const std::wstring& part)
{
    return text.find(part) != std::wstring::npos;
}

bool passesSearch(const SettingContents& setting, const std::wstring& search)
{
    const std::wstring whole = lowerCase(search);
    const std::size_t plus = whole.rfind(L'+');
    const std::wstring left = plus == std::wstring::npos ? whole : whole.substr(0, plus);
    const std::wstring right = plus == std::wstring::npos ? whole : whole.substr(plus + 1);
    for (const std::wstring& text :
         {lowerCase(setting.name), lowerCase(setting.shortDescription)}) {
        if (contains(text, whole) || contains(text, left) || contains(text, right)) {
            return true;
        }
    }
    return false;
}

// Nothing for no row.
std::optional<int> statusOf(const SettingContents& setting, ShownLevels shown)
{
    if (setting.type == 8) {
        return 7;
    }
    if (setting.readOnly == L"true") {
        return 8;
    }
    const bool isShown = setting.isProject ? shown.project
        : setting.isLocal                  ? shown.local
                                           : shown.global;
    return isShown ? std::optional(levelMark(setting)) : std::nullopt;
}

std::wstring shownValue(const SettingContents& setting)
{
    if (setting.type == 1) {
        return setting.value == L"0" ? L"No" : L"Yes";
    }
    return setting.type == 11 || setting.type == 12 ? L"<" + setting.value + L">" : setting.value;
}

bool keepOnly(std::wstring& value, const std::wstring& characters)
{
    std::wstring kept;
    for (const wchar_t c : value) {
        if (contains(characters, std::wstring(1, c))) {
            kept += c;
        }
    }
    const bool isSame = kept == value;
    value = kept;
    return isSame;
}

// The pieces between commas, however many of them stand together.
std::vector<std::wstring> tokensOf(const std::wstring& text)
{
    std::vector<std::wstring> tokens(1);
    for (const wchar_t c : text) {
        if (c != L',') {
            tokens.back() += c;
        } else if (!tokens.back().empty()) {
            tokens.emplace_back();
        }
    }
    return tokens;
}

bool validateHatch(std::wstring& value, std::vector<std::wstring>& boxes)
{
    std::size_t position = 0;
    for (int i = 0; i < 5; ++i) {
        position = value.find(L',', position) + 1; // 0 when nothing is found
    }
    const std::vector<std::wstring> tokens = tokensOf(value.substr(position));
    const int angle = tokens.empty() ? 0 : toInt(tokens[0]);
    const int scale = tokens.size() < 2 ? 0 : toInt(tokens[1]);
    const bool isAngle = angle >= 0 && angle <= 360;
    if (!isAngle) {
        boxes.emplace_back(L"The degrees of the angle must lie between 0\xB0 and 360\xB0");
    }
    if (scale < 0) {
        boxes.emplace_back(L"The scale must be positif");
    }
    if (!isAngle && scale < 0) {
        value.clear();
    }
    return isAngle && scale >= 0;
}

} // namespace

std::vector<SettingRow> fillRows(CategoryContents& category,
                                 const std::optional<std::wstring>& search, short access,
                                 ShownLevels shown)
{
    static const std::vector<std::wstring> labels
        = {L"String",        L"Yes/No",   L"Integer",   L"Decimal", L"Colour", L"Linetype", L"File",
           L"Visualisation", L"Obsolete", L"Textstyle", L"Hatch",   L"Option", L"Option"};
    std::vector<SettingRow> rows;
    for (SettingContents& setting : category.settings) {
        const auto status = statusOf(setting, shown);
        if (!search || !passesSearch(setting, *search) || !status || access < setting.viewAccess) {
            continue;
        }
        if (access < setting.editAccess) {
            setting.readOnly = L"true";
        }
        rows.push_back({*status, setting.name, labels[setting.type], shownValue(setting),
                        setting.shortDescription, setting.rgb});
    }
    return rows;
}

bool validateValue(std::wstring& value, const std::wstring& label, std::vector<std::wstring>& boxes)
{
    if (label == L"Integer") {
        return keepOnly(value, L"0123456789-");
    }
    if (label == L"Decimal") {
        const bool isSame = keepOnly(value, L"0123456789-.,");
        std::replace(value.begin(), value.end(), L',', L'.');
        return isSame;
    }
    if (label == L"Yes/No") {
        const bool isEither = value == L"0" || value == L"1";
        value = isEither ? value : L"0";
        return isEither;
    }
    return label != L"Hatch" || validateHatch(value, boxes);
}

} // namespace corma::testing
