// A growing array whose elements stay in order.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

#include "adesk.h"

// Stands for the SDK's element reallocation policy: elements are always moved one by one here.
template <class T>
class AcArrayObjectReallocator {};  // named only: one policy for all

// Indices are not checked, as in the SDK's release build; a wrong one is undefined.
//
// Growth: a full array grows by growLength() elements, or by that many percent of its length when
// negative, but never by less than half of its length. A fixed step of 8 would move every element
// n / 8 times while n are appended; with the floor, append is O(1) on average.
// Unlike AutoCAD, physicalLength() after an append can therefore be more than length +
// growLength().
template <class T, class R = AcArrayObjectReallocator<T>>
class AcArray {  // of values that can be copied
public:
    // physicalLength elements are made room for, none is there. growLength: see above.
    explicit AcArray(int physicalLength = 0, int growLength = 8) : m_grow(growLength) {
        setPhysicalLength(physicalLength);
    }
    // Copies every element, O(n). A moved-from array is empty and can go on being used.
    AcArray(const AcArray& other) : m_grow(other.m_grow) { append(other); }
    AcArray(AcArray&& other) noexcept { swapWith(other); }  // takes the storage over
    ~AcArray() { release(); }                               // ends every element

    // Assignment takes the elements, and keeps this array's own grow length.
    AcArray& operator=(const AcArray& other) {
        if (this != &other) {
            removeAll();
            append(other);
        }
        return *this;
    }
    AcArray& operator=(AcArray&& other) noexcept {  // this one's elements end
        if (this != &other) {
            release();
            m_data = nullptr;
            m_length = m_capacity = 0;
            swapWith(other);
        }
        return *this;
    }

    // Same length and equal elements in the same places.
    bool operator==(const AcArray& other) const {  // O(n)
        return m_length == other.m_length && std::equal(begin(), end(), other.begin());
    }
    bool operator!=(const AcArray& other) const { return !(*this == other); }

    int length() const { return m_length; }  // elements that are there; logicalLength says the same
    int logicalLength() const { return m_length; }
    int physicalLength() const { return m_capacity; }  // elements that there is room for
    int growLength() const { return m_grow; }
    bool isEmpty() const { return m_length == 0; }  // no elements

    // The element; valid until the array grows, shrinks or is assigned.
    T& operator[](int i) { return m_data[i]; }
    const T& operator[](int i) const { return m_data[i]; }
    T& at(int i) { return m_data[i]; }
    const T& at(int i) const { return m_data[i]; }
    AcArray& setAt(int i, const T& value) {  // i must exist
        m_data[i] = value;
        return *this;
    }
    // Every element becomes a copy of the value, also when that is one of them.
    AcArray& setAll(const T& value) {
        std::fill(begin(), end(), T(value));
        return *this;
    }

    // The array must not be empty.
    T& first() { return m_data[0]; }
    const T& first() const { return m_data[0]; }
    T& last() { return m_data[m_length - 1]; }
    const T& last() const { return m_data[m_length - 1]; }

    // Returns the index of the new element. The value may be an element of this array.
    int append(const T& value) { return emplaceLast(value); }
    int append(T&& value) { return emplaceLast(std::move(value)); }
    // Appends all elements; other may be this array.
    AcArray& append(const AcArray& other);

    // Inserts before element i; i == length() appends. The value may be an element of this array.
    AcArray& insertAt(int i, const T& value) {
        append(value);
        std::rotate(begin() + i, end() - 1, end());
        return *this;
    }
    AcArray& removeAt(int i) { return removeSubArray(i, i); }  // O(n): those behind it move up
    // Removes the elements from first to last, both included. The rest keeps its order.
    AcArray& removeSubArray(int first, int last);
    AcArray& removeFirst() { return removeAt(0); }            // O(n)
    AcArray& removeLast() { return removeAt(m_length - 1); }  // O(1); the array must not be empty
    // Keeps the storage.
    AcArray& removeAll() {
        std::destroy(begin(), end());
        m_length = 0;
        return *this;
    }
    // Removes the first element equal to value at or after start; false when there is none.
    bool remove(const T& value, int start = 0) {
        int foundAt = 0;
        if (!find(value, foundAt, start)) return false;
        removeAt(foundAt);
        return true;
    }

    // by ==, O(n)
    bool contains(const T& value, int start = 0) const { return findFrom(value, start) >= 0; }
    // foundAt keeps its value when nothing is found.
    bool find(const T& value, int& foundAt, int start = 0) const {
        const int i = findFrom(value, start);
        if (i >= 0) foundAt = i;
        return i >= 0;
    }
    // -1 when there is none.
    int find(const T& value) const { return findFrom(value, 0); }
    int findFrom(const T& value, int start) const {
        const T* const found = std::find(begin() + (std::min)(start, m_length), end(), value);
        return found == end() ? -1 : static_cast<int>(found - begin());
    }

    // New elements are default-built, numbers 0.
    AcArray& setLogicalLength(int length);
    // Cuts elements off when there are more than that; 0 gives the storage back.
    AcArray& setPhysicalLength(int length);
    AcArray& setGrowLength(int growLength) {
        m_grow = growLength;
        return *this;
    }

    AcArray& reverse() {  // last element first
        std::reverse(begin(), end());
        return *this;
    }
    AcArray& swap(int i, int j) {  // both must exist
        using std::swap;
        if (i != j) swap(m_data[i], m_data[j]);
        return *this;
    }

    // the elements side by side; null when there never was one
    const T* asArrayPtr() const { return m_data; }
    T* asArrayPtr() { return m_data; }
    T* begin() { return m_data; }  // for range loops, which the SDK's class has too
    T* end() { return m_data + m_length; }
    const T* begin() const { return m_data; }
    const T* end() const { return m_data + m_length; }

private:
    // Constructs in place, or in new storage when the old is full.
    template <class V>
    int emplaceLast(V&& value) {  // constructs in place, or in new storage when the old is full
        if (m_length < m_capacity) {
            new (m_data + m_length) T(std::forward<V>(value));
        } else {
            // A copy first: the value may live in the storage that is about to move.
            T kept(std::forward<V>(value));
            setPhysicalLength(grownLength(1));
            new (m_data + m_length) T(std::move(kept));
        }
        return m_length++;
    }
    int grownLength(int more) const {  // the room after `more` elements were added
        const int byRule = m_grow >= 0 ? m_grow : static_cast<int>(-m_grow * (m_length / 100.0));
        return m_length + (std::max)({more, byRule, m_length / 2});
    }
    void release() {  // ends the elements and gives the storage back
        std::destroy(begin(), end());
        if (m_data) std::allocator<T>().deallocate(m_data, static_cast<std::size_t>(m_capacity));
    }
    void swapWith(AcArray& other) noexcept {
        std::swap(m_data, other.m_data);
        std::swap(m_length, other.m_length);
        std::swap(m_capacity, other.m_capacity);
        std::swap(m_grow, other.m_grow);
    }

    T* m_data = nullptr;  // storage of m_capacity elements
    int m_length = 0;     // of them alive
    int m_capacity = 0;
    int m_grow = 8;  // elements, or percent when negative
};

template <class T, class R>
AcArray<T, R>& AcArray<T, R>::append(const AcArray& other) {
    const int count = other.m_length;  // read before the storage grows: other may be this array
    if (m_length + count > m_capacity) setPhysicalLength(grownLength(count));
    if (count > 0) std::uninitialized_copy_n(other.m_data, count, end());
    m_length += count;
    return *this;
}

template <class T, class R>
AcArray<T, R>& AcArray<T, R>::removeSubArray(int first, int last) {
    if (first > last) return *this;
    T* const rest = std::move(begin() + last + 1, end(), begin() + first);
    std::destroy(rest, end());
    m_length -= last - first + 1;
    return *this;
}

template <class T, class R>
AcArray<T, R>& AcArray<T, R>::setLogicalLength(int length) {
    if (length > m_capacity) setPhysicalLength(grownLength(length - m_length));
    if (length > m_length) {
        std::uninitialized_value_construct(end(), begin() + length);
    } else {
        std::destroy(begin() + length, end());
    }
    m_length = length;
    return *this;
}

template <class T, class R>
AcArray<T, R>& AcArray<T, R>::setPhysicalLength(int length) {
    if (length == m_capacity) return *this;
    T* data = nullptr;
    // What fits moves over, the rest ends.
    int kept = 0;
    if (length > 0) {
        kept = (std::min)(m_length, length);
        data = std::allocator<T>().allocate(static_cast<std::size_t>(length));
        std::uninitialized_move(begin(), begin() + kept, data);
    }
    release();      // what did not fit ends here
    m_data = data;  // the new storage
    m_length = kept;
    m_capacity = (std::max)(length, 0);  // below 0 counts as 0
    return *this;
}
