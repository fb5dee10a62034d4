// SPDX-License-Identifier: Apache-2.0
// Data that come with each image. Behind the image, and behind each chunk, stand its ID and its length.

#include "Camera.h"
#include "Features.h"
#include "common/modules/Stream.h"

#include <array>
#include <cstring>

namespace KxSim
{
namespace
{

constexpr uint32_t kImageId = 1;

enum class EChunkValue
{
    FrameID,
    Timestamp,
    ExposureTime,
    Gain,
    Width,
    Height,
    OffsetX,
    OffsetY,
    PixelFormat
};

/// In the order of EChunkValue, which is that of ChunkSelector.
struct CChunkRow
{
    const char *name, *toolTip, *unit;
    bool isReal;
    size_t size;

    uint32_t Id(size_t index) const { return 0x1000 + static_cast<uint32_t>(index); }
};

constexpr std::array<CChunkRow, 9> kChunks = {{{"FrameID", "Number of the image", "", false, 8},
                                               {"Timestamp", "When the image was taken", "ns", false, 8},
                                               {"ExposureTime", "Exposure of the image", "us", true, 8},
                                               {"Gain", "Gain of the image", "dB", true, 8},
                                               {"Width", "Width of the image", "px", false, 4},
                                               {"Height", "Height of the image", "px", false, 4},
                                               {"OffsetX", "Left edge on the sensor", "px", false, 4},
                                               {"OffsetY", "Upper edge on the sensor", "px", false, 4},
                                               {"PixelFormat", "Format of the image", "", false, 4}}};

/// Nodes of a chunk: feature, register and port.
std::string ChunkXml(const CChunkRow& row, size_t index, const CCameraModel& model)
{
    const std::string name = std::string("Chunk") + row.name;
    const bool isFormat = index == static_cast<size_t>(EChunkValue::PixelFormat);
    const char* const kind = isFormat ? "Enumeration" : row.isReal ? "Float" : "Integer";
    std::string xml =
        Format("<%s Name=\"%s\" NameSpace=\"Standard\"><ToolTip>%s, as it came with it</ToolTip>"
               "<Visibility>Expert</Visibility>",
               kind, name.c_str(), row.toolTip);
    for (const char* format : isFormat ? model.formats : std::vector<const char*>()) {
        const CPixelFormat& entry = FormatOfName(format);
        xml += Format("<EnumEntry Name=\"%s\" NameSpace=\"%s\"><Value>%u</Value></EnumEntry>", format,
                      entry.isStandard ? "Standard" : "Custom", entry.code);
    }
    xml += "<pValue>" + name + "Reg</pValue>";
    if (*row.unit)
        xml += Format("<Unit>%s</Unit>", row.unit);
    xml += Format("</%s>\n", kind);
    const char* const element = row.isReal ? "FloatReg" : "IntReg";
    xml += Format("<%s Name=\"%sReg\"><Address>0</Address><Length>%zu</Length><AccessMode>RO</AccessMode>"
                  "<pPort>%sPort</pPort><Cachable>NoCache</Cachable>%s<Endianess>$ORDER</Endianess></%s>\n",
                  element, name.c_str(), row.size, name.c_str(), row.isReal ? "" : "<Sign>Unsigned</Sign>",
                  element);
    return xml +
           Format("<Port Name=\"%sPort\"><Visibility>Invisible</Visibility><ChunkID>%08X</ChunkID></Port>\n",
                  name.c_str(), row.Id(index));
}

void DescribeChunk(const CCameraModel& model, CFeatureList& list)
{
    list.Category("ChunkDataControl", "Data that come with each image");
    list.Add(Boolean("ChunkModeActive", "Whether data come with the images")
                 .Expert()
                 .LockedIf("(TLParamsLocked = 1)"));
    std::vector<CEntry> entries;
    for (size_t i = 0; i < kChunks.size(); ++i)
        entries.push_back({kChunks[i].name, static_cast<int64_t>(i), kChunks[i].toolTip});
    list.Add(Enumeration("ChunkSelector", "Which data ChunkEnable is about").Expert().Entries(entries));
    list.Add(Boolean("ChunkEnable", "Whether the selected data come with the images")
                 .Expert()
                 .Default(1)
                 .SelectedBy({"ChunkSelector"})
                 .LockedIf("(TLParamsLocked = 1)"));
    for (size_t i = 0; i < kChunks.size(); ++i)
        list.Raw(ChunkXml(kChunks[i], i, model), {std::string("Chunk") + kChunks[i].name});
}

void BindChunk(CCamera& camera)
{
    for (const char* name : {"ChunkModeActiveReg", "ChunkEnableReg"})
        camera.Registers().At(name).beforeWrite = [&](size_t) { camera.RefuseWhileAcquiring(); };
}

/// Bits of a chunk's value.
uint64_t ValueOf(EChunkValue value, const CFrameSettings& settings, const CFrameInfo& info)
{
    const auto bits = [](double real) {
        uint64_t result = 0;
        std::memcpy(&result, &real, sizeof result);
        return result;
    };
    switch (value) {
    case EChunkValue::FrameID:
        return info.frameId;
    case EChunkValue::Timestamp:
        return info.timestampNs;
    case EChunkValue::ExposureTime:
        return bits(settings.exposureUs);
    case EChunkValue::Gain:
        return bits(settings.gainDb);
    case EChunkValue::Width:
        return info.width;
    case EChunkValue::Height:
        return info.height;
    case EChunkValue::OffsetX:
        return info.offsetX;
    case EChunkValue::OffsetY:
        return info.offsetY;
    default:
        return info.pixelFormat;
    }
}

} // namespace

const CFeatureGroup kChunkFeatures = {DescribeChunk, BindChunk};

std::string CCamera::ChunkTail(const CFrameSettings& settings, size_t imageSize, CFrameInfo& info)
{
    CRegisterMap& map = Registers();
    std::string tail;
    if (!map.GetFlag("ChunkModeActiveReg"))
        return tail;
    const auto put = [&](uint64_t value, size_t size) {
        uint8_t bytes[sizeof value];
        map.Encode(value, bytes, size);
        tail.append(reinterpret_cast<const char*>(bytes), size);
    };
    const auto close = [&](uint32_t id, size_t offset, size_t length) {
        info.chunks.push_back({id, static_cast<ptrdiff_t>(offset), length});
        put(id, 4);
        put(length, 4);
    };
    close(kImageId, 0, imageSize);
    info.chunkLayout = 1;
    for (size_t i = 0; i < kChunks.size(); ++i) {
        if (!map.GetFlag("ChunkEnableReg", i))
            continue;
        const size_t offset = imageSize + tail.size();
        put(ValueOf(static_cast<EChunkValue>(i), settings, info), kChunks[i].size);
        close(kChunks[i].Id(i), offset, kChunks[i].size);
        info.chunkLayout |= uint64_t{2} << i;
    }
    info.chunkSize = tail.size();
    return tail;
}

size_t CCamera::MaxChunks() { return kChunks.size() + 1; }

} // namespace KxSim
