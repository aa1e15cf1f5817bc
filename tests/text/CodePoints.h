#pragma once

// Code points for tests that walk them all.

#include <string>

namespace PrompterCore::Tests {

inline std::string utf8Of(char32_t c) {
    const auto byte = [](char32_t value) { return static_cast<char>(value); };
    if (c < 0x80) return {byte(c)};
    if (c < 0x800) return {byte(0xC0 | c >> 6), byte(0x80 | (c & 0x3F))};
    if (c < 0x10000)
        return {byte(0xE0 | c >> 12), byte(0x80 | (c >> 6 & 0x3F)), byte(0x80 | (c & 0x3F))};
    return {byte(0xF0 | c >> 18), byte(0x80 | (c >> 12 & 0x3F)), byte(0x80 | (c >> 6 & 0x3F)),
            byte(0x80 | (c & 0x3F))};
}

/// Calls `visit` with every code point that a well-formed text can hold.
template <class Visit>
void forEachCodePoint(Visit&& visit) {
    for (char32_t c = 0; c <= 0x10FFFF; c = c == 0xD7FF ? 0xE000 : c + 1)
        visit(c);
}

}  // namespace PrompterCore::Tests
