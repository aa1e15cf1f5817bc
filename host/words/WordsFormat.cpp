#include "host/words/WordsFormat.h"

#include <algorithm>
#include <string>
#include <utility>

#include "host/words/CaptionWords.h"
#include "host/words/CtmWords.h"
#include "host/words/OwnWords.h"
#include "host/words/SherpaWords.h"
#include "host/words/VoskWords.h"
#include "host/words/WhisperWords.h"

namespace Varnelle {

namespace {

// Keys of an outermost object that only one program writes, or that stand before what others have.
constexpr std::pair<std::string_view, WordsFormat> tellingKeys[] = {
    {"keep", WordsFormat::jsonLines},        {"time", WordsFormat::jsonLines},
    {"transcription", WordsFormat::whisper}, {"systeminfo", WordsFormat::whisper},
    {"model", WordsFormat::whisper},         {"params", WordsFormat::whisper},
    {"tokens", WordsFormat::sherpa},         {"timestamps", WordsFormat::sherpa},
    {"partial", WordsFormat::vosk},          {"partial_result", WordsFormat::vosk},
    {"result", WordsFormat::vosk},           {"alternatives", WordsFormat::vosk},
};

// Beside "text" in what Vosk says of an utterance without words, when it tells speakers apart.
bool isOfSpeaker(std::string_view key) { return key == "spk" || key == "spk_frames"; }

// The keys of the outermost object so far, in order, and whether it has been closed.
std::optional<WordsFormat> formatOfObject(std::string_view text) {
    int depth = 0;
    bool hasText = false, hasMore = false;
    std::string last;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char byte = text[at];
        if (byte == '"') {
            last.clear();
            for (++at; at < text.size() && text[at] != '"'; ++at) {
                if (text[at] == '\\') ++at;
                if (at < text.size()) last += text[at];
            }
        } else if (byte == ':' && depth == 1) {
            const auto* const found = std::ranges::find_if(
                tellingKeys, [&](const auto& row) { return row.first == last; });
            if (found != std::end(tellingKeys)) return found->second;
            hasText = hasText || last == "text";
            hasMore = hasMore || (last != "text" && !isOfSpeaker(last));
        } else if (byte == '{' || byte == '[') {
            ++depth;
        } else if ((byte == '}' || byte == ']') && --depth <= 0) {
            break;
        }
    }
    // An utterance's text is all that Vosk says of it when it is not asked for times; others have
    // more to say.
    if (depth <= 0 && hasText && !hasMore) return WordsFormat::vosk;
    return std::nullopt;
}

bool isNumber(std::string_view line) {
    return !line.empty() && line.find_first_not_of("0123456789") == std::string_view::npos;
}

}  // namespace

std::optional<WordsFormat> recognisedFormat(std::string_view beginning) {
    for (std::size_t from = 0; from < beginning.size();) {
        const std::size_t to = std::min(beginning.find('\n', from), beginning.size());
        std::string_view line = beginning.substr(from, to - from);
        while (!line.empty() && (line.back() == ' ' || line.back() == '\r' || line.back() == '\t'))
            line.remove_suffix(1);
        if (line.starts_with("WEBVTT")) return WordsFormat::webVtt;
        if (isNumber(line) || line.find("-->") != std::string_view::npos) return WordsFormat::srt;
        if (line.starts_with(";;") || isCtmLine(line)) return WordsFormat::ctm;
        if (line.starts_with('{') || line.starts_with('[')) {
            const std::size_t brace = beginning.find('{', from);
            if (brace != std::string_view::npos) {
                if (const auto format = formatOfObject(beginning.substr(brace))) return format;
            }
        }
        from = to + 1;
    }
    return std::nullopt;
}

std::unique_ptr<WordsReader> wordsReader(WordsFormat format, WordsArrival arrival) {
    switch (format) {
        case WordsFormat::vosk: return std::make_unique<VoskWords>(arrival);
        case WordsFormat::whisper: return std::make_unique<WhisperWords>();
        case WordsFormat::sherpa: return std::make_unique<SherpaWords>();
        case WordsFormat::ctm: return std::make_unique<CtmWords>();
        case WordsFormat::webVtt:
        case WordsFormat::srt: return std::make_unique<CaptionWords>();
        case WordsFormat::jsonLines: break;
    }
    return std::make_unique<OwnWords>();
}

}  // namespace Varnelle
