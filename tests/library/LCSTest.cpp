#include <concepts>
#include <cstdint>
#include <limits>
#include <string>
#include <vector>

#include "PrompterCore/library/LCS.h"
#include "tests/reference/PlainLCS.h"
#include "tests/support/Generators.h"
#include "tests/support/Printing.h"
#include "tests/support/Properties.h"

namespace PrompterCore {
namespace {

using enum DiffOperation;
using TextStep = LCS::Step<Text>;
using TextSteps = std::vector<TextStep>;

static_assert(std::copyable<TextStep> && std::equality_comparable<TextStep>);

template <class Element>
std::vector<Element> sideOf(const std::vector<LCS::Step<Element>>& steps, DiffOperation other) {
    std::vector<Element> side;
    for (const auto& step : steps)
        if (step.operation != other) side.push_back(step.element);
    return side;
}

TEST(LCS, TakesTheDeletionFirstOnATie) {
    EXPECT_EQ(LCS::diff<Text>({"a", "b"}, {"b", "a"}),
              (TextSteps{{"a", delete_}, {"b", equal}, {"a", insert}}));
}

TEST(LCS, AnEmptySideIsAllInsertedOrAllDeleted) {
    EXPECT_EQ(LCS::diff<Text>({}, {}), TextSteps{});
    EXPECT_EQ(LCS::diff<Text>({}, {"a", "b"}), (TextSteps{{"a", insert}, {"b", insert}}));
    EXPECT_EQ(LCS::diff<Text>({"a", "b"}, {}), (TextSteps{{"a", delete_}, {"b", delete_}}));
}

TEST(LCS, TheCommonEndIsNotCutOff) {
    // With the common "a" at the end taken away first, the old "a" would be deleted at the front.
    EXPECT_EQ(LCS::diff<Text>({"a"}, {"a", "a"}), (TextSteps{{"a", equal}, {"a", insert}}));
    EXPECT_EQ(LCS::diff<Text>({"a", "a"}, {"a"}), (TextSteps{{"a", equal}, {"a", delete_}}));
}

TEST(LCS, AnEqualElementIsTheOldLists) {
    const auto steps = LCS::diff<Text>({"caf\u00E9"}, {"cafe\u0301"});
    ASSERT_EQ(steps.size(), 1U);
    EXPECT_EQ(steps[0].operation, equal);
    EXPECT_EQ(steps[0].element.utf8(), "caf\u00E9");
}

TEST(LCS, TakesElementsThatOnlyKnowEquality) {
    struct Pair {
        int a, b;
        bool operator==(const Pair&) const = default;
    };
    const auto steps = LCS::diff<Pair>({{1, 2}, {3, 4}}, {{3, 4}});
    ASSERT_EQ(steps.size(), 2U);
    EXPECT_EQ(steps[0].operation, delete_);
    EXPECT_EQ(steps[1].operation, equal);
}

TEST(LCS, AnElementThatEqualsNothingIsNeverKept) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const auto steps = LCS::diff<double>({nan, 0.0}, {nan, -0.0});
    ASSERT_EQ(steps.size(), 3U);
    EXPECT_EQ(steps[0].operation, delete_);
    EXPECT_EQ(steps[1].operation, insert);
    EXPECT_EQ(steps[2].operation, equal);
}

// All lists of up to `longest` elements out of three letters.
std::vector<std::vector<char>> allLists(std::size_t longest) {
    std::vector<std::vector<char>> lists{{}};
    for (std::size_t first = 0; first < lists.size(); ++first) {
        if (lists[first].size() == longest) continue;
        for (const char letter : {'a', 'b', 'c'}) {
            lists.push_back(lists[first]);
            lists.back().push_back(letter);
        }
    }
    return lists;
}

// Whether the letters of both lists, one behind the other, first come in the order of the alphabet.
bool isInOrder(const std::vector<char>& a, const std::vector<char>& b) {
    char next = 'a';
    for (const auto* list : {&a, &b})
        for (const char letter : *list) {
            if (letter > next) return false;
            if (letter == next) ++next;
        }
    return true;
}

TEST(LCS, AgreesWithThePlainRecursionOnAllShortLists) {
    const auto lists = allLists(6);
    ASSERT_EQ(lists.size(), 1093U);
    std::int64_t differing = 0;
    for (const auto& a : lists)
        for (const auto& b : lists)
            // Which letters they are does not count, only which are equal: other names for them
            // would be the same lists again, and the recursion is slow.
            if (isInOrder(a, b)) differing += LCS::diff(a, b) != Reference::plainDiff(a, b) ? 1 : 0;
    EXPECT_EQ(differing, 0);
}

TEST(LCS, AgreesWithThePlainTableOnLongerLists) {
    Tests::forAll(
        [](const std::vector<std::uint8_t>& first, const std::vector<std::uint8_t>& second) {
            const auto few = [](const std::vector<std::uint8_t>& bytes) {
                std::vector<int> numbers;
                for (const std::uint8_t byte : bytes)
                    numbers.push_back(byte % 5);
                return numbers;
            };
            RC_ASSERT(LCS::diff(few(first), few(second)) ==
                      Reference::tabledDiff(few(first), few(second)));
        });
}

TEST(LCS, AgreesWithThePlainTableAroundTheWordsThatItWorksIn) {
    std::uint64_t state = 7;
    const auto list = [&state](std::size_t length, std::uint64_t letters) {
        std::vector<int> numbers;
        while (numbers.size() < length) {
            state = state * 6364136223846793005U + 1442695040888963407U;
            numbers.push_back(static_cast<int>((state >> 33) % letters));
        }
        return numbers;
    };
    for (const std::size_t length : {1U, 7U, 8U, 9U, 63U, 64U, 65U, 127U, 128U, 129U, 200U})
        for (const std::uint64_t letters : {1U, 2U, 4U, 40U})
            for (const std::size_t other : {1U, 64U, 65U, 130U}) {
                SCOPED_TRACE(::testing::Message() << length << " and " << other << " elements of "
                                                  << letters << " letters");
                const auto before = list(other, letters);
                const auto after = list(length, letters);
                EXPECT_EQ(LCS::diff(before, after), Reference::tabledDiff(before, after));
            }
}

TEST(LCS, BothSidesReadBack) {
    Tests::forAll([](const std::vector<Text>& before, const std::vector<Text>& after) {
        const TextSteps steps = LCS::diff(before, after);
        RC_ASSERT(sideOf(steps, insert) == before);
        RC_ASSERT(sideOf(steps, delete_) == after);
    });
}

TEST(LCS, AListIsEqualToItself) {
    Tests::forAll([](const std::vector<Text>& list) {
        for (const TextStep& step : LCS::diff(list, list))
            RC_ASSERT(step.operation == equal);
    });
}

}  // namespace
}  // namespace PrompterCore
