#pragma once

// What a host can fail at beside its arguments. Each message is one sentence for a user.
//
//   throw Unavailable("the English speech model is missing; "
//                     "on Debian: apt-get install pocketsphinx-en-us");

#include <stdexcept>

namespace Varnelle {

/// A device or a service of the system is missing. The message is one sentence that says which
/// one, and how to get it. The command ends with exit status 69.
class Unavailable : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// A file is missing, unreadable or no file at all. Exit status 66.
class NoInput : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What a file holds cannot be used. The message names the file and, where there is one, the line.
/// Exit status 65.
class BadData : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Something cannot be written, as on a full disk. The message says what. Exit status 74.
class CannotWrite : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace Varnelle
