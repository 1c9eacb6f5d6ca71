#pragma once

#include "host/dwg/fields.h"
#include "host/dwg/group_fields.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace corma::host::dwg {

/// The data that one application has put on a record.
struct ExtendedData
{
    Ref application;
    std::string bytes;
};

/// What every record has, whatever its type: its handle, its owner, extended data and, for an
/// entity, how it is drawn. The fields stand ahead of those of the type in each of the streams.
struct Frame
{
    bool isEntity = false;
    Ref self;
    std::vector<ExtendedData> extendedData;
    Ref owner;
    std::vector<Ref> reactors;
    bool hasNoDictionary = false; // from R2004 on; before it an empty handle says it
    Ref dictionary; // the extension dictionary
    bool hasBinaryData = false; // from R2013 on: more of it stands in another section

    // Of an entity.
    bool hasPicture = false; // what is drawn when its program is not there
    std::string picture;
    std::uint8_t space = 0; // 0 has an owner, 1 is in paper space, 2 in model space
    bool isByLayerLinetype = true; // up to R14
    bool hasNeighbours = false; // up to R2000: those before and behind have the next handles
    Ref previous;
    Ref next;
    Color color;
    double linetypeScale = 1.0;
    std::uint8_t linetypeKind = 0; // by layer, by block, continuous, one with a handle
    std::uint8_t plotStyleKind = 0;
    std::uint8_t materialKind = 0;
    std::uint8_t shadow = 0;
    bool hasFullStyle = false; // visual styles
    bool hasFaceStyle = false;
    bool hasEdgeStyle = false;
    std::int16_t invisible = 0;
    std::uint8_t lineWeight = kByLayerWeight;
    Ref layer;
    Ref linetype;
    Ref material;
    Ref plotStyle;
    Ref fullStyle;
    Ref faceStyle;
    Ref edgeStyle;

    static constexpr std::uint8_t kByLayerWeight = 29;

    /// From behind the record's type. Up to R14 what stands ahead of the size of the streams is a
    /// part of its own.
    template<class Io> void head(Io& io);
    template<class Io> void fields(Io& io);

    /// All that stands in the stream of handles.
    template<class Io> void handles(Io& io);

    /// `name` stands behind the type, if it is not empty.
    void toGroups(FieldsToGroups& io, std::string_view type, std::wstring_view name) const;
    void fromGroups(FieldsFromGroups& io);

    /// The groups behind those of the type.
    void extendedToGroups(FieldsToGroups& io, const FileForm& form) const;
    void extendedFromGroups(FieldsFromGroups& io, const FileForm& form);

    /// The records before and behind this one, up to R2000.
    [[nodiscard]] Handle previousHandle() const;
    [[nodiscard]] Handle nextHandle() const;
};

} // namespace corma::host::dwg
