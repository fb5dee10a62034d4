// SPDX-License-Identifier: Apache-2.0
#include "CameraSearch.h"

#include <chrono>
#include <memory>
#include <utility>

/// Sends the systems to the GUI thread as they come.
class CameraSearch::Opening final : public KxApi::IKxProducersCallback
{
public:
    explicit Opening(CameraSearch& search)
        : m_search(search)
    {}
    void OnProducer(size_t, const KxApi::CKxProducerInfo&, KxApi::IKxSystemReleasable* pSystem) override
    {
        if (!pSystem)
            return;
        // Released here if the call isn't made any more.
        auto system = std::make_shared<KxApi::CKxAutoPtr<KxApi::IKxSystemReleasable>>(pSystem);
        // This object may be gone by then, the search isn't.
        m_search.Later([&search = m_search, system] { search.OnSystem(system->Detach()); });
    }
    bool IsWanted() override { return m_search.m_bWanted && std::chrono::steady_clock::now() < m_end; }

private:
    CameraSearch& m_search;
    const std::chrono::steady_clock::time_point m_end =
        std::chrono::steady_clock::now() + std::chrono::milliseconds(KxApi::kKxProducerTimeoutMs);
};

CameraSearch::CameraSearch(KxApps::Cameras& cameras)
    : m_cameras(cameras)
{}

CameraSearch::~CameraSearch()
{
    m_bWanted = false;
    for (std::thread& thread : m_threads)
        thread.join();
}

template <typename Call>
void CameraSearch::Later(Call call)
{
    // Calls that still wait when this object goes, go with it.
    QMetaObject::invokeMethod(this, std::move(call), Qt::QueuedConnection);
}

void CameraSearch::Start()
{
    m_threads.emplace_back([this] {
        Opening opening(*this);
        KxApi::OpenIKxSystems(opening);
        Later([this] { OnOpened(); });
    });
}

void CameraSearch::OnSystem(KxApi::IKxSystemReleasable* pSystem)
{
    m_cameras.Take(pSystem);
    ++m_nSearching;
    m_threads.emplace_back(
        [this, pSystem] { Later([this, entry = KxApps::Cameras::Search(pSystem)] { OnSearched(entry); }); });
}

void CameraSearch::OnOpened()
{
    m_bOpen = true;
    m_strUnusable = QString::fromUtf8(KxApi::GetKxProducersText().c_str());
    emit ProducersOpened();
    if (m_nSearching == 0)
        emit SystemSearched();
}

void CameraSearch::OnSearched(KxApps::Cameras::SystemEntry entry)
{
    m_cameras.Take(std::move(entry));
    --m_nSearching;
    emit SystemSearched();
}
