#pragma once

#include "host/dwg/bits.h"
#include "host/model/Group.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corma::host::dwg {

/// What a file of R13 to R2000 repeats of its head, for programs that have to recover it: where
/// the sections stand, and the handles that all else hangs on.
class SecondHead
{
public:
    /// Where it stands in a file, from its first sentinel to the end of the last; nothing when
    /// there is none that can be read. `sections` are the beginnings and sizes by number, as the
    /// head has them.
    struct Section
    {
        std::size_t begin = 0;
        std::size_t size = 0;
    };

    static std::optional<SecondHead> find(std::string_view file,
                                          const std::vector<Section>& sections);

    [[nodiscard]] std::size_t begin() const { return m_begin; }

    [[nodiscard]] std::size_t end() const { return m_end; }

    /// The same for a file in which it begins at `begin`.
    [[nodiscard]] std::string moved(std::size_t begin, const std::vector<Section>& sections,
                                    Handle seed) const;

private:
    struct Root
    {
        unsigned number = 0;
        std::string handle; // the highest byte first
    };

    bool read(std::string_view inner, const std::vector<Section>& sections);

    std::size_t m_begin = 0;
    std::size_t m_end = 0;
    BitWriter m_prelude; // between the place of the head and the list of sections
    std::vector<Section> m_sections; // those that are listed here, where they differ from the head
    std::vector<bool> m_isOwn;
    std::vector<Root> m_roots;
    std::string m_rest; // behind the checksum
};

} // namespace corma::host::dwg
