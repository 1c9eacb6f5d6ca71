#include "editor/EditDlgVis.h"

#include "controls/qt_text.h"
#include "editor/accessible_texts.h"
#include "settings/texts.h"
#include "ui_VisInputs.h"

#include <QLineEdit>
#include <QRadioButton>

#include <utility>

using corma::AccessibleText;
using corma::NameChoice;
using corma::toQt;
using corma::VisForm;

namespace {

void name(QWidget& widget, AccessibleText what)
{
    const QString text = toQt(corma::accessibleText(what));
    widget.setAccessibleName(text);
    widget.setToolTip(text);
}

} // namespace

EditDlgVis::EditDlgVis(corma::Desk& desk, QWidget* parent, std::optional<HandedIn> handedIn)
    : EditDlg(desk, parent)
    , m_handedIn(std::move(handedIn))
    , m_inputs(std::make_unique<Ui::VisInputs>())
{
    auto* const inputs = new QWidget(this);
    m_inputs->setupUi(inputs);
    addInputs(inputs,
              {m_inputs->layerFromList, m_inputs->layerList, m_inputs->layerFromField,
               m_inputs->layerField, m_inputs->colour, m_inputs->linetypeFromList,
               m_inputs->linetypeList, m_inputs->linetypeFromField, m_inputs->linetypeField,
               m_inputs->lineweight});
    connectInputs();
}

EditDlgVis::~EditDlgVis() = default;

std::unique_ptr<corma::SettingForm> EditDlgVis::makeForm()
{
    return formOf<VisForm>();
}

// --- what is shown -------------------------------------------------------------------------------

std::vector<corma::MnemonicText> EditDlgVis::ownTexts() const
{
    return {{m_inputs->layerGroup, corma::text(corma::row::kLayer)},
            {m_inputs->colourGroup, corma::text(corma::row::kColour)},
            {m_inputs->linetypeGroup, corma::text(corma::row::kLinetype)},
            {m_inputs->lineweightGroup, corma::text(corma::row::kLineweight)}};
}

EditDlgVis::NameWidgets EditDlgVis::layerWidgets() const
{
    return {m_inputs->layerFromList, m_inputs->layerList, m_inputs->layerFromField,
            m_inputs->layerField};
}

EditDlgVis::NameWidgets EditDlgVis::linetypeWidgets() const
{
    return {m_inputs->linetypeFromList, m_inputs->linetypeList, m_inputs->linetypeFromField,
            m_inputs->linetypeField};
}

void EditDlgVis::showInputs()
{
    EditDlg::showInputs();
    m_inputs->layerList->setLayers(visForm().layers());
    m_inputs->linetypeList->setLinetypes(visForm().linetypes());
    m_inputs->lineweight->setLineweights(VisForm::lineweights());
    nameChoice(layerWidgets(), corma::row::kLayer);
    nameChoice(linetypeWidgets(), corma::row::kLinetype);
    m_inputs->colour->setAccessibleName(corma::qtText(corma::row::kColour));
    m_inputs->lineweight->setAccessibleName(corma::qtText(corma::row::kLineweight));
    showState();
}

void EditDlgVis::nameChoice(const NameWidgets& widgets, int label)
{
    name(*widgets.fromList, AccessibleText::fromList);
    name(*widgets.fromField, AccessibleText::otherName);
    widgets.list->setAccessibleName(corma::qtText(label));
    widgets.field->setAccessibleName(toQt(corma::accessibleText(AccessibleText::otherName)));
}

void EditDlgVis::showChoice(const NameWidgets& widgets, const NameChoice& choice)
{
    const bool isEnabled = form().isEnabled();
    (choice.isTyped() ? widgets.fromField : widgets.fromList)->setChecked(true);
    widgets.fromList->setEnabled(isEnabled && choice.canChoose());
    widgets.fromField->setEnabled(isEnabled);
    widgets.list->setEnabled(isEnabled && !choice.isTyped());
    widgets.list->setCurrentIndex(choice.chosen() ? static_cast<int>(*choice.chosen()) : -1);
    widgets.field->setEnabled(isEnabled && choice.isTyped());
    if (widgets.field->text() != toQt(choice.typed())) {
        widgets.field->setText(toQt(choice.typed()));
    }
}

void EditDlgVis::showState()
{
    const VisForm& vis = visForm();
    showChoice(layerWidgets(), vis.layer());
    showChoice(linetypeWidgets(), vis.linetype());
    m_inputs->colour->setColour(vis.colour(), vis.shownColour());
    m_inputs->colour->setEnabled(vis.isEnabled());
    m_inputs->lineweight->select(vis.lineweight());
    m_inputs->lineweight->setEnabled(vis.isEnabled());
}

// The dialog leaves the focus to the window system.
void EditDlgVis::focusInput() { }

// The layout closes up by itself: nothing here has a place that depends on the picture.
void EditDlgVis::compactLayout()
{
    EditDlg::compactLayout();
}

// --- what the user does --------------------------------------------------------------------------

void EditDlgVis::connectInputs()
{
    connectChoice(layerWidgets(), [this]() -> NameChoice& { return visForm().layer(); });
    connectChoice(linetypeWidgets(), [this]() -> NameChoice& { return visForm().linetype(); });
    connect(m_inputs->colour, &CAcadcolorctrl1::colourChosen, this, [this](int colour) {
        visForm().setColour(colour);
        showState();
    });
    connect(m_inputs->lineweight, &QComboBox::activated, this,
            [this](int entry) { visForm().setLineweight(m_inputs->lineweight->weightAt(entry)); });
}

void EditDlgVis::connectChoice(const NameWidgets& widgets,
                               const std::function<NameChoice&()>& choice)
{
    connect(widgets.list, &QComboBox::activated, this, [this, choice](int entry) {
        choice().choose(static_cast<std::size_t>(entry));
        showState();
    });
    connect(widgets.fromList, &QRadioButton::clicked, this, [this, choice] {
        choice().fromList();
        showState();
    });
    connect(widgets.fromField, &QRadioButton::clicked, this, [this, choice] {
        choice().fromField();
        showState();
    });
    connect(widgets.field, &QLineEdit::textEdited, this,
            [choice](const QString& text) { choice().type(text.toStdWString()); });
}
