#include "tests/editor/HostedEffect.h"

#include <algorithm>

HostedEffect::HostedEffect()
{
    effect.dispatch(effOpen);
    effect.dispatch(effSetSampleRate, 0, 0, nullptr, static_cast<float>(kRate));
    effect.dispatch(effSetBlockSize, 0, kBlock);
    effect.switchOn();
    open();
    host.takeCalls();
}

HostedEffect::~HostedEffect() { close(); }

bool HostedEffect::open()
{
    const bool opened = effect.dispatch(effEditOpen, 0, 0, desk->window()) == 1;
    desk->wait(0);
    return opened;
}

VSTEditor &HostedEffect::editor() { return static_cast<VSTEditor &>(*effect.plugin().getEditor()); }

void HostedEffect::play(const Audio &sound)
{
    Audio out = sound;
    for (uint32_t from = 0; from < out.frames(); from += kBlock) {
        float *channels[] = {out.left.data() + from, out.right.data() + from};
        const uint32_t frames = std::min(kBlock, out.frames() - from);
        effect->processReplacing(effect.operator->(), channels, channels, static_cast<int32_t>(frames));
    }
}

std::vector<FakeHost::Call> HostedEffect::takeEdits()
{
    std::vector<FakeHost::Call> edits = host.takeCalls();
    std::erase_if(edits, [](const FakeHost::Call &call) {
        return call.opcode != audioMasterAutomate && call.opcode != audioMasterBeginEdit &&
               call.opcode != audioMasterEndEdit;
    });
    return edits;
}
