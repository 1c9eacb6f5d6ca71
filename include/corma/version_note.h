#pragma once

// The version block of a module: what the about box tells of it. Written once, in one source file
// of a program or a shared library:
//
//     CORMA_VERSION_NOTE("Floor plans", "4.2.1", "Copyright (c) 2026 Somebody")
//
// Each argument is a string literal in UTF-8, or a macro that stands for one; texts of more than
// 255 characters are shown cut. The texts go into the file as a note, which linkers keep and which
// strip leaves alone; nothing runs, and the module needs no function of the library for it.
// Where programs have version resources, they have the texts in those, and the macro is empty.

#include <cstddef>
#include <cstdint>

namespace corma {

/// A note as it stands in the file, for its loader and for tools such as readelf.
template<std::size_t size> struct VersionNote
{
    std::uint32_t ownerSize; // bytes, with its terminator
    std::uint32_t textsSize; // bytes, with the last terminator
    std::uint32_t type;
    char owner[8];
    char texts[(size + 3) / 4 * 4]; // notes are counted in four bytes
};

inline constexpr std::uint32_t kVersionNoteType = 1;

/// For CORMA_VERSION_NOTE. The texts are "key=text", each with a terminator.
template<std::size_t size> constexpr VersionNote<size> versionNote(const char (&texts)[size])
{
    VersionNote<size> note {sizeof("Corma"), size, kVersionNoteType, "Corma", {}};
    for (std::size_t i = 0; i < size; ++i) {
        note.texts[i] = texts[i];
    }
    return note;
}

} // namespace corma

// A sanitizer would put room between the notes.
#if defined(__clang__)
#define CORMA_EXACTLY_AS_IT_STANDS [[clang::no_sanitize("address")]]
#else
#define CORMA_EXACTLY_AS_IT_STANDS
#endif

#if defined(__ELF__)
#define CORMA_VERSION_NOTE(description, version, copyright)                                        \
    CORMA_EXACTLY_AS_IT_STANDS                                                                     \
    [[gnu::section(".note.corma.version"), gnu::used,                                              \
      gnu::aligned(4)]] static const auto cormaVersionNote                                         \
        = ::corma::versionNote("FileDescription=" description "\0FileVersion=" version             \
                               "\0LegalCopyright=" copyright);
#else
#define CORMA_VERSION_NOTE(description, version, copyright)
#endif
