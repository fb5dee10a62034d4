// SPDX-License-Identifier: Apache-2.0
// An integer feature.
#pragma once

#include <GenApi/Autovector.h>
#include <GenApi/IValue.h>

namespace GenApi
{

struct IFloat;

/// A 64-bit integer with limits. Any thread; calls take the lock of the node map.
struct GENAPI_DECL_ABSTRACT IInteger : virtual public IValue
{
    /// Writes the value.
    /// @param Verify checks access mode, limits and increment: AccessException, OutOfRangeException.
    virtual void SetValue(int64_t Value, bool Verify = true) = 0;
    virtual IInteger& operator=(int64_t Value) = 0;

    /// Reads the value; AccessException if it can't be read.
    /// @param Verify checks what was read against the limits.
    /// @param IgnoreCache reads the device even if the value is cached.
    virtual int64_t GetValue(bool Verify = false, bool IgnoreCache = false) = 0;
    virtual int64_t operator()() = 0;
    virtual int64_t operator*() = 0;

    /// Smallest value at present; AccessException while the node isn't available.
    virtual int64_t GetMin() = 0;
    /// Largest value at present; likewise.
    virtual int64_t GetMax() = 0;
    /// Kind of increment.
    virtual EIncMode GetIncMode() = 0;
    /// Distance between two valid values, counted from the minimum; likewise.
    virtual int64_t GetInc() = 0;
    /// The valid values, if they are a list; empty otherwise.
    /// @param bounded leaves out those outside the present limits.
    virtual int64_autovector_t GetListOfValidValues(bool bounded = true) = 0;

    /// How the number wants to be shown.
    virtual ERepresentation GetRepresentation() = 0;
    /// Physical unit; empty if none.
    virtual GenICam::gcstring GetUnit() = 0;

    /// Makes the reported minimum larger.
    virtual void ImposeMin(int64_t Value) = 0;
    /// Makes the reported maximum smaller.
    virtual void ImposeMax(int64_t Value) = 0;
};

/// Reference to an integer.
template <class T, class I = T>
class CIntegerRefT : public CValueRefT<T, I>
{
public:
    void SetValue(int64_t Value, bool Verify = true) override { this->Target().SetValue(Value, Verify); }
    IInteger& operator=(int64_t Value) override
    {
        this->Target().SetValue(Value);
        return *this;
    }
    int64_t GetValue(bool Verify = false, bool IgnoreCache = false) override
    {
        return this->Target().GetValue(Verify, IgnoreCache);
    }
    int64_t operator()() override { return this->Target()(); }
    int64_t operator*() override { return *this->Target(); }
    int64_t GetMin() override { return this->Target().GetMin(); }
    int64_t GetMax() override { return this->Target().GetMax(); }
    EIncMode GetIncMode() override { return this->Target().GetIncMode(); }
    int64_t GetInc() override { return this->Target().GetInc(); }
    int64_autovector_t GetListOfValidValues(bool bounded = true) override
    {
        return this->Target().GetListOfValidValues(bounded);
    }
    ERepresentation GetRepresentation() override { return this->Target().GetRepresentation(); }
    GenICam::gcstring GetUnit() override { return this->Target().GetUnit(); }
    void ImposeMin(int64_t Value) override { this->Target().ImposeMin(Value); }
    void ImposeMax(int64_t Value) override { this->Target().ImposeMax(Value); }

    /// The same value as a floating-point node; null if there is none.
    IFloat* GetFloatAlias() { return dynamic_cast<IFloat*>(this->Target().GetNode()->GetCastAlias()); }
};
typedef CIntegerRefT<IInteger> CIntegerRef;

} // namespace GenApi
