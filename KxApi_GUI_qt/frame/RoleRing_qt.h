// SPDX-License-Identifier: Apache-2.0
// A ring of buffers, and who uses which.
#pragma once

#include <GenApi/Synch.h>
#include <KxApi_TL/CKxAutoPtr.h>

#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>

namespace KxApi
{

/// Buffers, and roles each of which names one buffer or none. What a role names is left alone; the next data
/// go into a buffer that is free. So data can be taken over, worked on, painted and handed to the application
/// at the same time, without a lock while it lasts. Any thread, each role in one at a time.
///
/// @tparam TBuffer what is owned, given back by Release. @tparam kSlots the number of buffers; with one more
/// than there are guarded roles, a free one is always found. @tparam kRoles the number of roles: they are
/// numbers, best of an enumeration. @tparam kGuarded so many roles, the first ones, keep their buffer from
/// Claim.
template <class TBuffer, size_t kSlots, size_t kRoles, size_t kGuarded = kRoles>
class CRoleRing
{
    static_assert(kGuarded <= kRoles);

public:
    static constexpr int32_t kNone = -1;

    /// @param make called once for each buffer, returns a TBuffer* to be owned. @param nFirst what all roles
    /// name at first. Raises what `make` raises.
    template <class Make>
    explicit CRoleRing(Make make, int32_t nFirst = kNone)
    {
        m_arrIndexes.fill(nFirst);
        for (auto& pBuffer : m_arrBuffers)
            pBuffer.Reset(make());
    }

    /// The buffer of an index; null for kNone.
    TBuffer* Buffer(int32_t nIndex) const
    {
        return nIndex < 0 ? nullptr : m_arrBuffers[static_cast<size_t>(nIndex)].Get();
    }

    /// The index that a role names.
    int32_t Index(size_t nRole) const
    {
        const GenApi::AutoLock lock(m_lock);
        return m_arrIndexes[nRole];
    }
    /// Has a role name an index.
    void Set(size_t nRole, int32_t nIndex)
    {
        const GenApi::AutoLock lock(m_lock);
        m_arrIndexes[nRole] = nIndex;
    }
    /// Has `nTo` name the buffer of `nFrom`, and returns its index.
    int32_t Copy(size_t nFrom, size_t nTo)
    {
        const GenApi::AutoLock lock(m_lock);
        return m_arrIndexes[nTo] = m_arrIndexes[nFrom];
    }
    /// As Copy; `nFrom` then names none.
    int32_t Move(size_t nFrom, size_t nTo)
    {
        const GenApi::AutoLock lock(m_lock);
        m_arrIndexes[nTo] = m_arrIndexes[nFrom];
        m_arrIndexes[nFrom] = kNone;
        return m_arrIndexes[nTo];
    }
    /// Has a role name the first free buffer, or the one it had when none is free, and returns its index.
    int32_t Claim(size_t nRole)
    {
        const GenApi::AutoLock lock(m_lock);
        std::bitset<kSlots> used;
        for (size_t n = 0; n < kGuarded; ++n) {
            if (m_arrIndexes[n] >= 0)
                used.set(static_cast<size_t>(m_arrIndexes[n]));
        }
        for (size_t nSlot = 0; nSlot < kSlots; ++nSlot) {
            if (!used[nSlot]) {
                m_arrIndexes[nRole] = static_cast<int32_t>(nSlot);
                break;
            }
        }
        return m_arrIndexes[nRole];
    }

    /// Calls a quick function with the buffer of a role, null when it names none; it stays the role's
    /// meanwhile. Returns and raises what the function does.
    template <class Function>
    auto Look(size_t nRole, Function function) const
    {
        const GenApi::AutoLock lock(m_lock);
        return function(Buffer(m_arrIndexes[nRole]));
    }

private:
    std::array<CKxAutoPtr<TBuffer>, kSlots> m_arrBuffers;
    mutable GenApi::CLock m_lock; // a leaf; never held while data are copied or worked on
    std::array<int32_t, kRoles> m_arrIndexes KXGC_GUARDED_BY(m_lock);
};

} // namespace KxApi
