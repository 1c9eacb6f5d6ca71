#pragma once

// editor/ - the dialog of an attribute update. It must be shown from the thread of the user
// interface. In a process without a Qt application one is made for it; where no window can be
// shown the user is told so, and nothing is brought up to date.

#include <corma/attributes.h>
#include <corma/export.h>

#include <memory>

namespace corma {

/// Asks in a dialog what an attribute update is to do. There a person may also take the block of
/// references out of another drawing, which replaces its definition at once, even when the dialog
/// is then cancelled.
class CORMA_EXPORT AttributeDialog : public AttributeUpdateChooser
{
public:
    AttributeDialog();
    AttributeDialog(const AttributeDialog&) = delete;
    AttributeDialog& operator=(const AttributeDialog&) = delete;
    ~AttributeDialog() override;

    /// True when OK ended the dialog. From then on, until this object goes, what the library has to
    /// tell or ask comes in windows.
    bool choose(AttributeUpdate& update) override;

private:
    struct Windows;
    std::unique_ptr<Windows> m_windows; // null until the dialog was shown
};

} // namespace corma

/// Compares the attributes of the working drawing, asks in the dialog what is to be brought up to
/// date, and does it: see corma::updateAttributes(). Of blocks for `records`, else of references.
/// When there is nothing to show no window comes; the user is told that all is up to date.
CORMA_EXPORT void xx_show_attribute_update(bool records, const wchar_t* pattern);
