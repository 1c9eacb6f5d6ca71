// The settings model: what it holds, and the rows in which a list shows a category of it.

#include "model_command.h"
#include "text.h"
#include <corma/translation.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace cfgctl {

namespace {

Json asJson(const corma::SettingContents& setting)
{
    Json one;
    one["name"] = toJson(setting.name);
    one["longDescription"] = toJson(setting.longDescription);
    one["shortDescription"] = toJson(setting.shortDescription);
    one["bitmap"] = toJson(setting.bitmap);
    one["type"] = setting.type;
    one["value"] = toJson(setting.value);
    one["choices"] = toJson(setting.choices);
    one["maxValue"] = toJson(setting.maxValue);
    one["minValue"] = toJson(setting.minValue);
    one["readOnly"] = toJson(setting.readOnly);
    one["level"] = toJson(setting.level);
    one["fileTypes"] = toJson(setting.fileTypes);
    one["globalValue"] = toJson(setting.globalValue);
    one["projectValue"] = toJson(setting.projectValue);
    one["isProject"] = setting.isProject;
    one["isLocal"] = setting.isLocal;
    one["rgb"] = setting.rgb;
    one["viewAccess"] = setting.viewAccess;
    one["editAccess"] = setting.editAccess;
    return one;
}

Json asJson(const corma::CategoryContents& category)
{
    Json one;
    one["name"] = toJson(category.name);
    one["description"] = toJson(category.description);
    Json& settings = one["settings"] = Json::array();
    for (const auto& setting : category.settings) {
        settings.push_back(asJson(setting));
    }
    return one;
}

Json asJson(const corma::SettingsModel& model)
{
    Json document;
    document["projectMode"] = model.projectMode();
    document["localMode"] = model.localMode();
    Json& categories = document["categories"] = Json::array();
    for (const auto& category : model.contents()) {
        categories.push_back(asJson(category));
    }
    return document;
}

Json asJson(const corma::SettingRow& row)
{
    Json one;
    one["image"] = row.image;
    one["name"] = toJson(row.name);
    one["type"] = toJson(row.type);
    one["value"] = toJson(row.value);
    one["description"] = toJson(row.description);
    one["rgb"] = row.rgb;
    return one;
}

Answer answerOf(const corma::SettingsModel& model, Json document)
{
    return {model.isComplete() ? RTNORM : RTERROR, std::move(document), {}, Form::jsonOnly};
}

// A list that nobody sees: it keeps its rows.
class RowList : public corma::SettingList
{
public:
    RowList(std::wstring configurationFile, const Options& options)
        : m_configurationFile(std::move(configurationFile))
        , m_language(options.language)
        , m_accessLevel(options.access)
    {
    }

    [[nodiscard]] const Json& rows() const { return m_rows; }

    [[nodiscard]] short accessLevel() const override { return m_accessLevel; }

    std::wstring translateKey(const std::wstring& word) override
    {
        return corma::translateKey(m_configurationFile.c_str(), word, m_language);
    }

    [[nodiscard]] int selectionMark() const override { return -1; }

    void setSelectionMark(int /*row*/) override { }

    [[nodiscard]] int rowCount() const override { return static_cast<int>(m_rows.size()); }

    void deleteAllRows() override { m_rows.clear(); }

    void appendRow(const corma::SettingRow& row) override { m_rows.push_back(asJson(row)); }

    void setFocus() override { }

private:
    std::wstring m_configurationFile;
    int m_language;
    short m_accessLevel;
    Json m_rows = Json::array();
};

struct Level
{
    std::wstring_view name;
    bool corma::ShownLevels::*isShown;
};

constexpr std::array kModelLevels = {
    Level {L"global", &corma::ShownLevels::global},
    Level {L"project", &corma::ShownLevels::project},
    Level {L"local", &corma::ShownLevels::local},
};

const Level& levelNamed(std::wstring_view name)
{
    for (const Level& level : kModelLevels) {
        if (name == level.name) {
            return level;
        }
    }
    throw UsageError("unknown level " + quoted(name)
                     + "; pass global, project or local to --hide, or several with \",\" between "
                       "them");
}

corma::ShownLevels allBut(std::wstring_view hidden)
{
    corma::ShownLevels shown;
    for (std::size_t begin = 0; begin <= hidden.size();) {
        const std::size_t end = std::min(hidden.find(L',', begin), hidden.size());
        shown.*levelNamed(hidden.substr(begin, end - begin)).isShown = false;
        begin = end + 1;
    }
    return shown;
}

class Model : public ModelCommand
{
public:
    void declare(Syntax& syntax) override
    {
        declareFile(syntax);
        declareProject(syntax);
    }

    Answer run(const Options& options) override
    {
        const corma::SettingsModel model(request(options));
        return answerOf(model, asJson(model));
    }
};

class Rows : public ModelCommand
{
public:
    void declare(Syntax& syntax) override
    {
        declareFile(syntax);
        syntax.argument("CATEGORY", "Name of a category; Algemeen is the head of the file",
                        m_category);
        declareProject(syntax);
        syntax.option("--search TEXT",
                      "Only settings whose name or description has TEXT, or the part before\n"
                      "or behind its last \"+\"",
                      m_search);
        syntax.flag("--no-search", "Search for no text at all, which finds nothing", m_noSearch);
        syntax.option("--hide LEVELS",
                      "Leave out settings of these levels: global, project, local, or several\n"
                      "with \",\" between them; obsolete and read-only ones stay",
                      m_hidden);
        syntax.option("--fills N",
                      "The rows after filling the list N times; usually 1. A setting that the\n"
                      "access level may not change is read-only from the second time on",
                      m_fills);
    }

    Answer run(const Options& options) override
    {
        checkUsage();
        const corma::ShownLevels shown = m_hidden ? allBut(*m_hidden) : corma::ShownLevels {};
        const corma::SettingsModel model(request(options));
        tellOfAnotherCategory(model);
        RowList list(model.configurationFile(), options);
        for (int i = 0; i < m_fills; ++i) {
            model.fillList(m_category, list, search(), shown);
        }
        return answerOf(model, list.rows());
    }

private:
    void checkUsage() const
    {
        if (m_search && m_noSearch) {
            throw UsageError("--search and --no-search exclude each other; pass one of them");
        }
        if (m_fills < 0) {
            throw UsageError("--fills " + std::to_string(m_fills)
                             + " is below 0; pass 0 or a larger number");
        }
    }

    [[nodiscard]] std::optional<std::wstring> search() const
    {
        return m_noSearch ? std::nullopt : std::optional(m_search.value_or(L""));
    }

    // The first category stands in for one that is not there, as in every lookup of the library.
    // Whoever mistyped the name is to know.
    void tellOfAnotherCategory(const corma::SettingsModel& model) const
    {
        if (model.hasCategory(m_category)) {
            return;
        }
        const auto categories = model.contents();
        if (!categories.empty()) {
            const std::string notice = "cfgctl: there is no category " + cfgctl::quoted(m_category)
                + "; the rows are those of " + cfgctl::quoted(categories.front().name);
            corma::services().print(toWide('\n' + withoutControls(notice)).c_str());
        }
    }

    std::wstring m_category;
    std::optional<std::wstring> m_search;
    bool m_noSearch = false;
    std::optional<std::wstring> m_hidden;
    int m_fills = 1;
};

} // namespace

std::unique_ptr<Command> makeModel()
{
    return std::make_unique<Model>();
}

std::unique_ptr<Command> makeRows()
{
    return std::make_unique<Rows>();
}

} // namespace cfgctl
