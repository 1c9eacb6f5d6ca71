#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

struct UConverter;

namespace corma::host::dxf {

/// How the characters of a file above ASCII stand in its bytes.
class CodePage
{
public:
    /// Windows-1252.
    CodePage() = default;

    static CodePage utf8();

    /// By a name as $DWGCODEPAGE has it, such as "ANSI_1252", "dos850" or "MAC-ROMAN"; Windows-1252
    /// for a name that is not known.
    static CodePage named(std::string_view name);

    /// One of those that `\M+nXXXX` knows by the digits 1 to 5; nothing where it cannot be had.
    static std::optional<CodePage> ofEscape(char digit);

    /// Every byte counts: what the code page does not have becomes U+FFFD.
    [[nodiscard]] std::wstring decode(std::string_view bytes) const;

    /// Appends a character; false, and nothing is appended, when the code page lacks it.
    bool encode(char32_t c, std::string& bytes) const;

private:
    enum class Form : unsigned char
    {
        windows1252,
        utf8,
        converter
    };

    struct Close
    {
        void operator()(UConverter* converter) const;
    };

    // What a converter makes of a byte of ASCII, which is itself here: those of DOS exchange
    // control characters, and the Arabic one has a percent sign of its own.
    struct Odd
    {
        char16_t converted;
        char16_t ascii;
    };

    bool open(const char* converterName);
    [[nodiscard]] std::wstring convert(std::string_view bytes) const;

    Form m_form = Form::windows1252;
    std::unique_ptr<UConverter, Close> m_converter; // holds no state between two calls
    std::vector<Odd> m_odd;
};

} // namespace corma::host::dxf
