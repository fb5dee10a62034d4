// SPDX-License-Identifier: Apache-2.0
// The image buffers of an image window, and who uses which.
#pragma once

#include <GenApi/Synch.h>
#include <KxApi_TL/CKxAutoPtr.h>
#include <KxApi_TL/IKxImageBuffer.h>

#include <array>
#include <cstdint>

namespace KxApi
{

struct IKxAllocator;

/// Eight buffers and eight roles, each of which names one buffer or none. A buffer that a role names is left
/// alone; the next image goes into one that is free. So pictures can be taken over, converted, painted and
/// handed to the application at the same time without a lock. Any thread, each role in one at a time.
class CImageRing
{
public:
    enum ERole : size_t
    {
        RawWrite,         ///< is being filled; stays there afterwards
        RawLatest,        ///< the newest image that was registered
        RawPreviewSource, ///< what the newest preview was made of
        RawHandedOut,     ///< the registered image that the application got last
        ConvertTarget,    ///< is being converted into
        ConvertedLatest,  ///< the newest preview
        ConvertedApi,     ///< the preview that the application got last
        ConvertedWidget,  ///< the preview that the widget got last
    };
    static constexpr size_t kRoles = 8;
    static constexpr size_t kSlots = 8;
    static constexpr int32_t kNone = -1;

    /// @param pAllocator source of the buffers' memory, not owned; may be null. Raises as
    /// CreateIKxImageBuffer.
    explicit CImageRing(IKxAllocator* pAllocator);

    /// The buffer of an index; null for kNone.
    IKxImageBufferReleasable* Buffer(int32_t nIndex) const
    {
        return nIndex < 0 ? nullptr : m_arrBuffers[static_cast<size_t>(nIndex)].Get();
    }

    /// The index that a role holds.
    int32_t Index(ERole eRole) const;
    /// Gives a role an index.
    void Set(ERole eRole, int32_t nIndex);
    /// Gives `eTo` the index of `eFrom`, and returns it.
    int32_t Copy(ERole eFrom, ERole eTo);
    /// As Copy; `eFrom` then holds none.
    int32_t Move(ERole eFrom, ERole eTo);
    /// Gives a role a free buffer, or the one it had when none is free, and returns its index.
    int32_t Claim(ERole eRole);

    /// Calls a quick function with the image of a role, which stays the role's meanwhile. Raises
    /// RuntimeException "There is no available image.", and what the function raises.
    template <class Function>
    auto Look(ERole eRole, Function function) const
    {
        const GenApi::AutoLock lock(m_lockImageIndex);
        return function(CheckedImage(m_arrIndexes[eRole]));
    }

    /// The image of an index. Raises RuntimeException "There is no available image." when there is none.
    IKxImage* CheckedImage(int32_t nIndex) const;

private:
    std::array<CKxAutoPtr<IKxImageBufferReleasable>, kSlots> m_arrBuffers;
    mutable GenApi::CLock m_lockImageIndex; // a leaf; never held while an image is copied or converted
    std::array<int32_t, kRoles> m_arrIndexes KXGC_GUARDED_BY(m_lockImageIndex);
};

} // namespace KxApi
