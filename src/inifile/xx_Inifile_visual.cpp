// Records of how something is drawn.

#include "foundation/at_boundary.h"
#include "foundation/wide_text.h"
#include "host/host.h"
#include "inifile/Ident.h"
#include "inifile/numbers.h"
#include "inifile/visual_words.h"
#include "inifile/xx_Inifile_private.h"
#include <corma/xx_VisParam.h>

#include <array>

using corma::host::Opened;

namespace {

constexpr int kLongestVisualValue = 500; // characters, the terminator counted
constexpr std::size_t kVisualFields = 4;
constexpr const wchar_t* kLinetypeFile = L"acad.lin";

std::wstring valueOf(xx_Inifile& file, wchar_t* ident, int report)
{
    std::array<wchar_t, kLongestVisualValue> value {};
    file.getString(ident, value.data(), kLongestVisualValue, report);
    return value.data();
}

// The id of a name in a symbol table of the working drawing; null when there is none.
template<class Table> AcDbObjectId idIn(std::wstring_view name)
{
    AcDbDatabase* const database = acdbHostApplicationServices()->workingDatabase();
    AcDbObjectId id;
    Opened<Table> table;
    if (database != nullptr && database->getSymbolTable(table.out()) == Acad::eOk) {
        table->getIdAt(std::wstring(name).c_str(), id);
    }
    return id;
}

AcDbObjectId layerNamed(std::wstring_view name)
{
    xx_make_layer(std::wstring(name).c_str());
    return idIn<AcDbLayerTable>(name);
}

AcDbObjectId linetypeNamed(std::wstring_view name)
{
    if (AcDbDatabase* const database = acdbHostApplicationServices()->workingDatabase()) {
        database->loadLineTypeFile(std::wstring(name).c_str(), kLinetypeFile);
    }
    return idIn<AcDbLinetypeTable>(name);
}

// Empty fields count for nothing, so those behind them move up.
void readVisual(const std::wstring& value, xx_VisParam& info)
{
    corma::Pieces fields(value, L",");
    info.layerId = layerNamed(fields.next());
    info.colorIndex = corma::colourFromText(fields.next());
    info.linetypeId = linetypeNamed(fields.next());
    info.lineWeight = corma::lineweightFromText(fields.next());
}

// What stands behind the fields that all records have.
std::wstring ownFields(const std::wstring& value)
{
    std::size_t at = 0;
    for (std::size_t field = 0; field < kVisualFields; ++field) {
        at = value.find(corma::kVisualSeparator, at);
        if (at == std::wstring::npos) {
            return {};
        }
        ++at;
    }
    return value.substr(at);
}

// Runs what reads one record.
template<class Info, class Read> int readRecord(Info* info, int line, Read read)
{
    return corma::atBoundary(corma::kInifileSource, line, RTERROR, [&] {
        if (info != nullptr) {
            read(*info);
        }
        return RTNORM;
    });
}

} // namespace

int xx_Inifile::getVisParam(wchar_t* ident, xx_VisParam* info, int report)
{
    return readRecord(info, __LINE__, [&](xx_VisParam& record) {
        readVisual(valueOf(*this, ident, report), record);
    });
}

int xx_Inifile::getTextInfo(wchar_t* ident, xx_TextInfo* info, int /*report*/)
{
    return readRecord(info, __LINE__, [&](xx_TextInfo& record) {
        getVisParam(ident, &record, 0);
        const std::wstring own = ownFields(valueOf(*this, ident, 1));
        corma::Pieces fields(own, L",");
        const AcDbObjectId style = idIn<AcDbTextStyleTable>(fields.next());
        if (!style.isNull()) {
            record.textStyleId = style;
        }
        record.height = corma::toDouble(fields.next());
        record.widthFactor = corma::toDouble(fields.next());
        record.obliqueAngle = corma::toDouble(fields.next());
    });
}

int xx_Inifile::getHatchInfo(wchar_t* ident, xx_VisHatchInfo* info, int /*report*/)
{
    return readRecord(info, __LINE__, [&](xx_VisHatchInfo& record) {
        getVisParam(ident, &record, 0);
        const std::wstring own = ownFields(valueOf(*this, ident, 1));
        corma::Pieces fields(own, L",");
        corma::copyBounded(record.patternName, xx_VisHatchInfo::kPatternSize, fields.next());
        record.angle = corma::toDouble(fields.next());
        record.scale = corma::toDouble(fields.next());
    });
}
