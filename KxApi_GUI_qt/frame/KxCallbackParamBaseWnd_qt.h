// SPDX-License-Identifier: Apache-2.0
// The parameters of the events that all windows have.
#pragma once

#include <KxApi_GUI/IKxWndCallback.h>
#include <KxSDKCommon/KxCallbackManager.h>

namespace KxApi
{

namespace Detail
{
/// What they have in common; `T` is the interface.
template <class T>
class CKxCallbackParamOfWnd : public CKxCallbackParamBase<T>
{
public:
    CKxCallbackParamOfWnd(EKxGUICallbackType_t eType, IKxWnd* pIKxWnd) noexcept
        : CKxCallbackParamBase<T>(eType)
        , m_pIKxWnd(pIKxWnd)
    {}
    IKxWnd* GetIKxWnd() const override { return m_pIKxWnd; }

private:
    IKxWnd* const m_pIKxWnd;
};
} // namespace Detail

/// Of the types Created and Destroyed.
using CKxCallbackParamBaseWnd = Detail::CKxCallbackParamOfWnd<IKxCallbackParamKxApiGUIEventBaseWnd>;

class CKxCallbackParamBaseWndClose final
    : public Detail::CKxCallbackParamOfWnd<IKxCallbackParamKxApiGUIEventBaseWndClose>
{
public:
    explicit CKxCallbackParamBaseWndClose(IKxWnd* pIKxWnd) noexcept
        : CKxCallbackParamOfWnd(KxGUICallbackType_Close, pIKxWnd)
    {}
    void CancelClose() override { m_bCancelled = true; }
    bool IsCancelled() const { return m_bCancelled; }

private:
    bool m_bCancelled = false;
};

class CKxCallbackParamBaseWndError final
    : public Detail::CKxCallbackParamOfWnd<IKxCallbackParamKxApiGUIEventBaseWndError>
{
public:
    CKxCallbackParamBaseWndError(IKxWnd* pIKxWnd, const GenICam::GenericException& exception) noexcept
        : CKxCallbackParamOfWnd(KxGUICallbackType_Error, pIKxWnd)
        , m_exception(exception)
    {}
    const GenICam::GenericException& GetException() const override { return m_exception; }

private:
    const GenICam::GenericException& m_exception;
};

} // namespace KxApi
