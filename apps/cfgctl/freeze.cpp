#include "commands.h"
#include "console.h"

#include <string>

namespace cfgctl {

namespace {

// The operations have no status. They tell by this what the drawing did not take, and other things
// beside it, such as what is wrong with a definition.
bool isRefusal(const std::wstring& heard)
{
    return heard.find(L" not stored in the drawing") != std::wstring::npos;
}

class Freeze : public Command
{
public:
    void declare(Syntax& syntax) override
    {
        syntax.argument("FILE", "Configuration file", m_file);
        syntax.optionalArgument("IDENT", "One ident", m_ident);
        syntax.option("--chapter C", "All entries of this chapter, in place of IDENT", m_chapter);
        syntax.flag("--levels", "All settings that are defined to belong into drawings",
                    m_isByLevel);
    }

    Answer run(const Options& options) override
    {
        checkUsage(options);
        xx_Inifile file = openFile(m_file, options);
        const Listener library(Listener::Pass::on);
        if (m_isByLevel) {
            file.makeLocalLevelsLocal(kSilent);
        } else if (m_chapter) {
            file.makeLocalChapter(m_chapter->c_str(), kSilent);
        } else {
            file.makeLocal(m_ident->data(), kSilent);
        }
        Answer answer;
        answer.status = *file.getFilename() == 0 || isRefusal(library.heard()) ? RTERROR : RTNORM;
        answer.document["status"] = answer.status;
        return answer;
    }

private:
    static constexpr int kSilent = 0;

    void checkUsage(const Options& options) const
    {
        const int wanted = (m_ident ? 1 : 0) + (m_chapter ? 1 : 0) + (m_isByLevel ? 1 : 0);
        if (wanted != 1) {
            throw UsageError("pass one of IDENT, --chapter C and --levels to freeze");
        }
        if (!options.drawing) {
            throw UsageError("freeze needs a drawing; pass one with --drawing FILE");
        }
    }

    std::wstring m_file;
    std::optional<std::wstring> m_ident;
    std::optional<std::wstring> m_chapter;
    bool m_isByLevel = false;
};

} // namespace

std::unique_ptr<Command> makeFreeze()
{
    return std::make_unique<Freeze>();
}

} // namespace cfgctl
