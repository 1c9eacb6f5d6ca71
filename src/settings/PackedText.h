#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// Stands for the value of a level that has none. A real value equal to it counts as none.
inline constexpr const wchar_t* NOT_FOUND_MARKER = L"***KV_BESTAAT_NIET***";

namespace corma {

/// UTF-8 of a text, in which surrogates that stand alone are kept, too: bytes of a path that are no
/// text are such. fromPacked() gives back what toPacked() was given.
std::string toPacked(std::wstring_view text);
std::wstring fromPacked(std::string_view bytes);

/// A text that is read seldom, in little memory: a model holds a dozen for each of its settings,
/// most of them empty or a few letters long. Such a one takes 8 bytes and nothing of the heap, and
/// so does the marker of a level without a value.
class PackedText
{
public:
    PackedText() = default;

    explicit PackedText(std::string_view bytes) { assign(bytes); }

    PackedText(const PackedText& other)
        : PackedText(other.bytes())
    {
    }

    PackedText(PackedText&& other) noexcept
        : m_word(std::exchange(other.m_word, kEmpty))
    {
    }

    PackedText& operator=(PackedText other) noexcept
    {
        std::swap(m_word, other.m_word);
        return *this;
    }

    ~PackedText() { release(); }

    /// The marker of a level without a value.
    static PackedText marker() { return PackedText(Raw {kMarker}); }

    /// The text in the form of toPacked(). It may be a part of the former text.
    void assign(std::string_view bytes);

    /// Good until the text changes.
    [[nodiscard]] std::string_view bytes() const;

    [[nodiscard]] std::wstring wide() const { return fromPacked(bytes()); }

    [[nodiscard]] bool isMarker() const { return m_word == kMarker; }

private:
    friend class TextArena;

    using Word = std::uint64_t;

    // Of an odd word the lowest byte is twice the size and 1, and the text stands in the bytes
    // above it. An even one is the address of a block, and of one that is not owned with kBorrowed
    // put to it.
    static constexpr Word kInside = 1;
    static constexpr Word kBorrowed = 2;
    static constexpr Word kEmpty = 0;
    static constexpr Word kMarker = kBorrowed;

    enum class Raw : Word
    {
    };

    explicit PackedText(Raw word)
        : m_word(static_cast<Word>(word))
    {
    }

    // The word of a text that needs no block; nothing for others.
    static std::optional<Word> wordWithoutBlock(std::string_view bytes);

    void release();

    Word m_word = kEmpty;
};

/// Where texts that come in great numbers lie one behind the other. They go with the arena and not
/// before; it must outlive all that pack() gave and those to which that was moved. A copy of such a
/// text has its own memory.
class TextArena
{
public:
    [[nodiscard]] PackedText pack(std::string_view bytes);

private:
    std::vector<std::unique_ptr<char[]>> m_chunks;
    char* m_free = nullptr; // in the last chunk
    std::size_t m_left = 0; // bytes there
};

} // namespace corma
