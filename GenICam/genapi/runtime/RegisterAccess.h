// SPDX-License-Identifier: Apache-2.0
// The bytes behind a register node: where they are, how they are cached, reading and writing them.
#pragma once

#include "runtime/NumberLink.h"

#include <optional>
#include <vector>

namespace KxGenApi
{

class PortNode;

/// Part of every register node.
class RegisterAccess
{
public:
    /// No register is longer than this; more is an error of the description or of what it was computed from.
    static constexpr int64_t kMaxLength = int64_t{1} << 28;

    /// @param defaultCaching the mode where the description gives none
    RegisterAccess(Node& owner, ECachingMode defaultCaching);

    int64_t Address(ReadOptions options = ReadOptions());
    /// As the description tells, be it sensible or not.
    int64_t Length() const { return m_length.Integer(m_owner); }
    /// The same for reading and writing; RuntimeException if it is negative or above kMaxLength.
    int64_t CheckedLength() const;
    EAccessMode AccessMode() const;
    ECachingMode CachingMode() const;
    bool IsBigEndian() const;
    /// Whether the description says that it is read-only.
    bool RefusesWrites() const { return !IsWritable(m_accessMode); }

    /// All bytes; valid until the next call for any register of this port.
    const std::vector<uint8_t>& Read(ReadOptions options) { return Read(CheckedLength(), options); }
    /// At least the first `count` bytes, which are not more than the register has. The device is asked for no
    /// more than these, and a part is not kept.
    const std::vector<uint8_t>& Read(int64_t count, ReadOptions options);
    /// Writes the first bytes, at most all.
    void Write(std::vector<uint8_t> bytes, Change& change);
    /// Forgets the shared bytes, whoever read them.
    void Forget();
    /// The same for a register that is no object yet.
    static void ForgetBytesOf(const NodeMap& map, NodeIndex index);

private:
    struct AddressTerm
    {
        NumberLink link; // a literal address, or the node that gives it or its index
        bool isIndex = false;
    };

    PortNode& Port() const;
    int64_t IndexFactor(const Property& property) const;

    Node& m_owner;
    const ECachingMode m_defaultCaching;
    std::vector<AddressTerm> m_terms;
    NumberLink m_length;
    Link m_port;
    mutable PortNode* m_portNode = nullptr;
    EAccessMode m_accessMode = RW;
    const Property* m_cachable = nullptr;
    bool m_bigEndian = false;
    int64_t m_address = 0;
    bool m_addressKnown = false;
    struct Place
    {
        int64_t address, length;
    };
    /// Where the register lies, if the description says so by itself.
    static std::optional<Place> FixedPlace(Range<Property> properties);

    std::optional<Place> m_place;    // where it lay when it was last asked, which is where bytes may be kept
    std::vector<uint8_t> m_uncached; // what Read gives out when nothing is cached
};

} // namespace KxGenApi
