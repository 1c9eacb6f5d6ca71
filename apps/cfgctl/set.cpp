#include "commands.h"
#include "console.h"
#include "text.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace cfgctl {

namespace {

// Their places are the level numbers of the library.
constexpr std::wstring_view kDrawingLevel = L"drawing";
constexpr std::array<std::wstring_view, 3> kLevels = {L"global", L"project", kDrawingLevel};

class Set : public Command
{
public:
    void declare(Syntax& syntax) override
    {
        syntax.argument("FILE", "Configuration file", m_file);
        syntax.argument("IDENT", "One ident", m_ident);
        syntax.argument("VALUE", "Its new value", m_value);
        syntax.option("--level LEVEL",
                      "Where the value goes: global, FILE itself; project, the .ipr file\n"
                      "beside FILE; or drawing. It is drawing with --drawing, else global",
                      m_level);
        syntax.flag("--no-create", "Change an entry of FILE that is there, but add none",
                    m_noCreate);
    }

    Answer run(const Options& options) override
    {
        const int level = chosenLevel(options);
        xx_Inifile file = openFile(m_file, options);
        const Listener library(Listener::Pass::on);
        file.writeString(m_ident.data(), m_value.data(), level, !m_noCreate);
        Answer answer;
        answer.status = library.heard().empty() ? RTNORM : RTERROR;
        answer.document["status"] = answer.status;
        return answer;
    }

private:
    [[nodiscard]] int chosenLevel(const Options& options) const
    {
        const std::wstring_view usual = options.drawing ? kDrawingLevel : kLevels.front();
        const std::wstring_view level = m_level ? std::wstring_view(*m_level) : usual;
        const auto* const known = std::find(kLevels.begin(), kLevels.end(), level);
        if (known == kLevels.end()) {
            throw UsageError("unknown level " + quoted(level)
                             + "; pass global, project or drawing to --level");
        }
        if (level == kDrawingLevel && !options.drawing) {
            throw UsageError("--level drawing needs a drawing; pass one with --drawing FILE");
        }
        return static_cast<int>(known - kLevels.begin());
    }

    std::wstring m_file;
    std::wstring m_ident;
    std::wstring m_value;
    std::optional<std::wstring> m_level;
    bool m_noCreate = false;
};

} // namespace

std::unique_ptr<Command> makeSet()
{
    return std::make_unique<Set>();
}

} // namespace cfgctl
