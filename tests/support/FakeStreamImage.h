// SPDX-License-Identifier: Apache-2.0
// An image as a stream hands it out, without a camera.
#pragma once

#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxImageBuffer.h>
#include <KxApi_TL/IKxStream.h>

#include <GenTL/GenTL.h>

#include <cstring>
#include <string>

namespace KxTest
{

/// The SDK has to be started. Without a size it is an image without pixels.
class FakeStreamImage final : public KxApi::IKxStreamImage
{
public:
    FakeStreamImage() = default;
    FakeStreamImage(size_t width, size_t height, KxApi::EKxPixelFormatNamingConvention_t format, int value)
    {
        m_buffer->SetSize(width, height, format, 0);
        std::memset(GetImageBuffer(), value, GetImagePlanePitch());
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

    size_t GetImageWidth() const override { return HasPixels() ? Image().GetImageWidth() : 0; }
    size_t GetImageHeight() const override { return HasPixels() ? Image().GetImageHeight() : 0; }
    size_t GetImageLinePitch() const override { return HasPixels() ? Image().GetImageLinePitch() : 0; }
    size_t GetImagePlanePitch() const override { return HasPixels() ? Image().GetImagePlanePitch() : 0; }
    KxApi::EKxPixelFormatNamingConvention_t GetImagePixelFormat() const override
    {
        return HasPixels() ? Image().GetImagePixelFormat() : KxApi::KxPixelFormat_None;
    }
    void* GetImageBuffer() const override { return HasPixels() ? Image().GetImageBuffer() : nullptr; }
    void* GetUserContext() const override { return nullptr; }
    KxApi::IKxImage* GetROIImage(size_t x, size_t y, size_t w, size_t h) override
    {
        return Image().GetROIImage(x, y, w, h);
    }
    KxApi::IKxPixelComponent* GetIKxPixelComponentValue(size_t x, size_t y) override
    {
        return Image().GetIKxPixelComponentValue(x, y);
    }

private:
    bool HasPixels() const { return m_buffer->HasImageBuffer(); }
    KxApi::IKxImage& Image() const { return *m_buffer->GetIKxImage(); }

    KxApi::CKxAutoPtr<KxApi::IKxImageBufferReleasable, KxApi::IKxImageBuffer> m_buffer{
        KxApi::CreateIKxImageBuffer(nullptr)};
};

} // namespace KxTest
