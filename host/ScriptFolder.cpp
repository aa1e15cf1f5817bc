#include "host/ScriptFolder.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <set>
#include <string_view>
#include <system_error>
#include <utility>

#include <fmt/format.h>
#include <sys/stat.h>
#include <unistd.h>

#include "PrompterCore/library/LibraryNaming.h"
#include "PrompterCore/library/LibraryOrder.h"
#include "PrompterCore/text/Folding.h"
#include "host/Failures.h"
#include "host/HeldSignals.h"
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
        if (error && id.empty()) throw NoInput(folder.string() + ": " + error.message());
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
        result_.complaints.push_back(file.string() + ": " + why + "; passed over");
        return std::nullopt;
    }

    ScriptFolder& result_;
    std::vector<std::pair<dev_t, ino_t>> around_;
    std::set<std::pair<dev_t, ino_t>> linked_;  // the folders that links led to
};

std::vector<Text> names(const std::vector<ScriptItem>& items, const Text* except = nullptr) {
    std::vector<Text> result;
    for (const ScriptItem& item : items) {
        if (except == nullptr || item.id.utf8() != except->utf8()) result.push_back(item.name);
    }
    return result;
}

// As a user writes a path: a shell puts a slash behind a folder's name.
Text withoutEmptyPieces(const Text& written) {
    const path tidy = path(written.utf8()).lexically_normal();
    std::string id = tidy.string();
    while (id.ends_with('/'))
        id.pop_back();
    return Text(std::move(id));
}

// An item's id as the list shows it.
Text withoutEnding(const ScriptItem& item) {
    if (item.isFolder()) return item.id;
    std::string id = item.id.utf8();
    id.resize(id.size() - endingOf(id).size());
    return Text(std::move(id));
}

template <class Matches>
void collect(const std::vector<ScriptItem>& items, Matches matches,
             std::vector<const ScriptItem*>& found) {
    for (const ScriptItem& item : items) {
        if (matches(item)) found.push_back(&item);
        if (item.children) collect(*item.children, matches, found);
    }
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
    const Text free = LibraryNaming::unique(name, names(item ? *item->children : folder.items));
    return (item ? placeOf(root, *item) : root) / safe(free);
}

std::vector<ScriptItem> siblingsOf(const ScriptFolder& folder, const ScriptItem& item) {
    const std::string parent = path(item.id.utf8()).parent_path().string();
    return parent.empty() ? folder.items : itemOf(folder, Text(parent)).children.value();
}

// A name as it was given, and the script's ending where it has one.
std::pair<Text, std::string> parted(const Text& name) {
    std::string ending = endingOf(name.utf8());
    const std::string& whole = name.utf8();
    return {Text(whole.substr(0, whole.size() - ending.size())), std::move(ending)};
}

void failOn(const std::error_code& error, const path& original) {
    if (error) throw CannotWrite(original.string() + ": " + error.message());
}

std::error_code lastError() { return {errno, std::generic_category()}; }

// All of a folder, links as links. Ends early when somebody interrupts.
void copyFolder(const path& from, const path& to, const HeldSignals& signals) {
    if (mkdir(to.c_str(), 0700) != 0) failOn(lastError(), from);
    std::error_code error;
    std::filesystem::directory_iterator entry(from, error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error)) {
        if (signals.arePending()) throw CannotWrite(from.string() + ": the copy was interrupted");
        const path& original = entry->path();
        const path copy = to / original.filename();
        std::error_code failure;
        switch (entry->symlink_status(failure).type()) {
            case std::filesystem::file_type::directory: copyFolder(original, copy, signals); break;
            case std::filesystem::file_type::symlink:
                std::filesystem::copy_symlink(original, copy, failure);
                break;
            case std::filesystem::file_type::regular:
                std::filesystem::copy_file(original, copy, failure);
                break;
            default: throw CannotWrite(original.string() + ": only files and folders are copied");
        }
        failOn(failure, original);
    }
    failOn(error, from);
    // Last, since nothing can be put into a folder that may not be written.
    const std::filesystem::perms permissions = std::filesystem::status(from, error).permissions();
    failOn(error, from);
    std::filesystem::permissions(to, permissions, error);
    failOn(error, from);
}

void copyScript(const path& from, const path& to) {
    const InputFile original(from.string());
    const File copy = createFile(to);
    struct stat status {};
    // First, since what is private may never be open to others.
    if (fstat(original.descriptor(), &status) != 0 ||
        fchmod(copy.descriptor(), status.st_mode & 0777) != 0)
        failOn(lastError(), from);
    copy.write(original.rest());
    copy.sync();
}

// Hidden, and not taken: a copy that was killed may have left one.
path unusedPlace(const path& folder) {
    std::error_code error;
    for (int number = 0;; ++number) {
        path place =
            folder / (".varnelle-copy-" + std::to_string(getpid()) + "-" + std::to_string(number));
        if (std::filesystem::symlink_status(place, error).type() ==
            std::filesystem::file_type::not_found)
            return place;
    }
}

}  // namespace

ScriptFolder ScriptFolder::read(const path& folder) {
    ScriptFolder result;
    Reader reader(result);
    struct stat status {};
    if (stat(folder.c_str(), &status) != 0)
        throw NoInput(folder.string() + ": " + std::strerror(errno));
    const Reader::Inside inside(reader, status);
    result.items = reader.itemsIn(folder, "");
    return result;
}

ScriptItem itemOf(const ScriptFolder& folder, const Text& id) {
    const Text wanted = withoutEmptyPieces(id);
    std::vector<const ScriptItem*> found;
    const auto orElse = [&](auto matches) {
        if (found.empty()) collect(folder.items, matches, found);
    };
    // A disk may hold names side by side that are one text: what was written to the byte wins.
    orElse([&](const ScriptItem& item) { return item.id.utf8() == wanted.utf8(); });
    orElse([&](const ScriptItem& item) { return withoutEnding(item).utf8() == wanted.utf8(); });
    orElse(
        [&](const ScriptItem& item) { return item.id == wanted || withoutEnding(item) == wanted; });
    if (found.empty()) throw NoInput(id.utf8() + ": no script and no folder in the library");
    if (found.size() > 1)
        throw NoInput(fmt::format("{}: this is {} or {}; say which", id.utf8(), found[0]->id.utf8(),
                                  found[1]->id.utf8()));
    return *found.front();
}

path newScript(const path& root, const ScriptFolder& folder, const std::optional<Text>& parent,
               const Text& name) {
    const auto [stem, ending] = parted(name);
    path place = freePlace(root, folder, parent, stem);
    place += ending.empty() ? endings.front() : std::string_view(ending);
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
    const HeldSignals signals;  // so that what is unfinished goes away first
    Unfinished copy(unusedPlace(beside));
    if (item.isFolder()) {
        copyFolder(original, copy.place(), signals);
    } else {
        copyScript(original, copy.place());
    }
    path place = giveName(copy.place(), NewFileName(beside, name),
                          item.isFolder() ? "" : endingOf(original));
    copy.finished();
    return place;
}

path rename(const path& root, const ScriptFolder& folder, const ScriptItem& item,
            const Text& name) {
    const path before = placeOf(root, item);
    auto [stem, ending] = item.isFolder() ? std::pair(name, std::string()) : parted(name);
    if (!item.isFolder() && ending.empty()) ending = endingOf(before);
    const Text free = LibraryNaming::unique(stem, names(siblingsOf(folder, item), &item.id));
    const NewFileName after(before.parent_path(), safe(free));
    if (after.withEnding(ending) == before) return before;
    return giveName(before, after, ending);
}

}  // namespace Varnelle
