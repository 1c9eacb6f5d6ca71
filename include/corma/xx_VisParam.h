#pragma once

#include <corma/host.h>

#include <cstdint>

/// How something is drawn, from a value "layer,colour,linetype,lineweight". Ids are those of the
/// working drawing, null for a name that it does not have.
struct xx_VisParam
{
    /// Left to the objects of add-ons; nothing here reads or writes it.
    std::int64_t reserved = 0;

    AcDbObjectId linetypeId; // in the linetype table
    AcDbObjectId layerId; // in the layer table
    std::int32_t colorIndex = 0; // 0 by block, 256 by layer, else the number
    std::int32_t lineWeight = 0; // -3 default, -2 by block, -1 by layer, else in 1/100 mm
};

/// The same for a text: "...,style,height,widthFactor,obliqueAngle".
struct xx_TextInfo : xx_VisParam
{
    AcDbObjectId textStyleId; // left alone when the drawing does not have the style
    double height = 0.0; // drawing units
    double widthFactor = 0.0;
    double obliqueAngle = 0.0; // as written, degrees
};

/// The same for a hatch: "...,pattern,angle,scale".
struct xx_VisHatchInfo : xx_VisParam
{
    static constexpr int kPatternSize = 500; // characters, as many as a whole value can have

    double scale = 0.0;
    double angle = 0.0; // as written, degrees
    wchar_t patternName[kPatternSize] = {};
};

/// Makes sure that a drawing, the working one for null, has a layer: one that is erased comes back,
/// one that is not there is made, with the linetype CONTINUOUS. RTNORM when the layer is there;
/// *created, if given, becomes true for one that was made. RTCAN for an empty name or when the
/// layer cannot come back; RTERROR without a drawing and when the layer cannot be made.
CORMA_EXPORT int xx_make_layer(const wchar_t* name, AcDbDatabase* database = nullptr,
                               bool* created = nullptr);
