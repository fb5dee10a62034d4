// SPDX-License-Identifier: Apache-2.0

#include "Port.h"

#include <cstring>

namespace KxProducer
{

void CPort::Read(uint64_t address, void* data, size_t size)
{
    if (address < m_facts.fileAddress)
        ReadRegisters(address, data, size);
    else
        ReadFile(address - m_facts.fileAddress, data, size);
}

void CPort::ReadFile(uint64_t offset, void* data, size_t size) const
{
    const size_t there = FileSize();
    if (offset > there || size > there - offset)
        Fail(GenTL::GC_ERR_INVALID_ADDRESS, "The description of '%s' doesn't reach %zu bytes from byte %llu",
             m_facts.id.c_str(), size, static_cast<unsigned long long>(offset));
    std::memcpy(data, m_file.content.data() + offset, size);
}

void CPort::Write(uint64_t address, const void* data, size_t size)
{
    if (!CanWrite())
        Fail(GenTL::GC_ERR_ACCESS_DENIED, "'%s' is open for reading only", m_facts.id.c_str());
    if (address >= m_facts.fileAddress)
        Fail(GenTL::GC_ERR_ACCESS_DENIED, "The description of '%s' can't be written", m_facts.id.c_str());
    WriteRegisters(address, data, size);
}

CInfo CPort::GetInfo(GenTL::PORT_INFO_CMD command) const
{
    const bool isLittle = m_order == EByteOrder::Little;
    switch (command) {
    case GenTL::PORT_INFO_ID:
        return TextInfo(m_facts.id);
    case GenTL::PORT_INFO_VENDOR:
        return TextInfo(m_facts.vendor);
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
        return TextInfo(m_facts.version);
    case GenTL::PORT_INFO_PORTNAME:
        return TextInfo(m_facts.portName);
    default:
        FailUnknownInfo(command);
    }
}

std::string CPort::GetUrl() const
{
    return Format("local:%s;%llx;%zx?SchemaVersion=%d.%d.0", m_file.name.c_str(),
                  static_cast<unsigned long long>(m_facts.fileAddress), FileSize(), m_file.schemaMajor,
                  m_file.schemaMinor);
}

CInfo CPort::GetUrlInfo(GenTL::URL_INFO_CMD command) const
{
    switch (command) {
    case GenTL::URL_INFO_URL:
        return TextInfo(GetUrl());
    case GenTL::URL_INFO_SCHEMA_VER_MAJOR:
        return Int32Info(m_file.schemaMajor);
    case GenTL::URL_INFO_SCHEMA_VER_MINOR:
        return Int32Info(m_file.schemaMinor);
    case GenTL::URL_INFO_FILE_VER_MAJOR:
        return Int32Info(1);
    case GenTL::URL_INFO_FILE_VER_MINOR:
    case GenTL::URL_INFO_FILE_VER_SUBMINOR:
        return Int32Info(0);
    case GenTL::URL_INFO_FILE_REGISTER_ADDRESS:
        return UInt64Info(m_facts.fileAddress);
    case GenTL::URL_INFO_FILE_SIZE:
        return UInt64Info(FileSize());
    case GenTL::URL_INFO_SCHEME:
        return Int32Info(GenTL::URL_SCHEME_LOCAL);
    case GenTL::URL_INFO_FILENAME:
        return TextInfo(m_file.name);
    case GenTL::URL_INFO_FILE_SHA1_HASH:
        Fail(GenTL::GC_ERR_NOT_AVAILABLE, "There is no hash of '%s'", m_file.name.c_str());
    default:
        FailUnknownInfo(command);
    }
}

} // namespace KxProducer
