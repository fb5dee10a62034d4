// SPDX-License-Identifier: Apache-2.0
// What all integer nodes and all floating-point nodes share, wherever their value comes from.
#pragma once

#include "runtime/NumberLink.h"

#include <GenApi/IFloat.h>
#include <GenApi/IInteger.h>

namespace KxGenApi
{

/// An integer node. Derived classes fetch and store the value and tell the limits.
class IntegerBase : public Node, public IInteger
{
public:
    IntegerBase(NodeMap& map, NodeIndex index);

    // IInteger
    EInterfaceType GetPrincipalInterfaceType() const override { return intfIInteger; }
    INode* GetNode() override { return this; }
    gcstring ToString(bool Verify = false, bool IgnoreCache = false) override;
    void FromString(const gcstring& ValueStr, bool Verify = true) override;
    bool IsValueCacheValid() const override { return IsValueKnown(); }
    void SetValue(int64_t Value, bool Verify = true) override;
    IInteger& operator=(int64_t Value) override;
    int64_t GetValue(bool Verify = false, bool IgnoreCache = false) override;
    int64_t operator()() override { return GetValue(); }
    int64_t operator*() override { return GetValue(); }
    int64_t GetMin() override;
    int64_t GetMax() override;
    EIncMode GetIncMode() override;
    int64_t GetInc() override;
    int64_autovector_t GetListOfValidValues(bool bounded = true) override;
    ERepresentation GetRepresentation() override;
    gcstring GetUnit() override;
    void ImposeMin(int64_t Value) override;
    void ImposeMax(int64_t Value) override;

    // for other nodes
    int64_t ReadInteger(ReadOptions options) override;
    void WriteInteger(int64_t value, bool verify, Change& change) override;
    void WriteReal(double value, bool verify, Change& change) override;
    int64_t IntegerMin() final;
    int64_t IntegerMax() final;
    int64_t IntegerInc() override { return 1; }
    EIncMode IncMode() override;
    bool HasRealInc() override { return true; }

protected:
    /// The limits, whoever gives them.
    virtual int64_t Lowest() = 0;
    virtual int64_t Highest() = 0;
    /// Reads the value from where it is.
    virtual int64_t Fetch(ReadOptions options) = 0;
    /// Writes the value to where it is; limits have been checked.
    virtual void Store(int64_t value, bool verify, Change& change) = 0;

private:
    void CheckLimits(int64_t value);

    int64_t m_value = 0;
    int64_t m_imposedMin, m_imposedMax;
};

/// A floating-point node; as above.
class FloatBase : public Node, public IFloat
{
public:
    FloatBase(NodeMap& map, NodeIndex index);

    // IFloat
    EInterfaceType GetPrincipalInterfaceType() const override { return intfIFloat; }
    INode* GetNode() override { return this; }
    gcstring ToString(bool Verify = false, bool IgnoreCache = false) override;
    void FromString(const gcstring& ValueStr, bool Verify = true) override;
    bool IsValueCacheValid() const override { return IsValueKnown(); }
    void SetValue(double Value, bool Verify = true) override;
    IFloat& operator=(double Value) override;
    double GetValue(bool Verify = false, bool IgnoreCache = false) override;
    double operator()() override { return GetValue(); }
    double operator*() override { return GetValue(); }
    double GetMin() override;
    double GetMax() override;
    bool HasInc() override;
    EIncMode GetIncMode() override;
    double GetInc() override;
    double_autovector_t GetListOfValidValues(bool bounded = true) override;
    ERepresentation GetRepresentation() override;
    gcstring GetUnit() const override;
    EDisplayNotation GetDisplayNotation() const override;
    int64_t GetDisplayPrecision() const override;
    void ImposeMin(double Value) override;
    void ImposeMax(double Value) override;

    // for other nodes
    bool IsReal() const override { return true; }
    int64_t ReadInteger(ReadOptions options) override;
    double ReadReal(ReadOptions options) override;
    void WriteInteger(int64_t value, bool verify, Change& change) override;
    void WriteReal(double value, bool verify, Change& change) override;
    int64_t IntegerMin() override;
    int64_t IntegerMax() override;
    int64_t IntegerInc() override;
    double RealMin() final;
    double RealMax() final;
    double RealInc() override;
    EIncMode IncMode() override;

protected:
    virtual double Lowest() = 0;
    virtual double Highest() = 0;
    virtual double Fetch(ReadOptions options) = 0;
    virtual void Store(double value, bool verify, Change& change) = 0;

    ECachingMode OwnCachingMode() const override { return WriteAround; }

    /// Keeps a value that the device has just been given; call it when all that was written is known to the
    /// change.
    void KeepWritten(double value);

private:
    void CheckLimits(double value);
    std::string BoundedText(double value);

    double m_value = 0;
    double m_imposedMin, m_imposedMax;
};

} // namespace KxGenApi
