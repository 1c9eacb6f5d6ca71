#include "editor/EditDlgVis.h"

#include "editor/accessible_texts.h"
#include "settings/texts.h"
#include "ui_VisInputs.h"

#include <QLineEdit>
#include <QRadioButton>

#include <utility>

using corma::AccessibleText;
using corma::NameChoice;
using corma::VisForm;

namespace {

QString toQt(const std::wstring& text)
{
    return QString::fromStdWString(text);
}

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
    return {*m_inputs->layerFromList, *m_inputs->layerList, *m_inputs->layerFromField,
            *m_inputs->layerField};
}

EditDlgVis::NameWidgets EditDlgVis::linetypeWidgets() const
{
    return {*m_inputs->linetypeFromList, *m_inputs->linetypeList, *m_inputs->linetypeFromField,
            *m_inputs->linetypeField};
}

void EditDlgVis::showInputs()
{
    EditDlg::showInputs();
    m_inputs->layerList->setLayers(visForm().layers());
    m_inputs->linetypeList->setLinetypes(visForm().linetypes());
    m_inputs->lineweight->setLineweights(VisForm::lineweights());
    for (const NameWidgets& widgets : {layerWidgets(), linetypeWidgets()}) {
        nameButtons(widgets);
    }
    m_inputs->layerList->setAccessibleName(toQt(corma::text(corma::row::kLayer)));
    m_inputs->colour->setAccessibleName(toQt(corma::text(corma::row::kColour)));
    m_inputs->linetypeList->setAccessibleName(toQt(corma::text(corma::row::kLinetype)));
    m_inputs->lineweight->setAccessibleName(toQt(corma::text(corma::row::kLineweight)));
    showState();
}

void EditDlgVis::nameButtons(const NameWidgets& widgets)
{
    name(widgets.fromList, AccessibleText::fromList);
    name(widgets.fromField, AccessibleText::otherName);
    widgets.field.setAccessibleName(toQt(corma::accessibleText(AccessibleText::otherName)));
}

void EditDlgVis::showChoice(const NameWidgets& widgets, const NameChoice& choice)
{
    const bool isEnabled = form().isEnabled();
    (choice.isTyped() ? widgets.fromField : widgets.fromList).setChecked(true);
    widgets.fromList.setEnabled(isEnabled && choice.canChoose());
    widgets.fromField.setEnabled(isEnabled);
    widgets.list.setEnabled(isEnabled && !choice.isTyped());
    widgets.field.setEnabled(isEnabled && choice.isTyped());
    if (widgets.field.text() != toQt(choice.typed())) {
        widgets.field.setText(toQt(choice.typed()));
    }
}

void EditDlgVis::showState()
{
    const VisForm& vis = visForm();
    showChoice(layerWidgets(), vis.layer());
    showChoice(linetypeWidgets(), vis.linetype());
    const auto entryOf = [](const NameChoice& choice) {
        return choice.chosen() ? static_cast<int>(*choice.chosen()) : -1;
    };
    m_inputs->layerList->setCurrentIndex(entryOf(vis.layer()));
    m_inputs->linetypeList->setCurrentIndex(entryOf(vis.linetype()));
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
    const auto change = [this](auto signalOf, auto* widget, auto apply) {
        connect(widget, signalOf, this, [this, apply](const auto& given) {
            apply(visForm(), given);
            showState();
        });
    };
    change(&QComboBox::activated, m_inputs->layerList,
           [](VisForm& vis, int entry) { vis.chooseLayer(static_cast<std::size_t>(entry)); });
    change(&QComboBox::activated, m_inputs->linetypeList,
           [](VisForm& vis, int entry) { vis.chooseLinetype(static_cast<std::size_t>(entry)); });
    change(&QComboBox::activated, m_inputs->lineweight,
           [list = m_inputs->lineweight](VisForm& vis, int entry) {
               vis.setLineweight(list->weightAt(entry));
           });
    change(&CAcadcolorctrl1::colourChosen, m_inputs->colour,
           [](VisForm& vis, int colour) { vis.setColour(colour); });
    change(&QLineEdit::textEdited, m_inputs->layerField,
           [](VisForm& vis, const QString& text) { vis.typeLayer(text.toStdWString()); });
    change(&QLineEdit::textEdited, m_inputs->linetypeField,
           [](VisForm& vis, const QString& text) { vis.typeLinetype(text.toStdWString()); });
    change(&QRadioButton::clicked, m_inputs->layerFromList,
           [](VisForm& vis, bool /*isChecked*/) { vis.layerFromList(); });
    change(&QRadioButton::clicked, m_inputs->layerFromField,
           [](VisForm& vis, bool /*isChecked*/) { vis.layerFromField(); });
    change(&QRadioButton::clicked, m_inputs->linetypeFromList,
           [](VisForm& vis, bool /*isChecked*/) { vis.linetypeFromList(); });
    change(&QRadioButton::clicked, m_inputs->linetypeFromField,
           [](VisForm& vis, bool /*isChecked*/) { vis.linetypeFromField(); });
}
