#pragma once

#include "host/dwg/Container.h"
#include "host/dwg/SecondHead.h"

#include <array>
#include <cstddef>
#include <optional>
#include <vector>

namespace corma::host::dwg {

// The list in the head that says where sections are.
inline constexpr std::size_t kLocatorsAt = 0x19;
inline constexpr std::size_t kLocatorSize = 9;

/// A file of R13 to R2000: its parts stand one behind the other, and a list in its head says where
/// some of them begin. What stands between them is kept as it is, but for what is left of objects
/// that no longer are.
class FlatContainer : public Container
{
public:
    explicit FlatContainer(platform::FileContent content);

    /// Nothing when the parts are found, else what is wrong.
    std::optional<ReadResult> open(const std::wstring& path);

    [[nodiscard]] const Parts& parts() const override { return m_parts; }

    [[nodiscard]] std::string_view bytes() const override { return m_content.view(); }

    [[nodiscard]] Acad::ErrorStatus canWrite() const override;
    [[nodiscard]] bool write(const NewParts& parts, const TakeBytes& take) const override;

private:
    /// Some neighbouring bytes of the file.
    struct Span
    {
        std::size_t begin = 0;
        std::size_t end = 0;
    };

    /// A part of the file that is written at its place among the others.
    struct Piece
    {
        enum class Kind : unsigned char
        {
            head,
            auxiliary, // dates and counters that the head tells the place of
            picture,
            header,
            classes,
            objects,
            map,
            summary, // counts the objects
            secondHead,
            other
        };

        Kind kind;
        Span old;
        std::size_t newSize = 0;
        std::size_t begin = 0; // in the new file
        bool isNew = false; // has bytes of its own
        std::string bytes {};

        Piece(Kind pieceKind, Span span)
            : kind(pieceKind)
            , old(span)
            , newSize(span.end - span.begin)
        {
        }

        void replace(std::string newBytes)
        {
            bytes = std::move(newBytes);
            newSize = bytes.size();
            isNew = true;
        }
    };

    struct Locator
    {
        unsigned number = 0;
        std::size_t at = 0; // where its record stands in the head
        std::size_t begin = 0;
        std::size_t size = 0;
    };

    bool readLocators();
    [[nodiscard]] const Locator* locatorOf(unsigned number) const;
    [[nodiscard]] std::optional<Span> spanOfVariables(unsigned number) const;
    [[nodiscard]] Span spanOfPicture() const;
    [[nodiscard]] std::optional<Span> spanOfObjects() const;
    void addObjects(std::vector<Piece>& known) const;
    [[nodiscard]] std::vector<Piece> oldPieces() const;
    [[nodiscard]] std::vector<Piece> newPieces(const NewParts& parts) const;
    [[nodiscard]] static std::string newMap(const NewParts& parts, std::size_t begin);
    [[nodiscard]] static std::size_t newPlace(std::size_t former, const std::vector<Piece>& pieces);
    [[nodiscard]] std::vector<SecondHead::Section>
    newSections(const std::vector<Piece>& pieces) const;
    void fitSecondHead(std::vector<Piece>& pieces, Handle seed) const;
    void patchHead(Piece& head, const std::vector<Piece>& pieces) const;
    void patchPicture(Piece& picture) const;
    void patchSummary(Piece& summary, const std::vector<Piece>& pieces, std::size_t count) const;
    void patchAuxiliary(Piece& auxiliary, Handle seed) const;
    void patch(std::vector<Piece>& pieces, const NewParts& parts) const;
    [[nodiscard]] std::string_view slice(Span span) const;

    platform::FileContent m_content;
    Parts m_parts;
    std::vector<Locator> m_locators;
    std::size_t m_headEnd = 0;
    std::optional<SecondHead> m_secondHead;
};

} // namespace corma::host::dwg
