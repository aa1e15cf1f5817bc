#include "host/FreshUUID.h"

#include <cerrno>
#include <cstring>
#include <string>

#include <unistd.h>

#include "host/Failures.h"

namespace Varnelle {

PrompterCore::UUID freshUUID() {
    PrompterCore::UUID::Bytes bytes{};
    if (getentropy(bytes.data(), bytes.size()) != 0)
        throw Unavailable(std::string("the system gives no random numbers: ") +
                          std::strerror(errno));
    return PrompterCore::UUID::fromRandom(bytes);
}

}  // namespace Varnelle
