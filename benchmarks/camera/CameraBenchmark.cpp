// What a drag over the preview costs in each frame, beside the formulas alone. The answers are
// compared before they are timed.

#include <benchmark/benchmark.h>

#include "PrompterCore/camera/FramePreviewLayout.h"
#include "tests/reference/PlainPreview.h"

namespace PrompterCore {

namespace {

constexpr bool mirrored = true;

struct Scene {
    Size sensor{.width = 1920, .height = 1080};
    Size pane{.width = 800, .height = 600};
    double x = -1;  // of the crop; a little further in each frame

    void step() { x = x >= 1 ? -1 : x + 0.001; }
};

void layout(benchmark::State& state) {
    Scene scene;
    const FramePreviewLayout first(scene.sensor, CameraFraming::portrait, FrameOffset(0.25, 0),
                                   scene.pane, mirrored);
    if (first.picture() != Plain::previewPicture(scene.sensor, ratio(CameraFraming::portrait), 0.25,
                                                 0, scene.pane, mirrored)) {
        state.SkipWithError("the two disagree");
    }
    for (auto _ : state) {
        scene.step();
        benchmark::DoNotOptimize(scene);
        FramePreviewLayout layout(scene.sensor, CameraFraming::portrait, FrameOffset(scene.x, 0),
                                  scene.pane, mirrored);
        benchmark::DoNotOptimize(layout);
    }
}
BENCHMARK(layout)->Name("preview/layout");

// Of the picture alone: neither window nor room is kept.
void formulas(benchmark::State& state) {
    Scene scene;
    for (auto _ : state) {
        scene.step();
        benchmark::DoNotOptimize(scene);
        Rectangle picture = Plain::previewPicture(scene.sensor, ratio(CameraFraming::portrait),
                                                  scene.x, 0, scene.pane, mirrored);
        benchmark::DoNotOptimize(picture);
    }
}
BENCHMARK(formulas)->Name("preview/formulas");

}  // namespace

}  // namespace PrompterCore
