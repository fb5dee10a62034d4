// SPDX-License-Identifier: Apache-2.0
// The functions of one GenTL producer.
#pragma once

#include <Base/GCString.h>
#include <KxApi_TL/GenTLFunctions.h>
#include <KxApi_TL/KxApi_TLLinkage.h>

#include <GenTL/GenTL.h>

#include <cstdint>
#include <memory>

namespace KxApi
{

/// Table of a producer's functions: lib.GCReadPort(hPort, ...). Every pointer may be null, since older
/// producers lack newer functions; those of a loaded producer (Load) that version 1.0 has are there. A table
/// of its own, filled by hand, serves wherever no library stands behind the functions.
///
/// The table doesn't change once it is filled and may be read from any thread; which of the functions may run
/// at the same time, the GenTL standard says.
class KXAPI_TL_API CKxGenTLLib
{
public:
#define KXAPI_GENTL_MEMBER(function) GenTL::P##function function = nullptr;
    KXAPI_GENTL_FUNCTIONS(KXAPI_GENTL_MEMBER)
#undef KXAPI_GENTL_MEMBER

    CKxGenTLLib() = default;
    virtual ~CKxGenTLLib() = default;
    CKxGenTLLib(const CKxGenTLLib&) = delete;
    CKxGenTLLib& operator=(const CKxGenTLLib&) = delete;

    /// Loads a producer and initialises it (GCInitLib). All who load the same file share one table; the
    /// producer is closed (GCCloseLib) and unloaded when the last of them lets go, which has to happen after
    /// all its handles are closed. Any thread; loading and unloading of one producer take turns. Raises
    /// RuntimeException, with path and cause, when the file is no library, lacks functions that every version
    /// has, or fails to initialise.
    static std::shared_ptr<CKxGenTLLib> Load(const GenICam::gcstring& strPath);

    /// Path of the producer's file with all links followed; empty for a table filled by hand.
    const GenICam::gcstring& GetPath() const { return m_strPath; }

    /// The newest version of the interface whose functions are all there, as minor number of version 1; -1
    /// when even those of 1.0 are not.
    int32_t GetVersionMinorByFunctions() const;

protected:
    GenICam::gcstring m_strPath;
};

} // namespace KxApi
