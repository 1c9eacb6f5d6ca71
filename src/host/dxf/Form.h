#pragma once

#include "host/dxf/CodePage.h"
#include "host/dxf/dxf_text.h"
#include "host/dxf/tags.h"

#include <string_view>

namespace corma::host::dxf {

/// The way in which a file writes its groups.
struct Form
{
    bool isBinary = false;
    BinaryTags::Codes codes = BinaryTags::Codes::ofTwoBytes; // in a binary file
    bool alignsNumbers = false; // whole numbers are put right in a column; in a text file
    std::string_view lineEnd = "\n"; // in a text file
    CodePage page;

    [[nodiscard]] Caret caret() const { return isBinary ? Caret::isItself : Caret::escapes; }
};

} // namespace corma::host::dxf
