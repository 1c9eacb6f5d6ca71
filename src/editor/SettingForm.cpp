#include "editor/SettingForm.h"

#include "editor/Desk.h"
#include "foundation/xx_findf.h"
#include "inifile/numbers.h"
#include "platform/platform.h"
#include "platform/text.h"
#include "settings/apply_value.h"
#include "settings/description.h"
#include "settings/messages.h"
#include "settings/texts.h"

#include <algorithm>
#include <array>

namespace corma {

namespace {

constexpr std::wstring_view kIncludeIdent = L"#INCLUDE";
constexpr const wchar_t* kMaximumLabel = L"Maximum : ";
constexpr const wchar_t* kMinimumLabel = L"Minimum : ";
constexpr std::size_t kLongestFound = 511; // characters of a path that the search finds
constexpr std::size_t kLongestStart = 256; // characters of the field that a file question looks at
constexpr wchar_t kChoiceSeparator = L',';

// --- files ---------------------------------------------------------------------------------------

bool hasFolder(const std::wstring& path)
{
    return std::any_of(path.begin(), path.end(), platform::isSeparator);
}

// Nothing is found as an empty path.
std::wstring foundFile(const std::wstring& name)
{
    std::array<wchar_t, kLongestFound + 1> path {};
    xx_findfile(name.c_str(), path.data(), kLongestFound);
    return path.data();
}

std::wstring comparableFolder(const std::wstring& path)
{
    return upperCase(platform::nativeSeparators(platform::splitPath(path).folderPath()));
}

// A file beside the host's module is told by its name, any other one by its whole path, so that
// one that is not found is told as nothing (test: AFileThatIsNotFoundIsShownAsNothing).
std::wstring shortened(const std::wstring& value)
{
    const bool isWhole = hasFolder(value);
    std::wstring path = isWhole ? value : foundFile(value);
    if (comparableFolder(path) == comparableFolder(xx_hostModuleName())) {
        return isWhole ? platform::splitPath(value).fileName() : value;
    }
    return path;
}

// --- lines ---------------------------------------------------------------------------------------

std::wstring replacedAll(std::wstring text, std::wstring_view part, std::wstring_view by)
{
    for (std::size_t at = 0; (at = text.find(part, at)) != std::wstring::npos; at += by.size()) {
        text.replace(at, part.size(), by);
    }
    return text;
}

// --- messages ------------------------------------------------------------------------------------

void tellLimit(int message, const std::wstring& limit)
{
    services().messageBox((text(message) + limit).c_str(), text(row::kWrongValueTitle).c_str(),
                          MessageIcon::exclamation, MessageButtons::ok);
}

void tellWrongValue(const std::wstring& type)
{
    showMessage(text(row::kWrongValue) + type, MessageIcon::exclamation);
}

SettingForm::Input inputOf(SettingType type, const std::wstring& value)
{
    switch (type) {
    case SettingType::yesNo:
        return SettingForm::Input::question;
    case SettingType::option:
        return SettingForm::Input::optionList;
    case SettingType::openOption:
        return SettingForm::Input::optionField;
    case SettingType::string:
        return value.find_first_of(L"\r\n") == std::wstring::npos ? SettingForm::Input::field
                                                                  : SettingForm::Input::box;
    default:
        return SettingForm::Input::field;
    }
}

bool isNumber(SettingType type)
{
    return type == SettingType::integer || type == SettingType::decimal;
}

} // namespace

// --- opening -------------------------------------------------------------------------------------

SettingForm::SettingForm(const Desk& desk)
    : m_desk(desk)
{
    const Instelling* const found = desk.selectedSetting();
    if (found == nullptr) {
        return;
    }
    m_name = found->name();
    m_isReadOnly = found->isReadOnly();
    takeType(*found);
    takeLevels(*found);
    takeLimits(*found);
    takeTickBoxes(*found);
    takeChoices(*found);
    m_question = onLines(found->longDescription());
    m_picture = found->bitmap().empty() ? desk.defaultBitmap() : found->bitmap();
}

Instelling* SettingForm::setting() const
{
    Instelling* const found = m_desk.selectedSetting();
    return found != nullptr && found->name() == m_name ? found : nullptr;
}

std::wstring SettingForm::caption() const
{
    return text(row::kSettings) + L" - " + m_name;
}

void SettingForm::takeType(const Instelling& setting)
{
    const std::wstring value = setting.value();
    m_type = setting.type();
    m_typeText = setting.typeText();
    m_input = inputOf(m_type, value);
    m_fieldText = m_type == SettingType::file ? shortened(value) : value;
    m_hasCarriageReturns = value.find(L"\r\n") != std::wstring::npos;
    m_boxText = replacedAll(replacedAll(value, L"\r\n", L"\n"), L"\r", L"\n");
    m_isYes = value != L"0";
}

void SettingForm::takeLevels(const Instelling& setting)
{
    m_levelIcon = static_cast<int>(setting.levelMark());
    m_levelText = setting.levelText();
    if ((setting.isProject() || setting.isLocal()) && setting.hasGlobalValue()) {
        m_globalValue = setting.globalValue();
    }
    if (setting.isLocal() && setting.hasProjectValue()) {
        m_projectValue = setting.projectValue();
    }
}

void SettingForm::takeLimits(const Instelling& setting)
{
    if (!isNumber(m_type)) {
        return;
    }
    if (const std::wstring limit = setting.maxValue(); !limit.empty()) {
        m_maximumText = kMaximumLabel + limit;
    }
    if (const std::wstring limit = setting.minValue(); !limit.empty()) {
        m_minimumText = kMinimumLabel + limit;
    }
}

void SettingForm::takeTickBoxes(const Instelling& setting)
{
    const LevelMode mode = m_desk.mode();
    const std::wstring level = setting.level();
    const bool isInclude = m_name == kIncludeIdent;
    const bool isClosed = m_isReadOnly || isInclude || level == L"d";
    m_globally = {.isShown = mode.project || mode.local,
                  .isEnabled = !isClosed && level != L"p",
                  .isTicked = isInclude};
    m_inProject = {.isShown = mode.project && mode.local, .isEnabled = !isClosed};
}

void SettingForm::setTickBoxes(const TickBox& globally, const TickBox& inProject)
{
    m_globally = globally;
    m_inProject = inProject;
}

void SettingForm::preferDefaultPicture()
{
    if (!m_desk.defaultBitmap().empty()) {
        m_picture = m_desk.defaultBitmap();
    }
}

// --- choices -------------------------------------------------------------------------------------

void SettingForm::takeChoices(const Instelling& setting)
{
    if (m_input != Input::optionList && m_input != Input::optionField) {
        return;
    }
    const std::wstring keys = setting.choices();
    for (std::size_t at = 0; at < keys.size();) {
        const std::size_t end = std::min(keys.find(kChoiceSeparator, at), keys.size());
        const std::wstring key = keys.substr(at, end - at);
        const std::wstring shown = m_desk.translateKey(key);
        m_choices.push_back(shown == key ? Choice {key} : Choice {shown, key});
        at = end + 1;
    }
    selectValue(setting.value());
}

// A value is looked for as a drop-down list looks for typed letters, behind its first entry first,
// so that it can select an entry that only begins with it (test: TheEntryOfAValue).
void SettingForm::selectValue(const std::wstring& value)
{
    const std::size_t count = m_choices.size();
    for (std::size_t step = 1; step <= count; ++step) {
        const std::wstring& shown = m_choices[step % count].text;
        if (equalIgnoringCase(shown.substr(0, value.size()), value)) {
            choose(step % count);
            return;
        }
    }
    const auto byKey = std::find_if(m_choices.begin(), m_choices.end(),
                                    [&](const Choice& choice) { return choice.key == value; });
    if (byKey != m_choices.end()) {
        choose(static_cast<std::size_t>(byKey - m_choices.begin()));
    } else if (m_input == Input::optionField) {
        m_optionText = value;
    }
}

void SettingForm::choose(std::size_t entry)
{
    m_chosen = entry;
    m_optionText = m_choices[entry].text;
}

// --- browsing ------------------------------------------------------------------------------------

std::wstring SettingForm::fileFilter() const
{
    const Instelling* const found = setting();
    return found == nullptr ? std::wstring() : found->fileTypes();
}

std::wstring SettingForm::browseStart() const
{
    const std::wstring start = m_fieldText.substr(0, kLongestStart);
    return hasFolder(start) ? start : foundFile(start);
}

// --- the end -------------------------------------------------------------------------------------

bool SettingForm::accept()
{
    const CfgDeskCallback callback = m_desk.callback();
    bool isGood = callback == nullptr
        || callback(m_fieldText.c_str(), m_name.c_str(), m_typeText.c_str()) != 0;
    Instelling* const found = setting();
    if (found == nullptr) {
        return true;
    }
    std::wstring value = newValue();
    isGood = isWithinLimits(*found) && isGood;
    if (!isGood) {
        tellWrongValue({});
        m_fieldText.clear();
        return false;
    }
    if (!isValid(value)) {
        return false;
    }
    store(*found, value, ValueEditor::generic);
    return true;
}

// Both are told of where both are broken: the second by the same number.
bool SettingForm::isWithinLimits(const Instelling& setting)
{
    if (!isNumber(m_type)) {
        return true;
    }
    const double number = toDouble(m_fieldText);
    const std::wstring maximum = setting.maxValue();
    const std::wstring minimum = setting.minValue();
    const bool isAbove = !maximum.empty() && number > toDouble(maximum);
    const bool isBelow = !minimum.empty() && number < toDouble(minimum);
    if (isAbove) {
        tellLimit(row::kMaximum, maximum);
    }
    if (isBelow) {
        tellLimit(row::kMinimum, minimum);
    }
    return !isAbove && !isBelow;
}

// Types with an editor of their own, and linetypes, have no value here
// (test: AValueOfAnotherTypeEndsEmpty).
std::wstring SettingForm::newValue() const
{
    switch (m_type) {
    case SettingType::yesNo:
        return m_isYes ? L"1" : L"0";
    case SettingType::option:
    case SettingType::openOption:
        return optionValue();
    case SettingType::string:
        if (m_input == Input::box) {
            return m_hasCarriageReturns ? replacedAll(m_boxText, L"\n", L"\r\n") : m_boxText;
        }
        return m_fieldText;
    case SettingType::integer:
    case SettingType::decimal:
    case SettingType::file:
        return m_fieldText;
    default:
        return {};
    }
}

std::wstring SettingForm::optionValue() const
{
    if (m_chosen) {
        const Choice& choice = m_choices[*m_chosen];
        if (choice.key && m_desk.translateKey(*choice.key) == m_optionText) {
            return *choice.key;
        }
    }
    return m_optionText;
}

void SettingForm::store(Instelling& setting, const std::wstring& value, ValueEditor editor) const
{
    const FileNameSet names = m_desk.fileNames();
    // The user was told of what could not be written; the desk shows what the setting holds.
    static_cast<void>(
        applyValue(setting, value, {m_desk.model(), names, m_desk.database()}, editor,
                   {.globally = m_globally.isTicked, .inProject = m_inProject.isTicked}));
}

bool SettingForm::isValid(std::wstring& value) const
{
    if (Instelling::validateValue(value, m_typeText)) {
        return true;
    }
    tellWrongType();
    return false;
}

void SettingForm::tellWrongType() const
{
    tellWrongValue(m_typeText);
}

} // namespace corma
