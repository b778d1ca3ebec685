#include "tests/fuzz/ChunkLayout.h"

#include "dsp/ParameterAccess.h"

namespace {

template <class V>
void place(const DSP::Component &component, size_t bytes, size_t &end, std::vector<size_t> &fields)
{
    using Access = DSP::ParameterAccess<V>;
    for (uint32_t i = 0; i < Access::count(component); ++i) {
        if (!Access::isSaved(component, i)) continue;
        fields.push_back(end);
        end += bytes;
    }
}

} // namespace

ChunkLayout::ChunkLayout(const Plugin &plugin) : sizes{0, 4, 8, 12}, name(kHeader)
{
    for (const DSP::Component *component : plugin.componentList()) {
        place<float>(*component, 4, name, reals);
        place<bool>(*component, 1, name, flags);
        place<uint32_t>(*component, 4, name, integers);
        sizes.push_back(name); // bytes of the component's own state
        name += 4;
    }
    sizes.push_back(name);
}
