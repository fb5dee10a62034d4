// SPDX-License-Identifier: Apache-2.0
// Looks at and opens all producers.

#include "ProducerFiles.h"
#include "ProducerThreads.h"

#include <Base/GCBadAlloc.h>
#include <KxApi_TL/IKxSystem.h>
#include <KxApi_TL/KxApi_TL.h>
#include <KxSDKCommon/KxMutex.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace KxApi
{
namespace
{

using Clock = std::chrono::steady_clock;
using Detail::CFoundFile;
using Detail::CProducerResult;
using Detail::CSystemPtr;
using Detail::ETask;

/// So many producers are loaded at the same time; those behind them wait until one is ready.
constexpr size_t kMostAtOnce = 16;
/// How often it is asked whether somebody still waits.
constexpr std::chrono::milliseconds kPatience(100);

/// What the last look found.
class CLastLook
{
public:
    void Set(const std::vector<CKxProducerInfo>& infos)
    {
        const CKxMutexLock lock(m_mutex);
        m_infos = infos;
    }
    std::vector<CKxProducerInfo> Get() const
    {
        const CKxMutexLock lock(m_mutex);
        return m_infos;
    }

private:
    mutable CKxMutex m_mutex;
    std::vector<CKxProducerInfo> m_infos KXGC_GUARDED_BY(m_mutex);
};

CLastLook& LastLook()
{
    // Never destroyed: threads may still look when the program ends.
    static CLastLook* const look = new CLastLook;
    return *look;
}

/// Goes through all producers until all are ready or nobody waits any more.
std::vector<CKxProducerInfo> UseAll(ETask task, IKxProducersCallback& callback)
{
    const std::vector<CFoundFile> files = Detail::ProducerFiles();
    std::vector<CKxProducerInfo> infos(files.size());
    for (size_t i = 0; i < files.size(); ++i)
        infos[i] = {files[i].path.c_str(), "", "It isn't ready yet: it is still being opened"};
    LastLook().Set(infos);
    const auto results = std::make_shared<Detail::CProducerResults>(files.size());
    size_t started = 0, ready = 0;
    while (ready < files.size()) {
        for (; started < std::min(files.size(), ready + kMostAtOnce); ++started)
            StartProducer(files[started], task, started, results);
        CProducerResult result;
        size_t index = 0;
        if (results->Take(Clock::now() + kPatience, index, result)) {
            if (result.error)
                std::rethrow_exception(result.error);
            ++ready;
            infos[index] = std::move(result.info);
            LastLook().Set(infos);
            callback.OnProducer(index, infos[index], result.system.release());
        } else if (!callback.IsWanted()) {
            break;
        }
    }
    return infos;
}

/// Collects the systems in the order of their producers, for so long.
class CCollector final : public IKxProducersCallback
{
public:
    explicit CCollector(uint32_t timeoutMs)
        : m_end(Clock::now() + std::chrono::milliseconds(timeoutMs))
    {}

    void OnProducer(size_t nIndex, const CKxProducerInfo&, IKxSystemReleasable* pSystem) override
    {
        CSystemPtr system(pSystem);
        m_systems.resize(std::max(m_systems.size(), nIndex + 1));
        m_systems[nIndex] = std::move(system);
    }
    bool IsWanted() override { return Clock::now() < m_end; }

    void MoveTo(CIKxSystemPtrArray& systems)
    {
        for (CSystemPtr& system : m_systems) {
            if (!system)
                continue;
            systems.Register(system.get());
            static_cast<void>(system.release()); // it is the array's now
        }
    }

private:
    const Clock::time_point m_end;
    std::vector<CSystemPtr> m_systems;
};

} // namespace

std::vector<CKxProducerInfo> FindKxProducers(uint32_t nTimeoutMs)
{
    return GenICam::GuardBadAlloc([&] {
        CCollector nothing(nTimeoutMs);
        return UseAll(ETask::Look, nothing);
    });
}

std::vector<CKxProducerInfo> GetKxProducers()
{
    return GenICam::GuardBadAlloc([] { return LastLook().Get(); });
}

GenICam::gcstring GetKxProducersText()
{
    return GenICam::GuardBadAlloc([] {
        std::string text;
        for (const CKxProducerInfo& info : LastLook().Get()) {
            const std::string path = info.strPath.c_str();
            if (info.strError.empty())
                continue;
            // The path, which the error may begin with, would leave no room for its cause.
            std::string error = info.strError.c_str();
            const size_t cause = error.rfind("cannot be used: ", path.size() + 32);
            if (cause != error.npos)
                error.erase(0, error.find(": ", cause) + 2);
            text += (text.empty() ? "Unusable: " : "; ") + path.substr(path.rfind('/') + 1) + ": " + error;
        }
        return GenICam::gcstring(text.c_str());
    });
}

std::vector<CKxProducerInfo> OpenIKxSystems(IKxProducersCallback& callback)
{
    CheckKxApiInitialized();
    return GenICam::GuardBadAlloc([&] { return UseAll(ETask::Open, callback); });
}

std::vector<CKxProducerInfo> OpenIKxSystems(CIKxSystemPtrArray& systems, uint32_t nTimeoutMs)
{
    CheckKxApiInitialized();
    return GenICam::GuardBadAlloc([&] {
        CCollector collector(nTimeoutMs);
        std::vector<CKxProducerInfo> infos = UseAll(ETask::Open, collector);
        collector.MoveTo(systems);
        return infos;
    });
}

} // namespace KxApi
