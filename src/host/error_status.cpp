#include "host/error_status.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cwchar>
#include <iterator>

namespace {

struct StatusName
{
    Acad::ErrorStatus status;
    const ACHAR* name;
};

constexpr StatusName kNames[] = {
    {Acad::eOk, L"eOk"},
    {Acad::eNotImplementedYet, L"eNotImplementedYet"},
    {Acad::eNotApplicable, L"eNotApplicable"},
    {Acad::eInvalidInput, L"eInvalidInput"},
    {Acad::eOutOfMemory, L"eOutOfMemory"},
    {Acad::eInvalidOpenState, L"eInvalidOpenState"},
    {Acad::eHandleExists, L"eHandleExists"},
    {Acad::eNullHandle, L"eNullHandle"},
    {Acad::eUnknownHandle, L"eUnknownHandle"},
    {Acad::eNullObjectPointer, L"eNullObjectPointer"},
    {Acad::eNullObjectId, L"eNullObjectId"},
    {Acad::eNullBlockName, L"eNullBlockName"},
    {Acad::eContainerNotEmpty, L"eContainerNotEmpty"},
    {Acad::eKeyNotFound, L"eKeyNotFound"},
    {Acad::eDuplicateKey, L"eDuplicateKey"},
    {Acad::eInvalidIndex, L"eInvalidIndex"},
    {Acad::eAlreadyInDb, L"eAlreadyInDb"},
    {Acad::eOutOfDisk, L"eOutOfDisk"},
    {Acad::eDeletedEntry, L"eDeletedEntry"},
    {Acad::eInvalidKey, L"eInvalidKey"},
    {Acad::eWrongObjectType, L"eWrongObjectType"},
    {Acad::eWrongDatabase, L"eWrongDatabase"},
    {Acad::eInvalidDwgVersion, L"eInvalidDwgVersion"},
    {Acad::eEndOfObject, L"eEndOfObject"},
    {Acad::eEndOfFile, L"eEndOfFile"},
    {Acad::eNotOpenForRead, L"eNotOpenForRead"},
    {Acad::eNotOpenForWrite, L"eNotOpenForWrite"},
    {Acad::eNotThatKindOfClass, L"eNotThatKindOfClass"},
    {Acad::eInvalidBlockName, L"eInvalidBlockName"},
    {Acad::eInvalidDxfCode, L"eInvalidDxfCode"},
    {Acad::eInvalidResBuf, L"eInvalidResBuf"},
    {Acad::eBadDxfSequence, L"eBadDxfSequence"},
    {Acad::eFilerError, L"eFilerError"},
    {Acad::eFileAccessErr, L"eFileAccessErr"},
    {Acad::eFileSystemErr, L"eFileSystemErr"},
    {Acad::eFileInternalErr, L"eFileInternalErr"},
    {Acad::eFileNotFound, L"eFileNotFound"},
    {Acad::eWasErased, L"eWasErased"},
    {Acad::ePermanentlyErased, L"ePermanentlyErased"},
    {Acad::eWasOpenForRead, L"eWasOpenForRead"},
    {Acad::eWasOpenForWrite, L"eWasOpenForWrite"},
    {Acad::eWasNotifying, L"eWasNotifying"},
    {Acad::eOnLockedLayer, L"eOnLockedLayer"},
    {Acad::eAtMaxReaders, L"eAtMaxReaders"},
    {Acad::eCannotBeErasedByCaller, L"eCannotBeErasedByCaller"},
    {Acad::eCannotScaleNonUniformly, L"eCannotScaleNonUniformly"},
    {Acad::eUndefinedLineType, L"eUndefinedLineType"},
    {Acad::eCantOpenFile, L"eCantOpenFile"},
    {Acad::eBadDxfFile, L"eBadDxfFile"},
    {Acad::eUnsupportedFileFormat, L"eUnsupportedFileFormat"},
};

} // namespace

const ACHAR* acadErrorStatusText(Acad::ErrorStatus status)
{
    const auto* const found = std::find_if(std::begin(kNames), std::end(kNames),
                                           [&](const auto& row) { return row.status == status; });
    if (found != std::end(kNames)) {
        return found->name;
    }
    constexpr std::size_t kMostCharacters = 16;
    thread_local std::array<ACHAR, kMostCharacters> digits;
    std::swprintf(digits.data(), digits.size(), L"%d", static_cast<int>(status));
    return digits.data();
}
