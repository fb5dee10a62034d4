// SPDX-License-Identifier: Apache-2.0
// What every node of a node map has: names, texts, place in the tree, caching, callbacks.
#pragma once

#include <Base/GCString.h>
#include <Base/GCStringVector.h>
#include <GenApi/Container.h>
#include <GenApi/IBase.h>

namespace GenApi
{

struct INodeMap;
class CNodeCallback;

/// Handle of a registered callback; 0 is no handle.
typedef intptr_t CallbackHandleType;

/// A node. The node map owns it; pointers stay valid as long as the map. Any thread. Each node has ISelector
/// and IUserData besides.
struct GENAPI_DECL_ABSTRACT INode : virtual public IBase
{
    /// The name; with FullQualified prefixed by "Std::" or "Cust::".
    virtual GenICam::gcstring GetName(bool FullQualified = false) const = 0;

    /// Whether the name is the standard's.
    virtual ENameSpace GetNameSpace() const = 0;

    /// Whom the node is meant for; an imposed visibility can only make it stricter.
    virtual EVisibility GetVisibility() const = 0;

    /// Forgets the cached value of this node and of all that depend on it, and fires their callbacks.
    virtual void InvalidateNode() = 0;

    /// Whether the value may be cached.
    virtual bool IsCachable() const = 0;

    /// Whether the access mode may be cached.
    virtual EYesNo IsAccessModeCacheable() const = 0;

    /// How the value is cached.
    virtual ECachingMode GetCachingMode() const = 0;

    /// Recommended interval between two polls in ms, -1 if the node is not to be polled.
    virtual int64_t GetPollingTime() const = 0;

    /// Short description.
    virtual GenICam::gcstring GetToolTip() const = 0;

    /// Long description.
    virtual GenICam::gcstring GetDescription() const = 0;

    /// Name for a user; the plain name where the file gives none.
    virtual GenICam::gcstring GetDisplayName() const = 0;

    /// Name of the device that the map was made for.
    virtual GenICam::gcstring GetDeviceName() const = 0;

    /// Replaces the list by the nodes that this one is related to in that way.
    virtual void GetChildren(NodeList_t& Children, ELinkType LinkType = ctReadingChildren) const = 0;

    /// Replaces the list by the nodes that name this one.
    virtual void GetParents(NodeList_t& Parents) const = 0;

    /// Registers a callback; the node owns it from now on. It fires after each change of the node.
    /// @return handle for DeregisterCallback.
    virtual CallbackHandleType RegisterCallback(CNodeCallback* pCallback) = 0;

    /// Removes a callback; it may remove itself while it runs. A callback outside the lock may still be
    /// running in another thread when this returns: waiting for it here could wait for a lock that the caller
    /// holds. What such a callback uses has to live longer, or to be owned by it.
    /// @return false if the handle is not (or no longer) registered here.
    virtual bool DeregisterCallback(CallbackHandleType hCallback) = 0;

    /// The map that owns the node; never null.
    virtual INodeMap* GetNodeMap() const = 0;

    /// Identifier of the event that this node belongs to, in hexadecimal digits; empty if none.
    virtual GenICam::gcstring GetEventID() const = 0;

    /// Whether the node belongs into a saved set of features.
    virtual bool IsStreamable() const = 0;

    /// Replaces the list by the names of all properties of this node, in the order of their characters.
    virtual void GetPropertyNames(GenICam::gcstring_vector& PropertyNames) const = 0;

    /// One property: what the description gives, or the default.
    /// @param ValueStr the value; several are separated by tabulators.
    /// @param AttributeStr the attributes (such as a variable's name), in the same order.
    /// @return false if the node has no such property; the texts are empty then.
    virtual bool GetProperty(const GenICam::gcstring& PropertyName, GenICam::gcstring& ValueStr,
                             GenICam::gcstring& AttributeStr) = 0;

    /// Limits the access mode from outside; RW lifts the limit. Fires the callbacks.
    virtual void ImposeAccessMode(EAccessMode ImposedAccessMode) = 0;

    /// Makes the visibility stricter from outside. Fires the callbacks.
    virtual void ImposeVisibility(EVisibility ImposedVisibility) = 0;

    /// Node that shows the same thing in another way; null if none.
    virtual INode* GetAlias() const = 0;

    /// Node that shows the same thing with another type; null if none.
    virtual INode* GetCastAlias() const = 0;

    /// Address of a document about the feature; empty if none.
    virtual GenICam::gcstring GetDocuURL() const = 0;

    /// Whether the feature should no longer be used.
    virtual bool IsDeprecated() const = 0;

    /// The interface that the node is mainly used through.
    virtual EInterfaceType GetPrincipalInterfaceType() const = 0;

    /// Whether the node can be reached from the category "Root".
    virtual bool IsFeature() const = 0;
};

} // namespace GenApi
