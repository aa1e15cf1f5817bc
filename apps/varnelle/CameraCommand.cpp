#include "apps/varnelle/CameraCommand.h"

#include <charconv>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

#include <fmt/format.h>

#include "PrompterCore/camera/CameraResolution.h"
#include "apps/varnelle/CameraMenu.h"
#include "apps/varnelle/CommandLine.h"
#include "apps/varnelle/Output.h"
#include "apps/varnelle/PreviewPicture.h"
#include "host/CameraFormats.h"
#include "host/Failures.h"
#include "host/TextFile.h"
#include "host/WriteFile.h"

namespace Varnelle {

namespace {

using namespace PrompterCore;  // NOLINT

constexpr std::int64_t largestSide = 100'000;  // of a pane and of a sensor

struct MenuArguments {
    std::optional<std::string> formats;
    CameraWishes wishes;
    bool json = false;
};

struct PreviewArguments {
    PreviewScene scene{.sensor = {.width = 1920, .height = 1080},
                       .pane = {.width = 800, .height = 600}};
    std::string output = "-";
};

void showMenu(const MenuArguments& arguments) {
    const std::string& file = *arguments.formats;
    const std::string bytes = readFile(file);
    Output output;
    try {
        const std::vector<CameraFormat> formats = cameraFormats(bytes);
        const auto show = arguments.json ? writeCameraMenuJson : showCameraMenu;
        show(formats, arguments.wishes, output);
    } catch (const BadData& failure) {
        throw BadData(shownName(file) + ": " + failure.what());
    }
    output.flush();
}

void drawPreview(const PreviewArguments& arguments) {
    const std::string picture = previewPicture(arguments.scene);
    // The one name of standard output that everybody knows is no file to replace.
    if (arguments.output != "-" && arguments.output != "/dev/stdout") {
        writeFile(arguments.output, picture);
        return;
    }
    Output output;
    output.write(picture);
    output.flush();
}

[[noreturn]] void refuse(const char* option, const std::string& why) {
    throw CLI::ValidationError(option, why);
}

CameraResolution resolution(const char* option, const std::string& written) {
    const auto read = CameraResolution::fromId(written);
    if (!read || read->width > largestSide || read->height > largestSide)
        refuse(option, written + " is no size such as 1920x1080, each side at most 100000");
    return *read;
}

Size size(const char* option, const std::string& written) {
    const CameraResolution read = resolution(option, written);
    return {.width = static_cast<double>(read.width), .height = static_cast<double>(read.height)};
}

// Two numbers with a comma between them, each at least `least` and at most 1.
Point point(const char* option, const std::string& written, double least) {
    const char* const end = written.data() + written.size();
    Point read;
    const auto x = std::from_chars(written.data(), end, read.x);
    if (x.ec == std::errc() && x.ptr != end && *x.ptr == ',') {
        const auto y = std::from_chars(x.ptr + 1, end, read.y);
        const auto isIn = [least](double value) { return value >= least && value <= 1; };
        if (y.ec == std::errc() && y.ptr == end && isIn(read.x) && isIn(read.y)) return read;
    }
    refuse(option,
           fmt::format("{} is no pair of numbers from {} to 1, such as 0.5,0", written, least));
}

void addFraming(CLI::App& command, CameraFraming& framing) {
    command
        .add_option_function<std::string>(
            "--framing",
            [&framing](const std::string& written) {
                const auto read = fromRawValue<CameraFraming>(written);
                if (!read) refuse("--framing", written + " is neither landscape nor portrait");
                framing = *read;
            },
            "landscape or portrait")
        ->default_str("landscape");
}

void addMenuOptions(CLI::App& command, MenuArguments& arguments) {
    command.add_option("--formats", arguments.formats,
                       "the camera's formats as JSON; - is standard input");
    addFraming(command, arguments.wishes.framing);
    command
        .add_option_function<std::int64_t>(
            "--rotation",
            [&arguments](std::int64_t written) {
                const auto read = fromRawValue<CameraRotation>(written);
                if (!read)
                    refuse("--rotation", std::to_string(written) + " is none of 0, 90, 180, 270");
                arguments.wishes.rotation = *read;
            },
            "how far the picture is turned: 0, 90, 180 or 270")
        ->default_str("0");
    command.add_option_function<std::string>(
        "--prefer",
        [&arguments](const std::string& written) {
            arguments.wishes.resolution = resolution("--prefer", written);
        },
        "the resolution chosen before, such as 1920x1080");
    command
        .add_option("--prefer-rate", arguments.wishes.frameRate,
                    "the frames per second chosen before")
        ->check(numberBetween<std::int64_t>(1, 100'000));
    command.add_flag("--json", arguments.json, "as JSON");
}

void addPreviewOptions(CLI::App& command, PreviewArguments& arguments) {
    PreviewScene& scene = arguments.scene;
    const auto addSize = [&command](const char* name, Size& value, const char* what,
                                    const char* usual) {
        command
            .add_option_function<std::string>(
                name, [name, &value](const std::string& written) { value = size(name, written); },
                what)
            ->default_str(usual);
    };
    addSize("--sensor", scene.sensor, "the camera's picture in pixels", "1920x1080");
    addSize("--pane", scene.pane, "the preview's pane in points", "800x600");
    addFraming(command, scene.framing);
    command
        .add_option_function<std::string>(
            "--offset",
            [&scene](const std::string& written) {
                const Point read = point("--offset", written, -1);
                scene.offset = FrameOffset(read.x, read.y);
            },
            "where the crop was slid to, each from -1 to 1")
        ->default_str("0,0");
    command
        .add_option_function<std::string>(
            "--marker",
            [&scene](const std::string& written) {
                const Point read = point("--marker", written, 0);
                scene.marker = LensMarker(read.x, read.y);
            },
            "where the lens is, as fractions of the window from 0 to 1")
        ->default_str("0.5,0.32");
    command.add_flag("--mirrored", scene.mirrored, "the preview is shown mirrored");
    command.add_option("-o,--output", arguments.output, "the SVG file; - is standard output")
        ->capture_default_str();
}

}  // namespace

void addCameraCommand(CLI::App& app) {
    const auto menu = std::make_shared<MenuArguments>();
    const auto preview = std::make_shared<PreviewArguments>();
    CLI::App& command = *app.add_subcommand(
        "camera",
        "Examples:\n"
        "  varnelle camera --formats formats.json --framing portrait --prefer 1920x1080\n"
        "  varnelle camera --formats formats.json --rotation 90 --json\n"
        "  varnelle camera preview --framing portrait -o preview.svg\n\n"
        "Shows the resolutions and frame rates that a camera is offered with, and which ones\n"
        "would be used.");
    addMenuOptions(command, *menu);
    CLI::App& previewCommand = *command.add_subcommand(
        "preview",
        "Examples:\n"
        "  varnelle camera preview --framing portrait --pane 800x600 -o preview.svg\n"
        "  varnelle camera preview --sensor 1920x1440 --offset 0,1 --mirrored > preview.svg\n\n"
        "Draws pane, window, picture and room of the camera's preview as SVG.");
    addPreviewOptions(previewCommand, *preview);
    previewCommand.callback([&previewCommand, preview] {
        refuseOptionsBefore(previewCommand);
        drawPreview(*preview);
    });
    command.callback([&command, menu] {
        if (!command.get_subcommands().empty()) return;
        if (!menu->formats) refuse("camera", "--formats says which formats there are");
        showMenu(*menu);
    });
}

}  // namespace Varnelle
