#include "commands.h"

namespace cfgctl {

namespace {

class Scramble : public Command
{
public:
    void declare(Syntax& syntax) override
    {
        syntax.argument("FILE", "Configuration file", m_file);
        syntax.argument("KEY", "Scramble number of the copy", m_key);
        syntax.optionalArgument("TARGET", "The copy; else FILE with KEY behind its name", m_target);
    }

    Answer run(const Options& options) override
    {
        xx_Inifile file = openFile(m_file, options);
        Answer answer;
        answer.status = file.scramble(m_target ? m_target->data() : nullptr, m_key);
        answer.document["status"] = answer.status;
        return answer;
    }

private:
    std::wstring m_file;
    int m_key = 0;
    std::optional<std::wstring> m_target;
};

} // namespace

std::unique_ptr<Command> makeScramble()
{
    return std::make_unique<Scramble>();
}

} // namespace cfgctl
