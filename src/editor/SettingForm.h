#pragma once

#include "settings/Instelling.h"
#include <corma/settings_model.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corma {

class Desk;

/// The dialog for the value of one setting, without its widgets. The setting is the selected one of
/// the desk, and is looked for again at each step.
///
/// Nothing is written before accept().
class SettingForm
{
public:
    /// The input for the new value; exactly one is shown.
    enum class Input
    {
        field, // a line
        box, // several lines
        question, // yes or no
        optionList, // one of the choices
        optionField // one of the choices, or any text
    };

    struct TickBox
    {
        bool isShown = false;
        bool isEnabled = true;
        bool isTicked = false; // counts whether it is shown or not
    };

    /// An entry of the choices.
    struct Choice
    {
        std::wstring text;
        std::optional<std::wstring> key {}; // the stored word; nothing when it is the text

        bool operator==(const Choice&) const = default;
    };

    /// Takes what is shown from the setting. Without one all is empty, and accept() does nothing.
    explicit SettingForm(const Desk& desk);
    SettingForm(const SettingForm&) = delete;
    SettingForm& operator=(const SettingForm&) = delete;
    virtual ~SettingForm() = default;

    // --- what is shown, the same until the end ---------------------------------------------------

    [[nodiscard]] std::wstring caption() const;

    [[nodiscard]] const std::wstring& typeText() const { return m_typeText; }

    /// The number of the mark's icon.
    [[nodiscard]] int levelIcon() const { return m_levelIcon; }

    [[nodiscard]] const std::wstring& levelText() const { return m_levelText; }

    /// The values at the levels below; nothing where none is to be shown.
    [[nodiscard]] const std::optional<std::wstring>& globalValue() const { return m_globalValue; }

    [[nodiscard]] const std::optional<std::wstring>& projectValue() const { return m_projectValue; }

    /// The texts of the limits; empty where there is none.
    [[nodiscard]] const std::wstring& maximumText() const { return m_maximumText; }

    [[nodiscard]] const std::wstring& minimumText() const { return m_minimumText; }

    [[nodiscard]] Input input() const { return m_input; }

    /// The input can be used.
    [[nodiscard]] bool isEnabled() const { return !m_isReadOnly; }

    /// The input has the label of new values.
    [[nodiscard]] bool hasInputLabel() const { return m_input != Input::question; }

    [[nodiscard]] bool hasBrowse() const { return m_type == SettingType::file; }

    /// The long description on its lines, for a question.
    [[nodiscard]] const std::wstring& question() const { return m_question; }

    /// Path of the picture; empty for the compact layout.
    [[nodiscard]] const std::wstring& picture() const { return m_picture; }

    [[nodiscard]] const std::vector<Choice>& choices() const { return m_choices; }

    // --- what the user changes -------------------------------------------------------------------

    /// Also asked when another input is shown: the callback sees it.
    [[nodiscard]] const std::wstring& fieldText() const { return m_fieldText; }

    void setFieldText(std::wstring text) { m_fieldText = std::move(text); }

    /// With "\n" between the lines, whatever the setting has there.
    [[nodiscard]] const std::wstring& boxText() const { return m_boxText; }

    void setBoxText(std::wstring text) { m_boxText = std::move(text); }

    [[nodiscard]] bool isYes() const { return m_isYes; }

    void setYes(bool isYes) { m_isYes = isYes; }

    /// The entry of choices() that was chosen last; nothing for none.
    [[nodiscard]] std::optional<std::size_t> chosen() const { return m_chosen; }

    [[nodiscard]] const std::wstring& optionText() const { return m_optionText; }

    void choose(std::size_t entry);

    /// Text of the open field; the chosen entry stays.
    void setOptionText(std::wstring text) { m_optionText = std::move(text); }

    [[nodiscard]] const TickBox& saveGlobally() const { return m_globally; }

    [[nodiscard]] const TickBox& saveInProject() const { return m_inProject; }

    void tickGlobally(bool isTicked) { m_globally.isTicked = isTicked; }

    void tickInProject(bool isTicked) { m_inProject.isTicked = isTicked; }

    // --- questions for a file --------------------------------------------------------------------

    /// The filter as settings have it; empty for all files.
    [[nodiscard]] std::wstring fileFilter() const;

    /// Where the question begins: the text of the field, or the file that its name finds; empty for
    /// a name that finds none.
    [[nodiscard]] std::wstring browseStart() const;

    // --- the end ---------------------------------------------------------------------------------

    /// Checks the value and stores it. False when it is not one, as the user was told: the dialog
    /// stays open, shows what fieldText() is now, and its input has the focus. That a value cannot
    /// be written ends the dialog all the same; the user is told.
    [[nodiscard]] virtual bool accept();

protected:
    /// The setting, looked for anew; null when it is gone.
    [[nodiscard]] Instelling* setting() const;

    [[nodiscard]] const Desk& desk() const { return m_desk; }

    /// Whether a box is shown and can be ticked, for a form with rules of its own.
    void setTickBoxes(const TickBox& globally, const TickBox& inProject);

    /// Shows the picture of the desk where it has one, rather than that of the setting.
    void preferDefaultPicture();

    /// Checks a value by the type, which may change its text. False when it is not one, as the user
    /// was told.
    [[nodiscard]] bool isValid(std::wstring& value) const;

    /// Tells the user that a value is not one of the type.
    void tellWrongType() const;

    /// Stores a good value, at the levels that the editor and the ticked boxes want.
    void store(Instelling& setting, const std::wstring& value, ValueEditor editor) const;

private:
    void takeType(const Instelling& setting);
    void takeLevels(const Instelling& setting);
    void takeLimits(const Instelling& setting);
    void takeTickBoxes(const Instelling& setting);
    void takeChoices(const Instelling& setting);
    void selectValue(const std::wstring& value);
    [[nodiscard]] bool isWithinLimits(const Instelling& setting);
    [[nodiscard]] std::wstring newValue() const;
    [[nodiscard]] std::wstring optionValue() const;

    const Desk& m_desk;
    std::wstring m_name;
    SettingType m_type = SettingType::string;
    std::wstring m_typeText;
    Input m_input = Input::field;
    bool m_isReadOnly = false;
    int m_levelIcon = 0;
    std::wstring m_levelText;
    std::optional<std::wstring> m_globalValue;
    std::optional<std::wstring> m_projectValue;
    std::wstring m_maximumText;
    std::wstring m_minimumText;
    std::wstring m_question;
    std::wstring m_picture;
    std::vector<Choice> m_choices;
    std::optional<std::size_t> m_chosen;
    std::wstring m_fieldText;
    std::wstring m_boxText;
    std::wstring m_optionText;
    bool m_hasCarriageReturns = false; // the lines of the value end in "\r\n"
    bool m_isYes = false;
    TickBox m_globally;
    TickBox m_inProject;
};

} // namespace corma
