#include "host/host.h"
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
    return !m_inside->started.fileFailed && !m_inside->started.projectFailed;
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

void SettingsModel::fillList(const std::wstring& category, SettingList& list,
                             const std::optional<std::wstring>& search, ShownLevels shown) const
{
    if (Rubriek* const found = m_inside->started.model->findCategory(category)) {
        found->settings().fillList(list, search, shown);
    }
}

} // namespace corma
