#pragma once

#include "settings/RubriekenArray.h"
#include "support/OpenObjects.h"
#include "support/RecordingServices.h"
#include "support/TempFolder.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace corma::testing {

/// What a model holds, one line a setting below the line of its category; in UTF-8. A value of
/// another level than the global one has that level and the values below it behind it:
///
///     [Algemeen] General settings
///       Hoogte=3 (project; global 2)
///       Breedte=7 (drawing; global none; project 5)
std::string valuesOf(const RubriekenArray& model);

/// The type number and the attributes of each setting that has any, one line a setting:
///
///     [Algemeen]Hoogte: 3 max=100 min=0 readonly=false
std::string definitionsOf(const RubriekenArray& model);

/// The descriptions and the picture of each setting that has any; and those of the categories:
///
///     [Algemeen] General settings
///       Hoogte long=height§of a text short=height of a text bitmap=h.bmp
std::string descriptionsOf(const RubriekenArray& model);

/// Keeps the icons and titles of message boxes, too.
struct BoxServices : RecordingServices
{
    MessageAnswer messageBox(const wchar_t* text, const wchar_t* title, MessageIcon icon,
                             MessageButtons buttons) override;

    std::vector<MessageIcon> icons;
    std::vector<std::wstring> titles;
};

/// Tests around the file tool.ini in a folder of their own, after which no object of a drawing may
/// be open.
class SettingsTest : public OpenObjects
{
protected:
    [[nodiscard]] FileNameSet names(int language = 9) const
    {
        return FileNameSet::of(folder.path(L""), L"tool.ini", language);
    }

    /// The model of tool.ini with these lines, in the texts of a language.
    [[nodiscard]] std::unique_ptr<RubriekenArray> load(std::string_view ini,
                                                       int language = 9) const;

    /// A text with "~" in the place of the folder.
    [[nodiscard]] std::string homely(std::string_view text) const;

    /// The texts of the message boxes, one a line.
    [[nodiscard]] std::string boxes() const;

    BoxServices services;
    TempFolder folder;
};

} // namespace corma::testing
