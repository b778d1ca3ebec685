#include "ui/controls/TextEdit.h"

#include <cmath>
#include <vector>

#include "dsp/numerics/Math.h"
#include "ui/draw/Copy.h"
#include "ui/draw/GlyphStrip.h"

namespace UI::Native {

namespace {

constexpr float kUnitsPerPixel = 0.1f;
constexpr float kWheelLogScale = 0.0265252f;           // units of the logarithmic scale per notch
constexpr int32_t kDigitsTop = 3, kEntryBoxExtra = 21; // pixels
constexpr char kTypable[] = "0123456789.,-";

String numberText(float v)
{
    const int32_t decimals = v > -100.0f && v < 100.0f ? 1 : 0;
    const String shown = String::number(v, decimals);
    return shown == "-0.0" ? String("0.0") : shown;
}

} // namespace

TextEdit::TextEdit(FrameBase *ownerFrame, WindowBase *parentWindow, const String &windowName,
                   const Images &pictures, DSP::Component *parameterOwner, uint32_t parameter, Apply apply)
    : ValueControl(ownerFrame, parentWindow, windowName, parameterOwner, parameter, apply), images(pictures)
{
    if (takeSizeOf(images.background)) redraw();
}

void TextEdit::refresh()
{
    value = component->floatParamValue(paramIndex);
    redraw();
}

void TextEdit::setDisplayRange(float low, float high)
{
    displayMin = low;
    displayMax = high;
    redraw();
}

void TextEdit::redraw()
{
    text = numberText(clampToDisplay(value));
    drawPixmap(images.background, canvas, {});
    const int32_t left = width() - 1 - GlyphStrip::textWidth(text.c_str());
    GlyphStrip::draw(images.digits, text.c_str(), canvas, {left, kDigitsTop});
    if (showsFocus()) drawPixmap(images.focusOverlay, canvas, {});
    present();
}

float TextEdit::logStep(float step) const
{
    // Shift a range that starts at 0 by one, because 0 has no logarithm.
    const float shift = minValue == 0.0f ? 1.0f : 0.0f;
    const float a = minValue + shift, b = maxValue + shift, span = maxValue - minValue;
    const bool usual = visualLow == visualHigh;
    const float low = usual ? 0.0f : visualLow, high = usual ? 100.0f : visualHigh;
    const auto log10 = [](float x) { return static_cast<float>(DSP::Math::log10(x)); };
    const float logA = log10(a), logB = log10(b);
    const float v = std::clamp(value, minValue, maxValue);
    const float u = log10((v - minValue) / span * (b - a) + a);
    const float place = (u - logA) / (logB - logA) * (high - low) + low;
    const float exponent = (place + step - low) / (high - low) * (logB - logA) + logA;
    const auto w = static_cast<float>(DSP::Math::pow(10.0, exponent));
    return (w - a) / (b - a) * span + minValue - v;
}

bool TextEdit::onMouseDown(Point at, uint32_t)
{
    if (wantsReset()) {
        reset();
        return true;
    }
    setFocus();
    tellPlugin(Plugin::EditPhase::begin);
    frame->setMouseCapture(this);
    pressPos = lastPos = at;
    dragged = false;
    return true;
}

bool TextEdit::onMouseMove(Point at, uint32_t mods)
{
    if (!hasCapture() || !pressPos || !lastPos) return false;
    dragged |= at != *pressPos;
    Platform::windowSystem().showCursor(Platform::windowSystem().loadCursor(Platform::CursorKind::drag));
    if (at == *lastPos) return true;
    const Point before = *lastPos;
    Platform::windowSystem().setPointer(Platform::windowSystem().toScreen(handle, *pressPos));
    lastPos = pressPos;
    const auto pixels = static_cast<float>(before.y - at.y + at.x - before.x);
    float step = scaledStep(pixels * kUnitsPerPixel, mods, kCoarse, 0.025f);
    if (logarithmic) step = logStep(step);
    changeBy(step);
    return true;
}

bool TextEdit::onMouseUp(Point, uint32_t)
{
    if (!hasCapture()) return false;
    frame->releaseMouseCapture();
    const bool wasDragged = std::exchange(dragged, false);
    pressPos.reset();
    lastPos.reset();
    tellPlugin(Plugin::EditPhase::end);
    if (wasDragged)
        Platform::windowSystem().showCursor(frame->arrow());
    else
        openEntryBox();
    return true;
}

void TextEdit::onCaptureLost()
{
    dragged = true; // keeps the entry box closed
    onMouseUp({}, 0);
}

bool TextEdit::onWheel(Point, int32_t delta, uint32_t mods)
{
    float step = scaledStep(static_cast<float>(delta) * kUnitsPerWheelTick, mods, 5.0f, kFine);
    if (logarithmic) step = logStep(step * kWheelLogScale);
    changeBy(step);
    return true;
}

bool TextEdit::onKeyDown(uint32_t key, uint32_t mods, bool)
{
    constexpr float kBeyondAnyRange = 100000.0f;
    if (key != Platform::kKeyF2) return stepByKey(key, mods, 10.0f, kBeyondAnyRange);
    openEntryBox();
    return true;
}

void TextEdit::openEntryBox()
{
    if (!handle) return; // the host closed the editor when the gesture ended
    Platform::PromptRequest request;
    request.owner = frame->hostWindow();
    request.centre = frame->windowOrigin() + toFrame({width() / 2, height() / 2});
    request.width = width() + kEntryBoxExtra;
    request.text = text.c_str();
    request.allowed.assign(kTypable, kTypable + sizeof kTypable - 1);
    const auto typed = Platform::windowSystem().promptText(request);
    if (!handle) return; // the host closed the editor during the prompt
    setFocus();
    bool isNumber = false;
    const double wanted = typed ? String(typed->c_str()).toDouble(&isNumber) : 0.0;
    if (isNumber && std::isfinite(wanted))
        changeTo(std::clamp(static_cast<float>(wanted), minValue, maxValue));
}

} // namespace UI::Native
