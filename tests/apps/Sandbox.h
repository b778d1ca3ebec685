#pragma once
#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <sndfile.h>
#include <string>
#include <vector>

#include "tests/apps/Program.h"
#include "tests/signals/Signals.h"

/// Format and interleaved samples of an audio file.
struct Sound {
    SF_INFO info{};
    std::vector<float> samples;

    float at(size_t frame, int channel = 0) const
    {
        return samples[frame * static_cast<size_t>(info.channels) + static_cast<size_t>(channel)];
    }
};

/// Test fixture with a temporary folder, which is the renderer's working directory.
class Sandbox : public testing::Test {
protected:
    Sandbox();
    ~Sandbox() override;

    Program::Outcome run(const std::string &line) const { return Program(folder, line).wait(); }
    /// Runs the program, expects exit code 0 and an empty standard error, and returns standard output.
    std::string succeed(const std::string &line) const;

    std::string pathOf(const std::string &name) const { return folder / name; }
    void write(const std::string &name, int format, int rate, const Audio &audio) const;
    void writeText(const std::string &name, const std::string &text) const;
    Sound read(const std::string &name) const;
    std::string readBytes(const std::string &name) const;
    /// Names of all files in the folder, including hidden ones.
    std::set<std::string> contents() const;

    const std::filesystem::path folder;
};

constexpr int kWav16 = SF_FORMAT_WAV | SF_FORMAT_PCM_16, kWav24 = SF_FORMAT_WAV | SF_FORMAT_PCM_24,
              kWavFloat = SF_FORMAT_WAV | SF_FORMAT_FLOAT;
