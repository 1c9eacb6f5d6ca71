#pragma once

// The attributes of block references, what their definitions prescribe, and the update of those
// that differ. An attribute list has an element for each attribute: its name is the tag, its one
// value the text.

#include <corma/export.h>
#include <corma/host.h>
#include <corma/xx_Var.h>

#include <string>

class AcGePoint3d;

/// The attributes of a block reference, and the constant ones of its block, which live in the
/// definition only, put into `result` by their tags. *point (null: not wanted) becomes the position
/// of the reference in world coordinates, the origin when it cannot be read. With a wild-card
/// pattern (null: none) come those of its own numbers whose names fit it, each as one RTREAL:
/// BL_XSCALE, BL_YSCALE, BL_ZSCALE, and BL_ROTATION in radians.
///
/// RTNORM; else RTERROR, which the user is told: the id is no block reference that can be opened,
/// or something of it cannot be read (what can be read is then in the list).
CORMA_EXPORT int xx_get_bl_attributes(AcDbObjectId reference, xx_VarArray& result,
                                      AcGePoint3d* point = nullptr,
                                      const wchar_t* pattern = nullptr);

/// The attribute definitions of a block with their default texts, or only the constant ones, put
/// into `result` by their tags. RTNORM; RTERROR when the id is no block that can be opened.
CORMA_EXPORT int xx_get_attdefs(AcDbObjectId block, xx_VarArray& result, bool constantOnly = false);

/// Gives all references of a block, wherever they stand, the attributes that its definition
/// prescribes: missing ones appear at their place with the default text, those without a definition
/// go, all others keep their texts. The block is one of the working database; its name is taken
/// without regard to case. RTNORM; RTERROR, with a message, without a drawing or such a block, or
/// when something that has to change is open; nothing is changed then.
CORMA_EXPORT int xx_sync_attributes(const wchar_t* blockName);

namespace corma {

enum class AttributeUpdateMode
{
    references, // of model space against their blocks
    records // blocks of the drawing against the drawing files of their names
};

/// What an attribute update found, in the order of the drawing. The ids are those of references for
/// the first two, of block records for the third; those of the other mode are empty.
struct AttributeUpdate
{
    AttributeUpdateMode mode = AttributeUpdateMode::references;
    AcDbObjectIdArray outOfDateRefs;
    AcDbObjectIdArray upToDateRefs;
    AcDbObjectIdArray outOfDateRecords;
};

/// Where it is chosen what an attribute update brings up to date: the dialog of
/// corma/attribute_dialog.h, or a program.
class CORMA_EXPORT AttributeUpdateChooser
{
public:
    AttributeUpdateChooser() = default;
    AttributeUpdateChooser(const AttributeUpdateChooser&) = default;
    AttributeUpdateChooser& operator=(const AttributeUpdateChooser&) = default;
    virtual ~AttributeUpdateChooser();

    /// Leaves in outOfDateRecords or, by the mode, in outOfDateRefs what is to be brought up to
    /// date; true to go on, false when nothing is to be done. It is asked only when there is
    /// something to show, and may change the drawing, but not close it. No object is open
    /// meanwhile.
    virtual bool choose(AttributeUpdate& update) = 0;
};

/// Compares the attributes of the working drawing and brings up to date what `chooser` wants.
/// `pattern` (null: "*") is a wild-card pattern for names of blocks, case ignored. When there is
/// nothing to show, the user is told that all is up to date. RTNORM, also when nothing was chosen,
/// or the status of the last thing done; what went wrong is told.
CORMA_EXPORT int updateAttributes(AttributeUpdateMode mode, const wchar_t* pattern,
                                  AttributeUpdateChooser& chooser);

} // namespace corma
