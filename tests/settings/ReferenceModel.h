#pragma once

// The rules of the settings model a second time, without regard to time and memory: wide texts,
// lists that are walked, one rule behind the other. The model itself is held against it.

#include <corma/settings_model.h>

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class RubriekenArray;

namespace corma::testing {

/// A configuration file with all that lies around it.
struct FileFamily
{
    std::wstring folder; // of the configuration file, with its last separator
    std::wstring name; // of the configuration file, without folder
    int language = 9;

    /// Bytes of the files by their names in the folder, such as "a.ini" and "LanN/a.ind".
    std::map<std::wstring, std::string> files;

    /// The name with its last characters replaced by an ending.
    [[nodiscard]] std::wstring nameWithEnding(std::wstring_view ending) const;

    /// The bytes of a file; null when it is not there.
    [[nodiscard]] const std::string* find(const std::wstring& file) const;
};

/// What a drawing holds for a configuration file, in the order of its dictionaries.
struct DrawingValues
{
    using Values = std::vector<std::pair<std::wstring, std::wstring>>; // ident and value

    Values head;
    std::vector<std::pair<std::wstring, Values>> chapters;
};

/// A line without the blanks and line feeds that do not count, cut at 255 characters.
std::wstring plainNormaliseLine(const std::wstring& line);

class ReferenceModel
{
public:
    /// The global file, the definitions and the descriptions.
    static ReferenceModel load(const FileFamily& family);

    /// An open configuration file alone.
    static ReferenceModel loadStream(const std::string& bytes);

    /// A project file on top.
    void loadProjectFile(const std::string& bytes);

    /// The values of a drawing on top.
    void loadDrawing(const DrawingValues& drawing);

    /// The last category of a name, else the first of all; null when there are none.
    CategoryContents* findCategory(const std::wstring& name);
    [[nodiscard]] bool hasCategory(const std::wstring& name) const;

    /// The setting of a name in a category; null for none, and for a null category.
    static SettingContents* findSetting(CategoryContents* category, const std::wstring& name);

    /// The model as indented text, so that a difference explains itself. What is as in a new
    /// setting is left out.
    [[nodiscard]] std::wstring asText() const;

    std::vector<CategoryContents> categories;
    std::vector<std::wstring> boxes; // texts of message boxes
    std::wstring printed; // on the command line
    std::vector<std::wstring> doubles; // names of settings that were refused
    bool projectMode = false;
    bool localMode = false;

private:
    class FileLoad;

    enum class Blanks
    {
        kept,
        removed // as plainNormaliseLine() does
    };

    void loadLines(const std::vector<std::wstring>& lines, Blanks blanks);
    void loadDefinitions(const std::string& bytes, const std::wstring& folder);
    void loadDescriptions(const std::string& bytes, const std::wstring& folder);

    /// Writes a line of the descriptions down; false for one that is none.
    bool describe(FileLoad& load, const std::wstring& line, SettingContents*& above);

    /// What the choices of a definition's line are; nothing when it tells none.
    std::optional<std::wstring> choicesOf(const std::wstring& line,
                                          const std::wstring& currentChapter);

    static void loadDictionary(CategoryContents& category, const DrawingValues::Values& values);
    void addSetting(CategoryContents* category, const SettingContents& setting);
};

/// A model in the form of asText(). A setting that does not know its category says so.
std::wstring asText(const RubriekenArray& model);

} // namespace corma::testing
