#pragma once

// How long a script takes to read aloud, at one fixed pace.
//
//   ReadingTime::summary(225);   // "225 words · about 2 minutes aloud"

#include <cstdint>
#include <string>

namespace PrompterCore::ReadingTime {

/// The reading pace, in words a minute.
inline constexpr std::int64_t wordsPerMinute = 150;

/// One line for a user: the number of words and the time they take. "Empty" for fewer than one.
[[nodiscard]] std::string summary(std::int64_t words);

}  // namespace PrompterCore::ReadingTime
