#include "ui/editor/MainWindowBase.h"

#include <algorithm>
#include <cmath>

#include "ui/window/WindowBase.h"

namespace UI {

using Platform::Event;
using Platform::windowSystem;

MainWindowBase::MainWindowBase(Platform::WindowHandle nativeWindow, Point origin, Plugin *effect)
    : Reflected("Main Window"),
      frame(std::make_unique<Native::Frame>(nativeWindow, origin, effect)),
      plugin(effect),
      hostHandle(nativeWindow)
{
    frame->setClient(this);
    wire<&Native::FrameBase::sigNullTimer, &MainWindowBase::slotNullTimer>(frame.get(), this);
}

MainWindowBase::~MainWindowBase()
{
    stopTicking();
    frame.reset(); // its windows call this object
}

void MainWindowBase::open()
{
    frame->createKeyboardProxy();
    backgrounds.clear();
    addBackgrounds();
    createControls();
    slotUpdateAll();
    paintingSuspended = false;
    windowSystem().redrawAll(hostHandle);
}

void MainWindowBase::slotUpdateAll()
{
    updateAll();
    updateMore();
    updateOpacity();
}

bool MainWindowBase::handleMessage(const Event &event)
{
    if (event.isMouse()) return handleMouse(event);
    switch (event.kind) {
    case Event::Kind::paint:
        if (!paintingSuspended) paintBackgrounds();
        return true;
    case Event::Kind::eraseBackground: return eraseBackground();
    case Event::Kind::setCursor:
    case Event::Kind::help: return true;
    case Event::Kind::timer:
        if (event.id == kTimerId) tick();
        return true;
    case Event::Kind::renderTick: tick(); return true;
    case Event::Kind::custom: handleCustom(event.id); return true;
    default: return false;
    }
}

bool MainWindowBase::eraseBackground()
{
    if (!paintingSuspended && !erasesDisabled) windowSystem().redrawAll(hostHandle);
    return true;
}

bool MainWindowBase::handleMouse(const Event &event)
{
    if (onFrameMouse(static_cast<uint32_t>(event.kind), event.at, event.wheel, event.modifiers)) return true;
    if (event.kind == Event::Kind::leftDown) {
        windowSystem().setFocus(hostHandle);
        return true;
    }
    if (event.kind == Event::Kind::mouseMove) {
        windowSystem().showCursor(frame->arrow());
        return true;
    }
    return false;
}

bool MainWindowBase::handleHostKey(const Event &event)
{
    auto *focused = Native::WindowBase::fromHandle(windowSystem().focus());
    if (!focused || &focused->getFrame() != frame.get()) return false;
    return focused->handleKey(event).has_value();
}

void MainWindowBase::paintBackgrounds()
{
    if (backgrounds.empty()) {
        windowSystem().validate(hostHandle, {});
        return;
    }
    Rect clip;
    auto context = windowSystem().beginPaint(hostHandle, clip);
    if (context)
        for (const BackgroundImage &background : backgrounds) {
            const auto &[image, x, y] = background;
            if (image && !image->isEmpty()) context->copy(image->bitmap(), image->bounds(), {x, y});
        }
    windowSystem().endPaint(hostHandle, std::move(context));
}

void MainWindowBase::handleCustom(uint32_t code)
{
    using Link = DSP::PluginLink;
    switch (code) {
    case Link::refreshControls:
        plugin->refreshServed();
        slotUpdateAll();
        break;
    case Link::stateLoaded: sigHostAppSettingsChanged(); break;
    case Link::playingStarted: onPluginEvent2(); break;
    case Link::playingStopped: onPluginEvent3(); break;
    case Link::sampleRateChanged: sigSamplingRateChanged(); break;
    case Link::channelCountChanged: sigNumChannelsChanged(); break;
    case Link::latencyMoved: plugin->applyLatency(); break;
    case Link::renderTimingChanged:
        if (!isTicking()) break; // the editor is opening or closing
        stopTicking();
        startTicking();
        break;
    case Link::backgroundGridChanged: windowSystem().invalidate(hostHandle, {}, true); break;
    case 13: break; // reserved; not passed to subclasses
    default: onCustomMessage(code);
    }
}

uint32_t MainWindowBase::tickPeriodMs() const
{
    constexpr uint32_t kLongestMs = 1000; // even for lower frame rates
    return std::clamp(frame->transform().global()->getFramePeriodMs(), 1u, kLongestMs);
}

void MainWindowBase::startTicking()
{
    ticking = true;
    if (frame->transform().global()->getRenderingThread())
        thread.start([this] { paceTicks(); });
    else
        timerRunning = windowSystem().setTimer(hostHandle, kTimerId, tickPeriodMs());
}

void MainWindowBase::paceTicks()
{
    constexpr uint32_t kPollMs = 1;
    while (isTicking() && !thread.stopRequested()) {
        const uint32_t now = Platform::tickCount(), last = lastTick.load(std::memory_order_relaxed);
        if (now - last < tickPeriodMs()) {
            thread.sleep(kPollMs);
            continue;
        }
        lastTick.store(now, std::memory_order_relaxed);
        windowSystem().sendRenderTick(hostHandle);
    }
}

void MainWindowBase::stopTicking()
{
    constexpr uint32_t kPollMs = 1;
    ticking = false;
    thread.requestStop();
    // The thread may be waiting for this one to handle a tick.
    while (!thread.join(kPollMs)) windowSystem().serveRenderTicks(hostHandle);
    if (timerRunning) windowSystem().killTimer(hostHandle, kTimerId);
    timerRunning = false;
}

void MainWindowBase::tick()
{
    const uint32_t now = windowSystem().milliseconds();
    if (now - lastRender < kMinRenderMs) return;
    lastRender = now;
    onTimer();
}

void MainWindowBase::updateOpacity()
{
    const long scaled = std::lround(frame->transform().global()->getOpacity() * 2.55f);
    const auto wanted = static_cast<uint8_t>(std::clamp(scaled, 0L, 255L));
    if (wanted == opacityByte) return;
    windowSystem().setOpacity(hostHandle, wanted);
    opacityByte = wanted;
}

} // namespace UI
