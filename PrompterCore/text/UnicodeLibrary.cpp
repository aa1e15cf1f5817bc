#include "PrompterCore/text/UnicodeLibrary.h"

#include <algorithm>
#include <vector>

#include <unicode/uchar.h>

#include "PrompterCore/text/Utf8.h"

namespace PrompterCore::UnicodeLibrary {

namespace {

// Shorter runs are the library's own business.
constexpr std::size_t longRun = 32;

struct Mark {
    std::uint8_t combiningClass;
    std::string_view bytes;
};

}  // namespace

std::optional<std::string> withOrderedMarks(std::string_view bytes) {
    std::optional<std::string> ordered;
    std::vector<Mark> run;
    std::size_t copied = 0;    // bytes that `ordered` holds already
    std::size_t runStart = 0;  // of `run`
    const auto endRun = [&](std::size_t end) {
        if (run.size() >= longRun && !std::ranges::is_sorted(run, {}, &Mark::combiningClass)) {
            std::ranges::stable_sort(run, {}, &Mark::combiningClass);
            if (!ordered) ordered.emplace();
            ordered->append(bytes.substr(copied, runStart - copied));
            for (const Mark& mark : run) {
                ordered->append(mark.bytes);
            }
            copied = end;
        }
        run.clear();
    };
    for (std::size_t at = 0; at < bytes.size();) {
        const std::size_t start = at;
        const char32_t codePoint = Utf8::next(bytes, at);
        const std::uint8_t combiningClass =
            codePoint < 0x300 ? std::uint8_t{0}
                              : u_getCombiningClass(static_cast<UChar32>(codePoint));
        if (combiningClass == 0) {
            if (!run.empty()) endRun(start);
            continue;
        }
        if (run.empty()) runStart = start;
        run.push_back({combiningClass, bytes.substr(start, at - start)});
    }
    endRun(bytes.size());
    if (ordered) ordered->append(bytes.substr(copied));
    return ordered;
}

}  // namespace PrompterCore::UnicodeLibrary
