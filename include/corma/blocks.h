#pragma once

// drawing/ - blocks, attributes, entities and views of the working drawing. This header: finding a
// block, and loading it from a drawing file when the drawing does not have it yet.

#include <corma/export.h>
#include <corma/host.h>

#include <string>
#include <string_view>

/// The block that a text names, as the id of its record in `destination` (null: the working
/// database). The text is
///
///     file!$name
///
/// where all but the name may be absent. The name may be a path and may end in ".dwg" or ".dwt";
/// the block bears what is left without folder and extension, in capitals. A block that is there is
/// taken as it is; "$" loads it anew all the same, and replaces its definition.
///
/// With "file!" the block is a definition within that drawing and is cloned out of it, with all
/// that it needs. Without, the drawing of that name becomes the block as a whole. Files are looked
/// for as xx_findfile_arx() does it; ".dwg" is put behind a name that tells no kind of drawing.
///
/// `text` is rewritten when it holds a "!": what stood behind the first one is left. `source`
/// (null: the file is read, and closed again) is the drawing to take the block from; it stays the
/// caller's and must not be the destination. With a source, no file is looked for when the text has
/// a "!", while a drawing that is to be a block must be found all the same. `password` (null or
/// empty: none) is that of a drawing which becomes a block.
///
/// *status is RTNORM also where there is nothing to find: for a null or empty text, and without a
/// destination. It is RTERROR when no file or no such block was found or the cloning failed, RTCAN
/// when a drawing could not be read or inserted. With report not 0 the user is told of a file or
/// block that was not found; what went wrong with a file is told in any case. The id is null
/// unless *status is RTNORM, and nothing is changed then.
CORMA_EXPORT AcDbObjectId xx_findblk(wchar_t* text, int report, int* status,
                                     AcDbDatabase* destination, AcDbDatabase* source,
                                     const wchar_t* password);

/// The same with reports and without a password.
CORMA_EXPORT AcDbObjectId xx_findblk(wchar_t* text, int* status,
                                     AcDbDatabase* destination = nullptr,
                                     AcDbDatabase* source = nullptr);

/// The name of the block that such a text, without "file!" and "$", means: what stands behind the
/// last separator, in capitals, up to the first ".DWG", else up to the first ".DWT".
CORMA_EXPORT std::wstring xx_findblk_name(std::wstring_view text);

/// The block of a name, as above, in a drawing (null: the working database); nothing is loaded. A
/// null id when there is none, and for a name that begins with "$". *status is RTNORM, or RTERROR
/// when the drawing has no table of blocks to look in.
CORMA_EXPORT AcDbObjectId xx_findblk_int(const wchar_t* name, int* status,
                                         AcDbDatabase* database = nullptr);

/// The short form of xx_findblk() for other modules; the result goes into *id.
CORMA_EXPORT void xx_find_block_recordId_arx(wchar_t* text, int* status, AcDbDatabase* database,
                                             AcDbObjectId* id);
