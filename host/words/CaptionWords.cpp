#include "host/words/CaptionWords.h"

#include <algorithm>
#include <charconv>
#include <utility>

#include "PrompterCore/text/Trims.h"
#include "host/words/WordParts.h"

namespace Varnelle {

namespace {

constexpr std::string_view arrow = "-->";
constexpr double shortestCue = 0.02;  // s; a shorter one only holds what rolled up

std::string_view trimmed(std::string_view bytes) {
    const std::size_t from = bytes.find_first_not_of(" \t");
    if (from == std::string_view::npos) return {};
    return bytes.substr(from, bytes.find_last_not_of(" \t") + 1 - from);
}

// "1:02:03.450", "02:03,45", "3.5": seconds. Absent for anything else.
std::optional<double> timeOf(std::string_view written) {
    constexpr int mostParts = 3;
    double seconds = 0;
    int parts = 0;
    while (true) {
        const std::size_t colon = written.find(':');
        const bool isLast = colon == std::string_view::npos;
        std::string part(written.substr(0, colon));
        if (isLast) std::ranges::replace(part, ',', '.');
        constexpr std::string_view digits = "0123456789";
        if (part.empty() || part.size() > 12 || digits.find(part.front()) == digits.npos ||
            part.find_first_not_of(isLast ? "0123456789." : digits) != std::string::npos ||
            ++parts > mostParts)
            return std::nullopt;
        double value = 0;
        const auto [end, error] = std::from_chars(part.data(), part.data() + part.size(), value);
        if (error != std::errc() || end != part.data() + part.size()) return std::nullopt;
        seconds = seconds * 60 + value;
        if (isLast) break;
        written.remove_prefix(colon + 1);
    }
    if (parts < 2 || seconds > 1e6) return std::nullopt;
    return seconds;
}

struct Entity {
    std::string_view name, bytes;
};
constexpr Entity entities[] = {{"amp", "&"},  {"lt", "<"},        {"gt", ">"}, {"quot", "\""},
                               {"apos", "'"}, {"nbsp", "\u00A0"}, {"lrm", ""}, {"rlm", ""},
                               {"#39", "'"},  {"#34", "\""},      {"#38", "&"}};

// `text` without entities and without the square brackets' neighbours in braces, "{\an8}".
std::string plain(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        if (text.starts_with("{\\")) {
            const std::size_t close = text.find('}');
            if (close != std::string_view::npos) {
                text.remove_prefix(close + 1);
                continue;
            }
        }
        if (text.front() == '&') {
            const auto* const found = std::ranges::find_if(entities, [&](const Entity& entity) {
                return text.substr(1).starts_with(entity.name) &&
                       text.substr(1 + entity.name.size()).starts_with(';');
            });
            if (found != std::end(entities)) {
                result += found->bytes;
                text.remove_prefix(found->name.size() + 2);
                continue;
            }
        }
        result += text.front();
        text.remove_prefix(1);
    }
    return result;
}

bool isRemark(std::string_view line) {
    return std::ranges::any_of(
        std::initializer_list<std::string_view>{"NOTE", "STYLE", "REGION", "WEBVTT"},
        [&](std::string_view word) {
            if (!line.starts_with(word)) return false;
            const std::string_view rest = line.substr(word.size());
            return rest.empty() || rest.front() == ' ' || rest.front() == '\t';
        });
}

}  // namespace

void CaptionWords::read(std::string_view line) {
    const std::string_view content = trimmed(line);
    if (line.empty() || (content.empty() && !cue_)) {
        finishCue();
        if (head_) passOver(headLine_, "a cue has no times");
        head_.reset();
        isRemark_ = false;
        isBlockStart_ = true;
        return;
    }
    const bool isFirst = std::exchange(isBlockStart_, false);
    if (isFirst && isRemark(content)) isRemark_ = true;
    if (isRemark_) return;
    if (content.find(arrow) != std::string_view::npos) {
        finishCue();
        head_.reset();
        startCue(content);
    } else if (cue_) {
        cue_->texts.emplace_back(line);
    } else if (!head_) {
        head_ = content;
        headLine_ = lineNumber();
    }
}

void CaptionWords::startCue(std::string_view line) {
    const std::size_t at = line.find(arrow);
    const std::string_view behind = trimmed(line.substr(at + arrow.size()));
    const auto start = timeOf(trimmed(line.substr(0, at)));
    const auto end = timeOf(behind.substr(0, behind.find_first_of(" \t")));
    if (!start || !end || *end < *start) {
        passOver(lineNumber(),
                 !start || !end ? "the times cannot be read" : "the cue ends before it starts");
        isRemark_ = true;  // until the next empty line
        return;
    }
    cue_ = Cue{.line = lineNumber(), .start = *start, .end = *end, .texts = {}};
}

void CaptionWords::finishCue() {
    if (!cue_) return;
    const Cue cue = *std::exchange(cue_, std::nullopt);
    const bool isShort = cue.end - cue.start <= shortestCue;
    std::string text;
    for (const std::string& line : cue.texts) {
        const bool isAgain = !lastText_.empty() && trimmed(line) == lastText_ && text.empty() &&
                             cue.start <= lastEnd_ + shortestCue &&
                             (isShort || cue.texts.size() > 1);
        if (!isAgain) text += line + "\n";
    }
    addWords(cue, text);
    std::string last;
    for (const std::string& line : cue.texts) {
        // Without its tags, as the next cue repeats it.
        std::string bare;
        bool isTag = false;
        for (const char byte : line) {
            isTag = isTag || byte == '<';
            if (!isTag) bare += byte;
            if (byte == '>') isTag = false;
        }
        if (!trimmed(bare).empty()) last = trimmed(bare);
    }
    if (!last.empty()) lastText_ = last;
    lastEnd_ = cue.end;
}

// Cuts the text at the times in it; other tags go.
void CaptionWords::addWords(const Cue& cue, std::string_view text) {
    std::string phrase;
    double start = cue.start;
    const auto flush = [&](double end) {
        for (HeardWord& word : wordsOf(plain(phrase), start, end)) {
            words_.push_back(std::move(word));
        }
        phrase.clear();
    };
    while (!text.empty()) {
        const std::size_t close = text.front() == '<' ? text.find('>') : std::string_view::npos;
        if (close == std::string_view::npos) {
            phrase += text.front();
            text.remove_prefix(1);
            continue;
        }
        const auto time = timeOf(text.substr(1, close - 1));
        text.remove_prefix(close + 1);
        if (!time || *time < start || *time > cue.end) continue;
        flush(*time);
        start = *time;
    }
    flush(cue.end);
}

void CaptionWords::end() {
    read("");
    std::ranges::stable_sort(words_, {}, &HeardWord::start);
    for (HeardWord& word : words_) {
        settle(std::move(word));
    }
    words_.clear();
}

}  // namespace Varnelle
