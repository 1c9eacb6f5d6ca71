// The rows of a list of settings.

#include "platform/text.h"
#include "settings/InstellingenArray.h"
#include "settings/texts.h"

namespace {

using LevelMark = Instelling::LevelMark;

constexpr int kObsoleteImage = 7;
constexpr int kReadOnlyImage = 8;

// What a search looks for: its text, or the part before or behind the last "+" in it.
class Search
{
public:
    explicit Search(std::wstring_view text)
        : m_whole(corma::lowerCase(text))
        , m_left(m_whole)
        , m_right(m_whole)
    {
        const std::size_t plus = m_whole.rfind(L'+');
        if (plus != std::wstring::npos) {
            m_left = m_whole.substr(0, plus);
            m_right = m_whole.substr(plus + 1);
        }
    }

    [[nodiscard]] bool finds(const Instelling& setting) const
    {
        return isAll() || isIn(corma::lowerCase(setting.name()))
            || isIn(corma::lowerCase(setting.shortDescription()));
    }

private:
    // An empty part is in every text.
    [[nodiscard]] bool isAll() const { return m_left.empty() || m_right.empty(); }

    [[nodiscard]] bool isIn(const std::wstring& text) const
    {
        return text.find(m_left) != std::wstring::npos || text.find(m_right) != std::wstring::npos;
    }

    std::wstring m_whole;
    std::wstring m_left;
    std::wstring m_right;
};

bool isShown(LevelMark mark, corma::ShownLevels shown)
{
    switch (mark) {
    case LevelMark::globalSetting:
        return shown.global;
    case LevelMark::projectSetting:
    case LevelMark::projectCopyOfGlobal:
        return shown.project;
    case LevelMark::localSetting:
    case LevelMark::localCopyOfGlobal:
    case LevelMark::copyOfProject:
    case LevelMark::doubleCopy:
        break;
    }
    return shown.local;
}

// Nothing for a setting that has no row.
std::optional<int> imageOf(const Instelling& setting, corma::ShownLevels shown)
{
    if (setting.type() == SettingType::obsolete) {
        return kObsoleteImage;
    }
    if (setting.isReadOnly()) {
        return kReadOnlyImage;
    }
    const LevelMark mark = setting.levelMark();
    return isShown(mark, shown) ? std::optional(static_cast<int>(mark)) : std::nullopt;
}

std::wstring shownValue(const Instelling& setting, corma::SettingList& list)
{
    switch (setting.type()) {
    case SettingType::yesNo:
        return corma::text(setting.packedValue() == "0" ? corma::row::kNo : corma::row::kYes);
    case SettingType::option:
    case SettingType::openOption:
        return list.translateKey(setting.value());
    default:
        return setting.value();
    }
}

void restoreMark(corma::SettingList& list, int mark)
{
    const int last = list.rowCount() - 1;
    if (mark == -1) {
        mark = 0;
    } else if (mark > last) {
        mark = last;
    }
    list.setSelectionMark(mark);
}

} // namespace

void InstellingenArray::fillList(corma::SettingList& list,
                                 std::optional<std::wstring_view> searchText,
                                 corma::ShownLevels shown)
{
    const short access = list.accessLevel();
    const int mark = list.selectionMark();
    list.deleteAllRows();
    if (searchText) {
        const Search search(*searchText);
        for (const auto& setting : m_settings) {
            const auto image = imageOf(*setting, shown);
            if (!image || access < setting->viewAccess() || !search.finds(*setting)) {
                continue;
            }
            // The row still shows the level: the image was chosen before.
            if (access < setting->editAccess()) {
                setting->setReadOnly(L"true");
            }
            list.appendRow({*image, setting->name(), setting->typeText(),
                            shownValue(*setting, list), setting->shortDescription(),
                            setting->rgb()});
        }
    }
    list.setFocus();
    restoreMark(list, mark);
}
