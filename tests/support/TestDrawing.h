#pragma once

#include "host/acdb_object.h"
#include "host/model/Store.h"

#include <memory>
#include <string>
#include <string_view>

namespace corma::testing {

/// A drawing of the test's own, written as one group a line: code, a space, value. Sections and the
/// version stand in the text; withSections() helps.
class TestDrawing
{
public:
    explicit TestDrawing(std::string_view groups);

    host::Store& store() { return *m_store; }

    /// The record with a handle; the test fails when there is none, and ends.
    AcDbStub& stub(std::string_view handle);

    AcDbObjectId id(std::string_view handle) { return AcDbObjectId(&stub(handle)); }

    template<class Object>
    host::Opened<Object> open(std::string_view handle, AcDb::OpenMode mode = AcDb::kForRead,
                              bool openErased = false)
    {
        return host::Opened<Object>(id(handle), mode, openErased);
    }

    /// What the drawing is written as.
    [[nodiscard]] std::string file() const;

    /// The same as lines of groups.
    [[nodiscard]] std::string saved() const;

    /// The record with a handle as it is written; empty when it is not.
    [[nodiscard]] std::string savedRecord(std::string_view handle) const;

    /// The drawing as another one that was loaded from what this one is written as.
    [[nodiscard]] TestDrawing reloaded() const { return TestDrawing(saved()); }

private:
    std::unique_ptr<host::Store> m_store;
};

/// A drawing of a version, such as "AC1015", with these sections behind its header.
std::string withSections(std::string_view version, std::string_view sections);

} // namespace corma::testing
