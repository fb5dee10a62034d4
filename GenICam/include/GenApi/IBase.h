// SPDX-License-Identifier: Apache-2.0
// What every node and port has: an access mode; and the questions one asks of it.
#pragma once

#include <GenApi/GenApiLinkage.h>
#include <GenApi/Types.h>

namespace GenApi
{

/// Root of all interfaces of nodes.
struct GENAPI_DECL_ABSTRACT IBase
{
    /// Access mode at this moment. Any thread; may read the device when a flag is not cached.
    virtual EAccessMode GetAccessMode() const = 0;

    virtual ~IBase() = 0;
};

inline IBase::~IBase() {}

/// True for RO and RW.
inline bool IsReadable(EAccessMode mode) { return mode == RW || mode == RO; }
/// True for WO and RW.
inline bool IsWritable(EAccessMode mode) { return mode == RW || mode == WO; }
/// False for NI.
inline bool IsImplemented(EAccessMode mode) { return mode != NI; }
/// False for NI and NA.
inline bool IsAvailable(EAccessMode mode) { return !(mode == NA || mode == NI); }

/// The same questions of an object; a null pointer answers false to all of them.
inline bool IsReadable(const IBase* p) { return p != nullptr && IsReadable(p->GetAccessMode()); }
inline bool IsReadable(const IBase& r) { return IsReadable(r.GetAccessMode()); }
inline bool IsWritable(const IBase* p) { return p != nullptr && IsWritable(p->GetAccessMode()); }
inline bool IsWritable(const IBase& r) { return IsWritable(r.GetAccessMode()); }
inline bool IsImplemented(const IBase* p) { return p != nullptr && IsImplemented(p->GetAccessMode()); }
inline bool IsImplemented(const IBase& r) { return IsImplemented(r.GetAccessMode()); }
inline bool IsAvailable(const IBase* p) { return p != nullptr && IsAvailable(p->GetAccessMode()); }
inline bool IsAvailable(const IBase& r) { return IsAvailable(r.GetAccessMode()); }

/// Whether something of that visibility is shown to a user of that level.
inline bool IsVisible(EVisibility visibility, EVisibility maxVisibility)
{
    return visibility <= maxVisibility;
}

/// The access mode that remains when one limits the other: NI beats NA beats the rest, RO with WO leaves NA.
inline EAccessMode Combine(EAccessMode a, EAccessMode b)
{
    if (a == NI || b == NI)
        return NI;
    if (a == NA || b == NA)
        return NA;
    if ((a == RO && b == WO) || (a == WO && b == RO))
        return NA;
    if (a == WO || b == WO)
        return WO;
    if (a == RO || b == RO)
        return RO;
    return RW;
}

/// The caching mode of something made of both: the less cached one.
inline ECachingMode Combine(ECachingMode a, ECachingMode b)
{
    if (a == NoCache || b == NoCache)
        return NoCache;
    return a == WriteAround || b == WriteAround ? WriteAround : WriteThrough;
}

/// Whether a value of that mode may be kept.
inline bool IsCacheable(ECachingMode mode) { return mode != NoCache; }

/// The visibility that remains when one limits the other: the stricter one.
inline EVisibility Combine(EVisibility a, EVisibility b) { return a > b ? a : b; }

} // namespace GenApi
