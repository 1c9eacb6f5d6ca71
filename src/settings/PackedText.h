#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

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
    static PackedText marker()
    {
        PackedText text;
        text.m_word = kMarker;
        return text;
    }

    /// The text in the form of toPacked(). It may be a part of the former text.
    void assign(std::string_view bytes);

    /// Good until the text changes.
    [[nodiscard]] std::string_view bytes() const;

    [[nodiscard]] std::wstring wide() const { return fromPacked(bytes()); }

    [[nodiscard]] bool isMarker() const { return m_word == kMarker; }

private:
    // Even words are the address of a block; the lowest byte of an odd one is twice the size and 1,
    // and the text stands in the bytes above it.
    static constexpr std::uint64_t kEmpty = 0;
    static constexpr std::uint64_t kMarker = 2;

    void release();

    std::uint64_t m_word = kEmpty;
};

} // namespace corma
