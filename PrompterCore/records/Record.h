#pragma once

// Keyed records as they are stored, in JSON: read strictly, written in a stated order.
//
// A type that is stored says how; then it is read and written alone, in lists and in other records:
//
//   struct Mark {
//       Text title;
//       double seconds = 0;
//
//       static Mark fromRecord(const Record& record) {
//           return {record.required<Text>("title"), record.required<double>("seconds")};
//       }
//       Record toRecord() const {
//           return Record().with("title", title).with("seconds", seconds);
//       }
//   };
//
//   toJson(Mark{"Intro", 1});                                   // {"title":"Intro","seconds":1}
//   fromJson<Mark>(R"({"seconds": 1.0, "title": "Intro"})");    // the same mark
//   fromJson<std::vector<Mark>>("[]");                          // none
//
// What can be stored: bool, std::int64_t, double, Text, an enumeration by its raw value, a type
// with fromRecord and toRecord, a Record as it is, and a std::vector of any of these.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

#include "PrompterCore/records/RecordFailure.h"
#include "PrompterCore/text/Text.h"

namespace PrompterCore {

class RecordValue;
struct RecordField;

/// A value: keys with what stands under them, in an order.
class Record {
public:
    /// No keys.
    Record() noexcept;
    // Defined where its fields are: they hold records again.
    Record(const Record&);
    Record(Record&&) noexcept;
    Record& operator=(const Record&);
    Record& operator=(Record&&) noexcept;
    ~Record();

    /// In their order. They live as long as the record.
    [[nodiscard]] std::vector<std::string_view> keys() const;

    /// What stands under `key`. Throws RecordFailure where that is missing or no T; other keys do
    /// not matter.
    template <class T>
    [[nodiscard]] T required(std::string_view key) const;
    /// The same, but absent where the key is missing or holds null.
    template <class T>
    [[nodiscard]] std::optional<T> optional(std::string_view key) const;

    /// This record with `value` under `key`, behind all others; an absent std::optional is left
    /// out. Throws RecordFailure where a number in it is not finite. Stops the program unless the
    /// key is new.
    template <class T>
    [[nodiscard]] Record with(std::string_view key, const T& value) &&;

    /// The same keys in the same order with equal values.
    friend bool operator==(const Record& a, const Record& b);

private:
    friend class RecordReader;
    friend class RecordValue;

    [[nodiscard]] const RecordValue* find(std::string_view key) const noexcept;
    void add(std::string_view key, RecordValue value);

    std::vector<RecordField> fields_;  // each key once
};

/// Whatever can be stored, as it lies between JSON and its own type.
class RecordValue {
public:
    using List = std::vector<RecordValue>;

    /// Null.
    RecordValue() = default;
    explicit RecordValue(bool truth) : held_(truth) {}
    explicit RecordValue(std::int64_t integer) : held_(integer) {}
    /// A whole number is the same as the integer. Throws RecordFailure unless it is finite.
    explicit RecordValue(double number);
    explicit RecordValue(Text text) : held_(std::move(text)) {}
    explicit RecordValue(List list) : held_(std::move(list)) {}
    explicit RecordValue(Record record) : held_(std::move(record)) {}
    /// A string literal would be a truth.
    explicit RecordValue(const char*) = delete;

    /// Reads one JSON value, nested no deeper than `deepest`. Throws RecordFailure where it is none
    /// or more, where a text in it is ill-formed, a number beyond the doubles, or a key of a record
    /// stands twice. A byte order mark in front is skipped.
    [[nodiscard]] static RecordValue fromJson(std::string_view json);
    /// In one line without blanks.
    [[nodiscard]] std::string json() const;

    static constexpr std::size_t deepest = 100;  ///< lists and records in each other

    [[nodiscard]] bool isNull() const noexcept;
    // Each throws RecordFailure where this is something else.
    [[nodiscard]] bool truth() const;
    /// A number without a fraction is one, whichever way it is written.
    [[nodiscard]] std::int64_t integer() const;
    /// An integer is one too, rounded where a double does not hold it.
    [[nodiscard]] double number() const;
    [[nodiscard]] const Text& text() const;
    [[nodiscard]] const List& list() const;
    [[nodiscard]] const Record& record() const;

    friend bool operator==(const RecordValue&, const RecordValue&) = default;

private:
    void appendJson(std::string& json) const;

    std::variant<std::monostate, bool, std::int64_t, double, Text, List, Record> held_;
};

/// One key of a record with what stands under it.
struct RecordField {
    std::string key;
    RecordValue value;

    friend bool operator==(const RecordField&, const RecordField&) = default;
};

/// The T in one JSON value. Throws RecordFailure, which says where and why.
template <class T>
[[nodiscard]] T fromJson(std::string_view json);

/// `value` as JSON, in one line without blanks. Throws RecordFailure where a number in it is not
/// finite.
template <class T>
[[nodiscard]] std::string toJson(const T& value);

}  // namespace PrompterCore

#include "PrompterCore/records/RecordCoding.h"
