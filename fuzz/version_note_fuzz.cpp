#include "fuzz_support.h"
#include "platform/posix/version_note.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>
#include <elf.h>
#include <vector>

namespace {

using namespace corma::platform;

// The same search as one reads the files of this machine: by the structures of the system.
template<class Header, class Segment> std::optional<std::string> plainSearch(std::string_view file)
{
    Header header;
    std::memcpy(&header, file.data(), sizeof(header));
    const std::size_t count = std::min<std::size_t>(header.e_phnum, kMostSegments);
    for (std::size_t i = 0; i < count && header.e_phentsize >= sizeof(Segment); ++i) {
        const std::size_t at = header.e_phoff + i * header.e_phentsize;
        Segment segment;
        if (header.e_phoff > file.size() || at + sizeof(segment) > file.size()) {
            continue;
        }
        std::memcpy(&segment, file.data() + static_cast<std::size_t>(at), sizeof(segment));
        if (segment.p_type != PT_NOTE || segment.p_offset > file.size()) {
            continue;
        }
        const std::string_view notes = file.substr(
            segment.p_offset, std::min<std::size_t>(segment.p_filesz, kMostNoteBytes));
        const std::size_t step = segment.p_align == 8 ? 8 : 4;
        for (std::size_t from = 0; from + sizeof(Elf64_Nhdr) <= notes.size();) {
            Elf64_Nhdr note;
            std::memcpy(&note, notes.data() + from, sizeof(note));
            std::size_t text = from + sizeof(note) + note.n_namesz;
            text += (step - (text - from) % step) % step;
            if (text + note.n_descsz > notes.size()) {
                break;
            }
            if (note.n_type == 1 && note.n_namesz == 6
                && std::memcmp(notes.data() + from + sizeof(note), "Corma", 6) == 0) {
                return std::string(notes.substr(text, note.n_descsz));
            }
            from = text + note.n_descsz;
            from += (step - from % step) % step;
        }
    }
    return std::nullopt;
}

std::optional<std::string> plainNote(std::string_view file)
{
    if (file.size() < sizeof(Elf32_Ehdr) || !file.starts_with(ELFMAG)) {
        return std::nullopt;
    }
    if (file[EI_CLASS] == ELFCLASS32) {
        return plainSearch<Elf32_Ehdr, Elf32_Phdr>(file);
    }
    return file[EI_CLASS] == ELFCLASS64 && file.size() >= sizeof(Elf64_Ehdr)
        ? plainSearch<Elf64_Ehdr, Elf64_Phdr>(file)
        : std::nullopt;
}

} // namespace

/// The input is a module file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string_view file(reinterpret_cast<const char*>(data), size);
    const auto texts = versionNote(BytesInMemory(file));
    corma::fuzzing::require(!texts || texts->size() <= kMostNoteBytes);
    constexpr char kOwnOrder = std::endian::native == std::endian::little ? 1 : 2;
    if (size > EI_DATA && file[EI_DATA] == kOwnOrder) {
        corma::fuzzing::require(texts == plainNote(file));
    }
    const auto version = texts ? textInNote(*texts, "FileVersion") : std::nullopt;
    corma::fuzzing::require(!version || version->find('\0') == std::string_view::npos);
    corma::fuzzing::require(!version || texts->find("FileVersion=") != std::string::npos);
    return 0;
}
