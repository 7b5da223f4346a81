#include "PictalCore/Platform/Foundation/OptionSet.h"
#include "PictalCore/Platform/Foundation/RawValue.h"

#include <unordered_set>

#include <gtest/gtest.h>

namespace pictal {
namespace {

struct Edges : OptionSet<Edges> {
    using OptionSet::OptionSet;
    static const Edges left, right, top;
};
inline constexpr Edges Edges::left{1}, Edges::right{2}, Edges::top{4};

enum class Fruit { apple, export_ };

}  // namespace

template <>
struct RawValues<Fruit> {
    static constexpr std::array table{RawCase{Fruit::apple, "apple"},
                                      RawCase{Fruit::export_, "export"}};
};

namespace {

TEST(OptionSet, SetAlgebra) {
    constexpr Edges sides{Edges::left, Edges::right};
    static_assert(sides.rawValue == 3);
    EXPECT_EQ(sides | Edges::top, Edges(7));
    EXPECT_EQ(sides & Edges(6), Edges::right);
    EXPECT_EQ(sides ^ Edges(6), Edges(5));
    EXPECT_TRUE(sides.contains(Edges::left) && !sides.contains(Edges::top));
    EXPECT_TRUE(sides.contains({}) && Edges({}).isEmpty());
    EXPECT_TRUE(Edges::left.isSubsetOf(sides) && !sides.isSubsetOf(Edges::left));
    EXPECT_TRUE(sides.isDisjointWith(Edges::top) && !sides.isDisjointWith(Edges(6)));
    Edges edges = sides;
    edges.insert(Edges::top);
    edges.remove({Edges::left, Edges::right});
    EXPECT_EQ(edges, Edges::top);
    EXPECT_EQ(std::unordered_set<Edges>({Edges(3), sides, Edges(16)}).size(), 2U);
}

TEST(RawValue, TextsAndCases) {
    static_assert(rawValue(Fruit::export_) == "export");
    static_assert(fromRawValue<Fruit>("apple") == Fruit::apple);
    static_assert(!fromRawValue<Fruit>("Apple") && !fromRawValue<Fruit>(""));
    static_assert(allCases<Fruit>() == std::array{Fruit::apple, Fruit::export_});
}

}  // namespace
}  // namespace pictal
