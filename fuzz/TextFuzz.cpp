// The laws of the text room, on arbitrary bytes.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "PrompterCore/support/Require.h"
#include "PrompterCore/text/CharacterClasses.h"
#include "PrompterCore/text/Characters.h"
#include "PrompterCore/text/Folding.h"
#include "PrompterCore/text/Text.h"
#include "PrompterCore/text/Trims.h"
#include "PrompterCore/text/Utf8.h"

namespace PrompterCore {
namespace {

void mendingMakesWellFormed(const std::string& bytes, const Text& text) {
    std::size_t at = 0;
    require(Utf8::illFormedPart(text.utf8(), at) == 0, "a text is well-formed");
    require(Text::fromUtf8(bytes).has_value() == (text.utf8() == bytes),
            "mending changes the ill-formed only");
    require(Text(text.utf8()).utf8() == text.utf8(), "mending is done once");
}

void charactersTile(const Text& text) {
    const Characters characters(text);
    std::int64_t utf16 = 0;
    std::size_t at = 0;
    for (const Character character : characters) {
        require(character.utf8().data() == characters.text().utf8().data() + at,
                "a character starts where the one before ends");
        at += character.utf8().size();
        utf16 += character.utf16Length();
        require(!character.isLineBreak() || character.isWhiteSpace(),
                "a line break is white space");
    }
    require(at == text.utf8().size(), "characters tile their text");
    require(utf16 == Utf8::utf16Length(text.utf8()), "lengths in UTF-16 add up");
}

void equalityIsThatOfComposedBytes(const Text& a, const Text& b) {
    const std::string left = a.composed().utf8(), right = b.composed().utf8();
    require((a == b) == (left == right), "equality is that of the composed bytes");
    require((a < b) == (left < right), "order is that of the composed bytes");
    const std::hash<Text> hash;
    require(a != b || hash(a) == hash(b), "equal texts have equal hashes");
    require(a != b || folded(a).utf8() == folded(b).utf8(), "equal texts fold alike");
    require(a.composed() == a, "a text equals its composed form");
}

void foldingIsStable(const Text& text) {
    const Text once = folded(text);
    require(folded(once).utf8() == once.utf8(), "folding is done once");
    require(once.composed().utf8() == once.utf8(), "a folded text is composed");
    require(folded(text.composed()).utf8() == once.utf8(), "folding looks through composition");
    const Text lower = lowercased(text);
    std::size_t at = 0;
    require(Utf8::illFormedPart(lower.utf8(), at) == 0, "a lower-cased text is well-formed");
}

void trimsTakeOnlyTheirClass(const Text& text) {
    const std::string_view outer = trimmedOfBlanks(text.utf8());
    const std::string_view inner = trimmedOfWhiteSpace(text.utf8());
    require(trimmedOfWhiteSpace(outer) == inner, "blanks are white space");
    require(trimmedOfWhiteSpace(inner) == inner, "trimming is done once");
    require(inner.empty() || !Character(inner).isWhiteSpace(), "nothing is left to trim");
}

}  // namespace
}  // namespace PrompterCore

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace PrompterCore;
    const std::string bytes(data, data + size);
    const Text text(bytes);
    mendingMakesWellFormed(bytes, text);
    charactersTile(text);
    foldingIsStable(text);
    trimsTakeOnlyTheirClass(text);
    // A zero byte parts two texts to compare.
    const std::size_t zero = bytes.find('\0');
    if (zero != std::string::npos)
        equalityIsThatOfComposedBytes(bytes.substr(0, zero), bytes.substr(zero + 1));
    return 0;
}
