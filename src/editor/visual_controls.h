#pragma once

// The inputs for how something is drawn, in the place of those that the CAD host has. Each shows
// what its form says and tells what the user chose; none knows a drawing.

#include "editor/drawing_tables.h"
#include "host/color_index.h"

#include <QComboBox>
#include <QPushButton>

#include <optional>
#include <vector>

/// A colour: its sample and number, or one of the words. A press opens the dialog with all colours.
class CAcadcolorctrl1 : public QPushButton
{
    Q_OBJECT

public:
    explicit CAcadcolorctrl1(QWidget* parent = nullptr);

    /// The colour, and what it looks like, if that is known.
    void setColour(int colour, const std::optional<corma::host::Rgb>& sample);

Q_SIGNALS:
    void colourChosen(int colour);

private:
    void ask();

    int m_colour = corma::host::kColorByLayer;
};

/// A list with samples beside its texts. Letters that are typed select the text that begins with
/// them; what is selected is told by activated().
class SampleComboBox : public QComboBox
{
    Q_OBJECT

public:
    using QComboBox::QComboBox;

protected:
    /// Long texts are cut in the box, not in the list.
    void prepare(const QSize& sample);
};

/// The layers of a drawing, each with its colour.
class CAcadlayerctrl1 : public SampleComboBox
{
    Q_OBJECT

public:
    explicit CAcadlayerctrl1(QWidget* parent = nullptr);

    void setLayers(const std::vector<corma::LayerEntry>& layers);
};

/// The linetypes of a drawing, drawn.
class CAcadlinetype1 : public SampleComboBox
{
    Q_OBJECT

public:
    explicit CAcadlinetype1(QWidget* parent = nullptr);

    void setLinetypes(const std::vector<corma::LinetypeEntry>& linetypes);
};

/// Widths of lines, drawn, in hundredths of a millimetre; the words for negative ones.
class CAcadlineweight1 : public SampleComboBox
{
    Q_OBJECT

public:
    explicit CAcadlineweight1(QWidget* parent = nullptr);

    void setLineweights(const std::vector<int>& weights);
    void select(int weight);

    /// The weight of an entry.
    [[nodiscard]] int weightAt(int entry) const;
};
