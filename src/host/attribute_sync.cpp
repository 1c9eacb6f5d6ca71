#include "host/attribute_sync.h"

#include "host/host.h"
#include "host/model/Store.h"
#include "host/new_records.h"

#include <algorithm>
#include <deque>
#include <memory>
#include <vector>

namespace corma::host {

namespace {

constexpr int kTag = 2;

struct Definition
{
    Opened<AcDbAttributeDefinition> object;
    std::wstring tag; // folded
};

using Definitions = std::deque<Definition>;

/// An attribute of a reference and the definition that it belongs to.
struct Attribute
{
    AcDbStub* stub = nullptr; // null for one that is missing
    const Definition* definition = nullptr; // null for one that has to go
};

std::wstring tagOf(const Groups& groups, const wchar_t* marker)
{
    return foldedName(groups.text(kTag, groups.subclass(marker)));
}

bool isSameText(const Groups& left, const Groups& right)
{
    return left.size() == right.size()
        && std::equal(left.begin(), left.end(), right.begin(), [](const Group& a, const Group& b) {
               return a.code == b.code && a.value == b.value;
           });
}

bool isOpen(const AcDbStub& stub)
{
    return stub.resident != nullptr && stub.resident->isReadEnabled();
}

class Sync
{
public:
    Sync(Store& store, const Block& block)
        : m_store(store)
        , m_block(block)
    {
    }

    Acad::ErrorStatus run()
    {
        if (const Acad::ErrorStatus status = readDefinitions(); status != Acad::eOk) {
            return status;
        }
        m_references = m_store.referencesOf(m_block.name);
        for (AcDbStub* const reference : m_references) {
            if (const Acad::ErrorStatus status = check(*reference); status != Acad::eOk) {
                return status;
            }
        }
        for (AcDbStub* const reference : m_references) {
            bring(*reference);
        }
        return Acad::eOk;
    }

private:
    Acad::ErrorStatus readDefinitions()
    {
        for (AcDbStub* at = m_store.firstEntity(m_block); at != nullptr;
             at = m_store.entityBehind(m_block, *at)) {
            if (at->isErased || at->type != RecordType::attributeDefinition) {
                continue;
            }
            Definition definition {.object = Opened<AcDbAttributeDefinition>(AcDbObjectId(at)),
                                   .tag = {}};
            if (!definition.object) {
                return definition.object.status();
            }
            if (!definition.object->isConstant()) {
                definition.tag = tagOf(definition.object->groups(), L"AcDbAttributeDefinition");
                m_definitions.push_back(std::move(definition));
            }
        }
        return Acad::eOk;
    }

    // First those that stay or are missing, in the order of the definition, then those that go. Of
    // several with one tag the first belongs to the first definition, and so on.
    [[nodiscard]] std::vector<Attribute> match(const AcDbStub& reference) const
    {
        std::vector<Attribute> present;
        std::vector<std::wstring> tags;
        for (AcDbStub* at = Store::firstSubEntity(reference); at != nullptr;
             at = Store::subEntityBehind(*at)) {
            if (!at->isErased && at->type == RecordType::attribute) {
                present.push_back({at, nullptr});
                tags.push_back(tagOf(m_store.groupsOf(*at), L"AcDbAttribute"));
            }
        }
        std::vector<Attribute> matched;
        for (const Definition& definition : m_definitions) {
            Attribute wanted {nullptr, &definition};
            for (std::size_t i = 0; i < present.size() && wanted.stub == nullptr; ++i) {
                if (present[i].stub != nullptr && tags[i] == definition.tag) {
                    wanted.stub = std::exchange(present[i].stub, nullptr);
                }
            }
            matched.push_back(wanted);
        }
        std::copy_if(present.begin(), present.end(), std::back_inserter(matched),
                     [](const Attribute& attribute) { return attribute.stub != nullptr; });
        return matched;
    }

    Acad::ErrorStatus check(AcDbStub& reference)
    {
        for (const AcDbStub* at = Store::firstSubEntity(reference); at != nullptr;
             at = Store::subEntityBehind(*at)) {
            if (isOpen(*at)) {
                return Acad::eWasOpenForRead;
            }
        }
        const Opened<AcDbBlockReference> opened(AcDbObjectId(&reference), AcDb::kForWrite);
        if (!opened) {
            return opened.status();
        }
        if (m_definitions.empty()) {
            return Acad::eOk;
        }
        // Whether it can be done depends on the reference alone, so one definition tells it of all.
        AcDbAttribute tried;
        return tried.setAttributeFromBlock(m_definitions.front().object.get(),
                                           opened->blockTransform());
    }

    void bring(AcDbStub& reference)
    {
        const Opened<AcDbBlockReference> opened(AcDbObjectId(&reference), AcDb::kForWrite);
        const AcGeMatrix3d transform = opened->blockTransform();
        std::vector<AcDbStub*> order;
        for (const Attribute& attribute : match(reference)) {
            if (attribute.definition == nullptr) {
                remove(*attribute.stub);
            } else if (attribute.stub == nullptr) {
                if (AcDbStub* const added = add(*opened, *attribute.definition, transform)) {
                    order.push_back(added);
                }
            } else {
                keep(*attribute.stub, *attribute.definition, transform);
                order.push_back(attribute.stub);
            }
        }
        m_store.orderSubEntities(reference, order);
    }

    static void remove(AcDbStub& attribute)
    {
        const Opened<AcDbAttribute> opened(AcDbObjectId(&attribute), AcDb::kForWrite);
        opened->erase();
    }

    static AcDbStub* add(AcDbBlockReference& reference, const Definition& definition,
                         const AcGeMatrix3d& transform)
    {
        auto attribute = std::make_unique<AcDbAttribute>();
        attribute->setAttributeFromBlock(definition.object.get(), transform);
        AcDbObjectId id;
        if (reference.appendAttribute(id, attribute.get()) != Acad::eOk) {
            return nullptr;
        }
        attribute.release()->close();
        return id.stub();
    }

    // What is as it should be stays untouched, so that a second run changes nothing.
    static void keep(AcDbStub& attribute, const Definition& definition,
                     const AcGeMatrix3d& transform)
    {
        const Opened<AcDbAttribute> opened(AcDbObjectId(&attribute), AcDb::kForWrite);
        const Groups& former = opened->groups();
        AcDbAttribute wanted(WithoutGroups {});
        wanted.changeGroups() = former;
        wanted.setAttributeFromBlock(definition.object.get(), transform);
        wanted.takeText(*opened);
        fitToVersion(wanted.changeGroups(), attribute.store->version());
        if (!isSameText(wanted.groups(), former)) {
            opened->changeGroups() = wanted.groups();
        }
    }

    Store& m_store;
    const Block& m_block;
    Definitions m_definitions;
    std::vector<AcDbStub*> m_references;
};

} // namespace

int syncAttributes(AcDbDatabase* database, const std::wstring& blockName)
{
    if (database == nullptr) {
        acutPrintf(L"\nATTSYNC: there is no drawing.");
        return RTERROR;
    }
    Store& store = database->store();
    const Block* const block = store.findBlock(blockName);
    if (block == nullptr) {
        acutPrintf(L"\nATTSYNC: the drawing has no block \"%s\".", blockName.c_str());
        return RTERROR;
    }
    const Acad::ErrorStatus status = Sync(store, *block).run();
    if (status != Acad::eOk) {
        acutPrintf(L"\nATTSYNC: the references of \"%s\" cannot be changed (%s).",
                   blockName.c_str(), acadErrorStatusText(status));
        return RTERROR;
    }
    return RTNORM;
}

} // namespace corma::host
