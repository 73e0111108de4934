#include "SupportingClasses/CPtrArray.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <stdexcept>
#include <vector>

using testing::ElementsAre;

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

void Fill(CPtrArray& array, std::initializer_list<std::size_t> numbers) {
    array.SetSize(0);
    for (const std::size_t number : numbers) {
        array.SetAtGrow(array.GetSize(), Object(number));
    }
}

}  // namespace

TEST(CPtrArrayTest, GrowsByTheChosenStepOrAnEighthOfItsSize) {
    struct Case {
        int size;
        int growBy;
        int newSize;
        int capacity;
    };
    for (const Case& c : {Case{1, 0, 2, 5},
                          {80, 0, 81, 90},
                          {16'000, 0, 16'001, 17'024},
                          {31, 0, 32, 35},
                          {40, 0, 41, 45},
                          {8191, 0, 8192, 9214},
                          {8192, 0, 8193, 9216},
                          {1, 0, 100, 100},
                          {10, 3, 11, 13},
                          {10, 3, 20, 20},
                          {10, 1, 11, 11},
                          {10, 5000, 11, 5010},
                          {10, -7, 11, 11}}) {
        CPtrArray array;
        array.SetSize(c.size, c.growBy);
        EXPECT_EQ(array.GetCapacity(), c.size) << "the first block has no room to spare";
        array.SetSize(c.newSize);
        EXPECT_EQ(array.GetSize(), c.newSize);
        EXPECT_EQ(array.GetCapacity(), c.capacity) << c.size << " growing by " << c.growBy << " to " << c.newSize;
    }
}

TEST(CPtrArrayTest, TheStepFollowsTheSizeAndCountsFromTheCapacity) {
    CPtrArray array;
    array.SetSize(80);
    array.SetSize(10);
    array.SetSize(81);
    EXPECT_EQ(array.GetCapacity(), 84);
}

TEST(CPtrArrayTest, SetAtGrowExtendsAnEmptyArrayOneByOne) {
    CPtrArray array;
    array.SetAtGrow(0, Object(1));
    EXPECT_EQ(array.GetSize(), 1);
    EXPECT_EQ(array.GetCapacity(), 1);
    array.SetAtGrow(1, Object(2));
    EXPECT_EQ(array.GetSize(), 2);
    EXPECT_EQ(array.GetCapacity(), 5);
    array.SetAtGrow(0, Object(3));
    array.SetAtGrow(4, Object(4));
    EXPECT_THAT(Contents(array), ElementsAre(3, 2, -1, -1, 4));
}

TEST(CPtrArrayTest, SlotsThatComeBackIntoUseAreNull) {
    CPtrArray array;
    Fill(array, {1, 2, 3});
    array.SetSize(1);
    array.SetSize(3);
    EXPECT_THAT(Contents(array), ElementsAre(1, -1, -1));
    array.SetSize(0, 2);
    EXPECT_EQ(array.GetCapacity(), 0);
    array.SetSize(1);
    array.SetSize(2);
    EXPECT_EQ(array.GetCapacity(), 3) << "the growth step outlives the block";
}

TEST(CPtrArrayTest, IndexesOutsideTheArrayHaveNoElementAndChangeNothing) {
    CPtrArray array;
    Fill(array, {1, 2});
    for (const int index : {-1, 2, 5, kLargest, std::numeric_limits<int>::min()}) {
        EXPECT_EQ(array.GetAt(index), nullptr) << index;
        array.SetAt(index, Object(9));
        array.RemoveAt(index);
        EXPECT_THAT(Contents(array), ElementsAre(1, 2)) << index;
    }
    array.SetAtGrow(-1, Object(9));
    array.InsertAt(-1, Object(9));
    array.InsertAt(0, Object(9), 0);
    array.InsertAt(0, Object(9), -1);
    array.RemoveAt(0, 0);
    array.RemoveAt(0, -1);
    array.SetSize(-1, 5);
    EXPECT_THAT(Contents(array), ElementsAre(1, 2));
}

TEST(CPtrArrayTest, InsertingOpensAGapOrExtendsTheArray) {
    CPtrArray array;
    array.InsertAt(2, Object(0), 2);
    EXPECT_THAT(Contents(array), ElementsAre(-1, -1, 0, 0));
    Fill(array, {1, 2, 3});
    array.InsertAt(1, Object(7), 2);
    EXPECT_THAT(Contents(array), ElementsAre(1, 7, 7, 2, 3));
    array.InsertAt(5, Object(8));
    array.InsertAt(0, nullptr);
    EXPECT_THAT(Contents(array), ElementsAre(-1, 1, 7, 7, 2, 3, 8));
}

TEST(CPtrArrayTest, ArraysAreInsertedCopiedAndAppendedAlsoIntoThemselves) {
    CPtrArray array;
    CPtrArray other;
    Fill(array, {1, 2});
    Fill(other, {3, 4, 5});
    array.InsertAt(1, other);
    EXPECT_THAT(Contents(array), ElementsAre(1, 3, 4, 5, 2));
    EXPECT_EQ(other.Append(array), 3);
    EXPECT_THAT(Contents(other), ElementsAre(3, 4, 5, 1, 3, 4, 5, 2));

    array.SetSize(2);
    array.InsertAt(1, array);
    EXPECT_THAT(Contents(array), ElementsAre(1, 1, 3, 3));
    EXPECT_EQ(array.Append(array), 4);
    EXPECT_THAT(Contents(array), ElementsAre(1, 1, 3, 3, 1, 1, 3, 3));

    array.Copy(other);
    EXPECT_EQ(Contents(array), Contents(other));
    array.Copy(array);
    EXPECT_EQ(Contents(array), Contents(other));

    const CPtrArray none;
    EXPECT_EQ(array.Append(none), 8);
    array.InsertAt(20, none);
    EXPECT_EQ(array.GetSize(), 8);
    array.Copy(none);
    EXPECT_EQ(array.GetCapacity(), 0);
}

TEST(CPtrArrayTest, RemovingClosesTheGapAndKeepsTheSlots) {
    CPtrArray array;
    Fill(array, {0, 1, 2, 3, 4});
    const int capacity = array.GetCapacity();
    array.RemoveAt(1, 2);
    EXPECT_THAT(Contents(array), ElementsAre(0, 3, 4));
    array.RemoveAt(2);
    array.RemoveAt(1, kLargest);
    EXPECT_THAT(Contents(array), ElementsAre(0));
    EXPECT_EQ(array.GetCapacity(), capacity);
    array.FreeExtra();
    EXPECT_EQ(array.GetCapacity(), 1);
    EXPECT_THAT(Contents(array), ElementsAre(0));
    array.RemoveAt(0);
    EXPECT_EQ(array.GetCapacity(), 1);
    array.FreeExtra();
    EXPECT_EQ(array.GetCapacity(), 0);
}

TEST(CPtrArrayTest, ASizeThatDoesNotFit32BitsThrowsAndLeavesTheElements) {
    CPtrArray array;
    Fill(array, {1, 2});
    EXPECT_THROW(array.SetAtGrow(kLargest, Object(3)), std::length_error);
    EXPECT_THROW(array.InsertAt(1, Object(3), kLargest), std::length_error);
    EXPECT_THROW(array.InsertAt(kLargest, Object(3)), std::length_error);
    EXPECT_THAT(Contents(array), ElementsAre(1, 2));
}
