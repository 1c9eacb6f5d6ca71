#include "host/dwg/sections.h"

#include "host/dwg/little_endian.h"
#include "host/dwg/release.h"
#include "host/dwg/sentinels.h"

namespace corma::host::dwg {

namespace {

std::string_view upToSentinel(std::string_view section, std::string_view sentinel)
{
    const std::size_t at = section.rfind(sentinel);
    return at == std::string_view::npos ? section : section.substr(0, at + sentinel.size());
}

} // namespace

Parts partsOfHead(std::string_view bytes)
{
    Parts parts;
    parts.version = releaseOf(bytes);
    parts.maintenance = static_cast<unsigned char>(bytes[head::kMaintenanceAt]);
    parts.codePage = numberAt<std::uint16_t>(bytes, head::kCodePageAt);
    return parts;
}

void setParts(const PartSections& sections, Parts& parts)
{
    parts.header = upToSentinel(sections.header, kVariablesEnd);
    parts.classes = upToSentinel(sections.classes, kClassesEnd);
    parts.map = sections.map;
    parts.objects = sections.objects;
}

bool isSecret(std::string_view bytes)
{
    constexpr unsigned kDataIsSecret = 1;
    return (numberAt<std::uint32_t>(bytes, head::kSecurityAt) & kDataIsSecret) != 0;
}

ReadResult secret(const std::wstring& path)
{
    return {Acad::eUnsupportedFileFormat,
            path
                + L" is protected with a password; take the password off in the CAD program to "
                  L"open it here"};
}

ReadResult missing(const std::wstring& path, std::string_view section)
{
    constexpr std::size_t kMapsAt = 0x80; // what leads to the sections
    return damage(path, kMapsAt,
                  L"the section " + std::wstring(section.begin(), section.end()) + L" is missing");
}

} // namespace corma::host::dwg
