#include <string_view>

#include "PrompterCore/support/Enumeration.h"
#include "tests/support/Printing.h"

namespace PrompterCore {

enum class Weather { fair, foul };
template <>
struct Enumeration<Weather> {
    struct Row {
        Weather value;
        std::string_view caseName, rawValue, title;
    };
    static constexpr Row rows[] = {
        {Weather::fair, "fair", "fair", "Fair weather"},
        {Weather::foul, "foul", "foul", "Foul weather"},
    };
};

enum class Gear { neutral, first };
template <>
struct Enumeration<Gear> {
    struct Row {
        Gear value;
        std::string_view caseName;
        std::int64_t rawValue;
    };
    static constexpr Row rows[] = {{Gear::neutral, "neutral", 0}, {Gear::first, "first", 10}};
};

namespace {

template <class E>
constexpr bool hasTitle = requires(E value) {
    title(value);
};

static_assert(hasTitle<Weather>);
static_assert(!hasTitle<Gear>, "a column that the table lacks does not compile");

TEST(Enumeration, NamesItsCasesInTheDeclaredOrder) {
    EXPECT_EQ(allCases<Weather>, (std::array{Weather::fair, Weather::foul}));
    EXPECT_EQ(caseName(Weather::foul), "foul");
    EXPECT_EQ(title(Weather::fair), "Fair weather");
    EXPECT_EQ(rawValue(Gear::first), 10);
}

TEST(Enumeration, ReadsRawValuesExactly) {
    EXPECT_EQ(fromRawValue<Weather>("foul"), Weather::foul);
    EXPECT_EQ(fromRawValue<Weather>("Foul"), std::nullopt);
    EXPECT_EQ(fromRawValue<Weather>(""), std::nullopt);
    EXPECT_EQ(fromRawValue<Gear>(10), Gear::first);
    EXPECT_EQ(fromRawValue<Gear>(1), std::nullopt);
}

TEST(EnumerationDeathTest, RefusesAValueThatIsNoCase) {
    EXPECT_DEATH(static_cast<void>(caseName(static_cast<Weather>(7))),
                 "the value is a case of its enumeration");
}

}  // namespace
}  // namespace PrompterCore
