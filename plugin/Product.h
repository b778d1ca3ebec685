#pragma once
#include <cstdint>

/// What the product is called, wherever a host or the system asks.
namespace Product {

constexpr const char *kName = "Tessarine";
constexpr const char *kVendor = "Veloxon, Inc.";
constexpr const char *kRegistryVendor = "Veloxon";
constexpr int32_t kVersion = 1020;

} // namespace Product
