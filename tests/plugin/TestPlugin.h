#pragma once
#include <vector>

#include "plugin/Plugin.h"
#include "tests/dsp/Apply.h"
#include "tests/reference/Settings.h"

/// A plug-in without a host; counts its reports.
class TestPlugin : public Plugin {
public:
    TestPlugin() : Plugin(kVst) {}
    /// Applies settings, then resumes at `rate` in Hz.
    TestPlugin(const Reference::Settings &settings, uint32_t rate) : TestPlugin()
    {
        apply(settings);
        resume(rate);
        resume(rate); // the look-ahead takes a new rate only at the second resume: part of the sound
    }

    void notifyParameter(const DSP::ParameterAddress &, EditPhase, const DSP::ParameterValue &value) override
    {
        ++parameterReports;
        lastReported = value;
    }
    void latencyChanged() override { ++latencyReports; }
    void delayCompensationChanged() override { ++compensationReports; }

    void apply(const Reference::Settings &settings);
    /// Processes one block. The output has the channels of the input.
    Audio process(Audio input);
    /// Processes all of `input` in blocks of `size` frames.
    Audio process(const Audio &input, uint32_t size);

    int latencyReports = 0, compensationReports = 0, parameterReports = 0;
    DSP::ParameterValue lastReported;
};

inline void TestPlugin::apply(const Reference::Settings &settings)
{
    const TransformHandle &parts = transformHandle();
    for (uint32_t i = 0; i < 3; ++i) parts.crossOver()->setCutoff(i, settings.cutoffs[i]);
    for (uint32_t b = 0; b < 4; ++b) {
        parts.crossOver()->setBandBypass(b, settings.bandBypass[b]);
        parts.crossOver()->setBandMute(b, settings.bandMute[b]);
        ::apply(*parts.dynamics(), b, settings.bands[b]);
        DSP::Meter::Spectrum &spectrum = *parts.spectrum(b);
        spectrum.setOnInput(settings.spectra[b].onInput);
        spectrum.setWindowSize(settings.spectra[b].size);
        spectrum.setOverlap(settings.spectra[b].overlap);
        spectrum.setWindowType(settings.spectra[b].window);
    }
    ::apply(*parts.maximizer(), settings.maximizer);
    parts.gain()->setGain(settings.gainDb);
    parts.global()->setProcessAsMono(settings.processAsMono);
    parts.global()->setBypass(settings.bypass);
}

inline Audio TestPlugin::process(Audio input)
{
    Audio output = {std::vector<float>(input.left.size()), std::vector<float>(input.right.size())};
    transform(input.frames(), input.left.data(), input.rightOrNull(), output.left.data(),
              output.rightOrNull());
    return output;
}

inline Audio TestPlugin::process(const Audio &input, uint32_t size)
{
    Audio output;
    for (uint32_t from = 0; from < input.frames(); from += size)
        output = Signals::append(std::move(output),
                                 process(Signals::slice(input, from, std::min(size, input.frames() - from))));
    return output;
}

struct TestWindow final : EditorWindow {
    void post(uint32_t code) override { codes.push_back(code); }
    std::vector<uint32_t> codes;
};
