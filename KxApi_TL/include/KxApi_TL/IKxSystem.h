// SPDX-License-Identifier: Apache-2.0
// A transport system: one GenTL producer.
#pragma once

#include <Base/GCString.h>
#include <KxApi_TL/CKxAutoPtrArray.h>
#include <KxApi_TL/IKxReleasable.h>
#include <KxApi_TL/KxApi_TLLinkage.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace KxApi
{

struct IKxInterface;
struct IKxPort;

/// What a system tells of itself, as it was when it was opened. Belongs to the system. Any thread.
struct IKxSystemInfo
{
    virtual GenICam::gcstring GetVendor() const = 0;
    virtual GenICam::gcstring GetModel() const = 0;
    virtual GenICam::gcstring GetVersion() const = 0;
    /// "GEV", "U3V", "Mixed" and so on.
    virtual GenICam::gcstring GetTLType() const = 0;
    /// File name of the producer.
    virtual GenICam::gcstring GetName() const = 0;
    virtual GenICam::gcstring GetPathName() const = 0;
    virtual GenICam::gcstring GetDisplayName() const = 0;
    /// Version of GenTL that the producer complies with; where it doesn't tell, the newest one whose
    /// functions it has.
    virtual int32_t GetGenTLVersionMajor() const = 0;
    virtual int32_t GetGenTLVersionMinor() const = 0;

protected:
    ~IKxSystemInfo() = default;
};

/// Who made a system.
enum EKxSystemVendor : int32_t
{
    KxSystemVendor_Other = 0,
    KxSystemVendor_Kestrix = 1
};

/// A system. Any thread. Searches of one system and its interfaces take turns; reading what is known waits
/// for none of them.
struct IKxSystem
{
    /// One of EKxSystemVendor.
    virtual int32_t GetKxSystemVendor() const = 0;
    virtual const IKxSystemInfo* GetIKxSystemInfo() const = 0;

    /// Looks for interfaces, for a second if the producer keeps to it; true when interfaces came or went.
    /// Readers see the old list until the new one is complete. Raises CKxGenTLErrorException, after which the
    /// old list stands.
    virtual bool UpdateInterfaceList() = 0;
    virtual uint32_t GetInterfaceCount() const = 0;
    /// Raises OutOfRangeException.
    virtual IKxInterface* GetIKxInterface(uint32_t nIndex) const = 0;
    virtual IKxPort* GetIKxPort() = 0;

protected:
    ~IKxSystem() = default;
};

/// The form that the factory returns. Release closes the system when nobody else holds it; its interfaces,
/// device infos and node maps go with it.
struct IKxSystemReleasable : IKxSystem, IKxReleasable
{
protected:
    ~IKxSystemReleasable() = default;
};

/// Systems that the array owns.
using CIKxSystemPtrArray = CKxAutoPtrArray<IKxSystemReleasable, IKxSystem>;

/// Opens the producer of a file. A producer opens once per process: all who ask for the same file hold the
/// same system, and each gives it back by Release. Any thread. Raises RuntimeException when the file can't be
/// used as a producer, CKxGenTLErrorException when it can't be opened, LogicalErrorException when the SDK is
/// not started.
KXAPI_TL_API IKxSystemReleasable* CreateIKxSystem(const GenICam::gcstring& strPath);

/// Holds a system once more, for what goes on using it when its owner may have given it back: a search that
/// is still under way. Given back by Release as well. Null when it is no open system of a producer. Any
/// thread that knows the system to be open.
KXAPI_TL_API IKxSystemReleasable* HoldIKxSystem(IKxSystem* pSystem);

/// A producer that was found, or an entry of GENICAM_GENTL64_PATH that leads to none.
struct CKxProducerInfo
{
    GenICam::gcstring strPath;    ///< with all links followed
    GenICam::gcstring strVersion; ///< as the producer tells it; empty when it can't be used
    GenICam::gcstring strError;   ///< why it can't be used; empty when it can
};

/// How long producers are waited for, in milliseconds, where nothing else is said.
constexpr uint32_t kKxProducerTimeoutMs = 20000;

/// The producers: the entries of the environment variable GENICAM_GENTL64_PATH in their order, each a folder
/// or a file, parted by ':', then the SDK's own folder, kxapi/producers beside its libraries. Of a folder all
/// "*.cti" count, by their names, without subfolders. Each is loaded, to see whether it can be used; all at
/// the same time, and one that isn't ready after nTimeoutMs counts as one that can't. Any thread. Raises
/// BadAllocException only: what is wrong with a producer, or with an entry, stands in its info.
KXAPI_TL_API std::vector<CKxProducerInfo> FindKxProducers(uint32_t nTimeoutMs = kKxProducerTimeoutMs);

/// What the last FindKxProducers or OpenIKxSystems of the process found, without another look: for windows
/// that tell which producers were refused. While one of them runs, producers that it waits for are told as
/// not ready. Empty before the first. Any thread. Raises BadAllocException.
KXAPI_TL_API std::vector<CKxProducerInfo> GetKxProducers();

/// The same in one line for people, which names those that can't be used and why; empty when there are none.
/// Any thread. Raises BadAllocException.
KXAPI_TL_API GenICam::gcstring GetKxProducersText();

/// Takes systems as they come. Both are called by the thread of OpenIKxSystems, one call at a time.
struct IKxProducersCallback
{
    /// A producer is open, or can't be.
    /// @param nIndex its place in the list that OpenIKxSystems returns
    /// @param pSystem belongs to the callee from now on; null when it can't be opened
    virtual void OnProducer(size_t nIndex, const CKxProducerInfo& info, IKxSystemReleasable* pSystem) = 0;
    /// Whether those that aren't ready are still wanted; asked about ten times a second.
    virtual bool IsWanted() { return true; }

protected:
    ~IKxProducersCallback() = default;
};

/// Opens the systems of all producers that can be used, all at the same time, and hands each to the callback
/// as soon as it is open: a producer that takes long delays no other. Returns when all are open or refused,
/// or when IsWanted says no; producers that aren't ready then are closed again when they are, and never keep
/// a program from ending. Returns all producers, those that can't be opened or aren't ready with the reason.
/// Any thread. Raises LogicalErrorException when the SDK is not started, BadAllocException, and what
/// OnProducer raises.
KXAPI_TL_API std::vector<CKxProducerInfo> OpenIKxSystems(IKxProducersCallback& callback);

/// The same at one go: puts the systems into the array, in the order of their producers, when all are open or
/// nTimeoutMs are over.
KXAPI_TL_API std::vector<CKxProducerInfo> OpenIKxSystems(CIKxSystemPtrArray& systems,
                                                         uint32_t nTimeoutMs = kKxProducerTimeoutMs);

} // namespace KxApi
