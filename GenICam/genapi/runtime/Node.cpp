// SPDX-License-Identifier: Apache-2.0
#include "runtime/Node.h"

#include "runtime/Callbacks.h"
#include "runtime/Change.h"
#include "runtime/NodeMap.h"
#include "runtime/PropertyTexts.h"
#include "runtime/Relations.h"

#include <Base/GCException.h>

#include <cxxabi.h>

#include <algorithm>
#include <utility>

namespace KxGenApi
{

Node& Link::Target(const Node& from) const
{
    if (m_node == nullptr)
        m_node = &from.Map().NodeAt(m_property->node);
    return *m_node;
}

Node::Node(NodeMap& map, NodeIndex index)
    : m_map(map)
    , m_index(index)
{
    for (const Property& property : Properties()) {
        switch (property.id) {
        case Prop::pIsImplemented:
            m_isImplemented = Link(property);
            break;
        case Prop::pIsAvailable:
            m_isAvailable = Link(property);
            break;
        case Prop::pIsLocked:
            m_isLocked = Link(property);
            break;
        case Prop::ImposedAccessMode:
            m_imposedByFile = static_cast<EAccessMode>(property.integer);
            break;
        case Prop::Visibility:
            m_visibility = static_cast<EVisibility>(property.integer);
            break;
        case Prop::ImposedVisibility:
            m_imposedVisibility = static_cast<EVisibility>(property.integer);
            break;
        default:
            break;
        }
    }
}

Node::~Node()
{
    for (const auto& slot : m_callbacks)
        ForgetCallback(slot->Handle());
}

// ---------------------------------------------------------------------------------------------- description

const NodeData& Node::Data() const { return m_map.Described().Node(m_index); }

const KxGenApi::Description& Node::Described() const { return m_map.Described(); }

Range<Property> Node::Properties() const { return m_map.Described().Properties(m_index); }

const Property* Node::Find(Prop id) const { return m_map.Described().Find(m_index, id); }

gcstring Node::TextOf(Prop id) const
{
    const Property* const property = Find(id);
    return property != nullptr ? gcstring(property->text.data(), property->text.size()) : gcstring();
}

gcstring Node::GetName(bool FullQualified) const
{
    if (!FullQualified)
        return gcstring(Data().name.data(), Data().name.size());
    const std::string name = (GetNameSpace() == Standard ? "Std::" : "Cust::") + std::string(Data().name);
    return gcstring(name.data(), name.size());
}

ENameSpace Node::GetNameSpace() const { return static_cast<ENameSpace>(Data().nameSpace); }

EVisibility Node::GetVisibility() const
{
    const Call call(*this, "GetVisibility");
    return Combine(m_visibility, m_imposedVisibility);
}

int64_t Node::GetPollingTime() const
{
    const Property* const property = Find(Prop::PollingTime);
    return property != nullptr ? property->integer : -1;
}

gcstring Node::GetToolTip() const { return TextOf(Prop::ToolTip); }

gcstring Node::GetDescription() const { return TextOf(Prop::Description); }

gcstring Node::GetDisplayName() const
{
    const gcstring name = TextOf(Prop::DisplayName);
    return name.empty() ? GetName() : name;
}

gcstring Node::GetDeviceName() const { return m_map.GetDeviceName(); }

INodeMap* Node::GetNodeMap() const { return &m_map; }

gcstring Node::GetEventID() const { return TextOf(Prop::EventID); }

bool Node::IsStreamable() const
{
    const Property* const property = Find(Prop::Streamable);
    return property != nullptr && property->integer != 0;
}

gcstring Node::GetDocuURL() const { return TextOf(Prop::DocuURL); }

bool Node::IsDeprecated() const
{
    const Property* const property = Find(Prop::IsDeprecated);
    return property != nullptr && property->integer != 0;
}

bool Node::IsFeature() const { return Data().isFeature; }

INode* Node::GetAlias() const
{
    const Property* const property = Find(Prop::pAlias);
    return property != nullptr ? &m_map.NodeAt(property->node) : nullptr;
}

INode* Node::GetCastAlias() const
{
    const Property* const property = Find(Prop::pCastAlias);
    return property != nullptr ? &m_map.NodeAt(property->node) : nullptr;
}

void Node::GetPropertyNames(GenICam::gcstring_vector& PropertyNames) const
{
    PropertyNames.clear();
    for (const std::string& name : PropertyNamesOf(*this))
        PropertyNames.push_back(gcstring(name.data(), name.size()));
}

bool Node::GetProperty(const gcstring& PropertyName, gcstring& ValueStr, gcstring& AttributeStr)
{
    PropertyText text;
    const bool found = FindPropertyText(*this, std::string(PropertyName.c_str(), PropertyName.size()), text);
    ValueStr = gcstring(text.value.data(), text.value.size());
    AttributeStr = gcstring(text.attribute.data(), text.attribute.size());
    return found;
}

// ------------------------------------------------------------------------------------------------ relations

void Node::GetChildren(NodeList_t& Children, ELinkType LinkType) const
{
    Children.clear();
    for (const NodeIndex index : RelatedNodes(Described(), m_index, LinkType))
        Children.push_back(&m_map.NodeAt(index));
}

void Node::GetParents(NodeList_t& Parents) const { GetChildren(Parents, ctParentNodes); }

bool Node::IsSelector() const { return Find(Prop::pSelected) != nullptr; }

void Node::GetSelectedFeatures(FeatureList_t& list) const
{
    for (const NodeIndex index : SelectedNodes(Described(), m_index)) {
        if (IValue* const value = dynamic_cast<IValue*>(&m_map.NodeAt(index)))
            list.push_back(value);
    }
}

void Node::GetSelectingFeatures(FeatureList_t& list) const
{
    for (const NodeIndex index : SelectingNodes(Described(), m_index)) {
        if (IValue* const value = dynamic_cast<IValue*>(&m_map.NodeAt(index)))
            list.push_back(value);
    }
}

// ---------------------------------------------------------------------------------------------- access mode

EAccessMode Node::GetAccessMode() const
{
    const Call call(*this, "GetAccessMode");
    return AccessMode();
}

EYesNo Node::IsAccessModeCacheable() const
{
    const Call call(*this, "IsAccessModeCacheable");
    try {
        AccessMode();
    } catch (const GenICam::GenericException&) {
        return No; // a mode that can't be told can't be kept
    }
    return m_accessMode == _UndefinedAccesMode ? No : Yes;
}

EAccessMode Node::AccessMode() const
{
    if (m_accessMode == _CycleDetectAccesMode)
        return RW; // a flag that depends on its own node does not limit it
    if (m_accessMode != _UndefinedAccesMode)
        return m_accessMode;
    const Level level(*this);
    const uint64_t before = m_map.UncachedReads();
    m_accessMode = _CycleDetectAccesMode;
    try {
        const EAccessMode mode = ComputeAccessMode();
        m_accessMode = m_map.UncachedReads() == before ? mode : _UndefinedAccesMode;
        return mode;
    } catch (...) {
        m_accessMode = _UndefinedAccesMode;
        throw;
    }
}

EAccessMode Node::ComputeAccessMode() const
{
    EAccessMode mode = RW;
    if (m_isImplemented && !IsFlagSet(m_isImplemented, mode, true))
        return NI;
    if (m_isAvailable && IsAvailable(mode) && !IsFlagSet(m_isAvailable, mode, true))
        mode = NA;
    if (m_isLocked && IsAvailable(mode) && IsFlagSet(m_isLocked, mode, false))
        mode = Combine(mode, RO);
    return Combine(Combine(mode, OwnAccessMode()), ImposedAccessMode());
}

bool Node::IsMissing() const
{
    EAccessMode mode = RW;
    return m_isImplemented && !IsFlagSet(m_isImplemented, mode, true);
}

bool Node::IsFlagSet(const Link& flag, EAccessMode& mode, bool otherwise) const
{
    Node& target = flag.Target(*this);
    const EAccessMode ofFlag = target.AccessMode();
    if (!IsReadable(ofFlag)) {
        mode = Combine(NA, ofFlag); // what can't be told isn't there
        return true;
    }
    // Whoever only asks what can be done with a node gets an answer, whatever a formula or the device does.
    try {
        return target.ReadFlag();
    } catch (const abi::__forced_unwind&) {
        throw; // the thread is being cancelled
    } catch (...) {
        m_map.CountFailedFlag();
        return otherwise;
    }
}

void Node::ImposeAccessMode(EAccessMode ImposedAccessMode)
{
    Change change(*this, "ImposeAccessMode");
    m_imposed = ImposedAccessMode;
    change.Invalidate(m_index);
    change.Finish();
}

void Node::ImposeVisibility(EVisibility ImposedVisibility)
{
    Change change(*this, "ImposeVisibility");
    m_imposedVisibility = ImposedVisibility;
    change.Invalidate(m_index);
    change.Finish();
}

void Node::RequireReadable() const
{
    if (!IsReadable(AccessMode()))
        throw KXNODE_ERROR(AccessException)("Node is not readable.");
}

void Node::RequireWritable(bool verify) const
{
    const EAccessMode mode = AccessMode();
    if (verify ? !IsWritable(mode) : mode == NI || RefusesWrites())
        throw KXNODE_ERROR(AccessException)("Node is not writable.");
}

bool Node::RefusesWrites() const
{
    const Level level(*this);
    const EAccessMode imposed = ImposedAccessMode();
    return imposed == NI || imposed == RO || OwnRefusesWrites();
}

void Node::RequireAvailable() const
{
    if (!IsAvailable(AccessMode()))
        throw KXNODE_ERROR(AccessException)("Node is not available.");
}

// -------------------------------------------------------------------------------------------------- caching

bool Node::IsCachable() const { return GetCachingMode() != NoCache; }

ECachingMode Node::GetCachingMode() const
{
    const Call call(*this, "GetCachingMode");
    return CachingMode();
}

ECachingMode Node::CachingMode() const
{
    if (m_cachingMode == _UndefinedCachingMode) {
        const Level level(*this);
        m_cachingMode = OwnCachingMode();
    }
    return m_cachingMode;
}

void Node::InvalidateNode()
{
    Change change(*this, "InvalidateNode");
    change.Invalidate(m_index);
    change.Finish();
}

void Node::Forget()
{
    m_valueKnown = false;
    ForgetAccessMode();
}

// ------------------------------------------------------------------------------------------------ callbacks

CallbackHandleType Node::RegisterCallback(CNodeCallback* pCallback)
{
    if (pCallback == nullptr)
        throw INVALID_ARGUMENT_EXCEPTION_NODE("RegisterCallback",
                                              NameText())("The callback is a null pointer");
    auto slot = std::make_shared<CallbackSlot>(*pCallback);
    const Call call(*this, "RegisterCallback");
    m_callbacks.push_back(slot);
    m_map.CountCallbacks(1);
    RememberCallback(slot->Handle(), *this);
    return slot->Handle();
}

bool Node::DeregisterCallback(CallbackHandleType hCallback)
{
    std::shared_ptr<CallbackSlot> removed; // its callback ends outside the lock
    const Call call(*this, "DeregisterCallback");
    const auto found = std::find_if(m_callbacks.begin(), m_callbacks.end(),
                                    [&](const auto& slot) { return slot->Handle() == hCallback; });
    if (found == m_callbacks.end())
        return false;
    removed = *found;
    removed->Deactivate();
    m_callbacks.erase(found);
    m_map.CountCallbacks(-1);
    ForgetCallback(hCallback);
    return true;
}

void Node::TakeCallbacks(std::vector<std::shared_ptr<CallbackSlot>>& callbacks)
{
    callbacks.insert(callbacks.end(), m_callbacks.rbegin(), m_callbacks.rend()); // the latest first
}

UserData_t Node::GetUserData() const
{
    const Call call(*this, "GetUserData");
    return m_userData;
}

UserData_t Node::SetUserData(UserData_t userData)
{
    const Call call(*this, "SetUserData");
    return std::exchange(m_userData, userData);
}

// ------------------------------------------------------------------------------------------ value of a node

bool Node::IsValueKnown() const
{
    const Call call(*this, "IsValueCacheValid");
    return m_valueKnown;
}

const Property* Node::FindAlongOrigins(Prop id) const
{
    const Node* node = this;
    const Property* property = node->Find(id);
    while (property == nullptr && (node = node->Origin()) != nullptr)
        property = node->Find(id);
    return property;
}

ERepresentation Node::Representation() const
{
    const Property* const property = FindAlongOrigins(Prop::Representation);
    return property != nullptr ? static_cast<ERepresentation>(property->integer) : PureNumber;
}

gcstring Node::Unit() const
{
    const Property* const property = FindAlongOrigins(Prop::Unit);
    return property != nullptr ? gcstring(property->text.data(), property->text.size()) : gcstring();
}

EDisplayNotation Node::DisplayNotation() const
{
    const Property* const property = FindAlongOrigins(Prop::DisplayNotation);
    return property != nullptr ? static_cast<EDisplayNotation>(property->integer) : fnAutomatic;
}

int64_t Node::DisplayPrecision() const
{
    const Property* const property = FindAlongOrigins(Prop::DisplayPrecision);
    return property != nullptr ? property->integer : 6;
}

std::string Node::EntryText() const { return m_map.EntryText(); }

void Node::RaiseNoNumber() const
{
    throw KXNODE_ERROR(LogicalErrorException)("The node is used as a number, which it is not");
}

void Node::RaiseNoText() const
{
    throw KXNODE_ERROR(LogicalErrorException)("The node is used as a text, which it is not");
}

int64_t Node::EntryInteger(std::string_view symbolic)
{
    throw KXNODE_ERROR(RuntimeException)("The node is no enumeration and has no entry '%.*s'",
                                         static_cast<int>(std::min<size_t>(symbolic.size(), 80)),
                                         symbolic.data());
}

int64_t Node::ReadInteger(ReadOptions) { RaiseNoNumber(); }
double Node::ReadReal(ReadOptions options) { return static_cast<double>(ReadInteger(options)); }
void Node::WriteInteger(int64_t, bool, Change&) { RaiseNoNumber(); }
void Node::WriteReal(double, bool, Change&) { RaiseNoNumber(); }
int64_t Node::IntegerMin() { RaiseNoNumber(); }
int64_t Node::IntegerMax() { RaiseNoNumber(); }
int64_t Node::IntegerInc() { RaiseNoNumber(); }
double Node::RealMin() { return static_cast<double>(IntegerMin()); }
double Node::RealMax() { return static_cast<double>(IntegerMax()); }
double Node::RealInc() { return static_cast<double>(IntegerInc()); }
gcstring Node::ReadText(ReadOptions) { RaiseNoText(); }
void Node::WriteText(const gcstring&, bool, Change&) { RaiseNoText(); }
int64_t Node::MaxTextLength() { RaiseNoText(); }

} // namespace KxGenApi
