#pragma once

#include "host/drawing_files.h"
#include "host/dxf/DxfFormat.h"
#include "host/model/Store.h"

#include <string>
#include <string_view>
#include <vector>

namespace corma::testing {

/// A text DXF file from lines of a code and a value, such as "0 SECTION"; an empty first line is
/// passed over.
std::string dxfText(std::string_view groups, std::string_view lineEnd = "\n");

/// A binary DXF file from the same, with codes of two bytes.
std::string binaryDxf(std::string_view groups);

/// The bytes of a drawing in memory.
struct DxfDrawing
{
    explicit DxfDrawing(std::string_view bytes, const std::wstring& path = L"test.dxf");

    [[nodiscard]] const host::dxf::DxfFormat& format() const;

    /// What it would be saved as.
    [[nodiscard]] std::string written() const;

    /// The first record of a type; the test fails when there is none.
    [[nodiscard]] AcDbStub& record(std::string_view type) const;

    /// All records from the first on.
    [[nodiscard]] std::vector<AcDbStub*> records() const;

    /// Gives the first group of that code in a record another value.
    void change(AcDbStub& stub, int code, host::GroupValue value);

    host::Store store {nullptr};
    host::ReadResult result;
};

/// A record in a line: kind, type, handle, what it belongs to, and what else is true of it.
std::string described(const AcDbStub& stub);

/// All records of a drawing, each in a line.
std::string described(const DxfDrawing& drawing);

/// Groups in lines of code and value; handles are in "#", bytes in "<>".
std::string described(const host::Groups& groups);

} // namespace corma::testing
