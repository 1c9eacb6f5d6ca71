#pragma once

// Drawing files that are read aside, for what is taken out of them.

#include "host/acdb_database.h"

#include <memory>
#include <string>

namespace corma {

/// The full path of a drawing file by its name in capitals; the status of the search when it is not
/// found. Some names tell no kind of drawing: ".DWG" is put behind them.
struct FoundDrawing
{
    int status = RTNORM;
    std::wstring path;
};

/// Names of drawings that may be exchanged as text count as such only where they are asked for.
enum class DrawingNames
{
    dwgOrDwt,
    dwgDwtOrDxf
};

FoundDrawing findDrawing(std::wstring_view name, DrawingNames names);

/// A drawing that was read aside, null unless the status is eOk.
struct SideDatabase
{
    Acad::ErrorStatus status = Acad::eOk;
    std::unique_ptr<AcDbDatabase> database;
};

/// Reads a drawing, whatever its file is named. `password` is null or empty for none.
SideDatabase readAside(const std::wstring& path, const wchar_t* password = nullptr);

/// The same by the operation of the host that the name asks for: one for drawings, one for those
/// that are exchanged as text. eUnsupportedFileFormat for a name of neither, as that of a path that
/// was cut.
SideDatabase readAsideByName(const std::wstring& path);

} // namespace corma
