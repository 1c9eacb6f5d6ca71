#pragma once

// Module files, as small as they can be: made byte by byte, with no code in them.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corma::testing {

using namespace std::string_literals;

/// A note as it goes into a file.
struct Note
{
    std::string owner = "Corma\0"s; // with its terminator
    std::uint32_t type = 1;
    std::string descriptor;
};

struct ModuleForm
{
    int bits = 64; // or 32
    bool bigEndian = false;
    std::size_t alignment = 4; // of the notes, or 8
};

/// A file with two segments: one that has no notes, and one that has these.
std::string moduleFile(const std::vector<Note>& notes, const ModuleForm& form = {});

/// Where fields stand in such a file of 64 bits.
struct Module64
{
    static constexpr std::size_t kSegmentsAt = 32; // of 8 bytes, in the header
    static constexpr std::size_t kSegmentSizeAt = 54; // of 2
    static constexpr std::size_t kSegmentCountAt = 56; // of 2
    static constexpr std::size_t kNotes = 64 + 56; // the entry of the segment with notes
    static constexpr std::size_t kOffsetAt = kNotes + 8; // of 8, as the next ones
    static constexpr std::size_t kSizeAt = kNotes + 32;
    static constexpr std::size_t kAlignmentAt = kNotes + 48;
    static constexpr std::size_t kFirstNote = kNotes + 56; // owner's size, size, type: of 4 each
};

/// The file of a module with a version block; the texts are UTF-8.
std::string moduleWithVersion(std::string_view description, std::string_view version,
                              std::string_view copyright);

} // namespace corma::testing
