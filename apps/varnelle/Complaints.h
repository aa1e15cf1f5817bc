#pragma once

// What goes wrong while something is shown: a screen would be written over, so that it is said when
// the screen is gone.
//
//   Complaints complaints(options.display);
//   complaints.say("the recogniser ended unexpectedly ...");

#include <string>
#include <vector>

#include "apps/varnelle/Follow.h"
#include "apps/varnelle/Output.h"

namespace Varnelle {

/// Says at the end of its life what could not be said before. Outlives what it is told of.
class Complaints {
public:
    explicit Complaints(FollowDisplay display) : isScreen_(display == FollowDisplay::screen) {}
    Complaints(const Complaints&) = delete;
    Complaints& operator=(const Complaints&) = delete;
    ~Complaints() {
        for (const std::string& complaint : kept_) {
            complain(complaint);
        }
    }

    void say(const std::string& why) {
        if (isScreen_) {
            kept_.push_back(why);
        } else {
            complain(why);
        }
    }

private:
    bool isScreen_;
    std::vector<std::string> kept_;
};

}  // namespace Varnelle
