#pragma once
#include <array>
#include <memory>
#include <string>
#include <vector>

#include "dsp/component/Bands.h"
#include "dsp/stages/CrossOver.h"
#include "ui/controls/ControlGroup.h"
#include "ui/controls/GainReductionMeter.h"
#include "ui/controls/LevelMeter.h"
#include "ui/controls/OnOffButton.h"
#include "ui/controls/PixmapSlider.h"
#include "ui/controls/TextEdit.h"
#include "ui/controls/TranslatedText.h"
#include "ui/editor/Language.h"
#include "ui/editor/MainWindowBase.h"
#include "ui/editor/ToolTipControl.h"

namespace UI {

/// The editor: creates and positions the controls (MainWindowLayout.cpp) and connects them. The parameters hold all
/// values that it shows.
/// Ownership the frame owns the controls; this window owns the control groups
/// Thread    window thread
class MainWindow final : public Reflected<MainWindow, MainWindowBase> {
public:
    static constexpr const char *kClassName = "UI::MainWindow";
    static constexpr uint32_t kFocusShownMs = 3000;

    MainWindow(Platform::WindowHandle nativeWindow, Plugin *effect);

    void moveFocus(bool forward) override;
    bool onFrameMouse(uint32_t kind, Point at, int32_t wheel, uint32_t mods) override;
    void onFrameMouseCaptured(uint32_t kind, Point at, int32_t wheel, uint32_t mods) override;
    Native::SurfaceRef background() const override { return ground; }
    bool showsFocus() const override { return focusTimerRunning; }

    void slotResetFocusTimer();
    void slotSpectrumCutoffFocus(uint32_t cutoff) { cutoffEdits[cutoff]->setFocus(); }
    void slotSpectrumGainFocus(uint32_t band) { gainEdits[band]->setFocus(); }
    void slotCutoffDelta(uint32_t cutoff, float delta);
    void slotCutoffReset(uint32_t cutoff);
    void slotCutoffSet(uint32_t cutoff, float hz);
    void slotUpdateLimiterAttackRange();
    void slotUpdatePanelEnables();
    void slotUpdateLimiterEnable();
    using Slots = MetaRows<
        Meta<&MainWindow::slotResetFocusTimer>, Meta<&MainWindow::slotSpectrumCutoffFocus, "iCutoff">,
        Meta<&MainWindow::slotSpectrumGainFocus, "iBand">,
        Meta<&MainWindow::slotCutoffDelta, "iCutoff", "fDelta">,
        Meta<&MainWindow::slotCutoffReset, "iCutoff">, Meta<&MainWindow::slotCutoffSet, "iCutoff", "fValue">,
        Meta<&MainWindow::slotUpdateLimiterAttackRange>, Meta<&MainWindow::slotUpdatePanelEnables>,
        Meta<&MainWindow::slotUpdateLimiterEnable>>;

    const std::vector<Native::WindowBase *> &controlsInFocusOrder() const { return focusOrder; }
    /// Names of the controls for users, in focus order.
    static std::vector<std::string> controlNames();

protected:
    void addBackgrounds() override;
    void createControls() override;
    void updateAll() override;
    void onTimer() override;

private:
    template <class Control>
    using PerBand = std::array<Control *, DSP::kBands>;
    struct Images; // shared by the controls, needed during construction only

    // Create the controls; listed in call order.
    void createSpectrum(const Images &images);
    void createOutput(const Images &images);
    void createBand(const Images &images, uint32_t band);
    void groupButtons();
    void createControlGroups();
    void createLimiter(const Images &images);
    void createOptions();
    void createLabels();
    void createLabel(uint32_t row, Point offset, Native::TranslatedText **kept = nullptr);
    void fillFocusOrder();
    void createToolTips();
    void createGroup(const char *groupName, uint32_t firstParameter, const PerBand<Native::TextEdit> &edits,
                     const PerBand<Native::PixmapSlider> *sliders, Native::MultiBandSpectrum *refreshed);

    static bool bandsLinked(void *window);
    bool altShiftHeld() const { return frame->altDown() && frame->shiftDown(); }
    void followLinkKeys();
    void hideFocusMark(uint32_t now);
    void changeCutoff(uint32_t cutoff, float hz);
    void tellCutoff(uint32_t cutoff);
    /// Paints a panel's title bar; false if it already has this colour.
    bool paintBar(const Rect &bar, uint32_t &shown, uint32_t colour);
    Native::WindowBase *focusedControl() const;

    const Language language;
    Native::SurfaceRef ground;                          // the background with the bars' current colours
    std::array<uint32_t, DSP::kBands> bandBarColours{}; // 0xRRGGBB; 0 until first painted
    uint32_t limiterBarColour = 0;

    Native::MultiBandSpectrum *spectrum = nullptr;
    std::array<Native::TextEdit *, DSP::kCutoffs> cutoffEdits{};
    Native::PixmapSlider *outputGainSlider = nullptr;
    Native::TextEdit *outputGainEdit = nullptr;
    Native::LevelMeterReadout *outputReadout = nullptr;
    Native::LevelMeter *outputMeter = nullptr;
    std::vector<Native::OnOffButton *> soloButtons, bypassButtons; // by band
    PerBand<Native::LevelMeter> bandMeters{};
    PerBand<Native::GainReductionMeter> reductionMeters{};
    PerBand<Native::PixmapSlider> thresholdSliders{};
    PerBand<Native::TextEdit> thresholdEdits{}, gainEdits{}, ratioEdits{}, attackEdits{}, releaseEdits{};
    Native::OnOffButton *limiterBypassButton = nullptr;
    Native::TextEdit *limiterThresholdEdit = nullptr, *limiterMarginEdit = nullptr;
    Native::TextEdit *limiterAttackEdit = nullptr, *limiterReleaseEdit = nullptr;
    Native::OnOffButton *spectrumOnInputButton = nullptr, *brickwallButton = nullptr;
    Native::OnOffButton *bandLinkButton = nullptr;
    PerBand<Native::TranslatedText> bandTitles{};
    Native::TranslatedText *limiterTitle = nullptr;

    uint32_t focusTimerStart = 0; // milliseconds
    bool focusTimerRunning = false;
    std::vector<Native::WindowBase *> focusOrder, wheelTargets;
    std::unique_ptr<ToolTipControl> toolTips;
    bool altShiftDown = false; // at the last tick
};

} // namespace UI
