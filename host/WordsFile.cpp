#include "host/WordsFile.h"

#include <optional>
#include <utility>

#include "host/words/WordsJson.h"

namespace Varnelle {

namespace {

using WordsJson::Broken;
using WordsJson::Json;
using WordsJson::member;
using WordsJson::seconds;

HeardWord word(const Json& value) {
    if (!value.is_object()) throw Broken("an entry of \"words\" is no object");
    const Json& written = member(value, "word");
    if (!written.is_string()) throw Broken("\"word\" is no text");
    HeardWord result{.word = written.get<std::string>(),
                     .start = seconds(value, "start"),
                     .end = seconds(value, "end"),
                     .confidence = std::nullopt};
    if (result.end < result.start) throw Broken("a word ends before it starts");
    if (const auto found = value.find("confidence"); found != value.end() && !found->is_null()) {
        if (!found->is_number()) throw Broken("\"confidence\" is no number");
        result.confidence = found->get<double>();
    }
    return result;
}

WordsUpdate update(std::string_view line) {
    const Json value = Json::parse(line.begin(), line.end());
    if (!value.is_object()) throw Broken("the line is no JSON object");
    WordsUpdate result;
    result.time = seconds(value, "time");
    const Json& keep = member(value, "keep");
    if (!keep.is_number_integer() || keep.get<double>() < 0 || keep.get<double>() > 0x1p53)
        throw Broken("\"keep\" is no count of words");
    result.keep = keep.get<std::int64_t>();
    const Json& words = member(value, "words");
    if (!words.is_array()) throw Broken("\"words\" is no list");
    for (const Json& entry : words) {
        result.words.push_back(word(entry));
    }
    const Json& final = member(value, "final");
    if (!final.is_boolean()) throw Broken("\"final\" is neither true nor false");
    result.final = final.get<bool>();
    return result;
}

}  // namespace

std::variant<WordsUpdate, BrokenLine> wordsFromLine(std::string_view line) {
    try {
        return update(line);
    } catch (const Broken& broken) {
        return BrokenLine{broken.what()};
    } catch (const Json::exception&) {
        return BrokenLine{"the line is no JSON"};
    }
}

std::string lineFromWords(const WordsUpdate& update) {
    Json words = Json::array();
    for (const HeardWord& word : update.words) {
        Json entry{{"word", word.word.utf8()}, {"start", word.start}, {"end", word.end}};
        if (word.confidence) entry["confidence"] = *word.confidence;
        words.push_back(std::move(entry));
    }
    return Json{
        {"time", update.time}, {"keep", update.keep}, {"words", words}, {"final", update.final}}
        .dump();
}

}  // namespace Varnelle
