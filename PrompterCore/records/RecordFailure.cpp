#include "PrompterCore/records/RecordFailure.h"

#include <utility>

namespace PrompterCore {

RecordFailure::RecordFailure(Kind kind, std::string problem)
    : RecordFailure(kind, {}, std::move(problem)) {}

RecordFailure::RecordFailure(Kind kind, std::string path, std::string problem)
    : std::runtime_error((path.empty() ? "the record" : '"' + path + '"') + ": " + problem),
      kind_(kind),
      path_(std::move(path)),
      problem_(std::move(problem)) {}

RecordFailure RecordFailure::behind(std::string step) const {
    if (!path_.empty() && path_.front() != '[') step += '.';
    return {kind_, std::move(step) + path_, problem_};
}

RecordFailure RecordFailure::under(std::string_view key) const { return behind(std::string(key)); }

RecordFailure RecordFailure::atEntry(std::size_t index) const {
    return behind('[' + std::to_string(index) + ']');
}

}  // namespace PrompterCore
