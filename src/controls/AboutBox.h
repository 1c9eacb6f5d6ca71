#pragma once

// What an about box says, without widgets.

#include <array>
#include <string>
#include <vector>

namespace corma {

struct AboutBox
{
    /// The grid's, of which the last has no heading.
    static constexpr std::size_t kColumns = 5;
    static constexpr std::array<const wchar_t*, kColumns> kHeadings
        = {L"Hard-/Software", L"Number", L"Name", L"Success", L""};

    std::wstring appName;
    std::wstring appVersion;
    std::wstring menuVersion;
    std::wstring appDate; // of the module file, in local time
    std::wstring copyright;
    std::vector<std::vector<std::wstring>> rows; // each of 1 to kColumns cells

    /// Takes name, version and copyright from the version block of a module file, cut to 255
    /// characters each, and the date from the file; null or empty stands for the module of the
    /// application. What cannot be read is empty.
    void readModule(const wchar_t* moduleFile);

    /// Cuts texts into the cells of a row each at tabs, of which several part as one does. A text
    /// without cells gives no row; cells behind those of the last column are left out.
    void setRows(const std::vector<std::wstring>& texts);
};

/// In the place of a version when there is no menu file.
inline constexpr const wchar_t* kNoMenu = L"N/A";

/// The version that a menu file tells, which is looked for as all files of add-ons. One that is not
/// there is reported, and the result says so; the version is empty when the file has none.
std::wstring versionOfMenu(const wchar_t* menuFile);

} // namespace corma
