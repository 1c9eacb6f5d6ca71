#pragma once

#include <corma/export.h>

#include <cstddef>

/// The full path of a file that add-ons share, looked for in this order: a full path as it stands;
/// the module's folder; the support folders (environment variable "ACAD", separated by ";"); where
/// the host finds it (the current folder and the drawing's folder among others); the folders
/// "blokken" and "blocks" in the module's folder.
///
/// At most outLength characters are written to out. A shorter path is followed by a terminator; one
/// that fills out has none, so pass the capacity less one and a zeroed buffer. A longer path is
/// reported and cut. name and out may be the same buffer.
/// RTNORM when found; else RTERROR, and out stays as it was.
CORMA_EXPORT int xx_findfile_arx(const wchar_t* name, wchar_t* out, std::size_t outLength);
