#include "PrompterCore/script/ChapterFocus.h"

#include <cstddef>

#include "PrompterCore/support/Integers.h"
#include "PrompterCore/support/Require.h"

namespace PrompterCore {

const Text& ChapterFocus::title() const noexcept {
    require(0 <= index && index < count(), "the chapter is one of the titles'");
    return titles[static_cast<std::size_t>(index)];
}

std::int64_t ChapterFocus::count() const noexcept { return signedCount(titles.size()); }

std::optional<std::int64_t> ChapterFocus::previous() const noexcept {
    if (index < 1) return std::nullopt;
    return index - 1;
}

std::optional<std::int64_t> ChapterFocus::next() const noexcept {
    if (index >= count() - 1) return std::nullopt;
    return index + 1;
}

}  // namespace PrompterCore
