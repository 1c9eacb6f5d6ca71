#include "model_command.h"

#include "text.h"

#include <filesystem>

namespace cfgctl {

void ModelCommand::declareFile(Syntax& syntax)
{
    syntax.argument("FILE", "Configuration file", m_file);
}

void ModelCommand::declareProject(Syntax& syntax)
{
    syntax.option("--project IPR",
                  "A project file to load on top; it is made, empty, where there is none.\n"
                  "With --drawing that one counts which lies beside the drawing",
                  m_project);
}

corma::ModelRequest ModelCommand::request(const Options& options) const
{
    if (m_project && m_project->empty()) {
        throw UsageError("--project is empty; pass the name of a project file");
    }
    return {m_file, options.language, m_project, options.drawing.has_value()};
}

// A lookup would search other folders first; the model takes the file of the current folder, and
// puts an extension behind a name with a folder only.
std::wstring ModelCommand::configurationFile() const
{
    const bool hasFolder = m_file.find_first_of(L"/\\") != std::wstring::npos;
    const bool hasDot = m_file.find(L'.') != std::wstring::npos;
    const std::wstring name = hasFolder && !hasDot ? m_file + L".ini" : m_file;
    return toWide(std::filesystem::absolute(toBytes(name)).string());
}

} // namespace cfgctl
