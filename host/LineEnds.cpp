#include "host/LineEnds.h"

#include <algorithm>
#include <cstddef>

namespace Varnelle {

namespace {

// The line end that `rest`, which begins with one, begins with.
std::string_view lineEndAt(std::string_view rest) noexcept {
    return rest.substr(0, rest.starts_with("\r\n") ? 2 : 1);
}

// Where the next one begins, or the end.
std::size_t nextLineEnd(std::string_view text, std::size_t from) noexcept {
    return std::min(text.find_first_of("\r\n", from), text.size());
}

}  // namespace

std::optional<std::string_view> lineEndOf(std::string_view text) noexcept {
    std::optional<std::string_view> first;
    for (std::size_t at = nextLineEnd(text, 0); at < text.size();) {
        const std::string_view end = lineEndAt(text.substr(at));
        if (end != first.value_or(end)) return std::nullopt;
        first = end;
        at = nextLineEnd(text, at + end.size());
    }
    return first;
}

std::string withLineEnd(std::string_view text, std::string_view lineEnd) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t from = 0; from < text.size();) {
        const std::size_t at = nextLineEnd(text, from);
        result += text.substr(from, at - from);
        if (at == text.size()) break;
        result += lineEnd;
        from = at + lineEndAt(text.substr(at)).size();
    }
    return result;
}

}  // namespace Varnelle
