#include "host/TakeFiles.h"

#include <cstddef>

#include "PrompterCore/records/Record.h"
#include "PrompterCore/takes/ChapterTimestamps.h"
#include "PrompterCore/takes/RecordingName.h"
#include "PrompterCore/text/Characters.h"
#include "host/NewFile.h"

namespace Varnelle::TakeFiles {

using PrompterCore::ChapterMark;
using PrompterCore::Text;

namespace {

// Of a name's 255 bytes the rest is for a number and for the endings of the files beside it.
constexpr std::size_t longestName = 220;

NewFileName nameBeside(const std::filesystem::path& sound) {
    return {sound.parent_path(), sound.stem().string()};
}

}  // namespace

std::string nameOf(const std::optional<Text>& title, std::chrono::system_clock::time_point date,
                   const PrompterCore::TimeZone& timeZone) {
    namespace Name = PrompterCore::RecordingName;
    std::optional<Text> shown;
    if (title) shown = Name::safe(*title);
    while (true) {
        std::string name = Name::file(shown, date, timeZone, Name::Kind::sound).utf8();
        if (name.size() <= longestName || !shown || shown->utf8().empty()) return name;
        const PrompterCore::Characters characters(*shown);
        const std::size_t last = characters[characters.count() - 1].utf8().size();
        shown = Text(std::string_view(shown->utf8()).substr(0, shown->utf8().size() - last));
    }
}

std::filesystem::path saveMarks(const std::filesystem::path& sound,
                                const std::vector<ChapterMark>& marks) {
    return saveFile(nameBeside(sound), ".marks.json", PrompterCore::toJson(marks) + "\n");
}

std::filesystem::path saveChapters(const std::filesystem::path& sound,
                                   const std::vector<ChapterMark>& marks) {
    return saveFile(nameBeside(sound), ".chapters.txt",
                    PrompterCore::ChapterTimestamps::youTube(marks) + "\n");
}

}  // namespace Varnelle::TakeFiles
