#pragma once

// A folder or a script of the library: the sidebar's tree is a list of these.
//
//   ScriptItem folder{.id = "Talks", .name = "Talks", .kind = ScriptItem::Kind::folder,
//                     .children = {{{.id = "Talks/Keynote", .name = "Keynote",
//                                    .kind = ScriptItem::Kind::script}}}};

#include <optional>
#include <string_view>
#include <vector>

#include "PrompterCore/support/Enumeration.h"
#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// A value: holds everything below it.
struct ScriptItem {
    /// What an item is.
    enum class Kind {
        folder,  ///< holds other items
        script,  ///< holds a text
    };

    Text id;    ///< unique; a path: the enclosing folder's id, "/", the item's own last component
    Text name;  ///< shown to the user, searched and sorted by
    Kind kind = Kind::script;
    /// Absent for scripts; may be for folders.
    std::optional<std::vector<ScriptItem>> children = std::nullopt;

    /// True for a folder, whether it has children or not.
    [[nodiscard]] bool isFolder() const noexcept { return kind == Kind::folder; }

    friend bool operator==(const ScriptItem&, const ScriptItem&) = default;
};

template <>
struct Enumeration<ScriptItem::Kind> {
    struct Row {
        ScriptItem::Kind value;
        std::string_view caseName;
    };
    static constexpr Row rows[] = {{ScriptItem::Kind::folder, "folder"},
                                   {ScriptItem::Kind::script, "script"}};
};

}  // namespace PrompterCore
