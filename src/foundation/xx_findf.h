#pragma once

// The search for files. Its order goes before the host's, so that files next to the library win
// over anything on the support path.

#include <corma/findfile.h>

#include <cstddef>
#include <string>

/// xx_findfile_arx() for use inside the library.
int xx_findfile(const wchar_t* name, wchar_t* out, std::size_t outLength);

/// RTNORM when there is something of that path, else RTCAN.
int xx_fileExists(const wchar_t* path);

/// The folder of the host module with its last separator, in upper case. Worked out once.
const wchar_t* xx_moduleFolder();

/// Path of the host module. Owned by the routine and good until its next call.
const wchar_t* xx_hostModuleName();

namespace corma {

/// The library whose path stands for the module's while the host itself runs; empty for none.
void setHostLibraryName(std::wstring name);

} // namespace corma
