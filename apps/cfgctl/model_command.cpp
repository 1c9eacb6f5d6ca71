#include "model_command.h"

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

} // namespace cfgctl
