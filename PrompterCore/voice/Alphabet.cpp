#include "PrompterCore/voice/Alphabet.h"

#include <string_view>

#include "PrompterCore/text/Characters.h"
#include "PrompterCore/text/Utf8.h"

namespace PrompterCore {

namespace {

// Calls `ascii` or `other` for each character of `word`, in order. Composing keeps the characters'
// boundaries (they respect canonical equivalence) and makes equivalent characters the same bytes.
void forEachCharacter(const Text& word, auto&& ascii, auto&& other) {
    const auto visit = [&](std::string_view character) {
        if (character.size() == 1) {
            ascii(static_cast<unsigned char>(character.front()));
        } else {
            other(character);
        }
    };
    const std::string& bytes = word.utf8();
    if (Utf8::isAscii(bytes) && bytes.find('\r') == std::string::npos) {
        for (const char byte : bytes) {
            ascii(static_cast<unsigned char>(byte));
        }
    } else {
        const Characters characters(word.composed());
        for (const Character character : characters) {
            visit(character.utf8());
        }
    }
}

}  // namespace

void Alphabet::learn(const Text& word, std::vector<Letter>& letters) {
    const auto numbered = [this](Letter& letter) {
        if (letter == unknown) letter = size_++;
        return letter;
    };
    forEachCharacter(
        word, [&](unsigned char ascii) { letters.push_back(numbered(ascii_[ascii])); },
        [&](std::string_view other) { letters.push_back(numbered(others_[std::string(other)])); });
}

void Alphabet::spell(const Text& word, std::vector<Letter>& letters) const {
    forEachCharacter(
        word, [&](unsigned char ascii) { letters.push_back(ascii_[ascii]); },
        [&](std::string_view other) {
            const auto found = others_.find(other);
            letters.push_back(found == others_.end() ? unknown : found->second);
        });
}

}  // namespace PrompterCore
