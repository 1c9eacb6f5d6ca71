#include "foundation/text_rewrite.h"

#include <utility>
#include <vector>

namespace corma {

TextRewrite::TextRewrite(std::wstring_view path, std::wstring_view temporary, Missing missing)
    : m_file(path, temporary, missing)
    , m_decoded(m_file.content())
{
    if (m_file.error().isOne()) {
        fail({RewriteFailure::Step::open, m_file.error()});
    } else if (!m_decoded.defect().empty()) {
        fail({RewriteFailure::Step::decode, {}, m_decoded.defect()});
    }
}

bool TextRewrite::fail(RewriteFailure failure)
{
    m_failure = std::move(failure);
    return false;
}

bool TextRewrite::write(std::span<const std::string_view> pieces)
{
    if (m_failure.isOne()) {
        return false;
    }
    const auto encoded = m_decoded.encoded(pieces);
    if (!encoded.defect.empty()) {
        return fail({RewriteFailure::Step::encode, {}, encoded.defect});
    }
    std::vector<std::string_view> content;
    if (encoded.isAsGiven) {
        content.push_back(m_decoded.mark());
        content.insert(content.end(), pieces.begin(), pieces.end());
    } else {
        content.push_back(encoded.bytes);
    }
    return m_file.write(content) || fail({RewriteFailure::Step::write, m_file.error()});
}

bool TextRewrite::keepAs(std::wstring_view backup)
{
    if (m_failure.isOne()) {
        return false;
    }
    return m_file.keepAs(backup) || fail({RewriteFailure::Step::keep, m_file.error()});
}

bool TextRewrite::commit()
{
    if (m_failure.isOne()) {
        return false;
    }
    return m_file.commit() || fail({RewriteFailure::Step::replace, m_file.error()});
}

} // namespace corma
