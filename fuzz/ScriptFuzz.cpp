// A script of arbitrary bytes is what the plain way builds, record by record and byte by byte.

#include <cstddef>
#include <cstdint>
#include <string>

#include "PrompterCore/script/Script.h"
#include "PrompterCore/support/Require.h"
#include "tests/reference/PlainScript.h"

using namespace PrompterCore;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Script script{Text(std::string(reinterpret_cast<const char*>(data), size))};
    const Plain::PlainScript plain = Plain::build(Plain::Unicode(), script.text().utf8());
    require(script.characters().count() == signedCount(plain.characters.size()),
            "both find the same characters");
    require(script.utf16Offsets() == plain.utf16Offsets, "both find the same offsets");
    require(script.headings() == plain.headings, "both find the same headings");
    require(script.words() == plain.words, "both find the same words");
    require(script.tokens() == plain.tokens, "both speak the same words");
    for (std::size_t i = 0; i < plain.tokens.size(); ++i) {
        require(script.tokens()[i].text.utf8() == plain.tokens[i].text.utf8(),
                "a spoken form is the same to the byte");
    }
    return 0;
}
