// Stored records, as any program may write them: reading one gives a value or the room's own
// failure, and what was read is written so that it reads back the same. A plain reader, which knows
// nothing of values, says what is JSON.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "PrompterCore/records/Record.h"
#include "PrompterCore/support/Require.h"
#include "tests/reference/PlainJson.h"

namespace PrompterCore {
namespace {

std::optional<RecordValue> read(std::string_view json) {
    try {
        return RecordValue::fromJson(json);
    } catch (const RecordFailure& failure) {
        require(failure.kind() == RecordFailure::Kind::malformed, "reading JSON knows no types");
        require(failure.path().empty() && !failure.problem().empty(), "it says what is wrong");
        return std::nullopt;
    }
}

// Each question has an answer or a failure that says why.
template <class T>
bool holds(const RecordValue& value) {
    try {
        static_cast<void>(RecordCoding<T>::read(value));
        return true;
    } catch (const RecordFailure& failure) {
        require(failure.kind() == RecordFailure::Kind::mismatch, "a value is there, of a kind");
        return false;
    }
}

void isOneThing(const RecordValue& value) {
    const int things = int{value.isNull()} + int{holds<bool>(value)} + int{holds<double>(value)} +
                       int{holds<Text>(value)} + int{holds<Record>(value)} +
                       int{value.json().starts_with('[')};
    require(things == 1, "a value is one thing");
    require(value.json().starts_with('[') || !holds<std::vector<Record>>(value), "lists are lists");
    require(holds<double>(value) || !holds<std::int64_t>(value), "integers are numbers");
}

void readsBack(const RecordValue& value) {
    const std::string json = value.json();
    const std::optional<RecordValue> again = read(json);
    require(again && *again == value, "what is written reads back");
    require(again->json() == json, "and is written alike");
}

}  // namespace
}  // namespace PrompterCore

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace PrompterCore;
    const std::string json(data, data + size);
    const std::optional<RecordValue> value = read(json);
    require(value.has_value() == Tests::PlainJson(json).isRecordJson(),
            "what is read is JSON, and JSON is read");
    if (!value) return 0;
    isOneThing(*value);
    readsBack(*value);
    return 0;
}
