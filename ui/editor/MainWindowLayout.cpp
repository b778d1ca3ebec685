#include <cassert>
#include <initializer_list>

#include "PluginBase/Util/SignalProxy.h"
#include "ui/editor/Layout.h"
#include "ui/editor/MainWindow.h"

namespace UI {

using Native::GainReductionMeter;
using Native::LevelMeter;
using Native::loadPixmap;
using Native::OnOffButton;
using Native::PixmapRef;
using Native::PixmapSlider;
using Native::TextEdit;

namespace {

using BandParam = DSP::Dynamics::Param;
using LimiterParam = DSP::Maximizer::Param;

constexpr float kCutoffScaleUnits = 37.7f, kReleaseScaleUnits = 100.0f;

void place(Native::WindowBase *control, Point at)
{
    control->setGeometry(at.x, at.y, control->width(), control->height());
}

/// Connects a control's gestures to the receiver's slots, which get `index` as their first argument.
template <auto Delta, auto Reset, auto Set, class Control>
void connectGesture(Control *control, Object *receiver, uint32_t index)
{
    new Util::SignalProxyFloat(control, kConnectionText<&Control::sigUserValueDelta>, receiver,
                               kConnectionText<Delta>, index);
    new Util::SignalProxy(control, kConnectionText<&Control::sigUserReset>, receiver, kConnectionText<Reset>,
                          index);
    new Util::SignalProxyFloat(control, kConnectionText<&Control::sigUserValueSet>, receiver,
                               kConnectionText<Set>, index);
}

String bandName(const char *pattern, uint32_t band) { return String(pattern).arg(band + 1); }

} // namespace

struct MainWindow::Images {
    PixmapRef trackSmall = loadPixmap("Slider_Track_Small.png"),
              trackLarge = loadPixmap("Slider_Track_Large.png");
    PixmapRef handleNormal = loadPixmap("Slider_Handle_Normal.png");
    PixmapRef handlePressed = loadPixmap("Slider_Handle_Pressed.png");
    PixmapRef sliderFocus = loadPixmap("Slider_FocusOverlay.png");
    PixmapRef meterOff = loadPixmap("LevelMeter_Small_Off.png"),
              meterOn = loadPixmap("LevelMeter_Small_On.png");
    PixmapRef reductionOff = loadPixmap("GainReductionMeter_Off.png");
    PixmapRef reductionOn = loadPixmap("GainReductionMeter_On.png");
    PixmapRef digits = loadPixmap("TextEdit_Numbers.png");
    TextEdit::Images smallField = {loadPixmap("TextEdit_Background_Small.png"), digits,
                                   loadPixmap("TextEdit_FocusOverlay_Small.png")};
    TextEdit::Images largeField = {loadPixmap("TextEdit_Background_Large.png"), digits,
                                   loadPixmap("TextEdit_FocusOverlay_Large.png")};
    PixmapRef buttonFocus = loadPixmap("Button_FocusOverlay.png");

    PixmapSlider::Images slider(const PixmapRef &track) const
    {
        return {track, handleNormal, handlePressed, sliderFocus};
    }
};

void MainWindow::addBackgrounds()
{
    ground = Native::loadSurface("Background.png");
    addBackground(ground, {0, 0});
}

void MainWindow::createControls()
{
    const Images images;
    createSpectrum(images);
    createOutput(images);
    for (uint32_t band = 0; band < DSP::kBands; ++band) createBand(images, band);
    groupButtons();
    createControlGroups();
    createLimiter(images);
    createOptions();
    createLabels();
    fillFocusOrder();
    createToolTips();
}

void MainWindow::createSpectrum(const Images &images)
{
    spectrum = new Native::MultiBandSpectrum(frame.get(), nullptr);
    place(spectrum, Layout::kSpectrum);
    wheelTargets.push_back(spectrum);
    wire<&Native::MultiBandSpectrum::sigResetCutoff, &MainWindow::slotCutoffReset>(spectrum, this);
    wire<&Native::MultiBandSpectrum::sigCutoffFocus, &MainWindow::slotSpectrumCutoffFocus>(spectrum, this);
    wire<&MainWindow::sigSamplingRateChanged, &Native::MultiBandSpectrum::slotSamplingRateChanged>(this,
                                                                                                   spectrum);
    for (uint32_t i = 0; i < DSP::kCutoffs; ++i) {
        auto *edit =
            new TextEdit(frame.get(), nullptr, bandName("CrossOver Cutoff %1 Edit", i), images.largeField,
                         frame->transform().crossOver(), DSP::CrossOver::Param::cutoff + i, TextEdit::kNone);
        place(edit, {Layout::kCutoffX[i], Layout::kTopFieldY});
        edit->setLogarithmic(true);
        edit->setVisualRange(0.0f, kCutoffScaleUnits);
        wheelTargets.push_back(edit);
        cutoffEdits[i] = edit;
        connectGesture<&MainWindow::slotCutoffDelta, &MainWindow::slotCutoffReset,
                       &MainWindow::slotCutoffSet>(edit, this, i);
        wire<&Native::MultiBandSpectrum::sigUserCutoffChanged, &TextEdit::slotUpdateFloatParamValue>(spectrum,
                                                                                                     edit);
        wire<&TextEdit::sigUserValueChanged, &Native::MultiBandSpectrum::slotUpdateCutoffs>(edit, spectrum);
    }
}

void MainWindow::createOutput(const Images &images)
{
    DSP::Component *const gain = frame->transform().gain();
    outputGainSlider =
        new PixmapSlider(frame.get(), nullptr, "Output Gain Slider", images.slider(images.trackLarge), gain,
                         DSP::Gain::Param::gain, PixmapSlider::kAll);
    place(outputGainSlider, Layout::kOutputSlider);
    wheelTargets.push_back(outputGainSlider);
    outputGainEdit = new TextEdit(frame.get(), nullptr, "Output Gain Edit", images.smallField, gain,
                                  DSP::Gain::Param::gain, TextEdit::kAll);
    place(outputGainEdit, Layout::kOutputEdit);
    wheelTargets.push_back(outputGainEdit);
    wire<&PixmapSlider::sigUserValueChanged, &TextEdit::slotUpdateFloatParamValue>(outputGainSlider,
                                                                                   outputGainEdit);
    wire<&TextEdit::sigUserValueChanged, &PixmapSlider::slotUpdateFloatParamValue>(outputGainEdit,
                                                                                   outputGainSlider);

    outputReadout = new Native::LevelMeterReadout(frame.get(), nullptr, Layout::kOutputReadout);
    outputMeter =
        new LevelMeter(frame.get(), nullptr, {}, "Output Level Meter", loadPixmap("LevelMeter_Large_Off.png"),
                       loadPixmap("LevelMeter_Large_On.png"), outputReadout);
    place(outputMeter, Layout::kOutputMeter);
}

void MainWindow::createBand(const Images &images, uint32_t band)
{
    DSP::Component *const dynamics = frame->transform().dynamics();
    const Point corner{Layout::kBandX[band], 0};
    const auto button = [&](const char *pattern, const char *on, const char *off, uint32_t param, Point at) {
        auto *made = new OnOffButton(frame.get(), nullptr, bandName(pattern, band), on, off,
                                     images.buttonFocus, dynamics, param + band);
        place(made, corner + at);
        made->setHotRect(Layout::kSwitchHotRect);
        wire<&OnOffButton::sigUserToggled, &MainWindow::slotUpdatePanelEnables>(made, this);
        wire<&OnOffButton::sigUserAltClicked, &MainWindow::slotUpdatePanelEnables>(made, this);
        return made;
    };
    soloButtons.push_back(
        button("Band %1 Solo Button", "Button_Solo_On_", "Button_Solo_Off_", BandParam::solo, Layout::kSolo));
    bypassButtons.push_back(button("Band %1 Bypass Button", "Button_Bypass_On_", "Button_Bypass_Off_",
                                   BandParam::bypass, Layout::kBypass));
    bandMeters[band] = new LevelMeter(frame.get(), nullptr, band, bandName("Band %1 Level Meter", band),
                                      images.meterOff, images.meterOn, nullptr);
    place(bandMeters[band], corner + Layout::kBandMeter);
    reductionMeters[band] =
        new GainReductionMeter(frame.get(), nullptr, band, bandName("Band %1 Gain Reduction Meter", band),
                               images.reductionOff, images.reductionOn);
    place(reductionMeters[band], corner + Layout::kReductionMeter);

    thresholdSliders[band] = new PixmapSlider(
        frame.get(), nullptr, bandName("Band %1 Threshold Slider", band), images.slider(images.trackSmall),
        dynamics, BandParam::threshold + band, PixmapSlider::kNone);
    place(thresholdSliders[band], corner + Layout::kThresholdSlider);
    wheelTargets.push_back(thresholdSliders[band]);
    const auto edit = [&](const char *pattern, uint32_t param, int32_t y) {
        auto *made = new TextEdit(frame.get(), nullptr, bandName(pattern, band), images.smallField, dynamics,
                                  param + band, TextEdit::kNone);
        place(made, {corner.x + Layout::kBandFieldX, y});
        wheelTargets.push_back(made);
        return made;
    };
    thresholdEdits[band] = edit("Band %1 Threshold Edit", BandParam::threshold, Layout::kThresholdY);
    // Same name as the threshold field: names are titles of native windows and must not change.
    gainEdits[band] = edit("Band %1 Threshold Edit", BandParam::gain, Layout::kGainY);
    ratioEdits[band] = edit("Band %1 Ratio Edit", BandParam::ratio, Layout::kRatioY);
    attackEdits[band] = edit("Band %1 Attack Edit", BandParam::attack, Layout::kAttackY);
    releaseEdits[band] = edit("Band %1 Release Edit", BandParam::release, Layout::kReleaseY);
    releaseEdits[band]->setLogarithmic(true);
    releaseEdits[band]->setVisualRange(0.0f, kReleaseScaleUnits);
}

void MainWindow::groupButtons()
{
    for (uint32_t band = 0; band < DSP::kBands; ++band) {
        soloButtons[band]->setGroup(band, soloButtons);
        bypassButtons[band]->setGroup(band, bypassButtons);
    }
}

void MainWindow::createControlGroups()
{
    createGroup("Threshold Control Group", BandParam::threshold, thresholdEdits, &thresholdSliders, nullptr);
    createGroup("Gain Control Group", BandParam::gain, gainEdits, nullptr, spectrum);
    createGroup("Ratio Control Group", BandParam::ratio, ratioEdits, nullptr, nullptr);
    createGroup("Attack Control Group", BandParam::attack, attackEdits, nullptr, nullptr);
    createGroup("Release Control Group", BandParam::release, releaseEdits, nullptr, nullptr);
}

void MainWindow::createGroup(const char *groupName, uint32_t firstParameter, const PerBand<TextEdit> &edits,
                             const PerBand<PixmapSlider> *sliders, Native::MultiBandSpectrum *refreshed)
{
    using Group = Native::ControlGroup;
    Group::Members members;
    for (uint32_t band = 0; band < DSP::kBands; ++band) members.params.push_back(firstParameter + band);
    members.edits.assign(edits.begin(), edits.end());
    if (sliders) members.sliders.assign(sliders->begin(), sliders->end());
    members.spectrum = refreshed;
    auto *group = new Group(frame.get(), groupName, &MainWindow::bandsLinked, this,
                            frame->transform().dynamics(), members);
    addChild(group);
    for (uint32_t band = 0; band < DSP::kBands; ++band) {
        if (sliders)
            connectGesture<&Group::slotDelta, &Group::slotReset, &Group::slotSet>((*sliders)[band], group,
                                                                                  band);
        connectGesture<&Group::slotDelta, &Group::slotReset, &Group::slotSet>(edits[band], group, band);
    }
}

void MainWindow::createLimiter(const Images &images)
{
    DSP::Component *const maximizer = frame->transform().maximizer();
    limiterBypassButton =
        new OnOffButton(frame.get(), nullptr, "Limiter Bypass Button", "Button_Bypass_On_",
                        "Button_Bypass_Off_", images.buttonFocus, maximizer, LimiterParam::bypass);
    place(limiterBypassButton, Layout::kLimiterBypass);
    limiterBypassButton->setHotRect(Layout::kSwitchHotRect);
    wire<&OnOffButton::sigUserToggled, &MainWindow::slotUpdateLimiterEnable>(limiterBypassButton, this);
    const auto edit = [&](const char *editName, uint32_t param, int32_t y) {
        auto *made =
            new TextEdit(frame.get(), nullptr, editName, images.smallField, maximizer, param, TextEdit::kAll);
        place(made, {Layout::kLimiterFieldX, y});
        wheelTargets.push_back(made);
        return made;
    };
    limiterThresholdEdit =
        edit("Limiter Threshold Edit", LimiterParam::threshold, Layout::kLimiterThresholdY);
    limiterMarginEdit = edit("Limiter Margin Edit", LimiterParam::margin, Layout::kLimiterMarginY);
    limiterAttackEdit = edit("Limiter Attack Edit", LimiterParam::attack, Layout::kLimiterAttackY);
    limiterReleaseEdit = edit("Limiter Release Edit", LimiterParam::release, Layout::kLimiterReleaseY);
}

void MainWindow::createOptions()
{
    const TransformHandle &parts = frame->transform();
    const PixmapRef overlay = loadPixmap("CheckBox_FocusOverlay.png");
    const auto box = [&](const char *boxName, DSP::Component *component, uint32_t param, int32_t y) {
        auto *made = new OnOffButton(frame.get(), nullptr, boxName, "CheckBox_On_", "CheckBox_Off_", overlay,
                                     component, param);
        place(made, {Layout::kCheckX, y});
        return made;
    };
    spectrumOnInputButton = box("Spectrum On Input Button", parts.spectrum(0),
                                DSP::Meter::Spectrum::Param::onInput, Layout::kSpectrumOnInputY);
    brickwallButton = box("Enable Brickwall Limiter Button", parts.maximizer(), LimiterParam::brickwall,
                          Layout::kBrickwallY);
    bandLinkButton = box("Band Link Button", parts.dynamics(), BandParam::bandLink, Layout::kBandLinkY);
    wire<&OnOffButton::sigUserToggled, &MainWindow::slotUpdateLimiterAttackRange>(brickwallButton, this);
}

void MainWindow::createLabel(uint32_t row, Point offset, Native::TranslatedText **kept)
{
    auto *label = new Native::TranslatedText(frame.get(), nullptr, language, row, offset);
    if (kept) *kept = label;
    // A click on the label toggles its check box.
    const std::pair<uint32_t, OnOffButton *> boxes[] = {{kSpectrumOnInputLabel, spectrumOnInputButton},
                                                        {kBrickwallLabel, brickwallButton},
                                                        {kBandLinkLabel, bandLinkButton}};
    for (const auto &[labelRow, box] : boxes)
        if (labelRow == row) wire<&Native::TranslatedText::sigClicked, &OnOffButton::slotClicked>(label, box);
}

void MainWindow::createLabels()
{
    const auto inBand = [](uint32_t band) { return Point{Layout::kBandX[band], Layout::kBarTop}; };
    for (uint32_t row = 0; row < kTextRows; ++row) {
        const Native::TextRow &text = textRow(row);
        if (text.width == 0 || text.height == 0) continue;
        if (row >= kFirstBandLabel && row <= kLastBandLabel)
            for (uint32_t band = 0; band < DSP::kBands; ++band) createLabel(row, inBand(band));
        else if (row < DSP::kBands)
            createLabel(row, inBand(row), &bandTitles[row]);
        else
            createLabel(row, {}, row == kLimiterTitle ? &limiterTitle : nullptr);
    }
}

std::vector<std::string> MainWindow::controlNames()
{
    std::vector<std::string> names = {"Output Gain Slider", "Output Gain", "Low Cutoff", "Mid Cutoff",
                                      "High Cutoff"};
    for (uint32_t band = 0; band < DSP::kBands; ++band)
        for (const char *control :
             {"Solo", "Bypass", "Threshold Slider", "Threshold", "Gain", "Ratio", "Attack", "Release"})
            names.push_back(bandName("Band %1 ", band).c_str() + std::string(control));
    names.insert(names.end(),
                 {"Limiter Bypass", "Limiter Threshold", "Limiter Margin", "Limiter Attack",
                  "Limiter Release", "Spectrum On Input", "Brickwall Limiter", "Link Band Controls"});
    return names;
}

void MainWindow::fillFocusOrder()
{
    const auto add = [this](std::initializer_list<Native::WindowBase *> controls) {
        focusOrder.insert(focusOrder.end(), controls);
    };
    add({outputGainSlider, outputGainEdit, cutoffEdits[0], cutoffEdits[1], cutoffEdits[2]});
    for (uint32_t b = 0; b < DSP::kBands; ++b)
        add({soloButtons[b], bypassButtons[b], thresholdSliders[b], thresholdEdits[b], gainEdits[b],
             ratioEdits[b], attackEdits[b], releaseEdits[b]});
    add({limiterBypassButton, limiterThresholdEdit, limiterMarginEdit, limiterAttackEdit, limiterReleaseEdit,
         spectrumOnInputButton, brickwallButton, bandLinkButton});
    assert(focusOrder.size() == controlNames().size());
    for (Native::WindowBase *control : focusOrder)
        wire<&Native::WindowBase::sigResetFocusTimer, &MainWindow::slotResetFocusTimer>(control, this);
}

void MainWindow::createToolTips()
{
    auto *tip = new Native::ToolTip(frame.get(), language);
    toolTips = std::make_unique<ToolTipControl>(tip, spectrum, Layout::kWidth, Layout::kHeight);
    toolTips->addTarget(outputGainSlider, kOutputGainTip);
    for (uint32_t b = 0; b < DSP::kBands; ++b) {
        toolTips->addTarget(soloButtons[b], kFirstSoloTip + b);
        toolTips->addTarget(bypassButtons[b], kFirstBypassTip + b);
        toolTips->addTarget(thresholdSliders[b], kFirstThresholdTip + b);
    }
    toolTips->addTarget(limiterBypassButton, kLimiterBypassTip);
}

} // namespace UI
