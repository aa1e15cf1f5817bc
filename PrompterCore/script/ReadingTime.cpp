#include "PrompterCore/script/ReadingTime.h"

#include "PrompterCore/text/Separator.h"

namespace PrompterCore::ReadingTime {

namespace {

std::string time(std::int64_t words) {
    if (words < wordsPerMinute) return "under a minute aloud";
    // To the nearest minute, halves up. In whole numbers, since a double is not exact for all of
    // them.
    const std::int64_t rest = words % wordsPerMinute;
    const std::int64_t minutes = words / wordsPerMinute + (2 * rest >= wordsPerMinute ? 1 : 0);
    if (minutes == 1) return "about a minute aloud";
    return "about " + std::to_string(minutes) + " minutes aloud";
}

}  // namespace

std::string summary(std::int64_t words) {
    if (words < 1) return "Empty";
    std::string text = words == 1 ? "1 word" : std::to_string(words) + " words";
    text.append(separator);
    return text + time(words);
}

}  // namespace PrompterCore::ReadingTime
