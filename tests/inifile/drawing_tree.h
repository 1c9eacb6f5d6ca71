#pragma once

#include "inifile/drawing_settings.h"

#include <memory>
#include <string>

namespace corma::testing {

/// The tree below a dictionary, one key a line, with the texts of records.
inline std::wstring treeBelow(AcDbObjectId id, const std::wstring& indent = L"")
{
    std::wstring text;
    const host::Opened<AcDbDictionary> dictionary(id);
    const std::unique_ptr<AcDbDictionaryIterator> entry(dictionary->newIterator());
    for (; !entry->done(); entry->next()) {
        text += indent + entry->name();
        const host::Opened<AcDbObject> object(entry->objectId());
        if (const auto value = textOfRecord(*object)) {
            text += L"=" + *value;
        }
        text += L"\n";
        if (AcDbDictionary::cast(object.get()) != nullptr) {
            text += treeBelow(entry->objectId(), indent + L"  ");
        }
    }
    return text;
}

/// The settings that the working drawing holds, as such a tree; "(none)" when there is no place for
/// them yet.
inline std::wstring settingsOfDrawing()
{
    AcDbObjectId root;
    host::Opened<AcDbDictionary> named;
    acdbHostApplicationServices()->workingDatabase()->getNamedObjectsDictionary(named.out());
    return named->getAt(kSettingsRoot, root) == Acad::eOk ? treeBelow(root) : L"(none)";
}

} // namespace corma::testing
