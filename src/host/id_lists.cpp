// Lists of object ids, and what a cloning made of what.

#include "host/acdb_database.h"

#include <algorithm>

// --- arrays --------------------------------------------------------------------------------------

int AcDbObjectIdArray::append(AcDbObjectId id)
{
    m_ids.push_back(id);
    return length() - 1;
}

int AcDbObjectIdArray::find(AcDbObjectId id) const
{
    const auto found = std::find(m_ids.begin(), m_ids.end(), id);
    return found == m_ids.end() ? -1 : static_cast<int>(found - m_ids.begin());
}

bool AcDbObjectIdArray::remove(AcDbObjectId id)
{
    const auto found = std::find(m_ids.begin(), m_ids.end(), id);
    if (found == m_ids.end()) {
        return false;
    }
    m_ids.erase(found);
    return true;
}

AcDbObjectIdArray& AcDbObjectIdArray::removeAll()
{
    m_ids.clear();
    return *this;
}

AcDbObjectIdArray& AcDbObjectIdArray::setLogicalLength(int length)
{
    m_ids.resize(static_cast<std::size_t>(std::max(length, 0)));
    return *this;
}

// --- mappings ------------------------------------------------------------------------------------

bool AcDbIdMapping::assign(const AcDbIdPair& pair)
{
    if (pair.key().isNull()) {
        return false;
    }
    const auto [place, isNew] = m_index.try_emplace(pair.key().stub(), m_pairs.size());
    if (isNew) {
        m_pairs.push_back(pair);
    } else {
        m_pairs[place->second] = pair;
    }
    return true;
}

bool AcDbIdMapping::compute(AcDbIdPair& pair) const
{
    const auto found = m_index.find(pair.key().stub());
    if (found == m_index.end()) {
        return false;
    }
    pair = m_pairs[found->second];
    return true;
}

bool AcDbIdMappingIter::getMap(AcDbIdPair& pair) const
{
    if (done()) {
        return false;
    }
    pair = m_mapping.m_pairs[m_at];
    return true;
}
