#include "host/dwg/DwgDrawing.h"

#include "host/templates/default_drawing.h"
#include "platform/text.h"
#include "support/DxfDrawing.h"

#include <gtest/gtest.h>

namespace corma::host::dwg {

std::string drawingText(std::string_view version, std::string_view entities)
{
    std::string text(defaultDrawing());
    constexpr std::string_view kVersion = "AC1032";
    constexpr std::string_view kEntities = "\n  2\nENTITIES\n";
    text.replace(text.find(kVersion), kVersion.size(), version);
    const std::size_t at = text.find(kEntities) + kEntities.size();
    return text.insert(at, testing::dxfText(entities));
}

std::unique_ptr<AcDbDatabase> read(const std::wstring& path)
{
    auto database = std::make_unique<AcDbDatabase>(false, true);
    EXPECT_EQ(database->readDwgFile(path.c_str()), Acad::eOk);
    return database;
}

namespace {

bool isRecord(const AcDbStub& stub)
{
    return stub.ownsHandle && !stub.isErased && !stub.isImplied;
}

} // namespace

std::map<std::string, std::string> groupsByHandle(AcDbDatabase& database)
{
    std::map<std::string, std::string> all;
    const Store& store = database.store();
    for (const AcDbStub* at = store.first(); at != nullptr; at = at->next) {
        if (isRecord(*at)) {
            all[toUtf8(toText(at->handle))] = testing::described(store.groupsOf(*at));
        }
    }
    return all;
}

const DwgFormat& formatOf(AcDbDatabase& database)
{
    return dynamic_cast<const DwgFormat&>(*database.store().format());
}

std::map<std::string, std::string> bitsByHandle(AcDbDatabase& database)
{
    std::map<std::string, std::string> all;
    for (const AcDbStub* at = database.store().first(); at != nullptr; at = at->next) {
        if (isRecord(*at)) {
            all[toUtf8(toText(at->handle))] = formatOf(database).bytesOf(*at);
        }
    }
    return all;
}

std::string differences(const std::map<std::string, std::string>& a,
                        const std::map<std::string, std::string>& b)
{
    std::string names;
    const auto add = [&](const std::string& name) { names += (names.empty() ? "" : " ") + name; };
    for (const auto& [name, value] : a) {
        const auto other = b.find(name);
        if (other == b.end() || other->second != value) {
            add(name);
        }
    }
    for (const auto& [name, value] : b) {
        if (!a.contains(name)) {
            add(name);
        }
    }
    return names;
}

} // namespace corma::host::dwg
