#include "SupportingClasses/CPtrArray.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <stdexcept>
#include <vector>

namespace {

constexpr int kLargest = std::numeric_limits<int>::max();

std::array<char, 10> g_objects;

void* Object(std::size_t number) {
    return &g_objects[number];
}

/// The elements as numbers of objects, -1 for null.
std::vector<int> Contents(const CPtrArray& array) {
    std::vector<int> contents;
    for (int i = 0; i < array.GetSize(); ++i) {
        const auto* element = static_cast<char*>(array.GetAt(i));
        contents.push_back(element == nullptr ? -1 : static_cast<int>(element - g_objects.data()));
    }
    return contents;
}

}  // namespace

TEST(CPtrArrayTest, ChangesMoveTheElementsAndThoseOutsideTheArrayChangeNothing) {
    using Array = CPtrArray;
    struct Case {
        void (*change)(Array& array);
        std::vector<int> expected;
        int capacity = 5;
    };
    const std::vector<int> unchanged = {1, 2, 3};
    const std::vector<Case> cases = {
        {[](Array& a) { a.SetAtGrow(4, Object(4)); }, {1, 2, 3, -1, 4}},
        {[](Array& a) { a.InsertAt(1, Object(7), 2); }, {1, 7, 7, 2, 3}},
        {[](Array& a) { a.InsertAt(4, Object(7), 2); }, {1, 2, 3, -1, 7, 7}, 9},
        {[](Array& a) { a.SetSize(3, 7), a.InsertAt(1, a), a.SetSize(6); }, {1, 1, 2, 3, 2, 3}, 12},
        {[](Array& a) { EXPECT_EQ(a.Append(a), 3); }, {1, 2, 3, 1, 2, 3}, 9},
        {[](Array& a) { a.Append({}), a.InsertAt(20, Array()); }, unchanged},
        {[](Array& a) { a.RemoveAt(1, kLargest), a.FreeExtra(); }, {1}, 1},
        {[](Array& a) { a.SetAtGrow(-1, Object(9)), a.InsertAt(-1, Object(9)), a.SetSize(-1, 5); }, unchanged},
        {[](Array& a) { a.SetAt(3, Object(9)), a.SetAt(-1, Object(9)), a.RemoveAt(3), a.RemoveAt(-1); }, unchanged},
        {[](Array& a) { a.InsertAt(0, Object(9), -1), a.RemoveAt(0, -1), a.RemoveAt(0, 0); }, unchanged},
        {[](Array& a) { EXPECT_THROW(a.InsertAt(1, Object(9), kLargest), std::length_error); }, unchanged}};
    for (std::size_t i = 0; i < cases.size(); ++i) {
        Array array;
        for (const std::size_t number : {1U, 2U, 3U}) {
            array.SetAtGrow(array.GetSize(), Object(number));
        }
        cases[i].change(array);
        EXPECT_EQ(Contents(array), cases[i].expected) << "case " << i;
        EXPECT_EQ(array.GetCapacity(), cases[i].capacity) << "case " << i;
    }
}
