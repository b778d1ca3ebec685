#include <gtest/gtest.h>
#include <sddl.h>

#include "platform/System.h"
#include "platform/win32/Win32WindowSystem.h"

namespace {

using namespace Platform;

/// A registry key of the user's, removed at the end.
class RegistryTree {
public:
    static constexpr char kPath[] = "Software\\Tessarine tests";

    RegistryTree()
    {
        RegCreateKeyExA(HKEY_CURRENT_USER, kPath, 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key, nullptr);
    }
    ~RegistryTree()
    {
        RegCloseKey(key);
        RegDeleteKeyA(HKEY_CURRENT_USER, kPath);
    }
    RegistryTree(const RegistryTree &) = delete;

    HKEY key = nullptr;
};

TEST(Registry, ValuesAreReadWithoutPermissionToWrite)
{
    const RegistryTree tree;
    const DWORD number = 4;
    ASSERT_EQ(RegSetValueExA(tree.key, "Language", 0, REG_DWORD, reinterpret_cast<const BYTE *>(&number),
                             sizeof number),
              ERROR_SUCCESS);
    PSECURITY_DESCRIPTOR readAndDelete = nullptr;
    ASSERT_TRUE(ConvertStringSecurityDescriptorToSecurityDescriptorA("D:P(A;;KRSD;;;WD)", SDDL_REVISION_1,
                                                                     &readAndDelete, nullptr));
    EXPECT_EQ(RegSetKeySecurity(tree.key, DACL_SECURITY_INFORMATION, readAndDelete), ERROR_SUCCESS);
    LocalFree(readAndDelete);

    HKEY writable = nullptr;
    EXPECT_NE(RegOpenKeyExA(HKEY_CURRENT_USER, RegistryTree::kPath, 0, KEY_ALL_ACCESS, &writable),
              ERROR_SUCCESS);
    const auto value = readRegistry(RegistryRoot::currentUser, RegistryTree::kPath, "Language");
    ASSERT_TRUE(value);
    EXPECT_EQ(value->bytes, std::string("\4\0\0\0", 4));
}

TEST(WindowClasses, HaveTheArrowOnlyOnRequest)
{
    WindowSystem &system = windowSystem();
    for (const bool arrow : {false, true}) {
        const std::string name = arrow ? "Tessarine test with arrow" : "Tessarine test";
        const HWND parent =
            CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr, nullptr, nullptr);
        const WindowHandle made = system.createWindow({.className = name,
                                                       .title = name,
                                                       .place = Rect::at({}, 9, 9),
                                                       .parent = reinterpret_cast<WindowHandle>(parent),
                                                       .arrowCursor = arrow});
        const auto cursor = GetClassLongPtrA(reinterpret_cast<HWND>(made), GCLP_HCURSOR);
        EXPECT_EQ(cursor, arrow ? reinterpret_cast<ULONG_PTR>(LoadCursorA(nullptr, IDC_ARROW)) : 0);
        DestroyWindow(parent);
        EXPECT_TRUE(system.unregisterClass(name));
    }
}

} // namespace
