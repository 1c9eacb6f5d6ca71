#include "editor/EditDlgText.h"

#include "controls/qt_text.h"
#include "settings/texts.h"
#include "ui_TextInputs.h"

#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>

#include <utility>

using corma::TextForm;
using corma::toQt;

EditDlgText::EditDlgText(corma::Desk& desk, QWidget* parent, std::optional<HandedIn> handedIn)
    : EditDlgVis(desk, parent, std::move(handedIn))
    , m_inputs(std::make_unique<Ui::TextInputs>())
{
    auto* const inputs = new QWidget(this);
    m_inputs->setupUi(inputs);
    addInputs(inputs,
              {m_inputs->styleFromList, m_inputs->styleList, m_inputs->styleFromField,
               m_inputs->styleField, m_inputs->height, m_inputs->widthFactor, m_inputs->oblique});
    connectInputs();
}

EditDlgText::~EditDlgText() = default;

std::unique_ptr<corma::SettingForm> EditDlgText::makeForm()
{
    return formOf<TextForm>();
}

std::vector<corma::MnemonicText> EditDlgText::ownTexts() const
{
    std::vector<corma::MnemonicText> texts = EditDlgVis::ownTexts();
    texts.insert(texts.end(),
                 {{m_inputs->styleGroup, corma::text(corma::row::kStyleGroup)},
                  {m_inputs->heightLabel, corma::text(corma::row::kHeight)},
                  {m_inputs->widthFactorLabel, corma::text(corma::row::kWidthFactor)},
                  {m_inputs->obliqueLabel, corma::text(corma::row::kOblique)}});
    return texts;
}

EditDlgVis::NameWidgets EditDlgText::styleWidgets() const
{
    return {m_inputs->styleFromList, m_inputs->styleList, m_inputs->styleFromField,
            m_inputs->styleField};
}

void EditDlgText::showInputs()
{
    const TextForm& text = textForm();
    for (const std::wstring& style : text.style().names()) {
        m_inputs->styleList->addItem(toQt(style));
    }
    nameChoice(styleWidgets(), corma::row::kStyleGroup);
    for (const auto& [field, shown] : {std::pair(m_inputs->height, &text.height()),
                                       std::pair(m_inputs->widthFactor, &text.widthFactor()),
                                       std::pair(m_inputs->oblique, &text.oblique())}) {
        field->setText(toQt(*shown));
        field->setEnabled(text.isEnabled());
    }
    EditDlgVis::showInputs();
}

void EditDlgText::showState()
{
    EditDlgVis::showState();
    showChoice(styleWidgets(), textForm().style());
}

// As in EditDlgVis.
void EditDlgText::compactLayout()
{
    EditDlgVis::compactLayout();
}

void EditDlgText::connectInputs()
{
    connectChoice(styleWidgets(), [this]() -> corma::NameChoice& { return textForm().style(); });
    connect(m_inputs->height, &QLineEdit::textEdited, this,
            [this](const QString& text) { textForm().setHeight(text.toStdWString()); });
    connect(m_inputs->widthFactor, &QLineEdit::textEdited, this,
            [this](const QString& text) { textForm().setWidthFactor(text.toStdWString()); });
    connect(m_inputs->oblique, &QLineEdit::textEdited, this,
            [this](const QString& text) { textForm().setOblique(text.toStdWString()); });
}
