#include "platform/posix/version_note.h"

#include <corma/version_note.h>

#include <algorithm>
#include <array>
#include <elf.h>

namespace corma::platform {

namespace {

constexpr std::string_view kOwner("Corma", sizeof("Corma")); // with its terminator

// Where the fields stand, by the number of bits.
struct Form
{
    std::size_t word; // bytes of an offset or size
    std::size_t headerSize;
    std::size_t segmentsAt; // in the header of the file: offset of the table of segments
    std::size_t segmentSizeAt; // of one entry of it
    std::size_t segmentCountAt;
    std::size_t entrySize;
    std::size_t offsetAt; // in an entry of the table
    std::size_t sizeAt;
    std::size_t alignmentAt;
};

template<class Header, class Entry>
constexpr Form kForm = {.word = sizeof(Header::e_phoff),
                        .headerSize = sizeof(Header),
                        .segmentsAt = offsetof(Header, e_phoff),
                        .segmentSizeAt = offsetof(Header, e_phentsize),
                        .segmentCountAt = offsetof(Header, e_phnum),
                        .entrySize = sizeof(Entry),
                        .offsetAt = offsetof(Entry, p_offset),
                        .sizeAt = offsetof(Entry, p_filesz),
                        .alignmentAt = offsetof(Entry, p_align)};

constexpr Form kForm32 = kForm<Elf32_Ehdr, Elf32_Phdr>;
constexpr Form kForm64 = kForm<Elf64_Ehdr, Elf64_Phdr>;

enum class ByteOrder
{
    little,
    big
};

// The number at a place that must be within the bytes.
std::uint64_t number(std::string_view bytes, std::size_t at, std::size_t size, ByteOrder order)
{
    std::uint64_t value = 0;
    for (std::size_t i = 0; i < size; ++i) {
        const std::size_t next = order == ByteOrder::big ? at + i : at + size - 1 - i;
        value = value << 8U | static_cast<unsigned char>(bytes[next]);
    }
    return value;
}

struct Segment
{
    std::uint64_t offset = 0;
    std::uint64_t size = 0;
    std::size_t alignment = 4; // of its notes
};

class Module
{
public:
    explicit Module(const FileBytes& file)
        : m_file(file)
    {
        std::array<char, kForm64.headerSize> bytes {};
        const std::string_view header(bytes.data(), file.read(0, bytes));
        if (header.size() < kForm32.headerSize || !header.starts_with(ELFMAG)) {
            return;
        }
        const char bits = header[EI_CLASS];
        const char order = header[EI_DATA];
        m_form = bits == ELFCLASS64 ? &kForm64 : &kForm32;
        if ((bits != ELFCLASS32 && bits != ELFCLASS64)
            || (order != ELFDATA2LSB && order != ELFDATA2MSB)
            || header.size() < m_form->headerSize) {
            return;
        }
        m_order = order == ELFDATA2LSB ? ByteOrder::little : ByteOrder::big;
        m_segmentsAt = number(header, m_form->segmentsAt, m_form->word, m_order);
        m_segmentSize = number(header, m_form->segmentSizeAt, 2, m_order);
        m_segmentCount = number(header, m_form->segmentCountAt, 2, m_order);
        if (m_segmentSize < m_form->entrySize) {
            m_segmentCount = 0;
        }
    }

    [[nodiscard]] ByteOrder order() const { return m_order; }

    [[nodiscard]] std::size_t segmentCount() const
    {
        return std::min<std::size_t>(m_segmentCount, kMostSegments);
    }

    /// Nothing for a segment without notes, and beyond the end of the file.
    [[nodiscard]] std::optional<Segment> noteSegment(std::size_t index) const
    {
        std::array<char, kForm64.entrySize> bytes {};
        const std::uint64_t at = m_segmentsAt + index * m_segmentSize;
        if (at < m_segmentsAt
            || m_file.read(at, std::span(bytes).first(m_form->entrySize)) < m_form->entrySize) {
            return std::nullopt;
        }
        const std::string_view entry(bytes.data(), m_form->entrySize);
        if (number(entry, 0, 4, m_order) != PT_NOTE) {
            return std::nullopt;
        }
        constexpr std::uint64_t kWide = 8;
        const bool isWide = number(entry, m_form->alignmentAt, m_form->word, m_order) == kWide;
        return Segment {.offset = number(entry, m_form->offsetAt, m_form->word, m_order),
                        .size = number(entry, m_form->sizeAt, m_form->word, m_order),
                        .alignment = isWide ? kWide : 4};
    }

private:
    const FileBytes& m_file;
    const Form* m_form = &kForm32;
    ByteOrder m_order = ByteOrder::little;
    std::uint64_t m_segmentsAt = 0;
    std::uint64_t m_segmentSize = 0;
    std::uint64_t m_segmentCount = 0; // 0 for what is no module
};

std::string bytesOf(const FileBytes& file, const Segment& segment)
{
    std::string bytes(std::min<std::uint64_t>(segment.size, kMostNoteBytes), '\0');
    bytes.resize(file.read(segment.offset, bytes));
    return bytes;
}

std::size_t roundedUp(std::size_t size, std::size_t step)
{
    return (size + step - 1) / step * step;
}

// The descriptor of the first version note among those of a segment.
std::optional<std::string_view> versionNoteAmong(std::string_view notes, std::size_t alignment,
                                                 ByteOrder order)
{
    constexpr std::size_t kHeaderSize = 12;
    while (notes.size() >= kHeaderSize) {
        // Numbers of four bytes: their sums cannot run over.
        const std::size_t ownerSize = number(notes, 0, 4, order);
        const std::size_t size = number(notes, 4, 4, order);
        const std::size_t descriptorAt = roundedUp(kHeaderSize + ownerSize, alignment);
        if (descriptorAt > notes.size() || size > notes.size() - descriptorAt) {
            return std::nullopt;
        }
        if (notes.substr(kHeaderSize, ownerSize) == kOwner
            && number(notes, 8, 4, order) == kVersionNoteType) {
            return notes.substr(descriptorAt, size);
        }
        notes.remove_prefix(std::min(roundedUp(descriptorAt + size, alignment), notes.size()));
    }
    return std::nullopt;
}

} // namespace

std::size_t BytesInMemory::read(std::uint64_t offset, std::span<char> bytes) const
{
    return offset >= m_bytes.size() ? 0 : m_bytes.copy(bytes.data(), bytes.size(), offset);
}

std::optional<std::string> versionNote(const FileBytes& file)
{
    const Module module(file);
    for (std::size_t i = 0; i < module.segmentCount(); ++i) {
        const auto segment = module.noteSegment(i);
        if (!segment) {
            continue;
        }
        const std::string notes = bytesOf(file, *segment);
        if (const auto found = versionNoteAmong(notes, segment->alignment, module.order())) {
            return std::string(*found);
        }
    }
    return std::nullopt;
}

std::optional<std::string_view> textInNote(std::string_view texts, std::string_view key)
{
    while (!texts.empty()) {
        const std::string_view entry = texts.substr(0, texts.find('\0'));
        if (entry.starts_with(key) && entry.substr(key.size()).starts_with('=')) {
            return entry.substr(key.size() + 1);
        }
        texts.remove_prefix(std::min(entry.size() + 1, texts.size()));
    }
    return std::nullopt;
}

} // namespace corma::platform
