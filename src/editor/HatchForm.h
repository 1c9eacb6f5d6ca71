#pragma once

#include "editor/VisForm.h"
#include "host/hatch_patterns.h"

namespace corma {

/// The dialog for a hatch without its widgets: a visualisation, and a pattern of the pattern file
/// with its angle and scale. The file is acadiso.pat or, in a drawing without metric measurement,
/// acad.pat: the one that xx_findfile() finds, else the host's own.
class HatchForm : public VisForm
{
public:
    /// As those of VisForm.
    explicit HatchForm(const Desk& desk);
    HatchForm(const Desk& desk, const std::wstring& value, std::size_t mostCharacters);

    /// The names in the file; none when it cannot be read.
    [[nodiscard]] const std::vector<std::wstring>& patterns() const { return m_pattern.names(); }

    /// Nothing for a pattern that the file does not have.
    [[nodiscard]] NameChoice::Index chosen() const { return m_pattern.chosen(); }

    void choosePattern(std::size_t index);

    [[nodiscard]] static std::vector<std::wstring> angles(); ///< to choose from: degrees
    [[nodiscard]] static std::vector<std::wstring> scales(); ///< the same

    [[nodiscard]] const std::wstring& angle() const { return m_angle; }

    void setAngle(std::wstring text) { m_angle = std::move(text); }

    [[nodiscard]] const std::wstring& scale() const { return m_scale; }

    void setScale(std::wstring text) { m_scale = std::move(text); }

    // --- the preview -----------------------------------------------------------------------------

    /// How the pattern is fitted in: 0 for GRAVEL, whose stones repeat over a long way, else 3.
    /// Neither this nor previewSource() changes while nothing is chosen.
    [[nodiscard]] short previewKind() const { return m_previewKind; }

    /// The path of the file with the name in parentheses behind it.
    [[nodiscard]] const std::wstring& previewSource() const { return m_previewSource; }

    struct Preview
    {
        host::HatchPattern pattern; // at its angle and scale
        double side = 1.0; // of the square to show, in drawing units
    };

    /// Nothing when there is nothing to show. A scale that is no number or not above 0 counts as 1.
    /// The square stays as it is for the scales of the list, so that a larger one looks larger; for
    /// others it follows, so that some lines, and not too many, are in it.
    [[nodiscard]] std::optional<Preview> preview() const;

protected:
    [[nodiscard]] std::vector<std::wstring> fields() const override;

private:
    void takeOwn();
    void readPatterns();
    void updatePreview();

    std::wstring m_path; // of the pattern file
    std::vector<host::HatchPattern> m_lines; // of the file
    NameChoice m_pattern;
    std::wstring m_angle;
    std::wstring m_scale;
    short m_previewKind = 3;
    std::wstring m_previewSource;
};

} // namespace corma
