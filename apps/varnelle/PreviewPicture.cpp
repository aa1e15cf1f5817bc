#include "apps/varnelle/PreviewPicture.h"

#include <algorithm>
#include <string_view>

#include <fmt/format.h>

#include "PrompterCore/camera/FramePreviewLayout.h"

namespace Varnelle {

namespace {

using namespace PrompterCore;  // NOLINT

constexpr double documentWidth = 800;
constexpr double margin = 30;      // around the drawing
constexpr double arrowSpace = 34;  // beside and below the drawing, for the room's arrows
constexpr double tallestDrawing = 520;
constexpr double legendLine = 24;

struct Style {
    std::string_view line, fill;
    double width;
    std::string_view dashes;
};
constexpr Style paneStyle{"#555555", "none", 2, "7 5"};
constexpr Style windowStyle{"#c2410c", "#fdba74", 3, ""};
constexpr Style pictureStyle{"#1d4ed8", "#dbeafe", 2, ""};
constexpr std::string_view roomColour = "#15803d";
constexpr std::string_view markerColour = "#111111";

// Two decimals at most, none that say nothing.
std::string number(double value) {
    std::string text = fmt::format("{:.2f}", value);
    text.erase(text.find_last_not_of('0') + 1);
    if (text.ends_with('.')) text.pop_back();
    return text == "-0" ? "0" : text;
}

std::string numbers(const Size& size) {
    return number(size.width) + " \u00D7 " + number(size.height);
}

std::string numbers(const Rectangle& rectangle) {
    return fmt::format("{} at ({}, {})", numbers(rectangle.size), number(rectangle.minX()),
                       number(rectangle.minY()));
}

// Draws in units of the document what is given in points of the pane.
class Drawing {
public:
    explicit Drawing(const Rectangle& whole) noexcept
        : whole_(whole),
          scale_(std::min((documentWidth - 2 * margin - arrowSpace) / whole.size.width,
                          tallestDrawing / whole.size.height)),
          left_((documentWidth - arrowSpace - whole.size.width * scale_) / 2) {}

    double x(double points) const noexcept { return left_ + (points - whole_.minX()) * scale_; }
    double y(double points) const noexcept { return margin + (points - whole_.minY()) * scale_; }
    double bottom() const noexcept { return y(whole_.maxY()); }
    double right() const noexcept { return x(whole_.maxX()); }

    void rectangle(const Rectangle& place, const Style& style) {
        box(x(place.minX()), y(place.minY()), place.size.width * scale_, place.size.height * scale_,
            style);
    }
    void box(double left, double top, double width, double height, const Style& style) {
        svg_ += fmt::format(
            R"(<rect x="{}" y="{}" width="{}" height="{}" fill="{}" fill-opacity="0.6" )"
            R"(stroke="{}" stroke-width="{}" stroke-dasharray="{}"/>)"
            "\n",
            number(left), number(top), number(width), number(height), style.fill, style.line,
            style.width, style.dashes.empty() ? "none" : style.dashes);
    }
    // A part of the room, with its length where there is place for it.
    void arrow(Point from, Point to, double points) {
        const double length = std::max(to.x - from.x, to.y - from.y);
        if (length < 12) return;
        svg_ += fmt::format(R"(<line x1="{}" y1="{}" x2="{}" y2="{}" stroke="{}" stroke-width="2" )"
                            R"svg(marker-start="url(#tip)" marker-end="url(#tip)"/>)svg"
                            "\n",
                            number(from.x), number(from.y), number(to.x), number(to.y), roomColour);
        if (length < 60) return;  // the number would not fit
        const Point middle{(from.x + to.x) / 2, (from.y + to.y) / 2};
        // Along the arrow: beside it there is little place to the right.
        svg_ += fmt::format(R"svg(<text transform="translate({} {}) rotate({})" )svg"
                            R"(y="19" text-anchor="middle">{}</text>)"
                            "\n",
                            number(middle.x), number(middle.y), from.y == to.y ? 0 : -90,
                            number(points));
    }
    void cross(Point at) {
        svg_ += fmt::format(
            R"(<path d="M {0} {1} m -9 0 h 18 m -9 -9 v 18" stroke="{2}" stroke-width="2"/>)"
            R"(<circle cx="{0}" cy="{1}" r="6" fill="none" stroke="{2}" stroke-width="2"/>)"
            "\n",
            number(at.x), number(at.y), markerColour);
    }
    void text(double left, double baseline, std::string_view words) {
        svg_ += fmt::format(R"(<text x="{}" y="{}">{}</text>)"
                            "\n",
                            number(left), number(baseline), words);
    }
    const std::string& svg() const noexcept { return svg_; }

private:
    Rectangle whole_;  // that is drawn
    double scale_;
    double left_;
    std::string svg_;
};

Rectangle around(const Rectangle& a, const Rectangle& b) noexcept {
    const double left = std::min(a.minX(), b.minX()), top = std::min(a.minY(), b.minY());
    return {.origin = {.x = left, .y = top},
            .size = {.width = std::max(a.maxX(), b.maxX()) - left,
                     .height = std::max(a.maxY(), b.maxY()) - top}};
}

// Below and beside the picture: how far it can go to either side.
void drawRoom(Drawing& drawing, const FramePreviewLayout& layout) {
    const Rectangle& picture = layout.picture();
    const Rectangle& window = layout.window();
    const double below = drawing.bottom() + 14, beside = drawing.right() + 14;
    if (layout.room().width > 0) {
        drawing.arrow({drawing.x(picture.minX()), below}, {drawing.x(window.minX()), below},
                      window.minX() - picture.minX());
        drawing.arrow({drawing.x(window.maxX()), below}, {drawing.x(picture.maxX()), below},
                      picture.maxX() - window.maxX());
    }
    if (layout.room().height > 0) {
        drawing.arrow({beside, drawing.y(picture.minY())}, {beside, drawing.y(window.minY())},
                      window.minY() - picture.minY());
        drawing.arrow({beside, drawing.y(window.maxY())}, {beside, drawing.y(picture.maxY())},
                      picture.maxY() - window.maxY());
    }
}

// What each part is, with its numbers. Returns where it ends.
double drawLegend(Drawing& drawing, const FramePreviewLayout& layout, const PreviewScene& scene) {
    double line = drawing.bottom() + arrowSpace + 30;
    const auto entry = [&](std::string_view name, const std::string& what) {
        drawing.text(margin + 38, line, name);
        drawing.text(margin + 120, line, what);
        line += legendLine;
    };
    const auto swatch = [&](const Style& style) { drawing.box(margin, line - 12, 24, 14, style); };
    swatch(pictureStyle);
    entry("picture", numbers(layout.picture()) + ": all that the sensor sees");
    entry("sensor", numbers(scene.sensor) + (scene.mirrored ? " pixels, mirrored" : " pixels"));
    swatch(windowStyle);
    entry("window", numbers(layout.window()) + ": what is recorded");
    swatch(paneStyle);
    entry("pane", numbers(layout.pane()) + " points: where the preview is shown");
    drawing.arrow({margin, line - 5}, {margin + 24, line - 5}, 0);
    entry("room", numbers(layout.room()) + (layout.canPan()
                                                ? ": how far the picture can be dragged, end to end"
                                                : ": too little to drag"));
    drawing.cross({margin + 12, line - 5});
    entry("marker", fmt::format("({}, {}) of the window: where the lens is",
                                number(scene.marker.x()), number(scene.marker.y())));
    return line;
}

}  // namespace

std::string previewPicture(const PreviewScene& scene) {
    const FramePreviewLayout layout(scene.sensor, scene.framing, scene.offset, scene.pane,
                                    scene.mirrored);
    const Rectangle pane{.origin = {}, .size = scene.pane};
    const Rectangle& window = layout.window();
    Drawing drawing(around(pane, layout.picture()));
    drawing.rectangle(layout.picture(), pictureStyle);
    drawing.rectangle(window, windowStyle);
    drawing.rectangle(pane, paneStyle);
    drawing.cross({drawing.x(window.minX() + scene.marker.x() * window.size.width),
                   drawing.y(window.minY() + scene.marker.y() * window.size.height)});
    drawRoom(drawing, layout);
    const double height = drawLegend(drawing, layout, scene);
    return fmt::format(
        R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 {0} {1}" width="{0}" height="{1}" )"
        R"(font-family="DejaVu Sans, Helvetica, Arial, sans-serif" font-size="15">
<defs><marker id="tip" viewBox="0 0 8 8" refX="7" refY="4" markerWidth="5" markerHeight="5" )"
        R"(orient="auto-start-reverse"><path d="M 0 0 L 8 4 L 0 8 z" fill="{2}"/></marker></defs>
<rect width="100%" height="100%" fill="#ffffff"/>
{3}</svg>
)",
        documentWidth, number(height), roomColour, drawing.svg());
}

}  // namespace Varnelle
