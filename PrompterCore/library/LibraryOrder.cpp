#include "PrompterCore/library/LibraryOrder.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

#include "PrompterCore/text/Folding.h"

namespace PrompterCore::LibraryOrder {

namespace {

// What an item is sorted by, brought to a form whose bytes order as the texts do.
struct Key {
    bool isScript;
    std::string name;
    const Text* id;
    std::size_t index;

    friend bool operator<(const Key& a, const Key& b) {
        if (a.isScript != b.isScript) return b.isScript;
        if (const int order = a.name.compare(b.name); order != 0) return order < 0;
        return *a.id < *b.id;
    }
};

}  // namespace

std::vector<ScriptItem> sorted(std::vector<ScriptItem> items) {
    std::vector<Key> keys;
    keys.reserve(items.size());
    for (std::size_t i = 0; i < items.size(); ++i) {
        keys.push_back(
            {!items[i].isFolder(), caseFolded(items[i].name).composed().utf8(), &items[i].id, i});
    }
    std::stable_sort(keys.begin(), keys.end());
    std::vector<ScriptItem> result;
    result.reserve(items.size());
    for (const Key& key : keys) {
        result.push_back(std::move(items[key.index]));
    }
    return result;
}

}  // namespace PrompterCore::LibraryOrder
