// SPDX-License-Identifier: Apache-2.0
// Producers are loaded and opened at the same time, since each may take its time.
#pragma once

#include "ProducerFiles.h"

#include <KxApi_TL/IKxSystem.h>
#include <KxSDKCommon/KxMutex.h>

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <exception>
#include <memory>
#include <vector>

namespace KxApi
{
namespace Detail
{

struct CReleaseSystem
{
    void operator()(IKxSystemReleasable* system) const { system->Release(); }
};
using CSystemPtr = std::unique_ptr<IKxSystemReleasable, CReleaseSystem>;

/// What is done with a producer.
enum class ETask
{
    Look, // load it, to see whether it can be used
    Open
};

/// What came of one.
struct CProducerResult
{
    CKxProducerInfo info;
    CSystemPtr system;        ///< null when it was only looked at, or can't be opened
    std::exception_ptr error; ///< what is no fault of the producer's
};

/// Where the results of one call arrive. Systems that nobody takes out are closed again. Any thread.
class CProducerResults
{
public:
    explicit CProducerResults(size_t count)
        : m_slots(count)
    {}

    void Put(size_t index, CProducerResult result);
    /// Takes the next one out; false when none came until that time.
    bool Take(std::chrono::steady_clock::time_point until, size_t& index, CProducerResult& result);

private:
    struct CSlot
    {
        bool isFull = false;
        CProducerResult result;
    };

    CKxMutex m_mutex;
    std::condition_variable m_arrived;
    std::vector<CSlot> m_slots KXGC_GUARDED_BY(m_mutex);
};

/// Has a producer looked at or opened in a thread of its own; the result goes to `results` if it is still
/// there then. A thread that the producer doesn't let go is left behind: no second one is sent after it, and
/// all who ask for the same meanwhile get its result.
void StartProducer(const CFoundFile& file, ETask task, size_t index,
                   const std::shared_ptr<CProducerResults>& results);

} // namespace Detail
} // namespace KxApi
