// What the microphone's samples cost, a buffer of 10 ms at 48 kHz at a time: the clap detector
// beside the plain one and beside the onset detection of an audio library. Each row's answer is
// checked before it is timed.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include <aubio/aubio.h>
#include <benchmark/benchmark.h>

#include "PrompterCore/audio/AudioLevel.h"
#include "PrompterCore/audio/ClapDetector.h"
#include "tests/reference/PlainClapDetector.h"
#include "tests/support/Sounds.h"

namespace PrompterCore {

namespace {

constexpr std::size_t bufferSize = 480;
constexpr double rate = 48'000;

// Half a minute in a room: a tune, thumps, and two claps every five seconds.
const std::vector<float>& room() {
    static const std::vector<float> samples = [] {
        Tests::Sounds sounds(rate, 30.0, 1);
        sounds.noise(0.002).musicAt(2.0, 1.5).thumpAt(4.2);
        for (double time = 5.0; time < 28.0; time += 5.0) {
            sounds.clapAt(time).clapAt(time + 0.3);
        }
        return sounds.samples();
    }();
    return samples;
}

// The buffers of the room, again and again, on a clock that goes on.
class Buffers {
public:
    std::span<const float> next() {
        if (at_ + bufferSize > room().size()) at_ = 0;
        const auto buffer = std::span(room()).subspan(at_, bufferSize);
        at_ += bufferSize;
        ++count_;
        return buffer;
    }
    double time() const { return static_cast<double>(count_ * bufferSize) / rate; }
    static std::size_t inRoom() { return room().size() / bufferSize; }

private:
    std::size_t at_ = 0;
    std::size_t count_ = 0;
};

template <class Detector>
std::int64_t gesturesOf(Detector detector) {
    Buffers buffers;
    std::int64_t count = 0;
    for (std::size_t i = 0; i < Buffers::inRoom(); ++i) {
        const double time = buffers.time();
        const auto buffer = buffers.next();
        for (const ClapGesture& gesture : detector.feed({buffer.begin(), buffer.end()}, time)) {
            count += gesture.count == 2 ? 1 : 0;
        }
    }
    return count;
}

constexpr std::int64_t gesturesInRoom = 5;

void claps(benchmark::State& state) {
    if (gesturesOf(ClapDetector(rate)) != gesturesInRoom)
        return state.SkipWithError("not all claps are heard");
    ClapDetector detector(rate);
    Buffers buffers;
    for (auto _ : state) {
        const double time = buffers.time();
        benchmark::DoNotOptimize(detector.feed(buffers.next(), time));
    }
}

void clapsPlain(benchmark::State& state) {
    if (gesturesOf(Plain::PlainClapDetector{rate}) != gesturesInRoom)
        return state.SkipWithError("not all claps are heard");
    Plain::PlainClapDetector detector{rate};
    Buffers buffers;
    for (auto _ : state) {
        const double time = buffers.time();
        const auto buffer = buffers.next();
        benchmark::DoNotOptimize(detector.feed({buffer.begin(), buffer.end()}, time));
    }
}

// Finds where anything begins, by the change of the spectrum.
void onsetsOfAubio(benchmark::State& state) {
    constexpr unsigned window = 1024;
    const std::unique_ptr<aubio_onset_t, void (*)(aubio_onset_t*)> onset(
        new_aubio_onset("hfc", window, bufferSize, static_cast<unsigned>(rate)), del_aubio_onset);
    const std::unique_ptr<fvec_t, void (*)(fvec_t*)> input(new_fvec(bufferSize), del_fvec);
    const std::unique_ptr<fvec_t, void (*)(fvec_t*)> output(new_fvec(1), del_fvec);
    Buffers buffers;
    const auto hear = [&] {
        std::ranges::copy(buffers.next(), input->data);
        aubio_onset_do(onset.get(), input.get(), output.get());
        return output->data[0] > 0;
    };
    int found = 0;
    for (std::size_t i = 0; i < Buffers::inRoom(); ++i) {
        found += hear() ? 1 : 0;
    }
    if (found < 2 * gesturesInRoom) return state.SkipWithError("not all claps are onsets");
    for (auto _ : state) {
        benchmark::DoNotOptimize(hear());
    }
}

void level(benchmark::State& state) {
    Buffers buffers;
    for (auto _ : state) {
        benchmark::DoNotOptimize(AudioLevel::meter(buffers.next()));
    }
}

BENCHMARK(claps)->Name("claps");
BENCHMARK(clapsPlain)->Name("claps/plain");
BENCHMARK(onsetsOfAubio)->Name("claps/aubio-onset");
BENCHMARK(level)->Name("level");

}  // namespace

}  // namespace PrompterCore
