#pragma once

#include "host/host.h"
#include "support/OpenObjects.h"
#include "support/RecordingServices.h"

#include <string>

namespace corma::testing {

/// A test on a drawing of the test data that is the current document until the test ends.
class OpenedDrawing : public OpenObjects
{
protected:
    void TearDown() override;

    /// Opens a drawing such as L"ucs".
    AcDbDatabase& open(const wchar_t* name);

    /// The object of a handle in the working drawing.
    static AcDbObjectId id(const wchar_t* handle) { return objectWithHandle(handle); }

    /// The same for some, in the order given.
    static AcDbObjectIdArray ids(std::initializer_list<const wchar_t*> handles);

    /// The entities of a block that are not erased.
    static AcDbObjectIdArray entitiesOf(AcDbDatabase& database, const wchar_t* block);

    /// The names of all blocks, in order, with a blank behind each.
    static std::wstring blockNames(AcDbDatabase& database);

    RecordingServices services;
};

} // namespace corma::testing
