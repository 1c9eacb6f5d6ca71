#pragma once

// What the files with named sections, those from R2004 on, have in common.

#include "host/dwg/Container.h"

#include <string>
#include <string_view>

namespace corma::host::dwg {

namespace section {

inline constexpr std::string_view kHeader = "AcDb:Header";
inline constexpr std::string_view kClasses = "AcDb:Classes";
inline constexpr std::string_view kMap = "AcDb:Handles";
inline constexpr std::string_view kObjects = "AcDb:AcDbObjects";
inline constexpr std::string_view kFreeSpace = "AcDb:ObjFreeSpace";
inline constexpr std::string_view kAuxiliary = "AcDb:AuxHeader";
inline constexpr std::string_view kTemplate = "AcDb:Template";
inline constexpr std::string_view kPreview = "AcDb:Preview";
inline constexpr std::string_view kSummary = "AcDb:SummaryInfo";
inline constexpr std::string_view kAppInfo = "AcDb:AppInfo";
inline constexpr std::string_view kFileDependencies = "AcDb:FileDepList";
inline constexpr std::string_view kHistory = "AcDb:RevHistory";

} // namespace section

// Numbers in the head of a file.
namespace head {

inline constexpr std::size_t kMaintenanceAt = 0x0B;
inline constexpr std::size_t kCodePageAt = 0x13;
inline constexpr std::size_t kSecurityAt = 0x18;
inline constexpr std::size_t kSize = 0x80;

} // namespace head

/// The sections that are decompressed.
struct PartSections
{
    std::string header;
    std::string classes;
    std::string map;
    std::string objects;
};

/// Gives each section that is needed to `read`, with the text that it goes to; false as soon as
/// `read` says so.
template<typename Read> bool eachPart(PartSections& sections, const Read& read)
{
    return read(section::kHeader, sections.header) && read(section::kClasses, sections.classes)
        && read(section::kMap, sections.map) && read(section::kObjects, sections.objects);
}

/// What the head of a file, of at least head::kSize bytes, tells of it.
Parts partsOfHead(std::string_view bytes);

/// Views of the sections. Those with sentinels end with them, whatever stands behind.
void setParts(const PartSections& sections, Parts& parts);

/// True for a file that only the owner of a password can read.
bool isSecret(std::string_view bytes);

/// Why such a file is not read.
ReadResult secret(const std::wstring& path);

/// Why a file without a section is not read.
ReadResult missing(const std::wstring& path, std::string_view section);

} // namespace corma::host::dwg
