#pragma once

#include "host/model/Store.h"

#include <string>
#include <unordered_map>

namespace corma::host {

/// What the dictionaries of a drawing hold, as long as nothing in them changes.
class DictionaryIndex
{
public:
    explicit DictionaryIndex(const Store& store)
        : m_store(store)
    {
    }

    /// Null when the name is not there.
    AcDbStub* at(const AcDbStub& dictionary, std::wstring_view name);

    /// The name of an object in a dictionary; empty when it has none there.
    std::wstring nameOf(const AcDbStub& dictionary, const AcDbStub& object);

private:
    struct Content
    {
        std::unordered_map<std::wstring, AcDbStub*> objects; // by folded name
        std::unordered_map<const AcDbStub*, std::wstring> names;
    };

    const Content& contentOf(const AcDbStub& dictionary);

    const Store& m_store;
    std::unordered_map<const AcDbStub*, Content> m_contents;
};

} // namespace corma::host
