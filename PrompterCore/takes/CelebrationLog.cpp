#include "PrompterCore/takes/CelebrationLog.h"

#include <algorithm>

namespace PrompterCore {

bool CelebrationLog::claim(Celebration celebration) {
    const Text key = rawValue(celebration);
    if (std::ranges::find(stored, key) != stored.end()) return false;
    stored.push_back(key);
    return true;
}

}  // namespace PrompterCore
