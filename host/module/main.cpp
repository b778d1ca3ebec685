#include "dsp/numerics/FloatState.h"
#include "host/VSTPlugin.h"

AEffect *VSTPluginMain(HostCallback host)
{
    if (!host || host(nullptr, audioMasterVersion, 0, 0, nullptr, 0.0f) == 0) return nullptr;
    const DSP::FloatState floatState;
    try {
        return (new VSTPlugin(host))->getAeffect();
    } catch (...) {
        return nullptr;
    }
}
