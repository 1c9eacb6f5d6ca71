#pragma once

// A text file that is changed as a whole, in the encoding that it has.

#include "foundation/decoded_text.h"
#include "platform/platform.h"

#include <span>
#include <string>
#include <string_view>

namespace corma {

/// The name of the file in which the new content of a configuration file is gathered. It is the
/// same in every folder, so that what a process left there when it was killed goes away with the
/// next change.
inline constexpr const wchar_t* kTemporaryName = L"dummy.tmp";

/// Why a text file could not be changed.
struct RewriteFailure
{
    enum class Step
    {
        none,
        open, // the file cannot be read or may not be written
        decode, // it is not what its byte-order mark says
        encode, // its encoding does not have a character of the new text
        write, // the temporary file
        keep, // the former content could not be kept under another name
        replace // the temporary file did not get the name of the file
    };

    Step step = Step::none;
    platform::FileError error {}; // for open, write, keep and replace
    std::wstring detail {}; // for decode and encode: what is wrong, and where; no file name

    [[nodiscard]] bool isOne() const { return step != Step::none; }
};

/// One change of a text file, safe as a platform::FileRewrite is: others wait for its end. The file
/// keeps its byte-order mark and its encoding.
class TextRewrite
{
public:
    using Missing = platform::FileRewrite::Missing;

    TextRewrite(std::wstring_view path, std::wstring_view temporary, Missing missing);

    /// The first failure; nothing is done from then on, and the file is what it was.
    [[nodiscard]] const RewriteFailure& failure() const { return m_failure; }

    /// The file was there.
    [[nodiscard]] bool isThere() const { return m_file.isThere(); }

    /// The text as well-formed UTF-8, without its mark. Good for the life of the object.
    [[nodiscard]] std::string_view text() const { return m_decoded.text(); }

    /// The line end of the first line; a line feed for a text without one.
    [[nodiscard]] std::string_view lineEnd() const { return lineEndOf(text()); }

    /// Makes ready the new text, which is given in pieces of UTF-8. False when that fails.
    bool write(std::span<const std::string_view> pieces);

    /// Keeps the former file under another name, in place of what has it.
    bool keepAs(std::wstring_view backup);

    /// The new text takes the place of the former one.
    bool commit();

    /// All of it.
    bool replace(std::span<const std::string_view> pieces) { return write(pieces) && commit(); }

private:
    bool fail(RewriteFailure failure);

    platform::FileRewrite m_file;
    DecodedText m_decoded;
    RewriteFailure m_failure;
};

} // namespace corma
