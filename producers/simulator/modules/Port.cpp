// SPDX-License-Identifier: Apache-2.0

#include "Port.h"

#include <cstring>

namespace KxSim
{
namespace
{

constexpr int kSchemaMajor = 1, kSchemaMinor = 1;

} // namespace

void CPort::Publish(const CFeatureList& features, const CDescriptionHead& head, bool isZipped)
{
    features.MakeRegisters(m_registers);
    const std::string text = WriteDescription(head, features, m_registers);
    const std::string stem = "Kestrix_" + head.model + "_1.0.0";
    m_file = isZipped ? Zip(stem + ".xml", text) : text;
    m_fileName = stem + (isZipped ? ".zip" : ".xml");
}

void CPort::SetTruncated(bool isTruncated)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_isTruncated = isTruncated;
}

bool CPort::IsTruncated() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_isTruncated;
}

void CPort::Read(uint64_t address, void* data, size_t size)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (check)
        check(address, false);
    if (address < kFileAddress)
        return m_registers.Read(address, data, size);
    const uint64_t offset = address - kFileAddress;
    if (offset > FileSize() || size > FileSize() - offset)
        Fail(GenTL::GC_ERR_INVALID_ADDRESS, "The description of '%s' doesn't reach %zu bytes from 0x%llx",
             m_facts.id.c_str(), size, static_cast<unsigned long long>(address));
    std::memcpy(data, m_file.data() + offset, size);
}

void CPort::Write(uint64_t address, const void* data, size_t size)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (check)
        check(address, true);
    if (!CanWrite())
        Fail(GenTL::GC_ERR_ACCESS_DENIED, "'%s' is open for reading only", m_facts.id.c_str());
    if (address >= kFileAddress)
        Fail(GenTL::GC_ERR_ACCESS_DENIED, "The description of '%s' can't be written", m_facts.id.c_str());
    m_registers.Write(address, data, size);
}

CInfo CPort::GetInfo(GenTL::PORT_INFO_CMD command) const
{
    const bool isLittle = m_registers.GetByteOrder() == EByteOrder::Little;
    switch (command) {
    case GenTL::PORT_INFO_ID:
        return TextInfo(m_facts.id);
    case GenTL::PORT_INFO_VENDOR:
        return TextInfo("Kestrix");
    case GenTL::PORT_INFO_MODEL:
        return TextInfo(m_facts.model);
    case GenTL::PORT_INFO_TLTYPE:
        return TextInfo(m_facts.tlType);
    case GenTL::PORT_INFO_MODULE:
        return TextInfo(m_facts.module);
    case GenTL::PORT_INFO_LITTLE_ENDIAN:
        return BoolInfo(isLittle);
    case GenTL::PORT_INFO_BIG_ENDIAN:
        return BoolInfo(!isLittle);
    case GenTL::PORT_INFO_ACCESS_READ:
        return BoolInfo(true);
    case GenTL::PORT_INFO_ACCESS_WRITE:
        return BoolInfo(CanWrite());
    case GenTL::PORT_INFO_ACCESS_NA:
    case GenTL::PORT_INFO_ACCESS_NI:
        return BoolInfo(false);
    case GenTL::PORT_INFO_VERSION:
        return TextInfo("1.0.0");
    case GenTL::PORT_INFO_PORTNAME:
        return TextInfo(m_facts.portName);
    default:
        FailUnknownInfo(command);
    }
}

std::string CPort::GetUrl() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return Format("local:%s;%llx;%zx?SchemaVersion=%d.%d.0", m_fileName.c_str(),
                  static_cast<unsigned long long>(kFileAddress), FileSize(), kSchemaMajor, kSchemaMinor);
}

CInfo CPort::GetUrlInfo(GenTL::URL_INFO_CMD command) const
{
    switch (command) {
    case GenTL::URL_INFO_URL:
        return TextInfo(GetUrl());
    case GenTL::URL_INFO_SCHEMA_VER_MAJOR:
        return Int32Info(kSchemaMajor);
    case GenTL::URL_INFO_SCHEMA_VER_MINOR:
        return Int32Info(kSchemaMinor);
    case GenTL::URL_INFO_FILE_VER_MAJOR:
        return Int32Info(1);
    case GenTL::URL_INFO_FILE_VER_MINOR:
    case GenTL::URL_INFO_FILE_VER_SUBMINOR:
        return Int32Info(0);
    case GenTL::URL_INFO_FILE_REGISTER_ADDRESS:
        return UInt64Info(kFileAddress);
    case GenTL::URL_INFO_FILE_SIZE: {
        const std::lock_guard<std::mutex> lock(m_mutex);
        return UInt64Info(FileSize());
    }
    case GenTL::URL_INFO_SCHEME:
        return Int32Info(GenTL::URL_SCHEME_LOCAL);
    case GenTL::URL_INFO_FILENAME:
        return TextInfo(m_fileName);
    case GenTL::URL_INFO_FILE_SHA1_HASH:
        Fail(GenTL::GC_ERR_NOT_AVAILABLE, "There is no hash of '%s'", m_fileName.c_str());
    default:
        FailUnknownInfo(command);
    }
}

} // namespace KxSim
