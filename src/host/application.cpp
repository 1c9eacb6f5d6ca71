#include "host/host.h"

namespace {

constexpr long kPreferences = 14;
constexpr long kFiles = 0x60020001;
constexpr long kSupportPath = 0;

class Files : public AcadAutomation
{
public:
    [[nodiscard]] const AcadAutomation* object(long /*property*/) const override { return nullptr; }

    [[nodiscard]] std::wstring text(long property) const override
    {
        const ACHAR* const folders
            = property == kSupportPath ? acdbHostApplicationServices()->getEnv(L"ACAD") : nullptr;
        return folders == nullptr ? std::wstring() : std::wstring(folders);
    }
};

// An object that has one other and no texts.
template<class Inner, long number> class Holder : public AcadAutomation
{
public:
    [[nodiscard]] const AcadAutomation* object(long property) const override
    {
        return property == number ? &m_inner : nullptr;
    }

    [[nodiscard]] std::wstring text(long /*property*/) const override { return {}; }

private:
    Inner m_inner;
};

using Preferences = Holder<Files, kFiles>;
using Application = Holder<Preferences, kPreferences>;

} // namespace

const AcadAutomation* acedGetAcadWinApp()
{
    static const Application application;
    return &application;
}
