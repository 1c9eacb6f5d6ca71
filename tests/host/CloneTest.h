#pragma once

#include "support/CloneDrawing.h"
#include "support/RecordingServices.h"

#include <gtest/gtest.h>

namespace corma::testing {

/// The tables of the other drawing.
extern const std::string_view kOtherTables;

/// Clones records between drawings.
class Clone : public ::testing::Test
{
protected:
    Clone();

    Acad::ErrorStatus cloneBlock(const CloneDrawing& from, const wchar_t* name,
                                 const CloneDrawing& to, AcDb::DuplicateRecordCloning rule);

    Acad::ErrorStatus cloneToModel(const CloneDrawing& from, int entity, const CloneDrawing& to);

    [[nodiscard]] AcDbObjectId cloneOf(AcDbObjectId source) const;

    RecordingServices m_services;
    CloneDrawing m_chairs; // a chair whose leg is a block, on a layer with a linetype of its own
    CloneDrawing m_other; // other records, some under the same names
    AcDbIdMapping m_mapping; // of the last call
};

} // namespace corma::testing
