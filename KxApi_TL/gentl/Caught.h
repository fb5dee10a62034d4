// SPDX-License-Identifier: Apache-2.0
// Exceptions that go no further than a thread of the library's own.
#pragma once

#include <Base/GCException.h>
#include <Base/GCString.h>
#include <KxSDKCommon/KxApi_Exception.h>

#include <exception>

namespace KxApi
{
namespace Detail
{

/// What was thrown, in words. To be called while the exception is handled.
inline GenICam::gcstring TextOfCaught()
{
    try {
        throw;
    } catch (const GenICam::GenericException& e) {
        return e.GetDescription();
    } catch (const std::exception& e) {
        return e.what();
    } catch (...) {
        return "exception of an unknown type";
    }
}

/// The error code of what was thrown.
inline GenTL::GC_ERROR CodeOfCaught()
{
    try {
        throw;
    } catch (const CKxGenTLErrorException& e) {
        return e.GetError();
    } catch (...) {
        return GenTL::GC_ERR_ERROR;
    }
}

} // namespace Detail
} // namespace KxApi
