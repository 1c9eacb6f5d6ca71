#include "fuzz_support.h"
#include "host/acdb_object.h"
#include "host/drawing_files.h"
#include "host/dxf/DxfFormat.h"
#include "host/dxf/group_codec.h"
#include "host/model/Store.h"

#include <cstdint>
#include <string>
#include <vector>

namespace {

using namespace corma::host;
using corma::fuzzing::require;

std::string written(const Store& store, const dxf::DxfFormat& format)
{
    std::string bytes;
    format.eachPiece(store, [&](std::string_view piece) {
        bytes += piece;
        return true;
    });
    return bytes;
}

bool areEqual(const GroupValue& a, const GroupValue& b)
{
    const auto* x = std::get_if<double>(&a);
    const auto* y = std::get_if<double>(&b);
    const bool areBothNone = x != nullptr && y != nullptr && *x != *x && *y != *y;
    return areBothNone || a == b;
}

// Bytes of neighbours are put together, as encoding may have parted them.
std::vector<Group> plainGroups(const Groups& groups)
{
    std::vector<Group> plain;
    for (const Group& group : groups) {
        const bool continues = valueKindOf(group.code) == ValueKind::binary && !plain.empty()
            && plain.back().code == group.code;
        if (continues) {
            plain.back().set(plain.back().bytes() + group.bytes());
        } else {
            plain.emplace_back(group.code, group.value);
        }
    }
    return plain;
}

// Written without its bytes, a record has the same values.
void checkRecord(const dxf::DxfFormat& format, const AcDbStub& stub)
{
    const Groups groups = format.decode(stub);
    std::string_view left = format.bytes().substr(stub.offset, stub.size);
    for (const Group& group : groups) {
        require(stub.type == RecordType::none || left.starts_with(group.raw));
        left.remove_prefix(std::min(group.raw.size(), left.size()));
    }
    const std::vector<Group> plain = plainGroups(groups);
    std::string encoded;
    dxf::encodeGroups(Groups(plain), format.form(), {}, encoded);
    const std::vector<Group> again = plainGroups(dxf::decodeGroups(encoded, format.form()));
    require(plain.size() == again.size());
    for (std::size_t i = 0; i < plain.size(); ++i) {
        require(plain[i].code == again[i].code && areEqual(plain[i].value, again[i].value));
    }
}

// What was changed is there when the drawing is read again, and nothing else is gone.
void checkChange(Store& store, const dxf::DxfFormat& format, AcDbStub& stub)
{
    constexpr int kComment = 999;
    const std::wstring text = L"a\n^\\U+0041 \x20AC";
    {
        store.resident(stub);
        const Opened<AcDbObject> object(AcDbObjectId(&stub), AcDb::kForWrite);
        require(static_cast<bool>(object));
        object->changeGroups().insert(1, Group(kComment, GroupValue(text)));
    }
    Store again(nullptr);
    const std::string bytes = written(store, format);
    require(readDrawing(textContent(bytes), L"", again).status == Acad::eOk);
    std::size_t found = 0;
    const AcDbStub* former = store.first();
    for (const AcDbStub* at = again.first(); at != nullptr; at = at->next, former = former->next) {
        require(former != nullptr && former->kind == at->kind);
        if (former == &stub) {
            found += again.textOf(*at, kComment) == text ? 1 : 0;
        }
    }
    require(former == nullptr && found == 1);
}

} // namespace

/// The first byte chooses the record that is changed; the others are the file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size == 0) {
        return 0;
    }
    const std::string_view bytes(reinterpret_cast<const char*>(data + 1), size - 1);
    Store store(nullptr);
    const ReadResult result = readDrawing(textContent(bytes), L"FILE", store);
    require((result.status == Acad::eOk) == result.message.empty());
    if (result.status != Acad::eOk) {
        return 0;
    }
    const auto& format = dynamic_cast<const dxf::DxfFormat&>(*store.format());
    require(written(store, format) == bytes);
    std::vector<AcDbStub*> objects;
    for (AcDbStub* stub = store.first(); stub != nullptr; stub = stub->next) {
        checkRecord(format, *stub);
        const bool isObject
            = stub->kind != RecordKind::structure && stub->kind != RecordKind::header;
        if (isObject && !stub->isImplied) {
            objects.push_back(stub);
        }
    }
    if (!objects.empty()) {
        checkChange(store, format, *objects[data[0] % objects.size()]);
    }
    return 0;
}
