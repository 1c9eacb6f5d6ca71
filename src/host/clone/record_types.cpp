#include "host/clone/record_types.h"

#include <unordered_map>

namespace corma::host {

namespace {

using enum DrawingVersion;

// clang-format off
constexpr RecordKnowledge kTypes[] = {
    // entities that R12 has
    {"3DFACE", unknown}, {"ARC", unknown}, {"ATTDEF", unknown}, {"ATTRIB", unknown},
    {"BLOCK", unknown}, {"CIRCLE", unknown}, {"DIMENSION", unknown}, {"ENDBLK", unknown},
    {"INSERT", unknown}, {"LINE", unknown}, {"POINT", unknown}, {"POLYLINE", unknown},
    {"SEQEND", unknown}, {"SHAPE", unknown}, {"SOLID", unknown}, {"TEXT", unknown},
    {"TRACE", unknown}, {"VERTEX", unknown}, {"VIEWPORT", unknown},

    // later entities
    {"ACAD_TABLE", r2004}, {"ARCALIGNEDTEXT", r2000}, {"ARC_DIMENSION", r2004}, {"CAMERA", r2007},
    {"DGNUNDERLAY", r2007}, {"DWFUNDERLAY", r2004}, {"ELLIPSE", r13}, {"HATCH", r14},
    {"HELIX", r2007}, {"IMAGE", r14}, {"LARGE_RADIAL_DIMENSION", r2004}, {"LEADER", r13},
    {"LIGHT", r2007}, {"LWPOLYLINE", r14}, {"MESH", r2010}, {"MLEADER", r2007}, {"MLINE", r13},
    {"MTEXT", r13}, {"MULTILEADER", r2007}, {"OLE2FRAME", r14}, {"OLEFRAME", r13},
    {"PDFUNDERLAY", r2010}, {"RAY", r13}, {"RTEXT", r2000}, {"SECTION", r2007}, {"SPLINE", r13},
    {"SUN", r2007}, {"TOLERANCE", r13}, {"WIPEOUT", r2000}, {"XLINE", r13},

    // solids
    {"3DSOLID", r13, r2010}, {"BODY", r13, r2010}, {"EXTRUDEDSURFACE", r2007, r2010},
    {"LOFTEDSURFACE", r2007, r2010}, {"NURBSURFACE", r2010, r2010},
    {"PLANESURFACE", r2007, r2010}, {"REGION", r13, r2010}, {"REVOLVEDSURFACE", r2007, r2010},
    {"SURFACE", r2007, r2010}, {"SWEPTSURFACE", r2007, r2010},

    // table entries; views of the user (VPORT) are no part of what is drawn
    {"APPID", unknown}, {"BLOCK_RECORD", r13}, {"DIMSTYLE", unknown}, {"LAYER", unknown},
    {"LTYPE", unknown}, {"STYLE", unknown}, {"UCS", unknown}, {"VIEW", unknown},

    // objects
    {"ACDBDICTIONARYWDFLT", r2000}, {"ACDBPLACEHOLDER", r2000}, {"ACMECOMMANDHISTORY", r2007},
    {"ACMESCOPE", r2007}, {"ACMESTATEMGR", r2007}, {"BREAKDATA", r2007},
    {"BREAKPOINTREF", r2007}, {"CELLSTYLEMAP", r2007}, {"DATALINK", r2007}, {"DATATABLE", r2004},
    {"DBCOLOR", r2004}, {"DGNDEFINITION", r2007}, {"DICTIONARY", r13}, {"DICTIONARYVAR", r13},
    {"DIMASSOC", r2000}, {"DWFDEFINITION", r2004}, {"FIELD", r2004}, {"FIELDLIST", r2004},
    {"GEODATA", r2010}, {"GROUP", r13}, {"IDBUFFER", r13}, {"IMAGEDEF", r14},
    {"IMAGEDEF_REACTOR", r14}, {"LAYER_FILTER", r2000}, {"LAYER_INDEX", r2000},
    {"MATERIAL", r2004}, {"MENTALRAYRENDERSETTINGS", r2007}, {"MLEADERSTYLE", r2007},
    {"MLINESTYLE", r13}, {"OBJECT_PTR", r2000}, {"PDFDEFINITION", r2010}, {"PLOTSETTINGS", r2000},
    {"RASTERVARIABLES", r14}, {"RENDERENVIRONMENT", r2007}, {"RENDERGLOBAL", r2007},
    {"SCALE", r2004}, {"SORTENTSTABLE", r14}, {"SPATIAL_FILTER", r14}, {"SPATIAL_INDEX", r14},
    {"TABLECONTENT", r2007}, {"TABLEFORMAT", r2007}, {"TABLEGEOMETRY", r2007},
    {"TABLESTYLE", r2004}, {"VISUALSTYLE", r2007}, {"WIPEOUTVARIABLES", r2000}, {"XRECORD", r13},

    // the appearances of an annotation in its scales
    {"ACDB_ALDIMOBJECTCONTEXTDATA_CLASS", r2007}, {"ACDB_ANGDIMOBJECTCONTEXTDATA_CLASS", r2007},
    {"ACDB_ANNOTSCALEOBJECTCONTEXTDATA_CLASS", r2007},
    {"ACDB_BLKREFOBJECTCONTEXTDATA_CLASS", r2007}, {"ACDB_DMDIMOBJECTCONTEXTDATA_CLASS", r2007},
    {"ACDB_FCFOBJECTCONTEXTDATA_CLASS", r2007}, {"ACDB_HATCHSCALECONTEXTDATA_CLASS", r2007},
    {"ACDB_HATCHVIEWCONTEXTDATA_CLASS", r2007}, {"ACDB_LEADEROBJECTCONTEXTDATA_CLASS", r2007},
    {"ACDB_MLEADEROBJECTCONTEXTDATA_CLASS", r2007},
    {"ACDB_MTEXTATTRIBUTEOBJECTCONTEXTDATA_CLASS", r2007},
    {"ACDB_MTEXTOBJECTCONTEXTDATA_CLASS", r2007}, {"ACDB_ORDDIMOBJECTCONTEXTDATA_CLASS", r2007},
    {"ACDB_RADIMLGOBJECTCONTEXTDATA_CLASS", r2007},
    {"ACDB_RADIMOBJECTCONTEXTDATA_CLASS", r2007}, {"ACDB_TEXTOBJECTCONTEXTDATA_CLASS", r2007},

    // The parts of a dynamic block own each other and point at entities of their block, all in the
    // groups of handles, so the copy is as dynamic as the original.
    {"ACAD_EVALUATION_GRAPH", r2004}, {"ACDB_BLOCKREPRESENTATION_DATA", r2004},
    {"ACDB_DYNAMICBLOCKPROXYNODE", r2004}, {"ACDB_DYNAMICBLOCKPURGEPREVENTER_VERSION", r2004},
    {"BLOCKALIGNEDCONSTRAINTPARAMETER", r2004}, {"BLOCKALIGNMENTGRIP", r2004},
    {"BLOCKALIGNMENTPARAMETER", r2004}, {"BLOCKANGULARCONSTRAINTPARAMETER", r2004},
    {"BLOCKARRAYACTION", r2004}, {"BLOCKBASEPOINTPARAMETER", r2004},
    {"BLOCKDIAMETRICCONSTRAINTPARAMETER", r2004}, {"BLOCKFLIPACTION", r2004},
    {"BLOCKFLIPGRIP", r2004}, {"BLOCKFLIPPARAMETER", r2004},
    {"BLOCKGRIPLOCATIONCOMPONENT", r2004}, {"BLOCKHORIZONTALCONSTRAINTPARAMETER", r2004},
    {"BLOCKLINEARCONSTRAINTPARAMETER", r2004}, {"BLOCKLINEARGRIP", r2004},
    {"BLOCKLINEARPARAMETER", r2004}, {"BLOCKLOOKUPACTION", r2004}, {"BLOCKLOOKUPGRIP", r2004},
    {"BLOCKLOOKUPPARAMETER", r2004}, {"BLOCKMOVEACTION", r2004},
    {"BLOCKPARAMDEPENDENCYBODY", r2004}, {"BLOCKPOINTPARAMETER", r2004},
    {"BLOCKPOLARGRIP", r2004}, {"BLOCKPOLARPARAMETER", r2004},
    {"BLOCKPOLARSTRETCHACTION", r2004}, {"BLOCKPROPERTIESTABLE", r2004},
    {"BLOCKPROPERTIESTABLEGRIP", r2004}, {"BLOCKRADIALCONSTRAINTPARAMETER", r2004},
    {"BLOCKROTATEACTION", r2004}, {"BLOCKROTATIONGRIP", r2004},
    {"BLOCKROTATIONPARAMETER", r2004}, {"BLOCKSCALEACTION", r2004},
    {"BLOCKSTRETCHACTION", r2004}, {"BLOCKUSERPARAMETER", r2004},
    {"BLOCKVERTICALCONSTRAINTPARAMETER", r2004}, {"BLOCKVISIBILITYGRIP", r2004},
    {"BLOCKVISIBILITYPARAMETER", r2004}, {"BLOCKXYGRIP", r2004}, {"BLOCKXYPARAMETER", r2004},
};
// clang-format on

using Knowledge = std::unordered_map<std::string_view, const RecordKnowledge*>;

} // namespace

const RecordKnowledge* knowledgeOf(std::string_view type)
{
    static const Knowledge known = [] {
        Knowledge all;
        for (const RecordKnowledge& row : kTypes) {
            all.emplace(row.type, &row);
        }
        return all;
    }();
    const auto found = known.find(type);
    return found == known.end() ? nullptr : found->second;
}

} // namespace corma::host
