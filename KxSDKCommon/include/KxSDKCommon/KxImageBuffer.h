// SPDX-License-Identifier: Apache-2.0
// An image that allocates its own memory.
#pragma once

#include <KxApi_TL/CKxPixelComponent.h>
#include <KxApi_TL/IKxAllocator.h>
#include <KxApi_TL/IKxImage.h>
#include <KxApi_TL/IKxImageBuffer.h>
#include <KxSDKCommon/KxROIImage.h>
#include <KxSDKCommon/KxSDKCommonLinkage.h>

#include <memory>

namespace KxApi
{

/// An image buffer of the SDK's own making.
struct IKxImageBufferInside : IKxImageBufferReleasable
{
protected:
    ~IKxImageBufferInside() = default;
};

/// What CreateIKxImageBuffer makes. Without memory its sizes are 0 and its format KxPixelFormat_None; SetSize
/// and CreateBuffer bring memory, Deallocate takes it away. One thread at a time.
class KXSDK_COMMON_API CKxImageBuffer final : public IKxImageBufferInside,
                                              public IKxImageInside,
                                              public IKxAllocator
{
public:
    /// Null stands for an allocator of its own, with operator new. The allocator isn't owned.
    explicit CKxImageBuffer(IKxAllocator* pAllocator) noexcept;
    CKxImageBuffer(const CKxImageBuffer&) = delete;
    CKxImageBuffer& operator=(const CKxImageBuffer&) = delete;
    virtual ~CKxImageBuffer();

    void CreateBuffer(size_t nWidth, size_t nHeight, EKxPixelFormatNamingConvention_t ePixelFormat,
                      _EKxMemoryInitialization_t eInitialization) override;
    IKxImage* GetIKxImage() override;
    void CopyImage(IKxImage* pSrcIKxImage) override;
    void SetSize(size_t nWidth, size_t nHeight, EKxPixelFormatNamingConvention_t ePixelFormat,
                 size_t nAlignment) override;
    bool HasImageBuffer() const override { return m_pBuffer != nullptr; }

    /// As SetSize, with the line pitch itself, in bytes.
    void SetSizeWithLinePitch(size_t nWidth, size_t nHeight, EKxPixelFormatNamingConvention_t ePixelFormat,
                              size_t nLinePitch);

    /// Gives the memory back, and the windows on it.
    void Deallocate();

    /// Destroys the object.
    void Release() override;

    size_t GetImageWidth() const override { return m_nWidth; }
    size_t GetImageHeight() const override { return m_nHeight; }
    size_t GetImageLinePitch() const override { return m_nLinePitch; }
    size_t GetImagePlanePitch() const override { return m_nHeight * m_nLinePitch; }
    EKxPixelFormatNamingConvention_t GetImagePixelFormat() const override { return m_ePixelFormat; }
    void* GetImageBuffer() const override { return m_pBuffer; }
    void* GetUserContext() const override { return m_pContext; }
    IKxImage* GetROIImage(size_t x, size_t y, size_t w, size_t h) override;
    IKxPixelComponent* GetIKxPixelComponentValue(size_t x, size_t y) override;

private:
    void Allocate(void** ppBuffer, size_t nSize, void** ppContext) override;
    void Deallocate(void* pBuffer, size_t nSize, void* pContext) override;
    void OnDeregister() override {}

    void* m_pBuffer = nullptr;
    void* m_pContext = nullptr;
    size_t m_nBufferSize = 0; // bytes allocated; the present size may need fewer
    IKxAllocator* const m_pAllocator;
    size_t m_nWidth = 0;
    size_t m_nHeight = 0;
    size_t m_nLinePitch = 0;
    EKxPixelFormatNamingConvention_t m_ePixelFormat = KxPixelFormat_None;
    CKxPixelComponent m_objPixelComponent;
    std::unique_ptr<CKxROIImage> m_pROIImage;
};

} // namespace KxApi
