#include "SupportingClasses/CPtrArray.h"

#include <algorithm>
#include <limits>
#include <stdexcept>
#include <vector>

namespace {

constexpr std::int32_t kLargestSize = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kSmallestStep = 4;
constexpr std::int32_t kLargestStep = 1024;

/// The sum of two sizes, neither of them negative.
int AddSizes(int left, int right) {
    if (left > kLargestSize - right) {
        throw std::length_error("CPtrArray: more elements than 32 bits count");
    }
    return left + right;
}

}  // namespace

void CPtrArray::SetAt(int index, void* element) {
    if (IsInside(index)) {
        m_pData[Slot(index)] = element;
    }
}

void CPtrArray::SetAtGrow(int index, void* element) {
    if (index >= m_nSize) {
        SetSize(AddSizes(index, 1));
    }
    SetAt(index, element);
}

void CPtrArray::SetSize(int newSize, int growBy) {
    if (newSize < 0) {
        return;
    }
    if (growBy != kUnchangedGrowth) {
        m_nGrowBy = growBy;
    }
    if (newSize == 0) {
        m_pData.reset();
        m_nSize = m_nMaxSize = 0;
        return;
    }
    if (m_pData == nullptr) {
        Reallocate(newSize);
    } else if (newSize > m_nMaxSize) {
        Reallocate(GrownCapacity(newSize));
    }
    SetNull(m_nSize, newSize);
    m_nSize = newSize;
}

void CPtrArray::InsertAt(int index, void* element, int count) {
    if (index < 0 || count <= 0) {
        return;
    }
    const int oldSize = m_nSize;
    SetSize(AddSizes(std::max(index, oldSize), count));
    if (index < oldSize) {
        void** slots = m_pData.get();
        std::move_backward(slots + index, slots + oldSize, slots + m_nSize);
    }
    std::fill_n(m_pData.get() + index, count, element);
}

void CPtrArray::InsertAt(int start, const CPtrArray& other) {
    if (start < 0 || other.m_nSize == 0) {
        return;
    }
    // Opening the gap moves the elements of `other` when it is this array.
    const std::vector<void*> inserted(other.m_pData.get(), other.m_pData.get() + other.m_nSize);
    InsertAt(start, nullptr, other.m_nSize);
    std::copy(inserted.begin(), inserted.end(), m_pData.get() + start);
}

void CPtrArray::RemoveAt(int index, int count) {
    if (!IsInside(index) || count <= 0) {
        return;
    }
    void** slots = m_pData.get();
    const int removed = std::min(count, m_nSize - index);
    std::move(slots + index + removed, slots + m_nSize, slots + index);
    m_nSize -= removed;
}

void CPtrArray::FreeExtra() {
    if (m_nSize == 0) {
        SetSize(0);
    } else if (m_nSize < m_nMaxSize) {
        Reallocate(m_nSize);
    }
}

void CPtrArray::Copy(const CPtrArray& other) {
    if (this != &other) {
        SetSize(other.m_nSize);
        std::copy_n(other.m_pData.get(), other.m_nSize, m_pData.get());
    }
}

int CPtrArray::Append(const CPtrArray& other) {
    const int oldSize = m_nSize;
    const int added = other.m_nSize;
    SetSize(AddSizes(oldSize, added));
    // When `other` is this array, its elements are still the first ones of the new slots.
    std::copy_n(other.m_pData.get(), added, m_pData.get() + oldSize);
    return oldSize;
}

std::int32_t CPtrArray::GrownCapacity(int newSize) const {
    const std::int32_t step = m_nGrowBy != 0 ? m_nGrowBy : std::clamp(m_nSize / 8, kSmallestStep, kLargestStep);
    const std::int64_t capacity = std::int64_t{m_nMaxSize} + step;
    return static_cast<std::int32_t>(std::clamp<std::int64_t>(capacity, newSize, kLargestSize));
}

void CPtrArray::Reallocate(std::int32_t capacity) {
    auto block = std::make_unique<void*[]>(Slot(capacity));
    std::copy_n(m_pData.get(), m_nSize, block.get());
    m_pData = std::move(block);
    m_nMaxSize = capacity;
}

void CPtrArray::SetNull(int from, int to) {
    if (from < to) {
        std::fill(m_pData.get() + from, m_pData.get() + to, nullptr);
    }
}
