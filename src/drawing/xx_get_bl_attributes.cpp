// Attribute lists of block references and of blocks.

#include "drawing/xx_get_bl_attributes.h"

#include "foundation/at_boundary.h"
#include "foundation/messages.h"
#include "host/host.h"

#include <array>
#include <memory>

using corma::host::Opened;

namespace {

constexpr const wchar_t* kGetBlAttributesSource = L"xx_get_bl_attributes.cpp";

// Where the failures are reported.
constexpr int kNoReferenceLine = 26;
constexpr int kAttributeLine = 53;
constexpr int kReferenceLine = 66;
constexpr int kTextLine = 110;

int reportUnread(int line, Acad::ErrorStatus status)
{
    xx_reportError(kGetBlAttributesSource, line, L"0", status);
    return RTERROR;
}

template<class Tagged> void enter(xx_VarArray& result, const Tagged& attribute)
{
    ACHAR* tag = attribute.tag();
    ACHAR* text = attribute.textString();
    result.setCopy(xx_Var(tag, text));
    acutDelString(tag);
    acutDelString(text);
}

int enterConstants(const AcDbBlockReference& reference, xx_VarArray& result)
{
    const Opened<AcDbBlockTableRecord> record(reference.blockTableRecord());
    return record ? xx_get_attdefs(*record, result, true)
                  : reportUnread(kReferenceLine, record.status());
}

void enterNumbers(const AcDbBlockReference& reference, const wchar_t* pattern, xx_VarArray& result)
{
    const AcGeScale3d scale = reference.scaleFactors();
    const std::array numbers
        = {xx_Var(L"BL_XSCALE", scale.sx), xx_Var(L"BL_YSCALE", scale.sy),
           xx_Var(L"BL_ZSCALE", scale.sz), xx_Var(L"BL_ROTATION", reference.rotation())};
    for (const xx_Var& number : numbers) {
        if (acutWcMatch(number.name(), pattern) == RTNORM) {
            result.setCopy(number);
        }
    }
}

} // namespace

int xx_get_own_attributes(const AcDbBlockReference& reference, xx_VarArray& result)
{
    int status = RTNORM;
    const std::unique_ptr<AcDbObjectIterator> attributes(reference.attributeIterator());
    for (attributes->start(); !attributes->done(); attributes->step()) {
        const Opened<AcDbAttribute> attribute(attributes->objectId());
        if (attribute) {
            enter(result, *attribute);
        } else {
            status = reportUnread(kAttributeLine, attribute.status());
        }
    }
    return status;
}

int xx_get_attdefs(const AcDbBlockTableRecord& record, xx_VarArray& result, bool constantOnly)
{
    AcDbBlockTableRecordIterator* made = nullptr;
    if (record.newIterator(made) != Acad::eOk) {
        return RTNORM;
    }
    const std::unique_ptr<AcDbBlockTableRecordIterator> entities(made);
    for (entities->start(); !entities->done(); entities->step()) {
        Opened<AcDbEntity> entity;
        if (entities->getEntity(entity.out(), AcDb::kForRead) != Acad::eOk) {
            continue;
        }
        const auto* const definition = AcDbAttributeDefinition::cast(entity.get());
        if (definition != nullptr && (!constantOnly || definition->isConstant())) {
            enter(result, *definition);
        }
    }
    return RTNORM;
}

int xx_get_attdefs(AcDbObjectId block, xx_VarArray& result, bool constantOnly)
{
    return corma::atBoundary(kGetBlAttributesSource, __LINE__, RTERROR, [&] {
        const Opened<AcDbBlockTableRecord> record(block);
        return record ? xx_get_attdefs(*record, result, constantOnly) : RTERROR;
    });
}

int xx_get_bl_attributes(const AcDbBlockReference* reference, xx_VarArray& result,
                         AcGePoint3d* point, const wchar_t* pattern)
{
    if (reference == nullptr) {
        return reportUnread(kNoReferenceLine, Acad::eNullObjectPointer);
    }
    if (point != nullptr) {
        *point = reference->position();
    }
    int status = xx_get_own_attributes(*reference, result);
    if (status == RTNORM) {
        status = enterConstants(*reference, result);
    }
    if (status == RTNORM && pattern != nullptr) {
        enterNumbers(*reference, pattern, result);
    }
    return status;
}

int xx_get_bl_attributes(AcDbObjectId reference, xx_VarArray& result, AcGePoint3d* point,
                         const wchar_t* pattern)
{
    return corma::atBoundary(kGetBlAttributesSource, __LINE__, RTERROR, [&] {
        if (point != nullptr) {
            *point = AcGePoint3d::kOrigin;
        }
        const Opened<AcDbBlockReference> opened(reference);
        return opened ? xx_get_bl_attributes(opened.get(), result, point, pattern)
                      : reportUnread(kTextLine, opened.status());
    });
}
