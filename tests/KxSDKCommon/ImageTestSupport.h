// SPDX-License-Identifier: Apache-2.0
// Images for tests.
#pragma once

#include "Allocator.h"
#include "FakeImage.h"

#include <Base/GCException.h>
#include <KxApi_TL/IKxImageBuffer.h>
#include <KxApi_TL/KxApi_TL.h>
#include <KxSDKCommon/KxImageBuffer.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace KxTest
{

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
