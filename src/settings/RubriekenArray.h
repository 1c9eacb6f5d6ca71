#pragma once

#include "settings/FileNameSet.h"
#include "settings/Rubriek.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

class AcDbDatabase;

namespace corma {

class TextFile;

/// A tree in which an editor shows the categories. Items are known by what insertItem() gives.
class CategoryTree
{
public:
    CategoryTree() = default;
    CategoryTree(const CategoryTree&) = default;
    CategoryTree& operator=(const CategoryTree&) = default;
    virtual ~CategoryTree() = default;

    virtual void* selectedItem() = 0; // null for none
    virtual std::wstring textOf(void* item) = 0;
    virtual void deleteAllItems() = 0;
    virtual void* insertItem(const std::wstring& text, void* parent) = 0; // null: the root
    virtual void selectItem(void* item) = 0;
    virtual void expand(void* item) = 0;
    virtual void sortChildren(void* item) = 0; // in the order of the platform
};

} // namespace corma

/// The categories of a configuration file, "Algemeen" first: the root of the model.
class RubriekenArray
{
public:
    /// Loads the configuration file, then the definitions and the descriptions beside it. When the
    /// file cannot be opened the user is told, and the array is empty. A file with lines that are
    /// none is loaded without them; of each file the user is told of the first such line.
    explicit RubriekenArray(const FileNameSet& fileNames);

    /// Loads an open configuration file alone, for queries. Its lines lose blanks as
    /// normaliseLine() tells. Null is told as a file that was not found.
    explicit RubriekenArray(const corma::TextFile* stream);

    RubriekenArray(const RubriekenArray&) = delete;
    RubriekenArray& operator=(const RubriekenArray&) = delete;
    ~RubriekenArray() = default;

    [[nodiscard]] std::size_t size() const { return m_categories.size(); }

    [[nodiscard]] bool empty() const { return m_categories.empty(); }

    [[nodiscard]] Rubriek& operator[](std::size_t index) const { return *m_categories[index]; }

    /// Takes a category in at the end. Its index.
    int addCategory(std::unique_ptr<Rubriek> category);

    /// The last category of exactly that name; when there is none the first one of all, which is
    /// "Algemeen"; null for an empty array.
    [[nodiscard]] Rubriek* findCategory(std::wstring_view name) const;
    [[nodiscard]] Rubriek* findPacked(std::string_view name) const;

    [[nodiscard]] bool hasCategory(std::wstring_view name) const;
    [[nodiscard]] bool hasPacked(std::string_view name) const;

    /// The categories whose names fit a pattern of the host's wild cards, and each "Algemeen".
    [[nodiscard]] std::vector<Rubriek*> filterByPattern(const wchar_t* pattern) const;

    /// Loads a project file on top of the model, and makes an empty one where there is none.
    /// projectMode is set whatever follows. False when the file can neither be opened nor made; the
    /// caller tells, and the categories are as they were.
    [[nodiscard]] bool loadProjectFile(const std::wstring& path);

    /// Loads what a drawing holds for the configuration file on top of the model. localMode is set
    /// whatever follows. Nothing is told; a null database holds nothing.
    void loadDrawing(AcDbDatabase* database, const FileNameSet& fileNames);

    /// Takes a category with all its settings out: out of the drawing, where local is set, else out
    /// of the files; and its header out of the configuration file and its dictionary out of the
    /// drawing in every case. False, as the user is told, when one of its settings could not be
    /// removed; those before it are gone then. False, and nothing is done, for a name that no
    /// category has. project has no effect.
    bool removeCategory(std::wstring_view name, const FileNameSet& fileNames, bool project,
                        bool local, AcDbDatabase* database);

    /// Shows the categories in a tree: all below the first, which is the root and bears a word of
    /// the language. The item that was selected is selected again if it is there.
    void fillTree(corma::CategoryTree& tree, bool sort);

    corma::ShownLevels shown; // the levels whose settings are listed
    bool projectMode = false; // a project file is loaded
    bool localMode = false; // the level of the drawing is loaded

private:
    [[nodiscard]] auto nameAt() const
    {
        return [this](std::size_t place) { return m_categories[place]->packedName(); };
    }

    void erase(std::string_view name);
    void loadIniFile(const std::wstring& path);
    void loadDefinitions(const FileNameSet& fileNames);
    void loadDescriptions(const FileNameSet& fileNames);
    void loadChapter(const std::wstring& name, const AcDbDictionary& dictionary);

    corma::TextArena m_texts; // of the settings below, from the files
    std::vector<std::unique_ptr<Rubriek>> m_categories;
    corma::NameIndex m_index;
};
