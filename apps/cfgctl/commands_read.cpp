// The commands that show what is there, besides get.

#include "commands.h"
#include "sources.h"
#include "text.h"
#include <corma/findfile.h>
#include <corma/lookup_trace.h>
#include <corma/xx_Var.h>

#include <algorithm>

namespace cfgctl {

namespace {

constexpr std::size_t kLongestPath = 4096; // characters, the terminator counted

class Find : public Command
{
public:
    void declare(Syntax& syntax) override
    {
        syntax.argument("FILE", "Configuration file", m_file);
        syntax.argument("PATTERN",
                        "\"[chapters]idents\", or \"idents\" for the head of the file;\n"
                        "\"*\" stands for any text, \",\" separates alternatives",
                        m_pattern);
        syntax.option("--skip N", "Leave the first N characters of each ident out", m_skip);
        syntax.flag("--report", "Tell when nothing is found; not with --model", m_report);
        syntax.flag("--model",
                    "Ask the settings model: values of drawing and project go first, and\n"
                    "XXINIFRUBR in PATTERN lists chapters. A project file is made, empty,\n"
                    "where FILE lies beside a drawing that has none",
                    m_asksModel);
    }

    Answer run(const Options& options) override
    {
        xx_Inifile file = openFile(m_file, options);
        xx_VarArray results;
        const auto query = m_asksModel ? &xx_Inifile::getWcStringNew : &xx_Inifile::getWcString;
        Answer answer;
        answer.status = (file.*query)(m_pattern.data(), &results, m_report ? 1 : 0, m_skip);
        Json pairs = Json::array();
        for (int i = 0; i < results.length(); ++i) {
            const std::string name = toBytes(results[i]->name());
            const std::string value = toBytes(results[i]->currentText());
            answer.lines.append(name).append("\t").append(value).append("\n");
            pairs.push_back(Json::array({name, value}));
        }
        answer.document["status"] = answer.status;
        answer.document["pairs"] = std::move(pairs);
        return answer;
    }

private:
    std::wstring m_file;
    std::wstring m_pattern;
    int m_skip = 0;
    bool m_report = false;
    bool m_asksModel = false;
};

class Levels : public Command
{
public:
    void declare(Syntax& syntax) override
    {
        syntax.argument("FILE", "Configuration file", m_file);
        syntax.argument("IDENT", "One ident", m_ident);
    }

    Answer run(const Options& options) override
    {
        xx_Inifile file = openFile(m_file, options);
        const auto levels = corma::levelsOf(file, m_ident.c_str());
        const bool isSomewhere = std::any_of(levels.begin(), levels.end(),
                                             [](const auto& level) { return level.where.found; });
        return {isSomewhere ? RTNORM : RTERROR, levelsAsJson(levels), levelsAsLines(levels)};
    }

private:
    std::wstring m_file;
    std::wstring m_ident;
};

class Includes : public Command
{
public:
    void declare(Syntax& syntax) override { syntax.argument("FILE", "Configuration file", m_file); }

    Answer run(const Options& options) override
    {
        const xx_Inifile file = openFile(m_file, options);
        const auto tree = corma::includeTree(file);
        return {RTNORM, treeAsJson(*tree), treeAsLines(*tree)};
    }

private:
    std::wstring m_file;
};

class Where : public Command
{
public:
    void declare(Syntax& syntax) override { syntax.argument("NAME", "Name of a file", m_name); }

    Answer run(const Options& /*options*/) override
    {
        std::wstring path(kLongestPath, L'\0');
        Answer answer;
        answer.status = xx_findfile_arx(m_name.c_str(), path.data(), path.size() - 1);
        const Json found = answer.status == RTNORM ? toJson(path.c_str()) : Json();
        answer.document["status"] = answer.status;
        answer.document["path"] = found;
        answer.lines = plainLines(found);
        return answer;
    }

private:
    std::wstring m_name;
};

} // namespace

std::unique_ptr<Command> makeFind()
{
    return std::make_unique<Find>();
}

std::unique_ptr<Command> makeLevels()
{
    return std::make_unique<Levels>();
}

std::unique_ptr<Command> makeIncludes()
{
    return std::make_unique<Includes>();
}

std::unique_ptr<Command> makeWhere()
{
    return std::make_unique<Where>();
}

} // namespace cfgctl
