// SPDX-License-Identifier: Apache-2.0
// The descriptions of fake producers' modules.
#pragma once

#include "Outline.h"

#include <string>

namespace KxTest
{

inline std::string RemoteDescription()
{
    return DescriptionAsXml(R"(
        Category Root { pFeature Width; pFeature Gain; pFeature AcquisitionStart }
        IntReg Width { at 0x100 4 RW; Little } IntReg Height { at 0x104 4 RW; Little }
        IntReg PixelFormat { at 0x108 4 RW; Little } IntReg PayloadSize { at 0x10C 4 RO; Little }
        IntReg TLParamsLocked { at 0x110 4 RW; Little } IntReg StartReg { at 0x114 4 RW; Little }
        IntReg StopReg { at 0x118 4 RW; Little } IntReg Gain { at 0x11C 4 RW; Little }
        Command AcquisitionStart { pValue StartReg; CommandValue 1 }
        Command AcquisitionStop { pValue StopReg; CommandValue 1 }
        IntReg EventExposureEndLine { Address 0; Length 4; AccessMode RO; pPort EventPort; Little }
        IntReg ChunkGain { Address 0; Length 4; AccessMode RO; pPort ChunkPort; Little }
        Port EventPort { EventID 9001 } Port ChunkPort { ChunkID c001 })");
}

/// Of the local device and of the stream.
inline std::string ModuleDescription(const std::string& port)
{
    return DescriptionAsXml("Category Root { pFeature EventCount } Port " + port + " { } " + R"(
        IntReg EventCount { Address 0; Length 4; AccessMode RO; pPort EventPort; Little }
        Port EventPort { EventID A1 })");
}

/// Of interfaces and systems.
inline std::string InterfaceDescription()
{
    return DescriptionAsXml(R"(
        Category Root { pFeature DeviceCount } Port FakePort { }
        IntReg DeviceCount { Address 8; Length 4; AccessMode RW; pPort FakePort; Little })");
}

} // namespace KxTest
