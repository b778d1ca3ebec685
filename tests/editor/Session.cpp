#include "tests/editor/Session.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <sstream>

#include "ui/draw/Copy.h"
#include "ui/draw/Fill.h"
#include "ui/draw/GlyphStrip.h"

using Kind = ControlRow::Kind;

Rect ControlRow::place() const
{
    switch (kind) {
    case Kind::largeSlider: return Rect::at(corner, 16, 159);
    case Kind::smallSlider: return Rect::at(corner, 16, 129);
    case Kind::largeField: return Rect::at(corner, 37, 13);
    case Kind::smallField: return Rect::at(corner, 33, 13);
    case Kind::panelSwitch: return Rect::at(corner, 17, 17);
    case Kind::box: break;
    }
    return Rect::at(corner, 13, 13);
}

const std::vector<ControlRow> &controlTable()
{
    static const std::vector<ControlRow> rows = [] {
        std::vector<ControlRow> made = {{"output slider", {460, 46}, Kind::largeSlider, 0},
                                        {"output gain", {481, 210}, Kind::smallField, 0},
                                        {"low cutoff", {91, 210}, Kind::largeField, 1},
                                        {"mid cutoff", {223, 210}, Kind::largeField, 2},
                                        {"high cutoff", {355, 210}, Kind::largeField, 3}};
        for (int32_t band = 0; band < 4; ++band) {
            const int32_t x = 7 + 104 * band;
            const std::string number = " " + std::to_string(band + 1);
            made.push_back({"solo" + number, {x + 61, 240}, Kind::panelSwitch, 35 + band});
            made.push_back({"bypass" + number, {x + 78, 240}, Kind::panelSwitch, 31 + band});
            made.push_back({"threshold slider" + number, {x + 47, 266}, Kind::smallSlider, 10 + band});
            made.push_back({"threshold" + number, {x + 47, 400}, Kind::smallField, 10 + band});
            made.push_back({"gain" + number, {x + 47, 415}, Kind::smallField, 14 + band});
            made.push_back({"ratio" + number, {x + 47, 430}, Kind::smallField, 18 + band});
            made.push_back({"attack" + number, {x + 47, 445}, Kind::smallField, 22 + band});
            made.push_back({"release" + number, {x + 47, 460}, Kind::smallField, 26 + band});
        }
        const ControlRow last[] = {{"limiter bypass", {519, 240}, Kind::panelSwitch, 8},
                                   {"limiter threshold", {481, 268}, Kind::smallField, 4},
                                   {"limiter margin", {481, 283}, Kind::smallField, 5},
                                   {"limiter attack", {481, 298}, Kind::smallField, 6},
                                   {"limiter release", {481, 313}, Kind::smallField, 7},
                                   {"spectrum on input", {517, 373}, Kind::box, ControlRow::kNotAutomated},
                                   {"brickwall", {517, 393}, Kind::box, 9},
                                   {"band link", {517, 413}, Kind::box, 30}};
        made.insert(made.end(), std::begin(last), std::end(last));
        return made;
    }();
    return rows;
}

const ControlRow &control(std::string_view name)
{
    return *std::ranges::find(controlTable(), name, &ControlRow::name);
}

std::string bracketed(int32_t first, int32_t count)
{
    std::string text;
    for (int32_t host = first; host < first + count; ++host) {
        const std::string n = std::to_string(host);
        text += (text.empty() ? "b" : " b") + n + " v" + n + " e" + n;
    }
    return text;
}

// Pictures.

Picture &Picture::draw(const String &image, Point at)
{
    UI::Native::drawPixmap(UI::Native::loadPixmap(image), surface, at);
    return *this;
}

Picture &Picture::drawPart(const String &image, const Rect &part, Point at)
{
    UI::Native::drawPixmap(UI::Native::loadPixmap(image), part, surface, at, 0);
    return *this;
}

Picture &Picture::fill(const Rect &area, uint32_t colour)
{
    UI::Native::fillRect(surface->pixels(), surface->stride(), area, surface->bounds(), colour, 0);
    return *this;
}

Picture &Picture::drawGround(const Rect &place)
{
    drawPart("Background.png", place, {});
    constexpr uint32_t kColours[] = {0x3D7D96, 0xD68C17, 0x77963D, 0xAD47A5, 0x626C7B};
    for (int32_t panel = 0; panel < 5; ++panel) {
        const Rect bar = panel < 4 ? Rect::at({7 + 104 * panel, 236}, 99, 24) : Rect::at({423, 236}, 117, 24);
        fill(bar.moved(Point{} - place.corner()), kColours[panel]);
    }
    return *this;
}

Picture &Picture::drawNumber(const String &strip, std::string_view number, Point at)
{
    UI::Native::GlyphStrip::draw(UI::Native::loadPixmap(strip), number, surface, at);
    return *this;
}

uint32_t pixel(const Platform::Bitmap &shot, Point at)
{
    return static_cast<const uint32_t *>(shot.pixels())[at.y * shot.width() + at.x] & 0xFFFFFF;
}

testing::AssertionResult Picture::isShown(const Platform::Bitmap &shot, Point corner) const
{
    for (int32_t y = 0; y < surface->height(); ++y)
        for (int32_t x = 0; x < surface->width(); ++x) {
            const uint32_t wanted = pixel(surface->bitmap(), {x, y}),
                           shown = pixel(shot, corner + Point{x, y});
            if (wanted != shown)
                return testing::AssertionFailure()
                       << "pixel " << x << ", " << y << " of " << corner.x << ", " << corner.y << " is "
                       << std::hex << shown << ", not " << wanted;
        }
    return testing::AssertionSuccess();
}

// Sessions.

const HostParam &Session::param(int32_t index) const
{
    return effect.plugin().parameters().hostRows()[static_cast<size_t>(index)];
}

float Session::value(int32_t index) const { return static_cast<float>(DSP::toNumber(param(index).value())); }

DSP::FloatRange Session::range(int32_t index) const
{
    const auto &[low, high] = param(index).record().range;
    return {static_cast<float>(DSP::toNumber(low)), static_cast<float>(DSP::toNumber(high))};
}

float Session::defaultValue(int32_t index) const
{
    return param(index).component->floatParamDefault(param(index).index);
}

void Session::put(int32_t index, float wanted)
{
    const DSP::FloatRange bounds = range(index);
    effect.set(index, (wanted - bounds.minimum) / (bounds.maximum - bounds.minimum));
    desk->wait(0);
}

bool Session::editing(int32_t index) const { return param(index).record().editing; }

std::string Session::told()
{
    lastEdits = takeEdits();
    std::ostringstream text;
    std::string last;
    for (const FakeHost::Call &call : lastEdits) {
        const char *kind = call.opcode == audioMasterBeginEdit ? "b"
                           : call.opcode == audioMasterEndEdit ? "e"
                                                               : "v";
        std::string word = kind + std::to_string(call.index);
        if (word == last && *kind == 'v') continue;
        text << (last.empty() ? "" : " ") << word;
        last = std::move(word);
    }
    return text.str();
}

float Session::lastTold(int32_t index) const
{
    const DSP::FloatRange bounds = range(index);
    float told = NAN;
    for (const FakeHost::Call &call : lastEdits)
        if (call.opcode == audioMasterAutomate && call.index == index)
            told = bounds.minimum + call.opt * (bounds.maximum - bounds.minimum);
    return told;
}

testing::AssertionResult Session::areWhole(const std::vector<FakeHost::Call> &edits)
{
    std::set<int32_t> open;
    for (const FakeHost::Call &call : edits) {
        const bool isOpen = open.contains(call.index);
        if (isOpen != (call.opcode != audioMasterBeginEdit) || !std::isfinite(call.opt))
            return testing::AssertionFailure() << "call " << call.opcode << " for " << call.index;
        if (call.opcode == audioMasterBeginEdit) open.insert(call.index);
        if (call.opcode == audioMasterEndEdit) open.erase(call.index);
    }
    if (open.empty()) return testing::AssertionSuccess();
    return testing::AssertionFailure() << *open.begin() << " is left open";
}

UI::Native::WindowBase &Session::window(const ControlRow &row)
{
    return *controls().at(static_cast<size_t>(&row - controlTable().data()));
}

const ControlRow *Session::focused()
{
    for (const ControlRow &row : controlTable())
        if (window(row).hasFocus()) return &row;
    return nullptr;
}

testing::AssertionResult Session::showsValue(const ControlRow &row)
{
    if (row.isField()) {
        const float v = value(row.host);
        return showsField(row, String::number(v, std::abs(v) < 100.0f ? 1 : 0).c_str());
    }
    const Rect place = row.place();
    const DSP::FloatRange bounds = range(row.host);
    const auto travel = static_cast<float>(place.height() - 13);
    const float share = (bounds.maximum - value(row.host)) / (bounds.maximum - bounds.minimum);
    const Point handle{0, static_cast<int32_t>(std::lround(share * travel))};
    Picture wanted(place.width(), place.height());
    wanted.draw(row.kind == Kind::largeSlider ? "Slider_Track_Large.png" : "Slider_Track_Small.png");
    wanted.draw("Slider_Handle_Normal.png", handle);
    if (isMarked(row)) wanted.draw("Slider_FocusOverlay.png", handle);
    return wanted.isShown(desk->shot(), place.corner());
}

testing::AssertionResult Session::showsField(const ControlRow &row, std::string_view number)
{
    const Rect place = row.place();
    const bool large = row.kind == Kind::largeField;
    Picture wanted(place.width(), place.height());
    wanted.draw(large ? "TextEdit_Background_Large.png" : "TextEdit_Background_Small.png");
    wanted.drawNumber("TextEdit_Numbers.png", number,
                      {place.width() - 1 - UI::Native::GlyphStrip::textWidth(number), 3});
    if (isMarked(row))
        wanted.draw(large ? "TextEdit_FocusOverlay_Large.png" : "TextEdit_FocusOverlay_Small.png");
    return wanted.isShown(desk->shot(), place.corner());
}

testing::AssertionResult Session::showsButton(const ControlRow &row, bool on, bool pressed)
{
    const Rect place = row.place();
    const bool solo = row.name.starts_with("solo");
    const String image = String(row.kind == Kind::box ? "CheckBox_%1_%2.png"
                                : solo                ? "Button_Solo_%1_%2.png"
                                                      : "Button_Bypass_%1_%2.png")
                             .arg(on ? "On" : "Off")
                             .arg(pressed ? "Pressed" : "Normal");
    Picture wanted(place.width(), place.height());
    wanted.drawGround(place).draw(image);
    if (isMarked(row))
        wanted.draw(row.kind == Kind::box ? "CheckBox_FocusOverlay.png" : "Button_FocusOverlay.png");
    return wanted.isShown(desk->shot(), place.corner());
}
