#pragma once

// How the model writes files: through one temporary name in the project folder, and what it tells
// when that fails.

#include "foundation/text_rewrite.h"
#include "settings/FileNameSet.h"

#include <string>

class AcDbDatabase;
class Instelling;

namespace corma {

/// The file in which the new content of any file of these names is gathered.
std::wstring temporaryPath(const FileNameSet& fileNames);

/// Path of the configuration file (toGlobal) or of the project file.
std::wstring pathOf(const FileNameSet& fileNames, bool toGlobal);

/// Tells the user in a message box what is wrong with a file, if it is something that can be told
/// better than by its rule's own text: its encoding, its disk, another program.
void tellCause(const std::wstring& path, const RewriteFailure& failure);

/// The header of a new chapter at the end of the configuration file (toGlobal), behind an empty
/// line, or of the project file. Nothing is told; the file is what it was when that fails.
RewriteFailure addHeader(const std::wstring& category, const FileNameSet& fileNames, bool toGlobal);

/// What a failure is, in one line.
std::wstring describe(const std::wstring& path, const RewriteFailure& failure);

/// Instelling::writeToDrawing(), of which the user is told when it fails. False then.
[[nodiscard]] bool saveToDrawing(const Instelling& setting, AcDbDatabase* database,
                                 const FileNameSet& fileNames);

} // namespace corma
