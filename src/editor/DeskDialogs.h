#pragma once

#include "editor/external_dialogs.h"

class QWidget;

namespace corma {

class Desk;

/// The dialogs for the selected setting of a desk: in force from construction to destruction. They
/// hand the new value back and store nothing. A read-only setting is shown, and never accepted.
class DeskDialogs : public OwnDialogs
{
public:
    DeskDialogs(Desk& desk, QWidget* parent);
    DeskDialogs(const DeskDialogs&) = delete;
    DeskDialogs& operator=(const DeskDialogs&) = delete;
    ~DeskDialogs() override;

    int editHatch(wchar_t* value, int capacity) override;
    int editTextStyle(wchar_t* value, int capacity) override;
    int editVisualisation(wchar_t* value, int capacity) override;
    int chooseColour(int colour, int& chosen) override;

private:
    [[nodiscard]] bool isReadOnly() const;
    template<class Dialog> int edit(wchar_t* value, int capacity);

    Desk& m_desk;
    QWidget* m_parent;
    OwnDialogs* m_former;
};

} // namespace corma
