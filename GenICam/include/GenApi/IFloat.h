// SPDX-License-Identifier: Apache-2.0
// A floating-point feature.
#pragma once

#include <GenApi/Autovector.h>
#include <GenApi/IEnumeration.h>
#include <GenApi/IInteger.h>
#include <GenApi/IValue.h>

namespace GenApi
{

/// A double with limits. Any thread; calls take the lock of the node map.
struct GENAPI_DECL_ABSTRACT IFloat : virtual public IValue
{
    /// Writes the value.
    /// @param Verify checks access mode and limits: AccessException, OutOfRangeException.
    virtual void SetValue(double Value, bool Verify = true) = 0;
    virtual IFloat& operator=(double Value) = 0;

    /// Reads the value; AccessException if it can't be read.
    /// @param Verify checks what was read against the limits.
    /// @param IgnoreCache reads the device even if the value is cached.
    virtual double GetValue(bool Verify = false, bool IgnoreCache = false) = 0;
    virtual double operator()() = 0;
    virtual double operator*() = 0;

    /// Smallest value at present; AccessException while the node isn't available.
    virtual double GetMin() = 0;
    /// Largest value at present; likewise.
    virtual double GetMax() = 0;
    /// Whether there is an increment.
    virtual bool HasInc() = 0;
    /// Kind of increment.
    virtual EIncMode GetIncMode() = 0;
    /// Distance between two valid values; likewise, and RuntimeException if there is none.
    virtual double GetInc() = 0;
    /// The valid values, if they are a list; empty otherwise.
    /// @param bounded leaves out those outside the present limits.
    virtual double_autovector_t GetListOfValidValues(bool bounded = true) = 0;

    /// How the number wants to be shown.
    virtual ERepresentation GetRepresentation() = 0;
    /// Physical unit; empty if none.
    virtual GenICam::gcstring GetUnit() const = 0;
    /// Form of the number as text.
    virtual EDisplayNotation GetDisplayNotation() const = 0;
    /// Digits of the number as text.
    virtual int64_t GetDisplayPrecision() const = 0;

    /// Makes the reported minimum larger.
    virtual void ImposeMin(double Value) = 0;
    /// Makes the reported maximum smaller.
    virtual void ImposeMax(double Value) = 0;
};

/// Reference to a floating-point number.
template <class T>
class CFloatRefT : public CValueRefT<T>
{
public:
    void SetValue(double Value, bool Verify = true) override { this->Target().SetValue(Value, Verify); }
    IFloat& operator=(double Value) override
    {
        this->Target().SetValue(Value);
        return *this;
    }
    double GetValue(bool Verify = false, bool IgnoreCache = false) override
    {
        return this->Target().GetValue(Verify, IgnoreCache);
    }
    double operator()() override { return this->Target()(); }
    double operator*() override { return *this->Target(); }
    double GetMin() override { return this->Target().GetMin(); }
    double GetMax() override { return this->Target().GetMax(); }
    bool HasInc() override { return this->Target().HasInc(); }
    EIncMode GetIncMode() override { return this->Target().GetIncMode(); }
    double GetInc() override { return this->Target().GetInc(); }
    double_autovector_t GetListOfValidValues(bool bounded = true) override
    {
        return this->Target().GetListOfValidValues(bounded);
    }
    ERepresentation GetRepresentation() override { return this->Target().GetRepresentation(); }
    GenICam::gcstring GetUnit() const override { return this->Target().GetUnit(); }
    EDisplayNotation GetDisplayNotation() const override { return this->Target().GetDisplayNotation(); }
    int64_t GetDisplayPrecision() const override { return this->Target().GetDisplayPrecision(); }
    void ImposeMin(double Value) override { this->Target().ImposeMin(Value); }
    void ImposeMax(double Value) override { this->Target().ImposeMax(Value); }

    /// The same value as an integer or enumeration node; null if there is none.
    IInteger* GetIntAlias() { return dynamic_cast<IInteger*>(this->Target().GetNode()->GetCastAlias()); }
    IEnumeration* GetEnumAlias()
    {
        return dynamic_cast<IEnumeration*>(this->Target().GetNode()->GetCastAlias());
    }
};
typedef CFloatRefT<IFloat> CFloatRef;

} // namespace GenApi
