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

// types/objects.cpp
std::unique_ptr<Body> makeDictionary();
std::unique_ptr<Body> makeDictionaryWithDefault();
std::unique_ptr<Body> makePlaceholder();

} // namespace corma::host::dwg
