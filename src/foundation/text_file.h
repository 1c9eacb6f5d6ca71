#pragma once

// Text files as the configuration subsystem reads them: whole, as bytes, decoded where asked for.

#include "platform/platform.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace corma {

enum class Encoding
{
    utf8,
    windows1252
};

/// The next character at `at`, which moves behind it and must be below the size.
char32_t nextCharacter(std::string_view text, std::size_t& at, Encoding encoding);

/// Copies at most capacity - 1 decoded characters into out and a terminator behind them; nothing
/// at capacity 0. Returns the characters copied, the terminator not counted.
std::size_t decodeInto(std::string_view bytes, Encoding encoding, wchar_t* out,
                       std::size_t capacity);

std::wstring decode(std::string_view bytes, Encoding encoding);

enum class OpenMode
{
    text, ///< "r": a byte-order mark tells the encoding, else the content does
    binary ///< "rb": Windows-1252 bytes as they are
};

/// An open file: a snapshot of its content that follows the file on disk. A file that vanishes or
/// cannot be read any more keeps its last content, as an open stream would.
class TextFile
{
public:
    /// Turns the bytes of a file, once read, into those of its text.
    using Transform = std::function<void(platform::FileContent&)>;

    TextFile(platform::NativePath path, OpenMode mode, Transform transform);

    /// Looks whether the file on disk is still the one that was read, and reads it again if not.
    /// One file-status call when nothing changed. True when the text is another one now.
    bool refresh();

    /// True when it could be read at all.
    bool isOpen() const { return m_isOpen; }

    /// True while there is such a file on disk. One file-status call.
    bool isOnDisk() const { return platform::fileStamp(m_path).has_value(); }

    /// The text without its mark, UTF-8 or Windows-1252. UTF-16 has been turned to UTF-8.
    /// Good until the next refresh(). Behind the last byte stand FileContent::kPadding zero bytes.
    std::string_view bytes() const { return m_text; }

    /// Without a mark it is UTF-8 when all of it is valid UTF-8, which is worked out when asked
    /// for.
    Encoding encoding() const;

    /// The whole text as well-formed UTF-8: its own bytes where they are, else those that it is
    /// converted to, which go into `converted`. Good until the next refresh() and for as long as
    /// `converted` stays.
    [[nodiscard]] std::string_view utf8(std::string& converted) const;

    /// A part of the text, decoded as the functions above do. For ASCII, as most parts are, the
    /// encoding is not worked out.
    std::size_t decodeInto(std::string_view part, wchar_t* out, std::size_t capacity) const;
    std::wstring decode(std::string_view part) const;

private:
    bool read();

    platform::NativePath m_path;
    OpenMode m_mode;
    Transform m_transform;
    platform::FileContent m_content;
    std::string_view m_text; // the part of m_content behind the mark
    std::optional<Encoding> m_stated; // by a mark or by the mode
    mutable std::optional<Encoding> m_encoding;
    bool m_isOpen = false;
    bool m_mayHideAChange = false; // it was written so shortly before that its stamp does not tell
};

} // namespace corma

/// Opens a file of the configuration subsystem for reading; every one of them is opened here.
/// Null when it cannot be opened, with no report.
std::unique_ptr<corma::TextFile> xx_openUnicode(std::wstring_view path, corma::OpenMode mode,
                                                corma::TextFile::Transform transform = {});
