#include "commands.h"
#include "text.h"
#include <corma/drawing_contents.h>
#include <corma/xx_VisParam.h>

#include <array>
#include <string_view>

namespace cfgctl {

namespace {

Json nameOf(AcDbObjectId id)
{
    const auto name = corma::recordName(id);
    return name ? toJson(*name) : Json();
}

Json fieldsOf(const xx_VisParam& record)
{
    Json fields;
    fields["linetypeId"] = nameOf(record.linetypeId);
    fields["layerId"] = nameOf(record.layerId);
    fields["colorIndex"] = record.colorIndex;
    fields["lineWeight"] = record.lineWeight;
    return fields;
}

// The library tells of a missing setting; that of the plain record when it is asked to.
Json readVis(xx_Inifile& file, std::wstring& ident)
{
    xx_VisParam record;
    file.getVisParam(ident.data(), &record, 1);
    return fieldsOf(record);
}

Json readText(xx_Inifile& file, std::wstring& ident)
{
    xx_TextInfo record;
    file.getTextInfo(ident.data(), &record, 1);
    Json fields = fieldsOf(record);
    fields["textStyleId"] = nameOf(record.textStyleId);
    fields["height"] = record.height;
    fields["widthFactor"] = record.widthFactor;
    fields["obliqueAngle"] = record.obliqueAngle;
    return fields;
}

Json readHatch(xx_Inifile& file, std::wstring& ident)
{
    xx_VisHatchInfo record;
    file.getHatchInfo(ident.data(), &record, 1);
    Json fields = fieldsOf(record);
    fields["scale"] = record.scale;
    fields["angle"] = record.angle;
    fields["patternName"] = toJson(record.patternName);
    return fields;
}

struct RecordKind
{
    std::wstring_view name;
    Json (*read)(xx_Inifile& file, std::wstring& ident);
};

constexpr std::array kKinds = {
    RecordKind {L"vis", readVis},
    RecordKind {L"text", readText},
    RecordKind {L"hatch", readHatch},
};

const RecordKind& kindNamed(const std::optional<std::wstring>& name)
{
    for (const RecordKind& kind : kKinds) {
        if (name == kind.name) {
            return kind;
        }
    }
    throw UsageError(
        (name ? "unknown record " + cfgctl::quoted(*name) : std::string("no record told"))
        + "; pass vis, text or hatch to --as");
}

std::string fieldLines(const Json& fields)
{
    std::vector<std::vector<std::wstring>> rows;
    for (const auto& field : fields.items()) {
        std::string value = plainLines(field.value());
        value = value.empty() ? "(none)" : value.substr(0, value.size() - 1);
        rows.push_back({toWide(field.key()), toWide(value)});
    }
    return alignedLines(rows);
}

class Record : public Command
{
public:
    void declare(Syntax& syntax) override
    {
        syntax.argument("FILE", "Configuration file", m_file);
        syntax.argument("IDENT", "One ident", m_ident);
        syntax.option("--as KIND", "The kind of record that the value is: vis, text or hatch",
                      m_kind);
    }

    Answer run(const Options& options) override
    {
        const RecordKind& kind = kindNamed(m_kind);
        xx_Inifile file = openFile(m_file, options);
        const Json fields = kind.read(file, m_ident);
        return {RTNORM, fields, fieldLines(fields)};
    }

private:
    std::wstring m_file;
    std::wstring m_ident;
    std::optional<std::wstring> m_kind;
};

} // namespace

std::unique_ptr<Command> makeRecord()
{
    return std::make_unique<Record>();
}

} // namespace cfgctl
