#pragma once
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <string_view>

#include "tests/editor/HostedEffect.h"
#include "ui/draw/Surface.h"

/// A control that takes the keyboard focus: where it stands, and what the host calls it.
struct ControlRow {
    enum class Kind { largeSlider, smallSlider, largeField, smallField, panelSwitch, box };

    std::string name;
    Point corner;
    Kind kind;
    int32_t host; // index of the parameter, kNotAutomated

    static constexpr int32_t kNotAutomated = -1;

    bool isSlider() const { return kind == Kind::largeSlider || kind == Kind::smallSlider; }
    bool isField() const { return kind == Kind::largeField || kind == Kind::smallField; }
    bool isButton() const { return !isSlider() && !isField(); }
    /// Whether the steps of the field are equal on a logarithmic scale.
    bool isCutoff() const { return kind == Kind::largeField; }
    bool isBandRelease() const { return host >= 26 && host <= 29; }
    Rect place() const;
    Point centre() const { return {place().left + place().width() / 2, place().top + place().height() / 2}; }
};

/// All of them in the order of the Tab key.
const std::vector<ControlRow> &controlTable();
/// The only one of that name.
const ControlRow &control(std::string_view name);

/// Begin, value and end of so many parameters in turn, as Session::told() has them.
std::string bracketed(int32_t first, int32_t count = 1);

/// Pixels as they are expected on the screen.
class Picture {
public:
    Picture(int32_t width, int32_t height) : surface(std::make_shared<UI::Native::Surface>(width, height)) {}
    Picture &draw(const String &image, Point at = {});
    Picture &drawPart(const String &image, const Rect &part, Point at);
    Picture &fill(const Rect &area, uint32_t colour);
    /// The editor's ground as it lies under a place of it, bars included, all of them active.
    Picture &drawGround(const Rect &place);
    /// The digits of a field or of the readout, from a strip of them.
    Picture &drawNumber(const String &strip, std::string_view number, Point at);

    testing::AssertionResult isShown(const Platform::Bitmap &shot, Point corner) const;
    Platform::Bitmap &bitmap() { return surface->bitmap(); }

private:
    UI::Native::SurfaceRef surface;
};

uint32_t pixel(const Platform::Bitmap &shot, Point at);

/// The parameters behind an editor in their own units, and what the host was told of them.
class Session : public HostedEffect {
public:
    float value(int32_t index) const;
    DSP::FloatRange range(int32_t index) const;
    float defaultValue(int32_t index) const;
    /// As the host sets it; the editor shows it.
    void put(int32_t index, float wanted);
    /// Whether a gesture is under way.
    bool editing(int32_t index) const;
    /// "b4 v4 e4" for begin, values and end of parameter 4, since the last time.
    std::string told();
    /// That the host was told last by told(), in the parameter's units.
    float lastTold(int32_t index) const;
    /// Each parameter's begins and ends in turn, finite values only between them, and nothing left open.
    static testing::AssertionResult areWhole(const std::vector<FakeHost::Call> &edits);
    UI::Native::WindowBase &window(const ControlRow &row);
    /// The row of the control with the keyboard focus; null for none.
    const ControlRow *focused();

    // What a control looks like in its present state; with the mark of the focus, if it has that and it shows.

    /// A slider or a field with the parameter's value.
    testing::AssertionResult showsValue(const ControlRow &row);
    testing::AssertionResult showsField(const ControlRow &row, std::string_view number);
    testing::AssertionResult showsButton(const ControlRow &row, bool on, bool pressed = false);

private:
    const HostParam &param(int32_t index) const;
    bool isMarked(const ControlRow &row) { return mainWindow().showsFocus() && window(row).hasFocus(); }
    std::vector<FakeHost::Call> lastEdits;
};
