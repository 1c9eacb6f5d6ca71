#pragma once

#include <corma/xx_Var.h>

#include <string>

/// The attribute definitions in the model space of a drawing file, that is, those that a block made
/// of it has. ".DWG" is put behind a name without the extension of a drawing, and the file is
/// looked for as xx_findfile() does it. *path (null: not wanted) becomes its full path, if the
/// status is RTNORM; the status of the search when it was not found, which is not told; RTCAN when
/// it cannot be read, which the user is told.
int xx_atblk(const wchar_t* name, std::wstring* path, xx_VarArray& result);
