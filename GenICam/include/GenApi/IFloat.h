// SPDX-License-Identifier: Apache-2.0
// A floating-point feature.
#pragma once

#include <GenApi/Autovector.h>
#include <GenApi/IValue.h>

namespace GenApi
{

struct IInteger;
struct IEnumeration;

/// A double with limits. Any thread; calls take the lock of the node map.
struct GENAPI_DECL_ABSTRACT IFloat : virtual public IValue
{
    /// Writes the value.
    /// @param Verify checks access mode and limits: AccessException, OutOfRangeException.
    virtual void SetValue(double Value, bool Verify = true) = 0;
    virtual IFloat& operator=(double Value) = 0;

    /// Reads the value.
    /// @param Verify checks what was read against the limits.
    /// @param IgnoreCache reads the device even if the value is cached.
    virtual double GetValue(bool Verify = false, bool IgnoreCache = false) = 0;
    virtual double operator()() = 0;
    virtual double operator*() = 0;

    /// Smallest value at present.
    virtual double GetMin() = 0;
    /// Largest value at present.
    virtual double GetMax() = 0;
    /// Whether there is an increment.
    virtual bool HasInc() = 0;
    /// Kind of increment.
    virtual EIncMode GetIncMode() = 0;
    /// Distance between two valid values; RuntimeException if there is none.
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

    /// The same value as an integer node; null if there is none.
    virtual IInteger* GetIntAlias() = 0;
    /// The same value as an enumeration node; null if there is none.
    virtual IEnumeration* GetEnumAlias() = 0;

    /// Makes the reported minimum larger.
    virtual void ImposeMin(double Value) = 0;
    /// Makes the reported maximum smaller.
    virtual void ImposeMax(double Value) = 0;
};

} // namespace GenApi
