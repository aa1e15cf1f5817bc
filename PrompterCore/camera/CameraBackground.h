#pragma once

// What stands behind the person in the camera's picture.
//
//   const auto background = CameraBackground::colour(CameraBackground::defaultColour);
//   background.switchedTo(CameraBackground::Kind::blur);    // CameraBackground::blur()
//   background.switchedTo(CameraBackground::Kind::image);   // absent: ask for a picture first
//   toJson(CameraBackground::blur());                       // {"blur":{}}

#include <optional>
#include <string_view>
#include <utility>
#include <variant>

#include "PrompterCore/colour/RGBA.h"
#include "PrompterCore/records/Record.h"
#include "PrompterCore/support/Enumeration.h"
#include "PrompterCore/support/Overloaded.h"
#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// A value. One of: off, blur, a colour, an image. The host reads the image's file.
class CameraBackground {
public:
    /// The picture as it is.
    struct Off {
        friend bool operator==(const Off&, const Off&) = default;
    };
    /// The same picture, out of focus.
    struct Blur {
        friend bool operator==(const Blur&, const Blur&) = default;
    };
    /// One plain colour.
    struct Colour {
        RGBA colour;  ///< all over the background
        friend bool operator==(const Colour&, const Colour&) = default;
    };
    /// Another picture.
    struct Image {
        Text path;  ///< of the picture's file, as the file system has it
        friend bool operator==(const Image&, const Image&) = default;
    };

    /// The cases without what they carry, for a picker.
    enum class Kind { off, blur, colour, image };

    /// A dark grey-blue, for a background that is switched to a colour for the first time.
    static constexpr RGBA defaultColour{0.13, 0.14, 0.16, 1};

    // Each makes the case of its name.
    [[nodiscard]] static CameraBackground off() noexcept { return CameraBackground(Off{}); }
    [[nodiscard]] static CameraBackground blur() noexcept { return CameraBackground(Blur{}); }
    [[nodiscard]] static CameraBackground colour(const RGBA& colour) noexcept {
        return CameraBackground(Colour{colour});
    }
    [[nodiscard]] static CameraBackground image(Text path) noexcept {
        return CameraBackground(Image{std::move(path)});
    }

    /// The case, without what it carries.
    [[nodiscard]] Kind kind() const noexcept;
    /// What a user reads: the kind's title.
    [[nodiscard]] std::string_view title() const noexcept;
    /// Whether the person has to be cut out of the picture: always but when off.
    [[nodiscard]] bool needsCutout() const noexcept { return kind() != Kind::off; }

    /// What this becomes when the user picks `kind`: itself where it is a colour or an image
    /// already, `defaultColour` for a first colour. Absent for an image where this is none: there
    /// is no path to take.
    [[nodiscard]] std::optional<CameraBackground> switchedTo(Kind kind) const;

    /// Calls the one of `cases` that takes what this is.
    template <class... Cases>
    decltype(auto) visit(Cases&&... cases) const {
        return std::visit(Overloaded{std::forward<Cases>(cases)...}, choice_);
    }

    /// Stored under one key, the kind's name, as a record of what it carries:
    /// {"image":{"path":"/Pictures/wall.png"}}, {"colour":{"_0":{"red":0.13, ...}}}, {"off":{}}.
    /// Throws RecordFailure for anything else; further keys beside what is carried do not matter.
    [[nodiscard]] static CameraBackground fromRecord(const Record& record);
    /// The same form. Throws RecordFailure where a colour's component is not finite.
    [[nodiscard]] Record toRecord() const;

    friend bool operator==(const CameraBackground&, const CameraBackground&) = default;

private:
    using Choice = std::variant<Off, Blur, Colour, Image>;
    explicit CameraBackground(Choice choice) noexcept : choice_(std::move(choice)) {}

    Choice choice_;
};

template <>
struct Enumeration<CameraBackground::Kind> {
    struct Row {
        CameraBackground::Kind value;
        std::string_view caseName, rawValue, title;
    };
    static constexpr Row rows[] = {
        {CameraBackground::Kind::off, "off", "off", "Off"},
        {CameraBackground::Kind::blur, "blur", "blur", "Blur"},
        {CameraBackground::Kind::colour, "colour", "colour", "Colour"},
        {CameraBackground::Kind::image, "image", "image", "Image"},
    };
};

}  // namespace PrompterCore
