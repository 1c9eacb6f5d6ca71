#pragma once

// Where a new value of a setting goes, when a user gave it at a dialog. Every dialog for values
// stores by this.

#include "settings/RubriekenArray.h"
#include <corma/settings_model.h>

#include <string>

namespace corma {

/// What a dialog knows of its surroundings.
struct ApplyTo
{
    const RubriekenArray& model; // its modes count
    const FileNameSet& fileNames;
    AcDbDatabase* database = nullptr; // null: the working one
};

/// Gives a setting a value that was found good, at the level of the model's modes and, by the boxes
/// of the dialog, at others as well; and writes it there. False, as the user was told, when a file
/// or the drawing could not be written: the setting has the new value all the same, and what could
/// be written is.
bool applyValue(Instelling& setting, const std::wstring& value, const ApplyTo& where,
                ValueEditor editor, SaveBoxes boxes);

} // namespace corma
