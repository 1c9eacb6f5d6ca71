#pragma once

#include "editor/NameChoice.h"
#include "editor/SettingForm.h"
#include "editor/drawing_tables.h"
#include "host/color_index.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace corma {

/// The dialog for a visualisation without its widgets: layer, colour, linetype and lineweight, as
/// far as they can be chosen those of the working drawing. A name that the drawing lacks can be
/// typed, and stays as it is; nothing is added to the drawing.
class VisForm : public SettingForm
{
public:
    /// On the value of the setting; accept() stores the new one.
    explicit VisForm(const Desk& desk);

    /// On a value that was handed in; accept() leaves the new one for value() and stores nothing,
    /// so there are no boxes to tick. The rest is from the setting. A new value with more
    /// characters than that is refused.
    VisForm(const Desk& desk, const std::wstring& value, std::size_t mostCharacters);

    // --- layer and colour ------------------------------------------------------------------------

    [[nodiscard]] const std::vector<LayerEntry>& layers() const { return m_layers; }

    [[nodiscard]] NameChoice& layer() { return m_layer; }

    [[nodiscard]] const NameChoice& layer() const { return m_layer; }

    /// 0 by block, 256 by layer, 1 to 255 a colour. A value may have other numbers, which mean
    /// nothing and stay until another colour is chosen.
    [[nodiscard]] int colour() const { return m_colour; }

    void setColour(int colour) { m_colour = colour; }

    /// What "by layer" is in the drawing: the colour of the layer when it is chosen from the list;
    /// nothing for one that was typed.
    [[nodiscard]] std::optional<host::Rgb> colourOfLayer() const;

    /// What the colour looks like; nothing when that is not known here.
    [[nodiscard]] std::optional<host::Rgb> shownColour() const;

    // --- lines -----------------------------------------------------------------------------------

    [[nodiscard]] const std::vector<LinetypeEntry>& linetypes() const { return m_linetypes; }

    [[nodiscard]] NameChoice& linetype() { return m_linetype; }

    [[nodiscard]] const NameChoice& linetype() const { return m_linetype; }

    /// What there is to choose from: by layer, by block, default, and the legal widths.
    [[nodiscard]] static std::vector<int> lineweights();

    /// In hundredths of a millimetre; -1 by layer, -2 by block, -3 default.
    [[nodiscard]] int lineweight() const { return m_lineweight; }

    void setLineweight(int weight) { m_lineweight = weight; }

    // --- the end ---------------------------------------------------------------------------------

    /// The text of the value as the inputs have it now.
    [[nodiscard]] std::wstring value() const;

    [[nodiscard]] bool accept() override;

    /// After accept(): the value as it was found good.
    [[nodiscard]] const std::wstring& accepted() const { return m_accepted; }

protected:
    /// The value that the inputs begin with.
    [[nodiscard]] const std::wstring& valueAtStart() const { return m_valueAtStart; }

    /// The fields of the value; a derived form puts its own behind them.
    [[nodiscard]] virtual std::vector<std::wstring> fields() const;

private:
    void take(const std::wstring& value);

    std::wstring m_valueAtStart;
    std::optional<std::size_t> m_mostCharacters; // of a value that is handed back; else none is
    std::vector<LayerEntry> m_layers;
    std::vector<LinetypeEntry> m_linetypes;
    NameChoice m_layer;
    NameChoice m_linetype;
    int m_colour = host::kColorByLayer;
    int m_lineweight = 0;
    std::wstring m_accepted;
};

} // namespace corma
