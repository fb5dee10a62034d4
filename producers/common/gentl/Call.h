// SPDX-License-Identifier: Apache-2.0
// The border between consumers and the producer: no exception passes it.
#pragma once

#include "Error.h"

#include <GenTL/GenTL.h>

#include <exception>
#include <mutex>
#include <new>

namespace KxProducer
{

class CProducer;

/// The producer's lock: of opening and closing, of the lists, and of the registers of all modules but
/// cameras. Held by nearly every function; those that wait, and those that are called for each image, do
/// without. Locks of cameras, streams and event queues are taken inside it, in this order.
std::recursive_mutex& ProducerLock();

/// The producer; throws before GCInitLib and after GCCloseLib. With the producer's lock held.
CProducer& Producer();
/// Throws as Producer() does. Any thread, without a lock.
void CheckInitialized();

/// Keeps code and text for GCGetLastError of this thread.
GenTL::GC_ERROR Remember(GenTL::GC_ERROR code, const std::string& text) noexcept;

/// Runs a function's body and turns what it throws into a code.
template <class Body>
GenTL::GC_ERROR Call(Body&& body) noexcept
{
    try {
        CheckInitialized();
        body();
        return GenTL::GC_ERR_SUCCESS;
    } catch (const CError& e) {
        return Remember(e.code, e.text);
    } catch (const std::bad_alloc&) {
        return Remember(GenTL::GC_ERR_OUT_OF_MEMORY, "There is no memory left");
    } catch (const std::exception& e) {
        return Remember(GenTL::GC_ERR_ERROR, e.what());
    } catch (...) {
        return Remember(GenTL::GC_ERR_ERROR, "Unknown failure");
    }
}

/// The same with the producer's lock held.
template <class Body>
GenTL::GC_ERROR LockedCall(Body&& body) noexcept
{
    return Call([&] {
        const std::lock_guard<std::recursive_mutex> lock(ProducerLock());
        Producer();
        body();
    });
}

/// An argument that must not be null.
template <class T>
T& Needed(T* argument)
{
    if (!argument)
        Fail(GenTL::GC_ERR_INVALID_PARAMETER, "An argument is null that must not be");
    return *argument;
}

} // namespace KxProducer
