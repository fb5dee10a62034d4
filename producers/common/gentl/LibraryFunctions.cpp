// SPDX-License-Identifier: Apache-2.0
// Start, stop and errors of the producer.

#include "Call.h"
#include "Immortal.h"
#include "Info.h"
#include "common/modules/Producer.h"

#include <atomic>
#include <memory>

namespace KxProducer
{
namespace
{

std::unique_ptr<CProducer> g_producer;
std::atomic<bool> g_isInitialized{false};

struct CLastError
{
    GenTL::GC_ERROR code = GenTL::GC_ERR_SUCCESS;
    std::string text = "No Error";
};
thread_local CLastError t_lastError;

} // namespace

std::recursive_mutex& ProducerLock()
{
    static CImmortal<std::recursive_mutex> mutex;
    return mutex.Get();
}

CProducer& Producer()
{
    CheckInitialized();
    return *g_producer;
}

void CheckInitialized()
{
    if (!g_isInitialized)
        Fail(GenTL::GC_ERR_NOT_INITIALIZED, "GCInitLib has not been called");
}

GenTL::GC_ERROR Remember(GenTL::GC_ERROR code, const std::string& text) noexcept
{
    try {
        t_lastError.text = text;
    } catch (...) {
        t_lastError.text.clear();
    }
    return t_lastError.code = code;
}

namespace
{

/// For the functions that come before GCInitLib.
template <class Body>
GenTL::GC_ERROR EarlyCall(Body&& body) noexcept
{
    const std::lock_guard<std::recursive_mutex> lock(ProducerLock());
    try {
        body();
        return GenTL::GC_ERR_SUCCESS;
    } catch (const CError& e) {
        return Remember(e.code, e.text);
    } catch (const std::exception& e) {
        return Remember(GenTL::GC_ERR_ERROR, e.what());
    }
}

} // namespace
} // namespace KxProducer

namespace GenTL
{
extern "C" {

using namespace KxProducer;

GC_API GCInitLib(void)
{
    return EarlyCall([] {
        if (g_isInitialized)
            Fail(GC_ERR_RESOURCE_IN_USE, "GCInitLib has been called already");
        g_producer = MakeProducer();
        g_isInitialized = true;
    });
}

GC_API GCCloseLib(void)
{
    return EarlyCall([] {
        CheckInitialized();
        g_producer.reset();
        g_isInitialized = false;
    });
}

GC_API GCGetLastError(GC_ERROR* piErrorCode, char* sErrText, size_t* piSize)
{
    // Its own failures are not kept.
    const CLastError last = t_lastError;
    const GC_ERROR result = Call([&] { ReturnBytes(TextInfo(last.text).bytes, sErrText, piSize); });
    t_lastError = last;
    if (piErrorCode)
        *piErrorCode = last.code;
    return result;
}

GC_API GCGetInfo(TL_INFO_CMD iInfoCmd, INFO_DATATYPE* piType, void* pBuffer, size_t* piSize)
{
    return Call([&] { ReturnInfo(GetProducerInfo(iInfoCmd), piType, pBuffer, piSize); });
}

} // extern "C"
} // namespace GenTL
