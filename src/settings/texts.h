#pragma once

// The rows of the text table that the library reads, by what they say, and the texts themselves in
// the language in force.

#include <corma/texts.h>

#include <string>

namespace corma {

namespace row {

inline constexpr int kAbout = 101;
inline constexpr int kNew = 2964;
inline constexpr int kSaveGlobally = 2965;
inline constexpr int kSaveInProject = 2966;
inline constexpr int kGlobal = 2967;
inline constexpr int kProject = 2968;
inline constexpr int kType = 2969;
inline constexpr int kNewValue = 2970;
inline constexpr int kSpecifyName = 2971;
inline constexpr int kGeneral = 2972;
inline constexpr int kName = 2973;
inline constexpr int kValue = 2974;
inline constexpr int kDescription = 2975;
inline constexpr int kString = 2976;
inline constexpr int kYesNo = 2977;
inline constexpr int kInteger = 2978;
inline constexpr int kDecimal = 2979;
inline constexpr int kColour = 2980;
inline constexpr int kLinetype = 2981;
inline constexpr int kFile = 2982;
inline constexpr int kLocalMode = 2983;
inline constexpr int kProjectMode = 2984;
inline constexpr int kSettings = 2985;
inline constexpr int kCopyOfGlobal = 2986;
inline constexpr int kProjectSetting = 2987;
inline constexpr int kCopyOfProject = 2988;
inline constexpr int kDoubleCopy = 2989;
inline constexpr int kLocalSetting = 2990;
inline constexpr int kGlobalSetting = 2991;
inline constexpr int kFileNotFound = 2992;
inline constexpr int kLineSkipped = 2993;
inline constexpr int kRemoveSetting = 2994;
inline constexpr int kYes = 2995;
inline constexpr int kNo = 2996;
inline constexpr int kCannotRemove = 2997;
inline constexpr int kGeneralSettings = 2999;
inline constexpr int kWrongValue = 3000;
inline constexpr int kCannotOpenForWrite = 3002;
inline constexpr int kNotWritten = 3003;
inline constexpr int kVisualisation = 3004;
inline constexpr int kObsolete = 3005;
inline constexpr int kDeclaredObsolete = 3006;
inline constexpr int kTextStyle = 3007;
inline constexpr int kLineweight = 3009;
inline constexpr int kStyleGroup = 3011;
inline constexpr int kHeight = 3012;
inline constexpr int kWidthFactor = 3013;
inline constexpr int kOblique = 3014;
inline constexpr int kLayer = 3015;
inline constexpr int kMaximum = 3016;
inline constexpr int kMinimum = 3017;
inline constexpr int kWrongValueTitle = 3018;
inline constexpr int kHatch = 3019;
inline constexpr int kTypeAndPattern = 3020;
inline constexpr int kPattern = 3022;
inline constexpr int kAngleAndScale = 3023;
inline constexpr int kAngle = 3024;
inline constexpr int kScale = 3025;
inline constexpr int kAngleOutOfRange = 3026;
inline constexpr int kScaleNegative = 3027;
inline constexpr int kOption = 3028;
inline constexpr int kSearch = 3029;
inline constexpr int kCopyOf = 3038;
inline constexpr int kCancel = 3039;
inline constexpr int kBrowse = 3040;
inline constexpr int kHelp = 3041;
inline constexpr int kRemoveCategory = 3042;
inline constexpr int kRemoteAssistance = 3056;
inline constexpr int kStopSearch = 8566;

} // namespace row

/// The text of a row in the language in force.
inline std::wstring text(int row)
{
    return textOf(row, textLanguage());
}

} // namespace corma
