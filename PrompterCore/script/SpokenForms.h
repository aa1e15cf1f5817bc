#pragma once

// A written word as it is spoken: lower case, accents and punctuation dropped, numbers written out,
// contractions expanded. Script words and recognised words are compared in this form.
//
//   spokenForms("Don't");     // "do", "not"
//   spokenForms("3.14");      // "three", "point", "one", "four"
//   spokenForms("2024");      // "twenty", "twenty", "four"
//   spokenForms("Café,");     // "cafe"
//   spokenForms("...");       // nothing: it is not spoken

#include <string_view>
#include <vector>

#include "PrompterCore/script/WordTaker.h"
#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// The spoken forms of one word; none when nothing in it is spoken. `word` is taken as one word
/// whatever it holds: white space inside it is dropped like punctuation. O(n).
[[nodiscard]] std::vector<Text> spokenForms(const Text& word);

/// Appends the spoken forms of `word`, which is well-formed, to `forms`. For loops over many words.
void appendSpokenForms(std::string_view word, std::vector<Text>& forms);

/// Hands the spoken forms of `word`, which is well-formed, to `take` in order. An ordinary word
/// needs no allocation.
void takeSpokenForms(std::string_view word, WordTaker take);

}  // namespace PrompterCore
