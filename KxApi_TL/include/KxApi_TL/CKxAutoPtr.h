// SPDX-License-Identifier: Apache-2.0
// Owner of what a factory returned.
#pragma once

#include <Base/GCException.h>
#include <KxSDKCommon/KxAssert.h>

#include <type_traits>
#include <utility>

namespace KxApi
{

namespace Detail
{
/// An object as its interface `UT`; one that hasn't got it ends the process. Null stays null.
template <class UT, class T>
UT* InterfaceOf(T* pObject) noexcept
{
    if constexpr (std::is_convertible_v<T*, UT*>) {
        return pObject;
    } else {
        UT* const pUT = dynamic_cast<UT*>(pObject);
        KX_ASSERT(pUT || !pObject, "(pUT) != NULL");
        return pUT;
    }
}
} // namespace Detail

/// Holds a `T`, hands it out as its interface `UT`, and gives it back by `T::Release` at its end. Any thread,
/// one at a time.
///
/// `UT` is a base of `T` or, for windows, another interface of the same object; an object without it ends the
/// process when it is asked for.
template <class T, class UT = T>
class CKxAutoPtr
{
public:
    explicit CKxAutoPtr(T* pObject = nullptr) noexcept
        : m_pObject(pObject)
    {}
    CKxAutoPtr(CKxAutoPtr&& other) noexcept
        : m_pObject(std::exchange(other.m_pObject, nullptr))
    {}
    CKxAutoPtr& operator=(CKxAutoPtr&& other) noexcept
    {
        Reset(std::exchange(other.m_pObject, nullptr));
        return *this;
    }
    CKxAutoPtr(const CKxAutoPtr&) = delete;
    CKxAutoPtr& operator=(const CKxAutoPtr&) = delete;
    ~CKxAutoPtr() { Reset(); }

    /// Gives the present object back and takes another one over.
    void Reset(T* pObject = nullptr) noexcept
    {
        T* const pOld = std::exchange(m_pObject, pObject);
        if (pOld && pOld != pObject)
            pOld->Release();
    }

    /// Hands the object to the caller, who owns it from now on.
    [[nodiscard]] T* Detach() noexcept { return std::exchange(m_pObject, nullptr); }

    /// The object, null when there is none.
    UT* Get() const noexcept { return Detail::InterfaceOf<UT>(m_pObject); }

    explicit operator bool() const noexcept { return m_pObject != nullptr; }

    /// Access to the object; LogicalErrorException "NULL pointer dereferenced" when there is none.
    UT* operator->() const { return &Checked(); }
    UT& operator*() const { return Checked(); }

private:
    UT& Checked() const
    {
        if (!m_pObject)
            throw LOGICAL_ERROR_EXCEPTION("NULL pointer dereferenced");
        return *Get();
    }

    T* m_pObject;
};

} // namespace KxApi
