// SPDX-License-Identifier: Apache-2.0

#include "ProducerThreads.h"

#include "GenTLInfo.h"

#include <Base/GCBadAlloc.h>
#include <Base/GCException.h>
#include <KxApi_TL/CKxGenTLLib.h>

#include <pthread.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <exception>
#include <map>
#include <string>
#include <system_error>
#include <thread>
#include <utility>

namespace KxApi
{
namespace Detail
{
namespace
{

/// What the end of a program waits for at most, as a producer that hangs would keep it for ever.
constexpr std::chrono::seconds kPatienceAtExit{2};

void AwaitThreads();

CProducerResult Use(const CFoundFile& file, ETask task)
{
    CProducerResult result;
    result.info.strPath = file.path.c_str();
    result.info.strError = file.error.c_str();
    if (!file.error.empty())
        return result;
    try {
        const std::shared_ptr<CKxGenTLLib> lib = CKxGenTLLib::Load(result.info.strPath);
        // Comes before destructors of the library's static objects, which its code mustn't lose.
        std::atexit(&AwaitThreads);
        result.info.strVersion = GetInfoText(
            [&](auto... arguments) { return lib->GCGetInfo(GenTL::TL_INFO_VERSION, arguments...); });
        if (task == ETask::Open)
            result.system.reset(CreateIKxSystem(result.info.strPath));
    } catch (const GenICam::BadAllocException&) {
        throw;
    } catch (const GenICam::GenericException& e) {
        result.info.strError = e.GetDescription();
    }
    return result;
}

CProducerResult Caught(const CFoundFile& file, ETask task) noexcept
{
    try {
        return Use(file, task);
    } catch (...) {
        CProducerResult result;
        result.error = std::current_exception();
        return result;
    }
}

/// The same for one more caller.
CProducerResult CopyOf(const CProducerResult& result)
{
    CProducerResult copy;
    try {
        copy.info = result.info;
        if (result.system)
            copy.system.reset(HoldIKxSystem(result.system.get()));
        copy.error = result.error;
    } catch (...) {
        copy.error = std::current_exception();
    }
    return copy;
}

/// What is under way, with those who wait for it.
class CUnderWay
{
public:
    struct CWaiting
    {
        std::weak_ptr<CProducerResults> results;
        size_t index;
    };
    using Key = std::pair<std::string, ETask>;

    /// True when it has to be begun.
    bool Enter(const Key& key, CWaiting waiting)
    {
        const CKxMutexLock lock(m_mutex);
        const auto [place, isNew] = m_waiting.try_emplace(key);
        std::vector<CWaiting>& all = place->second;
        // Of those who gave up nothing is left but this.
        all.erase(std::remove_if(all.begin(), all.end(),
                                 [](const CWaiting& other) { return other.results.expired(); }),
                  all.end());
        all.push_back(std::move(waiting));
        return isNew;
    }

    std::vector<CWaiting> Leave(const Key& key)
    {
        const CKxMutexLock lock(m_mutex);
        const auto place = m_waiting.find(key);
        std::vector<CWaiting> waiting = std::move(place->second);
        m_waiting.erase(place);
        return waiting;
    }

    void BeginThread()
    {
        const CKxMutexLock lock(m_mutex);
        ++m_threads;
    }
    void EndThread()
    {
        const CKxMutexLock lock(m_mutex);
        --m_threads;
        m_ended.notify_all();
    }
    void AwaitThreads(std::chrono::steady_clock::time_point until)
    {
        CKxMutexLock lock(m_mutex);
        while (m_threads > 0 && lock.WaitUntil(m_ended, until)) {
        }
    }

private:
    CKxMutex m_mutex;
    std::condition_variable m_ended;
    size_t m_threads KXGC_GUARDED_BY(m_mutex) = 0;
    std::map<Key, std::vector<CWaiting>> m_waiting KXGC_GUARDED_BY(m_mutex);
};

CUnderWay& UnderWay()
{
    // Never destroyed: a thread may come back from its producer while the program ends.
    static CUnderWay* const underWay = new CUnderWay;
    return *underWay;
}

void AwaitThreads() { UnderWay().AwaitThreads(std::chrono::steady_clock::now() + kPatienceAtExit); }

void Run(const CFoundFile& file, ETask task) noexcept
{
    CProducerResult result = Caught(file, task);
    std::vector<CUnderWay::CWaiting> waiting = UnderWay().Leave({file.path, task});
    const CUnderWay::CWaiting last = std::move(waiting.back()); // whoever it was begun for, at least
    waiting.pop_back();
    for (const CUnderWay::CWaiting& one : waiting) {
        if (const std::shared_ptr<CProducerResults> results = one.results.lock())
            results->Put(one.index, CopyOf(result));
    }
    // This one gets the system itself: the thread mustn't hold it longer than those who use it.
    if (const std::shared_ptr<CProducerResults> results = last.results.lock())
        results->Put(last.index, std::move(result));
}

} // namespace

void CProducerResults::Put(size_t index, CProducerResult result)
{
    const CKxMutexLock lock(m_mutex);
    m_slots[index].result = std::move(result);
    m_slots[index].isFull = true;
    m_arrived.notify_all();
}

bool CProducerResults::Take(std::chrono::steady_clock::time_point until, size_t& index,
                            CProducerResult& result)
{
    CKxMutexLock lock(m_mutex);
    for (bool isInTime = true;; isInTime = lock.WaitUntil(m_arrived, until)) {
        const auto full =
            std::find_if(m_slots.begin(), m_slots.end(), [](const CSlot& slot) { return slot.isFull; });
        if (full != m_slots.end()) {
            full->isFull = false;
            index = static_cast<size_t>(full - m_slots.begin());
            result = std::move(full->result);
            return true;
        }
        if (!isInTime)
            return false;
    }
}

void StartProducer(const CFoundFile& file, ETask task, size_t index,
                   const std::shared_ptr<CProducerResults>& results)
{
    if (!UnderWay().Enter({file.path, task}, {results, index}))
        return;
    try {
        std::thread thread([file, task] {
            UnderWay().BeginThread();
            Run(file, task);
            UnderWay().EndThread();
        });
        pthread_setname_np(thread.native_handle(), "KxProducer");
        thread.detach();
    } catch (const std::exception&) { // no thread to have, or no memory for it
        Run(file, task);
    }
}

} // namespace Detail
} // namespace KxApi
