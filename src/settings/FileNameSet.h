#pragma once

#include <corma/texts.h>

#include <string>
#include <string_view>

/// The folders and names around one configuration file. The names that stand beside it are made of
/// its own by position, whatever its extension is: tool.ini has tool.inr (definitions), tool.ind
/// (descriptions) and tool.ipr (project).
struct FileNameSet
{
    /// The names beside a configuration file; the project folder is the global one.
    static FileNameSet of(std::wstring globalFolder, std::wstring fileName, int language);

    std::wstring globalFolder; // of the configuration file, with its last separator
    std::wstring projectFolder; // with its last separator; the global folder without a project
    std::wstring fileName; // of the configuration file, without folder
    std::wstring definitionsName;
    std::wstring descriptionsName;
    std::wstring projectName;
    std::wstring drawingName; // without folder; empty when no drawing is involved
    int language = corma::kEnglish; // of the descriptions: a primary language number
};
