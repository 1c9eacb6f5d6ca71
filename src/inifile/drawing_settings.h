#pragma once

// The settings that a drawing holds: a tree of dictionaries below its named objects,
// KVR_INI_ROOT / NAME.INI / chapter, with a record of one text for each ident.

#include "host/host.h"

#include <optional>
#include <string>
#include <string_view>

/// The dictionary that holds the idents of a chapter of a configuration file, open for read; the
/// caller closes it. The file is known by its name and extension alone. An empty chapter and
/// "Algemeen" are the file's dictionary itself. What is missing is made when create is set. Null
/// database: the working one. Acad::eOk, or eKeyNotFound (22), with a null dictionary, when there
/// is no drawing or no dictionary.
Acad::ErrorStatus xx_dictionaryFor(const wchar_t* fileName, const wchar_t* chapter,
                                   AcDbDictionary*& dictionary, bool create,
                                   AcDbDatabase* database);

/// True for a name without a character that the key of a dictionary cannot have.
bool xx_isLegalKey(std::wstring_view text);

/// The key of a chapter: its name, or when that is not legal "XX_HEX_0x" with its UTF-16 code
/// units, low byte first, in hexadecimal digits.
std::wstring xx_encodeKey(std::wstring_view text);

/// The name of a chapter by its key. Of a coded one only the low byte of each character survives.
std::wstring xx_decodeKey(std::wstring_view text);

namespace corma {

/// The dictionary below the named objects that holds all settings.
inline constexpr const wchar_t* kSettingsRoot = L"KVR_INI_ROOT";

/// The text of a setting's record; nothing for another kind of object and a record without text.
std::optional<std::wstring> textOfRecord(const AcDbObject& object);

/// A setting in a drawing, the working one for null. Nothing when it is not there; nothing is ever
/// made or told.
std::optional<std::wstring> readFromDrawing(const wchar_t* fileName, const wchar_t* chapter,
                                            const wchar_t* ident, AcDbDatabase* database);

/// Stores a setting in a drawing, in place of a former value of the ident.
[[nodiscard]] Acad::ErrorStatus writeToDrawing(const wchar_t* fileName, const wchar_t* chapter,
                                               const wchar_t* ident, const wchar_t* value,
                                               AcDbDatabase* database);

} // namespace corma
