#pragma once

// Our own form, JSON Lines: see host/WordsFile.h. Each line by itself, as it comes.

#include "host/words/WordsReader.h"

namespace Varnelle {

class OwnWords final : public WordsReader {
protected:
    void read(std::string_view line) override;
};

}  // namespace Varnelle
