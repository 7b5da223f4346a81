#include "PictalCore/Platform/Foundation/OptionSet.h"
#include "PictalCore/Platform/Foundation/RawValue.h"

#include <gtest/gtest.h>

namespace pictal {

namespace {
struct Edges : OptionSet<Edges> {
    using OptionSet::OptionSet;
};
enum class Fruit { apple, export_ };
}  // namespace

template <>
struct RawValues<Fruit> {
    static constexpr std::array table{RawCase{Fruit::apple, "apple"},
                                      RawCase{Fruit::export_, "export"}};
};

TEST(OptionSet, SetAlgebra) {
    constexpr Edges left{1}, right{2}, top{4}, sides{left, right};
    static_assert(sides.rawValue == 3);
    EXPECT_EQ(sides | top, Edges(7));
    EXPECT_EQ(sides & Edges(6), right);
    EXPECT_EQ(sides ^ Edges(6), Edges(5));
    EXPECT_TRUE(sides.contains(left) && sides.contains({}) && !sides.contains(top));
    EXPECT_TRUE(left.isSubsetOf(sides) && !sides.isSubsetOf(left));
    EXPECT_TRUE(sides.isDisjointWith(top) && !sides.isDisjointWith(Edges(6)));
    Edges edges = sides;
    edges.insert(top);
    edges.remove({left, right});
    EXPECT_EQ(edges, top);
}

static_assert(rawValue(Fruit::export_) == "export");
static_assert(fromRawValue<Fruit>("apple") == Fruit::apple);
static_assert(!fromRawValue<Fruit>("Apple") && !fromRawValue<Fruit>(""));
static_assert(allCases<Fruit>() == std::array{Fruit::apple, Fruit::export_});

}  // namespace pictal
