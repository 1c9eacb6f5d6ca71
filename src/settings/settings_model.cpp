#include "host/host.h"
#include "platform/platform.h"
#include "settings/apply_value.h"
#include "settings/model_start.h"
#include <corma/settings_model.h>

namespace corma {

namespace {

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

CategoryContents contentsOf(const Rubriek& category)
{
    CategoryContents contents {category.name(), category.description, {}};
    const InstellingenArray& settings = category.settings();
    contents.settings.reserve(settings.size());
    for (std::size_t i = 0; i < settings.size(); ++i) {
        contents.settings.push_back(contentsOf(settings[i]));
    }
    return contents;
}

} // namespace

SettingList::~SettingList() = default;

struct SettingsModel::Inside
{
    [[nodiscard]] bool isComplete() const { return !started.fileFailed && !started.projectFailed; }

    // Unlike when a list is filled, another category never stands in for the one that is named.
    [[nodiscard]] Instelling* settingOf(const std::wstring& category,
                                        const std::wstring& name) const
    {
        const bool isThere = started.model->hasCategory(category);
        return isThere ? started.model->findCategory(category)->settings().findSetting(name)
                       : nullptr;
    }

    StartedModel started;
};

SettingsModel::SettingsModel(const ModelRequest& request)
    : m_inside(std::make_unique<Inside>())
{
    AcApDocument* const document = request.withDrawing ? acDocManagerPtr()->curDocument() : nullptr;
    m_inside->started = startModel({request.file, request.language, request.projectFile, document});
}

SettingsModel::~SettingsModel() = default;

bool SettingsModel::isComplete() const
{
    return m_inside->isComplete();
}

std::wstring SettingsModel::configurationFile() const
{
    const FileNameSet& names = m_inside->started.fileNames;
    return platform::fullPath(names.globalFolder + names.fileName);
}

bool SettingsModel::projectMode() const
{
    return m_inside->started.model->projectMode;
}

bool SettingsModel::localMode() const
{
    return m_inside->started.model->localMode;
}

std::vector<CategoryContents> SettingsModel::contents() const
{
    const RubriekenArray& model = *m_inside->started.model;
    std::vector<CategoryContents> contents;
    contents.reserve(model.size());
    for (std::size_t i = 0; i < model.size(); ++i) {
        contents.push_back(contentsOf(model[i]));
    }
    return contents;
}

bool SettingsModel::hasCategory(const std::wstring& name) const
{
    return m_inside->started.model->hasCategory(name);
}

bool SettingsModel::hasSetting(const std::wstring& category, const std::wstring& name) const
{
    return m_inside->settingOf(category, name) != nullptr;
}

void SettingsModel::fillList(const std::wstring& category, SettingList& list,
                             const std::optional<std::wstring>& search, ShownLevels shown) const
{
    if (Rubriek* const found = m_inside->started.model->findCategory(category)) {
        found->settings().fillList(list, search, shown);
    }
}

AppliedValue SettingsModel::apply(const std::wstring& category, const std::wstring& name,
                                  std::wstring value, ValueEditor editor, SaveBoxes boxes)
{
    Instelling* const setting = m_inside->settingOf(category, name);
    if (!isComplete() || setting == nullptr) {
        return {};
    }
    AppliedValue applied;
    applied.accepted = Instelling::validateValue(value, setting->typeText());
    if (applied.accepted) {
        const StartedModel& started = m_inside->started;
        applied.stored = applyValue(
            *setting, value, {*started.model, started.fileNames, started.database}, editor, boxes);
    }
    applied.value = std::move(value);
    return applied;
}

bool SettingsModel::remove(const std::wstring& category, const std::wstring& name)
{
    const StartedModel& started = m_inside->started;
    if (!isComplete() || !hasSetting(category, name)) {
        return false;
    }
    InstellingenArray& settings = started.model->findCategory(category)->settings();
    return started.model->localMode
        ? settings.removeFromDrawing(name, started.database, started.fileNames)
        : settings.removeFromFile(name, started.fileNames);
}

// A project goes before a drawing here.
bool SettingsModel::removeCategory(const std::wstring& name)
{
    const StartedModel& started = m_inside->started;
    if (!isComplete()) {
        return false;
    }
    const bool project = started.model->projectMode;
    const bool local = !project && started.model->localMode;
    return started.model->removeCategory(name, started.fileNames, project, local, started.database);
}

} // namespace corma
