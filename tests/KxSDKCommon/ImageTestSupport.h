// SPDX-License-Identifier: Apache-2.0
// Images and allocators for tests.
#pragma once

#include "FakeImage.h"

#include <Base/GCException.h>
#include <KxApi_TL/IKxAllocator.h>
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

using View = FakeImage;

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
