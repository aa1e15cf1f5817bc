#include "PrompterCore/library/OpenSections.h"

#include <cstdint>
#include <string>
#include <utility>

#include "PrompterCore/text/Characters.h"

namespace PrompterCore {

OpenSections OpenSections::fromStored(const std::optional<Text>& stored, std::set<Text> defaults) {
    if (!stored) return {.ids = std::move(defaults)};
    OpenSections sections;
    const Characters characters(*stored);
    std::int64_t start = 0;
    for (std::int64_t i = 0; i <= characters.count(); ++i) {
        if (i < characters.count() && !characters[i].is(',')) continue;
        if (i > start) sections.ids.emplace(WellFormed{characters.slice(CharacterRange(start, i))});
        start = i + 1;
    }
    return sections;
}

void OpenSections::toggle(const Text& id) {
    if (ids.erase(id) == 0) ids.insert(id);
}

Text OpenSections::stored() const {
    std::string line;
    const char* separator = "";
    for (const Text& id : ids) {
        line.append(separator).append(id.utf8());
        separator = ",";
    }
    return Text(std::move(line));
}

}  // namespace PrompterCore
