// SPDX-License-Identifier: Apache-2.0
#include "AccessDescription.h"

namespace Bench
{

namespace
{

constexpr char kHead[] =
    R"(<?xml version="1.0" encoding="utf-8"?>
<RegisterDescription ModelName="Access" VendorName="Benchmark" StandardNameSpace="None"
 SchemaMajorVersion="1" SchemaMinorVersion="1" SchemaSubMinorVersion="0" MajorVersion="1" MinorVersion="0" SubMinorVersion="0"
 ProductGuid="6A1E3C54-98D7-4F12-A0B6-3D5E7F901124" VersionGuid="6A1E3C54-98D7-4F12-A0B6-3D5E7F901125"
 xmlns="http://www.genicam.org/GenApi/Version_1_1">
  <Integer Name="Width">
    <pValue>WidthReg</pValue>
    <Min>0</Min>
    <Max>4096</Max>
  </Integer>
  <IntReg Name="WidthReg">
    <Address>0x100</Address>
    <Length>4</Length>
    <AccessMode>RW</AccessMode>
    <pPort>Device</pPort>
    <Cachable>WriteThrough</Cachable>
    <Sign>Unsigned</Sign>
    <Endianess>BigEndian</Endianess>
  </IntReg>
  <Float Name="ExposureTime">
    <pValue>ExposureTimeConverter</pValue>
    <Min>10</Min>
    <Max>1000000</Max>
  </Float>
  <Converter Name="ExposureTimeConverter">
    <FormulaTo>(FROM - 10) / 2</FormulaTo>
    <FormulaFrom>10 + TO * 2</FormulaFrom>
    <pValue>ExposureTimeReg</pValue>
    <Slope>Increasing</Slope>
  </Converter>
  <IntReg Name="ExposureTimeReg">
    <Address>0x120</Address>
    <Length>4</Length>
    <AccessMode>RW</AccessMode>
    <pPort>Device</pPort>
    <Cachable>WriteThrough</Cachable>
    <Sign>Unsigned</Sign>
    <Endianess>BigEndian</Endianess>
  </IntReg>
  <IntReg Name="SharedReg">
    <Address>0x130</Address>
    <Length>4</Length>
    <AccessMode>RW</AccessMode>
    <pPort>Device</pPort>
    <Cachable>WriteThrough</Cachable>
    <Sign>Unsigned</Sign>
    <Endianess>BigEndian</Endianess>
  </IntReg>
)";

} // namespace

const std::string& AccessDescription()
{
    static const std::string text = [] {
        std::string xml = kHead;
        for (int i = 0; i < kDependentCount; ++i)
            xml += "  <Integer Name=\"" + (kDependentFeature + std::to_string(i)) +
                   "\"><pValue>SharedReg</pValue></Integer>\n";
        return xml + "  <Port Name=\"Device\"/>\n</RegisterDescription>\n";
    }();
    return text;
}

} // namespace Bench
