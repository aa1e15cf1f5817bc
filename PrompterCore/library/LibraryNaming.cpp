#include "PrompterCore/library/LibraryNaming.h"

#include <algorithm>
#include <string>
#include <unordered_set>
#include <utility>

#include "PrompterCore/support/Integers.h"
#include "PrompterCore/text/Characters.h"
#include "PrompterCore/text/Folding.h"
#include "PrompterCore/text/Trims.h"

namespace PrompterCore::LibraryNaming {

namespace {

std::string withoutForbidden(const Text& name) {
    std::string kept;
    for (const Character character : Characters(name)) {
        if (character.is('/') || character.is(':') || character.isLineBreak()) continue;
        kept += character.utf8();
    }
    return kept;
}

Text trimmed(std::string_view bytes) { return Text(WellFormed{trimmedOfBlanks(bytes)}); }

}  // namespace

Text sanitize(const Text& name) {
    const Text kept = trimmed(withoutForbidden(name));
    const Characters undotted(kept);
    std::int64_t start = 0;
    while (start < undotted.count() && undotted[start].is('.'))
        ++start;
    const Characters whole(trimmed(undotted.slice(CharacterRange(start, undotted.count()))));
    const std::int64_t length = std::min(whole.count(), longestName);
    const Text result =
        length < whole.count() ? trimmed(whole.slice(CharacterRange(0, length))) : whole.text();
    return result.isEmpty() ? Text(fallback) : result;
}

Text unique(const Text& name, const std::vector<Text>& existing) {
    const Text base = sanitize(name);
    std::unordered_set<Text> taken;
    for (const Text& other : existing) {
        taken.insert(lowercased(other));
    }
    Text candidate = base;
    for (std::int64_t n = 2; taken.contains(lowercased(candidate)); n = checkedAdd(n, 1)) {
        candidate = Text(base.utf8() + " " + std::to_string(n));
    }
    return candidate;
}

Text copyNameOf(const Text& name, const std::vector<Text>& existing) {
    return unique(Text(sanitize(name).utf8() + " copy"), existing);
}

}  // namespace PrompterCore::LibraryNaming
