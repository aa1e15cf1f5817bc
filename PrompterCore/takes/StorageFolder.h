#pragma once

// The folder, inside the user's storage location, that keeps scripts and takes. Another build of
// the application may declare another one, so that its files stay apart.
//
//   StorageFolder::fromDeclared("Varnelle Beta").name();   // "Varnelle Beta"
//   StorageFolder::fromDeclared("  ").isShipping();        // true: nothing is declared

#include <optional>
#include <string_view>
#include <utility>

#include "PrompterCore/text/Text.h"

namespace PrompterCore {

/// The name of a folder; where it lies is the host's.
class StorageFolder {
public:
    static constexpr std::string_view shipping = "Varnelle";  ///< the standard folder's name
    /// The key in the application bundle's information dictionary.
    static constexpr std::string_view infoKey = "VarnelleStorageFolder";

    /// The folder called `declared` without white space around; the standard one where that is
    /// absent or nothing is left.
    [[nodiscard]] static StorageFolder fromDeclared(const std::optional<Text>& declared);
    /// The folder that the running application's bundle declares under `infoKey`.
    [[nodiscard]] static StorageFolder current();

    [[nodiscard]] const Text& name() const noexcept { return name_; }  ///< never empty
    /// Whether it is the standard folder.
    [[nodiscard]] bool isShipping() const { return name_ == shipping; }

    friend bool operator==(const StorageFolder&, const StorageFolder&) = default;

private:
    explicit StorageFolder(Text name) noexcept : name_(std::move(name)) {}

    Text name_;
};

}  // namespace PrompterCore
