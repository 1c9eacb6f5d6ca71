#include "foundation/messages.h"
#include "foundation/wide_text.h"
#include <corma/xx_Var.h>

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <memory>
#include <new>
#include <utility>

namespace {

constexpr std::size_t kDoublingLimit = 65536; // bytes of slots from which they no longer double
constexpr std::int32_t kLargeStep = 8192; // slots

constexpr const wchar_t* kNotFoundFormat = L"\nGeen %s gevonden";

/// Bytes that a number of slots take.
std::size_t slotBytes(std::int32_t slots)
{
    return static_cast<std::size_t>(slots) * sizeof(void*);
}

std::int32_t growthStep(std::int32_t physicalLength, std::int32_t growLength)
{
    const bool small = slotBytes(physicalLength) < kDoublingLimit;
    return std::max(small ? physicalLength : kLargeStep, growLength);
}

void showNotFound(const wchar_t* name)
{
    corma::showUserMessage(corma::formatted(kNotFoundFormat, name != nullptr ? name : L""));
}

} // namespace

xx_VarArray::xx_VarArray(const xx_VarArray& other)
{
    *this = other;
}

xx_VarArray& xx_VarArray::operator=(const xx_VarArray& other)
{
    if (this == &other) {
        return *this;
    }
    clear();
    for (int i = 0; i < other.length(); ++i) {
        append(new (std::nothrow) xx_Var(*other[i]));
    }
    return *this;
}

xx_VarArray::~xx_VarArray()
{
    clear();
    std::free(m_slots);
}

void xx_VarArray::clear()
{
    while (m_logicalLength > 0) {
        delete m_slots[--m_logicalLength];
    }
}

xx_Var* xx_VarArray::find(const wchar_t* name, bool report) const
{
    xx_Var* const found = at(indexOf(name));
    if (found == nullptr && report) {
        showNotFound(name);
    }
    return found;
}

int xx_VarArray::remove(const wchar_t* name)
{
    const std::unique_ptr<xx_Var> removed(detach(indexOf(name)));
    return removed ? RTNORM : RTCAN;
}

void xx_VarArray::setCopy(const xx_Var& record)
{
    if (xx_Var* const found = find(record.name(), false)) {
        *found = record;
        return;
    }
    append(new (std::nothrow) xx_Var(record));
}

void xx_VarArray::setCopy(xx_Var&& record)
{
    if (xx_Var* const found = find(record.name(), false)) {
        *found = std::move(record);
        return;
    }
    append(new (std::nothrow) xx_Var(std::move(record)));
}

void xx_VarArray::setOwned(xx_Var* record)
{
    if (record == nullptr) {
        return;
    }
    xx_Var* const former = detach(indexOf(record->name()));
    if (former != record) { // an element of this array itself only moves to the end
        delete former;
    }
    append(record);
}

void xx_VarArray::append(xx_Var* record)
{
    insertAt(m_logicalLength, record);
}

void xx_VarArray::insertAt(int index, xx_Var* record)
{
    std::unique_ptr<xx_Var> owned(record);
    if (!owned || !makeRoom()) {
        return;
    }
    xx_Var** const end = m_slots + m_logicalLength;
    xx_Var** const place = isIndex(index) ? m_slots + index : end;
    std::move_backward(place, end, end + 1);
    *place = owned.release();
    ++m_logicalLength;
}

xx_Var* xx_VarArray::at(int index) const
{
    return isIndex(index) ? m_slots[index] : nullptr;
}

/// Index of the first element of that name, -1 when there is none.
int xx_VarArray::indexOf(const wchar_t* name) const
{
    for (int i = 0; i < m_logicalLength; ++i) {
        if (corma::compareIgnoringCase(m_slots[i]->name(), name) == 0) {
            return i;
        }
    }
    return -1;
}

/// Takes the element at an index out of the array and gives it to the caller; null for an index
/// that is no element's.
xx_Var* xx_VarArray::detach(int index)
{
    xx_Var* const element = at(index);
    if (element != nullptr) {
        std::move(m_slots + index + 1, m_slots + m_logicalLength, m_slots + index);
        --m_logicalLength;
    }
    return element;
}

/// True when there is a slot for one more element, which is made when there is none.
bool xx_VarArray::makeRoom()
{
    if (m_logicalLength < m_physicalLength) {
        return true;
    }
    const std::int32_t step = growthStep(m_physicalLength, m_growLength);
    if (step > std::numeric_limits<std::int32_t>::max() - m_physicalLength) {
        return false;
    }
    const std::int32_t grownLength = m_physicalLength + step;
    void* const grown = std::realloc(m_slots, slotBytes(grownLength));
    if (grown == nullptr) {
        return false;
    }
    m_slots = static_cast<xx_Var**>(grown);
    m_physicalLength = grownLength;
    return true;
}
