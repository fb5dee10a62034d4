// SPDX-License-Identifier: Apache-2.0
// Start and stop of the SDK.
#pragma once

#include <KxApi_TL/KxApi_TLLinkage.h>

namespace KxApi
{

/// Starts the SDK. Calls are counted: each wants its Terminate. Any thread.
KXAPI_TL_API void Initialize();

/// Takes one Initialize back; the last one stops the SDK, after which its factories refuse to work until the
/// next Initialize. What the factories returned has to be released before. Any thread. Raises
/// LogicalErrorException when there is no Initialize to take back.
KXAPI_TL_API void Terminate();

/// Raises LogicalErrorException when the SDK is not started. The factories call it first. Any thread.
KXAPI_TL_API void CheckKxApiInitialized();

/// Starts the SDK for the life of the object.
class CKxApiAutoInitTerm
{
public:
    CKxApiAutoInitTerm() { Initialize(); }
    ~CKxApiAutoInitTerm() { Terminate(); }
    CKxApiAutoInitTerm(const CKxApiAutoInitTerm&) = delete;
    CKxApiAutoInitTerm& operator=(const CKxApiAutoInitTerm&) = delete;
};

} // namespace KxApi
