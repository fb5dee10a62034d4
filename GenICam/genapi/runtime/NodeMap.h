// SPDX-License-Identifier: Apache-2.0
// A node map: a shared description with values, caches, callbacks and ports of its own.
#pragma once

#include "description/Description.h"
#include "runtime/FormulaStore.h"
#include "runtime/Node.h"
#include "runtime/NodeMemory.h"

#include <GenApi/IDestroy.h>
#include <GenApi/IDeviceInfo.h>
#include <GenApi/INodeMap.h>

#include <atomic>
#include <memory>
#include <string>
#include <vector>

namespace KxGenApi
{

/// A description with what all its maps share.
struct Model
{
    explicit Model(std::shared_ptr<const Description> parsed)
        : description(std::move(parsed))
        , formulas(description->NodeCount())
    {}

    std::shared_ptr<const Description> description;
    FormulaStore formulas;
};

class NodeMap final : public INodeMap, public IDeviceInfo, public IDestroy, public IUserData
{
public:
    /// More nodes than this asking each other in a row means a circle; real files stay below 40.
    static constexpr unsigned kMaxDepth = 250;

    /// Nodes that one call may ask, each as often as it is asked: references that fork level by level would
    /// else let a short file run for ever. A real camera stays below some thousands.
    static constexpr unsigned kMaxSteps = 1000000;

    /// Circles that one call may meet. A flag that ends in one has an answer all the same, and what is asked
    /// next may meet the next: an exception through all levels each time, which costs much more than a step.
    static constexpr unsigned kMaxCircles = 8;

    /// What a flag that can't be read adds to the steps of a call.
    static constexpr unsigned kFailedFlagSteps = 500;

    /// @param lock the lock of a user, which outlives the map; null for one of the map's own
    NodeMap(std::shared_ptr<Model> model, const gcstring& deviceName, CLock* lock = nullptr);
    NodeMap(const NodeMap&) = delete;
    NodeMap& operator=(const NodeMap&) = delete;
    ~NodeMap() override;

    // INodeMap
    void GetNodes(NodeList_t& Nodes) const override;
    INode* GetNode(const gcstring& Name) const override;
    void InvalidateNodes() const override;
    bool Connect(IPort* pPort, const gcstring& PortName) const override;
    bool Connect(IPort* pPort) const override;
    bool Connect(IPortStacked* pPort, const gcstring& PortName) override;
    bool Connect(IPortStacked* pPort) override;
    gcstring GetDeviceName() override { return m_deviceName; }
    void Poll(int64_t ElapsedTime) override;
    CLock& GetLock() const override { return m_lock; }
    uint64_t GetNumNodes() const override { return Described().NodeCount(); }
    bool ParseSwissKnifes(GenICam::gcstring_vector* pErrors = nullptr) const override;
    CNodeWriteConcatenator* NewNodeWriteConcatenator() const override;
    bool ConcatenatedWrite(CNodeWriteConcatenator* pList, bool featureStreaming = true,
                           GenICam::gcstring_vector* pErrorList = nullptr) override;
    void SetSuppressCallbackMode(ECallbackSuppressMode mode) override;

    // IDestroy
    void Destroy() override { delete this; }

    // IUserData
    UserData_t GetUserData() const override;
    UserData_t SetUserData(UserData_t userData) override;

    // IDeviceInfo
    gcstring GetModelName() override;
    gcstring GetVendorName() override;
    gcstring GetToolTip() override;
    gcstring GetStandardNameSpace() override;
    void GetGenApiVersion(Version_t& Version, uint16_t& Build) override;
    void GetSchemaVersion(Version_t& Version) override;
    void GetDeviceVersion(Version_t& Version) override;
    gcstring GetProductGuid() override;
    gcstring GetVersionGuid() override;

    // for nodes
    const KxGenApi::Description& Described() const { return *m_model->description; }
    FormulaStore& Formulas() const { return m_model->formulas; }
    /// The node of that index, made if need be. Any thread.
    Node& NodeAt(NodeIndex index) const;
    /// The node of that index if somebody has asked for it yet.
    Node* ExistingNode(NodeIndex index) const { return m_nodes[index].load(std::memory_order_acquire); }
    /// Counts reads that no cache answers for, so that what they led to is not cached either.
    uint64_t UncachedReads() const { return m_uncachedReads; }
    void CountUncachedRead() const { ++m_uncachedReads; }
    /// Counts a flag that could not be read: an exception costs as much as many steps, and a ladder of flags
    /// would raise one at each.
    void CountFailedFlag() const
    {
        CountUncachedRead(); // the next question may have a better answer
        m_steps += kFailedFlagSteps;
    }
    /// "Node.Method()" of the call that the user made.
    std::string EntryText() const;
    /// Changes of the map so far.
    uint64_t Age() const { return m_age; }
    /// Age of the map when the node was last invalidated, be it an object by then or not.
    uint64_t InvalidatedAt(NodeIndex node) const { return m_marks.empty() ? 0 : m_marks[node].invalidated; }
    void CountCallbacks(int difference) { m_callbackCount += difference; }

private:
    friend class Call;
    friend class Change;
    friend class Level;

    /// Sets the running call aside while callbacks make calls of their own.
    class Aside
    {
    public:
        explicit Aside(NodeMap& map)
            : m_map(map)
            , m_node(map.m_callNode)
            , m_method(map.m_callMethod)
            , m_depth(map.m_depth)
            , m_steps(map.m_steps)
        {
            map.m_callMethod = nullptr;
            map.m_depth = 0;
        }
        Aside(const Aside&) = delete;
        Aside& operator=(const Aside&) = delete;
        ~Aside()
        {
            m_map.m_callNode = m_node;
            m_map.m_callMethod = m_method;
            m_map.m_depth = m_depth;
            m_map.m_steps = m_steps;
        }

    private:
        NodeMap& m_map;
        const Node* m_node;
        const char* m_method;
        unsigned m_depth;
        unsigned m_steps;
    };

    bool EnterCall(const Node* node, const char* method)
    {
        if (m_callMethod != nullptr)
            return false;
        m_callNode = node;
        m_callMethod = method;
        return true;
    }
    void LeaveCall() { m_callMethod = nullptr; }

    // A walk over dependents marks each node once. The list is the walk's own stack, kept for its memory.
    std::vector<NodeIndex>& BeginWalk();
    bool MarkVisited(NodeIndex node)
    {
        if (m_marks[node].visited == m_age)
            return false;
        m_marks[node].visited = m_age;
        return true;
    }
    void MarkInvalidated(NodeIndex node) { m_marks[node].invalidated = m_age; }

    bool IsPollingBlocked(NodeIndex index) const;
    /// Whether the change at hand fires callbacks; ends a mode that was for one change.
    bool TakeSuppression();
    template <typename Function>
    void ForEachPort(const Function& function) const;

    const std::shared_ptr<Model> m_model;
    const gcstring m_deviceName;
    mutable CLock m_ownLock;
    CLock& m_lock; // protects all below, and the state of all nodes; ports are called with it held
    mutable NodeMemory m_nodeMemory;
    std::unique_ptr<std::atomic<Node*>[]> m_nodes;
    struct Marks // ages of the map
    {
        uint64_t visited = 0;
        uint64_t invalidated = 0;
    };
    std::vector<Marks> m_marks; // one per node once there was a change
    uint64_t m_age = 0;
    std::vector<NodeIndex> m_pending;
    mutable uint64_t m_uncachedReads = 0;
    int m_callbackCount = 0;
    ECallbackSuppressMode m_suppress = csmOff;
    UserData_t m_userData = nullptr;
    const Node* m_callNode = nullptr;
    const char* m_callMethod = nullptr;
    mutable unsigned m_depth = 0;
    mutable unsigned m_steps = 0; // since the depth was 0
    struct Polled
    {
        NodeIndex node;
        int64_t interval;
        int64_t elapsed;
    };
    std::vector<Polled> m_polled;
    bool m_polledListed = false;
};

} // namespace KxGenApi
