#pragma once

// The settings model for programs without the editor: the categories and settings of a
// configuration file with all that stands around them.

#include <corma/export.h>
#include <corma/texts.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corma {

/// A setting as the model has it. Access levels are the lowest that see and change it.
struct SettingContents
{
    std::wstring name; // the ident
    std::wstring longDescription; // a "§" in it is a line break
    std::wstring shortDescription; // the same on one line
    std::wstring bitmap; // path of a picture, or empty
    unsigned type = 0; // 0 string, 1 yes/no, 2 integer, 3 decimal, 4 colour, 5 linetype, 6 file,
                       // 7 visualisation, 8 obsolete, 9 text style, 10 hatch, 11 and 12 option
    std::wstring value; // in force
    std::wstring choices; // keys of an option, separated by ","
    std::wstring maxValue; // inclusive; empty for none
    std::wstring minValue;
    std::wstring readOnly; // "true" makes it unchangeable
    std::wstring level; // "d": belongs into the drawing; "p": not to be saved globally
    std::wstring fileTypes; // filter of a file dialog
    std::wstring globalValue; // below project and drawing; "***KV_BESTAAT_NIET***" for none
    std::wstring projectValue; // below the drawing; the same for none
    bool isProject = false; // value is the project's
    bool isLocal = false; // value is the drawing's
    std::uint32_t rgb = 0; // row colour, red in the lowest byte; 0 for none
    short viewAccess = 0;
    short editAccess = 0;
};

/// A category with its settings, in the order of the files.
struct CategoryContents
{
    std::wstring name; // "Algemeen" for the head of the file
    std::wstring description;
    std::vector<SettingContents> settings;
};

/// The levels whose settings a list shows. Obsolete and read-only settings are always shown.
struct ShownLevels
{
    bool global = true;
    bool project = true;
    bool local = true;
};

/// A row of a list of settings.
struct SettingRow
{
    int image = 0; // 0 global, 1 project, 2 local; copies: 3 and 4 of the global value, 5 of the
                   // project's, 6 of both; 7 obsolete, 8 read-only
    std::wstring name;
    std::wstring type; // the label of the type
    std::wstring value; // as it is shown
    std::wstring description;
    std::uint32_t rgb = 0; // red in the lowest byte; 0 for none
};

/// A list in which settings are shown, as the one who shows them makes it.
class CORMA_EXPORT SettingList
{
public:
    SettingList() = default;
    SettingList(const SettingList&) = default;
    SettingList& operator=(const SettingList&) = default;
    virtual ~SettingList();

    /// The access level of whoever looks at the list.
    [[nodiscard]] virtual short accessLevel() const = 0;

    /// The text of a stored word in the language of the list, or the word itself.
    virtual std::wstring translateKey(const std::wstring& word) = 0;

    /// The row that carries the selection mark; -1 for none.
    [[nodiscard]] virtual int selectionMark() const = 0;
    virtual void setSelectionMark(int row) = 0;
    [[nodiscard]] virtual int rowCount() const = 0;
    virtual void deleteAllRows() = 0;
    virtual void appendRow(const SettingRow& row) = 0;
    virtual void setFocus() = 0;
};

/// The two kinds of dialogs in which a value is edited; they store by different rules.
enum class ValueEditor
{
    generic,
    visual // of visualisations, text styles and hatches
};

/// The boxes of such a dialog that ask for a value at further levels.
struct SaveBoxes
{
    bool globally = false;
    bool inProject = false;
};

/// What became of a new value.
struct AppliedValue
{
    bool accepted = false; // it is a value of the setting's type
    bool stored = false; // all that the rule wants is written
    std::optional<std::wstring> value {}; // what was kept of it; nothing for want of the setting
};

/// What is to be loaded.
struct ModelRequest
{
    /// The configuration file. Without a dot ".ini" is put behind it; a bare name is that of a file
    /// in the current folder, as it stands.
    std::wstring file;

    /// Of descriptions and texts: 7 German, 9 English, 10 Spanish, 12 French, 19 Dutch, 21 Polish,
    /// 25 Russian. It stays the language of the texts of the process.
    int language = kEnglish;

    /// A project file to load on top; it is made, empty, where there is none. Not looked at when
    /// the current drawing is.
    std::optional<std::wstring> projectFile {};

    /// Load the project file beside the current drawing, and the values that the drawing holds.
    bool withDrawing = false;
};

/// A loaded model. What is wrong with the files is told to the user while it is loaded. A model
/// that is not complete is not changed.
class CORMA_EXPORT SettingsModel
{
public:
    explicit SettingsModel(const ModelRequest& request);
    SettingsModel(const SettingsModel&) = delete;
    SettingsModel& operator=(const SettingsModel&) = delete;
    ~SettingsModel();

    /// False when the configuration file, or the project file of the request, could not be opened.
    [[nodiscard]] bool isComplete() const;

    /// The full path of the configuration file; also of one that could not be opened.
    [[nodiscard]] std::wstring configurationFile() const;

    [[nodiscard]] bool projectMode() const; ///< a project file is loaded
    [[nodiscard]] bool localMode() const; ///< the level of the drawing is loaded

    [[nodiscard]] std::vector<CategoryContents> contents() const;

    [[nodiscard]] bool hasCategory(const std::wstring& name) const;

    /// Names are told apart by case.
    [[nodiscard]] bool hasSetting(const std::wstring& category, const std::wstring& name) const;

    /// Fills a list with the settings of a category; with those of the first when there is none of
    /// that name. The search finds names and descriptions that have its text, or the part before or
    /// behind its last "+"; an empty one finds all, and with none the list stays empty. A setting
    /// that the access level may not change is read-only from then on.
    void fillList(const std::wstring& category, SettingList& list,
                  const std::optional<std::wstring>& search, ShownLevels shown) const;

    /// Gives a setting a value as a dialog does: checks it for the type of the setting, and writes
    /// it where the loaded levels and the boxes tell. Without such a setting nothing is done.
    /// Limits and access levels are not looked at.
    AppliedValue apply(const std::wstring& category, const std::wstring& name, std::wstring value,
                       ValueEditor editor, SaveBoxes boxes);

    /// Takes a setting out of the drawing when its level is loaded, else out of the project file
    /// or the configuration file. True when it was there and is gone.
    bool remove(const std::wstring& category, const std::wstring& name);

    /// Takes out a category with all its settings. True when it is gone.
    bool removeCategory(const std::wstring& name);

private:
    struct Inside;
    std::unique_ptr<Inside> m_inside;
};

} // namespace corma
