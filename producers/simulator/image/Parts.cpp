// SPDX-License-Identifier: Apache-2.0

#include "Parts.h"

#include "image/Surface.h"

#include <algorithm>
#include <cstring>

namespace KxSim
{
namespace
{

using KxProducer::CPartInfo;

struct CPartRow
{
    EComponent component;
    uint32_t format;
    GenTL::PARTDATATYPE_ID dataType;
};
constexpr CPartRow kPartRows[] = {
    {EComponent::Range, 0x011000B8, GenTL::PART_DATATYPE_3D_IMAGE},           // Coord3D_C16
    {EComponent::Intensity, 0x01080001, GenTL::PART_DATATYPE_2D_IMAGE},       // Mono8
    {EComponent::Confidence, 0x010800C6, GenTL::PART_DATATYPE_CONFIDENCE_MAP} // Confidence8
};

size_t BytesPerPixel(const CPartInfo& part) { return (part.pixelFormat >> 16 & 0xFF) / 8; }

CPartInfo Part(const CFrameSettings& settings, uint32_t format, size_t offset)
{
    CPartInfo part;
    part.pixelFormat = format;
    part.offset = offset;
    part.width = static_cast<size_t>(settings.width);
    part.height = part.deliveredHeight = static_cast<size_t>(settings.height);
    part.offsetX = static_cast<size_t>(settings.offsetX);
    part.offsetY = static_cast<size_t>(settings.offsetY);
    part.size = part.width * part.height * BytesPerPixel(part);
    return part;
}

/// Copies a line of a part as far as the memory reaches.
void CopyLine(const void* from, size_t at, size_t bytes, uint8_t* memory, size_t size)
{
    if (at < size)
        std::memcpy(memory + at, from, std::min(bytes, size - at));
}

void FillMiddle(const CPartInfo& whole, const CPartInfo& middle, uint8_t* memory, size_t size)
{
    const size_t pixel = BytesPerPixel(whole);
    for (size_t y = 0; y < middle.height; ++y) {
        const size_t from =
            ((y + middle.offsetY - whole.offsetY) * whole.width + middle.offsetX - whole.offsetX) * pixel;
        CopyLine(memory + from, middle.offset + y * middle.width * pixel, middle.width * pixel, memory, size);
    }
}

void FillSurface(const CPartInfo& part, const CFrameSettings& settings, uint64_t number, uint8_t* memory,
                 size_t size)
{
    const CSurface& surface = CSurface::Get();
    const size_t pixel = BytesPerPixel(part);
    const auto shift = static_cast<uint64_t>(settings.scenePixels) * number;
    for (size_t y = 0; y < part.height; ++y) {
        const size_t line = (part.offsetY + y) % CSurface::kHeight;
        const void* const from = part.purposeId == static_cast<uint64_t>(EComponent::Range)
                                     ? static_cast<const void*>(surface.RangeLine(line))
                                 : part.purposeId == static_cast<uint64_t>(EComponent::Confidence)
                                     ? surface.ConfidenceLine(line)
                                     : surface.IntensityLine(line);
        for (size_t x = 0; x < part.width;) {
            const size_t column = (part.offsetX + x + shift) % CSurface::kWidth;
            const size_t count = std::min(part.width - x, CSurface::kWidth - column);
            CopyLine(static_cast<const uint8_t*>(from) + column * pixel,
                     part.offset + (y * part.width + x) * pixel, count * pixel, memory, size);
            x += count;
        }
    }
}

} // namespace

std::vector<CPartInfo> PlanParts(EParts parts, const CFrameSettings& settings, uint32_t enabled)
{
    std::vector<CPartInfo> plan;
    if (parts == EParts::Regions) {
        plan.push_back(Part(settings, settings.format->code, 0));
        CPartInfo middle = plan.front();
        middle.offset = plan.front().size;
        middle.width /= 2;
        middle.height = middle.deliveredHeight = middle.height / 2;
        middle.offsetX += middle.width / 2;
        middle.offsetY += middle.height / 2;
        middle.size = middle.width * middle.height * BytesPerPixel(middle);
        middle.regionId = 1;
        plan.push_back(middle);
    }
    if (parts == EParts::Range) {
        for (const CPartRow& row : kPartRows) {
            const auto id = static_cast<uint64_t>(row.component);
            if ((enabled >> id & 1U) == 0)
                continue;
            CPartInfo part =
                Part(settings, row.format, plan.empty() ? 0 : plan.back().offset + plan.back().size);
            part.dataType = row.dataType;
            part.purposeId = id;
            plan.push_back(part);
        }
    }
    return plan;
}

size_t PartsSize(const std::vector<CPartInfo>& parts, const CFrameSettings& settings)
{
    return parts.empty() ? settings.ImageSize() : parts.back().offset + parts.back().size;
}

void FillParts(const std::vector<CPartInfo>& parts, const CFrameSettings& settings, uint64_t number,
               CFrameRenderer& renderer, uint8_t* memory, size_t size)
{
    for (const CPartInfo& part : parts) {
        if (part.purposeId != 0)
            FillSurface(part, settings, number, memory, size);
        else if (part.regionId == 0)
            renderer.Fill(number, memory, std::min(size, part.size));
        else
            FillMiddle(parts.front(), part, memory, size);
    }
}

} // namespace KxSim
