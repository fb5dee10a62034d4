// SPDX-License-Identifier: Apache-2.0
// The descriptions of fake producers' modules.
#pragma once

#include <string>

namespace KxTest
{

inline std::string IntReg(const std::string& name, const std::string& address, const std::string& port,
                          const std::string& access = "RW")
{
    return "<IntReg Name=\"" + name + "\"><Address>" + address + "</Address><Length>4</Length><AccessMode>" +
           access + "</AccessMode><pPort>" + port +
           "</pPort><Sign>Unsigned</Sign><Endianess>LittleEndian</Endianess></IntReg>\n";
}

inline std::string Description(const std::string& nodes)
{
    return R"(<?xml version="1.0" encoding="utf-8"?>
<RegisterDescription ModelName="Fake" VendorName="Fake" StandardNameSpace="None" SchemaMajorVersion="1"
    SchemaMinorVersion="1" SchemaSubMinorVersion="0" MajorVersion="1" MinorVersion="0" SubMinorVersion="0" ToolTip=""
    ProductGuid="00000000-0000-0000-0000-000000000001" VersionGuid="00000000-0000-0000-0000-000000000002"
    xmlns="http://www.genicam.org/GenApi/Version_1_1">
)" + nodes +
           "</RegisterDescription>\n";
}

inline std::string RemoteDescription()
{
    return Description(
        "<Category Name=\"Root\"><pFeature>Width</pFeature><pFeature>Gain</pFeature>"
        "<pFeature>AcquisitionStart</pFeature></Category>\n" +
        IntReg("Width", "0x100", "Device") + IntReg("Height", "0x104", "Device") +
        IntReg("PixelFormat", "0x108", "Device") + IntReg("PayloadSize", "0x10C", "Device", "RO") +
        IntReg("TLParamsLocked", "0x110", "Device") + IntReg("StartReg", "0x114", "Device") +
        IntReg("StopReg", "0x118", "Device") + IntReg("Gain", "0x11C", "Device") +
        "<Command "
        "Name=\"AcquisitionStart\"><pValue>StartReg</pValue><CommandValue>1</CommandValue></Command>\n"
        "<Command "
        "Name=\"AcquisitionStop\"><pValue>StopReg</pValue><CommandValue>1</CommandValue></Command>\n" +
        IntReg("EventExposureEndLine", "0", "EventPort", "RO") + IntReg("ChunkGain", "0", "ChunkPort", "RO") +
        "<Port Name=\"Device\"></Port>\n"
        "<Port Name=\"EventPort\"><EventID>9001</EventID></Port>\n"
        "<Port Name=\"ChunkPort\"><ChunkID>c001</ChunkID></Port>\n");
}

/// Of the local device and of the stream.
inline std::string ModuleDescription(const std::string& port)
{
    return Description("<Category Name=\"Root\"><pFeature>EventCount</pFeature></Category>\n" +
                       IntReg("EventCount", "0", "EventPort", "RO") + "<Port Name=\"" + port +
                       "\"></Port>\n<Port Name=\"EventPort\"><EventID>A1</EventID></Port>\n");
}

} // namespace KxTest
