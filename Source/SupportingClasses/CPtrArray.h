#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

/// A growing array of pointers. It owns its slots and never what the pointers point to. Not locked.
///
/// An index or count that makes no sense (a negative one, an index behind the end where an element is needed) is passed
/// over. A size beyond what 32 bits count throws std::length_error; both that and std::bad_alloc leave the elements as
/// they were.
class CPtrArray {
public:
    static constexpr int kUnchangedGrowth = -1;

    CPtrArray() = default;
    CPtrArray(const CPtrArray&) = delete;
    CPtrArray& operator=(const CPtrArray&) = delete;

    [[nodiscard]] int GetSize() const { return m_nSize; }
    /// Number of elements that fit before the slots have to move.
    [[nodiscard]] int GetCapacity() const { return m_nMaxSize; }

    /// The element, null for an index outside the array.
    [[nodiscard]] void* GetAt(int index) const { return IsInside(index) ? m_pData[Slot(index)] : nullptr; }
    /// Replaces an element.
    void SetAt(int index, void* element);
    /// Replaces an element; behind the end, the array first grows to hold it, with null elements between.
    void SetAtGrow(int index, void* element);

    /// New elements are null. `growBy` is the number of slots to add when they run out, 0 for a step chosen by the
    /// array (an eighth of its size, at least 4 and at most 1024). A size of 0 gives the slots back.
    void SetSize(int newSize, int growBy = kUnchangedGrowth);

    /// Puts `count` times `element` before the element at `index`; behind the end, null elements fill up to there.
    void InsertAt(int index, void* element, int count = 1);
    /// Puts the elements of `other`, which may be this array, before the element at `start`.
    void InsertAt(int start, const CPtrArray& other);

    /// Takes out `count` elements or as many as there are from `index` on. The slots stay.
    void RemoveAt(int index, int count = 1);

    /// Gives back the slots that no element uses.
    void FreeExtra();

    /// Takes over the elements of `other` in the place of its own.
    void Copy(const CPtrArray& other);
    /// Adds the elements of `other`, which may be this array. Returns the index of the first added one.
    int Append(const CPtrArray& other);

private:
    [[nodiscard]] static std::size_t Slot(int index) { return static_cast<std::size_t>(index); }
    [[nodiscard]] bool IsInside(int index) const { return index >= 0 && index < m_nSize; }
    [[nodiscard]] std::int32_t GrownCapacity(int newSize) const;
    void Reallocate(std::int32_t capacity);
    void SetNull(int from, int to);

    std::unique_ptr<void*[]> m_pData;
    std::int32_t m_nSize = 0;
    std::int32_t m_nMaxSize = 0;
    std::int32_t m_nGrowBy = 0;  ///< 0: the array chooses
};
