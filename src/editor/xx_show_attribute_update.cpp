// The exported attribute update with its dialog.

#include "editor/DialogServices.h"
#include "editor/EditorApplication.h"
#include "editor/xx_attUpdateDlg.h"
#include <corma/attribute_dialog.h>
#include <corma/texts.h>

#include <optional>
#include <utility>

namespace corma {

struct AttributeDialog::Windows
{
    EditorApplication application {textLanguage(), L"The attribute update"};
    std::optional<DialogServices> services; // where windows can be shown
};

AttributeDialog::AttributeDialog() = default;

AttributeDialog::~AttributeDialog() = default;

bool AttributeDialog::choose(AttributeUpdate& update)
{
    if (m_windows == nullptr) {
        auto windows = std::make_unique<Windows>();
        if (!windows->application.isReady()) {
            return false;
        }
        windows->services.emplace();
        m_windows = std::move(windows);
    }
    xx_attUpdateDlg dialog(update, windowInUse());
    return dialog.exec() == QDialog::Accepted;
}

} // namespace corma

void xx_show_attribute_update(bool records, const wchar_t* pattern)
{
    corma::AttributeDialog dialog;
    corma::updateAttributes(records ? corma::AttributeUpdateMode::records
                                    : corma::AttributeUpdateMode::references,
                            pattern, dialog);
}
