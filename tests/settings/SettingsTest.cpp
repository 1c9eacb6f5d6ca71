#include "settings/SettingsTest.h"

#include "platform/text.h"
#include "settings/texts.h"

namespace corma::testing {

namespace {

std::string valueBelow(bool isThere, const std::wstring& value)
{
    return isThere ? toUtf8(value) : "none";
}

std::string levelOf(const Instelling& setting)
{
    const std::string below = valueBelow(setting.hasGlobalValue(), setting.globalValue());
    const std::string project = valueBelow(setting.hasProjectValue(), setting.projectValue());
    std::string text;
    if (setting.isProject()) {
        text += "project";
    }
    if (setting.isLocal()) {
        text += "drawing";
    }
    if (below != "none" || !text.empty()) {
        text += "; global " + below;
    }
    if (project != "none" || setting.isLocal()) {
        text += "; project " + project;
    }
    return text.empty() ? "" : " (" + text + ")";
}

std::string told(const char* key, const std::wstring& text)
{
    return text.empty() ? "" : std::string(" ") + key + "=" + toUtf8(text);
}

std::string attributesOf(const Instelling& setting)
{
    std::string text = told("bitmap", setting.bitmap()) + told("choices", setting.choices())
        + told("max", setting.maxValue()) + told("min", setting.minValue())
        + told("readonly", setting.readOnly()) + told("level", setting.level())
        + told("filetypes", setting.fileTypes());
    if (const std::uint32_t rgb = setting.rgb(); rgb != 0) {
        text += " red=" + std::to_string(rgb & 0xFFU);
        text += " green=" + std::to_string((rgb >> 8U) & 0xFFU);
        text += " blue=" + std::to_string(rgb >> 16U);
    }
    if (setting.viewAccess() != 0 || setting.editAccess() != 0) {
        text += " view=" + std::to_string(setting.viewAccess());
        text += " edit=" + std::to_string(setting.editAccess());
    }
    return text;
}

std::string headOf(const Rubriek& category)
{
    const std::string text = "[" + toUtf8(category.name()) + "]";
    return category.description.empty() ? text : text + " " + toUtf8(category.description);
}

// What line(category, setting) gives for each setting, below what head(category) gives.
template<class Head, class Line>
std::string written(const RubriekenArray& model, const Head& head, const Line& line)
{
    std::string text;
    for (std::size_t i = 0; i < model.size(); ++i) {
        text += head(model[i]);
        const InstellingenArray& settings = model[i].settings();
        for (std::size_t at = 0; at < settings.size(); ++at) {
            EXPECT_EQ(settings[at].category(), &model[i]);
            text += line(model[i], settings[at]);
        }
    }
    return text;
}

} // namespace

std::string valuesOf(const RubriekenArray& model)
{
    return written(
        model, [](const Rubriek& category) { return headOf(category) + "\n"; },
        [](const Rubriek&, const Instelling& setting) {
            return "  " + toUtf8(setting.name()) + "=" + toUtf8(setting.value()) + levelOf(setting)
                + "\n";
        });
}

std::string definitionsOf(const RubriekenArray& model)
{
    return written(
        model, [](const Rubriek&) { return std::string(); },
        [](const Rubriek& category, const Instelling& setting) {
            const auto type = static_cast<unsigned>(setting.type());
            const std::string attributes = attributesOf(setting);
            return type == 0 && attributes.empty() ? ""
                                                   : "[" + toUtf8(category.name()) + "]"
                    + toUtf8(setting.name()) + ": " + std::to_string(type) + attributes + "\n";
        });
}

std::string descriptionsOf(const RubriekenArray& model)
{
    return written(
        model, [](const Rubriek& category) { return headOf(category) + "\n"; },
        [](const Rubriek&, const Instelling& setting) {
            const std::string texts = told("long", setting.longDescription())
                + told("short", setting.shortDescription()) + told("bitmap", setting.bitmap());
            return texts.empty() ? "" : "  " + toUtf8(setting.name()) + texts + "\n";
        });
}

MessageAnswer BoxServices::messageBox(const wchar_t* text, const wchar_t* title, MessageIcon icon,
                                      MessageButtons buttons)
{
    icons.push_back(icon);
    titles.emplace_back(title);
    return RecordingServices::messageBox(text, title, icon, buttons);
}

std::unique_ptr<RubriekenArray> SettingsTest::load(std::string_view ini, int language) const
{
    folder.write(L"tool.ini", ini);
    setTextLanguage(language);
    return std::make_unique<RubriekenArray>(names(language));
}

std::string SettingsTest::homely(std::string_view text) const
{
    return folder.homely(fromUtf8(text));
}

std::string SettingsTest::boxes() const
{
    std::string text;
    for (const std::wstring& box : services.boxes) {
        text += toUtf8(box) + "\n";
    }
    return homely(text);
}

} // namespace corma::testing
