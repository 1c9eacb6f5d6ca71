#pragma once

#include <string>

class AcDbDatabase;

namespace corma::host {

/// Gives all references of a block the attributes that its definition prescribes, in the order of
/// the definition: missing ones appear with the default text, those without a definition go, all
/// others keep their texts and take everything else from the definition. Constant attributes are in
/// the definition only. References are found in all spaces and blocks.
///
/// Letters that cannot be stretched as a reference asks keep their shape. RTERROR, with a message,
/// without a drawing or such a block, when an object that has to change is open, or when a
/// reference is placed by numbers that are not finite; nothing is changed then.
int syncAttributes(AcDbDatabase* database, const std::wstring& blockName);

} // namespace corma::host
