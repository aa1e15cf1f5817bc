#include "PrompterCore/takes/ChapterTimestamps.h"

#include <cmath>
#include <cstdint>

#include "PrompterCore/support/Rounding.h"
#include "PrompterCore/takes/ClockText.h"

namespace PrompterCore::ChapterTimestamps {

namespace {

std::string time(double seconds) {
    const std::int64_t total = truncatedTowardZero(std::floor(seconds));
    const std::string s = atLeastTwoDigits(total % 60);
    const std::int64_t m = total / 60 % 60;
    if (total < 3600) return std::to_string(m) + ":" + s;
    return std::to_string(total / 3600) + ":" + atLeastTwoDigits(m) + ":" + s;
}

}  // namespace

std::string youTube(std::span<const ChapterMark> marks) {
    std::string list;
    for (const ChapterMark& mark : marks) {
        const bool isFirst = &mark == marks.data();
        if (!isFirst) list += '\n';
        list += time(isFirst ? 0.0 : mark.seconds) + ' ' + mark.title.utf8();
    }
    return list;
}

}  // namespace PrompterCore::ChapterTimestamps
