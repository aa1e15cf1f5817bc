#pragma once

// Known words as each recogniser would write them, so that they can be read back.

#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "host/HeardWords.h"
#include "host/WordsFile.h"
#include "host/words/WordsFormat.h"

namespace Varnelle::Tests {

using Json = nlohmann::ordered_json;

/// "00:01:02.345", with another mark before the milliseconds perhaps.
inline std::string clock(double seconds, char mark) {
    const auto all = static_cast<std::int64_t>(std::llround(seconds * 1000));
    char text[48];
    std::snprintf(text, sizeof text, "%02d:%02d:%02d%c%03d", static_cast<int>(all / 3'600'000),
                  static_cast<int>(all / 60'000 % 60), static_cast<int>(all / 1000 % 60), mark,
                  static_cast<int>(all % 1000));
    return text;
}

inline std::string decimal(double seconds) {
    char text[48];
    std::snprintf(text, sizeof text, "%.3f", seconds);
    return text;
}

inline std::string escaped(const std::string& text) {
    std::string result;
    for (const char byte : text) {
        result += byte == '&'   ? "&amp;"
                  : byte == '<' ? "&lt;"
                  : byte == '>' ? "&gt;"
                                : std::string(1, byte);
    }
    return result;
}

inline std::string voskText(const std::vector<HeardWord>& words, std::size_t perUtterance = 6) {
    std::string text;
    for (std::size_t at = 0; at < words.size(); at += perUtterance) {
        Json result = Json::array();
        std::string all;
        for (std::size_t i = at; i < std::min(words.size(), at + perUtterance); ++i) {
            const HeardWord& word = words[i];
            Json entry{{"end", word.end}, {"start", word.start}, {"word", word.word.utf8()}};
            if (word.confidence) entry["conf"] = *word.confidence;
            result.push_back(entry);
            all += (all.empty() ? "" : " ") + word.word.utf8();
        }
        text += Json{{"result", result}, {"text", all}}.dump(2) + "\n";
    }
    return text;
}

inline std::string whisperText(const std::vector<HeardWord>& words, std::size_t perSegment = 6) {
    const auto offsets = [](double from, double to) {
        return Json{{"from", std::llround(from * 1000)}, {"to", std::llround(to * 1000)}};
    };
    Json segments = Json::array();
    for (std::size_t at = 0; at < words.size(); at += perSegment) {
        Json tokens = Json::array({{{"text", "[_BEG_]"}, {"offsets", offsets(0, 0)}, {"p", 0.9}}});
        std::string all;
        const std::size_t end = std::min(words.size(), at + perSegment);
        for (std::size_t i = at; i < end; ++i) {
            const HeardWord& word = words[i];
            Json token{{"text", " " + word.word.utf8()},
                       {"offsets", offsets(word.start, word.end)}};
            if (word.confidence) token["p"] = *word.confidence;
            tokens.push_back(token);
            all += " " + word.word.utf8();
        }
        segments.push_back({{"offsets", offsets(words[at].start, words[end - 1].end)},
                            {"text", all},
                            {"tokens", tokens}});
    }
    return Json{{"systeminfo", "AVX = 1"},
                {"params", {{"language", "en"}}},
                {"result", {{"language", "en"}}},
                {"transcription", segments}}
               .dump(1, '\t') +
           "\n";
}

inline std::string ctmText(const std::vector<HeardWord>& words) {
    std::string text = ";; made here\n";
    for (const HeardWord& word : words) {
        text += "talk 1 " + decimal(word.start) + " " + decimal(word.end - word.start) + " " +
                word.word.utf8() + (word.confidence ? " " + decimal(*word.confidence) : "") + "\n";
    }
    return text;
}

inline std::string webVttText(const std::vector<HeardWord>& words) {
    std::string text = "WEBVTT\n";
    for (const HeardWord& word : words) {
        text += "\n" + clock(word.start, '.') + " --> " + clock(word.end, '.') + "\n" +
                escaped(word.word.utf8()) + "\n";
    }
    return text;
}

inline std::string srtText(const std::vector<HeardWord>& words) {
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i) {
        text += std::to_string(i + 1) + "\n" + clock(words[i].start, ',') + " --> " +
                clock(words[i].end, ',') + "\n" + escaped(words[i].word.utf8()) + "\n\n";
    }
    return text;
}

/// Start times only: a word ends where the next one starts, the last one 0.3 s after its start.
inline std::string sherpaText(const std::vector<HeardWord>& words, std::size_t perSegment = 6) {
    std::string text;
    for (std::size_t at = 0; at < words.size(); at += perSegment) {
        Json tokens = Json::array();
        Json timestamps = Json::array();
        std::string all;
        const double from = words[at].start;
        for (std::size_t i = at; i < std::min(words.size(), at + perSegment); ++i) {
            tokens.push_back("\u2581" + words[i].word.utf8());
            timestamps.push_back(words[i].start - from);
            all += " " + words[i].word.utf8();
        }
        text += Json{{"text", all},
                     {"tokens", tokens},
                     {"timestamps", timestamps},
                     {"start_time", from},
                     {"is_final", true}}
                    .dump() +
                "\n";
    }
    return text;
}

inline std::string jsonLinesText(const std::vector<HeardWord>& words) {
    std::string text;
    std::int64_t count = 0;
    for (const HeardWord& word : words) {
        text += lineFromWords({.time = word.end, .keep = count++, .words = {word}, .final = true}) +
                "\n";
    }
    return text;
}

inline std::string textIn(WordsFormat format, const std::vector<HeardWord>& words) {
    switch (format) {
        case WordsFormat::jsonLines: break;
        case WordsFormat::vosk: return voskText(words);
        case WordsFormat::whisper: return whisperText(words);
        case WordsFormat::sherpa: return sherpaText(words);
        case WordsFormat::ctm: return ctmText(words);
        case WordsFormat::webVtt: return webVttText(words);
        case WordsFormat::srt: return srtText(words);
    }
    return jsonLinesText(words);
}

/// A text read line by line, as the listener does.
inline WordsRead readAll(WordsReader& reader, std::string_view text) {
    WordsRead all;
    const auto add = [&](WordsRead more) {
        all.updates.insert(all.updates.end(), more.updates.begin(), more.updates.end());
        all.broken.insert(all.broken.end(), more.broken.begin(), more.broken.end());
    };
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        if (line.ends_with('\r')) line.remove_suffix(1);
        add(reader.take(line));
        text.remove_prefix(std::min(text.size(), end + 1));
    }
    add(reader.finish());
    return all;
}

inline std::vector<HeardWord> wordsIn(const WordsRead& read) {
    HeardWords words;
    for (const WordsUpdate& update : read.updates) {
        words.apply(update);
    }
    return words.words();
}

}  // namespace Varnelle::Tests
