#include "editor/TextForm.h"

#include "editor/visual_value.h"

namespace corma {

TextForm::TextForm(const Desk& desk)
    : VisForm(desk)
{
    takeOwn();
}

TextForm::TextForm(const Desk& desk, const std::wstring& value, std::size_t mostCharacters)
    : VisForm(desk, value, mostCharacters)
{
    takeOwn();
}

// These dialogs have always drawn the default picture last (test: TheDefaultPictureWins).
void TextForm::takeOwn()
{
    preferDefaultPicture();
    constexpr std::size_t kOwnFields = 4;
    const auto own = fieldsOf(behindVisualFields(valueAtStart()), kOwnFields);
    m_style = NameChoice(textStylesOfDrawing());
    m_style.take(own[0]);
    m_height = own[1];
    m_widthFactor = own[2];
    m_oblique = own[3];
}

std::vector<std::wstring> TextForm::fields() const
{
    std::vector<std::wstring> all = VisForm::fields();
    all.push_back(m_style.name());
    for (const std::wstring* const number : {&m_height, &m_widthFactor, &m_oblique}) {
        all.push_back(withDecimalPoints(*number));
    }
    return all;
}

} // namespace corma
