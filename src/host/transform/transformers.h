#pragma once

// One function per type of record. Each may leave the record half done when it gives another status
// than eOk: the caller works on a copy.

#include "host/error_status.h"
#include "host/model/Group.h"

namespace corma::host {

class Motion;

using Transformer = Acad::ErrorStatus(Groups& groups, const Motion& motion);

// Straight: straight.cpp
Transformer transformLine;
Transformer transformPoint;
Transformer transformRay; // RAY and XLINE
Transformer transformFace; // 3DFACE
Transformer transformSolid; // SOLID and TRACE

// Curved: curves.cpp
Transformer transformCircle;
Transformer transformArc;
Transformer transformEllipse;
Transformer transformSpline;

// polylines.cpp
Transformer transformLightPolyline; // LWPOLYLINE
Transformer transformPolyline; // the POLYLINE only
Transformer transformVertex;
Transformer transformSequenceEnd;

// texts.cpp
Transformer transformText;
Transformer transformAttribute; // ATTRIB and ATTDEF
Transformer transformShape;

// multiline_text.cpp
Transformer transformMultilineText;
Transformer transformTolerance;

/// The MTEXT that holds the text of an attribute with several lines.
Acad::ErrorStatus transformEmbeddedText(Groups& groups, const Motion& motion);

// hatch.cpp
Transformer transformHatch;

// insertions.cpp
Transformer transformInsert;
Transformer transformViewport;

// dimensions.cpp
Transformer transformDimension;
Transformer transformLeader;

// extended_data.cpp
void transformExtendedData(Groups& groups, const Motion& motion);

} // namespace corma::host
