#include "PrompterCore/text/Utf8.h"

#include <algorithm>
#include <cstdint>
#include <cstring>

namespace PrompterCore::Utf8 {

namespace {

std::size_t asciiLength(std::string_view bytes) noexcept {
    std::size_t at = 0;
    for (; bytes.size() - at >= 8; at += 8) {
        std::uint64_t eight = 0;
        std::memcpy(&eight, bytes.data() + at, sizeof eight);
        if ((eight & 0x8080808080808080U) != 0) break;
    }
    while (at < bytes.size() && isAscii(bytes[at])) {
        ++at;
    }
    return at;
}

// One lead byte's row in the table of well-formed sequences (The Unicode Standard, table 3-7): how
// many bytes follow, and what the first of them may be.
struct Row {
    std::size_t trails;
    unsigned char first, last;
};

Row row(unsigned char lead) noexcept {
    if (lead >= 0xC2 && lead <= 0xDF) return {1, 0x80, 0xBF};
    if (lead == 0xE0) return {2, 0xA0, 0xBF};
    if (lead == 0xED) return {2, 0x80, 0x9F};
    if (lead >= 0xE1 && lead <= 0xEF) return {2, 0x80, 0xBF};
    if (lead == 0xF0) return {3, 0x90, 0xBF};
    if (lead >= 0xF1 && lead <= 0xF3) return {3, 0x80, 0xBF};
    if (lead == 0xF4) return {3, 0x80, 0x8F};
    return {0, 0, 0};
}

}  // namespace

bool isAscii(std::string_view bytes) noexcept { return asciiLength(bytes) == bytes.size(); }

std::size_t illFormedPart(std::string_view bytes, std::size_t& from) noexcept {
    std::size_t at = from;
    while (true) {
        at += asciiLength(bytes.substr(at));
        if (at == bytes.size()) break;
        auto [trails, first, last] = row(static_cast<unsigned char>(bytes[at]));
        std::size_t good = 1;
        while (good <= trails && at + good < bytes.size()) {
            const auto trail = static_cast<unsigned char>(bytes[at + good]);
            if (trail < first || trail > last) break;
            first = 0x80;
            last = 0xBF;
            ++good;
        }
        if (trails == 0 || good <= trails) {
            from = at;
            return good;
        }
        at += good;
    }
    from = at;
    return 0;
}

}  // namespace PrompterCore::Utf8
