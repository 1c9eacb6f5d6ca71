#pragma once

// The bodies of the types that are understood, a function for each. They stand in the sources of
// types/, by theme.

#include "host/dwg/Body.h"

#include <memory>

namespace corma::host::dwg {

// types/straight.cpp
std::unique_ptr<Body> makeLine();
std::unique_ptr<Body> makePoint();
std::unique_ptr<Body> makeRay();
std::unique_ptr<Body> makeXline();
std::unique_ptr<Body> makeSolid();
std::unique_ptr<Body> makeTrace();
std::unique_ptr<Body> makeFace();

// types/curves.cpp
std::unique_ptr<Body> makeCircle();
std::unique_ptr<Body> makeArc();
std::unique_ptr<Body> makeEllipse();
std::unique_ptr<Body> makeSpline();

// types/dimensions.cpp
std::unique_ptr<Body> makeOrdinateDimension();
std::unique_ptr<Body> makeRotatedDimension();
std::unique_ptr<Body> makeAlignedDimension();
std::unique_ptr<Body> makeThreePointDimension();
std::unique_ptr<Body> makeTwoLineDimension();
std::unique_ptr<Body> makeRadiusDimension();
std::unique_ptr<Body> makeDiameterDimension();

// types/hatch.cpp
std::unique_ptr<Body> makeHatch();

// types/leaders.cpp
std::unique_ptr<Body> makeLeader();
std::unique_ptr<Body> makeTolerance();

// types/multiline.cpp
std::unique_ptr<Body> makeMultiline();

// types/multiline_text.cpp
std::unique_ptr<Body> makeMultilineText();

// types/polylines.cpp
std::unique_ptr<Body> makeLightPolyline();
std::unique_ptr<Body> makePolyline2d();
std::unique_ptr<Body> makePolyline3d();
std::unique_ptr<Body> makeFaceMesh();
std::unique_ptr<Body> makeMesh();
std::unique_ptr<Body> makeVertex2d();
std::unique_ptr<Body> makeVertex3d();
std::unique_ptr<Body> makeMeshVertex();
std::unique_ptr<Body> makeFaceVertex();
std::unique_ptr<Body> makeFaceRecord();

// types/references.cpp
std::unique_ptr<Body> makeBlockBegin();
std::unique_ptr<Body> makeBlockEnd();
std::unique_ptr<Body> makeSequenceEnd();
std::unique_ptr<Body> makeInsert();
std::unique_ptr<Body> makeInsertArray();

// types/texts.cpp
std::unique_ptr<Body> makeText();
std::unique_ptr<Body> makeAttribute();
std::unique_ptr<Body> makeAttributeDefinition();

// types/viewport.cpp
std::unique_ptr<Body> makeViewport();

// types/tables.cpp
std::unique_ptr<Body> makeBlockControl();
std::unique_ptr<Body> makeLayerControl();
std::unique_ptr<Body> makeStyleControl();
std::unique_ptr<Body> makeLinetypeControl();
std::unique_ptr<Body> makeViewControl();
std::unique_ptr<Body> makeUcsControl();
std::unique_ptr<Body> makeViewportControl();
std::unique_ptr<Body> makeAppIdControl();
std::unique_ptr<Body> makeDimStyleControl();
std::unique_ptr<Body> makePaperViewportControl();

// types/blocks.cpp
std::unique_ptr<Body> makeBlockRecord();

// types/table_entries.cpp
std::unique_ptr<Body> makeLayer();
std::unique_ptr<Body> makeTextStyle();
std::unique_ptr<Body> makeApplication();
std::unique_ptr<Body> makeCoordinateSystem();
std::unique_ptr<Body> makePaperViewport();

// types/linetype.cpp
std::unique_ptr<Body> makeLinetype();

// types/views.cpp
std::unique_ptr<Body> makeView();
std::unique_ptr<Body> makeWindow();

// types/dim_style.cpp
std::unique_ptr<Body> makeDimStyle();

// types/objects.cpp
std::unique_ptr<Body> makeDictionary();
std::unique_ptr<Body> makeDictionaryWithDefault();
std::unique_ptr<Body> makePlaceholder();

// types/small_objects.cpp
std::unique_ptr<Body> makeEntityGroup();
std::unique_ptr<Body> makeDictionaryVariable();
std::unique_ptr<Body> makeScale();
std::unique_ptr<Body> makeDrawOrder();
std::unique_ptr<Body> makeMlineStyle();
std::unique_ptr<Body> makeRasterVariables();
std::unique_ptr<Body> makeImageDefinition();
std::unique_ptr<Body> makeWipeoutVariables();

// types/plot_settings.cpp
std::unique_ptr<Body> makePlotSettings();
std::unique_ptr<Body> makeLayout();

// types/xrecord.cpp
std::unique_ptr<Body> makeXrecord();

} // namespace corma::host::dwg
