#include "host/SoundTail.h"

#include <algorithm>
#include <cstddef>

#include "PrompterCore/support/Integers.h"
#include "PrompterCore/support/Require.h"

namespace Varnelle {

using PrompterCore::signedCount;

SoundTail::SoundTail(std::int64_t length) : length_(length) {
    PrompterCore::require(length >= 0, "a length is not below 0");
}

void SoundTail::append(std::span<const float> samples) {
    samples_.insert(samples_.end(), samples.begin(), samples.end());
    // Moved as seldom as once in its own length.
    const std::int64_t surplus = signedCount(samples_.size()) - length_;
    if (surplus <= length_) return;
    samples_.erase(samples_.begin(), samples_.begin() + surplus);
    begin_ += surplus;
}

std::int64_t SoundTail::end() const noexcept { return begin_ + signedCount(samples_.size()); }

std::span<const float> SoundTail::between(std::int64_t from, std::int64_t to) const noexcept {
    const std::int64_t first = std::clamp(from, begin_, end());
    const std::int64_t last = std::clamp(to, first, end());
    return std::span(samples_).subspan(static_cast<std::size_t>(first - begin_),
                                       static_cast<std::size_t>(last - first));
}

}  // namespace Varnelle
