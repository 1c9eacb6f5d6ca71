#include "inifile/scrambled_rewrite.h"

#include "foundation/text_file.h"
#include "inifile/scrambling.h"
#include "platform/text.h"

#include <algorithm>

namespace corma {

namespace {

constexpr char kCarriageReturn = 13;
constexpr char kLineFeed = 10;
constexpr int kFirstPrintable = 32;

bool equals(std::string_view bytes, std::wstring_view text)
{
    return bytes.size() == text.size()
        && equalIgnoringCase(decode(bytes, Encoding::windows1252), text);
}

// Changes the lines of a file one after the other.
class LineChanger
{
public:
    LineChanger(const Ident& ident, std::string_view value)
        : m_ident(ident)
        , m_value(value)
        , m_isIn(ident.prefix.empty())
    {
    }

    /// The line as it is to stand.
    std::string changed(std::string_view line)
    {
        const auto isControl
            = [](char c) { return static_cast<unsigned char>(c) < kFirstPrintable; };
        const auto* const end = std::find_if(line.begin(), line.end(), isControl);
        line = line.substr(0, static_cast<std::size_t>(end - line.begin()));
        const std::size_t equal = line.find('=');
        if (line.size() > 1 && line.front() == '[' && line.back() == ']') {
            // Behind its chapter the ident still counts; only a match ends that, up to the next
            // header that fits, as every header does for an ident of the head.
            m_isIn = m_isIn || equals(line.substr(0, m_ident.prefix.size()), m_ident.prefix);
        } else if (m_isIn && equal != std::string_view::npos
                   && equals(line.substr(0, equal), m_ident.name)) {
            m_isIn = false;
            m_hasChanged = true;
            return nameFor(line.substr(0, equal)).append("=").append(m_value);
        }
        return std::string(line);
    }

    [[nodiscard]] bool hasChanged() const { return m_hasChanged; }

private:
    // As the caller writes it; but as the file has it where the caller's letters, which are equal
    // without regard to case, have no bytes.
    [[nodiscard]] std::string nameFor(std::string_view former) const
    {
        return toWindows1252(m_ident.name).value_or(std::string(former));
    }

    const Ident& m_ident;
    std::string_view m_value;
    bool m_isIn;
    bool m_hasChanged = false;
};

} // namespace

std::optional<std::string> withScrambledValue(std::string_view bytes, int key, const Ident& ident,
                                              std::string_view value)
{
    std::string out;
    out.reserve(bytes.size() + value.size());
    const auto put = [&](char c) {
        const auto position = static_cast<long>(out.size() + 1);
        out.push_back(scramble(static_cast<unsigned char>(c), position, key));
    };
    LineChanger changer(ident, value);
    std::string line;
    for (std::size_t at = 0; at < bytes.size(); ++at) {
        const auto position = static_cast<long>(at + 1);
        const char c = descramble(static_cast<unsigned char>(bytes[at]), position, key);
        if (c == kLineFeed) {
            put(c);
        } else if (c != kCarriageReturn) {
            line.push_back(c);
        } else {
            for (const char changed : changer.changed(line)) {
                put(changed);
            }
            put(c);
            line.clear();
        }
    }
    return changer.hasChanged() ? std::optional(std::move(out)) : std::nullopt;
}

} // namespace corma
