#include "host/dwg/standard_classes.h"

#include "platform/text.h"

#include <algorithm>
#include <iterator>

namespace corma::host::dwg {

namespace {

struct StandardClass
{
    std::string_view type;
    const wchar_t* cppName;
    const wchar_t* application;
    int proxyFlags;
};

constexpr const wchar_t* kCore = L"ObjectDBX Classes";
constexpr const wchar_t* kImages = L"ISM";

// clang-format off
constexpr StandardClass kClasses[] = {
    {"ACDBDICTIONARYWDFLT", L"AcDbDictionaryWithDefault", kCore,   0},
    {"ACDBPLACEHOLDER",     L"AcDbPlaceHolder",           kCore,   0},
    {"DICTIONARYVAR",       L"AcDbDictionaryVar",         kCore,   0},
    {"IMAGEDEF",            L"AcDbRasterImageDef",        kImages, 0},
    {"LAYOUT",              L"AcDbLayout",                kCore,   0},
    {"PLOTSETTINGS",        L"AcDbPlotSettings",          kCore,   0},
    {"RASTERVARIABLES",     L"AcDbRasterVariables",       kImages, 0},
    {"SCALE",               L"AcDbScale",                 kCore,   1153},
    {"SORTENTSTABLE",       L"AcDbSortentsTable",         kCore,   0},
    {"WIPEOUTVARIABLES",    L"AcDbWipeoutVariables",      L"WipeOut", 0},
};
// clang-format on

} // namespace

std::optional<ClassInfo> standardClass(std::string_view type)
{
    const auto* const row
        = std::find_if(std::begin(kClasses), std::end(kClasses),
                       [&](const StandardClass& known) { return known.type == type; });
    if (row == std::end(kClasses)) {
        return std::nullopt;
    }
    ClassInfo info;
    info.proxyFlags = row->proxyFlags;
    info.application.set(row->application);
    info.cppName.set(row->cppName);
    info.dxfName.set(fromUtf8(type));
    return info;
}

} // namespace corma::host::dwg
