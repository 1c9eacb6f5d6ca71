#pragma once

// controls/ - the widgets that dialogs share: the picture control, the coloured list, the wide
// icon; and the icons, which are vector pictures compiled in from resources/icons/.

#include <QIcon>
#include <QString>

namespace corma {

/// The icon of the program.
QIcon programIcon();

/// The mark of a row of settings, by the number of its image: 0 global, 1 project, 2 local; copies:
/// 3 and 4 of the global value, 5 of the project's, 6 of both; 7 obsolete, 8 read-only. Null for
/// any other number.
QIcon markIcon(int image);

/// The number of marks.
inline constexpr int kMarks = 9;

/// What a row of an attribute update is about, by the number of its image: 0 a block, 1 the drawing
/// that it comes from, 2 a reference of it. Null for any other number.
QIcon blockIcon(int image);

/// The state of an attribute, by the number of its image: 0 a new one, 1 one too many. Null for any
/// other number.
QIcon attributeIcon(int image);

/// Path of an SVG picture by its number, as CIconStatic draws it; empty for a number without one.
QString widePicture(int number);

/// The numbers of the wide pictures, 140 by 48: the name of the program, and the head of the about
/// box of client applications.
inline constexpr int kProgramBanner = 1;
inline constexpr int kAboutPicture = 173;

} // namespace corma
