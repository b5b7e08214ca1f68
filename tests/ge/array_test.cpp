// AcArray against std::vector, with elements that count themselves.
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "acarray.h"

namespace {

// Owns memory, so that a forgotten or doubled destructor shows under the sanitizers; counts too.
struct Counted {
    static int alive;
    std::string text;
    Counted() : Counted("") {}
    Counted(const char* t) : text(t) { ++alive; }
    Counted(const Counted& other) : text(other.text) { ++alive; }
    Counted(Counted&& other) noexcept : text(std::move(other.text)) { ++alive; }
    Counted& operator=(const Counted&) = default;
    Counted& operator=(Counted&&) = default;
    ~Counted() { --alive; }
    bool operator==(const Counted& other) const { return text == other.text; }
};
int Counted::alive = 0;

template <class T>
std::string Show(const AcArray<T>& array) {
    std::string text;
    for (const T& t : array) text += t.text;
    return text;
}

AcArray<Counted> Letters(const std::string& text) {
    AcArray<Counted> array;
    for (const char ch : text) array.append(Counted(std::string(1, ch).c_str()));
    return array;
}

TEST(Array, Editing) {
    using Array = AcArray<Counted>;
    const struct {
        const char* name;
        void (*edit)(Array&);
        const char* result;
    } kCases[] = {
        {"insert first", [](Array& a) { a.insertAt(0, "x"); }, "xabcdb"},
        {"insert inside", [](Array& a) { a.insertAt(2, "x"); }, "abxcdb"},
        {"insert behind the last", [](Array& a) { a.insertAt(5, "x"); }, "abcdbx"},
        {"insert own element", [](Array& a) { a.insertAt(0, a[3]); }, "dabcdb"},
        {"remove at", [](Array& a) { a.removeAt(1); }, "acdb"},
        {"remove first and last", [](Array& a) { a.removeFirst().removeLast(); }, "bcd"},
        {"remove a range", [](Array& a) { a.removeSubArray(1, 3); }, "ab"},
        {"remove an empty range", [](Array& a) { a.removeSubArray(3, 2); }, "abcdb"},
        {"remove by value, first match", [](Array& a) { EXPECT_TRUE(a.remove("b")); }, "acdb"},
        {"remove by value from", [](Array& a) { EXPECT_TRUE(a.remove("b", 2)); }, "abcd"},
        {"remove what is not there", [](Array& a) { EXPECT_FALSE(a.remove("z")); }, "abcdb"},
        {"append itself", [](Array& a) { a.append(a); }, "abcdbabcdb"},
        {"reverse", [](Array& a) { a.reverse(); }, "bdcba"},
        {"swap", [](Array& a) { a.swap(0, 3).swap(2, 2); }, "dbcab"},
        {"cut", [](Array& a) { a.setLogicalLength(2); }, "ab"},
        {"cut the storage", [](Array& a) { a.setPhysicalLength(3); }, "abc"},
        {"grow, default elements", [](Array& a) { a.setLogicalLength(9).last().text = "z"; },
         "abcdbz"},
        {"set all to an own element", [](Array& a) { a.setAll(a[1]); }, "bbbbb"},
        {"set at", [](Array& a) { a.setAt(0, "x"); }, "xbcdb"},
        {"remove all", [](Array& a) { a.removeAll(); }, ""},
        {"storage given back", [](Array& a) { a.setPhysicalLength(0); }, ""},
        {"assign itself",
         [](Array& a) {
             Array& same = a;
             a = same;
         },
         "abcdb"},
        {"move there and back",
         [](Array& a) {
             Array b = std::move(a);
             a = std::move(b);
         },
         "abcdb"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        {
            Array array = Letters("abcdb");
            c.edit(array);
            EXPECT_EQ(Show(array), c.result);
            EXPECT_EQ(Counted::alive, array.length());
            EXPECT_GE(array.physicalLength(), array.length());
        }
        EXPECT_EQ(Counted::alive, 0);
    }
}

TEST(Array, Searching) {
    const AcArray<Counted> a = Letters("abcb");
    int at = -7;
    EXPECT_TRUE(a.find("b", at));
    EXPECT_EQ(at, 1);
    EXPECT_TRUE(a.find("b", at, 2));
    EXPECT_EQ(at, 3);
    EXPECT_FALSE(a.find("z", at));
    EXPECT_FALSE(a.find("b", at, 99));
    EXPECT_EQ(at, 3);
    EXPECT_EQ(a.find("c"), 2);
    EXPECT_EQ(a.find("z"), -1);
    EXPECT_TRUE(a.contains("a") && !a.contains("a", 1));
    EXPECT_TRUE(a == Letters("abcb"));
    EXPECT_TRUE(a != Letters("abc") && a != Letters("abcc"));
}

TEST(Array, StorageAndGrowth) {
    AcArray<int> a(4, 2);
    EXPECT_EQ(a.length(), 0);
    EXPECT_EQ(a.physicalLength(), 4);
    EXPECT_EQ(a.growLength(), 2);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(a.append(i), i);
    EXPECT_EQ(a.physicalLength(), 4);
    a.removeAll();
    EXPECT_EQ(a.physicalLength(), 4);
    // A step of one would move 5e11 elements here: the test would not end.
    AcArray<int> many(0, 1);
    const int* before = many.asArrayPtr();
    int moves = 0;
    for (int i = 0; i < 1000000; ++i) {
        many.append(i);
        moves += many.asArrayPtr() != before;
        before = many.asArrayPtr();
    }
    EXPECT_LT(moves, 60);
    EXPECT_EQ(many[999999], 999999);
    AcArray<int> percent(100, -200);
    percent.setLogicalLength(100).append(1);
    EXPECT_EQ(percent.physicalLength(), 300);
    AcArray<double> zeros;
    zeros.setLogicalLength(50);
    for (const double z : zeros) EXPECT_EQ(z, 0.0);
}

TEST(Array, RandomEditsMatchAVector) {
    std::mt19937 random(77);
    AcArray<Counted> a;
    std::vector<Counted> v;
    for (int round = 0; round < 5000; ++round) {
        const int n = a.length(), i = n ? int(random() % n) : 0;
        const char text[2] = {static_cast<char>('a' + random() % 26), 0};
        switch (random() % (n ? 7 : 1)) {
            case 0:
            case 1:
                a.append(text);
                v.emplace_back(text);
                break;
            case 2:
                a.insertAt(i, text);
                v.insert(v.begin() + i, text);
                break;
            case 3:
                a.removeAt(i);
                v.erase(v.begin() + i);
                break;
            case 4:
                a.append(a[i]);
                v.push_back(Counted(v[i]));
                break;
            case 5:
                a.setPhysicalLength(a.length() + 3);
                break;
            case 6: {
                AcArray<Counted> copy = a;
                a = copy;
                break;
            }
        }
        ASSERT_EQ(a.length(), static_cast<int>(v.size()));
        ASSERT_TRUE(std::equal(v.begin(), v.end(), a.begin()));
    }
}

}  // namespace
