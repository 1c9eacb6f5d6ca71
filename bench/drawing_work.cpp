#include "drawing_work.h"

#include "benchmark_run.h"
#include "host/host.h"
#include "platform/platform.h"
#include "platform/text.h"

#include <cstdio>
#include <fstream>
#include <memory>

using corma::host::Opened;

namespace corma::bench {

namespace {

constexpr std::size_t kSettingsInAChapter = 20;

Opened<AcDbBlockTableRecord> modelSpace(AcDbDatabase& database, AcDb::OpenMode mode)
{
    Opened<AcDbBlockTable> blocks;
    AcDbObjectId id;
    require(database.getBlockTable(blocks.out()) == Acad::eOk
                && blocks->getAt(ACDB_MODEL_SPACE, id) == Acad::eOk,
            "model space");
    Opened<AcDbBlockTableRecord> space(id, mode);
    require(static_cast<bool>(space), "cannot open the model space");
    return space;
}

} // namespace

std::string DrawingFile::in(const std::string& folder) const
{
    return folder + "/drawing-" + std::to_string(megabytes) + "-" + std::to_string(settings)
        + ".dxf";
}

std::string DrawingFile::form() const
{
    return std::to_string(megabytes) + " MB";
}

std::vector<std::wstring> identsOf(const DrawingFile& file)
{
    std::vector<std::wstring> idents;
    for (std::size_t i = 0; i < file.settings; ++i) {
        char ident[64];
        std::snprintf(ident, sizeof ident, "[Hoofdstuk%05zu]Instelling%07zu",
                      i / kSettingsInAChapter, i);
        idents.push_back(fromUtf8(ident));
    }
    return idents;
}

std::wstring makeConfigurationFile(const std::string& folder)
{
    const std::string path = folder + "/tool.ini";
    std::ofstream(path) << "Versie=1\n";
    return platform::fromNative(path);
}

WorkingDrawing::WorkingDrawing()
{
    acdbHostApplicationServices()->setWorkingDatabase(&m_database);
}

WorkingDrawing::WorkingDrawing(const std::string& path)
    : m_database(false)
{
    require(m_database.readDwgFile(platform::fromNative(path).c_str()) == Acad::eOk,
            "cannot read a drawing");
    acdbHostApplicationServices()->setWorkingDatabase(&m_database);
}

WorkingDrawing::~WorkingDrawing()
{
    acdbHostApplicationServices()->setWorkingDatabase(nullptr);
}

std::vector<AcDbObjectId> addTexts(AcDbDatabase& database, std::size_t count)
{
    std::vector<AcDbObjectId> ids;
    const auto space = modelSpace(database, AcDb::kForWrite);
    for (std::size_t i = 0; i < count; ++i) {
        auto text = std::make_unique<AcDbText>();
        text->setTextString(L"Ruimte");
        require(space->appendAcDbEntity(text.get()) == Acad::eOk, "cannot add an entity");
        ids.push_back(text->objectId());
        text.release()->close();
    }
    return ids;
}

std::size_t openFirst(AcDbDatabase& database, std::size_t most)
{
    const auto space = modelSpace(database, AcDb::kForRead);
    AcDbBlockTableRecordIterator* made = nullptr;
    require(space->newIterator(made) == Acad::eOk, "cannot walk");
    const std::unique_ptr<AcDbBlockTableRecordIterator> walk(made);
    std::size_t count = 0;
    for (; count < most && !walk->done(); walk->step()) {
        Opened<AcDbEntity> entity;
        require(walk->getEntity(entity.out(), AcDb::kForRead) == Acad::eOk, "cannot open");
        ++count;
    }
    return count;
}

void eraseEach(const std::vector<AcDbObjectId>& ids)
{
    for (const AcDbObjectId id : ids) {
        const Opened<AcDbObject> object(id, AcDb::kForWrite);
        require(object && object->erase() == Acad::eOk, "cannot erase");
    }
}

} // namespace corma::bench
