// A small Windows host for script/drive-editor. It opens the library's editor, plays audio and prints every edit that
// the effect reports.
#include <cstdio>
#include <thread>
#include <windows.h>

#include "tests/host/Module.h"

namespace {

constexpr uint32_t kBlock = 512, kRate = 44100; // frames, Hz

void printEdits(FakeHost &host, const LoadedEffect &effect)
{
    for (const FakeHost::Call &call : host.takeCalls()) {
        const auto index = static_cast<int>(call.index);
        if (call.opcode == audioMasterBeginEdit) std::printf("begin %d\n", index);
        if (call.opcode == audioMasterEndEdit) std::printf("end %d\n", index);
        if (call.opcode == audioMasterAutomate)
            std::printf("value %d %.6f %s\n", index, static_cast<double>(call.opt),
                        effect.text(effGetParamDisplay, index).c_str());
    }
    std::fflush(stdout);
}

LRESULT CALLBACK windowProcedure(HWND window, UINT message, WPARAM word, LPARAM number)
{
    if (message == WM_DESTROY) PostQuitMessage(0);
    return DefWindowProcA(window, message, word, number);
}

HWND makeWindow(const ERect &size)
{
    WNDCLASSA look = {};
    look.lpfnWndProc = &windowProcedure;
    look.hInstance = GetModuleHandleA(nullptr);
    look.lpszClassName = "TessarineEditorHost";
    look.hCursor = LoadCursorA(nullptr, MAKEINTRESOURCEA(32512));
    RegisterClassA(&look);
    return CreateWindowExA(0, look.lpszClassName, "Tessarine", WS_POPUP | WS_VISIBLE, 0, 0, size.right,
                           size.bottom, nullptr, nullptr, look.hInstance, nullptr);
}

void run(LoadedEffect::Entry entry)
{
    FakeHost host;
    const LoadedEffect effect(entry);
    effect.dispatch(effOpen);
    effect.setRate(kRate);
    effect.dispatch(effSetBlockSize, 0, kBlock);
    effect.switchOn();
    ERect *size = nullptr;
    effect.dispatch(effEditGetRect, 0, 0, &size);
    std::printf("open %d\n", effect.dispatch(effEditOpen, 0, 0, makeWindow(*size)) != 0);
    std::fflush(stdout);
    const std::jthread audio([&](const std::stop_token &ended) {
        const Audio music = Signals::music(1, kRate, 1000 * kBlock, -6);
        for (uint32_t block = 0; !ended.stop_requested(); ++block) {
            effect.process(Signals::slice(music, block % 1000 * kBlock, kBlock));
            Sleep(1000 * kBlock / kRate);
        }
    });
    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
        printEdits(host, effect);
    }
    effect.dispatch(effEditClose);
}

} // namespace

int main()
{
    const Module module;
    if (!module.entry()) {
        std::fprintf(stderr, "cannot load tessarine.dll; it must be in the folder of this program\n");
        return 1;
    }
    run(module.entry());
    std::printf("closed\n");
    return 0;
}
