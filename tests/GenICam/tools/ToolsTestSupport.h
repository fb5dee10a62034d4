// SPDX-License-Identifier: Apache-2.0
// Small node maps over a piece of memory.
#pragma once

#include "Outline.h"

#include <GenApi/GenApi.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <string>
#include <vector>

namespace KxGenApiTest
{

/// An unsigned integer register in the short notation.
inline std::string IntReg(const std::string& name, int address, int length = 4,
                          const std::string& port = "Device", const std::string& order = "Little",
                          const std::string& access = "RW")
{
    return "IntReg " + name + " { Address " + std::to_string(address) + "; Length " + std::to_string(length) +
           "; AccessMode " + access + "; pPort " + port + "; " + order + " } ";
}

/// Memory of 256 bytes.
class CMemoryPort : public GenApi::CPortImpl
{
public:
    GenApi::EAccessMode GetAccessMode() const override { return GenApi::RW; }
    void Read(void* pBuffer, int64_t Address, int64_t Length) override
    {
        std::memcpy(pBuffer, At(Address, Length), static_cast<size_t>(Length));
    }
    void Write(const void* pBuffer, int64_t Address, int64_t Length) override
    {
        std::memcpy(At(Address, Length), pBuffer, static_cast<size_t>(Length));
    }

    /// A little-endian register.
    uint32_t& Word(size_t address)
    {
        return *reinterpret_cast<uint32_t*>(At(static_cast<int64_t>(address), 4));
    }

private:
    uint8_t* At(int64_t address, int64_t length)
    {
        if (address < 0 || length < 0 || address + length > static_cast<int64_t>(m_memory.size()))
            throw OUT_OF_RANGE_EXCEPTION("memory ends at %zu", m_memory.size());
        return m_memory.data() + address;
    }

    alignas(8) std::array<uint8_t, 256> m_memory{};
};

/// A node map over its own memory.
class CTestMap
{
public:
    explicit CTestMap(const std::string& outline)
    {
        map._LoadXMLFromString(KxTest::DescriptionAsXml(outline).c_str());
        map._Connect(&memory, "Device");
    }
    CTestMap(const CTestMap&) = delete;
    CTestMap& operator=(const CTestMap&) = delete;

    operator GenApi::INodeMap*() const { return map._Ptr; }
    GenApi::INode* operator[](const char* name) const { return map._GetNode(name); }
    int64_t Int(const char* name) const { return GenApi::CIntegerPtr(map._GetNode(name))->GetValue(); }
    void SetInt(const char* name, int64_t value) const
    {
        GenApi::CIntegerPtr(map._GetNode(name))->SetValue(value);
    }
    std::string Text(const char* name) const
    {
        return GenApi::CValuePtr(map._GetNode(name))->ToString().c_str();
    }
    void SetText(const char* name, const char* value) const
    {
        GenApi::CValuePtr(map._GetNode(name))->FromString(value);
    }

    CMemoryPort memory; // outlives the map
    GenApi::CNodeMapRef map;
};

/// Description of the exception of class E that a call raises; "nothing thrown" otherwise.
template <class E, class Function>
std::string RaisedBy(Function function)
{
    try {
        function();
    } catch (const E& e) {
        return e.GetDescription();
    }
    return "nothing thrown";
}

} // namespace KxGenApiTest
