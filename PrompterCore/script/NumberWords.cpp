#include "PrompterCore/script/NumberWords.h"

#include <array>
#include <cstddef>
#include <string_view>

#include "PrompterCore/support/Integers.h"

namespace PrompterCore {

namespace {

constexpr std::array<std::string_view, 20> belowTwenty = {
    "zero",     "one",     "two",     "three",     "four",     "five",    "six",
    "seven",    "eight",   "nine",    "ten",       "eleven",   "twelve",  "thirteen",
    "fourteen", "fifteen", "sixteen", "seventeen", "eighteen", "nineteen"};

constexpr std::array<std::string_view, 8> tens = {"twenty", "thirty",  "forty",  "fifty",
                                                  "sixty",  "seventy", "eighty", "ninety"};

struct Scale {
    std::int64_t value;
    std::string_view word;
};

constexpr std::array<Scale, 4> scales = {Scale{1'000'000'000, "billion"},
                                         Scale{1'000'000, "million"}, Scale{1'000, "thousand"},
                                         Scale{100, "hundred"}};

void takeCounted(std::int64_t number, WordTaker take) {
    if (number < 20) return take(belowTwenty[static_cast<std::size_t>(number)]);
    if (number < 100) {
        take(tens[static_cast<std::size_t>(number / 10 - 2)]);
        if (number % 10 != 0) takeCounted(number % 10, take);
        return;
    }
    for (const Scale& scale : scales) {
        if (number < scale.value) continue;
        takeCounted(number / scale.value, take);
        take(scale.word);
        if (number % scale.value != 0) takeCounted(number % scale.value, take);
        return;
    }
}

std::vector<Text> listed(void (*takeWords)(std::int64_t, WordTaker), std::int64_t number) {
    std::vector<Text> words;
    const auto append = [&words](std::string_view word) { words.emplace_back(WellFormed{word}); };
    takeWords(number, WordTaker(append));
    return words;
}

}  // namespace

void takeNumberWords(std::int64_t number, WordTaker take) {
    if (number < 0) {
        take("minus");
        number = checkedSubtract(0, number);
    }
    takeCounted(number, take);
}

void takeYearWords(std::int64_t number, WordTaker take) {
    if (number < 1100 || number > 9999) return takeNumberWords(number, take);
    const std::int64_t low = number % 100;
    takeCounted(number / 100, take);
    if (low == 0) return take("hundred");
    if (low < 10) take("oh");
    takeCounted(low, take);
}

std::vector<Text> numberWords(std::int64_t number) { return listed(takeNumberWords, number); }

std::vector<Text> yearWords(std::int64_t number) { return listed(takeYearWords, number); }

}  // namespace PrompterCore
