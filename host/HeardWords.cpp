#include "host/HeardWords.h"

#include <algorithm>

namespace Varnelle {

void HeardWords::apply(const WordsUpdate& update) {
    const auto count = static_cast<std::int64_t>(words_.size());
    const auto kept = std::clamp(update.keep, std::int64_t{0}, count);
    words_.erase(words_.begin() + kept, words_.end());
    words_.insert(words_.end(), update.words.begin(), update.words.end());
}

}  // namespace Varnelle
