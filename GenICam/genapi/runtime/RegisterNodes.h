// SPDX-License-Identifier: Apache-2.0
// Nodes that are registers: integers, floating-point numbers, texts and plain bytes.
#pragma once

#include "runtime/NumberNode.h"
#include "runtime/RegisterAccess.h"

#include <GenApi/IRegister.h>
#include <GenApi/IString.h>

namespace KxGenApi
{

/// The register face of a node, and what all register nodes have in common.
template <class Base>
class RegisterFace : public Base, public IRegister
{
public:
    using Base::operator=;

    RegisterFace(NodeMap& map, NodeIndex index, ECachingMode defaultCaching)
        : Base(map, index)
        , m_register(*this, defaultCaching)
    {}

    // IRegister
    void Set(const uint8_t* pBuffer, int64_t Length, bool Verify = true) override;
    void Get(uint8_t* pBuffer, int64_t Length, bool Verify = false, bool IgnoreCache = false) override;
    int64_t GetLength(bool Verify = false) override;
    int64_t GetAddress(bool Verify = false) override;

    void Forget() override
    {
        Base::Forget();
        m_register.Forget();
    }

protected:
    EAccessMode OwnAccessMode() const override { return m_register.AccessMode(); }
    ECachingMode OwnCachingMode() const override { return m_register.CachingMode(); }
    bool OwnRefusesWrites() const override { return m_register.RefusesWrites(); }

    /// Bytes that a user gave, written at the beginning of the register.
    void WriteBytes(std::vector<uint8_t> bytes, bool verify, Change& change);

    RegisterAccess m_register;
};

/// The bits of a register that are an integer.
struct BitField
{
    unsigned length; ///< bytes of the register, 1 to 8
    unsigned lowest; ///< position of the least significant bit, counted from the least significant bit of the
                     ///< register
    unsigned width;  ///< number of bits, 1 to 64
    bool isSigned;

    int64_t Min() const;
    int64_t Max() const;
};

/// IntReg, MaskedIntReg and StructEntry.
class IntRegNode final : public RegisterFace<IntegerBase>
{
public:
    IntRegNode(NodeMap& map, NodeIndex index);
    using RegisterFace::operator=;

protected:
    int64_t Lowest() override { return Field().Min(); }
    int64_t Highest() override { return Field().Max(); }
    int64_t Fetch(ReadOptions options) override;
    void Store(int64_t value, bool verify, Change& change) override;

private:
    BitField Field();

    const Property* m_lsb;
    const Property* m_msb;
    const Property* m_bit;
    bool m_isSigned;
};

class FloatRegNode final : public RegisterFace<FloatBase>
{
public:
    FloatRegNode(NodeMap& map, NodeIndex index);
    using RegisterFace::operator=;

protected:
    double Lowest() override;
    double Highest() override;
    double Fetch(ReadOptions options) override;
    void Store(double value, bool verify, Change& change) override;

private:
    int64_t CheckedLength();
};

} // namespace KxGenApi
