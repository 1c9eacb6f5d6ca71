#include "host/drawing_files.h"

#include "host/dwg/dwg_reader.h"
#include "host/dwg/dwg_writer.h"
#include "host/dwg/release.h"
#include "host/dxf/DxfFormat.h"
#include "host/dxf/dxf_reader.h"
#include "host/model/Store.h"
#include "platform/text.h"

#include <algorithm>
#include <array>

namespace corma::host {

namespace {

struct Format
{
    bool (*recognises)(std::string_view bytes);
    ReadResult (*read)(platform::FileContent content, const std::wstring& path, Store& store);
};

constexpr std::array kFormats
    = {Format {dxf::isDxf, dxf::readDxf}, Format {dwg::isDwg, dwg::readDwg}};

} // namespace

ReadResult readDrawing(platform::FileContent content, const std::wstring& path, Store& store)
{
    if (content.size == 0) {
        return {Acad::eUnsupportedFileFormat, path + L" is empty and so no drawing"};
    }
    for (const Format& format : kFormats) {
        if (format.recognises(content.view())) {
            return format.read(std::move(content), path, store);
        }
    }
    return {Acad::eUnsupportedFileFormat,
            path + L" is no drawing: it begins neither as a DWG nor as a text or binary DXF file"};
}

WriteResult writeDrawing(const Store& store, const std::wstring& path,
                         const std::wstring& formerPath)
{
    constexpr std::wstring_view kDwg = L".dwg";
    const bool isNamedDwg = path.size() > kDwg.size()
        && equalIgnoringCase(std::wstring_view(path).substr(path.size() - kDwg.size()), kDwg);
    if (isNamedDwg && path != formerPath && !dwg::isDwgDrawing(store)) {
        return dwg::writeNewDwg(store, path);
    }
    return store.format()->write(store, path);
}

WriteResult committed(platform::FileReplacement& file)
{
    if (file.commit()) {
        return {};
    }
    const bool isFull = file.error().cause == platform::FileError::Cause::diskFull;
    return {isFull ? Acad::eOutOfDisk : Acad::eFileAccessErr};
}

platform::FileContent textContent(std::string_view text)
{
    platform::FileContent content;
    content.bytes = std::make_unique<char[]>(text.size() + platform::FileContent::kPadding);
    content.size = text.size();
    std::copy(text.begin(), text.end(), content.bytes.get());
    return content;
}

} // namespace corma::host
