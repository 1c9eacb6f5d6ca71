#pragma once

// The underlined letters by which the keyboard reaches the widgets of a dialog.

#include <string>
#include <vector>

class QWidget;

namespace corma {

/// The texts with "&" before the letter or digit that reaches each, none of them twice: where one
/// is free the first of a word, else any other. A text without a free one has none. The earlier
/// texts choose first, and none gets a letter that is taken by something else. A "&" of a text
/// itself is doubled, so that it is shown as it is.
std::vector<std::wstring> withMnemonics(const std::vector<std::wstring>& texts,
                                        const std::wstring& takenLetters = {});

/// The text with each "&" doubled, for a widget that would take it for the mark of a letter.
std::wstring withoutMnemonic(const std::wstring& text);

/// A button, or a label with a buddy, and the text that it is to have.
struct MnemonicText
{
    QWidget* widget;
    std::wstring text;
};

/// Gives the widgets of one dialog their texts, with letters as above. The text is also the
/// accessible name of the widget, and of the buddy of a label.
void setTextsWithMnemonics(const std::vector<MnemonicText>& group,
                           const std::wstring& takenLetters = {});

} // namespace corma
