#include <cmath>
#include <numbers>

#include <gtest/gtest.h>

#include "apps/tessarine/files/Dither.h"
#include "tests/signals/Signals.h"

namespace {

constexpr double kSteps16 = 32768.0; // at full scale

/// Rounding errors in steps, of stereo samples rounded in blocks of odd sizes.
std::vector<double> errorsOf(std::vector<float> samples)
{
    App::Dither dither(true);
    std::vector<double> errors;
    for (size_t begin = 0, count = 1; begin < samples.size(); begin += count, count = begin % 1000 + 1) {
        count = std::min(count, samples.size() - begin);
        dither.round(&samples[begin], kSteps16, count);
        for (size_t i = 0; i < count; ++i)
            errors.push_back(dither.rounded()[i] - kSteps16 * static_cast<double>(samples[begin + i]));
    }
    return errors;
}

/// Covariance of the errors and those `lag` samples later.
double covariance(const std::vector<double> &errors, size_t lag)
{
    double sum = 0.0;
    for (size_t i = lag; i < errors.size(); ++i) sum += errors[i] * errors[i - lag];
    return sum / static_cast<double>(errors.size() - lag);
}

TEST(Dither, ErrorIsWhiteWithoutMeanAtAnyLevel)
{
    constexpr size_t kLags = 64;
    for (const double level : {-100.0, -60.0, -1.0}) {
        SCOPED_TRACE(level);
        const std::vector<double> errors = errorsOf(Signals::sine(44100, 997.0, 600000, level).left);
        double mean = 0.0, covariances[kLags];
        for (const double error : errors) mean += error / static_cast<double>(errors.size());
        for (size_t lag = 0; lag < kLags; ++lag) covariances[lag] = covariance(errors, lag);
        EXPECT_LT(std::abs(mean), 0.01);
        EXPECT_NEAR(covariances[0], 0.25, 0.005); // two uniform values of a step each, and rounding
        for (double turns = 0.0; turns <= 0.5; turns += 0.01) { // per sample; Blackman-Tukey spectrum
            double power = covariances[0];
            for (size_t lag = 1; lag < kLags; ++lag) {
                const double window = 1.0 - static_cast<double>(lag) / kLags;
                power += 2.0 * window * covariances[lag] *
                         std::cos(2.0 * std::numbers::pi * turns * static_cast<double>(lag));
            }
            EXPECT_LT(std::abs(10.0 * std::log10(power / 0.25)), 1.0) << turns;
        }
    }
}

TEST(Dither, WholeStepsStayAndRunsAreEqual)
{
    std::vector<float> steps;
    for (int step = -32768; step < 32768; ++step) steps.push_back(static_cast<float>(step / kSteps16));
    for (const double error : errorsOf(steps)) ASSERT_EQ(0.0, error);
    const std::vector<float> noise = Signals::noise(1, 1000, -6.0).left;
    EXPECT_EQ(errorsOf(noise), errorsOf(noise));
}

} // namespace
