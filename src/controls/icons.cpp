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

constexpr std::array kBlockNames = {"block", "source-drawing", "reference"};
constexpr std::array kAttributeNames = {"attribute-new", "attribute-extra"};

QIcon iconOf(const char* name)
{
    loadPictures();
    return QIcon(QStringLiteral(":/corma/icons/%1.svg").arg(QLatin1StringView(name)));
}

template<std::size_t Count> QIcon iconOf(const std::array<const char*, Count>& names, int image)
{
    const bool isThere = image >= 0 && image < static_cast<int>(Count);
    return isThere ? iconOf(names[static_cast<std::size_t>(image)]) : QIcon();
}

} // namespace

QIcon programIcon()
{
    return iconOf("cfgdesk");
}

QIcon markIcon(int image)
{
    return iconOf(kMarkNames, image);
}

QIcon blockIcon(int image)
{
    return iconOf(kBlockNames, image);
}

QIcon attributeIcon(int image)
{
    return iconOf(kAttributeNames, image);
}

QString widePicture(int number)
{
    loadPictures();
    switch (number) {
    case kProgramBanner:
        return QStringLiteral(":/corma/icons/banner.svg");
    case kAboutPicture:
        return QStringLiteral(":/corma/icons/about.svg");
    default:
        return {};
    }
}

} // namespace corma
