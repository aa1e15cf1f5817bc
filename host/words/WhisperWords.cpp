#include "host/words/WhisperWords.h"

#include <utility>

#include "PrompterCore/text/Trims.h"

namespace Varnelle {

using WordsJson::Broken;
using WordsJson::Json;

namespace {

// A stretch of sound with what is said in it.
struct Piece {
    std::string bytes;
    double start, end;
    std::optional<double> confidence;
};

Piece pieceOf(const Json& object) {
    const Json& offsets = WordsJson::member(object, "offsets");
    const auto milliseconds = [&](const char* key) {
        return WordsJson::secondsOf(WordsJson::member(offsets, key), key, 0.001);
    };
    Piece piece{.bytes = WordsJson::bytesOf(WordsJson::member(object, "text"), "text"),
                .start = milliseconds("from"),
                .end = milliseconds("to"),
                .confidence = std::nullopt};
    if (piece.end < piece.start) throw Broken("it ends before it starts");
    if (const auto p = object.find("p"); p != object.end() && p->is_number())
        piece.confidence = confidenceOf(p->get<double>());
    return piece;
}

// "[_BEG_]", "[_TT_550]", "<|endoftext|>".
bool isControl(std::string_view bytes) {
    return (bytes.starts_with("[_") && bytes.ends_with("]")) ||
           (bytes.starts_with("<|") && bytes.ends_with("|>"));
}

// "[BLANK_AUDIO]", which comes in as many pieces as a word.
bool isRemark(std::string_view bytes) {
    const Text text(bytes);
    const std::string_view trimmed = PrompterCore::trimmedOfWhiteSpace(text.utf8());
    return trimmed.starts_with('[') && trimmed.find(']') == trimmed.size() - 1;
}

}  // namespace

void WhisperWords::read(std::string_view line) { take(objects_.take(line)); }

void WhisperWords::end() {
    take(objects_.finish());
    settleAll(pieces_.finish());
}

void WhisperWords::take(const std::vector<JsonObjects::Found>& found) {
    for (const JsonObjects::Found& object : found) {
        try {
            if (!object.isWhole) throw Broken("this is no whole JSON object");
            takeSegment(WordsJson::parsed(object.text));
        } catch (const Broken& broken) {
            passOver(object.line, broken.what());
        }
    }
}

void WhisperWords::settleAll(std::vector<HeardWord> words) {
    for (HeardWord& word : words) {
        settle(std::move(word));
    }
}

void WhisperWords::takeSegment(const Json& object) {
    const Piece segment = pieceOf(object);
    std::vector<Piece> pieces;
    const auto tokens = object.find("tokens");
    if (tokens != object.end() && tokens->is_array()) {
        for (const Json& token : *tokens) {
            Piece piece = pieceOf(token);
            if (!isControl(piece.bytes)) pieces.push_back(std::move(piece));
        }
    }
    if (pieces.empty()) pieces.push_back(segment);
    // Where words are not parted by spaces a segment is all that is known of them.
    partsBySpaces_ = partsBySpaces_ || segment.bytes.starts_with(' ');
    if (!partsBySpaces_) settleAll(pieces_.finish());
    if (isRemark(segment.bytes)) return settleAll(pieces_.finish());
    for (const Piece& piece : pieces) {
        settleAll(pieces_.add(piece.bytes, piece.start, piece.end, piece.confidence));
    }
}

}  // namespace Varnelle
