#include "host/dwg/Container.h"
#include "host/dwg/R2007File.h"
#include "host/dwg/release.h"
#include "host/dwg/sections.h"

namespace corma::host::dwg {

namespace {

class R2007Container : public Container
{
public:
    ReadResult open(platform::FileContent content, const std::wstring& path)
    {
        m_content = std::move(content);
        R2007File file(m_content.view());
        ReadResult result;
        const auto trouble = [&] {
            result = damage(path, file.trouble().at, file.trouble().what);
            return false;
        };
        if (!file.open()) {
            trouble();
            return result;
        }
        if (isSecret(m_content.view())) {
            return secret(path);
        }
        const bool isRead = eachPart(m_sections, [&](std::string_view name, std::string& target) {
            const R2007Section* const section = file.find(name);
            if (section == nullptr) {
                result = missing(path, name);
                return false;
            }
            auto bytes = file.read(*section);
            if (!bytes) {
                return trouble();
            }
            target = std::move(*bytes);
            return true;
        });
        if (isRead) {
            m_parts = partsOfHead(m_content.view());
            setParts(m_sections, m_parts);
        }
        return result;
    }

    [[nodiscard]] const Parts& parts() const override { return m_parts; }

    [[nodiscard]] std::string_view bytes() const override { return m_content.view(); }

    [[nodiscard]] Acad::ErrorStatus canWrite() const override { return Acad::eNotImplementedYet; }

    [[nodiscard]] bool write(const NewParts& /*parts*/, const TakeBytes& /*take*/) const override
    {
        return false;
    }

private:
    platform::FileContent m_content;
    PartSections m_sections;
    Parts m_parts;
};

} // namespace

ContainerOrTrouble readR2007Container(platform::FileContent content, const std::wstring& path)
{
    auto container = std::make_unique<R2007Container>();
    ReadResult result = container->open(std::move(content), path);
    if (result.status != Acad::eOk) {
        return result;
    }
    return container;
}

} // namespace corma::host::dwg
