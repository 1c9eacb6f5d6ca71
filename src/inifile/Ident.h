#pragma once

// How callers write the name of a setting, and the form in which names are compared.

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace corma {

/// The chapter of the entries above the first header of a file. It has no header itself.
inline constexpr std::wstring_view kHeadChapter = L"Algemeen";

/// One ident: "name" or "[chapter]name". Views into the text it was made from.
struct Ident
{
    std::wstring_view prefix; // the chapter in its brackets; empty for the head of the file
    std::wstring_view name;

    /// Without a closing bracket the text is a plain name; "[]name" is as "name".
    static Ident parse(std::wstring_view text);

    /// The chapter without brackets; kHeadChapter for the head of the file.
    [[nodiscard]] std::wstring_view chapter() const;
};

/// The pieces of a text between separators, empty ones left out.
class Pieces
{
public:
    Pieces(std::wstring_view text, std::wstring_view separators);

    /// The next piece; empty behind the last one.
    std::wstring_view next();

    /// True when no further piece comes.
    [[nodiscard]] bool atEnd() const { return m_rest.empty(); }

private:
    void skipSeparators();

    std::wstring_view m_rest; // begins with a piece
    std::wstring_view m_separators;
};

/// A text made ready for many comparisons without regard to case: folded, as UTF-8. Names are
/// short, so it needs no memory of its own for most of them.
class FoldedText
{
public:
    explicit FoldedText(std::wstring_view text);
    FoldedText(const FoldedText&) = delete;
    FoldedText& operator=(const FoldedText&) = delete;
    ~FoldedText() = default;

    [[nodiscard]] std::string_view bytes() const { return m_bytes; }

    /// ASCII folds to ASCII and nothing else does, so such a text can be compared byte by byte.
    [[nodiscard]] bool isAscii() const { return m_isAscii; }

private:
    // Folds a text that fits inside. False when it is not ASCII.
    bool foldAscii(std::wstring_view text);

    static constexpr std::size_t kPadding = 8; // hashing reads whole words
    std::array<char, 120> m_inside;
    std::string m_outside;
    std::string_view m_bytes;
    bool m_isAscii = true;
};

/// An ident made ready for many comparisons.
struct IdentKey
{
    explicit IdentKey(const Ident& ident)
        : prefix(ident.prefix)
        , name(ident.name)
    {
    }

    FoldedText prefix;
    FoldedText name;
};

} // namespace corma
