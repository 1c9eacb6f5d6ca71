#pragma once

#include "editor/Desk.h"

namespace corma::bench {

/// A user of the editor who remembers nothing.
class NoPreferences : public Preferences
{
public:
    [[nodiscard]] bool sortCategories() const override { return false; }

    void setSortCategories(bool /*sort*/) override { }
};

} // namespace corma::bench
