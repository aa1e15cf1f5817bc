#pragma once

// How words are handed out one by one without a list being made of them.
//
//   const auto print = [](std::string_view word) { std::cout << word << '\n'; };
//   takeNumberWords(42, WordTaker(print));   // forty, two

#include <string_view>

namespace PrompterCore {

/// A reference to a function object that takes the UTF-8 of a word. The bytes are gone after the
/// call. It must not outlive the function object, and is called before whom it is given to returns.
class WordTaker {
public:
    template <class Take>
    explicit WordTaker(const Take& take) noexcept
        : take_(&take), call_([](const void* taker, std::string_view word) {
              (*static_cast<const Take*>(taker))(word);
          }) {}

    void operator()(std::string_view word) const { call_(take_, word); }

private:
    const void* take_;
    void (*call_)(const void*, std::string_view);
};

}  // namespace PrompterCore
