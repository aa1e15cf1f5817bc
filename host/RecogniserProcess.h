#pragma once

// A recogniser in a process of its own, so that what ends it does not end the program: the reading
// goes on with another one, from the sound that comes next.
//
//   RecogniserProcess recogniser([&] { return std::make_unique<PocketSphinxRecogniser>(tokens); },
//                                complain);
//   for (const WordsUpdate& update : recogniser.hear(samples)) ...
//
// Units: as in Recogniser.h; waiting times are milliseconds.

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "host/Recogniser.h"
#include "host/RecogniserMessages.h"

namespace Varnelle {

/// Makes the recogniser; called in the other process, which is a copy of this one.
using RecogniserFactory = std::function<std::unique_ptr<Recogniser>()>;

/// How long the other process may be silent before it counts as hanging. Time during which the
/// machine slept or this process was stopped does not count.
struct RecogniserPatience {
    std::chrono::milliseconds start{30'000};   ///< for it to be ready
    std::chrono::milliseconds answer{10'000};  ///< for a second of sound
};

/// The words depend on the samples alone, as long as nothing ends the other process. When
/// something does (a signal, the end that a library chose, a hang, an answer that makes no sense),
/// the words heard so far become final, `complain` is told once, and a new process hears what comes
/// next; the samples on which the old one ended are not heard again.
class RecogniserProcess final : public Recogniser {
public:
    /// Waits until the recogniser is ready. Throws Unavailable with the sentence of the factory's
    /// exception, or when the process ends again and again before it is ready, or hangs. To be
    /// called while this process has one thread.
    RecogniserProcess(RecogniserFactory factory, std::function<void(const std::string&)> complain,
                      const RecogniserPatience& patience = {});
    ~RecogniserProcess() override;

    /// Throws Unavailable when no process hears for long, four having ended within ten seconds of
    /// sound.
    std::vector<WordsUpdate> hear(std::span<const float> samples) override;
    std::vector<WordsUpdate> finish() override;

    /// The other process. Absent when the sound has ended.
    [[nodiscard]] std::optional<int> processId() const noexcept;

private:
    class Process;
    class Broken;

    void start();
    std::vector<WordsUpdate> ask(const RecogniserMessage& question);
    WordsUpdate settled() const;
    void noteEnd();

    RecogniserFactory factory_;
    std::function<void(const std::string&)> complain_;
    RecogniserPatience patience_;
    std::unique_ptr<Process> process_;  // null once the sound has ended
    std::int64_t samplesHeard_ = 0;     // by all processes
    std::int64_t samplesBefore_ = 0;    // heard before this process began
    std::int64_t wordsBefore_ = 0;      // final before this process began
    std::int64_t words_ = 0;            // published, less those withdrawn
    std::int64_t ends_ = 0;             // of processes, lately
    std::int64_t lastEnd_ = 0;          // samples heard then
};

}  // namespace Varnelle
