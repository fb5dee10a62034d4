// SPDX-License-Identifier: Apache-2.0
// Base of all nodes at run time: description texts, access mode, caching state, callbacks, and the questions
// that nodes ask each other.
#pragma once

#include "description/Description.h"

#include <GenApi/INode.h>
#include <GenApi/ISelector.h>
#include <GenApi/IUserData.h>
#include <GenApi/IValue.h>

#include <cstdint>
#include <memory>
#include <vector>

namespace KxGenApi
{

using namespace GenApi;
using GenICam::gcstring;

class Node;
class NodeMap;
class Change;
class CallbackSlot;

/// How a value is to be read.
struct ReadOptions
{
    bool verify = false;      ///< check what was read against the limits
    bool ignoreCache = false; ///< read the device even if the value is known
};

/// A reference of one node to another, resolved when it is first followed.
class Link
{
public:
    Link() = default;
    explicit Link(const Property& property)
        : m_property(&property)
    {}

    explicit operator bool() const { return m_property != nullptr; }
    const Property& Source() const { return *m_property; }
    Node& Target(const Node& from) const;

private:
    const Property* m_property = nullptr;
    mutable Node* m_node = nullptr;
};

/// A node. The public calls take the map's lock; the calls below "for other nodes" need it held already.
class Node : public INode, public ISelector, public IUserData
{
public:
    Node(NodeMap& map, NodeIndex index);
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;
    ~Node() override;

    // INode
    gcstring GetName(bool FullQualified = false) const override;
    ENameSpace GetNameSpace() const override;
    EVisibility GetVisibility() const override;
    void InvalidateNode() override;
    bool IsCachable() const override;
    EYesNo IsAccessModeCacheable() const override;
    ECachingMode GetCachingMode() const override;
    int64_t GetPollingTime() const override;
    gcstring GetToolTip() const override;
    gcstring GetDescription() const override;
    gcstring GetDisplayName() const override;
    gcstring GetDeviceName() const override;
    void GetChildren(NodeList_t& Children, ELinkType LinkType = ctReadingChildren) const override;
    void GetParents(NodeList_t& Parents) const override;
    CallbackHandleType RegisterCallback(CNodeCallback* pCallback) override;
    bool DeregisterCallback(CallbackHandleType hCallback) override;
    INodeMap* GetNodeMap() const override;
    gcstring GetEventID() const override;
    bool IsStreamable() const override;
    void GetPropertyNames(GenICam::gcstring_vector& PropertyNames) const override;
    bool GetProperty(const gcstring& PropertyName, gcstring& ValueStr, gcstring& AttributeStr) override;
    void ImposeAccessMode(EAccessMode ImposedAccessMode) override;
    void ImposeVisibility(EVisibility ImposedVisibility) override;
    INode* GetAlias() const override;
    INode* GetCastAlias() const override;
    gcstring GetDocuURL() const override;
    bool IsDeprecated() const override;
    EInterfaceType GetPrincipalInterfaceType() const override { return intfIBase; }
    bool IsFeature() const override;

    // ISelector
    EAccessMode GetAccessMode() const override;
    bool IsSelector() const override;
    void GetSelectedFeatures(FeatureList_t& list) const override;
    void GetSelectingFeatures(FeatureList_t& list) const override;

    // IUserData
    UserData_t GetUserData() const override;
    UserData_t SetUserData(UserData_t userData) override;

    // for other nodes: identity
    NodeMap& Map() const { return m_map; }
    NodeIndex Index() const { return m_index; }
    const NodeData& Data() const;
    NodeType Type() const { return Data().type; }
    const KxGenApi::Description& Described() const;
    Range<Property> Properties() const;
    const Property* Find(Prop id) const;
    /// The name, NUL-terminated, for messages.
    const char* NameText() const { return Data().name.data(); }

    // for other nodes: state
    EAccessMode AccessMode() const;
    ECachingMode CachingMode() const;
    /// Forgets values and access mode; what it depends on keeps theirs.
    virtual void Forget();
    /// Forgets the access mode alone.
    void ForgetAccessMode() { m_accessMode = _UndefinedAccesMode; }
    /// Whether the polling time counts at present.
    virtual bool IsPollingActive() { return true; }
    void RequireReadable() const;
    /// @param verify false asks for less: not even then is written what is read-only for ever or not there.
    void RequireWritable(bool verify) const;
    /// Whether the description or an imposed access mode rules out every write, whatever the flags say.
    bool RefusesWrites() const;
    void RequireAvailable() const;

    // for other nodes: this node as a number; the defaults raise that it is none
    virtual bool IsReal() const { return false; }
    virtual int64_t ReadInteger(ReadOptions options);
    virtual double ReadReal(ReadOptions options);
    /// Whether the node counts as true where it is the flag of another one: what the device holds, be it
    /// known as a value of this node or not.
    virtual bool ReadFlag() { return ReadInteger(ReadOptions()) != 0; }
    /// The integer of that entry, if the node is an enumeration.
    virtual int64_t EntryInteger(std::string_view symbolic);
    virtual void WriteInteger(int64_t value, bool verify, Change& change);
    virtual void WriteReal(double value, bool verify, Change& change);
    virtual int64_t IntegerMin();
    virtual int64_t IntegerMax();
    virtual int64_t IntegerInc();
    virtual double RealMin();
    virtual double RealMax();
    virtual bool HasRealInc() { return false; }
    virtual double RealInc();
    virtual EIncMode IncMode() { return noIncrement; }
    /// As the description says, or else as the node does that this one shows.
    ERepresentation Representation() const;
    gcstring Unit() const;
    EDisplayNotation DisplayNotation() const;
    int64_t DisplayPrecision() const;

    // for other nodes: this node as a text; the defaults raise that it is none
    virtual gcstring ReadText(ReadOptions options);
    virtual void WriteText(const gcstring& text, bool verify, Change& change);
    virtual int64_t MaxTextLength();

    // for Change
    bool HasCallbacks() const { return !m_callbacks.empty(); }
    /// Appends the callbacks that this change is to fire.
    void TakeCallbacks(std::vector<std::shared_ptr<CallbackSlot>>& callbacks);

protected:
    /// The access mode from all that limits it.
    virtual EAccessMode ComputeAccessMode() const;
    /// Whether the node's own flag says that it isn't there.
    bool IsMissing() const;
    /// Access mode that the kind of node has before flags and imposed modes limit it.
    virtual EAccessMode OwnAccessMode() const { return RO; }
    virtual ECachingMode OwnCachingMode() const { return WriteThrough; }
    /// RefusesWrites without what is imposed on the node.
    virtual bool OwnRefusesWrites() const { return false; }

    [[noreturn]] void RaiseNoNumber() const;
    [[noreturn]] void RaiseNoText() const;
    /// "Node.Method()" of the call that the user made, for messages.
    std::string EntryText() const;

    EAccessMode ImposedAccessMode() const { return Combine(m_imposedByFile, m_imposed); }
    EVisibility ImposedVisibility() const { return m_imposedVisibility; }

    /// Text of a property, empty if there is none.
    gcstring TextOf(Prop id) const;

    /// Has `fetch` put the value into the node's cache unless it is there already. Defined in CachedRead.h.
    /// Raises AccessException if the node can't be read.
    template <typename Fetch>
    void ReadThroughCache(ReadOptions options, const Fetch& fetch);
    bool IsValueKnown() const;
    /// The node that this one shows, if any.
    virtual const Node* Origin() const { return nullptr; }

    bool m_valueKnown = false; // the decoded value that a derived class holds is valid

private:
    /// Whether the flag is other than 0; a flag that is unreadable sets the mode to NA, one whose value can't
    /// be had counts as `otherwise`.
    bool IsFlagSet(const Link& flag, EAccessMode& mode, bool otherwise) const;
    /// This node or the one it shows that gives the element, null if none does.
    const Property* FindAlongOrigins(Prop id) const;

    NodeMap& m_map;
    const NodeIndex m_index;
    Link m_isImplemented, m_isAvailable, m_isLocked;
    mutable EAccessMode m_accessMode = _UndefinedAccesMode;
    mutable ECachingMode m_cachingMode = _UndefinedCachingMode;
    EAccessMode m_imposedByFile = RW;
    EAccessMode m_imposed = RW;
    EVisibility m_visibility = Beginner;
    EVisibility m_imposedVisibility = Beginner;
    UserData_t m_userData = nullptr;
    std::vector<std::shared_ptr<CallbackSlot>> m_callbacks;
};

/// An error of a node: names the node and the call that the user made.
#define KXNODE_ERROR(Class) KXGC_NODE_REPORTER(Class, EntryText().c_str(), NameText()).Report

} // namespace KxGenApi
