#include "settings/FileNameSet.h"

#include <utility>

namespace {

// The name with other text in the place of its last characters.
std::wstring ending(std::wstring name, std::wstring_view end)
{
    name.resize(name.size() < end.size() ? 0 : name.size() - end.size());
    return name.append(end);
}

} // namespace

FileNameSet FileNameSet::of(std::wstring globalFolder, std::wstring fileName, int language)
{
    FileNameSet names;
    names.projectFolder = globalFolder;
    names.globalFolder = std::move(globalFolder);
    if (!fileName.empty()) {
        names.definitionsName = ending(fileName, L"r");
        names.descriptionsName = ending(fileName, L"d");
        names.projectName = ending(fileName, L"pr");
    }
    names.fileName = std::move(fileName);
    names.language = language;
    return names;
}
