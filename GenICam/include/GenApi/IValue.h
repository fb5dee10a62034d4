// SPDX-License-Identifier: Apache-2.0
// A node that has a value, as text.
#pragma once

#include <Base/GCString.h>
#include <GenApi/IBase.h>
#include <GenApi/INode.h>
#include <GenApi/Reference.h>

namespace GenApi
{

/// Value of any node that has one. Any thread; calls take the lock of the node map.
struct GENAPI_DECL_ABSTRACT IValue : virtual public IBase
{
    /// The node of this value; never null, owned by the node map.
    virtual INode* GetNode() { return dynamic_cast<INode*>(this); }

    /// The value as text in the node's own representation.
    /// @param Verify also checks what was read against the limits.
    /// @param IgnoreCache reads the device even if the value is cached.
    /// Raises AccessException if it is not readable, and what the reading raises.
    virtual GenICam::gcstring ToString(bool Verify = false, bool IgnoreCache = false) = 0;

    /// Writes the value given as text.
    /// @param Verify checks access mode and limits.
    /// Raises InvalidArgumentException for text that is no value of this node, and what the writing raises.
    virtual void FromString(const GenICam::gcstring& ValueStr, bool Verify = true) = 0;

    /// Whether the node itself holds its value. After a write it may have to ask the node below for it first,
    /// which need not cost an access to the device.
    virtual bool IsValueCacheValid() const = 0;
};

/// Reference to a value.
template <class T, class I = T>
class CValueRefT : public CBaseRefT<T, I>
{
public:
    using CBaseRefT<T, I>::operator=;

    INode* GetNode() override { return this->Target().GetNode(); }
    GenICam::gcstring ToString(bool Verify = false, bool IgnoreCache = false) override
    {
        return this->Target().ToString(Verify, IgnoreCache);
    }
    void FromString(const GenICam::gcstring& ValueStr, bool Verify = true) override
    {
        this->Target().FromString(ValueStr, Verify);
    }
    bool IsValueCacheValid() const override { return this->Target().IsValueCacheValid(); }
};
typedef CValueRefT<IValue> CValueRef;

} // namespace GenApi
