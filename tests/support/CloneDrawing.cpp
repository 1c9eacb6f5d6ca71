#include "support/CloneDrawing.h"

#include "platform/text.h"
#include "support/DxfDrawing.h"
#include "support/TempFolder.h"

#include <gtest/gtest.h>
#include <sstream>

namespace corma::testing {

using namespace corma::host;

namespace {

std::string section(std::string_view name, std::string_view content)
{
    if (content.empty()) {
        return {};
    }
    return "0 SECTION\n2 " + std::string(name) + "\n" + std::string(content) + "\n0 ENDSEC\n";
}

std::unique_ptr<AcDbDatabase> loaded(std::string_view bytes)
{
    const TempFolder folder;
    auto database = std::make_unique<AcDbDatabase>(false, true);
    EXPECT_EQ(database->readDwgFile(folder.write(L"drawing.dxf", bytes).c_str()), Acad::eOk);
    return database;
}

std::string joined(const DrawingText& text)
{
    return section("HEADER",
                   "9 $ACADVER\n1 " + std::string(text.version) + "\n" + std::string(text.header))
        + section("CLASSES", text.classes) + section("TABLES", text.tables)
        + section("BLOCKS", text.blocks) + section("ENTITIES", text.entities)
        + section("OBJECTS", text.objects) + "0 EOF\n";
}

bool isTold(const Group& group)
{
    return group.code != code::type && group.code != code::handle && group.code != code::subclass
        && !(group.code == code::layer && group.isText(L"0"));
}

} // namespace

CloneDrawing::CloneDrawing(const DrawingText& text)
    : m_database(loaded(dxfText(joined(text))))
{
}

CloneDrawing::CloneDrawing(std::unique_ptr<AcDbDatabase> database)
    : m_database(std::move(database))
{
}

CloneDrawing::CloneDrawing()
    : m_database(std::make_unique<AcDbDatabase>(true, true))
{
}

std::string CloneDrawing::bytes() const
{
    const TempFolder folder;
    EXPECT_EQ(m_database->saveAs(folder.path(L"saved.dxf").c_str()), Acad::eOk);
    return folder.read(L"saved.dxf");
}

CloneDrawing CloneDrawing::reloaded() const
{
    return CloneDrawing(loaded(bytes()));
}

AcDbObjectId CloneDrawing::block(const wchar_t* name) const
{
    const Block* const found = store().findBlock(name);
    return found == nullptr ? AcDbObjectId() : AcDbObjectId(found->record);
}

AcDbObjectId CloneDrawing::entry(TableKind table, const wchar_t* name) const
{
    return AcDbObjectId(store().findEntry(table, name));
}

AcDbObjectId CloneDrawing::entity(int index) const
{
    const Block& model = *store().findBlock(ACDB_MODEL_SPACE);
    AcDbStub* at = store().firstEntity(model);
    for (; at != nullptr && index > 0; --index) {
        at = store().entityBehind(model, *at);
    }
    return AcDbObjectId(at);
}

std::string CloneDrawing::content(const wchar_t* blockName) const
{
    const Block* const found = store().findBlock(blockName);
    if (found == nullptr) {
        return "no such block";
    }
    std::string lines;
    for (AcDbStub* at = store().firstEntity(*found); at != nullptr;
         at = store().entityBehind(*found, *at)) {
        if (at->isErased) {
            continue;
        }
        lines += described(*at) + "\n";
        for (AcDbStub* sub = Store::firstSubEntity(*at); sub != nullptr;
             sub = Store::subEntityBehind(*sub)) {
            if (!sub->isErased) {
                lines += "  " + described(*sub) + "\n";
            }
        }
    }
    return lines;
}

std::string CloneDrawing::names(TableKind table) const
{
    std::string all;
    for (AcDbStub* at = store().firstEntry(table); at != nullptr;
         at = store().entryBehind(table, *at)) {
        if (!at->isErased) {
            all += (all.empty() ? "" : " ") + toUtf8(store().nameOfEntry(*at));
        }
    }
    return all;
}

std::string CloneDrawing::described(const AcDbStub& stub) const
{
    Groups groups = store().groupsOf(stub);
    std::ostringstream out;
    out << toUtf8(groups[0].text());
    bool isBehindOwner = groups.ownerHandle() == Handle::none;
    bool isInBraces = false;
    for (const Group& group : groups) {
        if (group.code == code::braces) {
            isInBraces = group.text().starts_with(L'{');
        }
        if (!isBehindOwner && !isInBraces && group.code == code::owner) {
            isBehindOwner = true;
            continue;
        }
        if (!isTold(group)) {
            continue;
        }
        out << ' ' << group.code << '=';
        if (const auto* real = std::get_if<double>(&group.value)) {
            out << *real;
        } else if (const auto* whole = std::get_if<std::int64_t>(&group.value)) {
            out << *whole;
        } else if (std::holds_alternative<Handle>(group.value)) {
            const AcDbStub* const target = store().find(group.handle());
            out << '#' << (target == nullptr ? "0" : store().nameOf(target->type));
            if (target != nullptr && target->kind == RecordKind::tableEntry) {
                out << ':' << toUtf8(store().nameOfEntry(*target));
            }
        } else {
            out << toUtf8(group.text());
        }
    }
    return out.str();
}

AcDbStub* CloneDrawing::object(std::wstring_view path) const
{
    AcDbStub* at = &store().namedObjects();
    while (at != nullptr && !path.empty()) {
        const std::wstring name(path.substr(0, path.find(L'/')));
        path.remove_prefix(std::min(name.size() + 1, path.size()));
        const Opened<AcDbDictionary> dictionary {AcDbObjectId(at)};
        AcDbObjectId id;
        const bool isThere = dictionary && dictionary->getAt(name.c_str(), id) == Acad::eOk;
        at = isThere ? id.stub() : nullptr;
    }
    return at;
}

} // namespace corma::testing
