#pragma once

#include "host/dwg/fields.h"
#include "host/dwg/group_fields.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corma::host::dwg {

/// The records that a drawing is found from. `none` for one that a version does not have.
struct RootHandles
{
    // The heads of the tables.
    Handle blocks = Handle::none;
    Handle layers = Handle::none;
    Handle textStyles = Handle::none;
    Handle linetypes = Handle::none;
    Handle views = Handle::none;
    Handle coordinateSystems = Handle::none;
    Handle windows = Handle::none; // VPORT
    Handle applications = Handle::none;
    Handle dimStyles = Handle::none;
    Handle viewports = Handle::none; // VX, up to R2000

    // Dictionaries.
    Handle namedObjects = Handle::none; // the root of all others
    Handle groups = Handle::none;
    Handle mlineStyles = Handle::none;
    Handle layouts = Handle::none; // the rest from R2000 on
    Handle plotSettings = Handle::none;
    Handle plotStyles = Handle::none;
    Handle materials = Handle::none; // from R2004 on
    Handle colors = Handle::none;
    Handle visualStyles = Handle::none; // from R2007 on

    // Entries of tables, and of the dictionary of styles of multiple lines.
    Handle paperSpace = Handle::none;
    Handle modelSpace = Handle::none;
    Handle byLayer = Handle::none;
    Handle byBlock = Handle::none;
    Handle continuous = Handle::none;
    Handle currentMlineStyle = Handle::none; // $CMLSTYLE
};

/// The header variables of a drawing, of Parts::header.
class HeaderVariables
{
public:
    /// Those of a new drawing; all have their usual values and handles none.
    explicit HeaderVariables(const FileForm& form);

    /// Nothing when the section is damaged.
    static std::optional<HeaderVariables> read(std::string_view section, const FileForm& form);

    /// False when bytes() would not give the section back that was read, so it must stay as it is.
    [[nodiscard]] bool isUnderstood() const { return m_isUnderstood; }

    [[nodiscard]] RootHandles rootHandles() const;
    void setRootHandles(const RootHandles& handles);

    /// The first handle that was never used.
    [[nodiscard]] Handle seed() const;
    void setSeed(Handle seed);

    /// Appends the groups that the section HEADER of a DXF file has, behind SECTION and its name:
    /// a name with code 9 and values for each variable that a DWG file has, in DXF's order.
    void toGroups(const Names& names, Groups& groups) const;

    /// Takes over the values of all variables that the groups have; others stay what they are.
    /// What names something that the drawing does not have stays, too.
    void fromGroups(const Names& names, const Groups& groups);

    /// The section with its sentinels; what is unchanged comes back to the same bytes.
    [[nodiscard]] std::string bytes() const;

private:
    struct Value // of the kind that its field has
    {
        std::int64_t number = 0;
        std::int64_t milliseconds = 0; // of a time, whose days are in `number`
        double real = 0.0;
        Point point;
        Text text;
        Color color;
        Ref ref;
    };

    template<class Io> void fields(Io& io);
    [[nodiscard]] const Value* find(std::wstring_view name) const; // null: not in this version
    Value* find(std::wstring_view name);
    const FileForm* m_form;
    std::vector<Value> m_values; // one for each of the fields, those of other versions included
    BitWriter m_rest; // what stands behind the last field and means nothing
    bool m_isUnderstood = true;
};

/// The same handles without the rest; nothing when the section is damaged.
std::optional<RootHandles> decodeRootHandles(std::string_view section, const FileForm& form);

} // namespace corma::host::dwg
