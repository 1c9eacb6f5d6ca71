#pragma once

// The host's error statuses, as far as its operations here give them.

#include <corma/host.h>

namespace Acad {

enum ErrorStatus
{
    eOk = 0,
    eNotImplementedYet = 1,
    eNotApplicable = 2,
    eInvalidInput = 3,
    eOutOfMemory = 6,
    eInvalidOpenState = 8,
    eHandleExists = 10,
    eNullHandle = 11,
    eUnknownHandle = 13,
    eNullObjectPointer = 15,
    eNullObjectId = 16,
    eNullBlockName = 17,
    eContainerNotEmpty = 18,
    eKeyNotFound = 22,
    eDuplicateKey = 23,
    eInvalidIndex = 24,
    eAlreadyInDb = 26,
    eOutOfDisk = 27,
    eDeletedEntry = 28,
    eInvalidKey = 33,
    eWrongObjectType = 34,
    eWrongDatabase = 35,
    eInvalidDwgVersion = 37,
    eEndOfObject = 40,
    eEndOfFile = 41,
    eNotOpenForRead = 44,
    eNotOpenForWrite = 45,
    eNotThatKindOfClass = 46,
    eInvalidBlockName = 47,
    eInvalidDxfCode = 50,
    eInvalidResBuf = 51,
    eBadDxfSequence = 52,
    eFilerError = 53,
    eFileAccessErr = 74,
    eFileSystemErr = 75,
    eFileInternalErr = 76,
    eFileNotFound = 78,
    eWasErased = 80,
    ePermanentlyErased = 81,
    eWasOpenForRead = 82,
    eWasOpenForWrite = 83,
    eWasNotifying = 85,
    eOnLockedLayer = 87,
    eAtMaxReaders = 90,
    eCannotBeErasedByCaller = 105,
    eCannotScaleNonUniformly = 136,
    eUndefinedLineType = 204,
    eCantOpenFile = 364,
    eBadDxfFile = 368,
    eUnsupportedFileFormat = 434
};

} // namespace Acad

/// The name of a status, such as "eKeyNotFound"; for a number that is none of them its decimal
/// digits. The text lives until the next call of that kind.
const ACHAR* acadErrorStatusText(Acad::ErrorStatus status);
