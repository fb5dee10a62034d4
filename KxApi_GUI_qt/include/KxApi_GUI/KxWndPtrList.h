// SPDX-License-Identifier: Apache-2.0
// Owners of windows.
#pragma once

#include <KxApi_GUI/IKxWnd.h>
#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/CKxAutoPtrArray.h>

namespace KxApi
{

/// Owns a window and hands it out as its interface `UT`:
/// `CIKxWndPtrT<IKxImageDisplayWnd> window(CreateIKxWnd(KxWindowType_ImageDisplay));`
template <class UT>
using CIKxWndPtrT = CKxAutoPtr<IKxWndReleasable, UT>;

/// Owns several windows and hands them out as their interface `UT`, which each of them must have. One thread
/// at a time.
template <class UT>
class CIKxWndPtrArrayT : public CKxAutoPtrArray<IKxWndReleasable, UT>
{
public:
    CIKxWndPtrArrayT() = default;
    CIKxWndPtrArrayT(const CIKxWndPtrArrayT&) = delete;
    CIKxWndPtrArrayT& operator=(const CIKxWndPtrArrayT&) = delete;
    ~CIKxWndPtrArrayT() override { ReleaseAll(); }

    /// Releases the windows, the first one first; the array is empty afterwards.
    virtual void Release() { ReleaseAll(); }

private:
    void ReleaseAll()
    {
        using Base = CKxAutoPtrArray<IKxWndReleasable, UT>;
        while (Base::GetSize() > 0)
            CKxAutoPtr<IKxWndReleasable>(Base::Deregister(0));
    }
};

} // namespace KxApi
