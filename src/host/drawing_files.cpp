#include "host/drawing_files.h"

#include "host/dxf/DxfFormat.h"
#include "host/dxf/dxf_reader.h"

#include <algorithm>
#include <array>

namespace corma::host {

namespace {

struct Format
{
    bool (*recognises)(std::string_view bytes);
    ReadResult (*read)(platform::FileContent content, const std::wstring& path, Store& store);
};

struct DwgRelease
{
    std::string_view begin;
    const wchar_t* name;
};

constexpr std::array kDwgReleases = {
    // clang-format off
    DwgRelease {"AC1006", L", R10"},
    DwgRelease {"AC1009", L", R11 or R12"},
    DwgRelease {"AC1012", L", R13"},
    DwgRelease {"AC1014", L", R14"},
    DwgRelease {"AC1015", L", R2000"},
    DwgRelease {"AC1018", L", R2004"},
    DwgRelease {"AC1021", L", R2007"},
    DwgRelease {"AC1024", L", R2010"},
    DwgRelease {"AC1027", L", R2013"},
    DwgRelease {"AC1032", L", R2018"},
    // clang-format on
};

constexpr std::size_t kDwgVersionSize = 6;

bool isDwg(std::string_view bytes)
{
    constexpr std::string_view kPrefix = "AC1";
    return bytes.size() >= kDwgVersionSize && bytes.starts_with(kPrefix)
        && std::all_of(bytes.begin() + kPrefix.size(), bytes.begin() + kDwgVersionSize,
                       [](char c) { return c >= '0' && c <= '9'; });
}

ReadResult refuseDwg(platform::FileContent content, const std::wstring& path, Store& /*store*/)
{
    const std::string_view version = content.view().substr(0, kDwgVersionSize);
    const auto* const known = std::find_if(kDwgReleases.begin(), kDwgReleases.end(),
                                           [&](const auto& row) { return row.begin == version; });
    return {Acad::eUnsupportedFileFormat,
            path + L" is a DWG drawing (" + std::wstring(version.begin(), version.end())
                + (known == kDwgReleases.end() ? L"" : known->name)
                + L"); only DXF drawings can be opened; save it as DXF in the CAD program"};
}

constexpr std::array kFormats = {Format {dxf::isDxf, dxf::readDxf}, Format {isDwg, refuseDwg}};

} // namespace

ReadResult readDrawing(platform::FileContent content, const std::wstring& path, Store& store)
{
    if (content.size == 0) {
        return {Acad::eUnsupportedFileFormat, path + L" is empty and so no drawing"};
    }
    for (const Format& format : kFormats) {
        if (format.recognises(content.view())) {
            return format.read(std::move(content), path, store);
        }
    }
    return {Acad::eUnsupportedFileFormat,
            path + L" is no drawing: it begins neither as a text nor as a binary DXF file"};
}

platform::FileContent textContent(std::string_view text)
{
    platform::FileContent content;
    content.bytes = std::make_unique<char[]>(text.size() + platform::FileContent::kPadding);
    content.size = text.size();
    std::copy(text.begin(), text.end(), content.bytes.get());
    return content;
}

} // namespace corma::host
