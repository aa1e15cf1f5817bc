#include "host/words/WordsJson.h"

#include "PrompterCore/text/Utf8.h"

namespace Varnelle::WordsJson {

namespace {

// A time in milliseconds or since 1970 would be waited for.
constexpr double latestTime = 1e6;

// The disguise of a byte that is no UTF-8: U+10FF00 to U+10FFFF, F4 8F BC..BF xx, which nobody
// says.
std::string disguised(std::string_view bytes) {
    std::string result;
    while (true) {
        std::size_t bad = 0;
        const std::size_t length = PrompterCore::Utf8::illFormedPart(bytes, bad);
        result += bytes.substr(0, bad);
        if (length == 0) return result;
        for (const char byte : bytes.substr(bad, length)) {
            const auto value = static_cast<unsigned char>(byte);
            result += "\xF4\x8F";
            result += static_cast<char>(0xBC | value >> 6);
            result += static_cast<char>(0x80 | (value & 0x3F));
        }
        bytes.remove_prefix(bad + length);
    }
}

std::string undisguised(std::string_view text) {
    std::string result;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(text[at + i]); };
        if (text.substr(at).starts_with("\xF4\x8F") && byte(2) >= 0xBC) {
            result += static_cast<char>((byte(2) & 0x03) << 6 | (byte(3) & 0x3F));
            at += 3;
        } else {
            result += text[at];
        }
    }
    return result;
}

std::string quoted(const char* key) { return "\"" + std::string(key) + "\""; }

}  // namespace

Json parsed(std::string_view text) {
    const bool throws = false;
    Json value = Json::parse(disguised(text), nullptr, throws);
    if (value.is_discarded()) throw Broken("this is no JSON");
    return value;
}

std::string bytesOf(const Json& value, const char* key) {
    if (!value.is_string()) throw Broken(quoted(key) + " is no text");
    return undisguised(value.get_ref<const std::string&>());
}

const Json& member(const Json& object, const char* key) {
    const auto found = object.find(key);
    if (found == object.end()) throw Broken(quoted(key) + " is missing");
    return *found;
}

double seconds(const Json& object, const char* key) { return secondsOf(member(object, key), key); }

double secondsOf(const Json& value, const char* key, double unit) {
    if (!value.is_number()) throw Broken(quoted(key) + " is no number");
    const double number = value.get<double>() * unit;
    if (!(number >= 0)) throw Broken(quoted(key) + " is no time");
    if (number > latestTime)
        throw Broken(quoted(key) + (unit == 1 ? " is not in seconds" : " is not in milliseconds"));
    return number;
}

}  // namespace Varnelle::WordsJson
