#include "settings/InstellingenArray.h"

#include "foundation/messages.h"
#include "host/host.h"
#include "platform/text.h"

#include <algorithm>

namespace {

constexpr const wchar_t* kSource = L"InstellingenArray.cpp";
constexpr const wchar_t* kExists = L"Setting '%s' already exists";
constexpr std::size_t kLongestReport = 256;
constexpr int kExistsLine = 45; // readers of reports know it
constexpr int kExistsStatus = 59798;

void reportDouble(const Instelling& setting)
{
    std::wstring text = corma::formatted(kExists, setting.name().c_str());
    text.resize(std::min(text.size(), kLongestReport));
    xx_reportError(kSource, kExistsLine, text.c_str(), kExistsStatus);
}

} // namespace

int InstellingenArray::addSetting(std::unique_ptr<Instelling>&& setting)
{
    if (!m_index.addNew(setting->packedName(), nameAt())) {
        reportDouble(*setting);
        return -1;
    }
    m_settings.push_back(std::move(setting));
    return static_cast<int>(m_settings.size()) - 1;
}

Instelling* InstellingenArray::findSetting(std::wstring_view name) const
{
    return findPacked(corma::toPacked(name));
}

Instelling* InstellingenArray::findPacked(std::string_view name) const
{
    // Files name settings in the same order as one another.
    if (m_expected < m_settings.size() && m_settings[m_expected]->packedName() == name) {
        return m_settings[m_expected++].get();
    }
    const std::size_t place = m_index.find(name, nameAt());
    if (place == corma::NameIndex::kNowhere) {
        return nullptr;
    }
    m_expected = place + 1;
    return m_settings[place].get();
}

std::vector<Instelling*> InstellingenArray::filterByPattern(const wchar_t* pattern) const
{
    std::vector<Instelling*> fitting;
    for (const auto& setting : m_settings) {
        if (acutWcMatch(setting->name().c_str(), pattern) == RTNORM) {
            fitting.push_back(setting.get());
        }
    }
    return fitting;
}

int compareRows(std::wstring_view a, std::wstring_view b)
{
    const std::u16string unitsOfA = corma::toUtf16(a);
    const std::u16string unitsOfB = corma::toUtf16(b);
    const std::size_t shorter = std::min(unitsOfA.size(), unitsOfB.size());
    for (std::size_t i = 0; i < shorter; ++i) {
        if (unitsOfA[i] != unitsOfB[i]) {
            return unitsOfA[i] < unitsOfB[i] ? -1 : 1;
        }
    }
    return unitsOfA.size() > unitsOfB.size() ? 1 : -1;
}
