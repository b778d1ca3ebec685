#include <windows.h>

#include <gtest/gtest.h>

#include "platform/WindowSystem.h"
#include "platform/offscreen/EmbeddedStrings.h"
#include "platform/win32/ResourceIds.h"

namespace {

// Compares the strings in the Windows resources with the generated C++ table.
TEST(Resources, ContainEveryString)
{
    int count = 0;
    for (const auto *entry = Platform::embeddedStrings; entry->text; ++entry, ++count)
        EXPECT_EQ(Platform::windowSystem().loadString(entry->id), entry->text) << entry->id;
    EXPECT_EQ(count, 6 * 45);
    for (const uint32_t id : {0u, 65535u}) EXPECT_TRUE(Platform::windowSystem().loadString(id).empty()) << id;
}

TEST(Resources, ContainTheDragCursor)
{
    ASSERT_NE(Platform::windowSystem().loadCursor(Platform::CursorKind::drag), nullptr);
    const HCURSOR cursor = LoadCursorA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(kDragCursorId));
    ICONINFO info = {};
    ASSERT_TRUE(GetIconInfo(cursor, &info));
    EXPECT_FALSE(info.fIcon);
    EXPECT_EQ(info.xHotspot, 16u);
    EXPECT_EQ(info.yHotspot, 16u);
    BITMAP mask = {};
    GetObjectA(info.hbmMask, sizeof mask, &mask);
    EXPECT_EQ(mask.bmWidth, 32);
    DeleteObject(info.hbmMask);
    DeleteObject(info.hbmColor);
}

INT_PTR CALLBACK ignoreAll(HWND, UINT, WPARAM, LPARAM) { return FALSE; }

TEST(Resources, ContainABorderlessPrompt)
{
    const HWND dialog = CreateDialogParamA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(kPromptDialogId),
                                           nullptr, &ignoreAll, 0);
    ASSERT_NE(dialog, nullptr);
    RECT window = {}, inside = {}, field = {};
    GetWindowRect(dialog, &window);
    GetClientRect(dialog, &inside);
    EXPECT_EQ(window.right - window.left, inside.right);
    EXPECT_EQ(window.bottom - window.top, inside.bottom);
    ASSERT_NE(GetDlgItem(dialog, kPromptFieldId), nullptr);
    GetWindowRect(GetDlgItem(dialog, kPromptFieldId), &field);
    EXPECT_TRUE(EqualRect(&field, &window));
    EXPECT_TRUE(GetWindowLongPtrA(dialog, GWL_EXSTYLE) & WS_EX_TOOLWINDOW);
    DestroyWindow(dialog);
}

} // namespace
