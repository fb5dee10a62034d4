// SPDX-License-Identifier: Apache-2.0
// Lists of values to be plotted: histograms, line profiles.
#pragma once

#include <Base/GCString.h>
#include <KxApi_IP/KxApi_IPLinkage.h>
#include <KxApi_TL/IKxAllocator.h>
#include <KxApi_TL/IKxReleasable.h>
#include <KxApi_TL/KxPixelComponentType.h>

#include <cstddef>
#include <cstdint>

namespace KxApi
{

/// Source of the memory of values, where it isn't one of images: the factory of graph windows takes it. Each
/// list that uses it tells OnDeregister.
struct IKxSpecificTypeAllocator : IKxAllocator
{
protected:
    ~IKxSpecificTypeAllocator() = default;
};

/// What the values of an item are. Those of the last two kinds have to be divided by the item's divisor.
enum EKxGraphDataKind_t : int32_t
{
    KxGraphDataKind_Histogram = 0,           ///< how often each value occurs
    KxGraphDataKind_LineProfile = 1,         ///< values of pixels along a line
    KxGraphDataKind_InterpolatedProfile = 2, ///< values between pixels along a line
    KxGraphDataKind_AveragedProfile = 3,     ///< means across a line
};

/// Numbers of IKxGraphData::GetProperty.
enum EKxGraphDataProperty_t : int32_t
{
    KxGraphDataProperty_Component = 0, ///< an EKxPixelComponentType_t; raises when the item has none
    KxGraphDataProperty_FullScale = 1, ///< greatest value that can occur, before the division
    KxGraphDataProperty_Max = 3,       ///< greatest value that does occur, before the division; 0 when empty
    KxGraphDataProperty_Divisor = 4,   ///< 1 for the kinds that aren't divided; never 0
};

/// Types of graph data files.
enum EKxGraphDataFileType_t : int32_t
{
    KxGraphDataFileType_Raw = 0, ///< ".kxraw": all of the list, checksummed
    KxGraphDataFileType_Csv = 1, ///< ".csv": a column for each item, a row for each index
};

/// The values of one line of a plot. Any number of threads may read while none writes.
struct IKxGraphData
{
    virtual EKxGraphDataKind_t GetKind() const = 0;
    /// Number of values.
    virtual size_t GetLength() const = 0;
    /// The values, owned by the list; null when there are none. They stay where they are until the list's
    /// next change.
    virtual const uint32_t* GetValues() const = 0;
    /// A property by its number. Raises InvalidArgumentException for one that the item hasn't got.
    virtual int64_t GetProperty(EKxGraphDataProperty_t eProperty) const = 0;

protected:
    ~IKxGraphData() = default;
};

/// An item of a list.
struct IKxGraphDataBuffer
{
    /// The item's data, owned by the list. Never null.
    virtual IKxGraphData* GetGraphData() const = 0;

protected:
    ~IKxGraphDataBuffer() = default;
};

/// A list of lines that are plotted together. One thread at a time, with one exception: CopyFrom and
/// SaveToFile of one list may run at the same time, and the file then holds the list as it was before the
/// copy or after it.
struct IKxGraphDataBufferList
{
    virtual size_t GetCount() const = 0;
    /// The item, owned by the list. Raises OutOfRangeException from GetCount on.
    virtual IKxGraphDataBuffer* GetItem(size_t nIndex) const = 0;

    /// Writes the list. The file appears, or replaces the one of that name, when all of it has reached the
    /// disk; after a failure the folder is as it was. Raises InvalidArgumentException for an unknown type,
    /// CKxLinuxErrorException when the file can't be written, BadAllocException; with path and cause.
    /// @param strPath in UTF-8; its ending isn't looked at.
    virtual void SaveToFile(EKxGraphDataFileType_t eFileType, const GenICam::gcstring& strPath) const = 0;

    /// Makes this list a copy of another one, which is only read; a list of the application's own making
    /// serves as well. Items keep their memory where it is large enough. Raises LogicalErrorException for
    /// null, InvalidArgumentException when an item's kind or divisor is none, BadAllocException; the list
    /// then may hold part of the items.
    virtual void CopyFrom(const IKxGraphDataBufferList* pList) = 0;

protected:
    ~IKxGraphDataBufferList() = default;
};

/// What an item is made of.
struct CKxGraphDataDescription
{
    EKxGraphDataKind_t eKind = KxGraphDataKind_Histogram;
    /// What the values belong to; None for an item without.
    EKxPixelComponentType_t eComponent = KxPixelComponentType_None;
    uint32_t nFullScale = 0;
    uint32_t nDivisor = 1; ///< has to be 1 for the kinds that aren't divided
};

/// A list that can be filled. It may be released only when nobody reads it any more.
struct IKxGraphDataBufferListResizable : IKxGraphDataBufferList, IKxReleasable
{
    /// Takes all items away, keeping their memory for the next ones.
    virtual void Clear() = 0;

    /// Adds an item of `nLength` values, all 0. Raises InvalidArgumentException when the kind is unknown or
    /// doesn't go with the divisor, BadAllocException.
    /// @return the values, for the caller to fill; null for a length of 0. They stay where they are until the
    /// list is cleared, copied into, loaded or released.
    virtual uint32_t* Append(const CKxGraphDataDescription& objDescription, size_t nLength) = 0;

    /// Makes this list what SaveToFile wrote, in either type, which the content tells. The list is changed
    /// only when all of the file has been read well. Raises CKxLinuxErrorException when the file can't be
    /// read, RuntimeException when it is damaged or no such file, BadAllocException; with path and cause.
    virtual void LoadFromFile(const GenICam::gcstring& strPath) = 0;

protected:
    ~IKxGraphDataBufferListResizable() = default;
};

/// A new, empty list; the caller gives it back by Release. Any thread.
/// @param pAllocator source of the memory of values, not owned, told by OnDeregister when it isn't needed any
/// more; null for the process's own memory. Raises LogicalErrorException when the SDK is not started,
/// BadAllocException.
KXAPI_IP_API IKxGraphDataBufferListResizable* CreateIKxGraphDataBufferListResizable(IKxAllocator* pAllocator);

} // namespace KxApi
