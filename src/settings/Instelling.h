#pragma once

// settings/ - the model of a configuration file that its editor works on: its categories and their
// settings, with types, limits, texts and pictures from the files beside it, and with the values of
// the project and of the drawing on top. And the texts of the editor in their languages.

#include "host/host.h"
#include "settings/FileNameSet.h"
#include "settings/PackedText.h"
#include "settings/SettingType.h"

#include <cstdint>
#include <string>
#include <string_view>

class Rubriek;

namespace corma {

/// What a setting is called when nothing else is told.
inline constexpr std::wstring_view kNoName = L"(no name)";

} // namespace corma

/// An Instelling is a setting: an ident with the value in force, what its value is at the levels
/// below, and what the editor needs to show and check it. The levels are global (the configuration
/// file), project (a project file) and local (the drawing).
///
/// isProject() and isLocal() tell the level of value(); they are never both true.
class Instelling
{
public:
    /// A null name becomes "(no name)", a null text empty. Everything else starts empty, 0 or, for
    /// the values below, as NOT_FOUND_MARKER.
    explicit Instelling(const wchar_t* name, const wchar_t* value = nullptr,
                        const wchar_t* description = nullptr,
                        SettingType type = SettingType::string);

    /// The same from packed texts, for those who read files.
    Instelling(corma::PackedText name, corma::PackedText value);

    /// The access levels are not copied: they are 0 in the copy (test: ACopyHasNoAccessLevels).
    Instelling(const Instelling& other);
    Instelling& operator=(const Instelling&) = delete;
    ~Instelling() = default;

    // --- texts -----------------------------------------------------------------------------------

    [[nodiscard]] std::wstring name() const { return m_name.wide(); }

    [[nodiscard]] std::string_view packedName() const { return m_name.bytes(); }

    /// Not for a setting that is in a list: the list knows it by its name.
    void setName(std::wstring_view text) { m_name.assign(corma::toPacked(text)); }

    /// Help text; a "§" in it is a line break.
    [[nodiscard]] std::wstring longDescription() const { return m_longDescription.wide(); }

    void setLongDescription(std::wstring_view text);

    /// The same on one line, for lists and the search.
    [[nodiscard]] std::wstring shortDescription() const;
    void setShortDescription(std::wstring_view text);

    /// Path of a picture, or empty.
    [[nodiscard]] std::wstring bitmap() const { return m_bitmap.wide(); }

    void setBitmap(std::wstring_view text) { m_bitmap.assign(corma::toPacked(text)); }

    /// Keys of an option, separated by ",".
    [[nodiscard]] std::wstring choices() const { return m_choices.wide(); }

    void setChoices(std::wstring_view text) { m_choices.assign(corma::toPacked(text)); }

    /// Inclusive bounds of a number; empty for none.
    [[nodiscard]] std::wstring maxValue() const { return m_maxValue.wide(); }

    void setMaxValue(std::wstring_view text) { m_maxValue.assign(corma::toPacked(text)); }

    [[nodiscard]] std::wstring minValue() const { return m_minValue.wide(); }

    void setMinValue(std::wstring_view text) { m_minValue.assign(corma::toPacked(text)); }

    /// "true" makes the value unchangeable.
    [[nodiscard]] std::wstring readOnly() const { return m_readOnly.wide(); }

    [[nodiscard]] bool isReadOnly() const { return m_readOnly.bytes() == "true"; }

    void setReadOnly(std::wstring_view text) { m_readOnly.assign(corma::toPacked(text)); }

    /// "d": belongs into the drawing; "p": not to be saved globally; anything else has no effect.
    [[nodiscard]] std::wstring level() const { return m_level.wide(); }

    void setLevel(std::wstring_view text) { m_level.assign(corma::toPacked(text)); }

    /// The filter for the file dialog.
    [[nodiscard]] std::wstring fileTypes() const { return m_fileTypes.wide(); }

    void setFileTypes(std::wstring_view text) { m_fileTypes.assign(corma::toPacked(text)); }

    // --- the other fields ------------------------------------------------------------------------

    [[nodiscard]] SettingType type() const { return m_type; }

    void setType(SettingType type) { m_type = type; }

    /// The label of the type in the language of the texts.
    [[nodiscard]] std::wstring typeText() const;

    /// The category that holds the setting; not owned, null for none.
    [[nodiscard]] Rubriek* category() const { return m_category; }

    void setCategory(Rubriek* category) { m_category = category; }

    [[nodiscard]] bool isProject() const { return m_isProject; }

    void setIsProject(bool isProject) { m_isProject = isProject; }

    [[nodiscard]] bool isLocal() const { return m_isLocal; }

    void setIsLocal(bool isLocal) { m_isLocal = isLocal; }

    /// The colour of its row: red in the lowest byte, then green, then blue; 0 is none.
    [[nodiscard]] std::uint32_t rgb() const { return m_rgb; }

    void setRgb(std::uint32_t rgb) { m_rgb = rgb; }

    /// The lowest access levels that see the setting and that may change it.
    [[nodiscard]] short viewAccess() const { return m_viewAccess; }

    void setViewAccess(short level) { m_viewAccess = level; }

    [[nodiscard]] short editAccess() const { return m_editAccess; }

    void setEditAccess(short level) { m_editAccess = level; }

    // --- values ----------------------------------------------------------------------------------

    /// The value in force.
    [[nodiscard]] std::wstring value() const { return m_value.wide(); }

    /// The same without copying it.
    [[nodiscard]] std::string_view packedValue() const { return m_value.bytes(); }

    /// The value below project and drawing; the project's value below the drawing's. Each is
    /// NOT_FOUND_MARKER for none.
    [[nodiscard]] std::wstring globalValue() const { return m_globalValue.wide(); }

    [[nodiscard]] std::wstring projectValue() const { return m_projectValue.wide(); }

    [[nodiscard]] bool hasGlobalValue() const { return !m_globalValue.isMarker(); }

    [[nodiscard]] bool hasProjectValue() const { return !m_projectValue.isMarker(); }

    void setValue(std::wstring_view text) { m_value.assign(corma::toPacked(text)); }

    void setGlobalValue(std::wstring_view text) { m_globalValue.assign(corma::toPacked(text)); }

    void setProjectCopy(std::wstring_view text) { m_projectValue.assign(corma::toPacked(text)); }

    /// The value becomes the one of the project, the former one the global one.
    void setProjectValue(std::wstring_view text);

    /// The value becomes the one of the drawing, the former one that of the level it was of.
    void setLocalValue(std::wstring_view text);

    /// The setting gets a project value that equals its value.
    void makeProjectCopy();

    /// The setting gets a value in the drawing that equals its value; so do the levels below in
    /// memory (test: ALocalCopyOfAProjectSettingIsADoubleCopy).
    void makeLocalCopy();

    /// How the value is to those of the levels below it.
    enum class LevelMark
    {
        globalSetting = 0,
        projectSetting = 1,
        localSetting = 2,
        projectCopyOfGlobal = 3,
        localCopyOfGlobal = 4,
        copyOfProject = 5,
        doubleCopy = 6
    };

    [[nodiscard]] LevelMark levelMark() const;

    /// The label of the level mark in the language of the texts.
    [[nodiscard]] std::wstring levelText() const;

    /// Checks a value for a type, which is told by its label in the language of the texts, and
    /// replaces it by what can be kept of it, also when the result is false. A hatch tells the user
    /// which of its numbers is wrong; the caller tells of everything else.
    static bool validateValue(std::wstring& value, std::wstring_view typeLabel);

    // --- writing ---------------------------------------------------------------------------------

    /// Writes the value into the configuration file (toGlobal) or the project file of the names,
    /// and adds the setting where the file does not have it. A project file that is not there is
    /// made. False, as the user was told, when that fails; the file is what it was then.
    [[nodiscard]] bool saveToFile(const FileNameSet& fileNames, bool toGlobal) const
    {
        return writeToFile(fileNames, toGlobal, true);
    }

    /// The same; a setting that the file does not have is added with mayAdd only.
    [[nodiscard]] bool writeToFile(const FileNameSet& fileNames, bool toGlobal, bool mayAdd) const;

    /// Stores the value in a drawing, null: the working one. Nothing is told.
    [[nodiscard]] Acad::ErrorStatus writeToDrawing(AcDbDatabase* database,
                                                   const FileNameSet& fileNames) const;

    // --- packed texts, for those who read files --------------------------------------------------

    /// Both descriptions at once.
    void setDescription(corma::PackedText text);
    void setLongDescription(corma::PackedText text);
    void setShortDescription(corma::PackedText text);

    void setBitmap(corma::PackedText text) { m_bitmap = std::move(text); }

    void setChoices(corma::PackedText text) { m_choices = std::move(text); }

    void setMaxValue(corma::PackedText text) { m_maxValue = std::move(text); }

    void setMinValue(corma::PackedText text) { m_minValue = std::move(text); }

    void setReadOnly(corma::PackedText text) { m_readOnly = std::move(text); }

    void setLevel(corma::PackedText text) { m_level = std::move(text); }

    void setFileTypes(corma::PackedText text) { m_fileTypes = std::move(text); }

    void setProjectValue(corma::PackedText text);

private:
    corma::PackedText m_name;
    corma::PackedText m_longDescription;
    corma::PackedText m_shortDescription; // unless it follows the long one
    corma::PackedText m_bitmap;
    corma::PackedText m_value;
    corma::PackedText m_choices;
    corma::PackedText m_maxValue;
    corma::PackedText m_minValue;
    corma::PackedText m_readOnly;
    corma::PackedText m_level;
    corma::PackedText m_fileTypes;
    corma::PackedText m_globalValue = corma::PackedText::marker();
    corma::PackedText m_projectValue = corma::PackedText::marker();
    Rubriek* m_category = nullptr;
    SettingType m_type = SettingType::string;
    std::uint32_t m_rgb = 0;
    short m_viewAccess = 0;
    short m_editAccess = 0;
    bool m_isProject = false;
    bool m_isLocal = false;
    bool m_shortFollowsLong = false; // the short description is the long one on one line
};
