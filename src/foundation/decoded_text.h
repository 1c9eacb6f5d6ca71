#pragma once

#include "foundation/byte_order_mark.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace corma {

/// The text of a file that must be whole: nothing of it is guessed or replaced, so that what is
/// written back is what was read. The encoding follows the byte-order mark; without one it is UTF-8
/// when all of the content is, else Windows-1252.
class DecodedText
{
public:
    /// The content must outlive the object.
    explicit DecodedText(std::string_view content);
    DecodedText(const DecodedText&) = delete;
    DecodedText& operator=(const DecodedText&) = delete;
    ~DecodedText() = default;

    /// What is wrong, and where, with a content that is not what its mark says; else empty. The
    /// text is then of no use.
    [[nodiscard]] const std::wstring& defect() const { return m_defect; }

    /// Well-formed UTF-8, without the mark.
    [[nodiscard]] std::string_view text() const { return m_text; }

    /// The content for another text, in the same encoding and with the same mark. The pieces are
    /// given back as they are where they need not be encoded.
    struct Encoded
    {
        std::string bytes {};
        bool isAsGiven = false; // the mark and the pieces are the content
        std::wstring defect {}; // why the encoding cannot hold the text; else empty
    };

    [[nodiscard]] Encoded encoded(std::span<const std::string_view> pieces) const;

    [[nodiscard]] std::string_view mark() const { return bytesOf(m_mark); }

private:
    enum class Form
    {
        utf8, // or ASCII, which may become it
        utf16,
        windows1252
    };

    void decodeUtf16(std::string_view bytes);
    void decodeWindows1252(std::string_view bytes);

    Mark m_mark;
    Form m_form = Form::utf8;
    std::string m_converted; // the text, where the content is not UTF-8
    std::string_view m_text;
    std::wstring m_defect;
};

/// The bytes of a text that comes from a caller: UTF-8. Nothing when it holds what is no Unicode
/// character, such as half of a surrogate pair.
std::optional<std::string> toStrictUtf8(std::wstring_view text);

/// The line end of the first line; a line feed for a text without one.
std::string_view lineEndOf(std::string_view text);

} // namespace corma
