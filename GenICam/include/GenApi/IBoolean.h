// SPDX-License-Identifier: Apache-2.0
// A feature that is on or off.
#pragma once

#include <GenApi/IValue.h>

namespace GenApi
{

/// A switch. Any thread; calls take the lock of the node map.
struct GENAPI_DECL_ABSTRACT IBoolean : virtual public IValue
{
    /// Writes the value.
    /// @param Verify checks the access mode: AccessException.
    virtual void SetValue(bool Value, bool Verify = true) = 0;
    virtual IBoolean& operator=(bool Value)
    {
        SetValue(Value);
        return *this;
    }

    /// Reads the value; AccessException if it can't be read, LogicalErrorException if neither on nor off.
    /// @param IgnoreCache reads the device even if the value is cached.
    virtual bool GetValue(bool Verify = false, bool IgnoreCache = false) const = 0;
    virtual bool operator()() const { return GetValue(); }
    virtual bool operator*() const { return GetValue(); }
};

/// Reference to a switch.
template <class T>
class CBooleanRefT : public CValueRefT<T>
{
public:
    void SetValue(bool Value, bool Verify = true) override { this->Target().SetValue(Value, Verify); }
    IBoolean& operator=(bool Value) override
    {
        this->Target().SetValue(Value);
        return *this;
    }
    bool GetValue(bool Verify = false, bool IgnoreCache = false) const override
    {
        return this->Target().GetValue(Verify, IgnoreCache);
    }
    bool operator()() const override { return this->Target()(); }
    bool operator*() const override { return *this->Target(); }
};
typedef CBooleanRefT<IBoolean> CBooleanRef;

} // namespace GenApi
