#pragma once

// What the working drawing has to choose from, in the order of its tables. Without a drawing, or a
// table that opens, there is nothing; a record that does not open is passed over.

#include <string>
#include <vector>

namespace corma {

struct LayerEntry
{
    std::wstring name;
    int colour = 7; // its index, also when the layer is off
};

struct LinetypeEntry
{
    std::wstring name;
    std::vector<double> dashes {}; // in drawing units: dashes positive, gaps negative, dots 0
};

std::vector<LayerEntry> layersOfDrawing();
std::vector<LinetypeEntry> linetypesOfDrawing();

/// Without records that have no name: they are there for the shapes of linetypes.
std::vector<std::wstring> textStylesOfDrawing();

} // namespace corma
