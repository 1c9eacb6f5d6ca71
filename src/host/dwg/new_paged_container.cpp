#include "host/dwg/PagedContainer.h"
#include "host/dwg/little_endian.h"
#include "host/dwg/page_checksum.h"
#include "host/dwg/sentinels.h"

#include <algorithm>
#include <array>

// What a drawing that was in no file gets around its parts: each section that programs look for,
// with nothing in it to say.

namespace corma::host::dwg {

namespace {

struct NewRelease
{
    DrawingVersion version = DrawingVersion::unknown;
    const char* begin = nullptr; // of the file
    std::uint16_t number = 0;
    std::uint8_t maintenance = 0; // of the last programs that wrote it as their own
};

constexpr std::array kNewReleases = {
    // clang-format off
    NewRelease {DrawingVersion::r2004, "AC1018", 25, 104},
    NewRelease {DrawingVersion::r2010, "AC1024", 29, 226},
    NewRelease {DrawingVersion::r2013, "AC1027", 31, 106},
    NewRelease {DrawingVersion::r2018, "AC1032", 33, 0},
    // clang-format on
};

void addZeros(std::size_t count, std::string& bytes)
{
    bytes.append(count, '\0');
}

// Day and millisecond. No file is as old as this one.
void addDate(std::string& bytes)
{
    constexpr std::uint32_t kYear2000 = 2451545;
    addNumber(kYear2000, bytes);
    addNumber<std::uint32_t>(0, bytes);
}

// Counted with the zero at its end; from R2007 on of two bytes each.
void addText(std::string_view text, const NewRelease& release, std::string& bytes)
{
    const bool isWide = release.version > DrawingVersion::r2004;
    addNumber(static_cast<std::uint16_t>(text.size() + 1), bytes);
    for (const char c : text) {
        bytes += c;
        addZeros(isWide ? 1 : 0, bytes);
    }
    addZeros(isWide ? 2 : 1, bytes);
}

void addVersion(const NewRelease& release, std::string& bytes)
{
    addNumber(release.number, bytes);
    if (release.version >= DrawingVersion::r2018) {
        addNumber<std::uint32_t>(release.maintenance, bytes);
    } else {
        addNumber<std::uint16_t>(release.maintenance, bytes);
    }
}

std::string auxiliary(const NewRelease& release)
{
    constexpr std::string_view kBegin = "\xFF\x77\x01";
    constexpr std::uint32_t kAlways = 0xFFFFFFFF;
    constexpr std::array<std::uint16_t, 6> kUnknown = {5, 0x893, 5, 0x893, 0, 1};
    constexpr std::size_t kUnknownZeros = 20;
    std::string bytes(kBegin);
    addVersion(release, bytes);
    addNumber<std::uint32_t>(1, bytes); // saves
    addNumber(kAlways, bytes);
    addNumber<std::uint16_t>(1, bytes); // saves in two parts
    addNumber<std::uint16_t>(0, bytes);
    addNumber<std::uint32_t>(0, bytes);
    addVersion(release, bytes); // of the programs that wrote it
    addVersion(release, bytes);
    for (const std::uint16_t number : kUnknown) {
        addNumber(number, bytes);
    }
    addZeros(kUnknownZeros, bytes);
    addDate(bytes); // made
    addDate(bytes); // changed
    addNumber<std::uint32_t>(0, bytes); // the seed of handles, set when it is written
    addNumber<std::uint32_t>(0, bytes);
    addNumber<std::uint16_t>(0, bytes);
    addNumber<std::uint16_t>(1, bytes); // saves
    addZeros(3 * sizeof(std::uint32_t), bytes);
    addNumber<std::uint32_t>(1, bytes); // saves
    addZeros(4 * sizeof(std::uint32_t), bytes);
    return bytes;
}

std::string freeSpace(const NewRelease& release)
{
    constexpr std::array<std::uint64_t, 4> kUnknown = {0x32, 0x64, 0x200, 0xFFFFFFFF};
    const bool isLong = release.version > DrawingVersion::r2004; // each number is of twice the size
    const auto add = [&](std::string& bytes, std::uint64_t number) {
        addNumber(number, bytes);
        addZeros(isLong ? sizeof number : 0, bytes);
    };
    std::string bytes;
    addZeros(isLong ? 2 * sizeof(std::uint64_t) : 2 * sizeof(std::uint32_t), bytes);
    addDate(bytes);
    addZeros(isLong ? 0 : sizeof(std::uint32_t), bytes);
    bytes += static_cast<char>(kUnknown.size());
    for (const std::uint64_t number : kUnknown) {
        add(bytes, number);
    }
    return bytes;
}

std::string templateText(const NewRelease& release)
{
    constexpr std::uint16_t kMetric = 1;
    std::string bytes;
    if (release.version > DrawingVersion::r2004) {
        addText({}, release, bytes);
    } else {
        addNumber<std::uint16_t>(0, bytes);
    }
    addNumber(kMetric, bytes);
    return bytes;
}

std::string summary(const NewRelease& release)
{
    constexpr std::size_t kTexts = 8; // title, subject, author and others
    constexpr std::size_t kTimeSize = 8; // of editing
    std::string bytes;
    for (std::size_t i = 0; i < kTexts; ++i) {
        addText({}, release, bytes);
    }
    addZeros(kTimeSize, bytes);
    addDate(bytes);
    addDate(bytes);
    addNumber<std::uint16_t>(0, bytes); // own properties
    addZeros(2 * sizeof(std::uint32_t), bytes);
    return bytes;
}

std::string preview(const NewRelease& /*release*/)
{
    std::string bytes(kPictureBegin);
    addNumber<std::uint32_t>(1, bytes); // bytes up to the end
    bytes += '\0'; // pictures
    return bytes += kPictureEnd;
}

std::string appInfo(const NewRelease& /*release*/)
{
    constexpr std::uint32_t kForm = 3; // whose texts are of two bytes each in all releases
    std::string bytes;
    addNumber(kForm, bytes);
    addText("AppInfoDataList", kNewReleases.back(), bytes);
    addNumber<std::uint32_t>(0, bytes); // entries
    return bytes;
}

std::string fileDependencies(const NewRelease& /*release*/)
{
    std::string bytes;
    addNumber<std::uint32_t>(0, bytes); // kinds of files
    addNumber<std::uint32_t>(0, bytes); // files
    return bytes;
}

std::string history(const NewRelease& /*release*/)
{
    std::string bytes;
    for (const std::uint32_t number : {0U, 0U, 1U, 0U}) {
        addNumber(number, bytes);
    }
    return bytes;
}

std::string nothingYet(const NewRelease& /*release*/)
{
    return {};
}

struct Row
{
    std::string_view name;
    Section::Form form = Section::Form::compressed;
    std::uint32_t encrypted = 0;
    std::string (*content)(const NewRelease&) = nullptr;
};

using enum Section::Form;

// In the order of the section map. The numbers of the sections count down to 1.
constexpr std::array kNewSections = {
    // clang-format off
    Row {section::kFileDependencies, plain,      2, fileDependencies},
    Row {section::kAppInfo,          plain,      0, appInfo},
    Row {section::kPreview,          plain,      0, preview},
    Row {section::kSummary,          plain,      0, summary},
    Row {section::kHistory,          compressed, 0, history},
    Row {section::kObjects,          compressed, 0, nothingYet},
    Row {section::kFreeSpace,        compressed, 0, freeSpace},
    Row {section::kTemplate,         compressed, 0, templateText},
    Row {section::kMap,              compressed, 0, nothingYet},
    Row {section::kClasses,          compressed, 0, nothingYet},
    Row {section::kAuxiliary,        compressed, 0, auxiliary},
    Row {section::kHeader,           compressed, 0, nothingYet},
    // clang-format on
};

PagedContainer::Made made(const Row& row, std::uint32_t id, const NewRelease& release)
{
    constexpr std::size_t kPlainStep = 0x80;
    PagedContainer::Made made;
    made.content = row.content(release);
    made.section.form = row.form;
    made.section.id = id;
    made.section.encrypted = row.encrypted;
    made.section.nameBytes = row.name;
    made.section.nameBytes.resize(Section::kNameSize, '\0');
    if (row.form == plain) {
        made.section.pageSize = static_cast<std::uint32_t>((made.content.size() + kPlainStep - 1)
                                                           / kPlainStep * kPlainStep);
    }
    return made;
}

std::vector<PagedContainer::Made> sections(const NewRelease& release)
{
    std::vector<PagedContainer::Made> all;
    Row empty; // every file has it, with the number 0
    empty.content = nothingYet;
    all.push_back(made(empty, 0, release));
    auto id = static_cast<std::uint32_t>(kNewSections.size());
    for (const Row& row : kNewSections) {
        all.push_back(made(row, id--, release));
    }
    return all;
}

std::string headOf(const NewRelease& release, int codePage)
{
    constexpr char kUnknown = 3;
    constexpr std::size_t kUnknownAt = 0x0C;
    constexpr std::size_t kProgramAt = 0x11;
    constexpr std::size_t kMixedAt = 0x28;
    std::string bytes(release.begin);
    bytes.resize(kPagedHeadSize, '\0');
    bytes[head::kMaintenanceAt] = static_cast<char>(release.maintenance);
    bytes[kUnknownAt] = kUnknown;
    bytes[kProgramAt] = static_cast<char>(release.number);
    bytes[kProgramAt + 1] = static_cast<char>(release.maintenance);
    putNumber(static_cast<std::uint16_t>(codePage), head::kCodePageAt, bytes);
    putNumber(static_cast<std::uint32_t>(PagedHeader::kAt), kMixedAt, bytes);
    // Behind the mixed part the mask goes on, counted from the begin of the file.
    for (std::size_t at = PagedHeader::kAt + PagedHeader::kSize; at < bytes.size(); ++at) {
        bytes[at] = static_cast<char>(kMask[at]);
    }
    return bytes;
}

} // namespace

std::unique_ptr<Container> newPagedContainer(DrawingVersion version, int codePage)
{
    const auto* const release
        = std::find_if(kNewReleases.begin(), kNewReleases.end(),
                       [&](const NewRelease& row) { return row.version == version; });
    if (release == kNewReleases.end()) {
        return nullptr;
    }
    auto container = std::make_unique<PagedContainer>();
    container->begin(headOf(*release, codePage), sections(*release));
    return container;
}

} // namespace corma::host::dwg
