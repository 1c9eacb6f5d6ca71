#pragma once

#include "editor/told_dialogs.h"
#include "support/TempFolder.h"

namespace corma::testing {

/// The library xx_corma_dotnet_acad.dll, loaded for the life of the object.
class DialogLibrary
{
public:
    enum class Names
    {
        decorated, // as the editor looks for them
        others
    };

    /// The file is made in the folder.
    explicit DialogLibrary(const TempFolder& folder, Names names = Names::decorated);
    DialogLibrary(const DialogLibrary&) = delete;
    DialogLibrary& operator=(const DialogLibrary&) = delete;
    ~DialogLibrary();

    /// False when it could not be loaded; nothing else may be called then.
    [[nodiscard]] bool isLoaded() const { return m_handle != nullptr; }

    ToldDialogs& dialogs();

private:
    void* m_handle;
};

} // namespace corma::testing
