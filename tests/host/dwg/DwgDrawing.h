#pragma once

#include "host/acdb_database.h"
#include "host/dwg/DwgFormat.h"
#include "host/model/Store.h"
#include "support/TempFolder.h"

#include <map>
#include <memory>
#include <string>
#include <string_view>

namespace corma::host::dwg {

/// The default drawing as one of a version, such as "AC1015", with more entities in the model; both
/// in lines of a code and a value. Its handles go up to 0xFF.
std::string drawingText(std::string_view version, std::string_view entities = {});

/// A drawing in memory, read from a file.
std::unique_ptr<AcDbDatabase> read(const std::wstring& path);

/// The groups of its records by handle, in lines; only of those that can be named.
std::map<std::string, std::string> groupsByHandle(AcDbDatabase& database);

/// The bits of the records of a DWG drawing by handle.
std::map<std::string, std::string> bitsByHandle(AcDbDatabase& database);

/// The names of two maps under which they differ, a blank between them.
std::string differences(const std::map<std::string, std::string>& a,
                        const std::map<std::string, std::string>& b);

const DwgFormat& formatOf(AcDbDatabase& database);

} // namespace corma::host::dwg
