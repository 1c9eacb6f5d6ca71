#include "editor/mnemonics.h"

#include "platform/text.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QLabel>

#include <cstddef>
#include <optional>
#include <set>

namespace corma {

namespace {

using Place = std::optional<std::size_t>;

// What has two forms is a letter: that holds for each alphabet of the texts, in every locale.
bool isLetterOrDigit(wchar_t c)
{
    const bool isDigit = c >= L'0' && c <= L'9';
    return isDigit || lowerCase(std::wstring(1, c)).front() != upperCase(c);
}

enum class Begin
{
    ofAWord,
    anywhere
};

Place freePlace(const std::wstring& text, const std::set<wchar_t>& taken, Begin begin)
{
    bool isInWord = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isPart = isLetterOrDigit(text[i]);
        const bool canBe = isPart && (begin == Begin::anywhere || !isInWord);
        if (canBe && !taken.contains(upperCase(text[i]))) {
            return i;
        }
        isInWord = isPart;
    }
    return std::nullopt;
}

std::wstring markedAt(const std::wstring& text, Place place)
{
    if (!place) {
        return withoutMnemonic(text);
    }
    return withoutMnemonic(text.substr(0, *place)) + L'&' + withoutMnemonic(text.substr(*place));
}

void setText(QWidget& widget, const QString& text)
{
    if (auto* const button = qobject_cast<QAbstractButton*>(&widget)) {
        button->setText(text);
    } else if (auto* const box = qobject_cast<QGroupBox*>(&widget)) {
        box->setTitle(text);
    } else if (auto* const label = qobject_cast<QLabel*>(&widget)) {
        label->setText(text);
        // A letter that is underlined is drawn apart from its neighbours, for which Qt measures
        // none of the room that it takes.
        constexpr int kApart = 3; // device-independent pixels
        label->ensurePolished();
        label->setMinimumWidth(label->sizeHint().width() + kApart);
    }
}

void setAccessibleName(QWidget& widget, const QString& name)
{
    widget.setAccessibleName(name);
    const auto* const label = qobject_cast<QLabel*>(&widget);
    if (label != nullptr && label->buddy() != nullptr) {
        label->buddy()->setAccessibleName(name);
    }
}

} // namespace

std::wstring withoutMnemonic(const std::wstring& text)
{
    std::wstring shown;
    for (const wchar_t c : text) {
        shown.append(c == L'&' ? 2 : 1, c);
    }
    return shown;
}

std::vector<std::wstring> withMnemonics(const std::vector<std::wstring>& texts,
                                        const std::wstring& takenLetters)
{
    std::set<wchar_t> taken;
    for (const wchar_t letter : takenLetters) {
        taken.insert(upperCase(letter));
    }
    std::vector<std::wstring> marked;
    for (const std::wstring& text : texts) {
        Place place = freePlace(text, taken, Begin::ofAWord);
        if (!place) {
            place = freePlace(text, taken, Begin::anywhere);
        }
        if (place) {
            taken.insert(upperCase(text[*place]));
        }
        marked.push_back(markedAt(text, place));
    }
    return marked;
}

void setTextsWithMnemonics(const std::vector<MnemonicText>& group, const std::wstring& takenLetters)
{
    std::vector<std::wstring> texts;
    texts.reserve(group.size());
    for (const MnemonicText& each : group) {
        texts.push_back(each.text);
    }
    const std::vector<std::wstring> marked = withMnemonics(texts, takenLetters);
    for (std::size_t i = 0; i < group.size(); ++i) {
        setText(*group[i].widget, QString::fromStdWString(marked[i]));
        setAccessibleName(*group[i].widget, QString::fromStdWString(texts[i]));
    }
}

} // namespace corma
