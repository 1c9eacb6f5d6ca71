// The commands on entities, and on the view of the drawing.

#include "commands.h"
#include "console.h"
#include "handles.h"
#include <corma/entities.h>

#include <algorithm>

namespace cfgctl {

namespace {

class Copy : public Command
{
public:
    void declare(Syntax& syntax) override
    {
        syntax.argumentList("HANDLES", "Entities of the drawing", m_handles);
        syntax.option("--matrix M",
                      "Move, turn or scale the copies: 16 numbers, row by row, separated by commas",
                      m_matrix);
    }

    Answer run(const Options& /*options*/) override
    {
        requireDrawing();
        const AcGeMatrix3d matrix = m_matrix ? matrixOf(*m_matrix) : AcGeMatrix3d::kIdentity;
        const AcDbObjectIdArray originals = objectsOf(m_handles);
        AcDbObjectIdArray copies;
        Answer answer;
        answer.status = xx_copy_entities(originals, matrix, &copies);
        if (originals.at(0).isNull()) { // by which the library knows the drawing; it is silent then
            complain(L"the drawing has no object " + m_handles.front());
        }
        const Json handles = asJson(copies);
        answer.document["status"] = answer.status;
        answer.document["handles"] = handles;
        answer.lines = plainLines(handles);
        return answer;
    }

private:
    std::vector<std::wstring> m_handles;
    std::optional<std::wstring> m_matrix;
};

class Erase : public Command
{
public:
    void declare(Syntax& syntax) override
    {
        syntax.argumentList("HANDLES", "Objects of the drawing", m_handles);
    }

    Answer run(const Options& /*options*/) override
    {
        requireDrawing();
        Answer answer;
        answer.status = xx_erase_ids(objectsOf(m_handles));
        answer.document["status"] = answer.status;
        return answer;
    }

private:
    std::vector<std::wstring> m_handles;
};

class View : public Command
{
public:
    void declare(Syntax& /*syntax*/) override { }

    Answer run(const Options& /*options*/) override
    {
        requireDrawing();
        Answer answer;
        answer.document["direction"] = asJson(xx_getCurrentViewDir_arx());
        answer.document["space"] = toJson(xx_current_space_name());
        answer.document["viewport"] = asJson(xx_getCurViewportObjectId_arx());
        for (const auto& [name, value] : answer.document.items()) {
            answer.lines.append(name).append("\t").append(onOneLine(value)).append("\n");
        }
        return answer;
    }

private:
    // Coordinates with blanks between them.
    static std::string onOneLine(const Json& value)
    {
        std::string text = plainLines(value);
        while (text.ends_with('\n')) {
            text.pop_back();
        }
        std::replace(text.begin(), text.end(), '\n', ' ');
        return text;
    }
};

} // namespace

std::unique_ptr<Command> makeCopy()
{
    return std::make_unique<Copy>();
}

std::unique_ptr<Command> makeErase()
{
    return std::make_unique<Erase>();
}

std::unique_ptr<Command> makeView()
{
    return std::make_unique<View>();
}

} // namespace cfgctl
