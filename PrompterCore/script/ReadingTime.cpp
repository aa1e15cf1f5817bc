#include "PrompterCore/script/ReadingTime.h"

#include "PrompterCore/support/Rounding.h"
#include "PrompterCore/text/Separator.h"

namespace PrompterCore::ReadingTime {

namespace {

std::string time(std::int64_t words) {
    if (words < wordsPerMinute) return "under a minute aloud";
    const std::int64_t minutes =
        roundedToNearest(static_cast<double>(words) / static_cast<double>(wordsPerMinute));
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
