#pragma once

#include <string_view>

namespace corma::testing {

// A drawing with a bit of everything, as lines of groups for TestDrawing. Both have the linetypes
// Continuous and Dashed, the layers 0 and Gevel (off, locked), the text style Standard, the
// viewport *ACTIVE, and the block Deur with a line, the attribute definition NUMMER and the
// constant one SOORT. In model space are a line and a reference of Deur with its attribute; in
// paper space are a line and a viewport.

/// Of R2000. Handles: the linetypes 16 and 17, the layers 10 and 11, the style 18, the viewport 19,
/// the block records 1F, 1B and 30 (with BLOCK 31, line 32, definitions 33 and 34, ENDBLK 35), the
/// line 40, the reference 41 with attribute 42 and SEQEND 43, in paper space line 44 and viewport
/// 45, the named objects dictionary C. The first handle of a new record is 1003.
extern const std::string_view kSmallDrawing;

/// Of R12, with the same handles but for table entries, which have none.
extern const std::string_view kSmallDrawingR12;

} // namespace corma::testing
