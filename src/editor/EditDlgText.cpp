#include "editor/EditDlgText.h"

#include "settings/texts.h"
#include "ui_TextInputs.h"

#include <utility>

using corma::TextForm;

namespace {

QString toQt(const std::wstring& text)
{
    return QString::fromStdWString(text);
}

} // namespace

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
    return {*m_inputs->styleFromList, *m_inputs->styleList, *m_inputs->styleFromField,
            *m_inputs->styleField};
}

void EditDlgText::showInputs()
{
    EditDlgVis::showInputs();
    const TextForm& text = textForm();
    {
        const QSignalBlocker blocker(m_inputs->styleList);
        for (const std::wstring& style : text.style().names()) {
            m_inputs->styleList->addItem(toQt(style));
        }
    }
    m_inputs->styleList->setAccessibleName(toQt(corma::text(corma::row::kStyleGroup)));
    nameButtons(styleWidgets());
    for (const auto& [field, shown] : {std::pair(m_inputs->height, &text.height()),
                                       std::pair(m_inputs->widthFactor, &text.widthFactor()),
                                       std::pair(m_inputs->oblique, &text.oblique())}) {
        field->setText(toQt(*shown));
        field->setEnabled(text.isEnabled());
    }
    showStyle();
}

void EditDlgText::showStyle()
{
    const corma::NameChoice& style = textForm().style();
    showChoice(styleWidgets(), style);
    m_inputs->styleList->setCurrentIndex(style.chosen() ? static_cast<int>(*style.chosen()) : -1);
}

// As in EditDlgVis.
void EditDlgText::compactLayout()
{
    EditDlgVis::compactLayout();
}

void EditDlgText::connectInputs()
{
    connect(m_inputs->styleList, &QComboBox::activated, this,
            [this](int entry) { textForm().chooseStyle(static_cast<std::size_t>(entry)); });
    connect(m_inputs->styleFromList, &QRadioButton::clicked, this, [this] {
        textForm().styleFromList();
        showStyle();
    });
    connect(m_inputs->styleFromField, &QRadioButton::clicked, this, [this] {
        textForm().styleFromField();
        showStyle();
    });
    connect(m_inputs->styleField, &QLineEdit::textEdited, this,
            [this](const QString& text) { textForm().typeStyle(text.toStdWString()); });
    connect(m_inputs->height, &QLineEdit::textEdited, this,
            [this](const QString& text) { textForm().setHeight(text.toStdWString()); });
    connect(m_inputs->widthFactor, &QLineEdit::textEdited, this,
            [this](const QString& text) { textForm().setWidthFactor(text.toStdWString()); });
    connect(m_inputs->oblique, &QLineEdit::textEdited, this,
            [this](const QString& text) { textForm().setOblique(text.toStdWString()); });
}
