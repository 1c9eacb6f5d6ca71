#include "host/variables.h"

#include "host/host.h"
#include "host/model/Store.h"
#include "host/result_list.h"
#include "host/view.h"
#include "platform/platform.h"
#include "platform/text.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <string>
#include <variant>
#include <vector>

namespace {

using corma::host::Group;
using corma::host::Groups;

enum class Access
{
    readOnly,
    writable
};

using Point = corma::host::Point;
using VariableValue = std::variant<std::wstring, short, double, Point>;

// --- variables of the host -----------------------------------------------------------------------

struct Variable
{
    std::wstring_view name;
    Access access;
    VariableValue value; // without a drawing, for one that the drawing keeps
};

const std::vector<Variable>& initialVariables()
{
    static const std::vector<Variable> variables = {
        {L"CMDNAMES", Access::readOnly, std::wstring()},
        {L"CMDECHO", Access::writable, short {1}},
        {L"MEASUREMENT", Access::writable, short {1}},
    };
    return variables;
}

std::vector<Variable>& variables()
{
    static std::vector<Variable> current = initialVariables();
    return current;
}

template<class Rows> auto findIn(Rows& rows, std::wstring_view name) -> decltype(&*rows.begin())
{
    const auto found = std::find_if(rows.begin(), rows.end(), [&](const auto& row) {
        return corma::equalIgnoringCase(row.name, name);
    });
    return found == rows.end() ? nullptr : &*found;
}

// --- variables that a drawing keeps --------------------------------------------------------------

struct DrawingVariable
{
    std::wstring_view name;
    std::wstring_view header;
    int code; // of the value; of x, for a point
    Access access;
    VariableValue absent; // when the drawing does not have it
};

const std::vector<DrawingVariable>& drawingVariables()
{
    static const std::vector<DrawingVariable> rows = {
        {L"CELTYPE", L"$CELTYPE", 6, Access::writable, std::wstring(L"ByLayer")},
        {L"CLAYER", L"$CLAYER", 8, Access::writable, std::wstring(L"0")},
        {L"INSBASE", L"$INSBASE", 10, Access::writable, Point {}},
        {L"INSUNITS", L"$INSUNITS", 70, Access::writable, short {0}},
        {L"LTSCALE", L"$LTSCALE", 40, Access::writable, 1.0},
        {L"MEASUREMENT", L"$MEASUREMENT", 70, Access::writable, short {0}},
        {L"TEXTSTYLE", L"$TEXTSTYLE", 7, Access::writable, std::wstring(L"Standard")},
        {L"TILEMODE", L"$TILEMODE", 70, Access::writable, short {1}},
        {L"UCSORG", L"$UCSORG", 10, Access::readOnly, Point {}},
        {L"UCSXDIR", L"$UCSXDIR", 10, Access::readOnly, Point {1, 0, 0}},
        {L"UCSYDIR", L"$UCSYDIR", 10, Access::readOnly, Point {0, 1, 0}},
    };
    return rows;
}

struct ValueIn
{
    const Groups& groups;
    int code;

    VariableValue operator()(const std::wstring& absent) const
    {
        return std::wstring(groups.text(code, groups.all(), absent));
    }

    VariableValue operator()(short absent) const
    {
        return static_cast<short>(groups.integer(code, groups.all(), absent));
    }

    VariableValue operator()(double absent) const
    {
        return groups.real(code, groups.all(), absent);
    }

    VariableValue operator()(const Point& absent) const
    {
        return groups.point(code, groups.all(), absent);
    }
};

VariableValue valueIn(AcDbDatabase& database, const DrawingVariable& variable)
{
    const Groups groups = database.store().variable(variable.header);
    return std::visit(ValueIn {groups, variable.code}, variable.absent);
}

void setIn(AcDbDatabase& database, const DrawingVariable& variable, const VariableValue& value)
{
    auto& store = database.store();
    if (const auto* text = std::get_if<std::wstring>(&value)) {
        store.setVariable(variable.header, Group(variable.code, text->c_str()));
    } else if (const auto* whole = std::get_if<short>(&value)) {
        store.setVariable(variable.header, Group(variable.code, int {*whole}));
    } else if (const auto* real = std::get_if<double>(&value)) {
        store.setVariable(variable.header, Group(variable.code, *real));
    } else {
        const auto& point = std::get<Point>(value);
        const std::array coordinates = {point.x, point.y, point.z};
        for (std::size_t i = 0; i < coordinates.size(); ++i) {
            const int code = variable.code + 10 * static_cast<int>(i);
            store.setVariable(variable.header, Group(code, coordinates[i]));
        }
    }
}

// --- variables that are worked out ---------------------------------------------------------------

using Worker = VariableValue (*)(AcDbDatabase&);

struct WorkedOutVariable
{
    std::wstring_view name;
    Worker work;
};

// The direction to the eye in the user's coordinates.
VariableValue viewDirection(AcDbDatabase& database)
{
    AcGeVector3d direction = corma::host::viewDirectionOf(database);
    direction.transformBy(corma::host::userCoordinatesOf(database).inverse());
    return Point {direction.x, direction.y, direction.z};
}

std::wstring pathOf(AcDbDatabase& database)
{
    const ACHAR* path = nullptr;
    database.getFilename(path);
    return path;
}

VariableValue drawingName(AcDbDatabase& database)
{
    return corma::platform::splitPath(pathOf(database)).fileName();
}

VariableValue drawingFolder(AcDbDatabase& database)
{
    return corma::platform::splitPath(pathOf(database)).folderPath();
}

constexpr std::array kWorkedOut = {
    WorkedOutVariable {L"DWGNAME", drawingName},
    WorkedOutVariable {L"DWGPREFIX", drawingFolder},
    WorkedOutVariable {L"VIEWDIR", viewDirection},
};

// --- results -------------------------------------------------------------------------------------

struct ToResult
{
    resbuf& result;

    void operator()(const std::wstring& text) const
    {
        result.restype = RTSTR;
        result.resval.rstring = corma::host::heapCopy(text);
    }

    void operator()(short number) const
    {
        result.restype = RTSHORT;
        result.resval.rint = number;
    }

    void operator()(double number) const
    {
        result.restype = RTREAL;
        result.resval.rreal = number;
    }

    void operator()(const Point& point) const
    {
        result.restype = RT3DPOINT;
        result.resval.rpoint[0] = point.x;
        result.resval.rpoint[1] = point.y;
        result.resval.rpoint[2] = point.z;
    }
};

// The value of a result, if it is of the kind that a variable has.
std::optional<VariableValue> fromResult(const resbuf& result, const VariableValue& kind)
{
    switch (result.restype) {
    case RTSTR:
        if (std::holds_alternative<std::wstring>(kind) && result.resval.rstring != nullptr) {
            return std::wstring(result.resval.rstring);
        }
        break;
    case RTSHORT:
        if (std::holds_alternative<short>(kind)) {
            return result.resval.rint;
        }
        break;
    case RTREAL:
        if (std::holds_alternative<double>(kind)) {
            return result.resval.rreal;
        }
        break;
    case RT3DPOINT:
        if (std::holds_alternative<Point>(kind)) {
            const auto& point = result.resval.rpoint;
            return Point {point[0], point[1], point[2]};
        }
        break;
    default:
        break;
    }
    return std::nullopt;
}

std::optional<VariableValue> valueOf(std::wstring_view name)
{
    AcDbDatabase* const database = acdbHostApplicationServices()->workingDatabase();
    if (database != nullptr) {
        if (const auto* variable = findIn(kWorkedOut, name)) {
            return variable->work(*database);
        }
        if (const auto* variable = findIn(drawingVariables(), name)) {
            return valueIn(*database, *variable);
        }
    }
    const Variable* variable = findIn(variables(), name);
    return variable == nullptr ? std::nullopt : std::optional(variable->value);
}

} // namespace

namespace corma::host {

void setVariable(std::wstring_view name, std::wstring_view value)
{
    Variable* variable = findIn(variables(), name);
    assert(variable != nullptr);
    variable->value = std::wstring(value);
}

void resetVariables()
{
    variables() = initialVariables();
}

} // namespace corma::host

int acedGetVar(const ACHAR* name, resbuf* result)
{
    const auto value = valueOf(name);
    if (!value) {
        return RTERROR;
    }
    result->rbnext = nullptr;
    std::visit(ToResult {*result}, *value);
    return RTNORM;
}

int acedSetVar(const ACHAR* name, const resbuf* value)
{
    AcDbDatabase* const database = acdbHostApplicationServices()->workingDatabase();
    if (database != nullptr) {
        if (const auto* variable = findIn(drawingVariables(), name)) {
            const auto wanted = fromResult(*value, variable->absent);
            if (variable->access == Access::readOnly || !wanted) {
                return RTERROR;
            }
            setIn(*database, *variable, *wanted);
            return RTNORM;
        }
    }
    Variable* variable = findIn(variables(), name);
    const auto wanted = variable == nullptr ? std::nullopt : fromResult(*value, variable->value);
    if (!wanted || variable->access == Access::readOnly) {
        return RTERROR;
    }
    variable->value = *wanted;
    return RTNORM;
}
