#include "editor/EditDlgHatch.h"

#include "controls/qt_text.h"
#include "editor/accessible_texts.h"
#include "editor/visual_value.h"
#include "inifile/numbers.h"
#include "settings/texts.h"
#include "ui_HatchInputs.h"

#include <algorithm>
#include <utility>

using corma::HatchForm;
using corma::toQt;

namespace {

// The entry of the same number, from which the keys go on.
int entryOf(const std::vector<std::wstring>& entries, const std::wstring& text)
{
    const double number = corma::toDouble(corma::withDecimalPoints(text));
    const auto found = std::find_if(entries.begin(), entries.end(), [&](const auto& entry) {
        return corma::toDouble(entry) == number;
    });
    return text.empty() || found == entries.end() ? -1 : static_cast<int>(found - entries.begin());
}

void fillBox(QComboBox& box, const std::vector<std::wstring>& entries, const std::wstring& shown)
{
    const QSignalBlocker blocker(box);
    for (const std::wstring& entry : entries) {
        box.addItem(toQt(entry));
    }
    box.setCompleter(nullptr); // what is typed is stored as it was typed
    box.setCurrentIndex(entryOf(entries, shown));
    box.setEditText(toQt(shown));
}

} // namespace

EditDlgHatch::EditDlgHatch(corma::Desk& desk, QWidget* parent, std::optional<HandedIn> handedIn)
    : EditDlgVis(desk, parent, std::move(handedIn))
    , m_inputs(std::make_unique<Ui::HatchInputs>())
{
    auto* const inputs = new QWidget(this);
    m_inputs->setupUi(inputs);
    addInputs(inputs, {m_inputs->patternList, m_inputs->angle, m_inputs->scale});
    connectInputs();
}

EditDlgHatch::~EditDlgHatch() = default;

std::unique_ptr<corma::SettingForm> EditDlgHatch::makeForm()
{
    return formOf<HatchForm>();
}

std::vector<corma::MnemonicText> EditDlgHatch::ownTexts() const
{
    std::vector<corma::MnemonicText> texts = EditDlgVis::ownTexts();
    texts.insert(texts.end(),
                 {{m_inputs->patternLabel, corma::text(corma::row::kPattern)},
                  {m_inputs->angleLabel, corma::text(corma::row::kAngle)},
                  {m_inputs->scaleLabel, corma::text(corma::row::kScale)},
                  {m_inputs->patternGroup, corma::text(corma::row::kTypeAndPattern)},
                  {m_inputs->angleGroup, corma::text(corma::row::kAngleAndScale)}});
    return texts;
}

void EditDlgHatch::showInputs()
{
    EditDlgVis::showInputs();
    const HatchForm& hatch = hatchForm();
    {
        const QSignalBlocker blocker(m_inputs->patternList);
        for (const std::wstring& pattern : hatch.patterns()) {
            m_inputs->patternList->addItem(toQt(pattern));
        }
        const auto chosen = hatch.chosen();
        m_inputs->patternList->setCurrentIndex(chosen ? static_cast<int>(*chosen) : -1);
    }
    fillBox(*m_inputs->angle, HatchForm::angles(), hatch.angle());
    fillBox(*m_inputs->scale, HatchForm::scales(), hatch.scale());
    for (QWidget* const each : std::initializer_list<QWidget*> {
             m_inputs->patternList, m_inputs->angle, m_inputs->scale, m_inputs->preview}) {
        each->setEnabled(hatch.isEnabled());
    }
    m_inputs->preview->setAccessibleName(
        toQt(corma::accessibleText(corma::AccessibleText::picture)));
    showPreview();
}

void EditDlgHatch::showPreview()
{
    m_inputs->preview->setPreview(hatchForm().preview(), toQt(hatchForm().previewSource()));
}

// As in EditDlgVis.
void EditDlgHatch::compactLayout()
{
    EditDlgVis::compactLayout();
}

void EditDlgHatch::connectInputs()
{
    connect(m_inputs->patternList, &QComboBox::activated, this, [this](int entry) {
        hatchForm().choosePattern(static_cast<std::size_t>(entry));
        showPreview();
    });
    connect(m_inputs->angle, &QComboBox::editTextChanged, this, [this](const QString& text) {
        hatchForm().setAngle(text.toStdWString());
        showPreview();
    });
    connect(m_inputs->scale, &QComboBox::editTextChanged, this, [this](const QString& text) {
        hatchForm().setScale(text.toStdWString());
        showPreview();
    });
}
