// The commands on blocks and their attributes.

#include "commands.h"
#include "console.h"
#include "current_drawing.h"
#include "handles.h"
#include "text.h"
#include <corma/attributes.h>
#include <corma/blocks.h>

#include <cwchar>
#include <memory>

namespace cfgctl {

namespace {

struct CloseDatabase
{
    void operator()(AcDbDatabase* database) const { corma::closeDatabase(database); }
};

using SideDrawing = std::unique_ptr<AcDbDatabase, CloseDatabase>;

// --- block ---------------------------------------------------------------------------------------

class Block : public Command
{
public:
    void declare(Syntax& syntax) override
    {
        syntax.argument("TEXT",
                        "NAME: the block, loaded from the drawing file of that name when it is\n"
                        "not there; FILE!NAME: the same from a block within FILE;\n"
                        "$NAME, FILE!$NAME: loaded anew in any case",
                        m_text);
        syntax.option("--source FILE", "Take the block from this drawing", m_source);
        syntax.option("--password P", "Password of the drawing that becomes a block", m_password);
        syntax.flag("--quiet", "Do not tell of a file or block that is not found", m_isQuiet);
    }

    Answer run(const Options& /*options*/) override
    {
        requireDrawing();
        const SideDrawing source = openSource();
        std::wstring text = m_text;
        Answer answer;
        const AcDbObjectId block
            = xx_findblk(text.data(), m_isQuiet ? 0 : 1, &answer.status, nullptr, source.get(),
                         m_password ? m_password->c_str() : nullptr);
        text.resize(std::wcslen(text.c_str())); // what the library left of it
        const Json handle = asJson(block);
        answer.document["status"] = answer.status;
        answer.document["handle"] = handle;
        answer.document["name"] = toJson(xx_findblk_name(nameIn(text)));
        answer.document["text"] = toJson(text);
        answer.lines = plainLines(handle);
        return answer;
    }

private:
    [[nodiscard]] SideDrawing openSource() const
    {
        return SideDrawing(m_source ? openAside(*m_source, "--source") : nullptr);
    }

    // Behind the mark of a forced loading, which is no part of the name.
    static std::wstring_view nameIn(std::wstring_view text)
    {
        return text.substr(text.starts_with(L'$') ? 1 : 0);
    }

    std::wstring m_text;
    std::optional<std::wstring> m_source;
    std::optional<std::wstring> m_password;
    bool m_isQuiet = false;
};

// --- attributes ----------------------------------------------------------------------------------

Json valueOf(const xx_Var& attribute)
{
    if (attribute.type == RTREAL) {
        return attribute.values[0].rreal;
    }
    const wchar_t* const text = attribute.currentText();
    return toJson(text == nullptr ? L"" : text);
}

// Puts a list of attributes into an answer, and tells it in lines of tag and text.
void tellAttributes(const xx_VarArray& attributes, Answer& answer)
{
    Json all = Json::array();
    for (int i = 0; i < attributes.length(); ++i) {
        const std::string tag = toBytes(attributes[i]->name());
        const Json value = valueOf(*attributes[i]);
        answer.lines.append(tag).append("\t").append(plainLines(value));
        all.push_back(Json::array({tag, value}));
    }
    answer.document["attributes"] = std::move(all);
}

class Attributes : public Command
{
public:
    void declare(Syntax& syntax) override
    {
        syntax.argument("HANDLE", "A block reference", m_handle);
        syntax.option("--pseudo PATTERN",
                      "Also those of BL_XSCALE, BL_YSCALE, BL_ZSCALE and BL_ROTATION (in\n"
                      "radians) that fit, such as \"BL_*SCALE\"",
                      m_pattern);
    }

    Answer run(const Options& /*options*/) override
    {
        requireDrawing();
        xx_VarArray attributes;
        AcGePoint3d point;
        Answer answer;
        answer.status = xx_get_bl_attributes(objectOf(m_handle), attributes, &point,
                                             m_pattern ? m_pattern->c_str() : nullptr);
        answer.document["status"] = answer.status;
        answer.document["point"] = asJson(point);
        tellAttributes(attributes, answer);
        return answer;
    }

private:
    std::wstring m_handle;
    std::optional<std::wstring> m_pattern;
};

class AttributeDefinitions : public Command
{
public:
    void declare(Syntax& syntax) override
    {
        syntax.argument("NAME", "A block of the drawing", m_name);
        syntax.flag("--constant", "Only the constant ones", m_isConstant);
    }

    Answer run(const Options& /*options*/) override
    {
        requireDrawing();
        Answer answer;
        const AcDbObjectId block = xx_findblk_int(m_name.c_str(), &answer.status);
        xx_VarArray definitions;
        if (answer.status == RTNORM) {
            answer.status = xx_get_attdefs(block, definitions, m_isConstant);
        }
        if (block.isNull()) {
            complain(L"the drawing has no block \"" + m_name + L'"');
        }
        answer.document["status"] = answer.status;
        tellAttributes(definitions, answer);
        return answer;
    }

private:
    std::wstring m_name;
    bool m_isConstant = false;
};

// --- updates -------------------------------------------------------------------------------------

/// Keeps what was found, and wants either all of it or nothing brought up to date.
class Everything : public corma::AttributeUpdateChooser
{
public:
    explicit Everything(bool isWanted)
        : m_isWanted(isWanted)
    {
    }

    bool choose(corma::AttributeUpdate& update) override
    {
        m_found = update;
        return m_isWanted;
    }

    [[nodiscard]] const corma::AttributeUpdate& found() const { return m_found; }

private:
    bool m_isWanted;
    corma::AttributeUpdate m_found;
};

class AttributeUpdate : public Command
{
public:
    void declare(Syntax& syntax) override
    {
        syntax.flag("--records",
                    "Compare blocks with the drawing files of their names, in place of the\n"
                    "references in model space with their blocks",
                    m_isOfRecords);
        syntax.option("--pattern P", "Only blocks whose names fit, such as \"DOOR*\"", m_pattern);
        syntax.flag("--apply", "Bring all that is out of date up to date", m_isApplied);
    }

    Answer run(const Options& /*options*/) override
    {
        requireDrawing();
        Everything chooser(m_isApplied);
        Answer answer;
        answer.status
            = corma::updateAttributes(m_isOfRecords ? corma::AttributeUpdateMode::records
                                                    : corma::AttributeUpdateMode::references,
                                      m_pattern ? m_pattern->c_str() : nullptr, chooser);
        tell("outOfDateRefs", chooser.found().outOfDateRefs, answer);
        tell("upToDateRefs", chooser.found().upToDateRefs, answer);
        tell("outOfDateRecords", chooser.found().outOfDateRecords, answer);
        return answer;
    }

private:
    static void tell(const char* what, const AcDbObjectIdArray& ids, Answer& answer)
    {
        const Json handles = asJson(ids);
        for (const Json& handle : handles) {
            answer.lines.append(what).append("\t").append(plainLines(handle));
        }
        answer.document[what] = handles;
    }

    std::optional<std::wstring> m_pattern;
    bool m_isOfRecords = false;
    bool m_isApplied = false;
};

class AttributeSync : public Command
{
public:
    void declare(Syntax& syntax) override
    {
        syntax.argument("NAME", "A block of the drawing", m_name);
    }

    Answer run(const Options& /*options*/) override
    {
        requireDrawing();
        Answer answer;
        answer.status = xx_sync_attributes(m_name.c_str());
        answer.document["status"] = answer.status;
        return answer;
    }

private:
    std::wstring m_name;
};

} // namespace

std::unique_ptr<Command> makeBlock()
{
    return std::make_unique<Block>();
}

std::unique_ptr<Command> makeAttributes()
{
    return std::make_unique<Attributes>();
}

std::unique_ptr<Command> makeAttributeDefinitions()
{
    return std::make_unique<AttributeDefinitions>();
}

std::unique_ptr<Command> makeAttributeUpdate()
{
    return std::make_unique<AttributeUpdate>();
}

std::unique_ptr<Command> makeAttributeSync()
{
    return std::make_unique<AttributeSync>();
}

} // namespace cfgctl
