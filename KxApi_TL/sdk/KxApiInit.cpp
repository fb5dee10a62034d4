// SPDX-License-Identifier: Apache-2.0

#include <Base/GCException.h>
#include <KxApi_TL/KxApi_TL.h>

#include <atomic>
#include <cstdint>

namespace KxApi
{
namespace
{

std::atomic<uint64_t> g_initCount{0};

} // namespace

void Initialize() { ++g_initCount; }

void Terminate()
{
    uint64_t count = g_initCount.load();
    do {
        if (count == 0)
            throw LOGICAL_ERROR_EXCEPTION("KxApi::Terminate was called more often than KxApi::Initialize");
    } while (!g_initCount.compare_exchange_weak(count, count - 1));
}

void CheckKxApiInitialized()
{
    if (g_initCount.load() == 0)
        throw LOGICAL_ERROR_EXCEPTION("The SDK is not started: call KxApi::Initialize first");
}

} // namespace KxApi
