#include <concepts>
#include <string>

#include "PrompterCore/support/Required.h"
#include "tests/support/Printing.h"

namespace PrompterCore {
namespace {

struct Config {
    Required<double> rate;
    Required<int> count;
    Required<std::string> name = std::string("given");

    friend bool operator==(const Config&, const Config&) = default;
};

struct NamedOnly {
    Required<double> rate;
};

template <class Record>
concept MadeWithoutFields = requires {
    Record{};
};
template <class Record>
concept MadeWithRate = requires {
    Record{.rate = 2.5};
};

static_assert(!MadeWithoutFields<NamedOnly>, "a field left out does not compile");
static_assert(MadeWithRate<NamedOnly>);
static_assert(!MadeWithRate<Config>, "one of two left out does not compile");
static_assert(!std::default_initializable<Required<double>>);
static_assert(std::copyable<Config> && std::equality_comparable<Config>);
static_assert(sizeof(Required<double>) == sizeof(double));

TEST(Required, ReadsAssignsAndComparesLikeTheValueItself) {
    Config config{.rate = 2.5, .count = 3};
    const double doubled = config.rate * 2;
    EXPECT_EQ(doubled, 5.0);
    EXPECT_TRUE(config.rate == 2.5);
    EXPECT_TRUE(2.5 == config.rate);
    EXPECT_TRUE(config.rate == config.rate);
    EXPECT_TRUE(config.rate != 3);
    EXPECT_TRUE(config.rate < 3);
    EXPECT_TRUE(config.count == 3);
    EXPECT_TRUE(config.count == 3.0);
    config.rate = 4;
    EXPECT_EQ(config.rate, 4.0);
}

TEST(Required, RecordsWithItCompareFieldByField) {
    const Config config{.rate = 2.5, .count = 3};
    EXPECT_EQ(config, (Config{.rate = 2.5, .count = 3}));
    EXPECT_NE(config, (Config{.rate = 2.5, .count = 4}));
    EXPECT_NE(config, (Config{.rate = 2.5, .count = 3, .name = std::string("other")}));
}

}  // namespace
}  // namespace PrompterCore
