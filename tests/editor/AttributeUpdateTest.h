#pragma once

#include "drawing/AttributeTest.h"
#include "editor/AttributeUpdateForm.h"

#include <string>

namespace corma::testing {

/// A test on an attribute update of a drawing, and what is chosen in it.
class AttributeUpdateTest : public AttributeTest
{
protected:
    /// DOOR is out of date by its attribute WOOD, twice; GATE is not, and inserted once. Constant
    /// attributes are never missing.
    static BlockDrawing doors();

    /// A drawing file that has a block with these definitions. Returns its path.
    [[nodiscard]] std::wstring writeLibrary(std::wstring_view name, const std::string& block,
                                            const DrawnAttributes& definitions) const;

    /// A drawing file that has the definitions itself. Returns its path.
    [[nodiscard]] std::wstring writeFile(std::wstring_view name,
                                         const DrawnAttributes& definitions) const;

    /// What is to be chosen from in the working drawing.
    static AttributeUpdate detected(AttributeUpdateMode mode = AttributeUpdateMode::references);

    static AttributeUpdate updateOf(const AcDbObjectIdArray& outOfDateRefs,
                                    const AcDbObjectIdArray& upToDateRefs = {});

    /// The references with these handles.
    static AcDbObjectIdArray references(const std::vector<const char*>& handles);

    /// Rows in lines: "x" when checked, name, source, "+" before new and "-" before extra tags.
    [[nodiscard]] std::string rowsOf(const AttributeUpdateForm& form) const;

    /// The definitions of a block of the working drawing, as described() tells a list.
    static std::string definitionsOf(const wchar_t* name);
};

} // namespace corma::testing
