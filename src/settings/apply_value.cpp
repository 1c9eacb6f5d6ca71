#include "settings/apply_value.h"

#include "settings/saving.h"

namespace corma {

namespace {

enum class Goal
{
    newProjectValue, // over the global one
    newLocalValue, // over those below it
    sameLevelInDrawing,
    sameLevelInFile,
    sameLevelInProject
};

Goal goalOf(const Instelling& setting, const RubriekenArray& model, ValueEditor editor,
            SaveBoxes boxes)
{
    // The visual dialogs heed the project always, the generic one at a drawing only when asked to.
    const bool wantsProject = editor == ValueEditor::visual || !model.localMode || boxes.inProject;
    if (!setting.isProject() && model.projectMode && wantsProject) {
        return Goal::newProjectValue;
    }
    if (model.localMode) {
        return setting.isLocal() ? Goal::sameLevelInDrawing : Goal::newLocalValue;
    }
    return model.projectMode ? Goal::sameLevelInProject : Goal::sameLevelInFile;
}

} // namespace

bool applyValue(Instelling& setting, const std::wstring& value, const ApplyTo& where,
                ValueEditor editor, SaveBoxes boxes)
{
    const auto saveGlobally = [&] { return setting.saveToFile(where.fileNames, true); };
    const auto saveInProject = [&] { return setting.saveToFile(where.fileNames, false); };
    const auto saveInDrawing
        = [&] { return saveToDrawing(setting, where.database, where.fileNames); };
    bool isSaved = true;
    switch (goalOf(setting, where.model, editor, boxes)) {
    case Goal::newProjectValue:
        setting.setProjectValue(value);
        isSaved = saveInProject();
        if (where.model.localMode && editor == ValueEditor::generic) {
            setting.setLocalValue(value);
            isSaved = saveInDrawing() && isSaved;
        }
        break;
    case Goal::newLocalValue:
        setting.setLocalValue(value);
        isSaved = saveInDrawing();
        break;
    case Goal::sameLevelInDrawing:
        setting.setValue(value);
        isSaved = saveInDrawing();
        break;
    case Goal::sameLevelInFile:
        // Here the visual dialogs write a project file, and reach the configuration file only
        // through their box (test: AVisualValueWithoutModesGoesIntoAProjectFile).
        setting.setValue(value);
        isSaved = editor == ValueEditor::visual ? saveInProject() : saveGlobally();
        break;
    case Goal::sameLevelInProject:
        setting.setValue(value);
        isSaved = saveInProject();
        break;
    }
    if (boxes.globally) {
        isSaved = saveGlobally() && isSaved;
        setting.setGlobalValue(value);
    }
    if (boxes.inProject) {
        isSaved = saveInProject() && isSaved;
        setting.setProjectCopy(value);
    }
    return isSaved;
}

} // namespace corma
