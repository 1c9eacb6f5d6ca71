#pragma once

#include "editor/Desk.h"

#include <QSettings>

namespace corma {

/// Preferences in the place where the system keeps those of its users, under "Korvane" and
/// "CfgDesk". One that cannot be read counts as not set.
class UserPreferences : public Preferences
{
public:
    UserPreferences();

    [[nodiscard]] bool sortCategories() const override;
    void setSortCategories(bool sort) override;

private:
    QSettings m_settings;
};

} // namespace corma
