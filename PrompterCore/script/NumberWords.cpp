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

void append(std::int64_t number, std::vector<Text>& words) {
    if (number < 20) {
        words.emplace_back(belowTwenty[static_cast<std::size_t>(number)]);
        return;
    }
    if (number < 100) {
        words.emplace_back(tens[static_cast<std::size_t>(number / 10 - 2)]);
        if (number % 10 != 0) append(number % 10, words);
        return;
    }
    for (const Scale& scale : scales) {
        if (number < scale.value) continue;
        append(number / scale.value, words);
        words.emplace_back(scale.word);
        if (number % scale.value != 0) append(number % scale.value, words);
        return;
    }
}

}  // namespace

std::vector<Text> numberWords(std::int64_t number) {
    std::vector<Text> words;
    if (number < 0) {
        words.emplace_back("minus");
        number = checkedSubtract(0, number);
    }
    append(number, words);
    return words;
}

std::vector<Text> yearWords(std::int64_t number) {
    if (number < 1100 || number > 9999) return numberWords(number);
    const std::int64_t low = number % 100;
    std::vector<Text> words = numberWords(number / 100);
    if (low == 0) {
        words.emplace_back("hundred");
        return words;
    }
    if (low < 10) words.emplace_back("oh");
    append(low, words);
    return words;
}

}  // namespace PrompterCore
