#include "editor/visual_controls.h"

#include "controls/qt_text.h"
#include "editor/ColourDlg.h"
#include "editor/sample_icons.h"
#include "editor/visual_value.h"

#include <QAbstractItemView>

// --- colour --------------------------------------------------------------------------------------

CAcadcolorctrl1::CAcadcolorctrl1(QWidget* parent)
    : QPushButton(parent)
{
    setAutoDefault(false); // Enter presses OK, as in the other inputs
    setIconSize(corma::kColourSample);
    connect(this, &QPushButton::clicked, this, &CAcadcolorctrl1::ask);
}

void CAcadcolorctrl1::setColour(int colour, const std::optional<corma::host::Rgb>& sample)
{
    const QString text = corma::toQt(corma::colourText(colour));
    m_colour = colour;
    setIcon(corma::colourIcon(sample));
    setText(text);
    setAccessibleDescription(text);
}

void CAcadcolorctrl1::ask()
{
    ColourDlg dialog(m_colour, window());
    if (dialog.exec() == QDialog::Accepted) {
        Q_EMIT colourChosen(dialog.chosen());
    }
}

// --- lists ---------------------------------------------------------------------------------------

void SampleComboBox::prepare(const QSize& sample)
{
    constexpr int kLetters = 14; // in sight, whatever the texts are
    setIconSize(sample);
    setSizeAdjustPolicy(AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(kLetters);
    view()->setTextElideMode(Qt::ElideMiddle);
}

CAcadlayerctrl1::CAcadlayerctrl1(QWidget* parent)
    : SampleComboBox(parent)
{
    prepare(corma::kColourSample);
}

void CAcadlayerctrl1::setLayers(const std::vector<corma::LayerEntry>& layers)
{
    const QSignalBlocker blocker(this);
    clear();
    for (const corma::LayerEntry& layer : layers) {
        addItem(corma::colourIcon(corma::host::colorOfIndex(layer.colour)),
                corma::toQt(layer.name));
        setItemData(count() - 1, QString::number(layer.colour), Qt::AccessibleDescriptionRole);
    }
    setCurrentIndex(-1);
}

CAcadlinetype1::CAcadlinetype1(QWidget* parent)
    : SampleComboBox(parent)
{
    prepare(corma::kLineSample);
}

void CAcadlinetype1::setLinetypes(const std::vector<corma::LinetypeEntry>& linetypes)
{
    const QSignalBlocker blocker(this);
    clear();
    for (const corma::LinetypeEntry& linetype : linetypes) {
        addItem(corma::linetypeIcon(linetype.dashes), corma::toQt(linetype.name));
    }
    setCurrentIndex(-1);
}

CAcadlineweight1::CAcadlineweight1(QWidget* parent)
    : SampleComboBox(parent)
{
    prepare(corma::kLineSample);
}

void CAcadlineweight1::setLineweights(const std::vector<int>& weights)
{
    const QSignalBlocker blocker(this);
    clear();
    for (const int weight : weights) {
        const QString unit = weight < 0 ? QString() : QStringLiteral(" mm");
        addItem(corma::lineweightIcon(weight), corma::toQt(corma::lineweightText(weight)) + unit,
                weight);
    }
    setCurrentIndex(-1);
}

void CAcadlineweight1::select(int weight)
{
    setCurrentIndex(findData(weight));
}

int CAcadlineweight1::weightAt(int entry) const
{
    return itemData(entry).toInt();
}
