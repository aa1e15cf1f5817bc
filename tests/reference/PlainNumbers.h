#pragma once

// Numbers read out from a list of the first hundred and the decimal digits. Slow and plain.

#include <array>
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

namespace PrompterCore::Plain {

using Words = std::vector<std::string>;

inline Words split(const std::string& sentence) {
    std::istringstream stream(sentence);
    Words words;
    for (std::string word; stream >> word;)
        words.push_back(word);
    return words;
}

inline std::string belowHundred(std::size_t number) {
    static constexpr std::array<const char*, 20> first = {
        "zero",     "one",     "two",     "three",     "four",     "five",    "six",
        "seven",    "eight",   "nine",    "ten",       "eleven",   "twelve",  "thirteen",
        "fourteen", "fifteen", "sixteen", "seventeen", "eighteen", "nineteen"};
    static constexpr std::array<const char*, 10> tens = {
        "", "", "twenty", "thirty", "forty", "fifty", "sixty", "seventy", "eighty", "ninety"};
    if (number < 20) return first[number];
    return std::string(tens[number / 10]) + (number % 10 == 0 ? "" : " ") +
           (number % 10 == 0 ? "" : first[number % 10]);
}

/// The sentence of a number written in decimal digits, without leading zeros.
inline std::string sentence(const std::string& digits) {
    struct Scale {
        std::size_t zeros;
        const char* name;
    };
    for (const Scale scale :
         {Scale{9, "billion"}, Scale{6, "million"}, Scale{3, "thousand"}, Scale{2, "hundred"}}) {
        if (digits.size() <= scale.zeros) continue;
        std::string rest = digits.substr(digits.size() - scale.zeros);
        rest.erase(0, rest.find_first_not_of('0'));
        return sentence(digits.substr(0, digits.size() - scale.zeros)) + " " + scale.name + " " +
               (rest.empty() ? "" : sentence(rest));
    }
    return belowHundred(std::stoul(digits));
}

inline Words numberWords(std::int64_t number) {
    const std::string digits = std::to_string(number);
    return split(digits.front() == '-' ? "minus " + sentence(digits.substr(1)) : sentence(digits));
}

inline Words yearWords(std::int64_t number) {
    if (number < 1100 || number > 9999) return numberWords(number);
    const std::string digits = std::to_string(number);
    const std::string low = digits.substr(2);
    return split(belowHundred(std::stoul(digits.substr(0, 2))) + " " +
                 (low == "00"          ? "hundred"
                  : low.front() == '0' ? "oh " + belowHundred(std::stoul(low))
                                       : belowHundred(std::stoul(low))));
}

}  // namespace PrompterCore::Plain
