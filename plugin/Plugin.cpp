#include "plugin/Plugin.h"

#include "PluginBase/Util/Dir_win.h"
#include "PluginBase/Util/Exception.h"
#include "plugin/Product.h"

namespace {

DSP::ParameterValue valueOf(const DSP::ParameterAddress &parameter, const float *floatValue,
                            const bool *boolValue, const uint32_t *intValue)
{
    if (parameter.kind == DSP::ParamKind::real && floatValue) return *floatValue;
    if (parameter.kind == DSP::ParamKind::boolean && boolValue) return *boolValue;
    if (parameter.kind == DSP::ParamKind::integer && intValue) return *intValue;
    return parameter.value();
}

} // namespace

Plugin::Plugin(uint32_t format, uint32_t scale)
    : registry(String("SOFTWARE\\%1\\%2\\VST").arg(Product::kRegistryVendor).arg(Product::kName)),
      stateLock("Plugin"),
      hostFormat(format),
      blockScale(scale)
{
    ensureInstallFolder();
    chain = std::make_unique<DSP::Transform>(*this);
    handle = std::make_unique<TransformHandle>(chain.get());
    table = ParameterTable(components);
    chain->updateComponents(true, true);
}

Plugin::~Plugin()
{
    components.clear();
    handle.reset();
    chain.reset();
}

void Plugin::ensureInstallFolder() const
{
    try {
        const String path = installPath();
        if (!Util::directoryExists(path)) Util::makeDirectory(path, true);
    } catch (const Util::Exception::FileIO &) {
        // Nothing needs this folder; failing to create it is harmless.
    }
}

String Plugin::installPath() const
{
    const String fallback = Util::longPath(Util::withTrailingSlash(Util::moduleDirectory()));
    return Util::withTrailingSlash(registry.readString("InstallPath", fallback));
}

void Plugin::setEditorWindow(EditorWindow *window)
{
    editorWindow.store(window, std::memory_order_relaxed);
    refreshPending = false;
}

void Plugin::postMessage(uint32_t code)
{
    if (EditorWindow *const window = editorWindow.load(std::memory_order_relaxed)) window->post(code);
}

void Plugin::requestRefresh()
{
    if (!hasEditorWindow() || refreshPending.exchange(true, std::memory_order_acq_rel)) return;
    postMessage(refreshControls);
}

void Plugin::resume(uint32_t rate)
{
    postMessage(playingStarted);
    const bool rateMoves = rate != sampleRate();
    chain->resume(rate);
    passOnLatency();
    if (rateMoves) postMessage(sampleRateChanged);
    active = true; // last, because chain->resume may throw
}

void Plugin::suspend()
{
    active = false;
    postMessage(playingStopped);
    chain->suspend();
}

void Plugin::setChannelCount(uint32_t inputs, uint32_t outputs)
{
    if (inputs == chain->getInputChannels() && outputs == chain->getOutputChannels()) return;
    chain->setChannels(inputs, outputs);
    requestRefresh();
}

void Plugin::resetChain()
{
    if (chain) chain->reset();
}

void Plugin::requestActiveUpdate()
{
    if (!chain || !chain->requestActiveUpdate()) return;
    passOnLatency();
    requestRefresh();
}

void Plugin::requestLatencyUpdate()
{
    if (!chain || !chain->requestLatencyUpdate()) return;
    passOnLatency();
    requestRefresh();
}

void Plugin::passOnLatency()
{
    if (chain->takeLatencyUpdate()) latencyChanged();
}

uint32_t Plugin::transform(uint32_t frames, float *inLeft, float *inRight, float *outLeft, float *outRight)
{
    const uint32_t written =
        chain->process({frames, inLeft, inRight}, {frames, outLeft, outRight}, streamTime);
    passOnLatency();
    if (hasEditorWindow() && chain->takeRefresh()) requestRefresh();
    return written;
}

void Plugin::propagateMeterEnable()
{
    const bool on = chain->global()->getMeterEnable();
    for (DSP::Component *component : components) component->setMeterEnabled(on);
}

void Plugin::editParameter(const DSP::ParameterAddress &parameter, EditPhase phase,
                           const DSP::ParameterValue &value)
{
    if (phase != EditPhase::value) parameter.record().editing = phase == EditPhase::begin;
    notifyParameter(parameter, phase, value);
}

void Plugin::editParameter(DSP::ParamKind kind, EditPhase phase, DSP::Component *component, uint32_t index,
                           const float *floatValue, const bool *boolValue, const uint32_t *intValue)
{
    if (kind > DSP::ParamKind::integer) return;
    const DSP::ParameterAddress parameter{component, kind, index};
    editParameter(parameter, phase, valueOf(parameter, floatValue, boolValue, intValue));
}

void Plugin::notifyParameter(DSP::ParamKind kind, EditPhase phase, DSP::Component *component, uint32_t index,
                             const float *floatValue, const bool *boolValue, const uint32_t *intValue)
{
    const DSP::ParameterAddress parameter{component, kind, index};
    notifyParameter(parameter, phase, valueOf(parameter, floatValue, boolValue, intValue));
}
