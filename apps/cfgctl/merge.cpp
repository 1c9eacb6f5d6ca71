// New files of an add-on merged into those of a user.

#include "commands.h"
#include "console.h"

#include <string>

namespace cfgctl {

namespace {

class Update : public Command
{
public:
    void declare(Syntax& syntax) override
    {
        syntax.argument("FILE", "Configuration file", m_file);
        syntax.argument("DEFAULTFILE", "The file of defaults", m_defaults);
    }

    Answer run(const Options& options) override
    {
        xx_Inifile file = openFile(m_file, options);
        int added = 0;
        Answer answer;
        answer.status = file.update(m_defaults.data(), &added);
        answer.document["status"] = answer.status;
        answer.document["added"] = added;
        if (answer.status == RTNORM) {
            answer.lines = std::to_string(added) + " added\n";
        }
        return answer;
    }

private:
    std::wstring m_file;
    std::wstring m_defaults;
};

class Replace : public Command
{
public:
    void declare(Syntax& syntax) override
    {
        syntax.argument("FILE", "Configuration file", m_file);
        syntax.argument("NEWFILE", "The file of new values", m_newFile);
    }

    Answer run(const Options& options) override
    {
        xx_Inifile file = openFile(m_file, options);
        const Listener library(Listener::Pass::on);
        Answer answer;
        answer.status = file.replaceNew(m_newFile.c_str());
        if (answer.status != RTNORM && library.heard().empty()) {
            complain(L"the file of new values \"" + m_newFile + L"\" was not found");
        }
        answer.document["status"] = answer.status;
        return answer;
    }

private:
    std::wstring m_file;
    std::wstring m_newFile;
};

} // namespace

std::unique_ptr<Command> makeUpdate()
{
    return std::make_unique<Update>();
}

std::unique_ptr<Command> makeReplace()
{
    return std::make_unique<Replace>();
}

} // namespace cfgctl
