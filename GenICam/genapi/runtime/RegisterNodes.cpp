// SPDX-License-Identifier: Apache-2.0
#include "runtime/RegisterNodes.h"

#include "runtime/Change.h"
#include "runtime/TextNodes.h"

#include <Base/GCException.h>

#include <algorithm>
#include <cfloat>
#include <cstring>
#include <limits>

namespace KxGenApi
{

// --------------------------------------------------------------------------------------------- RegisterFace

template <class Base>
void RegisterFace<Base>::Set(const uint8_t* pBuffer, int64_t Length, bool Verify)
{
    Change change(*this, "Set");
    if (pBuffer == nullptr || Length < 0)
        throw KXGC_NODE_REPORTER(InvalidArgumentException, this->EntryText().c_str(), this->NameText())
            .Report("A buffer of %lld bytes is none", static_cast<long long>(Length));
    if (Length > m_register.Length()) { // before the bytes are copied
        throw KXGC_NODE_REPORTER(OutOfRangeException, this->EntryText().c_str(), this->NameText())
            .Report("Length = %lld must be equal or smaller than Max = %lld", static_cast<long long>(Length),
                    static_cast<long long>(m_register.Length()));
    }
    WriteBytes(std::vector<uint8_t>(pBuffer, pBuffer + Length), Verify, change);
    change.Finish();
}

template <class Base>
void RegisterFace<Base>::WriteBytes(std::vector<uint8_t> bytes, bool verify, Change& change)
{
    this->RequireWritable(verify);
    this->m_valueKnown = false;
    m_register.Write(std::move(bytes), change);
}

template <class Base>
void RegisterFace<Base>::Get(uint8_t* pBuffer, int64_t Length, bool, bool IgnoreCache)
{
    const Call call(*this, "Get");
    if (pBuffer == nullptr || Length < 0)
        throw KXGC_NODE_REPORTER(InvalidArgumentException, this->EntryText().c_str(), this->NameText())
            .Report("A buffer of %lld bytes is none", static_cast<long long>(Length));
    this->RequireReadable();
    const int64_t available = m_register.Length();
    if (Length > available) {
        throw KXGC_NODE_REPORTER(OutOfRangeException, this->EntryText().c_str(), this->NameText())
            .Report("Length = %lld must be equal or smaller than Max = %lld", static_cast<long long>(Length),
                    static_cast<long long>(available));
    }
    ReadOptions options;
    options.ignoreCache = IgnoreCache;
    const std::vector<uint8_t>& bytes = m_register.Read(Length, options);
    if (Length > 0)
        std::memcpy(pBuffer, bytes.data(), static_cast<size_t>(Length));
}

template <class Base>
int64_t RegisterFace<Base>::GetLength(bool)
{
    const Call call(*this, "GetLength");
    return m_register.Length();
}

template <class Base>
int64_t RegisterFace<Base>::GetAddress(bool)
{
    const Call call(*this, "GetAddress");
    return m_register.Address();
}

template class RegisterFace<IntegerBase>;
template class RegisterFace<FloatBase>;
template class RegisterFace<TextBase>;
template class RegisterFace<BytesBase>;

namespace
{

uint64_t Assemble(const std::vector<uint8_t>& bytes, bool bigEndian)
{
    uint64_t word = 0;
    for (size_t i = 0; i < bytes.size(); ++i)
        word = word << 8 | bytes[bigEndian ? i : bytes.size() - 1 - i];
    return word;
}

std::vector<uint8_t> Split(uint64_t word, size_t length, bool bigEndian)
{
    std::vector<uint8_t> bytes(length);
    for (size_t i = 0; i < length; ++i)
        bytes[bigEndian ? length - 1 - i : i] = static_cast<uint8_t>(word >> (8 * i));
    return bytes;
}

constexpr uint64_t Mask(unsigned width) { return width >= 64 ? ~uint64_t{0} : (uint64_t{1} << width) - 1; }

} // namespace

// ------------------------------------------------------------------------------------------------- integers

int64_t BitField::Min() const { return isSigned ? static_cast<int64_t>(~(Mask(width) >> 1)) : 0; }

int64_t BitField::Max() const
{
    // 64 unsigned bits end where int64 does
    return static_cast<int64_t>(isSigned || width >= 64 ? Mask(width) >> 1 : Mask(width));
}

IntRegNode::IntRegNode(NodeMap& map, NodeIndex index)
    : RegisterFace(map, index, WriteThrough)
    , m_lsb(Find(Prop::LSB))
    , m_msb(Find(Prop::MSB))
    , m_bit(Find(Prop::Bit))
{
    const Property* const sign = Find(Prop::Sign);
    m_isSigned = sign != nullptr && sign->integer == Signed;
}

BitField IntRegNode::Field()
{
    const int64_t length = m_register.Length();
    if (length < 1 || length > 8) {
        throw KXNODE_ERROR(OutOfRangeException)(
            "Length = %lld of an integer register must be between 1 and 8", static_cast<long long>(length));
    }
    const int64_t bits = 8 * length;
    int64_t low = 0;
    int64_t high = bits - 1;
    if (Type() != NodeType::IntReg) {
        low = m_bit != nullptr ? m_bit->integer : m_lsb != nullptr ? m_lsb->integer : 0;
        high = m_bit != nullptr ? m_bit->integer : m_msb != nullptr ? m_msb->integer : bits - 1;
        if (m_register.IsBigEndian()) { // bit 0 is the most significant one
            low = bits - 1 - low;
            high = bits - 1 - high;
        }
    }
    if (low < 0 || high < low || high >= bits) {
        throw KXNODE_ERROR(OutOfRangeException)("The bits do not lie within the %lld bytes of the register",
                                                static_cast<long long>(length));
    }
    return {static_cast<unsigned>(length), static_cast<unsigned>(low), static_cast<unsigned>(high - low + 1),
            m_isSigned};
}

int64_t IntRegNode::Fetch(ReadOptions options)
{
    const BitField field = Field();
    const uint64_t bits = Assemble(m_register.Read(options), m_register.IsBigEndian()) >> field.lowest;
    const uint64_t value = bits & Mask(field.width);
    const bool negative = field.isSigned && (value >> (field.width - 1) & 1) != 0;
    return static_cast<int64_t>(negative ? value | ~Mask(field.width) : value);
}

void IntRegNode::Store(int64_t value, bool, Change& change)
{
    const BitField field = Field();
    const bool bigEndian = m_register.IsBigEndian();
    uint64_t word = static_cast<uint64_t>(value) & Mask(field.width);
    if (field.width < 8 * field.length) { // the other bits stay as they are
        RequireReadable();
        word <<= field.lowest;
        word |= Assemble(m_register.Read(ReadOptions()), bigEndian) & ~(Mask(field.width) << field.lowest);
    }
    m_register.Write(Split(word, field.length, bigEndian), change);
    m_valueKnown = false; // what was written may have been cut
}

// -------------------------------------------------------------------------------------------------- doubles

FloatRegNode::FloatRegNode(NodeMap& map, NodeIndex index)
    : RegisterFace(map, index, WriteAround)
{}

int64_t FloatRegNode::CheckedLength()
{
    const int64_t length = m_register.Length();
    if (length != 4 && length != 8) {
        throw KXNODE_ERROR(OutOfRangeException)("Length = %lld of a floating-point register must be 4 or 8",
                                                static_cast<long long>(length));
    }
    return length;
}

double FloatRegNode::Lowest() { return CheckedLength() == 4 ? -static_cast<double>(FLT_MAX) : -DBL_MAX; }

double FloatRegNode::Highest() { return CheckedLength() == 4 ? static_cast<double>(FLT_MAX) : DBL_MAX; }

double FloatRegNode::Fetch(ReadOptions options)
{
    const int64_t length = CheckedLength();
    const uint64_t bits = Assemble(m_register.Read(options), m_register.IsBigEndian());
    if (length == 4) {
        const auto narrow = static_cast<uint32_t>(bits);
        float value = 0;
        std::memcpy(&value, &narrow, sizeof value);
        return static_cast<double>(value);
    }
    double value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

void FloatRegNode::Store(double value, bool, Change& change)
{
    const int64_t length = CheckedLength();
    uint64_t bits = 0;
    if (length == 4) {
        // unverified values beyond the range become infinite
        const float narrow = value > FLT_MAX    ? std::numeric_limits<float>::infinity()
                             : value < -FLT_MAX ? -std::numeric_limits<float>::infinity()
                                                : static_cast<float>(value);
        uint32_t word = 0;
        std::memcpy(&word, &narrow, sizeof word);
        bits = word;
    } else {
        std::memcpy(&bits, &value, sizeof bits);
    }
    m_register.Write(Split(bits, static_cast<size_t>(length), m_register.IsBigEndian()), change);
    KeepWritten(value); // not what the narrower register makes of it
}

} // namespace KxGenApi
