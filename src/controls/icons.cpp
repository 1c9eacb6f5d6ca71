#include "controls/icons.h"

#include <array>

// Outside any namespace, as Qt wants it: in a static library nothing else draws the pictures in.
static void loadPictures()
{
    Q_INIT_RESOURCE(icons);
}

namespace corma {

namespace {

constexpr std::array<const char*, kMarks> kMarkNames
    = {"global",         "project",         "local",       "project-copy-of-global",
       "copy-of-global", "copy-of-project", "double-copy", "obsolete",
       "read-only"};

QIcon iconOf(const char* name)
{
    loadPictures();
    return QIcon(QStringLiteral(":/corma/icons/%1.svg").arg(QLatin1StringView(name)));
}

} // namespace

QIcon programIcon()
{
    return iconOf("cfgdesk");
}

QIcon markIcon(int image)
{
    if (image < 0 || image >= kMarks) {
        return {};
    }
    return iconOf(kMarkNames[static_cast<std::size_t>(image)]);
}

QString widePicture(int number)
{
    loadPictures();
    return number == kProgramBanner ? QStringLiteral(":/corma/icons/banner.svg") : QString();
}

} // namespace corma
