// SPDX-License-Identifier: Apache-2.0
// Exceptions that go no further than a thread of the library's own.
#pragma once

#include <Base/GCException.h>
#include <Base/GCString.h>
#include <KxSDKCommon/KxApi_Exception.h>

#include <exception>
#include <memory>

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

/// An exception that another thread raises later. A copy: those who raise the same std::exception_ptr share
/// one object.
class CStoredError
{
public:
    CStoredError() = default;
    CStoredError(const CStoredError&) = delete;
    CStoredError& operator=(const CStoredError&) = delete;
    virtual ~CStoredError() = default;
    [[noreturn]] virtual void Raise() const = 0;
    virtual const GenICam::GenericException& Get() const = 0;
};

using StoredErrorPtr = std::shared_ptr<const CStoredError>;

template <class Exception>
StoredErrorPtr Store(const Exception& exception)
{
    class CStored final : public CStoredError
    {
    public:
        explicit CStored(const Exception& stored)
            : m_exception(stored)
        {}
        [[noreturn]] void Raise() const override { throw m_exception; }
        const GenICam::GenericException& Get() const override { return m_exception; }

    private:
        const Exception m_exception;
    };
    return std::make_shared<CStored>(exception);
}

/// What was thrown. To be called while the exception is handled.
inline StoredErrorPtr StoreCaught()
{
    try {
        throw;
    } catch (const CKxGenTLErrorException& e) {
        return Store(e);
    } catch (const GenICam::BadAllocException& e) {
        return Store(e);
    } catch (const GenICam::AccessException& e) {
        return Store(e);
    } catch (const GenICam::OutOfRangeException& e) {
        return Store(e);
    } catch (...) {
        return Store(RUNTIME_EXCEPTION("%s", TextOfCaught().c_str()));
    }
}

} // namespace Detail
} // namespace KxApi
