#pragma once

// Reading fields out of recognised words in JSON.
//
//   const Json object = parsed(R"({"start":0.6})");
//   seconds(object, "start");   // 0.6; throws Broken when it is missing or no time

#include <stdexcept>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

namespace Varnelle::WordsJson {

using Json = nlohmann::ordered_json;

/// What is wrong, in words that follow a line's number.
struct Broken : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// The value of a JSON text. Throws Broken when it is none. Bytes that are no UTF-8 are kept in
/// disguise until `bytesOf`: a recogniser may cut a character between two of its texts.
[[nodiscard]] Json parsed(std::string_view text);
/// The bytes of a text in a value that was parsed here. Throws Broken when it is no text.
[[nodiscard]] std::string bytesOf(const Json& value, const char* key);

/// Throws Broken when there is none.
[[nodiscard]] const Json& member(const Json& object, const char* key);
/// The number under `key`. Throws Broken when it is missing, no number or no time in seconds: a
/// million at most, since no reading takes eleven days.
[[nodiscard]] double seconds(const Json& object, const char* key);
/// The same of a value, `key` being its name.
[[nodiscard]] double secondsOf(const Json& value, const char* key, double unit = 1);

}  // namespace Varnelle::WordsJson
