// Changes made through the settings model, as the dialogs of the editor make them.

#include "console.h"
#include "model_command.h"
#include "text.h"

namespace cfgctl {

namespace {

constexpr const char* kCategoryMeaning = "Name of a category; Algemeen is the head of the file";

Answer answerOf(bool isDone, Json document)
{
    return {isDone ? RTNORM : RTERROR, std::move(document), {}};
}

std::wstring inQuotes(const std::wstring& name)
{
    return L'"' + name + L'"';
}

void complainOfNone(const std::wstring& category, const std::wstring& name)
{
    complain(L"there is no setting " + inQuotes(name) + L" in the category " + inQuotes(category)
             + L"; upper and lower case differ");
}

class Apply : public ModelCommand
{
public:
    void declare(Syntax& syntax) override
    {
        declareFile(syntax);
        syntax.argument("CATEGORY", kCategoryMeaning, m_category);
        syntax.argument("NAME", "Ident of a setting", m_name);
        syntax.argument("VALUE", "Its new value, which must be one of its type", m_value);
        declareProject(syntax);
        syntax.flag("--save-globally", "Store it in FILE, too", m_boxes.globally);
        syntax.flag("--save-in-project", "Store it in the project file, too", m_boxes.inProject);
        syntax.flag("--visual",
                    "Store by the rule of the dialogs for visualisations, text styles\n"
                    "and hatches",
                    m_isVisual);
    }

    Answer run(const Options& options) override
    {
        corma::SettingsModel model(request(options));
        const auto editor = m_isVisual ? corma::ValueEditor::visual : corma::ValueEditor::generic;
        const auto applied = model.apply(m_category, m_name, m_value, editor, m_boxes);
        Json document;
        document["accepted"] = applied.accepted;
        document["value"] = applied.value ? toJson(*applied.value) : Json();
        if (!applied.value && model.isComplete()) {
            complainOfNone(m_category, m_name);
        } else if (applied.value && !applied.accepted) {
            complain(inQuotes(m_value) + L" is refused: it is no value of the type of "
                     + inQuotes(m_name));
        }
        Answer answer = answerOf(applied.stored, document);
        answer.lines = plainLines(document["value"]);
        return answer;
    }

private:
    std::wstring m_category;
    std::wstring m_name;
    std::wstring m_value;
    corma::SaveBoxes m_boxes;
    bool m_isVisual = false;
};

class Remove : public ModelCommand
{
public:
    void declare(Syntax& syntax) override
    {
        declareFile(syntax);
        syntax.argument("CATEGORY", kCategoryMeaning, m_category);
        syntax.argument("NAME", "Ident of a setting", m_name);
        declareProject(syntax);
    }

    Answer run(const Options& options) override
    {
        corma::SettingsModel model(request(options));
        if (model.isComplete() && !model.hasSetting(m_category, m_name)) {
            complainOfNone(m_category, m_name);
        }
        const bool isRemoved = model.remove(m_category, m_name);
        Json document;
        document["removed"] = isRemoved;
        return answerOf(isRemoved, document);
    }

private:
    std::wstring m_category;
    std::wstring m_name;
};

class RemoveCategory : public ModelCommand
{
public:
    void declare(Syntax& syntax) override
    {
        declareFile(syntax);
        syntax.argument("CATEGORY", kCategoryMeaning, m_category);
        declareProject(syntax);
    }

    Answer run(const Options& options) override
    {
        corma::SettingsModel model(request(options));
        if (model.isComplete() && !model.hasCategory(m_category)) {
            complain(L"there is no category " + inQuotes(m_category)
                     + L"; upper and lower case differ");
        }
        Answer answer = answerOf(model.removeCategory(m_category), {});
        answer.document["status"] = answer.status;
        return answer;
    }

private:
    std::wstring m_category;
};

} // namespace

std::unique_ptr<Command> makeApply()
{
    return std::make_unique<Apply>();
}

std::unique_ptr<Command> makeRemove()
{
    return std::make_unique<Remove>();
}

std::unique_ptr<Command> makeRemoveCategory()
{
    return std::make_unique<RemoveCategory>();
}

} // namespace cfgctl
