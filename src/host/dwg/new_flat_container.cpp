// A file of R2000 with nothing in it.

#include "host/dwg/FlatContainer.h"
#include "host/dwg/SecondHead.h"
#include "host/dwg/checksum.h"
#include "host/dwg/little_endian.h"
#include "host/dwg/object_map.h"
#include "host/dwg/sentinels.h"

#include <array>
#include <initializer_list>

namespace corma::host::dwg {

namespace {

constexpr std::size_t kSectionCount = 6;
constexpr std::uint16_t kHeadMask = 0x8461; // of as many sections
constexpr std::size_t kHeadSize = kLocatorsAt + kSectionCount * kLocatorSize + 2 + kSentinelSize;
constexpr std::uint16_t kReleaseNumber = 23; // of R2000, in places that are not meant for people
constexpr std::uint8_t kMaintenance = 6;
constexpr std::uint16_t kProgram = 0x0617;

// Counters and dates, of which a new file has none.
std::string auxiliary()
{
    constexpr std::size_t kSize = 123;
    constexpr std::size_t kDatesAt = 0x3F;
    constexpr std::size_t kLaterAt = 0x57;
    std::string bytes("\xFF\x77\x01", 3);
    addNumber(kReleaseNumber, bytes);
    addNumber(std::uint16_t {kMaintenance}, bytes);
    addNumber(std::uint32_t {1}, bytes); // how often it was saved
    addNumber(~std::uint32_t {0}, bytes);
    addNumber(std::uint16_t {1}, bytes); // saved before the last R14
    addNumber(std::uint16_t {0}, bytes); // and since
    addNumber(std::uint32_t {0}, bytes);
    for (int i = 0; i < 2; ++i) {
        addNumber(kReleaseNumber, bytes);
        addNumber(std::uint16_t {kMaintenance}, bytes);
    }
    for (const std::uint16_t number :
         std::initializer_list<std::uint16_t> {5, 0x0893, 5, 0x0893, 0, 1}) {
        addNumber(number, bytes);
    }
    bytes.resize(kDatesAt, '\0');
    bytes.resize(kLaterAt, '\0');
    bytes.resize(kSize, '\0');
    return bytes;
}

std::string emptyPicture()
{
    std::string bytes(kPictureBegin);
    addNumber(std::uint32_t {1}, bytes); // bytes that follow
    bytes += '\0'; // images
    bytes += kPictureEnd;
    return bytes;
}

std::string emptyVariables(std::string_view begin, std::string_view end)
{
    std::string bytes;
    addNumber(std::uint32_t {0}, bytes);
    addNumber(checksum(bytes), bytes);
    return std::string(begin) + bytes + std::string(end);
}

std::string summary()
{
    std::string bytes;
    addNumber(std::uint32_t {0}, bytes);
    addNumber(std::uint32_t {0}, bytes); // objects
    addNumber(std::uint64_t {0}, bytes); // a date
    addNumber(std::uint32_t {0}, bytes); // where the objects begin
    constexpr std::array<std::uint64_t, 4> kLimits = {0x32, 0x64, 0x200, 0xFFFFFFFF};
    bytes += static_cast<char>(kLimits.size());
    for (const std::uint64_t limit : kLimits) {
        addNumber(limit, bytes);
    }
    return bytes;
}

// Puts the parts of a file behind its head and notes where each begins.
class FileBuilder
{
public:
    explicit FileBuilder(int codePage)
        : m_numbers {kMaintenance, kProgram, static_cast<std::uint16_t>(codePage)}
    {
        m_bytes = "AC1015";
        m_bytes.append(5, '\0');
        m_bytes += static_cast<char>(kMaintenance);
        m_bytes += '\1';
        addNumber(std::uint32_t {0}, m_bytes); // the preview
        addNumber(m_numbers.program, m_bytes);
        addNumber(m_numbers.codePage, m_bytes);
        addNumber(static_cast<std::uint32_t>(kSectionCount), m_bytes);
        m_bytes.resize(kHeadSize, '\0');
    }

    void addSection(std::size_t number, std::string_view bytes)
    {
        m_sections.at(number) = {m_bytes.size(), bytes.size()};
        m_bytes += bytes;
    }

    void addPicture(std::string_view bytes)
    {
        constexpr std::size_t kPictureAt = 0x0D;
        putNumber(static_cast<std::uint32_t>(m_bytes.size()), kPictureAt, m_bytes);
        m_bytes += bytes;
    }

    void add(std::string_view bytes) { m_bytes += bytes; }

    void addSecondHead() { m_secondHeadAt = m_bytes.size(); }

    std::string finish()
    {
        const std::string second = SecondHead::made(m_secondHeadAt, m_numbers, sections());
        for (auto& section : m_sections) {
            section.begin += section.begin >= m_secondHeadAt ? second.size() : 0;
        }
        m_bytes.insert(m_secondHeadAt, SecondHead::made(m_secondHeadAt, m_numbers, sections()));
        for (std::size_t i = 0; i < kSectionCount; ++i) {
            const std::size_t at = kLocatorsAt + i * kLocatorSize;
            m_bytes[at] = static_cast<char>(i);
            putNumber(static_cast<std::uint32_t>(m_sections[i].begin), at + 1, m_bytes);
            putNumber(static_cast<std::uint32_t>(m_sections[i].size),
                      at + 1 + sizeof(std::uint32_t), m_bytes);
        }
        const std::size_t sumAt = kLocatorsAt + kSectionCount * kLocatorSize;
        const unsigned sum = checksum(std::string_view(m_bytes).substr(0, sumAt), 0) ^ kHeadMask;
        putNumber(static_cast<std::uint16_t>(sum), sumAt, m_bytes);
        m_bytes.replace(sumAt + 2, kSentinelSize, kHeadEnd);
        return std::move(m_bytes);
    }

private:
    [[nodiscard]] std::vector<SecondHead::Section> sections() const
    {
        return {m_sections.begin(), m_sections.end()};
    }

    SecondHead::HeadNumbers m_numbers;
    std::string m_bytes;
    std::array<SecondHead::Section, kSectionCount> m_sections {};
    std::size_t m_secondHeadAt = 0;
};

} // namespace

std::unique_ptr<Container> newFlatContainer(int codePage)
{
    enum : std::size_t
    {
        header,
        classes,
        map,
        objectSummary,
        measurement,
        counters
    };

    constexpr std::string_view kAheadOfObjects("\xCA\x0D\0\0", 4);
    FileBuilder file(codePage);
    file.addSection(counters, auxiliary());
    file.addPicture(emptyPicture());
    file.addSection(header, emptyVariables(kVariablesBegin, kVariablesEnd));
    file.addSection(classes, emptyVariables(kClassesBegin, kClassesEnd));
    file.add(kAheadOfObjects);
    file.addSection(map, encodeObjectMap({}));
    file.addSection(objectSummary, summary());
    file.addSecondHead();
    file.addSection(measurement, std::string_view("\0\0\1\0", 4)); // metric
    auto made = readFlatContainer(textContent(file.finish()), {});
    auto* const container = std::get_if<std::unique_ptr<Container>>(&made);
    return container == nullptr ? nullptr : std::move(*container);
}

} // namespace corma::host::dwg
