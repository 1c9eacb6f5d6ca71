#include "platform/platform.h"

#include <locale.h> // NOLINT(modernize-deprecated-headers): newlocale() is not of C

namespace corma::platform {

/// A locale that this thread has, and the one that it had before.
class Utf8Locale::Scope
{
public:
    explicit Scope(locale_t locale)
        : m_locale(locale)
        , m_former(::uselocale(locale))
    {
    }

    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

    ~Scope()
    {
        ::uselocale(m_former);
        ::freelocale(m_locale);
    }

private:
    locale_t m_locale;
    locale_t m_former;
};

Utf8Locale::Utf8Locale()
{
    if (const locale_t locale = ::newlocale(LC_CTYPE_MASK, "C.UTF-8", locale_t {})) {
        m_scope = std::make_unique<Scope>(locale);
    }
}

Utf8Locale::~Utf8Locale() = default;

} // namespace corma::platform
