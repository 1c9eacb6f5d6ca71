#include "foundation/at_boundary.h"
#include "host/host.h"
#include "inifile/xx_Inifile_private.h"
#include <corma/xx_VisParam.h>

#include <memory>

using corma::host::Opened;

namespace {

constexpr const wchar_t* kContinuous = L"CONTINUOUS";

int bringBack(AcDbObjectId id)
{
    Opened<AcDbLayerTableRecord> layer(id, AcDb::kForRead, true);
    return layer && layer->upgradeOpen() == Acad::eOk && layer->erase(false) == Acad::eOk ? RTNORM
                                                                                          : RTCAN;
}

bool add(AcDbLayerTable& layers, const AcDbLinetypeTable& linetypes, const wchar_t* name)
{
    AcDbObjectId continuous;
    linetypes.getIdAt(kContinuous, continuous);
    auto layer = std::make_unique<AcDbLayerTableRecord>();
    layer->setName(name);
    layer->setLinetypeObjectId(continuous);
    if (layers.upgradeOpen() != Acad::eOk || layers.add(layer.get()) != Acad::eOk) {
        return false;
    }
    layer.release()->close();
    return true;
}

int makeLayer(const wchar_t* name, AcDbDatabase* database, bool* created)
{
    if (name == nullptr || *name == 0) {
        return RTCAN;
    }
    if (database == nullptr) {
        database = acdbHostApplicationServices()->workingDatabase();
    }
    Opened<AcDbLayerTable> layers;
    Opened<AcDbLinetypeTable> linetypes;
    if (database == nullptr || database->getSymbolTable(layers.out()) != Acad::eOk
        || database->getSymbolTable(linetypes.out()) != Acad::eOk) {
        return RTERROR;
    }
    AcDbObjectId id;
    if (layers->getIdAt(name, id) == Acad::eOk) {
        return RTNORM;
    }
    if (layers->getIdAt(name, id, true) == Acad::eOk) {
        return bringBack(id);
    }
    if (!add(*layers, *linetypes, name)) {
        return RTERROR;
    }
    if (created != nullptr) {
        *created = true;
    }
    return RTNORM;
}

} // namespace

int xx_make_layer(const wchar_t* name, AcDbDatabase* database, bool* created)
{
    return corma::atBoundary(corma::kInifileSource, __LINE__, RTERROR,
                             [&] { return makeLayer(name, database, created); });
}
