// SPDX-License-Identifier: Apache-2.0
#include "runtime/CachedRead.h"
#include "runtime/ChoiceNodes.h"

#include <Base/GCException.h>

namespace KxGenApi
{

BooleanNode::BooleanNode(NodeMap& map, NodeIndex index)
    : Node(map, index)
    , m_slots(*this)
{
    if (const Property* const on = Find(Prop::OnValue))
        m_on = on->integer;
    if (const Property* const off = Find(Prop::OffValue))
        m_off = off->integer;
}

gcstring BooleanNode::ToString(bool Verify, bool IgnoreCache)
{
    const Call call(*this, "ToString");
    return Read({Verify, IgnoreCache}) ? "1" : "0";
}

void BooleanNode::FromString(const gcstring& ValueStr, bool Verify)
{
    Change change(*this, "FromString");
    const bool on = ValueStr == "1" || ValueStr == "true";
    if (!on && ValueStr != "0" && ValueStr != "false") {
        throw KXNODE_ERROR(InvalidArgumentException)("'%s' is none of '0', '1', 'false' and 'true'",
                                                     ValueStr.c_str());
    }
    Write(on, Verify, change);
    change.Finish();
}

void BooleanNode::SetValue(bool Value, bool Verify)
{
    Change change(*this, "SetValue");
    Write(Value, Verify, change);
    change.Finish();
}

IBoolean& BooleanNode::operator=(bool Value)
{
    SetValue(Value);
    return *this;
}

bool BooleanNode::GetValue(bool Verify, bool IgnoreCache) const
{
    const Call call(*this, "GetValue");
    return const_cast<BooleanNode*>(this)->Read({Verify, IgnoreCache}); // a read fills the cache
}

bool BooleanNode::ReadFlag()
{
    RequireReadable();
    const int64_t value = m_slots.Read(ReadOptions());
    return value == m_on || (value != m_off && value != 0);
}

void BooleanNode::WriteInteger(int64_t value, bool verify, Change& change)
{
    Write(value != 0, verify, change);
}

void BooleanNode::WriteReal(double value, bool verify, Change& change) { Write(value != 0, verify, change); }

bool BooleanNode::Read(ReadOptions options)
{
    ReadThroughCache(options, [&] {
        const int64_t value = m_slots.Read(options);
        if (value != m_on && value != m_off) {
            throw KXNODE_ERROR(LogicalErrorException)(
                "The value %lld is neither the on value %lld nor the off value %lld",
                static_cast<long long>(value), static_cast<long long>(m_on), static_cast<long long>(m_off));
        }
        m_value = value == m_on;
    });
    return m_value;
}

void BooleanNode::Write(bool value, bool verify, Change& change)
{
    const Level level(*this);
    RequireWritable(verify);
    m_slots.Write(value ? m_on : m_off, verify, change);
}

} // namespace KxGenApi
