#pragma once

// Generated values for laws: texts over an alphabet of what goes wrong with texts.
//
//   Tests::forAll([](const Text& text) { ... });         // Text makes itself: nasty, well-formed
//   const std::string bytes = *Tests::anyBytes();        // well-formed or not
//   const Text small = *Tests::textOver({"a", " ", "#"});    // an alphabet of your own

#include <string>
#include <string_view>
#include <vector>

#include <rapidcheck.h>

#include "PrompterCore/text/Text.h"
#include "tests/support/Printing.h"

namespace PrompterCore::Tests {

/// The pieces that nasty texts are made of, the plainest first, since examples shrink to the front.
inline const std::vector<std::string>& nastyPieces() {
    using namespace std::string_literals;
    static const std::vector<std::string> pieces = {
        "a"s,
        "b"s,
        " "s,
        "\n"s,
        "1"s,
        "-"s,
        "."s,
        ","s,
        "#"s,
        "# "s,
        "Z"s,
        "'"s,
        "word"s,
        "0"s,
        // white space and line breaks
        "\t"s,
        "\r"s,
        "\r\n"s,
        "\v"s,
        "\f"s,
        "\u0085"s,
        "\u2028"s,
        "\u2029"s,
        "\u00A0"s,
        "\u3000"s,
        "\0"s,
        "\x7F"s,
        "\u200B"s,
        "\uFEFF"s,
        "\uFFFD"s,
        // marks, alone and on a letter; composed and decomposed
        "\u0301"s,
        "\u0308"s,
        "\u0323"s,
        "\u0338"s,
        "e\u0301"s,
        "\u00E9"s,
        "\u1EBF"s,
        "e\u0302\u0301"s,
        "\u0130"s,
        "\u0131"s,
        "\u00DF"s,
        "\u212B"s,
        "\u00C5"s,
        " \u0301"s,
        "\u034F"s,
        // Greek, Cyrillic
        "\u03A3"s,
        "\u03C2"s,
        "\u0390"s,
        "\u1F80"s,
        "\u0345"s,
        "\u0439"s,
        "\u0451"s,
        // digits and numerals
        "\uFF11"s,
        "\u0663"s,
        "\u06F4"s,
        "\u00BD"s,
        "\u00B2"s,
        "\u2460"s,
        "\u2167"s,
        "\u4E09"s,
        // flags, half a flag, emoji sequences
        "\U0001F1E9"s,
        "\U0001F1E9\U0001F1EA"s,
        "\U0001F468\u200D\U0001F469\u200D\U0001F467"s,
        "\U0001F44D\U0001F3FD"s,
        "\U0001F3FD"s,
        "\u200D"s,
        "\uFE0F"s,
        "\u2764\uFE0F"s,
        "1\uFE0F\u20E3"s,
        "\u20E3"s,
        "\u00A9"s,
        // Hangul: syllables and jamo
        "\uAC00"s,
        "\uAC01"s,
        "\u1100"s,
        "\u1161"s,
        "\u11A8"s,
        "\uFFA1"s,
        // Hebrew and Arabic with points
        "\u05E9\u05C1"s,
        "\u05B0"s,
        "\uFB2A"s,
        "\u05D0"s,
        "\u0628\u064E"s,
        "\u0651"s,
        "\u0623"s,
        "\u0627\u0654"s,
        "\u0622"s,
        "\u0600"s,
        "\u0670"s,
        // kana: composed, decomposed, half-width; full-width forms
        "\u304C"s,
        "\u304B\u3099"s,
        "\u3099"s,
        "\uFF76\uFF9E"s,
        "\uFF9E"s,
        "\u30AC"s,
        "\uFF21"s,
        "\uFF03"s,
        "\uFF0D"s,
        "\uFFE3"s,
        // Devanagari, Thai, Tamil; Han
        "\u0915\u093F"s,
        "\u0915\u094D\u0937"s,
        "\u0929"s,
        "\u093C"s,
        "\u0951"s,
        "\u0E33"s,
        "\u0E48"s,
        "\u0E01\u0E34"s,
        "\u0BA8\u0BBF"s,
        "\u8A9E"s,
        "\uF900"s,
    };
    return pieces;
}

/// Parts that are not well-formed, alone or together with what may follow them.
inline const std::vector<std::string>& illFormedPieces() {
    using namespace std::string_literals;
    static const std::vector<std::string> pieces = {
        "\xFF"s,     "\x80"s,         "\xC0\x80"s,     "\xC3"s,
        "\xE2\x82"s, "\xED\xA0\x80"s, "\xF0\x9F"s,     "\xF0\x9F\x87"s,
        "\xF4\x90"s, "\xF8\x88\x80"s, "\xE0\x80\xAF"s, "\xBF"s,
    };
    return pieces;
}

/// Any number of pieces of `alphabet` in a row; shrinks to fewer and to earlier ones.
inline rc::Gen<std::string> bytesOver(std::vector<std::string> alphabet) {
    const auto index = rc::gen::inRange<std::size_t>(0, alphabet.size());
    return rc::gen::map(rc::gen::container<std::vector<std::size_t>>(index),
                        [alphabet](const std::vector<std::size_t>& indices) {
                            std::string bytes;
                            for (const std::size_t i : indices)
                                bytes += alphabet[i];
                            return bytes;
                        });
}

/// A text over pieces of your own.
inline rc::Gen<Text> textOver(std::vector<std::string> alphabet) {
    return rc::gen::map(bytesOver(std::move(alphabet)),
                        [](std::string bytes) { return Text(std::move(bytes)); });
}

inline rc::Gen<Text> nastyText() { return textOver(nastyPieces()); }

/// Bytes that may be ill-formed anywhere.
inline rc::Gen<std::string> anyBytes() {
    std::vector<std::string> pieces = nastyPieces();
    for (const std::string& piece : illFormedPieces())
        pieces.insert(pieces.end(), 6, piece);
    return bytesOver(std::move(pieces));
}

/// Two texts that are often equal or nearly so: one is made of the other's forms.
struct TwoTexts {
    Text a, b;
};

inline rc::Gen<TwoTexts> nearTexts() {
    return rc::gen::map(
        rc::gen::tuple(nastyText(), nastyText(), rc::gen::inRange(0, 4)),
        [](const std::tuple<Text, Text, int>& made) {
            const auto& [a, b, how] = made;
            if (how == 0) return TwoTexts{a, b};
            if (how == 1) return TwoTexts{a, a.composed()};
            const Text& tail = how == 2 ? a : b;
            return TwoTexts{a.utf8() + tail.utf8(), a.composed().utf8() + tail.composed().utf8()};
        });
}

inline std::ostream& operator<<(std::ostream& out, const TwoTexts& two) {
    return out << two.a << " and " << two.b;
}

}  // namespace PrompterCore::Tests

namespace rc {

template <>
struct Arbitrary<PrompterCore::Text> {
    static Gen<PrompterCore::Text> arbitrary() { return PrompterCore::Tests::nastyText(); }
};

template <>
struct Arbitrary<PrompterCore::Tests::TwoTexts> {
    static Gen<PrompterCore::Tests::TwoTexts> arbitrary() {
        return PrompterCore::Tests::nearTexts();
    }
};

}  // namespace rc
