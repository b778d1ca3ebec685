#include "PluginBase/Util/RegistryKey.h"
#include <gtest/gtest.h>

namespace {

using Platform::RegistryValue;
using Util::RegistryKey;

TEST(RegistryKey, GivesTheFallbackForAKeyThatIsNotThere)
{
    const RegistryKey key("SOFTWARE\\No Such Vendor\\No Such Product");
    EXPECT_EQ(key.readDword("Value", 17), 17u);
    EXPECT_EQ(key.readString("Value", "fallback"), "fallback");
}

TEST(RegistryKey, NumbersNeedTypeAndSize)
{
    const std::string five("\5\0\0\0", 4);
    EXPECT_EQ(RegistryKey::dwordOf(RegistryValue{RegistryValue::kDword, five}, 9), 5u);
    EXPECT_EQ(RegistryKey::dwordOf(RegistryValue{RegistryValue::kText, five}, 9), 9u);
    EXPECT_EQ(RegistryKey::dwordOf(RegistryValue{RegistryValue::kDword, "\5"}, 9), 9u);
    EXPECT_EQ(RegistryKey::dwordOf({}, 9), 9u);
}

TEST(RegistryKey, TextEndsBeforeItsLastByte)
{
    const auto read = [](uint32_t type, std::string bytes) {
        return RegistryKey::stringOf(RegistryValue{type, std::move(bytes)}, "fallback");
    };
    EXPECT_EQ(read(RegistryValue::kText, std::string("abc\0", 4)), "abc");
    EXPECT_EQ(read(RegistryValue::kExpandableText, "abcd"), "abc") << "stored without a terminator";
    EXPECT_EQ(read(RegistryValue::kText, std::string("a\0c\0", 4)), "a");
    EXPECT_EQ(read(RegistryValue::kText, ""), "");
    EXPECT_EQ(read(RegistryValue::kDword, "abcd"), "fallback");
}

} // namespace
