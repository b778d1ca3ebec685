#pragma once
#include <cstdint>

#include "plugin/Version.h"

/// Name, vendor and version, as shown to hosts, the system and the user.
namespace Product {

constexpr const char *kName = "Tessarine";
constexpr const char *kVendor = "Veloxon, Inc.";
constexpr const char *kRegistryVendor = "Veloxon";
constexpr int32_t kVersion = TESSARINE_VERSION_NUMBER;
constexpr const char *kVersionText = TESSARINE_VERSION_TEXT;

} // namespace Product
