#pragma once

// One function object out of several, to look into a value that is one of several things.
//
//   std::visit(Overloaded{[](int) { return "number"; }, [](bool) { return "truth"; }}, value);

namespace PrompterCore {

/// Calls the function whose parameter fits best.
template <class... Functions>
struct Overloaded : Functions... {
    using Functions::operator()...;
};

template <class... Functions>
Overloaded(Functions...) -> Overloaded<Functions...>;

}  // namespace PrompterCore
