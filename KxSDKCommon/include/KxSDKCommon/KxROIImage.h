// SPDX-License-Identifier: Apache-2.0
// A rectangular window on an image.
#pragma once

#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxImage.h>
#include <KxApi_TL/IKxImageBuffer.h>
#include <KxSDKCommon/KxSDKCommonLinkage.h>

#include <memory>

namespace KxApi
{

/// Window on a parent image, itself an image, so that windows nest. It shares the parent's memory; only of a
/// format whose planes differ in size does it hold a copy, made by SetROI. One thread at a time, the
/// parent's, which has to outlive it.
class KXSDK_COMMON_API CKxROIImage final : public IKxImageInside
{
public:
    explicit CKxROIImage(IKxImage* pParent) noexcept;
    CKxROIImage(const CKxROIImage&) = delete;
    CKxROIImage& operator=(const CKxROIImage&) = delete;
    virtual ~CKxROIImage();

    /// Moves the window, in pixels of the parent. Raises OutOfRangeException when it doesn't lie within the
    /// parent or not on the format's grid, RuntimeException for an odd size of a planar 4:2:0 image; the part
    /// of the window that was valid is moved all the same.
    void SetROI(size_t x, size_t y, size_t w, size_t h);

    size_t GetImageWidth() const override;
    size_t GetImageHeight() const override;
    size_t GetImageLinePitch() const override;
    size_t GetImagePlanePitch() const override;
    /// The parent's, or another one of its family when the window starts elsewhere in the colour filters'
    /// pattern.
    EKxPixelFormatNamingConvention_t GetImagePixelFormat() const override;
    void* GetImageBuffer() const override;
    void* GetUserContext() const override;
    IKxImage* GetROIImage(size_t x, size_t y, size_t w, size_t h) override;
    IKxPixelComponent* GetIKxPixelComponentValue(size_t x, size_t y) override;

private:
    void CopyPlanes(EKxPixelFormatNamingConvention_t ePixelFormat);

    IKxImage* const m_pParent;
    size_t m_nOffsetX = 0;
    size_t m_nOffsetY = 0;
    size_t m_nWidth = 0;
    size_t m_nHeight = 0;
    std::unique_ptr<CKxROIImage> m_pChildROI;
    CKxAutoPtr<IKxImageBufferReleasable, IKxImageBuffer> m_objCopy;
};

} // namespace KxApi
