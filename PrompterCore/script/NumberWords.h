#pragma once

// Whole numbers as an English speaker reads them out: no "and", no hyphens.
//
//   numberWords(105);    // "one", "hundred", "five"
//   yearWords(1905);     // "nineteen", "oh", "five"

#include <cstdint>
#include <vector>

#include "PrompterCore/script/WordTaker.h"
#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// The words of `number`, "minus" first for a negative one. The largest scale is the billion:
/// 5'000'000'000'000 reads "five", "thousand", "billion". Stops the program for the one number
/// whose negative does not fit 64 bits.
[[nodiscard]] std::vector<Text> numberWords(std::int64_t number);

/// The words of `number` read as a year: two pairs of digits for 1100 to 9999 ("twenty", "hundred"
/// for 2000), numberWords for any other.
[[nodiscard]] std::vector<Text> yearWords(std::int64_t number);

/// The same words, handed to `take` in order. Never allocate.
void takeNumberWords(std::int64_t number, WordTaker take);
void takeYearWords(std::int64_t number, WordTaker take);

}  // namespace PrompterCore
