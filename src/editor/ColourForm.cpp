#include "editor/ColourForm.h"

#include "editor/visual_value.h"
#include "host/color_index.h"
#include "inifile/visual_words.h"
#include "platform/text.h"

#include <algorithm>

namespace corma {

namespace {

bool isNumber(const std::wstring& text)
{
    return !text.empty()
        && std::all_of(text.begin(), text.end(), [](wchar_t c) { return c >= L'0' && c <= L'9'; });
}

bool isWord(const std::wstring& text)
{
    return equalIgnoringCase(text, colourText(host::kColorByLayer))
        || equalIgnoringCase(text, colourText(host::kColorByBlock));
}

} // namespace

ColourForm::ColourForm(int colour)
    : m_text(colourText(colour))
{
}

std::optional<int> ColourForm::colour() const
{
    if (!isNumber(m_text) && !isWord(m_text)) {
        return std::nullopt;
    }
    const int colour = colourFromText(m_text);
    return colour <= host::kColorByLayer ? std::optional(colour) : std::nullopt;
}

void ColourForm::choose(int colour)
{
    m_text = colourText(colour);
}

} // namespace corma
