// SPDX-License-Identifier: Apache-2.0
// Small node maps over a piece of memory.
#pragma once

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

/// A description with these nodes and a port "Device".
inline std::string Describe(const std::string& nodes)
{
    return R"(<?xml version="1.0" encoding="utf-8"?>
<RegisterDescription ModelName="Model" VendorName="Vendor" StandardNameSpace="None" SchemaMajorVersion="1"
 SchemaMinorVersion="1" SchemaSubMinorVersion="0" MajorVersion="1" MinorVersion="0" SubMinorVersion="0"
 ProductGuid="11111111-2222-3333-4444-555555555555" VersionGuid="66666666-7777-8888-9999-AAAAAAAAAAAA"
 xmlns="http://www.genicam.org/GenApi/Version_1_1">)" +
           nodes + "<Port Name=\"Device\"/></RegisterDescription>";
}

/// An unsigned integer register.
inline std::string IntReg(const std::string& name, int address, int length = 4,
                          const std::string& port = "Device", const std::string& endianess = "LittleEndian",
                          const std::string& access = "RW")
{
    return "<IntReg Name=\"" + name + "\"><Address>" + std::to_string(address) + "</Address><Length>" +
           std::to_string(length) + "</Length><AccessMode>" + access + "</AccessMode><pPort>" + port +
           "</pPort><Endianess>" + endianess + "</Endianess></IntReg>";
}

/// An enumeration over a register "<name>Reg" of 4 bytes, its entries numbered from 0.
inline std::string Enumeration(const std::string& name, int address, const std::vector<std::string>& entries,
                               const std::string& before = "", const std::string& behind = "")
{
    std::string xml = "<Enumeration Name=\"" + name + "\">" + before;
    for (size_t i = 0; i < entries.size(); ++i)
        xml += "<EnumEntry Name=\"" + entries[i] + "\"><Value>" + std::to_string(i) + "</Value></EnumEntry>";
    return xml + "<pValue>" + name + "Reg</pValue>" + behind + "</Enumeration>" +
           IntReg(name + "Reg", address);
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
    explicit CTestMap(const std::string& nodes)
    {
        map._LoadXMLFromString(Describe(nodes).c_str());
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
