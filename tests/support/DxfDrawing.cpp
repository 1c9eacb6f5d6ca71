#include "support/DxfDrawing.h"

#include "host/acdb_object.h"
#include "host/dxf/group_codec.h"
#include "platform/text.h"

#include <gtest/gtest.h>
#include <sstream>

namespace corma::testing {

using namespace corma::host;

namespace {

std::string_view nameOf(RecordKind kind)
{
    switch (kind) {
    case RecordKind::structure:
        return "structure";
    case RecordKind::header:
        return "header";
    case RecordKind::table:
        return "table";
    case RecordKind::tableEntry:
        return "entry";
    case RecordKind::blockBegin:
        return "block";
    case RecordKind::blockEnd:
        return "blockEnd";
    case RecordKind::entity:
        return "entity";
    case RecordKind::subEntity:
        return "sub";
    case RecordKind::object:
        return "object";
    }
    return "?";
}

std::string asHandle(Handle handle)
{
    return "#" + toUtf8(toText(handle));
}

std::string valueText(const Group& group)
{
    std::ostringstream out;
    if (const auto* text = std::get_if<std::wstring>(&group.value)) {
        out << toUtf8(*text);
    } else if (const auto* real = std::get_if<double>(&group.value)) {
        out << std::showpoint << *real;
    } else if (const auto* whole = std::get_if<std::int64_t>(&group.value)) {
        out << *whole;
    } else if (const auto* handle = std::get_if<Handle>(&group.value)) {
        out << asHandle(*handle);
    } else {
        out << "<" << group.bytes() << ">";
    }
    return out.str();
}

} // namespace

std::string dxfText(std::string_view groups, std::string_view lineEnd)
{
    std::string text;
    while (!groups.empty()) {
        const std::string_view line = groups.substr(0, groups.find('\n'));
        groups.remove_prefix(std::min(line.size() + 1, groups.size()));
        if (line.empty()) {
            continue;
        }
        const std::size_t space = std::min(line.find(' '), line.size());
        text += line.substr(0, space);
        text += lineEnd;
        text += line.substr(std::min(space + 1, line.size()));
        text += lineEnd;
    }
    return text;
}

std::string binaryDxf(std::string_view groups)
{
    const std::string text = dxfText(groups);
    dxf::Form textForm;
    Groups decoded = dxf::decodeGroups(text, textForm);
    dxf::Form form;
    form.isBinary = true;
    std::string bytes(dxf::kBinarySentinel);
    dxf::encodeGroups(decoded, form, {}, bytes);
    return bytes;
}

DxfDrawing::DxfDrawing(std::string_view bytes, const std::wstring& path)
    : result(readDrawing(textContent(bytes), path, store))
{
}

const dxf::DxfFormat& DxfDrawing::format() const
{
    return dynamic_cast<const dxf::DxfFormat&>(*store.format());
}

std::string DxfDrawing::written() const
{
    std::string bytes;
    format().eachPiece(store, [&](std::string_view piece) {
        bytes += piece;
        return true;
    });
    return bytes;
}

std::vector<AcDbStub*> DxfDrawing::records() const
{
    std::vector<AcDbStub*> all;
    for (AcDbStub* stub = store.first(); stub != nullptr; stub = stub->next) {
        all.push_back(stub);
    }
    return all;
}

AcDbStub& DxfDrawing::record(std::string_view type) const
{
    for (AcDbStub* stub : records()) {
        if (store.nameOf(stub->type) == type) {
            return *stub;
        }
    }
    ADD_FAILURE() << "no record of type " << type;
    return *store.first();
}

void DxfDrawing::change(AcDbStub& stub, int code, GroupValue value)
{
    store.resident(stub);
    const Opened<AcDbObject> object(AcDbObjectId(&stub), AcDb::kForWrite);
    Groups& groups = object->changeGroups();
    groups.set(code, groups.all(), std::move(value));
}

std::string described(const AcDbStub& stub)
{
    const Store& store = *stub.store;
    std::string line(nameOf(stub.kind));
    line += " ";
    line += store.nameOf(stub.type);
    if (stub.ownsHandle) {
        line += " " + asHandle(stub.handle);
    }
    if (stub.container != nullptr) {
        line += " in ";
        line += store.nameOf(stub.container->type);
        line += stub.container->ownsHandle ? asHandle(stub.container->handle) : "";
    }
    line += stub.isPaperSpace ? " paper" : "";
    line += stub.isImplied ? " implied" : "";
    return line;
}

std::string described(const DxfDrawing& drawing)
{
    std::string text;
    for (const AcDbStub* stub : drawing.records()) {
        text += described(*stub) + "\n";
    }
    return text;
}

std::string described(const Groups& groups)
{
    std::string text;
    for (const Group& group : groups) {
        text += std::to_string(group.code) + " " + valueText(group) + "\n";
    }
    return text;
}

} // namespace corma::testing
