#include "host/attribute_sync.h"

#include "host/host.h"
#include "host/model/Store.h"
#include "host/new_records.h"

#include <algorithm>
#include <deque>
#include <memory>
#include <utility>
#include <vector>

namespace corma::host {

namespace {

constexpr int kTag = 2;

struct KnownDefinition
{
    Opened<AcDbAttributeDefinition> object;
    std::wstring tag; // folded
};

using KnownDefinitions = std::deque<KnownDefinition>;

/// An attribute of a reference and the definition that it belongs to.
struct Attribute
{
    Opened<AcDbAttribute> object; // null for one that is missing
    const KnownDefinition* definition = nullptr; // null for one that has to go
};

struct PlacedReference
{
    AcDbStub* stub;
    AcGeMatrix3d transform;
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
        for (AcDbStub* const stub : m_store.referencesOf(m_block.name)) {
            if (const Acad::ErrorStatus status = check(*stub); status != Acad::eOk) {
                return status;
            }
        }
        for (const PlacedReference& reference : m_references) {
            bring(reference);
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
            KnownDefinition definition {.object = Opened<AcDbAttributeDefinition>(AcDbObjectId(at)),
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
    // They are open for write: opening one is most of what it costs.
    [[nodiscard]] std::vector<Attribute> match(const AcDbStub& reference) const
    {
        std::vector<Attribute> present;
        std::vector<std::wstring> tags;
        for (AcDbStub* at = Store::firstSubEntity(reference); at != nullptr;
             at = Store::subEntityBehind(*at)) {
            if (!at->isErased && at->type == RecordType::attribute) {
                Opened<AcDbAttribute> object(AcDbObjectId(at), AcDb::kForWrite);
                tags.push_back(tagOf(object->groups(), L"AcDbAttribute"));
                present.push_back({.object = std::move(object), .definition = nullptr});
            }
        }
        std::vector<Attribute> matched;
        for (const KnownDefinition& definition : m_definitions) {
            Attribute wanted {.object = {}, .definition = &definition};
            for (std::size_t i = 0; i < present.size() && !wanted.object; ++i) {
                if (present[i].object && tags[i] == definition.tag) {
                    wanted.object = std::move(present[i].object);
                }
            }
            matched.push_back(std::move(wanted));
        }
        for (Attribute& left : present) {
            if (left.object) {
                matched.push_back(std::move(left));
            }
        }
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
        m_references.push_back({&reference, opened->blockTransform()});
        if (m_definitions.empty()) {
            return Acad::eOk;
        }
        // Whether it can be done depends on the reference alone, so one definition tells it of all.
        AcDbAttribute tried;
        return tried.setAttributeFromBlock(m_definitions.front().object.get(),
                                           m_references.back().transform);
    }

    void bring(const PlacedReference& reference)
    {
        std::vector<AcDbStub*> order;
        for (const Attribute& attribute : match(*reference.stub)) {
            if (attribute.definition == nullptr) {
                attribute.object->erase();
            } else if (!attribute.object) {
                if (AcDbStub* const added = add(reference, *attribute.definition)) {
                    order.push_back(added);
                }
            } else {
                keep(*attribute.object, *attribute.definition, reference.transform);
                order.push_back(attribute.object->stub());
            }
        }
        m_store.orderSubEntities(*reference.stub, order);
    }

    static AcDbStub* add(const PlacedReference& reference, const KnownDefinition& definition)
    {
        const Opened<AcDbBlockReference> opened(AcDbObjectId(reference.stub), AcDb::kForWrite);
        auto attribute = std::make_unique<AcDbAttribute>();
        attribute->setAttributeFromBlock(definition.object.get(), reference.transform);
        AcDbObjectId id;
        if (opened->appendAttribute(id, attribute.get()) != Acad::eOk) {
            return nullptr;
        }
        attribute.release()->close();
        return id.stub();
    }

    // What is as it should be stays untouched, so that a second run changes nothing.
    static void keep(AcDbAttribute& attribute, const KnownDefinition& definition,
                     const AcGeMatrix3d& transform)
    {
        const Groups& former = attribute.groups();
        AcDbAttribute wanted(WithoutGroups {});
        wanted.changeGroups() = former;
        wanted.setAttributeFromBlock(definition.object.get(), transform);
        wanted.takeText(attribute);
        fitToVersion(wanted.changeGroups(), attribute.stub()->store->version());
        if (!isSameText(wanted.groups(), former)) {
            attribute.changeGroups() = std::move(wanted.changeGroups());
        }
    }

    Store& m_store;
    const Block& m_block;
    KnownDefinitions m_definitions;
    std::vector<PlacedReference> m_references;
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
