#pragma once

#include "host/acdb_database.h"
#include "host/model/Store.h"

#include <memory>
#include <string>
#include <string_view>

namespace corma::testing {

/// What a drawing of a test consists of: groups as lines of a code and a value, such as "0 LINE".
struct DrawingText
{
    std::string_view version = "AC1015";
    std::string_view header {}; // more variables
    std::string_view tables {};
    std::string_view blocks {};
    std::string_view entities {};
    std::string_view objects {};
    std::string_view classes {};
};

/// A drawing in memory that was read from a file.
class CloneDrawing
{
public:
    explicit CloneDrawing(const DrawingText& text);
    explicit CloneDrawing(std::unique_ptr<AcDbDatabase> database);

    /// A new, empty drawing of the newest version.
    CloneDrawing();

    [[nodiscard]] AcDbDatabase& database() const { return *m_database; }

    [[nodiscard]] host::Store& store() const { return m_database->store(); }

    /// What it is saved as.
    [[nodiscard]] std::string bytes() const;

    /// The same drawing, saved and read again.
    [[nodiscard]] CloneDrawing reloaded() const;

    /// The record of a block, null when there is none.
    [[nodiscard]] AcDbObjectId block(const wchar_t* name) const;

    /// An entry of a table, null when there is none.
    [[nodiscard]] AcDbObjectId entry(host::TableKind table, const wchar_t* name) const;

    /// An entity of the model space, counted from 0.
    [[nodiscard]] AcDbObjectId entity(int index) const;

    /// The entities of a block, each in a line; see described().
    [[nodiscard]] std::string content(const wchar_t* blockName) const;

    [[nodiscard]] std::string model() const { return content(L"*Model_Space"); }

    /// The names in a table, in order.
    [[nodiscard]] std::string names(host::TableKind table) const;

    /// A record in a line: type and groups, without handle, owner, markers and layer "0". What a
    /// handle names is told by type and name. Sub-entities follow in lines of their own.
    [[nodiscard]] std::string described(const AcDbStub& stub) const;

    /// The record that a path of names in the dictionaries leads to, such as "A/B".
    [[nodiscard]] AcDbStub* object(std::wstring_view path) const;

private:
    std::unique_ptr<AcDbDatabase> m_database;
};

} // namespace corma::testing
