// SPDX-License-Identifier: Apache-2.0
#include "runtime/NodeMap.h"

#include "Attempt.h"
#include "runtime/Change.h"
#include "runtime/NodeFactory.h"
#include "runtime/PortNode.h"
#include "runtime/WriteList.h"

#include <Base/GCException.h>
#include <GenApi/GenApiVersion.h>

#include <algorithm>
#include <utility>

namespace KxGenApi
{
namespace
{

gcstring Text(const std::string& text) { return gcstring(text.data(), text.size()); }

} // namespace

NodeMap::NodeMap(std::shared_ptr<Model> model, const gcstring& deviceName, CLock* lock)
    : m_model(std::move(model))
    , m_deviceName(deviceName)
    , m_lock(lock != nullptr ? *lock : m_ownLock)
    , m_nodes(new std::atomic<Node*>[m_model->description->NodeCount()]())
{}

NodeMap::~NodeMap()
{
    for (NodeIndex i = 0; i < Described().NodeCount(); ++i) {
        if (Node* const node = m_nodes[i].load(std::memory_order_relaxed))
            node->~Node();
    }
}

// ---------------------------------------------------------------------------------------------------- nodes

Node& NodeMap::NodeAt(NodeIndex index) const
{
    Node* node = ExistingNode(index);
    if (node != nullptr)
        return *node;
    const AutoLock lock(m_lock);
    node = ExistingNode(index); // somebody else may have been faster
    if (node == nullptr) {
        node = MakeNode(const_cast<NodeMap&>(*this), index, m_nodeMemory); // making a node changes no value
        m_nodes[index].store(node, std::memory_order_release);
    }
    return *node;
}

void NodeMap::GetNodes(NodeList_t& Nodes) const
{
    const NodeIndex count = Described().NodeCount();
    Nodes.reserve(Nodes.size() + count);
    for (NodeIndex i = 0; i < count; ++i)
        Nodes.push_back(&NodeAt(i));
}

INode* NodeMap::GetNode(const gcstring& Name) const
{
    std::string_view name(Name.c_str(), Name.size());
    NodeIndex index = Described().FindNode(name);
    if (index == kNoNode) {
        const size_t colons = name.find("::");
        if (colons == std::string_view::npos)
            return nullptr;
        const std::string_view prefix = name.substr(0, colons);
        index = Described().FindNode(name.substr(colons + 2));
        if (index == kNoNode)
            return nullptr;
        const bool isStandard = Described().Node(index).nameSpace == Standard;
        if (prefix != (isStandard ? "Std" : "Cust"))
            return nullptr;
    }
    return &NodeAt(index);
}

void NodeMap::InvalidateNodes() const
{
    Change change(const_cast<NodeMap&>(*this), "InvalidateNodes"); // the values stay what they are
    for (NodeIndex i = 0; i < Described().NodeCount(); ++i)
        change.Invalidate(i);
    change.Finish();
}

bool NodeMap::Connect(IPort* pPort, const gcstring& PortName) const
{
    IPortConstruct* const port = dynamic_cast<IPortConstruct*>(GetNode(PortName));
    if (port == nullptr)
        return false;
    port->SetPortImpl(pPort);
    return true;
}

bool NodeMap::Connect(IPort* pPort) const { return Connect(pPort, "Device"); }

bool NodeMap::Connect(IPortStacked* pPort, const gcstring& PortName)
{
    const auto port = dynamic_cast<IPortStackedConstruct*>(GetNode(PortName));
    if (port == nullptr)
        return false;
    port->SetPortImpl(pPort);
    return true;
}

bool NodeMap::Connect(IPortStacked* pPort) { return Connect(pPort, "Device"); }

void NodeMap::SetSuppressCallbackMode(ECallbackSuppressMode mode)
{
    const AutoLock lock(m_lock);
    m_suppress = mode;
}

bool NodeMap::TakeSuppression()
{
    const ECallbackSuppressMode mode = m_suppress;
    if (mode == csmOnce)
        m_suppress = csmOff;
    return mode == csmOff;
}

UserData_t NodeMap::GetUserData() const
{
    const AutoLock lock(m_lock);
    return m_userData;
}

UserData_t NodeMap::SetUserData(UserData_t userData)
{
    const AutoLock lock(m_lock);
    return std::exchange(m_userData, userData);
}

std::string NodeMap::EntryText() const
{
    if (m_callMethod == nullptr)
        return "GenApi";
    return m_callNode != nullptr ? std::string(m_callNode->NameText()) + "." + m_callMethod + "()"
                                 : std::string(m_callMethod) + "()";
}

std::vector<NodeIndex>& NodeMap::BeginWalk()
{
    if (m_marks.empty())
        m_marks.resize(Described().NodeCount());
    ++m_age;
    m_pending.clear();
    return m_pending;
}

// -------------------------------------------------------------------------------------------------- polling

void NodeMap::Poll(int64_t ElapsedTime)
{
    if (ElapsedTime <= 0)
        return;
    Change change(*this, "Poll");
    if (!m_polledListed) {
        for (NodeIndex i = 0; i < Described().NodeCount(); ++i) {
            const Property* const interval = Described().Find(i, Prop::PollingTime);
            if (interval != nullptr && interval->integer >= 0)
                m_polled.push_back({i, interval->integer, 0});
        }
        m_polledListed = true;
    }
    for (Polled& polled : m_polled) {
        if (!NodeAt(polled.node).IsPollingActive()) {
            polled.elapsed = 0;
            continue;
        }
        // saturated, for intervals may be as long as int64 goes
        polled.elapsed = std::min(ElapsedTime, INT64_MAX - polled.elapsed) + polled.elapsed;
        if (polled.elapsed < polled.interval)
            continue;
        polled.elapsed = 0;
        if (!IsPollingBlocked(polled.node))
            change.Invalidate(polled.node);
    }
    change.Finish();
}

bool NodeMap::IsPollingBlocked(NodeIndex index) const
{
    const Property* const block = Described().Find(index, Prop::pBlockPolling);
    if (block == nullptr)
        return false;
    try {
        return NodeAt(block->node).ReadInteger(ReadOptions()) != 0;
    } catch (const GenICam::GenericException&) {
        return false; // a block that can't be read blocks nothing
    }
}

// ------------------------------------------------------------------------------------------------- formulas

bool NodeMap::ParseSwissKnifes(GenICam::gcstring_vector* pErrors) const
{
    bool allGood = true;
    for (NodeIndex i = 0; i < Described().NodeCount(); ++i) {
        for (const Property& property : Described().Properties(i)) {
            if (property.id != Prop::Formula && property.id != Prop::FormulaTo &&
                property.id != Prop::FormulaFrom)
                continue;
            const NodeType type = Described().Node(i).type;
            const bool isInteger = type == NodeType::IntSwissKnife || type == NodeType::IntConverter;
            const std::string& error = isInteger ? Formulas().Get<int64_t>(Described(), i, property.id).error
                                                 : Formulas().Get<double>(Described(), i, property.id).error;
            if (error.empty())
                continue;
            allGood = false;
            if (pErrors != nullptr)
                pErrors->push_back(Text("Node '" + std::string(Described().Node(i).name) + "': " + error));
        }
    }
    return allGood;
}

// --------------------------------------------------------------------------------------- concatenated write

CNodeWriteConcatenator* NodeMap::NewNodeWriteConcatenator() const { return new WriteList; }

template <typename Function>
void NodeMap::ForEachPort(const Function& function) const
{
    for (NodeIndex i = 0; i < Described().NodeCount(); ++i) {
        if (Described().Node(i).type == NodeType::Port && ExistingNode(i) != nullptr)
            function(static_cast<PortNode&>(*ExistingNode(i)));
    }
}

bool NodeMap::ConcatenatedWrite(CNodeWriteConcatenator* pList, bool, GenICam::gcstring_vector* pErrorList)
{
    if (pList == nullptr)
        return true;
    const auto list = dynamic_cast<const WriteList*>(pList);
    if (list == nullptr)
        throw INVALID_ARGUMENT_EXCEPTION("The list was not made by NewNodeWriteConcatenator");
    const AutoLock lock(m_lock); // nobody else's writes may wait with ours
    ForEachPort([](PortNode& port) { port.BeginCollecting(); });
    bool allGood = list->WriteTo(*this, pErrorList);
    ForEachPort([&](PortNode& port) {
        allGood = Attempt([&] { port.SendCollected(); },
                          "Error while writing to port '" + port.GetName() + "': ", pErrorList) &&
                  allGood;
    });
    return allGood;
}

// ----------------------------------------------------------------------------------------------- IDeviceInfo

gcstring NodeMap::GetModelName() { return Text(Described().Device().modelName); }

gcstring NodeMap::GetVendorName() { return Text(Described().Device().vendorName); }

gcstring NodeMap::GetToolTip() { return Text(Described().Device().toolTip); }

gcstring NodeMap::GetStandardNameSpace() { return Text(Described().Device().standardNameSpace); }

void NodeMap::GetGenApiVersion(Version_t& Version, uint16_t& Build)
{
    Version = {GENAPI_VERSION_MAJOR, GENAPI_VERSION_MINOR, GENAPI_VERSION_SUBMINOR};
    Build = 0;
}

void NodeMap::GetSchemaVersion(Version_t& Version)
{
    const DeviceFacts& device = Described().Device();
    Version = {device.schemaMajor, device.schemaMinor, device.schemaSubMinor};
}

void NodeMap::GetDeviceVersion(Version_t& Version)
{
    const DeviceFacts& device = Described().Device();
    Version = {device.major, device.minor, device.subMinor};
}

gcstring NodeMap::GetProductGuid() { return Text(Described().Device().productGuid); }

gcstring NodeMap::GetVersionGuid() { return Text(Described().Device().versionGuid); }

} // namespace KxGenApi
