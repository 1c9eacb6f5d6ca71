#pragma once

// What the editor loads when it starts, before it shows anything.

#include "settings/RubriekenArray.h"
#include <corma/texts.h>

#include <memory>
#include <optional>
#include <string>

class AcApDocument;

namespace corma {

/// What a start is asked for.
struct StartRequest
{
    std::wstring iniFile;
    int language = kEnglish;
    std::optional<std::wstring> projectFile {}; // not looked at with a document
    AcApDocument* document = nullptr; // null: none
};

struct StartedModel
{
    FileNameSet fileNames;
    std::unique_ptr<RubriekenArray> model; // never null
    AcDbDatabase* database = nullptr; // of the document; null for none
    bool fileFailed = false; // the configuration file could not be opened, as the user was told
    bool projectFailed = false; // the project file could not be opened, as the user was told
};

/// The folders and names for a configuration file as a caller names it. Without a dot ".ini" is put
/// behind a name with a folder; a bare name is taken as it stands, in the current folder.
FileNameSet namesFor(std::wstring iniFile, int language);

/// Makes the language that of all texts, and loads the global level; on top of it the project file
/// of the request, or with a document the project file in its folder, if there is one, and the
/// values that its drawing holds. The temporary folder stands for the folder of an unnamed drawing.
StartedModel startModel(const StartRequest& request);

} // namespace corma
