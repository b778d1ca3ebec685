#include "bench/peer/Lv2Effect.h"

#include <cmath>
#include <stdexcept>

namespace Bench {

Lv2World::Lv2World() : world(lilv_world_new()) { lilv_world_load_all(world.get()); }

const LilvPlugin *Lv2World::find(const char *uri) const
{
    const Node name(lilv_new_uri(world.get(), uri));
    const LilvPlugin *const plugin =
        lilv_plugins_get_by_uri(lilv_world_get_all_plugins(world.get()), name.get());
    if (!plugin) throw std::runtime_error(std::string("LV2 effect is not installed: ") + uri);
    return plugin;
}

bool Lv2World::is(const LilvPlugin *plugin, const LilvPort *port, const char *classUri) const
{
    const Node name(lilv_new_uri(world.get(), classUri));
    return lilv_port_is_a(plugin, port, name.get());
}

void Lv2Effect::Stop::operator()(LilvInstance *running) const
{
    lilv_instance_deactivate(running);
    lilv_instance_free(running);
}

Lv2Effect::Lv2Effect(const Lv2World &world, const char *uri, double rate, const Settings &settings)
{
    const LilvPlugin *const plugin = world.find(uri);
    instance.reset(lilv_plugin_instantiate(plugin, rate, nullptr));
    if (!instance) throw std::runtime_error(std::string("cannot start LV2 effect ") + uri);

    const uint32_t ports = lilv_plugin_get_num_ports(plugin);
    controls.resize(ports);
    lilv_plugin_get_port_ranges_float(plugin, nullptr, nullptr, controls.data());
    for (uint32_t i = 0; i < ports; ++i) {
        const LilvPort *const port = lilv_plugin_get_port_by_index(plugin, i);
        if (world.is(plugin, port, LILV_URI_AUDIO_PORT)) {
            (world.is(plugin, port, LILV_URI_INPUT_PORT) ? inputs : outputs).push_back(i);
            continue;
        }
        if (!world.is(plugin, port,
                      LILV_URI_CONTROL_PORT)) { // the peer's message ports, which are optional
            lilv_instance_connect_port(instance.get(), i, nullptr);
            continue;
        }
        portOf[lilv_node_as_string(lilv_port_get_symbol(plugin, port))] = i;
        if (std::isnan(controls[i])) controls[i] = 0;
        lilv_instance_connect_port(instance.get(), i, &controls[i]);
    }
    if (inputs.size() < 2 || outputs.size() < 2)
        throw std::runtime_error(std::string(uri) + " is not stereo");
    for (const auto &[symbol, value] : settings) controls[portOf.at(symbol)] = value;
    lilv_instance_activate(instance.get());
}

void Lv2Effect::run(float *const in[2], float *const out[2], uint32_t frames)
{
    for (uint32_t channel = 0; channel < 2; ++channel) {
        lilv_instance_connect_port(instance.get(), inputs[channel], in[channel]);
        lilv_instance_connect_port(instance.get(), outputs[channel], out[channel]);
    }
    lilv_instance_run(instance.get(), frames);
}

} // namespace Bench
