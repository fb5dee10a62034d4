// SPDX-License-Identifier: Apache-2.0
// Images and allocators for tests.
#pragma once

#include <Base/GCException.h>
#include <KxApi_TL/IKxAllocator.h>
#include <KxApi_TL/IKxImage.h>
#include <KxApi_TL/IKxImageBuffer.h>
#include <KxApi_TL/KxApi_TL.h>
#include <KxSDKCommon/KxImageBuffer.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace KxTest
{

/// An application's allocator that notes what it is asked for. Each byte is the memory's own heap block, so
/// that the address sanitizer sees a step beside it.
struct Allocator final : KxApi::IKxAllocator
{
    std::vector<size_t> sizes;
    std::vector<std::string> calls;
    bool empty = false;
    void* pContext = this;

    void Allocate(void** ppBuffer, size_t nSize, void** ppContext) override
    {
        calls.emplace_back("Allocate");
        sizes.push_back(nSize);
        *ppBuffer = empty ? nullptr : ::operator new(nSize);
        *ppContext = pContext;
    }
    void Deallocate(void* pBuffer, size_t nSize, void* pGivenContext) override
    {
        calls.emplace_back("Deallocate");
        EXPECT_EQ(nSize, sizes.back());
        EXPECT_EQ(pGivenContext, pContext);
        ::operator delete(pBuffer);
    }
    void OnDeregister() override { calls.emplace_back("OnDeregister"); }
};

/// An image over given bytes, as those of cameras are.
struct View final : KxApi::IKxImageInside
{
    std::vector<uint8_t> bytes;
    size_t nWidth = 0, nHeight = 0, nLinePitch = 0;
    KxApi::EKxPixelFormatNamingConvention_t ePixelFormat = KxApi::KxPixelFormat_Mono8;
    KxApi::CKxPixelComponent component;
    bool isEmpty = false;

    View(size_t width, size_t height, size_t linePitch, KxApi::EKxPixelFormatNamingConvention_t format,
         size_t size)
        : bytes(size)
        , nWidth(width)
        , nHeight(height)
        , nLinePitch(linePitch)
        , ePixelFormat(format)
    {
        for (size_t i = 0; i < bytes.size(); ++i)
            bytes[i] = static_cast<uint8_t>(i * 37 + i / 251);
    }

    size_t GetImageWidth() const override { return nWidth; }
    size_t GetImageHeight() const override { return nHeight; }
    size_t GetImageLinePitch() const override { return nLinePitch; }
    size_t GetImagePlanePitch() const override { return nLinePitch * nHeight; }
    KxApi::EKxPixelFormatNamingConvention_t GetImagePixelFormat() const override { return ePixelFormat; }
    void* GetImageBuffer() const override { return isEmpty ? nullptr : const_cast<uint8_t*>(bytes.data()); }
    void* GetUserContext() const override { return const_cast<View*>(this); }
    KxApi::IKxImage* GetROIImage(size_t, size_t, size_t, size_t) override { return nullptr; }
    KxApi::IKxPixelComponent* GetIKxPixelComponentValue(size_t x, size_t y) override
    {
        component.SetPixelComponent(this, x, y);
        return &component;
    }
};

inline const uint8_t* Bytes(const KxApi::IKxImage& image)
{
    return static_cast<const uint8_t*>(image.GetImageBuffer());
}

/// Description of the exception of class E that the function raises; an error of the test when it raises
/// none.
template <class E, class Function>
std::string Raised(Function function)
{
    try {
        function();
    } catch (const E& e) {
        return e.GetDescription();
    } catch (const GenICam::GenericException& e) {
        ADD_FAILURE() << "another exception: " << e.what();
        return {};
    }
    ADD_FAILURE() << "no exception";
    return {};
}

} // namespace KxTest
