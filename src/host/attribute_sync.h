#pragma once

#include <string>

class AcDbDatabase;

namespace corma::host {

/// Gives all references of a block the attributes that its definition prescribes, in the order of
/// the definition: missing ones appear with the default text, those without a definition go, all
/// others keep their texts and take everything else from the definition. Constant attributes are in
/// the definition only. References are found in all spaces and blocks.
///
/// RTERROR, with a message, without a drawing or such a block, when an object that has to change is
/// open, or when an attribute has no form for the way its reference is scaled; nothing is changed
/// then.
int syncAttributes(AcDbDatabase* database, const std::wstring& blockName);

} // namespace corma::host
