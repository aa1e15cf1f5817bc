#pragma once

// Trees for tests, written as they nest: each item's name is its id's last component.
//
//   folder("Talks", {script("Talks/Keynote")})

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "PrompterCore/library/ScriptItem.h"

namespace PrompterCore::Tests {

inline Text lastComponent(const Text& id) {
    return Text(id.utf8().substr(id.utf8().rfind('/') + 1));
}

inline ScriptItem script(const Text& id) {
    return {id, lastComponent(id), ScriptItem::Kind::script, std::nullopt};
}

inline ScriptItem folder(const Text& id, std::vector<ScriptItem> children = {}) {
    return {id, lastComponent(id), ScriptItem::Kind::folder, std::move(children)};
}

/// `depth` folders, each in the one before, the innermost holding a script.
inline ScriptItem chain(int depth) {
    std::string id = "f";
    for (int i = 1; i < depth; ++i)
        id += "/f";
    ScriptItem item = folder(Text(id), {script(Text(id + "/s"))});
    while (id.size() > 1) {
        id.resize(id.size() - 2);
        std::vector<ScriptItem> children;
        children.push_back(std::move(item));
        item = folder(Text(id), std::move(children));
    }
    return item;
}

}  // namespace PrompterCore::Tests
