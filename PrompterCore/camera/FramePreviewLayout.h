#pragma once

// The camera's preview: a window in the shape of the framing shows what is recorded, and around it
// lies the rest of the picture, over which the user drags the crop.
//
// Units: points of the pane, origin at its top left, y downwards; the sensor in pixels.
//
//   const FramePreviewLayout layout({.width = 1920, .height = 1080}, CameraFraming::portrait,
//                                   FrameOffset::centred, {.width = 800, .height = 600}, mirrored);
//   layout.window();      // 337.5 by 600 at (231.25, 0)
//   layout.picture();     // the sensor's whole picture, its crop exactly as wide as the window
//   offset = layout.offset(offset, {.width = 30, .height = 0});   // the finger went right by 30
//
// Nothing here allocates: safe in a display callback.

#include "PrompterCore/camera/CameraFraming.h"
#include "PrompterCore/camera/FrameOffset.h"
#include "PrompterCore/support/Geometry.h"

namespace PrompterCore {

/// A value, computed once.
class FramePreviewLayout {
public:
    /// Of a picture that is shown mirrored when `mirrored` is true. Without a sensor (a side not
    /// above 0) the picture is the window, and there is no room.
    FramePreviewLayout(const Size& sensor, CameraFraming framing, const FrameOffset& offset,
                       const Size& pane, bool mirrored) noexcept;

    [[nodiscard]] const Size& pane() const noexcept { return pane_; }  ///< as given
    /// The largest in the shape of the framing, in the middle of the pane.
    [[nodiscard]] const Rectangle& window() const noexcept { return window_; }
    /// Where the sensor's whole picture is drawn. Its crop fills the window's width; the crop's
    /// height differs from the window's by the rounding to even sides.
    [[nodiscard]] const Rectangle& picture() const noexcept { return picture_; }
    /// How far the picture can be dragged, from one end to the other.
    [[nodiscard]] const Size& room() const noexcept { return room_; }
    /// Whether left and right change places in the preview.
    [[nodiscard]] bool mirrored() const noexcept { return mirrored_; }

    /// Whether there is a point of room at least: below that no drag is offered.
    [[nodiscard]] bool canPan() const noexcept;

    /// `from` once the picture was dragged by `translation`: the picture follows the finger, so the
    /// crop goes the other way over it. All of the room is 2.
    [[nodiscard]] FrameOffset offset(const FrameOffset& from,
                                     const Size& translation) const noexcept;

    /// The picture for a layer of this height whose y grows upwards.
    [[nodiscard]] Rectangle layerPicture(double containerHeight) const noexcept;

    friend bool operator==(const FramePreviewLayout&, const FramePreviewLayout&) = default;

private:
    Size pane_;
    Rectangle window_;
    Rectangle picture_;
    Size room_;
    bool mirrored_;
};

}  // namespace PrompterCore
