#include "dwg_parts.h"
#include "fuzz_support.h"
#include "host/dwg/Container.h"
#include "host/dwg/DwgFormat.h"
#include "host/dwg/file_form.h"
#include "host/dwg/ownership.h"
#include "host/dwg/sentinels.h"
#include "host/host.h"
#include "platform/platform.h"

#include <array>
#include <cstdint>
#include <deque>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace corma::host;
using namespace corma::host::dwg;
using corma::fuzzing::Input;
using corma::fuzzing::MemoryFolder;
using corma::fuzzing::require;
using enum DrawingVersion;

constexpr const char* kFile = "drawing.dwg";

// --- files of parts ------------------------------------------------------------------------------

// A file whose parts are any bits: the version, header variables, classes, and records, each of
// them counted.
std::string fileOfParts(Input& input)
{
    constexpr std::array kVersions = {r2000, r2004, r2010, r2013, r2018};
    constexpr int kCodePage = 30; // of western Europe
    const auto container = newContainer(kVersions[input.byte() % kVersions.size()], kCodePage);
    const FileForm form = formOf(container->parts());
    const std::string header = corma::fuzzing::sectionFrom(Input(input.counted()),
                                                           {kVariablesBegin, kVariablesEnd}, form);
    const std::string classes
        = corma::fuzzing::sectionFrom(Input(input.counted()), {kClassesBegin, kClassesEnd}, form);
    NewParts parts;
    parts.header = header;
    parts.classes = classes;
    std::deque<std::string> records;
    std::set<Handle> handles;
    while (!input.isEmpty()) {
        std::string record = corma::fuzzing::recordFrom(Input(input.counted()), form);
        const auto head = readHead(record, form.version);
        if (head && head->handle != Handle::none && handles.insert(head->handle).second) {
            records.push_back(std::move(record));
            parts.objects.push_back({.handle = head->handle, .bytes = records.back()});
        }
    }
    std::string file;
    require(container->write(parts, [&](std::string_view bytes) {
        file += bytes;
        return true;
    }));
    return file;
}

// --- looking -------------------------------------------------------------------------------------

const DwgFormat& formatOf(const Store& store)
{
    return dynamic_cast<const DwgFormat&>(*store.format());
}

bool isRecord(const AcDbStub& stub)
{
    return stub.handle != Handle::none && stub.kind != RecordKind::header && isWritten(stub)
        && (stub.kind != RecordKind::structure || stub.ownsHandle);
}

std::size_t recordCount(const Store& store)
{
    std::size_t count = 0;
    for (const AcDbStub* at = store.first(); at != nullptr; at = at->next) {
        count += isRecord(*at) ? 1 : 0;
    }
    return count;
}

// The records that a change can be made to.
std::vector<AcDbStub*> objectsOf(const Store& store)
{
    std::vector<AcDbStub*> objects;
    for (AcDbStub* at = store.first(); at != nullptr; at = at->next) {
        const Groups groups = store.groupsOf(*at);
        if (const auto record = formatOf(store).recordOf(*at)) {
            require(!groups.empty()
                    && (!at->ownsHandle || record->frame().self.target == at->handle));
        }
        if (at->kind != RecordKind::structure && isRecord(*at)) {
            objects.push_back(at);
        }
    }
    return objects;
}

void lookAtTables(Store& store)
{
    for (std::size_t i = 0; i < kTableCount; ++i) {
        const auto table = static_cast<TableKind>(i);
        require(store.kindOfTable(store.table(table)) == table);
        const AcDbStub* last = nullptr;
        for (const AcDbStub* at = store.firstEntry(table); at != nullptr;
             at = store.entryBehind(table, *at)) {
            require(store.findEntry(table, store.nameOfEntry(*at)) != nullptr);
            require(store.entryBefore(table, *at) == last);
            last = at;
        }
        require(store.lastEntry(table) == last);
    }
}

void lookAtBlock(Store& store, Block& block)
{
    require(block.begin == nullptr || store.blockOf(*block.begin) == &block);
    const AcDbStub* last = nullptr;
    for (const AcDbStub* at = store.firstEntity(block); at != nullptr;
         at = store.entityBehind(block, *at)) {
        require(store.spaceOf(*at) == &block);
        require(store.entityBefore(block, *at) == last);
        last = at;
        for (const AcDbStub* piece = Store::firstSubEntity(*at); piece != nullptr;
             piece = Store::subEntityBehind(*piece)) {
            require(piece->container == at);
        }
    }
    require(store.lastEntity(block) == last);
    static_cast<void>(store.originOf(block)); // of any numbers
    store.referencesOf(block.name);
}

// --- writing -------------------------------------------------------------------------------------

std::string contentOf(const std::string& path)
{
    const auto content = corma::platform::readFile(path);
    require(content.has_value());
    return std::string(content->view());
}

// What was written; nothing when it could not be, and then somebody says why.
std::optional<std::string> written(const Store& store, const MemoryFolder& folder)
{
    const std::string path = folder.path(kFile);
    const WriteResult result = store.format()->write(store, corma::platform::fromNative(path));
    require(result.status == Acad::eOk || !result.message.empty());
    return result.status == Acad::eOk ? std::optional(contentOf(path)) : std::nullopt;
}

/// What is done to a drawing and, for some changes, to one of its records.
using Change = void (*)(Store& store, AcDbStub* chosen);

// The record is written from its groups.
void touch(Store& store, AcDbStub* chosen)
{
    if (chosen != nullptr) {
        store.resident(*chosen);
        const Opened<AcDbObject> object(AcDbObjectId(chosen), AcDb::kForWrite);
        require(static_cast<bool>(object));
        object->changeGroups();
    }
}

void erase(Store& store, AcDbStub* chosen)
{
    if (chosen != nullptr) {
        store.resident(*chosen);
        const Opened<AcDbObject> object(AcDbObjectId(chosen), AcDb::kForWrite);
        require(static_cast<bool>(object));
        object->erase();
    }
}

void storeSetting(Store& store, AcDbStub* /*chosen*/)
{
    AcDbStub& dictionary = store.namedObjects();
    store.resident(dictionary);
    const Opened<AcDbDictionary> root(AcDbObjectId(&dictionary), AcDb::kForWrite);
    if (!root) {
        return; // it is something else
    }
    auto value = std::make_unique<AcDbXrecord>();
    AcDbObjectId id;
    if (root->setAt(L"FUZZ", value.get(), id) == Acad::eOk) {
        value.release()->close();
    }
}

void setVariable(Store& store, AcDbStub* /*chosen*/)
{
    constexpr int kReal = 40;
    store.setVariable(L"$LTSCALE", Group(kReal, 2.5));
}

void checkChange(Store& store, AcDbStub* chosen, Change change, const MemoryFolder& folder)
{
    change(store, chosen);
    require(openObjectCount() == 0);
    const std::size_t count = recordCount(store);
    const auto bytes = written(store, folder);
    if (!bytes) {
        return;
    }
    Store again(nullptr);
    require(readDrawing(textContent(*bytes), L"FILE", again).status == Acad::eOk);
    require(recordCount(again) == count);
    for (const AcDbStub* at = store.first(); at != nullptr; at = at->next) {
        require(!isRecord(*at) || again.find(at->handle) != nullptr);
    }
}

void checkFile(std::string_view bytes, Change change, std::size_t which)
{
    static const MemoryFolder folder;
    Store store(nullptr);
    const ReadResult result = readDrawing(textContent(bytes), L"FILE", store);
    require((result.status == Acad::eOk) == result.message.empty());
    if (result.status != Acad::eOk || dynamic_cast<const DwgFormat*>(store.format()) == nullptr) {
        return;
    }
    const std::vector<AcDbStub*> objects = objectsOf(store);
    lookAtTables(store);
    for (Block& block : store.blocks()) {
        lookAtBlock(store, block);
    }
    require(written(store, folder) == bytes);
    checkChange(store, objects.empty() ? nullptr : objects[which % objects.size()], change, folder);
}

} // namespace

/// The first byte tells whether the others are a file or the parts of one, and what is changed; the
/// second and third one to which record.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    constexpr std::array<Change, 4> kChanges = {touch, erase, storeSetting, setVariable};
    constexpr std::size_t kIsFile = 0x80;
    const corma::fuzzing::SilentServices services;
    Input input(std::string_view(reinterpret_cast<const char*>(data), size));
    const std::size_t kind = input.byte();
    const std::size_t which = input.shortNumber();
    const Change change = kChanges[kind % kChanges.size()];
    if ((kind & kIsFile) != 0) {
        checkFile(input.rest(), change, which);
    } else {
        checkFile(fileOfParts(input), change, which);
    }
    return 0;
}
