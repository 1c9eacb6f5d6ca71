#pragma once

// The rules for one setting, and for the rows of a list, once more and written plainly.

#include <corma/settings_model.h>

#include <optional>
#include <string>
#include <vector>

namespace corma::testing {

/// A setting as it is when it has just been made.
SettingContents newSetting(const std::wstring& name, const std::wstring& value);

/// What setProjectValue() and setLocalValue() of a setting do, and the copies of its value.
void setProjectValue(SettingContents& setting, const std::wstring& text);
void setLocalValue(SettingContents& setting, const std::wstring& text);
void makeProjectCopy(SettingContents& setting);
void makeLocalCopy(SettingContents& setting);

/// The number of the level mark: 0 global, 1 project, 2 local, 3 and 4 copies of the global value,
/// 5 copy of the project's, 6 of both.
int levelMark(const SettingContents& setting);

/// The rows that fillList() of a category makes; without a search, none. Words are translated by
/// putting them between "<" and ">".
std::vector<SettingRow> fillRows(CategoryContents& category,
                                 const std::optional<std::wstring>& search, short access,
                                 ShownLevels shown);

/// What validateValue() of a setting answers; the texts of its message boxes go to `boxes`.
bool validateValue(std::wstring& value, const std::wstring& label,
                   std::vector<std::wstring>& boxes);

} // namespace corma::testing
