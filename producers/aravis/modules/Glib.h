// SPDX-License-Identifier: Apache-2.0
// Ownership and errors of the library beneath.
#pragma once

#include "common/gentl/Error.h"

#include <arv.h>

#include <memory>
#include <string>

namespace KxAravis
{

struct CUnref
{
    void operator()(void* object) const { g_object_unref(object); }
};

/// A reference to a GObject.
template <class T>
using GPtr = std::unique_ptr<T, CUnref>;

inline std::string TextOf(const char* text) { return text ? text : ""; }

/// Takes an error of the library: `GError* error = nullptr; call(..., &error); error.Check("...")`.
class CArvError
{
public:
    CArvError() = default;
    CArvError(const CArvError&) = delete;
    CArvError& operator=(const CArvError&) = delete;
    ~CArvError()
    {
        if (m_error)
            g_error_free(m_error);
    }

    GError** operator&() { return &m_error; }
    bool IsSet() const { return m_error != nullptr; }
    /// Throws CError "what: reason" when the call has failed.
    void Check(const std::string& what) const
    {
        if (m_error)
            KxProducer::Fail(Code(), "%s: %s", what.c_str(), m_error->message);
    }

private:
    GenTL::GC_ERROR Code() const
    {
        if (m_error->domain != arv_device_error_quark())
            return GenTL::GC_ERR_IO;
        switch (m_error->code) {
        case ARV_DEVICE_ERROR_TIMEOUT:
            return GenTL::GC_ERR_TIMEOUT;
        case ARV_DEVICE_ERROR_NOT_CONTROLLER:
            return GenTL::GC_ERR_ACCESS_DENIED;
        case ARV_DEVICE_ERROR_INVALID_PARAMETER:
            return GenTL::GC_ERR_INVALID_PARAMETER;
        case ARV_DEVICE_ERROR_NOT_FOUND:
            return GenTL::GC_ERR_NOT_AVAILABLE;
        default:
            return GenTL::GC_ERR_IO;
        }
    }

    GError* m_error = nullptr;
};

} // namespace KxAravis
