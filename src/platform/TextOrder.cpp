#include "platform/text.h"

#include <algorithm>
#include <array>
#include <unicode/ucol.h>

namespace corma {

namespace {

struct LanguageRow
{
    int number;
    const char* code;
};

constexpr std::array kLanguages = {
    LanguageRow {7, "de"},  LanguageRow {9, "en"},  LanguageRow {10, "es"}, LanguageRow {12, "fr"},
    LanguageRow {19, "nl"}, LanguageRow {21, "pl"}, LanguageRow {25, "ru"},
};

const char* codeOf(int language)
{
    const auto* const row = std::find_if(kLanguages.begin(), kLanguages.end(),
                                         [&](const auto& each) { return each.number == language; });
    return row == kLanguages.end() ? "" : row->code;
}

int length(const std::u16string& units)
{
    return static_cast<int>(units.size());
}

} // namespace

/// The rules of a language; without the data of the collation there are none, and the code points
/// of the folded texts count.
class TextOrder::Collation
{
public:
    explicit Collation(const char* language)
    {
        UErrorCode status = U_ZERO_ERROR;
        m_rules.reset(::ucol_open(language, &status));
    }

    [[nodiscard]] int compare(std::wstring_view a, std::wstring_view b) const
    {
        if (!m_rules) {
            return lowerCase(a).compare(lowerCase(b));
        }
        const std::u16string left = toUtf16(a);
        const std::u16string right = toUtf16(b);
        return ::ucol_strcoll(m_rules.get(), left.data(), length(left), right.data(),
                              length(right));
    }

    [[nodiscard]] std::string key(std::wstring_view text) const
    {
        if (!m_rules) {
            return toUtf8(lowerCase(text));
        }
        const std::u16string units = toUtf16(text);
        const int size = ::ucol_getSortKey(m_rules.get(), units.data(), length(units), nullptr, 0);
        std::string bytes(static_cast<std::size_t>(size), '\0');
        ::ucol_getSortKey(m_rules.get(), units.data(), length(units),
                          reinterpret_cast<std::uint8_t*>(bytes.data()), size);
        return bytes;
    }

private:
    std::unique_ptr<UCollator, decltype([](UCollator* rules) { ::ucol_close(rules); })> m_rules;
};

TextOrder::TextOrder(int language)
    : m_collation(std::make_shared<const Collation>(codeOf(language)))
{
}

bool TextOrder::operator()(std::wstring_view a, std::wstring_view b) const
{
    const int order = m_collation->compare(a, b);
    return order != 0 ? order < 0 : a < b;
}

std::string TextOrder::key(std::wstring_view text) const
{
    // A zero ends the first part: the shorter of two texts must not be ordered by what follows.
    return m_collation->key(text) + '\0' + toUtf8(text);
}

} // namespace corma
