// A small host for Windows: opens the shipped library's editor in a window of its own, plays sound through the
// effect and prints every gesture that it is told of. script/drive-editor is the person in front of it.
#include <atomic>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <random>
#include <thread>
#include <vector>
#include <windows.h>

#include "host/vst2.h"

namespace {

constexpr int32_t kBlock = 512; // frames
constexpr float kRate = 44100.0f;

intptr_t hostCall(AEffect *effect, int32_t opcode, int32_t index, intptr_t, void *, float opt)
{
    switch (opcode) {
    case audioMasterVersion: return 2400;
    case audioMasterBeginEdit: std::printf("begin %d\n", static_cast<int>(index)); break;
    case audioMasterEndEdit: std::printf("end %d\n", static_cast<int>(index)); break;
    case audioMasterAutomate: {
        char text[64] = {};
        effect->dispatcher(effect, effGetParamDisplay, index, 0, text, 0.0f);
        std::printf("value %d %.6f %s\n", static_cast<int>(index), static_cast<double>(opt), text);
        break;
    }
    default: return 0;
    }
    std::fflush(stdout);
    return 1;
}

/// Noise with a tone in it, so that all bands have something to show.
void playSound(AEffect *effect, const std::atomic<bool> &stop)
{
    std::minstd_rand random;
    std::uniform_real_distribution<float> white(-0.2f, 0.2f);
    for (int32_t frame = 0; !stop; Sleep(static_cast<DWORD>(1000.0f * kBlock / kRate))) {
        std::vector<float> left(kBlock);
        for (float &sample : left)
            sample = white(random) +
                     0.3f * std::sin(6.2831853f * 330.0f / kRate * static_cast<float>(frame++ % 44100));
        std::vector<float> right = left;
        float *channels[] = {left.data(), right.data()};
        effect->processReplacing(effect, channels, channels, kBlock);
    }
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

} // namespace

int main()
{
    using Entry = AEffect *(*)(HostCallback);
    const HMODULE library = LoadLibraryA("tessarine.dll");
    const auto entry =
        library ? reinterpret_cast<Entry>(reinterpret_cast<void *>(GetProcAddress(library, "VSTPluginMain")))
                : nullptr;
    AEffect *const effect = entry ? entry(&hostCall) : nullptr;
    if (!effect) {
        std::fprintf(stderr, "tessarine.dll is not beside this program, or does not load\n");
        return 1;
    }
    const auto tell = [&](int32_t opcode, intptr_t value = 0, void *data = nullptr, float number = 0.0f) {
        return effect->dispatcher(effect, opcode, 0, value, data, number);
    };
    tell(effOpen);
    tell(effSetSampleRate, 0, nullptr, kRate);
    tell(effSetBlockSize, kBlock);
    tell(effMainsChanged, 1);
    ERect *size = nullptr;
    tell(effEditGetRect, 0, &size);
    const HWND window = makeWindow(*size);
    const bool open = tell(effEditOpen, 0, window) != 0;
    std::printf("open %d\n", open);
    std::fflush(stdout);

    std::atomic<bool> stop = false;
    std::thread audio([&] { playSound(effect, stop); });
    MSG message;
    while (GetMessageA(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
    stop = true;
    audio.join();
    tell(effEditClose);
    tell(effClose);
    FreeLibrary(library);
    std::printf("closed\n");
    return 0;
}
