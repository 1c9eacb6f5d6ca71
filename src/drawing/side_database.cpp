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
    SideDatabase side {Acad::eOk, std::make_unique<AcDbDatabase>(false, false)};
    const std::wstring name = upperCase(path);
    if (isDwg(name)) {
        const bool hasPassword = length(password) != 0;
        side.status = side.database->readDwgFile(path.c_str(),
                                                 hasPassword ? AcDbDatabase::kForReadAndWriteNoShare
                                                             : AcDbDatabase::kForReadAndReadShare,
                                                 false, hasPassword ? password : nullptr);
    } else if (has(name, L".DXF")) {
        side.status = side.database->dxfIn(path.c_str());
    } else {
        side.status = Acad::eUnsupportedFileFormat;
    }
    if (side.status != Acad::eOk) {
        side.database.reset();
    }
    return side;
}

} // namespace corma
