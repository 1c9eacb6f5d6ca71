#pragma once

#include "editor/DeskTest.h"

#include <string>
#include <string_view>

namespace corma::testing {

/// Tests of the dialog for one setting, on a desk with the files and the drawing of LevelsTest. The
/// setting is "A" at the head of the file, unless a test selects another.
class SettingDialogTest : public DeskTest
{
protected:
    /// The definition of the setting A, such as "i max=10".
    void define(std::string_view definition) const;

    /// The description of the setting A, in UTF-8.
    void describe(std::string_view description) const;

    /// Opens the desk with the setting A selected.
    void open(const DeskStart& start);

    void open(Levels levels = Levels::global, int language = kEnglish)
    {
        open(startAt(levels, language));
    }

    Instelling& setting() { return *desk().selectedSetting(); }

    /// The message boxes since the last time: icon, title and text of each in a line.
    std::string messages();
};

} // namespace corma::testing
