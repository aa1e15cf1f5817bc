#pragma once

// Whether bytes are JSON that records are read from, by the grammar of RFC 8259: one value, texts
// of well-formed UTF-8, numbers within the doubles, no key twice in an object, nested no deeper
// than 100.

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "PrompterCore/text/Utf8.h"

namespace PrompterCore::Tests {

class PlainJson {
public:
    explicit PlainJson(std::string_view json) : rest_(json) {
        if (rest_.starts_with("\xEF\xBB\xBF")) rest_.remove_prefix(3);
    }

    bool isRecordJson() {
        const bool isValue = value(0);
        blanks();
        return isValue && rest_.empty();
    }

private:
    bool take(std::string_view token) {
        if (!rest_.starts_with(token)) return false;
        rest_.remove_prefix(token.size());
        return true;
    }
    std::size_t takeAll(std::string_view set) {
        const std::size_t end = std::min(rest_.find_first_not_of(set), rest_.size());
        rest_.remove_prefix(end);
        return end;
    }
    void blanks() { takeAll(" \t\r\n"); }

    bool value(int depth) {
        blanks();
        if (take("null") || take("true") || take("false")) return true;
        if (rest_.starts_with('"')) return text().has_value();
        if (rest_.starts_with('[')) return depth < 100 && list(depth + 1);
        if (rest_.starts_with('{')) return depth < 100 && object(depth + 1);
        return number();
    }

    bool list(int depth) {
        take("[");
        blanks();
        if (take("]")) return true;
        do {
            if (!value(depth)) return false;
            blanks();
        } while (take(","));
        return take("]");
    }

    bool object(int depth) {
        take("{");
        blanks();
        if (take("}")) return true;
        std::set<std::string> keys;
        do {
            blanks();
            const auto key = text();
            blanks();
            if (!key || !take(":") || !value(depth) || !keys.insert(*key).second) return false;
            blanks();
        } while (take(","));
        return take("}");
    }

    bool number() {
        const std::string_view start = rest_;
        take("-");
        if (!take("0") && takeAll("0123456789") == 0) return false;
        if (take(".") && takeAll("0123456789") == 0) return false;
        if (take("e") || take("E")) {
            if (!take("+")) take("-");
            if (takeAll("0123456789") == 0) return false;
        }
        const std::string written(start.substr(0, start.size() - rest_.size()));
        return std::isfinite(std::strtod(written.c_str(), nullptr));
    }

    // In UTF-8, what is escaped too.
    std::optional<std::string> text() {
        if (!take("\"")) return std::nullopt;
        std::string result;
        while (!rest_.empty() && !rest_.starts_with('"')) {
            if (static_cast<unsigned char>(rest_[0]) < 0x20) return std::nullopt;
            if (take("\\")) {
                if (!escape(result)) return std::nullopt;
            } else {
                result += rest_[0];
                rest_.remove_prefix(1);
            }
        }
        std::size_t at = 0;
        if (!take("\"") || Utf8::illFormedPart(result, at) != 0) return std::nullopt;
        return result;
    }

    bool escape(std::string& result) {
        for (const std::string_view pair :
             {"\"\"", "\\\\", "//", "b\b", "f\f", "n\n", "r\r", "t\t"})
            if (take(pair.substr(0, 1))) {
                result += pair[1];
                return true;
            }
        if (!take("u")) return false;
        const std::optional<unsigned> first = fourDigits();
        if (!first || (*first >= 0xDC00 && *first < 0xE000)) return false;
        unsigned c = *first;
        if (c >= 0xD800 && c < 0xDC00) {
            if (!take("\\u")) return false;
            const std::optional<unsigned> second = fourDigits();
            if (!second || *second < 0xDC00 || *second >= 0xE000) return false;
            c = 0x10000 + ((c - 0xD800) << 10) + (*second - 0xDC00);
        }
        const auto put = [&](unsigned byte) { result += static_cast<char>(byte); };
        if (c >= 0x10000) put(0xF0 | c >> 18);
        if (c >= 0x10000) put(0x80 | (c >> 12 & 0x3F));
        if (c >= 0x800 && c < 0x10000) put(0xE0 | c >> 12);
        if (c >= 0x800) put(0x80 | (c >> 6 & 0x3F));
        if (c >= 0x80 && c < 0x800) put(0xC0 | c >> 6);
        put(c >= 0x80 ? 0x80 | (c & 0x3F) : c);
        return true;
    }

    std::optional<unsigned> fourDigits() {
        const std::string digits(rest_.substr(0, 4));
        if (digits.size() < 4 ||
            digits.find_first_not_of("0123456789abcdefABCDEF") != std::string::npos)
            return std::nullopt;
        rest_.remove_prefix(4);
        return static_cast<unsigned>(std::strtoul(digits.c_str(), nullptr, 16));
    }

    std::string_view rest_;
};

}  // namespace PrompterCore::Tests
