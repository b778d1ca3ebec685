#include "ui/editor/MainWindow.h"

#include <algorithm>
#include <utility>

#include "dsp/stages/Maximizer.h"
#include "ui/draw/Fill.h"
#include "ui/editor/Layout.h"

namespace UI {

using Platform::Event;
using Platform::windowSystem;

namespace {

constexpr uint32_t kBarColours[DSP::kBands] = {0x3D7D96, 0xD68C17, 0x77963D, 0xAD47A5};
constexpr uint32_t kInactiveColour = 0x535353, kLimiterColour = 0x626C7B;
constexpr float kAttackLowestMs = 1.0f, kAttackHighestMs = 20.0f, kBrickwallAttackHighestMs = 5.0f;

} // namespace

MainWindow::MainWindow(Platform::WindowHandle nativeWindow, Plugin *effect)
    : Reflected(nativeWindow, Point{}, effect)
{
}

void MainWindow::updateAll()
{
    spectrum->updateCutoffs();
    for (auto *edit : cutoffEdits) edit->refresh();
    outputGainSlider->refresh();
    outputGainEdit->refresh();
    for (uint32_t band = 0; band < DSP::kBands; ++band) {
        soloButtons[band]->refresh();
        bypassButtons[band]->refresh();
        thresholdSliders[band]->refresh();
        for (auto *edit :
             {thresholdEdits[band], gainEdits[band], ratioEdits[band], attackEdits[band], releaseEdits[band]})
            edit->refresh();
    }
    limiterBypassButton->refresh();
    limiterThresholdEdit->refresh();
    limiterMarginEdit->refresh();
    slotUpdateLimiterAttackRange();
    limiterAttackEdit->refresh();
    limiterReleaseEdit->refresh();
    for (auto *box : {spectrumOnInputButton, brickwallButton, bandLinkButton}) box->refresh();
    slotUpdatePanelEnables();
    slotUpdateLimiterEnable();
}

// Every tick.

void MainWindow::onTimer()
{
    const uint32_t now = windowSystem().milliseconds();
    followLinkKeys();
    spectrum->updateSpectrum();
    outputMeter->update();
    for (uint32_t band = 0; band < DSP::kBands; ++band) {
        bandMeters[band]->update();
        reductionMeters[band]->update();
    }
    hideFocusMark(now);
    toolTips->onTick(frame->cursorPosition(), now);
}

/// Links the bands while the user holds Alt and Shift, and unlinks them on release.
void MainWindow::followLinkKeys()
{
    const bool held = altShiftHeld();
    if (held == altShiftDown) return;
    altShiftDown = held;
    DSP::Dynamics *const dynamics = frame->transform().dynamics();
    dynamics->setBandLink(held);
    bandLinkButton->refresh();
    plugin->editParameter({dynamics, DSP::ParamKind::boolean, DSP::Dynamics::Param::bandLink},
                          Plugin::EditPhase::value, held);
}

bool MainWindow::bandsLinked(void *window)
{
    const auto &self = *static_cast<const MainWindow *>(window);
    return self.frame->transform().dynamics()->bandLink() || self.altShiftHeld();
}

// Focus.

Native::WindowBase *MainWindow::focusedControl() const
{
    const auto found = std::find_if(focusOrder.begin(), focusOrder.end(),
                                    [](const Native::WindowBase *control) { return control->hasFocus(); });
    return found == focusOrder.end() ? nullptr : *found;
}

void MainWindow::slotResetFocusTimer()
{
    focusTimerStart = windowSystem().milliseconds();
    if (std::exchange(focusTimerRunning, true)) return;
    if (Native::WindowBase *const control = focusedControl()) control->onEnableChanged();
}

void MainWindow::hideFocusMark(uint32_t now)
{
    if (!focusTimerRunning || now - focusTimerStart < kFocusShownMs) return;
    focusTimerRunning = false;
    focusTimerStart = 0;
    if (Native::WindowBase *const control = focusedControl()) control->onEnableChanged();
}

void MainWindow::moveFocus(bool forward)
{
    if (focusOrder.empty()) return;
    const bool wasShown = focusTimerRunning;
    slotResetFocusTimer();
    if (!wasShown) return; // the first key only shows the focus mark
    const auto current = std::find(focusOrder.begin(), focusOrder.end(), focusedControl());
    if (current == focusOrder.end()) {
        focusOrder.front()->setFocus();
        return;
    }
    const size_t count = focusOrder.size(), start = static_cast<size_t>(current - focusOrder.begin());
    const size_t step = forward ? 1 : count - 1;
    size_t next = (start + step) % count;
    while (next != start && !focusOrder[next]->isVisible()) next = (next + step) % count;
    focusOrder[next]->setFocus();
}

// Mouse events before the controls receive them.

bool MainWindow::onFrameMouse(uint32_t kind, Point at, int32_t wheel, uint32_t mods)
{
    const auto what = static_cast<Event::Kind>(kind);
    if (what == Event::Kind::wheel) {
        for (Native::WindowBase *target : wheelTargets) {
            const Rect place = target->frameRect();
            if (!place.contains(at)) continue;
            target->dispatchMouse(what, at - place.corner(), mods, wheel);
            break;
        }
        return true;
    }
    if (toolTips) toolTips->onMouse(at, what == Event::Kind::mouseMove, windowSystem().milliseconds());
    return false;
}

void MainWindow::onFrameMouseCaptured(uint32_t kind, Point at, int32_t, uint32_t)
{
    const bool isMove = static_cast<Event::Kind>(kind) == Event::Kind::mouseMove;
    if (toolTips) toolTips->onCapturedMouse(at, isMove, windowSystem().milliseconds());
}

// The crossover.

void MainWindow::tellCutoff(uint32_t cutoff)
{
    DSP::CrossOver *const crossOver = frame->transform().crossOver();
    plugin->editParameter({crossOver, DSP::ParamKind::real, DSP::CrossOver::Param::cutoff + cutoff},
                          Plugin::EditPhase::value, crossOver->cutoff(cutoff));
}

void MainWindow::changeCutoff(uint32_t cutoff, float hz)
{
    DSP::CrossOver *const crossOver = frame->transform().crossOver();
    crossOver->setCutoff(cutoff, crossOver->limitCutoff(cutoff, hz, spectrum->minGapOctaves()));
    spectrum->updateCutoffs();
    cutoffEdits[cutoff]->refresh();
    tellCutoff(cutoff);
}

void MainWindow::slotCutoffDelta(uint32_t cutoff, float delta)
{
    changeCutoff(cutoff, frame->transform().crossOver()->cutoff(cutoff) + delta);
}

void MainWindow::slotCutoffSet(uint32_t cutoff, float hz) { changeCutoff(cutoff, hz); }

void MainWindow::slotCutoffReset(uint32_t cutoff)
{
    DSP::CrossOver *const crossOver = frame->transform().crossOver();
    std::vector<uint32_t> changed;
    crossOver->defaultCutoffsFrom(cutoff, changed, spectrum->minGapOctaves());
    for (const uint32_t k : changed) {
        crossOver->setCutoff(k, DSP::CrossOver::kDefaultCutoffsHz[k]);
        tellCutoff(k);
    }
    spectrum->updateCutoffs();
    for (auto *edit : cutoffEdits) edit->refresh();
}

// Panels.

void MainWindow::slotUpdateLimiterAttackRange()
{
    const bool brickwall = frame->transform().maximizer()->brickwall();
    limiterAttackEdit->setDisplayRange(kAttackLowestMs,
                                       brickwall ? kBrickwallAttackHighestMs : kAttackHighestMs);
}

bool MainWindow::paintBar(const Rect &bar, uint32_t &shown, uint32_t colour)
{
    if (std::exchange(shown, colour) == colour) return false;
    if (ground) Native::fillRect(ground->pixels(), ground->stride(), bar, ground->bounds(), colour, 0);
    return true;
}

void MainWindow::slotUpdatePanelEnables()
{
    const DSP::Dynamics &dynamics = *frame->transform().dynamics();
    uint32_t solos = 0;
    for (uint32_t band = 0; band < DSP::kBands; ++band) solos += dynamics.solo(band);
    bool recoloured = false;
    for (uint32_t band = 0; band < DSP::kBands; ++band) {
        const bool silent = solos > 0 && !dynamics.solo(band);
        const uint32_t colour = silent || dynamics.bypass(band) ? kInactiveColour : kBarColours[band];
        if (!paintBar(Layout::bandBar(band), bandBarColours[band], colour)) continue;
        recoloured = true;
        bandTitles[band]->redraw();
        soloButtons[band]->redraw();
        bypassButtons[band]->redraw();
    }
    if (recoloured) windowSystem().invalidate(hostWindow(), Layout::bandBars(), false);
}

void MainWindow::slotUpdateLimiterEnable()
{
    const bool bypassed = frame->transform().maximizer()->bypass();
    if (!paintBar(Layout::limiterBar(), limiterBarColour, bypassed ? kInactiveColour : kLimiterColour))
        return;
    limiterTitle->redraw();
    limiterBypassButton->redraw();
    windowSystem().invalidate(hostWindow(), Layout::limiterBar(), false);
}

} // namespace UI
