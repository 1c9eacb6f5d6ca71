#include "editor/drawing_tables.h"

#include "host/host.h"

#include <algorithm>
#include <memory>

using corma::host::Opened;

namespace corma {

namespace {

constexpr int kMostDashes = 32; // the host's own linetypes have at most 12

template<class Table, class Record, class Take>
void forEachRecord(Acad::ErrorStatus (AcDbDatabase::*open)(Table*&, AcDb::OpenMode), Take take)
{
    AcDbDatabase* const database = acdbHostApplicationServices()->workingDatabase();
    Opened<Table> table;
    if (database == nullptr || (database->*open)(table.out(), AcDb::kForRead) != Acad::eOk) {
        return;
    }
    AcDbSymbolTableIterator* made = nullptr;
    if (table->newIterator(made) != Acad::eOk) {
        return;
    }
    const std::unique_ptr<AcDbSymbolTableIterator> records(made);
    for (records->start(); !records->done(); records->step()) {
        AcDbObjectId id;
        std::wstring name;
        if (records->getRecordId(id) != Acad::eOk) {
            continue;
        }
        const Opened<Record> record(id);
        if (record && record->getName(name) == Acad::eOk) {
            take(name, *record);
        }
    }
}

} // namespace

std::vector<LayerEntry> layersOfDrawing()
{
    std::vector<LayerEntry> layers;
    forEachRecord<AcDbLayerTable, AcDbLayerTableRecord>(
        &AcDbDatabase::getLayerTable, [&](const std::wstring& name, const auto& record) {
            layers.push_back({name, record.color().colorIndex()});
        });
    return layers;
}

std::vector<LinetypeEntry> linetypesOfDrawing()
{
    std::vector<LinetypeEntry> linetypes;
    forEachRecord<AcDbLinetypeTable, AcDbLinetypeTableRecord>(
        &AcDbDatabase::getLinetypeTable, [&](const std::wstring& name, const auto& record) {
            LinetypeEntry entry {name};
            const int dashes = std::min(record.numDashes(), kMostDashes);
            for (int i = 0; i < dashes; ++i) {
                entry.dashes.push_back(record.dashLengthAt(i));
            }
            linetypes.push_back(std::move(entry));
        });
    return linetypes;
}

std::vector<std::wstring> textStylesOfDrawing()
{
    std::vector<std::wstring> styles;
    forEachRecord<AcDbTextStyleTable, AcDbTextStyleTableRecord>(
        &AcDbDatabase::getTextStyleTable, [&](const std::wstring& name, const auto& /*record*/) {
            if (!name.empty()) {
                styles.push_back(name);
            }
        });
    return styles;
}

} // namespace corma
