#pragma once

// What an enumeration's cases are called: one table beside each enumeration, read by the same few
// functions for all of them. The texts stand in the table; none is made from an identifier.
//
//   enum class Weather { fair, foul };
//   template <>
//   struct Enumeration<Weather> {
//       struct Row {
//           Weather value;
//           std::string_view caseName, rawValue, title;   // the last two only where they exist
//       };
//       static constexpr Row rows[] = {
//           {Weather::fair, "fair", "fair", "Fair weather"},
//           {Weather::foul, "foul", "foul", "Foul weather"},
//       };
//   };
//
//   title(Weather::foul);               // "Foul weather"
//   fromRawValue<Weather>("foul");      // Weather::foul
//   fromRawValue<Weather>("Foul");      // absent: matching is exact

#include <array>
#include <cstddef>
#include <iterator>
#include <optional>

#include "PrompterCore/support/Require.h"

namespace PrompterCore {

/// The table of `E`, specialised beside `E` and walked by tests/enumerations: a record `Row` and
/// the array `rows`, one row a case in the declared order. An enumeration that holds a stored
/// setting says so with `static constexpr bool isSetting = true`.
template <class E>
struct Enumeration;

/// All cases of `E`, in the declared order.
template <class E>
inline constexpr auto allCases = [] {
    std::array<E, std::size(Enumeration<E>::rows)> cases{};
    for (std::size_t i = 0; i < cases.size(); i++)
        cases[i] = Enumeration<E>::rows[i].value;
    return cases;
}();

/// The row of `value`. Stops the program unless it is one of the cases.
template <class E>
[[nodiscard]] constexpr const auto& enumerationRow(E value) noexcept {
    const auto* found = std::begin(Enumeration<E>::rows);
    while (found != std::end(Enumeration<E>::rows) && found->value != value)
        found++;
    require(found != std::end(Enumeration<E>::rows), "the value is a case of its enumeration");
    return *found;
}

/// The case's name as it is written in code.
template <class E>
requires requires { Enumeration<E>::rows[0].caseName; }
[[nodiscard]] constexpr auto caseName(E value) noexcept { return enumerationRow(value).caseName; }

/// What is stored for the case: a text or an integer.
template <class E>
requires requires { Enumeration<E>::rows[0].rawValue; }
[[nodiscard]] constexpr auto rawValue(E value) noexcept { return enumerationRow(value).rawValue; }

/// What a list of the cases tells them apart by: the raw value.
template <class E>
requires requires { Enumeration<E>::rows[0].rawValue; }
[[nodiscard]] constexpr auto id(E value) noexcept { return rawValue(value); }

/// What a user reads for the case. Where a case has no title, the column is optional.
template <class E>
requires requires { Enumeration<E>::rows[0].title; }
[[nodiscard]] constexpr auto title(E value) noexcept { return enumerationRow(value).title; }

/// The case whose raw value equals `raw`. Absent when there is none.
template <class E, class Raw>
requires requires(const Raw& raw) { Enumeration<E>::rows[0].rawValue == raw; }
[[nodiscard]] constexpr std::optional<E> fromRawValue(const Raw& raw) {
    for (const auto& row : Enumeration<E>::rows)
        if (row.rawValue == raw) return row.value;
    return std::nullopt;
}

}  // namespace PrompterCore
