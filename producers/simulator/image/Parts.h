// SPDX-License-Identifier: Apache-2.0
// Buffers of several images.
#pragma once

#include "common/modules/StreamBuffers.h"
#include "image/FrameRenderer.h"

#include <cstdint>
#include <vector>

namespace KxSim
{

/// What a camera sends in one buffer.
enum class EParts
{
    One,     // image
    Regions, // the image, and its middle as a second region
    Range    // range, intensity, confidence
};

/// Numbers of the naming convention for what a part shows.
enum class EComponent : uint8_t
{
    Intensity = 1,
    Range = 4,
    Confidence = 6
};

/// The parts of a buffer; none of cameras that send one image. @param enabled bits by the components'
/// numbers.
std::vector<KxProducer::CPartInfo> PlanParts(EParts parts, const CFrameSettings& settings, uint32_t enabled);

/// Bytes of the parts, or of the one image when there are none.
size_t PartsSize(const std::vector<KxProducer::CPartInfo>& parts, const CFrameSettings& settings);

/// Writes the parts of image `number`, of which the memory has room for the first `size` bytes. The renderer
/// is prepared for the settings.
void FillParts(const std::vector<KxProducer::CPartInfo>& parts, const CFrameSettings& settings,
               uint64_t number, CFrameRenderer& renderer, uint8_t* memory, size_t size);

} // namespace KxSim
