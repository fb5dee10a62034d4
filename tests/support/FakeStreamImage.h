// SPDX-License-Identifier: Apache-2.0
// An image as a stream hands it out, without a camera.
#pragma once

#include "FakeImage.h"

#include <KxApi_TL/IKxPixelFormatInfo.h>
#include <KxApi_TL/IKxStream.h>

#include <GenTL/GenTL.h>

#include <string>

namespace KxTest
{

/// Without a size it is an image without pixels.
class FakeStreamImage final : public FakeImageOf<KxApi::IKxStreamImage>
{
public:
    FakeStreamImage()
        : FakeImageOf(KxApi::KxPixelFormat_None, 0, 0, 0, {})
    {}
    FakeStreamImage(size_t width, size_t height, KxApi::EKxPixelFormatNamingConvention_t format, int value)
        : FakeImageOf(format, width, height, InfoOf(format).GetLinePitch(width, 0), {})
    {
        bytes.assign(InfoOf(format).GetImageSize(height, nLinePitch), static_cast<uint8_t>(value));
    }

    // What a test sets.
    uint64_t frameId = 0;
    uint64_t timestampNs = 0;
    bool isIncomplete = false;
    std::string encoded;

    uint64_t GetFrameID() const override { return frameId; }
    uint64_t GetTimestamp() const override { return timestampNs; }
    uint64_t GetTimestampNs() const override { return timestampNs; }
    bool IsIncomplete() const override { return isIncomplete; }
    size_t GetDeliveredHeight() const override { return GetImageHeight(); }
    size_t GetOffsetX() const override { return 0; }
    size_t GetOffsetY() const override { return 0; }
    bool HasChunkData() const override { return false; }
    void AttachChunkData() override {}
    uint32_t GetPartCount() const override { return 1; }
    IKxStreamImage* GetIKxPart(uint32_t) override { return this; }
    int32_t GetPartDataType() const override { return GenTL::PART_DATATYPE_2D_IMAGE; }
    uint64_t GetSourceID() const override { return 0; }
    uint64_t GetRegionID() const override { return 0; }
    uint64_t GetPurposeID() const override { return 0; }
    const void* GetEncodedData() const override { return encoded.data(); }
    size_t GetEncodedSize() const override { return encoded.size(); }

private:
    static const KxApi::IKxPixelFormatInfoInside& InfoOf(KxApi::EKxPixelFormatNamingConvention_t format)
    {
        return dynamic_cast<const KxApi::IKxPixelFormatInfoInside&>(*KxApi::GetIKxPixelFormatInfo(format));
    }
};

} // namespace KxTest
