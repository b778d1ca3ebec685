#pragma once
#include <atomic>
#include <memory>
#include <vector>

#include "PluginBase/Util/Reflected.h"
#include "platform/System.h"
#include "plugin/Plugin.h"
#include "ui/window/FrameBase.h"

namespace UI {

/// An editor without its controls, which a subclass supplies: the frame on the host's window, the ground that
/// shows between the controls, the window's own events, and the tick that moves everything.
/// State   made (painting suspended) -> open() -> startTicking() <-> stopTicking() -> destroyed
/// Thread  the window's. With "Global: Rendering Thread" on, a second thread paces the ticks and
///         touches nothing else: it sends each tick to the window and waits for it
class MainWindowBase : public Reflected<MainWindowBase, Object>, public Native::FrameClient {
public:
    static constexpr const char *kClassName = "UI::MainWindowBase";
    static constexpr uint32_t kTimerId = 123722;
    static constexpr uint32_t kMinRenderMs = 30;

    MainWindowBase(Platform::WindowHandle hostHandle, Point origin, Plugin *effect);
    ~MainWindowBase() override;

    /// Makes the controls, then paints for the first time.
    void open();
    void startTicking();
    void stopTicking();
    void tick();
    /// An event of the host-side window; true if that settles it.
    bool handleMessage(const Platform::Event &event);
    /// A key that the host hands on goes to the control with the focus; true if it took it.
    bool handleHostKey(const Platform::Event &event);

    Native::Frame &getFrame() { return *frame; }
    bool isTicking() const { return ticking.load(std::memory_order_relaxed); }

    // FrameClient. A subclass overrides what it has a use for.
    Platform::WindowHandle hostWindow() const override { return hostHandle; }
    bool isPaintingSuspended() const override { return paintingSuspended; }
    Native::SurfaceRef background() const override { return {}; }
    bool showsFocus() const override { return false; }
    void moveFocus(bool /*forward*/) override {}
    bool onFrameMouse(uint32_t, Point, int32_t, uint32_t) override { return false; }
    void onFrameMouseCaptured(uint32_t, Point, int32_t, uint32_t) override {}

    void sigSamplingRateChanged() { emitSignal<&MainWindowBase::sigSamplingRateChanged>(); }
    void sigNumChannelsChanged() { emitSignal<&MainWindowBase::sigNumChannelsChanged>(); }
    void sigHostAppSettingsChanged() { emitSignal<&MainWindowBase::sigHostAppSettingsChanged>(); }
    void sigAcquireNativeFocus() { emitSignal<&MainWindowBase::sigAcquireNativeFocus>(); }
    void slotUpdateAll();
    void slotUpdateNativeOpacity() { updateOpacity(); }
    void slotDisableErases() { erasesDisabled = true; }
    void slotEnableErases() { erasesDisabled = false; }
    void slotShowPanel(uint32_t) {}
    void slotNullTimer(uint32_t timer) { onNullTimer(timer); }
    void slotSetActivePanelFocusOrder() {}
    void slotNavBarSolo(bool) {}
    void slotNavBarBypass(bool) {}
    void slotPresetDialogHiding() { onPresetDialogHiding(); }
    using Signals =
        MetaRows<Meta<&MainWindowBase::sigSamplingRateChanged>, Meta<&MainWindowBase::sigNumChannelsChanged>,
                 Meta<&MainWindowBase::sigHostAppSettingsChanged>,
                 Meta<&MainWindowBase::sigAcquireNativeFocus>>;
    using Slots = MetaRows<
        Meta<&MainWindowBase::slotUpdateAll>, Meta<&MainWindowBase::slotUpdateNativeOpacity>,
        Meta<&MainWindowBase::slotDisableErases>, Meta<&MainWindowBase::slotEnableErases>,
        Meta<&MainWindowBase::slotShowPanel, "iPanel">, Meta<&MainWindowBase::slotNullTimer, "iTimer">,
        Meta<&MainWindowBase::slotSetActivePanelFocusOrder>, Meta<&MainWindowBase::slotNavBarSolo, "bSolo">,
        Meta<&MainWindowBase::slotNavBarBypass, "bBypass">, Meta<&MainWindowBase::slotPresetDialogHiding>>;

protected:
    virtual void onNullTimer(uint32_t /*timer*/) {}
    virtual void onPresetDialogHiding() {}
    virtual void addBackgrounds() {}
    virtual void createControls() = 0;
    /// Controls take the values of the parameters.
    virtual void updateAll() {}
    /// At most once in kMinRenderMs.
    virtual void onTimer() {}
    virtual void updateMore() {}
    virtual void onPluginEvent2() {}
    virtual void onPluginEvent3() {}
    virtual bool onCustomMessage(uint32_t /*code*/) { return false; }

    void addBackground(const Native::SurfaceRef &image, Point at)
    {
        backgrounds.push_back({image, at.x, at.y});
    }
    void updateOpacity();

    std::unique_ptr<Native::Frame> frame;
    Plugin *const plugin;

private:
    struct BackgroundImage {
        Native::SurfaceRef image;
        int32_t x, y;
    };

    void paintBackgrounds();
    bool eraseBackground();
    bool handleMouse(const Platform::Event &event);
    void handleCustom(uint32_t code);
    void paceTicks();
    uint32_t tickPeriodMs() const;

    bool erasesDisabled = false;
    const Platform::WindowHandle hostHandle;
    bool paintingSuspended = true;
    uint8_t opacityByte = 255;
    uint32_t lastRender = 0; // milliseconds
    std::vector<BackgroundImage> backgrounds;
    std::atomic<bool> ticking = false;
    std::atomic<uint32_t> lastTick = 0; // milliseconds, of the ticker thread
    Platform::LowPriorityThread thread;
    bool timerRunning = false;
};

} // namespace UI
