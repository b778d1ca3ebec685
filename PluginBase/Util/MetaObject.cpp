#include "PluginBase/Util/MetaObject.h"

MetaObject::MetaObject(const MetaObject *base, const char *name, std::span<const MetaEntry> ownSignals,
                       std::span<const MetaEntry> ownSlots)
    : parent(base),
      className(name),
      signals(base ? &base->signals : nullptr, ownSignals),
      slots(base ? &base->slots : nullptr, ownSlots)
{
}

MetaObject::Table::Table(const Table *inherited, std::span<const MetaEntry> own)
    : base(inherited),
      rows(own),
      offset(inherited ? inherited->offset + static_cast<uint32_t>(inherited->rows.size()) : 0)
{
    for (uint32_t i = 0; i < rows.size(); ++i) map[rows[i].signature] = i;
}

OptionalIndex MetaObject::Table::find(std::string_view signature) const
{
    const auto found = map.find(signature);
    if (found != map.end()) return offset + found->second;
    return base ? base->find(signature) : OptionalIndex();
}

const MetaEntry *MetaObject::Table::row(uint32_t index) const
{
    if (index < offset) return base->row(index);
    return index - offset < rows.size() ? &rows[index - offset] : nullptr;
}
