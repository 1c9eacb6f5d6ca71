#pragma once

// The version note in a module file of ELF form, as corma/version_note.h writes it.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace corma::platform {

/// The bytes of a file, wherever they are.
class FileBytes
{
public:
    FileBytes() = default;
    FileBytes(const FileBytes&) = delete;
    FileBytes& operator=(const FileBytes&) = delete;
    virtual ~FileBytes() = default;

    /// Copies what stands at `offset` into `bytes`; the count, which is less at the end of the
    /// file and 0 behind it.
    [[nodiscard]] virtual std::size_t read(std::uint64_t offset, std::span<char> bytes) const = 0;
};

/// Bytes that are in memory; they must outlive the object.
class BytesInMemory : public FileBytes
{
public:
    explicit BytesInMemory(std::string_view bytes)
        : m_bytes(bytes)
    {
    }

    [[nodiscard]] std::size_t read(std::uint64_t offset, std::span<char> bytes) const override;

private:
    std::string_view m_bytes;
};

/// What is looked at of a file, whatever it says of itself.
inline constexpr std::size_t kMostSegments = 256;
inline constexpr std::size_t kMostNoteBytes = std::size_t {64} * 1024; // of one segment

/// The texts of the first version note, "key=text" with a terminator each; nothing when the file
/// is no module or has no note. 32 or 64 bits, either order of bytes. No number of the file is
/// trusted: what reaches beyond its end or the limits above is left out.
std::optional<std::string> versionNote(const FileBytes& file);

/// The text of the first entry with that key, to the letter; nothing when there is none.
std::optional<std::string_view> textInNote(std::string_view texts, std::string_view key);

} // namespace corma::platform
