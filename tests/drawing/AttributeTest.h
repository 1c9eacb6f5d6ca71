#pragma once

#include "host/acdb_database.h"
#include "support/BlockDrawing.h"
#include "support/OpenObjects.h"
#include "support/RecordingServices.h"
#include "support/TempFolder.h"
#include <corma/xx_Var.h>

#include <string>

namespace corma::testing {

/// A test on the attributes of a drawing, which stands in a folder of its own.
class AttributeTest : public OpenObjects
{
protected:
    /// Makes the drawing the current document.
    void open(const BlockDrawing& drawing);

    /// An object of it.
    [[nodiscard]] static AcDbObjectId id(const char* handle);
    [[nodiscard]] static AcDbObjectId block(const wchar_t* name);

    static void erase(AcDbObjectId id);

    /// "TAG=text", a blank between two; numbers with up to 6 digits.
    [[nodiscard]] static std::string described(const xx_VarArray& attributes);

    /// Handles, a blank between two.
    [[nodiscard]] static std::string described(const AcDbObjectIdArray& ids);

    /// The attributes that a reference itself has, as described() tells a list.
    [[nodiscard]] static std::string attributesOf(const char* reference);

    /// What was printed since the last call.
    std::string printed();

    RecordingServices services;
    TempFolder folder;
};

/// A failure as it is printed.
std::string failure(const std::string& source, int line, const std::string& text,
                    const std::string& code);

} // namespace corma::testing
