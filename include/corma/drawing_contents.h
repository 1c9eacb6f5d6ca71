#pragma once

#include <corma/export.h>
#include <corma/host.h>

#include <optional>
#include <string>
#include <vector>

namespace corma {

/// One value that a drawing holds.
struct DrawingSetting
{
    std::wstring ident; // without its chapter
    std::wstring value;
};

/// The values of one chapter. Those of the head of a file stand in the chapter "Algemeen".
struct DrawingChapter
{
    std::wstring name; // decoded
    std::vector<DrawingSetting> settings;
};

/// What a drawing holds for one configuration file.
struct DrawingFile
{
    std::wstring name; // as the drawing has it: name and extension in capitals
    std::vector<DrawingChapter> chapters;
};

/// A block that is inserted somewhere.
struct DrawingReference
{
    std::wstring handle; // hexadecimal, in capitals
    std::wstring block; // empty when the drawing lacks the block
    std::wstring space; // the block that the reference stands in, such as "*Model_Space"
};

/// What a drawing holds, each list in the drawing's own order.
struct DrawingContents
{
    std::wstring version; // $ACADVER, such as "AC1032"; empty when the drawing does not tell
    std::vector<std::wstring> blocks; // model and paper space among them
    std::vector<std::wstring> layers;
    std::vector<std::wstring> linetypes;
    std::vector<std::wstring> textStyles;
    std::vector<DrawingReference> references; // of all spaces and blocks
    std::vector<DrawingFile> settings;
};

/// What a drawing, the working one for null, holds; nothing without a drawing. Erased records do
/// not count. A record without text is no setting, and a dictionary that stands in two places
/// counts at the first. Files, the chapters of each, and the idents of each of those differ. The
/// drawing stays as it is.
CORMA_EXPORT std::optional<DrawingContents> contentsOf(AcDbDatabase* database = nullptr);

/// The name of a layer, linetype, text style or block; nothing for another object, a null id and an
/// erased record.
CORMA_EXPORT std::optional<std::wstring> recordName(AcDbObjectId id);

} // namespace corma
