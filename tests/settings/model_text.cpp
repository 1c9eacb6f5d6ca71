// Models as indented text.

#include "settings/ReferenceModel.h"
#include "settings/RubriekenArray.h"
#include "settings/reference_setting.h"

namespace corma::testing {

namespace {

// With control characters as numbers, so that each is seen and none ends a line.
std::wstring visible(const std::wstring& text)
{
    std::wstring shown = L"\"";
    for (const wchar_t c : text) {
        if (c < 32) {
            shown += L"<" + std::to_wstring(static_cast<int>(c)) + L">";
        } else {
            shown += c;
        }
    }
    return shown + L"\"";
}

std::wstring fieldText(const wchar_t* name, const std::wstring& value, const std::wstring& usual)
{
    return value == usual ? L"" : std::wstring(L"        ") + name + L" " + visible(value) + L"\n";
}

std::wstring settingText(const SettingContents& setting, int mark)
{
    const SettingContents usual = newSetting(L"", L"");
    std::wstring text = L"    " + visible(setting.name) + L" = " + visible(setting.value)
        + L", type " + std::to_wstring(setting.type) + L", mark " + std::to_wstring(mark)
        + (setting.isProject ? L", project" : L"") + (setting.isLocal ? L", local" : L"") + L"\n";
    text += fieldText(L"long description", setting.longDescription, usual.longDescription);
    text += fieldText(L"short description", setting.shortDescription, usual.shortDescription);
    text += fieldText(L"bitmap", setting.bitmap, usual.bitmap);
    text += fieldText(L"choices", setting.choices, usual.choices);
    text += fieldText(L"max", setting.maxValue, usual.maxValue);
    text += fieldText(L"min", setting.minValue, usual.minValue);
    text += fieldText(L"read-only", setting.readOnly, usual.readOnly);
    text += fieldText(L"level", setting.level, usual.level);
    text += fieldText(L"file types", setting.fileTypes, usual.fileTypes);
    text += fieldText(L"global value", setting.globalValue, usual.globalValue);
    text += fieldText(L"project value", setting.projectValue, usual.projectValue);
    text += fieldText(L"rgb", std::to_wstring(setting.rgb), L"0");
    text += fieldText(L"view", std::to_wstring(setting.viewAccess), L"0");
    text += fieldText(L"edit", std::to_wstring(setting.editAccess), L"0");
    return text;
}

std::wstring categoryText(const std::wstring& name, const std::wstring& description)
{
    return L"[" + visible(name) + L"] " + visible(description) + L"\n";
}

std::wstring modesText(bool projectMode, bool localMode)
{
    return std::wstring(projectMode ? L"project mode\n" : L"")
        + (localMode ? L"local mode\n" : L"");
}

SettingContents contentsOf(const Instelling& setting)
{
    return {
        .name = setting.name(),
        .longDescription = setting.longDescription(),
        .shortDescription = setting.shortDescription(),
        .bitmap = setting.bitmap(),
        .type = static_cast<unsigned>(setting.type()),
        .value = setting.value(),
        .choices = setting.choices(),
        .maxValue = setting.maxValue(),
        .minValue = setting.minValue(),
        .readOnly = setting.readOnly(),
        .level = setting.level(),
        .fileTypes = setting.fileTypes(),
        .globalValue = setting.globalValue(),
        .projectValue = setting.projectValue(),
        .isProject = setting.isProject(),
        .isLocal = setting.isLocal(),
        .rgb = setting.rgb(),
        .viewAccess = setting.viewAccess(),
        .editAccess = setting.editAccess(),
    };
}

} // namespace

std::wstring ReferenceModel::asText() const
{
    std::wstring text = modesText(projectMode, localMode);
    for (const CategoryContents& category : categories) {
        text += categoryText(category.name, category.description);
        for (const SettingContents& setting : category.settings) {
            text += settingText(setting, levelMark(setting));
        }
    }
    return text;
}

std::wstring asText(const RubriekenArray& model)
{
    std::wstring text = modesText(model.projectMode, model.localMode);
    for (std::size_t i = 0; i < model.size(); ++i) {
        const Rubriek& category = model[i];
        text += categoryText(category.name(), category.description);
        const InstellingenArray& settings = category.settings();
        if (settings.owner() != &category) {
            text += L"    (does not know its category)\n";
        }
        for (std::size_t j = 0; j < settings.size(); ++j) {
            text += settingText(contentsOf(settings[j]), static_cast<int>(settings[j].levelMark()));
            if (settings[j].category() != &category) {
                text += L"        (does not know its category)\n";
            }
        }
    }
    return text;
}

} // namespace corma::testing
