#include "PluginBase/Util/RegistryKey.h"

#include <gtest/gtest.h>

namespace {

using Platform::RegistryValue;
using Util::RegistryKey;

TEST(RegistryKey, ChecksTypeAndSizeAndDropsTheLastByteOfStrings)
{
    EXPECT_EQ(RegistryKey("SOFTWARE\\No Such Vendor").readDword("Value", 17), 17u);
    const std::pair<RegistryValue, uint32_t> numbers[] = {{{RegistryValue::kDword, {"\5\0\0\0", 4}}, 5u},
                                                          {{RegistryValue::kText, {"\5\0\0\0", 4}}, 9u},
                                                          {{RegistryValue::kDword, "\5"}, 9u}};
    for (const auto &[stored, number] : numbers) EXPECT_EQ(RegistryKey::dwordOf(stored, 9), number);
    const std::pair<RegistryValue, const char *> texts[] = {
        {{RegistryValue::kText, {"abc\0", 4}}, "abc"},
        {{RegistryValue::kExpandableText, "abcd"}, "abc"}, // stored without a terminating null
        {{RegistryValue::kText, {"a\0c\0", 4}}, "a"},
        {{RegistryValue::kText, ""}, ""},
        {{RegistryValue::kDword, "abcd"}, "fallback"}};
    for (const auto &[stored, text] : texts) EXPECT_EQ(RegistryKey::stringOf(stored, "fallback"), text);
}

} // namespace
