#include <string_view>

#include "PrompterCore/text/StoredSetting.h"
#include "tests/support/Printing.h"

namespace PrompterCore {

enum class Tempo { steady, brisk };
template <>
struct Enumeration<Tempo> {
    struct Row {
        Tempo value;
        std::string_view caseName, rawValue;
    };
    static constexpr Row rows[] = {{Tempo::steady, "steady", "steady"},
                                   {Tempo::brisk, "brisk", "brisk"}};
    static constexpr bool isSetting = true;
};

namespace {

TEST(StoredSetting, FallsBackToTheFirstCase) {
    EXPECT_EQ(fromStored<Tempo>("brisk"), Tempo::brisk);
    EXPECT_EQ(fromStored<Tempo>(Text("brisk")), Tempo::brisk);
    EXPECT_EQ(fromStored<Tempo>("Brisk"), Tempo::steady);
    EXPECT_EQ(fromStored<Tempo>(""), Tempo::steady);
    EXPECT_EQ(fromStored<Tempo>(std::nullopt), Tempo::steady);
}

}  // namespace
}  // namespace PrompterCore
