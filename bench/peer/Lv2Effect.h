#pragma once
#include <lilv/lilv.h>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace Bench {

/// All installed LV2 effects.
class Lv2World {
public:
    Lv2World();
    /// Throws std::runtime_error if the effect is not installed.
    const LilvPlugin *find(const char *uri) const;
    /// True if a port is of that class.
    bool is(const LilvPlugin *plugin, const LilvPort *port, const char *classUri) const;

private:
    struct Free {
        void operator()(LilvWorld *made) const { lilv_world_free(made); }
        void operator()(LilvNode *made) const { lilv_node_free(made); }
    };
    using Node = std::unique_ptr<LilvNode, Free>;

    std::unique_ptr<LilvWorld, Free> world;
};

/// A stereo LV2 effect that needs only audio and control ports: no host features, no messages.
class Lv2Effect {
public:
    using Settings = std::map<std::string, float>; // by port symbol

    /// Controls without a setting keep their defaults. Throws std::runtime_error if the effect is not
    /// installed, does not start or is not stereo, std::out_of_range if it lacks a control.
    Lv2Effect(const Lv2World &world, const char *uri, double rate, const Settings &settings);

    void run(float *const in[2], float *const out[2], uint32_t frames);
    /// Value of a control, e.g. of a meter.
    float control(const std::string &symbol) const { return controls[portOf.at(symbol)]; }

private:
    struct Stop {
        void operator()(LilvInstance *running) const;
    };

    std::unique_ptr<LilvInstance, Stop> instance;
    std::vector<float> controls; // one per port of any kind
    std::map<std::string, uint32_t> portOf;
    std::vector<uint32_t> inputs, outputs; // audio ports
};

} // namespace Bench
