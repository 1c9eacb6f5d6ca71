#pragma once

#include "host/dxf/Form.h"
#include "host/model/DrawingFormat.h"
#include "platform/platform.h"

#include <functional>

namespace corma::host::dxf {

/// A drawing that stands in a DXF file, in text or binary.
class DxfFormat : public DrawingFormat
{
public:
    explicit DxfFormat(platform::FileContent content);

    using DrawingFormat::decode;
    void decode(const AcDbStub& stub, Groups& groups) const override;
    [[nodiscard]] WriteResult write(const Store& store, const std::wstring& path) const override;

    /// Hands out what a drawing is written as, piece by piece, until `take` returns false; a piece
    /// is good until it returns. False when that happened.
    bool eachPiece(const Store& store, const std::function<bool(std::string_view)>& take) const;

    [[nodiscard]] std::string_view bytes() const { return m_content.view(); }

    [[nodiscard]] const Form& form() const { return m_form; }

    /// Learns from the header how characters stand in the file; without one they are those of
    /// Windows-1252.
    void learnCharacters(const AcDbStub& header);

private:
    [[nodiscard]] std::string_view bytesOf(const AcDbStub& stub) const;

    platform::FileContent m_content;
    Form m_form;
};

/// True for the begin of a text or binary DXF file.
bool isDxf(std::string_view bytes);

/// The size of what stands ahead of the first group: a sentinel, a byte order mark, empty lines.
std::size_t prefaceOf(std::string_view bytes);

} // namespace corma::host::dxf
