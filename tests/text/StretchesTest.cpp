#include <gtest/gtest.h>

#include "PrompterCore/text/Stretches.h"

namespace PrompterCore {

namespace {

struct Kind {
    char32_t first, last;
    int number;
};

constexpr Stretches kinds(std::to_array<Kind>({{U'a', U'a', 1},
                                               {U'b', U'd', 2},
                                               {0x7F, 0x80, 3},
                                               {0x1000, 0x1FFFF, 4},
                                               {0xE0020, 0xE007F, 5},
                                               {0x10FFFF, 0x10FFFF, 6}}));

int numberAt(char32_t codePoint) {
    const Kind* const kind = kinds.find(codePoint);
    return kind == nullptr ? 0 : kind->number;
}

}  // namespace

TEST(Stretches, ExampleIsAsTheHeaderShows) {
    static_assert(kinds.find(U'c')->number == 2);
    static_assert(kinds.find(U'z') == nullptr);
}

TEST(Stretches, EveryCodePointIsFoundInItsStretchAndNoOther) {
    for (char32_t c = 0; c <= 0x10FFFF; ++c) {
        const int expected = c == U'a'                      ? 1
                             : c >= U'b' && c <= U'd'       ? 2
                             : c == 0x7F || c == 0x80       ? 3
                             : c >= 0x1000 && c <= 0x1FFFF  ? 4
                             : c >= 0xE0020 && c <= 0xE007F ? 5
                             : c == 0x10FFFF                ? 6
                                                            : 0;
        ASSERT_EQ(numberAt(c), expected) << static_cast<unsigned>(c);
    }
}

TEST(Stretches, ThatDoNotAscendStopTheProgram) {
    const auto overlapping = std::to_array<Kind>({{1, 5, 1}, {5, 6, 2}});
    EXPECT_DEATH((void)Stretches(overlapping), "stretches ascend");
    const auto empty = std::to_array<Kind>({{5, 4, 1}});
    EXPECT_DEATH((void)Stretches(empty), "a stretch is not empty");
}

}  // namespace PrompterCore
