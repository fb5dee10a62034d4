// SPDX-License-Identifier: Apache-2.0
// The registers of one port.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace KxProducer
{

enum class EByteOrder
{
    Little,
    Big
};

enum class EAccess
{
    RO,
    RW,
    WO
};

enum class ERegister
{
    Unsigned, // 4 bytes
    Signed,   // 8 bytes
    Real,     // 8 bytes
    Text,
    Raw
};

/// A register, or an array of them, one for each value of selectors.
struct CRegister
{
    std::string name;
    ERegister type = ERegister::Unsigned;
    EAccess access = EAccess::RW;
    size_t size = 4; // of an element
    size_t count = 1;
    uint64_t address = 0;
    double min = 0;
    double max = 0; // values are checked when it is not below min; limits that move are the owner's to check
    std::vector<int64_t> allowed; // the only values, when there are any
    bool isSetting = false;       // belongs to what a user set keeps
    std::vector<uint8_t> bytes;
    std::function<void(size_t index)> beforeRead;  // refreshes what isn't just stored
    std::function<void(size_t index)> beforeWrite; // may refuse
    std::function<void(size_t index)> afterWrite;
};

/// Registers with their addresses, values in the port's byte order, and what happens on access. No locks: the
/// port has one.
class CRegisterMap
{
public:
    static constexpr uint64_t kFirstAddress = 0x1000;

    explicit CRegisterMap(EByteOrder order)
        : m_order(order)
    {}

    EByteOrder GetByteOrder() const { return m_order; }

    /// Gives the register its address and memory.
    CRegister& Add(CRegister entry);
    CRegister& At(const std::string& name);
    bool Has(const std::string& name) const { return m_names.count(name) != 0; }

    /// Access from outside. Throw CError for what isn't there, isn't allowed or isn't valid.
    void Read(uint64_t address, void* data, size_t size);
    void Write(uint64_t address, const void* data, size_t size);

    /// Access from inside: no checks of access, no functions called.
    int64_t GetInteger(const std::string& name, size_t index = 0);
    double GetReal(const std::string& name, size_t index = 0);
    std::string GetText(const std::string& name, size_t index = 0);
    bool GetFlag(const std::string& name, size_t index = 0) { return GetInteger(name, index) != 0; }
    void SetInteger(const std::string& name, int64_t value, size_t index = 0);
    void SetReal(const std::string& name, double value, size_t index = 0);
    void SetText(const std::string& name, const std::string& value, size_t index = 0);

    /// Bytes of an integer in the port's order.
    void Encode(uint64_t value, uint8_t* data, size_t size) const;

    /// All of them, in the order of their addresses.
    std::deque<CRegister>& All() { return m_registers; }

private:
    CRegister& Find(uint64_t address, size_t size);
    uint8_t* Element(const std::string& name, size_t index, CRegister** found = nullptr);
    void CheckValue(const CRegister& entry, const uint8_t* element) const;
    uint64_t Decode(const uint8_t* data, size_t size) const;
    int64_t ToInteger(const CRegister& entry, const uint8_t* element) const;

    EByteOrder m_order;
    std::deque<CRegister> m_registers; // addresses of its members stay
    std::map<std::string, CRegister*> m_names;
    uint64_t m_nextAddress = kFirstAddress;
};

} // namespace KxProducer
