#pragma once

#include "commands.h"
#include <corma/settings_model.h>

namespace cfgctl {

/// What the commands that load a model have in common.
class ModelCommand : public Command
{
protected:
    void declareFile(Syntax& syntax);
    void declareProject(Syntax& syntax);

    /// Throws UsageError for a project without a name.
    [[nodiscard]] corma::ModelRequest request(const Options& options) const;

private:
    std::wstring m_file;
    std::optional<std::wstring> m_project;
};

} // namespace cfgctl
