#include "editor/HatchForm.h"

#include "editor/hatch_swatch.h"
#include "editor/visual_value.h"
#include "foundation/messages.h"
#include "foundation/xx_findf.h"
#include "host/definition_text.h"
#include "inifile/numbers.h"

#include <algorithm>
#include <array>

namespace corma {

namespace {

constexpr short kLongWay = 0;
constexpr short kUsual = 3;
constexpr std::size_t kLongestPath = 499; // characters

// The multiples of a step, the last one included.
std::vector<std::wstring> series(double step, int first, int last)
{
    std::vector<std::wstring> texts;
    for (int i = first; i <= last; ++i) {
        texts.push_back(formatted(L"%.2f", i * step));
    }
    return texts;
}

double numberIn(const std::wstring& text)
{
    return toDouble(withDecimalPoints(text));
}

// The list has names as they stand in the file, with the blanks around them, and long ones in their
// short form.
bool isListedAs(const host::HatchPattern& pattern, const std::wstring& listed)
{
    const std::wstring_view name = host::trimmed(listed);
    return listed.size() < host::kLongestListedName ? pattern.name == name
                                                    : pattern.name.starts_with(name);
}

} // namespace

HatchForm::HatchForm(const Desk& desk)
    : VisForm(desk)
{
    takeOwn();
}

HatchForm::HatchForm(const Desk& desk, const std::wstring& value, std::size_t mostCharacters)
    : VisForm(desk, value, mostCharacters)
{
    takeOwn();
}

// These dialogs have always drawn the default picture last (test: TheDefaultPictureWins).
void HatchForm::takeOwn()
{
    preferDefaultPicture();
    constexpr std::size_t kOwnFields = 3;
    readPatterns();
    const auto own = fieldsOf(behindVisualFields(valueAtStart()), kOwnFields);
    m_pattern.choose(m_pattern.find(own[0]));
    m_angle = own[1];
    m_scale = own[2];
    updatePreview();
}

void HatchForm::readPatterns()
{
    m_path = host::standardPatternFile();
    std::array<wchar_t, kLongestPath + 1> found {};
    if (xx_findfile(m_path.c_str(), found.data(), kLongestPath) == RTNORM) {
        m_path = found.data();
    }
    if (const auto file = host::patternFile(m_path)) {
        m_lines = host::parseHatchPatterns(file->text).patterns;
        m_pattern = NameChoice(host::hatchPatternNames(file->text));
    }
}

void HatchForm::choosePattern(std::size_t index)
{
    m_pattern.choose(index);
    updatePreview();
}

void HatchForm::updatePreview()
{
    if (!m_pattern.chosen()) {
        return;
    }
    const std::wstring name = m_pattern.name();
    m_previewKind = name == L"GRAVEL" ? kLongWay : kUsual;
    m_previewSource = m_path + L'(' + name + L')';
}

// Patterns without lines have none to show.
std::optional<HatchForm::Preview> HatchForm::preview() const
{
    constexpr double kMostEnlarged = 2.0; // the largest and the smallest scale of the list
    constexpr double kMostReduced = 4.0;
    const std::wstring name = m_pattern.name();
    const auto found = std::find_if(m_lines.begin(), m_lines.end(),
                                    [&](const auto& pattern) { return isListedAs(pattern, name); });
    if (!m_pattern.chosen() || found == m_lines.end()) {
        return std::nullopt;
    }
    const double typed = numberIn(m_scale);
    const double scale = typed > 0.0 ? typed : 1.0;
    const double usual = swatchSide(*found) * (m_previewKind == kLongWay ? 0.5 : 1.0);
    return Preview {turnedAndScaled(*found, numberIn(m_angle), scale),
                    std::clamp(usual, usual * scale / kMostEnlarged, usual * scale * kMostReduced)};
}

std::vector<std::wstring> HatchForm::angles()
{
    constexpr double kStep = 45.0;
    constexpr int kSteps = 8; // a whole turn
    return series(kStep, 0, kSteps);
}

std::vector<std::wstring> HatchForm::scales()
{
    constexpr double kStep = 0.25;
    constexpr int kSteps = 8; // up to double size
    return series(kStep, 1, kSteps);
}

std::vector<std::wstring> HatchForm::fields() const
{
    std::vector<std::wstring> all = VisForm::fields();
    all.push_back(m_pattern.name());
    all.push_back(withDecimalPoints(m_angle));
    all.push_back(withDecimalPoints(m_scale));
    return all;
}

} // namespace corma
