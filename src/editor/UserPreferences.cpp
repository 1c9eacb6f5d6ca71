#include "editor/UserPreferences.h"

namespace corma {

namespace {

const QString kSortCategories = QStringLiteral("SortSections"); // 1 or 0

} // namespace

UserPreferences::UserPreferences()
    : m_settings(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("Korvane"),
                 QStringLiteral("CfgDesk"))
{
}

bool UserPreferences::sortCategories() const
{
    return m_settings.value(kSortCategories).toLongLong() != 0;
}

// Written at once, so that a second editor that is opened meanwhile knows it.
void UserPreferences::setSortCategories(bool sort)
{
    m_settings.setValue(kSortCategories, sort ? 1 : 0);
    m_settings.sync();
}

} // namespace corma
