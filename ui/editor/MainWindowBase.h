#pragma once
#include <atomic>
#include <memory>
#include <vector>

#include "PluginBase/Util/Reflected.h"
#include "platform/System.h"
#include "plugin/Plugin.h"
#include "ui/window/FrameBase.h"

namespace UI {

/// An editor without controls, which a subclass adds. It handles the frame, the background, the native window's events
/// and the tick that updates all controls.
/// State   constructed (painting suspended) -> open() -> startTicking() <-> stopTicking() -> destroyed
/// Thread  window thread. With "Global: Rendering Thread" on, a second thread only paces the ticks: it sends each tick
///         to the window and waits until it has been handled
class MainWindowBase : public Reflected<MainWindowBase, Object>, public Native::FrameClient {
public:
    static constexpr const char *kClassName = "UI::MainWindowBase";
    static constexpr uint32_t kTimerId = 123722;
    static constexpr uint32_t kMinRenderMs = 30;

    MainWindowBase(Platform::WindowHandle hostHandle, Point origin, Plugin *effect);
    ~MainWindowBase() override;

    /// Creates the controls, then paints for the first time.
    void open();
    void startTicking();
    void stopTicking();
    void tick();
    /// Handles an event of the native window. Returns true if the system must not handle it.
    bool handleMessage(const Platform::Event &event);
    /// Passes a key from the host to the focused control. Returns true if the control handled it.
    bool handleHostKey(const Platform::Event &event);

    Native::Frame &getFrame() { return *frame; }
    bool isTicking() const { return ticking.load(std::memory_order_relaxed); }

    // FrameClient, with defaults for subclasses to override.
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
    /// Refreshes the controls from the parameters.
    virtual void updateAll() {}
    /// Runs at most once per kMinRenderMs.
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
    std::atomic<uint32_t> lastTick = 0; // milliseconds, used by the ticker thread
    Platform::LowPriorityThread thread;
    bool timerRunning = false;
};

} // namespace UI
