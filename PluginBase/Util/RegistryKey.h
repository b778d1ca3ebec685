#pragma once
#include <cstdint>
#include <optional>

#include "PluginBase/Util/String.h"
#include "platform/System.h"

namespace Util {

/// Reads typed values of one registry key. What is missing, of another type or out of reach gives the
/// caller's fallback; so does everything on a system without a registry. The key is open only during a call.
class RegistryKey {
public:
    explicit RegistryKey(const String &path,
                         Platform::RegistryRoot root = Platform::RegistryRoot::currentUser);

    uint32_t readDword(const String &value, uint32_t fallback) const;
    String readString(const String &value, const String &fallback) const;

    /// What the two readers make of a value as it is stored. A text loses its last byte, where the terminator
    /// belongs; one of no bytes is "".
    static uint32_t dwordOf(const std::optional<Platform::RegistryValue> &stored, uint32_t fallback);
    static String stringOf(const std::optional<Platform::RegistryValue> &stored, const String &fallback);

private:
    String path;
    Platform::RegistryRoot root;
};

} // namespace Util
