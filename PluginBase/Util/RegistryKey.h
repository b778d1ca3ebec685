#pragma once
#include <cstdint>
#include <optional>

#include "PluginBase/Util/String.h"
#include "platform/System.h"

namespace Util {

/// Reads typed values of one registry key. Returns the caller's fallback if the value is missing, unreadable
/// or of another type, or if the system has no registry. The key is open only during a call.
class RegistryKey {
public:
    explicit RegistryKey(const String &path,
                         Platform::RegistryRoot root = Platform::RegistryRoot::currentUser);

    uint32_t readDword(const String &value, uint32_t fallback) const;
    String readString(const String &value, const String &fallback) const;

    /// Converts a stored value. Drops the last byte of a string as its terminator; zero bytes give "".
    static uint32_t dwordOf(const std::optional<Platform::RegistryValue> &stored, uint32_t fallback);
    static String stringOf(const std::optional<Platform::RegistryValue> &stored, const String &fallback);

private:
    String path;
    Platform::RegistryRoot root;
};

} // namespace Util
