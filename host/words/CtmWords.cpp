#include "host/words/CtmWords.h"

#include <charconv>
#include <cmath>
#include <optional>
#include <vector>

#include "host/words/WordParts.h"

namespace Varnelle {

namespace {

constexpr double latestTime = 1e6;  // s, as in our own form

using Fields = std::vector<std::string_view>;

Fields fieldsOf(std::string_view line) {
    constexpr std::string_view blanks = " \t";
    Fields fields;
    for (std::size_t from = 0; (from = line.find_first_not_of(blanks, from)) != line.npos;) {
        const std::size_t to = std::min(line.find_first_of(blanks, from), line.size());
        fields.push_back(line.substr(from, to - from));
        from = to;
    }
    return fields;
}

std::optional<double> number(std::string_view written) {
    double value = 0;
    const auto [end, error] =
        std::from_chars(written.data(), written.data() + written.size(), value);
    if (error != std::errc() || end != written.data() + written.size()) return std::nullopt;
    return value;
}

std::optional<double> time(std::string_view written) {
    const auto value = number(written);
    return value && *value >= 0 && *value <= latestTime ? value : std::nullopt;
}

}  // namespace

bool isCtmLine(std::string_view line) {
    const Fields fields = fieldsOf(line);
    if (fields.size() < 5) return false;
    return fields[4] == "<ALT_BEGIN>" || (number(fields[2]) && number(fields[3]));
}

void CtmWords::read(std::string_view line) {
    const Fields fields = fieldsOf(line);
    if (fields.empty() || fields[0].starts_with(";;")) return;
    if (fields.size() < 5)
        return passOver(lineNumber(), "a word needs recording, channel, start, duration and word");
    if (fields[4] == "<ALT_BEGIN>" || fields[4] == "<ALT_END>" || fields[4] == "<ALT>") {
        isOther_ = fields[4] == "<ALT>";
        return;
    }
    if (isOther_) return;
    const auto start = time(fields[2]);
    const auto duration = time(fields[3]);
    if (!start) return passOver(lineNumber(), "the start is no time in seconds");
    if (!duration || *start + *duration > latestTime)
        return passOver(lineNumber(), "the duration is no time in seconds");
    if (recording_.empty()) recording_ = fields[0];
    if (fields[0] != recording_)
        return passOver(lineNumber(),
                        "the word is of another recording than the first, " + recording_);
    const auto spoken = spokenWord(fields[4]);
    if (!spoken || *spoken == "@") return;  // "@" stands for no word among alternatives
    const auto confidence = fields.size() > 5 ? number(fields[5]) : std::nullopt;
    settle({.word = *spoken,
            .start = toMilliseconds(*start),
            .end = toMilliseconds(*start + *duration),
            .confidence = confidence ? confidenceOf(*confidence) : std::nullopt});
}

}  // namespace Varnelle
