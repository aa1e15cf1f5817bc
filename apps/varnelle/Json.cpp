#include "apps/varnelle/Json.h"

namespace Varnelle {

Json asJson(const Text& text) { return text.utf8(); }

Json asJson(const ScriptToken& token) {
    return {{"index", token.index},
            {"text", asJson(token.text)},
            {"sourceRange", asJson(token.sourceRange)}};
}

Json asJson(const ScriptWord& word) {
    return {{"text", asJson(word.text)},
            {"tokenRange", asJson(word.tokenRange)},
            {"breaksBefore", word.breaksBefore},
            {"indent", word.indent}};
}

Json asJson(const ScriptHeading& heading) {
    return {{"title", asJson(heading.title)},
            {"sourceRange", asJson(heading.sourceRange)},
            {"wordIndex", heading.wordIndex},
            {"firstToken", heading.firstToken},
            {"breaksBefore", heading.breaksBefore}};
}

Json asJson(const ScriptChapter& chapter) {
    return {{"index", chapter.index},
            {"title", asJson(chapter.title)},
            {"sourceRange", asJson(chapter.sourceRange)},
            {"wordRange", asJson(chapter.wordRange)},
            {"tokenRange", asJson(chapter.tokenRange)},
            {"startsAt", chapter.startsAt}};
}

Json asJson(const PromptLine& line) {
    return {{"text", asJson(line.text)},
            {"tokenRange", asJson(line.tokenRange)},
            {"wordRange", asJson(line.wordRange)},
            {"indent", line.indent},
            {"heading", asJson(line.heading)}};
}

Json asJson(const HeardWord& word) {
    return {{"word", asJson(word.word)},
            {"start", word.start},
            {"end", word.end},
            {"confidence", word.confidence ? Json(*word.confidence) : Json()}};
}

}  // namespace Varnelle
