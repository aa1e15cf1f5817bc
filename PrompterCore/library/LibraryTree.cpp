#include "PrompterCore/library/LibraryTree.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "PrompterCore/support/Integers.h"
#include "PrompterCore/text/Characters.h"
#include "PrompterCore/text/PatternSearch.h"
#include "PrompterCore/text/Trims.h"

namespace PrompterCore::LibraryTree {

namespace {

using Items = std::vector<ScriptItem>;

// What a walk does with an item's children, and whether it goes on at all.
enum class Walk { into, past, stop };

// Calls `visit` for each item, depth-first, an item before its children. Keeps its own stack: a
// tree may be deeper than the program's.
template <class Visit>
void walk(const Items& items, Visit visit) {
    struct Level {
        const Items* items;
        std::size_t next;
    };
    std::vector<Level> levels{{&items, 0}};
    while (!levels.empty()) {
        Level& level = levels.back();
        if (level.next == level.items->size()) {
            levels.pop_back();
            continue;
        }
        const ScriptItem& item = (*level.items)[level.next++];
        const Walk answer = visit(item);
        if (answer == Walk::stop) return;
        if (answer == Walk::into && item.children) levels.push_back({&*item.children, 0});
    }
}

const ScriptItem* found(const Text& wanted, const Items& items) {
    const ScriptItem* result = nullptr;
    walk(items, [&](const ScriptItem& item) {
        if (item.id != wanted) return Walk::into;
        result = &item;
        return Walk::stop;
    });
    return result;
}

std::optional<ScriptItem> copied(const ScriptItem* item) {
    return item == nullptr ? std::nullopt : std::optional(*item);
}

// The components between the separators, empty ones left out.
std::vector<std::string_view> components(const Characters& id) {
    std::vector<std::string_view> result;
    std::int64_t start = 0;
    for (std::int64_t i = 0; i <= id.count(); ++i) {
        if (i < id.count() && !id[i].is('/')) continue;
        if (i > start) result.push_back(id.slice(CharacterRange(start, i)));
        start = i + 1;
    }
    return result;
}

Items filteredBy(const Items& items, const PatternSearch& search) {
    Items kept;
    for (const ScriptItem& item : items) {
        if (search.isIn(item.name)) {
            kept.push_back(item);
        } else if (item.children) {
            Items children = filteredBy(*item.children, search);
            if (!children.empty()) {
                kept.push_back({item.id, item.name, item.kind, std::move(children)});
            }
        }
    }
    return kept;
}

std::vector<const Text*> visible(const Items& items, const std::set<Text>& expanded) {
    std::vector<const Text*> ids;
    walk(items, [&](const ScriptItem& item) {
        ids.push_back(&item.id);
        return item.isFolder() && expanded.contains(item.id) ? Walk::into : Walk::past;
    });
    return ids;
}

}  // namespace

std::optional<ScriptItem> find(const Text& wanted, const Items& items) {
    return copied(found(wanted, items));
}

std::optional<Text> parentIDOf(const Text& id) {
    const Characters characters(id);
    std::vector<std::string_view> parts = components(characters);
    if (parts.size() < 2) return std::nullopt;
    parts.pop_back();
    std::string parent;
    for (const std::string_view part : parts) {
        if (!parent.empty()) parent += '/';
        parent += part;
    }
    return Text(std::move(parent));
}

bool isDescendant(const Text& id, const Text& ancestor) {
    const Characters whole(id);
    const Characters start(Text(ancestor.utf8() + "/"));
    return whole.count() >= start.count() &&
           canonicallyEqual(whole.slice(CharacterRange(0, start.count())), start.text().utf8());
}

Items ancestorsOf(const Text& id, const Items& items) {
    std::unordered_map<Text, const ScriptItem*> wanted;
    std::vector<Text> paths;  // the innermost first
    for (std::optional<Text> path = parentIDOf(id); path; path = parentIDOf(*path)) {
        wanted.emplace(*path, nullptr);
        paths.push_back(*path);
    }
    std::size_t missing = wanted.size();
    walk(items, [&](const ScriptItem& item) {
        if (missing == 0) return Walk::stop;
        const auto place = wanted.find(item.id);
        if (place != wanted.end() && place->second == nullptr) {
            place->second = &item;
            --missing;
        }
        return Walk::into;
    });
    Items result;
    for (auto path = paths.rbegin(); path != paths.rend(); ++path) {
        if (const ScriptItem* item = wanted.at(*path); item != nullptr) result.push_back(*item);
    }
    return result;
}

std::optional<Text> insertionFolderFor(const std::optional<Text>& selected, const Items& items) {
    const ScriptItem* item = selected ? found(*selected, items) : nullptr;
    if (item == nullptr) return std::nullopt;
    return item->isFolder() ? item->id : parentIDOf(item->id);
}

std::optional<ScriptItem> scriptToOpen(const std::optional<Text>& remembered, const Items& items) {
    const ScriptItem* item = remembered ? found(*remembered, items) : nullptr;
    return item != nullptr && !item->isFolder() ? copied(item) : firstScript(items);
}

std::optional<ScriptItem> firstScript(const Items& items) {
    const ScriptItem* first = nullptr;
    walk(items, [&](const ScriptItem& item) {
        if (item.isFolder()) return Walk::into;
        first = &item;
        return Walk::stop;
    });
    return copied(first);
}

Items filtered(const Items& items, const Text& query, const Locale& locale) {
    const std::string_view trimmed = trimmedOfBlanks(query.utf8());
    if (trimmed.empty()) return items;
    return filteredBy(items, PatternSearch::ignoringCase(Text(WellFormed{trimmed}), locale));
}

std::vector<Text> folderIDs(const Items& items) {
    std::vector<Text> ids;
    walk(items, [&](const ScriptItem& item) {
        if (!item.isFolder()) return Walk::past;
        ids.push_back(item.id);
        return Walk::into;
    });
    return ids;
}

std::vector<Text> visibleIDs(const Items& items, const std::set<Text>& expanded) {
    std::vector<Text> ids;
    for (const Text* id : visible(items, expanded)) {
        ids.push_back(*id);
    }
    return ids;
}

std::optional<Text> neighbourOf(const std::optional<Text>& current, std::int64_t step,
                                const Items& items, const std::set<Text>& expanded) {
    const std::vector<const Text*> ids = visible(items, expanded);
    if (ids.empty()) return std::nullopt;
    if (!current) return *ids.front();
    const auto row = std::ranges::find_if(ids, [&](const Text* id) { return *id == *current; });
    if (row == ids.end()) return *ids.front();
    const std::int64_t target = std::clamp(saturatingAdd(row - ids.begin(), step), std::int64_t{0},
                                           signedCount(ids.size()) - 1);
    return *ids[static_cast<std::size_t>(target)];
}

}  // namespace PrompterCore::LibraryTree
