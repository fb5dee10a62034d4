// SPDX-License-Identifier: Apache-2.0
// Owner of several objects that factories returned.
#pragma once

#include <Base/GCBadAlloc.h>
#include <Base/GCException.h>
#include <KxApi_TL/CKxAutoPtr.h>
#include <KxSDKCommon/KxAssert.h>

#include <cstddef>
#include <exception>
#include <memory>
#include <stdexcept>
#include <vector>

namespace KxApi
{

/// Holds objects of type `T`, hands them out as their interface `UT` (see CKxAutoPtr), and gives back by
/// `T::Release` what is left at its end. One thread at a time.
///
/// An index out of range raises OutOfRangeException.
template <class T, class UT>
class CKxAutoPtrArray
{
public:
    CKxAutoPtrArray()
        : m_pObjects(GenICam::GuardBadAlloc([] { return std::make_unique<std::vector<T*>>(); }))
    {}
    CKxAutoPtrArray(const CKxAutoPtrArray&) = delete;
    CKxAutoPtrArray& operator=(const CKxAutoPtrArray&) = delete;
    virtual ~CKxAutoPtrArray()
    {
        for (T* const pObject : *m_pObjects) {
            if (pObject)
                pObject->Release();
        }
    }

    /// Takes an object over and gives its index. Raises BadAllocException, upon which the object stays the
    /// caller's.
    virtual size_t Register(T* pObject)
    {
        try {
            m_pObjects->push_back(pObject);
        } catch (const std::bad_alloc& e) {
            throw BAD_ALLOC_EXCEPTION("%s", e.what());
        } catch (const std::length_error& e) {
            throw INVALID_ARGUMENT_EXCEPTION("%s", e.what());
        } catch (const std::exception& e) {
            throw RUNTIME_EXCEPTION("%s", e.what());
        }
        return m_pObjects->size() - 1;
    }

    /// Hands an object to the caller, who owns it from now on; those behind it move down.
    virtual T* Deregister(size_t nIndex)
    {
        T* const pObject = m_pObjects->at(Checked(nIndex));
        m_pObjects->erase(m_pObjects->begin() + static_cast<std::ptrdiff_t>(nIndex));
        return pObject;
    }

    virtual size_t GetSize() const { return m_pObjects->size(); }

    /// The object at an index; it stays the array's. An entry registered as null ends the process.
    virtual UT* operator[](size_t nIndex) const
    {
        UT* const pUT = Detail::InterfaceOf<UT>((*m_pObjects)[Checked(nIndex)]);
        KX_ASSERT(pUT, "(pUT) != NULL");
        return pUT;
    }

private:
    size_t Checked(size_t nIndex) const
    {
        const auto nSigned = static_cast<long long>(nIndex),
                   nSize = static_cast<long long>(m_pObjects->size());
        if (nSigned < 0)
            throw OUT_OF_RANGE_EXCEPTION("%s = %lld must be equal or greater than Min = %lld", "nIndex",
                                         nSigned, 0LL);
        if (nSigned >= nSize)
            throw OUT_OF_RANGE_EXCEPTION("%s = %lld must be smaller than Max = %lld", "nIndex", nSigned,
                                         nSize);
        return nIndex;
    }

    std::unique_ptr<std::vector<T*>> m_pObjects;
};

} // namespace KxApi
