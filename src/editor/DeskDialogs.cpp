#include "editor/DeskDialogs.h"

#include "editor/ColourDlg.h"
#include "editor/Desk.h"
#include "editor/EditDlgHatch.h"
#include "editor/EditDlgText.h"
#include "foundation/wide_text.h"
#include <corma/host.h>

namespace corma {

DeskDialogs::DeskDialogs(Desk& desk, QWidget* parent)
    : m_desk(desk)
    , m_parent(parent)
    , m_former(setOwnDialogs(this))
{
}

DeskDialogs::~DeskDialogs()
{
    setOwnDialogs(m_former);
}

// What cannot be changed was looked at: to store it would put it on another level.
bool DeskDialogs::isReadOnly() const
{
    const Instelling* const setting = m_desk.selectedSetting();
    return setting != nullptr && setting->isReadOnly();
}

template<class Dialog> int DeskDialogs::edit(wchar_t* value, int capacity)
{
    const auto most = static_cast<std::size_t>(capacity);
    Dialog dialog(m_desk, m_parent, EditDlgVis::HandedIn {value, most});
    if (dialog.exec() != QDialog::Accepted || isReadOnly()) {
        return RTCAN;
    }
    copyBounded(value, most + 1, dialog.accepted());
    return RTNORM;
}

int DeskDialogs::editHatch(wchar_t* value, int capacity)
{
    return edit<EditDlgHatch>(value, capacity);
}

int DeskDialogs::editTextStyle(wchar_t* value, int capacity)
{
    return edit<EditDlgText>(value, capacity);
}

int DeskDialogs::editVisualisation(wchar_t* value, int capacity)
{
    return edit<EditDlgVis>(value, capacity);
}

int DeskDialogs::chooseColour(int colour, int& chosen)
{
    ColourDlg dialog(colour, m_parent);
    if (isReadOnly()) {
        dialog.setReadOnly();
    }
    if (dialog.exec() != QDialog::Accepted || isReadOnly()) {
        return RTCAN;
    }
    chosen = dialog.chosen();
    return RTNORM;
}

} // namespace corma
