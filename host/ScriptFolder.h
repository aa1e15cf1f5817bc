#pragma once

// A folder of scripts on disk as the library's tree, and the changes that a user makes to it.
//
//   ScriptFolder folder = ScriptFolder::read("Scripts");
//   folder.items;                       // sorted at every level
//   newScript("Scripts", folder, std::nullopt, "Talk");   // Scripts/Talk.txt, or "Talk 2.txt"
//
// A script is a file that ends in .txt or .md; its name is what stands before that. Hidden names
// and other files are left alone. An item's id is its path inside the folder, as it is on disk.

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "PrompterCore/library/ScriptItem.h"
#include "PrompterCore/text/Text.h"

namespace Varnelle {

struct ScriptFolder {
    std::vector<PrompterCore::ScriptItem> items;  ///< folders first, then by name, at every level
    std::vector<std::string> complaints;  ///< a sentence for each thing that was passed over

    /// Names that are not UTF-8, folders that cannot be read, links that lead back to a folder
    /// around them and all links to a folder but the first are passed over. Throws NoInput when
    /// `folder` itself cannot be read.
    [[nodiscard]] static ScriptFolder read(const std::filesystem::path& folder);
};

/// The item with this id, or a script's without its ending, as the list shows it; slashes at the
/// end do not count. Throws NoInput when there is none, and when two scripts differ in their ending
/// only.
[[nodiscard]] PrompterCore::ScriptItem itemOf(const ScriptFolder& folder,
                                              const PrompterCore::Text& id);

/// Makes an empty script in the folder item `parent` (at the top when absent) and returns where.
/// The name is made safe and different from its siblings'; a script's ending behind it is the
/// file's, which is .txt otherwise. Throws CannotWrite, and nothing was written over.
std::filesystem::path newScript(const std::filesystem::path& root, const ScriptFolder& folder,
                                const std::optional<PrompterCore::Text>& parent,
                                const PrompterCore::Text& name);
/// The same for a folder.
std::filesystem::path newFolder(const std::filesystem::path& root, const ScriptFolder& folder,
                                const std::optional<PrompterCore::Text>& parent,
                                const PrompterCore::Text& name);
/// Copies an item, a folder with all in it, beside itself with the same permissions and returns
/// where the copy is. An item that is a link is copied as what it leads to. Throws CannotWrite when
/// that fails, and nothing is left of it, also where an interrupt ended the program.
std::filesystem::path duplicate(const std::filesystem::path& root, const ScriptFolder& folder,
                                const PrompterCore::ScriptItem& item);
/// Gives an item another name and returns where it is now. A script keeps its ending unless the
/// name has one.
std::filesystem::path rename(const std::filesystem::path& root, const ScriptFolder& folder,
                             const PrompterCore::ScriptItem& item, const PrompterCore::Text& name);

}  // namespace Varnelle
