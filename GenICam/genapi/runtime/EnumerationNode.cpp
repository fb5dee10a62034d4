// SPDX-License-Identifier: Apache-2.0
#include "runtime/CachedRead.h"
#include "runtime/ChoiceNodes.h"
#include "runtime/TextConversion.h"

#include <Base/GCException.h>

#include <algorithm>
#include <cmath>

namespace KxGenApi
{

// ------------------------------------------------------------------------------------------------ EnumEntry

EnumEntryNode::EnumEntryNode(NodeMap& map, NodeIndex index)
    : Node(map, index)
    , m_symbolic(TextOf(Prop::Symbolic))
{
    if (m_symbolic.empty())
        m_symbolic = TextOf(Prop::EntryName);
    if (const Property* const value = Find(Prop::Value))
        m_value = value->integer;
    m_number = static_cast<double>(m_value);
    if (const Property* const number = Find(Prop::NumericValue)) {
        m_number = number->real;
        m_hasNumber = true;
    }
    const Property* const selfClearing = Find(Prop::IsSelfClearing);
    m_selfClearing = selfClearing != nullptr && selfClearing->integer != 0;
}

gcstring EnumEntryNode::ToString(bool, bool)
{
    const Call call(*this, "ToString");
    RequireReadable();
    const std::string text = IntegerToText(m_value, PureNumber);
    return gcstring(text.data(), text.size());
}

void EnumEntryNode::FromString(const gcstring&, bool)
{
    throw ACCESS_EXCEPTION_NODE("FromString", NameText())("Node is not writable.");
}

gcstring EnumEntryNode::GetDisplayName() const
{
    const gcstring name = TextOf(Prop::DisplayName);
    return name.empty() ? m_symbolic : name;
}

// ---------------------------------------------------------------------------------------------- Enumeration

EnumerationNode::EnumerationNode(NodeMap& map, NodeIndex index)
    : Node(map, index)
    , m_slots(*this)
{}

gcstring EnumerationNode::ToString(bool Verify, bool IgnoreCache)
{
    const Call call(*this, "ToString");
    const EnumEntryNode* const entry = ReadEntry({Verify, IgnoreCache});
    if (entry == nullptr) {
        throw KXNODE_ERROR(InvalidArgumentException)("The device holds %lld, which no entry stands for",
                                                     static_cast<long long>(m_value));
    }
    return entry->Symbolic();
}

void EnumerationNode::FromString(const gcstring& ValueStr, bool Verify)
{
    Change change(*this, "FromString");
    const EnumEntryNode* const entry = EntryNamed({ValueStr.c_str(), ValueStr.size()});
    if (entry == nullptr)
        throw KXNODE_ERROR(InvalidArgumentException)("There is no entry '%s'", ValueStr.c_str());
    Choose(*entry, Verify, change);
    change.Finish();
}

void EnumerationNode::GetSymbolics(StringList_t& Symbolics)
{
    const Call call(*this, "GetSymbolics");
    Symbolics.clear();
    for (const EnumEntryNode* const entry : Entries()) {
        if (IsAvailable(entry->AccessMode()))
            Symbolics.push_back(entry->Symbolic());
    }
}

void EnumerationNode::GetEntries(NodeList_t& Entries)
{
    const Call call(*this, "GetEntries");
    Entries.clear();
    for (EnumEntryNode* const entry : this->Entries())
        Entries.push_back(entry);
}

IEnumeration& EnumerationNode::operator=(const gcstring& ValueStr)
{
    FromString(ValueStr);
    return *this;
}

void EnumerationNode::SetIntValue(int64_t Value, bool Verify)
{
    Change change(*this, "SetIntValue");
    const EnumEntryNode* const entry = EntryOf(Value);
    if (entry == nullptr) {
        throw KXNODE_ERROR(InvalidArgumentException)("There is no entry for the value %lld",
                                                     static_cast<long long>(Value));
    }
    Choose(*entry, Verify, change);
    change.Finish();
}

int64_t EnumerationNode::GetIntValue(bool Verify, bool IgnoreCache)
{
    const Call call(*this, "GetIntValue");
    const ReadOptions options{Verify, IgnoreCache};
    if (Verify && ReadEntry(options) == nullptr)
        RaiseUnknown();
    return Verify ? m_value : Read(options);
}

IEnumEntry* EnumerationNode::GetEntryByName(const gcstring& Symbolic)
{
    const Call call(*this, "GetEntryByName");
    return EntryNamed({Symbolic.c_str(), Symbolic.size()});
}

IEnumEntry* EnumerationNode::GetEntry(const int64_t IntValue)
{
    const Call call(*this, "GetEntry");
    return EntryOf(IntValue);
}

IEnumEntry* EnumerationNode::GetCurrentEntry(bool Verify, bool IgnoreCache)
{
    const Call call(*this, "GetCurrentEntry");
    IEnumEntry* const entry = ReadEntry({Verify, IgnoreCache});
    if (entry == nullptr && Verify)
        RaiseUnknown();
    return entry;
}

void EnumerationNode::RaiseUnknown() const
{
    throw KXNODE_ERROR(OutOfRangeException)("The device holds %lld, which no entry stands for",
                                            static_cast<long long>(m_value));
}

int64_t EnumerationNode::ReadInteger(ReadOptions options)
{
    EnumEntryNode& entry = Current(options);
    return entry.HasNumber() ? RoundToInteger(*this, entry.Number()) : entry.Value();
}

double EnumerationNode::ReadReal(ReadOptions options) { return Current(options).Number(); }

EnumEntryNode& EnumerationNode::Current(ReadOptions options)
{
    const int64_t value = Read(options);
    EnumEntryNode* const entry = EntryOf(value);
    if (entry == nullptr) {
        throw KXNODE_ERROR(LogicalErrorException)("The device holds %lld, which no entry stands for",
                                                  static_cast<long long>(value));
    }
    return *entry;
}

int64_t EnumerationNode::Read(ReadOptions options)
{
    ReadThroughCache(options, [&] {
        ReadOptions how = options;
        how.ignoreCache = how.ignoreCache || m_clearsItself; // it may have cleared itself by now
        m_value = m_slots.Read(how);
        const EnumEntryNode* const entry = EntryOf(m_value);
        m_clearsItself = entry != nullptr && entry->ClearsItself();
        if (m_clearsItself)
            Map().CountUncachedRead(); // so that nobody keeps it
    });
    return m_value;
}

EnumEntryNode* EnumerationNode::ReadEntry(ReadOptions options)
{
    EnumEntryNode* const entry = EntryOf(Read(options));
    if (options.verify && entry != nullptr && !IsAvailable(entry->AccessMode()))
        throw KXNODE_ERROR(AccessException)("The entry '%s' is not available", entry->Symbolic().c_str());
    return entry;
}

int64_t EnumerationNode::EntryInteger(std::string_view symbolic)
{
    const EnumEntryNode* const entry = EntryNamed(symbolic);
    return entry != nullptr ? entry->Value() : Node::EntryInteger(symbolic);
}

void EnumerationNode::Choose(const EnumEntryNode& entry, bool verify, Change& change)
{
    const Level level(*this);
    RequireWritable(verify);
    const EAccessMode mode = entry.AccessMode();
    if (!IsImplemented(mode))
        throw KXNODE_ERROR(AccessException)("The entry '%s' is not implemented", entry.Symbolic().c_str());
    if (verify && !IsAvailable(mode))
        throw KXNODE_ERROR(AccessException)("The entry '%s' is not writable.", entry.Symbolic().c_str());
    m_slots.Write(entry.Value(), verify, change);
    m_clearsItself = entry.ClearsItself();
}

void EnumerationNode::WriteInteger(int64_t value, bool verify, Change& change)
{
    WriteReal(static_cast<double>(value), verify, change);
}

void EnumerationNode::WriteReal(double value, bool verify, Change& change)
{
    const EnumEntryNode* nearest = nullptr;
    double distance = 0;
    for (const EnumEntryNode* const entry : Entries()) {
        const double its = std::fabs(entry->Number() - value);
        if (IsAvailable(entry->AccessMode()) && (nearest == nullptr || its < distance)) {
            nearest = entry;
            distance = its;
        }
    }
    if (nearest == nullptr)
        throw KXNODE_ERROR(AccessException)("Node is not writable.");
    Choose(*nearest, verify, change);
}

EAccessMode EnumerationNode::OwnAccessMode() const
{
    bool anyImplemented = false;
    bool anyAvailable = false;
    for (const EnumEntryNode* const entry : Entries()) {
        const EAccessMode mode = entry->AccessMode();
        anyImplemented = anyImplemented || IsImplemented(mode);
        anyAvailable = anyAvailable || IsAvailable(mode);
        if (anyAvailable)
            break;
    }
    if (!anyImplemented)
        return NI;
    return Combine(anyAvailable ? RW : NA, m_slots.AccessMode());
}

const std::vector<EnumEntryNode*>& EnumerationNode::Entries() const
{
    if (m_entries.empty()) {
        for (const Property& property : Properties()) {
            if (property.id == Prop::EnumEntry)
                m_entries.push_back(dynamic_cast<EnumEntryNode*>(&Map().NodeAt(property.node)));
        }
    }
    return m_entries;
}

EnumEntryNode* EnumerationNode::EntryOf(int64_t value) const
{
    const std::vector<EnumEntryNode*>& entries = Entries();
    const auto found = std::find_if(entries.rbegin(), entries.rend(),
                                    [&](const EnumEntryNode* entry) { return entry->Value() == value; });
    return found != entries.rend() ? *found : nullptr;
}

EnumEntryNode* EnumerationNode::EntryNamed(std::string_view symbolic) const
{
    for (EnumEntryNode* const entry : Entries()) {
        if (std::string_view(entry->Symbolic().c_str(), entry->Symbolic().size()) == symbolic)
            return entry;
    }
    return nullptr;
}

} // namespace KxGenApi
