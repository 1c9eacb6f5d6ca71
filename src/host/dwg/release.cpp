#include "host/dwg/release.h"

#include <algorithm>
#include <array>

namespace corma::host::dwg {

namespace {

struct Release
{
    std::string_view begin;
    const wchar_t* name;
    DrawingVersion version = DrawingVersion::unknown; // unknown: cannot be read
};

using enum DrawingVersion;

constexpr std::array kReleases = {
    // clang-format off
    Release {"AC1002", L", R2.5"},
    Release {"AC1004", L", R9"},
    Release {"AC1006", L", R10"},
    Release {"AC1009", L", R11 or R12"},
    Release {"AC1012", L", R13", r13},
    Release {"AC1014", L", R14", r14},
    Release {"AC1015", L", R2000", r2000},
    Release {"AC1018", L", R2004", r2004},
    Release {"AC1021", L", R2007", r2007},
    Release {"AC1024", L", R2010", r2010},
    Release {"AC1027", L", R2013", r2013},
    Release {"AC1032", L", R2018", r2018},
    // clang-format on
};

constexpr std::size_t kVersionSize = 6;

const Release* find(std::string_view bytes)
{
    const auto* const found
        = std::find_if(kReleases.begin(), kReleases.end(),
                       [&](const Release& row) { return bytes.starts_with(row.begin); });
    return found == kReleases.end() ? nullptr : found;
}

} // namespace

bool isDwg(std::string_view bytes)
{
    constexpr std::string_view kPrefix = "AC1";
    return bytes.size() >= kVersionSize && bytes.starts_with(kPrefix)
        && std::all_of(bytes.begin() + kPrefix.size(), bytes.begin() + kVersionSize,
                       [](char c) { return c >= '0' && c <= '9'; });
}

DrawingVersion releaseOf(std::string_view bytes)
{
    const Release* const release = find(bytes);
    return release == nullptr ? unknown : release->version;
}

ReadResult refusal(std::string_view bytes, const std::wstring& path)
{
    const std::string_view version = bytes.substr(0, kVersionSize);
    const Release* const release = find(bytes);
    return {Acad::eUnsupportedFileFormat,
            path + L" is a DWG drawing (" + std::wstring(version.begin(), version.end())
                + (release == nullptr ? L"" : release->name)
                + L"); only those of R13 to R2018 can be opened; save it as one of these, or as "
                  L"DXF, in the CAD program"};
}

ReadResult damage(const std::wstring& path, std::size_t at, std::wstring_view what)
{
    std::wstring message = path + L", byte " + std::to_wstring(at) + L": ";
    message += what;
    message += L"; the file is damaged: use a backup, or recover the drawing in the CAD program";
    return {Acad::eFileInternalErr, std::move(message)};
}

} // namespace corma::host::dwg
