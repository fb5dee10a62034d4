// SPDX-License-Identifier: Apache-2.0
// An image in a buffer, as applications see it: the buffer's first or only one, or another of its parts.
#pragma once

#include "BufferInfo.h"

#include <Base/GCBadAlloc.h>
#include <Base/GCCheckRange.h>
#include <Base/GCException.h>
#include <KxApi_TL/CKxPixelComponent.h>
#include <KxApi_TL/IKxStream.h>
#include <KxSDKCommon/KxROIImage.h>

#include <cstddef>
#include <cstdint>
#include <optional>

namespace KxApi
{
namespace Detail
{

/// What all parts of a buffer share. Outlives their use.
class CImageOwner
{
public:
    virtual const CBufferContent& Content() const = 0;
    virtual uint8_t* Base() const = 0;
    virtual void* Context() const = 0;
    virtual IKxStreamImage* Part(uint32_t nIndex) = 0;
    virtual void AttachChunks() = 0;

protected:
    ~CImageOwner() = default;
};

/// @tparam Interface IKxStreamImage or its releasable form
template <class Interface>
class CImageView : public Interface
{
public:
    CImageView(CImageOwner& owner, size_t index)
        : m_owner(owner)
        , m_index(index)
    {}
    CImageView(const CImageView&) = delete;
    CImageView& operator=(const CImageView&) = delete;

    size_t GetImageWidth() const override { return Image().width; }
    size_t GetImageHeight() const override { return Image().height; }
    size_t GetImageLinePitch() const override { return Image().linePitch; }
    size_t GetImagePlanePitch() const override { return Image().planePitch; }
    EKxPixelFormatNamingConvention_t GetImagePixelFormat() const override { return Image().pixelFormat; }
    void* GetImageBuffer() const override { return HasPixels() ? m_owner.Base() + Image().place : nullptr; }
    const void* GetEncodedData() const override
    {
        return GetEncodedSize() > 0 ? m_owner.Base() + Image().place : nullptr;
    }
    size_t GetEncodedSize() const override { return Image().encodedSize; }
    void* GetUserContext() const override { return m_owner.Context(); }
    IKxImage* GetROIImage(size_t x, size_t y, size_t w, size_t h) override
    {
        CheckHasImage();
        if (!m_roi)
            m_roi.emplace(this);
        GenICam::GuardBadAlloc([&] { m_roi->SetROI(x, y, w, h); });
        return &*m_roi;
    }
    IKxPixelComponent* GetIKxPixelComponentValue(size_t x, size_t y) override
    {
        CheckHasImage();
        if (!m_component)
            m_component.emplace();
        m_component->SetPixelComponent(this, x, y);
        return &*m_component;
    }

    uint64_t GetFrameID() const override { return Content().frameID; }
    uint64_t GetTimestamp() const override { return Content().timestamp; }
    uint64_t GetTimestampNs() const override { return Content().timestampNs; }
    bool IsIncomplete() const override { return Content().isIncomplete; }
    size_t GetDeliveredHeight() const override { return Image().deliveredHeight; }
    size_t GetOffsetX() const override { return Image().offsetX; }
    size_t GetOffsetY() const override { return Image().offsetY; }
    bool HasChunkData() const override { return Content().hasChunks; }
    void AttachChunkData() override { m_owner.AttachChunks(); }
    uint32_t GetPartCount() const override
    {
        return static_cast<uint32_t>(Content().images.empty() ? 1 : Content().images.size());
    }
    IKxStreamImage* GetIKxPart(uint32_t nIndex) override
    {
        KXGC_CHECK_RANGE(rlBelowMax, "nIndex", nIndex, GetPartCount());
        return m_owner.Part(nIndex);
    }
    int32_t GetPartDataType() const override { return Image().dataType; }
    uint64_t GetSourceID() const override { return Image().sourceID; }
    uint64_t GetRegionID() const override { return Image().regionID; }
    uint64_t GetPurposeID() const override { return Image().purposeID; }

protected:
    ~CImageView() = default;

    /// Another image lies in the buffer now.
    void Renew() { m_roi.reset(); }

private:
    const CBufferContent& Content() const { return m_owner.Content(); }
    bool HasImage() const { return m_index < Content().images.size(); }
    const CImageContent& Image() const
    {
        static const CImageContent kNone;
        return HasImage() ? Content().images[m_index] : kNone;
    }
    bool HasPixels() const { return HasImage() && Image().encodedSize == 0; }
    void CheckHasImage() const
    {
        if (!HasPixels())
            throw RUNTIME_EXCEPTION("There is no available image.");
    }

    CImageOwner& m_owner;
    const size_t m_index;
    std::optional<CKxPixelComponent> m_component; // made when asked for
    std::optional<CKxROIImage> m_roi;             // of the image before until Renew
};

} // namespace Detail
} // namespace KxApi
