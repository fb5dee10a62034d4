// SPDX-License-Identifier: Apache-2.0
#include "LargeDescription.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace Bench
{

namespace
{

// Of those that kModule makes, with the entries of enumerations and the helpers of converters.
constexpr size_t kNodesPerModule = 35;

constexpr char kHead[] =
    R"(<?xml version="1.0" encoding="utf-8"?>
<RegisterDescription ModelName="Generated" VendorName="Benchmark" ToolTip="As large as a camera" StandardNameSpace="None"
 SchemaMajorVersion="1" SchemaMinorVersion="1" SchemaSubMinorVersion="0" MajorVersion="1" MinorVersion="0" SubMinorVersion="0"
 ProductGuid="6A1E3C54-98D7-4F12-A0B6-3D5E7F901122" VersionGuid="6A1E3C54-98D7-4F12-A0B6-3D5E7F901123"
 xmlns="http://www.genicam.org/GenApi/Version_1_1">
)";

constexpr char kTail[] = "<Port Name=\"Device\"/>\n</RegisterDescription>\n";

// One module of a camera; Expand tells what the signs in it stand for.
constexpr char kModule[] = R"(
  <Category Name="Module@Control" NameSpace="Custom">
    <ToolTip>All that belongs to module @ of the camera</ToolTip>
    <Description>This category holds the features of module @: its size, its mode, its gain, and what switches it.~</Description>
    <DisplayName>Module @ Control</DisplayName>
    <pIsImplemented>Module@Present</pIsImplemented>
    <pFeature>Module@Mode</pFeature>
    <pFeature>Module@Size</pFeature>
    <pFeature>Module@Offset</pFeature>
    <pFeature>Module@Gain</pFeature>
    <pFeature>Module@Enable</pFeature>
    <pFeature>Module@Start</pFeature>
    <pFeature>Module@Steps</pFeature>
    <pFeature>Module@UserId</pFeature>
  </Category>
  <Enumeration Name="Module@Mode" NameSpace="Custom">
    <ToolTip>Chooses how module @ works</ToolTip>
    <Description>This enumeration chooses how module @ works. Size and offset of the module depend on it.~</Description>
    <DisplayName>Module @ Mode</DisplayName>
    <Visibility>Expert</Visibility>
    <pIsImplemented>Module@Present</pIsImplemented>
    <pIsAvailable>Module@Available</pIsAvailable>
    <pIsLocked>Module@Busy</pIsLocked>
    <Streamable>Yes</Streamable>
    <EnumEntry Name="Off" NameSpace="Custom">
      <ToolTip>Module @ rests</ToolTip>
      <DisplayName>Off</DisplayName>
      <Value>0</Value>
    </EnumEntry>
    <EnumEntry Name="Single" NameSpace="Custom">
      <ToolTip>Module @ works once</ToolTip>
      <DisplayName>Single</DisplayName>
      <Value>1</Value>
    </EnumEntry>
    <EnumEntry Name="Continuous" NameSpace="Custom">
      <ToolTip>Module @ works on and on</ToolTip>
      <DisplayName>Continuous</DisplayName>
      <pIsImplemented>Module@HasContinuous</pIsImplemented>
      <Value>2</Value>
    </EnumEntry>
    <EnumEntry Name="Triggered" NameSpace="Custom">
      <ToolTip>Module @ works when it is triggered</ToolTip>
      <DisplayName>Triggered</DisplayName>
      <Value>3</Value>
    </EnumEntry>
    <pValue>Module@ModeReg</pValue>
    <pSelected>Module@Gain</pSelected>
  </Enumeration>
  <IntReg Name="Module@ModeReg" NameSpace="Custom">
    <pAddress>Module@Base</pAddress>
    <Address>0x00</Address>
    <Length>4</Length>
    <AccessMode>RW</AccessMode>
    <pPort>Device</pPort>
    <pInvalidator>Module@StartReg</pInvalidator>
    <Sign>Unsigned</Sign>
    <Endianess>BigEndian</Endianess>
  </IntReg>
  <Integer Name="Module@Base" NameSpace="Custom">
    <Value>$</Value>
  </Integer>
  <Integer Name="Module@Size" NameSpace="Custom">
    <ToolTip>Size of what module @ works on, in pixels</ToolTip>
    <Description>This integer sets the size of what module @ works on. It grows in steps that the mode asks for.~</Description>
    <DisplayName>Module @ Size</DisplayName>
    <Visibility>Beginner</Visibility>
    <pIsImplemented>Module@Present</pIsImplemented>
    <pIsAvailable>Module@Available</pIsAvailable>
    <pIsLocked>Module@Busy</pIsLocked>
    <Streamable>Yes</Streamable>
    <pValue>Module@SizeReg</pValue>
    <pMin>Module@SizeMin</pMin>
    <pMax>Module@SizeMax</pMax>
    <pInc>Module@SizeInc</pInc>
    <Unit>px</Unit>
    <Representation>Linear</Representation>
  </Integer>
  <IntReg Name="Module@SizeReg" NameSpace="Custom">
    <pAddress>Module@Base</pAddress>
    <Address>0x04</Address>
    <Length>4</Length>
    <AccessMode>RW</AccessMode>
    <pPort>Device</pPort>
    <pInvalidator>Module@ModeReg</pInvalidator>
    <pInvalidator>Module@StartReg</pInvalidator>
    <Sign>Unsigned</Sign>
    <Endianess>BigEndian</Endianess>
  </IntReg>
  <MaskedIntReg Name="Module@SizeMin" NameSpace="Custom">
    <pAddress>Module@Base</pAddress>
    <Address>0x08</Address>
    <Length>4</Length>
    <AccessMode>RO</AccessMode>
    <pPort>Device</pPort>
%    <LSB>15</LSB>
    <MSB>0</MSB>
    <Sign>Unsigned</Sign>
    <Endianess>BigEndian</Endianess>
  </MaskedIntReg>
  <IntSwissKnife Name="Module@SizeMax" NameSpace="Custom">
%    <pVariable Name="LIMIT">Module@LimitReg</pVariable>
    <pVariable Name="OFFSET">Module@OffsetReg</pVariable>
    <pVariable Name="MODE">Module@ModeReg</pVariable>
    <Formula>(MODE = 3) ? (LIMIT - OFFSET) / 2 : LIMIT - OFFSET</Formula>
  </IntSwissKnife>
  <MaskedIntReg Name="Module@SizeInc" NameSpace="Custom">
    <pAddress>Module@Base</pAddress>
    <Address>0x08</Address>
    <Length>4</Length>
    <AccessMode>RO</AccessMode>
    <pPort>Device</pPort>
%    <LSB>31</LSB>
    <MSB>16</MSB>
    <Sign>Unsigned</Sign>
    <Endianess>BigEndian</Endianess>
  </MaskedIntReg>
  <IntReg Name="Module@LimitReg" NameSpace="Custom">
    <pAddress>Module@Base</pAddress>
    <Address>0x0C</Address>
    <Length>4</Length>
    <AccessMode>RO</AccessMode>
    <pPort>Device</pPort>
%    <Sign>Unsigned</Sign>
    <Endianess>BigEndian</Endianess>
  </IntReg>
  <IntConverter Name="Module@Offset" NameSpace="Custom">
    <ToolTip>Offset of what module @ works on, in pixels</ToolTip>
    <Description>This integer sets where module @ begins to work. The register counts in steps of the size's increment.~</Description>
    <DisplayName>Module @ Offset</DisplayName>
    <pIsImplemented>Module@Present</pIsImplemented>
    <pIsAvailable>Module@Available</pIsAvailable>
    <pInvalidator>Module@ModeReg</pInvalidator>
    <pVariable Name="STEP">Module@StepSize</pVariable>
    <FormulaTo>FROM / STEP</FormulaTo>
    <FormulaFrom>TO * STEP</FormulaFrom>
    <pValue>Module@OffsetReg</pValue>
    <Slope>Increasing</Slope>
  </IntConverter>
  <Integer Name="Module@StepSize" NameSpace="Custom">
    <Value>8</Value>
  </Integer>
  <IntReg Name="Module@OffsetReg" NameSpace="Custom">
    <pAddress>Module@Base</pAddress>
    <Address>0x10</Address>
    <Length>4</Length>
    <AccessMode>RW</AccessMode>
    <pPort>Device</pPort>
    <pInvalidator>Module@ModeReg</pInvalidator>
    <pInvalidator>Module@SizeReg</pInvalidator>
    <Sign>Unsigned</Sign>
    <Endianess>BigEndian</Endianess>
  </IntReg>
  <Float Name="Module@Gain" NameSpace="Custom">
    <ToolTip>Gain of module @, in decibels</ToolTip>
    <Description>This float sets the gain that module @ works with. Each mode has a gain of its own.~</Description>
    <DisplayName>Module @ Gain</DisplayName>
    <pIsImplemented>Module@Present</pIsImplemented>
    <pIsLocked>Module@Busy</pIsLocked>
    <Streamable>Yes</Streamable>
    <pValue>Module@GainReg</pValue>
    <Min>0</Min>
    <Max>24.5</Max>
    <Unit>dB</Unit>
    <DisplayNotation>Fixed</DisplayNotation>
    <DisplayPrecision>2</DisplayPrecision>
  </Float>
  <FloatReg Name="Module@GainReg" NameSpace="Custom">
    <pAddress>Module@Base</pAddress>
    <Address>0x20</Address>
    <pIndex Offset="4">Module@ModeReg</pIndex>
    <Length>4</Length>
    <AccessMode>RW</AccessMode>
    <pPort>Device</pPort>
    <pInvalidator>Module@StartReg</pInvalidator>
    <Endianess>BigEndian</Endianess>
  </FloatReg>
  <Boolean Name="Module@Enable" NameSpace="Custom">
    <ToolTip>Switches module @</ToolTip>
    <Description>This boolean switches module @ on and off without losing what was set.~</Description>
    <DisplayName>Module @ Enable</DisplayName>
    <pIsImplemented>Module@Present</pIsImplemented>
    <pValue>Module@EnableBit</pValue>
  </Boolean>
  <MaskedIntReg Name="Module@EnableBit" NameSpace="Custom">
    <pAddress>Module@Base</pAddress>
    <Address>0x14</Address>
    <Length>4</Length>
    <AccessMode>RW</AccessMode>
    <pPort>Device</pPort>
    <pInvalidator>Module@StartReg</pInvalidator>
    <Bit>31</Bit>
    <Sign>Unsigned</Sign>
    <Endianess>BigEndian</Endianess>
  </MaskedIntReg>
  <MaskedIntReg Name="Module@PresentBit" NameSpace="Custom">
    <pAddress>Module@Base</pAddress>
    <Address>0x18</Address>
    <Length>4</Length>
    <AccessMode>RO</AccessMode>
    <pPort>Device</pPort>
%    <Bit>30</Bit>
    <Sign>Unsigned</Sign>
    <Endianess>BigEndian</Endianess>
  </MaskedIntReg>
  <IntSwissKnife Name="Module@Present" NameSpace="Custom">
%    <pVariable Name="ABSENT">Module@PresentBit</pVariable>
    <Formula>(ABSENT = 0) ? 1 : 0</Formula>
  </IntSwissKnife>
  <MaskedIntReg Name="Module@ContinuousBit" NameSpace="Custom">
    <pAddress>Module@Base</pAddress>
    <Address>0x18</Address>
    <Length>4</Length>
    <AccessMode>RO</AccessMode>
    <pPort>Device</pPort>
%    <Bit>29</Bit>
    <Sign>Unsigned</Sign>
    <Endianess>BigEndian</Endianess>
  </MaskedIntReg>
  <IntSwissKnife Name="Module@HasContinuous" NameSpace="Custom">
%    <pVariable Name="BIT">Module@ContinuousBit</pVariable>
    <pVariable Name="PRESENT">Module@Present</pVariable>
    <Formula>(PRESENT = 1) &amp;&amp; (BIT = 0)</Formula>
  </IntSwissKnife>
  <MaskedIntReg Name="Module@BusyBit" NameSpace="Custom">
    <pAddress>Module@Base</pAddress>
    <Address>0x18</Address>
    <Length>4</Length>
    <AccessMode>RO</AccessMode>
    <pPort>Device</pPort>
    <PollingTime>500</PollingTime>
%    <Bit>28</Bit>
    <Sign>Unsigned</Sign>
    <Endianess>BigEndian</Endianess>
  </MaskedIntReg>
  <IntSwissKnife Name="Module@Busy" NameSpace="Custom">
    <pInvalidator>Module@StartReg</pInvalidator>
    <pVariable Name="BUSY">Module@BusyBit</pVariable>
    <pVariable Name="MODE">Module@ModeReg</pVariable>
    <Formula>(BUSY = 1) &amp;&amp; (MODE &lt;&gt; 0)</Formula>
  </IntSwissKnife>
  <IntSwissKnife Name="Module@Available" NameSpace="Custom">
%    <pVariable Name="PRESENT">Module@Present</pVariable>
    <pVariable Name="ENABLE">Module@EnableBit</pVariable>
    <Formula>(PRESENT = 1) &amp;&amp; ((ENABLE = 0) || (ENABLE = 1))</Formula>
  </IntSwissKnife>
  <Command Name="Module@Start" NameSpace="Custom">
    <ToolTip>Starts module @</ToolTip>
    <Description>This command starts module @ with what was set. It is done as soon as the module works.~</Description>
    <DisplayName>Module @ Start</DisplayName>
    <pIsImplemented>Module@Present</pIsImplemented>
    <pValue>Module@StartReg</pValue>
    <CommandValue>1</CommandValue>
  </Command>
  <IntReg Name="Module@StartReg" NameSpace="Custom">
    <pAddress>Module@Base</pAddress>
    <Address>0x1C</Address>
    <Length>4</Length>
    <AccessMode>RW</AccessMode>
    <pPort>Device</pPort>
    <Cachable>NoCache</Cachable>
    <Sign>Unsigned</Sign>
    <Endianess>BigEndian</Endianess>
  </IntReg>
  <IntReg Name="Module@Steps" NameSpace="Custom">
    <ToolTip>Steps that module @ has done</ToolTip>
    <Description>This integer tells how many steps module @ has done since it was started.~</Description>
    <DisplayName>Module @ Steps</DisplayName>
    <Visibility>Guru</Visibility>
    <Address>$</Address>
    <IntSwissKnife Name="Module@StepsAddress">
      <pVariable Name="MODE">Module@ModeReg</pVariable>
      <Formula>0x40 + MODE * 4</Formula>
    </IntSwissKnife>
    <Length>4</Length>
    <AccessMode>RO</AccessMode>
    <pPort>Device</pPort>
    <pInvalidator>Module@StartReg</pInvalidator>
    <Sign>Unsigned</Sign>
    <Endianess>BigEndian</Endianess>
  </IntReg>
  <StringReg Name="Module@UserId" NameSpace="Custom">
    <ToolTip>Name of module @</ToolTip>
    <DisplayName>Module @ User Id</DisplayName>
    <pIsImplemented>Module@Present</pIsImplemented>
    <pAddress>Module@Base</pAddress>
    <Address>0x60</Address>
    <Length>32</Length>
    <AccessMode>RW</AccessMode>
    <pPort>Device</pPort>
  </StringReg>
)";

// A value that changes with the settings names what it changes with: most of a camera's nodes do.
constexpr char kInvalidators[] = R"(    <pInvalidator>Module@ModeReg</pInvalidator>
    <pInvalidator>Module@SizeReg</pInvalidator>
    <pInvalidator>Module@EnableBit</pInvalidator>
    <pInvalidator>Module@StartReg</pInvalidator>
)";

constexpr char kAdvice[] =
    " Set it while the camera takes no images, or the change will be seen with the next image only. What "
    "was set last is kept when the camera is switched off, if it was saved to a user set before; "
    "see the chapter about module @ in the manual.";

void Expand(std::string& text, const char* pattern, const std::string& number, const std::string& address)
{
    for (const char* c = pattern; *c != '\0'; ++c) {
        switch (*c) {
        case '@':
            text += number;
            break;
        case '$':
            text += address; // where the module's registers begin
            break;
        case '%':
            Expand(text, kInvalidators, number, address);
            break;
        case '~':
            Expand(text, kAdvice, number, address);
            break;
        default:
            text += *c;
        }
    }
}

} // namespace

std::string GenerateDescription(size_t nodes)
{
    const size_t modules = nodes / kNodesPerModule;
    std::string text = kHead;
    text += "<Category Name=\"Root\" NameSpace=\"Standard\">\n";
    for (size_t i = 0; i < modules; ++i)
        text += "  <pFeature>Module" + std::to_string(i) + "Control</pFeature>\n";
    text += "</Category>\n";
    for (size_t i = 0; i < modules; ++i)
        Expand(text, kModule, std::to_string(i), std::to_string(0x1000 + i * 0x100));
    return text + kTail;
}

const std::string& LargeDescription()
{
    static const std::string content = [] {
        const char* const name = std::getenv("KXAPI_BENCH_XML");
        if (name == nullptr || *name == '\0')
            return GenerateDescription(2428);
        std::ifstream file(name, std::ios::binary);
        if (!file)
            throw std::runtime_error(std::string("KXAPI_BENCH_XML: cannot open ") + name);
        return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    }();
    return content;
}

} // namespace Bench
