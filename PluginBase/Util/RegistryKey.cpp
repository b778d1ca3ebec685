#include "PluginBase/Util/RegistryKey.h"

#include <cstring>

namespace Util {

using Platform::RegistryValue;

RegistryKey::RegistryKey(const String &givenPath, Platform::RegistryRoot givenRoot)
    : path(givenPath), root(givenRoot)
{
}

uint32_t RegistryKey::readDword(const String &value, uint32_t fallback) const
{
    return dwordOf(Platform::readRegistry(root, path.c_str(), value.c_str()), fallback);
}

String RegistryKey::readString(const String &value, const String &fallback) const
{
    return stringOf(Platform::readRegistry(root, path.c_str(), value.c_str()), fallback);
}

uint32_t RegistryKey::dwordOf(const std::optional<RegistryValue> &stored, uint32_t fallback)
{
    uint32_t number = fallback;
    if (stored && stored->type == RegistryValue::kDword && stored->bytes.size() == sizeof number)
        std::memcpy(&number, stored->bytes.data(), sizeof number);
    return number;
}

String RegistryKey::stringOf(const std::optional<RegistryValue> &stored, const String &fallback)
{
    if (!stored) return fallback;
    if (stored->type != RegistryValue::kText && stored->type != RegistryValue::kExpandableText)
        return fallback;
    if (stored->bytes.empty()) return "";
    return String(stored->bytes.c_str(), static_cast<uint32_t>(stored->bytes.size() - 1));
}

} // namespace Util
