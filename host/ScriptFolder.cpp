#include "host/ScriptFolder.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <set>
#include <string_view>
#include <system_error>
#include <utility>

#include <sys/stat.h>
#include <unistd.h>

#include "PrompterCore/library/LibraryNaming.h"
#include "PrompterCore/library/LibraryOrder.h"
#include "PrompterCore/library/LibraryTree.h"
#include "PrompterCore/text/Folding.h"
#include "host/Failures.h"
#include "host/InputFile.h"
#include "host/NewFile.h"

namespace Varnelle {

namespace {

using namespace PrompterCore;  // NOLINT
using std::filesystem::path;

constexpr std::array<std::string_view, 2> endings = {".txt", ".md"};

// The ending that makes a file a script, in the letters that it has. Empty for other files.
std::string endingOf(const path& file) {
    const std::string ending = file.extension().string();
    const Text lowered = lowercased(Text(ending));
    const bool isScript = std::ranges::any_of(
        endings, [&](std::string_view known) { return lowered == Text(known); });
    return isScript ? ending : "";
}

// Reads the tree below a folder; knows the folders around the one that it is in.
class Reader {
public:
    explicit Reader(ScriptFolder& result) : result_(result) {}

    std::vector<ScriptItem> itemsIn(const path& folder, const std::string& id) {
        std::error_code error;
        std::filesystem::directory_iterator entry(folder, error);
        if (error && id.empty()) throw NoInput(shownName(folder.string()) + ": " + error.message());
        if (error) {
            passOver(folder, error.message());
            return {};
        }
        std::vector<path> files;
        while (entry != std::filesystem::directory_iterator()) {
            files.push_back(entry->path());
            entry.increment(error);
        }
        if (error) passOver(folder, error.message());
        // The disk's own order would choose among links.
        std::ranges::sort(files);
        std::vector<ScriptItem> items;
        for (const path& file : files) {
            if (std::optional<ScriptItem> item = itemAt(file, id)) {
                items.push_back(std::move(*item));
            }
        }
        return LibraryOrder::sorted(std::move(items));
    }

    // A folder on the way from the top, by what the system knows it by.
    class Inside {
    public:
        Inside(Reader& reader, const struct stat& status) : reader_(reader) {
            reader_.around_.emplace_back(status.st_dev, status.st_ino);
        }
        Inside(const Inside&) = delete;
        Inside& operator=(const Inside&) = delete;
        ~Inside() { reader_.around_.pop_back(); }

    private:
        Reader& reader_;
    };

private:
    std::optional<ScriptItem> itemAt(const path& file, const std::string& parent) {
        const std::string fileName = file.filename().string();
        if (fileName.starts_with('.')) return std::nullopt;
        struct stat status {};
        if (stat(file.c_str(), &status) != 0) return passOver(file, std::strerror(errno));
        if (!S_ISDIR(status.st_mode) && (!S_ISREG(status.st_mode) || endingOf(file).empty()))
            return std::nullopt;
        if (!Text::fromUtf8(fileName)) return passOver(file, "its name is not UTF-8");
        std::string id = parent.empty() ? fileName : parent + "/" + fileName;
        if (!S_ISDIR(status.st_mode))
            return ScriptItem{Text(std::move(id)), Text(file.stem().string()),
                              ScriptItem::Kind::script, std::nullopt};
        if (std::ranges::count(around_, std::pair(status.st_dev, status.st_ino)) > 0)
            return passOver(file, "a link back to a folder that it is in");
        // Folders that link to each other would be read in every order that there is.
        std::error_code unknown;
        if (std::filesystem::is_symlink(file, unknown) &&
            !linked_.emplace(status.st_dev, status.st_ino).second)
            return passOver(file, "another link to the same folder");
        const Inside inside(*this, status);
        std::vector<ScriptItem> children = itemsIn(file, id);
        return ScriptItem{Text(std::move(id)), Text(fileName), ScriptItem::Kind::folder,
                          std::move(children)};
    }

    std::nullopt_t passOver(const path& file, const std::string& why) {
        result_.complaints.push_back(shownName(file.string()) + ": " + why + "; passed over");
        return std::nullopt;
    }

    ScriptFolder& result_;
    std::vector<std::pair<dev_t, ino_t>> around_;
    std::set<std::pair<dev_t, ino_t>> linked_;  // the folders that links led to
};

const std::vector<ScriptItem>& siblingsIn(const ScriptItem* parent, const ScriptFolder& folder) {
    static const std::vector<ScriptItem> none;
    if (parent == nullptr) return folder.items;
    return parent->children ? *parent->children : none;
}

std::vector<Text> names(const std::vector<ScriptItem>& items, const Text* except = nullptr) {
    std::vector<Text> result;
    for (const ScriptItem& item : items) {
        if (except == nullptr || item.id.utf8() != except->utf8()) result.push_back(item.name);
    }
    return result;
}

// A name that may be a file's: a slash that carries a mark is another character, and still a slash
// to the file system.
std::string safe(const Text& name) {
    if (name.utf8().find('/') != std::string::npos || name.utf8().find('\0') != std::string::npos)
        throw CannotWrite("a name cannot hold a slash");
    return name.utf8();
}

path placeOf(const path& root, const ScriptItem& item) { return root / item.id.utf8(); }

std::optional<ScriptItem> folderOf(const ScriptFolder& folder, const std::optional<Text>& parent) {
    if (!parent) return std::nullopt;
    ScriptItem item = itemOf(folder, *parent);
    if (!item.isFolder()) throw NoInput(item.id.utf8() + ": no folder");
    return item;
}

// Where something new called `name` goes, before its ending.
path freePlace(const path& root, const ScriptFolder& folder, const std::optional<Text>& parent,
               const Text& name) {
    const std::optional<ScriptItem> item = folderOf(folder, parent);
    const Text free =
        LibraryNaming::unique(name, names(siblingsIn(item ? &*item : nullptr, folder)));
    return (item ? placeOf(root, *item) : root) / safe(free);
}

std::vector<ScriptItem> siblingsOf(const ScriptFolder& folder, const ScriptItem& item) {
    const std::optional<Text> parent = LibraryTree::parentIDOf(item.id);
    return parent ? LibraryTree::find(*parent, folder.items)->children.value() : folder.items;
}

// A file that goes away unless it is given its name.
class Unfinished {
public:
    explicit Unfinished(path place) : place_(std::move(place)) {}
    Unfinished(const Unfinished&) = delete;
    Unfinished& operator=(const Unfinished&) = delete;
    ~Unfinished() {
        std::error_code ignored;
        if (!place_.empty()) std::filesystem::remove_all(place_, ignored);
    }

    const path& place() const { return place_; }
    void finished() { place_.clear(); }

private:
    path place_;
};

}  // namespace

ScriptFolder ScriptFolder::read(const path& folder) {
    ScriptFolder result;
    Reader reader(result);
    struct stat status {};
    if (stat(folder.c_str(), &status) != 0)
        throw NoInput(shownName(folder.string()) + ": " + std::strerror(errno));
    const Reader::Inside inside(reader, status);
    result.items = reader.itemsIn(folder, "");
    return result;
}

ScriptItem itemOf(const ScriptFolder& folder, const Text& id) {
    std::optional<ScriptItem> item = LibraryTree::find(id, folder.items);
    for (const std::string_view ending : endings) {
        if (!item) item = LibraryTree::find(Text(id.utf8() + std::string(ending)), folder.items);
    }
    if (!item) throw NoInput(id.utf8() + ": no script and no folder in the library");
    return *std::move(item);
}

path newScript(const path& root, const ScriptFolder& folder, const std::optional<Text>& parent,
               const Text& name) {
    path place = freePlace(root, folder, parent, name);
    place += endings.front();
    const File file = createFile(place);
    file.sync();
    syncFolder(place.parent_path());
    return place;
}

path newFolder(const path& root, const ScriptFolder& folder, const std::optional<Text>& parent,
               const Text& name) {
    path place = freePlace(root, folder, parent, name);
    if (mkdir(place.c_str(), 0777) != 0)
        throw CannotWrite(place.string() + ": " + std::strerror(errno));
    syncFolder(place.parent_path());
    return place;
}

path duplicate(const path& root, const ScriptFolder& folder, const ScriptItem& item) {
    const path original = placeOf(root, item);
    const std::string name =
        safe(LibraryNaming::copyNameOf(item.name, names(siblingsOf(folder, item))));
    const path beside = original.parent_path();
    Unfinished copy(beside / (".varnelle-copy-" + std::to_string(getpid())));
    if (item.isFolder()) {
        std::error_code error;
        std::filesystem::copy(
            original, copy.place(),
            std::filesystem::copy_options::recursive | std::filesystem::copy_options::copy_symlinks,
            error);
        if (error) throw CannotWrite(copy.place().string() + ": " + error.message());
    } else {
        const std::string bytes = InputFile(original.string()).rest();
        const File file = createFile(copy.place());
        file.write(bytes);
        file.sync();
    }
    path place = giveName(copy.place(), NewFileName(beside, name),
                          item.isFolder() ? "" : endingOf(original));
    copy.finished();
    return place;
}

path rename(const path& root, const ScriptFolder& folder, const ScriptItem& item,
            const Text& name) {
    const path before = placeOf(root, item);
    const Text free = LibraryNaming::unique(name, names(siblingsOf(folder, item), &item.id));
    const std::string ending = item.isFolder() ? "" : endingOf(before);
    const NewFileName after(before.parent_path(), safe(free));
    if (after.withEnding(ending) == before) return before;
    return giveName(before, after, ending);
}

}  // namespace Varnelle
