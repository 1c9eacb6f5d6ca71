#include "drawing/side_database.h"

#include "foundation/wide_text.h"
#include "foundation/xx_findf.h"
#include "platform/text.h"

#include <array>

namespace corma {

namespace {

constexpr std::size_t kLongestPath = 260; // characters, without the terminator

bool has(const std::wstring& text, const wchar_t* part)
{
    return text.find(part) != std::wstring::npos;
}

bool isDwg(const std::wstring& upperCaseName)
{
    return has(upperCaseName, L".DWG") || has(upperCaseName, L".DWT");
}

SideDatabase sideDatabase(Acad::ErrorStatus status, std::unique_ptr<AcDbDatabase> database)
{
    return {status, status == Acad::eOk ? std::move(database) : nullptr};
}

} // namespace

FoundDrawing findDrawing(std::wstring_view name, DrawingNames names)
{
    std::wstring file = upperCase(std::wstring(name));
    const bool isDxf = names == DrawingNames::dwgDwtOrDxf && has(file, L".DXF");
    if (!isDxf && !isDwg(file)) {
        file += L".DWG";
    }
    std::array<wchar_t, kLongestPath + 1> path {};
    const int status = xx_findfile(file.c_str(), path.data(), kLongestPath);
    return {status, path.data()};
}

SideDatabase readAside(const std::wstring& path, const wchar_t* password)
{
    const bool hasPassword = length(password) != 0;
    const auto mode
        = hasPassword ? AcDbDatabase::kForReadAndWriteNoShare : AcDbDatabase::kForReadAndReadShare;
    auto database = std::make_unique<AcDbDatabase>(false, false);
    const Acad::ErrorStatus status
        = database->readDwgFile(path.c_str(), mode, false, hasPassword ? password : nullptr);
    return sideDatabase(status, std::move(database));
}

SideDatabase readAsideByName(const std::wstring& path)
{
    const std::wstring name = upperCase(path);
    if (isDwg(name)) {
        return readAside(path);
    }
    if (!has(name, L".DXF")) {
        return {Acad::eUnsupportedFileFormat, nullptr};
    }
    auto database = std::make_unique<AcDbDatabase>(false, false);
    const Acad::ErrorStatus status = database->dxfIn(path.c_str());
    return sideDatabase(status, std::move(database));
}

} // namespace corma
