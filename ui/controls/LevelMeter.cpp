#include "ui/controls/LevelMeter.h"

#include "dsp/numerics/Math.h"
#include "ui/controls/MeterScale.h"
#include "ui/draw/Copy.h"
#include "ui/window/FrameBase.h"

namespace UI::Native {

namespace {

constexpr int32_t kBandSegments = 38, kOutputSegments = 47;
constexpr int32_t kSegmentHeight = 3, kBarWidth = 8, kLightWidth = 4; // pixels
constexpr int32_t kLeftBar = 2, kRightBar = 12, kLeftLight = 4, kRightLight = 14, kLightTop = 2;
constexpr uint32_t kHoldMs = 400;
constexpr int32_t kWarningSegments = 5; // yellow segments at the top
constexpr float kSilentDb = -96.0f, kMostDb = 200.0f;

float decibels(float linear) { return static_cast<float>(DSP::Math::linearToDecibels(linear)); }

} // namespace

LevelMeter::LevelMeter(FrameBase *ownerFrame, WindowBase *parentWindow, OptionalIndex bandIndex,
                       const String &windowName, PixmapRef off, PixmapRef on, LevelMeterReadout *numbers)
    : Reflected(ownerFrame, parentWindow, windowName),
      band(bandIndex),
      dynamics(transform().dynamics()),
      levelMeter(transform().level()),
      readout(numbers),
      offImage(std::move(off)),
      onImage(std::move(on)),
      numSegments(bandIndex ? kBandSegments : kOutputSegments)
{
    if (takeSizeOf(offImage)) redraw();
}

void LevelMeter::HeldPeak::hold(float level, uint32_t now)
{
    if (level < db && now - since < kHoldMs) return;
    db = level;
    since = now;
}

LevelMeter::Levels LevelMeter::readLevels()
{
    const float nothing = decibels(0.0f);
    if (transform().global()->getBypass()) return {nothing, nothing, nothing, nothing};
    float l = 0.0f, r = 0.0f, peakL = 0.0f, peakR = 0.0f;
    if (!band) {
        levelMeter->read(l, r, peakL, peakR);
        return {decibels(l), decibels(r), decibels(peakL), decibels(peakR)};
    }
    dynamics->readPeaks(band.value, l, r);
    const uint32_t now = frame->milliseconds();
    heldLeft.hold(decibels(l), now);
    heldRight.hold(decibels(r), now);
    return {decibels(l), decibels(r), heldLeft.db, heldRight.db};
}

LevelMeter::Channel LevelMeter::next(const Channel &shown, float level, float peak) const
{
    const auto segment = [&](float db) {
        return MeterScale::segmentOf(numSegments, MeterScale::kLowestDb, db);
    };
    return {segment(level), segment(peak), shown.over || level > MeterScale::kOverDb};
}

void LevelMeter::showNumbers(const Levels &levels)
{
    const float db = std::clamp(std::max(levels.leftPeak, levels.rightPeak), -kMostDb, kMostDb);
    const int32_t segment = MeterScale::segmentOf(numSegments, MeterScale::kLowestDb, db);
    const auto colour = segment > numSegments                      ? LevelMeterReadout::red
                        : segment > numSegments - kWarningSegments ? LevelMeterReadout::yellow
                                                                   : LevelMeterReadout::green;
    readout->setValue(colour, db <= kSilentDb ? String("-Inf") : String::number(db, 1));
}

void LevelMeter::update()
{
    const Levels levels = readLevels();
    if (readout) showNumbers(levels);
    Channel nextLeft = next(left, levels.left, levels.leftPeak);
    Channel nextRight = next(right, levels.right, levels.rightPeak);
    if (nextLeft == left && nextRight == right) return;
    nextLeft.segments = MeterScale::follow(left.segments, nextLeft.segments);
    nextRight.segments = MeterScale::follow(right.segments, nextRight.segments);
    left = nextLeft;
    right = nextRight;
    redraw();
}

void LevelMeter::redraw()
{
    drawPixmap(offImage, canvas, {});
    drawChannel(left, kLeftBar, kLeftLight);
    drawChannel(right, kRightBar, kRightLight);
    present();
}

void LevelMeter::drawChannel(const Channel &channel, int32_t barLeft, int32_t lightLeft)
{
    const auto segmentTop = [this](int32_t segment) { return height() - kSegmentHeight * segment - 2; };
    copyLit(Rect::at({barLeft, segmentTop(channel.segments)}, kBarWidth, kSegmentHeight * channel.segments));
    if (channel.peakSegment != 0)
        copyLit(Rect::at({barLeft, segmentTop(channel.peakSegment)}, kBarWidth, kSegmentHeight));
    if (channel.over) copyLit(Rect::at({lightLeft, kLightTop}, kLightWidth, 2));
}

void LevelMeter::copyLit(const Rect &part) { drawPixmap(onImage, part, canvas, part.corner(), 0); }

bool LevelMeter::onMouseDown(Point, uint32_t)
{
    for (Channel *channel : {&left, &right}) {
        channel->peakSegment = channel->segments;
        channel->over = false;
    }
    heldLeft = heldRight = {};
    redraw();
    return true;
}

} // namespace UI::Native
