#pragma once

#include "settings/Instelling.h"
#include "settings/NameIndex.h"
#include <corma/settings_model.h>

#include <cstddef>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

/// The settings of a category, in the order in which they came.
class InstellingenArray
{
public:
    /// The owner is the category that holds the list; null for none.
    explicit InstellingenArray(Rubriek* owner)
        : m_owner(owner)
    {
    }

    InstellingenArray(const InstellingenArray&) = delete;
    InstellingenArray& operator=(const InstellingenArray&) = delete;
    ~InstellingenArray() = default;

    [[nodiscard]] Rubriek* owner() const { return m_owner; }

    [[nodiscard]] std::size_t size() const { return m_settings.size(); }

    [[nodiscard]] Instelling& operator[](std::size_t index) const { return *m_settings[index]; }

    /// Takes a setting in at the end. Its index; or -1, with a report, when the list has one of
    /// that name, and the caller keeps it then.
    int addSetting(std::unique_ptr<Instelling>&& setting);

    /// The setting of exactly that name, the last one if there were more; null for none.
    [[nodiscard]] Instelling* findSetting(std::wstring_view name) const;
    [[nodiscard]] Instelling* findPacked(std::string_view name) const;

    /// The settings whose names fit a pattern of the host's wild cards, in order.
    [[nodiscard]] std::vector<Instelling*> filterByPattern(const wchar_t* pattern) const;

    /// Fills a list with the settings of the shown levels that a search finds; nothing is searched
    /// for by an empty text, and without a text no row comes. A setting that the access level of
    /// the list may see and not change becomes read-only (test:
    /// ASettingMadeReadOnlyShowsItFromTheNextFillOn).
    ///
    /// A setting is found when its name or short description has the text, without regard to case,
    /// or the part before or behind the last "+" of the text.
    void fillList(corma::SettingList& list, std::optional<std::wstring_view> searchText,
                  corma::ShownLevels shown);

    /// Takes a setting out of the configuration file, or a project's out of the project file if
    /// there is one. It gets the value of the level below; without one it leaves the list. False,
    /// and the setting is as it was, when the file has no line that begins with its name in the
    /// chapter or could not be changed. A configuration file that cannot be opened is told; one
    /// that is not there is made, empty.
    bool removeFromFile(std::wstring_view name, const FileNameSet& fileNames);

    /// Takes a setting out of a drawing, null: the working one. It gets the value of the level
    /// below; without one it leaves the list. False for a setting that is not in the drawing, as
    /// the user is told; a record of that name is removed all the same.
    bool removeFromDrawing(std::wstring_view name, AcDbDatabase* database,
                           const FileNameSet& fileNames);

private:
    [[nodiscard]] auto nameAt() const
    {
        return [this](std::size_t place) { return m_settings[place]->packedName(); };
    }

    void erase(const Instelling& setting);

    std::vector<std::unique_ptr<Instelling>> m_settings;
    Rubriek* m_owner;
    corma::NameIndex m_index;
    mutable std::size_t m_expected = 0; // behind the setting that was found last
};

/// The order of two rows by their names, as 16-bit code units: -1 or 1. Equal names give -1 both
/// ways.
int compareRows(std::wstring_view a, std::wstring_view b);
