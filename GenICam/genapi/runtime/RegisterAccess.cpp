// SPDX-License-Identifier: Apache-2.0
#include "runtime/RegisterAccess.h"

#include "runtime/Change.h"
#include "runtime/PortNode.h"

#include <Base/GCException.h>

namespace KxGenApi
{

RegisterAccess::RegisterAccess(Node& owner, ECachingMode defaultCaching)
    : m_owner(owner)
    , m_defaultCaching(defaultCaching)
    , m_place(FixedPlace(owner.Properties()))
{
    for (const Property& property : owner.Properties()) {
        switch (property.id) {
        case Prop::Address:
        case Prop::pAddress:
        case Prop::IntSwissKnife:
            m_terms.push_back({NumberLink(property), false});
            break;
        case Prop::pIndex:
            m_terms.push_back({NumberLink(property), true});
            break;
        case Prop::Length:
        case Prop::pLength:
            m_length = NumberLink(property);
            break;
        case Prop::pPort:
            m_port = Link(property);
            break;
        case Prop::AccessMode:
            m_accessMode = static_cast<EAccessMode>(property.integer);
            break;
        case Prop::Cachable:
            m_cachable = &property;
            break;
        case Prop::Endianess:
            m_bigEndian = property.integer == BigEndian;
            break;
        default:
            break;
        }
    }
}

PortNode& RegisterAccess::Port() const
{
    if (m_portNode == nullptr)
        m_portNode =
            &dynamic_cast<PortNode&>(m_port.Target(m_owner)); // checked when the description was read
    return *m_portNode;
}

int64_t RegisterAccess::IndexFactor(const Property& property) const
{
    if (property.offsetNode != kNoNode)
        return m_owner.Map().NodeAt(property.offsetNode).ReadInteger(ReadOptions());
    if (property.hasOffset)
        return property.index;
    return m_length.Integer(m_owner);
}

int64_t RegisterAccess::Address(ReadOptions options)
{
    if (m_addressKnown && !options.ignoreCache)
        return m_address;
    const uint64_t before = m_owner.Map().UncachedReads();
    uint64_t address = 0; // terms may be negative and may wrap
    for (const AddressTerm& term : m_terms) {
        const auto value = static_cast<uint64_t>(term.link.Integer(m_owner));
        const uint64_t factor = term.isIndex ? static_cast<uint64_t>(IndexFactor(term.link.Source())) : 1;
        address += value * factor;
    }
    m_address = static_cast<int64_t>(address);
    m_addressKnown = m_owner.Map().UncachedReads() == before;
    return m_address;
}

int64_t RegisterAccess::CheckedLength() const
{
    const int64_t length = Length();
    if (length < 0 || length > kMaxLength) {
        throw RUNTIME_EXCEPTION_NODE(m_owner.Map().EntryText().c_str(), m_owner.NameText())(
            "Length = %lld must be between 0 and %lld", static_cast<long long>(length),
            static_cast<long long>(kMaxLength));
    }
    return length;
}

EAccessMode RegisterAccess::AccessMode() const
{
    EAccessMode mode = Combine(m_accessMode, Port().AccessMode());
    const auto limitBy = [&](const NumberLink& link) {
        if (!link.IsReference())
            return;
        const EAccessMode ofTerm = link.Target(m_owner).AccessMode();
        if (!IsReadable(ofTerm)) // an address that can't be told leads nowhere
            mode = Combine(mode, Combine(NA, ofTerm));
    };
    for (const AddressTerm& term : m_terms)
        limitBy(term.link);
    limitBy(m_length);
    return mode;
}

ECachingMode RegisterAccess::CachingMode() const
{
    ECachingMode mode =
        m_cachable != nullptr ? static_cast<ECachingMode>(m_cachable->integer) : m_defaultCaching;
    const auto isUncached = [&](const NumberLink& link) {
        return link.IsReference() && link.Target(m_owner).CachingMode() == NoCache;
    };
    for (const AddressTerm& term : m_terms) {
        if (isUncached(term.link))
            mode = NoCache;
    }
    return isUncached(m_length) ? NoCache : mode;
}

bool RegisterAccess::IsBigEndian() const { return m_bigEndian != Port().SwapsEndianess(); }

const std::vector<uint8_t>& RegisterAccess::Read(int64_t count, ReadOptions options)
{
    const int64_t length = CheckedLength();
    const int64_t address = Address(options);
    const NodeMap& map = m_owner.Map();
    RegisterCache& cache = Port().Cache();
    const bool cached = m_owner.CachingMode() != NoCache;
    m_place = {address, length};
    if (cached && !options.ignoreCache) {
        // Bytes that another register read before this one was invalidated are as stale as its own.
        const RegisterCache::Bytes* const bytes =
            cache.Find(address, length, map.InvalidatedAt(m_owner.Index()));
        if (bytes != nullptr)
            return *bytes;
        if (count == 0 && length != 0)
            return m_uncached; // nothing is asked for
    }
    std::vector<uint8_t> bytes(static_cast<size_t>(count));
    Port().ReadDevice(m_owner, bytes.data(), address, count);
    if (cached && !options.ignoreCache && count == length)
        return cache.Store(address, std::move(bytes), map.Age());
    cache.Drop(address, length);
    m_uncached = std::move(bytes);
    return m_uncached;
}

void RegisterAccess::Write(std::vector<uint8_t> bytes, Change& change)
{
    const int64_t length = CheckedLength();
    const int64_t address = Address();
    RegisterCache& cache = Port().Cache();
    Port().WriteDevice(m_owner, bytes.data(), address, static_cast<int64_t>(bytes.size()));
    m_place = {address, length};
    const bool whole = static_cast<int64_t>(bytes.size()) == length;
    if (whole && m_owner.CachingMode() == WriteThrough)
        cache.Store(address, std::move(bytes), m_owner.Map().Age());
    else
        cache.Drop(address, length);
    change.Wrote(m_owner);
}

void RegisterAccess::Forget()
{
    if (m_place)
        Port().Cache().Drop(m_place->address, m_place->length);
    m_addressKnown = false;
}

void RegisterAccess::ForgetBytesOf(const NodeMap& map, NodeIndex index)
{
    const Property* const port = map.Described().Find(index, Prop::pPort);
    Node* const portNode = port != nullptr ? map.ExistingNode(port->node) : nullptr;
    if (portNode == nullptr)
        return; // no register, or nothing has been read
    if (const auto place = FixedPlace(map.Described().Properties(index)))
        dynamic_cast<PortNode&>(*portNode).Cache().Drop(place->address, place->length);
}

std::optional<RegisterAccess::Place> RegisterAccess::FixedPlace(Range<Property> properties)
{
    uint64_t address = 0;
    int64_t length = 0;
    for (const Property& property : properties) {
        switch (property.id) {
        case Prop::Address:
            address += static_cast<uint64_t>(property.integer);
            break;
        case Prop::Length:
            length = property.integer;
            break;
        case Prop::pAddress:
        case Prop::IntSwissKnife:
        case Prop::pIndex:
        case Prop::pLength:
            return std::nullopt;
        default:
            break;
        }
    }
    return Place{static_cast<int64_t>(address), length};
}

} // namespace KxGenApi
