#pragma once
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <string_view>

#include "tests/editor/HostedEffect.h"
#include "ui/draw/Surface.h"

/// A control that can have the keyboard focus, its position and its host parameter.
struct ControlRow {
    enum class Kind { largeSlider, smallSlider, largeField, smallField, panelSwitch, box };

    std::string name;
    Point corner;
    Kind kind;
    int32_t host; // parameter index, or kNotAutomated

    static constexpr int32_t kNotAutomated = -1;

    bool isSlider() const { return kind == Kind::largeSlider || kind == Kind::smallSlider; }
    bool isField() const { return kind == Kind::largeField || kind == Kind::smallField; }
    bool isButton() const { return !isSlider() && !isField(); }
    /// Returns true for fields with a logarithmic scale.
    bool isCutoff() const { return kind == Kind::largeField; }
    bool isBandRelease() const { return host >= 26 && host <= 29; }
    Rect place() const;
    Point centre() const { return {place().left + place().width() / 2, place().top + place().height() / 2}; }
};

/// All controls in tab order.
const std::vector<ControlRow> &controlTable();
/// Finds a control by name.
const ControlRow &control(std::string_view name);

/// One complete gesture for each of `count` parameters from `first`, in the format of Session::told().
std::string bracketed(int32_t first, int32_t count = 1);

/// Expected pixels of a part of the screen.
class Picture {
public:
    Picture(int32_t width, int32_t height) : surface(std::make_shared<UI::Native::Surface>(width, height)) {}
    Picture &draw(const String &image, Point at = {});
    Picture &drawPart(const String &image, const Rect &part, Point at);
    Picture &fill(const Rect &area, uint32_t colour);
    /// Draws the editor's background at `place`, with all panel bars in their active colours.
    Picture &drawGround(const Rect &place);
    /// Draws a number with the glyphs of the image `strip`.
    Picture &drawNumber(const String &strip, std::string_view number, Point at);

    testing::AssertionResult isShown(const Platform::Bitmap &shot, Point corner) const;
    Platform::Bitmap &bitmap() { return surface->bitmap(); }

private:
    UI::Native::SurfaceRef surface;
};

uint32_t pixel(const Platform::Bitmap &shot, Point at);

/// A hosted effect with its parameters in their units and the edits that it reports to the host.
class Session : public HostedEffect {
public:
    float value(int32_t index) const;
    DSP::FloatRange range(int32_t index) const;
    float defaultValue(int32_t index) const;
    /// Sets a parameter as a host does, and updates the editor.
    void put(int32_t index, float wanted);
    /// Returns true during a gesture.
    bool editing(int32_t index) const;
    /// Returns the edits since the last call: "b4 v4 e4" for begin, one or more values and end of parameter 4.
    std::string told();
    /// Last value of a parameter among the edits that told() returned, in its unit; NaN if there was none.
    float lastTold(int32_t index) const;
    /// Succeeds if begin and end alternate for each parameter, all values are finite and inside gestures, and all gestures
    /// have ended.
    static testing::AssertionResult areWhole(const std::vector<FakeHost::Call> &edits);
    UI::Native::WindowBase &window(const ControlRow &row);
    /// The control with the keyboard focus; null if there is none.
    const ControlRow *focused();

    // Compare a control with its expected picture, including the focus mark if visible.

    /// Expects the parameter's value. Only for sliders and fields.
    testing::AssertionResult showsValue(const ControlRow &row);
    testing::AssertionResult showsField(const ControlRow &row, std::string_view number);
    testing::AssertionResult showsButton(const ControlRow &row, bool on, bool pressed = false);

private:
    const HostParam &param(int32_t index) const;
    bool isMarked(const ControlRow &row) { return mainWindow().showsFocus() && window(row).hasFocus(); }
    std::vector<FakeHost::Call> lastEdits;
};
